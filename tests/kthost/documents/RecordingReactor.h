#pragma once

#include <KtApDocManagerReactor.h>

#include <string>
#include <vector>

/// Writes down what it hears, one line a notification.
class RecordingReactor : public KtApDocManagerReactor {
public:
    std::vector<std::wstring> heard;

    void documentCreated(KtApDocument* document) override { note(L"created", document); }

    void documentToBeDestroyed(KtApDocument* document) override { note(L"to be destroyed", document); }

    void documentCreateCancelled(KtApDocument* document) override { note(L"cancelled", document); }

    void documentLockModeWillChange(KtApDocument* document, KtAp::DocLockMode previous,
                                    KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                    const wchar_t* globalCommandName) override {
        noteLock(L"lock will change", document, {previous, current, overall}, globalCommandName);
    }

    void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode previous,
                                 KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                 const wchar_t* globalCommandName) override {
        noteLock(L"lock changed", document, {previous, current, overall}, globalCommandName);
    }

    void documentBecameCurrent(KtApDocument* document) override { note(L"current", document); }

    void documentDestroyed(const wchar_t* name) override {
        heard.push_back(std::wstring(L"destroyed ") + name);
    }

private:
    struct Modes {
        KtAp::DocLockMode previous;
        KtAp::DocLockMode current;
        KtAp::DocLockMode overall;
    };

    void note(const wchar_t* what, const KtApDocument* document) {
        heard.push_back(std::wstring(what) + L" " + (document == nullptr ? L"nothing" : document->name()));
    }

    void noteLock(const wchar_t* what, const KtApDocument* document, const Modes& modes,
                  const wchar_t* command) {
        heard.push_back(std::wstring(what) + L" " + document->name() + L" " +
                        std::to_wstring(modes.previous) + L" " + std::to_wstring(modes.current) + L" " +
                        std::to_wstring(modes.overall) + L" " + command);
    }
};
