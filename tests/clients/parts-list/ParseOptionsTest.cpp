#include "ParseOptions.h"

#include <gtest/gtest.h>

namespace parts {

namespace {

struct Parsed {
    std::wstring reason;
    Options options;
};

Parsed parse(const std::vector<const wchar_t*>& words) {
    Parsed parsed;
    parsed.reason = parseOptions(words, parsed.options);
    return parsed;
}

TEST(ParseOptions, WithoutWordsMeansAllBlocksByReference) {
    const Parsed parsed = parse({});
    EXPECT_EQ(parsed.reason, L"");
    EXPECT_EQ(parsed.options, Options());
}

TEST(ParseOptions, TakesWordsBeforeTheFirstClauseAsBlocks) {
    EXPECT_EQ(parse({L"Device:R", L"Device:C", L"by", L"component"}).options.blocks,
              (std::vector<std::wstring>{L"Device:R", L"Device:C"}));
}

TEST(ParseOptions, KnowsTheThreeKindsOfRow) {
    EXPECT_EQ(parse({L"by", L"reference"}).options.kind, RowKind::reference);
    EXPECT_EQ(parse({L"by", L"occurrence"}).options.kind, RowKind::occurrence);
    EXPECT_EQ(parse({L"by", L"component"}).options.kind, RowKind::component);
    EXPECT_NE(parse({L"by", L"colour"}).reason, L"");
}

TEST(ParseOptions, SplitsConditionsAtTheFirstEqualsSign) {
    EXPECT_EQ(parse({L"where", L"in_bom=yes", L"Note=a=b", L"Empty="}).options.conditions,
              (std::vector<Condition>{{L"in_bom", L"yes"}, {L"Note", L"a=b"}, {L"Empty", L""}}));
}

TEST(ParseOptions, EndsConditionsAtTheNextClause) {
    const Parsed parsed = parse({L"where", L"dnp=no", L"to", L"list.csv"});
    EXPECT_EQ(parsed.options.conditions.size(), 1U);
    EXPECT_EQ(parsed.options.file, L"list.csv");
}

TEST(ParseOptions, RefusesAConditionWithoutTagOrEqualsSign) {
    EXPECT_NE(parse({L"where", L"dnp"}).reason, L"");
    EXPECT_NE(parse({L"where", L"=no"}).reason, L"");
    EXPECT_NE(parse({L"where"}).reason, L"");
}

TEST(ParseOptions, ReadsThePositionOfATable) {
    EXPECT_EQ(parse({L"as", L"table", L"10,-20.5"}).options.table, (Position{10.0, -20.5}));
}

TEST(ParseOptions, RefusesAPositionThatIsNotTwoNumbers) {
    for (const wchar_t* text : {L"10", L"10,", L",10", L"10,2x", L"10,nan", L"inf,1", L"1e999,1", L""}) {
        EXPECT_NE(parse({L"as", L"table", text}).reason, L"") << text;
    }
}

TEST(ParseOptions, RefusesAsWithoutTable) {
    EXPECT_NE(parse({L"as", L"10,20"}).reason, L"");
}

TEST(ParseOptions, RefusesAClauseThatComesTwice) {
    EXPECT_EQ(parse({L"to", L"a.csv", L"to", L"b.csv"}).reason, L"'to' comes twice");
}

TEST(ParseOptions, RefusesClausesWithoutTheirFile) {
    EXPECT_EQ(parse({L"to"}).reason, L"'to' needs a file name");
    EXPECT_EQ(parse({L"from"}).reason, L"'from' needs a file name");
}

TEST(ParseOptions, RefusesBlocksBesideATemplate) {
    EXPECT_NE(parse({L"Device:R", L"from", L"old.blk"}).reason, L"");
}

TEST(ParseMilliseconds, TakesWholePositiveNumbersOnly) {
    EXPECT_EQ(parseMilliseconds(L"250"), 250U);
    EXPECT_EQ(parseMilliseconds(L"2147483647"), 2147483647U);
    for (const wchar_t* text : {L"0", L"-1", L"2147483648", L"1.5", L"", L"ten"}) {
        EXPECT_EQ(parseMilliseconds(text), 0U) << text;
    }
}

} // namespace

} // namespace parts
