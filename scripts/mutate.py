#!/usr/bin/env python3
"""Changes src/ in one small place at a time and looks whether a test notices.

    mutate.py BUILD WORK EQUIVALENTS [--files PATTERN] [--matching REGEX] [--limit N] [--seed S] [--jobs N]
              [--list]

BUILD is a finished build of the tests, and stays as it is; WORK is for what is made here. Each change is made in a copy
of the sources; what depends on it is compiled and linked with the rest of BUILD, and the suites that reach it are run:
first those that the module's objects are linked into, then, if nothing was noticed, those that load the module. Those
that are not caught are printed. Fails when they are more than 5 in 100, not counting those that EQUIVALENTS names, with
the reason why they leave the program the same.
"""

import argparse
import concurrent.futures
import dataclasses
import fcntl
import fnmatch
import json
import os
import pathlib
import queue
import random
import re
import shlex
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WANTED = 0.95
MEMORY = 6 << 30
BLANK = "\1"  # what comments and literals are masked with

# Suites that a change is shown to, in this order.
LINKED = {"legacy": ["legacy_tests", "ktemplate_tests"], "host": ["module_tests", "legacy_tests"]}
LINKED_OTHERS = ["module_tests"]
LOADING = ["loaded_legacy_tests", "scenario_tests"]


# What can be changed

@dataclasses.dataclass(frozen=True)
class Change:
    file: str
    start: int  # in the text of the file
    end: int
    text: str
    kind: str

    def apply(self, source):
        return source[:self.start] + self.text + source[self.end:]

    def line(self, source):
        return source.count("\n", 0, self.start) + 1

    def described(self, source):
        """The lines that it touches, before and after, with single blanks."""
        first = source.rfind("\n", 0, self.start) + 1
        last = source.find("\n", self.end)
        before = source[first:last]
        after = source[first:self.start] + self.text + source[self.end:last]
        return f"{' '.join(before.split())} => {' '.join(after.split())}"


