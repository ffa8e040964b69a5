#include "kthost/reader/SexprLexer.h"

#include "tests/kthost/reader/ReaderTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace kthost {
namespace {

using test::errorOf;
using testing::ElementsAre;

std::vector<std::string> tokensOf(const std::string& text) {
    const SourceText source("f", text);
    SexprLexer lexer(source);
    std::vector<std::string> tokens;
    for (SexprToken token = lexer.next(); token.kind != SexprTokenKind::End; token = lexer.next()) {
        tokens.push_back(describe(token));
    }
    return tokens;
}

std::string errorIn(const std::string& text) {
    return errorOf([&text] { tokensOf(text); });
}

TEST(SexprLexer, FindsListsWordsNumbersAndStrings) {
    EXPECT_THAT(tokensOf("(at -1.5 \"a b\" yes)"),
                ElementsAre("'('", "'at'", "'-1.5'", "\"a b\"", "'yes'", "')'"));
}

TEST(SexprLexer, EndsAWordAtAParenthesisOrAQuote) {
    EXPECT_THAT(tokensOf("(a(b)\"c\")"), ElementsAre("'('", "'a'", "'('", "'b'", "')'", "\"c\"", "')'"));
}

TEST(SexprLexer, KeepsParenthesesInsideStrings) {
    EXPECT_THAT(tokensOf("\")(\""), ElementsAre("\")(\""));
}

TEST(SexprLexer, TakesUnquotedPictureDataAsWords) {
    EXPECT_THAT(tokensOf("(data\n iVBOR/w0+\n AAA==\n)"),
                ElementsAre("'('", "'data'", "'iVBOR/w0+'", "'AAA=='", "')'"));
}

TEST(SexprLexer, TakesEmbeddedDataAcrossLinesAsOneToken) {
    const SourceText source("f", "|KLUv/)\n (\"AA=|x");
    SexprLexer lexer(source);
    const SexprToken token = lexer.next();
    EXPECT_EQ(token.kind, SexprTokenKind::Data);
    EXPECT_EQ(token.text, "KLUv/)\n (\"AA=");
    EXPECT_EQ(lexer.next().text, "x");
}

TEST(SexprLexer, HandsOutTheSourceItself) {
    const SourceText source("f", " \"plain\"");
    const SexprToken token = SexprLexer(source).next();
    EXPECT_EQ(token.text.data(), source.text().data() + 2);
    EXPECT_FALSE(token.escaped);
    EXPECT_EQ(token.offset, 1U);
}

TEST(SexprLexer, ResolvesEscapes) {
    const SourceText source("f", R"("a\"b\\c\nd\re\tf")");
    const SexprToken token = SexprLexer(source).next();
    ASSERT_TRUE(token.escaped);
    EXPECT_EQ(SexprLexer::unescape(token.text), "a\"b\\c\nd\re\tf");
}

TEST(SexprLexer, EndsAStringAfterAnEscapedBackslash) {
    EXPECT_THAT(tokensOf(R"("a\\" b)"), ElementsAre(R"("a\\")", "'b'"));
}

TEST(SexprLexer, RefusesAnUnknownEscape) {
    EXPECT_EQ(errorIn("(\"ab\\\xC3\xBC\")"),
              "f:1:5: expected one of the escapes \\\" \\\\ \\n \\r \\t, found '\\\xC3\xBC'");
}

TEST(SexprLexer, RefusesAListThatIsCutOff) {
    EXPECT_EQ(errorIn("(a\n (b"), "f:2:4: expected ')', found the end of the file");
}

TEST(SexprLexer, RefusesAStringThatIsCutOff) {
    EXPECT_EQ(errorIn("(a \"bc"), "f:1:7: expected '\"', found the end of the file");
}

TEST(SexprLexer, RefusesAStringThatIsCutOffInAnEscape) {
    EXPECT_EQ(errorIn("(a \"b\\"), "f:1:7: expected '\"', found the end of the file");
}

TEST(SexprLexer, RefusesALineBreakInAString) {
    EXPECT_EQ(errorIn("(a \"bc\nd\")"), "f:1:7: expected '\"', found the end of the line");
}

TEST(SexprLexer, RefusesEmbeddedDataThatIsCutOff) {
    EXPECT_EQ(errorIn("(a |bc"), "f:1:7: expected '|', found the end of the file");
}

TEST(SexprLexer, RefusesAParenthesisTooMany) {
    EXPECT_EQ(errorIn("(a)\n )"), "f:2:2: expected the end of the file, found ')'");
}

TEST(SexprLexer, NestsAsDeepAsTheLimit) {
    const std::size_t most = SexprLexer::kMaxDepth;
    EXPECT_EQ(tokensOf(std::string(most, '(') + std::string(most, ')')).size(), 2 * most);
}

TEST(SexprLexer, RefusesToNestDeeper) {
    EXPECT_EQ(errorIn(std::string(SexprLexer::kMaxDepth + 1, '(')),
              "f:1:257: expected lists nested at most 256 deep, found another '('");
}

TEST(SexprLexer, ShortensALongTokenInAMessage) {
    EXPECT_EQ(tokensOf(std::string(59, 'a') + "\xC3\xBC" + "bcd").front(),
              "'" + std::string(59, 'a') + "\xC3\xBC...'");
}

} // namespace
} // namespace kthost
