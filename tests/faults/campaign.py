"""Runs the scenarios with faults and kills, and counts what went wrong."""

import os
import random
import shutil
import subprocess
import tempfile
import time
from collections import Counter, defaultdict
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, field
from pathlib import Path

import injection
import judge
import scenarios
from judge import Wrong

EXAMPLES = 3


@dataclass
class Figures:
    """What was tried, and what is to complain of."""

    faults: int = 0
    kills: int = 0
    random_kills: int = 0
    random_inside: int = 0
    random_lost: int = 0
    complaints: list = field(default_factory=list)

    def count(self, *kinds):
        """How many runs have complaints of these kinds."""
        return len({(complaint.scenario, complaint.fault) for complaint in self.complaints
                    if complaint.wrong in kinds})


class Campaign:
    """Scenarios that are prepared and measured in a folder; `wanted` picks them by their names."""

    def __init__(self, programs, folder, wanted=lambda name: True):
        self.programs = programs
        self.folder = Path(folder).resolve()
        self.workers = os.cpu_count()
        self.figures = Figures()
        prepared = self.folder / "prepared"
        prepared.mkdir()
        self.scenarios = [scenario for scenario in scenarios.all_scenarios(programs, prepared)
                          if wanted(scenario.name)]
        for scenario in self.scenarios:
            scenarios.measure(programs, scenario, self.folder)

    def disturb(self, scenario, fault):
        """The complaints about one run with this fault."""
        with tempfile.TemporaryDirectory(dir=self.folder) as name:
            place = scenario.place(Path(name) / "run")
            try:
                result = injection.run(self.programs, place, scenario.command, fault)
            except subprocess.TimeoutExpired:
                result = None
            if fault.kills and result is not None and result.code == injection.KILLED:
                return judge.after_a_kill(self.programs, scenario, place, fault)
            return judge.after_a_fault(scenario, place, fault, result)

    def run(self, scenario, thin):
        """Tries faults and kills of a scenario; gives the complaints."""
        faults = list(injection.all_faults(scenario.calls, thin))
        with ThreadPoolExecutor(self.workers) as pool:
            found = sum(pool.map(lambda fault: self.disturb(scenario, fault), faults), [])
        kills = sum(fault.kills for fault in faults)
        self.figures.faults += len(faults) - kills
        self.figures.kills += kills
        self.figures.complaints += found
        return found

    def seconds(self, scenario):
        """How long an undisturbed run takes, with as many beside it as there will be."""
        def timed(number):
            place = scenario.place(self.folder / f"timed{number}")
            begun = time.monotonic()
            injection.start(self.programs, place, scenario.command).wait()
            taken = time.monotonic() - begun
            shutil.rmtree(place)
            return taken
        with ThreadPoolExecutor(self.workers) as pool:
            return sorted(pool.map(timed, range(4 * self.workers)))[2 * self.workers]

    def kill_once(self, scenario, number, delay):
        """One kill at a moment after the start: whether it hit the run, and the complaints."""
        with tempfile.TemporaryDirectory(dir=self.folder) as name:
            place = scenario.place(Path(name) / "run")
            process = injection.start(self.programs, place, scenario.command)
            time.sleep(delay)
            process.kill()
            killed = process.wait() == injection.KILLED
            moment = f"random kill {number} after {delay * 1000:.2f} ms"
            return killed, judge.after_a_kill(self.programs, scenario, place, moment)

    def kill_at_random(self, count):
        """Kills at random moments, the scenarios in turns."""
        dice = random.Random(count)
        longest = [self.seconds(scenario) * 1.05 for scenario in self.scenarios]

        def shoot(number):
            turn = number % len(self.scenarios)
            return self.kill_once(self.scenarios[turn], number, delays[number] * longest[turn])
        delays = [dice.random() for _ in range(count)]
        with ThreadPoolExecutor(self.workers) as pool:
            for killed, found in pool.map(shoot, range(count)):
                self.figures.random_kills += 1
                self.figures.random_inside += killed
                self.figures.random_lost += any(complaint.wrong in (Wrong.LIBRARY, Wrong.COPY)
                                                for complaint in found)
                self.figures.complaints += found


def grouped(complaints):
    """By scenario and kind their number, and some examples of each."""
    groups = defaultdict(list)
    for complaint in complaints:
        groups[complaint.scenario, complaint.wrong].append(complaint)
    for (scenario, wrong), found in groups.items():
        yield f"{scenario}: {wrong.value}: {len(found)}"
        details = Counter(complaint.details for complaint in found)
        for text, number in details.most_common(EXAMPLES):
            example = next(complaint for complaint in found if complaint.details == text)
            yield f"    {number} times: {text} ({example.fault})"


def report(figures):
    """The closing lines."""
    whole = figures.count(Wrong.LIBRARY, Wrong.COPY)
    others = figures.count(*set(Wrong) - {Wrong.SUCCESS, Wrong.LIBRARY, Wrong.COPY})
    yield f"failing calls tried: {figures.faults}, kills at file calls: {figures.kills}"
    yield f"wrong successes: {figures.count(Wrong.SUCCESS)}"
    yield f"libraries or copies not whole: {whole}"
    yield f"other complaints: {others}"
    if figures.random_kills:
        yield (f"random kills: {figures.random_kills}, {figures.random_inside} of them inside the"
               f" run; lost: {figures.random_lost}")