def masked(source):
    """The same text, comments and literals blanked out, so that positions agree."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|L?"(?:\\.|[^"\\\n])*"|(?<!\w)L?\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#[^\n]*', re.S | re.M)
    return pattern.sub(lambda found: re.sub(r"[^\n]", BLANK, found.group()), source)


OPERATORS = {" == ": " != ", " != ": " == ", " < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ",
             " && ": " || ", " || ": " && ", " + ": " - ", " - ": " + ", " * ": " + ", " / ": " * ", " << ": " >> ",
             " >> ": " << ", " & ": " | ", " | ": " & ", " ^ ": " | ", " += ": " -= ", " -= ": " += ", " |= ": " &= "}
NAMES = {"true": "false", "false": "true", "Orbx::eOk": "Orbx::eMissing", "Orbx::eMissing": "Orbx::eOk",
         "KtDb::kForRead": "KtDb::kForNotify", "KtDb::kForNotify": "KtDb::kForRead"}
NOT_CODE = re.compile(r"^\s*(static_assert|using|template|namespace|friend|typedef|\[\[noreturn\]\])\b|\b(operator|virtual)\b")


def changes_in(file, source):
    code = masked(source)
    yield from replaced_tokens(file, source, code)
    yield from negated_conditions(file, code)
    yield from statements_changed(file, source, code)


def line_at(code, position):
    first = code.rfind("\n", 0, position) + 1
    return code[first:code.find("\n", position)]


def replaced_tokens(file, source, code):
    def change(found, text, kind):
        if not NOT_CODE.search(line_at(code, found.start())):
            yield Change(file, found.start(), found.end(), text, kind)

    for found in re.finditer(r"(?<= )(?:[=!<>]=|<<|>>|[+\-|]=|&&|\|\||[<>+\-*/&|^])(?= )", code):
        yield from change(found, OPERATORS[f" {found.group()} "].strip(), "operator")
    for found in re.finditer(r"(?<=[ (,*])(?:==|!=|<|>|&&|\|\|)$", code, re.M):
        yield from change(found, OPERATORS[f" {found.group()} "].strip(), "operator")
    for found in re.finditer(r"(?<![\w.'])(0x[0-9A-Fa-f]+|\d+)(?=[uUlL]*\b)(?!\.)", code):
        if not re.search(r"\) = $", code[max(0, found.start() - 4):found.start()]):
            yield from change(found, str(int(found.group(), 0) + 1), "constant")
    for name, other in NAMES.items():
        for found in re.finditer(rf"(?<![\w:]){re.escape(name)}\b", code):
            yield from change(found, other, "constant")
    for found in re.finditer(r"\bOrbx::e(?!Ok\b|Missing\b|rrorStatus\b)[A-Z]\w*", code.replace("ErrorStatus", "rrorStatus")):
        yield from change(found, "Orbx::eOk", "constant")
    for found in re.finditer(r"(\+\+|--)(?=\w)|(?<=\w)(\+\+|--)", code):
        yield from change(found, "--" if found.group() == "++" else "++", "operator")
    for found in re.finditer(r"(?<![\w!=)])!(?=[\w(])", code):
        yield from change(found, "", "condition")
    for found in re.finditer(BLANK + "+", code):
        literal = source[found.start():found.end()]
        inside = re.match(r"L?([\"'])(.)", literal)
        if inside and inside.group(2) not in "\\\"'" and not NOT_CODE.search(line_at(code, found.start())):
            position = found.start() + inside.end() - 1
            other = "y" if inside.group(2) == "x" else "x"
            yield Change(file, position, position + 1, other, "constant")


def closing(code, position):
    """Where the parenthesis that opens at the position is closed."""
    depth = 0
    for index in range(position, len(code)):
        depth += {"(": 1, ")": -1}.get(code[index], 0)
        if depth == 0:
            return index
    return -1


def negated_conditions(file, code):
    for found in re.finditer(r"\b(?:if|while) (\()", code):
        start, end = found.start(1) + 1, closing(code, found.start(1))
        start = max(start, code.rfind(";", start, end) + 1)
        condition = code[start:end].strip()
        is_one_negation = condition.startswith("!") and not re.search(r"&&|\|\|", condition)
        if condition and not is_one_negation and not re.search(r"[^=!<>]=[^=]", condition):
            yield Change(file, start, end, f" !({condition})" if code[start] == " " else f"!({condition})",
                         "condition") if BLANK not in condition else None


DECLARES = re.compile(r"^(?:const|static|constexpr|auto|using|return\s+\S|throw|else|case|default|public|private|protected|"
                      r"explicit|template|typedef|friend|virtual|struct|class|enum|for|if|while|do|goto)\b|"
                      r"^[\w:]+(?:<[^;=(]*>)?[*&]*\s+[*&]*\w+\s*(?:[={(;]|\[)")


def simple_statements(code):
    """Calls, assignments and jumps, each on lines of its own: (start, end, indentation)."""
    for found in re.finditer(r"^([ \t]+)(?=\S)", code, re.M):
        start = found.end()
        before = code[:found.start()].rstrip(BLANK + " \t\n")
        if not before or before[-1] not in "{};:" or code[start] in "}{#" + BLANK:
            continue
        end = code.find(";", start)
        text = code[start:end + 1]
        if end < 0 or "{" in text or "}" in text or text.count("(") != text.count(")"):
            continue
        if re.match(r"(continue|break|return);|delete ", text) or not DECLARES.match(text):
            yield start, end + 1, found.group(1)


def statements_changed(file, source, code):
    before = None
    inside = is_inside_function(code)
    for start, end, indentation in simple_statements(code):
        if not inside(start):
            continue
        # Room that is asked for in advance is a matter of time only, wherever it is asked for.
        if re.match(r"[\w.>-]*\breserve\(", code[start:end]):
            before = None
            continue
        if not re.match(r"return [^;]", code[start:end]) or is_in_branch(code, start):
            yield Change(file, start, end, ";", "dropped")
        gap = code[before[1]:start].strip(BLANK + " \t\n") if before else "x"
        if before and are_independent(code[before[0]:before[1]], code[start:end]):
            before = (start, end, indentation)
            continue
        jumps = re.match(r"(continue|break|return)\b", code[start:end])
        if before and gap == "" and before[2] == indentation and not jumps:
            swapped = source[start:end] + source[before[1]:start] + source[before[0]:before[1]]
            yield Change(file, before[0], end, swapped, "swapped")
        before = (start, end, indentation)


# Calls that do nothing to what they do not name.
PLAIN_CALLS = {"static_cast", "KtDbObjectId", "size", "data", "empty", "clear", "reserve", "setLogicalLengthZero", "swap",
               "move", "min", "max", "begin", "end", "mbsinit"}


def places_touched(statement):
    """The variables and members that it names; None if it calls what may touch others."""
    statement = re.sub(r"static_cast<[^<>]*>", "static_cast", statement.replace("std::", ""))
    calls = re.findall(r"(\w+)(?=\()", statement)
    if not set(calls) <= PLAIN_CALLS:
        return None
    paths = [re.split(r"->|\.", path) for path in re.findall(r"[A-Za-z_]\w*(?:(?:->|\.)\w+)*", statement)]
    return [[name for name in path if name not in PLAIN_CALLS] for path in paths]


def are_independent(one, other):
    """Their order is nobody's business: what one names is neither what the other names nor a part of it."""
    first, second = places_touched(one), places_touched(other)
    if first is None or second is None:
        return False
    return not any(a[:len(b)] == b[:len(a)] for a in first for b in second if a and b)


