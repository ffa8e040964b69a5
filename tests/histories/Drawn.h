#pragma once

#include "kthost/console/Session.h"

#include <KtDbObjectId.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace histories {

/// A word as a command line takes it.
std::string inQuotes(std::string_view word);

/// Draws names at random of what is in the current drawing.
class Drawn {
public:
    Drawn(kthost::Session& session, std::uint32_t seed) : session_(session), random_(seed) {}

    /// From 0 to `most`.
    std::uint32_t number(std::uint32_t most) { return static_cast<std::uint32_t>(random_() % (most + 1)); }

    /// One time in so many.
    bool oneIn(std::uint32_t times) { return number(times - 1) == 0; }

    template <typename T>
    const T& oneOf(const std::vector<T>& all) {
        return all[number(static_cast<std::uint32_t>(all.size() - 1))];
    }

    /// False when there is no drawing to edit.
    bool hasDrawing() const;

    /// Handles; one that is nothing's when none is found.
    std::string reference() { return handleOf(false); }

    std::string erasedReference() { return handleOf(true); }

    /// A tag of a living attribute of the reference with that handle, or one that few have.
    std::string tagOf(const std::string& handle);

    /// Names in quotes. A block of any kind but a layout; one that people named; one that nothing refers to;
    /// an anonymous one; a dynamic one; a layout or, as often, another block; the record of an attached
    /// drawing.
    std::string block();
    std::string namedBlock();
    std::string idleBlock();
    std::string anonymousBlock();
    std::string dynamicBlock();
    std::string container();
    std::string attachedDrawing();
    /// Of an open document.
    std::string document();

    std::string position();
    std::string text();

private:
    using Wanted = bool (*)(KtDbObjectId);

    std::string handleOf(bool erased);
    std::string recordOf(Wanted wanted);

    kthost::Session& session_;
    std::mt19937 random_;
};

} // namespace histories
