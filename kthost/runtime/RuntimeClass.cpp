#include "kthost/runtime/RuntimeClass.h"

#include <utility>

namespace kthost {

RuntimeClass::RuntimeClass(const wchar_t* name, KtRxClass* parent) : name_(name), parent_(parent) {}

bool RuntimeClass::isDerivedFrom(const KtRxClass* ancestor) const {
    const KtRxClass* current = this;
    while (current != nullptr && current != ancestor) {
        current = current->parent();
    }
    return current != nullptr;
}

KtRxObject* RuntimeClass::queryX(const KtRxClass* protocol) const {
    for (const Extension& extension : extensions_) {
        if (extension.protocol == protocol) {
            return extension.object;
        }
    }
    return parent_ == nullptr ? nullptr : parent_->queryX(protocol);
}

KtRxObject* RuntimeClass::addX(const KtRxClass* protocol, KtRxObject* extension) {
    for (Extension& present : extensions_) {
        if (present.protocol == protocol) {
            return std::exchange(present.object, extension);
        }
    }
    extensions_.push_back({protocol, extension});
    return nullptr;
}

KtRxObject* RuntimeClass::removeX(const KtRxClass* protocol) {
    for (auto present = extensions_.begin(); present != extensions_.end(); ++present) {
        if (present->protocol == protocol) {
            KtRxObject* removed = present->object;
            extensions_.erase(present);
            return removed;
        }
    }
    return nullptr;
}

} // namespace kthost
