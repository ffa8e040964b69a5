#pragma once

#include <KtDbObjectId.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// What has been recorded of all open drawings at one moment: plain values, taken from the module or from the
/// model of it, to be compared. Objects are named by their ids, monitors by the id of the definition that
/// they watch, client callbacks by their number in ascending order of address.
namespace ktmodel {

using Ids = std::vector<KtDbObjectId>;
using IdSet = std::set<KtDbObjectId>;
using CallbackNumber = std::size_t;

struct TimerSnapshot {
    bool enabled = false;
    std::uint32_t interval = 0;
    std::uint32_t startTick = 0;
    bool repeating = true;

    bool operator==(const TimerSnapshot&) const = default;
};

/// One definition's monitor.
struct MonitorSnapshot {
    bool enabled = false;
    bool changed = false;
    bool needsUpdate = false;
    Ids recordIds;
    std::map<KtDbObjectId, Ids> references; ///< by container
    std::map<KtDbObjectId, Ids> attributes; ///< by reference
    std::set<CallbackNumber> callbacks;

    bool operator==(const MonitorSnapshot&) const = default;
};

/// A block and a container to ask the block graph about.
struct GraphQuestion {
    KtDbObjectId block;
    KtDbObjectId container;

    // NOLINTNEXTLINE(modernize-use-nullptr): the zero inside a defaulted comparison is no pointer
    auto operator<=>(const GraphQuestion&) const = default;
};

struct NestedAnswer {
    int status = 0;
    IdSet blocks;

    bool operator==(const NestedAnswer&) const = default;
};

struct GraphAnswer {
    std::uint32_t direct = 0;    ///< references of the block in the container
    std::uint32_t recursive = 0; ///< the same, through blocks in the container
    std::uint32_t inModelSpace = 0;
    std::uint32_t inModelSpaceRecursive = 0;
    std::uint32_t inLayouts = 0;
    std::uint32_t inLayoutsRecursive = 0;
    NestedAnswer nested; ///< in the container
    NestedAnswer nestedRecursive;
    KtDbObjectId xrefBlock; ///< that stands for the container's drawing

    bool operator==(const GraphAnswer&) const = default;
};

/// One drawing's block table monitor.
struct BlocksSnapshot {
    bool enabled = false;
    bool rescanNeeded = false;
    bool pendingChanges = false;
    KtDbObjectId modelSpace;
    Ids layouts;
    std::int32_t monitoredCount = 0;
    std::map<KtDbObjectId, KtDbObjectId> monitorOfKey; ///< the null id for a key without a monitor
    std::map<KtDbObjectId, MonitorSnapshot> monitors;  ///< by the id of the definition
    std::optional<TimerSnapshot> timer;
    std::map<GraphQuestion, GraphAnswer> answers; ///< to the questions asked

    bool operator==(const BlocksSnapshot&) const = default;
};

/// Callbacks that clients have attached to a document's idle checks.
struct IdleClientsSnapshot {
    TimerSnapshot timer;
    bool enabled = false;
    std::set<CallbackNumber> callbacks;

    bool operator==(const IdleClientsSnapshot&) const = default;
};

struct DocumentSnapshot {
    bool enabled = false;
    std::optional<BlocksSnapshot> blocks;
    std::optional<IdleClientsSnapshot> idleClients;

    bool operator==(const DocumentSnapshot&) const = default;
};

/// A reactor, named by what owns it: the definition of a monitor, or the block table of a drawing.
using ReactorName = KtDbObjectId;

struct Snapshot {
    std::map<std::wstring, DocumentSnapshot> documents;          ///< those with a record, by name
    std::map<KtDbObjectId, std::multiset<ReactorName>> reactors; ///< by the object that they are on
    bool filterRegistered = false;
    std::uint32_t timerCount = 0;
    std::vector<std::wstring> idleChecks; ///< documents of the idle-check messages since the last snapshot
    std::vector<CallbackNumber> calls;    ///< client callbacks called since the last snapshot, in order

    bool operator==(const Snapshot&) const = default;
};

/// Empty when both are equal; otherwise one line for each difference, the first `most` of them, in words.
std::string difference(const Snapshot& expected, const Snapshot& actual, std::size_t most = 20);

/// Everything in it, one fact a line.
std::string textOf(const Snapshot& snapshot);

} // namespace ktmodel
