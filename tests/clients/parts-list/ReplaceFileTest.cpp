#include "ReplaceFile.h"

#include "tests/support/AwkwardFolders.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <system_error>

namespace parts {

namespace {

class ReplaceFile : public testing::Test {
protected:
    TempFolder folder_;
};

TEST_F(ReplaceFile, WritesAFileThatWasNotThere) {
    EXPECT_FALSE(replaceFile(folder_ / "list.csv", "abc\r\n"));
    EXPECT_EQ(contentsOf(folder_ / "list.csv"), "abc\r\n");
}

TEST_F(ReplaceFile, PutsTheNewOneInPlaceOfTheOldAndLeavesNothingBeside) {
    ASSERT_FALSE(replaceFile(folder_ / "list.csv", "a longer content"));
    EXPECT_FALSE(replaceFile(folder_ / "list.csv", "b"));
    EXPECT_EQ(contentsOf(folder_ / "list.csv"), "b");
    EXPECT_EQ(folder_.countEntries(), 1U);
}

TEST_F(ReplaceFile, ReportsAFolderThatDoesNotExist) {
    EXPECT_EQ(replaceFile(folder_ / "nowhere" / "list.csv", "x"), std::errc::no_such_file_or_directory);
}

TEST_F(ReplaceFile, LeavesNothingBesideWhenItCannotReplace) {
    std::filesystem::create_directories(folder_ / "list.csv" / "inside");
    EXPECT_TRUE(replaceFile(folder_ / "list.csv", "x"));
    EXPECT_EQ(folder_.countEntries(), 1U);
}

class ReplaceFileIn : public ReplaceFile, public testing::WithParamInterface<std::filesystem::path> {};

TEST_P(ReplaceFileIn, PutsTheNewOneInPlaceOfTheOld) {
    const awkward::Folder awkward(folder_.path(), GetParam());
    const std::filesystem::path file = awkward.path() / u8"Stückliste 𝛺.csv";
    EXPECT_FALSE(replaceFile(file, "a longer content"));
    EXPECT_FALSE(replaceFile(file, "b"));
    EXPECT_EQ(contentsOf(file), "b");
}

INSTANTIATE_TEST_SUITE_P(Folders, ReplaceFileIn, awkward::folders(), awkward::nameOfFolder);

} // namespace

} // namespace parts
