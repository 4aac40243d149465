"""Browsing score rows: the statement, the columns, the two forms of output."""

import os
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import DONE, ERROR, HEADINGS, USAGE

CLASSES = " and ( 班级=1 or  班级=2 or  班级=3)"
CATEGORIES = " and (类别代码=1 or 类别代码=2)"
FILL_TAG = " - Sub ShowKSCJmain/FormKaoShi"
HEADING = ["班级", "学号", "姓名", "考试名称"]
RAW = ["语文", "语名", "数学", "数名", "总分", "总名", "总分班名"]


def select(exams, classes=CLASSES, categories=CATEGORIES, order=""):
    condition = " or ".join(f" 考试名称='{exam}'" for exam in exams)
    return f"select * from 成绩表 where  ({condition}){classes}{categories}{order}"


class Browse(yunshan.ProgramTest):
    """Two exams of classes 1 (文), 2 and 3 (理); class 3 is of category 2; all scored."""

    def setUp(self):
        super().setUp()
        self.make_scored_exams(best=90)

    def browse(self, *options, expect=DONE, exam="期中"):
        result = self.run_program("browse", self.library, "--exam", exam, *options,
                                  "--format", "json", expect=expect)
        return result.json()

    def tsv(self, *options, exam="期中", expect=DONE):
        result = self.run_program("browse", self.library, "--exam", exam, *options, expect=expect)
        return [line.split("\t") for line in result.out.splitlines()]

    def names(self, *options, **arguments):
        return [row[2] for row in self.tsv(*options, **arguments)[1:]]

    def wrong(self, *options, says, exam="期中"):
        result = self.run_program("browse", self.library, "--exam", exam, *options, expect=USAGE)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith(says + "\n"), result.err)


class Output(Browse):
    def test_tab_separated_text_is_the_default(self):
        result = self.run_program("browse", self.library, "--exam", "期中", "--classes", "1")
        self.assertEqual(result.err, "")
        self.assertEqual(result.out,
                         "班级\t学号\t姓名\t考试名称\t语文\t语名\t数学\t数名\t总分\t总名\t总分班名\n"
                         "1\t1\t甲\t期中\t90\t1\t80\t1\t170\t1\t1\n"
                         "1\t2\t乙\t期中\t-1\t-1\t60.5\t2\t60.5\t2\t2\n")
        explicit = self.run_program("browse", self.library, "--exam", "期中", "--classes", "1",
                                    "--format", "tsv")
        self.assertEqual(explicit, result)

    def test_the_grid_as_json(self):
        grid = self.browse("--classes", "1")
        self.assertEqual(set(grid), {"Sql", "Rows", "Cols", "FixedRows", "MergeRow", "MergeCol",
                                     "TextMatrix", "ColWidth", "Messages"})
        self.assertEqual((grid["Rows"], grid["Cols"], grid["FixedRows"]), (3, 11, 1))
        self.assertEqual((grid["MergeRow"], grid["MergeCol"], grid["Messages"]), ([], [], []))
        self.assertEqual(grid["Sql"], select(["期中"], " and ( 班级=1)"))
        self.assertEqual(grid["TextMatrix"][0], HEADING + RAW)
        self.assertEqual(grid["TextMatrix"][2],
                         ["1", "2", "乙", "期中", "-1", "-1", "60.5", "2", "60.5", "2", "2"])

    def test_columns_are_two_three_or_four_characters_wide(self):
        widths = self.browse()["ColWidth"]
        self.assertEqual(set(widths), {str(column) for column in range(11)})
        unit = widths["0"] / 2
        self.assertGreater(unit, 0)
        self.assertEqual([round(widths[str(column)] / unit, 2) for column in range(11)],
                         [2, 2, 4, 4, 2, 2, 2, 2, 3, 2, 2])

    def test_a_score_that_was_never_given_is_an_empty_cell(self):
        self.assertEqual(self.tsv("--classes", "3")[1][4:8], ["80", "1", "", ""])

    def test_no_rows_give_the_heading_alone(self):
        self.run_program("new", self.folder / "空.CJK", "--subjects", "语文,总分")
        grid = self.browse("--sql", "select * from 成绩表 where 班级=99")
        self.assertEqual((grid["Rows"], grid["TextMatrix"]), (1, [HEADING + RAW]))

    def test_rows_come_as_they_were_imported(self):
        self.assertEqual(self.names(), ["甲", "乙", "丙", "丁", "戊"])


