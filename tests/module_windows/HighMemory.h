#pragma once

#include <cstddef>
#include <vector>

/// While it lives, what is allocated of about this size lies above four gigabytes: the addresses below are
/// taken, and so are the pieces of that size that the heap still had there.
class HighMemory {
public:
    /// Throws std::runtime_error when the heap does not go above.
    explicit HighMemory(std::size_t size);
    ~HighMemory();
    HighMemory(const HighMemory&) = delete;
    HighMemory& operator=(const HighMemory&) = delete;

private:
    void reserveLowAddresses();
    void fillLowPieces(std::size_t size);

    std::vector<void*> reserved_;
    std::vector<void*> pieces_;
};
