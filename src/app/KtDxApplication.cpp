#include "app/KtDxApplication.h"

#include <AppFramework.h>

#include <tuple>

UINT gIdleCheckMessage = 0;

KtDxApplication::KtDxApplication() {
    // Set before attaching: attaching makes records, and what they make looks for the registry here.
    gApplication = this;
    storeAutoCreate(true);
    std::ignore = AppDataT::setReactorAttached(true); // without a document manager the first record attaches
    std::ignore = KtDxEnableBase::setEnabled(true);   // the flag alone; this class's own would attach again
}

KtDxApplication::~KtDxApplication() {
    detachAndRemoveAll();
    std::ignore = KtDxEnableBase::setEnabled(false); // storing the flag cannot fail
    gApplication = nullptr;
}

Orbx::ErrorStatus KtDxApplication::setEnabled(bool enable) {
    std::ignore =
        AppDataT::setReactorAttached(enable); // a host without a document manager has nothing to attach to
    return KtDxEnableBase::setEnabled(enable);
}

void KtDxApplication::documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode /*previous*/,
                                              KtAp::DocLockMode /*current*/, KtAp::DocLockMode /*overall*/,
                                              const wchar_t* globalCommandName) {
    if (!isIdleCheckDue(document, globalCommandName)) {
        return;
    }
    const CWinThread* thread = AfxGetThread();
    if (thread == nullptr || thread->m_pMainWnd == nullptr) {
        return;
    }
    if (gIdleCheckMessage == 0) {
        gIdleCheckMessage = RegisterWindowMessageW(L"WM_KTDX_IDLE_CHECK");
    }
    // A message that cannot be posted is made up for by the next command's.
    PostMessageW(thread->m_pMainWnd->m_hWnd, gIdleCheckMessage, reinterpret_cast<WPARAM>(document), 0);
}

bool KtDxApplication::isIdleCheckDue(KtApDocument* document, const wchar_t* globalCommandName) {
    if (document == nullptr || !isEnabled() || globalCommandName == nullptr || globalCommandName[0] != L'#') {
        return false;
    }
    KtApDocManager* manager = ktDocManagerPtr();
    if (manager == nullptr || manager->curDocument() != document || gApplication == nullptr) {
        return false;
    }
    const KtDxDocument* record = gApplication->getData(document, false);
    return record != nullptr && record->document() == document && record->isEnabled();
}

KtDxDocument* documentRecord(KtApDocument* document, bool create) {
    return gApplication == nullptr ? nullptr : gApplication->getData(document, create);
}
