#include "legacy/ArchiveReader.h"
#include "legacy/CEattMain.h"
#include "legacy/SelectedTexts.h"
#include "legacy/TemplateFailure.h"
#include "legacy/TemplateStream.h"
#include "tests/legacy/CountedMemory.h"
#include "tests/legacy/MemorySource.h"
#include "tests/legacy/TemplateBytes.h"

#include <ktdx/StringList.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

/// What is filled piece by piece gets its room at once.
namespace {

constexpr std::uint32_t kMany = 1000;

/// One character that no other number has.
std::u16string shortText(std::uint32_t number) {
    return {static_cast<char16_t>(0x100 + number)};
}

TemplateBytes blockOfShortTags() {
    TemplateBytes bytes = TemplateBytes().header(1).newClass().body(u"B", 1, kMany);
    for (std::uint32_t i = 0; i < kMany; ++i) {
        bytes.attribute(shortText(i), 1);
    }
    return bytes;
}

TemplateBytes smallestBlocks() {
    TemplateBytes bytes = TemplateBytes().header(kMany).newClass().text8("").u8(1).u32(0);
    for (std::uint32_t i = 1; i < kMany; ++i) {
        bytes.u16(0x8001).text8("").u8(1).u32(0);
    }
    return bytes;
}

/// With room for anything behind it.
TemplateBytes longer(TemplateBytes bytes) {
    return bytes.raw(std::string(bytes.bytes().size(), 'x'));
}

std::size_t allocationsToLoadBlocks(const TemplateBytes& bytes) {
    MemorySource source(bytes.bytes());
    ArchiveReader reader(source);
    CEattMain header;
    const std::size_t before = counted_memory::allocations();
    const CEattBlockArray blocks = loadTemplate(reader, header);
    return counted_memory::allocations() - before;
}

std::size_t allocationsToReadLists(const TemplateBytes& bytes) {
    MemorySource source(bytes.bytes());
    ArchiveReader reader(source);
    const std::size_t before = counted_memory::allocations();
    const SelectedTexts texts(reader);
    return counted_memory::allocations() - before;
}

TEST(RoomInAdvance, IsEnoughForAsManyTagsAsTheRestOfTheFileCanHold) {
    EXPECT_EQ(allocationsToLoadBlocks(blockOfShortTags()),
              allocationsToLoadBlocks(longer(blockOfShortTags())));
    EXPECT_EQ(allocationsToReadLists(blockOfShortTags()), allocationsToReadLists(longer(blockOfShortTags())));
}

TEST(RoomInAdvance, IsEnoughForAsManyBlocksAsTheRestOfTheFileCanHold) {
    EXPECT_EQ(allocationsToLoadBlocks(smallestBlocks()), allocationsToLoadBlocks(longer(smallestBlocks())));
}

TEST(RoomInAdvance, IsForNoMoreBlocksThanTheRestOfTheFileCanHoldWhateverItsCountSays) {
    MemorySource source(TemplateBytes().header(0xFFFE).raw(std::string(800, 'x')).bytes());
    ArchiveReader reader(source);
    CEattMain header;
    counted_memory::resetPeak();
    const std::size_t before = counted_memory::current();
    EXPECT_THROW(loadTemplate(reader, header), ArchiveFailure);
    EXPECT_LT(counted_memory::peak() - before, 5000U);
}

TEST(RoomInAdvance, IsAsMuchAsTheBytesOfATextTake) {
    MemorySource source(TemplateBytes().u8(0xFF).u16(kMany).raw(std::string(kMany, 'x')).bytes());
    const std::string bytes = ArchiveReader(source).readUtf16Bytes();
    EXPECT_EQ(bytes.size(), 2 * kMany);
    EXPECT_EQ(bytes.capacity(), bytes.size());
}

TEST(RoomInAdvance, IsEnoughForALongTextOf8BitCharacters) {
    MemorySource source(TemplateBytes().u8(0xFF).u16(kMany).raw(std::string(kMany, 'x')).bytes());
    ArchiveReader reader(source);
    const std::size_t before = counted_memory::allocations();
    EXPECT_EQ(reader.readString().size(), kMany);
    EXPECT_EQ(counted_memory::allocations() - before, 2U); // for the bytes, and for the characters
}

/// Keeps nothing, so that what it is given takes no memory here.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted by its base
class ForgettingList final : public KtDxStringList {
public:
    void removeAll() override {}

    void addTail(const wchar_t* /*text*/, std::size_t length) override { longest_ = length; }

    [[nodiscard]] std::size_t longest() const { return longest_; }

private:
    std::size_t longest_ = 0;
};

TEST(RoomInAdvance, IsEnoughForALongTextOfUpperCharacters) {
    const std::u16string tag(100, char16_t{0x8000});
    MemorySource source(TemplateBytes().header(1).newClass().body(u"B", 1, 1).attribute(tag, 1).bytes());
    ArchiveReader reader(source);
    const SelectedTexts texts(reader);
    ForgettingList names;
    ForgettingList tags;
    const std::size_t before = counted_memory::allocations();
    texts.appendTo(names, tags);
    EXPECT_EQ(counted_memory::allocations() - before,
              2U); // for the easy way, which it is not, and for the other
    EXPECT_EQ(tags.longest(), tag.size());
}

/// What is kept of a template once it has been read.
std::size_t keptOf(const TemplateBytes& bytes) {
    MemorySource source(bytes.bytes());
    ArchiveReader reader(source);
    const std::size_t before = counted_memory::current();
    const SelectedTexts texts(reader);
    return counted_memory::current() - before;
}

TEST(RoomInAdvance, IsGivenBackWhereItServedToFindTags) {
    EXPECT_LT(keptOf(blockOfShortTags()), 65'000U); // with the slots it would be 16,384 more than 61,000
}

TEST(RoomInAdvance, IsGivenBackWhereItServedToFindNames) {
    TemplateBytes bytes = TemplateBytes().header(kMany).newClass().body(u"B", 1, 0);
    for (std::uint32_t i = 1; i < kMany; ++i) {
        bytes.u16(0x8001).body(shortText(i), 1, 0);
    }
    EXPECT_LT(keptOf(bytes), 55'000U); // with the slots, at least 16,384 more than 50,000
}

} // namespace
