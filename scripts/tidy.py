#!/usr/bin/env python3
"""Runs clang-tidy over all that a build has in its compile database, and fails when it finds anything.

    tidy.py BUILD

Most of the work is to read the library's headers, so BUILD compiles sources in bundles. But a bundle includes them, and
the analyzer and some other checks look at no more than the file itself. So each bundle is made to hold the text of its
sources; what is said about a line of it is said about theirs. The analyzer then looks into the functions of all of them,
and may leave more of the longest paths out than where it sees one source at a time.
"""

import bisect
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

# That a source is included is the bundles' own doing.
CHECKS = "-bugprone-suspicious-include"
BUNDLED = re.compile(r'^#include "(.*\.cpp)"$', re.M)
COUNTED = re.compile(r"^\d+ warnings?( and \d+ errors?)? generated\.$|^Suppressed \d+ |^Use -header-filter")


class Unit:
    """A file that is compiled: a source, or a bundle, with the lines where each of its sources begins."""

    def __init__(self, file):
        self.file = pathlib.Path(file)
        self.starts, self.sources = [], []

    def hold_sources(self):
        said = self.file.read_text(encoding="utf-8")
        lines = []
        for source in BUNDLED.findall(said):
            lines.append(f'#line 1 "{source}"')
            self.starts.append(len(lines))
            self.sources.append(source)
            lines += pathlib.Path(source).read_text(encoding="utf-8").splitlines()
        if self.sources:
            self.file.write_text("\n".join(lines) + "\n", encoding="utf-8")

    def source_of(self, line):
        """The source that has the line, and which of its lines it is."""
        index = bisect.bisect_left(self.starts, line) - 1
        return (self.sources[index], line - self.starts[index]) if index >= 0 else (str(self.file), line)

    def folders(self):
        return sorted({os.path.dirname(source) for source in self.sources})

    def check(self, build):
        """What clang-tidy says about it; empty when that is nothing."""
        command = ["clang-tidy-14", "--quiet", "-p", build, f"--checks={CHECKS}"]
        command += [f"--extra-arg=-iquote{folder}" for folder in self.folders()]
        done = subprocess.run([*command, str(self.file)], capture_output=True, text=True)
        said = re.sub(rf"^{re.escape(str(self.file))}:(\d+)", lambda found: ":".join(map(str, self.source_of(int(found.group(1))))),
                      done.stdout + done.stderr, flags=re.M)
        said = "\n".join(line for line in said.splitlines() if not COUNTED.match(line)).strip()
        return said or (f"{self.file}: clang-tidy fails without a word" if done.returncode != 0 else "")


def main():
    build = sys.argv[1]
    database = json.loads(pathlib.Path(build, "compile_commands.json").read_text(encoding="utf-8"))
    units = [Unit(entry["file"]) for entry in database]
    for unit in units:
        unit.hold_sources()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as threads:
        found = [said for said in threads.map(lambda unit: unit.check(build), units) if said]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
