#pragma once

#include "legacy/ByteSource.h"

#include <algorithm>
#include <string>

/// Gives out the bytes of a string, at most `piece` of them at a time.
class MemorySource : public ByteSource {
public:
    explicit MemorySource(std::string bytes, std::size_t piece = 4096)
        : bytes_(std::move(bytes)),
          piece_(piece) {}

    std::size_t read(std::span<unsigned char> to) override {
        const std::size_t length = std::min({to.size(), piece_, bytes_.size() - next_});
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(next_), length, to.begin());
        next_ += length;
        return length;
    }

    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }

private:
    std::string bytes_;
    std::size_t next_ = 0;
    std::size_t piece_;
};
