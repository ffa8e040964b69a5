#include "kthost/console/DrawingFile.h"

#include "kthost/console/CommandError.h"
#include "kthost/database/Database.h"
#include "kthost/reader/DesignReader.h"
#include "kthost/reader/DrawingBuilder.h"
#include "kthost/reader/ReadError.h"

#include <utility>

namespace kthost {

std::unique_ptr<Database> readDrawing(const std::filesystem::path& file, std::wstring name,
                                      ReadProgress* progress) {
    try {
        return buildDrawing(readDesign(file, progress), std::move(name));
    } catch (const ReadError& error) {
        if (progress != nullptr) {
            progress->bytesRead(0, 0); // there is nothing more to wait for
        }
        throw CommandError(error.what());
    }
}

} // namespace kthost
