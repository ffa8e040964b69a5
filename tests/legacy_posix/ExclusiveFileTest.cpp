#include <ExclusiveFile.h>

#include "tests/legacy/OpenError.h"
#include "tests/legacy/TempFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// Who else holds a file, as the kernel tells it, with holders in this process and in others.
namespace {

/// A child process that runs until it is told to end.
class Child {
public:
    /// `setUp` runs in the child; the parent goes on once it is done.
    template <typename SetUp>
    explicit Child(SetUp setUp) {
        std::array<int, 2> ready{};
        std::array<int, 2> end{};
        EXPECT_EQ(pipe(ready.data()), 0);
        EXPECT_EQ(pipe(end.data()), 0);
        process_ = fork();
        if (process_ == 0) {
            close(end[1]);
            const int result = setUp();
            char told = 'r';
            (void)!write(ready[1], &told, 1);
            (void)!read(end[0], &told, 1);
            _exit(result);
        }
        close(ready[1]);
        close(end[0]);
        end_ = end[1];
        char told = 0;
        EXPECT_EQ(read(ready[0], &told, 1), 1);
        close(ready[0]);
    }

    ~Child() { finish(); }

    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Ends it; what its set-up returned.
    int finish() {
        if (process_ > 0) {
            close(end_);
            waitpid(process_, &status_, 0);
            process_ = 0;
        }
        return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
    }

private:
    pid_t process_ = 0;
    int end_ = -1;
    int status_ = 0;
};

/// The result of trying to open a file without waiting for whoever holds it.
int openNow(const std::filesystem::path& path, int mode) {
    const int file = open(path.c_str(), mode | O_NONBLOCK | O_CLOEXEC);
    const int error = file < 0 ? errno : 0;
    if (file >= 0) {
        close(file);
    }
    return error;
}

/// Holds the signals that a lease can lead to back while it lives, so that they can be asked for.
class HeldSignals {
public:
    HeldSignals() {
        sigemptyset(&signals_);
        sigaddset(&signals_, SIGIO);
        sigaddset(&signals_, SIGURG);
        sigprocmask(SIG_BLOCK, &signals_, &before_);
    }

    ~HeldSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    [[nodiscard]] bool anyCame() const {
        sigset_t pending;
        sigpending(&pending);
        return sigismember(&pending, SIGIO) == 1 || sigismember(&pending, SIGURG) == 1;
    }

private:
    sigset_t signals_{};
    sigset_t before_{};
};

TEST(ExclusiveFile, RefusesAPipeInsteadOfWaitingForItsWriter) {
    const TempFile temp;
    std::filesystem::remove(temp.path());
    ASSERT_EQ(mkfifo(temp.path().c_str(), 0600), 0);
    EXPECT_EQ(openError(temp.path()), std::errc::invalid_argument);
}

TEST(ExclusiveFile, IsRefusedWhileAnotherProcessHoldsItForReading) {
    const TempFile temp("abc");
    Child holder([&] { return open(temp.path().c_str(), O_RDONLY) < 0 ? 1 : 0; });
    EXPECT_EQ(openError(temp.path()), std::errc::text_file_busy);
    EXPECT_EQ(holder.finish(), 0);
}

TEST(ExclusiveFile, IsRefusedWhileAnotherProcessHoldsItForWriting) {
    const TempFile temp("abc");
    Child holder([&] { return open(temp.path().c_str(), O_WRONLY) < 0 ? 1 : 0; });
    EXPECT_EQ(openError(temp.path()), std::errc::text_file_busy);
    EXPECT_EQ(holder.finish(), 0);
}

TEST(ExclusiveFile, OpensOnceTheOtherProcessHasEnded) {
    const TempFile temp("abc");
    Child holder([&] { return open(temp.path().c_str(), O_RDONLY) < 0 ? 1 : 0; });
    ASSERT_EQ(holder.finish(), 0);
    EXPECT_FALSE(openError(temp.path()));
}

TEST(ExclusiveFile, KeepsWritersOutWhileItIsOpen) {
    const TempFile temp("abc");
    ExclusiveFile file;
    ASSERT_FALSE(file.open(temp.path()));
    Child writer([&] { return openNow(temp.path(), O_WRONLY) == EWOULDBLOCK ? 0 : 1; });
    EXPECT_EQ(writer.finish(), 0);
}

TEST(ExclusiveFile, LetsWritersInOnceItIsClosedThoughAChildStillHasItsDescriptor) {
    const TempFile temp("abc");
    std::optional<ExclusiveFile> file(std::in_place);
    ASSERT_FALSE(file->open(temp.path()));
    Child heir([] { return 0; });
    file.reset();
    EXPECT_EQ(openNow(temp.path(), O_WRONLY), 0);
}

TEST(ExclusiveFile, IsSentNoSignalWhenSomebodyElseWantsTheFile) {
    const TempFile temp("abc");
    const HeldSignals signals;
    ExclusiveFile file;
    ASSERT_FALSE(file.open(temp.path()));
    Child writer([&] { return openNow(temp.path(), O_WRONLY) == EWOULDBLOCK ? 0 : 1; });
    EXPECT_EQ(writer.finish(), 0);
    EXPECT_FALSE(signals.anyCame());
}

TEST(ExclusiveFile, OpensSharedWhereTheFileIsSomebodyElses) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can become somebody else";
    }
    constexpr uid_t kNobody = 65534;
    const TempFile temp("abc");
    Child other([&] {
        if (setuid(kNobody) != 0) {
            return 1;
        }
        const std::ifstream holder(temp.path());
        return holder && !openError(temp.path()) ? 0 : 2;
    });
    EXPECT_EQ(other.finish(), 0);
}

} // namespace
