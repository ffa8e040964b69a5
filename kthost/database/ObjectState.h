#pragma once

#include <KtDbObjectId.h>
#include <KtGe.h>

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

/// What of an object edits can change and undo can put back. Which objects lie in or below another is not
/// part of it: that follows from their being appended and erased.
namespace kthost {

struct ExternalDrawing;

struct AttributeState {
    std::wstring text;
};

struct ReferenceState {
    KtGePoint3d position;
};

struct TableState {
    KtGePoint3d position;
    std::uint32_t rows = 0;
    std::uint32_t columns = 0;
    std::vector<std::wstring> cells; ///< row by row
};

struct RecordState {
    std::wstring name;
    KtDbObjectId represents;                  ///< the dynamic definition
    std::wstring label;                       ///< which representation of it
    std::shared_ptr<ExternalDrawing> drawing; ///< that this record stands for
    KtDbObjectId mirrors;                     ///< for a dependent record, that of the attached drawing
    std::shared_ptr<ExternalDrawing> source;  ///< where that lies, which lives as long as its mirror
    bool dependent = false;
};

using ObjectState = std::variant<AttributeState, ReferenceState, TableState, RecordState>;

} // namespace kthost
