// Asking for the table entities of a drawing.

#include "bench/drawings/Require.h"
#include "bench/workloads/Stage.h"
#include "bench/workloads/Workloads.h"
#include "kthost/database/Definitions.h"

#include <KtArray.h>
#include <KtDbTable.h>

#include <string>

namespace bench {

namespace {

constexpr std::size_t kRecordsEachTable = 10;

/// A drawing with as many records as the setting's size, 1 in 10 a table's.
class TableScene {
public:
    explicit TableScene(const Setting& setting) : size_(setting.size) {
        stage_.database().setUndoRecording(false);
        for (std::size_t i = 0; i < setting.size; ++i) {
            i % kRecordsEachTable == 0 ? addTable() : addDefinition(i);
        }
        stage_.enter(setting.column);
    }

    void ask() {
        KtArray<KtDbObjectId> records;
        KtArray<KtDbObjectId> tables;
        require(stage_.contender().appendTables(records, tables), "asked");
        require(tables.length() == size_ / kRecordsEachTable, "all tables found");
    }

    std::size_t size() const { return size_; }

private:
    void addTable() {
        KtDbObjectId id;
        require(ktdbCreateTable(&stage_.database(), stage_.database().modelSpaceId(), {}, 1, 1, id));
    }

    void addDefinition(std::size_t number) {
        KtDbObjectId id;
        require(kthost::addDefinition(stage_.database(), L"block" + std::to_wstring(number), id));
    }

    std::size_t size_;
    Stage stage_;
};

void ask(Round& round, TableScene& scene) {
    while (round.next()) {
        scene.ask();
    }
}

double elementsOf(const TableScene& scene) {
    return static_cast<double>(scene.size());
}

} // namespace

void planTables(Plan& plan, Scale scale) {
    Family<TableScene> family;
    family.name = "tables";
    family.sizes = {1'000, 10'000, 100'000};
    family.repetitions = repetitionsOf(scale);
    family.workloads = {{"table queries", "record", &ask, &passesFor, &elementsOf, nullptr}};
    plan.add(family);
}

} // namespace bench
