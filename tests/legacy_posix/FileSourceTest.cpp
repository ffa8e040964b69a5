#include "legacy/FileSource.h"

#include "legacy/TemplateFailure.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>

namespace {

using testing::StartsWith;
using testing::ThrowsMessage;

TEST(FileSource, FailsWhereReadingDoes) {
    const std::filesystem::path unreadable = "/proc/self/mem"; // no process has memory at address 0
    if (!std::filesystem::exists(unreadable)) {
        GTEST_SKIP() << "no file of this system opens and cannot be read";
    }
    FileSource source(unreadable);
    std::array<unsigned char, 8> bytes{};
    EXPECT_THAT([&] { source.read(bytes); }, ThrowsMessage<FileFailure>(StartsWith("reading fails: ")));
}

TEST(FileSource, HasNoPathForANameThatIsNoText) {
    EXPECT_THAT([] { templatePath(L"\xD800"); },
                ThrowsMessage<FileFailure>(StartsWith("cannot be opened: ")));
}

TEST(FileSource, TakesNoFolder) {
    EXPECT_THAT([] { const FileSource folder(testing::TempDir()); },
                ThrowsMessage<FileFailure>("not a regular file"));
}

} // namespace
