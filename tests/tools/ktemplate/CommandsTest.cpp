#include "tools/ktemplate/Commands.h"

#include "tests/legacy/TemplateBytes.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

namespace {

using ktemplate::Status;
namespace fs = std::filesystem;

const char* const kJson = R"({
  "version": 1,
  "blocks": [
    {
      "name": "Passive:R",
      "selected": true,
      "attributes": [
        {"tag": "Reference", "selected": true},
        {"tag": "Value", "selected": false}
      ]
    },
    {
      "name": "",
      "selected": false,
      "attributes": []
    }
  ]
}
)";

TemplateBytes resistor() {
    return TemplateBytes()
        .header(2)
        .newClass()
        .body(u"Passive:R", 1, 2)
        .attribute(u"Reference", 1)
        .attribute(u"Value", 0)
        .u16(0x8001)
        .body(u"", 0, 0);
}

/// Commands in a folder of their own, with what they print kept.
class CommandsTest : public testing::Test {
protected:
    [[nodiscard]] fs::path sound() const { return folder_.file("sound.blk", resistor().bytes()); }

    [[nodiscard]] fs::path cutOff() const {
        const std::string bytes = resistor().bytes();
        return folder_.file("cut.blk", bytes.substr(0, bytes.size() - 1));
    }

    [[nodiscard]] std::string cutOffLine() const {
        return (folder_ / "cut.blk").generic_string() + ": byte " +
               std::to_string(resistor().bytes().size() - 4) +
               ", block 2, attribute count: end of file: 4 bytes are needed and 3 remain\n";
    }

    TempFolder folder_;
    std::ostringstream out_;
    std::ostringstream err_;
    ktemplate::Console console_{out_, err_};
};

TEST_F(CommandsTest, ShowPrintsAllOfATemplate) {
    EXPECT_EQ(ktemplate::show(sound(), false, console_), Status::sound);
    EXPECT_EQ(out_.str(), "version 1, 2 blocks, 1 selected\n"
                          "[x] Passive:R\n"
                          "    [x] Reference\n"
                          "    [ ] Value\n"
                          "[ ] (empty)\n");
}

TEST_F(CommandsTest, ShowPrintsJson) {
    EXPECT_EQ(ktemplate::show(sound(), true, console_), Status::sound);
    EXPECT_EQ(out_.str(), kJson);
}

TEST_F(CommandsTest, ShowPrintsNothingOfAFileThatIsNotSound) {
    EXPECT_EQ(ktemplate::show(cutOff(), false, console_), Status::unsound);
    EXPECT_EQ(out_.str(), "");
    EXPECT_EQ(err_.str(), "ktemplate: " + cutOffLine());
}

TEST_F(CommandsTest, ShowTellsThatItsOutputCannotBeWritten) {
    out_.setstate(std::ios::badbit);
    EXPECT_EQ(ktemplate::show(sound(), false, console_), Status::unsound);
    EXPECT_EQ(err_.str(), "ktemplate: cannot write the output\n");
}

TEST_F(CommandsTest, MakeWritesATemplate) {
    const fs::path made = folder_ / "made.blk";
    EXPECT_EQ(ktemplate::make(folder_.file("a.json", kJson), made, console_), Status::sound);
    EXPECT_EQ(contentsOf(made), resistor().bytes());
}

TEST_F(CommandsTest, MakeRefusesJsonThatDoesNotFitAndLeavesTheFileThatIsThere) {
    const fs::path json = folder_.file("a.json", R"({"version": "1"})");
    const fs::path there = sound();
    EXPECT_EQ(ktemplate::make(json, there, console_), Status::unsound);
    EXPECT_EQ(err_.str(),
              "ktemplate: " + json.generic_string() + ": /version: is a string and has to be an integer\n");
    EXPECT_EQ(contentsOf(there), resistor().bytes());
}

TEST_F(CommandsTest, MakeTellsThatThereIsNoJson) {
    const fs::path missing = folder_ / "none.json";
    EXPECT_EQ(ktemplate::make(missing, folder_ / "a.blk", console_), Status::unsound);
    EXPECT_EQ(err_.str(), "ktemplate: " + missing.generic_string() + ": cannot be opened\n");
}

TEST_F(CommandsTest, MakeTellsThatTheTemplateCannotBeWritten) {
    const fs::path json = folder_.file("a.json", kJson);
    EXPECT_EQ(ktemplate::make(json, folder_.path(), console_), Status::unsound);
    EXPECT_EQ(err_.str(), "ktemplate: " + folder_.path().generic_string() + ": not a regular file\n");
}

TEST_F(CommandsTest, MakeDoesNotReplaceItsOwnSource) {
    const fs::path json = folder_.file("a.json", kJson);
    EXPECT_EQ(ktemplate::make(json, json, console_), Status::usage);
    EXPECT_EQ(contentsOf(json), kJson);
}

TEST_F(CommandsTest, MakeShowsAProgressBarForWorkBeyondASecond) {
    ktemplate::ProgressBar::Clock::time_point now{};
    const ktemplate::Console slow{out_, err_, true, [&now] { return now += std::chrono::seconds(2); }};
    ktemplate::make(folder_.file("a.json", kJson), folder_ / "a.blk", slow);
    EXPECT_NE(err_.str().find('%'), std::string::npos);
}