def is_in_branch(code, position):
    """Whether the block that holds the position is one of a condition or loop, so that something comes behind it."""
    depth = 0
    for index in range(position - 1, -1, -1):
        depth += {"}": 1, "{": -1}.get(code[index], 0)
        if depth < 0:
            head = re.split(r"[;{}]\s*\n", code[:index])[-1]
            return bool(re.search(r"^\s*(\} )?(if|else|for|while|catch)\b", head))
    return False


def is_inside_function(code):
    """A brace that opens behind a parenthesis, or within such a one, opens code."""
    spans, stack = [], []
    for index, character in enumerate(code):
        if character == "{":
            head = re.split(r"[;{}]", code[:index])[-1].strip()
            is_code = bool(re.search(r"\)\s*(const|noexcept|override|final|mutable|\s|->[^)]*)*$", head)) or \
                bool(re.search(r"(else|try|do)$", head)) or bool(re.search(r"\)\s*:\s", head))
            stack.append((index, is_code and not re.search(r"\b(class|struct|enum|namespace)\b", head)))
        elif character == "}" and stack:
            start, is_code = stack.pop()
            if is_code:
                spans.append((start, index))
    return lambda position: any(start < position < end for start, end in spans)


def all_changes(pattern):
    listed = subprocess.run(["git", "ls-files", "src/*.cpp", "src/*.h"], cwd=ROOT, capture_output=True, text=True,
                            check=True).stdout.split()
    changes = []
    for file in listed:
        # The seam is the host's to state; the array is code like any other.
        is_seam = file.startswith("src/host/") and file != "src/host/KtArray.h"
        if is_seam or file.startswith("src/module/resources/") or not fnmatch.fnmatch(file, pattern):
            continue
        source = (ROOT / file).read_text()
        changes += [change for change in changes_in(file, source) if change is not None]
    return changes


# Building and running

