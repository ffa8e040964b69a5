#include "TestModule.h"

#include <KtApDocManager.h>
#include <KtApDocManagerReactor.h>
#include <KtDbObject.h>
#include <KtDbObjectReactor.h>
#include <KtEd.h>
#include <KtRxCallback.h>
#include <KtRxDictionary.h>
#include <KtRxService.h>

namespace {

constexpr std::uint32_t kRegisterService = 3000;

class CarelessManagerReactor : public KtApDocManagerReactor {};

class CarelessObjectReactor : public KtDbObjectReactor {};

int filterCalls = 0;
int callbackCalls = 0;

bool carelessFilter(MSG* /*message*/) {
    ++filterCalls;
    return true;
}

bool carelessCommand(KtApDocument* /*document*/, const KtArray<const wchar_t*>& words) {
    if (words.isEmpty()) {
        ktedFail(L"no words were given");
        return false;
    }
    ktedPrint(words[0]);
    return true;
}

void carelessCallback() {
    ++callbackCalls;
}

CarelessManagerReactor managerReactor;
CarelessObjectReactor objectReactor;

} // namespace

TEST_MODULE_VERSION(KtRx::kApiVersion)

// A module that cleans nothing up: each of its exports leaves one thing behind.
TEST_MODULE_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* /*applicationId*/) {
    if (message == kRegisterService) {
        ktrxRegisterService(L"Careless");
    }
    return KtRx::kDone;
}

TEST_MODULE_EXPORT bool carelessAddFilter() {
    return ktedRegisterFilterWinMsg(carelessFilter);
}

TEST_MODULE_EXPORT bool carelessAddCommand() {
    return ktedAddCommand(L"careless", L"careless WORD", carelessCommand);
}

TEST_MODULE_EXPORT void carelessAddManagerReactor() {
    ktDocManagerPtr()->addReactor(&managerReactor);
}

TEST_MODULE_EXPORT void carelessAddObjectReactor(const KtDbObject* object) {
    static_cast<void>(object->addReactor(&objectReactor));
}

TEST_MODULE_EXPORT KtRxCallback carelessGetCallback() {
    return carelessCallback;
}

TEST_MODULE_EXPORT int carelessFilterCalls() {
    return filterCalls;
}

TEST_MODULE_EXPORT int carelessCallbackCalls() {
    return callbackCalls;
}
