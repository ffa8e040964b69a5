#include "tests/legacy/TemplateBytes.h"
#include "tests/scenarios/ProgramFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

/// What the demo of the sample prints and writes is kept beside this file, to the byte, and every system has
/// to agree with it. When the demo changes, what it writes then takes the place of what is kept.
class TheSampleEverywhere : public ProgramFixture {
protected:
    void SetUp() override {
        copyOfSample("parts.blk");
        Words arguments = allModules();
        arguments.insert(arguments.end(), {"--trace", "trace.jsonl", "--script", sample("demo.script"),
                                           sample("sensor-node.kicad_sch")});
        ASSERT_EQ(run(std::move(arguments)), 0) << outcome_.errors;
    }

    static std::string expected(const std::string& name) {
        return read(std::filesystem::path(KTDX_SAMPLES).parent_path() / "tests/scenarios/expected" / name);
    }

    /// The trace's lines with text outside ASCII, without their numbers. Others have addresses, which differ
    /// from run to run.
    std::string tracedText() const {
        std::istringstream trace(read(folder_ / "trace.jsonl"));
        std::string text;
        for (std::string line; std::getline(trace, line);) {
            if (std::any_of(line.begin(), line.end(), [](char byte) { return (byte & 0x80) != 0; })) {
                text += "{" + line.substr(line.find(", ") + 2) + "\n";
            }
        }
        return text;
    }
};

TEST_F(TheSampleEverywhere, IsPrintedTheSame) {
    EXPECT_EQ(outcome_.output, expected("output.txt"));
}

TEST_F(TheSampleEverywhere, IsListedTheSame) {
    EXPECT_EQ(read(folder_ / "parts.csv"), expected("parts.csv"));
    EXPECT_EQ(read(folder_ / "template.csv"), expected("template.csv"));
}

TEST_F(TheSampleEverywhere, IsTracedTheSame) {
    EXPECT_EQ(tracedText(), expected("trace.jsonl"));
}

class TextEverywhere : public ProgramFixture {
protected:
    void SetUp() override {
        write(folder_ / "a.json", R"({"version": 1, "blocks": [{"name": "Größe 回路", "selected": true,
              "attributes": [{"tag": "𝛺🔌", "selected": true}]}]})");
        ASSERT_EQ(runProgram("ktemplate", {.arguments = {"make", "a.json", "a.blk"}}), 0) << outcome_.errors;
    }
};

TEST_F(TextEverywhere, IsTheSameInATemplate) {
    EXPECT_EQ(read(folder_ / "a.blk"),
              TemplateBytes().header(1).newClass().body(u"Größe 回路", 1, 1).attribute(u"𝛺🔌", 1).bytes());
}

TEST_F(TextEverywhere, IsTheSameInATableByATemplate) {
    EXPECT_EQ(runScript("new plan\ndefine \"Größe 回路\"\n"
                        "insert \"Größe 回路\" 10,10 Reference=R1 𝛺🔌=𠮷🌡\n"
                        "parts from a.blk to list.csv\nparts check\n",
                        allModules()),
              0)
        << outcome_.errors;
    EXPECT_EQ(read(folder_ / "list.csv"),
              "Block,Container,Handle,𝛺🔌\r\nGröße 回路,*Model_Space,5,𠮷🌡\r\n");
}

} // namespace
