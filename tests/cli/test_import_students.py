"""Student lists from workbooks."""

import datetime
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, FINISHED, HEADINGS, USAGE

TAG = " - Private Sub Command1_Click/FormDaoRuXinXi"


class ImportStudents(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文", "总分")

    def take(self, *rows, expect=yunshan.DONE):
        book = self.book("名单.xlsx", *rows)
        return self.run_program("import-students", self.library, book, "--no-backup",
                                expect=expect)

    def students(self, columns="班级, 学号, 姓名, 科类"):
        return self.rows(f"select {columns} from 信息表 order by ID")

    def test_every_row_becomes_a_student(self):
        result = self.take((*HEADINGS, "科类"), (1, 1, "王芳", "文"), (1, 2, "陈静", "文"),
                           (2, 1, "李强", "理"))
        self.assertEqual((result.out, result.err), ("", FINISHED))
        self.assertEqual(self.students("ID, 班级, 学号, 姓名, 科类, 类别代码"),
                         [(1, 1, 1, "王芳", "文", 1), (2, 1, 2, "陈静", "文", 1),
                          (3, 2, 1, "李强", "理", 1)])

    def test_details_are_stored_by_their_headings(self):
        born = datetime.date(2009, 7, 31)
        self.take((*HEADINGS, "类别", "出生时间", "学籍号", "类别代码", "备注"),
                  (1, 1, "王芳", "借读", born, "007", "2", None),
                  ("3班", " 4", "陈静", "统招", "2009-8-1", 17, "abc", "转入"))
        self.assertEqual(self.students("班级, 学号, 类别, 出生时间, 学籍号, 类别代码, 备注"),
                         [(1, 1, "借读", "2009-07-31", "007", 2, None),
                          (3, 4, "统招", "2009-08-01", "17", 0, "转入")])

    def test_without_a_stream_column_everybody_is_li(self):
        self.take(HEADINGS, (1, 1, "王芳"))
        self.assertEqual(self.students("科类"), [("理",)])

    def test_an_empty_class_ends_the_sheet(self):
        self.take(HEADINGS, (1, 1, "甲"), (None, 2, "乙"), (1, 3, "丙"))
        self.assertEqual(self.students("姓名"), [("甲",)])

    def test_an_empty_heading_ends_the_columns(self):
        self.take((*HEADINGS, "性别", None, "民族"), (1, 1, "甲", "女", 5, "汉族"))
        self.assertEqual(self.students("性别, 民族"), [("女", None)])

    QUESTION = ("名单中有 1 人的班级和学号在成绩库里已经有了（1 班 1 号 甲）。\n\n"
                "跳过已有：不导入这些人，只导入其余的 1 人。\n"
                "全部添加：全部导入，这样的班级和学号就会有两条以上的记录。")

    def take_again(self, *options, expect=yunshan.DONE):
        self.take(HEADINGS, (1, 1, "甲"))
        book = self.book("名单.xlsx", HEADINGS, (1, 1, "甲"), (1, 2, "乙"))
        return self.run_program("import-students", self.library, book, "--no-backup", *options,
                                expect=expect)

    def test_students_who_are_there_already_are_refused_without_the_option(self):
        result = self.take_again(expect=ERROR)
        self.assertEqual(result.err, f"{self.QUESTION} → 取消\n什么也没有导入。请用 --accept-existing "
                                     "skip 跳过已有的人，或用 add 全部添加。\n")
        self.assertEqual(self.students("ID, 姓名"), [(1, "甲")])

    def test_students_who_are_there_already_are_passed_over_or_added(self):
        for value, button, names in (("skip", "跳过已有", ["甲", "乙"]),
                                     ("add", "全部添加", ["甲", "甲", "乙"])):
            with self.subTest(value):
                self.library.unlink()
                self.make_library("语文", "总分")
                result = self.take_again("--accept-existing", value)
                self.assertEqual(result.err, f"{self.QUESTION} → {button}\n{FINISHED}")
                self.assertEqual(self.students("姓名"), [(name,) for name in names])

    def test_the_option_for_those_who_are_there_takes_two_values(self):
        before = yunshan.file_hash(self.library)
        book = self.book("名单.xlsx", HEADINGS, (1, 1, "甲"))
        self.run_program("import-students", self.library, book, "--accept-existing", "yes",
                         expect=USAGE)
        self.assertUntouched(before)

    def test_a_heading_that_is_no_column_costs_a_message_a_row(self):
        result = self.take((*HEADINGS, "鞋码", "性别"), (1, 1, "甲", 42, "女"), (1, 2, "乙", 43, "男"),
                           expect=ERROR)
        self.assertEqual(result.err.count("鞋码"), 2)
        self.assertEqual(result.err.count(TAG), 2)
        self.assertIn(FINISHED, result.err)
        self.assertEqual(self.students("姓名, 性别"), [("甲", "女"), ("乙", "男")])

    def test_a_cell_that_is_no_date_costs_a_message(self):
        result = self.take((*HEADINGS, "出生时间"), (1, 1, "甲", "春天"), (1, 2, "乙", None),
                           expect=ERROR)
        self.assertEqual(result.err, f"“春天”不是日期。{TAG}\n{FINISHED}")
        self.assertEqual(self.students("姓名, 出生时间"), [("甲", None), ("乙", None)])

    def test_a_photo_beside_the_workbook_comes_in(self):
        (self.folder / "王芳.jpg").write_bytes(b"\xff\xd8 picture")
        elsewhere = self.folder / "elsewhere"
        elsewhere.mkdir()
        book = self.book("名单.xlsx", (*HEADINGS, "照片名"), (1, 1, "王芳", "王芳.jpg"),
                         (1, 2, "陈静", "没有.jpg"),
                         (1, 3, "李强", str(self.folder / "王芳.jpg")))
        self.run_program("import-students", self.library, book, "--no-backup", cwd=elsewhere)
        self.assertEqual(self.students("照片名, 照片"),
                         [("王芳.jpg", b"\xff\xd8 picture"), (None, None),
                          ("王芳.jpg", b"\xff\xd8 picture")])

    def test_the_three_headings_must_stand_exactly(self):
        before = yunshan.file_hash(self.library)
        for headings in (("班级 ", "学号", "姓名"), ("班级", "姓名", "学号"), ("学号", "班级", "姓名")):
            result = self.take(headings, (1, 1, "甲"), expect=ERROR)
            self.assertEqual(result.err,
                             "[错误] 指定的工作表格式不对！\n\n前3列为 班级、学号、姓名\n")
            self.assertUntouched(before)

    def test_a_sheet_is_chosen_by_its_name(self):
        book = yunshan.write_book(self.folder / "两张.xlsx",
                                  {"甲班": (HEADINGS, (1, 1, "甲")), "乙班": (HEADINGS, (2, 1, "乙"))})
        self.run_program("import-students", self.library, book, "--no-backup", "--sheet", "乙班")
        self.assertEqual(self.students("姓名"), [("乙",)])
        self.run_program("import-students", self.library, book, "--no-backup")
        self.assertEqual(self.students("姓名"), [("乙",), ("甲",)])

    def test_a_sheet_that_is_not_there(self):
        book = self.book("名单.xlsx", HEADINGS, (1, 1, "甲"))
        before = yunshan.file_hash(self.library)
        result = self.run_program("import-students", self.library, book, "--sheet", "没有",
                                  expect=USAGE)
        self.assertTrue(result.err.startswith("工作簿里没有数据表“没有”。\n"), result.err)
        self.assertUntouched(before)

    def test_a_workbook_that_is_not_there(self):
        before = yunshan.file_hash(self.library)
        result = self.run_program("import-students", self.library, "没有.xlsx", expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertNotEqual(result.err, "")
        self.assertUntouched(before)

    def test_an_import_leaves_a_dated_copy_of_what_was_before(self):
        before = yunshan.content_hash(self.library)
        book = self.book("名单.xlsx", HEADINGS, (1, 1, "甲"))
        self.run_program("import-students", self.library, book)
        copies = [path for path in self.folder.iterdir() if path.suffix == ".bak"]
        self.assertEqual(len(copies), 1)
        self.assertRegex(copies[0].name, r"^试验.*_\d{4}-\d\d-\d\d_\d{6}\.bak$")
        self.assertEqual(yunshan.content_hash(copies[0]), before)

    def test_only_the_newest_five_copies_are_kept(self):
        name = re.sub(r"\.CJK$", "", self.library.name)
        book = self.book("名单.xlsx", HEADINGS, (1, 1, "甲"))
        self.run_program("import-students", self.library, book)
        made = next(path for path in self.folder.iterdir() if path.suffix == ".bak")
        pattern = re.sub(r"\d{4}-\d\d-\d\d_\d{6}", "{}", made.name)
        made.unlink()
        self.assertIn(name, pattern)
        for day in range(1, 8):
            (self.folder / pattern.format(f"2020-01-0{day}_0800")).write_bytes(b"old")
        self.run_program("import-students", self.library, book, "--accept-existing", "add")
        kept = sorted(path.name for path in self.folder.iterdir() if path.suffix == ".bak")
        self.assertEqual(len(kept), 5)
        self.assertEqual(kept[:4], [pattern.format(f"2020-01-0{day}_0800") for day in (4, 5, 6, 7)])

    def test_imports_one_after_the_other_have_a_copy_each(self):
        book = self.book("名单.xlsx", HEADINGS, (1, 1, "甲"))
        befores = set()
        for _ in range(3):
            befores.add(yunshan.content_hash(self.library))
            self.run_program("import-students", self.library, book, "--accept-existing", "add")
        copies = [path for path in self.folder.iterdir() if path.suffix == ".bak"]
        self.assertEqual({yunshan.content_hash(copy) for copy in copies}, befores)

    def test_an_import_that_writes_nothing_leaves_no_copy(self):
        self.run_program("import-students", self.library, self.book("名单.xlsx", HEADINGS))
        self.assertEqual([path for path in self.folder.iterdir() if path.suffix == ".bak"], [])

    def test_no_backup_leaves_no_copy(self):
        self.take(HEADINGS, (1, 1, "甲"))
        self.assertEqual([path for path in self.folder.iterdir() if path.suffix == ".bak"], [])


if __name__ == "__main__":
    yunshan.main()
