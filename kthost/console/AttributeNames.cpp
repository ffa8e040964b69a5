#include "kthost/console/AttributeNames.h"

#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>

#include "kthost/console/CommandError.h"
#include "kthost/console/ObjectNames.h"
#include "kthost/console/StatusText.h"
#include "kthost/runtime/Utf8.h"

#include <memory>
#include <vector>

namespace kthost {

namespace {

bool isErasedWithTag(KtDbObjectId id, const std::wstring& tag) {
    KtDbAttribute* attribute = nullptr;
    if (!id.isErased() || ktdbOpenObject(attribute, id, KtDb::kForRead, true) != Orbx::eOk) {
        return false;
    }
    const bool has = attribute->tag() == tag;
    static_cast<void>(attribute->close()); // what was only read is always given back
    return has;
}

/// Those that were erased, too.
std::vector<KtDbObjectId> allAttributesOf(KtDbObjectId reference) {
    std::vector<KtDbObjectId> all;
    KtDbBlockReference* opened = nullptr;
    require(ktdbOpenObject(opened, reference, KtDb::kForRead), referenceText(reference) + " cannot be read");
    const std::unique_ptr<KtDbObjectIterator> attributes(opened->attributeIterator());
    for (; attributes != nullptr && !attributes->done(); attributes->step()) {
        all.push_back(attributes->objectId());
    }
    static_cast<void>(opened->close());
    return all;
}

} // namespace

AttributeView requireAttribute(KtDbObjectId reference, const std::wstring& tag) {
    std::string tags;
    for (const AttributeView& attribute : attributesOf(reference)) {
        if (attribute.tag == tag) {
            return attribute;
        }
        tags += (tags.empty() ? "" : ", ") + toUtf8(attribute.tag);
    }
    throw CommandError(referenceText(reference) + " has no attribute '" + toUtf8(tag) + "'" +
                       (tags.empty() ? "" : "; it has " + tags));
}

KtDbObjectId requireErasedAttribute(KtDbObjectId reference, const std::wstring& tag) {
    KtDbObjectId latest;
    for (const KtDbObjectId id : allAttributesOf(reference)) {
        latest = isErasedWithTag(id, tag) ? id : latest;
    }
    if (latest.isNull()) {
        throw CommandError(referenceText(reference) + " has no erased attribute '" + toUtf8(tag) + "'");
    }
    return latest;
}

} // namespace kthost
