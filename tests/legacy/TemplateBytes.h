#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Puts the bytes of a template together by hand, independently of the code that writes one.
class TemplateBytes {
public:
    TemplateBytes& integer(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            bytes_.push_back(static_cast<char>(static_cast<unsigned char>(value >> (8 * i))));
        }
        return *this;
    }

    TemplateBytes& u8(std::uint64_t value) { return integer(value, 1); }

    TemplateBytes& u16(std::uint64_t value) { return integer(value, 2); }

    TemplateBytes& u32(std::uint64_t value) { return integer(value, 4); }

    TemplateBytes& u64(std::uint64_t value) { return integer(value, 8); }

    TemplateBytes& raw(std::string_view bytes) {
        bytes_ += bytes;
        return *this;
    }

    /// A short text of code units, after its marker and one-byte length.
    TemplateBytes& text(std::u16string_view units) {
        u8(0xFF).u16(0xFFFE).u8(units.size());
        return characters(units);
    }

    TemplateBytes& characters(std::u16string_view units) {
        for (const char16_t unit : units) {
            u16(unit);
        }
        return *this;
    }

    /// A short text of 8-bit characters.
    TemplateBytes& text8(std::string_view bytes) { return u8(bytes.size()).raw(bytes); }

    TemplateBytes& header(std::uint64_t blocks) { return u32(1).u16(blocks); }

    TemplateBytes& newClass(std::string_view name = "CEattBlockInfo", std::uint64_t schema = 1) {
        return u16(0xFFFF).u16(schema).u16(name.size()).raw(name);
    }

    /// The fields of a block up to its attributes.
    TemplateBytes& body(std::u16string_view name, std::uint64_t selected, std::uint64_t attributes) {
        return text(name).u8(selected).u32(attributes);
    }

    TemplateBytes& attribute(std::u16string_view tag, std::uint64_t selected) {
        return text(tag).u8(selected);
    }

    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};
