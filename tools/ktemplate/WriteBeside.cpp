#include "tools/ktemplate/WriteBeside.h"

#include <SystemPath.h>

#include "kthost/window/FindFile.h"

#include <fmt/format.h>

#include <fstream>
#include <optional>
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
void takeName(const fs::path& from, const fs::path& to, const std::optional<kthost::FoundFile>& replaced) {
    if (replaced) {
        fs::permissions(from, replaced->permissions);
    }
    fs::rename(from, to);
}

void removeNew(const fs::path& path) {
    std::error_code ignored; // what went wrong before is the thing to tell
    // Some systems remove only what may be written.
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, ignored);
    fs::remove(path, ignored);
}

} // namespace

void writeBeside(const fs::path& path, std::string_view bytes) {
    const std::optional<kthost::FoundFile> replaced = kthost::findFile(path);
    if (replaced && !replaced->isRegular) {
        throw std::runtime_error("not a regular file");
    }
    // A link stays a link, to the new file.
    const fs::path target = replaced ? replaced->name : systemPath(path);
    const fs::path beside = nameBeside(target);
    try {
        writeNew(beside, bytes);
        takeName(beside, target, replaced);
    } catch (const fs::filesystem_error& error) {
        removeNew(beside);
        throw std::runtime_error(error.code().message());
    } catch (...) {
        removeNew(beside);
        throw;
    }
}

} // namespace ktemplate
