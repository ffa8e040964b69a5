#include "kthost/database/IdRun.h"

namespace kthost {

void IdRun::append(KtDbObjectId id) {
    if (list_ != nullptr) {
        list_->push_back(id);
    } else if (count_ == 0 || id.asUnsigned() == first_.asUnsigned() + count_) {
        first_ = count_ == 0 ? id : first_;
        ++count_;
    } else {
        auto list = std::make_unique<std::vector<KtDbObjectId>>();
        list->reserve(count_ + 1);
        for (std::size_t i = 0; i < count_; ++i) {
            list->push_back((*this)[i]);
        }
        list->push_back(id);
        list_ = std::move(list);
    }
}

} // namespace kthost
