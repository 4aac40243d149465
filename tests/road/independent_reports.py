#!/usr/bin/python3
"""All reports on the demonstration school, computed once more from the library's rows by other means
and compared with what the program prints: every cell, the merges, the widths, the fixed rows.

independent_reports.py PROGRAM
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from expected_reports import (FIXED_AS_IT_STANDS, MANY, ONE_EXAM, STREAMS, Reports, School,
                              merged_columns)
from independent_check import EXAMS, FORMULAS, SHEETS, SUBJECTS
from yunshan import DEMO

LAST = EXAMS[1]


def runs(texts):
    """First and last place of each run of equal texts."""
    places = [place for place in range(1, len(texts)) if texts[place] != texts[place - 1]]
    return zip([0, *places], [*(place - 1 for place in places), len(texts) - 1])


def merge(merges, block):
    """Merges a block; what it touches becomes part of it."""
    while touched := next((m for m in merges if m[0] <= block[2] and block[0] <= m[2]
                           and m[1] <= block[3] and block[1] <= m[3]), None):
        merges.remove(touched)
        block = [min(touched[0], block[0]), min(touched[1], block[1]),
                 max(touched[2], block[2]), max(touched[3], block[3])]
    if block[:2] != block[2:]:
        merges.append(block)


# The reports of the sheets of the comprehensive analysis, in their order.
SHEET_REPORTS = {
    "考试分析": ("考试人数", "高分段、低分段", "各科优秀率", "各科良好率", "各科差生率", "各科平均分",
             "各科最高分", "各科最低分", "各科标准差", "各分数段人数", "各名次段人数", "总分上线人数",
             "各名次段均分"),
    "对比分析": ("历次各名次段人数对比", "历次考试进入年级前x名人数", "历次总分上线人数")}


class Sheets:
    """The report sheets of the comprehensive analysis, filled in its order of events: each stream's
    pass runs every report on all streams, and a stream's blocks go to the sheet that it had last."""

    def __init__(self, school, exam):
        self.filled = {stream: {name: ({}, [], []) for name in SHEET_REPORTS} for stream in STREAMS}
        exams = {"考试分析": [exam], "对比分析": list(EXAMS)}
        grids = {(name, item): (ONE_EXAM | MANY)[item](Reports(school, exams[name]), item)[0]
                 for name, items in SHEET_REPORTS.items() for item in items}
        current, row = {}, {}
        for stream in STREAMS:
            for name, items in SHEET_REPORTS.items():
                current[stream], row[stream] = self.filled[stream][name], 1
                for item in items:
                    gap = 4 if item in FIXED_AS_IT_STANDS else 2
                    for block in grids[name, item].blocks:
                        if block[0] in current:
                            self.copy(grids[name, item], block, current, row)
                            self.merge(grids[name, item], merged_columns(item, exams[name]), block,
                                       current, row)
                            row[block[0]] += block[2] - block[1] + gap

    @staticmethod
    def copy(grid, block, current, row):
        stream, first, last, cols = block
        cells, borders, _ = current[stream]
        top = row[stream]
        borders.append([top, 1, top + last - first, cols])
        cells.update({f"{top + number - first},{col + 1}": text
                      for number in range(first, last + 1)
                      for col, text in grid.rows[number].items() if text})

    @staticmethod
    def merge(grid, columns, block, current, row):
        stream, first, last, cols = block
        merges, top = current[stream][2], row[stream]
        lines = [[line.get(col, "") for col in range(cols)] for line in grid.rows[first:last + 1]]
        for col in columns:
            for start, end in runs([line[col] for line in lines]):
                merge(merges, [top + start, col + 1, top + end, col + 1])
        for number, line in enumerate(lines):
            if first + number in grid.merged_rows:
                for start, end in runs(line):
                    merge(merges, [top + number, start + 1, top + number, end + 1])


