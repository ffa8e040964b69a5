#include "bench/literal/Block.h"

#include "bench/ModelSpace.h"
#include "bench/Opened.h"
#include "bench/literal/Blocks.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbEvalGraph.h>
#include <KtRxClass.h>

#include <tuple>

namespace bench::literal {

namespace {

bool isRecord(const KtDbObject* object) {
    return object->isA() == KtDbBlockTableRecord::desc();
}

bool isDynamic(const KtDbBlockTableRecord* record) {
    KtDbEvalGraph* graph = nullptr;
    if (KtDbEvalGraph::getGraph(graph, record, L"ORBX_ENHANCEDBLOCK", KtDb::kForRead) != Orbx::eOk) {
        return false;
    }
    std::ignore = graph->close(); // it is open
    return true;
}

} // namespace

Block::~Block() {
    reset();
    for (const auto& [reference, attributes] : attributesByReference_) {
        detachAttributes(*attributes);
    }
}

Orbx::ErrorStatus Block::init(Blocks* owner, const KtDbBlockTableRecord* record) {
    reset();
    if (record == nullptr || owner == nullptr) {
        return Orbx::eMissing;
    }
    owner_ = owner;
    blockId_ = record->objectId();
    recordIds_.append(blockId_);
    if (isDynamic(record)) {
        addRepresentations();
    }
    if (const Orbx::ErrorStatus status = refresh(); status != Orbx::eOk) {
        return status;
    }
    std::ignore = setEnabled(owner->isEnabled()); // one that cannot be enabled is still known
    return Orbx::eOk;
}

void Block::addRepresentations() {
    const KtRxObject* extension = KtDbBlockReference::desc()->queryX(KtDbBlockRepresentation::desc());
    if (extension == nullptr || !extension->isA()->isDerivedFrom(KtDbBlockRepresentation::desc())) {
        return;
    }
    IdArray representations(0, 8);
    const auto* protocol = static_cast<const KtDbBlockRepresentation*>(extension);
    if (protocol->getRepresentations(blockId_, representations) != Orbx::eOk) {
        return;
    }
    recordIds_.append(representations);
    for (const KtDbObjectId representation : representations) {
        owner_->addRepresentation(representation, this);
    }
}

void Block::reset() {
    std::ignore = setEnabled(false); // what will not open has gone
    changed_ = false;
    needsUpdate_ = true;
    owner_ = nullptr;
    blockId_ = KtDbObjectId();
    referencesByContainer_.clear();
    callbacks_.clear();
}

void Block::copied(const KtDbObject* object, const KtDbObject* /*copy*/) {
    setNeedsUpdate(true);
    if (!isRecord(object)) {
        setChanged(true);
    }
}

void Block::goodbye(const KtDbObject* object) {
    std::ignore = object->removeReactor(this); // it goes either way
}

void Block::openedForModify(const KtDbObject* object) {
    setNeedsUpdate(true);
    if (!isRecord(object) || static_cast<const KtDbBlockTableRecord*>(object)->isFromExternalReference()) {
        setChanged(true);
    }
}

void Block::setNeedsUpdate(bool on) {
    if (on && owner_ == nullptr) {
        return;
    }
    if (on) {
        owner_->setRescanNeeded(true);
    }
    needsUpdate_ = on;
}

void Block::setChanged(bool on) {
    if (on && owner_ == nullptr) {
        return;
    }
    if (on) {
        owner_->setPendingChanges(true);
    }
    changed_ = on;
}

} // namespace bench::literal
