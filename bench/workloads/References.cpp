// Drawings with many references: attaching to them, and every kind of idle check.

#include "bench/drawings/ReferenceDrawing.h"
#include "bench/drawings/Require.h"
#include "bench/report/Names.h"
#include "bench/workloads/Stage.h"
#include "bench/workloads/Workloads.h"

#include <optional>

namespace bench {

namespace {

/// A drawing that nobody watches until a workload wants it watched.
class ReferenceScene {
public:
    explicit ReferenceScene(const Setting& setting) : setting_(setting) { make(); }

    /// As nobody has watched it before.
    void makeFresh() {
        if (watched_) {
            make();
        }
        stage().contender().prepare();
    }

    void attach() {
        watched_ = true;
        KtArray<KtDbObjectId> ids;
        for (const KtDbObjectId definition : drawing().definitions()) {
            ids.append(definition);
        }
        require(stage().contender().attach(ids, &called), "attached");
    }

    void ensureWatched() {
        if (!watched_) {
            makeFresh();
            attach();
        }
        if (!settled_) {
            settle();
        }
    }

    Stage& stage() { return *stage_; }

    Contender& contender() { return stage_->contender(); }

    ReferenceDrawing& drawing() { return *drawing_; }

    std::size_t size() const { return setting_.size; }

    /// 1 in 100, but one at least.
    std::size_t share() const { return setting_.size < 100 ? 1 : setting_.size / 100; }

    void insertShare();
    void eraseShare(const Ids& taken);
    /// What is inserted from now on is new, and nothing goes.
    void expectInsertsOnly();
    void expectErased(const Ids& taken);

private:
    /// The first change after attaching has the nesting looked over, which the propagation measures.
    void settle() {
        expectInsertsOnly();
        stage().command([this] { drawing().edit(1); });
        settled_ = true;
    }

    void make() {
        drawing_.reset();
        stage_.reset();
        stage_.emplace();
        drawing_.emplace(stage_->database(), setting_.size);
        stage_->enter(setting_.column);
        watched_ = false;
        settled_ = false;
    }

    Setting setting_;
    std::optional<Stage> stage_;
    std::optional<ReferenceDrawing> drawing_;
    bool watched_ = false;
    bool settled_ = false;
};

void ReferenceScene::expectInsertsOnly() {
    contender().expect({drawing().lastReference(), {}});
}

void ReferenceScene::expectErased(const Ids& taken) {
    contender().expect({drawing().lastReference(), taken});
}

void ReferenceScene::insertShare() {
    stage().command([this] { drawing().insert(share()); });
}

/// For good: they are released before the idle check comes.
void ReferenceScene::eraseShare(const Ids& taken) {
    stage().run([&] { ReferenceDrawing::erase(stage().database(), taken); });
    require(stage().database().releaseErased() != 0, "released");
    stage().idle();
}

void attachFirst(Round& round, ReferenceScene& scene) {
    while (round.next()) {
        {
            const Paused paused(round);
            scene.makeFresh();
        }
        scene.attach();
    }
}

void rescan(Round& round, ReferenceScene& scene) {
    scene.ensureWatched();
    scene.expectInsertsOnly();
    while (round.next()) {
        require(scene.contender().update(true, true), "updated");
    }
}

void editSome(Round& round, ReferenceScene& scene, std::size_t count) {
    scene.ensureWatched();
    scene.expectInsertsOnly();
    while (round.next()) {
        scene.stage().command([&] { scene.drawing().edit(count); });
    }
}

void editOne(Round& round, ReferenceScene& scene) {
    editSome(round, scene, 1);
}

void editShare(Round& round, ReferenceScene& scene) {
    editSome(round, scene, scene.share());
}

void insertShare(Round& round, ReferenceScene& scene) {
    scene.ensureWatched();
    while (round.next()) {
        {
            const Paused paused(round);
            const Ids taken = scene.drawing().take(scene.share());
            scene.expectErased(taken);
            scene.eraseShare(taken);
            scene.expectInsertsOnly();
        }
        scene.insertShare();
    }
}

void eraseShare(Round& round, ReferenceScene& scene) {
    scene.ensureWatched();
    while (round.next()) {
        Ids taken;
        {
            const Paused paused(round);
            scene.expectInsertsOnly();
            scene.insertShare();
            taken = scene.drawing().take(scene.share());
            scene.expectErased(taken);
        }
        scene.eraseShare(taken);
    }
}

double elementsOf(const ReferenceScene& scene) {
    return static_cast<double>(scene.size());
}

/// Once, since making such a drawing takes the better part of a minute and some gigabytes.
Family<ReferenceScene> planHuge() {
    constexpr std::size_t kHuge = 10'000'000;
    const auto once = [](const Setting& setting) { return setting.repetition == 1; };
    return {"references, once", {kHuge}, 1, {{kRescan, "reference", &rescan, &onePass, &elementsOf, once}}};
}

} // namespace

void planReferences(Plan& plan, Scale scale) {
    Family<ReferenceScene> family;
    family.name = "references";
    family.sizes = scale == Scale::quick ? std::vector<std::size_t>{1'000, 10'000, 100'000}
                                         : std::vector<std::size_t>{1'000, 10'000, 100'000, 1'000'000};
    family.repetitions = repetitionsOf(scale);
    family.workloads = {
        {kFirstAttach, "reference", &attachFirst, &passesFor, &elementsOf, nullptr},
        {kRescan, "reference", &rescan, &passesFor, &elementsOf, nullptr},
        {kOneEdited, "reference", &editOne, &passesFor, &elementsOf, nullptr},
        {kSomeEdited, "reference", &editShare, &passesFor, &elementsOf, nullptr},
        {kSomeInserted, "reference", &insertShare, &passesFor, &elementsOf, nullptr},
        {kSomeErased, "reference", &eraseShare, &passesFor, &elementsOf, nullptr},
    };
    plan.add(family);
    if (scale == Scale::full) {
        plan.add(planHuge());
    }
}

} // namespace bench
