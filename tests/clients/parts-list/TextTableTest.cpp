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

} // namespace

} // namespace parts
