#pragma once

#include "tools/ktemplate/ProgressBar.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <streambuf>
#include <vector>

namespace ktemplate {

/// The bytes of a file as a stream takes them, told to a progress bar as they pass.
class WatchedFile : public std::streambuf {
public:
    /// Throws std::runtime_error when the file cannot be opened.
    WatchedFile(const std::filesystem::path& path, ProgressBar& progress);

protected:
    int_type underflow() override;

private:
    std::filebuf file_;
    ProgressBar* progress_;
    std::uint64_t size_;
    std::uint64_t done_ = 0;
    std::vector<char> buffer_;
};

} // namespace ktemplate
