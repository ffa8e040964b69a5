#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <random>
#include <string>

/// A blind change of the bytes, the fuzzer's own; how many there are then.
extern "C" std::size_t LLVMFuzzerMutate(unsigned char* data, std::size_t size, std::size_t maxSize);

/// What changes that know their format have in common: chance, the same for the same seed.
class Chance {
public:
    explicit Chance(unsigned seed) : random_(seed) {}

protected:
    std::size_t below(std::size_t limit) { return random_() % limit; }

    template <typename List>
    const auto& oneOf(const List& list) {
        return list[below(std::size(list))];
    }

private:
    std::minstd_rand random_;
};

/// Hands a changed input to the fuzzer, cut where its room ends; how many bytes that are.
inline std::size_t give(const std::string& input, unsigned char* data, std::size_t maxSize) {
    const std::size_t length = std::min(input.size(), maxSize);
    std::copy_n(input.begin(), length, data);
    return length;
}
