#pragma once

#include <KtDbObjectId.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace kthost {

/// A short list of ids, in the order of their appending, that needs memory of its own only when they do not
/// follow each other: the attributes of a reference are nearly always made in one go.
class IdRun {
public:
    std::size_t size() const { return list_ == nullptr ? count_ : list_->size(); }

    KtDbObjectId operator[](std::size_t index) const {
        return list_ == nullptr ? KtDbObjectId(first_.asUnsigned() + index) : (*list_)[index];
    }

    void append(KtDbObjectId id);

    /// Leaves out the ids for which `gone(id)`.
    template <typename Gone>
    void removeIf(Gone gone) {
        IdRun kept;
        for (std::size_t i = 0; i < size(); ++i) {
            if (!gone((*this)[i])) {
                kept.append((*this)[i]);
            }
        }
        *this = std::move(kept);
    }

private:
    KtDbObjectId first_;
    std::uint32_t count_ = 0;
    std::unique_ptr<std::vector<KtDbObjectId>> list_;
};

} // namespace kthost
