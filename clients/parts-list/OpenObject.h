#pragma once

#include <KtDbObject.h>

namespace parts {

/// An object opened for as long as this lives. Empty when it could not be opened.
template <typename T>
class OpenObject {
public:
    explicit OpenObject(KtDbObjectId id, KtDb::OpenMode mode = KtDb::kForRead, bool openErased = false)
        : status_(ktdbOpenObject(object_, id, mode, openErased)) {}

    OpenObject(const OpenObject&) = delete;
    OpenObject& operator=(const OpenObject&) = delete;

    ~OpenObject() {
        if (object_ != nullptr) {
            // Nothing was kept open that closing could lose; the status has nobody to go to.
            static_cast<void>(object_->close());
        }
    }

    explicit operator bool() const { return object_ != nullptr; }

    T* operator->() const { return object_; }

    T* get() const { return object_; }

    Orbx::ErrorStatus status() const { return status_; }

private:
    T* object_ = nullptr; // set by the opening, so before the status
    Orbx::ErrorStatus status_;
};

} // namespace parts
