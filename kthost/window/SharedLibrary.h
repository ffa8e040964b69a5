#pragma once

#include <WindowSystem.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace kthost {

/// Addresses [begin, end) of a library in memory.
struct AddressRange {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool contains(const void* address) const {
        const auto value = reinterpret_cast<std::uintptr_t>(address);
        return begin <= value && value < end;
    }

    bool overlaps(const AddressRange& other) const { return begin < other.end && other.begin < end; }
};

/// A library loaded by the operating system's loader; released when the object goes.
class SharedLibrary {
public:
    SharedLibrary() noexcept = default;
    SharedLibrary(SharedLibrary&& other) noexcept;
    SharedLibrary& operator=(SharedLibrary&& other) noexcept;
    ~SharedLibrary();

    /// Loads a file by its absolute path. On failure the result is empty and `error` holds the system's words
    /// (UTF-8).
    static SharedLibrary open(const std::filesystem::path& file, std::string& error);

    explicit operator bool() const noexcept { return handle_ != nullptr; }

    HMODULE handle() const noexcept { return handle_; }

    /// Null when the library has no such symbol.
    void* symbol(const char* name) const;
    AddressRange range() const;
    /// Gives the library back. False when the system refuses. It may stay in memory, for others that use it.
    bool close();

private:
    HMODULE handle_ = nullptr;
};

/// A place in a library that is in memory now.
struct CodePlace {
    std::string library; ///< file name without its folder, UTF-8
    std::uintptr_t offset = 0;
};

/// Nothing for an address that is in no library.
std::optional<CodePlace> placeOfAddress(const void* address);

} // namespace kthost
