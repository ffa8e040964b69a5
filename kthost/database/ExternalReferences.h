#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

#include <functional>
#include <memory>
#include <string_view>

/// Attached drawings. The record NAME stands for the drawing, a dependent record "NAME|BLOCK" for each of its
/// definitions (not for its layouts). A dependent record holds nothing of its own: its references are those
/// that the attached drawing has to its own record BLOCK, objects of that drawing's database, some of them in
/// its model space.
namespace kthost {

class Database;

/// Reads the drawing; null when it cannot be had. It is called again by every reload and by
/// `externalDatabase` when the drawing is unloaded.
using DrawingLoader = std::function<std::unique_ptr<Database>()>;

/// eDuplicateKey when NAME, or one of the names "NAME|BLOCK", is taken by a living record; eInvalidInput as
/// for a definition's name; eFileAccess when the loader gives nothing.
Orbx::ErrorStatus attachDrawing(Database& database, std::wstring_view name, const DrawingLoader& loader,
                                KtDbObjectId& record);
/// Erases the references to NAME, its dependent records and its record. The attached drawing stays in memory
/// for undo. eInvalidInput when the record does not stand for a drawing.
Orbx::ErrorStatus detachDrawing(Database& database, KtDbObjectId record);
/// Reads the drawing again. Records whose names persist keep their ids; the others are erased or added. NAME
/// and every dependent record are opened for modify. The drawing as it was stays in memory as long as undo
/// can bring it back; with undo recording off its objects are released at once.
Orbx::ErrorStatus reloadDrawing(Database& database, KtDbObjectId record);
/// The same from somewhere else, now and from then on.
Orbx::ErrorStatus reloadDrawing(Database& database, KtDbObjectId record, const DrawingLoader& loader);

} // namespace kthost
