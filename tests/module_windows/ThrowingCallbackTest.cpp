#include "tests/module_windows/ModuleInMemory.h"

#include <KtEd.h>

#include <new>
#include <stdexcept>
#include <string>
#include <system_error>

/// What a client's callback throws goes through the module, which has a C++ run-time library of its own, as
/// has the host's library, to whoever pumps the host's messages.
namespace {

/// No class of the standard library's, and with something to lose.
struct PaperJam {
    int tray = 0;
    std::wstring note;
};

bool throwing = false;
int callsOfThrowOnce = 0;

void throwError() {
    throw std::runtime_error("no more paper");
}

void throwOwnClass() {
    throw PaperJam{3, L"Fach \u03A9 \U0001F5A8"};
}

void throwNumber() {
    throw 42;
}

void throwNoMemory() {
    throw std::bad_alloc();
}

void throwSystemError() {
    throw std::system_error(std::make_error_code(std::errc::no_space_on_device), "list.csv");
}

void throwOnce() {
    ++callsOfThrowOnce;
    if (throwing) {
        throwing = false;
        throw std::runtime_error("once");
    }
}

class ThrowingCallback : public ModuleInMemory {
protected:
    void run(KtRxCallback callback) {
        kthost::Document& document = open(L"plan");
        attach(document, callback);
        runCommand(document);
    }

    void pump() { host_.loop().pump(); }
};

TEST_F(ThrowingCallback, IsHeardWithItsWords) {
    run(throwError);
    try {
        pump();
        FAIL() << "nothing was thrown";
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "no more paper");
    }
}

TEST_F(ThrowingCallback, IsHeardByItsClass) {
    run(throwError);
    EXPECT_THROW(pump(), std::runtime_error);
}

TEST_F(ThrowingCallback, KeepsAllThatAnObjectOfItsOwnClassHolds) {
    run(throwOwnClass);
    try {
        pump();
        FAIL() << "nothing was thrown";
    } catch (const PaperJam& jam) {
        EXPECT_EQ(jam.tray, 3);
        EXPECT_EQ(jam.note, L"Fach \u03A9 \U0001F5A8");
    }
}

TEST_F(ThrowingCallback, MayThrowWhatIsNoObject) {
    run(throwNumber);
    try {
        pump();
        FAIL() << "nothing was thrown";
    } catch (int number) {
        EXPECT_EQ(number, 42);
    }
}

TEST_F(ThrowingCallback, MayRunOutOfMemory) {
    run(throwNoMemory);
    EXPECT_THROW(pump(), std::bad_alloc);
}

TEST_F(ThrowingCallback, KeepsTheCodeOfASystemError) {
    run(throwSystemError);
    try {
        pump();
        FAIL() << "nothing was thrown";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code().value(), static_cast<int>(std::errc::no_space_on_device));
        EXPECT_STREQ(error.code().category().name(), "generic");
    }
}

TEST_F(ThrowingCallback, IsCalledAgainAtTheNextIdleCheck) {
    callsOfThrowOnce = 0;
    throwing = true;
    kthost::Document& document = open(L"plan");
    attach(document, throwOnce);
    runCommand(document);
    EXPECT_THROW(pump(), std::runtime_error);
    runCommand(document);
    pump();
    EXPECT_EQ(callsOfThrowOnce, 2);
}

TEST_F(ThrowingCallback, LeavesNoModuleCodeRunning) {
    run(throwError);
    EXPECT_THROW(pump(), std::runtime_error);
    EXPECT_TRUE(host_.modules().unload(kName));
}

} // namespace
