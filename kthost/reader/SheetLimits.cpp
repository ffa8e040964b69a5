#include "kthost/reader/SheetLimits.h"

#include "kthost/reader/DesignReader.h"
#include "kthost/reader/SheetError.h"

#include <algorithm>
#include <string>

namespace kthost {

namespace {

class SheetCount {
public:
    explicit SheetCount(const Design& design) : design_(design), uses_(design.files.size()) {
        uses_[0].instances = 1;
    }

    void addSheetsOf(std::size_t file);

    std::size_t instances() const noexcept { return instances_; }

private:
    struct FileUse {
        std::size_t depth = 0;
        std::size_t instances = 0;
    };

    void addSheet(std::size_t file, std::size_t sheet);

    const Design& design_;
    std::vector<FileUse> uses_;
    std::size_t instances_ = 1;
    std::size_t occurrences_ = 0;
};

void checkLimit(const SheetFile& file, std::size_t sheet, std::size_t count, std::size_t limit,
                const char* what) {
    if (count > limit) {
        failAtSheet(file, sheet, "at most " + std::to_string(limit) + what, "one more at ");
    }
}

void SheetCount::addSheetsOf(std::size_t file) {
    for (std::size_t sheet = 0; sheet < design_.files[file].children.size(); ++sheet) {
        addSheet(file, sheet);
    }
}

// The checks after every step keep the counts small enough not to wrap round.
void SheetCount::addSheet(std::size_t file, std::size_t sheet) {
    const SheetFile& parent = design_.files[file];
    const std::size_t childFile = parent.children[sheet];
    FileUse& child = uses_[childFile];
    const std::size_t added = uses_[file].instances;
    child.depth = std::max(child.depth, uses_[file].depth + 1);
    child.instances += added;
    instances_ += added;
    occurrences_ += added * design_.files[childFile].schematic.symbols.size();
    checkLimit(parent, sheet, child.depth, kMaxSheetDepth, " levels of sheets");
    checkLimit(parent, sheet, instances_, kMaxSheetInstances, " sheets after expansion");
    checkLimit(parent, sheet, occurrences_, kMaxSymbolOccurrences, " symbols after expansion");
}

} // namespace

std::size_t countSheetInstances(const Design& design, const std::vector<std::size_t>& order) {
    SheetCount count(design);
    for (const std::size_t file : order) {
        count.addSheetsOf(file);
    }
    return count.instances();
}

} // namespace kthost
