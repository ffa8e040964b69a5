#include "tools/ktemplate/WriteBeside.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

/// What becomes of links and of permissions.
namespace {

using ktemplate::writeBeside;
namespace fs = std::filesystem;

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

} // namespace
