#include "legacy/SelectedTexts.h"

#include "legacy/ArchiveReader.h"
#include "legacy/TemplateFailure.h"
#include "tests/legacy/LoadedTemplate.h"

#include <ktdx/StringList.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <random>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

struct SelectedLists {
    explicit SelectedLists(const TemplateBytes& bytes, std::size_t piece = 4096) {
        MemorySource source(bytes.bytes(), piece);
        ArchiveReader reader(source);
        const SelectedTexts selected(reader);
        selected.appendTo(names, tags);
    }

    KtDxStringVector names;
    KtDxStringVector tags;
};

std::u16string numberedTag(std::size_t number) {
    const std::string text = "TAG" + std::to_string(number);
    return {text.begin(), text.end()};
}

TemplateBytes selectedBlockOf(std::uint64_t attributes) {
    return TemplateBytes().header(1).newClass().body(u"B", 1, attributes);
}

TEST(SelectedTexts, KnowATagAgainThatIsWrittenInAnotherForm) {
    const SelectedLists lists(selectedBlockOf(2).text8("T").u8(1).attribute(u"T", 1));
    EXPECT_THAT(lists.tags.strings(), ElementsAre(L"T"));
}

TEST(SelectedTexts, KeepCharactersBeyondTheBasicPlane) {
    const SelectedLists lists(selectedBlockOf(2).attribute(u"\U0001F600", 1).attribute(u"\u8000", 1));
    EXPECT_THAT(lists.tags.strings(), ElementsAre(L"\U0001F600", L"\u8000"));
}

TEST(SelectedTexts, KeepAHighHalfWithoutALowOneAtTheEnd) {
    const std::u16string tag{u'T', char16_t{0xD800}};
    const SelectedLists lists(selectedBlockOf(1).attribute(tag, 1));
    EXPECT_THAT(lists.tags.strings(), ElementsAre(std::wstring{L'T', static_cast<wchar_t>(0xD800)}));
}

TEST(SelectedTexts, HaveALongTagOf8BitCharactersWhoseLengthBeginsLikeTheMarkerOfUtf16) {
    const std::string tag(0x01FE, 'T'); // the marker is FFFE
    const SelectedLists lists(selectedBlockOf(1).u8(0xFF).u16(tag.size()).raw(tag).u8(1));
    EXPECT_THAT(lists.tags.strings(), ElementsAre(std::wstring(tag.begin(), tag.end())));
}

TEST(SelectedTexts, HaveATagThatIsLongerThanOneByteTells) {
    const std::u16string tag(300, u'T');
    const SelectedLists lists(
        selectedBlockOf(1).u8(0xFF).u16(0xFFFE).u8(0xFF).u16(tag.size()).characters(tag).u8(1));
    EXPECT_THAT(lists.tags.strings(), ElementsAre(std::wstring(tag.begin(), tag.end())));
}

TEST(SelectedTexts, LetTheFirstOfManyEntriesOfABlockStand) {
    constexpr std::size_t kTags = 100; // more than are filed together
    TemplateBytes bytes = selectedBlockOf(2 * kTags);
    for (std::size_t i = 0; i < 2 * kTags; ++i) {
        const bool isSelected = (i < kTags) == (i % 2 == 0);
        bytes.attribute(numberedTag(i % kTags), isSelected ? 1 : 0);
    }
    EXPECT_EQ(SelectedLists(bytes).tags.strings().size(), kTags / 2);
}

TEST(SelectedTexts, ListATagWhereItIsSelectedFirst) {
    const SelectedLists lists(TemplateBytes()
                                  .header(2)
                                  .newClass()
                                  .body(u"A", 1, 2)
                                  .attribute(u"late", 0)
                                  .attribute(u"early", 1)
                                  .u16(0x8001)
                                  .body(u"B", 1, 1)
                                  .attribute(u"late", 1));
    EXPECT_THAT(lists.tags.strings(), ElementsAre(L"early", L"late"));
}

