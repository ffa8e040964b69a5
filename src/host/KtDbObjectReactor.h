#pragma once

#include <KtDbObjectId.h>
#include <KtRxObject.h>

class KtDbObject;

/// Hears what happens to the objects that it is added to. Every default does nothing. Reactors may be added
/// and removed inside a notification: one that is removed is not called any more, one that is added is called
/// from the next notification on.
class KtDbObjectReactor : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;
    KtDbObjectReactor();
    ~KtDbObjectReactor() override;

    /// The object was opened for write and closed without its changes being kept.
    virtual void cancelled(const KtDbObject* object);
    /// `copy` has been made of `object`.
    virtual void copied(const KtDbObject* object, const KtDbObject* copy);
    /// The object was erased (`erasing`) or restored.
    virtual void erased(const KtDbObject* object, bool erasing);
    /// The object's memory is about to be released; the last notification about it.
    virtual void goodbye(const KtDbObject* object);
    /// The object, open for write, is about to be changed for the first time since it was opened.
    virtual void openedForModify(const KtDbObject* object);
    /// The object, changed, is being closed.
    virtual void modified(const KtDbObject* object);
    /// An object that `object` owns was changed.
    virtual void subObjectModified(const KtDbObject* object, const KtDbObject* subObject);
    /// Undo or redo has put an earlier or later state of the object back.
    virtual void modifyUndone(const KtDbObject* object);
    /// The object's extended data was changed.
    virtual void modifiedXData(const KtDbObject* object);
    /// Undo has taken the object's appending to the database back.
    virtual void unappended(const KtDbObject* object);
    /// Redo has appended the object again.
    virtual void reappended(const KtDbObject* object);
    /// An object that was open for write has been closed.
    virtual void objectClosed(KtDbObjectId id);
};
