#pragma once

#include "legacy/ByteSource.h"

#include <ExclusiveFile.h>

#include <filesystem>
#include <string>

/// The bytes of a file that nobody else holds open meanwhile.
class FileSource : public ByteSource {
public:
    /// Throws FileFailure when the file cannot be opened, is held open by anyone else, or is no regular file.
    explicit FileSource(const std::filesystem::path& path);

    std::size_t read(std::span<unsigned char> to) override;
    [[nodiscard]] std::uint64_t size() const override;

private:
    ExclusiveFile file_;
};

/// The path of that name. Throws FileFailure for a name that no file of this system can have.
std::filesystem::path templatePath(const std::wstring& name);
