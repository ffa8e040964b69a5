#include "Csv.h"

#include <gtest/gtest.h>

namespace parts {

namespace {

std::string csvOf(std::wstring cell) {
    return toCsv({{L"A"}, {{L"", {std::move(cell)}}}});
}

TEST(Csv, BeginsWithTheColumnsAndEndsEachLineWithCrLf) {
    EXPECT_EQ(toCsv({{L"A", L"B"}, {{L"1", {L"x", L"y"}}, {L"2", {L"", L"z"}}}}), "A,B\r\nx,y\r\n,z\r\n");
}

TEST(Csv, QuotesFieldsThatHoldACommaAQuoteOrALineEnd) {
    EXPECT_EQ(csvOf(L"1,5"), "A\r\n\"1,5\"\r\n");
    EXPECT_EQ(csvOf(L"say \"x\""), "A\r\n\"say \"\"x\"\"\"\r\n");
    EXPECT_EQ(csvOf(L"a\nb"), "A\r\n\"a\nb\"\r\n");
    EXPECT_EQ(csvOf(L"a\rb"), "A\r\n\"a\rb\"\r\n");
}

TEST(Csv, LeavesOtherFieldsBare) {
    EXPECT_EQ(csvOf(L" a;b\tc "), "A\r\n a;b\tc \r\n");
}

TEST(Csv, IsUtf8) {
    EXPECT_EQ(csvOf(L"10µF Ω"), "A\r\n10\xC2\xB5"
                                "F \xCE\xA9\r\n");
}

} // namespace

} // namespace parts
