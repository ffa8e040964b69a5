#include "TextTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace parts {

namespace {

using testing::ElementsAre;

TEST(TextTable, AlignsColumnsAndHasNoTrailingBlanks) {
    EXPECT_THAT(toLines({{L"A", L"Value"}, {{L"1", {L"long", L"1k"}}, {L"2", {L"x", L""}}}}),
                ElementsAre(L"A     Value", L"long  1k", L"x"));
}

TEST(TextTable, CutsLongCellsAndLosesLineEnds) {
    EXPECT_THAT(toLines({{L"A"}, {{L"1", {L"a\nb"}}, {L"2", {std::wstring(40, L'x')}}}}),
                ElementsAre(L"A", L"a b", std::wstring(31, L'x') + L"…"));
}

TEST(TextTable, CountsACharacterBeyondTheBasicPlaneOnce) {
    EXPECT_THAT(toLines({{L"A", L"B"}, {{L"1", {L"\U0001F321", L"x"}}, {L"2", {L"ab", L"y"}}}}),
                ElementsAre(L"A   B", L"\U0001F321   x", L"ab  y"));
}

TEST(TextTable, CutsNoCharacterInHalf) {
    std::wstring many;
    std::wstring fewer;
    for (int i = 0; i < 33; ++i) {
        many += L"\U0001F321";
        fewer += i < 31 ? L"\U0001F321" : L"";
    }
    EXPECT_THAT(toLines({{L"A"}, {{L"1", {many}}}}), ElementsAre(L"A", fewer + L"…"));
}

} // namespace

} // namespace parts
