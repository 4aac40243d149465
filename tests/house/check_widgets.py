"""An engine knows QtCore and no other part of Qt: neither in an include nor in what it links.

What stands in a paint/ folder knows QtGui too, and the command line what makes its pictures there; neither knows a widget.
The precompiled header of the engines counts as one of their files.
"""

import re
import sys
from pathlib import Path

import tree

GUI = re.compile(r"\bQt6::(?!Core\b)\w+|\byunshan_(widgets|\w+_ui|\w+_paint)\b")
WIDGETS = re.compile(r"\bQt6::(?!Core\b|Gui\b)\w+|\byunshan_(widgets|\w+_ui)\b")
COMMAND = re.compile(r"(\w+)\s*\(([^()]*)\)")


def is_qt(name):
    return re.match(r"(Qt?[A-Z]\w*(/|$)|q[a-z]\w*\.h$)", name) is not None


def forbidden_include(name, modules):
    """Whether an include is of Qt, but of none of the modules, whose headers stand in these folders."""
    if not is_qt(name):
        return False
    if "/" in name:
        return name.split("/")[0] not in [Path(module).name for module in modules]
    return not any((Path(module) / name).exists() for module in modules)


def may_link_gui(command, arguments):
    target = arguments.split()[0]
    return command in ("yunshan_screens", "yunshan_widgets") or target.endswith("_ui")


def forbidden_links(path):
    return WIDGETS if tree.paints(path) or tree.layer_of(path) == "cli" else GUI


def check_links(root):
    """Complaints about the CMakeLists.txt of engine folders."""
    source = Path(root) / "src"
    for path in sorted(source.rglob("CMakeLists.txt")):
        if tree.is_screen(path.relative_to(source)):
            continue
        text = re.sub(r"#.*", "", path.read_text(encoding="utf-8"))
        for command, arguments in COMMAND.findall(text):
            named = forbidden_links(path.relative_to(source)).search(arguments)
            if named and not may_link_gui(command, arguments):
                yield f"{path.relative_to(root)}: {command} gives an engine {named.group()}"


def check(root, arguments):
    source = Path(root) / "src"
    engine = [p for p in tree.code_files(root, "src") if not tree.is_screen(p.relative_to(source))]
    engine += [p for p in tree.code_files(root, "cmake") if "Screens" not in p.name]
    complaints = []
    for path in engine:
        allowed = [arguments.qtcore]
        if path.is_relative_to(source) and tree.paints(path.relative_to(source)):
            allowed.append(arguments.qtgui)
        complaints += [f"{path.relative_to(root)}:{number}: <{name}> is not of "
                       + " or ".join(Path(module).name for module in allowed)
                       for number, name, _ in tree.includes(path) if forbidden_include(name, allowed)]
    return complaints + list(check_links(root))


if __name__ == "__main__":
    sys.exit(tree.main(check, "--qtcore", "--qtgui"))
