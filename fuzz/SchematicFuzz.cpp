#include "fuzz/Allowance.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchFolder.h"
#include "fuzz/SheetBundle.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/reader/DesignReader.h"
#include "kthost/reader/DrawingBuilder.h"
#include "kthost/reader/ReadError.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>

/// Reads any bytes as the sheet files of a schematic. What reads must become a drawing with all that it
/// holds; what does not must be refused at a place in one of the files.
namespace {

/// The densest lists that the format allows take some 70 bytes for each of the file; what they say of many
/// places comes on top.
constexpr std::size_t kBytesEach = 150;
constexpr std::size_t kBytesAtLeast = 48U << 20U;
constexpr double kSecondsEach = 100e-6;
constexpr double kSecondsAtLeast = 3;

const ScratchFolder& folder() {
    static const ScratchFolder kFolder;
    static const bool kMade = std::filesystem::create_directory(kFolder.path() / "sub");
    static_cast<void>(kMade);
    return kFolder;
}

/// The files of earlier inputs go: a sheet names what lies in this one.
void writeSheets(const std::vector<std::string_view>& sheets) {
    static std::size_t written = 0;
    for (std::size_t sheet = sheets.size(); sheet < written; ++sheet) {
        std::filesystem::remove(folder().path() / kSheetNames[sheet]);
    }
    for (std::size_t sheet = 0; sheet < sheets.size(); ++sheet) {
        folder().write(kSheetNames[sheet], sheets[sheet]);
    }
    written = sheets.size();
}

void requireSoundError(const kthost::ReadError& error, std::string_view bundle) {
    require(kthost::findMalformedUtf8(error.what()) == std::string_view::npos, "an error is UTF-8 text");
    const auto lines = static_cast<std::size_t>(std::count(bundle.begin(), bundle.end(), '\n')) + 1;
    require(error.position().line <= lines, "an error lies on one of the lines");
    require(error.position().column <= bundle.size() + 1, "an error lies on the line");
    require((error.position().line == 0) == (error.position().column == 0),
            "a place has a line and a column");
}

std::optional<kthost::Design> readAgain(std::string_view bundle) {
    try {
        return kthost::readDesign("main.kicad_sch");
    } catch (const kthost::ReadError& error) {
        requireSoundError(error, bundle);
        return std::nullopt;
    }
}

/// Symbols, sheets and tables, each wherever its file lies once.
std::size_t drawnIn(const kthost::Design& design) {
    std::size_t count = 0;
    for (const kthost::SheetFile& file : design.files) {
        count += file.schematic.symbols.size() + file.schematic.sheets.size() + file.schematic.tables.size();
    }
    return count;
}

std::size_t referencesOf(const kthost::Database& drawing) {
    std::size_t count = 0;
    for (const bool layouts : {false, true}) {
        for (const KtDbObjectId record : kthost::records(drawing, layouts)) {
            count += kthost::referencesIn(record).size();
        }
    }
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string bundle(data, data + size);
    writeSheets(sheetsOf(bundle));
    const Allowance allowance(kBytesAtLeast + kBytesEach * size,
                              kSecondsAtLeast + kSecondsEach * static_cast<double>(size));
    if (const std::optional<kthost::Design> design = readAgain(bundle)) {
        const auto drawing = kthost::buildDrawing(*design, L"fuzz");
        require(referencesOf(*drawing) == drawnIn(*design), "all that the files hold is in the drawing");
    }
    return 0;
}
