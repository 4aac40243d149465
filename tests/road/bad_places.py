#!/usr/bin/python3
"""Libraries in places where they cannot be written: read-only, locked by another program, no room left.

bad_places.py PROGRAM

One clear message and exit 1; the library and what stands beside it stay as they were.
"""

import os
import resource
import shutil
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, HEADINGS

NOBODY = 65534
READ_ONLY = "成绩库是只读的，不能写入。"
NO_PLACE = "无法打开成绩库文件，或不能在它旁边建立临时文件。"
LOCKED = "成绩库正被别的程序使用，请关闭那个程序后再试。"
DISK_FULL = "磁盘已满，没有写入。"
WRITE_FAILED = "读写成绩库文件时出错，磁盘可能已满或已断开。"
STUDENTS, CLASSES = 400, 8


class BadPlace(yunshan.ProgramTest):
    """A library in a folder of its own with one exam that is not scored, and a workbook of another."""

    def setUp(self):
        super().setUp()
        self.folder = self.folder.resolve()
        self.place = self.folder / "place"
        self.place.mkdir()
        self.library = self.place / "试验.CJK"
        self.make_library("语文", "数学", "三科总分")
        self.change("update 总分公式 set 公式='语文+数学'")
        places = [(1 + k % CLASSES, 1 + k // CLASSES) for k in range(STUDENTS)]
        self.add_students(*((number, place, f"学生{number}之{place}", "理")
                            for number, place in places))
        self.exam_book = self.book("成绩.xlsx", (*HEADINGS, "语文", "数学"),
                                   *((number, place, f"学生{number}之{place}", 50 + place, 40 + number)
                                     for number, place in places))
        self.import_exam(self.exam_book, "期中")
        self.before = yunshan.file_hash(self.library)

    def writers(self):
        """Commands that write."""
        return {"score": ("score", self.library, "期中"),
                "import-students": ("import-students", self.library, self.folder / "名单.xlsx",
                                    "--accept-existing", "add", "--no-backup"),
                "import-exam": ("import-exam", self.library, self.exam_book, "--exam", "期末",
                                "--no-backup")}

    def assertKept(self):
        self.assertUntouched(self.before)
        self.assertEqual([path.name for path in self.place.iterdir()], [self.library.name])

    def assertWritersRefused(self, *sentences, **options):
        """Every writing command says one of these sentences, once, and changes nothing."""
        for name, command in self.writers().items():
            result = self.run_program(*command, expect=ERROR, **options)
            self.assertEqual(result.out, "", name)
            said = [line for line in result.err.splitlines()
                    if any(sentence in line for sentence in sentences)]
            self.assertEqual(len(said), 1, f"{name}: {result.err}")
            self.assertNotIn(yunshan.FINISHED, result.err, name)
            self.assertKept()

    def assertReadable(self, **options):
        result = self.run_program("browse", self.library, "--exam", "期中", **options)
        self.assertEqual(len(result.out.splitlines()), STUDENTS + 1)
        self.run_program("info", self.library, **options)
        self.assertKept()


class WithoutRights(BadPlace):
    """The program as a user who may not write; a copy of it, since that user may not reach its folder."""

    def setUp(self):
        super().setUp()
        self.options = {"cwd": self.folder}
        if os.getuid() == 0:
            self.options |= {"preexec_fn": self.become_nobody, "program": self.copied_program()}
        self.folder.chmod(0o755)
        self.addCleanup(self.place.chmod, 0o755)

    @staticmethod
    def become_nobody():
        os.setgroups([])
        os.setgid(NOBODY)
        os.setuid(NOBODY)

    def copied_program(self):
        original = Path(yunshan.PROGRAM)
        programs = self.folder / "program"
        programs.mkdir()
        shutil.copy2(original, programs)
        shutil.copy2(original.parent / "MFC.dll", programs)
        shutil.copytree(original.parent / "data", programs / "data")
        home = self.folder / "home"
        home.mkdir()
        os.chown(home, NOBODY, NOBODY)
        self.options["env"] = yunshan.environment(home)
        return str(programs / original.name)

    def test_a_library_that_may_not_be_written(self):
        self.library.chmod(0o444)
        self.place.chmod(0o777)
        self.assertReadable(**self.options)
        self.assertWritersRefused(READ_ONLY, **self.options)

    def test_a_folder_that_may_not_be_written(self):
        if os.getuid() == 0:
            os.chown(self.library, NOBODY, NOBODY)
        self.place.chmod(0o555)
        self.assertReadable(**self.options)
        self.assertWritersRefused(NO_PLACE, READ_ONLY, **self.options)

    def test_a_library_that_may_not_be_read(self):
        self.library.chmod(0o000)
        result = self.run_program("info", self.library, expect=ERROR, **self.options)
        self.assertEqual(result.out, "")
        self.assertIn(f"无法读取文件 {self.library}。", result.err)
        self.library.chmod(0o644)
        self.assertKept()

    def test_no_place_for_the_copy_before_an_import(self):
        if os.getuid() == 0:
            os.chown(self.library, NOBODY, NOBODY)
        self.place.chmod(0o555)
        result = self.run_program("import-exam", self.library, self.exam_book, "--exam", "期末",
                                  expect=ERROR, **self.options)
        self.assertEqual(result.out, "")
        self.assertNotIn(yunshan.FINISHED, result.err)
        self.assertKept()

    def test_a_new_library_where_none_may_be(self):
        self.place.chmod(0o555)
        for path in (self.place / "新.CJK", self.library):
            result = self.run_program("new", path, "--subjects", "语文", "--force", expect=ERROR,
                                      **self.options)
            self.assertEqual(result.out, "")
            self.assertIn(f"无法写入文件 {path}（", result.err)
            self.assertKept()


class LockedByAnother(BadPlace):
    """The other program is a process of its own: closing any handle of a file in this one would end
    the locks that it holds there."""

    HOLD = ("import sqlite3, sys; conn = sqlite3.connect(sys.argv[1], isolation_level=None);"
            "rows = [conn.execute(sql) for sql in sys.argv[2:]]; next(rows[-1], None);"
            "print(flush=True); sys.stdin.read()")

    def lock(self, *statements):
        """Holds the lock that the statements take; gives what ends it."""
        other = subprocess.Popen([sys.executable, "-c", self.HOLD, self.library, *statements],
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        other.stdout.readline()

        def release():
            if other.poll() is None:
                other.communicate()

        self.addCleanup(release)
        return release

    def test_by_one_that_keeps_everybody_out(self):
        self.lock("begin exclusive")
        result = self.run_program("info", self.library, expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertEqual(result.err.count(LOCKED), 1)
        for command in self.writers().values():
            self.assertIn(LOCKED, self.run_program(*command, expect=ERROR).err)
        self.assertEqual(yunshan.file_hash(self.library), self.before)

    def test_by_one_that_is_about_to_write(self):
        release = self.lock("begin immediate")
        self.assertReadable()
        self.assertWritersRefused(LOCKED)
        release()
        self.run_program("score", self.library, "期中")

    def test_by_one_that_is_reading(self):
        release = self.lock("begin", "select * from 成绩表")
        self.assertReadable()
        self.assertWritersRefused(LOCKED)
        release()
        self.run_program("score", self.library, "期中")


class NoRoom(BadPlace):
    """The limits grow from nothing to more than is needed: at each the run is whole or has not been."""

    def limited(self, room):
        """Options under which no file can grow beyond `room` bytes; the write fails, as on a full disk."""
        return {"preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (room, room)),
                "restore_signals": False}

    def outcomes(self, command, rooms):
        """The codes of runs on copies with growing room; each left its library before or after."""
        work = self.folder / "work"
        work.mkdir()
        copy = work / "试验.CJK"
        arguments = [copy if argument == self.library else argument for argument in command]
        shutil.copyfile(self.library, copy)
        self.run_program(*arguments)
        allowed = {ERROR: yunshan.content_hash(self.library), yunshan.DONE: yunshan.content_hash(copy)}
        codes = []
        for room in rooms:
            shutil.copyfile(self.library, copy)
            result = yunshan.run(*arguments, cwd=self.folder, **self.limited(room))
            self.assertIn(result.code, allowed, f"{room}: {result.err}")
            self.assertEqual(yunshan.content_hash(copy), allowed[result.code],
                             f"{command[0]} with room for {room}: {result.err}")
            if result.code == ERROR:
                self.assertTrue(WRITE_FAILED in result.err or DISK_FULL in result.err, result.err)
                # With the question about those who are there already.
                self.assertLessEqual(len(result.err.splitlines()), 6, result.err)
            self.assertEqual([path.name for path in work.iterdir()], [copy.name])
            codes.append(result.code)
        return codes

    def test_no_file_may_grow(self):
        size = self.library.stat().st_size
        rooms = sorted({0, 1000, 4096, *range(size // 8, 3 * size, size // 4)})
        for name, command in self.writers().items():
            with self.subTest(name):
                codes = self.outcomes(command, rooms)
                shutil.rmtree(self.folder / "work")
                self.assertEqual(codes[0], ERROR)
                self.assertEqual(codes[-1], yunshan.DONE)

    def test_a_full_disk(self):
        disk = self.folder / "disk"
        disk.mkdir()
        size = self.library.stat().st_size
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size + 16384}", "none", disk],
                                 stderr=subprocess.DEVNULL, check=False)
        if mounted.returncode != 0:
            return  # only root may; the limit on files stands for it elsewhere
        self.addCleanup(subprocess.run, ["umount", disk], check=True)
        self.library = Path(shutil.copy(self.library, disk))
        self.place = disk
        self.assertReadable()
        self.assertWritersRefused(DISK_FULL, WRITE_FAILED)


if __name__ == "__main__":
    yunshan.main()
