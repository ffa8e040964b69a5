#include "legacy/CEattBlockInfo.h"

#include "legacy/ArchiveReader.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/AttributeCount.h"
#include "legacy/CArchive.h"
#include "legacy/CEattUtil.h"

namespace {

std::unique_ptr<CObject> createBlockInfo() {
    return std::make_unique<CEattBlockInfo>();
}

std::vector<std::wstring> sortedTags(const AttributeMap& attributes) {
    std::vector<std::wstring> tags;
    tags.reserve(attributes.size());
    for (const auto& [tag, entry] : attributes) {
        tags.push_back(tag);
    }
    CEattUtil().SortStringArray(tags);
    return tags;
}

} // namespace

const CRuntimeClass CEattBlockInfo::kClass{"CEattBlockInfo", 1, createBlockInfo};

const CRuntimeClass* CEattBlockInfo::GetRuntimeClass() const {
    return &kClass;
}

void CEattBlockInfo::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        store(archive.writer());
    } else {
        load(archive.reader());
    }
}

void CEattBlockInfo::store(ArchiveWriter& writer) const {
    writer.writeString(m_strBlockName);
    writer.writeByte(m_bSelected ? 1 : 0);
    writer.writeInt32(static_cast<std::int32_t>(m_mapAttributes.size()));
    for (const std::wstring& tag : sortedTags(m_mapAttributes)) {
        writer.writeString(tag);
        writer.writeByte(m_mapAttributes.find(tag)->m_bSelected ? 1 : 0);
    }
}

void CEattBlockInfo::load(ArchiveReader& reader) {
    reader.place.field = "block name";
    m_strBlockName = reader.readString();
    reader.place.field = "block flag";
    m_bSelected = reader.readByte() != 0;
    reader.place.field = "attribute count";
    const std::uint64_t count = readAttributeCount(reader);
    m_mapAttributes.reserve(attributesToExpect(count, reader));
    for (std::uint64_t i = 0; i < count; ++i) {
        reader.place.attribute = i;
        loadAttribute(reader);
    }
    reader.place.attribute = TemplatePlace::kNone;
}

void CEattBlockInfo::loadAttribute(ArchiveReader& reader) {
    reader.place.field = "tag";
    std::wstring tag = reader.readString();
    reader.place.field = "attribute flag";
    const bool selected = reader.readByte() != 0;
    auto entry = std::make_unique<AttributeEntry>();
    entry->m_bSelected = selected;
    m_mapAttributes.add(std::move(tag), std::move(entry));
}
