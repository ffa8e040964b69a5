#include "kthost/window/ProgramStart.h"

#include <WindowSystem.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <memory>

namespace kthost {

namespace {

std::string utf8(const wchar_t* text) {
    // The length counts the zero at the end.
    const int length = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), length, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

struct Release {
    void operator()(wchar_t** words) const { LocalFree(static_cast<HLOCAL>(words)); }
};

} // namespace

std::vector<std::string> startProgram(int /*count*/, char** /*words*/) {
    for (const int stream : {0, 1, 2}) {
        _setmode(stream, _O_BINARY);
    }
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCP(CP_UTF8);
    // What main() is given has lost what the system's code page does not have.
    int count = 0;
    const std::unique_ptr<wchar_t*, Release> words(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::string> arguments;
    for (int i = 1; words != nullptr && i < count; ++i) {
        arguments.push_back(utf8(words.get()[i]));
    }
    return arguments;
}

} // namespace kthost
