#include "kthost/console/Words.h"

#include "kthost/console/CommandError.h"
#include "kthost/reader/PathText.h"
#include "kthost/runtime/Utf8.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace kthost {

namespace {

/// False unless the whole text is a number. Numbers do not depend on the user's locale.
template <typename T>
bool parseWhole(std::string_view text, T& number) {
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size();
}

bool parsePoint(std::string_view text, KtGePoint3d& point) {
    const std::size_t comma = text.find(',');
    return comma != std::string_view::npos && parseWhole(text.substr(0, comma), point.x) &&
           parseWhole(text.substr(comma + 1), point.y) && std::isfinite(point.x) && std::isfinite(point.y);
}

} // namespace

const std::wstring& Words::take(const char* what) {
    if (atEnd()) {
        throw UsageError(std::string(what) + " is missing");
    }
    return words_[next_++];
}

bool Words::takeIf(std::wstring_view word) {
    if (atEnd() || words_[next_] != word) {
        return false;
    }
    ++next_;
    return true;
}

void Words::expect(std::wstring_view word) {
    if (!takeIf(word)) {
        throw UsageError("'" + toUtf8(word) + "' is missing");
    }
}

void Words::expectEnd() const {
    if (!atEnd()) {
        throw UsageError("'" + toUtf8(words_[next_]) + "' is too much");
    }
}

KtGePoint3d Words::takePoint() {
    KtGePoint3d point;
    const std::string text = toUtf8(take("X,Y"));
    if (!parsePoint(text, point)) {
        throw UsageError("'" + text + "' is no position X,Y");
    }
    return point;
}

std::filesystem::path Words::takePath(const char* what) {
    const std::wstring& text = take(what);
    if (text.empty()) {
        throw UsageError(std::string(what) + " is empty");
    }
    return pathOf(text);
}

std::filesystem::path Words::takeWholePath(const char* what) {
    const std::filesystem::path path = takePath(what);
    std::error_code error;
    std::filesystem::path whole = std::filesystem::absolute(path, error);
    if (error) {
        throw CommandError(toUtf8(pathText(path)) + ": " + error.message());
    }
    return whole;
}

std::uint32_t Words::takeNumber(const char* what, std::uint32_t least, std::uint32_t most) {
    std::uint32_t number = 0;
    const std::string text = toUtf8(take(what));
    if (!parseWhole(std::string_view(text), number) || number < least || number > most) {
        throw UsageError(std::string(what) + " has to be a whole number from " + std::to_string(least) +
                         " to " + std::to_string(most) + ", not '" + text + "'");
    }
    return number;
}

} // namespace kthost
