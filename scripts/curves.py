#!/usr/bin/env python3
"""curves.py FIGURES.json FOLDER: draws, for each workload that was measured at several sizes, the time an element
over the size, the columns in one picture, both axes logarithmic."""
import json
import math
import pathlib
import re
import sys
from html import escape

WIDTH, HEIGHT = 460, 300
LEFT, RIGHT, TOP, BOTTOM = 64, 84, 34, 44
COLOURS = {"this": "#0b6e4f", "literal": "#b3541e", "limit": "#4a5a6a"}
DASHES = {"this": "none", "literal": "none", "limit": "5 4"}


class Axis:
    """Maps values to pixels, with whole powers of ten at both ends."""

    def __init__(self, values, first, last):
        self.low = math.floor(math.log10(min(values)) + 1e-9)
        self.high = max(math.ceil(math.log10(max(values)) - 1e-9), self.low + 1)
        self.first, self.last = first, last

    def at(self, value):
        share = (math.log10(value) - self.low) / (self.high - self.low)
        return self.first + share * (self.last - self.first)

    def powers(self):
        return [10.0**power for power in range(self.low, self.high + 1)]


def curves_of(figures):
    """{column: [(size, nanoseconds an element)]}, ascending by size."""
    curves = {}
    for figure in sorted(figures, key=lambda figure: figure["size"]):
        for column, measured in figure["columns"].items():
            if figure["size"] > 0 and measured["ns_per_element"] > 0:
                curves.setdefault(column, []).append((figure["size"], measured["ns_per_element"]))
    return curves


def time_text(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:g} {unit}"
    return f"{nanoseconds:g} ns"


def text(x, y, content, anchor="middle", colour="#222", size=11):
    return (f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" fill="{colour}" font-size="{size}">'
            f"{escape(content)}</text>")


def line(x1, y1, x2, y2, colour="#ddd"):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}"/>'


def grid(across, up):
    right, bottom = WIDTH - RIGHT, HEIGHT - BOTTOM
    parts = []
    for power in up.powers():
        y = up.at(power)
        parts += [line(LEFT, y, right, y), text(LEFT - 6, y + 4, time_text(power), "end")]
    for power in across.powers():
        x = across.at(power)
        parts += [line(x, TOP, x, bottom), text(x, bottom + 16, f"{power:,.0f}")]
    return parts


def curve(column, points, across, up):
    colour = COLOURS.get(column, "#222")
    places = [(across.at(size), up.at(time)) for size, time in points]
    path = " ".join(f"{x:.1f},{y:.1f}" for x, y in places)
    parts = [f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2" '
             f'stroke-dasharray="{DASHES.get(column, "none")}"/>']
    parts += [f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3" fill="{colour}"/>' for x, y in places]
    return parts


def labels(curves, up):
    """The columns' names behind the ends of their curves, moved apart where they would overlap."""
    ends = sorted((up.at(points[-1][1]), column) for column, points in curves.items())
    parts, lowest = [], -math.inf
    for y, column in ends:
        lowest = max(y, lowest + 13)
        parts.append(text(WIDTH - RIGHT + 8, lowest + 4, column, "start", COLOURS.get(column, "#222"), 12))
    return parts


def picture(workload, element, curves):
    sizes = [size for points in curves.values() for size, _ in points]
    times = [time for points in curves.values() for _, time in points]
    across = Axis(sizes, LEFT, WIDTH - RIGHT)
    up = Axis(times, HEIGHT - BOTTOM, TOP)
    parts = grid(across, up)
    for column, points in curves.items():
        parts += curve(column, points, across, up)
    parts += labels(curves, up)
    parts += [text(LEFT, 20, f"{workload}: time a {element}", "start", size=13),
              text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 8, "size")]
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" '
            f'height="{HEIGHT}" font-family="sans-serif">\n<rect width="100%" height="100%" fill="white"/>\n'
            + "\n".join(parts) + "\n</svg>\n")


def file_name(workload):
    return re.sub(r"[^a-z0-9]+", "-", workload.lower()).strip("-") + ".svg"


def main(figures_file, folder):
    figures = json.loads(pathlib.Path(figures_file).read_text(encoding="utf-8"))["figures"]
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for workload in dict.fromkeys(figure["workload"] for figure in figures):
        same = [figure for figure in figures if figure["workload"] == workload]
        curves = curves_of(same)
        if any(len(points) > 1 for points in curves.values()):
            target = folder / file_name(workload)
            target.write_text(picture(workload, same[0]["element"], curves), encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2])
