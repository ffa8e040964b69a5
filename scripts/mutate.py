#!/usr/bin/env python3
"""Changes src/ in one small place at a time and looks whether a test notices.

    mutate.py WORK EQUIVALENTS [--files PATTERN] [--matching REGEX] [--limit N] [--seed S] [--jobs N]
              [--rest | --survivors] [--list]

All changes are compiled at once: in a copy of the project, in WORK, each function of src/ holds its body once for each
change of it, and a number in the environment says which of them runs. So the suites are built once, however many
changes there are. Each test is run by itself first, and what it reaches is noted. Then a change costs no more than the
tests that reach it: those that noticed a change of the same function before, those that reach little, and so on, until
one fails. A change that no test notices is printed. WORK/judged.txt says of each change what came of it: --rest goes on
with those that it does not name, --survivors judges those once more that survived, and either counts the others in.

Fails when a change survives that EQUIVALENTS does not name, with the reason why it leaves the program the same, and when
of all changes that compile, once all are judged, fewer than 95 in 100 are caught.
"""

import argparse
import collections
import concurrent.futures
import fnmatch
import hashlib
import json
import os
import pathlib
import queue
import random
import re
import resource
import subprocess
import sys
import threading
import time

sys.dont_write_bytecode = True
from changes import BLANK, ROOT, all_changes, masked, outermost_bodies

WANTED = 0.95
MEMORY = 2 << 30
SLOWEST = 2.0  # seconds; the few tests that take longer are not asked, and what they alone would notice survives

# Those that the module's objects are linked into, then those that load the module, alone or into a whole host.
OBJECTS = ["ktdx_objects", "ktdx_legacy_objects"]
SUITES = ["legacy_tests", "ktemplate_tests", "module_tests", "loaded_legacy_tests", "scenario_tests"]

# The samples have to do; the drawings elsewhere would take most of the time.
OWN_ENVIRONMENT = {name: value for name, value in os.environ.items() if name != "KTDX_DRAWINGS"}


# All changes in one build

# What runs before a program's globals are there is not changed.
CHOICE = """#pragma once
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
inline unsigned char* mapReached() {
  const char* file = std::getenv("KTDX_REACHED");
  const int opened = file == nullptr ? -1 : open(file, O_RDWR);
  return opened < 0 ? nullptr : static_cast<unsigned char*>(mmap(nullptr, 65536, PROT_WRITE, MAP_SHARED, opened, 0));
}
inline unsigned char* gReached = mapReached();
inline const int gChange = std::getenv("KTDX_CHANGE") == nullptr ? 0 : std::atoi(std::getenv("KTDX_CHANGE"));
inline int changeFor(int place) {
  if (gReached != nullptr) {
    gReached[place] = 1;
  }
  return gChange;
}
"""


class Place:
    """The body of a function, or a constant outside of all functions, and the numbers of its changes, by the first of
    which it is known."""

    def __init__(self, start, end, is_body):
        self.start, self.end, self.is_body = start, end, is_body
        self.numbers = []


