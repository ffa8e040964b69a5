#include "kthost/reader/SheetLimits.h"

#include "kthost/reader/DesignReader.h"
#include "kthost/reader/PathText.h"
#include "kthost/reader/SheetError.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <string>

namespace kthost {

namespace {

// What each takes beside its texts, in characters.
constexpr std::size_t kEachPlace = 40;
constexpr std::size_t kEachOccurrence = 40;
constexpr std::size_t kEachLevelOfAPath = 8;

constexpr const char* kCharacters = " characters after expansion";

std::size_t longestReference(const std::vector<SymbolInstance>& instances) {
    std::size_t longest = 0;
    for (const SymbolInstance& instance : instances) {
        longest = std::max(longest, instance.reference.size());
    }
    return longest;
}

std::size_t longestReference(const PlacedSymbol& symbol) {
    const std::wstring* const reference = findProperty(symbol.properties, L"Reference");
    return std::max(longestReference(symbol.instances), reference == nullptr ? 0 : reference->size());
}

class SheetCount {
public:
    SheetCount(const Design& design, std::uint64_t bytesRead);

    void addRoot();
    void addSheetsOf(std::size_t file);

    std::size_t instances() const noexcept { return instances_; }

private:
    struct FileUse {
        std::size_t depth = 0;
        std::size_t instances = 0;
        std::size_t levels = 0; // of all instances together
        std::size_t text = 0;   // characters of their paths and names
        std::size_t each = 0;   // characters that every further instance takes, without these
    };

    void addSheet(std::size_t file, std::size_t sheet);
    std::size_t charactersOfEach(const Schematic& schematic) const;
    std::size_t addUses(const FileUse& parent, const SheetSymbol& sheet, std::size_t file);

    const Design& design_;
    std::vector<FileUse> uses_;
    std::size_t longestOfRoot_;
    std::size_t mostCharacters_;
    std::size_t instances_ = 1;
    std::size_t characters_ = 0;
};

SheetCount::SheetCount(const Design& design, std::uint64_t bytesRead)
    : design_(design),
      uses_(design.files.size()),
      longestOfRoot_(longestReference(design.files[0].schematic.symbolInstances)),
      mostCharacters_(kMaxExpandedCharacters + kMaxExpandedCharactersPerByte * bytesRead) {
    uses_[0].instances = 1;
    for (std::size_t file = 0; file < uses_.size(); ++file) {
        uses_[file].each = charactersOfEach(design.files[file].schematic);
    }
}

std::size_t SheetCount::charactersOfEach(const Schematic& schematic) const {
    std::size_t characters = kEachPlace;
    for (const PlacedSymbol& symbol : schematic.symbols) {
        characters += kEachOccurrence + std::max(longestReference(symbol), longestOfRoot_);
    }
    return characters;
}

void checkLimit(const SheetFile& file, std::size_t sheet, std::size_t count, std::size_t limit,
                const char* what) {
    if (count > limit) {
        failAtSheet(file, sheet, "at most " + std::to_string(limit) + what, "one more at ");
    }
}

void SheetCount::addRoot() {
    characters_ = uses_[0].each;
    if (characters_ > mostCharacters_) {
        throw ReadError(toUtf8(pathText(design_.files[0].path)), {},
                        "at most " + std::to_string(mostCharacters_) + kCharacters, "more in the root");
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
    const std::size_t child = parent.children[sheet];
    instances_ += uses_[file].instances;
    characters_ += addUses(uses_[file], parent.schematic.sheets[sheet], child);
    checkLimit(parent, sheet, uses_[child].depth, kMaxSheetDepth, " levels of sheets");
    checkLimit(parent, sheet, instances_, kMaxSheetInstances, " sheets after expansion");
    checkLimit(parent, sheet, characters_, mostCharacters_, kCharacters);
}

// Gives the characters that they take.
std::size_t SheetCount::addUses(const FileUse& parent, const SheetSymbol& sheet, std::size_t file) {
    FileUse& use = uses_[file];
    const std::size_t levels = parent.levels + parent.instances;
    const std::size_t text = parent.text + parent.instances * (sheet.uuid.size() + sheet.name.size());
    use.depth = std::max(use.depth, parent.depth + 1);
    use.instances += parent.instances;
    use.levels += levels;
    use.text += text;
    const std::size_t symbols = design_.files[file].schematic.symbols.size();
    return text + parent.instances * use.each + levels * symbols * kEachLevelOfAPath;
}

} // namespace

std::size_t countSheetInstances(const Design& design, const std::vector<std::size_t>& order,
                                std::uint64_t bytesRead) {
    SheetCount count(design, bytesRead);
    count.addRoot();
    for (const std::size_t file : order) {
        count.addSheetsOf(file);
    }
    return count.instances();
}

} // namespace kthost
