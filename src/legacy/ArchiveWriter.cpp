#include "legacy/ArchiveWriter.h"

#include "legacy/ArchiveTags.h"
#include "legacy/Utf16.h"

void ArchiveWriter::writeInteger(std::uint64_t value, std::size_t bytes) {
    for (std::size_t i = 0; i < bytes; ++i) {
        out_->push_back(static_cast<char>(static_cast<unsigned char>(value >> (8 * i))));
    }
}

void ArchiveWriter::writeByte(std::uint8_t value) {
    writeInteger(value, sizeof value);
}

void ArchiveWriter::writeUint16(std::uint16_t value) {
    writeInteger(value, sizeof value);
}

void ArchiveWriter::writeUint32(std::uint32_t value) {
    writeInteger(value, sizeof value);
}

void ArchiveWriter::writeUint64(std::uint64_t value) {
    writeInteger(value, sizeof value);
}

void ArchiveWriter::writeInt32(std::int32_t value) {
    writeUint32(static_cast<std::uint32_t>(value));
}

void ArchiveWriter::writeLengthAbove16Bits(std::uint64_t length) {
    writeUint16(kLongerThan16Bits);
    if (length < kLongerThan32Bits) {
        writeUint32(static_cast<std::uint32_t>(length));
        return;
    }
    writeUint32(kLongerThan32Bits);
    writeUint64(length);
}

void ArchiveWriter::writeCount(std::uint64_t count) {
    if (count < kLongerThan16Bits) {
        writeUint16(static_cast<std::uint16_t>(count));
        return;
    }
    writeLengthAbove16Bits(count);
}

void ArchiveWriter::writeLength(std::uint64_t length) {
    if (length < kLongLength) {
        writeByte(static_cast<std::uint8_t>(length));
        return;
    }
    writeByte(kLongLength);
    if (length < kUtf16Marker) {
        writeUint16(static_cast<std::uint16_t>(length));
        return;
    }
    writeLengthAbove16Bits(length);
}

void ArchiveWriter::writeString(std::wstring_view text) {
    const std::u16string units = utf16FromWide(text);
    writeByte(kLongLength);
    writeUint16(kUtf16Marker);
    writeLength(units.size());
    for (const char16_t unit : units) {
        writeUint16(unit);
    }
}

void ArchiveWriter::writeBytes(std::string_view bytes) {
    out_->append(bytes);
}
