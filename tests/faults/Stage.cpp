#include "tests/faults/Stage.h"

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/OpenObjects.h"
#include "kthost/database/References.h"
#include "kthost/runtime/Faults.h"
#include "notify/ByAddress.h"
#include "tests/faults/ModuleMemory.h"

#include <KtDbObject.h>
#include <ktdx/KtDxNotify.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <memory>
#include <stdexcept>

namespace {

using IdArray = KtArray<KtDbObjectId>;

std::filesystem::path moduleFile() {
    return std::filesystem::path(KTDX_BINARIES) / Stage::kModule;
}

/// Held for ever: the module then lies in one place, however often a host loads it.
const kthost::SharedLibrary& heldModule() {
    static std::string error;
    static const kthost::SharedLibrary library = kthost::SharedLibrary::open(moduleFile(), error);
    return library;
}

IdArray toArray(const Stage::Ids& ids) {
    IdArray array;
    for (const KtDbObjectId id : ids) {
        array.append(id);
    }
    return array;
}

} // namespace

Stage* Stage::current = nullptr;

void must(Orbx::ErrorStatus status) {
    if (status != Orbx::eOk) {
        throw std::runtime_error("a preparation ended with status " + std::to_string(status));
    }
}

template <std::size_t kNumber>
void Stage::function() {
    current->called(&function<kNumber>);
}

Stage::Stage() : functions_{&function<0>, &function<1>, &function<2>, &function<3>} {
    if (!heldModule()) {
        throw std::runtime_error("the module under observation cannot be loaded");
    }
    modulememory::setModule(heldModule());
    reinterpret_cast<void (*)()>(heldModule().symbol("ktdxStartAfresh"))();
    std::ranges::sort(functions_, ByAddress{});
    current = this;
    host_.clock().set(1'000'000);
    host_.documents().onDestroying = [this,
                                      destroying = host_.documents().onDestroying](kthost::Document& gone) {
        removeReactorsFrom(gone.database());
        destroying(gone);
    };
    // What the host does about what a module has left is not to run into the module's faults.
    host_.modules().onLeaving = [leaving = host_.modules().onLeaving](const kthost::LoadedModule& module) {
        const kthost::Faults armed = std::exchange(kthost::Faults::instance(), {});
        leaving(module);
        kthost::Faults::instance() = armed;
    };
}

/// The module's record of the document is gone: a reactor that is still there would be called, and be no
/// more.
void Stage::removeReactorsFrom(const kthost::Database* database) {
    const kthost::Faults armed = std::exchange(kthost::Faults::instance(), {});
    for (const kthost::AttachedReactor& attached : kthost::attachedReactors()) {
        KtDbObject* object = nullptr;
        if (attached.id.database() == database &&
            ktdbOpenObject(object, attached.id, KtDbObject::desc(), KtDb::kForNotify, true) == Orbx::eOk) {
            must(object->removeReactor(attached.reactor));
            must(object->close());
            leftWithDocuments_.emplace_back("reactor left on an object of a document that closes");
        }
    }
    kthost::Faults::instance() = armed;
}

Stage::~Stage() {
    host_.end();
    current = nullptr;
}

void Stage::called(KtRxCallback which) {
    const auto rank = static_cast<std::size_t>(std::ranges::find(functions_, which) - functions_.begin());
    calls_ += std::to_string(rank) + ' ';
    if (const std::function<void()> action = std::exchange(actions_.at(rank), {})) {
        action();
    }
}

void Stage::onCall(std::size_t rank, std::function<void()> action) {
    actions_.at(rank) = std::move(action);
}

void Stage::guarded(const char* what, const std::function<void()>& call) {
    try {
        call();
    } catch (const std::exception& thrown) {
        escaped_ += std::string(what) + " threw " + thrown.what() + "\n";
    }
}

kthost::Document& Stage::open(const std::wstring& name) {
    guarded("opening a document",
            [&] { host_.documents().create(name, std::make_unique<kthost::Database>(name)); });
    return document(name);
}

kthost::Document& Stage::openWithoutDrawing(const std::wstring& name) {
    guarded("opening a document", [&] { host_.documents().create(name, nullptr); });
    return document(name);
}

void Stage::close(const std::wstring& name) {
    const auto isOfDocument = [&name](const auto& entry) { return entry.first.first == name; };
    std::erase_if(wanted_, isOfDocument);
    std::erase_if(wantedIdle_, isOfDocument);
    guarded("closing a document", [&] {
        if (!host_.documents().close(document(name))) {
            throw std::runtime_error("that it cannot be closed");
        }
    });
}

KtApDocument* Stage::find(const std::wstring& name) const {
    return kthost::Host::current()->documents().find(name);
}

kthost::Document& Stage::document(const std::wstring& name) const {
    kthost::Document* found = kthost::Host::current()->documents().find(name);
    if (found == nullptr) {
        throw std::runtime_error("there is no such document");
    }
    return *found;
}

kthost::Database& Stage::drawing(const std::wstring& name) const {
    return *document(name).database();
}

template <typename Function>
Function Stage::exported(const char* name) const {
    return reinterpret_cast<Function>(kthost::Host::current()->modules().exportOf(kModule, name));
}

void Stage::load() {
    guarded("loading", [this] { loaded_ = static_cast<bool>(host_.modules().load(moduleFile())); });
}

void Stage::unload() {
    if (loaded_) {
        loaded_ = false;
        guarded("unloading", [this] {
            if (!host_.modules().unload(kModule)) {
                throw std::runtime_error("that it cannot be unloaded");
            }
        });
    }
}

