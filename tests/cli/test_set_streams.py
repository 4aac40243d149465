"""Setting the streams of whole classes."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, HEADINGS, USAGE


class SetStreams(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文")
        self.add_students((1, 1, "甲", "理"), (2, 1, "乙", "理"), (3, 1, "丙", "理"))
        book = self.book("成绩.xlsx", (*HEADINGS, "语文"), (1, 1, "甲", 60), (2, 1, "乙", 80),
                         (3, 1, "丙", 70))
        self.import_exam(book, "期中")

    def streams(self):
        return "".join(stream for (stream,) in self.rows("select 科类 from 成绩表 order by 班级"))

    def copies(self):
        return list(self.library.parent.glob("*.bak"))

    def test_classes_that_are_named_become_science_the_others_arts(self):
        result = self.run_program("set-streams", self.library, "--science", "1,3")
        self.assertEqual(
            (result.out, result.err),
            ("", "选中的 2 个班（2 条成绩）科类设为理，没有选中的 1 个班（1 条成绩）设为文。\n"
             "学生信息里的科类不变。设置以后，各次考试要重新计算总分和名次。 → 设置\n设置完毕！\n"))
        self.assertEqual(self.streams(), "理文理")
        self.assertEqual(self.rows("select distinct 科类 from 信息表"), [("理",)])

    def test_none_named_makes_all_of_them_arts(self):
        self.run_program("set-streams", self.library, "--science", "")
        self.assertEqual(self.streams(), "文文文")
        self.run_program("set-streams", self.library, "--science=1,2,3")
        self.assertEqual(self.streams(), "理理理")

    def test_a_copy_is_made_first_unless_it_is_switched_off(self):
        before = len(self.copies())
        self.run_program("set-streams", self.library, "--science", "1", "--no-backup")
        self.assertEqual(len(self.copies()), before)
        self.run_program("set-streams", self.library, "--science", "2")
        self.assertEqual(len(self.copies()), before + 1)

    def test_wrong_use_changes_nothing(self):
        before = yunshan.file_hash(self.library)
        for options, complaint in ((("--science", "1,7"), "成绩库里没有班级“7”。"),
                                   (("--science", "一"), "成绩库里没有班级“一”。"),
                                   ((), "缺少选项 --science。")):
            result = self.run_program("set-streams", self.library, *options, expect=USAGE)
            self.assertIn(complaint, result.err)
        self.assertEqual(yunshan.file_hash(self.library), before)

    def test_students_without_a_class_break_the_group_of_arts_alone(self):
        self.change("update 信息表 set 班级=null where 姓名='丙'")
        result = self.run_program("set-streams", self.library, "--science", "1", expect=ERROR)
        self.assertIn(" - Private Sub Command1_Click/FormSheZhiWenLi", result.err)
        self.assertIn("设置完毕！", result.err)
        self.assertEqual(self.streams(), "理理理")


if __name__ == "__main__":
    yunshan.main()
