#pragma once

#include <KtDb.h>
#include <KtDbObjectId.h>
#include <KtRxObject.h>
#include <OrbxErrorStatus.h>

#include <cstdint>

class KtDbDatabase;
class KtDbObjectReactor;
struct KtDbXDataItem;
template <typename T>
class KtArray;

/// Any object of a drawing. An object with an id is owned by its database, reached by opening its id and
/// given back by closing it; one without an id belongs to whoever holds it, who deletes it. All of it belongs
/// to the user-interface thread.
class KtDbObject : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// Null while the object is not in a database.
    virtual KtDbObjectId objectId() const = 0;
    virtual KtDbObjectId ownerId() const = 0;
    virtual KtDbDatabase* database() const = 0;
    /// Number of the object in its drawing, never used twice there; 0 while it is not in a database. Shown to
    /// people in hexadecimal.
    virtual std::uint64_t handle() const = 0;
    virtual bool isErased() const = 0;

    /// Ends one opening. The pointer is not to be used after it. eNotInDatabase for an object without an id.
    virtual Orbx::ErrorStatus close() = 0;
    /// Erases the object (open for write) or restores it (opened erased, for write).
    virtual Orbx::ErrorStatus erase(bool erasing = true) = 0;

    /// The object has to be open, in any mode. A reactor is held once and never owned.
    virtual Orbx::ErrorStatus addReactor(KtDbObjectReactor* reactor) const = 0;
    /// eKeyNotFound when it was not there.
    virtual Orbx::ErrorStatus removeReactor(KtDbObjectReactor* reactor) const = 0;

    /// Appends the extended data kept under an application's name to `items`. eKeyNotFound when there is
    /// none.
    virtual Orbx::ErrorStatus getXData(const wchar_t* application, KtArray<KtDbXDataItem>& items) const = 0;
};

/// Opens an object. `description` names the class that it has to be of or derive from. On success `object` is
/// to be closed by the caller; otherwise it is null. Statuses: eNullObjectId, eInvalidObjectId,
/// eObjectReleased, eWasErased (unless `openErased`), eNotThatKindOfClass, eWasOpenForWrite (reading or
/// writing what another has open for write), eWasOpenForRead and eWasOpenForNotify (writing what others have
/// open), eTooManyReaders.
Orbx::ErrorStatus ktdbOpenObject(KtDbObject*& object, KtDbObjectId id, const KtRxClass* description,
                                 KtDb::OpenMode mode, bool openErased = false);

/// The same for a class known at compile time.
template <typename T>
Orbx::ErrorStatus ktdbOpenObject(T*& object, KtDbObjectId id, KtDb::OpenMode mode, bool openErased = false) {
    KtDbObject* opened = nullptr;
    const Orbx::ErrorStatus status = ktdbOpenObject(opened, id, T::desc(), mode, openErased);
    object = static_cast<T*>(opened);
    return status;
}
