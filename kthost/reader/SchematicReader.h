#pragma once

#include "kthost/reader/Schematic.h"
#include "kthost/reader/SourceText.h"

#include <cstddef>
#include <cstdint>
#include <functional>

namespace kthost {

/// Called with the number of bytes that are behind the reader, in ascending order.
using OffsetListener = std::function<void(std::size_t offset)>;

/// The oldest version of the format that is read: that of KiCad 6.
inline constexpr std::int64_t kOldestSchematicVersion = 20211014;

/// Reads one sheet file in one pass. What the model does not hold (pictures, graphics, wires) is passed over
/// unlooked at. Throws ReadError when the text is no schematic, is cut off, is of an older version, nests too
/// deep, or holds a number out of range.
Schematic readSchematic(const SourceText& source, const OffsetListener& listener = {});

} // namespace kthost
