#include "tests/legacy/LoadedTemplate.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Cause = ArchiveFailure::Cause;

/// Selected B1 with selected T, and B2, not selected and without attributes.
const std::string& workedExample() {
    static const std::string kBytes(
        "\x01\x00\x00\x00"
        "\x02\x00"
        "\xFF\xFF\x01\x00\x0E\x00\x43\x45\x61\x74\x74\x42\x6C\x6F\x63\x6B\x49\x6E\x66\x6F"
        "\xFF\xFE\xFF\x02\x42\x00\x31\x00"
        "\x01"
        "\x01\x00\x00\x00"
        "\xFF\xFE\xFF\x01\x54\x00"
        "\x01"
        "\x01\x80"
        "\xFF\xFE\xFF\x02\x42\x00\x32\x00"
        "\x00"
        "\x00\x00\x00\x00",
        61);
    return kBytes;
}

void addBlock(CEattMain& to, const std::wstring& name, bool selected) {
    to.m_arrBlocks.push_back(std::make_unique<CEattBlockInfo>());
    to.m_arrBlocks.back()->m_strBlockName = name;
    to.m_arrBlocks.back()->m_bSelected = selected;
}

void addAttribute(CEattMain& to, const std::wstring& tag, bool selected) {
    auto entry = std::make_unique<AttributeEntry>();
    entry->m_bSelected = selected;
    to.m_arrBlocks.back()->m_mapAttributes.add(tag, std::move(entry));
}

TEST(TemplateFormat, WritesTheWorkedExampleToTheByte) {
    CEattMain source;
    addBlock(source, L"B1", true);
    addAttribute(source, L"T", true);
    addBlock(source, L"B2", false);
    EXPECT_EQ(storedBytes(source), workedExample());
}

TEST(TemplateFormat, ReadsTheFirstBlockOfTheWorkedExample) {
    const LoadedTemplate loaded(workedExample());
    EXPECT_EQ(loaded.block(0).m_strBlockName, L"B1");
    EXPECT_TRUE(loaded.block(0).m_bSelected);
    EXPECT_TRUE(loaded.block(0).m_mapAttributes.find(L"T")->m_bSelected);
}

TEST(TemplateFormat, ReadsTheSecondBlockOfTheWorkedExample) {
    const LoadedTemplate loaded(workedExample());
    EXPECT_EQ(loaded.block(1).m_strBlockName, L"B2");
    EXPECT_FALSE(loaded.block(1).m_bSelected);
    EXPECT_TRUE(loaded.block(1).m_mapAttributes.empty());
}

TEST(TemplateFormat, EndsTooEarlyAtEveryByteOfTheWorkedExample) {
    for (std::size_t length = 0; length < workedExample().size(); ++length) {
        EXPECT_EQ(LoadedTemplate(workedExample().substr(0, length)).failure().first, Cause::endOfFile)
            << length;
    }
}

TEST(TemplateFormat, MayHoldNoBlocks) {
    const LoadedTemplate loaded(TemplateBytes().header(0));
    EXPECT_TRUE(loaded.succeeded());
    EXPECT_TRUE(loaded.header.m_arrBlocks.empty());
}

TEST(TemplateFormat, WritesSixBytesForNoBlocks) {
    CEattMain source;
    EXPECT_EQ(storedBytes(source), TemplateBytes().header(0).bytes());
}

TEST(TemplateFormat, EndsTooEarlyBelowSixBytes) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().u32(1).u8(0)).failure(),
              std::pair(Cause::endOfFile, std::uint64_t{4}));
}

TEST(TemplateFormat, IgnoresBytesAfterTheLastBlock) {
    EXPECT_TRUE(LoadedTemplate(workedExample() + "more").succeeded());
}

TEST(TemplateFormat, ReadsBlocksUnderABlockCountInAnyForm) {
    for (const auto& count : {TemplateBytes().u16(1), TemplateBytes().u16(0xFFFF).u32(1),
                              TemplateBytes().u16(0xFFFF).u32(0xFFFFFFFF).u64(1)}) {
        const LoadedTemplate loaded(TemplateBytes().u32(1).raw(count.bytes()).newClass().body(u"B", 1, 0));
        EXPECT_EQ(loaded.block(0).m_strBlockName, L"B");
    }
}

TEST(TemplateFormat, WritesAndReads65535Blocks) {
    CEattMain source;
    for (int i = 0; i < 0xFFFF; ++i) {
        addBlock(source, L"", true);
    }
    const std::string bytes = storedBytes(source);
    EXPECT_EQ(bytes.substr(4, 6), TemplateBytes().u16(0xFFFF).u32(0xFFFF).bytes());
    EXPECT_EQ(LoadedTemplate(bytes).header.m_arrBlocks.size(), 0xFFFFU);
}

