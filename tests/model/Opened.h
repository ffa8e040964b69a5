#pragma once

#include <KtDbObject.h>

namespace ktmodel {

/// An object that is open for as long as this lives, if it could be opened.
template <class T>
class Opened {
public:
    Opened(KtDbObjectId id, KtDb::OpenMode mode, bool erasedToo = false)
        : status_(ktdbOpenObject(object_, id, mode, erasedToo)) {}

    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    ~Opened() {
        if (object_ != nullptr) {
            static_cast<void>(object_->close()); // it is open
        }
    }

    explicit operator bool() const { return object_ != nullptr; }

    T* operator->() const { return object_; }

    T& operator*() const { return *object_; }

    Orbx::ErrorStatus status() const { return status_; }

private:
    T* object_ = nullptr;
    Orbx::ErrorStatus status_;
};

} // namespace ktmodel
