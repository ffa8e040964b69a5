#include "tools/ktemplate/WriteBeside.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using ktemplate::writeBeside;
namespace fs = std::filesystem;

TEST(WriteBeside, MakesAFile) {
    const TempFolder folder;
    writeBeside(folder.path() / "a", "new");
    EXPECT_EQ(contentsOf(folder.path() / "a"), "new");
}

TEST(WriteBeside, ReplacesAFile) {
    const TempFolder folder;
    const fs::path file = folder.file("a", "something old");
    writeBeside(file, "new");
    EXPECT_EQ(contentsOf(file), "new");
}

TEST(WriteBeside, LeavesNothingBeside) {
    const TempFolder folder;
    writeBeside(folder.path() / "a", "new");
    EXPECT_EQ(folder.countEntries(), 1U);
}

TEST(WriteBeside, DoesNotWriteIntoTheOldFile) {
    const TempFolder folder;
    const fs::path file = folder.file("a", "old");
    fs::create_hard_link(file, folder.path() / "b");
    writeBeside(file, "new");
    EXPECT_EQ(contentsOf(folder.path() / "b"), "old");
}

TEST(WriteBeside, RefusesAFolder) {
    const TempFolder folder;
    EXPECT_THROW(writeBeside(folder.path(), "new"), std::runtime_error);
}

TEST(WriteBeside, RefusesAFolderThatIsNotThere) {
    const TempFolder folder;
    EXPECT_THROW(writeBeside(folder.path() / "none" / "a", "new"), std::runtime_error);
}

TEST(WriteBeside, LeavesNothingWhenItFails) {
    const TempFolder folder;
    EXPECT_THROW(writeBeside(folder.path(), "new"), std::runtime_error);
    EXPECT_EQ(folder.countEntries(), 0U);
}

} // namespace
