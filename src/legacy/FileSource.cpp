#include "legacy/FileSource.h"

#include "legacy/TemplateFailure.h"
#include "legacy/Utf16.h"

namespace {

std::string reasonNotOpened(const std::error_code& error) {
    if (error == std::errc::text_file_busy) {
        return "somebody else holds the file open";
    }
    if (error == std::errc::invalid_argument) {
        return "not a regular file";
    }
    return "cannot be opened: " + error.message();
}

} // namespace

FileSource::FileSource(const std::filesystem::path& path) {
    if (const std::error_code error = file_.open(path)) {
        throw FileFailure(reasonNotOpened(error));
    }
}

std::size_t FileSource::read(std::span<unsigned char> to) {
    std::size_t got = 0;
    if (const std::error_code error = file_.read(to.data(), to.size(), got)) {
        throw FileFailure("reading fails: " + error.message());
    }
    return got;
}

std::uint64_t FileSource::size() const {
    return file_.size();
}

std::filesystem::path templatePath(const std::wstring& name) {
    try {
        // By way of UTF-16, since wide names depend on the program's locale.
        return {utf16FromWide(name)};
    } catch (const std::filesystem::filesystem_error& error) {
        throw FileFailure(std::string("cannot be opened: ") + error.what());
    }
}
