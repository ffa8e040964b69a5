#pragma once

#include "kthost/database/Changes.h"
#include "kthost/database/DatabaseObject.h"
#include "kthost/database/IdRun.h"
#include "kthost/database/ObjectState.h"
#include "kthost/database/ReferenceCalls.h"

#include <KtDbBlockReference.h>

namespace kthost {

/// What block references and tables have in common.
template <class Interface>
class ReferenceObject : public DatabaseObject<Interface> {
public:
    ReferenceObject(KtDbObjectId definition, const KtGePoint3d& position)
        : definition_(definition),
          position_(position) {}

    KtDbObjectId blockTableRecord() const final { return definition_; }

    KtGePoint3d position() const final { return position_; }

    KtDbObjectIterator* attributeIterator() const final {
        return newAttributeIterator(this->objectId(), attributes_);
    }

    IdRun& attributes() { return attributes_; }

    const IdRun& attributes() const { return attributes_; }

    /// Has to be open for write.
    Orbx::ErrorStatus setPosition(const KtGePoint3d& position) {
        const Orbx::ErrorStatus status = beginStateChange(this->objectId());
        if (status == Orbx::eOk) {
            position_ = position;
        }
        return status;
    }

protected:
    void exchangePosition(KtGePoint3d& position) { std::swap(position_, position); }

private:
    const KtDbObjectId definition_; // stays: another definition is another reference
    KtGePoint3d position_;
    IdRun attributes_;
};

} // namespace kthost
