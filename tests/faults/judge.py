"""What must hold after every disturbed run, and after every kill."""

import json
from dataclasses import dataclass
from enum import Enum
from pathlib import Path

import injection
import libraries
import scenarios
from injection import yunshan
from libraries import ABSENT, NotWhole
from scenarios import AFTER, LIBRARY


class Wrong(Enum):
    """Kinds of complaints."""

    SUCCESS = "success is told, but the run failed"
    SILENT = "the run failed without a sentence"
    LIBRARY = "the library is not whole"
    COPY = "a copy is missing or not whole"
    BOOK = "a saved workbook is not whole"
    INPUT = "a file that is only read was changed"
    LEFT_OVER = "temporary files are left over"
    CRASH = "the program crashed or hung"
    AGAIN = "the run cannot be repeated after the kill"


@dataclass
class Complaint:
    scenario: str
    fault: str
    wrong: Wrong
    details: str

    def __str__(self):
        return f"{self.scenario}, {self.fault}: {self.wrong.value}: {self.details}"


def is_closing(line):
    return line.startswith(scenarios.CLOSING_TEXTS)


def tells_success(scenario, result, place):
    """By its exit code, or by a closing text that no sentence of its own stands before."""
    told = scenarios.lines(result.err, place)
    if result.code == yunshan.DONE or told == scenario.usual_err:
        return True
    closing = next((i for i, line in enumerate(told) if is_closing(line)), None)
    return closing is not None and all(line in scenario.usual_err for line in told[:closing])


class Look:
    """Looks at what a run left in its folder, and complains."""

    def __init__(self, scenario, place, fault):
        self.scenario, self.place, self.fault = scenario, place, fault
        self.library = place / LIBRARY
        self.complaints = []

    def complain(self, wrong, details):
        self.complaints.append(Complaint(self.scenario.name, str(self.fault), wrong, details))

    def state(self):
        """The content of the library, None if it is none that the run may leave."""
        try:
            found = libraries.content(self.library)
        except NotWhole as error:
            self.complain(Wrong.LIBRARY, str(error))
            return None
        if found in self.scenario.states:
            return found
        self.complain(Wrong.LIBRARY, ABSENT if found == ABSENT else "it is in no state of the run")
        return None

    def copies(self, is_copy_needed):
        found = []
        for copy in libraries.copies(self.library):
            try:
                found.append(libraries.content(copy))
            except NotWhole as error:
                self.complain(Wrong.COPY, f"{copy.name}: {error}")
                continue
            if found[-1] not in self.scenario.states and found[-1] != self.scenario.earlier:
                self.complain(Wrong.COPY, f"{copy.name} is in no state that the library had")
        if is_copy_needed and self.scenario.before not in found:
            self.complain(Wrong.COPY, "no copy of the library as it was is there")
        lost = self.scenario.earlier_copies - found.count(self.scenario.earlier)
        if lost > 1:
            self.complain(Wrong.COPY, f"{lost} earlier copies are gone")

    def notes(self, state):
        """That an import is gone is known to whoever wants to undo the last one."""
        if not self.scenario.notes_restore or state != self.scenario.final:
            return
        notes = [json.loads(path.read_bytes()) for path in self.place.glob("*.bak.json")]
        if not any(note.get("restores") for note in notes):
            self.complain(Wrong.COPY, "none holds what was restored")

    def library_and_copies(self, is_success=False):
        self.inputs()
        state = self.state()
        changed = state is not None and state != self.scenario.before
        self.copies(self.scenario.makes_copies and (is_success or changed))
        return state

    def books(self):
        """The workbooks that the run saved."""
        found = {}
        for path in self.place.glob("out/[!.]*.xlsx"):
            try:
                found[path.name] = libraries.workbook(path)
            except NotWhole as error:
                self.complain(Wrong.BOOK, str(error))
        return found

    def inputs(self):
        """What the run was given besides the library is as it was."""
        for path in self.scenario.folder.iterdir():
            if path.name.startswith(LIBRARY) or not path.is_file():
                continue
            kept = self.place / path.name
            if not kept.exists() or kept.read_bytes() != path.read_bytes():
                self.complain(Wrong.INPUT, path.name)
            elif kept.stat().st_mtime_ns != path.stat().st_mtime_ns:
                self.complain(Wrong.INPUT, f"{path.name}: its date")

    def left_over(self):
        expected = {path.name for path in self.scenario.folder.iterdir()}
        for path in libraries.copies(self.library):
            expected |= {path.name, f"{path.name}.json"}
        expected |= {LIBRARY, f"{LIBRARY}-journal", "scratch", "out"}
        left = sorted(path.name for path in self.place.iterdir() if path.name not in expected)
        if left:
            self.complain(Wrong.LEFT_OVER, ", ".join(left))

    def success(self, result, state):
        """What was told to be a success must be one."""
        if state != self.scenario.final:
            name = self.scenario.states.get(state, "neither of the run's")
            self.complain(Wrong.SUCCESS, f"the state of the library is: {name}")
        if scenarios.lines(result.out, self.place) != self.scenario.usual_out:
            self.complain(Wrong.SUCCESS, "the output is not the usual one")
        if self.books() != self.scenario.books:
            self.complain(Wrong.SUCCESS, "the workbooks are not the usual ones")


def after_a_fault(scenario, place, fault, result):
    """The complaints about a run with a failing call; its result is None if it hung."""
    look = Look(scenario, place, fault)
    if result is None or result.code < 0:
        look.complain(Wrong.CRASH, "it hung" if result is None else f"signal {-result.code}")
        look.library_and_copies()
        return look.complaints
    is_success = tells_success(scenario, result, place)
    state = look.library_and_copies(is_success)
    if is_success:
        look.success(result, state)
    elif not result.err.strip():
        look.complain(Wrong.SILENT, f"exit code {result.code}")
    else:
        look.books()
    if fault.call != "unlink":
        look.left_over()
    return look.complaints


def finish(programs, look, state):
    """Runs the command again, or the one that leads on from this state."""
    scenario = look.scenario
    name = scenario.states[state]
    if name == AFTER and scenario.final != scenario.before:
        return
    command = scenario.finish.get(name, scenario.command)
    result = injection.run(programs, look.place, command)
    if result.code not in (yunshan.DONE, scenario.usual_code):
        look.complain(Wrong.AGAIN, f"exit code {result.code}: {result.err[:200]}")
    elif look.state() not in (scenario.final, None):
        look.complain(Wrong.AGAIN, "the library is not as after an undisturbed run")


def opens(programs, look, state):
    """Whether the program opens the library, in the same state and without a journal left."""
    result = injection.run(programs, look.place, scenarios.cli("info"))
    if result.code != yunshan.DONE:
        look.complain(Wrong.LIBRARY, f"the program does not open it: {result.err[:200]}")
        return False
    if yunshan.is_hot(Path(f"{look.library}-journal")):
        look.complain(Wrong.LIBRARY, "a hot journal is left although the program opened it")
    if look.state() not in (state, None):
        look.complain(Wrong.LIBRARY, "opening it changed its state")
    return True


def after_a_kill(programs, scenario, place, fault):
    look = Look(scenario, place, fault)
    state = look.library_and_copies()
    look.notes(state)
    if state is not None and (state == ABSENT or opens(programs, look, state)):
        finish(programs, look, state)
        look.left_over()
    return look.complaints
