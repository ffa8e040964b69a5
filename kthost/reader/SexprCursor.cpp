#include "kthost/reader/SexprCursor.h"

#include "kthost/runtime/Utf8.h"

#include <charconv>
#include <sstream>
#include <system_error>

namespace kthost {

namespace {

template <typename Number>
std::string describeRange(std::string_view what, Number least, Number most) {
    std::ostringstream text;
    text.precision(10);
    text << what << " from " << least << " to " << most;
    return text.str();
}

template <typename Number>
Number parseNumber(const SexprCursor& in, const SexprToken& token, std::string_view what, Number least,
                   Number most) {
    Number value{};
    const char* const end = token.text.data() + token.text.size();
    const auto [stop, error] = std::from_chars(token.text.data(), end, value);
    if (error == std::errc::invalid_argument || stop != end) {
        in.fail(token, what);
    }
    // Written so that a value that is not a number fails as well.
    if (error != std::errc() || !(value >= least && value <= most)) {
        in.fail(token, describeRange(what, least, most));
    }
    return value;
}

} // namespace

void SexprCursor::openDocument(std::string_view head, std::string_view what) {
    const SexprToken open = lexer_.next();
    if (open.kind != SexprTokenKind::Open) {
        fail(open, what);
    }
    const SexprToken name = lexer_.next();
    if (name.kind != SexprTokenKind::Word || name.text != head) {
        fail(name, what);
    }
}

void SexprCursor::closeDocument() {
    const SexprToken token = lexer_.next();
    if (token.kind != SexprTokenKind::End) {
        fail(token, "the end of the file");
    }
}

SexprToken SexprCursor::atom(std::string_view what) {
    const SexprToken token = lexer_.next();
    if (token.kind != SexprTokenKind::Word && token.kind != SexprTokenKind::String) {
        fail(token, what);
    }
    return token;
}

std::optional<SexprToken> SexprCursor::atomOrEnd() {
    SexprToken token = lexer_.next();
    while (token.kind == SexprTokenKind::Open) {
        leaveList(lexer_.depth());
        token = lexer_.next();
    }
    return token.kind == SexprTokenKind::Close ? std::nullopt : std::optional(token);
}

std::wstring SexprCursor::textOf(const SexprToken& token) {
    return token.escaped ? toWide(SexprLexer::unescape(token.text)) : toWide(token.text);
}

std::wstring SexprCursor::text(std::string_view what) {
    return textOf(atom(what));
}

std::int64_t SexprCursor::integer(std::string_view what, std::int64_t least, std::int64_t most) {
    return parseNumber(*this, atom(what), what, least, most);
}

double SexprCursor::number(std::string_view what, double least, double most) {
    return numberOf(atom(what), what, least, most);
}

double SexprCursor::numberOf(const SexprToken& token, std::string_view what, double least,
                             double most) const {
    return parseNumber(*this, token, what, least, most);
}

bool SexprCursor::yesOrNo(std::string_view what) {
    const std::string expected = std::string(what) + " yes or no";
    const SexprToken token = atom(expected);
    if (token.text != "yes" && token.text != "no") {
        fail(token, expected);
    }
    return token.text == "yes";
}

void SexprCursor::fail(const SexprToken& token, std::string_view expected) const {
    lexer_.source().fail(token.offset, std::string(expected), describe(token));
}

void SexprCursor::leaveList(std::size_t depth) {
    while (lexer_.depth() >= depth) {
        lexer_.next();
    }
}

} // namespace kthost
