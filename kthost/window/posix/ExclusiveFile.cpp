#include <ExclusiveFile.h>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::error_code lastError() noexcept {
    const int code = errno;
    if (code == EWOULDBLOCK) {
        return std::make_error_code(std::errc::text_file_busy);
    }
    return {code, std::generic_category()};
}

int descriptor(std::intptr_t handle) noexcept {
    return static_cast<int>(handle);
}

/// Asks for the lease that exists only while nobody else has the file open. Whoever opens the file meanwhile
/// makes the kernel send its holder a signal, whose default would end the process: so it is made one that is
/// ignored by default before the lease is taken, and then sent to nobody. No handler of the program is
/// touched.
bool leaseUnlessHeld(int file) noexcept {
    fcntl(file, F_SETSIG, SIGURG);
    const bool held = fcntl(file, F_SETLEASE, F_WRLCK) != 0 && errno == EAGAIN;
    fcntl(file, F_SETOWN, 0);
    return !held;
}

} // namespace

ExclusiveFile::~ExclusiveFile() {
    if (handle_ == -1) {
        return;
    }
    // Closing alone would not do while a child process still has a copy of the descriptor.
    fcntl(descriptor(handle_), F_SETLEASE, F_UNLCK);
    ::close(descriptor(handle_));
}

std::error_code ExclusiveFile::open(const std::filesystem::path& path) noexcept {
    // Non-blocking, so that neither somebody else's lease nor a pipe without a writer keeps the caller
    // waiting.
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return lastError();
    }
    handle_ = file;

    struct stat status {};

    if (fstat(file, &status) != 0) {
        return lastError();
    }
    if (!S_ISREG(status.st_mode)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    if (!leaseUnlessHeld(file)) {
        return std::make_error_code(std::errc::text_file_busy);
    }
    // The size counts once nobody can change it any more.
    if (fstat(file, &status) != 0) {
        return lastError();
    }
    size_ = static_cast<std::uint64_t>(status.st_size);
    return {};
}

// NOLINTNEXTLINE(readability-make-member-function-const): it moves on in the file
std::error_code ExclusiveFile::read(void* to, std::size_t length, std::size_t& got) noexcept {
    got = 0;
    for (;;) {
        const ssize_t count = ::read(descriptor(handle_), to, length);
        if (count >= 0) {
            got = static_cast<std::size_t>(count);
            return {};
        }
        if (errno != EINTR) {
            return lastError();
        }
    }
}
