#include "kthost/reader/DesignReader.h"

#include "tests/kthost/reader/ReaderTestSupport.h"
#include "tests/support/AwkwardFolders.h"
#include "tests/support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>
#include <vector>

namespace kthost {
namespace {

using test::errorOf;
using test::schematicText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string sheet(const std::string& name, const std::string& file) {
    return R"((sheet (uuid ")" + name + R"(-id") (property "Sheetname" ")" + name +
           R"(") (property "Sheetfile" ")" + file + "\"))\n";
}

class DesignReader : public testing::Test {
protected:
    std::filesystem::path write(const std::string& name, const std::string& body) const {
        return folder_.file(name, schematicText(body));
    }

    std::filesystem::path path(const std::string& name) const { return folder_ / name; }

    Design read() const { return readDesign(path("root.kicad_sch")); }

    std::string error() const {
        return errorOf([this] { read(); });
    }

    /// How an error in the file begins that lies at this place.
    std::string at(const std::string& file, const std::string& place) const {
        return path(file).generic_string() + ":" + place + ": ";
    }

    TempFolder folder_;
};

std::vector<std::wstring> namesOf(const Design& design) {
    std::vector<std::wstring> names;
    for (const SheetFile& file : design.files) {
        names.push_back(file.name);
    }
    return names;
}

std::vector<std::wstring> placesOf(const Design& design) {
    std::vector<std::wstring> places;
    for (const SheetInstance& instance : design.instances) {
        places.push_back(instance.names);
    }
    return places;
}

TEST_F(DesignReader, ReadsADesignOfOneSheet) {
    write("root.kicad_sch", "");
    const Design design = read();
    EXPECT_THAT(namesOf(design), ElementsAre(L"root.kicad_sch"));
    EXPECT_EQ(design.instances[0].path, L"/root");
    EXPECT_THAT(placesOf(design), ElementsAre(L"/"));
}

TEST_F(DesignReader, ReadsAFileOnceHoweverOftenItIsNamed) {
    write("root.kicad_sch",
          sheet("A", "x.kicad_sch") + sheet("B", "y.kicad_sch") + sheet("C", "x.kicad_sch"));
    write("x.kicad_sch", "");
    write("y.kicad_sch", sheet("D", "x.kicad_sch"));
    const Design design = read();
    EXPECT_THAT(namesOf(design), ElementsAre(L"root.kicad_sch", L"x.kicad_sch", L"y.kicad_sch"));
    EXPECT_THAT(design.files[0].children, ElementsAre(1, 2, 1));
    EXPECT_THAT(design.files[2].children, ElementsAre(1));
}

TEST_F(DesignReader, ListsEveryPlaceOfTheHierarchyFromTheTopDown) {
    write("root.kicad_sch", sheet("A", "x.kicad_sch") + sheet("B", "x.kicad_sch"));
    write("x.kicad_sch", sheet("C", "y.kicad_sch") + sheet("D", "y.kicad_sch"));
    write("y.kicad_sch", "");
    const Design design = read();
    EXPECT_THAT(placesOf(design), ElementsAre(L"/", L"/A", L"/A/C", L"/A/D", L"/B", L"/B/C", L"/B/D"));
    EXPECT_EQ(design.instances[5].path, L"/root/B-id/C-id");
    EXPECT_EQ(design.instances[5].file, 2U);
}

TEST_F(DesignReader, KnowsOnWhatEachPlaceLies) {
    write("root.kicad_sch", sheet("A", "x.kicad_sch") + sheet("B", "x.kicad_sch"));
    write("x.kicad_sch", sheet("", "y.kicad_sch") + sheet("D", "y.kicad_sch"));
    write("y.kicad_sch", "");
    const SheetInstance place = read().instances.at(6);
    EXPECT_EQ(place.names, L"/B/D");
    EXPECT_EQ(place.parent, 4U);
    EXPECT_EQ(place.sheet, 1U);
}

TEST_F(DesignReader, FindsAFileRelativeToTheSheetThatNamesIt) {
    write("root.kicad_sch", sheet("A", "Sub Sheets/One.kicad_sch"));
    write("Sub Sheets/One.kicad_sch", sheet("B", "../two.kicad_sch") + sheet("C", "Three.kicad_sch"));
    write("two.kicad_sch", "");
    write("Sub Sheets/Three.kicad_sch", "");
    EXPECT_THAT(namesOf(read()), ElementsAre(L"root.kicad_sch", L"Sub Sheets/One.kicad_sch", L"two.kicad_sch",
                                             L"Sub Sheets/Three.kicad_sch"));
}

TEST_F(DesignReader, TakesAFileForTheSameUnderEverySpelling) {
    write("root.kicad_sch", sheet("A", "x.kicad_sch") + sheet("B", "./sub/../x.kicad_sch"));
    write("x.kicad_sch", "");
    write("sub/other.kicad_sch", "");
    EXPECT_THAT(namesOf(read()), ElementsAre(L"root.kicad_sch", L"x.kicad_sch"));
}

TEST_F(DesignReader, FindsAFileWhoseNameIsNotAscii) {
    write("root.kicad_sch", sheet("A", "M\xC3\xBC\xF0\x9F\x8C\xA1.kicad_sch"));
    folder_.file(std::u8string(u8"M\u00FC\U0001F321.kicad_sch"), schematicText(""));
    EXPECT_THAT(namesOf(read()), ElementsAre(L"root.kicad_sch", L"M\u00FC\U0001F321.kicad_sch"));
}

TEST_F(DesignReader, FindsTheRootInTheWorkingFolder) {
    write("root.kicad_sch", sheet("A", "x.kicad_sch"));
    write("x.kicad_sch", "");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    const Design design = readDesign("root.kicad_sch");
    std::filesystem::current_path(before);
    EXPECT_THAT(namesOf(design), ElementsAre(L"root.kicad_sch", L"x.kicad_sch"));
}

TEST_F(DesignReader, RefusesARootThatIsMissing) {
    EXPECT_EQ(error(),
              path("root.kicad_sch").generic_string() + ": expected a schematic file, found none there");
}

TEST_F(DesignReader, RefusesAFolder) {
    std::filesystem::create_directory(path("root.kicad_sch"));
    EXPECT_THAT(error(), HasSubstr("expected a schematic file"));
}

TEST_F(DesignReader, RefusesASheetThatIsMissing) {
    write("root.kicad_sch", sheet("A", "x.kicad_sch"));
    write("x.kicad_sch", "\n" + sheet("B", "Gone.kicad_sch"));
    EXPECT_EQ(error(), at("x.kicad_sch", "3:71") + "expected a sheet file, found none at \"Gone.kicad_sch\"");
}

// Some systems do not tell upper from lower case; there it is the same file as under its own name.
TEST_F(DesignReader, TakesASheetNamedInTheWrongCaseAsTheSystemDoes) {
    write("root.kicad_sch", sheet("A", "X.kicad_sch") + sheet("B", "x.kicad_sch"));
    write("x.kicad_sch", "");
    if (std::filesystem::exists(path("X.kicad_sch"))) {
        EXPECT_THAT(namesOf(read()), ElementsAre(L"root.kicad_sch", L"X.kicad_sch"));
    } else {
        EXPECT_THAT(error(), HasSubstr("found none at \"X.kicad_sch\""));
    }
}

class DesignReaderIn : public DesignReader, public testing::WithParamInterface<std::filesystem::path> {
protected:
    awkward::Folder awkward_{folder_.path(), GetParam()};
};

TEST_P(DesignReaderIn, FindsTheRootAndItsSheets) {
    folder_.file(GetParam() / "root.kicad_sch", schematicText(sheet("A", "x.kicad_sch")));
    folder_.file(GetParam() / "x.kicad_sch", schematicText(""));
    EXPECT_THAT(namesOf(readDesign(awkward_.path() / "root.kicad_sch")),
                ElementsAre(L"root.kicad_sch", L"x.kicad_sch"));
}

TEST_P(DesignReaderIn, FindsASheetBelowTheRoot) {
    const std::filesystem::path file = GetParam() / "x.kicad_sch";
    const std::u8string written = file.generic_u8string();
    write("root.kicad_sch", sheet("A", std::string(written.begin(), written.end())));
    folder_.file(file, schematicText(""));
    EXPECT_EQ(read().files.size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Folders, DesignReaderIn, awkward::folders(), awkward::nameOfFolder);

TEST_F(DesignReader, RefusesASheetThatContainsItself) {
    write("root.kicad_sch", sheet("A", "root.kicad_sch"));
    EXPECT_EQ(error(), at("root.kicad_sch", "2:71") +
                           "expected a sheet file that does not contain the sheet that names it, found "
                           "\"root.kicad_sch\"");
}

TEST_F(DesignReader, RefusesASheetThatContainsItselfThroughOthers) {
    write("root.kicad_sch", sheet("A", "x.kicad_sch"));
    write("x.kicad_sch", sheet("B", "y.kicad_sch"));
    write("y.kicad_sch", sheet("C", "./x.kicad_sch"));
    EXPECT_EQ(
        error(),
        at("y.kicad_sch", "2:71") +
            "expected a sheet file that does not contain the sheet that names it, found \"./x.kicad_sch\"");
}

TEST_F(DesignReader, RefusesASheetThatIsNoSchematic) {
    write("root.kicad_sch", sheet("A", "x.txt"));
    folder_.file("x.txt", "\nhello");
    EXPECT_THAT(error(), StartsWith(at("x.txt", "2:1") + "expected a schematic"));
}

std::string chainFile(std::size_t index) {
    std::string name = index == 0 ? "root.kicad_sch" : "s";
    return index == 0 ? name : name.append(std::to_string(index));
}

// Each file names the next one `times` times.
void writeChain(const TempFolder& folder, std::size_t length, int times) {
    for (std::size_t i = 0; i < length; ++i) {
        std::string body;
        for (int t = 0; t < times; ++t) {
            body += sheet(t == 0 ? "S0" : "S1", chainFile(i + 1));
        }
        folder.file(chainFile(i), schematicText(body));
    }
    folder.file(chainFile(length), schematicText(""));
}

TEST_F(DesignReader, NestsSheetsAsDeepAsTheLimit) {
    writeChain(folder_, kMaxSheetDepth, 1);
    EXPECT_EQ(read().instances.size(), kMaxSheetDepth + 1);
}

TEST_F(DesignReader, RefusesSheetsThatNestDeeper) {
    writeChain(folder_, kMaxSheetDepth + 1, 1);
    EXPECT_EQ(error(), at("s32", "2:73") + "expected at most 32 levels of sheets, found one more at \"s33\"");
}

TEST_F(DesignReader, RefusesSheetsThatMultiplyWithoutEnd) {
    writeChain(folder_, kMaxSheetDepth, 2);
    EXPECT_THAT(error(), HasSubstr("expected at most 20000 sheets after expansion"));
}

TEST_F(DesignReader, RefusesSymbolsThatMultiplyWithoutEnd) {
    std::string symbols;
    for (int i = 0; i < 1000; ++i) {
        symbols += "(symbol (lib_id a))";
    }
    std::string sheets;
    for (int i = 0; i < 70; ++i) {
        sheets += sheet("S", "x");
    }
    std::string more;
    for (int i = 0; i < 70; ++i) {
        more += sheet("S", "y");
    }
    write("root.kicad_sch", sheets);
    write("x", more);
    write("y", symbols);
    EXPECT_THAT(error(), HasSubstr(" characters after expansion"));
}

std::string sheets(int count, const std::string& uuid, const std::string& file) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += R"((sheet (uuid ")";
        all += uuid;
        all += R"(") (property "Sheetname" "S") (property "Sheetfile" ")";
        all += file;
        all += R"(")))";
    }
    return all;
}

