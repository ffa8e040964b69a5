#include "kthost/reader/DesignReader.h"

#include <SystemPath.h>

#include "kthost/reader/PathText.h"
#include "kthost/reader/SchematicReader.h"
#include "kthost/reader/SheetError.h"
#include "kthost/reader/SheetHierarchy.h"
#include "kthost/runtime/Utf8.h"
#include "kthost/window/FindFile.h"

#include <cstdint>
#include <fstream>
#include <numeric>
#include <optional>
#include <unordered_map>
#include <utility>

namespace kthost {

namespace {

namespace fs = std::filesystem;

std::optional<FoundFile> findRegular(const fs::path& path) {
    std::optional<FoundFile> found = findFile(path);
    return found && found->isRegular ? found : std::nullopt;
}

SourceText readFile(const fs::path& path, std::uint64_t size) {
    const std::string name = toUtf8(pathText(path));
    std::ifstream stream(systemPath(path), std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(size));
    if (static_cast<std::uint64_t>(stream.gcount()) != size) {
        throw ReadError(name, {}, "a file that can be read", "one that cannot");
    }
    return {name, std::move(bytes)};
}

// Passes on what is read at a pace that suits a progress bar.
class ProgressMeter {
public:
    explicit ProgressMeter(ReadProgress* progress) noexcept : progress_(progress) {}

    void addFile(std::uint64_t size) noexcept { total_ += size; }

    void advance(std::uint64_t offsetInFile) {
        if (finished_ + offsetInFile >= reported_ + kStep) {
            report(finished_ + offsetInFile);
        }
    }

    void finishFile(std::uint64_t size) {
        finished_ += size;
        report(finished_);
    }

private:
    static constexpr std::uint64_t kStep = 65536;

    void report(std::uint64_t done) {
        reported_ = done;
        if (progress_ != nullptr) {
            progress_->bytesRead(done, total_);
        }
    }

    ReadProgress* progress_;
    std::uint64_t total_ = 0;
    std::uint64_t finished_ = 0;
    std::uint64_t reported_ = 0;
};

class DesignLoader {
public:
    explicit DesignLoader(ReadProgress* progress) noexcept : meter_(progress) {}

    Design load(const fs::path& root);

private:
    std::size_t add(const FoundFile& found, fs::path path, const fs::path& name);
    void readNext();
    void findChildren(std::size_t file);
    std::size_t findChild(std::size_t file, std::size_t sheet);

    Design design_;
    ProgressMeter meter_;
    std::vector<std::uint64_t> sizes_;
    std::unordered_map<std::wstring, std::size_t> fileByPath_;
    std::size_t filesRead_ = 0;
};

Design DesignLoader::load(const fs::path& root) {
    const std::optional<FoundFile> found = findRegular(root);
    if (!found) {
        throw ReadError(toUtf8(pathText(root)), {}, "a schematic file", "none there");
    }
    add(*found, root, root.filename());
    while (filesRead_ < design_.files.size()) {
        readNext();
    }
    expandHierarchy(design_, std::accumulate(sizes_.begin(), sizes_.end(), std::uint64_t{0}));
    return std::move(design_);
}

std::size_t DesignLoader::add(const FoundFile& found, fs::path path, const fs::path& name) {
    const auto [entry, isNew] = fileByPath_.emplace(pathText(found.name), design_.files.size());
    if (isNew) {
        design_.files.push_back({std::move(path), pathText(name), {}, {}});
        sizes_.push_back(found.size);
        meter_.addFile(found.size);
    }
    return entry->second;
}

void DesignLoader::readNext() {
    const std::size_t file = filesRead_++;
    const SourceText source = readFile(design_.files[file].path, sizes_[file]);
    design_.files[file].schematic =
        readSchematic(source, [this](std::size_t offset) { meter_.advance(offset); });
    findChildren(file);
    meter_.finishFile(sizes_[file]);
}

void DesignLoader::findChildren(std::size_t file) {
    const std::size_t count = design_.files[file].schematic.sheets.size();
    std::vector<std::size_t> children;
    children.reserve(count);
    for (std::size_t sheet = 0; sheet < count; ++sheet) {
        children.push_back(findChild(file, sheet));
    }
    design_.files[file].children = std::move(children);
}

std::size_t DesignLoader::findChild(std::size_t file, std::size_t sheet) {
    const SheetFile& parent = design_.files[file];
    const fs::path written = pathOf(parent.schematic.sheets[sheet].file);
    fs::path path = parent.path.parent_path() / written;
    const std::optional<FoundFile> found = findRegular(path);
    if (!found) {
        failAtSheet(parent, sheet, "a sheet file", "none at ");
    }
    const fs::path name = pathOf(parent.name).parent_path() / written;
    return add(*found, std::move(path), name.lexically_normal());
}

} // namespace

Design readDesign(const fs::path& root, ReadProgress* progress) {
    return DesignLoader(progress).load(root);
}

} // namespace kthost
