"""Lists of teachers: printing, filling, copying, and what the report of averages makes of them."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, HEADINGS, USAGE

HEAD = "班级\t语文\t数学\n"


class Teachers(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文", "数学")
        self.add_students((1, 1, "甲", "理"), (2, 1, "乙", "理"))
        book = self.book("成绩.xlsx", (*HEADINGS, "语文", "数学"), (1, 1, "甲", 60, 50),
                         (2, 1, "乙", 80, 70))
        for exam in ("期中", "期末"):
            self.import_exam(book, exam)

    def teachers(self, *options, exam="期中", **expect):
        return self.run_program("teachers", self.library, "--exam", exam, *options, **expect)

    def stored(self):
        return self.rows("select 考试名称, 班级, 语文, 数学 from 教师表 order by 考试名称, 班级")

    def test_without_a_change_the_grid_is_printed_and_nothing_saved(self):
        before = yunshan.file_hash(self.library)
        result = self.teachers()
        self.assertEqual((result.out, result.err), (HEAD + "1\t\t\n2\t\t\n", ""))
        self.assertEqual(yunshan.file_hash(self.library), before)

    def test_names_are_saved_with_a_row_for_every_class_and_found_again(self):
        result = self.teachers("--set", "1:语文=张三,李四", "--set=2:数学=王五")
        self.assertEqual(result.out, HEAD + "1\t张三,李四\t\n2\t\t王五\n")
        self.assertEqual(self.stored(), [("期中", 1, "张三,李四", ""), ("期中", 2, "", "王五")])
        self.assertEqual(self.teachers().out, result.out)
        self.teachers("--set", "1:语文=")
        self.assertEqual(self.stored()[0], ("期中", 1, "", ""))

    def test_the_grid_as_json(self):
        grid = self.teachers("--set", "1:语文=张三", "--format", "json").json()
        self.assertEqual(grid["TextMatrix"], [["班级", "语文", "数学"], ["1", "张三", ""],
                                              ["2", "", ""]])
        self.assertEqual((grid["FixedRows"], grid["Messages"]), (1, []))

    def test_another_exams_list_is_copied_and_changed(self):
        self.teachers("--set", "1:语文=张三", "--set", "2:数学=王五")
        result = self.teachers("--copy-from", "期中", "--set", "2:数学=赵六", exam="期末")
        self.assertEqual(result.out, HEAD + "1\t张三\t\n2\t\t赵六\n")
        self.assertEqual(self.stored(), [("期中", 1, "张三", ""), ("期中", 2, "", "王五"),
                                         ("期末", 1, "张三", ""), ("期末", 2, "", "赵六")])

    def test_wrong_use_changes_nothing(self):
        before = yunshan.file_hash(self.library)
        for options, complaint in (
                (("--set", "9:语文=张三"), "成绩库里没有班级“9”。"),
                (("--set", "1:物理=张三"), "成绩库里没有科目或总分“物理”。"),
                (("--set", "1:语文=张三", "--set", "语文=张三"),
                 "选项 --set 的值应为 班级:科目=教师：语文=张三"),
                (("--set", "1:语文"), "选项 --set 的值应为 班级:科目=教师：1:语文"),
                (("--copy-from", "月考"), "成绩库里没有考试“月考”。"),
                (("--copy-from", "期末", "--copy-from", "期末"), "选项 --copy-from 出现了两次。")):
            result = self.teachers(*options, expect=USAGE)
            self.assertIn(complaint, result.err)
        for exam, complaint in (("月考", "成绩库里没有考试“月考”。"), ("", "缺少选项 --exam。")):
            self.assertIn(complaint, self.teachers(exam=exam, expect=USAGE).err)
        self.assertEqual(yunshan.file_hash(self.library), before)

    def test_a_name_of_more_than_50_characters_is_refused_and_the_old_one_stays(self):
        self.teachers("--set", "1:语文=张三")
        result = self.teachers("--set", "1:语文=" + "长" * 51, "--set", "1:数学=李四", expect=ERROR)
        self.assertIn(" - Private Sub Command3_Click/FormJiaoShiMingDan", result.err)
        self.assertEqual(result.out, HEAD + "1\t张三\t李四\n2\t\t\n")

    def test_hostile_names_are_kept_as_they_stand(self):
        hostile = "O'Hara'); drop table 教师表 --"
        result = self.teachers("--set", "1:语文=" + hostile, "--set", "2:语文=a=b:c\nd")
        self.assertEqual(result.out, HEAD + f"1\t{hostile}\t\n2\ta=b:c⏎d\t\n")
        self.assertEqual(self.stored()[1][2], "a=b:c\nd")

    def test_an_exam_with_an_apostrophe_is_refused(self):
        self.change("update 考试名称表 set 考试名称='期''中' where 考试名称='期中'")
        result = self.teachers("--set", "1:语文=张三", exam="期'中", expect=ERROR)
        self.assertIn("教师名单没有读出来，没有保存。", result.err)
        self.assertEqual(self.stored(), [])

    def averages(self):
        out = self.run_program("report", self.library, "--item", "各科平均分", "--exam", "期中").out
        return [line.split("\t") for line in out.splitlines()]

    def test_the_report_of_averages_names_the_teachers_of_the_exam(self):
        self.teachers("--set", "1:语文=张三", "--set", "2:数学=王五,赵六")
        self.change("update 设置表 set 设置='' where 名称='各科平均分'")
        self.assertNotIn("教师", sum(self.averages(), []))
        self.change("update 设置表 set 设置='使用教师名单' where 名称='各科平均分'")
        rows = self.averages()
        self.assertEqual([row for row in rows if row[0] in ("1班", "2班")],
                         [["1班", "60", "2", "张三", "50", "2", ""],
                          ["2班", "80", "1", "", "70", "1", "王五,赵六"]])
        self.teachers("--set", "1:语文=另一人", exam="期末")
        self.assertEqual(self.averages(), rows, "the list of another exam counts there alone")


if __name__ == "__main__":
    yunshan.main()
