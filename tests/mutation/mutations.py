"""Small faults for lines of C++: what a line could be by mistake.

Texts, characters and comments are left alone; what a user reads is compared whole by other tests.
"""

import re
from dataclasses import dataclass

# Texts and characters with their prefixes and suffixes, and comments up to the end of the line.
QUIET = re.compile(r'[uULR8]*"(?:\\.|[^"\\])*"\w*|[uUL]?\'(?:\\.|[^\'\\])+\'|//.*')
# A raw text can hold quotes and run over lines; a comment between asterisks too.
RUNS_OVER = re.compile(r'R"|/\*')

REPLACED = {
    "comparison": {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ",
                   " == ": " != ", " != ": " == "},
    "arithmetic": {" + ": " - ", " - ": " + ", " * ": " / ", " / ": " * ", " % ": " / ",
                   " += ": " -= ", " -= ": " += "},
    "logic": {" && ": " || ", " || ": " && "},
    "truth": {"true": "false", "false": "true"},
}
NUMBER = re.compile(r"(?<![\w.])\d+(?![\w.])")
WORD_VALUE = re.compile(r"\b(true|false)\b")
CONDITION = re.compile(r"^(\s*(?:\} else )?if \()(?!constexpr)([^;]+)(\)(?: \{)?)$")
CHOICE = re.compile(r" \? ([^?:]+) : ([^?:]+?)(?=[;,)]|$)")
DECLARATION = re.compile(
    r"^\s*(?:using|const|static|auto|return|else|case|default|throw|delete|template|typedef|struct"
    r"|class|enum|namespace|friend|goto|constexpr|Q_\w+)\b"
    r"|^\s*[\w:<>,\s]+[\w>][&*]*\s+[&*]*\w+(?:\(.*\)|\{.*\}|\s=\s.*)?;$")
STATEMENT = re.compile(r"^\s*[\w*(].*[\w)\]+-];$")
LEFT_OUT = re.compile(r"^\s*(?:return\b.*|continue|break);$")


@dataclass(frozen=True)
class Mutation:
    """A line of a file (its path relative to the tree, the line counted from 1) and what it becomes."""

    file: str
    line: int
    kind: str
    before: str
    after: str


def masked(line):
    """The line with blanks for its texts and comments, so that places stay the same."""
    return QUIET.sub(lambda quiet: "\0" * len(quiet.group()), line)


def replaced(line, start, end, text):
    return line[:start] + text + line[end:]


def signs(line, quiet):
    """Each comparison, calculation, logic sign and truth value changed by itself."""
    for kind, changes in REPLACED.items():
        if kind == "arithmetic" and "\0" in quiet:
            continue  # Texts have no minus, so that would not build.
        for sign, other in changes.items():
            for found in re.finditer(re.escape(sign), quiet):
                if kind == "truth" and not WORD_VALUE.match(quiet, found.start()):
                    continue
                yield kind, replaced(line, found.start(), found.end(), other)


def numbers(line, quiet):
    """Each whole number one too large."""
    for found in NUMBER.finditer(quiet):
        yield "number", replaced(line, found.start(), found.end(), str(int(found.group()) + 1))


def conditions(line, quiet):
    """An "if" turned round, and the two values of a choice swapped."""
    found = CONDITION.match(quiet)
    if found:
        start, end = found.span(2)
        yield "negation", replaced(line, start, end, f"!({line[start:end]})")
    for found in CHOICE.finditer(quiet):
        first, second = (line[slice(*found.span(group))] for group in (1, 2))
        yield "choice", replaced(line, *found.span(), f" ? {second} : {first}")


def left_out(line, quiet, before):
    """The whole statement left out, where the line is one; `before` is the code above it."""
    indent = line[:len(line) - len(line.lstrip())]
    guarded = before.endswith(")") or before.endswith("else")
    alone = guarded or before.endswith((";", "{", "}", ":"))
    if not alone or quiet.count("(") != quiet.count(")"):
        return
    if LEFT_OUT.match(quiet):
        # A function's last return, which no condition guards, has to stay.
        if guarded or not quiet.strip().startswith("return"):
            yield "left out", f"{indent};"
    elif STATEMENT.match(quiet) and not DECLARATION.match(quiet):
        yield "left out", f"{indent};"


def of_line(line, before):
    """Pairs of kind and changed line."""
    quiet = masked(line)
    if quiet.lstrip().startswith("#") or RUNS_OVER.search(line):
        return []
    return [*signs(line, quiet), *numbers(line, quiet), *conditions(line, quiet),
            *left_out(line, quiet, before)]


def of_text(file, text):
    """The mutations of a file, in a list for each line that has any."""
    before = ""
    found = []
    for number, line in enumerate(text.splitlines(), 1):
        changes = of_line(line, before)
        if changes:
            found.append([Mutation(file, number, kind, line, after) for kind, after in changes])
        code = masked(line).rstrip("\0 ")
        if code.strip():
            before = code
    return found


def is_code(line):
    """Whether a line counts as code."""
    return bool(masked(line).strip("\0 {};"))
