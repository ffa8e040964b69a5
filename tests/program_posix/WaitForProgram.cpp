#include "tests/program/WaitForProgram.h"

#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace program {

namespace {

constexpr int kCannotRun = 127;

bool openAs(int stream, const char* name, int flags) {
    const int file = open(name, flags, 0600);
    return file != -1 && dup2(file, stream) == stream && close(file) == 0;
}

bool openStreams() {
    return openAs(STDIN_FILENO, "stdin", O_RDONLY) &&
           openAs(STDOUT_FILENO, "stdout", O_WRONLY | O_CREAT | O_TRUNC) &&
           openAs(STDERR_FILENO, "stderr", O_WRONLY | O_CREAT | O_TRUNC);
}

/// For the child, which has the only thread there.
void becomeProgram(const std::filesystem::path& program, const std::filesystem::path& folder,
                   const Given& given) {
    for (const auto& [name, value] : given.environment) {
        setenv(name.c_str(), value.c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    }
    std::vector<std::string> words = given.arguments;
    words.insert(words.begin(), program.string());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    if (chdir(folder.c_str()) == 0 && openStreams()) {
        execv(program.c_str(), pointers.data());
    }
}

} // namespace

int waitForProgram(const std::filesystem::path& program, const std::filesystem::path& folder,
                   const Given& given) {
    const pid_t child = fork();
    if (child == 0) {
        becomeProgram(program, folder, given);
        _exit(kCannotRun);
    }
    int status = 0;
    if (child == -1 || waitpid(child, &status, 0) != child ||
        (WIFEXITED(status) && WEXITSTATUS(status) == kCannotRun)) {
        throw std::runtime_error("cannot run " + program.string());
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace program
