#include "kthost/database/ObjectKinds.h"

#include <array>

namespace kthost {

namespace {

template <typename Call>
decltype(auto) withObject(ObjectHead& head, Call call) {
    switch (head.kind) {
    case ObjectKind::blockTable:
        return call(static_cast<BlockTable&>(*head.object()));
    case ObjectKind::blockTableRecord:
        return call(static_cast<BlockTableRecord&>(*head.object()));
    case ObjectKind::blockReference:
        return call(static_cast<BlockReference&>(*head.object()));
    case ObjectKind::table:
        return call(static_cast<Table&>(*head.object()));
    case ObjectKind::attribute:
        return call(static_cast<Attribute&>(*head.object()));
    case ObjectKind::evalGraph:
        break;
    }
    return call(static_cast<EvalGraph&>(*head.object()));
}

} // namespace

const KtRxClass* classOf(ObjectKind kind) {
    static const std::array<const KtRxClass*, 6> classes = {
        KtDbBlockTable::desc(), KtDbBlockTableRecord::desc(), KtDbBlockReference::desc(),
        KtDbTable::desc(),      KtDbAttribute::desc(),        KtDbEvalGraph::desc()};
    return classes[static_cast<std::size_t>(kind)];
}

std::optional<ObjectState> stateOf(ObjectHead& head) {
    return withObject(head, [](auto& object) -> std::optional<ObjectState> {
        if constexpr (requires { object.state(); }) {
            return object.state();
        } else {
            return std::nullopt;
        }
    });
}

void exchangeState(ObjectHead& head, ObjectState& state) {
    withObject(head, [&state](auto& object) {
        if constexpr (requires { object.exchangeState(state); }) {
            object.exchangeState(state);
        }
    });
}

} // namespace kthost
