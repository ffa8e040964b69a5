#pragma once

#include <cstdint>

namespace bench {

/// What has been asked for through operator new while counting was on, by whatever code of the process.
struct Allocations {
    std::uint64_t count = 0;
    /// What the allocator keeps for them, its own word before each included, less what was given back.
    std::int64_t bytesKept = 0;
};

/// Counting costs time, so nothing is timed that is counted.
void countAllocations(bool on);

const Allocations& allocationsCounted();

} // namespace bench
