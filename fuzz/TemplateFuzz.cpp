#include "legacy/ArchiveReader.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/CEattMain.h"
#include "legacy/TemplateFailure.h"
#include "legacy/TemplateStream.h"
#include "tests/legacy/MemorySource.h"

#include <ktdx/KtDxNotify.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

/// Reads any bytes as a template. What reads must be written and read back the same, and must come out of the
/// exported function as the two lists that a plain walk over it gives. The exported function reads by itself,
/// so it has to refuse the same bytes too: both its lists are empty then.
namespace {

using Attributes = std::map<std::wstring, bool>;
using Contents = std::vector<std::tuple<std::wstring, bool, Attributes>>;

void require(bool holds, const char* what) {
    if (!holds) {
        std::cerr << "does not hold: " << what << '\n';
        std::abort();
    }
}

/// None where the bytes are no template. The source gives pieces of different sizes for different bytes.
std::unique_ptr<CEattMain> loaded(const std::string& bytes) {
    MemorySource source(bytes,
                        bytes.empty() ? 1 : 1 + static_cast<unsigned char>(bytes.back()) * std::size_t{16});
    ArchiveReader reader(source);
    auto contents = std::make_unique<CEattMain>();
    try {
        contents->m_arrBlocks = loadTemplate(reader, *contents);
    } catch (const ArchiveFailure& failure) {
        require(failure.offset() <= bytes.size(), "a failure lies within the file");
        return nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    return contents;
}

Contents contentsOf(const CEattMain& source) {
    Contents contents;
    for (const auto& block : source.m_arrBlocks) {
        Attributes attributes;
        for (const auto& [tag, entry] : block->m_mapAttributes) {
            attributes.emplace(tag, entry->m_bSelected);
        }
        contents.emplace_back(block->m_strBlockName, block->m_bSelected, std::move(attributes));
    }
    return contents;
}

std::string stored(CEattMain& source) {
    std::string bytes;
    ArchiveWriter writer(bytes);
    storeTemplate(writer, source);
    return bytes;
}

/// The lists by a plain walk.
class PlainLists {
public:
    PlainLists() = default;

    explicit PlainLists(const CEattMain& source) {
        for (const auto& block : source.m_arrBlocks) {
            if (block->m_bSelected) {
                add(names, block->m_strBlockName);
                addTags(block->m_mapAttributes);
            }
        }
    }

    std::vector<std::wstring> names;
    std::vector<std::wstring> tags;

private:
    void add(std::vector<std::wstring>& list, const std::wstring& text) {
        if (seen_.emplace(&list, text).second) {
            list.push_back(text);
        }
    }

    void addTags(const AttributeMap& attributes) {
        for (const auto& [tag, entry] : attributes) {
            if (entry->m_bSelected) {
                add(tags, tag);
            }
        }
    }

    std::set<std::pair<const void*, std::wstring>> seen_;
};

/// A file for this process, removed in the end.
class ScratchFile {
public:
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }

    const std::filesystem::path& with(const std::string& bytes) const {
        std::ofstream(path_, std::ios::binary) << bytes;
        return path_;
    }

private:
    std::filesystem::path path_ = std::filesystem::temp_directory_path() /
                                  ("template-fuzz-" + std::to_string(std::random_device()()) + ".blk");
};

void requireLists(const std::string& bytes, const PlainLists& expected) {
    static const ScratchFile kFile;
    KtDxStringVector names;
    KtDxStringVector tags;
    ktdxReadLegacyBlkTemplate(kFile.with(bytes).wstring().c_str(), &names, &tags);
    require(names.strings() == expected.names, "the block names are those of a plain walk");
    require(tags.strings() == expected.tags, "the tags are those of a plain walk");
}

void requireRoundTrip(CEattMain& contents) {
    const std::string bytes = stored(contents);
    const auto again = loaded(bytes);
    require(again != nullptr, "what is written is read");
    require(again->m_nVersion == contents.m_nVersion, "the version is read back");
    require(contentsOf(*again) == contentsOf(contents), "the blocks are read back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string bytes(data, data + size);
    const auto contents = loaded(bytes);
    requireLists(bytes, contents != nullptr ? PlainLists(*contents) : PlainLists());
    if (contents != nullptr) {
        requireRoundTrip(*contents);
    }
    return 0;
}
