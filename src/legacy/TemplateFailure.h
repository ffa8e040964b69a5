#pragma once

#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>

/// The three kinds of failure that end the reading of a template. The third, out of memory, is
/// std::bad_alloc.

/// The bytes are not those of a template.
class ArchiveFailure : public std::runtime_error {
public:
    enum class Cause { endOfFile, badClass, badSchema, badIndex };

    /// `offset` is where in the file the field begins that cannot be read.
    ArchiveFailure(Cause cause, std::uint64_t offset, const std::string& reason)
        : std::runtime_error(reason),
          cause_(cause),
          offset_(offset) {}

    [[nodiscard]] Cause cause() const noexcept { return cause_; }

    [[nodiscard]] std::uint64_t offset() const noexcept { return offset_; }

private:
    Cause cause_;
    std::uint64_t offset_;
};

/// The file cannot be opened, or a read from it fails.
class FileFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// More blocks are announced than any array can hold, so that making room for them fails without a try.
class AbsurdBlockCount : public std::bad_alloc {
public:
    [[nodiscard]] const char* what() const noexcept override {
        return "more blocks are announced than any memory can hold";
    }
};
