#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Where an archive's bytes come from, in one pass from the first to the last.
class ByteSource {
public:
    virtual ~ByteSource() = default;

    /// Fills at most the whole of `to`; the number of bytes, 0 only at the end. Throws FileFailure.
    virtual std::size_t read(std::span<unsigned char> to) = 0;

    /// All bytes from the first to the last, whether read or not.
    [[nodiscard]] virtual std::uint64_t size() const = 0;

    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

protected:
    ByteSource() = default;
};
