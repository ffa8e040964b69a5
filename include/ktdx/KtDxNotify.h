#pragma once

#include <ktdx/StringList.h>

#include <KtArray.h>
#include <KtDbObjectId.h>
#include <KtRxCallback.h>

#include <cstdint>

class KtApDocument;

/// What KtDxNotify.kmx exports to other modules of the host.
///
/// Rules that hold for every function here:
///  1. Call them on the host's user-interface thread only, and only between the module's loading and
///  unloading.
///  2. A document is the host's document object. Nothing that is passed in is kept or owned, except the
///  address of a
///     callback; ids are the host's and stay its own.
///  3. A callback is a plain function, known by its address. It is called on the user-interface thread when a
///  command
///     has ended and the host is idle, never in the middle of a command, in ascending order of the callbacks'
///     addresses. Detach it before the code that it lies in goes away.
///  4. From inside a callback all of these functions may be called. What must not be done there: close the
///  document
///     that is being checked, or unload a module. Both destroy what the call returns into; the reference host
///     refuses them with a message.
///  5. Functions report success or failure and no more. None throws; what a callback throws passes through to
///  the
///     host.

#ifdef KTDX_BUILDING_MODULE
#ifdef _WIN32
#define KTDX_EXPORT __declspec(dllexport)
#else
#define KTDX_EXPORT __attribute__((visibility("default")))
#endif
#else
#define KTDX_EXPORT
#endif

extern "C" {

/// Attaches (`attach` nonzero) or detaches a callback to the idle checks of a document. It is called at the
/// first idle check after that, and then at those that come at least `interval` milliseconds after the last
/// call. There is one interval a document: that of the latest call of this function, whichever callback it
/// was for, attaching or detaching; one above 2,147,483,647 counts as 0, which is every idle check, unless it
/// is the first that the document is given. A callback is held once however often it is attached. It may
/// detach itself or others from within its own call. 1 on success; detaching what was never attached
/// succeeds. 0 for a null argument, a document without a drawing, or when there is no memory.
KTDX_EXPORT std::int32_t ktdxDocTimerAttach(KtApDocument* document, KtRxCallback callback,
                                            std::uint32_t interval, std::int32_t attach);

/// Has a callback called when references of certain block definitions change in a document: when one is
/// placed, or goes for good; when one, or one of its attributes, is edited, moved, erased, restored or
/// copied; when an external drawing's record changes; and when any of that happens to a block inside which,
/// at any depth, one of them is used. However much has changed, it is called once an idle check. What is
/// there when the document's first callback is attached is not reported. `ids` are ids of block definitions
/// (block table records) of the document; ids of anything else are passed over. Attaching again adds to the
/// definitions that the callback watches. What a callback itself changes in the drawing is not reported, to
/// it or to others that are called in the same idle check. False when an argument is null, `ids` is empty,
/// the document has no drawing or no model space, its block table cannot be opened, or there is no memory.
///
/// Some objects are not heard until the document's last callback is detached and one is attached again:
///  - a representation that has joined its dynamic definition while callbacks were attached, or that stands
///    behind an erased one. What is placed inside it later is found at the next idle check that looks for any
///    other reason;
///  - a definition that was erased when the first callback was attached and is restored later. The same holds
///    for what is placed inside it;
///  - the attributes of a reference that was erased when it began to be watched, and an attribute that a
///    watched reference is given later. Editing one is not reported.
/// A definition that is new is watched for this callback once it is attached to; nobody is called because of
/// it alone. A client whose picture must never be behind the drawing listens to the records, and to the
/// references that it cares for, with a reactor of its own, and when one was touched and no call came by the
/// next idle check, has the drawing looked at with `ktdxUpdateBlockGraph` (forced, notifying) and compares.
/// Detaching and attaching again is no cure where other clients are attached, and changes that are waiting to
/// be reported may be lost by it.
KTDX_EXPORT bool ktdxBlockReferenceMonitorAttach(KtApDocument* document, const KtArray<KtDbObjectId>* ids,
                                                 KtRxCallback callback);

/// Takes a callback off every definition of a document. When it was the document's last, nothing of the
/// drawing is watched any more. Called from within an idle check's callbacks it takes effect from the next
/// idle check on.
KTDX_EXPORT void ktdxBlockReferenceMonitorDetach(KtApDocument* document, KtRxCallback callback);

/// Brings the module's picture of a document's blocks up to date now instead of at the next idle check: if
/// something has been touched and callbacks are attached, or in any case (`force`). With `notify` the
/// callbacks of what has changed are called before the function returns, even in the middle of a command.
/// False when the document is null or has no drawing or no model space.
KTDX_EXPORT bool ktdxUpdateBlockGraph(KtApDocument* document, bool force, bool notify);

/// Lists what an attribute-extraction template of the older binary format selects: the names of its selected
/// blocks in the order of the file, and the tags of the attributes that are selected in them, block by block,
/// each block's in the order of the file. A name or tag that is there already, letter for letter, is not
/// listed again. Both lists are emptied first, and stay empty when the path is null or empty, the file cannot
/// be read or is no sound template, or there is no memory; that cannot be told from a template in which
/// nothing is selected. A null list is taken for the same: the other one comes back empty. The file is not
/// shared while it is read: it does not open while anyone else, in this process or another, holds it open,
/// and nobody else gets it for writing meanwhile. Where the file system or the file's ownership keeps the
/// system from telling who holds it (on Linux: no leases, or somebody else's file), it opens all the same.
/// Touches no drawing. What a list of the caller throws, but for std::bad_alloc, passes through to the
/// caller.
KTDX_EXPORT void ktdxReadLegacyBlkTemplate(const wchar_t* templatePath, KtDxStringList* blockNames,
                                           KtDxStringList* attributeTags);

/// Appends to `ids` the ids of the block definitions through which the drawing's table entities are drawn:
/// anonymous ones whose name has T as its second character. Those that came with an external reference are
/// left out. 1 when the drawing could be reached, also when nothing was appended; 0, and nothing appended,
/// otherwise.
KTDX_EXPORT std::int32_t ktdxGetBlockRecordIdsOfKtDbTables(KtApDocument* document,
                                                           KtArray<KtDbObjectId>* ids);

/// Appends to `ids` the ids of the drawing's table entities: the references to the definitions above, by
/// definition. What stood in `ids` stays in front. 1 when the drawing could be reached, 0, and nothing
/// appended, otherwise.
KTDX_EXPORT std::int32_t ktdxGetKtDbTableIds(KtApDocument* document, KtArray<KtDbObjectId>* ids);

} // extern "C"
