#include "OccurrencePaths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace parts {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr KtDbObjectId kLayout{1};
constexpr std::size_t kMost = 10'000;

/// Containers by number; 1 is the layout.
class OccurrencePathsOf : public testing::Test {
protected:
    void place(std::uint64_t container, const wchar_t* handle, std::uint64_t in) {
        placements_[KtDbObjectId(container)].push_back({handle, KtDbObjectId(in)});
    }

    std::vector<std::wstring> pathsOf(std::uint64_t container) { return paths_.of(KtDbObjectId(container)); }

    std::unordered_map<KtDbObjectId, std::vector<Placement>> placements_;
    OccurrencePaths paths_{[this](KtDbObjectId container) { return placements_[container]; },
                           [](KtDbObjectId container) { return container == kLayout; }, kMost};
};

TEST_F(OccurrencePathsOf, ALayoutAreTheEmptyPath) {
    EXPECT_THAT(pathsOf(1), ElementsAre(L""));
}

TEST_F(OccurrencePathsOf, AContainerThatNobodyPlacesAreNone) {
    EXPECT_THAT(pathsOf(2), IsEmpty());
}

TEST_F(OccurrencePathsOf, AContainerAreOneForEachReferenceToIt) {
    place(2, L"A", 1);
    place(2, L"B", 1);
    EXPECT_THAT(pathsOf(2), UnorderedElementsAre(L"/A", L"/B"));
}

TEST_F(OccurrencePathsOf, NestedContainersMultiply) {
    place(2, L"A", 1);
    place(2, L"B", 1);
    place(3, L"C", 2);
    place(3, L"D", 2);
    place(3, L"E", 1);
    EXPECT_THAT(pathsOf(3), UnorderedElementsAre(L"/A/C", L"/B/C", L"/A/D", L"/B/D", L"/E"));
}

TEST_F(OccurrencePathsOf, AContainerInsideOneThatNobodyPlacesAreNone) {
    place(3, L"C", 2);
    EXPECT_THAT(pathsOf(3), IsEmpty());
}

TEST_F(OccurrencePathsOf, ContainersInACircleEnd) {
    place(2, L"A", 3);
    place(3, L"B", 2);
    place(3, L"C", 1);
    EXPECT_THAT(pathsOf(2), ElementsAre(L"/C/A"));
}

TEST_F(OccurrencePathsOf, DepthIsNotLimitedByTheStack) {
    constexpr std::uint64_t kDepth = 2'000;
    for (std::uint64_t level = 2; level <= kDepth; ++level) {
        place(level, L"A", level - 1);
    }
    EXPECT_EQ(pathsOf(kDepth).front().size(), 2 * (kDepth - 1));
}

TEST_F(OccurrencePathsOf, MoreThanCanBeListedAreRefused) {
    for (std::uint64_t level = 2; level <= 40; ++level) {
        place(level, L"A", level - 1);
        place(level, L"B", level - 1);
    }
    EXPECT_THROW(pathsOf(40), std::length_error);
}

} // namespace

} // namespace parts
