#pragma once

#include "kthost/reader/ReadError.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kthost {

/// The bytes of one text file under the name that errors call it by. Everything that is read from it refers
/// to places in it by offset; a line and column are worked out when somebody asks. One thread at a time.
class SourceText {
public:
    /// Throws ReadError when the bytes are not UTF-8. A byte-order mark is passed over.
    SourceText(std::string fileName, std::string bytes);

    const std::string& fileName() const noexcept { return fileName_; }

    std::string_view text() const noexcept { return bytes_; }

    /// Asking for places in ascending order costs, all together, one pass over the text.
    SourcePosition position(std::size_t offset) const noexcept;

    [[noreturn]] void fail(std::size_t offset, std::string expected, std::string found) const;

private:
    void advanceTo(std::size_t offset) const noexcept;

    std::string fileName_;
    std::string bytes_;
    mutable std::size_t knownOffset_ = 0;
    mutable SourcePosition knownPosition_{1, 1};
};

} // namespace kthost
