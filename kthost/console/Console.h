#pragma once

#include "kthost/console/Session.h"

#include <iosfwd>
#include <string_view>

namespace kthost {

/// Runs command lines, those of the host and those that modules bring.
class Console {
public:
    /// Host and stream must outlive it. What modules print goes to the stream too. The names of the host's
    /// commands are kept from modules.
    Console(Host& host, std::ostream& out, ReadProgress* progress = nullptr);
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console();

    /// Runs one line (UTF-8) and then lets the message loop do what waits, the idle check among it. A line
    /// without words does nothing. Throws CommandError when the line cannot be done; it has changed no
    /// drawing then, unless what it has to put back is kept open or changes are not kept for undo.
    void run(std::string_view line);

    Session& session() { return session_; }

private:
    Session session_;
};

} // namespace kthost
