#pragma once

#include "notify/OrderedChunks.h"

#include <stdexcept>
#include <utility>

template <typename K, typename V>
struct OrderedMapOrder {
    using Key = K;

    static const K& keyOf(const std::pair<K, V>& element) { return element.first; }

    static bool isLess(const K& left, const K& right) { return left < right; }
};

/// Values by key, in ascending order of the keys. The keys in it are not to be changed.
template <typename K, typename V>
class OrderedMap : public OrderedChunks<std::pair<K, V>, OrderedMapOrder<K, V>> {
    using Base = OrderedChunks<std::pair<K, V>, OrderedMapOrder<K, V>>;

public:
    using mapped_type = V;
    using typename Base::const_iterator;
    using typename Base::iterator;

    /// Throws std::out_of_range for a key that is not there.
    V& at(const K& key) { return present(this->find(key), this->end())->second; }

    const V& at(const K& key) const { return present(this->find(key), this->end())->second; }

    /// Made when it is not there.
    V& operator[](const K& key) { return emplace(key, V()).first->second; }

    /// Leaves a value that is there as it is.
    std::pair<iterator, bool> emplace(const K& key, V value) { return this->insert({key, std::move(value)}); }

    std::pair<iterator, bool> insert_or_assign(const K& key, V value) {
        const iterator entry = this->find(key);
        if (entry == this->end()) {
            return emplace(key, std::move(value));
        }
        entry->second = std::move(value);
        this->noteChange();
        return {entry, false};
    }

private:
    template <typename Found>
    static Found present(Found entry, Found end) {
        if (entry == end) {
            throw std::out_of_range("OrderedMap::at");
        }
        return entry;
    }
};
