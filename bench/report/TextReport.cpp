#include "bench/report/Machine.h"
#include "bench/report/Report.h"
#include "bench/report/Verdicts.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace bench {

namespace {

std::string timeText(double nanoseconds) {
    if (nanoseconds < 1e3) {
        return fmt::format("{:.1f} ns", nanoseconds);
    }
    if (nanoseconds < 1e6) {
        return fmt::format("{:.2f} us", nanoseconds / 1e3);
    }
    return nanoseconds < 1e9 ? fmt::format("{:.2f} ms", nanoseconds / 1e6)
                             : fmt::format("{:.2f} s", nanoseconds / 1e9);
}

std::string ratioText(const std::optional<double>& ratio) {
    return ratio ? fmt::format("{:.2f}", *ratio) : "-";
}

std::string columnText(const Figure& figure, Column column) {
    if (!figure.has(column)) {
        return fmt::format(" {:>10} {:>5} {:>8} {:>8}", "-", "", "", "");
    }
    const Measured& measured = figure.of(column);
    return fmt::format(" {:>10} {:>4.0f}% {:>8.1f} {:>8}", timeText(measured.median()),
                       measured.spread() * 100, figure.timePerElement(column),
                       measured.isCounted ? fmt::format("{:.3f}", measured.allocations / figure.elements)
                                          : "-");
}

std::string heading(const Figure& figure) {
    std::string text = fmt::format("\n{}, element: {}\n{:>10}", figure.workload, figure.element, "");
    for (const Column column : kColumns) {
        text += fmt::format(" {:>10} {:>5} {:>8} {:>8}", nameOf(column), "+-", "ns/el", "alloc/el");
    }
    return text + fmt::format(" {:>10} {:>12} {:>11} {:>14}\n{:>10}\n", "this/limit", "literal/this",
                              "books l/t", "bytes/el t l", "size");
}

std::string bytesText(const Figure& figure) {
    const Measured& host = figure.of(Column::limit);
    const auto own = [&](Column column) {
        const Measured& measured = figure.of(column);
        return measured.isCounted && host.isCounted
                   ? fmt::format("{:.0f}", (measured.bytesKept - host.bytesKept) / figure.elements)
                   : "-";
    };
    return own(Column::module) + ' ' + own(Column::literal);
}

std::string lineOf(const Figure& figure) {
    std::string text = fmt::format("{:>10}", figure.size);
    for (const Column column : kColumns) {
        text += columnText(figure, column);
    }
    return text + fmt::format(" {:>10} {:>12} {:>11} {:>14}\n",
                              ratioText(figure.ratio(Column::module, Column::limit)),
                              ratioText(figure.ratio(Column::literal, Column::module)),
                              ratioText(figure.bookkeepingRatio()), bytesText(figure));
}

std::string verdictsText(const Figures& figures) {
    std::string text = "\nwhat had to come out\n";
    for (const Verdict& verdict : judge(figures)) {
        text += fmt::format("{:>8}  {}: {}, wanted {}\n", verdict.isMet ? "met" : "NOT MET", verdict.what,
                            verdict.figure, verdict.wanted);
    }
    return text;
}

} // namespace

std::string textOf(const Figures& figures) {
    std::string text = machineText() + '\n';
    for (auto figure = figures.begin(); figure != figures.end(); ++figure) {
        const bool isFirst = std::none_of(figures.begin(), figure, [&](const Figure& earlier) {
            return earlier.workload == figure->workload;
        });
        if (!isFirst) {
            continue;
        }
        text += heading(*figure);
        for (const Figure& same : figures) {
            text += same.workload == figure->workload ? lineOf(same) : "";
        }
    }
    return text + verdictsText(figures);
}

} // namespace bench
