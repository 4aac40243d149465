"""Names that look like something else: to a statement, a sheet, a file or a terminal."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import openpyxl
import yunshan
from yunshan import DONE, ERROR, FINISHED, HEADINGS, USAGE

STUDENTS = ["王' --", "' or ''='", "甲/*", "a]b", "100%", "上\n下", "\u202e倒", "=1+1", "+2", "-3",
            "@x", "甲;drop table 成绩表", "x" * 50, "Abc", "abc"]
EXAMS = ["2024--2025期中", "期中/*", "[期]末", "a]b", "100%", "=1+1", "\u202e倒", "a?b:c*\\d<e>|f",
         "考" * 50, "%1%2"]
APOSTROPHES = ["' or ''='", "王' --", "O'Neil"]


class Names(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文", "总分")
        self.change("update 总分公式 set 公式='语文' where 总分='总分'")

    def book(self, name, *rows):
        """A name that begins with = is a text here, no formula."""
        book = openpyxl.Workbook()
        for row in rows:
            book.active.append(row)
        for cell in (cell for row in book.active for cell in row):
            if isinstance(cell.value, str):
                cell.data_type = "s"
        book.save(self.folder / name)
        return self.folder / name

    def take(self, exam, *rows, expect=DONE, options=("--add-students",)):
        book = self.book("成绩.xlsx", (*HEADINGS, "语文"), *rows)
        return self.import_exam(book, exam, *options, expect=expect)

    def add(self, names):
        self.add_students(*((1, number, name, "理") for number, name in enumerate(names, 1)))


class Students(Names):
    def test_each_keeps_his_own_name_scores_and_ranks_everywhere(self):
        self.add(STUDENTS)
        rows = [(1, number, name, 100 - number) for number, name in enumerate(STUDENTS, 1)]
        self.take("期中", *rows)
        self.run_program("score", self.library, "期中")
        kept = self.rows("select 姓名, 语文, 语文年名 from 成绩表 order by 学号")
        self.assertEqual(kept, [(name, 100 - n, n) for n, name in enumerate(STUDENTS, 1)])
        shown = self.run_program("browse", self.library, "--exam", "期中", "--format", "json")
        self.assertEqual([row[2] for row in shown.json()["TextMatrix"][1:]], STUDENTS)
        self.assertEqual(shown.err, "")
        for path in self.run_program("analyze", self.library, "--exam", "期中", "--out",
                                     "出").out.splitlines():
            sheet = openpyxl.load_workbook(path).worksheets[0]
            cells = [sheet.cell(row, 3) for row in range(2, sheet.max_row + 1)]
            self.assertEqual([cell.value for cell in cells], STUDENTS)
            self.assertEqual({cell.data_type for cell in cells}, {"s"})

    def test_a_name_on_the_sheet_is_no_statement_that_renames_others(self):
        self.add(["王芳", "陈静"])
        for name in APOSTROPHES:
            with self.subTest(name):
                result = self.take("期中", (1, 1, name, 90), expect=ERROR,
                                   options=("--on-mismatch", "replace", "--accept-duplicate"))
                self.assertIn(" - Sub SetStuName/Mdl_MDB", result.err)
                self.assertEqual(self.rows("select 姓名 from 信息表 order by 学号"),
                                 [("王芳",), ("陈静",)])

    def test_a_name_too_long_for_its_column_costs_a_message_and_nobody_else(self):
        self.add(["王芳"])
        for length in (51, 10_000):
            self.take(f"考{length}", (1, 1, "王芳", 90), (1, 2 + length, "长" * length, 80),
                      expect=ERROR)
            self.assertEqual(self.rows("select 语文 from 成绩表 where 考试名称=? and 学号=1",
                                       f"考{length}"), [(90,)])

    def test_a_terminal_gets_no_control_characters(self):
        self.add(["a\u202eb", "上\n下"])
        self.take("期中", (1, 1, "a\u202eb", 90), (1, 2, "上\n下", 80))
        shown = self.run_program("browse", self.library, "--exam", "期中").out
        self.assertIn("\ta�b\t", shown)
        self.assertIn("\t上⏎下\t", shown)
        self.assertEqual(len(shown.splitlines()), 3)


class Exams(Names):
    def setUp(self):
        super().setUp()
        self.add(["王芳", "陈静"])
        self.take("高一", (1, 1, "王芳", 55), (1, 2, "陈静", 66))
        self.run_program("score", self.library, "高一")
        self.others = self.rows("select * from 成绩表")

    def test_each_goes_the_whole_road_by_its_own_name(self):
        for exam in EXAMS:
            with self.subTest(exam):
                self.take(exam, (1, 1, "王芳", 90), (1, 2, "陈静", 80))
                self.run_program("score", self.library, exam)
                self.assertEqual(
                    self.rows("select 语文, 总分, 语文年名 from 成绩表 where 考试名称=?", exam),
                    [(90, 90, 1), (80, 80, 2)])
                shown = self.run_program("browse", self.library, "--exam", exam, "--format",
                                         "json").json()
                self.assertEqual([row[3] for row in shown["TextMatrix"][1:]], [exam, exam])
                report = self.run_program("report", self.library, "--item", "考试人数", "--exam",
                                          exam, "--format", "json").json()
                self.assertEqual(report["TextMatrix"][2][1], "2/0/2")
                out = self.folder / "出"
                result = yunshan.run("analyze", self.library, "--exam", exam, "--out", out,
                                     "--force", cwd=self.folder)
                paths = result.out.splitlines()
                self.assertEqual(len(paths), 1, result.err)
                self.assertEqual(openpyxl.load_workbook(paths[0]).worksheets[0]["C2"].value, "王芳")
                self.assertEqual([path.parent for path in map(Path, paths)], [out])
        self.assertEqual(self.rows("select * from 成绩表 where 考试名称='高一'"), self.others)

    def test_with_an_apostrophe_it_is_told_and_no_other_exam_is_touched(self):
        for exam in APOSTROPHES:
            with self.subTest(exam):
                self.take(exam, (1, 1, "王芳", 90), options=("--score",), expect=ERROR)
                self.run_program("score", self.library, exam, expect=ERROR)
                self.run_program("browse", self.library, "--exam", exam, expect=ERROR)
                self.assertEqual(self.rows("select 总分 from 成绩表 where 考试名称=?", exam), [(None,)])
        self.assertEqual(self.rows("select * from 成绩表 where 考试名称='高一'"), self.others)

    def test_that_no_list_could_tell_apart_are_refused_before_anything_is_written(self):
        before = yunshan.file_hash(self.library)
        for exam in ("a\x1b[2J", "上\n下", "考" * 51, "考" * 10_000):
            with self.subTest(exam[:20]):
                result = self.take(exam, (1, 1, "王芳", 90), expect=ERROR)
                self.assertNotIn(FINISHED, result.err)
                self.assertNotIn("\x1b", result.err)
                self.assertUntouched(before)
        self.take("Ab", (1, 1, "王芳", 90))
        before = yunshan.file_hash(self.library)
        self.take("aB", (1, 1, "王芳", 90), expect=ERROR)
        self.assertUntouched(before)

    def test_an_unknown_one_is_wrong_usage_whatever_it_looks_like(self):
        for exam in (*EXAMS, *APOSTROPHES):
            for command in ("score", "analyze"):
                options = (exam,) if command == "score" else ("--exam", exam, "--out", "出")
                self.run_program(command, self.library, *options, expect=USAGE)


class Sequences(Names):
    def test_imported_twice_and_taken_back_by_hand(self):
        self.add(["王芳", "陈静"])
        rows = ((1, 1, "王芳", 90), (1, 2, "陈静", 80))
        book = self.book("成绩.xlsx", (*HEADINGS, "语文"), *rows)
        self.run_program("import-exam", self.library, book, "--exam", "期中")
        once = yunshan.content_hash(self.library)
        again = self.run_program("import-exam", self.library, book, "--exam", "期中", expect=ERROR)
        self.assertIn("再次导入会使 2 人的成绩重复", again.err)
        self.assertEqual(yunshan.content_hash(self.library), once)
        self.run_program("import-exam", self.library, book, "--exam", "期中", "--accept-duplicate")
        self.assertEqual(self.rows("select count(*) from 成绩表"), [(4,)])
        newest = sorted(self.folder.glob("*.bak"))[-1]
        newest.replace(self.library)
        self.assertEqual(yunshan.content_hash(self.library), once)
        self.run_program("score", self.library, "期中")

    def test_a_refused_new_library_leaves_the_old_one_to_work_with(self):
        self.add(["王芳"])
        before = yunshan.file_hash(self.library)
        self.run_program("new", self.library, "--subjects", "英语", expect=ERROR)
        self.assertUntouched(before)
        self.take("期中", (1, 1, "王芳", 90))
        self.assertEqual(self.rows("select 语文 from 成绩表"), [(90,)])


if __name__ == "__main__":
    yunshan.main()
