#!/usr/bin/python3
"""Searches by mutation for faults that no test notices: changes one line of an engine at a time, builds
the test programs that could notice, runs them, and puts the line back.

It works in a copy of the project that is given by --tree and holds nothing else, a plain clone with a
configured build folder; a developer's own tree is refused. What it finds goes to the record, a line
each, so that an interrupted search goes on where it stopped; --again runs the record's survivors once
more, after tests were added to the copy.
"""

import argparse
import contextlib
import dataclasses
import json
import os
import random
import resource
import signal
import subprocess
import sys
import tempfile
import time
from collections import Counter
from pathlib import Path

import mutations

ROOT = Path(__file__).resolve().parents[2]
# For each folder of src/ the test programs that can notice: its own, and those of the layers above.
PROGRAMS = {
    "platform/runtime": ("runtime", "database", "grid", "library", "importing", "workbooks"),
    "platform/database": ("database", "library", "scoring", "workbench"),
    "platform/grid": ("grid", "workbench", "statistics"),
    "workbooks": ("workbooks", "importing", "statistics"),
    "library": ("library", "scoring", "statistics", "workbench"),
    "scoring": ("scoring", "statistics", "workbench"),
    "statistics": ("statistics", "workbench"),
    "import": ("importing", "cli"),
    "workbench": ("workbench", "cli", "gui"),
    "configuration": ("configuration", "gui"),
    "shell": ("shell", "gui"),
    "cli": ("cli",),
}
SCREENS = {"ui", "widgets", "main", "template"}
# In memory, since the tests wait most for the disk.
SCRATCH = "/dev/shm" if os.path.isdir("/dev/shm") else None
LEAST_SECONDS = 20
MEMORY = 6 << 30
FILE_SIZE = 1 << 30


@dataclasses.dataclass
class Result:
    mutation: mutations.Mutation
    outcome: str
    by: str

    def text(self):
        return json.dumps({**dataclasses.asdict(self.mutation), "outcome": self.outcome,
                           "by": self.by}, ensure_ascii=False)

    def line(self):
        return f"{self.outcome:14} {self.mutation.file}:{self.mutation.line} {self.by}"

    @staticmethod
    def read(text):
        values = json.loads(text)
        outcome, by = values.pop("outcome"), values.pop("by")
        return Result(mutations.Mutation(**values), outcome, by)


def folder_of(file):
    """The folder of PROGRAMS that a file, "src/…", belongs to."""
    inside = str(Path(file).relative_to("src"))
    return next((folder for folder in PROGRAMS if inside.startswith(folder + "/")), None)


def limits():
    """A fault can ask for all memory or fill the disk."""
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, FILE_SIZE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(command, folder, seconds=None, **options):
    """The exit code of a command that is ended with all it started after so many seconds; then None."""
    with subprocess.Popen(["nice", *map(str, command)], cwd=folder, stdin=subprocess.DEVNULL,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          start_new_session=True, **options) as process:
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            return None
        finally:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGKILL)


class Tree:
    """The copy: its files, its builds and its tests."""

    def __init__(self, root, preset):
        self.root = root
        self.build = root / "build" / preset
        self.limit = {}

    def check(self):
        if self.root == ROOT:
            sys.exit("--tree has to be a copy: the search changes files in it.")
        if not (self.build / "CMakeCache.txt").exists():
            sys.exit(f"{self.build} is not configured.")
        changed = subprocess.run(["git", "status", "--porcelain", "src"], cwd=self.root, check=True,
                                 capture_output=True, text=True).stdout
        if changed:
            sys.exit(f"The copy has changes of its own:\n{changed}")

    def files(self, folder):
        """The engine sources of a folder, relative to the tree."""
        return [file for path in sorted((self.root / "src").rglob("*.cpp"))
                if folder_of(file := str(path.relative_to(self.root))) == folder
                and not SCREENS & set(path.relative_to(self.root).parts)]

    def text(self, file):
        return (self.root / file).read_text(encoding="utf-8")

    @contextlib.contextmanager
    def changed(self, mutation):
        """The file with its mutation; as it was afterwards, whatever happens."""
        path = self.root / mutation.file
        original = path.read_bytes()
        lines = original.decode("utf-8").splitlines(keepends=True)
        if lines[mutation.line - 1].rstrip("\n") != mutation.before:
            raise LookupError(f"{mutation.file}:{mutation.line} is another line now")
        lines[mutation.line - 1] = mutation.after + "\n"
        try:
            path.write_text("".join(lines), encoding="utf-8")
            yield
        finally:
            path.write_bytes(original)

    def make(self, program):
        targets = ["yunshan-cli"] if program == "cli" else [f"test_{program}"]
        return run(["cmake", "--build", self.build, "--parallel", 1, "--target", *targets],
                   self.root) == 0

    def passes(self, program, seconds=None):
        """True, False, or None when the time was over."""
        command = [self.build / "bin" / f"test_{program}", "--gtest_brief=1", "--gtest_fail_fast"]
        if program == "cli":
            command = ["ctest", "--test-dir", self.build, "-R", r"^cli\.", "--stop-on-failure"]
        # What a crashed test leaves behind goes with this folder.
        with tempfile.TemporaryDirectory(prefix="mutation-", dir=SCRATCH) as folder:
            os.chmod(folder, 0o1777)  # Some tests run as an ordinary user.
            surroundings = {**os.environ, "TMPDIR": folder, "HOME": folder,
                            "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8"}
            code = run(command, self.root, seconds, env=surroundings, preexec_fn=limits)
        return None if code is None else code == 0

    def measure(self, programs):
        """Each program has to pass unchanged; what it takes gives its time limit."""
        for program in programs:
            made = self.make(program)
            begin = time.monotonic()
            if not made or not self.passes(program):
                sys.exit(f"{program} fails without a mutation.")
            self.limit[program] = max(LEAST_SECONDS, 6 * (time.monotonic() - begin))

    def judge(self, mutation):
        """What becomes of a mutation, by the first program that notices it."""
        with self.changed(mutation):
            for program in self.programs(mutation.file):
                if not self.make(program):
                    return Result(mutation, "did not build", program)
                passed = self.passes(program, self.limit[program])
                if not passed:
                    return Result(mutation, "timed out" if passed is None else "killed", program)
        return Result(mutation, "survived", "")

    def programs(self, file):
        """The file's own test program first; of the others the quickest."""
        own, *above = PROGRAMS[folder_of(file)]
        return [own, *sorted(above, key=lambda program: self.limit.get(program, 0))]