class Project:
    """A copy of the project that holds every change. They are numbered from 1."""

    def __init__(self, work, changes):
        self.tree, self.kept = work / "tree", work / "left-out.json"
        self.changes = dict(enumerate(changes, 1))
        self.sources = {change.file: (ROOT / change.file).read_text() for change in changes}
        self.places = {}  # of each change
        self.places_in = {file: self.find_places(file) for file in self.sources}
        self.alone = {number for number, place in self.places.items()
                      if not place.is_body and (self.changes[number].kind != "constant" or number != place.numbers[0])}
        self.broken = set()
        self.digest = digest([*self.sources.values(), *(str(change) for change in changes)])
        if self.kept.exists() and json.loads(self.kept.read_text())["of"] == self.digest:
            self.alone, self.broken = (set(json.loads(self.kept.read_text())[which]) for which in ("alone", "broken"))

    def find_places(self, file):
        code, found = masked(self.sources[file]), {}
        bodies = outermost_bodies(code)
        for number, change in self.changes.items():
            if change.file != file:
                continue
            body = next((body for body in bodies if body[0] < change.start < body[1]), None)
            where = body or constant_at(code, change)
            self.places[number] = found.setdefault(where, Place(*where, body is not None))
            self.places[number].numbers.append(number)
        return [found[where] for where in sorted(found)]

    def part(self, place, number):
        change, source = self.changes[number], self.sources[self.changes[number].file]
        return source[place.start:change.start] + change.text + source[change.end:place.end]

    def switched(self, file, applied=None):
        """The text of a file with all its changes under a switch, or with one of them for good."""
        source, done = self.sources[file], 0

        def lines_from(position):
            return f'\n#line {source.count(chr(10), 0, position) + 1} "{file}"\n'

        text = [f'#include "{self.tree}/Choice.h"', lines_from(0)]
        for place in self.places_in[file]:
            before, same, first = source[done:place.start], source[place.start:place.end], place.numbers[0]
            usable = [number for number in place.numbers if number not in self.broken | self.alone]
            done = place.end
            if applied in place.numbers:
                text += [before, self.part(place, applied)]
            elif not usable:
                text += [before, same]
            elif place.is_body:
                text += [not_constexpr(before, "inline "), f"{{ switch (changeFor({first})) {{"]
                text += [f'\ncase {number}:\n#line 1 "change-{number}"\n{self.part(place, number)}\nbreak;'
                         for number in usable]
                text += ["\ndefault:", lines_from(place.start), same, "\n}}", lines_from(done)]
            else:
                text += [not_constexpr(before, ""), f'\n#line 1 "change-{first}"\n',
                         f"(changeFor({first}) == {first} ? {self.part(place, first)} : {same})", lines_from(done)]
        return "".join(text) + source[done:]

    def write(self, applied=None):
        write_if_changed(self.tree / "Choice.h", CHOICE.encode())
        for file in self.sources:
            write_if_changed(self.tree / file, self.switched(file, applied).encode())

    def build(self):
        """Builds the suites. What does not compile is noted, and left out, until the rest does."""
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, capture_output=True,
                                text=True, check=True).stdout.splitlines()
        for file in listed:
            if file not in self.sources and (ROOT / file).is_file():
                write_if_changed(self.tree / file, (ROOT / file).read_bytes(), (ROOT / file).stat().st_mode)
        self.write()
        said = self.run("cmake", "--preset", "mutate")
        if said is not None:
            sys.exit(said)
        self.make_usable(OBJECTS)  # most is found here, before so much depends on it
        self.make_usable(SUITES)
        self.kept.write_text(json.dumps({"of": self.digest, "alone": [*self.alone], "broken": [*self.broken]}))

    def make_usable(self, targets):
        while (said := self.make(targets)) is not None:
            if not self.leaves_out(said):
                sys.exit(f"mutate: the changes cannot be built:\n{said}")
            self.write()

    def make(self, targets):
        how = ["--", "-k0", f"-j{os.cpu_count()}"]
        return self.run("cmake", "--build", "--preset", "mutate", "--target", *targets, *how)

    def run(self, *command):
        """What it says if it fails."""
        done = subprocess.run(command, cwd=self.tree, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              check=False, env=dict(os.environ, LC_ALL="C"))
        return done.stdout if done.returncode != 0 else None

    def leaves_out(self, said):
        """A constant that the compiler itself has to know makes what uses it fail, so these go first."""
        names = set(re.findall(r"the value of '[^']*?(\w+)' is not usable", said))
        outside = {number for number, place in self.places.items() if not place.is_body} - self.alone
        found = {number for number in outside if names & self.declared_before(number)}
        if not found:
            found = {int(number) for number in re.findall(r"^change-(\d+):\d+:\d+: error", said, re.M)}
        self.alone |= found & outside
        self.broken |= found - outside
        return found

    def declared_before(self, number):
        source, start = self.sources[self.changes[number].file], self.places[number].start
        return set(re.findall(r"\w+", source[source.rfind("\n", 0, start):start]))


