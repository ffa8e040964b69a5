#include "bench/templates/BareTemplate.h"

#include "bench/drawings/Require.h"

#include <cstdint>
#include <fstream>
#include <string_view>

namespace bench {

namespace {

constexpr std::string_view kClass("\xFF\xFF\x01\x00\x0E\x00"
                                  "CEattBlockInfo",
                                  20);
constexpr std::string_view kSameClass("\x01\x80", 2);
constexpr std::string_view kWide("\xFF\xFE\xFF", 3);
constexpr std::uint64_t kMany = 0xFFFF;
constexpr std::size_t kShort = 0xFF;

void append(std::string& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(value >> (8 * i))));
    }
}

void appendText(std::string& bytes, const std::wstring& text) {
    require(text.size() < kShort, "the texts are short");
    bytes += kWide;
    append(bytes, text.size(), 1);
    for (const wchar_t character : text) {
        append(bytes, static_cast<std::uint64_t>(character), 2);
    }
}

void appendBlock(std::string& bytes, const TemplateBlock& block) {
    appendText(bytes, block.name);
    append(bytes, block.selected ? 1 : 0, 1);
    append(bytes, block.entries.size(), 4);
    for (const TemplateEntry& entry : block.entries) {
        appendText(bytes, entry.tag);
        append(bytes, entry.selected ? 1 : 0, 1);
    }
}

std::string bytesOf(const std::filesystem::path& file) {
    std::string bytes(static_cast<std::size_t>(std::filesystem::file_size(file)), '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    require(static_cast<bool>(stream), "the file can be read");
    return bytes;
}

/// What is left of the bytes.
class Rest {
public:
    explicit Rest(std::string_view bytes) : bytes_(bytes) {}

    std::string_view take(std::size_t length) {
        require(length <= bytes_.size(), "the file is whole");
        const std::string_view taken = bytes_.substr(0, length);
        bytes_.remove_prefix(length);
        return taken;
    }

    std::uint64_t takeNumber(std::size_t width) {
        std::uint64_t value = 0;
        std::size_t shift = 0;
        for (const char byte : take(width)) {
            value |= std::uint64_t{static_cast<unsigned char>(byte)} << shift;
            shift += 8;
        }
        return value;
    }

    std::wstring takeText() {
        require(take(kWide.size()) == kWide, "the texts are wide");
        const std::size_t length = takeNumber(1);
        require(length < kShort, "the texts are short");
        const std::string_view units = take(2 * length);
        std::wstring text(length, L'\0');
        for (std::size_t i = 0; i < length; ++i) {
            const auto low = static_cast<unsigned char>(units[2 * i]);
            const auto high = static_cast<unsigned char>(units[2 * i + 1]);
            text[i] = static_cast<wchar_t>(low | (high << 8));
        }
        return text;
    }

private:
    std::string_view bytes_;
};

void readBlock(Rest& rest, std::vector<std::wstring>& texts) {
    texts.push_back(rest.takeText());
    rest.take(1);
    for (std::uint64_t left = rest.takeNumber(4); left > 0; --left) {
        texts.push_back(rest.takeText());
        rest.take(1);
    }
}

} // namespace

std::string writeBare(const TemplateContents& contents) {
    std::string bytes;
    append(bytes, 1, 4);
    require(contents.size() < kMany, "there are not so many blocks");
    append(bytes, contents.size(), 2);
    bool isFirst = true;
    for (const TemplateBlock& block : contents) {
        bytes += isFirst ? kClass : kSameClass;
        isFirst = false;
        appendBlock(bytes, block);
    }
    return bytes;
}

std::vector<std::wstring> readBare(const std::filesystem::path& file) {
    const std::string bytes = bytesOf(file);
    Rest rest(bytes);
    rest.take(4);
    std::vector<std::wstring> texts;
    const std::uint64_t count = rest.takeNumber(2);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string_view expected = i == 0 ? kClass : kSameClass;
        require(rest.take(expected.size()) == expected, "the class is named");
        readBlock(rest, texts);
    }
    return texts;
}

} // namespace bench
