#include "tests/program/WaitForProgram.h"

#include <WindowSystem.h>

#include <map>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace program {

namespace {

struct Close {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, Close>;

std::wstring wide(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).native();
}

/// A word as programs take their command lines apart: backslashes mean something before a quote only.
std::wstring asWord(std::wstring_view word) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : word) {
        if (character == L'"') {
            text.append(backslashes + 1, L'\\');
        }
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        text += character;
    }
    return text.append(backslashes, L'\\') + L'"';
}

std::wstring commandLine(const std::filesystem::path& program, const Given& given) {
    std::wstring line = asWord(program.native());
    for (const std::string& argument : given.arguments) {
        line += L' ' + asWord(wide(argument));
    }
    return line;
}

struct FreeEnvironment {
    void operator()(wchar_t* block) const { FreeEnvironmentStringsW(block); }
};

std::map<std::wstring, std::wstring> ownEnvironment() {
    std::map<std::wstring, std::wstring> variables;
    const std::unique_ptr<wchar_t, FreeEnvironment> block(GetEnvironmentStringsW());
    for (std::wstring_view rest(block.get()); !rest.empty(); rest = rest.data() + rest.size() + 1) {
        const std::size_t equals = rest.find(L'=', 1); // the system's own names begin with one
        if (equals != std::wstring_view::npos) {
            variables.emplace(rest.substr(0, equals), rest.substr(equals + 1));
        }
    }
    return variables;
}

/// Texts one behind the other, each with a zero at its end, and a zero behind them all.
std::wstring environmentBlock(const Given& given) {
    std::map<std::wstring, std::wstring> variables = ownEnvironment();
    for (const auto& [name, value] : given.environment) {
        variables.insert_or_assign(wide(name), wide(value));
    }
    std::wstring block;
    for (const auto& [name, value] : variables) {
        block.append(name).append(L"=").append(value).push_back(L'\0');
    }
    return block;
}

Handle openStream(const std::filesystem::path& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE handle = CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                      disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("cannot open " + file.string());
    }
    return Handle(handle);
}

Handle start(const std::filesystem::path& program, const std::filesystem::path& folder, const Given& given) {
    const Handle in = openStream(folder / "stdin", GENERIC_READ, OPEN_EXISTING);
    const Handle out = openStream(folder / "stdout", GENERIC_WRITE, CREATE_ALWAYS);
    const Handle err = openStream(folder / "stderr", GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = in.get();
    startup.hStdOutput = out.get();
    startup.hStdError = err.get();
    std::wstring line = commandLine(program, given);
    std::wstring environment = environmentBlock(given);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                       environment.data(), folder.c_str(), &startup, &process) == 0) {
        throw std::runtime_error("cannot run " + program.string());
    }
    CloseHandle(process.hThread);
    return Handle(process.hProcess);
}

} // namespace

int waitForProgram(const std::filesystem::path& program, const std::filesystem::path& folder,
                   const Given& given) {
    std::filesystem::path file = program;
    file += ".exe";
    const Handle process = start(file.make_preferred(), folder, given);
    DWORD status = 0;
    WaitForSingleObject(process.get(), INFINITE);
    GetExitCodeProcess(process.get(), &status);
    constexpr DWORD kFirstFault = 0x80000000; // what a program that crashes ends with lies above
    return status < kFirstFault ? static_cast<int>(status) : -1;
}

} // namespace program
