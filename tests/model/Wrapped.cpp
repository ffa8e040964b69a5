// What the linker puts in place of the module's exports and of the host's call of a client, in programs that
// hold the model against the module. Without a twin they are what they stand for.

#include "tests/model/Observer.h"
#include "tests/model/Twin.h"

#include <ktdx/KtDxNotify.h>

using ktmodel::Model;
using ktmodel::numberOf;
using ktmodel::Twin;

// NOLINTBEGIN(bugprone-reserved-identifier,clang-diagnostic-reserved-identifier): the linker's names
extern "C" {

std::int32_t __real_ktdxDocTimerAttach(KtApDocument* document, KtRxCallback callback, std::uint32_t interval,
                                       std::int32_t attach);
bool __real_ktdxBlockReferenceMonitorAttach(KtApDocument* document, const KtArray<KtDbObjectId>* ids,
                                            KtRxCallback callback);
void __real_ktdxBlockReferenceMonitorDetach(KtApDocument* document, KtRxCallback callback);
bool __real_ktdxUpdateBlockGraph(KtApDocument* document, bool force, bool notify);
std::int32_t __real_ktdxGetBlockRecordIdsOfKtDbTables(KtApDocument* document, KtArray<KtDbObjectId>* ids);
std::int32_t __real_ktdxGetKtDbTableIds(KtApDocument* document, KtArray<KtDbObjectId>* ids);
void __real__Z8ktrxCallPFvvE(KtRxCallback callback);

std::int32_t __wrap_ktdxDocTimerAttach(KtApDocument* document, KtRxCallback callback, std::uint32_t interval,
                                       std::int32_t attach) {
    const auto real = [=] { return __real_ktdxDocTimerAttach(document, callback, interval, attach); };
    if (Twin::current() == nullptr) {
        return real();
    }
    const auto expected = [=](Model& model) {
        return document != nullptr && callback != nullptr &&
               model.attachTimer(document, numberOf(callback), interval, attach != 0);
    };
    return Twin::current()->exportCalled<std::int32_t>("ktdxDocTimerAttach", expected, real);
}

bool __wrap_ktdxBlockReferenceMonitorAttach(KtApDocument* document, const KtArray<KtDbObjectId>* ids,
                                            KtRxCallback callback) {
    const auto real = [=] { return __real_ktdxBlockReferenceMonitorAttach(document, ids, callback); };
    if (Twin::current() == nullptr) {
        return real();
    }
    const auto expected = [=](Model& model) {
        return document != nullptr && ids != nullptr && callback != nullptr &&
               model.attach(document, *ids, numberOf(callback));
    };
    return Twin::current()->exportCalled<bool>("ktdxBlockReferenceMonitorAttach", expected, real);
}

void __wrap_ktdxBlockReferenceMonitorDetach(KtApDocument* document, KtRxCallback callback) {
    if (Twin::current() != nullptr && document != nullptr && callback != nullptr) {
        Twin::current()->model().detach(document, numberOf(callback));
    }
    __real_ktdxBlockReferenceMonitorDetach(document, callback);
}

bool __wrap_ktdxUpdateBlockGraph(KtApDocument* document, bool force, bool notify) {
    const auto real = [=] { return __real_ktdxUpdateBlockGraph(document, force, notify); };
    if (Twin::current() == nullptr) {
        return real();
    }
    const auto expected = [=](Model& model) {
        return document != nullptr && model.update(document, force, notify);
    };
    return Twin::current()->exportCalled<bool>("ktdxUpdateBlockGraph", expected, real);
}

std::int32_t __wrap_ktdxGetBlockRecordIdsOfKtDbTables(KtApDocument* document, KtArray<KtDbObjectId>* ids) {
    const auto real = [=] { return __real_ktdxGetBlockRecordIdsOfKtDbTables(document, ids); };
    if (Twin::current() == nullptr) {
        return real();
    }
    const auto expected = [=](Model& model) {
        return document != nullptr && ids != nullptr && model.queryTables(document);
    };
    return Twin::current()->exportCalled<std::int32_t>("ktdxGetBlockRecordIdsOfKtDbTables", expected, real);
}

std::int32_t __wrap_ktdxGetKtDbTableIds(KtApDocument* document, KtArray<KtDbObjectId>* ids) {
    const auto real = [=] { return __real_ktdxGetKtDbTableIds(document, ids); };
    if (Twin::current() == nullptr) {
        return real();
    }
    const auto expected = [=](Model& model) {
        return document != nullptr && ids != nullptr && model.queryTables(document);
    };
    return Twin::current()->exportCalled<std::int32_t>("ktdxGetKtDbTableIds", expected, real);
}

/// `ktrxCall`
void __wrap__Z8ktrxCallPFvvE(KtRxCallback callback) {
    if (Twin::current() == nullptr) {
        __real__Z8ktrxCallPFvvE(callback);
    } else {
        Twin::current()->clientCalled(callback, &__real__Z8ktrxCallPFvvE);
    }
}

} // extern "C"

// NOLINTEND(bugprone-reserved-identifier,clang-diagnostic-reserved-identifier)
