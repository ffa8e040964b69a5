#pragma once

#include <KtRxObject.h>

/// Marks a named service as present; it lies in the "ServiceDictionary" under the service's name.
class KtRxService : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;
    KtRxService();
    ~KtRxService() override;
};

bool ktrxServiceIsRegistered(const wchar_t* name);
/// False when a service of that name is there already.
bool ktrxRegisterService(const wchar_t* name);
