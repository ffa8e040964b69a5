#include "kthost/documents/PrintSink.h"

#include "kthost/runtime/Utf8.h"

#include <cstdio>
#include <string>
#include <utility>

namespace kthost {

namespace {

PrintSink& currentSink() {
    static PrintSink sink;
    return sink;
}

} // namespace

void setPrintSink(PrintSink sink) {
    currentSink() = std::move(sink);
}

void printLine(std::wstring_view line) {
    if (currentSink()) {
        currentSink()(line);
        return;
    }
    const std::string text = toUtf8(line) + "\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
}

} // namespace kthost
