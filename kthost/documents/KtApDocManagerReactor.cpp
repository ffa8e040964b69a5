#include <KtApDocManagerReactor.h>

#include "kthost/runtime/RuntimeClass.h"

KTHOST_RUNTIME_CLASS(KtApDocManagerReactor, KtRxObject)

KtApDocManagerReactor::KtApDocManagerReactor() = default;
KtApDocManagerReactor::~KtApDocManagerReactor() = default;

void KtApDocManagerReactor::documentCreated(KtApDocument* /*document*/) {}

void KtApDocManagerReactor::documentToBeDestroyed(KtApDocument* /*document*/) {}

void KtApDocManagerReactor::documentCreateCancelled(KtApDocument* /*document*/) {}

void KtApDocManagerReactor::documentLockModeWillChange(KtApDocument* /*document*/,
                                                       KtAp::DocLockMode /*previous*/,
                                                       KtAp::DocLockMode /*current*/,
                                                       KtAp::DocLockMode /*overall*/,
                                                       const wchar_t* /*globalCommandName*/) {}

void KtApDocManagerReactor::documentLockModeChanged(KtApDocument* /*document*/,
                                                    KtAp::DocLockMode /*previous*/,
                                                    KtAp::DocLockMode /*current*/,
                                                    KtAp::DocLockMode /*overall*/,
                                                    const wchar_t* /*globalCommandName*/) {}

void KtApDocManagerReactor::documentBecameCurrent(KtApDocument* /*document*/) {}

void KtApDocManagerReactor::documentDestroyed(const wchar_t* /*name*/) {}
