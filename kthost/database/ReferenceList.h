#pragma once

#include <KtDbObjectId.h>

#include <vector>

namespace kthost {

/// The references to one record, ascending. Appending, erasing and restoring one costs the same however many
/// there are; whoever asks next pays for the sorting out, about as much as for reading the answer.
class ReferenceList {
public:
    /// The id is greater than all before it.
    void append(KtDbObjectId reference) { living_.push_back(reference); }

    /// One of them was erased, restored or released.
    void touch() { settled_ = false; }

    const std::vector<KtDbObjectId>& living() const {
        settle();
        return living_;
    }

    const std::vector<KtDbObjectId>& erased() const {
        settle();
        return erased_;
    }

private:
    void settle() const;

    mutable std::vector<KtDbObjectId> living_;
    mutable std::vector<KtDbObjectId> erased_;
    mutable bool settled_ = true;
};

} // namespace kthost
