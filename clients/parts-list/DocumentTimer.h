#pragma once

#include <KtRxCallback.h>

#include <cstdint>
#include <vector>

class KtApDocument;

namespace parts {

/// The document timer as this module uses it. A document has one interval for all callbacks, that of the
/// latest call; so the shortest interval that anybody here wants is asked for each time, and whoever wants a
/// longer one has to look at the clock.
class DocumentTimer {
public:
    explicit DocumentTimer(KtApDocument& document) : document_(&document) {}

    /// Throws Refusal when the document cannot be watched.
    void attach(KtRxCallback callback, std::uint32_t milliseconds);
    void detach(KtRxCallback callback);

private:
    struct Wish {
        KtRxCallback callback;
        std::uint32_t milliseconds;
    };

    std::uint32_t shortest() const;

    KtApDocument* document_;
    std::vector<Wish> wishes_;
};

} // namespace parts
