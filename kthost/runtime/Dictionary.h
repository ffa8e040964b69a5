#pragma once

#include <KtRxDictionary.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kthost {

/// The host's dictionary. Also remembers where each object's class lies, so that an object of a module that
/// has gone is let go of rather than destroyed.
class Dictionary final : public KtRxDictionary {
public:
    ~Dictionary() override;

    KtRxObject* at(const wchar_t* key) const override;
    bool add(const wchar_t* key, KtRxObject* object) override;
    KtRxObject* remove(const wchar_t* key) override;

    struct Entry {
        std::unique_ptr<KtRxObject> object;
        const void* code;      // table of virtual functions when it was added
        std::string broughtBy; // name of the module whose entry point was running; empty for the host itself
    };

    const std::map<std::wstring, Entry, std::less<>>& entries() const { return entries_; }

private:
    std::map<std::wstring, Entry, std::less<>> entries_;
};

} // namespace kthost
