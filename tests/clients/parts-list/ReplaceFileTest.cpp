#include "ReplaceFile.h"

#include "tests/support/AwkwardFolders.h"

#include <SystemPath.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

namespace parts {

namespace {

class ReplaceFile : public testing::Test {
protected:
    void SetUp() override {
        std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::replace(name.begin(), name.end(), '/', '-');
        folder_ = std::filesystem::path(testing::TempDir()) / ("parts-" + name);
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }

    void TearDown() override { std::filesystem::remove_all(folder_); }

    static std::string read(const std::filesystem::path& file) {
        std::ifstream stream(systemPath(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    std::ptrdiff_t filesInFolder() const {
        return std::distance(std::filesystem::directory_iterator(folder_),
                             std::filesystem::directory_iterator());
    }

    std::filesystem::path folder_;
};

TEST_F(ReplaceFile, WritesAFileThatWasNotThere) {
    EXPECT_FALSE(replaceFile(folder_ / "list.csv", "abc\r\n"));
    EXPECT_EQ(read(folder_ / "list.csv"), "abc\r\n");
}

TEST_F(ReplaceFile, PutsTheNewOneInPlaceOfTheOldAndLeavesNothingBeside) {
    ASSERT_FALSE(replaceFile(folder_ / "list.csv", "a longer content"));
    EXPECT_FALSE(replaceFile(folder_ / "list.csv", "b"));
    EXPECT_EQ(read(folder_ / "list.csv"), "b");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(ReplaceFile, ReportsAFolderThatDoesNotExist) {
    EXPECT_EQ(replaceFile(folder_ / "nowhere" / "list.csv", "x"), std::errc::no_such_file_or_directory);
}

TEST_F(ReplaceFile, LeavesNothingBesideWhenItCannotReplace) {
    std::filesystem::create_directories(folder_ / "list.csv" / "inside");
    EXPECT_TRUE(replaceFile(folder_ / "list.csv", "x"));
    EXPECT_EQ(filesInFolder(), 1);
}

class ReplaceFileIn : public ReplaceFile, public testing::WithParamInterface<std::filesystem::path> {};

TEST_P(ReplaceFileIn, PutsTheNewOneInPlaceOfTheOld) {
    const awkward::Folder awkward(folder_, GetParam());
    const std::filesystem::path file = awkward.path() / u8"Stückliste 𝛺.csv";
    EXPECT_FALSE(replaceFile(file, "a longer content"));
    EXPECT_FALSE(replaceFile(file, "b"));
    EXPECT_EQ(read(file), "b");
}

INSTANTIATE_TEST_SUITE_P(Folders, ReplaceFileIn, awkward::folders(), awkward::nameOfFolder);

} // namespace

} // namespace parts
