#pragma once

#include <KtDbObject.h>

#include <tuple>
#include <utility>

/// Holds an opened host object and gives it back when the scope ends, on every path: closes it, or deletes it
/// if it never received an id, since such an object belongs to whoever holds it. What was opened by its id
/// has one.
template <typename T>
class OpenedObject {
public:
    OpenedObject() = default;

    OpenedObject(KtDbObjectId id, KtDb::OpenMode mode, bool openErased = false)
        : status_(ktdbOpenObject(object_, id, mode, openErased)) {}

    /// Takes over an object that something else opened; null for none.
    explicit OpenedObject(T* opened) : object_(opened), mayLackId_(true) {}

    OpenedObject(const OpenedObject&) = delete;
    OpenedObject& operator=(const OpenedObject&) = delete;

    ~OpenedObject() { close(); }

    /// Why opening failed; eOk when it did not.
    Orbx::ErrorStatus status() const { return status_; }

    explicit operator bool() const { return object_ != nullptr; }

    T* get() const { return object_; }

    T* operator->() const { return object_; }

    void close() {
        T* object = std::exchange(object_, nullptr);
        if (object == nullptr) {
            return;
        }
        if (mayLackId_ && object->objectId().isNull()) {
            delete object;
        } else {
            std::ignore = object->close(); // nothing can be done about an object that will not close
        }
    }

private:
    T* object_ = nullptr; // before the status, whose initialiser fills it
    Orbx::ErrorStatus status_ = Orbx::eOk;
    bool mayLackId_ = false;
};
