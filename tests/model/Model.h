#pragma once

#include "tests/model/DocumentModel.h"
#include "tests/model/Passes.h"
#include "tests/model/Snapshot.h"

#include <KtApDocManagerReactor.h>
#include <KtApDocument.h>
#include <KtArray.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class KtDbObjectReactor;

namespace ktmodel {

/// Says of a document whether its block table monitor's timer comes before the timer of its idle clients: the
/// two are checked in the order of their addresses, which the model cannot know.
using BlocksTimerIsFirst = std::function<bool(KtApDocument&)>;

/// What the module has to record, mark and call, worked out a second time in the plainest way: from the
/// moment of its construction, when the module is initialised, to that of its destruction. It hears the host
/// itself; what clients do is told to it, and so is the arrival of an idle-check message, each before the
/// module acts on it.
///
/// It does not call clients. It says whom it expects to be called next, and is told of each call that is
/// made: what has to happen after a call is worked out when the call has returned.
///
/// Not worked out, since nothing says what has to happen:
///  - documents that were prepared and not announced yet: what is kept of them is dropped by the next look at
///  the
///    open documents;
///  - idle-check messages that are dispatched while a callback is running;
///  - a client's function attached to the idle checks that detaches itself while it is running: the model
///  goes on
///    with the one behind it.
class Model final : public KtApDocManagerReactor {
public:
    Model();
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;
    ~Model() override;

    /// What clients call. Each gives what the module's function has to give.
    bool attachTimer(KtApDocument* document, CallbackNumber callback, std::uint32_t interval, bool attach);
    bool attach(KtApDocument* document, const KtArray<KtDbObjectId>& ids, CallbackNumber callback);
    void detach(KtApDocument* document, CallbackNumber callback);
    bool update(KtApDocument* document, bool force, bool notify);
    bool queryTables(KtApDocument* document);

    void setTimerOrder(BlocksTimerIsFirst order) { blocksTimerIsFirst_ = std::move(order); }

    /// An idle-check message is about to be shown to the module's filter.
    void idleCheckArrives(KtApDocument* document);

    /// Which client is to be called next, which was called, and when it returned.
    Passes& passes() { return passes_; }

    /// Everything that has to be so now, and the answers to the questions about each document's block graph.
    Snapshot snapshot(const std::map<std::wstring, std::vector<GraphQuestion>>& questions = {});

    /// Idle-check messages that arrived, by document.
    std::vector<std::wstring> takeArrived() { return std::exchange(arrived_, {}); }

    /// The model's own reactors.
    std::map<const KtDbObjectReactor*, ReactorName> reactorNames() const;

    void documentCreated(KtApDocument* document) override;
    void documentToBeDestroyed(KtApDocument* document) override;
    void documentCreateCancelled(KtApDocument* document) override;
    void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode previous,
                                 KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                 const wchar_t* globalCommandName) override;

private:
    DocumentModel* find(KtApDocument* document) const;
    DocumentModel* findOrMake(KtApDocument* document);
    BlocksModel* reachBlocks(KtApDocument* document);
    bool isIdle(KtApDocument* document) const;
    std::vector<TimerModel*> timersOf(KtApDocument& document) const;
    void checkTimers(DocumentModel& document, std::vector<TimerModel*> timers);
    void callIdleClients(IdleClientsModel& clients, std::function<void()> then);
    void callBlockClients(BlocksModel& blocks, std::function<void()> then);
    void expectNoMoreChecks();

    TimerCount timers_;
    std::map<KtApDocument*, std::unique_ptr<DocumentModel>> documents_;
    BlocksTimerIsFirst blocksTimerIsFirst_;
    Passes passes_;
    std::map<KtApDocument*, std::wstring> names_; // of closed documents, too
    std::deque<KtApDocument*> posted_;            // messages that have not arrived yet
    std::vector<std::wstring> expectedChecks_;
    std::vector<std::wstring> arrived_;
};

} // namespace ktmodel
