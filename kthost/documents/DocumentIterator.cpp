#include "kthost/documents/DocumentIterator.h"

#include "kthost/documents/DocumentManager.h"

#include <algorithm>

namespace kthost {

DocumentIterator::DocumentIterator(const DocumentManager& manager)
    : manager_(manager),
      documents_(manager.documents()) {}

void DocumentIterator::step() {
    if (!done()) {
        ++position_;
        skipClosed();
    }
}

KtApDocument* DocumentIterator::document() const {
    return done() ? nullptr : documents_[position_];
}

void DocumentIterator::skipClosed() {
    const auto& open = manager_.documents();
    while (!done() && std::ranges::find(open, documents_[position_]) == open.end()) {
        ++position_;
    }
}

} // namespace kthost
