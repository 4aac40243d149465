"""Finds the functions of a C++ file by its braces; made for code that clang-format has laid out."""

import re
from dataclasses import dataclass

TOKEN = re.compile(r"""
      //[^\n]*
    | /\*.*?\*/
    | R"(?P<mark>[^()\s\\]*)\(.*?\)(?P=mark)"
    | "(?:\\.|[^"\\\n])*"
    | (?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'
    | ^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*
    """, re.VERBOSE | re.DOTALL | re.MULTILINE)


@dataclass
class Function:
    name: str
    first: int  # line of the signature's beginning
    last: int  # line of the closing brace

    @property
    def length(self):
        return self.last - self.first + 1


def blank(text):
    """The text with comments, literals and preprocessor lines blanked, line breaks kept."""
    def empty(match):
        return re.sub(r"[^\n]", " ", match.group())
    return TOKEN.sub(empty, text)


def without_brackets(head):
    """The head of a block without templates' parameters and whatever stands in parentheses."""
    head = re.sub(r"\btemplate\s*<[^{};]*?>(?=\s*[\w\[~:(])", " ", head, count=1)
    while True:
        shorter = re.sub(r"\([^()]*\)", "@", head)
        if shorter == head:
            return head
        head = shorter


def kind_of(head):
    """What the brace behind `head` opens, outside functions: a scope, a function or a value."""
    bare = without_brackets(head)
    if re.search(r"\bnamespace\b", bare) or re.fullmatch(r"\s*extern\s*", bare):
        return "scope"
    if re.search(r"[\w>]$", bare) and re.search(r"@", bare) and re.search(r"@\s*(noexcept\s*)?:",
                                                                         bare):
        return "value"  # m_member{…} in the initialisers of a constructor
    if re.search(r"=\s*\[[^\]]*\]", bare):
        return "function"  # a lambda with a name
    if re.search(r"(?<!operator)(?<!operator[=!<>+\-*/%&|^])=", bare):
        return "value"
    if "@" in bare and not re.match(r"\s*(class|struct|union|enum)\b[^@]*$", bare):
        return "function"
    return "scope" if re.search(r"\b(class|struct|union|enum)\b", bare) else "value"


def name_of(head):
    """The last words before the parameters, or a test's macro with its names."""
    test = re.search(r"\bTEST(_F|_P)?\s*\([^()]*\)", head)
    if test:
        return " ".join(test.group().split())
    named = re.search(r"([\w:~]*operator\s*[^\s\w(]+|[\w:~]+)\s*\(", head)
    if named:
        return named.group(1)
    words = re.findall(r"\w+", head)
    return words[-1] if words else "?"


def clean_head(head):
    """Without what stands before a declaration and is none: access labels, macros of Qt."""
    def empty(match):
        return re.sub(r"[^\n]", " ", match.group())
    head = re.sub(r"\b(public|private|protected|Q_SIGNALS|Q_SLOTS)\b[ \t]*(Q_SLOTS[ \t]*)?:(?!:)",
                  empty, head)
    return re.sub(r"^[ \t]*QT?_[A-Z_]+(\([^()]*\))?[ \t]*$", empty, head, flags=re.MULTILINE)


def functions(text):
    """All functions of the text of a file, outermost only: a lambda belongs to its function."""
    code = blank(text)
    found = []
    open_blocks = []  # (kind, head, line of the head's first word) of each open brace
    inside = 0  # depth of open functions
    begin = 0
    parentheses = 0
    for at, letter in enumerate(code):
        if letter in "()":
            parentheses += 1 if letter == "(" else -1
        elif letter == "{":
            head = clean_head(code[begin:at])
            kind = "inner" if inside else "value" if parentheses else kind_of(head)
            first = code.count("\n", 0, begin + len(head) - len(head.lstrip())) + 1
            open_blocks.append((kind, head, first))
            inside += kind == "function"
            begin = begin if kind in ("value", "inner") else at + 1
        elif letter == "}" and open_blocks:
            kind, head, first = open_blocks.pop()
            if kind == "function":
                inside -= 1
                last = code.count("\n", 0, at) + 1
                found.append(Function(name_of(head), first, last))
            if kind in ("function", "scope"):
                begin = at + 1
        elif letter == ";" and not inside and not parentheses:
            begin = at + 1
    return found
