"""An engine knows QtCore and no other part of Qt: neither in an include nor in what it links.

The precompiled header of the engines counts as one of their files.
"""

import re
import sys
from pathlib import Path

import tree

GUI = re.compile(r"\bQt6::(?!Core\b)\w+|\byunshan_(widgets|\w+_ui)\b")
COMMAND = re.compile(r"(\w+)\s*\(([^()]*)\)")


def is_qt(name):
    return re.match(r"(Qt?[A-Z]\w*(/|$)|q[a-z]\w*\.h$)", name) is not None


def forbidden_include(name, core):
    """Whether an include is of Qt, but not of QtCore, whose headers stand in the folder `core`."""
    if not is_qt(name):
        return False
    if "/" in name:
        return not name.startswith("QtCore/")
    return not (Path(core) / name).exists()


def may_link_gui(command, arguments):
    target = arguments.split()[0]
    return command in ("yunshan_screens", "yunshan_widgets") or target.endswith("_ui")


def check_links(root):
    """Complaints about the CMakeLists.txt of engine folders."""
    source = Path(root) / "src"
    for path in sorted(source.rglob("CMakeLists.txt")):
        if tree.is_screen(path.relative_to(source)):
            continue
        text = re.sub(r"#.*", "", path.read_text(encoding="utf-8"))
        for command, arguments in COMMAND.findall(text):
            named = GUI.search(arguments)
            if named and not may_link_gui(command, arguments):
                yield f"{path.relative_to(root)}: {command} gives an engine {named.group()}"


def check(root, arguments):
    source = Path(root) / "src"
    engine = [p for p in tree.code_files(root, "src") if not tree.is_screen(p.relative_to(source))]
    engine += [p for p in tree.code_files(root, "cmake") if "Screens" not in p.name]
    complaints = [f"{path.relative_to(root)}:{number}: <{name}> is not of QtCore"
                  for path in engine for number, name, _ in tree.includes(path)
                  if forbidden_include(name, arguments.qtcore)]
    return complaints + list(check_links(root))


if __name__ == "__main__":
    sys.exit(tree.main(check, "--qtcore"))
