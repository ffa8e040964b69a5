#include "tools/ktemplate/WriteBeside.h"

#include "tests/tools/ktemplate/TempFolder.h"

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

TEST(WriteBeside, KeepsThePermissionsOfTheOldFile) {
    const TempFolder folder;
    const fs::path file = folder.file("a", "old");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    writeBeside(file, "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(WriteBeside, WritesToWhereALinkPoints) {
    const TempFolder folder;
    const fs::path file = folder.file("a", "old");
    fs::create_symlink(file, folder.path() / "link");
    writeBeside(folder.path() / "link", "new");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "link"));
    EXPECT_EQ(contentsOf(file), "new");
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
