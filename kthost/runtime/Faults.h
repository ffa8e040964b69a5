#pragma once

#include <OrbxErrorStatus.h>

#include <array>
#include <cstddef>
#include <cstdint>

/// Faults that tests ask the host for: the k-th call of a kind from now on fails with a status, once or from
/// then on. Calls are counted whether or not a fault is armed. User-interface thread only.
namespace kthost {

enum class HostCall : std::uint8_t {
    openObject,
    addReactor,
    removeReactor,
    newTableIterator,
    getRecordId,
    getName,
    getIdAt,
    getBlockReferenceIds,
    getErasedBlockReferenceIds,
    attributeIterator,
    entityIterator,
    getXData,
    createTable,
    originalBlockTableRecord,
    getEvalGraph,
    getRepresentations,
    documentIterator,
    documentManager, ///< ktDocManagerPtr gives null
    registerFilter,
    removeFilter,
    loadResource,
    freeResource,
    kCount,
};

class Faults {
public:
    static Faults& instance() { return instance_; }

    /// The `k`-th call from now on (1 is the next) fails with `status`; with `andAllAfter` those behind it do
    /// too.
    void fail(HostCall call, std::uint64_t k, Orbx::ErrorStatus status, bool andAllAfter = false);
    /// Disarms every fault and sets the counters to 0.
    void reset();

    std::uint64_t calls(HostCall call) const { return switches_[static_cast<std::size_t>(call)].calls; }

    /// Asked by the host at the start of each such call: the status to fail with, eOk to go on.
    Orbx::ErrorStatus next(HostCall call) {
        Switch& fault = switches_[static_cast<std::size_t>(call)];
        ++fault.calls;
        if (fault.first == 0 || fault.calls < fault.first ||
            (fault.calls > fault.first && !fault.andAllAfter)) {
            return Orbx::eOk;
        }
        return fault.status;
    }

private:
    struct Switch {
        std::uint64_t calls = 0;
        std::uint64_t first = 0; // number of the call that fails; 0 when none does
        Orbx::ErrorStatus status = Orbx::eOk;
        bool andAllAfter = false;
    };

    static Faults instance_;

    std::array<Switch, static_cast<std::size_t>(HostCall::kCount)> switches_{};
};

} // namespace kthost
