#include "bench/report/Machine.h"
#include "bench/report/Report.h"
#include "bench/report/Verdicts.h"

#include <nlohmann/json.hpp>

namespace bench {

namespace {

nlohmann::ordered_json jsonOf(const Figure& figure, Column column) {
    const Measured& measured = figure.of(column);
    nlohmann::ordered_json json{{"median_ns", measured.median()},
                                {"spread", measured.spread()},
                                {"ns_per_element", figure.timePerElement(column)}};
    if (measured.isCounted) {
        json["allocations_per_element"] = measured.allocations / figure.elements;
        json["allocations"] = measured.allocations;
        json["bytes_kept"] = measured.bytesKept;
    }
    json["samples_ns"] = measured.samples;
    return json;
}

nlohmann::ordered_json jsonOf(const std::optional<double>& ratio) {
    return ratio ? nlohmann::ordered_json(*ratio) : nlohmann::ordered_json();
}

nlohmann::ordered_json jsonOf(const Figure& figure) {
    nlohmann::ordered_json json{{"family", figure.family},
                                {"workload", figure.workload},
                                {"element", figure.element},
                                {"size", figure.size},
                                {"elements", figure.elements}};
    for (const Column column : kColumns) {
        if (figure.has(column)) {
            json["columns"][nameOf(column)] = jsonOf(figure, column);
        }
    }
    json["this_to_limit"] = jsonOf(figure.ratio(Column::module, Column::limit));
    json["literal_to_this"] = jsonOf(figure.ratio(Column::literal, Column::module));
    json["bookkeeping_literal_to_this"] = jsonOf(figure.bookkeepingRatio());
    return json;
}

} // namespace

std::string jsonOf(const Figures& figures) {
    nlohmann::ordered_json json{{"machine", machineText()},
                                {"figures", nlohmann::ordered_json::array()},
                                {"verdicts", nlohmann::ordered_json::array()}};
    for (const Figure& figure : figures) {
        json["figures"].push_back(jsonOf(figure));
    }
    for (const Verdict& verdict : judge(figures)) {
        json["verdicts"].push_back({{"what", verdict.what},
                                    {"wanted", verdict.wanted},
                                    {"figure", verdict.figure},
                                    {"met", verdict.isMet}});
    }
    return json.dump(1) + '\n';
}

} // namespace bench
