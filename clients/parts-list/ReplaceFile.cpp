#include "ReplaceFile.h"

#include <SystemPath.h>

#include <cerrno>
#include <fstream>
#include <ios>

namespace parts {

namespace {

std::error_code writeAll(const std::filesystem::path& file, std::string_view bytes) {
    errno = 0;
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (stream) {
        return {};
    }
    // Streams do not say why; the system's last word is the best that there is.
    return errno != 0 ? std::error_code(errno, std::generic_category())
                      : std::make_error_code(std::errc::io_error);
}

} // namespace

std::error_code replaceFile(const std::filesystem::path& file, std::string_view bytes) {
    const std::filesystem::path target = systemPath(file);
    std::filesystem::path beside = target;
    beside += ".new";
    std::error_code failure = writeAll(beside, bytes);
    if (!failure) {
        std::filesystem::rename(beside, target, failure);
    }
    if (failure) {
        std::error_code ignored; // the first failure is the one to tell of
        std::filesystem::remove(beside, ignored);
    }
    return failure;
}

} // namespace parts
