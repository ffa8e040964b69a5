#include "tools/ktemplate/WriteBeside.h"

#include <fmt/format.h>

#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace ktemplate {

namespace fs = std::filesystem;

namespace {

fs::path nameBeside(const fs::path& path) {
    fs::path name = path;
    name += fmt::format(".{:08x}.new", std::random_device()());
    return name;
}

void writeNew(const fs::path& path, std::string_view bytes) {
    std::ofstream out(path, std::ios::binary);
    if (!out) {
        throw std::runtime_error("cannot make a file in this folder");
    }
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        throw std::runtime_error("cannot write all of it");
    }
}

/// Throws filesystem_error. A file that is replaced leaves its permissions to the new one.
void takeName(const fs::path& from, const fs::path& to) {
    if (fs::exists(to)) {
        fs::permissions(from, fs::status(to).permissions());
    }
    fs::rename(from, to);
}

void requireReplaceable(const fs::path& path) {
    if (fs::exists(path) && !fs::is_regular_file(path)) {
        throw std::runtime_error("not a regular file");
    }
}

} // namespace

void writeBeside(const fs::path& path, std::string_view bytes) {
    try {
        // A link stays a link, to the new file.
        const fs::path target = fs::weakly_canonical(path);
        requireReplaceable(target);
        const fs::path beside = nameBeside(target);
        try {
            writeNew(beside, bytes);
            takeName(beside, target);
        } catch (...) {
            std::error_code ignored;
            fs::remove(beside, ignored);
            throw;
        }
    } catch (const fs::filesystem_error& error) {
        throw std::runtime_error(error.code().message());
    }
}

} // namespace ktemplate