TEST(SelectedTexts, AreAppendedBlockByBlock) {
    MemorySource source(TemplateBytes()
                            .header(3)
                            .newClass()
                            .body(u"A", 1, 2)
                            .attribute(u"T", 1)
                            .attribute(u"U", 1)
                            .u16(0x8001)
                            .body(u"B", 1, 1)
                            .attribute(u"T", 1)
                            .u16(0x8001)
                            .body(u"A", 1, 1)
                            .attribute(u"V", 1)
                            .bytes(),
                        4096);
    ArchiveReader reader(source);
    KtDxStringVector both;
    SelectedTexts(reader).appendTo(both, both);
    EXPECT_THAT(both.strings(), ElementsAre(L"A", L"T", L"U", L"B", L"V"));
}

TEST(SelectedTexts, AreAppendedBlockByBlockWhereABlockComesTwiceInARow) {
    MemorySource source(TemplateBytes()
                            .header(3)
                            .newClass()
                            .body(u"A", 1, 1)
                            .attribute(u"T", 1)
                            .u16(0x8001)
                            .body(u"A", 1, 1)
                            .attribute(u"U", 1)
                            .u16(0x8001)
                            .body(u"B", 1, 1)
                            .attribute(u"V", 1)
                            .bytes(),
                        4096);
    ArchiveReader reader(source);
    KtDxStringVector both;
    SelectedTexts(reader).appendTo(both, both);
    EXPECT_THAT(both.strings(), ElementsAre(L"A", L"T", L"U", L"B", L"V"));
}

TEST(SelectedTexts, PassOverABlockThatIsNotSelected) {
    const SelectedLists lists(TemplateBytes()
                                  .header(2)
                                  .newClass()
                                  .body(u"A", 0, 2)
                                  .attribute(u"T", 1)
                                  .text8("U")
                                  .u8(1)
                                  .u16(0x8001)
                                  .body(u"B", 1, 1)
                                  .attribute(u"V", 1));
    EXPECT_THAT(lists.names.strings(), ElementsAre(L"B"));
    EXPECT_THAT(lists.tags.strings(), ElementsAre(L"V"));
}

TEST(SelectedTexts, FailInABlockThatIsNotSelectedToo) {
    EXPECT_THROW(SelectedLists(TemplateBytes().header(1).newClass().body(u"A", 0, 2).attribute(u"T", 1)),
                 ArchiveFailure);
}

/// What reading the blocks and walking over them comes to.
void expectSameAsBlocks(const TemplateBytes& bytes, std::size_t piece) {
    const LoadedTemplate loaded(bytes);
    ASSERT_TRUE(loaded.succeeded());
    std::vector<std::wstring> names;
    std::vector<std::wstring> tags;
    const auto add = [](std::vector<std::wstring>& list, const std::wstring& text) {
        if (std::find(list.begin(), list.end(), text) == list.end()) {
            list.push_back(text);
        }
    };
    for (const auto& block : loaded.header.m_arrBlocks) {
        if (!block->m_bSelected) {
            continue;
        }
        add(names, block->m_strBlockName);
        for (const auto& [tag, entry] : block->m_mapAttributes) {
            if (entry->m_bSelected) {
                add(tags, tag);
            }
        }
    }
    const SelectedLists lists(bytes, piece);
    EXPECT_THAT(lists.names.strings(), ElementsAreArray(names));
    EXPECT_THAT(lists.tags.strings(), ElementsAreArray(tags));
}

TEST(SelectedTexts, AreThoseOfTheBlocks) {
    const auto seed = std::random_device()();
    std::cout << "seed " << seed << std::endl;
    std::mt19937 random(seed);
    const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random()) % bound; };
    constexpr std::size_t kBlocks = 40;
    TemplateBytes bytes;
    bytes.header(kBlocks);
    for (std::size_t i = 0; i < kBlocks; ++i) {
        const std::size_t entries = below(300);
        i == 0 ? bytes.newClass() : bytes.u16(0x8001);
        bytes.body(numberedTag(below(20)), below(3), entries);
        for (std::size_t left = entries; left > 0; --left) {
            const std::u16string tag = numberedTag(below(500));
            const std::string narrow(tag.begin(), tag.end());
            below(8) == 0 ? bytes.text8(narrow) : bytes.text(tag);
            bytes.u8(below(2));
        }
    }
    expectSameAsBlocks(bytes, 4096);
    expectSameAsBlocks(bytes, 1 + below(100));
}

} // namespace
