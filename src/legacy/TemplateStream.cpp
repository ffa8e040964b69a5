#include "legacy/TemplateStream.h"

#include "legacy/ArchiveReader.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/CArchive.h"
#include "legacy/ObjectLoader.h"
#include "legacy/ObjectStorer.h"
#include "legacy/TemplateFailure.h"

#include <algorithm>

namespace {

/// What a block takes in a file at least: class reference, empty name, flag and attribute count.
constexpr std::uint64_t kLeastBlockBytes = 8;

/// An array with room for as many of the blocks as the file can hold.
CEattBlockArray arrayFor(std::uint64_t count, std::uint64_t remaining) {
    CEattBlockArray blocks;
    if (count > blocks.max_size()) {
        throw AbsurdBlockCount();
    }
    blocks.reserve(static_cast<std::size_t>(std::min(count, remaining / kLeastBlockBytes)));
    return blocks;
}

/// The loader makes nothing but objects of the class that it is told.
std::unique_ptr<CEattBlockInfo> asBlock(std::unique_ptr<CObject> object) {
    return std::unique_ptr<CEattBlockInfo>(static_cast<CEattBlockInfo*>(object.release()));
}

CEattBlockArray loadBlocks(ArchiveReader& reader) {
    reader.place.field = "block count";
    const std::uint64_t count = reader.readCount();
    CEattBlockArray blocks = arrayFor(count, reader.remaining());
    ObjectLoader loader(reader, CEattBlockInfo::kClass);
    for (std::uint64_t i = 0; i < count; ++i) {
        reader.place.block = i;
        reader.place.field = "class";
        blocks.push_back(asBlock(loader.load()));
    }
    return blocks;
}

} // namespace

CEattBlockArray loadTemplate(ArchiveReader& reader, CEattMain& header) {
    CArchive archive(reader);
    header.Serialize(archive);
    return loadBlocks(reader);
}

void storeTemplate(ArchiveWriter& writer, CEattMain& source) {
    CArchive archive(writer);
    source.Serialize(archive);
    writer.writeCount(source.m_arrBlocks.size());
    ObjectStorer storer(writer);
    for (const auto& block : source.m_arrBlocks) {
        storer.store(*block);
    }
}
