#!/usr/bin/python3
"""Three exams of the demonstration school through the program, and everything that the library then
holds computed once more from the workbooks, by other means.

independent_check.py PROGRAM

Ranks, scores and totals must agree exactly, Z and T to 1e-9.
"""

import math
import sys
from fractions import Fraction
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import openpyxl
import yunshan
from yunshan import DEMO, single

SUBJECTS = ("语文", "数学", "英语", "物理", "化学", "生物", "政治", "历史", "地理")
FORMULAS = {"文科总分": ("语文", "数学", "英语", "政治", "历史", "地理"),
            "理科总分": ("语文", "数学", "英语", "物理", "化学", "生物"),
            "总分": SUBJECTS}
FULL = {subject: 150 if subject in ("语文", "数学", "英语") else 100 for subject in SUBJECTS}
EXAMS = ("高一期中", "高一期末", "高二月考")
SHEETS = {"文": "文科", "理": "理科"}


def sheet_rows(book, sheet):
    """The rows of a sheet as dictionaries by heading, up to the first row without a number."""
    rows = openpyxl.load_workbook(book, data_only=True)[sheet].iter_rows(values_only=True)
    headings = next(rows)
    found = []
    for row in rows:
        if row[1] is None:
            break
        found.append(dict(zip(headings, row)))
    return found


def read_score(cell):
    """A score as it is stored."""
    if cell == "缺考":
        return -1.0
    return single(cell) if isinstance(cell, (int, float)) else 0.0


def half_even(value, digits=0):
    """Rounded half to even, as the decimal fraction that the number stands for."""
    return float(round(Fraction(repr(value)), digits))


class Sheet:
    """One stream of one exam: rows with scores, and what follows from them."""

    def __init__(self, rows, stream):
        self.subjects = [name for name in rows[0] if name in SUBJECTS]
        self.rows = [{"班级": row["班级"], "学号": row["学号"], "姓名": row["姓名"], "科类": stream}
                     | {subject: read_score(row[subject]) for subject in self.subjects}
                     for row in rows]
        self.marks = {subject: FULL[subject] for subject in self.subjects}

    def standardise(self):
        for subject in self.subjects:
            sat = [Fraction(row[subject]) for row in self.rows if row[subject] >= 0]
            mean = sum(sat) / len(sat)
            if mean <= 0:
                continue
            deviation = math.sqrt(sum((x - mean) ** 2 for x in sat) / (len(sat) - 1))
            for row in self.rows:
                exact = float(Fraction(max(row[subject], 0.0)) - mean) / deviation
                z = half_even(exact, 2)
                row[subject + "Z分"] = z
                row[subject + "T分"] = half_even(10 * z + 50)

    def total(self):
        """Totals; their Z and T go on adding from one total to the next."""
        for row in self.rows:
            z_sum = t_sum = 0.0
            for total, terms in FORMULAS.items():
                row[total], count = 0.0, 0
                for term in terms:
                    if row.get(term, -1.0) >= 0:
                        row[total] = single(row[total] + row[term])
                        count += 1
                    weight = self.marks.get(term, 0) / 100
                    z_sum += row.get(term + "Z分", 0.0) * weight
                    t_sum += row.get(term + "T分", 0.0) * weight
                row[total + "Z分"], row[total + "T分"] = z_sum, t_sum
                row[total] = row[total] if count else -1.0

    def rank(self):
        for column in self.subjects + list(FORMULAS):
            set_ranks(self.rows, column, column + "年名")
            for number in {row["班级"] for row in self.rows}:
                set_ranks([row for row in self.rows if row["班级"] == number], column,
                          column + "班名")
        for total in FORMULAS:
            values = [row[total + "T分"] for row in self.rows]
            for row in self.rows:
                row[total + "T分年名"] = 1 + sum(value > row[total + "T分"] for value in values)


def set_ranks(rows, column, target):
    values = [row[column] for row in rows]
    for row in rows:
        row[target] = (int(row[column]) if row[column] < 0
                       else 1 + sum(value > row[column] for value in values))


def agrees(column, expected, found):
    if expected is None or found is None:
        return expected is None and found is None
    if column.endswith(("Z分", "T分")):
        return abs(found - expected) <= 1e-9
    return found == expected


