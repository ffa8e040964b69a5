#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Writes the plain values of an archive stream, little-endian, each in the shortest form.
class ArchiveWriter {
public:
    /// Appends to `out`, which outlives the writer.
    explicit ArchiveWriter(std::string& out) : out_(&out) {}

    void writeByte(std::uint8_t value);
    void writeUint16(std::uint16_t value);
    void writeUint32(std::uint32_t value);
    void writeUint64(std::uint64_t value);
    void writeInt32(std::int32_t value);
    /// The number of elements of an array, in 2, 6 or 14 bytes.
    void writeCount(std::uint64_t count);
    /// Always as UTF-16.
    void writeString(std::wstring_view text);
    /// 8-bit characters without prefix or terminator.
    void writeBytes(std::string_view bytes);

private:
    void writeInteger(std::uint64_t value, std::size_t bytes);
    void writeLengthAbove16Bits(std::uint64_t length);
    void writeLength(std::uint64_t length);

    std::string* out_;
};
