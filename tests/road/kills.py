#!/usr/bin/python3
"""Kills the program at any moment of scoring and of importing, hundreds of times, and looks at what
the library holds afterwards: the state before a phase or the state after it, and nothing between.

kills.py PROGRAM

A third of the kills are spread over the measured time of a run; a third come at fine steps after a
journal appeared beside the library, which begins the writing of a phase; a third after the journal was
closed, when the library itself is written. Ends with 1 and the details if a library is in another
state, is damaged, or cannot be opened by the program.
"""

import os
import random
import shutil
import signal
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan

SUBJECTS = ("语文", "数学", "英语", "物理", "化学", "生物")
COLUMNS = SUBJECTS + ("理科总分", "三科总分", "理综总分")
CLASSES, CLASS_SIZE, NEWCOMERS = 20, 50, 100
WORKERS = 2
KILLS_EACH = 90  # of each kind of delay, for scoring and for importing
FEWEST_INSIDE = 20
LONGEST = 40  # seconds for each case; a slow build gets fewer kills, but never fewer than 110


@dataclass
class Case:
    """A command on a copy of a prepared library, and the states that it may leave: hash to name."""

    name: str
    library: Path
    arguments: list
    states: dict
    seconds: float = 0


@dataclass
class Moment:
    """A delay after the start, or after a sign about the journal has come up so many times."""

    delay: float
    sign: object = None
    times: int = 0

    def __str__(self):
        after = f"journal {self.times}, {self.sign.__name__}" if self.sign else "the start"
        return f"{self.delay:.4f} s after {after}"


@dataclass
class Shot:
    """What one kill found."""

    state: str
    inside: bool
    hot: bool
    complaint: str = ""


def scores(dice):
    marks = [dice.randrange(60, 200) / 2 for _ in SUBJECTS]
    if dice.random() < 0.03:
        marks[dice.randrange(len(marks))] = "缺考"
    return marks


def exam_rows(dice, newcomers=0):
    rows = [(*yunshan.HEADINGS, *SUBJECTS)]
    for number in range(1, CLASSES + 1):
        extra = newcomers // CLASSES
        rows += [(number, place, f"学生{number}之{place}", *scores(dice))
                 for place in range(1, CLASS_SIZE + extra + 1)]
    return rows


def succeed(*arguments, cwd, expect=yunshan.DONE):
    result = yunshan.run(*arguments, cwd=cwd)
    if result.code != expect:
        sys.exit(f"{arguments} ended with {result.code}: {result.err}")


def prepare(folder):
    """A library with two scored exams and a third unscored, and a workbook with newcomers."""
    dice = random.Random(7)
    library = folder / "base.CJK"
    succeed("new", library, "--subjects", ",".join(COLUMNS), cwd=folder)
    names = [(*yunshan.HEADINGS, "科类")]
    names += [(number, place, f"学生{number}之{place}", "理") for number in range(1, CLASSES + 1)
              for place in range(1, CLASS_SIZE + 1)]
    students = yunshan.write_book(folder / "students.xlsx", {"Sheet": names})
    succeed("import-students", library, students, "--no-backup", cwd=folder)
    for exam in ("第一次", "第二次", "第三次"):
        book = yunshan.write_book(folder / "exam.xlsx", {"Sheet": exam_rows(dice)})
        options = ["--score"] if exam != "第三次" else []
        succeed("import-exam", library, book, "--exam", exam, "--no-backup", *options, cwd=folder)
    new = exam_rows(dice, NEWCOMERS)
    yunshan.write_book(folder / "new.xlsx", {"Sheet": new})
    stopped = new + [(1, 1, "别人", *new[1][3:])]
    yunshan.write_book(folder / "stopped.xlsx", {"Sheet": stopped})
    return library


def state_after(library, folder, *arguments, expect=yunshan.DONE):
    copy = folder / "state.CJK"
    shutil.copyfile(library, copy)
    if arguments:
        succeed(arguments[0], copy, *arguments[1:], cwd=folder, expect=expect)
    return yunshan.content_hash(copy)


def scoring_case(library, folder):
    return Case("scoring", library, ["score", "第三次"],
                {state_after(library, folder): "before",
                 state_after(library, folder, "score", "第三次"): "after scoring"})


def importing_case(library, folder):
    # The row of another name at the end stops the import once the newcomers are in.
    names = ("import-exam", folder / "stopped.xlsx", "--exam", "新", "--no-backup", "--add-students")
    whole = ("import-exam", folder / "new.xlsx", "--exam", "新", "--no-backup", "--add-students")
    return Case("importing", library, [*whole, "--score"],
                {state_after(library, folder): "before",
                 state_after(library, folder, *names, expect=yunshan.ERROR): "after the names",
                 state_after(library, folder, *whole): "after the exam's rows",
                 state_after(library, folder, *whole, "--score"): "after scoring"})


