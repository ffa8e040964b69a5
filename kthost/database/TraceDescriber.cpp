#include "kthost/database/TraceDescriber.h"

#include "kthost/audit/TraceIds.h"
#include "kthost/database/ObjectAccess.h"

#include <KtRxClass.h>

namespace kthost {

namespace {

std::wstring nameOf(KtDbObjectId id) {
    if (const auto* record = peek<BlockTableRecord>(id)) {
        return record->fields().name;
    }
    const auto* attribute = peek<Attribute>(id);
    return attribute == nullptr ? std::wstring() : attribute->tag();
}

TracedObject describe(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    if (head == nullptr || head->object() == nullptr) {
        return {};
    }
    return {classOf(head->kind)->name(), ObjectStore::instance().handleOf(id), nameOf(id)};
}

} // namespace

void describeIdsInTrace() {
    setTraceIdDescriber(describe);
}

} // namespace kthost
