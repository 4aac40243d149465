"""What the house checks share: finding the files, and saying what is wrong."""

import argparse
import re
import sys
from pathlib import Path

CODE = {".cpp", ".h"}
SIX = ("import", "export", "individual", "workbench", "maintenance", "configuration")
SCREENS = ("widgets", "shell", "main")


def code_files(root, *folders):
    """All .cpp and .h files below the given folders of the project, sorted."""
    found = []
    for folder in folders:
        found += [p for p in (Path(root) / folder).rglob("*") if p.suffix in CODE]
    return sorted(found)


def layer_of(path):
    """The layer of a path that is relative to src/: "platform/database/Sql.h" is of the layer database."""
    parts = Path(path).parts
    if parts[0] == "platform" and len(parts) > 2:
        return parts[1]
    return parts[0] if len(parts) > 1 else ""


def paints(path):
    """Whether a path relative to src/ is of a folder that paints: it knows QtGui, and no widgets."""
    return "paint" in Path(path).parts[:-1]


def is_screen(path):
    """Whether a path relative to src/ may know widgets."""
    return "ui" in Path(path).parts[:-1] or layer_of(path) in SCREENS


def holds_widgets(path):
    """Whether a header, relative to src/, is one that only screens may include."""
    return "ui" in Path(path).parts[:-1] or layer_of(path) == "widgets"


def may_paint(path):
    """Whether a path relative to src/ may know what paints: the command line makes pictures too."""
    return paints(path) or is_screen(path) or layer_of(path) == "cli"


def includes(path):
    """(line number, name, True for the quoted form) of every include of a file."""
    pattern = re.compile(r'\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')
    text = Path(path).read_text(encoding="utf-8")
    for number, line in enumerate(text.splitlines(), 1):
        match = pattern.match(line)
        if match:
            yield number, match.group(1) or match.group(2), match.group(1) is not None


def main(check, *options):
    """Runs check(root, arguments), prints the complaints, and gives the exit code."""
    parser = argparse.ArgumentParser()
    parser.add_argument("root", help="the project's folder")
    for option in options:
        parser.add_argument(option, required=True)
    arguments = parser.parse_args()
    complaints = check(arguments.root, arguments)
    for complaint in complaints:
        print(complaint)
    print(f"{len(complaints)} complaints" if complaints else "in order")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit("tree.py is a module of the checks beside it")
