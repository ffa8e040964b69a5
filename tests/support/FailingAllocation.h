#pragma once

#include <cstddef>
#include <functional>

/// Says whether an allocation counts, by the address of the code that asks for the memory. It must not
/// allocate.
using AllocationFilter = bool (*)(const void* caller);

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

/// How many allocations of this program have not been given back.
std::size_t livingAllocations();

/// Keeps what this program gives back, so that it shows who writes there still; up to `kMost` times, and only
/// where whoever gives it back says how much it is. One at a time; lets go of all when it ends.
class KeptGivenBack {
public:
    static constexpr std::size_t kMost = 64;

    KeptGivenBack();
    KeptGivenBack(const KeptGivenBack&) = delete;
    KeptGivenBack& operator=(const KeptGivenBack&) = delete;
    ~KeptGivenBack();

    std::size_t count() const;
    bool isUntouched() const;
};

/// The same for the allocations that a filter lets count, and perhaps for all that follow the k-th of them.
/// They are counted too, whether or not one is to fail. Not to be used together with the other.
class FailingFiltered {
public:
    /// `k` 0: none fails.
    FailingFiltered(AllocationFilter filter, std::size_t k, bool andAllAfter = false);
    FailingFiltered(const FailingFiltered&) = delete;
    FailingFiltered& operator=(const FailingFiltered&) = delete;
    ~FailingFiltered();

    /// Those asked for so far, failed ones included.
    static std::size_t count();
};

/// How many are asked for while `action` runs.
std::size_t allocationsIn(const std::function<void()>& action);
