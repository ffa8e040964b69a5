#include "tests/legacy/HeapSize.h"

#include <malloc.h>

std::size_t heapSize(void* memory) noexcept {
    return _msize(memory);
}
