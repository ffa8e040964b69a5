// A window into the module under test: linked to its objects, which keep their insides to themselves.

#include <ktdx/KtDxNotify.h>

#include "app/KtDxApplication.h"
#include "app/KtDxDocument.h"
#include "blocks/KtDxBlocks.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/OpenObjects.h"
#include "kthost/runtime/Utf8.h"
#include "notify/KtDxCmdLineHook.h"
#include "notify/KtDxTimer.h"
#include "tests/faults/ObservedState.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

/// Null for a record that has to do with no dynamic definition.
KtDbObjectId dynamicFamilyOf(KtDbObjectId record) {
    return kthost::isDynamic(record) ? record : kthost::representedDefinition(record);
}

std::string marksOf(KtDbObjectId id) {
    return std::string(id.isErased() ? "(erased)" : "") + (dynamicFamilyOf(id).isNull() ? "" : "(dynamic)");
}

std::string nameOf(KtDbObjectId id) {
    KtDbDatabase* database = id.isValid() ? id.database() : nullptr;
    if (database == nullptr) {
        return id.isNull() ? "none" : "gone";
    }
    return kthost::toUtf8(kthost::hostDatabase(*database).name()) + ":" +
           std::to_string(kthost::handleOf(id)) + marksOf(id);
}

std::string textOf(const KtDbObjectIdArray& ids) {
    std::string text = "[";
    for (const KtDbObjectId id : ids) {
        text += nameOf(id) + " ";
    }
    return text + "]";
}

std::string textOf(bool yes) {
    return yes ? "yes" : "no";
}

bool contains(const KtDxBlock::References& lists, KtDbObjectId id) {
    return std::ranges::any_of(
        lists, [id](const auto& entry) { return entry.second != nullptr && entry.second->contains(id); });
}

bool records(KtDxBlock& monitor, KtDbObjectId id) {
    const bool isAttribute = std::ranges::any_of(monitor.attributesByReference(), [&](const auto& entry) {
        return entry.second.contains(id) && contains(*monitor.references(), entry.first);
    });
    return isAttribute || monitor.recordIds().contains(id) || contains(*monitor.references(), id);
}

/// Whichever monitors of a dynamic definition's family record them.
void observeFamilies(const KtDxBlocks& blocks, ObservedState& state) {
    std::map<std::string, std::set<std::string>> placements;
    for (const auto& [key, monitor] : blocks.blockMonitors()) {
        const KtDbObjectId family = dynamicFamilyOf(monitor->blockId());
        for (const auto& [container, references] : *monitor->references()) {
            for (const KtDbObjectId reference : *references) {
                if (!family.isNull()) {
                    placements["placed in " + nameOf(container) + " of the family of " +
                               std::to_string(kthost::handleOf(family))]
                        .insert(nameOf(reference));
                }
            }
        }
    }
    for (const auto& [fact, references] : placements) {
        for (const std::string& reference : references) {
            state.recorded[fact] += reference + " ";
        }
    }
}

void observeMonitor(KtDxBlock& monitor, ObservedState& state) {
    const std::string name = "monitor " + nameOf(monitor.blockId());
    state.recorded[name + " needs an update"] = textOf(monitor.needsUpdate());
    state.recorded[name + " records"] = textOf(monitor.recordIds());
    for (const auto& [container, references] : *monitor.references()) {
        state.recorded[name + " references in " + nameOf(container)] =
            references == nullptr ? "no array" : textOf(*references);
    }
    state.heard[name + " is enabled"] = textOf(monitor.isEnabled());
    state.heard[name + " callbacks"] = std::to_string(monitor.callbacks()->size());
    for (const auto& [reference, attributes] : monitor.attributesByReference()) {
        state.heard[name + " attributes of " + nameOf(reference)] = textOf(attributes);
    }
}

