#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

namespace kthost {

/// The host's own way of opening for write, erased objects included: no fault strikes it and no trace shows
/// it. `close` ends it as any closing does. Without that, when an exception or a refusal ends the scope, it
/// ends without a word, which is right only as long as nothing was changed.
class WriteOpening {
public:
    explicit WriteOpening(KtDbObjectId id);
    WriteOpening(const WriteOpening&) = delete;
    WriteOpening& operator=(const WriteOpening&) = delete;
    ~WriteOpening();

    Orbx::ErrorStatus status() const { return status_; }

    void close();

private:
    KtDbObjectId id_;
    Orbx::ErrorStatus status_;
    bool open_;
};

/// Why the object cannot be opened for write; eOk when it can. Erased objects can.
Orbx::ErrorStatus refusalToWrite(KtDbObjectId id);

} // namespace kthost