class Chosen(Browse):
    def test_everything_is_chosen_where_nothing_is_said(self):
        self.assertEqual(self.browse()["Sql"], select(["期中"]))

    def test_exams_stand_in_the_order_of_the_library(self):
        self.assertEqual(self.browse(exam="期末,期中")["Sql"], select(["期中", "期末"]))
        self.assertEqual(len(self.tsv(exam="期末, 期中")), 11)

    def test_classes(self):
        grid = self.browse("--classes", "3,1")
        self.assertEqual(grid["Sql"], select(["期中"], " and ( 班级=1 or  班级=3)"))
        self.assertEqual([row[2] for row in grid["TextMatrix"][1:]], ["甲", "乙", "戊"])

    def test_categories(self):
        grid = self.browse("--categories", "2")
        self.assertEqual(grid["Sql"], select(["期中"], categories=" and (类别代码=2)"))
        self.assertEqual([row[2] for row in grid["TextMatrix"][1:]], ["戊"])

    def test_no_category_means_all(self):
        grid = self.browse("--categories", "")
        self.assertEqual(grid["Sql"], select(["期中"], categories=""))
        self.assertEqual(grid["Rows"], 6)

    def test_no_class_leaves_the_prompt_as_statement(self):
        grid = self.browse("--classes", "", expect=ERROR)
        self.assertEqual(grid["Sql"], '请选择 要导出成绩的 班级！"')
        self.assertTrue(grid["Messages"])
        self.assertTrue(grid["Messages"][0].endswith(FILL_TAG), grid["Messages"])

    def test_a_stream_chooses_its_classes(self):
        self.assertEqual(self.browse("--stream", "理")["Sql"],
                         select(["期中"], " and ( 班级=2 or  班级=3)"))
        self.assertEqual(self.names("--stream", "文"), ["甲", "乙"])
        self.assertEqual(self.browse("--stream", "全")["Sql"], select(["期中"]))

    def test_classes_go_before_the_stream(self):
        self.assertEqual(self.names("--stream", "理", "--classes", "1"), ["甲", "乙"])

    def test_order(self):
        grid = self.browse("--order", "总分:desc,姓名:asc")
        self.assertEqual(grid["Sql"], select(["期中"], order=" order by 总分 DESC,姓名 ASC"))
        self.assertEqual([row[2] for row in grid["TextMatrix"][1:]], ["甲", "戊", "丁", "丙", "乙"])
        self.assertEqual(self.browse("--order", "语文")["Sql"],
                         select(["期中"], order=" order by 语文 ASC"))

    def test_four_keys_at_most(self):
        keys = "语文,数学,总分,语文年名"
        self.assertTrue(self.browse("--order", keys)["Sql"].endswith(
            " order by 语文 ASC,数学 ASC,总分 ASC,语文年名 ASC"))
        self.wrong("--order", keys + ",姓名", says="最多按 4 项排序。")

    def test_class_and_number_are_keys_too(self):
        grid = self.browse("--order", "班级:desc,学号:desc")
        self.assertEqual(grid["Sql"], select(["期中"], order=" order by 班级 DESC,学号 DESC"))
        self.assertEqual([row[2] for row in grid["TextMatrix"][1:]], ["戊", "丁", "丙", "乙", "甲"])

    def test_columns_to_show(self):
        cases = (("原始分和名次", RAW), ("Z分", ["语文Z分", "数学Z分", "总分Z分"]),
                 ("T分", ["语文T分", "数学T分", "总分T分", "总名"]))
        for show, columns in cases:
            self.assertEqual(self.tsv("--show", show)[0], HEADING + columns)

    def test_a_stored_selection_of_columns_wins(self):
        for key, columns in (("原始分和名次全", "姓名,总分年名,没有"), ("Z分文", "没有"),
                             ("T分理", "语文T分")):
            self.change("insert into 自定义显示表 values(?, ?)", key, columns)
        self.assertEqual(self.tsv()[0], ["姓名", "总名"])
        self.assertEqual(self.tsv("--stream", "文", "--show", "Z分")[0],
                         HEADING + ["语文Z分", "数学Z分", "总分Z分"])
        self.assertEqual(self.tsv("--stream", "理", "--show", "T分")[0], ["语文T分"])

    def test_what_the_library_does_not_have(self):
        self.wrong(exam="没有", says="成绩库里没有考试“没有”。")
        self.wrong("--classes", "9", says="成绩库里没有班级“9”。")
        self.wrong("--categories", "9", says="成绩库里没有类别代码“9”。")
        self.wrong("--stream", "医", says="成绩库里没有科类“医”。")
        self.wrong("--order", "体育:desc", says="没有名为“体育”的列。")
        self.wrong("--order", "语文:up", says="排序方式只能是 asc 或 desc：语文:up")
        self.wrong("--show", "名次", says="选项 --show 的值只能是：原始分和名次、Z分、T分")


