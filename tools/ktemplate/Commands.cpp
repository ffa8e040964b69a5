#include "tools/ktemplate/Commands.h"

#include "kthost/window/FindFile.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/TemplateStream.h"
#include "tools/ktemplate/JsonTemplate.h"
#include "tools/ktemplate/TemplateFile.h"
#include "tools/ktemplate/TemplateOutput.h"
#include "tools/ktemplate/Text.h"
#include "tools/ktemplate/WatchedFile.h"
#include "tools/ktemplate/WriteBeside.h"

#include <ktdx/KtDxNotify.h>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <istream>
#include <optional>
#include <ostream>
#include <string>

namespace ktemplate {

namespace fs = std::filesystem;

namespace {

TemplateFile read(const fs::path& path, const Console& console) {
    ProgressBar progress(console.err, console.showProgress, console.now);
    return readTemplateFile(path, progress);
}

Status complain(const Console& console, const std::string& line) {
    console.err << "ktemplate: " << line << '\n';
    return Status::unsound;
}

/// A full disk or a closed pipe shows here at the latest.
Status finishOutput(const Console& console) {
    console.out.flush();
    return console.out ? Status::sound : complain(console, "cannot write the output");
}

std::unique_ptr<CEattMain> readJson(const fs::path& path, const Console& console) {
    ProgressBar progress(console.err, console.showProgress, console.now);
    WatchedFile file(path, progress);
    std::istream in(&file);
    return templateFromJson(in);
}

std::string bytesOf(CEattMain& contents) {
    std::string bytes;
    ArchiveWriter writer(bytes);
    storeTemplate(writer, contents);
    return bytes;
}

bool isSameFile(const fs::path& a, const fs::path& b) {
    const std::optional<kthost::FoundFile> found = kthost::findFile(a);
    const std::optional<kthost::FoundFile> other = kthost::findFile(b);
    return found && other && found->name == other->name;
}

std::size_t countAttributes(const CEattMain& contents) {
    std::size_t count = 0;
    for (const auto& block : contents.m_arrBlocks) {
        count += block->m_mapAttributes.size();
    }
    return count;
}

void printSound(const fs::path& path, const TemplateFile& file, std::ostream& out) {
    fmt::print(out, "{}: sound, blocks: {}, attributes: {}", displayName(path),
               file.contents->m_arrBlocks.size(), countAttributes(*file.contents));
    if (file.ignoredBytes != 0) {
        fmt::print(out, ", bytes ignored after the last block: {}", file.ignoredBytes);
    }
    out << '\n';
}

Status checkOne(const fs::path& path, const Console& console) {
    const TemplateFile file = read(path, console);
    if (file.problem) {
        console.out << describe(path, *file.problem) << '\n';
        return Status::unsound;
    }
    printSound(path, file, console.out);
    return Status::sound;
}

} // namespace

Status show(const fs::path& path, bool json, const Console& console) {
    const TemplateFile file = read(path, console);
    if (file.problem) {
        return complain(console, describe(path, *file.problem));
    }
    if (json) {
        printJson(*file.contents, console.out);
    } else {
        printForPeople(*file.contents, console.out);
    }
    return finishOutput(console);
}

Status make(const fs::path& from, const fs::path& to, const Console& console) {
    if (isSameFile(from, to)) {
        complain(console, displayName(to) + ": would replace the file that it is made from");
        return Status::usage;
    }
    std::unique_ptr<CEattMain> contents;
    try {
        contents = readJson(from, console);
    } catch (const std::runtime_error& refusal) {
        return complain(console, fmt::format("{}: {}", displayName(from), refusal.what()));
    }
    try {
        writeBeside(to, bytesOf(*contents));
    } catch (const std::runtime_error& failure) {
        return complain(console, fmt::format("{}: {}", displayName(to), failure.what()));
    }
    return Status::sound;
}

Status lists(const fs::path& path, const Console& console) {
    const std::u8string name = path.u8string();
    KtDxStringVector blockNames;
    KtDxStringVector attributeTags;
    ktdxReadLegacyBlkTemplate(wideFromUtf8({reinterpret_cast<const char*>(name.data()), name.size()}).c_str(),
                              &blockNames, &attributeTags);
    printLists(blockNames.strings(), attributeTags.strings(), console.out);
    if (blockNames.strings().empty()) {
        if (const TemplateFile file = read(path, console); file.problem) {
            return complain(console, describe(path, *file.problem));
        }
    }
    return finishOutput(console);
}

Status check(const std::vector<fs::path>& paths, const Console& console) {
    Status worst = Status::sound;
    for (const fs::path& path : paths) {
        worst = std::max(worst, checkOne(path, console));
    }
    return std::max(worst, finishOutput(console));
}

} // namespace ktemplate
