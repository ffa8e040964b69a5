#include "legacy/FileSource.h"

#include "legacy/TemplateFailure.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

namespace {

TEST(FileSource, FailsWhereReadingDoes) {
    const std::filesystem::path unreadable = "/proc/self/mem"; // no process has memory at address 0
    if (!std::filesystem::exists(unreadable)) {
        GTEST_SKIP() << "no file of this system opens and cannot be read";
    }
    FileSource source(unreadable);
    std::array<unsigned char, 8> bytes{};
    EXPECT_THROW(source.read(bytes), FileFailure);
}

} // namespace