bool Stage::attach(std::size_t rank, const Ids& ids, const std::wstring& document) {
    wanted_[{document, rank}] = ids;
    const IdArray array = toArray(ids);
    bool attached = false;
    if (loaded_) {
        const auto call =
            exported<decltype(&ktdxBlockReferenceMonitorAttach)>("ktdxBlockReferenceMonitorAttach");
        guarded("attaching", [&] { attached = call(find(document), &array, functions_.at(rank)); });
    }
    return attached;
}

void Stage::detach(std::size_t rank, const std::wstring& document) {
    wanted_.erase({document, rank});
    if (loaded_) {
        const auto call =
            exported<decltype(&ktdxBlockReferenceMonitorDetach)>("ktdxBlockReferenceMonitorDetach");
        guarded("detaching", [&] { call(find(document), functions_.at(rank)); });
    }
}

bool Stage::attachIdle(std::size_t rank, std::uint32_t interval, const std::wstring& document) {
    wantedIdle_[{document, rank}] = interval;
    std::int32_t attached = 0;
    if (loaded_) {
        const auto call = exported<decltype(&ktdxDocTimerAttach)>("ktdxDocTimerAttach");
        guarded("attaching", [&] { attached = call(find(document), functions_.at(rank), interval, 1); });
    }
    return attached != 0;
}

void Stage::detachIdle(std::size_t rank, const std::wstring& document) {
    wantedIdle_.erase({document, rank});
    if (loaded_) {
        const auto call = exported<decltype(&ktdxDocTimerAttach)>("ktdxDocTimerAttach");
        guarded("detaching", [&] { call(find(document), functions_.at(rank), 0, 0); });
    }
}

bool Stage::update(bool force, bool notify, const std::wstring& document) {
    bool updated = false;
    if (loaded_) {
        const auto call = exported<decltype(&ktdxUpdateBlockGraph)>("ktdxUpdateBlockGraph");
        guarded("updating", [&] { updated = call(find(document), force, notify); });
    }
    return updated;
}

bool Stage::takeAnswer(bool found, const IdArray& array, Ids& ids) {
    if (!found && array.length() != ids.size()) {
        escaped_ += "something was appended by a query that failed\n";
    }
    ids.assign(array.begin(), array.end());
    return found;
}

bool Stage::tableBlocks(Ids& ids, const std::wstring& document) {
    IdArray array = toArray(ids);
    std::int32_t found = 0;
    if (loaded_) {
        const auto call =
            exported<decltype(&ktdxGetBlockRecordIdsOfKtDbTables)>("ktdxGetBlockRecordIdsOfKtDbTables");
        guarded("asking for tables", [&] { found = call(find(document), &array); });
    }
    return takeAnswer(found != 0, array, ids);
}

bool Stage::tables(Ids& ids, const std::wstring& document) {
    IdArray array = toArray(ids);
    std::int32_t found = 0;
    if (loaded_) {
        const auto call = exported<decltype(&ktdxGetKtDbTableIds)>("ktdxGetKtDbTableIds");
        guarded("asking for tables", [&] { found = call(find(document), &array); });
    }
    return takeAnswer(found != 0, array, ids);
}

std::uint32_t Stage::askGraph() {
    std::uint32_t sum = 0;
    if (loaded_) {
        const auto ask = exported<std::uint32_t (*)(KtApDocument*)>("ktdxAskGraph");
        guarded("asking about the graph", [&] { sum = ask(&document()); });
    }
    return sum;
}

void Stage::command(const std::function<void()>& edit, const std::wstring& name) {
    kthost::Document& edited = document(name);
    guarded("a command", [&] {
        const kthost::CommandOutcome outcome =
            host_.documents().runCommand(edited, L"edit", [&edit](kthost::Document&) {
                edit();
                return kthost::CommandResult::done;
            });
        if (!outcome) {
            throw std::runtime_error(outcome.reason);
        }
    });
    guarded("an idle check", [this] { host_.loop().pump(); });
}

bool Stage::forceUpdates() {
    bool all = true;
    for (const kthost::Document* each : host_.documents().documents()) {
        if (each->database() != nullptr) {
            all = update(true, false, each->name()) && all;
        }
    }
    return all;
}

void Stage::attachAnew() {
    const auto wanted = wanted_;
    const auto wantedIdle = wantedIdle_;
    for (const kthost::Document* each : host_.documents().documents()) {
        for (std::size_t rank = 0; rank < kClients && each->database() != nullptr; ++rank) {
            detach(rank, each->name());
            detachIdle(rank, each->name());
        }
    }
    for (const auto& [client, ids] : wanted) {
        attach(client.second, ids, client.first);
    }
    for (const auto& [client, interval] : wantedIdle) {
        attachIdle(client.second, interval, client.first);
    }
}

void Stage::touchEverything() {
    for (kthost::Document* each : std::vector<kthost::Document*>(host_.documents().documents())) {
        if (each->database() == nullptr) {
            continue;
        }
        host_.documents().setCurrent(each);
        host_.clock().advance(60'000);
        kthost::Database& drawn = *each->database();
        command(
            [&drawn] {
                for (const KtDbObjectId reference : kthost::referencesIn(drawn.modelSpaceId())) {
                    must(kthost::moveReference(drawn, reference, {7.0, 8.0, 9.0}));
                }
            },
            each->name());
    }
}

ObservedState Stage::observe() {
    ObservedState state;
    if (loaded_) {
        const auto call = exported<ObserveFunction>("ktdxObserve");
        for (kthost::Document* each : host_.documents().documents()) {
            call(each, state);
        }
    }
    return state;
}
