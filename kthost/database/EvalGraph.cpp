#include <KtDbEvalGraph.h>

#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/ObjectAccess.h"
#include "kthost/database/Openings.h"

#include <string_view>

namespace kthost {

namespace {

constexpr std::wstring_view kDynamicBlockKey = L"ORBX_ENHANCEDBLOCK";

/// The id of the graph that there is; null when there is none.
KtDbObjectId graphOf(const KtDbObject* object, const wchar_t* key) {
    if (object == nullptr || key == nullptr || key != kDynamicBlockKey) {
        return {};
    }
    const auto* record = peek<BlockTableRecord>(object->objectId());
    const bool there = record != nullptr && !record->graph().isNull() && !record->graph().isErased();
    return there ? record->graph() : KtDbObjectId();
}

Orbx::ErrorStatus openGraph(KtDbEvalGraph*& graph, const KtDbObject* object, const wchar_t* key,
                            KtDb::OpenMode mode) {
    if (const Orbx::ErrorStatus fault = Faults::instance().next(HostCall::getEvalGraph); fault != Orbx::eOk) {
        return fault;
    }
    const KtDbObjectId id = graphOf(object, key);
    if (id.isNull()) {
        return Orbx::eKeyNotFound;
    }
    ObjectHead& head = *ObjectStore::instance().find(id);
    const Orbx::ErrorStatus refusal = refusalToOpen(head, mode);
    if (refusal == Orbx::eOk) {
        beginOpening(head, mode);
        graph = peek<EvalGraph>(id);
    }
    return refusal;
}

} // namespace

} // namespace kthost

Orbx::ErrorStatus KtDbEvalGraph::getGraph(KtDbEvalGraph*& graph, const KtDbObject* object, const wchar_t* key,
                                          KtDb::OpenMode mode) {
    graph = nullptr;
    return kthost::traceCall("getGraph", object == nullptr ? KtDbObjectId() : object->objectId(),
                             kthost::openGraph(graph, object, key, mode));
}