class TypedStatement(Browse):
    def refused(self, sql):
        """The messages of a statement that must not run, which leaves the library as it is."""
        before = yunshan.file_hash(self.library)
        grid = self.browse("--sql", sql, expect=ERROR)
        self.assertEqual(grid["Sql"], sql)
        self.assertTrue(grid["Messages"], grid)
        self.assertUntouched(before)
        return grid["Messages"]

    def test_it_replaces_the_composed_one(self):
        sql = "select * from 成绩表 where 语文>=80 order by 姓名"
        grid = self.browse("--sql", sql)
        self.assertEqual(grid["Sql"], sql)
        self.assertEqual([row[2:4] for row in grid["TextMatrix"][1:]],
                         [["戊", "期中"], ["戊", "期末"], ["甲", "期中"], ["甲", "期末"]])

    def test_it_needs_no_exam(self):
        result = self.run_program("browse", self.library, "--sql",
                                  "select * from 成绩表 where 班级=3 and 考试名称='期末'")
        self.assertEqual([line.split("\t")[2] for line in result.out.splitlines()], ["姓名", "戊"])

    def test_a_wrong_column(self):
        messages = self.refused("select * from 成绩表 where 体育>1")
        self.assertIn("没有名为“体育”的列。", messages[0])
        self.assertTrue(messages[0].endswith(FILL_TAG))

    def test_double_quotes_hold_a_text(self):
        grid = self.browse("--sql", 'select * from 成绩表 where 科类="文" and 考试名称="期中"')
        self.assertEqual([row[2] for row in grid["TextMatrix"][1:]], ["甲", "乙"])

    def test_a_syntax_error(self):
        self.assertIn("语法错误", self.refused("selct * from 成绩表")[0])

    def test_a_column_that_is_shown_but_not_selected_is_told_once_with_its_count(self):
        grid = self.browse("--sql", "select 班级, 学号 from 成绩表 where 班级=3", expect=ERROR)
        self.assertEqual(grid["TextMatrix"][1][:3], ["3", "1", ""])
        message = "没有名为“姓名”的列。" + FILL_TAG
        self.assertEqual(grid["Messages"].count(message), 1)
        self.assertIn(message + "（同样的提示另有 1 条）", grid["Messages"])

    def test_a_hundred_thousand_failures_are_told_in_a_few_lines(self):
        self.change("insert into 成绩表(班级) with recursive n(i) as "
                    "(select 1 union all select i+1 from n where i<50000) select i from n")
        result = self.run_program("browse", self.library, "--sql", "select 班级 from 成绩表",
                                  expect=ERROR)
        self.assertLess(len(result.err), 4000)
        self.assertIn("没有名为“姓名”的列。" + FILL_TAG + "（同样的提示另有 50,009 条）\n", result.err)

    def test_a_second_statement(self):
        self.assertIn("一次只能执行一条语句。",
                      self.refused("select * from 成绩表; delete from 成绩表")[0])

    def test_other_files_and_transactions(self):
        for sql in (f"attach '{self.folder / 'x.db'}' as x", f"vacuum into '{self.folder / 'x.db'}'",
                    "begin", "pragma journal_mode=wal", "select load_extension('x')"):
            self.refused(sql)
            self.assertFalse((self.folder / "x.db").exists())

    def test_a_statement_that_changes_something_is_refused_with_what_it_would_change(self):
        for sql, says in (("update 成绩表 set 备注='看过' where 班级=3", "会改动成绩库里的 2 行"),
                          ("with n as (select 1) delete from 成绩表", "会改动成绩库里的 10 行"),
                          ("drop table 成绩表", "会改变成绩库的表和列"),
                          ("replace into 设置表 select * from 设置表", "会改动成绩库里的")):
            messages = self.refused(sql)
            self.assertEqual(len(messages), 1, messages)
            self.assertIn(says, messages[0])
            self.assertTrue(messages[0].endswith(" → 取消"))
        result = self.run_program("browse", self.library, "--sql", "delete from 成绩表",
                                  expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.endswith("要执行它，请加上 --accept-changes。\n"), result.err)
        self.assertEqual(list(self.folder.glob("*.bak")), [])

    def test_an_accepted_update_is_executed_behind_a_copy_and_has_no_rows_to_show(self):
        before = yunshan.content_hash(self.library)
        grid = self.browse("--sql", "update 成绩表 set 备注='看过' where 班级=3", "--accept-changes",
                           expect=ERROR)
        copies = list(self.folder.glob("*.bak"))
        self.assertEqual([yunshan.content_hash(copy) for copy in copies], [before])
        self.assertTrue(grid["Messages"][1].endswith(FILL_TAG), grid["Messages"])
        self.assertEqual(self.rows("select 备注 from 成绩表 where 备注 is not null"), [("看过",)] * 2)


