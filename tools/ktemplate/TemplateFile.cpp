#include "tools/ktemplate/TemplateFile.h"

#include "legacy/ArchiveReader.h"
#include "legacy/FileSource.h"
#include "legacy/TemplateFailure.h"
#include "legacy/TemplateStream.h"
#include "tools/ktemplate/Text.h"

#include <fmt/format.h>

#include <new>

namespace ktemplate {

namespace {

/// The bytes of another source, told to a progress bar as they pass.
class WatchedSource : public ByteSource {
public:
    WatchedSource(ByteSource& source, ProgressBar& progress) : source_(&source), progress_(&progress) {}

    std::size_t read(std::span<unsigned char> to) override {
        progress_->update(done_, size());
        const std::size_t got = source_->read(to);
        done_ += got;
        return got;
    }

    [[nodiscard]] std::uint64_t size() const override { return source_->size(); }

private:
    ByteSource* source_;
    ProgressBar* progress_;
    std::uint64_t done_ = 0;
};

std::string entryAt(const TemplatePlace& place) {
    if (place.block == TemplatePlace::kNone) {
        return place.field;
    }
    if (place.attribute == TemplatePlace::kNone) {
        return fmt::format("block {}, {}", place.block + 1, place.field);
    }
    return fmt::format("block {}, attribute {}, {}", place.block + 1, place.attribute + 1, place.field);
}

void readFrom(ByteSource& source, TemplateFile& file) {
    ArchiveReader reader(source);
    const auto fail = [&](std::uint64_t offset, const char* reason) {
        file.problem = Problem{offset, entryAt(reader.place), reason};
    };
    auto contents = std::make_unique<CEattMain>();
    try {
        contents->m_arrBlocks = loadTemplate(reader, *contents);
        file.ignoredBytes = reader.remaining();
        file.contents = std::move(contents);
    } catch (const ArchiveFailure& failure) {
        fail(failure.offset(), failure.what());
    } catch (const FileFailure& failure) {
        fail(reader.position(), failure.what());
    } catch (const AbsurdBlockCount& failure) {
        fail(reader.position(), failure.what());
    } catch (const std::bad_alloc&) {
        fail(reader.position(), "out of memory");
    }
}

} // namespace

TemplateFile readTemplateFile(const std::filesystem::path& path, ProgressBar& progress) {
    TemplateFile file;
    try {
        FileSource opened(path);
        WatchedSource watched(opened, progress);
        readFrom(watched, file);
    } catch (const FileFailure& failure) {
        file.problem = Problem{std::nullopt, {}, failure.what()};
    }
    return file;
}

std::string describe(const std::filesystem::path& path, const Problem& problem) {
    const std::string reason = displayBytes(problem.reason);
    if (!problem.offset) {
        return fmt::format("{}: {}", displayName(path), reason);
    }
    return fmt::format("{}: byte {}, {}: {}", displayName(path), *problem.offset, problem.entry, reason);
}

std::string displayName(const std::filesystem::path& path) {
    const std::u8string name = path.generic_u8string();
    return displayBytes({reinterpret_cast<const char*>(name.data()), name.size()});
}

} // namespace ktemplate
