#include "legacy/ObjectStorer.h"

#include "legacy/ArchiveTags.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/CArchive.h"

#include <string_view>

namespace {

/// The description of the only class is the first thing to be given an index.
constexpr std::uint16_t kClassIndex = 1;

} // namespace

void ObjectStorer::store(CObject& object) {
    if (described_) {
        writer_->writeUint16(kClassBit | kClassIndex);
    } else {
        storeClassDescription(*object.GetRuntimeClass());
    }
    CArchive archive(*writer_);
    object.Serialize(archive);
}

void ObjectStorer::storeClassDescription(const CRuntimeClass& described) {
    const std::string_view name = described.m_lpszClassName;
    writer_->writeUint16(kNewClassTag);
    writer_->writeUint16(described.m_nSchema);
    writer_->writeUint16(static_cast<std::uint16_t>(name.size()));
    writer_->writeBytes(name);
    described_ = true;
}
