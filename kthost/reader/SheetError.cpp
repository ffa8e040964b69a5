#include "kthost/reader/SheetError.h"

#include "kthost/reader/PathText.h"
#include "kthost/runtime/Utf8.h"

#include <utility>

namespace kthost {

void failAtSheet(const SheetFile& file, std::size_t sheet, std::string expected, const std::string& found) {
    const SheetSymbol& symbol = file.schematic.sheets[sheet];
    throw ReadError(toUtf8(pathText(file.path)), symbol.filePosition, std::move(expected),
                    found + '"' + toUtf8(symbol.file) + '"');
}

} // namespace kthost
