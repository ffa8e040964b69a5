#include "bench/templates/TemplateContents.h"

#include <algorithm>
#include <numeric>
#include <random>

namespace bench {

namespace {

constexpr std::size_t kEntriesEach = 100;

/// With as many digits for each, so that they are stored in the order of their numbers.
std::wstring tagOf(std::size_t number) {
    constexpr std::size_t kBeyondAll = 10'000'000;
    std::wstring tag = std::to_wstring(kBeyondAll + number);
    tag.replace(0, 1, L"TAG");
    return tag;
}

TemplateBlock blockOf(std::size_t number, std::vector<std::size_t> tags) {
    std::sort(tags.begin(), tags.end());
    TemplateBlock block;
    block.name = L"block" + std::to_wstring(number);
    block.entries.reserve(tags.size());
    for (const std::size_t tag : tags) {
        block.entries.push_back({tagOf(tag), true});
    }
    return block;
}

std::vector<std::size_t> numbersBelow(std::size_t count) {
    std::vector<std::size_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), std::size_t{0});
    return numbers;
}

} // namespace

TemplateContents manyBlocks(std::size_t entries) {
    std::mt19937 random{10'000};
    std::vector<std::size_t> tags = numbersBelow(entries / 2);
    TemplateContents blocks;
    while (blocks.size() * kEntriesEach < entries) {
        const std::size_t first = blocks.size() * kEntriesEach % tags.size();
        if (first == 0) {
            std::shuffle(tags.begin(), tags.end(), random); // the second time round they meet others
        }
        const auto begin = tags.begin() + static_cast<std::ptrdiff_t>(first);
        blocks.push_back(blockOf(blocks.size(), {begin, begin + kEntriesEach}));
    }
    return blocks;
}

TemplateContents oneBlock(std::size_t entries) {
    return {blockOf(0, numbersBelow(entries))};
}

} // namespace bench
