#pragma once

#include <cstdint>

/// Orders pointers by their address as an unsigned number, so that walks and calls come in an order that does
/// not depend on who registered first.
struct ByAddress {
    template <typename Pointer>
    bool operator()(Pointer left, Pointer right) const noexcept {
        return reinterpret_cast<std::uintptr_t>(left) < reinterpret_cast<std::uintptr_t>(right);
    }
};