def start(case, library):
    command, *rest = case.arguments
    return subprocess.Popen([yunshan.PROGRAM, command, library, *rest], cwd=library.parent,
                            env=yunshan.environment(library.parent), stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def measure(case, folder):
    """Sets the time of a run, with as many beside it as there will be."""
    def timed(number):
        copy = folder / f"time{number}.CJK"
        shutil.copyfile(case.library, copy)
        begun = time.monotonic()
        process = start(case, copy)
        if process.wait() != 0:
            sys.exit(f"{case.name}: the run that is measured ended with {process.returncode}")
        return time.monotonic() - begun
    with ThreadPoolExecutor(WORKERS) as pool:
        case.seconds = statistics.median(pool.map(timed, range(2 * WORKERS + 1)))


def wait_for(sign, process, journal, times):
    """Waits until the sign has come up so many times, or the process has ended."""
    there = False
    while process.poll() is None:
        now = sign(journal)
        times -= now and not there
        there = now
        if times <= 0:
            return
        time.sleep(0.00005)


def kill(process):
    if process.poll() is None:
        os.kill(process.pid, signal.SIGKILL)
    return process.wait() == -signal.SIGKILL


def look(case, library):
    """The state of a library after a kill, and what is wrong with it."""
    opened = yunshan.run("info", library, cwd=library.parent)
    if opened.code != yunshan.DONE:
        return "?", f"the program does not open it: {opened.err}"
    if yunshan.is_hot(Path(f"{library}-journal")):
        return "?", "a hot journal is left although the program opened the library"
    conn = sqlite3.connect(library)
    try:
        checked = conn.execute("pragma integrity_check").fetchall()
    finally:
        conn.close()
    if checked != [("ok",)]:
        return "?", f"damaged: {checked[:5]}"
    found = yunshan.content_hash(library)
    if found not in case.states:
        return "?", "neither the state before nor after a phase"
    return case.states[found], ""


def shoot(case, folder, moment):
    """One run that is killed at that moment."""
    place = Path(tempfile.mkdtemp(dir=folder))
    library = place / "试验.CJK"
    journal = Path(f"{library}-journal")
    shutil.copyfile(case.library, library)
    process = start(case, library)
    if moment.sign:
        wait_for(moment.sign, process, journal, moment.times)
    time.sleep(moment.delay)
    inside = kill(process)
    hot = yunshan.is_hot(journal)
    state, complaint = look(case, library)
    shutil.rmtree(place)
    return Shot(state, inside, hot, complaint and f"{case.name}, killed {moment}: {complaint}")


def plan(case):
    """The moments of all kills, shuffled so that any part of them is spread over the run."""
    journals = len(case.states) - 1
    moments = [Moment(case.seconds * 1.02 * step / KILLS_EACH) for step in range(KILLS_EACH)]
    steps = KILLS_EACH // journals
    for journal in range(1, journals + 1):
        for step in range(steps):
            moments.append(Moment(case.seconds / 2 * step / steps, Path.exists, journal))
            moments.append(Moment(case.seconds / 5 * (step / steps) ** 2, yunshan.is_hot, journal))
    random.Random(1).shuffle(moments)
    return moments


def shoot_all(case, folder):
    begun = time.monotonic()
    shots = []
    moments = plan(case)
    with ThreadPoolExecutor(WORKERS) as pool:
        while moments and (len(shots) < 110 or time.monotonic() - begun < LONGEST):
            now, moments = moments[:10], moments[10:]
            shots += pool.map(lambda moment: shoot(case, folder, moment), now)
    return shots


def run_case(case, folder):
    measure(case, folder)
    shots = shoot_all(case, folder)
    landed = Counter(shot.state for shot in shots if shot.inside)
    print(f"{case.name}: a run takes {case.seconds:.3f} s; {len(shots)} kills, "
          f"{sum(shot.inside for shot in shots)} inside the run, "
          f"{sum(shot.hot for shot in shots)} left a hot journal")
    for state in [*case.states.values(), "?"]:
        if landed[state] or state != "?":
            print(f"    {landed[state]:4d}  {state}")
    return shots


def verdict(shots):
    complaints = [shot.complaint for shot in shots if shot.complaint]
    inside = sum(shot.inside for shot in shots)
    if inside < FEWEST_INSIDE:
        complaints.append(f"only {inside} of {len(shots)} kills landed inside the run")
    return complaints


def main():
    yunshan.PROGRAM = str(Path(sys.argv[1]).resolve())
    begun = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="yunshan-kills-") as name:
        folder = Path(name)
        library = prepare(folder)
        complaints = []
        total = 0
        for case in (scoring_case(library, folder), importing_case(library, folder)):
            shots = run_case(case, folder)
            total += len(shots)
            complaints += verdict(shots)
    print(f"{total} kills in {time.monotonic() - begun:.0f} s")
    for complaint in complaints:
        print(complaint)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
