#pragma once

#include <KtRxObject.h>

/// Objects by name. Keys are compared exactly. The dictionary owns what lies in it until it is removed.
class KtRxDictionary : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// Null when there is no such key. Stays owned by the dictionary.
    virtual KtRxObject* at(const wchar_t* key) const = 0;
    /// False, and nothing taken over, when the key is there already.
    virtual bool add(const wchar_t* key, KtRxObject* object) = 0;
    /// Takes the entry out and hands it to the caller, who owns it from then on; null when there is no such
    /// key.
    virtual KtRxObject* remove(const wchar_t* key) = 0;
};

/// The host's registry of registries; among others it holds the "ServiceDictionary". Never null once the host
/// runs.
KtRxDictionary* ktrxSysRegistry();
