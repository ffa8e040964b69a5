#pragma once

#include <UserLocale.h>

#include "legacy/ByteSource.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

/// Where in a template the reading stands, for whoever must say where it broke off.
struct TemplatePlace {
    static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();

    std::uint64_t block = kNone;     ///< counted from 0; kNone before the first
    std::uint64_t attribute = kNone; ///< counted from 0; kNone outside the attributes of a block
    const char* field = "header";
};

/// Reads the plain values of an archive stream: integers, counts and strings, little-endian. Every operation
/// throws ArchiveFailure (end of file) when fewer bytes remain than it needs, before it takes memory for
/// them, and passes on the FileFailure of its source.
class ArchiveReader {
public:
    /// `source` is read from here on by this reader only and outlives it; 8-bit text is in the encoding of
    /// `codePage`.
    explicit ArchiveReader(ByteSource& source, const std::locale& codePage = userLocale());

    std::uint8_t readByte();
    std::uint16_t readUint16();
    std::uint32_t readUint32();
    std::uint64_t readUint64();
    std::int32_t readInt32();
    /// The number of elements of an array, in 2, 6 or 14 bytes.
    std::uint64_t readCount();
    /// A length prefix in any of its forms, and that many characters, UTF-16 or 8-bit.
    std::wstring readString();
    /// The same as little-endian UTF-16, which is what nearly all are in the file.
    std::string readUtf16Bytes();
    /// The same and the byte behind it, where both lie in the buffer, which nearly all do; they stay there
    /// until the next read that is not such a peek. False, and nothing is read, where they do not, or are
    /// not in the usual form.
    bool peekString(std::string_view& utf16Bytes, std::uint8_t& next);
    /// That many bytes without a prefix.
    std::string readBytes(std::uint64_t length);

    /// Bytes read so far.
    [[nodiscard]] std::uint64_t position() const { return consumed_ + next_; }

    [[nodiscard]] std::uint64_t remaining() const { return source_->size() - position(); }

    TemplatePlace place;

private:
    static constexpr std::size_t kBufferSize = 4096;

    /// The next `length` bytes, at most a buffer of them; they stay until the next call.
    std::span<const unsigned char> take(std::size_t length);
    std::uint64_t takeInteger(std::size_t bytes);
    void requireRemaining(std::uint64_t length) const;
    void fill(std::size_t length);
    std::uint64_t readLengthAbove16Bits();
    std::uint64_t readLength(std::uint8_t first);
    std::uint64_t readLongLength(std::uint16_t second);
    std::wstring readUtf16(std::uint64_t length);

    ByteSource* source_;
    std::locale codePage_;
    std::uint64_t consumed_ = 0; ///< bytes that have left the buffer
    std::size_t next_ = 0;
    std::size_t end_ = 0;
    std::array<unsigned char, kBufferSize> buffer_{};
};
