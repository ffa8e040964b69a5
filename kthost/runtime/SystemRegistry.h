#pragma once

#include "kthost/runtime/Dictionary.h"

namespace kthost {

/// Key under which the root holds the dictionary of services.
inline constexpr const wchar_t* kServiceDictionaryKey = L"ServiceDictionary";

/// The registry behind `ktrxSysRegistry`, with its "ServiceDictionary". One at a time in a process.
class SystemRegistry {
public:
    SystemRegistry();
    SystemRegistry(const SystemRegistry&) = delete;
    SystemRegistry& operator=(const SystemRegistry&) = delete;
    ~SystemRegistry();

    /// Null while there is none.
    static SystemRegistry* current();

    Dictionary& root() { return root_; }

    /// Null when a module has taken it out or put something else in its place.
    Dictionary* services();

private:
    Dictionary root_;
};

} // namespace kthost
