"""Runs a program whose file calls are counted, fail, or kill it, by the library FaultShim.cpp."""

import errno
import subprocess
import sys
from collections import Counter
from dataclasses import dataclass
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan

LONGEST_RUN = 60  # seconds
KILLED = -9
ANY = "any"
KILLS, TEARS, SHORT, FULL = "kill", "tear", "short", "full"

# What can go wrong with each kind of call.
EFFECTS = {
    "read": (errno.EIO, SHORT),
    "write": (errno.ENOSPC, errno.EIO, SHORT, FULL),
    "fsync": (errno.EIO,),
    "rename": (errno.EIO,),
    "unlink": (errno.EACCES,),
    "open": (errno.EACCES, errno.EMFILE),
    "truncate": (errno.EIO,),
    "copy": (errno.ENOSPC,),
    "lock": (errno.EAGAIN,),
}


@dataclass(frozen=True)
class Programs:
    """The programs under test, and the library that is loaded in front of them."""

    yunshan_cli: Path
    screen_commands: Path
    shim: Path

    def path(self, name):
        return self.screen_commands if name == "screen_commands" else self.yunshan_cli


@dataclass(frozen=True)
class Fault:
    """What happens at the n-th call of a kind, from 1: an errno, or one of the words above."""

    call: str
    at: int
    does: object
    lasts: str = "once"

    def __str__(self):
        if self.at == 0:
            return "undisturbed"
        does = errno.errorcode.get(self.does, self.does)
        return f"{self.call} {self.at}: {does}{', and on' if self.lasts == 'on' else ''}"

    @property
    def kills(self):
        return self.does in (KILLS, TEARS)

    def settings(self):
        return {"YUNSHAN_FAULT_CALL": self.call, "YUNSHAN_FAULT_AT": str(self.at),
                "YUNSHAN_FAULT_DOES": str(self.does), "YUNSHAN_FAULT_LASTS": self.lasts}


def environment(programs, place, settings):
    """Temporary files are made in the place too, so that they fail like the others."""
    scratch = place / "scratch"
    scratch.mkdir(exist_ok=True)
    folders = f"{place}:{programs.yunshan_cli.parent}"
    return yunshan.environment(scratch) | {
        "TMPDIR": str(scratch), "LD_PRELOAD": str(programs.shim),
        "YUNSHAN_FAULT_FOLDERS": folders} | settings


def run(programs, place, command, fault=None):
    """Runs (program, argument …) in the folder `place`."""
    settings = fault.settings() if fault else {}
    return yunshan.run(*command[1:], cwd=place, program=str(programs.path(command[0])),
                       env=environment(programs, place, settings), timeout=LONGEST_RUN)


def logged_calls(programs, place, command):
    """All file calls of a run that nothing disturbs, as (kind, file)."""
    log = place.parent / f"{place.name}.calls"
    result = yunshan.run(*command[1:], cwd=place, program=str(programs.path(command[0])),
                         env=environment(programs, place, {"YUNSHAN_FAULT_LOG": str(log)}))
    calls = [tuple(line.split("\t", 1)) for line in log.read_text("utf-8").splitlines()]
    log.unlink()
    return calls, result


def faults_of(kind, count, thin):
    """The faults of a kind of call that comes up so many times; thin(count) gives the numbers."""
    for does in EFFECTS[kind]:
        for lasts in ("once",) if does in (SHORT, FULL) else ("once", "on"):
            for at in thin(count):
                yield Fault(kind, at, does, lasts)


def kills_of(calls, thin):
    """Kills before each call, and in the middle of each write."""
    for at in thin(len(calls)):
        yield Fault(ANY, at, KILLS)
    for at in thin(sum(kind == "write" for kind, _ in calls)):
        yield Fault("write", at, TEARS)


def all_faults(calls, thin):
    """First none at all: what must hold after faults must hold without."""
    yield Fault(ANY, 0, 0)
    counts = Counter(kind for kind, _ in calls)
    for kind in EFFECTS:
        yield from faults_of(kind, counts[kind], thin)
    yield from kills_of(calls, thin)


def every(count):
    return range(1, count + 1)


def thinned(most):
    """So many numbers at most, spread evenly."""
    def thin(count):
        if count <= most:
            return every(count)
        return [1 + int((step + 0.5) * count / most) for step in range(most)]
    return thin


def start(programs, place, command):
    """A process of the command, undisturbed."""
    return subprocess.Popen([programs.path(command[0]), *command[1:]], cwd=place,
                            env=yunshan.environment(place), stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
