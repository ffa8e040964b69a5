#pragma once

#include "kthost/reader/Schematic.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace kthost {

/// A sheet file of a design. However often and under whatever spelling it is named, it is here once.
struct SheetFile {
    std::filesystem::path path; ///< where it was read
    std::wstring name;          ///< relative to the root's folder with "/", as first named
    Schematic schematic;
    std::vector<std::size_t> children; ///< for each of schematic.sheets the file that it names
};

/// One place of the hierarchy at which a sheet file lies.
struct SheetInstance {
    std::size_t file = 0;
    std::wstring path;      ///< uuids, the root's first: "/ROOT/SHEET"
    std::wstring names;     ///< sheet names: "/" for the root, "/Amplifier/Left" below it
    std::size_t parent = 0; ///< index of the place that this one lies on; the root's is its own
    std::size_t sheet = 0;  ///< which of that one's sheets it is; 0 for the root
};

/// A schematic with all its sheets. The hierarchy has no circles.
struct Design {
    std::vector<SheetFile> files;         ///< the root first, then as they are named
    std::vector<SheetInstance> instances; ///< the root first, each followed by the sheets that lie on it
};

} // namespace kthost
