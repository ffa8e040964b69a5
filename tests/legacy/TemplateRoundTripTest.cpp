#include "tests/legacy/LoadedTemplate.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace {

/// A template's contents in a form that compares, with attributes in no particular order.
using Contents = std::vector<std::tuple<std::wstring, bool, std::map<std::wstring, bool>>>;

Contents contentsOf(const CEattMain& source) {
    Contents contents;
    for (const auto& block : source.m_arrBlocks) {
        std::map<std::wstring, bool> attributes;
        for (const auto& [tag, entry] : block->m_mapAttributes) {
            attributes.emplace(tag, entry->m_bSelected);
        }
        contents.emplace_back(block->m_strBlockName, block->m_bSelected, std::move(attributes));
    }
    return contents;
}

/// Makes random templates, with short and long texts of all kinds of characters.
class TemplateMaker {
public:
    explicit TemplateMaker(std::uint32_t seed) : random_(seed) {}

    void fill(CEattMain& made) {
        made.m_nVersion = static_cast<std::int32_t>(random_());
        for (std::uint32_t blocks = below(6); blocks > 0; --blocks) {
            made.m_arrBlocks.push_back(block());
        }
    }

private:
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_()) % limit; }

    bool flag() { return below(2) == 1; }

    std::unique_ptr<CEattBlockInfo> block() {
        auto made = std::make_unique<CEattBlockInfo>();
        made->m_strBlockName = text();
        made->m_bSelected = flag();
        for (std::uint32_t attributes = below(30); attributes > 0; --attributes) {
            auto entry = std::make_unique<AttributeEntry>();
            entry->m_bSelected = flag();
            made->m_mapAttributes.add(text(), std::move(entry));
        }
        return made;
    }

    std::wstring text() {
        std::wstring made;
        for (std::uint32_t length = below(10) == 0 ? 250 + below(10) : below(8); length > 0; --length) {
            made += character();
        }
        return made;
    }

    /// A high surrogate is followed by a letter, as a low one would make it another character.
    std::wstring character() {
        switch (below(6)) {
        case 0:
            return L"\U0001F600";
        case 1:
            return {static_cast<wchar_t>(0xD800 + below(0x400)), L'x'};
        case 2:
            return std::wstring() + static_cast<wchar_t>(0xDC00 + below(0x400));
        case 3:
            return std::wstring() + static_cast<wchar_t>(below(0xD800));
        default:
            return std::wstring() + static_cast<wchar_t>(L'A' + below(58));
        }
    }

    std::mt19937 random_;
};

class RoundTrip : public testing::Test {
protected:
    std::uint32_t seed_ = std::random_device()();
    TemplateMaker maker_{seed_};
};

TEST_F(RoundTrip, GivesBackEveryRandomTemplate) {
    for (int i = 0; i < 300; ++i) {
        CEattMain source;
        maker_.fill(source);
        const LoadedTemplate loaded(storedBytes(source));
        ASSERT_TRUE(loaded.succeeded()) << "seed " << seed_;
        ASSERT_EQ(contentsOf(loaded.header), contentsOf(source)) << "seed " << seed_;
        ASSERT_EQ(loaded.header.m_nVersion, source.m_nVersion) << "seed " << seed_;
    }
}

TEST_F(RoundTrip, KeepsItsSizeWhenItIsWrittenAgain) {
    for (int i = 0; i < 100; ++i) {
        CEattMain source;
        maker_.fill(source);
        LoadedTemplate loaded(storedBytes(source));
        const std::string again = storedBytes(loaded.header);
        ASSERT_EQ(contentsOf(LoadedTemplate(again).header), contentsOf(source)) << "seed " << seed_;
        ASSERT_EQ(again.size(), storedBytes(source).size()) << "seed " << seed_;
    }
}

TEST_F(RoundTrip, FailsForEveryTemplateThatIsCutOff) {
    CEattMain source;
    while (source.m_arrBlocks.empty()) {
        maker_.fill(source);
    }
    const std::string bytes = storedBytes(source);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        ASSERT_FALSE(LoadedTemplate(bytes.substr(0, length)).succeeded())
            << "seed " << seed_ << ", " << length;
    }
}

} // namespace
