#pragma once

#include <SystemPath.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

/// A folder of its own for one test, removed at its end with all that is in it. Tests run side by side, in
/// one run and in several, so its name is one that nobody else has. It is short: some systems have short
/// paths.
class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::path(testing::TempDir()) / ("ktdx-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_)); // somebody else has it
    }

    ~TempFolder() {
        std::error_code ignored; // a system's services may keep a program's files open for a while
        std::filesystem::remove_all(path_, ignored);
    }

    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& name) const {
        return path_ / name;
    }

    /// A file in it that holds these bytes; the folders that lead to it are made.
    std::filesystem::path file(const std::filesystem::path& name, std::string_view bytes) const {
        std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(systemPath(file.parent_path()));
        std::ofstream stream(systemPath(file), std::ios::binary);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!stream.flush()) {
            throw std::runtime_error("cannot write " + file.string());
        }
        return file;
    }

    [[nodiscard]] std::size_t countEntries() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

private:
    std::filesystem::path path_;
};

inline std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream in(systemPath(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}
