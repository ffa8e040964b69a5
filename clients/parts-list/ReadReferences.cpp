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
#include <unordered_map>

namespace parts {

namespace {

using Names = std::unordered_map<KtDbObjectId, std::wstring>;

const std::wstring& nameOf(KtDbObjectId record, Names& names) {
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

std::vector<Attribute> readAttributes(const KtDbBlockReference& reference) {
    std::vector<Attribute> attributes;
    const std::unique_ptr<KtDbObjectIterator> walk(reference.attributeIterator());
    for (; walk != nullptr && !walk->done(); walk->step()) {
        const ReadObject<KtDbAttribute> attribute(walk->objectId());
        if (attribute) {
            attributes.push_back({attribute->tag(), attribute->text()});
        }
    }
    return attributes;
}

/// The drawing keeps them in threes: path, designator, unit.
std::vector<Designation> readDesignations(const KtDbBlockReference& reference) {
    std::vector<Designation> designations;
    KtArray<KtDbXDataItem> items;
    if (reference.getXData(kKtDbOccurrences, items) != Orbx::eOk) {
        return designations;
    }
    designations.reserve(items.length() / 3);
    for (std::size_t item = 0; item + 2 < items.length(); item += 3) {
        designations.push_back({items[item].text, items[item + 1].text, items[item + 2].integer});
    }
    return designations;
}

PlacedReference readReference(const KtDbBlockReference& reference, Names& names) {
    return {.id = reference.objectId(),
            .handle = reference.handle(),
            .container = reference.ownerId(),
            .block = nameOf(definitionOf(reference), names),
            .attributes = readAttributes(reference),
            .designations = readDesignations(reference)};
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

std::vector<PlacedReference> readReferences(const std::vector<KtDbObjectId>& records) {
    std::vector<PlacedReference> references;
    Names names;
    for (const KtDbObjectId record : records) {
        for (const KtDbObjectId id : directReferences(record)) {
            if (id.isEffectivelyErased()) {
                continue;
            }
            const ReadObject<KtDbBlockReference> reference(id);
            if (reference) {
                references.push_back(readReference(*reference.get(), names));
            }
        }
    }
    return references;
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
