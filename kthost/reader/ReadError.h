#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace kthost {

/// A place in a text file. Lines and columns count from 1, columns in characters; 0, 0 is the file as a
/// whole.
struct SourcePosition {
    std::size_t line = 0;
    std::size_t column = 0;

    bool operator==(const SourcePosition&) const = default;
};

/// A drawing that cannot be read, and why. What the caller had before is unchanged: the reader throws before
/// it hands anything out. what() is "FILE:LINE:COLUMN: expected X, found Y" in UTF-8, without the place where
/// the error is about the file as a whole.
class ReadError : public std::runtime_error {
public:
    ReadError(std::string file, SourcePosition position, std::string expected, std::string found);

    const std::string& file() const noexcept { return file_; }

    SourcePosition position() const noexcept { return position_; }

    const std::string& expected() const noexcept { return expected_; }

    const std::string& found() const noexcept { return found_; }

private:
    std::string file_;
    SourcePosition position_;
    std::string expected_;
    std::string found_;
};

} // namespace kthost
