#include "kthost/window/SharedLibrary.h"

#include "tests/kthost/modules/TestModules.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace kthost {
namespace {

class Library : public testing::Test {
protected:
    SharedLibrary open(const char* name) { return SharedLibrary::open(testModule(name), error); }

    std::string error;
};

TEST_F(Library, GivesItsSymbols) {
    const SharedLibrary library = open("TestResource.dll");
    auto* answer = reinterpret_cast<int (*)()>(library.symbol("testResourceAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 7);
}

TEST_F(Library, GivesNullForASymbolThatItLacks) {
    EXPECT_EQ(open("TestResource.dll").symbol("somethingElse"), nullptr);
}

TEST_F(Library, SaysWhyItCannotBeLoaded) {
    EXPECT_FALSE(open("Nowhere.dll"));
    EXPECT_FALSE(error.empty());
}

TEST_F(Library, CoversItsOwnCode) {
    const SharedLibrary library = open("TestResource.dll");
    EXPECT_TRUE(library.range().contains(library.symbol("testResourceAnswer")));
}

TEST_F(Library, CoversNoOtherCode) {
    const SharedLibrary library = open("TestResource.dll");
    EXPECT_FALSE(library.range().contains(&error));
    EXPECT_FALSE(library.range().contains(open("GoodModule.kmx").symbol("ktrxEntryPoint")));
}

TEST_F(Library, IsClosedOnce) {
    SharedLibrary library = open("TestResource.dll");
    EXPECT_TRUE(library.close());
    EXPECT_FALSE(library.close());
}

TEST_F(Library, LeavesNothingBehindWhenMoved) {
    SharedLibrary library = open("TestResource.dll");
    const SharedLibrary moved = std::move(library);
    EXPECT_TRUE(moved);
    EXPECT_FALSE(library); // NOLINT(bugprone-use-after-move): what a moved-from library says is the question
}

TEST_F(Library, HasAnEmptyRangeWhenItIsNotLoaded) {
    const AddressRange range = SharedLibrary().range();
    EXPECT_EQ(range.begin, range.end);
}

TEST_F(Library, IsFoundByAnAddressInIt) {
    const SharedLibrary library = open("TestResource.dll");
    const auto place = placeOfAddress(library.symbol("testResourceAnswer"));
    ASSERT_TRUE(place);
    EXPECT_EQ(place->library, "TestResource.dll");
}

TEST_F(Library, IsNotFoundByAnAddressOutsideAll) {
    EXPECT_FALSE(placeOfAddress(&error));
}

TEST(AddressRange, ReachesFromItsBeginToBeforeItsEnd) {
    const char bytes[4] = {};
    const auto begin = reinterpret_cast<std::uintptr_t>(&bytes[1]);
    const AddressRange range{begin, begin + 2};
    EXPECT_FALSE(range.contains(&bytes[0]));
    EXPECT_TRUE(range.contains(&bytes[1]));
    EXPECT_TRUE(range.contains(&bytes[2]));
    EXPECT_FALSE(range.contains(&bytes[3]));
}

TEST(AddressRange, OverlapsOnlyWhatSharesAnAddress) {
    const AddressRange range{10, 20};
    EXPECT_TRUE(range.overlaps({19, 30}));
    EXPECT_TRUE(range.overlaps({0, 11}));
    EXPECT_FALSE(range.overlaps({20, 30}));
    EXPECT_FALSE(range.overlaps({0, 10}));
}

} // namespace
} // namespace kthost
