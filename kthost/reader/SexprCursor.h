#pragma once

#include "kthost/reader/SexprLexer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kthost {

class SexprCursor;

/// What to do with a list that begins with `head` inside the list of a Target. The function reads what it
/// needs of the list after the head; the rest of the list is passed over.
template <typename Target>
struct SexprField {
    std::string_view head;
    void (*read)(SexprCursor& in, Target& target);
};

/// Reads lists by the heads of their members, in any order, and passes over what nobody asks for. Functions
/// that read an atom throw ReadError, naming `what` was expected, when something else stands there.
class SexprCursor {
public:
    /// `source` must outlive the cursor.
    explicit SexprCursor(const SourceText& source) noexcept : lexer_(source) {}

    /// Reads the members of the list whose head has just been read, and its closing parenthesis.
    template <typename Target>
    void readFields(Target& target, std::span<const SexprField<Target>> fields);

    /// Opens the one list that the text consists of, and that begins with `head`.
    void openDocument(std::string_view head, std::string_view what);

    /// Nothing may follow the document's list.
    void closeDocument();

    SexprToken atom(std::string_view what);

    /// The next atom of the list, or nothing after its closing parenthesis. Lists between atoms are passed
    /// over.
    std::optional<SexprToken> atomOrEnd();

    std::wstring text(std::string_view what);
    std::int64_t integer(std::string_view what, std::int64_t least, std::int64_t most);
    double number(std::string_view what, double least, double most);
    /// `what` is the name of the flag.
    bool yesOrNo(std::string_view what);

    static std::wstring textOf(const SexprToken& token);
    double numberOf(const SexprToken& token, std::string_view what, double least, double most) const;

    /// Where the list begins that was opened last.
    std::size_t listOffset() const noexcept { return listOffset_; }

    /// Where the next token is looked for.
    std::size_t offset() const noexcept { return lexer_.offset(); }

    SourcePosition position(const SexprToken& token) const noexcept {
        return lexer_.source().position(token.offset);
    }

    [[noreturn]] void fail(const SexprToken& token, std::string_view expected) const;

    const SourceText& source() const noexcept { return lexer_.source(); }

private:
    void leaveList(std::size_t depth);

    SexprLexer lexer_;
    std::size_t listOffset_ = 0;
};

template <typename Target>
void SexprCursor::readFields(Target& target, std::span<const SexprField<Target>> fields) {
    for (SexprToken token = lexer_.next(); token.kind != SexprTokenKind::Close; token = lexer_.next()) {
        if (token.kind != SexprTokenKind::Open) {
            continue;
        }
        listOffset_ = token.offset;
        const std::size_t depth = lexer_.depth();
        const std::string_view head = lexer_.next().text;
        for (const SexprField<Target>& field : fields) {
            if (field.head == head) {
                field.read(*this, target);
                break;
            }
        }
        leaveList(depth);
    }
}

} // namespace kthost