class Build:
    """How the finished build was made: which object depends on what, and how each is compiled and linked."""

    def __init__(self, folder):
        self.folder = folder
        self.compile = {}
        for entry in json.loads((folder / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            words = [word for word in words if not word.endswith("ccache")]
            self.compile[words[words.index("-o") + 1]] = words + ["-w"]
        self.dependencies = {}
        said = subprocess.run(["ninja", "-t", "deps"], cwd=folder, capture_output=True, text=True, check=True).stdout
        for block in said.split("\n\n"):
            lines = block.strip().splitlines()
            if lines and ".o:" in lines[0]:
                self.dependencies[lines[0].split(":")[0]] = {line.strip() for line in lines[1:]}

    def link(self, target):
        said = subprocess.run(["ninja", "-t", "commands", target], cwd=self.folder, capture_output=True, text=True)
        last = said.stdout.strip().splitlines()[-1] if said.returncode == 0 else ""
        return [word for word in shlex.split(last) if word not in (":", "&&")]

    def objects_of(self, path):
        """Of the module those that depend on it; of the tests those that name it themselves."""
        include = path.removeprefix("src/").removeprefix("host/")
        for object_, needs in self.dependencies.items():
            if object_ not in self.compile or str(ROOT / path) not in needs:
                continue
            if object_.startswith("src/") or (object_.startswith("tests/") and self.names(object_, include)):
                yield object_

    def names(self, object_, include):
        source = pathlib.Path(self.compile[object_][-2])
        return bool(re.search(rf'#include [<"]{re.escape(include)}[>"]', source.read_text()))


class Worker:
    def __init__(self, number, build, work):
        self.build = build
        self.folder = work / f"worker-{number}"
        shutil.rmtree(self.folder, ignore_errors=True)
        self.tree = self.folder / "tree"
        shutil.copytree(ROOT / "src", self.tree / "src")
        shutil.copytree(ROOT / "include", self.tree / "include")
        (self.folder / "tmp").mkdir()
        self.lock = work / "loading.lock"

    def run(self, command, seconds, **more):
        environment = dict(os.environ, TEST_TMPDIR=str(self.folder / "tmp"),
                           LD_LIBRARY_PATH=str(self.build.folder / "bin"))
        limited = ["timeout", "--kill-after=5", str(seconds), "prlimit", f"--as={MEMORY}", *map(str, command)]
        return subprocess.run(limited, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, **more).returncode

    def compile(self, object_):
        words = [word.replace(str(ROOT / "src"), str(self.tree / "src"))
                 .replace(str(ROOT / "include"), str(self.tree / "include"))
                 for word in self.build.compile[object_]]
        made = self.folder / object_.replace("/", "_")
        words[words.index("-o") + 1] = str(made)
        return made if self.run(words, 120, cwd=self.build.folder) == 0 else None

    def link(self, target, changed):
        """The changed objects come first: of what several objects define, the linker takes the first."""
        words = self.build.link(target)
        first = next(index for index, word in enumerate(words) if word.endswith(".o"))
        rest = [word for word in words[first:] if word not in changed]
        mine = [str(changed[word]) for word in words[first:] if word in changed]
        if not mine and any(word.endswith(".a") for word in words):
            mine = [str(made) for object_, made in changed.items() if object_.startswith("src/")]
        made = self.folder / pathlib.Path(target).name
        command = words[:first] + mine + rest
        command[command.index("-o") + 1] = str(made)
        return made if mine and self.run(command, 120, cwd=self.build.folder) == 0 else None

    def notices(self, suite, seconds, program=None, arguments=()):
        command = [program or self.build.folder / "bin" / suite, "--gtest_brief=1", "--gtest_fail_fast", *arguments]
        return self.run(command, seconds, cwd=self.folder) != 0

    def judge(self, change, limits):
        source = (ROOT / change.file).read_text()
        path = self.tree / change.file
        try:
            path.write_text(change.apply(source))
            return self.judge_written(change, limits)
        finally:
            path.write_text(source)
            for made in self.folder.glob("*.o"):
                made.unlink()

    def judge_written(self, change, limits):
        changed = {}
        for object_ in self.build.objects_of(change.file):
            changed[object_] = self.compile(object_)
            if changed[object_] is None:
                return "does not compile"
        if not changed:
            return "does not compile"
        for suite in suites_for(change.file):
            if suite in limits:
                program = self.link(f"bin/{suite}", changed)
                if program is None:
                    return "does not compile"
                if self.notices(suite, limits[suite], program):
                    return "caught"
        return "caught" if self.is_noticed_by_loading(changed, limits) else "survived"

    def is_noticed_by_loading(self, changed, limits):
        suites = [suite for suite in LOADING if suite in limits]
        module = self.link("bin/KtDxNotify.kmx", changed) if suites else None
        if module is None:
            return False
        with open(self.lock, "w", encoding="ascii") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)  # all share the folder that the module is loaded from
            place = self.build.folder / "bin/KtDxNotify.kmx"
            kept = place.with_suffix(".kept")
            place.rename(kept)
            try:
                shutil.copy(module, place)
                return any(self.notices(suite, limits[suite]) for suite in suites)
            finally:
                kept.replace(place)


def suites_for(file):
    return LINKED.get(file.split("/")[1], LINKED_OTHERS)


def limits_of(build, worker, suites):
    """How long each suite may take, by how long it takes on an unchanged module, which must satisfy it."""
    limits = {}
    for suite in suites:
        if not (build.folder / "bin" / suite).exists():
            continue
        begin = time.monotonic()
        if worker.notices(suite, 900):
            sys.exit(f"mutate: {suite} fails without any change")
        limits[suite] = int(10 + 6 * (time.monotonic() - begin))
    return limits


# Equivalents and the report

def read_equivalents(path):
    """'FILE: BEFORE => AFTER', and below it, indented, the reason why the program stays the same; '...' stands for any
    text."""
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


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("work", type=pathlib.Path)
    parser.add_argument("equivalents", type=pathlib.Path)
    parser.add_argument("--files", default="*")
    parser.add_argument("--limit", type=int)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1 << 32))
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--matching", default="", help="only changes whose description holds this regular expression")
    parser.add_argument("--list", action="store_true")
    options = parser.parse_args()

    changes = [change for change in all_changes(options.files)
               if re.search(options.matching, change.described((ROOT / change.file).read_text()))]
    total = len(changes)
    random.Random(options.seed).shuffle(changes)
    changes = changes[:options.limit]
    sources = {change.file: (ROOT / change.file).read_text() for change in changes}
    if options.list:
        for change in sorted(changes, key=lambda change: (change.file, change.start)):
            source = sources[change.file]
            print(f"{change.file}:{change.line(source)}: {change.kind}: {change.described(source)}")
        return
    equivalents = read_equivalents(options.equivalents)
    options.work.mkdir(parents=True, exist_ok=True)
    build = Build(options.build.resolve())
    workers = queue.Queue()
    for number in range(options.jobs):
        workers.put(Worker(number, build, options.work.resolve()))
    suites = sorted({suite for change in changes for suite in suites_for(change.file)}) + LOADING
    first = workers.get()
    limits = limits_of(build, first, suites)
    for file in {suites_for(change.file)[0]: change.file for change in changes}.values():
        if first.judge(Change(file, 0, 0, "", "none"), limits) != "survived":
            sys.exit(f"mutate: {file} compiled again and unchanged is not what it was")
    workers.put(first)
    print(f"mutate: {len(changes)} of {total} changes, seed {options.seed}; suites: {' '.join(limits)}", flush=True)

    def judge(change):
        worker = workers.get()
        try:
            return change, worker.judge(change, limits)
        finally:
            workers.put(worker)

    counts = {"caught": 0, "survived": 0, "does not compile": 0}
    unexplained = []
    begin = time.monotonic()
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for change, result in pool.map(judge, changes):
            counts[result] += 1
            if sum(counts.values()) % 25 == 0:
                print(f"mutate: {sum(counts.values())} of {len(changes)}", flush=True)
            if result == "survived":
                source = sources[change.file]
                told = f"{change.file}: {change.described(source)}"
                known = any(re.fullmatch(key, told) for key in equivalents)
                place = f"{change.file}:{change.line(source)}: {change.kind}: {change.described(source)}"
                print(f"survived{' (the same program)' if known else ''}: {place}", flush=True)
                if not known:
                    unexplained.append(place)
    judged = counts["caught"] + len(unexplained)
    share = counts["caught"] / judged if judged else 1.0
    print(f"mutate: {judged} changes that make another program, {counts['caught']} caught ({100 * share:.1f}%), "
          f"{len(unexplained)} not; besides {counts['survived'] - len(unexplained)} that leave it the same, "
          f"{counts['does not compile']} that do not compile; {time.monotonic() - begin:.0f} seconds")
    sys.exit(1 if share < WANTED else 0)


main()