TEST(TemplateFormat, KeepsAnyVersion) {
    for (const std::int32_t version : {0, 7, -1, 2147483647}) {
        EXPECT_EQ(
            LoadedTemplate(TemplateBytes().u32(static_cast<std::uint32_t>(version)).u16(0)).header.m_nVersion,
            version);
    }
}

TEST(TemplateFormat, RunsOutOfMemoryForABlockCountOfTwoToThe63) {
    EXPECT_TRUE(
        LoadedTemplate(TemplateBytes().u32(1).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 63)).outOfMemory);
}

TEST(TemplateFormat, RunsIntoTheEndOfTheFileForABlockCountThatMemoryCouldHold) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().u32(1).u16(0xFFFF).u32(0xFFFFFFFE)).failure().first,
              Cause::endOfFile);
}

TEST(TemplateFormat, TakesAnyFlagButZeroForSet) {
    const LoadedTemplate loaded(
        TemplateBytes().header(1).newClass().body(u"B", 0x80, 2).attribute(u"X", 2).attribute(u"Y", 0));
    EXPECT_TRUE(loaded.block(0).m_bSelected);
    EXPECT_TRUE(loaded.block(0).m_mapAttributes.find(L"X")->m_bSelected);
    EXPECT_FALSE(loaded.block(0).m_mapAttributes.find(L"Y")->m_bSelected);
}

TEST(TemplateFormat, TakesANegativeAttributeCountForNoneAndReadsOn) {
    const LoadedTemplate loaded(
        TemplateBytes().header(2).newClass().body(u"B1", 1, 0xFFFFFFFF).u16(0x8001).body(u"B2", 1, 0));
    EXPECT_TRUE(loaded.block(0).m_mapAttributes.empty());
    EXPECT_EQ(loaded.block(1).m_strBlockName, L"B2");
}

TEST(TemplateFormat, LetsTheFirstOfTwoEntriesWithOneTagStand) {
    const LoadedTemplate loaded(
        TemplateBytes().header(1).newClass().body(u"B", 1, 2).attribute(u"T", 0).attribute(u"T", 1));
    EXPECT_EQ(loaded.block(0).m_mapAttributes.size(), 1U);
    EXPECT_FALSE(loaded.block(0).m_mapAttributes.find(L"T")->m_bSelected);
}

TEST(TemplateFormat, KeepsTagsApartThatDifferInCase) {
    const LoadedTemplate loaded(
        TemplateBytes().header(1).newClass().body(u"B", 1, 2).attribute(u"T", 1).attribute(u"t", 0));
    EXPECT_EQ(loaded.block(0).m_mapAttributes.size(), 2U);
}

TEST(TemplateFormat, ReadsNamesAndTagsOfEightBitCharacters) {
    const LoadedTemplate loaded(
        TemplateBytes().header(1).newClass().text8("Door").u8(1).u32(1).text8("WIDTH").u8(1));
    EXPECT_EQ(loaded.block(0).m_strBlockName, L"Door");
    EXPECT_TRUE(loaded.block(0).m_mapAttributes.find(L"WIDTH")->m_bSelected);
}

TEST(TemplateFormat, TellsInWhichEntryTheFileEnds) {
    const LoadedTemplate loaded(TemplateBytes()
                                    .header(2)
                                    .newClass()
                                    .body(u"B1", 1, 0)
                                    .u16(0x8001)
                                    .body(u"B2", 1, 3)
                                    .attribute(u"X", 1)
                                    .text(u"Y"));
    EXPECT_EQ(loaded.reader.place.block, 1U);
    EXPECT_EQ(loaded.reader.place.attribute, 1U);
    EXPECT_STREQ(loaded.reader.place.field, "attribute flag");
}

TEST(TemplateFormat, TellsThatTheFileEndsOutsideTheAttributes) {
    const LoadedTemplate loaded(
        TemplateBytes().header(2).newClass().body(u"B1", 1, 1).attribute(u"X", 1).u16(0x8001).u8(5));
    EXPECT_EQ(loaded.reader.place.block, 1U);
    EXPECT_EQ(loaded.reader.place.attribute, TemplatePlace::kNone);
    EXPECT_STREQ(loaded.reader.place.field, "block name");
}

TEST(TemplateFormat, TellsThatTheFileEndsBehindABlocksName) {
    const LoadedTemplate loaded(TemplateBytes().header(1).newClass().text(u"B1"));
    EXPECT_STREQ(loaded.reader.place.field, "block flag");
}

TEST(TemplateFormat, TellsThatTheFileEndsInItsHeader) {
    const LoadedTemplate loaded(TemplateBytes().u16(1));
    EXPECT_STREQ(loaded.reader.place.field, "header");
}

TEST(TemplateFormat, TellsThatTheFileEndsBeforeTheFirstBlock) {
    const LoadedTemplate loaded(TemplateBytes().u32(1).u8(0));
    EXPECT_EQ(loaded.reader.place.block, TemplatePlace::kNone);
    EXPECT_STREQ(loaded.reader.place.field, "block count");
}

} // namespace
