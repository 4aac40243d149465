"""Correcting one score, and computing its exam anew."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, USAGE

STORED = "保存新成绩成功！\n"
AGAIN = "\n\n输入的成绩不合适，请重新输入！\n"


class Correct(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_scored_exams(90)

    def correct(self, score, *more, subject="语文", number=1, exam="期中", group=1, **options):
        return self.run_program("correct", self.library, "--exam", exam, "--class", group,
                                "--number", number, "--subject", subject, "--score", score, *more,
                                **options)

    def ranks(self, exam="期中"):
        return self.rows("select 姓名, 语文, 总分, 总分年名, 语文班名 from 成绩表"
                         " where 考试名称=? and 科类='文'", exam)

    def test_a_score_is_stored_and_nothing_else(self):
        before = self.rows("select * from 成绩表 where not (考试名称='期中' and 姓名='甲')")
        result = self.correct("88.5")
        self.assertEqual((result.out, result.err), ("", STORED))
        self.assertEqual(self.ranks()[0], ("甲", 88.5, 170, 1, 1))
        self.assertEqual(self.rows("select * from 成绩表 where not (考试名称='期中' and 姓名='甲')"),
                         before)

    def test_correct_then_compute_then_browse(self):
        self.correct("1", number=2, subject="数学", exam="期末")
        self.correct("149", "--rescore", number=2)
        self.assertEqual(self.ranks(), [("甲", 90, 170, 2, 2), ("乙", 149, 209.5, 1, 1)])
        self.assertEqual(self.ranks("期末")[1], ("乙", -1, 60.5, 2, -1))
        browsed = self.run_program("browse", self.library, "--exam", "期中", "--classes", "1",
                                   "--order", "总分:desc").out.splitlines()
        self.assertEqual([line.split("\t")[2] for line in browsed[1:]], ["乙", "甲"])

    def test_the_full_mark_itself_is_taken_and_more_is_refused(self):
        self.change("update 考试名称表 set 语文=? where 科类='文'", yunshan.single(90.1))
        self.assertEqual(self.correct("90.1").err, STORED)
        before = yunshan.file_hash(self.library)
        for score, message in (("90.2", "成绩不能超过语文满分 90.1 ！"), ("-1", "成绩不能为负！")):
            result = self.correct(score, "--rescore", expect=ERROR)
            self.assertEqual(result.err, message + AGAIN)
            self.assertUntouched(before)

    def test_a_text_that_is_no_number_is_asked_about_and_not_stored(self):
        before = yunshan.file_hash(self.library)
        for score in ("abc", "缺考"):
            result = self.correct(score, "--rescore", expect=ERROR)
            self.assertEqual(result.err, f"“{score}”不是分数。要怎样保存？ → 取消\n")
        self.assertEqual(self.correct("", expect=ERROR).err, "没有填写成绩。要怎样保存？ → 取消\n")
        self.assertUntouched(before)

    def test_without_a_row_nothing_is_changed_and_that_is_said(self):
        before = yunshan.file_hash(self.library)
        result = self.correct("50", "--rescore", number=99, group=9, expect=ERROR)
        self.assertEqual(result.err, "9 班 99 号没有考试“期中”的成绩，什么也没有修改。\n")
        self.assertUntouched(before)

    def test_what_the_library_does_not_have_is_wrong_usage(self):
        before = yunshan.file_hash(self.library)
        for options, message in (({"exam": "没有"}, "成绩库里没有考试“没有”。"),
                                 ({"subject": "总分"}, "成绩库里没有科目“总分”。"),
                                 ({"subject": "语文;--"}, "成绩库里没有科目“语文;--”。"),
                                 ({"group": "一"}, "选项 --class 的值必须是数字。"),
                                 ({"number": "1 or 1"}, "选项 --number 的值必须是数字。")):
            result = self.correct("50", expect=USAGE, **options)
            self.assertTrue(result.err.startswith(message + "\n"), result.err)
        result = self.run_program("correct", self.library, "--exam", "期中", expect=USAGE)
        self.assertTrue(result.err.startswith("缺少选项 --class。\n"))
        self.assertUntouched(before)


if __name__ == "__main__":
    yunshan.main()
