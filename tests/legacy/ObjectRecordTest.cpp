#include "tests/legacy/LoadedTemplate.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Cause = ArchiveFailure::Cause;
using Failure = std::pair<Cause, std::uint64_t>;

/// A template whose first block is sound and ends at byte 39, and whose second one begins with what is added.
TemplateBytes afterOneBlock(std::uint64_t blocks = 2) {
    return TemplateBytes().header(blocks).newClass().body(u"B1", 1, 0);
}

constexpr std::uint64_t kFirstObject = 6;
constexpr std::uint64_t kSecondObject = 39;

std::wstring nameOf(const LoadedTemplate& loaded, std::size_t block) {
    return loaded.block(block).m_strBlockName;
}

TEST(ObjectRecord, NamesItsClassByTheIndexThatTheFirstOneGotIt) {
    EXPECT_EQ(nameOf(LoadedTemplate(afterOneBlock().u16(0x8001).body(u"B2", 0, 0)), 1), L"B2");
}

TEST(ObjectRecord, MayDescribeItsClassAgain) {
    EXPECT_EQ(nameOf(LoadedTemplate(afterOneBlock().newClass().body(u"B2", 0, 0)), 1), L"B2");
}

TEST(ObjectRecord, MayNameTheIndexOfAClassDescribedAgain) {
    // 1 class, 2 object, 3 class again, 4 object.
    const LoadedTemplate loaded(afterOneBlock(3).newClass().body(u"B2", 0, 0).u16(0x8003).body(u"B3", 0, 0));
    EXPECT_EQ(nameOf(loaded, 2), L"B3");
}

TEST(ObjectRecord, MayNameTheFirstIndexAfterTheClassIsDescribedAgain) {
    const LoadedTemplate loaded(afterOneBlock(3).newClass().body(u"B2", 0, 0).u16(0x8001).body(u"B3", 0, 0));
    EXPECT_EQ(nameOf(loaded, 2), L"B3");
}

TEST(ObjectRecord, MayNameItsClassWithABigTag) {
    const LoadedTemplate loaded(afterOneBlock().u16(0x7FFF).u32(0x80000001).body(u"B2", 0, 0));
    EXPECT_EQ(nameOf(loaded, 1), L"B2");
}

TEST(ObjectRecord, ReachesIndicesBeyondAShortTagWithABigOne) {
    // One class and 32,767 objects take the indices up to 32,768, which the class described next is given
    // after.
    constexpr std::uint64_t kBlocks = 0x7FFF;
    TemplateBytes bytes = afterOneBlock(kBlocks + 2);
    for (std::uint64_t i = 1; i < kBlocks; ++i) {
        bytes.u16(0x8001).body(u"", 0, 0);
    }
    bytes.newClass().body(u"", 0, 0).u16(0x7FFF).u32(0x80000000U + kBlocks + 2).body(u"last", 1, 0);
    EXPECT_EQ(nameOf(LoadedTemplate(bytes), kBlocks + 1), L"last");
}

TEST(ObjectRecord, IsRefusedWithAClassIndexThatAnObjectWasGiven) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(0x8002)).failure(), Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedWithAClassIndexThatNothingWasGiven) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(0x8003)).failure(), Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedWithClassIndexZero) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(0x8000)).failure(), Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedWithAClassIndexBeforeAnyClassIsDescribed) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).u16(0x8001)).failure(),
              Failure(Cause::badIndex, kFirstObject));
}

TEST(ObjectRecord, IsRefusedWithABigTagOfAClassIndexThatNothingWasGiven) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(0x7FFF).u32(0xFFFFFFFF)).failure(),
              Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedAsANullReference) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(0)).failure(), Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedAsANullReferenceInABigTag) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(0x7FFF).u32(0)).failure(),
              Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedAsAReferenceBackToAnObject) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(2)).failure(), Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedAsAReferenceBackInABigTag) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(0x7FFF).u32(2)).failure(),
              Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedAsAnObjectReferenceToAClass) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(1)).failure(), Failure(Cause::badIndex, kSecondObject));
}

TEST(ObjectRecord, IsRefusedAsAnObjectReferenceToNothing) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(3)).failure(), Failure(Cause::badIndex, kSecondObject));
}

