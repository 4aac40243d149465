"""Scoring exams by name, and what `info` tells of a library."""

import json
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, HEADINGS, USAGE


class Prepared(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文", "数学", "总分")
        self.change("update 总分公式 set 公式='语文+数学' where 总分='总分'")
        self.add_students((1, 1, "甲", "文"), (1, 2, "乙", "文"), (1, 3, "丙", "文"),
                          (2, 1, "丁", "理"))
        book = self.book("成绩.xlsx", (*HEADINGS, "语文", "数学"), (1, 1, "甲", 60, 50),
                         (1, 2, "乙", 80, 50.5), (1, 3, "丙", "缺考", "缺考"))
        for exam in ("期中", "期末"):
            self.import_exam(book, exam)


class Score(Prepared):
    def derived(self, exam):
        return self.rows("select 语文Z分, 语文T分, 总分, 总分年名, 总分班名 from 成绩表"
                         " where 考试名称=? order by 学号", exam)

    def test_an_absent_student_counts_as_0_for_z_and_t_only(self):
        result = self.run_program("score", self.library, "期中")
        self.assertEqual((result.out, result.err), ("", ""))
        self.assertEqual(self.derived("期中"), [(-0.71, 43, 110, 2, 2), (0.71, 57, 130.5, 1, 1),
                                               (-4.95, 0, -1, -1, -1)])
        self.assertEqual(self.derived("期末"), [(None,) * 5] * 3)

    def test_several_exams(self):
        self.run_program("score", self.library, "期末", "期中")
        self.assertEqual(self.derived("期中"), self.derived("期末"))
        self.assertNotEqual(self.derived("期中")[0][0], None)

    def test_scoring_twice_changes_nothing(self):
        self.run_program("score", self.library, "期中")
        once = yunshan.content_hash(self.library)
        self.run_program("score", self.library, "期中")
        self.assertEqual(yunshan.content_hash(self.library), once)

    def test_a_term_that_is_no_column_is_told_once_by_each_routine_whatever_the_rows(self):
        self.change("update 考试名称表 set 总分='语文+物理'")
        result = self.run_program("score", self.library, "期中", expect=ERROR)
        term = "没有名为“物理”的列。"
        self.assertEqual(result.err.splitlines(),
                         [term + " - Function getKMMF/Mdl_MDB", term + " - Sub JiSuanZF/Mdl_MDB",
                          term + " - Function GetZFMF/Mdl_MDB",
                          term + " - Function getKMMF/Mdl_MDB（同样的提示另有 1 条）",
                          term + " - Sub JiSuanZF/Mdl_MDB（同样的提示另有 8 条）"])
        self.assertEqual(self.derived("期中")[0][2], 60)

    def test_an_unknown_exam_keeps_the_others_from_being_scored(self):
        before = yunshan.file_hash(self.library)
        result = self.run_program("score", self.library, "期中", "没有", expect=USAGE)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith("成绩库里没有考试“没有”。\n"))
        self.assertUntouched(before)

    def test_an_exam_that_the_list_passes_over_is_refused_with_the_reason(self):
        book = self.book("成绩.xlsx", (*HEADINGS, "语文"), (1, 1, "甲", 60))
        self.import_exam(book, "中", "--accept-unlisted")
        before = yunshan.file_hash(self.library)
        for command in (("score", self.library, "中"),
                        ("browse", self.library, "--exam", "中"),
                        ("report", self.library, "--item", "考试人数", "--exam", "中"),
                        ("analyze", self.library, "--exam", "中", "--out", self.folder),
                        ("import-exam", self.library, book, "--exam", "中", "--existing")):
            result = self.run_program(*command, expect=USAGE)
            self.assertEqual(result.out, "", command)
            self.assertTrue(result.err.startswith(
                "考试“中”的名称包含在另一次考试的名称里，考试列表中没有它。\n"), result.err)
            self.assertUntouched(before)

    def test_a_t_setting_that_is_none(self):
        self.change("update 设置表 set 设置='50+10z' where 名称='T分'")
        result = self.run_program("score", self.library, "期中", expect=ERROR)
        self.assertIn("T分转换公式设置不正确！", result.err)

    def test_equal_scores_fail_the_division_at_each_row(self):
        book = self.book("平.xlsx", (*HEADINGS, "语文"), (1, 1, "甲", 60), (1, 2, "乙", 60))
        self.import_exam(book, "月考")
        result = self.run_program("score", self.library, "月考", expect=ERROR)
        self.assertEqual(result.err.count(" - Sub Zfen/Mdl_MDB"), 2)
        self.assertEqual(self.rows("select 语文年名, 总分, 总分年名 from 成绩表 where 考试名称='月考'"),
                         [(1, 60, 1)] * 2)


