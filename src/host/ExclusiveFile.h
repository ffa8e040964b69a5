#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <system_error>

/// A file that is read while nobody else has it open. Any thread, one at a time; nothing here throws.
///
/// Windows knows files that are not shared. Linux knows leases: the file opens when the kernel grants one,
/// which it does only while nobody else, in this process or another, holds the file open, and until it is
/// closed nobody else gets the file open for reading or writing: such an open waits, or fails if it may not
/// wait. The kernel takes the lease away from a holder that makes others wait too long (45 seconds, unless
/// set otherwise). Where the system cannot tell who else holds the file (it belongs to another user, or lies
/// on a file system without leases), the file opens, shared.
class ExclusiveFile {
public:
    ExclusiveFile() = default;
    ~ExclusiveFile();
    ExclusiveFile(const ExclusiveFile&) = delete;
    ExclusiveFile& operator=(const ExclusiveFile&) = delete;

    /// Opens a regular file for reading, once in the life of the object. std::errc::text_file_busy when
    /// somebody else holds it open, std::errc::invalid_argument when it is no regular file, otherwise the
    /// system's reason.
    [[nodiscard]] std::error_code open(const std::filesystem::path& path) noexcept;

    /// Reads on from where the last read ended. `got` is the number of bytes read: 0 at the end of the file,
    /// and otherwise at least 1 and perhaps fewer than `length`.
    [[nodiscard]] std::error_code read(void* to, std::size_t length, std::size_t& got) noexcept;

    /// In bytes, when it was opened.
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

private:
    std::intptr_t handle_ = -1;
    std::uint64_t size_ = 0;
};
