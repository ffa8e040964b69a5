#include "fuzz/ScratchFolder.h"

#include "fuzz/Require.h"

#include <fstream>
#include <random>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder()
    : path_(fs::temp_directory_path() / ("ktdx-fuzz-" + std::to_string(std::random_device()()))) {
    fs::create_directory(path_);
    fs::current_path(path_);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::current_path(path_.parent_path(), ignored);
    fs::remove_all(path_, ignored);
}

void ScratchFolder::write(const fs::path& name, std::string_view bytes) const {
    std::ofstream stream(path_ / name, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    require(static_cast<bool>(stream.flush()), "a file can be written");
}

void ScratchFolder::copyFrom(const fs::path& folder) const {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            fs::copy_file(entry.path(), path_ / entry.path().filename(),
                          fs::copy_options::overwrite_existing);
        }
    }
}