def constant_at(code, change):
    """Where it is; of a literal, of which one character changes, all, and of a number what belongs to it."""
    start, end = change.start, change.end
    while code[start].isalnum() and code[start - 1].isalnum():
        start -= 1
    while code[end - 1].isalnum() and code[end].isalnum():
        end += 1
    while code[start - 1] == BLANK and code[start] == BLANK:
        start -= 1
    while code[end] == BLANK and code[end - 1] == BLANK:
        end += 1
    return start, end


def not_constexpr(text, instead):
    """What stands before something that is switched, which nothing can know that is known at compile time."""
    head = re.search(r"[^;{}]*\Z", text).start()
    return text[:head] + text[head:].replace("static constexpr ", "static inline ").replace("constexpr ", instead)


def digest(texts):
    return hashlib.sha256("\0".join(texts).encode()).hexdigest()


def write_if_changed(path, text, mode=0o644):
    if not path.exists() or path.read_bytes() != text:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text)
        path.chmod(mode)


# Running the tests

class Test:
    def __init__(self, suite, name):
        self.suite, self.name = suite, name
        self.reached = frozenset()  # places
        self.seconds = 0.0


class Runner:
    """Runs tests in a folder of its own."""

    def __init__(self, number, work, project):
        self.bin = project.tree / "build/mutate/bin"
        self.folder = work / f"runner-{number}"
        (self.folder / "tmp").mkdir(parents=True, exist_ok=True)
        self.reached = self.folder / "reached"

    def fail(self, suite, names, seconds, **environment):
        """The first that does, if any; the seconds are of the processor."""
        log = self.folder / "log"
        environment["TEST_TMPDIR"] = str(self.folder / "tmp")
        limits = ["timeout", "--kill-after=5", str(60 + 20 * seconds), "prlimit", f"--as={MEMORY}", f"--cpu={seconds}"]
        with open(log, "wb") as output:
            code = subprocess.run([*limits, self.bin / suite, "--gtest_fail_fast", f"--gtest_filter={':'.join(names)}"],
                                  cwd=self.folder, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                                  env=OWN_ENVIRONMENT | environment, check=False).returncode
        if code == 0:
            return None
        said = log.read_text(errors="replace")
        failed = re.findall(r"^\[  FAILED  \] ([\w/.]+)", said, re.M)
        begun = re.findall(r"^\[ RUN      \] (\S+)", said, re.M)  # the last has ended the program, if none has failed
        return (failed[:1] or begun[-1:] or names)[0]

    def watch(self, test):
        """Notes what the test reaches and how long it takes."""
        self.reached.write_bytes(bytes(65536))
        begin = time.monotonic()
        if self.fail(test.suite, [test.name], 300, KTDX_REACHED=str(self.reached)):
            sys.exit(f"mutate: {test.suite} {test.name} fails without any change")
        test.seconds = time.monotonic() - begin
        test.reached = frozenset(place for place, mark in enumerate(self.reached.read_bytes()) if mark)

    def tests(self, suite):
        said = subprocess.run([self.bin / suite, "--gtest_list_tests"], capture_output=True, text=True,
                              check=True).stdout
        group = ""
        for line in said.splitlines():
            word = line.split()[0]
            if line[0] != " ":
                group = word
            else:
                yield Test(suite, group + word)


