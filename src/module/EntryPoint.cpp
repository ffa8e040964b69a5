#include "module/EntryPoint.h"

#include <AppFramework.h>
#include <KtRxClass.h>
#include <KtRxDictionary.h>
#include <KtRxModule.h>
#include <KtRxService.h>
#include <KtUtResource.h>

#include "app/KtDxApplication.h"
#include "module/Module.h"

#include <new>
#include <utility>

KtDxApplication* gApplication = nullptr;
HMODULE gResourceInstance = nullptr;

namespace {

constexpr const wchar_t* kServiceName = L"KtDxNotify";
constexpr const wchar_t* kModuleFile = L"KtDxNotify.kmx";
constexpr const wchar_t* kResourceLibrary = L"KtDxNotifyRes.dll";
constexpr const wchar_t* kServiceDictionary = L"ServiceDictionary";
constexpr UINT kStopIcon = 0x10;

void reportMissingResources() {
    // Put together beforehand: want of memory may be why the library is missing, and must not keep this
    // unsaid.
    AfxMessageBox(L"Unable to load resource DLL: KtDxNotifyRes.dll", kStopIcon, 0);
}

void makeApplication() {
    if (gApplication == nullptr) {
        // The host is not told when there is no memory for it: the exports then fail one by one, and the
        // service stays registered until unload.
        gApplication = new (std::nothrow) KtDxApplication;
    }
}

std::int32_t initialise(void* applicationId) {
    GetModuleHandleW(kModuleFile); // the handle is of no use here
    gResourceInstance = KtUtResource::loadDll(kResourceLibrary, 0, 0);
    if (gResourceInstance == nullptr) {
        reportMissingResources();
        return KtRx::kError;
    }
    if (ktrxServiceIsRegistered(kServiceName)) {
        // The resource library stays loaded: it may be the one that the registered module is using.
        return KtRx::kError;
    }
    ktrxRegisterService(kServiceName);
    ktrxRegisterAppMDIAware(applicationId);
    makeApplication();
    return KtRx::kDone;
}

KtRxDictionary* serviceDictionary() {
    KtRxObject* found = ktrxSysRegistry()->at(kServiceDictionary);
    const bool isDictionary = found != nullptr && found->isA()->isDerivedFrom(KtRxDictionary::desc());
    return isDictionary ? static_cast<KtRxDictionary*>(found) : nullptr;
}

void removeService() {
    // Asked a second time for the removal itself: what answered the first may have been replaced.
    if (serviceDictionary() == nullptr) {
        return;
    }
    KtRxDictionary* services = serviceDictionary();
    KtRxObject* removed = services == nullptr ? nullptr : services->remove(kServiceName);
    if (removed != nullptr && removed->isA()->isDerivedFrom(KtRxService::desc())) {
        delete removed;
    }
}

std::int32_t unload() {
    // While it takes its records down, what they let go of may still look for the registry: the object itself
    // clears the pointer to it, last.
    delete gApplication;
    gApplication = nullptr;
    if (ktrxServiceIsRegistered(kServiceName)) {
        removeService();
    }
    if (KtUtResource::freeDll(gResourceInstance, 0)) {
        gResourceInstance = nullptr;
    }
    return KtRx::kDone;
}

} // namespace

std::int32_t ktrxEntryPoint(std::uint32_t message, void* applicationId) {
    switch (message) {
    case KtRx::kInitialise:
        return initialise(applicationId);
    case KtRx::kUnload:
        return unload();
    default:
        return KtRx::kDone;
    }
}

std::uint32_t ktrxGetApiVersion(std::uint32_t /*hostVersion*/) {
    return KtRx::kApiVersion;
}
