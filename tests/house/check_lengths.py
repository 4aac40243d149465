"""A function over 80 lines or a file over 500 needs a line that says why: `// Long because …`.

The line stands directly above the function or in it; for a file, in its first ten lines. The lengths
of all functions are printed in any case, from the signature to the closing brace.
"""

import re
import sys
from pathlib import Path

import functions
import tree

LONGEST_FUNCTION = 80
LONGEST_FILE = 500
REASON = re.compile(r"//\s*Long because \w")


def comment_above(lines, first):
    """The comment lines directly above line `first` (counted from 1)."""
    above = []
    for line in reversed(lines[:first - 1]):
        if not line.lstrip().startswith("//"):
            break
        above.append(line)
    return above


def has_reason(lines, function):
    near = comment_above(lines, function.first) + lines[function.first - 1:function.last]
    return any(REASON.search(line) for line in near)


def percentile(lengths, share):
    """The smallest length that at least `share` of the functions do not exceed."""
    ordered = sorted(lengths)
    return ordered[max(0, -(-len(ordered) * share // 100) - 1)]


def report(title, sized):
    """Prints the spread of the lengths; `sized` are pairs of a function and its file."""
    if not sized:
        return
    lengths = [function.length for function, _ in sized]
    print(f"{title}: {len(sized)} functions, median {percentile(lengths, 50)} lines, "
          f"95 % have at most {percentile(lengths, 95)}")
    for function, file in sorted(sized, key=lambda pair: -pair[0].length)[:10]:
        print(f"  {function.length:4} {function.name}  ({file}:{function.first})")


def check_file(path, name, sized):
    """Complaints about one file, whose functions are added to `sized`."""
    text = path.read_text(encoding="utf-8")
    lines = text.splitlines()
    if len(lines) > LONGEST_FILE and not any(REASON.search(line) for line in lines[:10]):
        yield f"{name}: {len(lines)} lines without a reason"
    for function in functions.functions(text):
        sized.append((function, name))
        if function.length > LONGEST_FUNCTION and not has_reason(lines, function):
            yield f"{name}:{function.first}: {function.name} has {function.length} lines " \
                  "without a reason"


def check(root, _arguments=None):
    complaints = []
    for folder in ("src", "tests", "benchmarks"):
        sized = []
        for path in tree.code_files(root, folder):
            complaints += check_file(path, path.relative_to(Path(root)), sized)
        report(folder, sized)
    return complaints


if __name__ == "__main__":
    sys.exit(tree.main(check))
