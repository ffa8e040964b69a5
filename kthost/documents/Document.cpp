#include "kthost/documents/Document.h"

#include "kthost/runtime/RuntimeClass.h"

#include <utility>

KTHOST_RUNTIME_CLASS(KtApDocument, KtRxObject)

namespace kthost {

namespace {

// The modes' numbers do not tell which is the stronger.
int strengthOf(KtAp::DocLockMode mode) {
    switch (mode) {
    case KtAp::kNone:
        return 0;
    case KtAp::kNotLocked:
        return 1;
    case KtAp::kRead:
        return 2;
    case KtAp::kAutoWrite:
        return 3;
    case KtAp::kWrite:
        break;
    }
    return 4;
}

} // namespace

Document::Document(std::wstring name, std::unique_ptr<Database> database)
    : name_(std::move(name)),
      database_(std::move(database)) {}

Document::~Document() = default;

KtAp::DocLockMode Document::lockMode(bool includeOtherContexts) const {
    return strongest(locks_, includeOtherContexts);
}

KtAp::DocLockMode Document::strongest(const std::vector<Lock>& locks, bool includeOtherContexts) {
    const Lock* found = nullptr;
    for (const Lock& lock : locks) {
        const bool counts = includeOtherContexts || lock.context == LockContext::own;
        if (counts && (found == nullptr || strengthOf(lock.mode) > strengthOf(found->mode))) {
            found = &lock;
        }
    }
    return found == nullptr ? KtAp::kNotLocked : found->mode;
}

} // namespace kthost
