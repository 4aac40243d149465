"""Includes go down the layers only, are written from src/, and leave the screens alone.

A file may include its own layer and lower ones. Layers of one height (database and widgets; grid and chart; library and
oldlibraries; the six subsystems; shell and cli) do not know each other. Headers of a ui/ folder are for other ui/ folders,
the shell, main and the tests; those of a paint/ folder are for these, other paint/ folders and the command line.
"""

import sys
from pathlib import Path

import tree

HEIGHTS = (("runtime",), ("database", "widgets"), ("grid", "chart"), ("workbooks",),
           ("library", "oldlibraries"), ("scoring",), ("statistics",), tree.SIX, ("shell", "cli"),
           ("main",))
HEIGHT = {layer: height for height, layers in enumerate(HEIGHTS) for layer in layers}


def complaint_about(file, name):
    """Why `file` may not include `name` (both relative to src/), or None."""
    layer, wanted = tree.layer_of(file), tree.layer_of(name)
    if wanted not in HEIGHT:
        return "is not written from src/"
    if tree.holds_widgets(name) and not tree.is_screen(file):
        return "is a screen, and this file is none"
    if tree.paints(name) and not tree.may_paint(file):
        return "paints, and this file is an engine"
    if wanted == layer or HEIGHT[wanted] < HEIGHT[layer]:
        return None
    if HEIGHT[wanted] == HEIGHT[layer]:
        return f"goes sideways from {layer} to {wanted}"
    return f"goes up from {layer} to {wanted}"


def check(root, _arguments=None):
    complaints = []
    source = Path(root) / "src"
    for path in tree.code_files(root, "src"):
        file = path.relative_to(source)
        if tree.layer_of(file) not in HEIGHT:
            complaints.append(f"src/{file}: stands in no layer")
            continue
        for number, name, quoted in tree.includes(path):
            reason = complaint_about(file, name) if quoted and not name.endswith(".moc") else None
            if reason:
                complaints.append(f"src/{file}:{number}: \"{name}\" {reason}")
    return complaints


if __name__ == "__main__":
    sys.exit(tree.main(check))
