#pragma once

#include <KtDbObject.h>

#include <tuple>

namespace bench {

/// An opened object, closed when the scope ends. It has an id, by which it was opened, and so nobody here has
/// to delete it.
template <class T>
class Opened {
public:
    Opened(KtDbObjectId id, KtDb::OpenMode mode, bool openErased = false)
        : status_(ktdbOpenObject(object_, id, mode, openErased)) {}

    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    ~Opened() {
        if (object_ != nullptr) {
            std::ignore = object_->close(); // nothing can be done about one that will not close
        }
    }

    explicit operator bool() const { return object_ != nullptr; }

    T* operator->() const { return object_; }

    T* get() const { return object_; }

    Orbx::ErrorStatus status() const { return status_; }

private:
    T* object_ = nullptr; // before the status, whose initialiser fills it
    Orbx::ErrorStatus status_;
};

} // namespace bench
