#pragma once

#include <KtApDocument.h>
#include <KtRxCallback.h>

#include "notify/ByAddress.h"
#include "notify/KtDxEnableBase.h"
#include "notify/OrderedSet.h"

#include <cstdint>

class KtDxBlocks;
class KtDxExternalClientTimerReactor;
class KtDxTimer;

/// What the module keeps of one open document. The registry makes and destroys it. Its parts are made when
/// they are first needed and stay until the record goes.
class KtDxDocument : public KtDxEnableBase {
public:
    /// Enabled. The document is not owned.
    explicit KtDxDocument(KtApDocument* document);
    ~KtDxDocument() override;

    /// Passes the state on to the parts that exist.
    Orbx::ErrorStatus setEnabled(bool enable) override;
    /// The drawing's block table monitor, made at the first call; null when it cannot be made, which is tried
    /// again at the next call. The record keeps it.
    virtual KtDxBlocks* blocks();
    /// Attaches a callback to the document's timer or detaches it. Either way `interval`, in milliseconds, is
    /// from then on that of all the document's callbacks. eMissing for a null callback and when there is no
    /// memory.
    virtual Orbx::ErrorStatus attachTimerCallback(KtRxCallback callback, std::uint32_t interval, bool attach);
    /// Null when the record has no document, or the document no drawing.
    virtual KtDbDatabase* database() const;

    KtApDocument* document() const { return document_; }

    /// Checks every enabled timer in ascending order of address; timers may come and go meanwhile.
    void checkTimers();

    using Timers = OrderedSet<KtDxTimer*, ByAddress>;

    /// The document's enabled timers, kept by the timers themselves.
    Timers& enabledTimers() { return enabledTimers_; }

private:
    Orbx::ErrorStatus setPartsEnabled(bool enable);
    bool makeTimer(std::uint32_t interval);
    bool makeClientReactor();

    KtApDocument* document_;
    KtDxBlocks* blockMonitor_ = nullptr;
    KtDxTimer* timer_ = nullptr;
    KtDxExternalClientTimerReactor* clientReactor_ = nullptr;
    Timers enabledTimers_;
};
