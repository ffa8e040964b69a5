#pragma once

#include "notify/ByAddress.h"
#include "notify/KtDxEnableBase.h"
#include "notify/OrderedSet.h"

#include <cstddef>
#include <new>

/// A switch with a list of listeners: pointers, each held once, in ascending order of address, never owned.
/// The list can be changed whether or not the switch is on.
template <typename T>
class KtDxNotifierBase : public KtDxEnableBase {
public:
    using Listeners = OrderedSet<T, ByAddress>;

    /// eMissing for a null listener, and when there is no memory. One that is there already changes nothing.
    virtual Orbx::ErrorStatus add(T listener);
    /// Number of entries removed, 0 or 1.
    virtual std::size_t remove(T listener);

    const Listeners& listeners() const { return listeners_; }

private:
    Listeners listeners_;
};

template <typename T>
Orbx::ErrorStatus KtDxNotifierBase<T>::add(T listener) {
    if (listener == nullptr) {
        return Orbx::eMissing;
    }
    try {
        listeners_.insert(listener);
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    return Orbx::eOk;
}

template <typename T>
std::size_t KtDxNotifierBase<T>::remove(T listener) {
    return listeners_.erase(listener);
}
