#include "kthost/database/ObjectKinds.h"

#include <array>

namespace kthost {

namespace {

template <typename Call>
decltype(auto) withObject(const Stub& stub, Call call) {
    switch (stub.kind) {
    case ObjectKind::blockTable:
        return call(static_cast<BlockTable&>(*stub.object));
    case ObjectKind::blockTableRecord:
        return call(static_cast<BlockTableRecord&>(*stub.object));
    case ObjectKind::blockReference:
        return call(static_cast<BlockReference&>(*stub.object));
    case ObjectKind::table:
        return call(static_cast<Table&>(*stub.object));
    case ObjectKind::attribute:
        return call(static_cast<Attribute&>(*stub.object));
    case ObjectKind::evalGraph:
        break;
    }
    return call(static_cast<EvalGraph&>(*stub.object));
}

} // namespace

const KtRxClass* classOf(ObjectKind kind) {
    static const std::array<const KtRxClass*, 6> classes = {
        KtDbBlockTable::desc(), KtDbBlockTableRecord::desc(), KtDbBlockReference::desc(),
        KtDbTable::desc(),      KtDbAttribute::desc(),        KtDbEvalGraph::desc()};
    return classes[static_cast<std::size_t>(kind)];
}

ObjectHead& headOf(const Stub& stub) {
    return withObject(stub, [](auto& object) -> ObjectHead& { return object.head(); });
}

std::optional<ObjectState> stateOf(const Stub& stub) {
    return withObject(stub, [](auto& object) -> std::optional<ObjectState> {
        if constexpr (requires { object.state(); }) {
            return object.state();
        } else {
            return std::nullopt;
        }
    });
}

void exchangeState(const Stub& stub, ObjectState& state) {
    withObject(stub, [&state](auto& object) {
        if constexpr (requires { object.exchangeState(state); }) {
            object.exchangeState(state);
        }
    });
}

} // namespace kthost
