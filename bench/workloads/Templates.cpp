// Attribute-extraction templates, read and written.

#include "bench/drawings/Require.h"
#include "bench/report/Names.h"
#include "bench/templates/BareTemplate.h"
#include "bench/templates/LiteralTemplate.h"
#include "bench/workloads/Workloads.h"

#include "legacy/ArchiveWriter.h"
#include "legacy/CEattMain.h"
#include "legacy/TemplateStream.h"

#include <ktdx/KtDxNotify.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <utility>

namespace bench {

namespace {

/// Gone with the object.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& bytes)
        : path_(std::filesystem::temp_directory_path() /
                ("ktdx-bench-" + std::to_string(std::random_device()()) + ".blk")) {
        std::ofstream stream(path_, std::ios::binary);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        require(static_cast<bool>(stream.flush()), "the template can be written");
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    ~TemporaryFile() {
        std::error_code ignored; // it is a temporary file, whoever cleans up will find it
        std::filesystem::remove(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

void fill(CEattMain& source, const TemplateContents& contents) {
    for (const TemplateBlock& block : contents) {
        auto made = std::make_unique<CEattBlockInfo>();
        made->m_strBlockName = block.name;
        made->m_bSelected = block.selected;
        for (const TemplateEntry& entry : block.entries) {
            auto filed = std::make_unique<AttributeEntry>();
            filed->m_bSelected = entry.selected;
            made->m_mapAttributes.add(entry.tag, std::move(filed));
        }
        source.m_arrBlocks.push_back(std::move(made));
    }
}

/// A template in a file, and in the memory of whoever writes it.
class TemplateScene {
public:
    TemplateScene(const Setting& setting, TemplateContents contents)
        : setting_(setting),
          contents_(std::move(contents)),
          bytes_(writeBare(contents_)),
          file_(bytes_) {}

    /// All columns have to find as many.
    void read() {
        if (setting_.column == Column::module) {
            KtDxStringVector names;
            KtDxStringVector tags;
            ktdxReadLegacyBlkTemplate(file_.path().wstring().c_str(), &names, &tags);
            require(names.strings().size() == contents_.size(), "all names are listed");
        } else if (setting_.column == Column::literal) {
            require(literal::listSelected(file_.path()).names.size() == contents_.size(),
                    "all names are listed");
        } else {
            require(readBare(file_.path()).size() == contents_.size() + setting_.size, "all texts are read");
        }
    }

    /// Not to be timed.
    void prepareWriting() {
        if (setting_.column == Column::module && source_.m_arrBlocks.empty()) {
            fill(source_, contents_);
        } else if (setting_.column == Column::literal && plain_.empty()) {
            plain_ = literal::makeTemplate(contents_);
        }
    }

    void write() {
        std::string bytes;
        if (setting_.column == Column::module) {
            ArchiveWriter writer(bytes);
            storeTemplate(writer, source_);
        } else {
            bytes =
                setting_.column == Column::literal ? literal::writeTemplate(plain_) : writeBare(contents_);
        }
        require(bytes.size() == bytes_.size(), "all bytes are written");
    }

    std::size_t size() const { return setting_.size; }

private:
    Setting setting_;
    TemplateContents contents_;
    std::string bytes_;
    TemporaryFile file_;
    CEattMain source_;
    literal::Template plain_;
};

class ManyBlocksScene final : public TemplateScene {
public:
    explicit ManyBlocksScene(const Setting& setting) : TemplateScene(setting, manyBlocks(setting.size)) {}
};

class OneBlockScene final : public TemplateScene {
public:
    explicit OneBlockScene(const Setting& setting) : TemplateScene(setting, oneBlock(setting.size)) {}
};

template <class Scene>
void read(Round& round, Scene& scene) {
    while (round.next()) {
        scene.read();
    }
}

template <class Scene>
void write(Round& round, Scene& scene) {
    scene.prepareWriting();
    while (round.next()) {
        scene.write();
    }
}

template <class Scene>
double entriesOf(const Scene& scene) {
    return static_cast<double>(scene.size());
}

/// Sorting comparison by comparison, the plain way makes as many as a block's attributes squared, which takes
/// the better part of a minute for so many in one block, and as long for a hundred times as many in blocks of
/// a hundred. It is measured once, and not counted.
template <std::size_t kMostOfLiteral, std::size_t kOnce>
bool isWritten(const Setting& setting) {
    const bool isShort = setting.size <= kMostOfLiteral;
    const bool once = setting.size <= kOnce && setting.repetition == 1;
    return setting.column != Column::literal || isShort || once;
}

template <class Scene>
void planScene(Plan& plan, const char* family, Scale scale, const char* reading, const char* writing,
               bool (*isMeasured)(const Setting&)) {
    Family<Scene> planned{family, {10'000, 100'000, 1'000'000}, repetitionsOf(scale), {}};
    if (scale == Scale::quick) {
        planned.sizes.pop_back();
    }
    planned.workloads = {
        {reading, "entry", &read<Scene>, &passesFor, &entriesOf<Scene>, nullptr},
        {writing, "entry", &write<Scene>, &onePass, &entriesOf<Scene>, isMeasured},
    };
    plan.add(planned);
}

} // namespace

void planTemplates(Plan& plan, Scale scale) {
    planScene<ManyBlocksScene>(plan, "templates", scale, kTemplateRead, kTemplateWritten,
                               scale == Scale::quick ? &isWritten<10'000, 10'000>
                                                     : &isWritten<10'000, 1'000'000>);
    planScene<OneBlockScene>(plan, "templates of one block", scale, kOneBlockRead, kOneBlockWritten,
                             scale == Scale::quick ? &isWritten<0, 0> : &isWritten<0, 10'000>);
}

} // namespace bench
