#pragma once

#include "legacy/MixedBits.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// A hash of bytes that depends on a seed: whoever does not know the seed cannot choose bytes whose hashes
/// fall together.
class KeyedHash {
public:
    explicit KeyedHash(std::uint64_t seed) noexcept : seed_(seed), factor_(mixedBits(~seed) | 1U) {}

    [[nodiscard]] std::uint64_t of(std::string_view bytes) const noexcept {
        constexpr std::size_t kWord = sizeof(std::uint64_t);
        std::uint64_t hash = seed_ ^ bytes.size();
        if (bytes.size() < kWord) {
            return folded(hash, wordOf(bytes));
        }
        const char* next = bytes.data();
        const char* const last = bytes.data() + bytes.size() - kWord;
        for (; next < last; next += kWord) {
            hash = folded(hash, wordOf({next, kWord}));
        }
        // With some of the word before, where the bytes do not come out even.
        return folded(hash, wordOf({last, kWord}));
    }

private:
    __extension__ using Product = unsigned __int128;

    /// Of no more bytes than it has.
    static std::uint64_t wordOf(std::string_view bytes) noexcept {
        std::uint64_t word = 0;
        if (!bytes.empty()) { // nothing may be copied from nowhere
            std::memcpy(&word, bytes.data(), bytes.size());
        }
        return word;
    }

    /// Both halves of the product, so that no difference of two texts has the same effect under every seed.
    [[nodiscard]] std::uint64_t folded(std::uint64_t hash, std::uint64_t word) const noexcept {
        const Product product = static_cast<Product>(hash ^ word) * factor_;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    }

    std::uint64_t seed_;
    std::uint64_t factor_; ///< odd, and as little known as the seed
};
