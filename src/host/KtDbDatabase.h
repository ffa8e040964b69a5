#pragma once

#include <KtDbObjectId.h>
#include <KtRxObject.h>

/// One drawing's objects.
class KtDbDatabase : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    virtual KtDbObjectId blockTableId() const = 0;
    /// Whether changes are kept for undo. A module that only redraws what can be made again at any time
    /// switches it off meanwhile, so that the user's own undo and redo steps stay what they were. Returns the
    /// state before.
    virtual bool setUndoRecording(bool on) = 0;
};
