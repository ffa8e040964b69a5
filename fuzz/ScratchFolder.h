#pragma once

#include <filesystem>
#include <string_view>

/// A folder for this process, which works in it from then on. It goes when the process ends as it should.
class ScratchFolder {
public:
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    const std::filesystem::path& path() const { return path_; }

    /// Writes a file, in a folder that is there. `name` is relative.
    void write(const std::filesystem::path& name, std::string_view bytes) const;

    /// Copies every file that lies straight in another folder.
    void copyFrom(const std::filesystem::path& folder) const;

private:
    std::filesystem::path path_;
};
