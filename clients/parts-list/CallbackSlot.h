#pragma once

#include <KtRxCallback.h>

#include <cstddef>
#include <functional>

namespace parts {

/// A plain function of its own for each object that wants to be called back. Callbacks take no argument, and
/// several documents are watched at once: only a different function can say which one has changed.
///
/// A slot is taken as long as the object lives. A call that comes later (the caller may have gathered its
/// functions before) does nothing. What the called function throws is reported on the console: other modules'
/// frames are no place for it.
class CallbackSlot {
public:
    /// Three for each document that is watched.
    static constexpr std::size_t kMost = 192;

    /// Throws Refusal when all are taken.
    explicit CallbackSlot(std::function<void()> call);
    CallbackSlot(const CallbackSlot&) = delete;
    CallbackSlot& operator=(const CallbackSlot&) = delete;
    ~CallbackSlot();

    KtRxCallback function() const;

private:
    std::size_t number_;
};

} // namespace parts