class Jury:
    """Knows which tests reach what, and which of them have noticed a change there."""

    def __init__(self, runners, project):
        self.runners, self.project = queue.Queue(), project
        for runner in runners:
            self.runners.put(runner)
        self.tests = [test for suite in SUITES for test in runners[0].tests(suite)]
        self.pool = concurrent.futures.ThreadPoolExecutor(len(runners))
        self.noticed = collections.defaultdict(list)  # by what tests, at each place

    def watch(self, file):
        """What a test reaches is kept in the file for as long as the sources are the same."""
        kept = json.loads(file.read_text()) if file.exists() else {}
        known = kept.get(self.project.digest, {})
        new = [test for test in self.tests if f"{test.suite} {test.name}" not in known]
        list(self.pool.map(lambda test: self.with_runner(lambda runner: runner.watch(test)), new))
        for test in self.tests:
            reached, seconds = known.setdefault(f"{test.suite} {test.name}", (sorted(test.reached), test.seconds))
            test.reached, test.seconds = frozenset(reached), seconds
        self.tests = [test for test in self.tests if test.seconds < SLOWEST]
        file.write_text(json.dumps({self.project.digest: known}))

    def with_runner(self, work):
        runner = self.runners.get()
        try:
            return work(runner)
        finally:
            self.runners.put(runner)

    def judge(self, number, reaching=None):
        """The test that notices the change, or None."""
        place = self.project.places[number].numbers[0]
        tests = [test for test in self.tests if place in test.reached] if reaching is None else reaching
        for group in self.groups(tests, self.noticed[place][-4:]):
            seconds = 1 + int(4 * sum(test.seconds for test in group))
            name = self.with_runner(lambda runner, group=group, seconds=seconds: runner.fail(
                group[0].suite, [test.name for test in group], seconds, KTDX_CHANGE=str(number)))
            if name:
                self.noticed[place] = [test for test in self.noticed[place] if test.name != name]
                self.noticed[place] += [test for test in group if test.name == name]
                return f"{group[0].suite} {name}"
        return None

    def groups(self, tests, likely):
        """Those of one suite together, the likely first, then those that reach little, in growing portions."""
        tests = likely[::-1] + sorted((test for test in tests if test not in likely),
                                      key=lambda test: (SUITES.index(test.suite), len(test.reached) * test.seconds))
        size = 4
        while tests:
            suite = tests[0].suite
            group = [test for test in tests[:size] if test.suite == suite]
            tests = [test for test in tests if test not in group]
            yield group
            size *= 4


# The report

def read_equivalents(path):
    """'FILE: FUNCTION: BEFORE => AFTER', and below it, indented, the reason why the program stays the same; '...' stands
    for any text."""
    equivalents, keys = {}, []
    for line in path.read_text().splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        if line[0].isspace():
            for key in keys:
                equivalents[key] = line.strip()
            continue
        if keys and equivalents[keys[0]]:
            keys = []  # the lines before have had their reason
        keys.append(".*".join(re.escape(part) for part in " ".join(line.split()).split("...")))
        equivalents[keys[-1]] = ""
    for key, reason in equivalents.items():
        if not reason:
            sys.exit(f"{path}: no reason is given for {key}")
    return equivalents


def read_judged(path):
    """What came of each change, and the change as it is told."""
    return [line.split(": ", 1) for line in path.read_text().splitlines()] if path.exists() else []


class Report:
    """What came of the changes, those that were judged before among them."""

    def __init__(self, project, equivalents, path, before):
        self.project, self.equivalents, self.file = project, equivalents, open(path, "w", encoding="utf-8")
        self.counts = collections.Counter()
        self.lock = threading.Lock()
        for result, told in before:
            self.note(result, told)

    def note(self, result, told):
        """The result as the list of equivalent changes has it."""
        if result in ("survived", "the same program"):
            result = "the same program" if any(re.fullmatch(key, told) for key in self.equivalents) else "survived"
        self.counts["caught" if result.startswith("caught") else result] += 1
        print(f"{result}: {told}", file=self.file, flush=True)
        return result

    def add(self, number, result):
        change = self.project.changes[number]
        source = self.project.sources[change.file]
        what = change.described(source)
        with self.lock:
            result = self.note(result, f"{change.file}: {what}")
            if not result.startswith(("caught", "does not")):
                print(f"{result}: {change.file}:{change.line(source)}: {change.kind}: {what}", flush=True)
            if self.counts.total() % 100 == 0:
                print(f"mutate: {self.counts.total()} of {len(self.project.changes)}", flush=True)


def judge_all(options, project, jury, report):
    def judge(number):
        if number in project.broken:
            report.add(number, "does not compile")
        else:
            name = jury.judge(number)
            report.add(number, f"caught by {name}" if name else "survived")

    list(jury.pool.map(judge, [number for number in options.chosen if number not in project.alone]))
    for number in options.chosen:
        if number in project.alone:
            judge_alone(number, project, jury, report)


