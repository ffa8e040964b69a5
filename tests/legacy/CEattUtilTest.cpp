#include "legacy/CEattUtil.h"

#include "legacy/CollationRanks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <locale>
#include <string>
#include <vector>

namespace {

using Strings = std::vector<std::wstring>;
using Ranks = std::vector<std::size_t>;

/// A locale in which the alphabet runs backwards.
class BackwardCollation : public std::collate<wchar_t> {
protected:
    string_type do_transform(const wchar_t* from, const wchar_t* end) const override {
        string_type key(from, end);
        for (wchar_t& character : key) {
            character = static_cast<wchar_t>(0x7FFF - character);
        }
        return key;
    }
};

Strings sorted(Strings strings) {
    CEattUtil().SortStringArray(strings);
    return strings;
}

TEST(CEattUtil, SortsWithoutRegardToCase) {
    EXPECT_EQ(sorted({L"b", L"C", L"a"}), (Strings{L"a", L"b", L"C"}));
}

TEST(CEattUtil, SortsPrefixesFirst) {
    EXPECT_EQ(sorted({L"ab", L"", L"a"}), (Strings{L"", L"a", L"ab"}));
}

TEST(CEattUtil, LeavesEqualStringsInTheOrderOfItsSort) {
    EXPECT_EQ(sorted({L"TAG", L"Tag", L"a", L"tag"}), (Strings{L"a", L"Tag", L"TAG", L"tag"}));
}

TEST(CEattUtil, IsAlwaysContent) {
    Strings none;
    EXPECT_TRUE(CEattUtil().SortStringArray(none));
}

TEST(CEattUtil, IsOfTheClassOfItsBase) {
    EXPECT_EQ(CEattUtil().GetRuntimeClass(), &CObject::kClass);
}

TEST(CollationRanks, FollowTheLocale) {
    const std::locale backward(std::locale::classic(), new BackwardCollation);
    EXPECT_EQ(collationRanks(Strings{L"a", L"c", L"b"}, backward), (Ranks{2, 0, 1}));
}

TEST(CollationRanks, AreTheSameForTextsThatDifferInCase) {
    EXPECT_EQ(collationRanks(Strings{L"b", L"TAG", L"tag", L"a"}, std::locale::classic()),
              (Ranks{1, 2, 2, 0}));
}

TEST(CollationRanks, AreTheSameForManyTextsThatAreTheSame) {
    EXPECT_EQ(collationRanks(Strings(1000, L"TAG"), std::locale::classic()), Ranks(1000, 0));
}

/// Lower case for one letter beyond ASCII, whatever the system's locales know of it.
class UmlautCase : public std::ctype<wchar_t> {
protected:
    const wchar_t* do_tolower(wchar_t* from, const wchar_t* end) const override {
        std::replace(from, const_cast<wchar_t*>(end), L'\u00C4', L'\u00E4');
        return end;
    }
};

TEST(CollationRanks, FoldCaseAsTheLocaleDoes) {
    const std::locale umlauts(std::locale::classic(), new UmlautCase);
    EXPECT_EQ(collationRanks(Strings{L"\u00C4", L"\u00E4"}, umlauts), (Ranks{0, 0}));
}

TEST(CollationRanks, TellTextsApartThatDifferAfterAZero) {
    EXPECT_EQ(
        collationRanks(Strings{std::wstring(L"a\0b", 3), std::wstring(L"a\0a", 3)}, std::locale::classic()),
        (Ranks{1, 0}));
}

} // namespace
