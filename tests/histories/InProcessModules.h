#pragma once

#include "app/KtDxApplication.h"
#include "tests/model/Twin.h"

#include <memory>
#include <string>

namespace parts {
class Watches;
}

namespace histories {

/// The modules that a history loads and unloads, linked into this program: what a `kthost` script loads from
/// files is here the same code, and can be looked into.
class InProcessModules {
public:
    InProcessModules();
    InProcessModules(const InProcessModules&) = delete;
    InProcessModules& operator=(const InProcessModules&) = delete;
    /// Unloads all, the youngest first.
    ~InProcessModules();

    /// False for a line that neither loads nor unloads one of them. Throws CommandError when that cannot be
    /// done.
    bool run(const std::string& line);
    void unloadAll();

    /// Null while KtDxNotify is not loaded.
    ktmodel::Twin* twin() const { return twin_.get(); }

    bool isNotifyLoaded() const { return application_ != nullptr; }

    /// Null while PartsList is not loaded.
    parts::Watches* watches() const { return watches_.get(); }

private:
    void loadNotify();
    void loadPartsList();
    void unloadNotify();
    void unloadPartsList();
    void loadPuppets();
    void unloadPuppets();

    std::unique_ptr<KtDxApplication> application_;
    std::unique_ptr<ktmodel::Twin> twin_; // made behind it, and gone behind it
    std::unique_ptr<parts::Watches> watches_;
    bool puppets_ = false;
};

} // namespace histories
