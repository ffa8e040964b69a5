#pragma once

#include "notify/OrderedChunks.h"

template <typename T, typename Less>
struct OrderedSetOrder {
    using Key = T;

    static const T& keyOf(const T& element) { return element; }

    static bool isLess(const T& left, const T& right) { return Less()(left, right); }
};

/// Values in ascending order, each once.
template <typename T, typename Less>
using OrderedSet = OrderedChunks<T, OrderedSetOrder<T, Less>>;
