#include "kthost/database/OwnedText.h"
#include "kthost/database/SharedText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace kthost {

namespace {

TEST(OwnedText, IsWhatItWasMadeOfWhateverItsLength) {
    for (std::size_t length = 0; length < 40; ++length) {
        const std::wstring text(length, L'x');
        EXPECT_EQ(OwnedText(text).get(), text);
    }
}

TEST(OwnedText, ChangesBetweenShortAndLong) {
    const std::wstring inLong = L"C_0603_1608Metric_Pad1.08x0.95mm";
    OwnedText text(L"R1");
    text.set(inLong);
    EXPECT_EQ(text.get(), inLong);
    text.set(inLong + L'!');
    EXPECT_EQ(text.get(), inLong + L'!');
    text.set(L"R2");
    EXPECT_STREQ(text.get(), L"R2");
}

TEST(OwnedText, CanBeSetToPartOfItself) {
    OwnedText text(L"0123456789012345678901234567890123456789");
    text.set(text.get() + 5);
    EXPECT_STREQ(text.get(), L"56789012345678901234567890123456789");
    text.set(text.get() + 33);
    EXPECT_STREQ(text.get(), L"89");
    text.set(text.get() + 1);
    EXPECT_STREQ(text.get(), L"9");
}

TEST(OwnedText, EndsAtItsFirstNull) {
    EXPECT_STREQ(OwnedText(std::wstring_view(L"a\0b", 3)).get(), L"a");
}

TEST(SharedText, OfEqualTextsIsOneCopy) {
    const SharedText one(L"Footprint");
    const SharedText other(L"Footprint");
    EXPECT_EQ(one.get(), other.get());
    EXPECT_STREQ(one.get(), L"Footprint");
}

TEST(SharedText, StaysAsLongAsOneHoldsIt) {
    auto first = std::make_unique<SharedText>(L"Datasheet of a part");
    const SharedText second(L"Datasheet of a part");
    first.reset();
    EXPECT_STREQ(second.get(), L"Datasheet of a part");
}

} // namespace

} // namespace kthost
