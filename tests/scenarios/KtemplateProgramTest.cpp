#include "tests/scenarios/ProgramFixture.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class KtemplateProgram : public ProgramFixture {
protected:
    int runKtemplate(Words arguments) { return runProgram("ktemplate", {.arguments = std::move(arguments)}); }
};

TEST_F(KtemplateProgram, TakesPathsOutsideAsciiWhateverTheLocale) {
    write(folder_ / u8"回路 𝛺.json", R"({"version": 1, "blocks": []})");
    EXPECT_EQ(runProgram("ktemplate", {.arguments = {"make", "回路 𝛺.json", "Größe 🔌.blk"},
                                       .environment = {{"LC_ALL", "C"}}}),
              0)
        << outcome_.errors;
    EXPECT_EQ(runKtemplate({"check", "Größe 🔌.blk"}), 0);
    EXPECT_EQ(outcome_.output, "Größe 🔌.blk: sound, blocks: 0, attributes: 0\n");
}

TEST_F(KtemplateProgram, MakesTheSampleOfItsJson) {
    EXPECT_EQ(runKtemplate({"make", sample("parts.json"), "parts.blk"}), 0) << outcome_.errors;
    EXPECT_EQ(read(folder_ / "parts.blk"), read(sample("parts.blk")));
}

TEST_F(KtemplateProgram, EndsWith1WhereSomethingIsNotSound) {
    write(folder_ / "a.blk", "no template");
    EXPECT_EQ(runKtemplate({"check", copyOfSample("parts.blk"), "a.blk"}), 1);
    EXPECT_THAT(outcome_.output, HasSubstr("a.blk: byte "));
}

TEST_F(KtemplateProgram, EndsWith2WhenItIsNotUsedRight) {
    EXPECT_EQ(runKtemplate({"frobnicate"}), 2);
}

} // namespace
