#pragma once

#include "PlacedReference.h"

#include <string>
#include <unordered_map>
#include <vector>

class KtDbBlockReference;

namespace parts {

/// Of records.
using BlockNames = std::unordered_map<KtDbObjectId, std::wstring>;

/// Reads references, and keeps what it has read: most of a drawing stays as it is from one list to the next.
/// Whoever keeps one has to have it forget what has been touched. What the drawing would not tell all of, for
/// whatever reason, is read again each time.
class ReferenceReader {
public:
    /// The living references to these records with their attributes and designations, record by record.
    /// References in a container that is itself erased are left out. Takes time proportional to what is
    /// listed, and opens only what it does not know. They stay until the next call, of any kind. Throws
    /// InUse.
    PlacedReferences read(const std::vector<KtDbObjectId>& records);

    /// False when it does not know it.
    bool forget(KtDbObjectId reference) { return known_.erase(reference) != 0; }

    void forgetAll() { known_.clear(); }

private:
    struct Known {
        PlacedReference reference;
        bool isWhole = true;
    };

    const PlacedReference* find(KtDbObjectId reference, BlockNames& names);
    static Known read(const KtDbBlockReference& reference, BlockNames& names);
    void forgetOthersThan(const PlacedReferences& listed);

    std::unordered_map<KtDbObjectId, Known> known_;
};

/// Ids of the living references to these records, record by record. Throws InUse.
std::vector<KtDbObjectId> listReferences(const std::vector<KtDbObjectId>& records);

} // namespace parts
