#include "kthost/reader/SourceText.h"

#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <utility>

namespace kthost {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string describeByte(char byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return std::string("the byte 0x") + kDigits[value >> 4U] + kDigits[value & 0xFU];
}

} // namespace

SourceText::SourceText(std::string fileName, std::string bytes)
    : fileName_(std::move(fileName)),
      bytes_(std::move(bytes)) {
    if (bytes_.starts_with(kByteOrderMark)) {
        bytes_.erase(0, kByteOrderMark.size());
    }
    const std::size_t malformed = findMalformedUtf8(bytes_);
    if (malformed != std::string_view::npos) {
        fail(malformed, "UTF-8 text", describeByte(bytes_[malformed]));
    }
}

SourcePosition SourceText::position(std::size_t offset) const noexcept {
    if (offset < knownOffset_) {
        knownOffset_ = 0;
        knownPosition_ = {1, 1};
    }
    advanceTo(std::min(offset, bytes_.size()));
    return knownPosition_;
}

void SourceText::advanceTo(std::size_t offset) const noexcept {
    const std::string_view passed = text().substr(knownOffset_, offset - knownOffset_);
    const std::size_t lastBreak = passed.rfind('\n');
    if (lastBreak == std::string_view::npos) {
        knownPosition_.column += countCodePoints(passed);
    } else {
        knownPosition_.line += static_cast<std::size_t>(std::count(passed.begin(), passed.end(), '\n'));
        knownPosition_.column = countCodePoints(passed.substr(lastBreak + 1)) + 1;
    }
    knownOffset_ = offset;
}

void SourceText::fail(std::size_t offset, std::string expected, std::string found) const {
    throw ReadError(fileName_, position(offset), std::move(expected), std::move(found));
}

} // namespace kthost
