#pragma once

#include "kthost/reader/Design.h"
#include "kthost/reader/UniqueNames.h"

#include <KtDbObjectId.h>

#include <cstddef>
#include <string>
#include <vector>

namespace kthost {

class Database;

/// The block table records of a design's sheet files, and the references to them. The root's record is model
/// space.
class SheetRecords {
public:
    /// Adds records and references. `database` must be new.
    SheetRecords(const Design& design, Database& database, UniqueNames& names);

    KtDbObjectId record(std::size_t file) const { return records_[file]; }

    /// The references through which a place of the hierarchy comes to lie in model space, as kKtDbOccurrences
    /// wants it.
    const std::wstring& path(std::size_t instance) const { return paths_[instance]; }

private:
    void addRecord(const SheetFile& file, Database& database, UniqueNames& names);
    void placeSheets(const SheetFile& file, Database& database);
    void addPath(const Design& design, std::size_t instance);

    std::vector<KtDbObjectId> records_;                   // by file
    std::vector<std::vector<std::wstring>> sheetHandles_; // by file, of the references to its sheets
    std::vector<std::wstring> paths_;                     // by place of the hierarchy
};

} // namespace kthost
