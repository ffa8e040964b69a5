#pragma once

#include "DocumentTimer.h"
#include "Heartbeat.h"
#include "Options.h"
#include "PartsList.h"

#include <cstdint>
#include <memory>

class KtApDocument;

namespace parts {

/// What this module does for one document.
class DocumentWatch {
public:
    explicit DocumentWatch(KtApDocument& document) : document_(document), timer_(document) {}

    DocumentWatch(const DocumentWatch&) = delete;
    DocumentWatch& operator=(const DocumentWatch&) = delete;
    ~DocumentWatch() = default;

    /// A list takes the place of the one before; if it cannot be made (Refusal) that stays.
    void startList(const Options& options);
    void stopList();
    /// Throws Refusal when there is none.
    const PartsList& list() const;

    /// A heartbeat takes the place of the one before.
    void startHeartbeat(std::uint32_t milliseconds);
    void stopHeartbeat();

    void stopAll();
    void stopWithDocument();

private:
    KtApDocument& document_;
    DocumentTimer timer_;
    std::unique_ptr<PartsList> list_;
    std::unique_ptr<Heartbeat> heartbeat_;
};

} // namespace parts
