#include "ReplaceFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace parts {

namespace {

class ReplaceFile : public testing::Test {
protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::path(testing::TempDir()) / (std::string("parts-") + test->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }

    void TearDown() override { std::filesystem::remove_all(folder_); }

    static std::string read(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
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

TEST_F(ReplaceFile, TakesNamesOutsideAscii) {
    EXPECT_FALSE(replaceFile(folder_ / u8"Stückliste Ω.csv", "x"));
    EXPECT_EQ(read(folder_ / u8"Stückliste Ω.csv"), "x");
}

} // namespace

} // namespace parts
