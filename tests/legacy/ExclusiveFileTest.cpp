#include <ExclusiveFile.h>

#include "tests/legacy/OpenError.h"
#include "tests/legacy/TempFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace {

TEST(ExclusiveFile, OpensAFileThatNobodyHolds) {
    EXPECT_FALSE(openError(TempFile("abc").path()));
}

TEST(ExclusiveFile, TellsTheSize) {
    const TempFile temp("abc");
    ExclusiveFile file;
    ASSERT_FALSE(file.open(temp.path()));
    EXPECT_EQ(file.size(), 3U);
}

TEST(ExclusiveFile, ReadsOnFromWhereItLeftOff) {
    const TempFile temp("abc");
    ExclusiveFile file;
    ASSERT_FALSE(file.open(temp.path()));
    std::string read(2, ' ');
    std::size_t got = 0;
    EXPECT_FALSE(file.read(read.data(), 2, got));
    EXPECT_EQ(read.substr(0, got), "ab");
    EXPECT_FALSE(file.read(read.data(), 2, got));
    EXPECT_EQ(read.substr(0, got), "c");
    EXPECT_FALSE(file.read(read.data(), 2, got));
    EXPECT_EQ(got, 0U);
}

TEST(ExclusiveFile, TellsThatAFileIsMissing) {
    EXPECT_EQ(openError(std::filesystem::temp_directory_path() / "no such file"),
              std::errc::no_such_file_or_directory);
}

TEST(ExclusiveFile, RefusesAFolder) {
    EXPECT_EQ(openError(std::filesystem::temp_directory_path()), std::errc::invalid_argument);
}

TEST(ExclusiveFile, IsRefusedWhileThisProcessHoldsItForReading) {
    const TempFile temp("abc");
    const std::ifstream holder(temp.path());
    EXPECT_EQ(openError(temp.path()), std::errc::text_file_busy);
}

TEST(ExclusiveFile, IsRefusedWhileThisProcessHoldsItForWriting) {
    const TempFile temp("abc");
    const std::ofstream holder(temp.path(), std::ios::app);
    EXPECT_EQ(openError(temp.path()), std::errc::text_file_busy);
}

TEST(ExclusiveFile, IsRefusedWhileAnotherOneOfItsKindHasIt) {
    const TempFile temp("abc");
    ExclusiveFile first;
    ASSERT_FALSE(first.open(temp.path()));
    EXPECT_EQ(openError(temp.path()), std::errc::text_file_busy);
}

TEST(ExclusiveFile, LetsWritersInOnceItIsClosed) {
    const TempFile temp("abc");
    std::optional<ExclusiveFile> file(std::in_place);
    ASSERT_FALSE(file->open(temp.path()));
    file.reset();
    EXPECT_TRUE(std::ofstream(temp.path(), std::ios::app));
}

} // namespace