class IndependentReports(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library(*SUBJECTS, *FORMULAS)
        self.run_program("import-students", self.library, DEMO / "学生名单.xlsx", "--no-backup")
        for exam in EXAMS:
            for sheet in SHEETS.values():
                self.import_exam(DEMO / f"{exam}.xlsx", exam, "--sheet", sheet, "--score")
        self.change("insert into 教师表(考试名称, 班级, 语文, 物理) values(?, 1, '王老师', '李老师')",
                    LAST)

    def compare(self, item, routine, exams, *options, categories=None):
        found = self.run_program("report", self.library, "--item", item, "--exam",
                                 ",".join(exams), "--format", "json", *options).json()
        grid, widths = routine(Reports(School(self.library, categories), exams), item)
        self.assertEqual(found["TextMatrix"], grid.matrix(), item)
        self.assertEqual(found["MergeRow"], sorted(grid.merged_rows), item)
        self.assertEqual(found["MergeCol"], merged_columns(item, exams), item)
        self.assertEqual(found["ColWidth"], widths, item)
        self.assertEqual(found["FixedRows"], 1 if item in FIXED_AS_IT_STANDS else 0, item)
        self.assertEqual(found["Messages"], [], item)
        return len(grid.rows) * grid.cols

    def test_reports_on_one_exam(self):
        cells = sum(self.compare(item, routine, [LAST])
                    for item, routine in (ONE_EXAM | MANY).items())
        print(f"{cells} cells agree", file=sys.stderr)

    def test_reports_on_several_exams(self):
        cells = sum(self.compare(item, routine, list(EXAMS)) for item, routine in MANY.items())
        print(f"{cells} cells agree", file=sys.stderr)

    def test_reports_on_one_category(self):
        (category,), *_ = self.rows("select 类别代码 from 成绩表 group by 1 order by count(*)")
        for item, routine in (ONE_EXAM | MANY).items():
            self.compare(item, routine, [LAST], "--categories", f"{category:g}",
                         categories=[category])

    def test_report_sheets_of_the_comprehensive_analysis(self):
        books = self.run_program("analyze", self.library, "--exam", LAST, "--format",
                                 "json").json()["books"]
        sheets = Sheets(School(self.library), LAST)
        for stream in STREAMS:
            for name, (cells, borders, merges) in sheets.filled[stream].items():
                found = books[stream]["content"][name]
                self.assertEqual(found["cells"], cells, (stream, name))
                self.assertEqual(found["borders"], borders, (stream, name))
                self.assertEqual(found["merges"], sorted(merges), (stream, name))

    def test_student_sheets_of_the_comprehensive_analysis(self):
        books = self.run_program("analyze", self.library, "--exam", LAST, "--format",
                                 "json").json()["books"]
        school = School(self.library)
        for stream in STREAMS:
            items = list(school.items([LAST], stream))
            names_first = ["班级", "学号", "姓名"]
            columns = {
                "原始分和名次": names_first + items + [item + "年名" for item in items],
                "T分": (names_first + [item + "T分" for item in items]
                       + [total + "T分年名" for total in FORMULAS])}
            rows = sorted(school.rows(LAST, stream), key=lambda row: (row["班级"], row["学号"]))
            for family, shown in columns.items():
                found = books[stream]["content"][f"{LAST}{family}({stream})"]["cells"]
                for number, row in enumerate([dict(zip(shown, shown)), *rows], 1):
                    for place, column in enumerate(shown, 1):
                        self.assertTrue(
                            self.shows(found.get(f"{number},{place}", ""), row[column], family),
                            (stream, family, number, column))
                self.assertEqual(max(int(place.split(",")[0]) for place in found),
                                 len(rows) + 1)

    @staticmethod
    def shows(text, value, family):
        """Whether a cell's text is what a field shows: a 32-bit float at 7 digits."""
        if value is None or isinstance(value, str):
            return text == (value or "")
        if value == -1 and family == "原始分和名次":
            return text == "缺考"
        return text != "" and abs(float(text) - value) <= 5e-7 * max(1.0, abs(value))

    def test_last_ranks_and_open_bands(self):
        for name, value in (("各名次段均分", "20,-20"), ("高分段", "(0.6,0.85)"),
                            ("各分数段人数", "单科7,总分33.5"), ("各名次段人数", "文=5,-5||理=0,1000")):
            self.change("update 设置表 set 设置=? where 名称=?", value, name)
        for item in ("各名次段均分", "高分段、低分段", "各分数段人数", "各名次段人数"):
            self.compare(item, (ONE_EXAM | MANY)[item], [LAST])


if __name__ == "__main__":
    yunshan.main()
