#include "bench/templates/BareTemplate.h"
#include "bench/templates/LiteralTemplate.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/CEattMain.h"
#include "legacy/CEattUtil.h"
#include "legacy/TemplateStream.h"

#include <ktdx/KtDxNotify.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>

namespace {

using bench::TemplateContents;
using testing::ElementsAreArray;

/// In which blocks, tags and their flags come again in any way.
TemplateContents randomContents(std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random()) % bound; };
    TemplateContents contents(20);
    for (bench::TemplateBlock& block : contents) {
        block.name = L"block" + std::to_wstring(below(10));
        block.selected = below(4) != 0;
        for (std::size_t left = below(200); left > 0; --left) {
            block.entries.push_back({L"TAG" + std::to_wstring(below(300)), below(2) == 0});
        }
    }
    return contents;
}

class TemplateColumns : public testing::Test {
protected:
    ~TemplateColumns() override {
        std::error_code ignored;
        std::filesystem::remove(file_, ignored);
    }

    const std::filesystem::path& fileOf(const TemplateContents& contents) {
        std::ofstream(file_, std::ios::binary) << bench::writeBare(contents);
        return file_;
    }

    std::filesystem::path file_ = std::filesystem::temp_directory_path() /
                                  ("ktdx-columns-" + std::to_string(std::random_device()()) + ".blk");
};

std::string writtenByModule(const TemplateContents& contents) {
    CEattMain source;
    for (const bench::TemplateBlock& block : contents) {
        source.m_arrBlocks.push_back(std::make_unique<CEattBlockInfo>());
        source.m_arrBlocks.back()->m_strBlockName = block.name;
        source.m_arrBlocks.back()->m_bSelected = block.selected;
        for (const bench::TemplateEntry& entry : block.entries) {
            auto filed = std::make_unique<AttributeEntry>();
            filed->m_bSelected = entry.selected;
            source.m_arrBlocks.back()->m_mapAttributes.add(entry.tag, std::move(filed));
        }
    }
    std::string bytes;
    ArchiveWriter writer(bytes);
    storeTemplate(writer, source);
    return bytes;
}

TEST_F(TemplateColumns, ListTheSameNamesAndTags) {
    const auto seed = std::random_device()();
    std::cout << "seed " << seed << std::endl;
    const std::filesystem::path& file = fileOf(randomContents(seed));
    KtDxStringVector names;
    KtDxStringVector tags;
    ktdxReadLegacyBlkTemplate(file.wstring().c_str(), &names, &tags);
    const bench::literal::SelectedTexts literal = bench::literal::listSelected(file);
    EXPECT_THAT(names.strings(), ElementsAreArray(literal.names));
    // Within a block the plain way lists tags in the order of its map.
    EXPECT_THAT(tags.strings(), testing::UnorderedElementsAreArray(literal.tags));
    EXPECT_GT(literal.tags.size(), 100U);
}

TEST_F(TemplateColumns, ReadEveryTextOfTheFile) {
    const TemplateContents contents = bench::manyBlocks(1000);
    std::vector<std::wstring> texts;
    for (const bench::TemplateBlock& block : contents) {
        texts.push_back(block.name);
        for (const bench::TemplateEntry& entry : block.entries) {
            texts.push_back(entry.tag);
        }
    }
    EXPECT_THAT(bench::readBare(fileOf(contents)), ElementsAreArray(texts));
}

TEST_F(TemplateColumns, WriteTheSameBytes) {
    for (const TemplateContents& contents : {bench::manyBlocks(1000), bench::oneBlock(300)}) {
        const std::string bytes = bench::writeBare(contents);
        EXPECT_EQ(writtenByModule(contents), bytes);
        EXPECT_EQ(bench::literal::writeTemplate(bench::literal::makeTemplate(contents)), bytes);
    }
}

TEST_F(TemplateColumns, SortTagsAlike) {
    std::mt19937 random(std::random_device{}());
    std::vector<std::wstring> tags{L"b", L"A", L"a", L"B", L"c", L"C", L"bb", L"", L"aB", L"Ab"};
    std::shuffle(tags.begin(), tags.end(), random);
    std::vector<std::wstring> literal = tags;
    bench::literal::sortTags(literal);
    CEattUtil().SortStringArray(tags);
    EXPECT_THAT(literal, ElementsAreArray(tags));
}

TEST(TemplateContents, HasHalfAsManyDifferentTagsAsEntries) {
    std::vector<std::wstring> tags;
    for (const bench::TemplateBlock& block : bench::manyBlocks(2000)) {
        for (const bench::TemplateEntry& entry : block.entries) {
            tags.push_back(entry.tag);
        }
    }
    EXPECT_EQ(tags.size(), 2000U);
    std::sort(tags.begin(), tags.end());
    EXPECT_EQ(std::unique(tags.begin(), tags.end()) - tags.begin(), 1000);
}

} // namespace
