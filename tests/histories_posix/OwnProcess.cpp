#include "tests/histories/OwnProcess.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <system_error>

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace histories {

namespace {

void dropWords() {
    for (std::FILE* stream : {stdout, stderr}) {
        if (std::freopen("/dev/null", "w", stream) == nullptr) {
            std::_Exit(EXIT_SUCCESS); // not to be taken for a crash
        }
    }
}

/// What is thrown is a crash: it must not get back to where both processes go on.
[[noreturn]] void doAndEnd(const std::function<void()>& work, Words words) noexcept {
    if (words == Words::dropped) {
        dropWords();
    }
    work();
    std::_Exit(EXIT_SUCCESS);
}

bool endedWell(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) == -1) {
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "waitpid");
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

} // namespace

bool isFatal(const std::function<void()>& work, Words words) {
    std::cout.flush();
    const pid_t process = fork();
    if (process == -1) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (process == 0) {
        doAndEnd(work, words);
    }
    return !endedWell(process);
}

} // namespace histories
