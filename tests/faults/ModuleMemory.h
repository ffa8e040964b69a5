#pragma once

#include "kthost/window/SharedLibrary.h"

#include <cstddef>

/// Tells the allocations of the module under test from those of the host and of the tests. How is the
/// system's matter: whether libraries share one allocator differs.
namespace modulememory {

/// The module, which stays in memory from then on.
void setModule(const kthost::SharedLibrary& module);

/// Makes the k-th allocation of the module fail, and perhaps all that follow, and counts them. One at a time;
/// ends with the object.
class Failing {
public:
    /// `k` 0: none fails.
    explicit Failing(std::size_t k, bool andAllAfter = false);
    Failing(const Failing&) = delete;
    Failing& operator=(const Failing&) = delete;
    ~Failing();

    /// Those asked for so far, failed ones included.
    static std::size_t count();
};

} // namespace modulememory
