#pragma once

#include <KtApDocManager.h>

#include <cstddef>
#include <vector>

namespace kthost {

class Document;
class DocumentManager;

/// Walks the documents that were open when it was made; one that has been closed since is skipped.
class DocumentIterator final : public KtApDocumentIterator {
public:
    explicit DocumentIterator(const DocumentManager& manager);

    bool done() const override { return position_ >= documents_.size(); }

    void step() override;
    KtApDocument* document() const override;

private:
    void skipClosed();

    const DocumentManager& manager_;
    std::vector<Document*> documents_;
    std::size_t position_ = 0;
};

} // namespace kthost
