#include "legacy/ArchiveReader.h"
#include "legacy/CEattMain.h"
#include "legacy/TemplateFailure.h"
#include "legacy/TemplateStream.h"
#include "tests/legacy/CountedMemory.h"
#include "tests/legacy/LoadedTemplate.h"
#include "tests/legacy/MemorySource.h"
#include "tests/legacy/TempFile.h"

#include <ktdx/KtDxNotify.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

/// No file makes the reader take much more memory than its own size warrants, whatever it says of itself.
namespace {

constexpr std::size_t kMultiple = 64;
constexpr std::size_t kBasis = 65536; ///< what reading takes for a file of any size

/// The most memory that the exported function takes for such a file at any time.
std::size_t peakOf(const TemplateBytes& bytes) {
    const TempFile file(bytes.bytes());
    const std::wstring path = file.wide();
    KtDxStringVector names;
    KtDxStringVector tags;
    ktdxReadLegacyBlkTemplate(path.c_str(), &names, &tags);
    names.removeAll();
    tags.removeAll();
    counted_memory::resetPeak();
    const std::size_t before = counted_memory::current();
    ktdxReadLegacyBlkTemplate(path.c_str(), &names, &tags);
    return counted_memory::peak() - before;
}

void expectModestPeak(const TemplateBytes& bytes, std::size_t multiple = kMultiple) {
    EXPECT_LE(peakOf(bytes), multiple * bytes.bytes().size() + kBasis)
        << "for a file of " << bytes.bytes().size() << " bytes";
}

TEST(TemplateLimits, AreToldOfWhenABlockCountIsAbsurd) {
    EXPECT_STREQ(AbsurdBlockCount().what(), "more blocks are announced than any memory can hold");
}

/// Reads a template that announces so many blocks and has none.
void readAnnounced(std::uint64_t blocks) {
    MemorySource source(TemplateBytes().u32(1).u16(0xFFFF).u32(0xFFFFFFFF).u64(blocks).bytes());
    ArchiveReader reader(source);
    CEattMain header;
    loadTemplate(reader, header);
}

TEST(TemplateLimits, LieBehindTheGreatestNumberOfBlocksThatAnArrayCanHave) {
    const std::uint64_t most = CEattBlockArray().max_size();
    EXPECT_THROW(readAnnounced(most), ArchiveFailure);
    EXPECT_THROW(readAnnounced(most + 1), AbsurdBlockCount);
}

std::string uniqueText8(std::uint32_t i) {
    std::string text(3, '\0');
    for (char& character : text) {
        character = static_cast<char>('0' + i % 64);
        i /= 64;
    }
    return text;
}

TEST(TemplateLimits, HoldForAnAbsurdBlockCount) {
    expectModestPeak(TemplateBytes().u32(1).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 63));
}

TEST(TemplateLimits, HoldForABlockCountThatIsAllTooBig) {
    expectModestPeak(TemplateBytes().u32(1).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 40).newClass());
}

TEST(TemplateLimits, HoldForAnAttributeCountThatIsAllTooBig) {
    expectModestPeak(TemplateBytes().header(1).newClass().body(u"B", 1, 0x7FFFFFFF).attribute(u"T", 1));
}

/// A text of a million characters.
TemplateBytes longText(TemplateBytes bytes) {
    return bytes.u8(0xFF).u16(0xFFFF).u32(1'000'000).raw(std::string(1'000'000, 'x'));
}

TEST(TemplateLimits, HoldForABlockCountThatIsTooBigForALongFile) {
    expectModestPeak(longText(TemplateBytes().u32(1).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 40).newClass()));
}

TEST(TemplateLimits, HoldForAnAttributeCountThatIsTooBigForALongFile) {
    expectModestPeak(longText(TemplateBytes().header(1).newClass().body(u"B", 1, 0x7FFFFFFF)));
}

TEST(TemplateLimits, HoldForATextThatIsAllTooLong) {
    expectModestPeak(
        TemplateBytes().header(1).newClass().u8(0xFF).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 62).raw("x"));
}

TEST(TemplateLimits, HoldForTheSmallestBlocks) {
    TemplateBytes bytes = TemplateBytes().header(50'000).newClass().text8("").u8(1).u32(0);
    for (int i = 1; i < 50'000; ++i) {
        bytes.u16(0x8001).text8("").u8(1).u32(0);
    }
    expectModestPeak(bytes);
}

TEST(TemplateLimits, HoldForBlocksWithOneSmallAttribute) {
    TemplateBytes bytes = TemplateBytes().header(50'000).newClass().text8("").u8(1).u32(1).text8("").u8(1);
    for (int i = 1; i < 50'000; ++i) {
        bytes.u16(0x8001).text8("").u8(1).u32(1).text8("").u8(1);
    }
    expectModestPeak(bytes);
}

TEST(TemplateLimits, HoldForTheSmallestAttributes) {
    TemplateBytes bytes = TemplateBytes().header(1).newClass().body(u"B", 1, 200'000);
    for (std::uint32_t i = 0; i < 200'000; ++i) {
        bytes.text8(uniqueText8(i)).u8(1);
    }
    expectModestPeak(bytes);
}

TEST(TemplateLimits, HoldForTheSameAttributeOverAndOver) {
    TemplateBytes bytes = TemplateBytes().header(1).newClass().body(u"B", 1, 500'000);
    for (int i = 0; i < 500'000; ++i) {
        bytes.text8("").u8(1);
    }
    expectModestPeak(bytes);
}

TEST(TemplateLimits, HoldForManyClassDescriptions) {
    TemplateBytes bytes = TemplateBytes().header(20'000);
    for (int i = 0; i < 20'000; ++i) {
        bytes.newClass().text8("").u8(1).u32(0);
    }
    expectModestPeak(bytes);
}

TEST(TemplateLimits, HoldForOneLongText) {
    expectModestPeak(TemplateBytes()
                         .header(1)
                         .newClass()
                         .u8(0xFF)
                         .u16(0xFFFF)
                         .u32(1'000'000)
                         .raw(std::string(1'000'000, '\xFF'))
                         .u8(1)
                         .u32(0));
}

/// A long text is never made room for anew while it is converted, which would take three times as much.
TEST(TemplateLimits, AreLowForOneLongTextOfSurrogates) {
    TemplateBytes bytes = TemplateBytes().header(1).newClass();
    bytes.u8(0xFF).u16(0xFFFE).u8(0xFF).u16(0xFFFF).u32(1'000'000);
    bytes.characters(std::u16string(1'000'000, char16_t{0xDC00})).u8(1).u32(0);
    expectModestPeak(bytes, 8);
}

TEST(TemplateLimits, AreLowForOneLongTextOfBytesWithNothingBehindIt) {
    expectModestPeak(longText(TemplateBytes().header(1).newClass()), 7);
}

TEST(TemplateLimits, LeaveRoomForHalfAMillionTagsInOneBlock) {
    constexpr std::uint32_t kEntries = 1'000'000;
    TemplateBytes bytes = TemplateBytes().header(1).newClass().body(u"B", 1, kEntries);
    for (std::uint32_t i = 0; i < kEntries; ++i) {
        bytes.text8("TAG" + std::to_string(i / 2)).u8(1);
    }
    const TempFile file(bytes.bytes());
    KtDxStringVector names;
    KtDxStringVector tags;
    ktdxReadLegacyBlkTemplate(file.wide().c_str(), &names, &tags);
    ASSERT_EQ(tags.strings().size(), kEntries / 2);
    EXPECT_EQ(tags.strings().back(), L"TAG499999");
}

} // namespace