class Info(Prepared):
    def test_what_a_library_holds(self):
        result = self.run_program("info", self.library)
        self.assertEqual(result.err, "")
        info = json.loads(result.out)
        self.assertEqual(set(info), {"LibPath", "Streams", "Classes", "ExamList", "Exams",
                                     "Columns", "Settings"})
        self.assertEqual(info["LibPath"], str(self.library))
        self.assertEqual(info["Streams"], ["文", "理"])
        self.assertEqual(info["Classes"], [{"Stream": "文", "Class": 1, "Students": 3},
                                           {"Stream": "理", "Class": 2, "Students": 1}])
        self.assertEqual(info["ExamList"], ["期中", "期末"])
        self.assertEqual(info["Columns"], {"All": ["语文", "数学", "总分"],
                                           "Subjects": ["语文", "数学"], "Totals": ["总分"]})

    def test_exams_and_settings_stand_row_by_row(self):
        info = self.run_program("info", self.library).json()
        self.assertEqual([(exam["考试名称"], exam["科类"], exam["考试编号"], exam["语文"], exam["备注"])
                          for exam in info["Exams"]],
                         [("期中", "文", 1, 150, None), ("期末", "文", 2, 150, None)])
        settings = {setting["名称"]: setting["设置"] for setting in info["Settings"]}
        self.assertEqual(settings["T分"], "10z+50")
        self.assertEqual([setting["ID"] for setting in info["Settings"]],
                         list(range(1, len(info["Settings"]) + 1)))

    def test_an_exam_named_as_a_part_of_an_earlier_one_is_not_listed(self):
        book = self.book("成绩.xlsx", (*HEADINGS, "语文"), (1, 1, "甲", 60))
        self.import_exam(book, "中", "--accept-unlisted")
        info = self.run_program("info", self.library).json()
        self.assertEqual(info["ExamList"], ["期中", "期末"])
        self.assertEqual([exam["考试名称"] for exam in info["Exams"]], ["期中", "期末", "中"])

    def test_an_empty_library(self):
        empty = self.folder / "空.CJK"
        self.run_program("new", empty, "--subjects", "语文")
        info = self.run_program("info", empty).json()
        self.assertEqual((info["Streams"], info["Classes"], info["ExamList"]), ([], [], []))
        self.assertEqual(info["Columns"]["All"], ["语文"])

    def test_reading_writes_nothing(self):
        before = yunshan.file_hash(self.library)
        self.run_program("info", self.library)
        self.run_program("browse", self.library, "--exam", "期中")
        self.assertUntouched(before)

    def test_more_than_two_streams(self):
        self.change("insert into 信息表(班级,学号,姓名,科类) values(3,1,'戊','医')")
        result = self.run_program("info", self.library, expect=ERROR)
        self.assertIn("科类设置不正确，请重新设置科类。", result.err)

    def test_a_student_without_a_stream(self):
        self.change("update 信息表 set 科类='' where 科类='理'")
        result = self.run_program("info", self.library, expect=ERROR)
        self.assertIn("学生科类不能为空，如果不分文理，默认值设为“理”\n请修改！", result.err)
        self.assertEqual(json.loads(result.out)["Streams"], ["", "文"])


if __name__ == "__main__":
    yunshan.main()
