#include "kthost/runtime/ModuleLoader.h"

#include <KtRxModule.h>

#include "kthost/audit/Trace.h"
#include "kthost/runtime/Faults.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/runtime/PathName.h"
#include "kthost/runtime/Report.h"
#include "kthost/window/FindFile.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <system_error>
#include <utility>

namespace kthost {

namespace {

using EntryPoint = std::int32_t (*)(std::uint32_t message, void* applicationId);
using ApiVersionQuery = std::uint32_t (*)(std::uint32_t hostVersion);

constexpr const char* kEntryPointName = "ktrxEntryPoint";
constexpr const char* kApiVersionName = "ktrxGetApiVersion";

ModuleLoader* currentLoader = nullptr;

std::string versionText(std::uint32_t version) {
    return std::to_string(version >> 16) + "." + std::to_string(version & 0xFFFF);
}

bool isSupported(std::uint32_t version) {
    return version >> 16 == KtRx::kApiVersion >> 16 && version <= KtRx::kApiVersion;
}

void traceModule(const char* event, const std::string& name) {
    if (tracing()) {
        TraceLine(event).field("module", name);
    }
}

} // namespace

LoadedModule::LoadedModule(std::filesystem::path file, SharedLibrary library)
    : file_(std::move(file)),
      name_(fileNameOf(file_)),
      library_(std::move(library)),
      range_(library_.range()) {}

ModuleLoader::ModuleLoader() {
    currentLoader = this;
}

ModuleLoader::~ModuleLoader() {
    while (!modules_.empty()) {
        release(*modules_.back());
    }
    currentLoader = nullptr;
}

ModuleLoader* ModuleLoader::current() {
    return currentLoader;
}

HostResult ModuleLoader::load(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(file, error).lexically_normal();
    const std::optional<FoundFile> found = findFile(whole);
    if (error || !found || !found->isRegular) {
        return {Orbx::eFileAccess, pathUtf8(file) + ": no such module file"};
    }
    if (HostResult refused = refuseTwice(whole); !refused) {
        return refused;
    }
    std::string systemReason;
    SharedLibrary library = SharedLibrary::open(whole, systemReason);
    if (!library) {
        return {Orbx::eFileAccess, fileNameOf(whole) + " cannot be loaded: " + systemReason};
    }
    modules_.push_back(std::make_unique<LoadedModule>(whole, std::move(library)));
    return start(*modules_.back());
}

HostResult ModuleLoader::refuseTwice(const std::filesystem::path& file) const {
    const std::string name = fileNameOf(file);
    for (const auto& module : modules_) {
        std::error_code ignored; // a file that has gone since is no longer the same
        if (module->name() == name || std::filesystem::equivalent(module->file(), file, ignored)) {
            return {Orbx::eDuplicateKey, name + " is loaded already"};
        }
    }
    return {};
}

HostResult ModuleLoader::start(LoadedModule& module) {
    traceModule("module load", module.name());
    reuse(module.range());
    HostResult result = checkInterface(module);
    if (result) {
        result = initialise(module);
    }
    if (!result) {
        release(module);
    }
    return result;
}

HostResult ModuleLoader::checkInterface(const LoadedModule& module) {
    for (const char* symbol : {kEntryPointName, kApiVersionName}) {
        if (module.exportOf(symbol) == nullptr) {
            return {Orbx::eInvalidInput, module.name() + " is no module of this host: it has no " + symbol};
        }
    }
    const auto query = reinterpret_cast<ApiVersionQuery>(module.exportOf(kApiVersionName));
    const std::uint32_t version = query(KtRx::kApiVersion);
    if (!isSupported(version)) {
        return {Orbx::eInvalidInput, module.name() + " was built for host interface " + versionText(version) +
                                         ", this host has " + versionText(KtRx::kApiVersion)};
    }
    return {};
}

HostResult ModuleLoader::initialise(LoadedModule& module) {
    const std::int32_t answer = send(module, KtRx::kInitialise);
    module.initialised_ = answer == KtRx::kDone;
    if (!module.initialised_) {
        return {Orbx::eInvalidInput,
                module.name() + " failed to initialise: it answered " + std::to_string(answer)};
    }
    return {};
}

HostResult ModuleLoader::unload(std::string_view name) {
    LoadedModule* module = find(name);
    if (module == nullptr) {
        return {Orbx::eKeyNotFound, "no module " + std::string(name) + " is loaded"};
    }
    if (HostResult refused = refuseWhileModuleCodeRuns(std::string(name) + " cannot be unloaded"); !refused) {
        return refused;
    }
    send(*module, KtRx::kUnload);
    release(*module);
    return {};
}

HostResult ModuleLoader::unloadAll() {
    while (!modules_.empty()) {
        if (HostResult result = unload(modules_.back()->name()); !result) {
            return result;
        }
    }
    return {};
}

std::int32_t ModuleLoader::send(LoadedModule& module, std::uint32_t message) {
    const auto entryPoint = reinterpret_cast<EntryPoint>(module.exportOf(kEntryPointName));
    const ModuleCodeScope scope(ModuleCodeKind::entryPoint, module.name());
    LoadedModule* outer = std::exchange(running_, &module);
    if (tracing()) {
        TraceLine("entry point").field("module", module.name()).field("message", std::int64_t{message});
    }
    std::int32_t answer = KtRx::kError;
    try {
        answer = entryPoint(message, &module);
    } catch (const std::exception& thrown) {
        report("the entry point of " + module.name() + " threw: " + thrown.what());
    } catch (...) {
        report("the entry point of " + module.name() + " threw something that is no std::exception");
    }
    if (tracing()) {
        TraceLine("entry point answer").field("module", module.name()).field("answer", answer);
    }
    running_ = outer;
    return answer;
}

void ModuleLoader::sendToAll(std::uint32_t message) {
    const std::size_t count = modules_.size(); // more may be loaded meanwhile, none unloaded
    for (std::size_t i = 0; i < count; ++i) {
        if (modules_[i]->initialised_) {
            send(*modules_[i], message);
        }
    }
}

void ModuleLoader::release(LoadedModule& module) {
    traceModule("module unload", module.name());
    if (onLeaving) {
        onLeaving(module);
    }
    unloaded_.push_back({module.name(), module.range()});
    std::erase_if(modules_, [&module](const auto& held) { return held.get() == &module; });
}

void ModuleLoader::reuse(const AddressRange& range) {
    std::erase_if(unloaded_, [&range](const UnloadedModule& gone) { return gone.range.overlaps(range); });
}

LoadedModule* ModuleLoader::find(std::string_view name) const {
    const auto found =
        std::ranges::find_if(modules_, [name](const auto& module) { return module->name() == name; });
    return found == modules_.end() ? nullptr : found->get();
}

void* ModuleLoader::exportOf(std::string_view moduleName, const char* symbol) const {
    const LoadedModule* module = find(moduleName);
    return module == nullptr ? nullptr : module->exportOf(symbol);
}

const LoadedModule* ModuleLoader::moduleAt(const void* address) const {
    const auto found = std::ranges::find_if(
        modules_, [address](const auto& module) { return module->range().contains(address); });
    return found == modules_.end() ? nullptr : found->get();
}

const std::string* ModuleLoader::unloadedModuleAt(const void* address) const {
    const auto found = std::ranges::find_if(
        unloaded_, [address](const UnloadedModule& gone) { return gone.range.contains(address); });
    return found == unloaded_.end() ? nullptr : &found->name;
}

bool ModuleLoader::markMdiAware(const void* applicationId) {
    const auto found = std::ranges::find_if(
        modules_, [applicationId](const auto& module) { return module.get() == applicationId; });
    if (found == modules_.end()) {
        return false;
    }
    (*found)->mdiAware_ = true;
    return true;
}

HMODULE ModuleLoader::loadResource(const wchar_t* name) {
    const std::filesystem::path bare(name == nullptr ? L"" : name);
    if (Faults::instance().next(HostCall::loadResource) != Orbx::eOk || running_ == nullptr || bare.empty() ||
        bare != bare.filename()) {
        return nullptr;
    }
    std::string systemReason;
    SharedLibrary library = SharedLibrary::open(running_->file().parent_path() / bare, systemReason);
    if (tracing()) {
        TraceLine("resource load").field("name", name).field("loaded", static_cast<bool>(library));
    }
    if (!library) {
        return nullptr;
    }
    reuse(library.range());
    resources_.push_back(std::move(library));
    return resources_.back().handle();
}

bool ModuleLoader::freeResource(HMODULE library) {
    const auto held = std::ranges::find_if(
        resources_, [library](const SharedLibrary& resource) { return resource.handle() == library; });
    if (Faults::instance().next(HostCall::freeResource) != Orbx::eOk || held == resources_.end()) {
        return false;
    }
    resources_.erase(held);
    return true;
}

} // namespace kthost

bool ktrxRegisterAppMDIAware(void* applicationId) {
    kthost::ModuleLoader* modules = kthost::ModuleLoader::current();
    return modules != nullptr && modules->markMdiAware(applicationId);
}
