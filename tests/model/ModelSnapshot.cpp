#include "tests/model/GraphModel.h"
#include "tests/model/Model.h"
#include "tests/model/Unnoticed.h"

#include "kthost/database/OpenObjects.h"
#include "kthost/window/MessageLoop.h"

namespace ktmodel {

namespace {

std::map<KtDbObjectId, std::multiset<ReactorName>>
reactorsOnObjects(const std::map<const KtDbObjectReactor*, ReactorName>& names) {
    std::map<KtDbObjectId, std::multiset<ReactorName>> all;
    for (const kthost::AttachedReactor& attached : kthost::attachedReactors()) {
        if (const auto name = names.find(attached.reactor); name != names.end()) {
            all[attached.id].insert(name->second);
        }
    }
    return all;
}

} // namespace

Snapshot Model::snapshot(const std::map<std::wstring, std::vector<GraphQuestion>>& questions) {
    const Unnoticed unnoticed;
    Snapshot snapshot;
    for (const auto& [document, record] : documents_) {
        DocumentSnapshot& taken = snapshot.documents[document->name()];
        taken = record->snapshot();
        const auto asked = questions.find(document->name());
        if (taken.blocks && asked != questions.end()) {
            for (const GraphQuestion& question : asked->second) {
                taken.blocks->answers[question] = answer(*record->existingBlocks(), question);
            }
        }
    }
    snapshot.reactors = reactorsOnObjects(reactorNames());
    snapshot.filterRegistered = timers_.filterRegistered;
    snapshot.timerCount = timers_.count;
    expectNoMoreChecks();
    snapshot.idleChecks = std::exchange(expectedChecks_, {});
    snapshot.calls = passes_.takeExpected();
    return snapshot;
}

/// A message that had to be posted and is not on its way was not posted.
void Model::expectNoMoreChecks() {
    if (kthost::MessageLoop::current()->queue().empty()) {
        for (KtApDocument* document : std::exchange(posted_, {})) {
            expectedChecks_.push_back(names_[document]);
        }
    }
}

std::map<const KtDbObjectReactor*, ReactorName> Model::reactorNames() const {
    std::map<const KtDbObjectReactor*, ReactorName> names;
    for (const auto& [document, record] : documents_) {
        const BlocksModel* blocks = record->existingBlocks();
        if (blocks == nullptr) {
            continue;
        }
        names[blocks] = blocks->database()->blockTableId();
        for (const auto& [key, definition] : blocks->definitions()) {
            names[definition.get()] = definition->id();
        }
    }
    return names;
}

} // namespace ktmodel