class Readers(Browse):
    """Where the output goes to is not always there to take it."""

    def output_to(self, descriptor, *options):
        command = ("browse", self.library, "--exam", "期中", *options)
        done = subprocess.run([yunshan.PROGRAM, *map(str, command)], cwd=self.folder,
                              stdin=subprocess.DEVNULL, stdout=descriptor, stderr=subprocess.PIPE,
                              env=yunshan.environment(self.folder), timeout=60, check=False)
        return done.returncode, done.stderr.decode("utf-8")

    def enlarge(self):
        """Makes the output more than a pipe holds."""
        self.change("update 成绩表 set 姓名=substr(hex(zeroblob(30000)), 1, 60000)")

    def test_a_full_disk_is_an_error(self):
        for options in ((), ("--format", "json")):
            with open("/dev/full", "wb") as full:
                self.assertEqual(self.output_to(full, *options),
                                 (ERROR, "结果没有写完：标准输出无法写入。\n"))
        self.enlarge()
        with open("/dev/full", "wb") as full:
            self.assertEqual(self.output_to(full), (ERROR, "结果没有写完：标准输出无法写入。\n"))

    def test_a_reader_that_is_gone_is_none(self):
        for size in ("small", "large"):
            reader, writer = os.pipe()
            os.close(reader)
            try:
                self.assertEqual(self.output_to(writer), (DONE, ""), size)
            finally:
                os.close(writer)
            self.enlarge()

    def test_a_reader_that_takes_one_line_and_goes(self):
        self.enlarge()
        command = f"'{yunshan.PROGRAM}' browse '{self.library}' --exam 期中 | head -1; " \
                  "echo ${PIPESTATUS[0]}"
        done = yunshan.run("-c", command, program="/bin/bash", cwd=self.folder)
        self.assertEqual((done.out, done.err), ("\t".join(HEADING + RAW) + "\n0\n", ""))


class NothingYet(yunshan.ProgramTest):
    def test_a_library_without_exams(self):
        self.make_library("语文", "总分")
        result = self.run_program("browse", self.library, "--exam", "期中", expect=USAGE)
        self.assertTrue(result.err.startswith("成绩库里没有考试“期中”。\n"))
        result = self.run_program("browse", self.library, "--sql", "select * from 成绩表",
                                  expect=ERROR)
        self.assertIn("没有选择考试，请选择考试继续。", result.err)


if __name__ == "__main__":
    yunshan.main()
