#include <ExclusiveFile.h>
#include <WindowSystem.h>

#include "tests/legacy/TempFile.h"
#include "tests/legacy/TemplateBytes.h"
#include "tests/legacy_windows/ShareAll.h"

#include <ktdx/KtDxNotify.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A template while somebody else has it open, and somebody else while it is open as a template.
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Somebody who has the file open.
class Holder {
public:
    Holder(const std::filesystem::path& path, DWORD access, DWORD share)
        : file_(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr)) {}

    ~Holder() {
        if (opened()) {
            CloseHandle(file_);
        }
    }

    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    [[nodiscard]] bool opened() const { return file_ != INVALID_HANDLE_VALUE; }

private:
    HANDLE file_;
};

std::vector<std::wstring> blockNamesOf(const TempFile& file) {
    KtDxStringVector blockNames;
    KtDxStringVector attributeTags;
    ktdxReadLegacyBlkTemplate(file.wide().c_str(), &blockNames, &attributeTags);
    return blockNames.strings();
}

class HeldTemplate : public testing::Test {
protected:
    TempFile file_{TemplateBytes().header(1).newClass().body(u"Door", 1, 0).bytes()};
};

TEST_F(HeldTemplate, IsReadWhileNobodyHasIt) {
    EXPECT_THAT(blockNamesOf(file_), ElementsAre(L"Door"));
}

TEST_F(HeldTemplate, IsNotReadWhileSomebodyReadsItWhoSharesIt) {
    const Holder holder(file_.path(), GENERIC_READ, kShareAll);
    ASSERT_TRUE(holder.opened());
    EXPECT_THAT(blockNamesOf(file_), IsEmpty());
}

TEST_F(HeldTemplate, IsNotReadWhileSomebodyWritesIt) {
    const Holder holder(file_.path(), GENERIC_WRITE, kShareAll);
    ASSERT_TRUE(holder.opened());
    EXPECT_THAT(blockNamesOf(file_), IsEmpty());
}

TEST_F(HeldTemplate, IsNotReadWhileSomebodyHasItToDeleteIt) {
    const Holder holder(file_.path(), DELETE, kShareAll);
    ASSERT_TRUE(holder.opened());
    EXPECT_THAT(blockNamesOf(file_), IsEmpty());
}

TEST_F(HeldTemplate, IsNotReadWhileSomebodySharesItWithNobody) {
    const Holder holder(file_.path(), GENERIC_READ, 0);
    ASSERT_TRUE(holder.opened());
    EXPECT_THAT(blockNamesOf(file_), IsEmpty());
}

TEST_F(HeldTemplate, IsReadAgainWhenItIsLeft) {
    { const Holder holder(file_.path(), GENERIC_READ, kShareAll); }
    EXPECT_THAT(blockNamesOf(file_), ElementsAre(L"Door"));
}

TEST_F(HeldTemplate, IsLeftToOthersOnceItHasBeenRead) {
    blockNamesOf(file_);
    EXPECT_TRUE(Holder(file_.path(), GENERIC_READ | GENERIC_WRITE, 0).opened());
}

TEST_F(HeldTemplate, IsLeftToOthersWhenItCouldNotBeRead) {
    const TempFile cutOff(TemplateBytes().header(3).newClass().bytes());
    EXPECT_THAT(blockNamesOf(cutOff), IsEmpty());
    EXPECT_TRUE(Holder(cutOff.path(), GENERIC_READ | GENERIC_WRITE, 0).opened());
}

TEST_F(HeldTemplate, CannotBeDeletedWhileItIsOpen) {
    ExclusiveFile open;
    ASSERT_FALSE(open.open(file_.path()));
    EXPECT_EQ(DeleteFileW(file_.path().c_str()), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
}

TEST_F(HeldTemplate, IsNotOpenedTwice) {
    ExclusiveFile first;
    ASSERT_FALSE(first.open(file_.path()));
    ExclusiveFile second;
    EXPECT_EQ(second.open(file_.path()), std::errc::text_file_busy);
}

} // namespace
