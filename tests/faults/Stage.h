#pragma once

#include "kthost/database/Database.h"
#include "kthost/documents/Host.h"
#include "tests/faults/ObservedState.h"

#include <KtArray.h>
#include <KtDbObjectId.h>
#include <KtRxCallback.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A host, documents with drawings, and the module under observation, loaded as users load it. Whatever
/// leaves the module by an exception is caught and noted. One at a time in a process.
class Stage {
public:
    using Ids = std::vector<KtDbObjectId>;

    Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    kthost::Host& host() { return host_; }

    /// Current from then on.
    kthost::Document& open(const std::wstring& name);
    kthost::Document& openWithoutDrawing(const std::wstring& name);
    void close(const std::wstring& name);

    kthost::Document& document(const std::wstring& name = L"plan") const;
    kthost::Database& drawing(const std::wstring& name = L"plan") const;

    void load();
    void unload();

    bool isLoaded() const { return loaded_; }

    // What clients do. `rank` numbers client functions in ascending order of address.
    bool attach(std::size_t rank, const Ids& ids, const std::wstring& document = L"plan");
    void detach(std::size_t rank, const std::wstring& document = L"plan");
    bool attachIdle(std::size_t rank, std::uint32_t interval, const std::wstring& document = L"plan");
    void detachIdle(std::size_t rank, const std::wstring& document = L"plan");
    bool update(bool force, bool notify, const std::wstring& document = L"plan");
    bool tableBlocks(Ids& ids, const std::wstring& document = L"plan");
    bool tables(Ids& ids, const std::wstring& document = L"plan");
    /// Every question about every pair of blocks; the sum of the answers.
    std::uint32_t askGraph();
    /// What the function does when it is called next.
    void onCall(std::size_t rank, std::function<void()> action);

    /// An edit, and the idle check behind it.
    void command(const std::function<void()>& edit, const std::wstring& name = L"plan");

    // After a fault.
    /// Everything recorded is brought up to date; false for a document whose monitor cannot be reached.
    bool forceUpdates();
    /// All clients detach, and those that history wants to be attached attach again.
    void attachAnew();
    /// Every reference of every drawing is moved.
    void touchEverything();
    ObservedState observe();

    /// Client functions called since the last question, in order.
    std::string takeCalls() { return std::exchange(calls_, {}); }

    /// Reactors that were there when a document's drawing went, one line each.
    const std::vector<std::string>& leftWithDocuments() const { return leftWithDocuments_; }

    /// Exceptions that left the module.
    const std::string& escaped() const { return escaped_; }

    static constexpr std::size_t kClients = 4;
    static constexpr const char* kModule = "KtDxNotifyObserved.kmx";

private:
    template <std::size_t kNumber>
    static void function();
    void called(KtRxCallback which);
    void removeReactorsFrom(const kthost::Database* database);
    bool takeAnswer(bool found, const KtArray<KtDbObjectId>& array, Ids& ids);
    KtApDocument* find(const std::wstring& name) const;
    template <typename Function>
    Function exported(const char* name) const;
    void guarded(const char* what, const std::function<void()>& call);

    static Stage* current;

    kthost::Host host_;
    bool loaded_ = false;
    std::array<KtRxCallback, kClients> functions_;
    std::array<std::function<void()>, kClients> actions_;
    std::map<std::pair<std::wstring, std::size_t>, Ids> wanted_;
    std::map<std::pair<std::wstring, std::size_t>, std::uint32_t> wantedIdle_;
    std::string calls_;
    std::string escaped_;
    std::vector<std::string> leftWithDocuments_;
};

/// Ends the test when a preparation did not succeed.
void must(Orbx::ErrorStatus status);
