#pragma once

#include <KtDbObjectId.h>

#include <vector>

namespace kthost {

/// The references to one record, ascending. Appending, erasing and restoring one costs the same however many
/// there are; whoever asks next pays for the sorting out, less than for reading the answer, since only the
/// references that were touched are looked at.
class ReferenceList {
public:
    /// The id is greater than all before it.
    void append(KtDbObjectId reference) { living_.push_back(reference); }

    /// It was erased, restored or released.
    void touch(KtDbObjectId reference);

    const std::vector<KtDbObjectId>& living() const {
        settle();
        return living_;
    }

    const std::vector<KtDbObjectId>& erased() const {
        settle();
        return erased_;
    }

private:
    void settle() const {
        if (!touched_.empty()) {
            sortOut();
        }
    }

    void sortOut() const;

    mutable std::vector<KtDbObjectId> living_;
    mutable std::vector<KtDbObjectId> erased_;
    mutable std::vector<KtDbObjectId> touched_; // since the last question; perhaps some twice
};

} // namespace kthost
