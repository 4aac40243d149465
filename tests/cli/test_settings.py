"""Analysis settings from outside: printed, changed, and replaced by conditions for each subject."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import DONE, ERROR, USAGE

SAVED = "设置保存成功！\n"
DELETED = "保存设置成功！\n"
CUSTOM = "(使用自定义数据)"
NAME = "各科优秀率"


class Settings(yunshan.ProgramTest):
    """Two scored exams of two streams; 甲 (class 1, 文) has 90 of 100 in 语文."""

    def setUp(self):
        super().setUp()
        self.make_scored_exams(best=90)

    def settings(self, *options, expect=DONE):
        return self.run_program("settings", self.library, *options, expect=expect)

    def change_settings(self, *options, says=SAVED, expect=DONE):
        result = self.settings(*options, expect=expect)
        self.assertEqual((result.out, result.err), ("", says))

    def stored(self, name=NAME):
        return self.rows("select 设置, 加入综合分析, 自定义 from 设置表 where 名称=?", name)[0]

    def conditions(self):
        return self.rows("select * from 详细设置表")

    def wrong(self, *options, says):
        before = yunshan.content_hash(self.library)
        result = self.settings(*options, expect=USAGE)
        self.assertEqual(result.out, "")
        self.assertIn(says, result.err)
        self.assertEqual(yunshan.content_hash(self.library), before)

    def excellent(self):
        """How many of class 1 the report counts in 语文."""
        grid = self.run_program("report", self.library, "--item", NAME, "--exam", "期中",
                                "--format", "json").json()["TextMatrix"]
        return next(row for row in grid if row[0] == "1班")[1]


class Printed(Settings):
    def test_without_a_change_all_six_columns_are_printed(self):
        rows = [line.split("\t") for line in self.settings().out.splitlines()]
        self.assertEqual(len(rows), 22)
        self.assertEqual(rows[0], ["名称", "设置", "加入综合分析", "各科条件", "", ""])
        self.assertEqual(rows[1], ["T分", "10z+50", "否", "", "", "0"])
        self.assertEqual(rows[2], ["参与统计的学生类别代码", "(全部)", "否", "", "1,2", "0"])
        self.assertEqual(rows[5], [NAME, "[0.85,1]", "是", "点此设置各科条件", "", "0"])
        self.assertEqual(rows[21], ["进行对比分析的考试", "(全部)", "否", "", "期中,期末", "0"])

    def test_json_prints_the_grid_as_browse_does(self):
        grid = self.settings("--format", "json").json()
        self.assertEqual((grid["Rows"], grid["Cols"], grid["FixedRows"]), (22, 6, 0))
        self.assertEqual(grid["ColWidth"], {"4": 0, "5": 0})
        self.assertEqual(grid["Messages"], [])

    def test_conditions_are_made_from_the_interval_and_not_stored(self):
        self.assertEqual(self.settings("--conditions", NAME).out,
                         "科类\t科目\t条件\t分数\t条件\t分数\n"
                         "文\t语文\t>=\t127.5\t<=\t150\n文\t数学\t>=\t127.5\t<=\t150\n"
                         "理\t语文\t>=\t127.5\t<=\t150\n理\t数学\t>=\t85\t<=\t100\n")
        self.assertEqual(self.conditions(), [])

    def test_an_interval_without_a_comma_reads_as_nought_to_one_and_fails(self):
        self.change("update 设置表 set 设置='[0.6]' where 名称=?", NAME)
        result = self.settings("--conditions", NAME, expect=ERROR)
        self.assertEqual(result.err, "条件“[0.6]”不是区间，缺少逗号。 - Sub SzGekE/FormSet\n")
        self.assertEqual(result.out.splitlines()[1], "文\t语文\t>=\t0\t<=\t150")


class Changed(Settings):
    def test_values_and_flips_are_saved_and_the_others_stay(self):
        before = self.rows("select * from 设置表 where ID not in (5, 9) order by ID")
        self.change_settings("--set", NAME + "=[0.5,1)", "--analysis", NAME + "=否",
                             "--analysis", "各科平均分=是", "--set", "各科平均分=不使用教师名单")
        self.assertEqual(self.stored(), ("[0.5,1)", "否", 0))
        self.assertEqual(self.stored("各科平均分"), ("不使用教师名单", "是", 0))
        after = self.rows("select * from 设置表 where ID not in (5, 9) order by ID")
        offered = {2: "1,2", 21: "期中,期末"}
        self.assertEqual(after, [row[:5] + (offered.get(row[0], row[5]),) + row[6:]
                                 for row in before])

    def test_typing_a_value_ends_the_use_of_conditions(self):
        self.change("update 设置表 set 自定义=1 where 名称=?", NAME)
        self.change_settings("--analysis", NAME + "=否")
        self.assertEqual(self.stored(), (CUSTOM, "否", 1))
        self.change_settings("--set", NAME + "=[0.5,1]")
        self.assertEqual(self.stored(), ("[0.5,1]", "否", 0))

    def test_lists_are_saved_in_their_order(self):
        self.change_settings("--set", "参与统计的学生类别代码=2,1",
                             "--set", "进行对比分析的考试=期末")
        self.assertEqual(self.stored("参与统计的学生类别代码")[0], "1,2")
        self.assertEqual(self.stored("进行对比分析的考试")[0], "期末")
        self.change_settings("--set", "参与统计的学生类别代码=(全部)", "--set", "各科平均分=")
        self.assertEqual(self.stored("参与统计的学生类别代码")[0], "(全部)")
        self.assertEqual(self.stored("各科平均分")[0], "")

    def test_a_value_that_its_report_cannot_read_is_told_and_stored(self):
        self.change_settings("--set", "总分上线人数=文=500",
                             says="“总分上线人数”的值统计时读不懂，仍然保存："
                                  "条件设置不正确！缺少分隔符  ||  \n文=500\n" + SAVED)
        self.assertEqual(self.stored("总分上线人数")[0], "文=500")

    def test_hostile_values_are_stored_as_they_stand(self):
        value = "'; drop table 设置表; --\n" + "长" * 10000
        self.change_settings("--set", "考试人数=" + value)
        self.assertEqual(self.stored("考试人数")[0], value)

    def test_a_name_is_known_with_and_without_the_blank_behind_it(self):
        for name in ("历次考试进入年级前x名人数", "历次考试进入年级前x名人数 "):
            self.change_settings("--set", name + "=7")
            self.assertEqual(self.stored("历次考试进入年级前x名人数 ")[0], "7")

    def test_what_the_screen_cannot_do_is_wrong_usage(self):
        self.wrong("--analysis", "T分=是", says="“T分”不能加入综合分析。")
        self.wrong("--analysis", NAME + "=yes", says="选项 --analysis 的值只能是 是 或 否：yes")
        self.wrong("--set", "各科平均分=随便", says="不能是“随便”，可以是：使用教师名单、不使用教师名单")
        self.wrong("--set", "各科平均分=(全部)", says="不能是“(全部)”")
        self.wrong("--set", "没有这项=1", says="成绩库里没有设置“没有这项”。")
        for option in ("--set", "--analysis"):
            self.wrong(option, NAME, says=f"选项 {option} 的值应为 名称=值：{NAME}")
        for options in (("--set", NAME + "=[0,1]", "--conditions", NAME),
                        ("--analysis", NAME + "=是", "--delete-conditions", NAME),
                        ("--conditions", NAME, "--delete-conditions", NAME)):
            self.wrong(*options,
                       says="--set 和 --analysis、--conditions、--delete-conditions 不能同时给出。")


class Conditions(Settings):
    def test_a_condition_is_saved_with_all_others_and_the_setting_uses_them(self):
        self.change_settings("--conditions", NAME, "--condition", "文:语文:>=85,<=100",
                             "--condition", "理:数学:>1.5,<2", says=SAVED * 2)
        self.assertEqual(self.stored(), (CUSTOM, "是", 0))
        self.assertEqual(self.conditions(),
                         [(NAME, "文", "语文", ">=", "85", "<=", "100"),
                          (NAME, "文", "数学", ">=", "127.5", "<=", "150"),
                          (NAME, "理", "语文", ">=", "127.5", "<=", "150"),
                          (NAME, "理", "数学", ">", "1.5", "<", "2")])

    def test_stored_conditions_are_shown_instead_of_lost(self):
        self.change_settings("--conditions", NAME, "--condition", "文:语文:>=85,<=100",
                             says=SAVED * 2)
        result = self.settings("--conditions", NAME)
        self.assertEqual(result.out.splitlines()[1], "文\t语文\t>=\t85\t<=\t100")
        self.assertIn("“各科优秀率”有 4 条已经保存的各科条件。", result.err)
        self.settings("--conditions", NAME, "--condition", "文:数学:>3,<4")
        self.assertEqual(self.conditions()[:2], [(NAME, "文", "语文", ">=", "85", "<=", "100"),
                                                 (NAME, "文", "数学", ">", "3", "<", "4")])
        self.assertEqual(self.stored(), (CUSTOM, "是", 0))

    def test_a_threshold_then_conditions_are_seen_in_the_report(self):
        self.assertEqual(self.excellent(), "0")
        self.settings("--set", NAME + "=[0.6,1]")
        self.assertEqual(self.excellent(), "1")
        self.settings("--conditions", NAME, "--condition", "文:语文:>90,<=150")
        self.assertEqual(self.excellent(), "0")
        self.settings("--conditions", NAME, "--condition", "文:语文:>=90,<=150")
        self.assertEqual(self.excellent(), "1")

    def test_deleting_touches_the_conditions_alone(self):
        self.settings("--conditions", NAME, "--condition", "文:语文:>=85,<=100")
        self.change("insert into 详细设置表(设置名称) values ('高分段')")
        before = self.rows("select * from 设置表")
        self.change_settings("--delete-conditions", NAME, says=DELETED)
        self.assertEqual([row[0] for row in self.conditions()], ["高分段"])
        self.assertEqual(self.rows("select * from 设置表"), before)

    def test_wrong_conditions_write_nothing(self):
        for text in ("文:语文", "文:语文:>=85", "文:语文:>=85,<=90,<5", "语文:>=85,<=100"):
            self.wrong("--conditions", NAME, "--condition", text,
                       says=f"选项 --condition 的值应为 科类:科目:>=85,<=100：{text}")
        for text in ("文:语文:=85,<=90", "文:语文:>=85,90"):
            self.wrong("--conditions", NAME, "--condition", text,
                       says=f"选项 --condition 的条件应以 >、>=、<、<= 开头：{text}")
        self.wrong("--conditions", NAME, "--condition", "文:物理:>1,<2", says="没有科类“文”科目“物理”的条件。")
        self.wrong("--condition", "文:语文:>1,<2", says="缺少选项 --conditions。")
        self.wrong("--conditions", "考试人数", says="设置“考试人数”没有各科条件。")
        self.wrong("--delete-conditions", "考试人数", says="设置“考试人数”没有各科条件。")
        self.wrong("--conditions", "没有这项", says="成绩库里没有设置“没有这项”。")

    def test_a_setting_in_force_whose_conditions_were_deleted_takes_none(self):
        self.change("update 设置表 set 自定义=1 where 名称=?", NAME)
        self.assertEqual(self.settings("--conditions", NAME).out,
                         "科类\t科目\t条件\t分数\t条件\t分数\n")
        self.wrong("--conditions", NAME, "--condition", "文:语文:>1,<2", says="没有科类“文”科目“语文”的条件。")


if __name__ == "__main__":
    yunshan.main()
