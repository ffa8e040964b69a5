#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// A hash of text that differs from one run of the program to the next, so that no file can be made whose
/// tags all fall together.
class TagHash {
public:
    std::size_t operator()(std::wstring_view text) const {
        return ofBytes({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
    }

    /// Of text that is kept as bytes.
    [[nodiscard]] std::uint64_t ofBytes(std::string_view bytes) const {
        constexpr std::size_t kWord = sizeof(std::uint64_t);
        std::uint64_t hash = kSeed ^ bytes.size();
        if (bytes.size() < kWord) {
            return folded(hash, lastWord(bytes));
        }
        const char* next = bytes.data();
        const char* const last = bytes.data() + bytes.size() - kWord;
        for (; next < last; next += kWord) {
            hash = folded(hash, wordAt(next));
        }
        return folded(hash,
                      wordAt(last)); // with some of the word before, where the bytes do not come out even
    }

private:
    __extension__ using Product = unsigned __int128;

    static const std::uint64_t kSeed;
    static const std::uint64_t kFactor; ///< odd, and as little known as the seed

    static std::uint64_t wordAt(const char* bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }

    static std::uint64_t lastWord(std::string_view bytes) {
        std::uint64_t word = 0;
        if (!bytes.empty()) { // nothing may be copied from nowhere
            std::memcpy(&word, bytes.data(), bytes.size());
        }
        return word;
    }

    /// Both halves of the product, so that no difference of two texts has the same effect in every run.
    static std::uint64_t folded(std::uint64_t hash, std::uint64_t word) {
        const Product product = static_cast<Product>(hash ^ word) * kFactor;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    }
};
