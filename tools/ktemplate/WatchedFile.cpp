#include "tools/ktemplate/WatchedFile.h"

#include <SystemPath.h>

#include <stdexcept>
#include <system_error>

namespace ktemplate {

namespace {

constexpr std::size_t kBufferSize = 65536;

std::uint64_t sizeOf(const std::filesystem::path& path) {
    std::error_code unknown;
    const std::uintmax_t size = std::filesystem::file_size(path, unknown);
    return unknown ? 0 : size;
}

} // namespace

WatchedFile::WatchedFile(const std::filesystem::path& path, ProgressBar& progress)
    : progress_(&progress),
      size_(sizeOf(systemPath(path))),
      buffer_(kBufferSize) {
    const std::filesystem::path name = systemPath(path);
    if (std::filesystem::is_directory(name) || file_.open(name, std::ios::in | std::ios::binary) == nullptr) {
        throw std::runtime_error("cannot be opened");
    }
}

WatchedFile::int_type WatchedFile::underflow() {
    progress_->update(done_, size_);
    const std::streamsize got = file_.sgetn(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    if (got <= 0) {
        return traits_type::eof();
    }
    done_ += static_cast<std::uint64_t>(got);
    setg(buffer_.data(), buffer_.data(), buffer_.data() + got);
    return traits_type::to_int_type(buffer_.front());
}

} // namespace ktemplate
