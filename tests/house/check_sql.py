"""Statements that are put together of texts where values could become part of them.

Values go in bound, names and conditions through SqlPieces, which looks at them. A literal of SQL
that is joined to anything else is a complaint, except where a statement is a text for the user.
"""

import re
import sys

import tree

SQL = re.compile(r"^\s*(select|update|insert into|delete|alter table)\b|\b(where|order by|group by)\b"
                 r"|(考试名称|科类|班级|学号|姓名|名称)='?$", re.IGNORECASE)
LITERAL = re.compile(r'(?:u8?|R|L)?"((?:[^"\\\n]|\\.)*)"(?:_s|_L1)?')
ALLOWED = {
    "src/workbench/ScoreQuery.cpp": "the statement that the user sees and may change",
}
DATABASE = "src/platform/database/"


def statements(text):
    """(first character, end, content) of the literals of a text; those that stand side by side are
    one."""
    begin = end = None
    content = ""
    for match in LITERAL.finditer(text):
        if begin is not None and not text[end:match.start()].strip():
            content += match.group(1)
            end = match.end()
            continue
        if begin is not None:
            yield begin, end, content
        begin, end, content = match.start(), match.end(), match.group(1)
    if begin is not None:
        yield begin, end, content


def without_comments(text):
    return re.sub(r"//[^\n]*", lambda found: " " * len(found.group()), text)


JOINED_BEHIND = re.compile(r"\s*(\+|\)?\s*\.(arg|append|prepend|insert|replace)\()")
JOINED_BEFORE = re.compile(r"(\+=?|\.(append|prepend)\(|\.replace\([^;]*,)\s*$")


def is_joined(text, begin, end):
    return bool(JOINED_BEFORE.search(text[:begin][-200:]) or JOINED_BEHIND.match(text, end))


def check(root, _arguments=None):
    complaints = []
    for path in tree.code_files(root, "src"):
        name = path.relative_to(root).as_posix()
        if name.startswith(DATABASE) or name in ALLOWED:
            continue
        text = without_comments(path.read_text(encoding="utf-8"))
        for begin, end, content in statements(text):
            if SQL.search(content) and is_joined(text, begin, end):
                line = text.count("\n", 0, begin) + 1
                complaints.append(f"{name}:{line}: puts SQL together: {content.strip()[:60]}")
    return complaints


if __name__ == "__main__":
    sys.exit(tree.main(check))
