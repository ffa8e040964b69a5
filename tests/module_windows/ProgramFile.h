#pragma once

#include <WindowSystem.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

/// What the file of a library or program says of itself to the system's loader, read without loading it.
class ProgramFile {
public:
    struct Exports {
        std::vector<std::string> names; ///< in the file's order
        std::size_t functions = 0;      ///< those that have no name too
    };

    /// Throws std::runtime_error when it is no 64-bit library or program.
    explicit ProgramFile(const std::filesystem::path& file);

    [[nodiscard]] Exports exports() const;
    /// The files that it is linked against, in small letters.
    [[nodiscard]] std::vector<std::string> importedFiles() const;
    /// Those of its sections that hold, or may be run as, code.
    [[nodiscard]] std::vector<std::string> codeSections() const;
    /// 0 when there is none.
    [[nodiscard]] DWORD entryPoint() const;
    /// Whether the loader may put it elsewhere than where it was linked to lie.
    [[nodiscard]] bool canBeMoved() const;

private:
    template <typename T>
    const T& atOffset(std::size_t offset) const;
    /// What lies at an address that is relative to the loaded image.
    template <typename T>
    const T& atAddress(std::size_t address) const;
    std::string textAt(std::size_t address) const;
    const IMAGE_NT_HEADERS64& headers() const;
    const IMAGE_DATA_DIRECTORY& directory(std::size_t which) const;
    std::vector<IMAGE_SECTION_HEADER> sections() const;

    std::string bytes_;
};
