"""Words that no file may carry, promises that code may not leave, and tests that would not test.

The patterns are written with brackets where they would match themselves.
"""

import os
import re
import sys
from pathlib import Path

import tree

EVERYWHERE = {
    "speaks of a text that readers do not have":
        r"\bParts? \d|\b[Tt]he sp[e]c\b|[Ss]p[e]cification|规格[书说]",
    "names a folder of one machine": r"/w[o]rk/|/t[m]p/|/r[o]ot/|/h[o]me/\w|/d[e]v/shm/",
}
IN_CODE = {
    "leaves a promise":
        r"\b(TO[D]O|FIX[M]E|X[X]X)\b|\b[Ss]t[u]b(s|bed)?\b|\b[Ff]or n[o]w\b|[Nn]ot impl[e]mented"
        r"|未[实]现",
}
IN_TESTS = {
    "is a test that does not test":
        r"\bQS[K]IP|GTEST_S[K]IP|\bDISAB[L]ED_|QEXPECT_F[A]IL|EXPECT_TR[U]E\(true\)|SUCC[E]ED\(\)",
}
SKIPPED = {"build", "__pycache__", ".git", ".cache"}


def text_files(root):
    """Paths, relative to root, and texts of all files that are text."""
    for folder, folders, names in os.walk(root):
        folders[:] = sorted(name for name in folders if name not in SKIPPED)
        for name in sorted(names):
            path = Path(folder) / name
            content = path.read_bytes()
            if b"\0" not in content:
                yield path.relative_to(root), content.decode("utf-8", errors="replace")


def rules_for(file):
    """The rules for a file: pairs of a reason and a compiled pattern."""
    rules = dict(EVERYWHERE)
    if file.parts[0] in ("src", "tests", "benchmarks"):
        rules |= IN_CODE
    if file.parts[0] == "tests":
        rules |= IN_TESTS
    return [(reason, re.compile(pattern)) for reason, pattern in rules.items()]


def check(root, _arguments=None):
    complaints = []
    for file, text in text_files(root):
        rules = rules_for(file)
        for number, line in enumerate(text.splitlines(), 1):
            complaints += [f"{file}:{number}: {reason}: {line.strip()[:80]}"
                           for reason, pattern in rules if pattern.search(line)]
    return complaints


if __name__ == "__main__":
    sys.exit(tree.main(check))
