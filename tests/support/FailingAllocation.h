#pragma once

#include <cstddef>

/// Makes one allocation of this program fail: the k-th one (1 is the next) from the construction of this
/// object on, of all or of those of one size in bytes. The allocations before and after it succeed. One at a
/// time; ends with the object. Allocations of the host's library count too, those made by `malloc` itself do
/// not.
class FailingAllocation {
public:
    static constexpr std::size_t kAnySize = 0;

    explicit FailingAllocation(std::size_t k = 1, std::size_t size = kAnySize);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    /// False while fewer than k allocations have been asked for.
    bool hasFailed() const;
};
