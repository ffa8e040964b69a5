// Definitions inside definitions: carrying changes down, and counting instances.

#include "bench/drawings/GraphDrawing.h"
#include "bench/drawings/Require.h"
#include "bench/workloads/Stage.h"
#include "bench/workloads/Workloads.h"

#include <KtArray.h>

#include <cstdint>

namespace bench {

namespace {

void called() {}

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

/// The plain way walks all definitions for each one that it reaches, from each changed one again.
template <std::size_t kChanged, std::size_t kMostForLiteral>
bool isPropagated(const Setting& setting) {
    return setting.column != Column::literal || setting.size <= kMostForLiteral;
}

/// Nothing is asked of the host meanwhile.
template <std::size_t kChanged, std::size_t kMostForLiteral>
bool isPropagatedAlone(const Setting& setting) {
    return setting.column != Column::limit && isPropagated<kChanged, kMostForLiteral>(setting);
}

} // namespace

void planGraphs(Plan& plan, Scale scale) {
    Family<GraphScene> family;
    family.name = "graphs";
    family.sizes = scale == Scale::quick ? std::vector<std::size_t>{1'000, 10'000}
                                         : std::vector<std::size_t>{1'000, 10'000, 100'000};
    family.repetitions = repetitionsOf(scale);
    const char* const element = "nesting reached";
    constexpr std::size_t kSmall = 1'000;
    constexpr std::size_t kMiddle = 10'000;
    family.workloads = {
        {"propagation, 1 changed", element, &propagate<1>, &onePass, &nestingsReached<1>,
         &isPropagatedAlone<1, kMiddle>},
        {"propagation, 30 changed", element, &propagate<30>, &onePass, &nestingsReached<30>,
         &isPropagatedAlone<30, kSmall>},
        {"propagation, 1000 changed", element, &propagate<1000>, &onePass, &nestingsReached<1000>,
         &isPropagatedAlone<1000, kSmall>},
        {"1 definition edited", "nesting", &edit<1>, &onePass, &nestings, &isPropagated<1, kMiddle>},
        {"30 definitions edited", "nesting", &edit<30>, &onePass, &nestings, &isPropagated<30, kSmall>},
        {"1000 definitions edited", "nesting", &edit<1000>, &onePass, &nestings, &isPropagated<1000, kSmall>},
        {"instances in model space", "nesting", &countInModelSpace, &onePass, &nestings, nullptr},
        {"instances in all layouts", "nesting", &countInLayouts, &onePass, &nestings, nullptr},
    };
    plan.add(family);
}

} // namespace bench
