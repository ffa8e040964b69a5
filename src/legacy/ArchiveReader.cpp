#include "legacy/ArchiveReader.h"

#include "legacy/ArchiveTags.h"
#include "legacy/CodePage.h"
#include "legacy/TemplateFailure.h"
#include "legacy/Utf16.h"

#include <algorithm>

namespace {

[[noreturn]] void failAtEnd(std::uint64_t offset, std::uint64_t needed, std::uint64_t remaining) {
    throw ArchiveFailure(ArchiveFailure::Cause::endOfFile, offset,
                         "end of file: " + std::to_string(needed) + " bytes are needed and " +
                             std::to_string(remaining) + " remain");
}

[[noreturn]] void failAtEndOfText(std::uint64_t offset, std::uint64_t length, std::uint64_t remaining) {
    throw ArchiveFailure(ArchiveFailure::Cause::endOfFile, offset,
                         "end of file: a text of " + std::to_string(length) +
                             " characters is announced and " + std::to_string(remaining) + " bytes remain");
}

/// Text of `length` characters, each of which has bytes in the file already; no platform's memory may hold it
/// all the same.
template <typename Text>
Text withRoomFor(std::uint64_t length) {
    Text text;
    if (length > text.max_size()) {
        throw std::bad_alloc();
    }
    text.reserve(static_cast<std::size_t>(length));
    return text;
}

} // namespace

ArchiveReader::ArchiveReader(ByteSource& source, const std::locale& codePage)
    : source_(&source),
      codePage_(codePage) {}

void ArchiveReader::requireRemaining(std::uint64_t length) const {
    if (length > remaining()) {
        failAtEnd(position(), length, remaining());
    }
}

/// Moves what is left in the buffer to its front and reads on behind it, until `length` bytes are there.
/// Never beyond the size that the source has told, should the file have grown.
void ArchiveReader::fill(std::size_t length) {
    std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(next_),
              buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
    consumed_ += next_;
    end_ -= next_;
    next_ = 0;
    const auto most = static_cast<std::size_t>(std::min<std::uint64_t>(kBufferSize, remaining()));
    while (end_ < length) {
        const std::size_t got = source_->read(std::span(buffer_).subspan(end_, most - end_));
        if (got == 0) {
            failAtEnd(position(), length, end_);
        }
        end_ += got;
    }
}

std::span<const unsigned char> ArchiveReader::take(std::size_t length) {
    if (end_ - next_ < length) {
        requireRemaining(length);
        fill(length);
    }
    const auto bytes = std::span<const unsigned char>(buffer_).subspan(next_, length);
    next_ += length;
    return bytes;
}

std::uint64_t ArchiveReader::takeInteger(std::size_t bytes) {
    std::uint64_t value = 0;
    std::size_t shift = 0;
    for (const unsigned char byte : take(bytes)) {
        value |= static_cast<std::uint64_t>(byte) << shift;
        shift += 8;
    }
    return value;
}

std::uint8_t ArchiveReader::readByte() {
    return static_cast<std::uint8_t>(takeInteger(sizeof(std::uint8_t)));
}

std::uint16_t ArchiveReader::readUint16() {
    return static_cast<std::uint16_t>(takeInteger(sizeof(std::uint16_t)));
}

std::uint32_t ArchiveReader::readUint32() {
    return static_cast<std::uint32_t>(takeInteger(sizeof(std::uint32_t)));
}

std::uint64_t ArchiveReader::readUint64() {
    return takeInteger(sizeof(std::uint64_t));
}

std::int32_t ArchiveReader::readInt32() {
    return static_cast<std::int32_t>(readUint32());
}

std::uint64_t ArchiveReader::readLengthAbove16Bits() {
    const std::uint32_t length = readUint32();
    return length == kLongerThan32Bits ? readUint64() : length;
}

std::uint64_t ArchiveReader::readCount() {
    const std::uint16_t count = readUint16();
    return count == kLongerThan16Bits ? readLengthAbove16Bits() : count;
}

std::uint64_t ArchiveReader::readLongLength(std::uint16_t second) {
    return second == kLongerThan16Bits ? readLengthAbove16Bits() : second;
}

std::uint64_t ArchiveReader::readLength(std::uint8_t first) {
    return first == kLongLength ? readLongLength(readUint16()) : first;
}

std::wstring ArchiveReader::readString() {
    const std::uint8_t first = readByte();
    if (first != kLongLength) {
        return wideFromCodePage(readBytes(first), codePage_);
    }
    const std::uint16_t second = readUint16();
    if (second != kUtf16Marker) {
        return wideFromCodePage(readBytes(readLongLength(second)), codePage_);
    }
    // After the marker, the marker's own value is a length like any other.
    return readUtf16(readLength(readByte()));
}

bool ArchiveReader::peekString(std::string_view& utf16Bytes, std::uint8_t& next) {
    constexpr std::size_t kPrefix = 4;
    const std::size_t buffered = end_ - next_;
    const unsigned char* const bytes = buffer_.data() + next_;
    if (buffered < kPrefix || bytes[0] != kLongLength || bytes[1] != (kUtf16Marker & 0xFF) ||
        bytes[2] != kUtf16Marker >> 8 || bytes[3] == kLongLength) {
        return false;
    }
    const std::size_t length = 2 * std::size_t{bytes[3]};
    if (buffered <= kPrefix + length) {
        return false;
    }
    utf16Bytes = {reinterpret_cast<const char*>(bytes) + kPrefix, length};
    next = bytes[kPrefix + length];
    next_ += kPrefix + length + 1;
    return true;
}

std::string ArchiveReader::readUtf16Bytes() {
    const std::u16string units = utf16FromWide(readString());
    std::string bytes;
    bytes.reserve(2 * units.size());
    for (const char16_t unit : units) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

std::string ArchiveReader::readBytes(std::uint64_t length) {
    if (length > remaining()) {
        failAtEndOfText(position(), length, remaining());
    }
    auto bytes = withRoomFor<std::string>(length);
    while (bytes.size() < length) {
        const auto piece =
            take(static_cast<std::size_t>(std::min<std::uint64_t>(length - bytes.size(), kBufferSize)));
        bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
    }
    return bytes;
}

std::wstring ArchiveReader::readUtf16(std::uint64_t length) {
    if (length > remaining() / 2) {
        failAtEndOfText(position(), length, remaining());
    }
    auto text = withRoomFor<std::wstring>(length);
    Utf16Decoder decoder;
    for (std::uint64_t left = 2 * length; left > 0;) {
        const auto piece = take(static_cast<std::size_t>(std::min<std::uint64_t>(left, kBufferSize)));
        decoder.append(piece, text);
        left -= piece.size();
    }
    decoder.finish(text);
    return text;
}
