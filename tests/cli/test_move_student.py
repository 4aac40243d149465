"""Moving, swapping and removing single students."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, USAGE

HEAD = "学生\t现在\t调整为\t科类\t以前的成绩\t说明\n"
COPY, NO_COPY = "执行前会在成绩库旁边留一份备份。", "这次不留备份，执行后不可恢复。"
STUDENTS = "select 班级, 学号, 姓名, 科类 from 信息表 order by ID"
SCORES = "select distinct 班级, 学号, 姓名 from 成绩表 order by id, rowid"
BEFORE = [(1, 1, "甲", "文"), (1, 2, "乙", "文"), (2, 1, "丙", "理"), (2, 2, "丁", "理"),
          (3, 1, "戊", "理")]


class MoveStudent(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_scored_exams(90)

    def move(self, place, *arguments, **options):
        group, number = place
        return self.run_program("move-student", self.library, "--class", group, "--number", number,
                                *arguments, **options)

    def copies(self):
        return sorted(self.folder.glob("*.bak"))

    def test_without_yes_the_plan_is_printed_and_nothing_is_written(self):
        before = yunshan.file_hash(self.library)
        result = self.move((2, 1), "--to-class", "3", expect=ERROR)
        self.assertEqual(result.out, HEAD + "丙\t2 班 1 号\t3 班 2 号\t理\t2 条，不改动\t类别代码由“1”改为“2”。\n")
        self.assertEqual(result.err, "要执行这些调整吗？\n\n改班级或学号：1 人\n不改动的以前的成绩：2 条"
                         f"\n\n{COPY} → 取消\n")
        self.assertUntouched(before)
        self.assertEqual(self.copies(), [])

    def test_a_student_goes_behind_the_last_of_a_class_after_a_copy(self):
        before = yunshan.content_hash(self.library)
        result = self.move((2, 1), "--to-class", "3", "--yes")
        self.assertTrue(result.err.endswith(
            "→ 执行\n调整完毕。\n\n改班级或学号：1 人\n不改动的以前的成绩：2 条\n"), result.err)
        self.assertEqual(self.rows(STUDENTS), BEFORE[:2] + [(3, 2, "丙", "理")] + BEFORE[3:])
        self.assertIn((2, 1, "丙"), self.rows(SCORES))
        self.assertEqual([yunshan.content_hash(copy) for copy in self.copies()], [before])

    def test_earlier_scores_go_along_and_the_exams_are_scored_anew(self):
        ranks = "select 姓名, 语文班名 from 成绩表 where 考试名称='期末' and 科类='理' order by rowid"
        self.assertEqual(self.rows(ranks), [("丙", 2), ("丁", 1), ("戊", 1)])
        result = self.move((2, 1), "--to-class", "3", "--to-number", "9", "--with-scores", "--yes",
                           "--no-backup", "--rescore")
        self.assertIn(NO_COPY, result.err)
        self.assertTrue(result.err.endswith(
            "这些考试的名次和总分还是调整以前算的：期中、期末。\n现在重新计算吗？ → 现在计算\n"), result.err)
        self.assertIn((3, 9, "丙"), self.rows(SCORES))
        self.assertEqual(self.rows(ranks), [("丙", 2), ("丁", 1), ("戊", 1)])
        self.assertEqual(self.rows(ranks.replace("语文班名", "班级")),
                         [("丙", 3), ("丁", 2), ("戊", 3)])

    def test_two_swap_and_take_on_the_stream_of_their_class_unless_it_is_kept(self):
        self.move((1, 1), "--swap", "2/2", "--yes", "--no-backup")
        self.assertEqual(self.rows(STUDENTS),
                         [(2, 2, "甲", "理"), BEFORE[1], BEFORE[2], (1, 1, "丁", "文"), BEFORE[4]])
        self.move((2, 2), "--swap", "1/1", "--keep-stream", "--yes", "--no-backup")
        self.assertEqual(self.rows(STUDENTS),
                         [(1, 1, "甲", "理"), BEFORE[1], BEFORE[2], (2, 2, "丁", "文"), BEFORE[4]])

    def test_a_student_is_removed_with_or_without_his_scores(self):
        self.move((3, 1), "--remove", "--yes", "--no-backup")
        self.assertIn((3, 1, "戊"), self.rows(SCORES))
        self.run_program("move-student", self.library, "--id", "2", "--remove", "--with-scores",
                         "--yes", "--no-backup")
        self.assertEqual(self.rows(STUDENTS), [BEFORE[0], BEFORE[2], BEFORE[3]])
        self.assertNotIn((1, 2, "乙"), self.rows(SCORES))

    def test_a_place_that_is_taken_is_refused(self):
        before = yunshan.file_hash(self.library)
        result = self.move((1, 1), "--to-class", "2", "--to-number", "1", "--yes", expect=ERROR)
        self.assertTrue(result.out.endswith("2 班 1 号 已经是“丙”。 科类由“文”改为“理”。\n"), result.out)
        self.assertEqual(result.err,
                         "这些调整还不能执行：\n\n甲（1 班 1 号）：2 班 1 号 已经是“丙”。\n")
        self.assertUntouched(before)

    def test_several_of_one_place_are_never_guessed(self):
        self.change("update 信息表 set 学号=1 where 姓名='乙'")
        result = self.move((1, 1), "--remove", "--yes", expect=USAGE)
        self.assertTrue(result.err.startswith("1 班 1 号有 2 名学生，请用 --id 指定。\n"), result.err)

    def test_wrong_usage_is_told(self):
        before = yunshan.file_hash(self.library)
        one_of = "--to-class、--swap、--remove 要给出其中一个。\n"
        for arguments, message in {
                (): one_of,
                ("--remove", "--swap", "1/2"): one_of,
                ("--remove", "--to-number", "3"): "缺少选项 --to-class。\n",
                ("--swap", "2"): "选项 --swap 的值应为 班级/学号：2\n",
                ("--swap", "' or ''='"): "选项 --swap 的值应为 班级/学号：' or ''='\n",
                ("--swap", "9/9"): "成绩库里没有 9 班 9 号的学生。\n"}.items():
            result = self.move((1, 1), *arguments, "--yes", expect=USAGE)
            self.assertTrue(result.err.startswith(message), result.err)
        result = self.move((7, 7), "--remove", "--yes", expect=USAGE)
        self.assertTrue(result.err.startswith("成绩库里没有 7 班 7 号的学生。\n"), result.err)
        result = self.move((1, 1), "--to-class", "0", "--yes", expect=ERROR)
        self.assertIn("班级和学号要是从 1 起的整数。", result.err)
        self.assertUntouched(before)

    def test_json_holds_the_whole_table(self):
        result = self.move((1, 1), "--remove", "--format", "json", expect=ERROR)
        self.assertEqual(result.json()["TextMatrix"][1][:3], ["甲", "1 班 1 号", "删除"])


if __name__ == "__main__":
    yunshan.main()
