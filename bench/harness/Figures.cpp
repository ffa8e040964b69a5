#include "bench/harness/Figures.h"

#include <algorithm>

namespace bench {

double Measured::median() const {
    if (samples.empty()) {
        return 0;
    }
    std::vector<double> sorted = samples;
    std::sort(sorted.begin(), sorted.end());
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Measured::spread() const {
    if (samples.empty()) {
        return 0;
    }
    const auto [least, most] = std::minmax_element(samples.begin(), samples.end());
    return (*most - *least) / 2 / median();
}

std::optional<double> Figure::ratio(Column of, Column to) const {
    if (!has(of) || !has(to) || this->of(to).median() <= 0) {
        return std::nullopt;
    }
    return this->of(of).median() / this->of(to).median();
}

std::optional<double> Figure::bookkeepingRatio() const {
    if (!has(Column::module) || !has(Column::literal) || !has(Column::limit)) {
        return std::nullopt;
    }
    const double limit = of(Column::limit).median();
    const double own = of(Column::module).median() - limit;
    return own <= 0 ? std::nullopt : std::optional((of(Column::literal).median() - limit) / own);
}

const Figure* find(const Figures& figures, const std::string& workload, std::size_t size) {
    const auto found = std::find_if(figures.begin(), figures.end(), [&](const Figure& figure) {
        return figure.workload == workload && figure.size == size;
    });
    return found == figures.end() ? nullptr : &*found;
}

} // namespace bench