def judge_alone(number, project, jury, report):
    """A change that needs a build of its own. Its place is unmarked, so all tests are asked."""
    project.write(applied=number)
    if project.make(SUITES) is not None:
        report.add(number, "does not compile")
    else:
        name = jury.judge(number, jury.tests)
        report.add(number, f"caught by {name}" if name else "survived")


def read_options():
    parser = argparse.ArgumentParser()
    parser.add_argument("work", type=pathlib.Path)
    parser.add_argument("equivalents", type=pathlib.Path)
    parser.add_argument("--files", default="*")
    parser.add_argument("--matching", default="", help="only changes whose description holds this regular expression")
    parser.add_argument("--limit", type=int)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1 << 32))
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    which = parser.add_mutually_exclusive_group()
    which.add_argument("--rest", action="store_true")
    which.add_argument("--survivors", action="store_true")
    parser.add_argument("--list", action="store_true")
    return parser.parse_args()


def all_told(changes):
    sources = {file: (ROOT / file).read_text() for file in {change.file for change in changes}}
    return [f"{change.file}: {change.described(sources[change.file])}" for change in changes]


def chosen_of(told, options, judged):
    """The numbers of those that the options ask for, and what came of others before, if it is to count."""
    results = collections.defaultdict(list)
    for result, text in judged if options.rest or options.survivors else []:
        results[text].append(result)
    chosen, before = [], []
    for number, text in enumerate(told, 1):
        result = results[text].pop(0) if results[text] else None
        is_asked_for = result == "survived" if options.survivors else result is None
        if is_asked_for and fnmatch.fnmatch(text.split(": ")[0], options.files) and re.search(options.matching, text):
            chosen.append((number, result))
        elif result is not None:
            before.append((result, text))
    random.Random(options.seed).shuffle(chosen)
    left_out = chosen[len(chosen[:options.limit]):]
    chosen = [number for number, _ in chosen[:options.limit]]
    if options.list:
        print(*sorted(told[number - 1] for number in chosen), sep="\n")
        sys.exit()
    return chosen, before + [(result, told[number - 1]) for number, result in left_out if result is not None]


def main():
    options = read_options()
    equivalents, work = read_equivalents(options.equivalents), options.work.resolve()
    changes = all_changes()
    judged = work / "judged.txt"
    told = all_told(changes)
    options.chosen, before = chosen_of(told, options, read_judged(judged))
    unknown = [key for key in equivalents if not any(re.fullmatch(key, text) for text in told)]
    if unknown:
        unknown = [re.sub(r"\\(.)", r"\1", key.replace(".*", "...")) for key in unknown]
        sys.exit("\n".join([f"mutate: {options.equivalents} names what is no change:", *unknown]))
    begin = time.monotonic()
    project = Project(work, changes)
    project.build()
    print(f"mutate: built after {time.monotonic() - begin:.0f} seconds; {len(project.alone)} changes need builds of their "
          "own", flush=True)
    jury = Jury([Runner(number, work, project) for number in range(options.jobs)], project)
    jury.watch(work / "reached.json")
    print(f"mutate: {len(jury.tests)} tests watched after {time.monotonic() - begin:.0f} seconds; judging "
          f"{len(options.chosen)} of {len(changes)} changes, seed {options.seed}", flush=True)
    report = Report(project, equivalents, judged, before)
    judge_all(options, project, jury, report)
    counts = report.counts
    compiling = counts["caught"] + counts["survived"] + counts["the same program"]
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    share = counts["caught"] / compiling if compiling else 1.0
    print(f"mutate: {counts['caught']} of {compiling} caught, {100 * share:.1f} in 100; {counts['the same program']} leave "
          f"the program the same and {counts['survived']} survive; {counts['does not compile']} more do not compile; "
          f"{time.monotonic() - begin:.0f} seconds, {used.ru_utime + used.ru_stime:.0f} of the processor")
    are_all_judged = compiling + counts["does not compile"] == len(changes)
    sys.exit(1 if counts["survived"] or (are_all_judged and share < WANTED) else 0)


if __name__ == "__main__":
    main()
