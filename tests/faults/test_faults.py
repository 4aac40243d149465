#!/usr/bin/python3
"""A sample of the faults and kills of all_faults.py, and tests of what makes calls fail.

test_faults.py YUNSHAN-CLI SCREEN_COMMANDS SHIM
"""

import errno
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import campaign
import injection
from injection import Fault

PROGRAMS = None
MOST = 2  # faults of each kind in each scenario
LEFT_TO_THE_WHOLE = {"scoring on the screen", "opening a crashed library"}

# Writes a file, copies it through stdio, and moves it; prints what each step gave.
SCRIPT = """
import os
def step(name, work):
    try:
        print(name, work())
    except OSError as error:
        print(name, os.strerror(error.errno))
file = os.open("a", os.O_RDWR | os.O_CREAT)
step("write", lambda: os.write(file, b"12345678"))
step("write", lambda: os.pwrite(file, b"abcd", 8))
step("fsync", lambda: os.fsync(file))
step("read", lambda: os.pread(file, 99, 0))
step("stdio", lambda: open("a", "rb").read())
step("rename", lambda: os.rename("a", "b"))
step("link", lambda: os.link("b", "c"))
step("unlink", lambda: os.unlink("b"))
step("truncate", lambda: os.truncate("c", 3))
"""
USUAL = ["write 8", "write 4", "fsync None", "read b'12345678abcd'", "stdio b'12345678abcd'",
         "rename None", "link None", "unlink None", "truncate None"]


class FailingCalls(unittest.TestCase):
    """FaultShim.cpp in front of a script whose calls are known."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="yunshan-shim-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()

    def run_script(self, fault=None, folders=None, **more):
        settings = {"YUNSHAN_FAULT_FOLDERS": str(folders or self.folder),
                    "LD_PRELOAD": str(PROGRAMS.shim)} | (fault.settings() if fault else {}) | more
        return subprocess.run(["/usr/bin/python3", "-B", "-S", "-c", SCRIPT], cwd=self.folder,
                              env=settings, capture_output=True, text=True, check=False)

    def assertSteps(self, fault, changed):
        """The script's lines are the usual ones but for some, given by their number."""
        expected = [changed.get(number, line) for number, line in enumerate(USUAL)]
        self.assertEqual(self.run_script(fault).stdout.splitlines(), expected, fault)

    def test_a_run_that_is_only_counted_is_as_usual_and_each_call_is_logged(self):
        log = self.folder.parent / f"{self.folder.name}.log"
        self.addCleanup(log.unlink)
        done = self.run_script(YUNSHAN_FAULT_LOG=str(log))
        self.assertEqual(done.stdout.splitlines(), USUAL)
        calls = [line.split("\t") for line in log.read_text().splitlines()]
        self.assertEqual({file for _, file in calls},
                         {str(self.folder / name) for name in "abc"})
        kinds = [kind for kind, _ in calls]
        self.assertEqual([kinds.count(kind) for kind in ("open", "write", "fsync", "rename",
                                                         "unlink", "truncate")],
                         [2, 2, 1, 2, 1, 1])

    def test_one_call_fails(self):
        space, device = "No space left on device", "Input/output error"
        for fault, changed in ((Fault("write", 2, errno.ENOSPC),
                                {1: f"write {space}", 3: "read b'12345678'",
                                 4: "stdio b'12345678'"}),
                               (Fault("read", 1, errno.EIO), {3: f"read {device}"}),
                               (Fault("read", 2, errno.EIO), {4: f"stdio {device}"}),
                               (Fault("fsync", 1, errno.EIO), {2: f"fsync {device}"}),
                               (Fault("truncate", 1, errno.EIO), {8: f"truncate {device}"}),
                               (Fault("rename", 2, errno.EIO),
                                {6: f"link {device}", 8: "truncate No such file or directory"})):
            with self.subTest(fault=str(fault)):
                self.assertSteps(fault, changed)
            for left in self.folder.iterdir():
                left.unlink()

    def test_all_calls_fail_from_then_on(self):
        self.assertSteps(Fault("read", 1, errno.EIO, "on"),
                         {3: "read Input/output error", 4: "stdio Input/output error"})

    def test_half_is_written(self):
        self.assertSteps(Fault("write", 1, injection.SHORT),
                         {0: "write 4", 3: r"read b'1234\x00\x00\x00\x00abcd'",
                          4: r"stdio b'1234\x00\x00\x00\x00abcd'"})

    def test_a_full_disk_takes_half_and_then_nothing(self):
        self.assertSteps(Fault("write", 1, injection.FULL),
                         {0: "write 4", 1: "write No space left on device", 3: "read b'1234'",
                          4: "stdio b'1234'"})

    def test_kills_come_before_the_call_or_in_its_middle(self):
        for does, content in ((injection.KILLS, b""), (injection.TEARS, b"1234")):
            done = self.run_script(Fault("write", 1, does))
            self.assertEqual((done.returncode, done.stdout), (injection.KILLED, ""), does)
            self.assertEqual((self.folder / "a").read_bytes(), content, does)

    def test_files_elsewhere_are_left_alone(self):
        done = self.run_script(Fault("any", 1, errno.EIO, "on"), folders=self.folder / "elsewhere")
        self.assertEqual(done.stdout.splitlines(), USUAL)


class Scenarios(unittest.TestCase):
    """The program under faults and kills."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="yunshan-faults-")
        cls.addClassCleanup(folder.cleanup)
        cls.trial = campaign.Campaign(PROGRAMS, folder.name,
                                      lambda name: name not in LEFT_TO_THE_WHOLE)

    def test_nothing_is_lost_and_no_success_is_told_that_was_none(self):
        for scenario in self.trial.scenarios:
            with self.subTest(scenario=scenario.name):
                found = self.trial.run(scenario, injection.thinned(MOST))
                self.assertFalse(found, "\n" + "\n".join(map(str, found)))


if __name__ == "__main__":
    PROGRAMS = injection.Programs(*(Path(sys.argv.pop(1)).resolve() for _ in range(3)))
    unittest.main(verbosity=2)