TEST_F(DesignReader, RefusesALongUuidAboveManyPlaces) {
    write("root.kicad_sch", sheets(1, std::string(100'000, 'u'), "x"));
    write("x", sheets(100, "x", "y"));
    write("y", sheets(100, "y", "z"));
    write("z", "");
    EXPECT_THAT(error(), HasSubstr(" characters after expansion"));
}

TEST_F(DesignReader, RefusesALongReferenceInManyPlaces) {
    write("root.kicad_sch", sheets(100, "x", "x"));
    write("x", sheets(100, "x", "y"));
    write("y", R"((symbol (lib_id a) (property "Reference" ")" + std::string(100'000, 'R') + "\"))");
    EXPECT_THAT(error(), HasSubstr(" characters after expansion"));
}

TEST_F(DesignReader, RefusesAReferenceOfTheRootThatManySymbolsShare) {
    write("root.kicad_sch", sheets(1, "x", "x") + R"((symbol_instances (path "/x/u" (reference ")" +
                                std::string(100'000, 'R') + "\")))");
    std::string symbols;
    for (int i = 0; i < 1000; ++i) {
        symbols += "(symbol (lib_id a) (uuid u))";
    }
    write("x", symbols);
    EXPECT_THAT(error(), HasSubstr(" characters after expansion"));
}

TEST_F(DesignReader, RefusesALongReferenceThatManySymbolsOfTheRootShare) {
    std::string symbols;
    for (int i = 0; i < 1000; ++i) {
        symbols += "(symbol (lib_id a) (uuid u))";
    }
    write("root.kicad_sch",
          symbols + R"((symbol_instances (path "/u" (reference ")" + std::string(100'000, 'R') + "\")))");
    EXPECT_THAT(error(), HasSubstr(" characters after expansion, found more in the root"));
}

TEST_F(DesignReader, ReadsASheetOfManySymbolsInManyPlaces) {
    write("root.kicad_sch", sheets(256, "x", "x"));
    std::string symbols;
    for (int i = 0; i < 200; ++i) {
        symbols += R"((symbol (lib_id a) (property "Reference" "R1")))";
    }
    write("x", symbols);
    EXPECT_EQ(read().instances.size(), 257U);
}

class ProgressLog : public ReadProgress {
public:
    void bytesRead(std::uint64_t done, std::uint64_t total) override { steps.emplace_back(done, total); }

    std::vector<std::pair<std::uint64_t, std::uint64_t>> steps;
};

TEST_F(DesignReader, TellsProgressUntilAllIsRead) {
    const std::string filler = "(symbol (lib_id \"" + std::string(1000, 'x') + "\"))\n";
    std::string many;
    for (int i = 0; i < 1000; ++i) {
        many += filler;
    }
    const auto size = std::filesystem::file_size(write("root.kicad_sch", sheet("A", "x") + many)) +
                      std::filesystem::file_size(write("x", many));
    ProgressLog log;
    readDesign(path("root.kicad_sch"), &log);
    EXPECT_GE(log.steps.size(), size / 65536 - 4);
    EXPECT_LE(log.steps.size(), size / 65536 + 2);
    EXPECT_EQ(log.steps.back(), std::make_pair(size, size));
}

TEST_F(DesignReader, NeverTellsOfProgressBackwardsOrBeyondTheTotal) {
    write("root.kicad_sch", sheet("A", "x") + sheet("B", "y"));
    write("x", sheet("C", "y"));
    write("y", std::string(200000, ' ') + "(symbol (lib_id a))");
    ProgressLog log;
    readDesign(path("root.kicad_sch"), &log);
    std::uint64_t last = 0;
    for (const auto& [done, total] : log.steps) {
        EXPECT_GE(done, last);
        EXPECT_LE(done, total);
        last = done;
    }
}

TEST_F(DesignReader, EndsWithWhatTheProgressThrows) {
    class Cancel : public ReadProgress {
        void bytesRead(std::uint64_t /*done*/, std::uint64_t /*total*/) override {
            throw std::length_error("cancelled");
        }
    };

    write("root.kicad_sch", "");
    Cancel cancel;
    EXPECT_THROW(readDesign(path("root.kicad_sch"), &cancel), std::length_error);
}

} // namespace
} // namespace kthost