void observeBlocks(const KtDxBlocks& blocks, ObservedState& state) {
    const std::string name = "blocks of " + nameOf(blocks.modelSpaceId());
    state.recorded[name + " need a rescan"] = textOf(blocks.isRescanNeeded());
    state.recorded[name + " layouts"] = textOf(blocks.layoutIds());
    const bool anyDynamic = std::ranges::any_of(
        blocks.blockMonitors(), [](const auto& entry) { return !dynamicFamilyOf(entry.first).isNull(); });
    state.recorded[name + " monitored" + (anyDynamic ? " (dynamic)" : "")] =
        std::to_string(blocks.monitoredCount());
    state.heard[name + " are enabled"] = textOf(blocks.isEnabled());
    for (const auto& [key, monitor] : blocks.blockMonitors()) {
        state.recorded[name + " key " + nameOf(key)] = nameOf(monitor->blockId());
        observeMonitor(*monitor, state);
    }
    observeFamilies(blocks, state);
}

/// Who hears what on the objects of a drawing.
void observeReactors(const KtDxBlocks& blocks, ObservedState& state) {
    std::map<const KtDbObjectReactor*, KtDxBlock*> monitors;
    for (const auto& [key, monitor] : blocks.blockMonitors()) {
        monitors[monitor] = monitor;
    }
    std::map<std::string, std::vector<std::string>> hearers;
    for (const kthost::AttachedReactor& attached : kthost::attachedReactors()) {
        const std::string fact = "hearers of " + nameOf(attached.id);
        if (attached.reactor == &blocks) {
            hearers[fact].push_back("the table's");
        } else if (const auto found = monitors.find(attached.reactor); found != monitors.end()) {
            KtDxBlock& monitor = *found->second;
            const bool isRecorded = records(monitor, attached.id);
            hearers[fact + (isRecorded ? " that are" : " that are not to (left)") +
                    marksOf(monitor.blockId())]
                .push_back(nameOf(monitor.blockId()));
        }
    }
    for (auto& [object, who] : hearers) {
        std::ranges::sort(who);
        for (const std::string& each : who) {
            state.heard[object] += each + " ";
        }
    }
}

} // namespace

/// Between two runs, when nothing of the module is there: its values as they are when it comes into memory.
extern "C" KTDX_EXPORT void ktdxStartAfresh() {
    gIdleCheckMessage = 0;
    gTimerCount = 0; // of records that were given up, their documents having gone without a word
    delete std::exchange(gCmdLineHook, nullptr);
}

/// Asks every question about every pair of blocks; the sum of the answers.
extern "C" KTDX_EXPORT std::uint32_t ktdxAskGraph(KtApDocument* document) {
    KtDxDocument* record = documentRecord(document, false);
    KtDxBlocks* blocks = record == nullptr ? nullptr : record->blocks();
    std::uint32_t sum = 0;
    if (blocks == nullptr) {
        return sum;
    }
    for (const auto& [block, monitor] : blocks->blockMonitors()) {
        KtDbObjectIdSet nested;
        sum += blocks->collectNestedBlocks(block, true, nested) == Orbx::eOk ? 1U : 0U;
        for (const bool yes : {false, true}) {
            sum += blocks->countInstances(block, yes, true);
            for (const auto& [container, other] : blocks->blockMonitors()) {
                sum += blocks->countReferences(block, container, yes);
            }
        }
    }
    return sum;
}

extern "C" KTDX_EXPORT void ktdxObserve(KtApDocument* document, ObservedState& state) {
    state.heard["timers"] = std::to_string(gTimerCount);
    state.heard["hook"] =
        gCmdLineHook == nullptr ? "missing" : "enabled: " + textOf(gCmdLineHook->isEnabled());
    KtDxDocument* record = documentRecord(document, false);
    if (record == nullptr) {
        return;
    }
    const std::string name = "record of " + kthost::toUtf8(document->name());
    state.heard[name + " is enabled"] = textOf(record->isEnabled());
    state.heard[name + " timers"] = std::to_string(record->enabledTimers().size());
    if (record->database() != nullptr) {
        const KtDxBlocks* blocks = record->blocks();
        if (blocks != nullptr) {
            observeBlocks(*blocks, state);
            observeReactors(*blocks, state);
        }
    }
}
