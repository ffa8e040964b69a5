#pragma once

#include "kthost/database/ObjectState.h"
#include "kthost/database/XData.h"

#include <KtDbObjectId.h>

#include <string>
#include <variant>
#include <vector>

namespace kthost {

/// The object was appended to the drawing. Played back, it is erased and unappended.
struct AppendRecord {
    KtDbObjectId id;
    bool wasErased = false; ///< when it was taken back, for doing it again
};

struct EraseRecord {
    KtDbObjectId id;
    bool erasing = true;
};

/// State of the object on the other side of the change; playing it exchanges it with the present one, so it
/// serves undo and redo alike.
struct StateRecord {
    KtDbObjectId id;
    ObjectState state;
};

struct XDataRecord {
    KtDbObjectId id;
    XData data;
};

using UndoRecord = std::variant<AppendRecord, EraseRecord, StateRecord, XDataRecord>;

inline KtDbObjectId concernedObject(const UndoRecord& record) {
    return std::visit([](const auto& change) { return change.id; }, record);
}

struct UndoStep {
    std::wstring name;
    std::vector<UndoRecord> records; // in the order in which the changes were made
};

} // namespace kthost
