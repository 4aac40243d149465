"""Workbooks of all makes through `yunshan-cli tidy`: each comes out right, or is told to be undecided.

docs/tidy.md lists them; the list is held to what comes out here.
"""

import re
import shutil
import sys
from pathlib import Path

import openpyxl

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
sys.path.insert(0, str(Path(__file__).resolve().parent))
import yunshan
from yunshan import DONE, ERROR, HEADINGS

import bodies  # noqa: F401 (the modules list their kinds)
import files  # noqa: F401
import headings  # noqa: F401
import people  # noqa: F401
from case import KINDS, MARKS, NAMESAKES, REGISTER

DOCS = yunshan.ROOT / "docs" / "tidy.md"
RIGHT, ASKED, UNDECIDED, REFUSED = "right", "asked, then right", "undecided", "refused"
LISTED = "right, rows listed"
LEFT_OUT = "没有写入的行"


def outcome(case):
    if case.refused:
        return REFUSED
    if not case.asks:
        return LISTED if case.left_out else RIGHT
    return ASKED if case.answers else UNDECIDED


def number(cell):
    """Numbers as floats, so that 1 and 1.0 are equal, and nothing as an empty text."""
    if isinstance(cell, (int, float)) and not isinstance(cell, bool):
        return float(cell)
    return "" if cell is None else cell


def sheets_of(path):
    return {sheet.title: [[number(cell) for cell in row] for row in sheet.iter_rows(values_only=True)]
            for sheet in openpyxl.load_workbook(path)}


def permissions(rows):
    """What an import of these rows has to be allowed: students and texts that it does not know."""
    options = []
    if any(tuple(row[:2]) not in REGISTER for row in rows):
        options.append("--add-students")
    if any(isinstance(cell, str) and cell not in ("缺考", "作弊") for row in rows for cell in row[3:]):
        options.append("--accept-texts")
    return options


class Kinds(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文", "数学", "英语", "物理", "化学", "总分")
        rows = [(*row[:3], "文", REGISTER[row[:2]]) for row in MARKS]
        rows += [(*row, "文", None) for row in NAMESAKES]
        book = self.book("库.xlsx", (*HEADINGS, "科类", "学籍号"), *rows)
        self.run_program("import-students", self.library, book, "--no-backup")
        self.out = self.folder / "整理.xlsx"

    def tidy(self, case, *answers, expect=DONE):
        options = ["--library", self.library] if case.with_library else []
        self.out.unlink(missing_ok=True)
        result = self.run_program("tidy", case.book, "--as", case.goal, *options, *answers, "--out",
                                  self.out, "--format", "json", expect=expect)
        self.assertEqual(self.out.exists(), expect == DONE)
        return result

    def check_made(self, case):
        sheets = sheets_of(self.out)
        expected = ["成绩" if case.goal == "exam" else "学生名单"] + [LEFT_OUT] * bool(case.left_out)
        self.assertEqual(list(sheets), expected)
        self.assertEqual(sheets[expected[0]], [[number(cell) for cell in row] for row in case.rows])
        reasons = [row[2] for row in sheets.get(LEFT_OUT, ())[1:]]
        self.assertEqual(len(reasons), len(case.left_out))
        for reason, piece in zip(reasons, case.left_out):
            self.assertIn(piece, reason)
        self.imported(case)

    def imported(self, case):
        """The import takes every row of what was made."""
        library = self.folder / f"{case.book.stem}.CJK"
        shutil.copy(self.library, library)
        if case.goal == "exam":
            self.run_program("import-exam", library, self.out, "--exam", "试", "--no-backup",
                             "--stream", "文", *permissions(case.rows[1:]))
            taken = yunshan.query(library, "select count(*) from 成绩表")
            self.assertEqual(taken, [(len(case.rows) - 1,)])
        else:
            self.run_program("import-students", library, self.out, "--no-backup",
                             "--accept-existing", "add")
            taken = yunshan.query(library, "select count(*) from 信息表")
            self.assertEqual(taken, [(len(MARKS) + len(NAMESAKES) + len(case.rows) - 1,)])

    def check(self, case):
        before = case.book.read_bytes()
        if case.refused:
            self.out.unlink(missing_ok=True)
            result = self.run_program("tidy", case.book, "--out", self.out, expect=ERROR)
            self.assertIn(case.refused, result.err)
            return
        result = self.tidy(case, expect=ERROR if case.asks else DONE)
        for piece in case.says:
            self.assertIn(piece, result.out + result.err)
        questions = "".join(result.json()["questions"])
        for piece in case.asks:
            self.assertIn(piece, questions)
        if case.answers:
            self.tidy(case, *case.answers)
        if case.rows and (case.answers or not case.asks):
            self.check_made(case)
        self.assertEqual(case.book.read_bytes(), before, "the workbook itself was changed")

    def test_every_kind_comes_out_right_or_undecided(self):
        self.assertGreaterEqual(len(KINDS), 30)
        for number_, kind in enumerate(KINDS):
            with self.subTest(kind.make.__name__):
                folder = self.folder / str(number_)
                folder.mkdir()
                self.check(kind.make(folder))

    def test_the_list_of_kinds_in_the_docs_is_true(self):
        told = re.findall(r"^\| (?!Kind|-)(.+?) \| (.+?) \|$", DOCS.read_text(encoding="utf-8"), re.M)
        self.assertEqual(told, [(kind.told, outcome(kind.make(self.folder))) for kind in KINDS])


if __name__ == "__main__":
    yunshan.main()
