#include "legacy/ObjectLoader.h"

#include "legacy/ArchiveReader.h"
#include "legacy/ArchiveTags.h"
#include "legacy/CArchive.h"
#include "legacy/TemplateFailure.h"

#include <string>

namespace {

using Cause = ArchiveFailure::Cause;

/// A short reference in the form that a long one has.
std::uint32_t widened(std::uint16_t tag) {
    return (static_cast<std::uint32_t>(tag & kClassBit) << 16) | (tag & ~std::uint32_t{kClassBit});
}

[[noreturn]] void failForClass(Cause cause, std::uint64_t offset, const std::string& reason) {
    throw ArchiveFailure(cause, offset, reason);
}

/// Where a class is due there may be no object: why this one is refused.
std::string reasonAgainstObject(std::uint32_t index, const ArchiveIndexTable& indices) {
    if (index == 0) {
        return "bad index: a null reference instead of an entry";
    }
    if (indices.isObject(index)) {
        return "bad index: a reference back to object " + std::to_string(index) + " instead of an entry";
    }
    return "bad index: " + std::to_string(index) + " was not given to any object";
}

} // namespace

void ObjectLoader::begin() {
    loadClass();
    indices_.handOutToObject();
}

std::unique_ptr<CObject> ObjectLoader::load() {
    begin();
    auto object = known_->m_pfnCreateObject();
    CArchive archive(*reader_);
    object->Serialize(archive);
    return object;
}

void ObjectLoader::loadClass() {
    const std::uint64_t offset = reader_->position();
    const std::uint16_t tag = reader_->readUint16();
    if (tag == kNewClassTag) {
        loadClassDescription();
        return;
    }
    const std::uint32_t reference = tag == kBigTag ? reader_->readUint32() : widened(tag);
    const std::uint32_t index = reference & ~kBigClassBit;
    if ((reference & kBigClassBit) == 0) {
        failForClass(Cause::badIndex, offset, reasonAgainstObject(index, indices_));
    }
    if (!indices_.isClass(index)) {
        failForClass(Cause::badIndex, offset,
                     "bad index: " + std::to_string(index) + " was not given to any class");
    }
}

void ObjectLoader::loadClassDescription() {
    const std::uint64_t offset = reader_->position();
    const std::uint16_t schema = reader_->readUint16();
    const std::uint64_t nameOffset = reader_->position();
    const std::uint16_t length = reader_->readUint16();
    if (length > kMostClassNameBytes) {
        failForClass(Cause::badClass, nameOffset,
                     "bad class: a class name of " + std::to_string(length) + " bytes");
    }
    const std::string name = reader_->readBytes(length);
    if (name != known_->m_lpszClassName) {
        failForClass(Cause::badClass, nameOffset, "bad class: there is no class \"" + name + "\"");
    }
    if (schema != known_->m_nSchema) {
        failForClass(Cause::badSchema, offset,
                     "bad schema: " + std::to_string(schema) + " instead of " +
                         std::to_string(known_->m_nSchema));
    }
    indices_.handOutToClass();
}
