#include "tests/scenario_modules/puppets/Puppets.h"

#include <ktdx/KtDxNotify.h>

#include "tests/scenario_modules/puppets/PuppetFunctions.h"

#include <KtApDocManager.h>
#include <KtDbBlockTable.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbDatabase.h>
#include <KtDbTable.h>
#include <KtEd.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace puppets {

namespace {

using Line = std::vector<std::wstring>;

struct Order {
    std::wstring document; ///< empty: the current one
    Line line;
};

struct Puppet {
    std::vector<Order> whenCalled;
    bool acting = false;
};

std::array<Puppet, kCount>& all() {
    static std::array<Puppet, kCount> puppets;
    return puppets;
}

std::size_t& callDepth() {
    static std::size_t depth = 0;
    return depth;
}

std::size_t& edits() {
    static std::size_t count = 0;
    return count;
}

std::size_t& outbursts() {
    static std::size_t count = 0;
    return count;
}

/// What keeps an order from being carried out.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

template <typename Visit>
void visitDocuments(Visit visit) {
    KtApDocManager* manager = ktDocManagerPtr();
    if (manager == nullptr) {
        return;
    }
    const std::unique_ptr<KtApDocumentIterator> documents(manager->newDocumentIterator());
    for (; documents != nullptr && !documents->done(); documents->step()) {
        visit(documents->document());
    }
}

KtApDocument* documentNamed(const std::wstring& name) {
    if (name.empty()) {
        return ktDocManagerPtr()->curDocument();
    }
    KtApDocument* found = nullptr;
    visitDocuments([&](KtApDocument* each) { found = name == each->name() ? each : found; });
    return found;
}

void addAllRecords(KtDbBlockTable& table, KtArray<KtDbObjectId>& ids) {
    KtDbBlockTableIterator* records = nullptr;
    if (table.newIterator(records) != Orbx::eOk) {
        return;
    }
    const std::unique_ptr<KtDbBlockTableIterator> owner(records);
    for (; !records->done(); records->step()) {
        KtDbObjectId id;
        if (records->getRecordId(id) == Orbx::eOk) {
            ids.append(id);
        }
    }
}

/// The null id stands for a name that is not there: it attaches to nothing.
KtArray<KtDbObjectId> recordsNamed(const KtDbDatabase& database, const Line& names, std::size_t first) {
    KtArray<KtDbObjectId> ids;
    KtDbBlockTable* table = nullptr;
    if (ktdbOpenObject(table, database.blockTableId(), KtDb::kForRead) != Orbx::eOk) {
        throw Refusal("the table of blocks cannot be read");
    }
    for (std::size_t i = first; i < names.size(); ++i) {
        KtDbObjectId id;
        if (names[i] == L"*") {
            addAllRecords(*table, ids);
        } else {
            static_cast<void>(table->getIdAt(names[i].c_str(), id));
            ids.append(id);
        }
    }
    static_cast<void>(table->close());
    return ids;
}

std::size_t numberIn(const std::wstring& word, std::size_t end) {
    std::size_t number = 0;
    for (const wchar_t digit : word) {
        number = digit < L'0' || digit > L'9' || number > end
                     ? end
                     : number * 10 + static_cast<std::size_t>(digit - L'0');
    }
    if (word.empty() || number >= end) {
        throw Refusal("a number is missing, or too large");
    }
    return number;
}

void demand(bool done, const char* reason) {
    if (!done) {
        throw Refusal(reason);
    }
}

KtDbDatabase& drawingOf(KtApDocument* document) {
    demand(document->database() != nullptr, "the document has no drawing");
    return *document->database();
}

void noteEdit() {
    edits() += callDepth() == 0 ? 0U : 1U;
}

void draw(KtApDocument* document) {
    KtDbDatabase& drawing = drawingOf(document);
    const KtArray<KtDbObjectId> found = recordsNamed(drawing, {L"*Model_Space"}, 0);
    KtDbObjectId table;
    noteEdit();
    demand(ktdbCreateTable(&drawing, found[0], {}, 1, 1, table) == Orbx::eOk, "no table can be drawn");
}

void strike(KtApDocument* document, const Line& line) {
    const KtArray<KtDbObjectId> found = recordsNamed(drawingOf(document), line, 1);
    KtDbBlockTableRecord* record = nullptr;
    KtArray<KtDbObjectId> references;
    if (!found.isEmpty() && ktdbOpenObject(record, found[0], KtDb::kForRead) == Orbx::eOk) {
        static_cast<void>(record->getBlockReferenceIds(references));
        static_cast<void>(record->close());
    }
    demand(!references.isEmpty(), "there is no reference to it");
    KtDbObject* reference = nullptr;
    noteEdit();
    demand(ktdbOpenObject(reference, references[0], KtDbObject::desc(), KtDb::kForWrite) == Orbx::eOk,
           "the reference cannot be opened");
    const Orbx::ErrorStatus status = reference->erase();
    static_cast<void>(reference->close());
    demand(status == Orbx::eOk, "the reference cannot be erased");
}

[[noreturn]] void throwOutburst() {
    outbursts() += callDepth() == 0 ? 0U : 1U;
    throw Outburst();
}

void update(KtApDocument* document, const Line& line) {
    std::size_t next = 1;
    const bool force = next < line.size() && line[next] == L"force";
    next += force ? 1U : 0U;
    const bool notify = next < line.size() && line[next] == L"notify";
    demand(ktdxUpdateBlockGraph(document, force, notify), "the block graph cannot be brought up to date");
}

constexpr std::size_t kMostMilliseconds = 1'000'000'000;

void direct(std::size_t number, KtApDocument* document, const Line& line) {
    const std::wstring word = line.size() > 1 ? line[1] : L"";
    KtRxCallback function = functionOf(number);
    if (word == L"attach") {
        const KtArray<KtDbObjectId> ids = recordsNamed(drawingOf(document), line, 2);
        demand(ktdxBlockReferenceMonitorAttach(document, &ids, function), "it cannot be attached");
    } else if (word == L"detach") {
        ktdxBlockReferenceMonitorDetach(document, function);
    } else if (word == L"every" && line.size() > 2) {
        const std::size_t interval = numberIn(line[2], kMostMilliseconds);
        demand(ktdxDocTimerAttach(document, function, static_cast<std::uint32_t>(interval), 1) == 1,
               "it cannot be attached");
    } else if (word == L"never") {
        demand(ktdxDocTimerAttach(document, function, 0, 0) == 1, "it cannot be detached");
    } else {
        throw Refusal("that is nothing that a puppet does");
    }
}

void obey(const Order& order) {
    KtApDocument* document = documentNamed(order.document);
    demand(document != nullptr, "there is no such document");
    const Line& line = order.line;
    demand(!line.empty(), "there is nothing to do");
    if (line[0] == L"update") {
        update(document, line);
    } else if (line[0] == L"draw") {
        draw(document);
    } else if (line[0] == L"strike") {
        strike(document, line);
    } else if (line[0] == L"throw") {
        throwOutburst();
    } else {
        direct(numberIn(line[0], kCount), document, line);
    }
}

Order toOrder(Line words) {
    Order order;
    if (words.size() > 1 && words[0] == L"at") {
        order.document = words[1];
        words.erase(words.begin(), words.begin() + 2);
    }
    order.line = std::move(words);
    return order;
}

bool isForCalls(const Line& words) {
    return words.size() > 3 && words[1] == L"when" && words[2] == L"called";
}

void command(const Line& words) {
    if (!isForCalls(words)) {
        obey(toOrder(words));
        return;
    }
    std::vector<Order>& orders = all().at(numberIn(words[0], kCount)).whenCalled;
    if (words[3] == L"nothing") {
        orders.clear();
    } else {
        orders.push_back(toOrder({words.begin() + 3, words.end()}));
    }
}

std::wstring wide(const char* text) {
    return {text, text + std::char_traits<char>::length(text)}; // ours are ASCII
}

/// A puppet that is called by what it does itself only says so: it would never end.
class Acting {
public:
    explicit Acting(Puppet& puppet) : puppet_(puppet) {
        puppet_.acting = true;
        ++callDepth();
    }