TEST_F(CommandsTest, ListsPrintsWhatAClientGets) {
    EXPECT_EQ(ktemplate::lists(sound(), console_), Status::sound);
    EXPECT_EQ(out_.str(), "{\n"
                          "  \"blockNames\": [\n"
                          "    \"Passive:R\"\n"
                          "  ],\n"
                          "  \"attributeTags\": [\n"
                          "    \"Reference\"\n"
                          "  ]\n"
                          "}\n");
}

TEST_F(CommandsTest, ListsIsContentWithATemplateInWhichNothingIsSelected) {
    EXPECT_EQ(ktemplate::lists(folder_.file("none.blk", TemplateBytes().header(0).bytes()), console_),
              Status::sound);
    EXPECT_EQ(out_.str(), "{\n  \"blockNames\": [],\n  \"attributeTags\": []\n}\n");
    EXPECT_EQ(err_.str(), "");
}

TEST_F(CommandsTest, ListsTellsWhyAClientGetsNothing) {
    EXPECT_EQ(ktemplate::lists(cutOff(), console_), Status::unsound);
    EXPECT_EQ(out_.str(), "{\n  \"blockNames\": [],\n  \"attributeTags\": []\n}\n");
    EXPECT_EQ(err_.str(), "ktemplate: " + cutOffLine());
}

TEST_F(CommandsTest, ListsReadsAFileWhoseNameIsNotAscii) {
    const fs::path file = folder_ / fs::path(u8"\u00FC\U0001F600.blk");
    std::ofstream(file, std::ios::binary) << resistor().bytes();
    EXPECT_EQ(ktemplate::lists(file, console_), Status::sound);
    EXPECT_NE(out_.str().find("Passive:R"), std::string::npos);
}

TEST_F(CommandsTest, CheckTellsThatAFileIsSound) {
    const fs::path file = sound();
    EXPECT_EQ(ktemplate::check({file}, console_), Status::sound);
    EXPECT_EQ(out_.str(), file.generic_string() + ": sound, blocks: 2, attributes: 2\n");
}

TEST_F(CommandsTest, CheckTellsOfBytesAfterTheLastBlock) {
    const fs::path file = folder_.file("more.blk", TemplateBytes().header(0).raw("more").bytes());
    EXPECT_EQ(ktemplate::check({file}, console_), Status::sound);
    EXPECT_EQ(out_.str(), file.generic_string() +
                              ": sound, blocks: 0, attributes: 0, bytes ignored after the last block: 4\n");
}

TEST_F(CommandsTest, CheckTellsWhereAndWhyAFileIsNotSound) {
    EXPECT_EQ(ktemplate::check({cutOff()}, console_), Status::unsound);
    EXPECT_EQ(out_.str(), cutOffLine());
}

TEST_F(CommandsTest, CheckNamesTheAttributeWhereAFileEnds) {
    const fs::path file = folder_.file(
        "a.blk", TemplateBytes().header(1).newClass().body(u"B", 1, 2).attribute(u"T", 1).bytes());
    ktemplate::check({file}, console_);
    EXPECT_EQ(out_.str(),
              file.generic_string() +
                  ": byte 44, block 1, attribute 2, tag: end of file: 1 bytes are needed and 0 remain\n");
}

TEST_F(CommandsTest, CheckTellsOfAnAbsurdBlockCount) {
    const fs::path file =
        folder_.file("a.blk", TemplateBytes().u32(1).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 63).bytes());
    EXPECT_EQ(ktemplate::check({file}, console_), Status::unsound);
    EXPECT_EQ(out_.str(), file.generic_string() +
                              ": byte 18, block count: more blocks are announced than any memory can hold\n");
}

TEST_F(CommandsTest, CheckTellsThatAFileIsMissing) {
    const fs::path file = folder_ / "none.blk";
    EXPECT_EQ(ktemplate::check({file}, console_), Status::unsound);
    EXPECT_EQ(out_.str(),
              file.generic_string() + ": cannot be opened: " + std::system_category().message(ENOENT) + "\n");
}

TEST_F(CommandsTest, CheckTellsThatSomebodyHoldsAFileOpen) {
    const fs::path file = sound();
    const std::ifstream holder(file);
    EXPECT_EQ(ktemplate::check({file}, console_), Status::unsound);
    EXPECT_EQ(out_.str(), file.generic_string() + ": somebody else holds the file open\n");
}

TEST_F(CommandsTest, CheckGoesOnAfterAFileThatIsNotSound) {
    const fs::path file = sound();
    EXPECT_EQ(ktemplate::check({cutOff(), file}, console_), Status::unsound);
    EXPECT_EQ(out_.str(), cutOffLine() + file.generic_string() + ": sound, blocks: 2, attributes: 2\n");
}

TEST_F(CommandsTest, CheckSpellsOutWhatAFileSaysOfItself) {
    const fs::path file = folder_.file("a.blk", TemplateBytes().header(1).newClass("\x1B[2J").bytes());
    ktemplate::check({file}, console_);
    EXPECT_EQ(out_.str(), file.generic_string() +
                              ": byte 10, block 1, class: bad class: there is no class \"\\u{1b}[2J\"\n");
}

} // namespace
