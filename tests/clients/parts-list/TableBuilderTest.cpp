#include "TableBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace parts {

namespace {

using testing::ElementsAre;

PlacedReference withAttributes(std::vector<Attribute> attributes) {
    PlacedReference reference;
    reference.attributes = std::move(attributes);
    return reference;
}

TEST(TableBuilder, HasAColumnForEachTagInNaturalOrder) {
    const PlacedReference first = withAttributes({{L"T10", L"a"}, {L"T2", L"b"}});
    const PlacedReference second = withAttributes({{L"T1", L"c"}});
    TableBuilder builder({L"Block"});
    builder.addRow(L"1", {L"X"}, first);
    builder.addRow(L"2", {L"Y"}, second);
    const PartsTable table = builder.build({});
    EXPECT_THAT(table.columns, ElementsAre(L"Block", L"T1", L"T2", L"T10"));
    EXPECT_THAT(table.rows[0].cells, ElementsAre(L"X", L"", L"b", L"a"));
    EXPECT_THAT(table.rows[1].cells, ElementsAre(L"Y", L"c", L"", L""));
}

TEST(TableBuilder, HasTheTagsAskedForInTheirOrder) {
    const PlacedReference reference = withAttributes({{L"A", L"1"}, {L"B", L"2"}, {L"C", L"3"}});
    TableBuilder builder({L"Block"});
    builder.addRow(L"1", {L"X"}, reference);
    const PartsTable table = builder.build({L"C", L"Missing", L"A"});
    EXPECT_THAT(table.columns, ElementsAre(L"Block", L"C", L"Missing", L"A"));
    EXPECT_THAT(table.rows[0].cells, ElementsAre(L"X", L"3", L"", L"1"));
}

TEST(TableBuilder, LetsAFixedColumnStandForATagOfItsName) {
    const PlacedReference reference = withAttributes({{L"Reference", L"R?"}, {L"Value", L"1k"}});
    TableBuilder builder({L"Reference"});
    builder.addRow(L"1", {L"R1"}, reference);
    const PartsTable table = builder.build({});
    EXPECT_THAT(table.columns, ElementsAre(L"Reference", L"Value"));
    EXPECT_THAT(table.rows[0].cells, ElementsAre(L"R1", L"1k"));
}

TEST(TableBuilder, TakesTheFirstAttributeOfATag) {
    const PlacedReference reference = withAttributes({{L"A", L"first"}, {L"A", L"second"}});
    TableBuilder builder({});
    builder.addRow(L"1", {}, reference);
    EXPECT_THAT(builder.build({}).rows[0].cells, ElementsAre(L"first"));
}

TEST(TableBuilder, WithoutRowsHasTheFixedColumns) {
    EXPECT_THAT(TableBuilder({L"Block", L"Handle"}).build({}).columns, ElementsAre(L"Block", L"Handle"));
}

} // namespace

} // namespace parts
