#pragma once

#include <KtDbObjectId.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

/// The trace: one JSON object a line for everything that passes between the host, its modules and their
/// clients, in the order in which it happens. User-interface thread only.
namespace kthost {

/// Starts writing to a file, replacing what it holds. False when it cannot be opened.
bool openTrace(const std::filesystem::path& file);
void closeTrace();

namespace detail {
extern bool traceOpen;
}

/// Cheap enough to be asked before every host call.
inline bool tracing() {
    return detail::traceOpen;
}

/// One line: {"n": sequence, "event": ..., fields...}, written when the object goes. Make one only while
/// tracing():
///
///     if (tracing()) {
///         TraceLine("open").field("id", id).field("mode", "read").field("status", status);
///     }
class TraceLine {
public:
    explicit TraceLine(std::string_view event);
    TraceLine(const TraceLine&) = delete;
    TraceLine& operator=(const TraceLine&) = delete;
    ~TraceLine();

    TraceLine& field(std::string_view name, std::string_view text);

    TraceLine& field(std::string_view name, const char* text) { return field(name, std::string_view(text)); }

    TraceLine& field(std::string_view name, std::wstring_view text);
    TraceLine& field(std::string_view name, const wchar_t* text); ///< null is written as null
    TraceLine& field(std::string_view name, std::int64_t number);

    TraceLine& field(std::string_view name, int number) { return field(name, std::int64_t{number}); }

    TraceLine& field(std::string_view name, bool value);
    /// The raw value, the class and, where the object has them, handle and name.
    TraceLine& field(std::string_view name, KtDbObjectId id);
    /// A function or object address, as the module that it lies in and the offset there.
    TraceLine& address(std::string_view name, const void* address);

private:
    std::string line_;
};

} // namespace kthost
