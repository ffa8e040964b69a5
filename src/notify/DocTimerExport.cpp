#include <ktdx/KtDxNotify.h>

#include "app/KtDxApplication.h"
#include "app/KtDxDocument.h"

std::int32_t ktdxDocTimerAttach(KtApDocument* document, KtRxCallback callback, std::uint32_t interval,
                                std::int32_t attach) {
    if (document == nullptr || callback == nullptr) {
        return 0;
    }
    KtDxDocument* record = documentRecord(document, true);
    if (record == nullptr || record->attachTimerCallback(callback, interval, attach != 0) != Orbx::eOk) {
        return 0;
    }
    ktrxNoteCallback(document, KtRxCallbackList::idleTimer, callback, attach != 0);
    return 1;
}
