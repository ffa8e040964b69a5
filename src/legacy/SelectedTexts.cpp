#include "legacy/SelectedTexts.h"

#include "legacy/ArchiveReader.h"
#include "legacy/AttributeCount.h"
#include "legacy/CEattBlockInfo.h"
#include "legacy/ObjectLoader.h"
#include "legacy/TagHash.h"
#include "legacy/Utf16.h"

#include <ktdx/StringList.h>

#include <algorithm>
#include <span>
#include <string>

namespace {

void skipAttributes(ArchiveReader& reader) {
    std::string_view tag;
    std::uint8_t flag = 0;
    for (std::uint64_t left = readAttributeCount(reader); left > 0; --left) {
        if (!reader.peekString(tag, flag)) {
            reader.readString();
            reader.readByte();
        }
    }
}

/// Texts for a list, decoded one after the other in the same place.
class Decoded {
public:
    explicit Decoded(KtDxStringList& list) : list_(&list) {}

    void append(std::string_view text) {
        const std::span bytes(reinterpret_cast<const unsigned char*>(text.data()), text.size());
        room_.resize(std::max(room_.size(), bytes.size() / 2));
        if (widenLower(bytes, room_.data())) {
            list_->addTail(room_.data(), bytes.size() / 2);
            return;
        }
        decoded_.clear();
        decoded_.reserve(bytes.size() / 2);
        Utf16Decoder decoder;
        decoder.append(bytes, decoded_);
        decoder.finish(decoded_);
        list_->addTail(decoded_.data(), decoded_.size());
    }

private:
    KtDxStringList* list_;
    std::wstring room_;
    std::wstring decoded_; ///< where that is not easily done
};

} // namespace

SelectedTexts::SelectedTexts(ArchiveReader& reader) {
    reader.readInt32(); // nothing depends on the version
    ObjectLoader loader(reader, CEattBlockInfo::kClass);
    for (std::uint64_t left = reader.readCount(); left > 0; --left) {
        loader.begin();
        readBlock(reader);
    }
    names_.close(); // the lists that are filled next may need the room
    tags_.close();
}

void SelectedTexts::readBlock(ArchiveReader& reader) {
    ++block_;
    const std::string name = reader.readUtf16Bytes();
    if (reader.readByte() == 0) {
        skipAttributes(reader);
        return;
    }
    names_.add(name, TagHash().ofBytes(name));
    if (tagsBefore_.size() < names_.size()) {
        tagsBefore_.push_back(listed_.size());
    }
    readAttributes(reader);
}

void SelectedTexts::readAttributes(ArchiveReader& reader) {
    const std::uint64_t count = readAttributeCount(reader);
    const std::size_t most = attributesToExpect(count, reader);
    tags_.reserve(most);
    listed_.reserve(listed_.empty() ? most : listed_.capacity());
    std::string_view tag;
    std::uint8_t flag = 0;
    for (std::uint64_t left = count; left > 0; --left) {
        if (reader.peekString(tag, flag)) {
            put(tag, flag != 0);
            continue;
        }
        fileBatch(); // before its tags leave the buffer
        const std::string other = reader.readUtf16Bytes();
        put(other, reader.readByte() != 0);
        fileBatch();
    }
    fileBatch();
}

void SelectedTexts::put(std::string_view tag, bool isSelected) {
    const std::uint64_t hash = TagHash().ofBytes(tag);
    tags_.fetchSlot(hash);
    batch_.attributes[batch_.size] = {tag, hash, isSelected};
    ++batch_.size;
    if (batch_.size == batch_.attributes.size()) {
        fileBatch();
    }
}

void SelectedTexts::fileBatch() {
    const auto attributes = std::span(batch_.attributes).first(batch_.size);
    for (const Attribute& attribute : attributes) {
        tags_.fetchText(attribute.hash);
    }
    for (const Attribute& attribute : attributes) {
        tags_.fetchBytes(attribute.hash);
    }
    for (const Attribute& attribute : attributes) {
        file(attribute);
    }
    batch_.size = 0;
}

void SelectedTexts::file(const Attribute& attribute) {
    const std::uint32_t number = tags_.add(attribute.tag, attribute.hash);
    std::uint64_t& mark = tags_.markOf(number); // the last block that it was in, above whether it is listed
    if (mark >> 1 == block_) {
        return; // of entries with the same tag in a block the first one stands
    }
    const bool isListed = (mark & 1) != 0;
    mark = block_ << 1 | (isListed || attribute.isSelected ? 1 : 0);
    if (attribute.isSelected && !isListed) {
        listed_.push_back(number);
    }
}

void SelectedTexts::appendTo(KtDxStringList& names, KtDxStringList& tags) const {
    Decoded decodedNames(names);
    Decoded decodedTags(tags);
    std::size_t tag = 0;
    for (std::uint32_t name = 0; name < names_.size(); ++name) {
        decodedNames.append(names_.at(name));
        const std::size_t end = name + 1 < names_.size() ? tagsBefore_[name + 1] : listed_.size();
        for (; tag < end; ++tag) {
            decodedTags.append(tags_.at(listed_[tag]));
        }
    }
}
