// Definitions inside definitions: carrying changes down, and counting instances.

#include "bench/drawings/GraphDrawing.h"
#include "bench/drawings/Require.h"
#include "bench/report/Names.h"
#include "bench/workloads/Stage.h"
#include "bench/workloads/Workloads.h"

#include <KtArray.h>

#include <cstdint>

namespace bench {

namespace {

/// A graph whose definitions are all watched.
class GraphScene {
public:
    explicit GraphScene(const Setting& setting)
        : setting_(setting),
          drawing_(stage_.database(), setting.size) {
        stage_.enter(setting.column);
        stage_.contender().prepare();
        KtArray<KtDbObjectId> ids;
        for (const KtDbObjectId definition : drawing_.definitions()) {
            ids.append(definition);
        }
        require(stage_.contender().attach(ids, &called), "attached");
    }

    Stage& stage() { return stage_; }

    Contender& contender() { return stage_.contender(); }

    const GraphDrawing& drawing() const { return drawing_; }

private:
    Setting setting_;
    Stage stage_;
    GraphDrawing drawing_;
};

template <std::size_t kChanged>
void propagate(Round& round, GraphScene& scene) {
    const Ids changed = scene.drawing().some(kChanged);
    while (round.next()) {
        {
            const Paused paused(round);
            scene.contender().forgetChanges();
            scene.contender().markChanged(changed);
        }
        scene.contender().propagate();
    }
    scene.contender().forgetChanges();
}

template <std::size_t kChanged>
void edit(Round& round, GraphScene& scene) {
    const Ids changed = scene.drawing().some(kChanged);
    scene.contender().expect({KtDbObjectId(~std::uint64_t{0}), {}});
    while (round.next()) {
        scene.stage().command([&] { scene.drawing().editReferencesOf(changed); });
    }
}

void countInModelSpace(Round& round, GraphScene& scene) {
    while (round.next()) {
        benchmark::DoNotOptimize(scene.contender().countInstances(scene.drawing().definitions(), true));
    }
}

void countInLayouts(Round& round, GraphScene& scene) {
    while (round.next()) {
        benchmark::DoNotOptimize(scene.contender().countInstances(scene.drawing().definitions(), false));
    }
}

template <std::size_t kChanged>
double nestingsReached(const GraphScene& scene) {
    return static_cast<double>(scene.drawing().nestingsReachedFrom(scene.drawing().some(kChanged)));
}

double nestings(const GraphScene& scene) {
    return static_cast<double>(scene.drawing().definitions().size() * GraphDrawing::kNestings);
}

/// The plain way walks all definitions for each one that it reaches, from each changed one again. It takes
/// some seconds a thousand million of that.
template <std::size_t kChanged>
constexpr std::size_t plainWork(std::size_t size) {
    return kChanged * size * size;
}

constexpr std::size_t kSome = 500'000'000;
constexpr std::size_t kWithinAMinute = 5'000'000'000;

template <std::size_t kChanged>
bool isEdited(const Setting& setting) {
    return setting.column != Column::literal || plainWork<kChanged>(setting.size) < kSome;
}

/// Nothing is asked of the host meanwhile. The plain way is measured once where it takes long.
template <std::size_t kChanged, std::size_t kMost>
bool isPropagated(const Setting& setting) {
    const bool once = setting.repetition == 1 && plainWork<kChanged>(setting.size) <= kMost;
    return setting.column != Column::limit && (once || isEdited<kChanged>(setting));
}

template <std::size_t kMost>
std::vector<Workload<GraphScene>> workloads() {
    const char* const reached = "nesting reached";
    const char* const element = "nesting";
    return {
        {kOnePropagated, reached, &propagate<1>, &onePass, &nestingsReached<1>, &isPropagated<1, kMost>},
        {kFewPropagated, reached, &propagate<30>, &onePass, &nestingsReached<30>, &isPropagated<30, kMost>},
        {kManyPropagated, reached, &propagate<1000>, &onePass, &nestingsReached<1000>,
         &isPropagated<1000, kMost>},
        {"1 definition edited", element, &edit<1>, &onePass, &nestings, &isEdited<1>},
        {"30 definitions edited", element, &edit<30>, &onePass, &nestings, &isEdited<30>},
        {"1000 definitions edited", element, &edit<1000>, &onePass, &nestings, &isEdited<1000>},
        {kInModelSpace, element, &countInModelSpace, &onePass, &nestings, nullptr},
        {kInLayouts, element, &countInLayouts, &onePass, &nestings, nullptr},
    };
}

} // namespace

void planGraphs(Plan& plan, Scale scale) {
    Family<GraphScene> family;
    family.name = "graphs";
    family.repetitions = repetitionsOf(scale);
    if (scale == Scale::quick) {
        family.sizes = {1'000, 10'000};
        family.workloads = workloads<2 * kSome>(); // a thousand changed of a thousand, and no more
    } else {
        family.sizes = {1'000, 10'000, 100'000};
        family.workloads = workloads<kWithinAMinute>();
    }
    plan.add(family);
}

} // namespace bench
