"""What tests of yunshan-cli from outside share: running the program, making workbooks for it, and
reading libraries back with Python's own sqlite3.

A test file ends with `yunshan.main()` and is called with the path of the program.
"""

import hashlib
import json
import os
import sqlite3
import struct
import subprocess
import sys
import tempfile
import unittest
from dataclasses import dataclass
from pathlib import Path

import openpyxl

ROOT = Path(__file__).resolve().parents[2]
DEMO = ROOT / "demo"
PROGRAM = None

HEADINGS = ("班级", "学号", "姓名")
DONE, ERROR, USAGE = 0, 1, 2
FINISHED = "导入完成！\n"
HOT_JOURNAL = bytes.fromhex("d9d505f920a163d7")


@dataclass
class Result:
    code: int
    out: str
    err: str

    def json(self):
        return json.loads(self.out)


def environment(home):
    """The environment of a run: one locale, and a home of its own."""
    kept = {name: value for name, value in os.environ.items()
            if not name.startswith(("LC_", "LANG", "XDG_"))}
    return kept | {"LC_ALL": "C.UTF-8", "HOME": str(home), "XDG_DATA_HOME": str(home)}


def run(*arguments, cwd, env=None, timeout=120, **options):
    """Runs the program with these arguments in folder `cwd`, on no terminal."""
    done = subprocess.run([options.pop("program", PROGRAM), *map(str, arguments)], cwd=cwd,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          env=env or environment(cwd), timeout=timeout, check=False, **options)
    return Result(done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8"))


def write_book(path, sheets):
    """An .xlsx of {sheet name: rows}; a sheet's rows begin with its headings."""
    book = openpyxl.Workbook()
    book.remove(book.active)
    for title, rows in sheets.items():
        sheet = book.create_sheet(title)
        for row in rows:
            sheet.append(row)
    book.save(path)
    return path


def single(number):
    """The nearest 32-bit float."""
    return struct.unpack("f", struct.pack("f", number))[0]


def query(library, sql, *values):
    """Rows of a statement as tuples. The file is not written."""
    conn = sqlite3.connect(f"file:{library}?mode=ro", uri=True)
    try:
        return conn.execute(sql, values).fetchall()
    finally:
        conn.close()


def records(library, sql, *values):
    """Rows of a statement as dictionaries."""
    conn = sqlite3.connect(f"file:{library}?mode=ro", uri=True)
    try:
        found = conn.execute(sql, values)
        names = [column[0] for column in found.description]
        return [dict(zip(names, row)) for row in found]
    finally:
        conn.close()


def content_hash(library):
    """A hash over all rows of all tables and over the schema, so that equal means equal content."""
    conn = sqlite3.connect(library)
    try:
        digest = hashlib.sha256()
        tables = conn.execute("select name, sql from sqlite_master order by type, name").fetchall()
        digest.update(repr(tables).encode())
        for (table,) in conn.execute(
                "select name from sqlite_master where type='table' order by name").fetchall():
            digest.update(table.encode())
            for row in conn.execute(f"select rowid, * from [{table}] order by rowid"):
                digest.update(repr(row).encode())
        return digest.hexdigest()
    finally:
        conn.close()


def is_hot(journal):
    """Whether the journal is complete, so that the library may be half written."""
    try:
        with open(journal, "rb") as file:
            return file.read(8) == HOT_JOURNAL
    except FileNotFoundError:
        return False


def file_hash(path):
    return hashlib.sha256(Path(path).read_bytes()).hexdigest()


class ProgramTest(unittest.TestCase):
    """A test with a temporary folder of its own, in which the program runs."""

    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="yunshan-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.library = self.folder / "试验.CJK"

    def run_program(self, *arguments, expect=DONE, **options):
        options.setdefault("cwd", self.folder)
        result = run(*arguments, **options)
        self.assertEqual(result.code, expect,
                         f"{arguments}\nstdout: {result.out}\nstderr: {result.err}")
        return result

    def make_library(self, *subjects):
        self.run_program("new", self.library, "--subjects", ",".join(subjects))
        return self.library

    def add_students(self, *students):
        """Students as (class, number, name, stream), by an import of a list."""
        book = self.book("名单.xlsx", (*HEADINGS, "科类"), *students)
        self.run_program("import-students", self.library, book, "--no-backup")

    def book(self, name, *rows):
        return write_book(self.folder / name, {"Sheet": rows})

    def make_scored_exams(self, best):
        """Two scored exams of classes 1 (文), 2 and 3 (理); class 3 is of category 2. `best` is what
        甲 has in 语文."""
        self.make_library("语文", "数学", "总分")
        self.change("update 总分公式 set 公式='语文+数学' where 总分='总分'")
        book = self.book("名单.xlsx", (*HEADINGS, "科类", "类别代码"),
                         (1, 1, "甲", "文", 1), (1, 2, "乙", "文", 1), (2, 1, "丙", "理", 1),
                         (2, 2, "丁", "理", 1), (3, 1, "戊", "理", 2))
        self.run_program("import-students", self.library, book, "--no-backup")
        liberal = self.book("文.xlsx", (*HEADINGS, "语文", "数学"), (1, 1, "甲", best, 80),
                            (1, 2, "乙", "缺考", 60.5))
        science = self.book("理.xlsx", (*HEADINGS, "语文"), (2, 1, "丙", 70), (2, 2, "丁", 75),
                            (3, 1, "戊", 80))
        for exam in ("期中", "期末"):
            self.import_exam(liberal, exam)
            self.import_exam(science, exam)
        self.run_program("score", self.library, "期中", "期末")

    def import_exam(self, book, exam, *options, expect=DONE):
        return self.run_program("import-exam", self.library, book, "--exam", exam, "--no-backup",
                                *options, expect=expect)

    def change(self, sql, *values):
        """Changes the library behind the program's back."""
        conn = sqlite3.connect(self.library)
        conn.execute(sql, values)
        conn.commit()
        conn.close()

    def rows(self, sql, *values):
        return query(self.library, sql, *values)

    def assertUntouched(self, before, path=None):
        path = path or self.library
        self.assertEqual(file_hash(path), before, "the library is not byte for byte as it was")
        self.assertFalse(Path(f"{path}-journal").exists(), "a journal stands beside the library")


def main():
    global PROGRAM
    PROGRAM = str(Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
