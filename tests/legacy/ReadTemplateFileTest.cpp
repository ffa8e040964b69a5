#include "legacy/CEattMain.h"
#include "tests/legacy/TempFile.h"
#include "tests/legacy/TemplateBytes.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

/// A template object after it has read a file of these bytes.
struct ReadFile {
    explicit ReadFile(const TemplateBytes& bytes) : file(bytes.bytes()) {
        read.m_strTemplatePath = file.wide();
        succeeded = read.ReadTemplateFile();
    }

    [[nodiscard]] const CEattBlockInfo& block(std::size_t i) const { return *read.m_arrBlocks.at(i); }

    TempFile file;
    CEattMain read;
    bool succeeded;
};

TemplateBytes oneBlock() {
    return TemplateBytes().header(1).newClass().body(u"B", 0, 2).attribute(u"X", 1).attribute(u"Y", 0);
}

TEST(ReadTemplateFile, FailsWithoutAPath) {
    EXPECT_FALSE(CEattMain().ReadTemplateFile());
}

TEST(ReadTemplateFile, FailsForAFileThatIsMissing) {
    CEattMain read;
    read.m_strTemplatePath = L"/no/such/file.blk";
    EXPECT_FALSE(read.ReadTemplateFile());
}

TEST(ReadTemplateFile, FailsForAFolder) {
    CEattMain read;
    read.m_strTemplatePath = std::filesystem::temp_directory_path().wstring();
    EXPECT_FALSE(read.ReadTemplateFile());
}

TEST(ReadTemplateFile, FailsForANameThatNoFileCanHave) {
    CEattMain read;
    read.m_strTemplatePath = std::wstring(1, static_cast<wchar_t>(0xD800));
    EXPECT_FALSE(read.ReadTemplateFile());
}

TEST(ReadTemplateFile, FailsForAnEmptyFile) {
    EXPECT_FALSE(ReadFile(TemplateBytes()).succeeded);
}

TEST(ReadTemplateFile, FailsForAFileThatIsCutOff) {
    EXPECT_FALSE(ReadFile(TemplateBytes().header(1).newClass()).succeeded);
}

TEST(ReadTemplateFile, FailsForAnUnknownClass) {
    EXPECT_FALSE(ReadFile(TemplateBytes().header(1).newClass("CEattOther").body(u"B", 1, 0)).succeeded);
}

TEST(ReadTemplateFile, FailsForAnotherSchema) {
    EXPECT_FALSE(
        ReadFile(TemplateBytes().header(1).newClass("CEattBlockInfo", 2).body(u"B", 1, 0)).succeeded);
}

TEST(ReadTemplateFile, FailsForANullReference) {
    EXPECT_FALSE(ReadFile(TemplateBytes().header(1).u16(0)).succeeded);
}

TEST(ReadTemplateFile, FailsForAnAbsurdBlockCount) {
    EXPECT_FALSE(ReadFile(TemplateBytes().u32(1).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 63)).succeeded);
}

TEST(ReadTemplateFile, FailsWhileSomebodyHoldsTheFileOpenForReading) {
    const TempFile file(oneBlock().bytes());
    const std::ifstream holder(file.path());
    CEattMain read;
    read.m_strTemplatePath = file.wide();
    EXPECT_FALSE(read.ReadTemplateFile());
}

TEST(ReadTemplateFile, FailsWhileSomebodyHoldsTheFileOpenForWriting) {
    const TempFile file(oneBlock().bytes());
    const std::ofstream holder(file.path(), std::ios::app);
    CEattMain read;
    read.m_strTemplatePath = file.wide();
    EXPECT_FALSE(read.ReadTemplateFile());
}

TEST(ReadTemplateFile, SucceedsOnceTheFileIsClosed) {
    const TempFile file(oneBlock().bytes());
    { const std::ifstream holder(file.path()); }
    CEattMain read;
    read.m_strTemplatePath = file.wide();
    EXPECT_TRUE(read.ReadTemplateFile());
}

TEST(ReadTemplateFile, ClosesTheFile) {
    ReadFile read(oneBlock());
    EXPECT_TRUE(read.read.ReadTemplateFile());
}

TEST(ReadTemplateFile, ClosesAFileThatItCannotRead) {
    ReadFile read{TemplateBytes()};
    std::ofstream(read.file.path(), std::ios::binary) << oneBlock().bytes();
    EXPECT_TRUE(read.read.ReadTemplateFile());
}

TEST(ReadTemplateFile, ReadsAFileWhoseNameIsNotAscii) {
    const TempFile file(oneBlock().bytes(), u8"-\u00FC\U0001F600");
    CEattMain read;
    read.m_strTemplatePath = file.wide(L"-\u00FC\U0001F600");
    EXPECT_TRUE(read.ReadTemplateFile());
}

TEST(ReadTemplateFile, KeepsTheNameOfABlock) {
    EXPECT_EQ(ReadFile(oneBlock()).block(0).m_strBlockName, L"B");
}

TEST(ReadTemplateFile, KeepsABlockThatIsNotSelected) {
    EXPECT_FALSE(ReadFile(oneBlock()).block(0).m_bSelected);
}

TEST(ReadTemplateFile, KeepsSelectedAttributesOnly) {
    const ReadFile read(oneBlock());
    EXPECT_TRUE(read.block(0).m_mapAttributes.find(L"X")->m_bSelected);
    EXPECT_EQ(read.block(0).m_mapAttributes.size(), 1U);
}

TEST(ReadTemplateFile, CountsOneUseAndOneReference) {
    const ReadFile read(oneBlock());
    EXPECT_EQ(read.block(0).m_nUseCount, 1);
    EXPECT_EQ(read.block(0).m_nRefCount, 1);
}

TEST(ReadTemplateFile, KeepsTheVersion) {
    EXPECT_EQ(ReadFile(TemplateBytes().u32(7).u16(0)).read.m_nVersion, 7);
}

TEST(ReadTemplateFile, AppendsToTheBlocksThatAreThere) {
    ReadFile read(oneBlock());
    read.read.ReadTemplateFile();
    EXPECT_EQ(read.read.m_arrBlocks.size(), 2U);
}

TEST(ReadTemplateFile, LeavesTheBlocksThatAreThereWhenItFails) {
    ReadFile read(oneBlock());
    std::ofstream(read.file.path(), std::ios::binary)
        << TemplateBytes().header(2).newClass().body(u"B", 1, 0).bytes();
    EXPECT_FALSE(read.read.ReadTemplateFile());
    EXPECT_EQ(read.read.m_arrBlocks.size(), 1U);
    EXPECT_EQ(read.block(0).m_strBlockName, L"B");
}

} // namespace
