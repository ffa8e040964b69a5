#pragma once

#include "kthost/database/DatabaseObject.h"
#include "kthost/database/Placement.h"
#include "kthost/database/ReferenceCalls.h"

#include <KtDbBlockReference.h>

namespace kthost {

/// What block references and tables have in common.
template <class Interface>
class ReferenceObject : public DatabaseObject<Interface> {
public:
    explicit ReferenceObject(KtDbObjectId definition) : placement_(definition) {}

    KtDbObjectId blockTableRecord() const final { return placement_.definition(); }

    KtDbObjectIterator* attributeIterator() const final { return newAttributeIterator(attributes()); }

    AttributeList attributes() const { return {&placement_, this->objectId()}; }

    void appendAttribute(KtDbObjectId attribute) { placement_.append(this->objectId(), attribute); }

    void dropReleasedAttributes() { placement_.dropReleased(this->objectId()); }

private:
    Placement placement_;
};

} // namespace kthost
