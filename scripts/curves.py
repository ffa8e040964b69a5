#!/usr/bin/env python3
"""curves.py FIGURES.json FOLDER: draws what was measured at several sizes, time an element over size, both axes
logarithmic, the columns in one picture; workloads that belong together are panels of one file."""
import json
import math
import pathlib
import sys
from html import escape

PANEL_WIDTH, PANEL_HEIGHT = 380, 270
LEFT, RIGHT, TOP, BOTTOM = 66, 18, 40, 52
HEADER = 40
COLUMNS = {"this": ("#0b6e4f", "none", "this: the module"),
           "literal": ("#b3541e", "none", "literal: the same, written straight down"),
           "limit": ("#3d4d5c", "5 4", "limit: the work that cannot be avoided")}
TEXT, GRID = "#1a1a1a", "#e2e2e2"
PANELS_ACROSS = 3

# What a size counts in each family, and which families share a file.
SIZES = {"references": "references in the drawing", "references, once": "references in the drawing",
         "graphs": "definitions in the drawing", "idle": "callbacks at the idle check",
         "tables": "records in the drawing", "templates": "entries in the template",
         "templates of one block": "entries in the template", "real parts list": "references in the drawing",
         "parts list": "references in the drawing"}
FILES = {"references": ["references", "references, once"], "graphs": ["graphs"],
         "templates": ["templates", "templates of one block"], "others": ["idle", "tables", "real parts list"]}


class Axis:
    """Maps values to pixels, logarithmically, with some room at both ends."""

    def __init__(self, values, first, last, least_decades):
        self.low, self.high = math.log10(min(values)), math.log10(max(values))
        missing = max(least_decades - (self.high - self.low), 0)
        margin = missing / 2 + 0.06 * max(self.high - self.low, least_decades)
        self.low, self.high = self.low - margin, self.high + margin
        self.first, self.last = first, last

    def at(self, value):
        share = (math.log10(value) - self.low) / (self.high - self.low)
        return self.first + share * (self.last - self.first)

    def ticks(self, least):
        """Powers of ten; 3, or 2 and 5, times them too where there would be fewer than `least`."""
        powers = range(math.floor(self.low), math.ceil(self.high) + 1)
        for factors in ((1,), (1, 3), (1, 2, 5)):
            values = [factor * 10.0**power for power in powers for factor in factors]
            inside = [value for value in values if self.low <= math.log10(value) <= self.high]
            if len(inside) >= least:
                break
        return inside


def time_text(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size * 0.999:
            return f"{nanoseconds / size:g} {unit}"
    return f"{nanoseconds:g} ns"


def size_text(size):
    power = round(math.log10(size), 6)
    if size >= 10_000 and power == int(power):
        return "10" + "".join("⁰¹²³⁴⁵⁶⁷⁸⁹"[int(digit)] for digit in str(int(power)))
    return f"{size:,.0f}"


def text(x, y, content, anchor="middle", size=12, weight="normal"):
    return (f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}" font-weight="{weight}">'
            f"{escape(content)}</text>")


def line(x1, y1, x2, y2, colour=GRID):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}"/>'


def curves_of(figures):
    """{column: [(size, nanoseconds an element)]}, ascending by size."""
    curves = {}
    for figure in sorted(figures, key=lambda figure: figure["size"]):
        for column, measured in figure.get("columns", {}).items():
            if figure["size"] > 0 and measured["ns_per_element"] > 0:
                curves.setdefault(column, []).append((figure["size"], measured["ns_per_element"]))
    return curves


def curve(column, points, across, up):
    colour, dashes, _ = COLUMNS[column]
    places = [(across.at(size), up.at(time)) for size, time in points]
    path = " ".join(f"{x:.1f},{y:.1f}" for x, y in places)
    parts = [f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2" '
             f'stroke-dasharray="{dashes}"/>']
    return parts + [f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3.2" fill="{colour}"/>' for x, y in places]


def panel(left, top, workload, element, size_label, curves):
    right, bottom = left + PANEL_WIDTH - RIGHT, top + PANEL_HEIGHT - BOTTOM
    left, top = left + LEFT, top + TOP
    across = Axis([size for points in curves.values() for size, _ in points], left, right, 1)
    up = Axis([time for points in curves.values() for _, time in points], bottom, top, 1)
    parts = [text(left, top - 22, workload, "start", 14, "bold"),
             text(left, top - 7, f"time {'an' if element[0] in 'aeiou' else 'a'} {element}", "start", 11)]
    for value in up.ticks(4):
        parts += [line(left, up.at(value), right, up.at(value)),
                  text(left - 7, up.at(value) + 4, time_text(value), "end", 11)]
    for value in across.ticks(2):
        parts += [line(across.at(value), top, across.at(value), bottom),
                  text(across.at(value), bottom + 17, size_text(value), size=11)]
    parts += [line(left, bottom, right, bottom, TEXT), line(left, top, left, bottom, TEXT),
              text((left + right) / 2, bottom + 36, size_label, size=11)]
    for column, points in curves.items():
        parts += curve(column, points, across, up)
    return parts


def legend(columns):
    parts, x = [], 20
    for column in columns:
        colour, dashes, meaning = COLUMNS[column]
        parts += [f'<line x1="{x}" y1="20" x2="{x + 30}" y2="20" stroke="{colour}" stroke-width="2.5" '
                  f'stroke-dasharray="{dashes}"/>', text(x + 38, 24, meaning, "start", 13)]
        x += 60 + 7.2 * len(meaning)
    return parts, x


def picture(panels):
    """`panels` holds the arguments of each panel."""
    columns = [column for column in COLUMNS if any(column in curves for *_, curves in panels)]
    across = min(PANELS_ACROSS if len(panels) != 4 else 2, len(panels))
    parts, needed = legend(columns)
    width = max(across * PANEL_WIDTH, needed)
    height = HEADER + math.ceil(len(panels) / across) * PANEL_HEIGHT
    for i, arguments in enumerate(panels):
        parts += panel(i % across * PANEL_WIDTH, HEADER + i // across * PANEL_HEIGHT, *arguments)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:.0f} {height}" width="{width:.0f}" '
            f'height="{height}" font-family="DejaVu Sans, Verdana, sans-serif" fill="{TEXT}">\n'
            '<rect width="100%" height="100%" fill="white"/>\n' + "\n".join(parts) + "\n</svg>\n")


def panels_of(figures):
    panels = []
    for workload in dict.fromkeys(figure["workload"] for figure in figures):
        same = [figure for figure in figures if figure["workload"] == workload]
        curves = curves_of(same)
        if any(len(points) > 1 for points in curves.values()):
            panels.append((workload, same[0]["element"], SIZES[same[0]["family"]], curves))
    return panels


def draw(figures, folder):
    """Gives the names of the files."""
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    drawn = []
    for name, families in FILES.items():
        panels = panels_of([figure for figure in figures if figure["family"] in families])
        if panels:
            (folder / f"{name}.svg").write_text(picture(panels), encoding="utf-8")
            drawn.append(f"{name}.svg")
    return drawn


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    draw(json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))["figures"], sys.argv[2])
