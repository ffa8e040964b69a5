#pragma once

#include <cstddef>
#include <cstdint>

class ArchiveReader;

/// Reads how many attributes a block has; a negative number stands for none. Throws ArchiveFailure.
std::uint64_t readAttributeCount(ArchiveReader& reader);

/// For how many of them to make room: a count may lie, but what remains of the file does not.
std::size_t attributesToExpect(std::uint64_t count, const ArchiveReader& reader);
