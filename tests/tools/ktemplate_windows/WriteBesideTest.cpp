#include "tools/ktemplate/WriteBeside.h"

#include "tests/support/TempFolder.h"

#include <WindowSystem.h>

#include <gtest/gtest.h>

#include <stdexcept>

/// What becomes of files that must not be written.
namespace {

using ktemplate::writeBeside;
namespace fs = std::filesystem;

class ReadOnlyFile : public testing::Test {
protected:
    ReadOnlyFile() { SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY); }

    ~ReadOnlyFile() override { SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL); }

    TempFolder folder_;
    fs::path file_ = folder_.file("a", "old");
};

TEST_F(ReadOnlyFile, HasNothingLeftBesideIt) {
    try {
        writeBeside(file_, "new");
    } catch (const std::runtime_error&) { // the system may refuse to replace it
    }
    EXPECT_EQ(folder_.countEntries(), 1U);
}

TEST(WriteBeside, DoesNotMakeAFileReadOnly) {
    const TempFolder folder;
    const fs::path file = folder.file("a", "old");
    writeBeside(file, "new");
    EXPECT_EQ(GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
}

} // namespace
