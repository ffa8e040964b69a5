#include "bench/report/Verdicts.h"

#include "bench/report/Names.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <span>
#include <utility>

namespace bench {

namespace {

constexpr std::array kOnReferences{kFirstAttach, kRescan,       kOneEdited,
                                   kSomeEdited,  kSomeInserted, kSomeErased};

constexpr std::array kTemplatesRead{kTemplateRead, kOneBlockRead};

using Verdicts = std::vector<Verdict>;
using Value = std::function<std::optional<double>(const Figure&)>;

/// A value and what it was found at.
struct Found {
    double value = 0;
    std::string where;
};

std::string whereOf(const Figure& figure) {
    return fmt::format("{} at {}", figure.workload, figure.size);
}

/// The greatest value, or the least, among the figures of a workload.
std::optional<Found> extreme(const Figures& figures, const char* workload, const Value& valueOf,
                             bool greatest) {
    std::optional<Found> found;
    for (const Figure& figure : figures) {
        const std::optional<double> value = figure.workload == workload ? valueOf(figure) : std::nullopt;
        if (value && (!found || (*value > found->value) == greatest)) {
            found = Found{*value, whereOf(figure)};
        }
    }
    return found;
}

/// Of those that were measured more than once.
const Figure* largest(const Figures& figures, const char* workload) {
    const Figure* found = nullptr;
    for (const Figure& figure : figures) {
        const bool isMeasured = figure.workload == workload && figure.of(Column::module).samples.size() > 1;
        if (isMeasured && (found == nullptr || figure.size > found->size)) {
            found = &figure;
        }
    }
    return found;
}

std::optional<double> toLimit(const Figure& figure) {
    return figure.ratio(Column::module, Column::limit);
}

void addAtMost(Verdicts& verdicts, const char* what, const std::optional<Found>& found, double most) {
    if (found) {
        verdicts.push_back({what, fmt::format("{} or less", most),
                            fmt::format("{:.2f} ({})", found->value, found->where), found->value <= most});
    }
}

void addAtLeast(Verdicts& verdicts, const char* what, const std::optional<Found>& found, double least) {
    if (found) {
        verdicts.push_back({what, fmt::format("{} or more", least),
                            fmt::format("{:.2f} ({})", found->value, found->where), found->value >= least});
    }
}

void judgeRatiosToLimit(const Figures& figures, Verdicts& verdicts) {
    addAtMost(verdicts, "rescan with nothing changed, this / limit, at every size",
              extreme(figures, kRescan, toLimit, true), 1.25);
    addAtMost(verdicts, "first attach, this / limit", extreme(figures, kFirstAttach, toLimit, true), 1.5);
    addAtMost(verdicts, "one edit and its idle check, this / limit",
              extreme(figures, kOneEdited, toLimit, true), 1.3);
}

/// The worst of the workloads.
void judgeBookkeeping(const Figures& figures, Verdicts& verdicts) {
    std::optional<Found> least;
    for (const char* workload : kOnReferences) {
        const Figure* figure = largest(figures, workload);
        const std::optional<double> ratio = figure == nullptr ? std::nullopt : figure->bookkeepingRatio();
        if (ratio && (!least || *ratio < least->value)) {
            least = Found{*ratio, whereOf(*figure)};
        }
    }
    addAtLeast(verdicts, "time beyond the limit, literal / this, on the largest drawing", least, 5);
}

/// How much more an element costs in the largest drawing than in one of 10,000 references.
std::optional<double> growth(const Figures& figures, const char* workload, Column column) {
    constexpr std::size_t kBase = 10'000;
    const Figure* base = find(figures, workload, kBase);
    const Figure* large = largest(figures, workload);
    if (base == nullptr || large == nullptr || large->size <= kBase || !base->has(column) ||
        !large->has(column)) {
        return std::nullopt;
    }
    return large->timePerElement(column) / base->timePerElement(column);
}

/// The same over how much more the limit does: the worst of the workloads.
std::optional<Found> worstGrowth(const Figures& figures, std::span<const char* const> workloads) {
    std::optional<Found> most;
    for (const char* workload : workloads) {
        const std::optional<double> own = growth(figures, workload, Column::module);
        const std::optional<double> limit = growth(figures, workload, Column::limit);
        if (own && limit && (!most || *own / *limit > most->value)) {
            most = Found{*own / *limit, whereOf(*largest(figures, workload))};
        }
    }
    return most;
}

void judgeGrowth(const Figures& figures, Verdicts& verdicts) {
    const std::optional<Found> most = worstGrowth(figures, kOnReferences);
    addAtMost(verdicts, "time an element on the largest drawing over that at 10^4, this / the same for limit",
              most, 1.2);
}

/// Where the plain way does not finish with 1,000 changed, its time with fewer is less than it would be.
void judgePropagation(const Figures& figures, Verdicts& verdicts) {
    constexpr std::size_t kSize = 10'000;
    const Figure* many = find(figures, kManyPropagated, kSize);
    if (many == nullptr || !many->has(Column::module)) {
        return;
    }
    for (const char* workload : {kManyPropagated, kFewPropagated, kOnePropagated}) {
        const Figure* literal = find(figures, workload, kSize);
        if (literal != nullptr && literal->has(Column::literal)) {
            const double ratio = literal->of(Column::literal).median() / many->of(Column::module).median();
            const std::string where = literal == many ? "" : fmt::format("at least; literal: {}; ", workload);
            addAtLeast(verdicts, "propagation, literal / this, 10^4 definitions, 1,000 changed",
                       Found{ratio, where + whereOf(*many)}, 100);
            return;
        }
    }
}

/// The dearest element over the cheapest, the sizes and numbers of changed definitions taken together.
void judgeProportion(const Figures& figures, Verdicts& verdicts, const char* what,
                     const std::vector<const char*>& workloads) {
    std::optional<Found> least;
    std::optional<Found> most;
    for (const char* workload : workloads) {
        for (const Figure& figure : figures) {
            if (figure.workload != workload || !figure.has(Column::module)) {
                continue;
            }
            const Found found{figure.timePerElement(Column::module), whereOf(figure)};
            least = !least || found.value < least->value ? found : least;
            most = !most || found.value > most->value ? found : most;
        }
    }
    if (least && least->where != most->where) {
        constexpr double kCaches = 5; // what is larger than the caches costs more to reach
        verdicts.push_back({what, fmt::format("dearest / cheapest {} or less", kCaches),
                            fmt::format("{:.1f} ns ({}) to {:.1f} ns ({})", least->value, least->where,
                                        most->value, most->where),
                            most->value / least->value <= kCaches});
    }
}

double moreAllocationsThanLimit(const Figure& figure) {
    return figure.of(Column::module).allocations - figure.of(Column::limit).allocations;
}

void judgeIdleCheck(const Figures& figures, Verdicts& verdicts) {
    const Figure* figure = find(figures, kIdleCheck, 0);
    if (figure == nullptr || !toLimit(*figure)) {
        return;
    }
    addAtMost(verdicts, "idle check with nothing to do, this / limit",
              Found{*toLimit(*figure), "no callback"}, 1.25);
    const double own = moreAllocationsThanLimit(*figure);
    verdicts.push_back({"allocations in it", "none", fmt::format("{:.3f}", own), own < 1e-3});
}

void judgeSteadyState(const Figures& figures, Verdicts& verdicts) {
    const Figure* large = largest(figures, kRescan);
    const Figure* small = find(figures, kRescan, 1'000);
    if (large == nullptr || small == nullptr || large == small) {
        return;
    }
    const double atLarge = moreAllocationsThanLimit(*large);
    const double atSmall = moreAllocationsThanLimit(*small);
    verdicts.push_back({"allocations in a rescan that finds nothing new", "none that grows with the drawing",
                        fmt::format("{:.0f} at {}, {:.0f} at {}", atSmall, small->size, atLarge, large->size),
                        atLarge <= atSmall + 1});
}

double bytesBeyondLimit(const Figure& figure, Column column) {
    return (figure.of(column).bytesKept - figure.of(Column::limit).bytesKept) / figure.elements;
}

void judgeMemory(const Figures& figures, Verdicts& verdicts) {
    constexpr double kIdsOfOne = 5 * 8; // a reference and its 4 attributes
    const Figure* figure = largest(figures, kFirstAttach);
    if (figure == nullptr) {
        return;
    }
    const double own = bytesBeyondLimit(*figure, Column::module);
    verdicts.push_back({"memory a watched reference with 4 attributes",
                        fmt::format("{} bytes or less", 3 * kIdsOfOne),
                        fmt::format("{:.0f} bytes (literal {:.0f}) at {}", own,
                                    bytesBeyondLimit(*figure, Column::literal), figure->size),
                        own <= 3 * kIdsOfOne});
}

void judgeTemplates(const Figures& figures, Verdicts& verdicts) {
    std::optional<Found> most;
    for (const char* workload : kTemplatesRead) {
        const std::optional<Found> found = extreme(figures, workload, toLimit, true);
        most = found && (!most || found->value > most->value) ? found : most;
    }
    addAtMost(verdicts, "template read, this / a bare loop", most, 1.5);
    addAtMost(verdicts, "time an entry in the largest template over that at 10^4, this / the same for limit",
              worstGrowth(figures, kTemplatesRead), 1.2);
}

/// The literal column extracts everything after every command.
void judgePartsLists(const Figures& figures, Verdicts& verdicts) {
    const Value ratio = [](const Figure& figure) { return figure.ratio(Column::literal, Column::module); };
    const auto least = [&](const char* madeUp, const char* real) {
        const std::optional<Found> one = extreme(figures, madeUp, ratio, false);
        const std::optional<Found> other = extreme(figures, real, ratio, false);
        return !one || (other && other->value < one->value) ? other : one;
    };
    addAtLeast(verdicts, "parts list, extract-everything / this, edits of blocks that it does not watch",
               least(kPartsElsewhere, kRealPartsElsewhere), 3);
    addAtLeast(verdicts, "the same, edits of blocks that it watches", least(kPartsWatched, kRealPartsWatched),
               0.9);
}

} // namespace

std::vector<Verdict> judge(const Figures& figures) {
    Verdicts verdicts;
    judgeRatiosToLimit(figures, verdicts);
    judgeBookkeeping(figures, verdicts);
    judgeGrowth(figures, verdicts);
    judgePropagation(figures, verdicts);
    judgeProportion(figures, verdicts, "propagation, time a nesting reached",
                    {kFewPropagated, kManyPropagated});
    judgeProportion(figures, verdicts, "instances, time a nesting", {kInModelSpace});
    judgeIdleCheck(figures, verdicts);
    judgeSteadyState(figures, verdicts);
    judgeMemory(figures, verdicts);
    judgeTemplates(figures, verdicts);
    judgePartsLists(figures, verdicts);
    return verdicts;
}

} // namespace bench
