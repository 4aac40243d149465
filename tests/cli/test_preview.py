"""What an import would do, as JSON, with nothing written."""

import contextlib
import sqlite3
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, HEADINGS, USAGE


class PreviewTest(yunshan.ProgramTest):
    """A library with the students 甲 and 乙 of class 1 (文)."""

    def setUp(self):
        super().setUp()
        self.make_library("语文", "数学", "总分")
        self.add_students((1, 1, "甲", "文"), (1, 2, "乙", "文"))

    def preview(self, command, book, *options, expect=yunshan.DONE):
        """The result of a run that leaves the folder as it was."""
        before = self.files()
        result = self.run_program(command, self.library, book, *options, "--preview", expect=expect)
        self.assertEqual(self.files(), before)
        return result

    def files(self):
        return {path.name: (yunshan.file_hash(path), path.stat().st_mtime_ns)
                for path in self.folder.iterdir() if path.is_file()}

    def exam_book(self, *rows, headings=(*HEADINGS, "语文", "数学")):
        return self.book("成绩.xlsx", headings, *rows)


class Exams(PreviewTest):
    def test_counts_and_lists(self):
        book = self.exam_book((1, 1, "甲", 90, "缺考"), (1, 2, "已", 151, None), (1, 7, "新\n生", 1, 2))
        result = self.preview("import-exam", book, "--exam", "期中")
        found = result.json()
        self.assertEqual(result.err, "")
        self.assertEqual(found["Title"], "考试“期中”，“文”科，数据表“Sheet”")
        self.assertEqual({key: count for key, count in found["Counts"].items() if count},
                         {"Rows": 3, "Matched": 1, "UnknownStudent": 1, "OtherName": 1,
                          "BadCell": 2})
        self.assertEqual([(one["Kind"], one["Row"], one["Name"]) for one in found["Entries"]],
                         [("UnknownStudent", 4, "新\n生"), ("OtherName", 3, "已"),
                          ("BadCell", 3, "已"), ("BadCell", 3, "已")])
        self.assertEqual(found["Entries"][1]["Before"], "乙")

    def test_options_that_change_the_import_change_the_preview(self):
        book = self.exam_book((1, 1, "甲", 90, 80), (9, 1, "新", 121, 2))
        found = self.preview("import-exam", book, "--exam", "期中", "--on-unknown", "add",
                             "--full-marks", "语文=120", "--stream", "文").json()
        self.assertEqual(found["Counts"]["NewStudent"], 1)
        self.assertEqual(found["Counts"]["BadCell"], 1)
        self.assertEqual([one["After"] for one in found["Entries"] if one["Kind"] == "NewClass"],
                         ["文"])

    def test_old_and_new_of_an_exam_that_is_overwritten(self):
        first = self.exam_book((1, 1, "甲", 90, 80), (1, 2, "乙", 70, 60))
        self.import_exam(first, "期中")
        book = self.exam_book((1, 1, "甲", 91, 80))
        found = self.preview("import-exam", book, "--exam", "期中", "--existing").json()
        self.assertIn("已经在成绩库里", found["Warning"])
        self.assertEqual([(one["Name"], one["Subject"], one["Before"], one["After"])
                          for one in found["Entries"] if one["Kind"] == "Changed"],
                         [("甲", "语文", "90", "91")])
        self.assertEqual(found["Counts"]["Unchanged"], 1)
        self.assertEqual(found["Counts"]["Missing"], 1)
        typed = self.preview("import-exam", book, "--exam", "期中").json()
        self.assertEqual(typed["Counts"]["Repeated"], 1)
        self.assertIn("会再添一套成绩", typed["Warning"])

    def test_the_rule_that_overwrites_can_be_chosen(self):
        self.import_exam(self.exam_book((1, 1, "甲", 90, 80)), "期初")
        self.import_exam(self.exam_book((1, 1, "甲", 70, 60)), "期中")
        book = self.exam_book((1, 1, "甲", 71, 60))
        for rule, kinds in (("original", {"OtherExam": 1, "Changed": 0}),
                            ("this-exam", {"OtherExam": 0, "Changed": 1})):
            found = self.preview("import-exam", book, "--exam", "期中", "--existing",
                                 "--accept-overwrite", rule).json()
            self.assertEqual({kind: found["Counts"][kind] for kind in kinds}, kinds)

    def test_the_name_that_counts_can_be_chosen(self):
        book = self.exam_book((1, 1, "换名", 90, 80))
        for answer, remark in (((), "导入会在这一行停下，什么成绩也不存入。"),
                               (("--on-mismatch", "replace"), "全部考试里都改成表里的姓名。"),
                               (("--on-mismatch", "keep"), "成绩库的名单不变。"),
                               (("--on-mismatch", "cancel"), "导入会在这一行停下，什么成绩也不存入。")):
            found = self.preview("import-exam", book, "--exam", "期中", *answer).json()
            self.assertEqual([one["Remark"] for one in found["Entries"]], [remark])
        self.preview("import-exam", book, "--exam", "期中", "--on-mismatch", "other", expect=USAGE)

    def test_a_name_that_no_option_settles_stops_the_import(self):
        self.import_exam(self.exam_book((1, 1, "甲", 90, 80), (1, 2, "乙", 70, 60)), "期中")
        book = self.exam_book((1, 1, "换名", 91, 80), (1, 2, "乙", 71, 60), (1, 7, "新", 1, 2))
        options = ("--exam", "期中", "--existing", "--add-students")
        for answer, changed in (((), 0), (("--on-mismatch", "cancel"), 0), (("--on-mismatch", "keep"), 1),
                                (("--on-mismatch", "replace"), 2)):
            found = self.preview("import-exam", book, *options, *answer).json()
            self.assertEqual(found["Counts"]["Changed"], changed)
            self.assertEqual(found["Warning"].startswith("导入会在第 2 行停下"), changed == 0)
        before = yunshan.file_hash(self.library)
        self.run_program("import-exam", self.library, book, *options, "--no-backup", expect=ERROR)
        self.assertEqual(yunshan.file_hash(self.library), before)

    def test_what_the_import_refuses_the_preview_refuses(self):
        book = self.exam_book((1, 1, "甲", 90), headings=("班级", "学号", "名字", "语文"))
        result = self.preview("import-exam", book, "--exam", "期中", expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertIn("指定的工作表格式不对！", result.err)
        result = self.preview("import-exam", book, "--exam", "考" * 51, expect=ERROR)
        self.assertIn("考试名称最多 50 个字", result.err)
        self.preview("import-exam", book, expect=USAGE)

    def test_a_library_that_another_program_holds(self):
        book = self.exam_book((1, 1, "甲", 90, 80))
        with contextlib.closing(sqlite3.connect(self.library)) as other:
            other.execute("begin exclusive")
            result = self.run_program("import-exam", self.library, book, "--exam", "期中",
                                      "--preview", expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertIn("成绩库正被别的程序使用", result.err)


class Students(PreviewTest):
    def test_counts_and_lists(self):
        book = self.book("名单.xlsx", (*HEADINGS, "出生时间"), (1, 1, "甲", None),
                         (1, 2, "已", None), (1, 3, "新", "昨天"), (1, 3, "又", None))
        found = self.preview("import-students", book).json()
        self.assertEqual({key: count for key, count in found["Counts"].items() if count},
                         {"Rows": 4, "Matched": 1, "OtherName": 1, "TakenNumber": 1, "Twice": 2,
                          "BadCell": 1})
        self.assertEqual(found["Warning"],
                         "名单里有 2 人的班级和学号成绩库里已经有了！导入会停下，什么也不存入。")
        found = self.preview("import-students", book, "--accept-existing", "skip").json()
        self.assertEqual(found["Counts"]["NewStudent"], 1)

    def test_what_is_done_with_who_is_there_can_be_chosen(self):
        book = self.book("名单.xlsx", HEADINGS, (1, 1, "甲"))
        for answer, remark in (("skip", "会跳过。"), ("add", "会再添加一条。成绩库里的那一条不会改。")):
            found = self.preview("import-students", book, "--accept-existing", answer).json()
            self.assertEqual([one["Remark"] for one in found["Entries"] if one["Kind"] == "TakenNumber"],
                             ["成绩库里已有这个班级和学号，" + remark])
        self.preview("import-students", book, "--accept-existing", "other", expect=USAGE)

    def test_a_third_stream_is_in_the_warning(self):
        book = self.book("名单.xlsx", (*HEADINGS, "科类"), (2, 1, "新", "物理类"), (2, 2, "又", "历史类"))
        found = self.preview("import-students", book).json()
        self.assertTrue(found["Warning"].startswith("导入后会有 3 个科类（“文”、“物理类”、“历史类”）！"))
        self.assertEqual([(one["Name"], one["Before"], one["Kind"]) for one in found["Entries"]
                          if one["Subject"] == "科类"], [("又", "历史类", "BadCell")])

    def test_a_sheet_without_the_headings(self):
        result = self.preview("import-students", self.book("名单.xlsx", ("班级", "姓名"), (1, "甲")),
                              expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertIn("指定的工作表格式不对！", result.err)


if __name__ == "__main__":
    yunshan.main()
