#include "kthost/reader/SexprLexer.h"

#include <algorithm>
#include <array>

namespace kthost {

namespace {

constexpr std::string_view kSpaces = " \t\r\n\f\v";
constexpr std::string_view kWordEnds = " \t\r\n\f\v()\"";
constexpr std::string_view kEndOfFile = "the end of the file";

constexpr std::array<bool, 256> setOf(std::string_view members) {
    std::array<bool, 256> set{};
    for (const char member : members) {
        set[static_cast<unsigned char>(member)] = true;
    }
    return set;
}

constexpr std::array<bool, 256> kIsSpace = setOf(kSpaces);
constexpr std::array<bool, 256> kEndsWord = setOf(kWordEnds);

bool isIn(const std::array<bool, 256>& set, char c) {
    return set[static_cast<unsigned char>(c)];
}

constexpr char kNoEscape = '\0';

char resolveEscape(char letter) {
    switch (letter) {
    case '"':
    case '\\':
        return letter;
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return kNoEscape;
    }
}

// At least `length` bytes, and no half character at the end.
std::string_view wholeCharacters(std::string_view text, std::size_t length) {
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        ++length;
    }
    return text.substr(0, length);
}

std::string enclosed(std::string_view text, char mark) {
    std::string result(1, mark);
    result += text;
    result += mark;
    return result;
}

std::string shortened(std::string_view text) {
    constexpr std::size_t kLongest = 60;
    const std::string_view shown = wholeCharacters(text, kLongest);
    return std::string(shown) + (shown.size() < text.size() ? "..." : "");
}

} // namespace

SexprToken SexprLexer::next() {
    skipSpace();
    if (at_ == text_.size()) {
        return end();
    }
    switch (text_[at_]) {
    case '(':
        return open();
    case ')':
        return close();
    case '"':
        return quoted();
    case '|':
        return data();
    default:
        return word();
    }
}

void SexprLexer::skipSpace() noexcept {
    while (at_ < text_.size() && isIn(kIsSpace, text_[at_])) {
        ++at_;
    }
}

SexprToken SexprLexer::end() const {
    if (depth_ != 0) {
        source_->fail(at_, "')'", std::string(kEndOfFile));
    }
    return {SexprTokenKind::End, false, at_, {}};
}

SexprToken SexprLexer::open() {
    if (depth_ == kMaxDepth) {
        source_->fail(at_, "lists nested at most " + std::to_string(kMaxDepth) + " deep", "another '('");
    }
    ++depth_;
    return {SexprTokenKind::Open, false, at_, text_.substr(at_++, 1)};
}

SexprToken SexprLexer::close() {
    if (depth_ == 0) {
        source_->fail(at_, std::string(kEndOfFile), "')'");
    }
    --depth_;
    return {SexprTokenKind::Close, false, at_, text_.substr(at_++, 1)};
}

SexprToken SexprLexer::word() {
    const std::size_t start = at_;
    while (at_ < text_.size() && !isIn(kEndsWord, text_[at_])) {
        ++at_;
    }
    return {SexprTokenKind::Word, false, start, text_.substr(start, at_ - start)};
}

SexprToken SexprLexer::quoted() {
    const std::size_t start = at_++;
    bool escaped = false;
    for (; at_ < text_.size() && text_[at_] != '"' && text_[at_] != '\n'; ++at_) {
        if (text_[at_] == '\\') {
            checkEscape(at_);
            escaped = true;
            ++at_;
        }
    }
    if (at_ >= text_.size() || text_[at_] != '"') {
        at_ = std::min(at_, text_.size());
        source_->fail(at_, "'\"'", at_ == text_.size() ? std::string(kEndOfFile) : "the end of the line");
    }
    ++at_;
    return {SexprTokenKind::String, escaped, start, text_.substr(start + 1, at_ - start - 2)};
}

void SexprLexer::checkEscape(std::size_t offset) const {
    if (offset + 1 < text_.size() && resolveEscape(text_[offset + 1]) == kNoEscape) {
        source_->fail(offset, R"(one of the escapes \" \\ \n \r \t)",
                      enclosed(wholeCharacters(text_.substr(offset), 2), '\''));
    }
}

SexprToken SexprLexer::data() {
    const std::size_t start = at_;
    const std::size_t bar = text_.find('|', start + 1);
    if (bar == std::string_view::npos) {
        source_->fail(text_.size(), "'|'", std::string(kEndOfFile));
    }
    at_ = bar + 1;
    return {SexprTokenKind::Data, false, start, text_.substr(start + 1, bar - start - 1)};
}

std::string SexprLexer::unescape(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        plain += text[i] == '\\' ? resolveEscape(text[++i]) : text[i];
    }
    return plain;
}

std::string describe(const SexprToken& token) {
    switch (token.kind) {
    case SexprTokenKind::String:
        return enclosed(shortened(token.text), '"');
    case SexprTokenKind::Data:
        return "embedded data";
    case SexprTokenKind::End:
        return std::string(kEndOfFile);
    default:
        return enclosed(shortened(token.text), '\'');
    }
}

} // namespace kthost
