#pragma once

#include <KtDbObject.h>

#include "kthost/console/StatusText.h"

namespace kthost {

/// An object open for reading as long as this lives. Throws CommandError when it cannot be opened.
template <typename T>
class OpenForRead {
public:
    explicit OpenForRead(KtDbObjectId id) {
        require(ktdbOpenObject(object_, id, KtDb::kForRead), "an object cannot be read");
    }

    OpenForRead(const OpenForRead&) = delete;
    OpenForRead& operator=(const OpenForRead&) = delete;

    ~OpenForRead() { static_cast<void>(object_->close()); } // what was only read is always given back

    T* operator->() const { return object_; }

    T* get() const { return object_; }

private:
    T* object_ = nullptr;
};

} // namespace kthost
