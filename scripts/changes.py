"""The small changes of src/ that ./ktdx mutate makes."""

import dataclasses
import functools
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
BLANK = "\1"  # what comments and literals are masked with


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
        """The function that it lies in, if any, and the lines that it touches, before and after, with single blanks;
        the line before with them if they begin with a jump, as many lines do."""
        first = source.rfind("\n", 0, self.start) + 1
        if re.match(r"\s*(return|break|continue)\b", source[first:]):
            first = source.rfind("\n", 0, first - 1) + 1
        last = source.find("\n", self.end)
        before = source[first:last]
        after = source[first:self.start] + self.text + source[self.end:last]
        function = next((f"{name}: " for start, end, name in functions_of(source) if start < self.start < end), "")
        return f"{function}{' '.join(before.split())} => {' '.join(after.split())}"


def masked(source):
    """The same text, comments and literals blanked out, so that positions agree."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|L?"(?:\\.|[^"\\\n])*"|(?<!\w)L?\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#[^\n]*', re.S | re.M)
    return pattern.sub(lambda found: re.sub(r"[^\n]", BLANK, found.group()), source)


OPERATORS = {" == ": " != ", " != ": " == ", " < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ",
             " && ": " || ", " || ": " && ", " + ": " - ", " - ": " + ", " * ": " + ", " / ": " * ", " << ": " >> ",
             " >> ": " << ", " & ": " | ", " | ": " & ", " ^ ": " | ", " += ": " -= ", " -= ": " += ", " |= ": " &= "}
NAMES = {"true": "false", "false": "true", "Orbx::eOk": "Orbx::eMissing", "Orbx::eMissing": "Orbx::eOk",
         "KtDb::kForRead": "KtDb::kForNotify", "KtDb::kForNotify": "KtDb::kForRead"}
NOT_CODE = re.compile(r"^\s*(static_assert|using|template|namespace|friend|typedef|extern|\[\[noreturn\]\])\b|\b(operator|virtual)\b")


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
    spans = code_blocks(code)
    return lambda position: any(start < position < end for start, end in spans)


def code_blocks(code):
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
                spans.append((start, index + 1))
    return spans


def outermost_bodies(code):
    """Functions' bodies, braces included: (start, end)."""
    bodies = []
    for start, end in sorted(code_blocks(code)):
        if not bodies or start >= bodies[-1][1]:
            bodies.append((start, end))
    return bodies


@functools.lru_cache(maxsize=None)
def functions_of(source):
    """Their bodies and names: (start, end, name)."""
    code, functions = masked(source), []
    for start, end in outermost_bodies(code):
        head = re.split(r"[;{}]", code[:start])[-1]
        name = re.search(r"((?:~?\w+(?:<[^<>()]*>)?::)*(?:operator\S+?|~?\w+))\(", head)
        functions.append((start, end, name.group(1) if name else "?"))
    return functions


def all_changes():
    listed = subprocess.run(["git", "ls-files", "src/*.cpp", "src/*.h"], cwd=ROOT, capture_output=True, text=True,
                            check=True).stdout.split()
    changes = []
    for file in listed:
        # The seam is the host's to state; the array is code like any other.
        is_seam = file.startswith("src/host/") and file != "src/host/KtArray.h"
        if is_seam or file.startswith("src/module/resources/"):
            continue
        source = (ROOT / file).read_text()
        changes += [change for change in changes_in(file, source) if change is not None]
    return changes
