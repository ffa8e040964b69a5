#pragma once

#include <WindowSystem.h>

#include "app/AppDataT.h"
#include "app/KtDxDocument.h"
#include "notify/KtDxEnableBase.h"

/// The one application object: the registry of document records, which also asks for an idle check when a
/// command ends in the current document. The module makes it on initialise and destroys it on unload.
class KtDxApplication : public AppDataT<KtDxDocument>, public KtDxEnableBase {
public:
    /// Sets `gApplication`, hears the document manager, and makes a record for every open document. Enabled.
    KtDxApplication();
    /// Destroys every record and clears `gApplication`.
    ~KtDxApplication() override;

    void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode previous,
                                 KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                 const wchar_t* globalCommandName) override;

    /// Attaches the registry to the document manager, or detaches it, which destroys every record. Always
    /// eOk, also without a document manager.
    Orbx::ErrorStatus setEnabled(bool enable) override;

private:
    bool isIdleCheckDue(KtApDocument* document, const wchar_t* globalCommandName);
};

/// The application object; null while the module is not initialised.
extern KtDxApplication* gApplication;

/// Id of the registered message "WM_KTDX_IDLE_CHECK", whose wParam is the document; 0 until it is first
/// posted.
extern UINT gIdleCheckMessage;

/// A document's record as `getData` gives it; null without an application object.
KtDxDocument* documentRecord(KtApDocument* document, bool create);
