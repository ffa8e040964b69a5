#pragma once

#include <cstddef>

/// Bytes that the system's heap has set aside for what `malloc` gave.
std::size_t heapSize(void* memory) noexcept;