std::string reasonAfterOneBlock(std::uint64_t tag) {
    return LoadedTemplate(afterOneBlock().u16(tag)).archiveFailure.value().what();
}

TEST(ObjectRecord, IsRefusedForReasonsThatPeopleCanTellApart) {
    EXPECT_EQ(reasonAfterOneBlock(0), "bad index: a null reference instead of an entry");
    EXPECT_EQ(reasonAfterOneBlock(2), "bad index: a reference back to object 2 instead of an entry");
    EXPECT_EQ(reasonAfterOneBlock(1), "bad index: 1 was not given to any object");
    EXPECT_EQ(reasonAfterOneBlock(0x8002), "bad index: 2 was not given to any class");
}

std::string reasonForClass(const TemplateBytes& first) {
    return LoadedTemplate(first).archiveFailure.value().what();
}

TEST(ObjectRecord, IsRefusedForReasonsThatNameTheClass) {
    EXPECT_EQ(reasonForClass(TemplateBytes().header(1).newClass("CEattBlock")),
              "bad class: there is no class \"CEattBlock\"");
    EXPECT_EQ(reasonForClass(TemplateBytes().header(1).newClass(std::string(64, 'C'))),
              "bad class: a class name of 64 bytes");
    EXPECT_EQ(reasonForClass(TemplateBytes().header(1).newClass("CEattBlockInfo", 2)),
              "bad schema: 2 instead of 1");
}

TEST(ObjectRecord, EndsWithTheFileInsideItsTag) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).u8(0xFF)).failure(),
              Failure(Cause::endOfFile, kFirstObject));
}

TEST(ObjectRecord, EndsWithTheFileInsideABigTag) {
    EXPECT_EQ(LoadedTemplate(afterOneBlock().u16(0x7FFF).u16(1)).failure(),
              Failure(Cause::endOfFile, kSecondObject + 2));
}

TEST(ObjectRecord, EndsWithTheFileInsideTheSchema) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).u16(0xFFFF).u8(1)).failure(),
              Failure(Cause::endOfFile, kFirstObject + 2));
}

TEST(ObjectRecord, EndsWithTheFileInsideTheClassName) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).u16(0xFFFF).u16(1).u16(14).raw("CEatt")).failure(),
              Failure(Cause::endOfFile, kFirstObject + 6));
}

TEST(ObjectRecord, IsRefusedForAClassThatNobodyKnows) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass("CEattBlockInf0")).failure(),
              Failure(Cause::badClass, kFirstObject + 4));
}

TEST(ObjectRecord, IsRefusedForAClassNameInOtherCase) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass("CEATTBLOCKINFO")).failure().first,
              Cause::badClass);
}

TEST(ObjectRecord, IsRefusedForAnEmptyClassName) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass("")).failure().first, Cause::badClass);
}

TEST(ObjectRecord, IsRefusedForTheNameOfTheTemplateItself) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass("CEattMain")).failure().first,
              Cause::badClass);
}

TEST(ObjectRecord, IsRefusedForAClassNameThatGoesOnAfterAZero) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass({"CEattBlockInfo\0x", 16})).failure().first,
              Cause::badClass);
}

TEST(ObjectRecord, IsRefusedForAClassNameOf64BytesThoughTheFileEnds) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).u16(0xFFFF).u16(1).u16(64)).failure(),
              Failure(Cause::badClass, kFirstObject + 4));
}

TEST(ObjectRecord, ReadsAClassNameOf63BytesBeforeItRefusesIt) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).u16(0xFFFF).u16(1).u16(63)).failure(),
              Failure(Cause::endOfFile, kFirstObject + 6));
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass(std::string(63, 'x'))).failure().first,
              Cause::badClass);
}

TEST(ObjectRecord, IsRefusedForSchemaTwo) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass("CEattBlockInfo", 2)).failure(),
              Failure(Cause::badSchema, kFirstObject + 2));
}

TEST(ObjectRecord, IsRefusedForSchemaZero) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass("CEattBlockInfo", 0)).failure().first,
              Cause::badSchema);
}

TEST(ObjectRecord, IsRefusedForItsClassBeforeItsSchema) {
    EXPECT_EQ(LoadedTemplate(TemplateBytes().header(1).newClass("CEattOther", 2)).failure().first,
              Cause::badClass);
}

} // namespace