class Record:
    """What is known already, in a file of a line for each mutation."""

    def __init__(self, path):
        self.path = path
        self.results = []
        if path.exists():
            self.results = [Result.read(line) for line in path.read_text("utf-8").splitlines()]

    def add(self, result):
        self.results.append(result)
        with self.path.open("a", encoding="utf-8") as file:
            file.write(result.text() + "\n")

    def of(self, mutation):
        return next((known for known in self.results if known.mutation == mutation), None)


def shares(tree, folders, count):
    """How many mutations each folder gets, by its lines of code; the rests go to the largest."""
    lines = {folder: sum(mutations.is_code(line) for file in tree.files(folder)
                         for line in tree.text(file).splitlines()) for folder in folders}
    total = sum(lines.values())
    share = {folder: count * lines[folder] // total for folder in folders}
    for folder in sorted(folders, key=lambda name: -lines[name])[:count - sum(share.values())]:
        share[folder] += 1
    return share


def drawn(tree, folder, seed):
    """All mutable lines of a folder in an order that the seed decides, each with one mutation."""
    chance = random.Random(f"{seed} {folder}")
    lines = [line for file in tree.files(folder) for line in mutations.of_text(file, tree.text(file))]
    chance.shuffle(lines)
    return [chance.choice(line) for line in lines]


def search(tree, record, folder, count, seed):
    """Judges mutations until `count` of them built."""
    built = 0
    for mutation in drawn(tree, folder, seed):
        if built == count:
            return
        result = record.of(mutation)
        if result is None:
            result = tree.judge(mutation)
            record.add(result)
            print(result.line(), flush=True)
        built += result.outcome != "did not build"


def again(tree, record):
    """The survivors of the record, judged by the tests that there are now."""
    survivors = [known.mutation for known in record.results if known.outcome == "survived"]
    for mutation in survivors:
        try:
            result = tree.judge(mutation)
        except LookupError as error:
            print(error)
            continue
        print(result.line(), flush=True)
        yield result


def show(results):
    """The outcomes of each folder, and a table of survivors."""
    outcomes = ("killed", "timed out", "survived", "did not build")
    print(f"\n{'':20}" + "".join(f"{outcome:>15}" for outcome in outcomes))
    for folder in [*PROGRAMS, ""]:
        counted = Counter(result.outcome for result in results
                          if folder in ("", folder_of(result.mutation.file)))
        if counted:
            print(f"{folder or 'all':20}" + "".join(f"{counted[name]:15}" for name in outcomes))
    for result in results:
        if result.outcome == "survived":
            mutation = result.mutation
            print(f"\n{mutation.file}:{mutation.line}  {mutation.kind}\n"
                  f"  - {mutation.before.strip()}\n  + {mutation.after.strip()}")


def arguments():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tree", type=Path, required=True, help="the copy, a clone of the project")
    parser.add_argument("--record", type=Path, required=True, help="the file of results")
    parser.add_argument("--count", type=int, default=200, help="mutations that have to build")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--preset", default="dev", help="the build folder within the copy")
    parser.add_argument("--folders", nargs="+", choices=PROGRAMS, metavar="FOLDER",
                        help="folders of src/ that the count is spread over, in this order "
                             "(by default: " + ", ".join(PROGRAMS) + ")")
    parser.add_argument("--only", nargs="+", choices=PROGRAMS, metavar="FOLDER",
                        help="of these, the ones to search now")
    parser.add_argument("--again", action="store_true", help="judge the survivors once more")
    return parser.parse_args()


def main():
    asked = arguments()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("ended"))
    tree = Tree(asked.tree.resolve(), asked.preset)
    tree.check()
    record = Record(asked.record)
    folders = asked.folders or list(PROGRAMS)
    wanted = asked.only or folders
    if asked.again:
        wanted = {folder_of(known.mutation.file) for known in record.results
                  if known.outcome == "survived"}
    tree.measure(dict.fromkeys(program for folder in wanted for program in PROGRAMS[folder]))
    if asked.again:
        return show(list(again(tree, record)))
    share = shares(tree, folders, asked.count)
    for folder in wanted:
        search(tree, record, folder, share[folder], asked.seed)
    show(record.results)


if __name__ == "__main__":
    main()
