// A parts list kept up to date while commands edit the drawing. In the literal column a client extracts
// everything after every command; in the limit there is none.

#include "bench/drawings/RealDrawings.h"
#include "bench/drawings/ReferenceDrawing.h"
#include "bench/drawings/Require.h"
#include "bench/report/Names.h"
#include "bench/workloads/PartsClients.h"
#include "bench/workloads/Workloads.h"
#include "kthost/database/Attributes.h"
#include "kthost/database/DatabaseQueries.h"

#include <algorithm>
#include <string>

namespace bench {

namespace {

std::unique_ptr<kthost::Database> madeUpDrawing(std::size_t size) {
    auto drawing = std::make_unique<kthost::Database>(L"plan");
    const ReferenceDrawing filled(*drawing, size); // what it keeps of it is not needed
    return drawing;
}

/// A list of all blocks but the one that is placed most often.
class PartsScene {
public:
    PartsScene(const Setting& setting, std::unique_ptr<kthost::Database> drawing)
        : size_(setting.size),
          stage_(std::move(drawing)) {
        divide();
        client_ = makePartsClient(setting.column, stage_, options_);
    }

    /// The next reference that is listed, or of those that are not.
    void editNext(bool listed) {
        const Ids& references = listed ? listed_ : others_;
        const KtDbObjectId reference = references[++edits_ % references.size()];
        const std::wstring value = std::to_wstring(edits_);
        stage_.command(
            [&] { require(kthost::setAttributeText(stage_.database(), reference, L"Value", value)); });
        client_->commandEnded();
    }

    std::size_t size() const { return size_; }

private:
    void divide() {
        const auto isNamed = [](KtDbObjectId record) {
            return !kthost::referencesTo(record).empty() && !kthost::recordName(record).starts_with(L'*');
        };
        Ids records = kthost::records(stage_.database(), false);
        std::erase_if(records, [&](KtDbObjectId record) { return !isNamed(record); });
        std::stable_sort(records.begin(), records.end(), [](KtDbObjectId left, KtDbObjectId right) {
            return kthost::referencesTo(left).size() < kthost::referencesTo(right).size();
        });
        others_ = kthost::referencesTo(records.back());
        records.pop_back();
        for (const KtDbObjectId record : records) {
            options_.blocks.emplace_back(kthost::recordName(record));
            const Ids references = kthost::referencesTo(record);
            listed_.insert(listed_.end(), references.begin(), references.end());
        }
    }

    std::size_t size_;
    Stage stage_;
    parts::Options options_;
    Ids listed_;
    Ids others_;
    std::size_t edits_ = 0;
    std::unique_ptr<PartsClient> client_;
};

class MadeUpScene final : public PartsScene {
public:
    explicit MadeUpScene(const Setting& setting) : PartsScene(setting, madeUpDrawing(setting.size)) {}
};

class RealScene final : public PartsScene {
public:
    explicit RealScene(const Setting& setting) : PartsScene(setting, readRealDrawing(setting.size)) {}
};

template <class Scene, bool kListed>
void edit(Round& round, Scene& scene) {
    while (round.next()) {
        scene.editNext(kListed);
    }
}

template <class Scene>
double referencesOf(const Scene& scene) {
    return static_cast<double>(scene.size());
}

template <class Scene>
void planLists(Plan& plan, Family<Scene> family, const char* elsewhere, const char* listed,
               std::size_t (*commands)(std::size_t)) {
    family.workloads = {
        {elsewhere, "reference", &edit<Scene, false>, commands, &referencesOf<Scene>, nullptr},
        {listed, "reference", &edit<Scene, true>, commands, &referencesOf<Scene>, nullptr},
    };
    plan.add(family);
}

std::size_t aThousand(std::size_t /*size*/) {
    return 1'000;
}

std::size_t aHundred(std::size_t /*size*/) {
    return 100;
}

std::size_t aFew(std::size_t /*size*/) {
    return 5;
}

} // namespace

void planPartsLists(Plan& plan, Scale scale) {
    const bool quick = scale == Scale::quick;
    std::vector<std::size_t> sizes = sizesOfRealDrawings();
    if (quick && !sizes.empty()) {
        sizes.erase(sizes.begin(), sizes.end() - 1);
    }
    const Family<RealScene> real{"real parts list", sizes, repetitionsOf(scale), {}};
    planLists(plan, real, kRealPartsElsewhere, kRealPartsWatched, quick ? &aHundred : &aThousand);
    // A thousand commands take many minutes in a drawing as large as this.
    constexpr std::size_t kLarge = 100'000;
    const Family<MadeUpScene> madeUp{"parts list", {quick ? kLarge / 10 : kLarge}, 3, {}};
    planLists(plan, madeUp, kPartsElsewhere, kPartsWatched, quick ? &aFew : &aHundred);
}

} // namespace bench
