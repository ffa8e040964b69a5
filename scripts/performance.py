#!/usr/bin/env python3
"""performance.py FIGURES.json docs/performance.md: puts figures into the document, between its lines
<!-- verdicts -->, <!-- table: WORKLOAD, WORKLOAD --> or <!-- machine --> and the next <!-- end -->, and draws the
curves into the folder beside it that is named like it."""
import json
import pathlib
import re
import sys

import curves

COLUMNS = ("this", "literal", "limit")


def time_text(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3), ("ns", 1)):
        if nanoseconds >= size or unit == "ns":
            return f"{nanoseconds / size:.3g} {unit}"


def cell(figure, column):
    measured = figure.get("columns", {}).get(column)
    if measured is None:
        return "–"
    spread = f" ± {100 * measured['spread']:.0f} %" if len(measured["samples_ns"]) > 1 else " (once)"
    return time_text(measured["median_ns"]) + spread


def ratio(figure, name):
    value = figure[name]
    return "–" if value is None else f"{value:.3g}"


def per_element(figure):
    measured = figure.get("columns", {}).get("this", {})
    return time_text(measured["ns_per_element"]) if measured else "–"


def allocations(figure):
    value = figure.get("columns", {}).get("this", {}).get("allocations_per_element")
    return "–" if value is None else f"{value:.3f}"


def table(figures, workloads):
    lines = ["| workload | size | this | literal | limit | this / limit | literal / this | this: an element | its allocations |",
             "| --- | ---: | ---: | ---: | ---: | ---: | ---: | ---: | ---: |"]
    for workload in workloads:
        for figure in figures:
            if figure["workload"] == workload:
                lines.append("| " + " | ".join([workload, f"{figure['size']:,}"] +
                                               [cell(figure, column) for column in COLUMNS] +
                                               [ratio(figure, "this_to_limit"), ratio(figure, "literal_to_this"),
                                                per_element(figure), allocations(figure)]) + " |")
    return lines


def verdicts(measured):
    lines = ["| figure | wanted | came out | |", "| --- | --- | --- | --- |"]
    for verdict in measured["verdicts"]:
        met = "met" if verdict["met"] else "**not met**"
        lines.append(f"| {verdict['what']} | {verdict['wanted']} | {verdict['figure']} | {met} |")
    return lines


def content_of(mark, measured):
    if mark == "verdicts":
        return verdicts(measured)
    if mark == "machine":
        return [measured["machine"]]
    workloads = mark.removeprefix("table:").split(";")
    return table(measured["figures"], [workload.strip() for workload in workloads])


def filled(text, measured):
    def replace(match):
        return "\n".join([match[1], *content_of(match[2], measured), match[3]])

    return re.sub(r"(<!-- (verdicts|machine|table:[^>]*?) -->)\n.*?(<!-- end -->)", replace, text, flags=re.DOTALL)


def main(figures_file, document):
    measured = json.loads(pathlib.Path(figures_file).read_text(encoding="utf-8"))
    document = pathlib.Path(document)
    document.write_text(filled(document.read_text(encoding="utf-8"), measured), encoding="utf-8")
    curves.draw(measured["figures"], document.with_suffix(""))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2])
