#include "legacy/AttributeCount.h"

#include "legacy/ArchiveReader.h"

#include <algorithm>

namespace {

/// What an attribute takes in a file at least, unless its tag is empty or in 8-bit characters.
constexpr std::uint64_t kUsualAttributeBytes = 7;

} // namespace

std::uint64_t readAttributeCount(ArchiveReader& reader) {
    return static_cast<std::uint64_t>(std::max(reader.readInt32(), 0));
}

std::size_t attributesToExpect(std::uint64_t count, const ArchiveReader& reader) {
    return static_cast<std::size_t>(std::min(count, reader.remaining() / kUsualAttributeBytes));
}
