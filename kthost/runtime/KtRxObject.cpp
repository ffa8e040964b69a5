#include <KtRxClass.h>

#include "kthost/runtime/RuntimeClass.h"

KtRxObject::KtRxObject() = default;
KtRxObject::~KtRxObject() = default;

KtRxClass* KtRxObject::desc() {
    static kthost::RuntimeClass record(L"KtRxObject", nullptr);
    return &record;
}

KtRxClass* KtRxObject::isA() const {
    return desc();
}

bool KtRxObject::isKindOf(const KtRxClass* ancestor) const {
    return isA()->isDerivedFrom(ancestor);
}

KtRxObject* KtRxObject::queryX(const KtRxClass* protocol) const {
    return isA()->queryX(protocol);
}

KTHOST_RUNTIME_CLASS(KtRxClass, KtRxObject)
