#include "ParseOptions.h"

#include "Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace parts {

namespace {

constexpr std::array<std::wstring_view, 5> kClauses{L"from", L"by", L"where", L"to", L"as"};

bool isClause(std::wstring_view word) {
    return std::find(kClauses.begin(), kClauses.end(), word) != kClauses.end();
}

template <typename T>
bool parseNumber(std::wstring_view text, T& number) {
    const std::string bytes = toUtf8(text);
    const auto [end, failure] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
    return failure == std::errc() && end == bytes.data() + bytes.size();
}

bool parsePosition(std::wstring_view text, Position& position) {
    const std::size_t comma = text.find(L',');
    return comma != std::wstring_view::npos && parseNumber(text.substr(0, comma), position.x) &&
           parseNumber(text.substr(comma + 1), position.y) && std::isfinite(position.x) &&
           std::isfinite(position.y);
}

class OptionsParser {
public:
    OptionsParser(std::span<const wchar_t* const> words, Options& options)
        : words_(words),
          options_(options) {}

    std::wstring parse() {
        std::wstring reason;
        while (reason.empty() && next_ < words_.size()) {
            reason = parsePart();
        }
        if (reason.empty() && !options_.templateFile.empty() && !options_.blocks.empty()) {
            return L"blocks are either named or taken from a template, not both";
        }
        return reason;
    }

private:
    std::wstring parsePart() {
        const std::wstring word = words_[next_++];
        if (!isClause(word)) {
            options_.blocks.push_back(word);
            return word.empty() ? L"a block without a name" : L"";
        }
        if (std::find(seen_.begin(), seen_.end(), word) != seen_.end()) {
            return L"'" + word + L"' comes twice";
        }
        seen_.push_back(word);
        return parseClause(word);
    }

    std::wstring parseClause(std::wstring_view clause) {
        if (clause == L"where") {
            return parseConditions();
        }
        if (clause == L"as") {
            return parseTable();
        }
        if (clause == L"by") {
            return parseKind();
        }
        std::wstring& name = clause == L"to" ? options_.file : options_.templateFile;
        name = take();
        return name.empty() ? L"'" + std::wstring(clause) + L"' needs a file name" : L"";
    }

    std::wstring parseKind() {
        const std::wstring word = take();
        if (word == L"reference") {
            options_.kind = RowKind::reference;
        } else if (word == L"occurrence") {
            options_.kind = RowKind::occurrence;
        } else if (word == L"component") {
            options_.kind = RowKind::component;
        } else {
            return L"'by' needs reference, occurrence or component";
        }
        return {};
    }

    std::wstring parseConditions() {
        const std::size_t before = options_.conditions.size();
        for (; next_ < words_.size() && !isClause(words_[next_]); ++next_) {
            const std::wstring word = words_[next_];
            const std::size_t equals = word.find(L'=');
            if (equals == std::wstring::npos || equals == 0) {
                return L"'" + word + L"' is no condition; write TAG=TEXT";
            }
            options_.conditions.push_back({word.substr(0, equals), word.substr(equals + 1)});
        }
        return options_.conditions.size() == before ? L"'where' needs a condition TAG=TEXT" : L"";
    }

    std::wstring parseTable() {
        Position position;
        if (take() != L"table" || !parsePosition(take(), position)) {
            return L"'as' needs the word table and a position X,Y";
        }
        options_.table = position;
        return {};
    }

    /// The next word; empty when there is none.
    std::wstring take() { return next_ < words_.size() ? words_[next_++] : L""; }

    std::span<const wchar_t* const> words_;
    Options& options_;
    std::size_t next_ = 0;
    std::vector<std::wstring> seen_;
};

} // namespace

std::wstring parseOptions(std::span<const wchar_t* const> words, Options& options) {
    options = {};
    return OptionsParser(words, options).parse();
}

std::uint32_t parseMilliseconds(std::wstring_view text) {
    std::int32_t number = 0;
    return parseNumber(text, number) && number > 0 ? static_cast<std::uint32_t>(number) : 0;
}

} // namespace parts
