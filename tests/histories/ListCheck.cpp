#include "tests/histories/ListCheck.h"

#include "Refusal.h"
#include "Utf8.h"
#include "Watches.h"
#include "app/KtDxDocument.h"
#include "kthost/documents/Host.h"
#include "notify/KtDxTimer.h"
#include "tests/scenario_modules/puppets/Puppets.h"

#include <algorithm>

namespace histories {

namespace {

bool startsList(const std::string& line) {
    return line.starts_with("parts") && line != "parts stop" && !line.starts_with("parts heartbeat");
}

/// A client may have asked for calls that are further apart than idle checks.
bool isCalledAtEveryCheck(KtApDocument& document) {
    KtDxDocument* record = gApplication == nullptr ? nullptr : gApplication->getData(&document, false);
    return record != nullptr && std::all_of(record->enabledTimers().begin(), record->enabledTimers().end(),
                                            [](const KtDxTimer* timer) { return timer->interval() == 0; });
}

} // namespace

void ListCheck::beforeLine() {
    editsBefore_ = puppets::editsFromCallbacks();
    outburstsBefore_ = puppets::outburstsFromCallbacks();
}

void ListCheck::afterLine(const std::string& line, bool done) {
    disturbed_ = puppets::editsFromCallbacks() != editsBefore_ ||
                 puppets::outburstsFromCallbacks() != outburstsBefore_;
    if (!modules_.isNotifyLoaded()) {
        doubtAll();
    } else if (done && startsList(line)) {
        doubtful_.erase(session_.document().name());
    }
}

std::string ListCheck::failure(kthost::Document& document) {
    if (!isDue(document)) {
        return "";
    }
    try {
        const parts::PartsList& list = modules_.watches()->of(document).list();
        ++count_;
        list.check();
    } catch (const parts::Refusal& refusal) {
        const std::wstring& reason = refusal.reason();
        return reason.starts_with(L"no list is kept") ? "" : parts::toUtf8(reason);
    }
    return "";
}

bool ListCheck::isDue(kthost::Document& document) const {
    return modules_.watches() != nullptr && document.database() != nullptr && session_.held().count() == 0 &&
           !disturbed_ && !doubtful_.contains(document.name()) && isCalledAtEveryCheck(document);
}

void ListCheck::doubtAll() {
    for (const kthost::Document* document : session_.host().documents().documents()) {
        doubtful_.insert(document->name());
    }
}

} // namespace histories