    Acting(const Acting&) = delete;
    Acting& operator=(const Acting&) = delete;

    ~Acting() {
        puppet_.acting = false;
        --callDepth();
    }

private:
    Puppet& puppet_;
};

void act(std::size_t number) {
    Puppet& puppet = all().at(number);
    if (puppet.acting) {
        return;
    }
    const Acting acting(puppet);
    for (const Order& order : std::vector<Order>(puppet.whenCalled)) {
        try {
            obey(order);
        } catch (const Refusal& refusal) {
            ktedPrint((L"puppet " + std::to_wstring(number) + L": " + wide(refusal.what())).c_str());
        }
    }
}

} // namespace

void called(std::size_t number) {
    ktedPrint((L"puppet " + std::to_wstring(number) + L" called").c_str());
    act(number);
}

bool runPuppetCommand(KtApDocument* /*document*/, const KtArray<const wchar_t*>& words) {
    try {
        command(Line(words.begin(), words.end()));
        return true;
    } catch (const Refusal& refusal) {
        ktedFail(wide(refusal.what()).c_str());
        return false;
    }
}

void dismissPuppets() {
    visitDocuments([](KtApDocument* document) {
        for (std::size_t number = 0; number < kCount; ++number) {
            ktdxBlockReferenceMonitorDetach(document, functionOf(number));
            ktdxDocTimerAttach(document, functionOf(number), 0, 0);
        }
    });
    all() = {};
}

std::size_t editsFromCallbacks() {
    return edits();
}

std::size_t outburstsFromCallbacks() {
    return outbursts();
}

} // namespace puppets
