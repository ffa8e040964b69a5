#!/usr/bin/env python3
"""Which lines and branches of src/ no test has reached.

    coverage.py BUILD EXCEPTIONS

Reads what the compiler's notes and the tests' counts below BUILD say, prints the figures of every file, and fails when
a line or branch was not reached that EXCEPTIONS does not name, or EXCEPTIONS names one that was. Edges of exceptions do
not count: an edge that is taken when a call throws, the choice among the types of a catch, and what is reached through
such edges only.
"""

import collections
import json
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def reports(build):
    """Of the module everything; of the tests, which make classes of its templates, what was run."""
    notes = sorted(str(path) for folder in ("src", "tests") for path in (build / folder).rglob("*.gcno")
                   if folder == "src" or path.with_suffix(".gcda").exists())
    for start in range(0, len(notes), 20):
        command = ["gcov", "--json-format", "--branch-probabilities", "--stdout", *notes[start:start + 20]]
        said = subprocess.run(command, cwd=build, capture_output=True, text=True)
        if said.returncode != 0:
            sys.exit(f"gcov does not understand the build in {build}:\n{said.stderr}")
        for line in said.stdout.splitlines():
            yield json.loads(line)


class Line:
    """One line of source. Where several functions are made of one template, or one function in several places, their
    branches are one another's if they are of the same shape."""

    def __init__(self):
        self.count = 0
        self.branches = {}

    def add(self, found):
        self.count += found["count"]
        shape = tuple(branch["throw"] for branch in found["branches"])
        counts = self.branches.setdefault(shape, [0] * len(shape))
        for index, branch in enumerate(found["branches"]):
            counts[index] += branch["count"]

    def sides(self, text):
        """How often each side of each branch was taken; of a line that was not reached, nothing more is asked."""
        if self.count == 0 or text.startswith("} catch ("):
            return []
        best = None
        for shape, counts in self.branches.items():
            sides = list(sides_of(shape, counts, text.startswith("switch ")))
            if best is None or sides.count(0) < best.count(0):
                best = sides
        return best or []


def sides_of(shape, counts, is_switch):
    """Branches come in twos. Where neither side was taken, nothing came to the branch: either the side of another that
    was not taken led there, and that is counted, or the edge of an exception did."""
    if is_switch:
        yield from counts
        return
    for index in range(0, len(counts) - 1, 2):
        throws = shape[index] or shape[index + 1]
        if not throws and counts[index] + counts[index + 1] != 0:
            yield counts[index]
            yield counts[index + 1]


def read_lines(build):
    files = collections.defaultdict(lambda: collections.defaultdict(Line))
    for report in reports(build):
        for file in report["files"]:
            path = pathlib.Path(report["current_working_directory"], file["file"])
            if path.is_relative_to(ROOT / "src"):
                for line in file["lines"]:
                    files[str(path.relative_to(ROOT))][line["line_number"]].add(line)
    return files


def read_exceptions(path):
    """'FILE: TEXT OF THE LINE', and below it, indented, the reason."""
    exceptions = {}
    key = None
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        if line[0].isspace():
            exceptions[key] += line.strip()
        else:
            file, colon, text = line.partition(": ")
            if not colon:
                sys.exit(f"{path}:{number}: neither 'FILE: TEXT' nor an indented reason")
            key = (file, text.strip())
            exceptions[key] = ""
    for (file, text), reason in exceptions.items():
        if not reason:
            sys.exit(f"{path}: no reason is given for {file}: {text}")
    return exceptions


def percent(part, whole):
    return "   -  " if whole == 0 else f"{100 * part / whole:5.1f}%"


def main():
    build, list_of_exceptions = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
    exceptions = read_exceptions(list_of_exceptions)
    used = set()
    failures = []
    totals = [0, 0, 0, 0]
    print(f"{'lines':>16}{'branches':>20}")
    for file, lines in sorted(read_lines(build).items()):
        source = (ROOT / file).read_text().splitlines()
        figures = [0, 0, 0, 0]
        for number, line in sorted(lines.items()):
            text = source[number - 1].strip()
            if text == "}":
                continue  # holds what leaving the scope does: for certain if the lines before it were reached
            sides = line.sides(text)
            missed = [] if line.count else ["line"]
            missed += ["branch"] * sides.count(0)
            figures[0] += line.count != 0
            figures[1] += 1
            figures[2] += len(sides) - sides.count(0)
            figures[3] += len(sides)
            if missed and (file, text) in exceptions:
                used.add((file, text))
            elif missed:
                failures.append(f"{file}:{number}: not reached: {missed[0]}: {text}")
        print(f"{figures[0]:5} of {figures[1]:5} {percent(*figures[:2])}"
              f"{figures[2]:6} of {figures[3]:5} {percent(*figures[2:])}  {file}")
        totals = [total + figure for total, figure in zip(totals, figures)]
    print(f"{totals[0]:5} of {totals[1]:5} {percent(*totals[:2])}"
          f"{totals[2]:6} of {totals[3]:5} {percent(*totals[2:])}  all of src/")
    failures += [f"{list_of_exceptions}: names what is reached: {file}: {text}"
                 for file, text in exceptions.keys() - used]
    print(f"{len(used)} exceptions, each with its reason in {list_of_exceptions}")
    for failure in failures:
        print(failure, file=sys.stderr)
    sys.exit(1 if failures else 0)


main()
