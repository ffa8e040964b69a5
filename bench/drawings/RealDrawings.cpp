#include "bench/drawings/RealDrawings.h"

#include "kthost/console/CommandError.h"
#include "kthost/console/DrawingFile.h"
#include "kthost/database/DatabaseQueries.h"

#include <map>

namespace bench {

namespace {

std::map<std::size_t, std::filesystem::path>& filesBySize() {
    static std::map<std::size_t, std::filesystem::path> files;
    return files;
}

std::size_t countReferences(const kthost::Database& drawing) {
    std::size_t count = 0;
    for (const bool layouts : {false, true}) {
        for (const KtDbObjectId record : kthost::records(drawing, layouts)) {
            count += kthost::referencesIn(record).size();
        }
    }
    return count;
}

void note(const std::filesystem::path& file) {
    try {
        if (const std::size_t size = countReferences(*kthost::readDrawing(file, L"counted", nullptr));
            size != 0) {
            filesBySize().emplace(size, file);
        }
    } catch (const kthost::CommandError&) {
        return; // a sheet that lies in others, whose files are not all there
    }
}

} // namespace

void findRealDrawings(const std::filesystem::path& folder) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".kicad_sch") {
            note(entry.path());
        }
    }
}

std::vector<std::size_t> sizesOfRealDrawings() {
    std::vector<std::size_t> sizes;
    for (const auto& [size, file] : filesBySize()) {
        sizes.push_back(size);
    }
    return sizes;
}

std::unique_ptr<kthost::Database> readRealDrawing(std::size_t size) {
    return kthost::readDrawing(filesBySize().at(size), L"plan", nullptr);
}

} // namespace bench
