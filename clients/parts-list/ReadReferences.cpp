#include "ReadReferences.h"

#include "DrawingIds.h"
#include "ReadObject.h"

#include <KtArray.h>
#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbXData.h>

#include <memory>
#include <unordered_set>

namespace parts {

namespace {

const std::wstring& nameOf(KtDbObjectId record, BlockNames& names) {
    const auto [place, isNew] = names.try_emplace(record);
    if (isNew) {
        place->second = recordName(record);
    }
    return place->second;
}

/// The definition that people know the reference's block by.
KtDbObjectId definitionOf(const KtDbBlockReference& reference) {
    const KtRxObject* extension = reference.queryX(KtDbBlockRepresentation::desc());
    if (extension == nullptr || !extension->isKindOf(KtDbBlockRepresentation::desc())) {
        return reference.blockTableRecord();
    }
    const auto* protocol = static_cast<const KtDbBlockRepresentation*>(extension);
    const KtDbObjectId original = protocol->originalBlockTableRecord(&reference);
    return original.isNull() ? reference.blockTableRecord() : original;
}

/// An anonymous block stands for a dynamic one, of which the drawing may not have told, or for itself.
bool isName(const std::wstring& block) {
    return !block.empty() && block.front() != L'*';
}

/// False when there may be more of them.
bool readAttributes(const KtDbBlockReference& reference, std::vector<Attribute>& attributes) {
    const std::unique_ptr<KtDbObjectIterator> walk(reference.attributeIterator());
    bool areAll = walk != nullptr;
    for (; walk != nullptr && !walk->done(); walk->step()) {
        const ReadObject<KtDbAttribute> attribute(walk->objectId());
        if (attribute) {
            attributes.push_back({attribute->tag(), attribute->text()});
        } else {
            areAll = areAll && attribute.status() == Orbx::eWasErased;
        }
    }
    return areAll;
}

/// The drawing keeps them in threes: path, designator, unit. False when there may be more of them.
bool readDesignations(const KtDbBlockReference& reference, std::vector<Designation>& designations) {
    KtArray<KtDbXDataItem> items;
    const Orbx::ErrorStatus status = reference.getXData(kKtDbOccurrences, items);
    if (status != Orbx::eOk) {
        return status == Orbx::eKeyNotFound;
    }
    designations.reserve(items.length() / 3);
    for (std::size_t item = 0; item + 2 < items.length(); item += 3) {
        designations.push_back({items[item].text, items[item + 1].text, items[item + 2].integer});
    }
    return true;
}

KtArray<KtDbObjectId> directReferences(KtDbObjectId record) {
    KtArray<KtDbObjectId> ids;
    const ReadObject<KtDbBlockTableRecord> opened(record);
    if (opened && opened->getBlockReferenceIds(ids) != Orbx::eOk) {
        ids.setLogicalLengthZero();
    }
    return ids;
}

} // namespace

PlacedReferences ReferenceReader::read(const std::vector<KtDbObjectId>& records) {
    PlacedReferences references;
    references.reserve(known_.size());
    BlockNames names;
    for (const KtDbObjectId record : records) {
        for (const KtDbObjectId id : directReferences(record)) {
            const PlacedReference* const reference = id.isEffectivelyErased() ? nullptr : find(id, names);
            if (reference != nullptr) {
                references.push_back(reference);
            }
        }
    }
    forgetOthersThan(references);
    return references;
}

/// Null when it does not open.
const PlacedReference* ReferenceReader::find(KtDbObjectId reference, BlockNames& names) {
    const auto known = known_.find(reference);
    if (known != known_.end() && known->second.isWhole) {
        return &known->second.reference;
    }
    const ReadObject<KtDbBlockReference> opened(reference);
    if (!opened) {
        return nullptr;
    }
    return &known_.insert_or_assign(reference, read(*opened.get(), names)).first->second.reference;
}

ReferenceReader::Known ReferenceReader::read(const KtDbBlockReference& reference, BlockNames& names) {
    Known known{.reference = {.id = reference.objectId(),
                              .handle = reference.handle(),
                              .container = reference.ownerId(),
                              .block = nameOf(definitionOf(reference), names),
                              .attributes = {},
                              .designations = {}}};
    const bool hasAllAttributes = readAttributes(reference, known.reference.attributes);
    const bool hasAllDesignations = readDesignations(reference, known.reference.designations);
    known.isWhole = isName(known.reference.block) && hasAllAttributes && hasAllDesignations;
    return known;
}

/// No record lists a reference twice, so most of the time there are no others.
void ReferenceReader::forgetOthersThan(const PlacedReferences& listed) {
    if (listed.size() == known_.size()) {
        return;
    }
    std::unordered_set<KtDbObjectId> ids;
    ids.reserve(listed.size());
    for (const PlacedReference* reference : listed) {
        ids.insert(reference->id);
    }
    std::erase_if(known_, [&](const auto& known) { return !ids.contains(known.first); });
}

std::vector<KtDbObjectId> listReferences(const std::vector<KtDbObjectId>& records) {
    std::vector<KtDbObjectId> references;
    for (const KtDbObjectId record : records) {
        const KtArray<KtDbObjectId> ids = directReferences(record);
        references.insert(references.end(), ids.begin(), ids.end());
    }
    return references;
}

} // namespace parts