class IndependentCheck(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library(*SUBJECTS, *FORMULAS)
        self.run_program("import-students", self.library, DEMO / "学生名单.xlsx", "--no-backup")

    def take_exams(self):
        for exam in EXAMS:
            for sheet in SHEETS.values():
                self.import_exam(DEMO / f"{exam}.xlsx", exam, "--sheet", sheet)
        self.run_program("score", self.library, *EXAMS)

    def compare(self, exam, stream):
        sheet = Sheet(sheet_rows(DEMO / f"{exam}.xlsx", SHEETS[stream]), stream)
        sheet.standardise()
        sheet.total()
        sheet.rank()
        found = yunshan.records(self.library, "select * from 成绩表 where 考试名称=? and 科类=?"
                                              " order by rowid", exam, stream)
        self.assertEqual(len(found), len(sheet.rows))
        for expected, row in zip(sheet.rows, found):
            place = (exam, row["班级"], row["学号"])
            for column in row.keys() - {"id", "类别代码", "考试名称", "考试编号"}:
                self.assertTrue(agrees(column, expected.get(column), row[column]),
                                f"{place} {column}: {expected.get(column)} {row[column]}")
        return len(found)

    def test_every_derived_value_is_what_the_workbooks_say(self):
        self.take_exams()
        rows = sum(self.compare(exam, stream) for exam in EXAMS for stream in SHEETS)
        self.assertEqual(self.rows("select count(*) from 成绩表"), [(rows,)])
        print(f"{rows} rows agree", file=sys.stderr)

    def test_the_students_are_those_of_the_list(self):
        listed = [(row["班级"], row["学号"], row["姓名"], row["科类"], row["性别"],
                   str(row["出生时间"].date()), row["类别代码"], row["类别"])
                  for row in sheet_rows(DEMO / "学生名单.xlsx", "学生信息")]
        self.assertEqual(self.rows("select 班级, 学号, 姓名, 科类, 性别, 出生时间, 类别代码, 类别"
                                   " from 信息表 order by ID"), listed)

    def test_every_row_knows_its_student_its_class_and_its_exam(self):
        self.take_exams()
        self.assertEqual(self.rows("select count(*) from 成绩表 s left join 信息表 x on x.ID=s.id"
                                   " where x.ID is null or x.班级<>s.班级 or x.学号<>s.学号"
                                   " or x.姓名<>s.姓名 or x.科类<>s.科类"), [(0,)])
        first_of_class = dict(self.rows("select 班级, 类别代码 from 信息表 where ID in"
                                        " (select min(ID) from 信息表 group by 班级)"))
        for number, category in self.rows("select distinct 班级, 类别代码 from 成绩表"):
            self.assertEqual(category, first_of_class[number])
        self.assertEqual(self.rows("select distinct 考试名称, 考试编号 from 成绩表 order by 2"),
                         [(exam, number) for number, exam in enumerate(EXAMS, 1)])

    def test_the_second_stream_typed_by_hand_is_a_second_row_of_the_exam(self):
        self.take_exams()
        rows = self.rows("select 考试名称, 科类, 考试编号, 物理, 政治, 文科总分, 总分 from 考试名称表"
                         " order by rowid")
        expected = [(exam, stream, number, 100 if stream == "理" else None,
                     100 if stream == "文" else None, "+".join(FORMULAS["文科总分"]),
                     "+".join(FORMULAS["总分"]))
                    for number, exam in enumerate(EXAMS, 1) for stream in SHEETS]
        self.assertEqual(rows, expected)

    def test_scoring_with_the_import_gives_the_same(self):
        self.take_exams()
        apart = self.rows("select * from 成绩表 order by rowid")
        self.run_program("new", self.library, "--force", "--subjects",
                         ",".join(SUBJECTS + tuple(FORMULAS)))
        self.run_program("import-students", self.library, DEMO / "学生名单.xlsx", "--no-backup")
        for exam in EXAMS:
            for sheet in SHEETS.values():
                self.import_exam(DEMO / f"{exam}.xlsx", exam, "--sheet", sheet, "--score")
        self.assertEqual(self.rows("select * from 成绩表 order by rowid"), apart)

    def test_students_without_a_row_are_ranked_nowhere(self):
        rows = [tuple(row.values()) for row in sheet_rows(DEMO / "高一期中.xlsx", "文科")]
        headings = tuple(sheet_rows(DEMO / "高一期中.xlsx", "文科")[0])
        book = self.book("少.xlsx", headings, *rows[5:])
        self.import_exam(book, "少", "--score")
        self.assertEqual(self.rows("select count(*), max(文科总分年名) <= count(*) from 成绩表"),
                         [(len(rows) - 5, 1)])
        self.assertEqual(self.rows("select count(*) from 信息表 where ID not in"
                                   " (select id from 成绩表) and 科类='文'"), [(5,)])


if __name__ == "__main__":
    yunshan.main()
