#include "tests/model/Observer.h"

#include "tests/model/Private.h"
#include "tests/model/Unnoticed.h"

#include "app/KtDxApplication.h"
#include "blocks/KtDxBlock.h"
#include "blocks/KtDxBlocks.h"
#include "kthost/database/OpenObjects.h"
#include "notify/KtDxCmdLineHook.h"
#include "notify/KtDxExternalClientTimerReactor.h"
#include "notify/KtDxTimer.h"

#include <KtApDocManager.h>
#include <KtDbDatabase.h>

#include <memory>

namespace ktmodel {

struct BlocksOfDocument {
    friend KtDxBlocks* KtDxDocument::*memberOf(BlocksOfDocument);
};

template struct Reveal<BlocksOfDocument, &KtDxDocument::blockMonitor_>;

struct TimerOfDocument {
    friend KtDxTimer* KtDxDocument::*memberOf(TimerOfDocument);
};

template struct Reveal<TimerOfDocument, &KtDxDocument::timer_>;

struct ClientsOfDocument {
    friend KtDxExternalClientTimerReactor* KtDxDocument::*memberOf(ClientsOfDocument);
};

template struct Reveal<ClientsOfDocument, &KtDxDocument::clientReactor_>;

struct TimerOfBlocks {
    friend KtDxTimer* KtDxBlocks::*memberOf(TimerOfBlocks);
};

template struct Reveal<TimerOfBlocks, &KtDxBlocks::timer_>;

struct StartOfTimer {
    friend std::uint32_t KtDxTimer::*memberOf(StartOfTimer);
};

template struct Reveal<StartOfTimer, &KtDxTimer::startTick_>;

namespace {

/// Stands for a place where the module keeps nothing although it should keep an array.
const Ids kNoArray = {KtDbObjectId()};

Ids idsOf(const KtArray<KtDbObjectId>& array) {
    return {array.begin(), array.end()};
}

Ids idsOf(const std::unique_ptr<KtDbObjectIdArray>& array) {
    return array == nullptr ? kNoArray : idsOf(*array);
}

template <class Map>
std::map<KtDbObjectId, Ids> listsOf(const Map& map) {
    std::map<KtDbObjectId, Ids> lists;
    for (const auto& [key, array] : map) {
        lists[key] = idsOf(array);
    }
    return lists;
}

template <class Callbacks>
std::set<CallbackNumber> numbersOf(const Callbacks& callbacks) {
    std::set<CallbackNumber> numbers;
    for (const KtRxCallback callback : callbacks) {
        numbers.insert(numberOf(callback));
    }
    return numbers;
}

TimerSnapshot observe(const KtDxTimer& timer) {
    return {timer.isEnabled(), timer.interval(), timer.*memberOf(StartOfTimer()), timer.isRepeating()};
}

MonitorSnapshot observe(KtDxBlock& monitor) {
    MonitorSnapshot snapshot;
    snapshot.enabled = monitor.isEnabled();
    snapshot.changed = monitor.isChanged();
    snapshot.needsUpdate = monitor.needsUpdate();
    snapshot.recordIds = idsOf(monitor.recordIds());
    snapshot.references = listsOf(*monitor.references());
    snapshot.attributes = listsOf(monitor.attributesByReference());
    snapshot.callbacks = numbersOf(*monitor.callbacks());
    return snapshot;
}

NestedAnswer nestedIn(KtDxBlocks& blocks, KtDbObjectId container, bool recursive) {
    NestedAnswer answer;
    answer.status = blocks.collectNestedBlocks(container, recursive, answer.blocks);
    return answer;
}

GraphAnswer answer(KtDxBlocks& blocks, const GraphQuestion& question) {
    const auto& [block, container] = question;
    GraphAnswer answer;
    answer.direct = blocks.countReferences(block, container, false);
    answer.recursive = blocks.countReferences(block, container, true);
    answer.inModelSpace = blocks.countInstances(block, true, false);
    answer.inModelSpaceRecursive = blocks.countInstances(block, true, true);
    answer.inLayouts = blocks.countInstances(block, false, false);
    answer.inLayoutsRecursive = blocks.countInstances(block, false, true);
    answer.nested = nestedIn(blocks, container, false);
    answer.nestedRecursive = nestedIn(blocks, container, true);
    answer.xrefBlock = blocks.findXrefBlock(container);
    return answer;
}

BlocksSnapshot observe(KtDxBlocks& blocks, const std::vector<GraphQuestion>& questions) {
    BlocksSnapshot snapshot;
    snapshot.enabled = blocks.isEnabled();
    snapshot.rescanNeeded = blocks.isRescanNeeded();
    snapshot.pendingChanges = blocks.hasPendingChanges();
    snapshot.modelSpace = blocks.modelSpaceId();
    snapshot.layouts = idsOf(blocks.layoutIds());
    snapshot.monitoredCount = blocks.monitoredCount();
    for (const auto& [key, monitor] : blocks.blockMonitors()) {
        snapshot.monitorOfKey[key] = monitor == nullptr ? KtDbObjectId() : monitor->blockId();
        if (monitor != nullptr) {
            snapshot.monitors[monitor->blockId()] = observe(*monitor);
        }
    }
    if (const KtDxTimer* timer = blocks.*memberOf(TimerOfBlocks())) {
        snapshot.timer = observe(*timer);
    }
    for (const GraphQuestion& question : questions) {
        snapshot.answers[question] = answer(blocks, question);
    }
    return snapshot;
}

DocumentSnapshot observe(KtDxDocument& record, const std::vector<GraphQuestion>& questions) {
    DocumentSnapshot snapshot;
    snapshot.enabled = record.isEnabled();
    if (KtDxBlocks* blocks = record.*memberOf(BlocksOfDocument())) {
        snapshot.blocks = observe(*blocks, questions);
    }
    const KtDxTimer* timer = record.*memberOf(TimerOfDocument());
    const KtDxExternalClientTimerReactor* clients = record.*memberOf(ClientsOfDocument());
    if (timer != nullptr && clients != nullptr) {
        snapshot.idleClients = {observe(*timer), clients->isEnabled(), numbersOf(clients->listeners())};
    }
    return snapshot;
}

/// Records of the open documents.
std::map<std::wstring, KtDxDocument*> records() {
    std::map<std::wstring, KtDxDocument*> all;
    const std::unique_ptr<KtApDocumentIterator> open(ktDocManagerPtr()->newDocumentIterator());
    for (; gApplication != nullptr && !open->done(); open->step()) {
        if (KtDxDocument* record = gApplication->getData(open->document(), false)) {
            all[open->document()->name()] = record;
        }
    }
    return all;
}

std::map<const KtDbObjectReactor*, ReactorName> reactorNames() {
    std::map<const KtDbObjectReactor*, ReactorName> names;
    for (const auto& [name, record] : records()) {
        const KtDxBlocks* blocks = record->*memberOf(BlocksOfDocument());
        if (blocks == nullptr) {
            continue;
        }
        names[blocks] = blocks->database()->blockTableId();
        for (const auto& [key, monitor] : blocks->blockMonitors()) {
            if (monitor != nullptr) {
                names[monitor] = monitor->blockId();
            }
        }
    }
    return names;
}

/// Address of the object's table of virtual functions, which tells its class.
template <class Class>
const void* tableOf(const Class& object) {
    return *reinterpret_cast<const void* const*>(&object);
}

bool isOfTheModule(const kthost::AttachedReactor& attached) {
    static const KtDxBlock block;
    static const KtDxBlocks blocks;
    return attached.code == tableOf(block) || attached.code == tableOf(blocks);
}

/// A reactor that nothing of the module owns any more is named by the null id.
std::map<KtDbObjectId, std::multiset<ReactorName>> reactorsOnObjects() {
    const auto names = reactorNames();
    std::map<KtDbObjectId, std::multiset<ReactorName>> all;
    for (const kthost::AttachedReactor& attached : kthost::attachedReactors()) {
        const auto name = names.find(attached.reactor);
        if (name != names.end()) {
            all[attached.id].insert(name->second);
        } else if (isOfTheModule(attached)) {
            all[attached.id].insert(ReactorName());
        }
    }
    return all;
}

} // namespace

CallbackNumber numberOf(KtRxCallback callback) {
    return reinterpret_cast<CallbackNumber>(callback);
}

Snapshot observe(const std::map<std::wstring, std::vector<GraphQuestion>>& questions) {
    const Unnoticed unnoticed;
    Snapshot snapshot;
    for (const auto& [name, record] : records()) {
        const auto asked = questions.find(name);
        snapshot.documents[name] =
            observe(*record, asked == questions.end() ? std::vector<GraphQuestion>() : asked->second);
    }
    snapshot.reactors = reactorsOnObjects();
    snapshot.filterRegistered = gCmdLineHook != nullptr && gCmdLineHook->isEnabled();
    snapshot.timerCount = gTimerCount;
    return snapshot;
}

bool blocksTimerIsFirst(KtApDocument& document) {
    const Unnoticed unnoticed;
    KtDxDocument* record = gApplication == nullptr ? nullptr : gApplication->getData(&document, false);
    const KtDxBlocks* blocks = record == nullptr ? nullptr : record->*memberOf(BlocksOfDocument());
    return blocks != nullptr && !record->enabledTimers().empty() &&
           *record->enabledTimers().begin() == blocks->*memberOf(TimerOfBlocks());
}

} // namespace ktmodel
