#pragma once

#include "kthost/runtime/HostResult.h"
#include "kthost/window/SharedLibrary.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kthost {

/// A run-time module in memory. Its address is the application id that its entry point is given.
class LoadedModule {
public:
    LoadedModule(std::filesystem::path file, SharedLibrary library);

    /// File name without its folder; the name that the module is unloaded by.
    const std::string& name() const { return name_; }

    const std::filesystem::path& file() const { return file_; }

    HMODULE handle() const { return library_.handle(); }

    const AddressRange& range() const { return range_; }

    bool isMdiAware() const { return mdiAware_; }

    /// A plain export; null when there is none of that name.
    void* exportOf(const char* symbol) const { return library_.symbol(symbol); }

private:
    friend class ModuleLoader;

    std::filesystem::path file_;
    std::string name_;
    SharedLibrary library_;
    AddressRange range_;
    bool mdiAware_ = false;
    bool initialised_ = false;
};

/// Loads, addresses and unloads run-time modules. One at a time in a process; user-interface thread only.
class ModuleLoader {
public:
    ModuleLoader();
    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;
    /// Unloads what is left, the youngest first.
    ~ModuleLoader();

    static ModuleLoader* current();

    /// Loads a module and has it initialise itself. Refused for a file (or a file name) that is loaded, one
    /// that the system cannot load, one that lacks an export, one built for another interface version, and
    /// when initialise fails; the module is out of memory again then.
    HostResult load(const std::filesystem::path& file);

    /// Has the module clean up, tells `onLeaving`, and takes it out of memory. Refused for a name that is not
    /// loaded and, with eNotNow, while any module's code is on the stack.
    HostResult unload(std::string_view name);
    /// The same for all, the youngest first. Stops at the first that cannot be unloaded.
    HostResult unloadAll();

    /// Sends a code of KtRx::AppMessage, or any other, to a module's entry point and gives its answer. What
    /// the entry point throws is reported to stderr and counts as KtRx::kError.
    std::int32_t send(LoadedModule& module, std::uint32_t message);
    void sendToAll(std::uint32_t message);

    /// Null when no module of that name is loaded.
    LoadedModule* find(std::string_view name) const;
    /// A module's plain export; null when the module or the export is not there.
    void* exportOf(std::string_view moduleName, const char* symbol) const;
    /// The module that an address lies in; null when it is none of the loaded ones.
    const LoadedModule* moduleAt(const void* address) const;

    /// The module whose entry point is running, the innermost one; null when none is.
    LoadedModule* running() const { return running_; }

    /// True for the address of a module that is loaded or being loaded.
    bool markMdiAware(const void* applicationId);

    /// In the order of loading.
    const std::vector<std::unique_ptr<LoadedModule>>& modules() const { return modules_; }

    /// Name of the unloaded module that an address lay in; null when it lay in none, or when another module
    /// has taken its place in memory.
    const std::string* unloadedModuleAt(const void* address) const;

    /// Called when a module has answered the unload message (or failed to initialise) and is still in memory:
    /// the last moment at which what it left behind can be looked at.
    std::function<void(const LoadedModule&)> onLeaving;
    /// Behind KtUtResource.
    HMODULE loadResource(const wchar_t* name);
    bool freeResource(HMODULE library);

private:
    struct UnloadedModule {
        std::string name;
        AddressRange range;
    };

    HostResult refuseTwice(const std::filesystem::path& file) const;
    HostResult start(LoadedModule& module);
    static HostResult checkInterface(const LoadedModule& module);
    HostResult initialise(LoadedModule& module);
    void release(LoadedModule& module);
    void reuse(const AddressRange& range);

    std::vector<std::unique_ptr<LoadedModule>> modules_;
    std::vector<UnloadedModule> unloaded_;
    std::vector<SharedLibrary> resources_;
    LoadedModule* running_ = nullptr;
};

} // namespace kthost
