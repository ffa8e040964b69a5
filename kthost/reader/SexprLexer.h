#pragma once

#include "kthost/reader/SourceText.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kthost {

enum class SexprTokenKind : std::uint8_t {
    Open,   ///< (
    Close,  ///< )
    Word,   ///< a bare word or number
    String, ///< "…"
    Data,   ///< |…|, embedded data
    End,    ///< the end of the text, outside all lists
};

struct SexprToken {
    SexprTokenKind kind = SexprTokenKind::End;
    bool escaped = false;   ///< the text holds escapes, see SexprLexer::unescape
    std::size_t offset = 0; ///< where the token begins
    std::string_view text;  ///< as it stands in the source, without quotes or bars
};

/// Takes an s-expression apart token by token, in one pass, without copying and without recursion. Every
/// refusal is a ReadError: a text that ends inside a list, a string or data, a closing parenthesis too many,
/// an unknown escape, or lists nested more than kMaxDepth deep.
class SexprLexer {
public:
    static constexpr std::size_t kMaxDepth = 256;

    /// `source` must outlive the lexer and its tokens.
    explicit SexprLexer(const SourceText& source) noexcept : source_(&source), text_(source.text()) {}

    SexprToken next();

    /// How many lists are open after the last token.
    std::size_t depth() const noexcept { return depth_; }

    /// Where the next token is looked for.
    std::size_t offset() const noexcept { return at_; }

    const SourceText& source() const noexcept { return *source_; }

    /// The text of a token with its escapes resolved.
    static std::string unescape(std::string_view text);

private:
    SexprToken open();
    SexprToken close();
    SexprToken word();
    SexprToken quoted();
    SexprToken data();
    SexprToken end() const;
    void skipSpace() noexcept;
    void checkEscape(std::size_t offset) const;

    const SourceText* source_;
    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t depth_ = 0;
};

/// A token as an error message shows it, shortened where it is long.
std::string describe(const SexprToken& token);

} // namespace kthost
