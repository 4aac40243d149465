"""Statistics from outside: the reports by name and by button, and the comprehensive analysis."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import openpyxl
import yunshan
from yunshan import DONE, ERROR, HEADINGS, USAGE

SHEETS = ["期中原始分和名次({0})", "期中T分({0})", "考试分析", "对比分析"]


class Prepared(yunshan.ProgramTest):
    """Two scored exams of classes 1 (文), 2 and 3 (理); class 3 is of category 2."""

    def setUp(self):
        super().setUp()
        self.make_scored_exams(best=150)
        self.set("各科平均分", "不使用教师名单")

    def set(self, name, value):
        self.change("update 设置表 set 设置=? where 名称=?", value, name)

    def report(self, *options, exam="期中", expect=DONE):
        result = self.run_program("report", self.library, *options, "--exam", exam,
                                  "--format", "json", expect=expect)
        return result.json()

    def texts(self, *options, **arguments):
        return self.report(*options, **arguments)["TextMatrix"]

    def wrong(self, *arguments, says):
        result = self.run_program(*arguments, expect=USAGE)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith(says + "\n"), result.err)


class ByName(Prepared):
    def test_tab_separated_text_is_the_default(self):
        result = self.run_program("report", self.library, "--item", "各科最低分", "--exam", "期中")
        self.assertEqual(result.err, "")
        self.assertEqual(result.out, "文科各科最低分\t文科各科最低分\t文科各科最低分\n"
                                     "班级\t语文\t数学\n1班\t150\t60.5\n"
                                     "理科各科最低分\t理科各科最低分\t理科各科最低分\n"
                                     "班级\t语文\t\n2班\t70\t\n3班\t80\t\n")

    def test_the_grid_as_json(self):
        grid = self.report("--item", "高、低分段")
        self.assertEqual(set(grid), {"Sql", "Rows", "Cols", "FixedRows", "MergeRow", "MergeCol",
                                     "TextMatrix", "ColWidth", "Messages"})
        self.assertEqual((grid["Rows"], grid["Cols"], grid["FixedRows"]), (9, 5, 0))
        self.assertEqual((grid["MergeRow"], grid["MergeCol"]), ([0, 1, 4, 5], [0]))
        self.assertEqual((grid["ColWidth"], grid["Messages"], grid["Sql"]), ({"-1": 750}, [], ""))
        self.assertEqual(grid["TextMatrix"][:4], [["文科 高、低分段"] * 5,
                                                  ["班级", "语文", "语文", "数学", "数学"],
                                                  ["班级"] + ["高分段", "低分段"] * 2,
                                                  ["1班", "1", "0", "0", "0"]])

    def test_every_report_has_a_title_of_its_own(self):
        titles = {"考试人数": "文科考试人数", "高分段": "文科 高、低分段", "低分段": "文科 高、低分段",
                  "高分段、低分段": "文科 高、低分段", "各科优秀率": "文科各科优秀率",
                  "各科良好率": "文科各科良好率", "各科及格率": "文科各科及格率",
                  "各科差生率": "文科各科差生率", "各科平均分": "文科各科平均分",
                  "各科最高分": "文科各科最高分", "各科标准差": "文科 各科标准差",
                  "各分数段人数": "文科  语文各分数段人数", "总分上线人数": "文科总分上线人数",
                  "各名次段人数": "文科  语文各名次段人数", "各名次段均分": "文科  各名次段均分",
                  "历次各名次段人数对比": "文科  语文各名次段人数",
                  "历次考试进入年级前x名人数": "文科  语文  1次考试进入年级前50,100,200名人数",
                  "历次总分上线人数": "文科总分上线人数"}
        for item, title in titles.items():
            self.assertEqual(self.texts("--item", item)[0][1], title)

    def test_a_rate_reads_the_setting_of_its_name(self):
        self.set("各科良好率", "[0,0.6)")
        self.assertEqual(self.texts("--item", "各科良好率")[3], ["1班", "0", "0", "2", "100"])

    def test_categories_narrow_the_counts_and_not_the_roster(self):
        self.assertEqual([row[1] for row in self.texts("--item", "考试人数")[5:]],
                         ["2/0/2", "1/0/1"])
        narrowed = self.texts("--item", "考试人数", "--categories", "2")
        self.assertEqual([row[1] for row in narrowed[5:]], ["0/0/0", "1/0/1"])

    def test_several_exams_stand_in_the_order_given(self):
        rows = self.texts("--item", "各科最高分", exam="期末,期中")
        self.assertEqual([row[:2] for row in rows[2:4]], [["1班", "期末"], ["1班", "期中"]])

    def test_a_report_on_one_exam_is_cancelled_for_several(self):
        for by, last in (("--item", "期中"), ("--button", "期末")):
            for report in ("考试人数", "各分数段人数", "各名次段均分"):
                result = self.run_program("report", self.library, by, report, "--exam",
                                          "期末,期中", expect=ERROR)
                self.assertEqual(result.out, "")
                self.assertEqual(result.err, f"[分析参数错误！] 当前操作只针对一次考试，只对{last}"
                                             "  进行统计，是否继续？ → 取消\n")

    def test_a_refused_setting_is_an_error(self):
        self.set("各分数段人数", "单科10")
        grid = self.report("--item", "各分数段人数", expect=ERROR)
        self.assertEqual(grid["Messages"],
                         ["分数段设置有问题\n单科分数段=10\n总分分数段=0"])
        self.assertEqual(grid["TextMatrix"], [])
        self.set("总分上线人数", "文=500,理=520")
        grid = self.report("--item", "历次总分上线人数", expect=ERROR)
        self.assertEqual(grid["Messages"],
                         ["总分上线人数   条件设置不正确！缺少分隔符  ||  \n文=500,理=520"])
        self.assertEqual(grid["TextMatrix"][2], ["1班", ""])

    def test_a_failing_cell_costs_a_message_and_the_others_stand(self):
        self.change("alter table 成绩表 drop column 数学")
        grid = self.report("--item", "各科最高分", expect=ERROR)
        self.assertEqual(len(grid["Messages"]), 1)
        self.assertTrue(grid["Messages"][0].endswith(" - Sub TJGKZGF/Mdl_MDB"))
        self.assertEqual(grid["TextMatrix"][2], ["1班", "150", ""])

    def test_reading_writes_nothing(self):
        before = yunshan.file_hash(self.library)
        self.report("--item", "各名次段均分")
        self.run_program("analyze", self.library, "--exam", "期中", "--format", "json")
        self.assertUntouched(before)


class ByButton(Prepared):
    def test_all_rates_are_the_excellent_one(self):
        excellent = self.report("--button", "各科优秀率")
        for item in ("各科良好率", "各科及格率", "各科差生率"):
            self.assertEqual(self.report("--button", item), excellent)
        self.assertEqual(excellent["TextMatrix"][0][0], "文科各科优秀率")

    def test_the_history_is_known_with_a_trailing_blank_only(self):
        known = self.texts("--button", "历次考试进入年级前x名人数 ")
        self.assertEqual(known, self.texts("--item", "历次考试进入年级前x名人数"))
        unknown = self.texts("--button", "历次考试进入年级前x名人数")
        self.assertEqual(unknown, [["", ""], ["", ""]])

    def test_the_history_is_named_with_or_without_its_blank(self):
        with_blank = self.report("--item", "历次考试进入年级前x名人数 ")
        self.assertEqual(with_blank, self.report("--item", "历次考试进入年级前x名人数"))

    def test_exams_stand_in_the_order_of_the_list(self):
        rows = self.texts("--button", "历次总分上线人数", exam="期末,期中")
        self.assertEqual([row[:2] for row in rows[2:4]], [["1班", "期中"], ["1班", "期末"]])

    def test_a_group_is_no_item_by_itself(self):
        self.assertEqual(self.texts("--button", "高分段"), [["", ""], ["", ""]])
        self.assertEqual(self.texts("--button", "高分段、低分段")[0][0], "文科 高、低分段")

    def test_no_item_is_refused_with_the_message_of_the_screen(self):
        grid = self.report("--button", "请选择要统计的项目", expect=ERROR)
        self.assertEqual(grid["Messages"], ["没有选择统计项目，请选择统计项目 后继续。"])

    def test_an_item_without_a_name_does_nothing(self):
        grid = self.report("--button", "")
        self.assertEqual((grid["TextMatrix"], grid["Messages"]), ([["", ""], ["", ""]], []))

    def test_no_exam_is_refused_with_the_message_of_the_screen(self):
        grid = self.report("--button", "考试人数", exam="", expect=ERROR)
        self.assertEqual(grid["Messages"], ["没有选择考试，请选择考试继续。"])


class EachExam(Prepared):
    def test_the_tables_stand_one_behind_the_other_below_their_exams(self):
        for by, exams in (("--item", "期末,期中"), ("--button", "期中,期末")):
            grid = self.report(by, "各科优秀率", "--each", exam=exams)
            single = [self.texts(by, "各科优秀率", exam=exam) for exam in exams.split(",")]
            expected = []
            for exam, table in zip(exams.split(","), single):
                expected += [[exam] * grid["Cols"], *table]
            self.assertEqual(grid["TextMatrix"], expected)
            rows = len(single[0])
            self.assertEqual((grid["FixedRows"], grid["MergeCol"]), (0, [0]))
            self.assertIn(0, grid["MergeRow"])
            self.assertIn(rows + 1, grid["MergeRow"])

    def test_full_marks_do_not_add_up(self):
        together = self.texts("--item", "高分段、低分段", exam="期中,期末")
        each = self.texts("--item", "高分段、低分段", "--each", exam="期中,期末")
        self.assertEqual(together[3][:3], ["1班", "期中", "0"])
        self.assertEqual(each[4][:2], ["1班", "1"])

    def test_a_report_on_one_exam_is_not_asked_about(self):
        result = self.run_program("report", self.library, "--item", "考试人数", "--exam",
                                  "期中,期末", "--each")
        self.assertEqual(result.err, "")
        self.assertEqual([line.split("\t")[0] for line in result.out.splitlines()[:3]],
                         ["期中", "文科考试人数", "班级"])


class Analysis(Prepared):
    def analyze(self, *options, expect=DONE):
        return self.run_program("analyze", self.library, "--exam", "期中", *options,
                                expect=expect)

    def books(self):
        return self.analyze("--format", "json").json()["books"]

    def test_a_workbook_for_each_stream_is_saved_and_named(self):
        result = self.analyze("--out", "结果/一")
        self.assertEqual(result.err, "综合分析完毕！\n")
        paths = [self.folder / "结果/一" / f"期中综合分析({stream}).xlsx" for stream in "文理"]
        self.assertEqual(result.out, "".join(f"{path}\n" for path in paths))
        for stream, path in zip("文理", paths):
            book = openpyxl.load_workbook(path)
            self.assertEqual(book.sheetnames, [name.format(stream) for name in SHEETS])

    def test_the_saved_workbook_has_the_cells_of_the_json(self):
        self.analyze("--out", ".")
        for stream, content in self.books().items():
            book = openpyxl.load_workbook(self.folder / f"期中综合分析({stream}).xlsx")
            for name, sheet in content["content"].items():
                found = {f"{cell.row},{cell.column}": f"{cell.value}"
                         for row in book[name].iter_rows() for cell in row
                         if cell.value is not None}
                covered = {f"{row},{column}" for top, left, bottom, right in sheet["merges"]
                           for row in range(top, bottom + 1) for column in range(left, right + 1)
                           if (row, column) != (top, left)}
                self.assertEqual(found, {place: text for place, text in sheet["cells"].items()
                                         if place not in covered})
                merges = sorted([m.min_row, m.min_col, m.max_row, m.max_col]
                                for m in book[name].merged_cells.ranges)
                self.assertEqual(merges, sorted(sheet["merges"]))

    def test_the_content_as_json(self):
        self.change("update 设置表 set 加入综合分析='否' where 名称<>'各科最低分'")
        books = self.books()
        self.assertEqual(set(books), {"文", "理"})
        self.assertEqual(books["文"]["sheets"], [name.format("文") for name in SHEETS])
        self.assertEqual(set(books["文"]["content"]), set(books["文"]["sheets"]))
        scores = books["文"]["content"]["期中原始分和名次(文)"]
        self.assertEqual(set(scores), {"cells", "merges", "borders"})
        self.assertEqual([scores["cells"][f"3,{column}"] for column in range(1, 10)],
                         ["1", "2", "乙", "缺考", "60.5", "60.5", "缺考", "2", "2"])
        self.assertEqual((scores["merges"], scores["borders"]), ([], []))
        # In the pass of the second stream the first one's block lands on its last sheet.
        title = {"1,1": "文科各科最低分", "1,2": "文科各科最低分", "1,3": "文科各科最低分"}
        for name in ("考试分析", "对比分析"):
            sheet = books["文"]["content"][name]
            self.assertEqual({place: sheet["cells"].get(place) for place in title}, title)
            self.assertIn([1, 1, 1, 3], sheet["merges"])
            self.assertEqual(sheet["borders"], [[1, 1, 3, 3]])
        self.assertEqual(books["理"]["content"]["考试分析"]["borders"], [[1, 1, 4, 3]])
        self.assertEqual(books["理"]["content"]["对比分析"],
                         {"cells": {}, "merges": [], "borders": []})

    def test_a_setting_that_is_refused_is_an_error_and_the_rest_is_saved(self):
        self.set("各分数段人数", "")
        result = self.analyze("--out", "结果", expect=ERROR)
        self.assertEqual(result.err.count("分数段设置有问题\n单科分数段=0\n总分分数段=0\n"), 2)
        self.assertEqual(len(result.out.splitlines()), 2)

    def test_a_name_too_long_for_a_sheet_is_shown_and_the_workbook_opens(self):
        exam = "很长的考试名称" * 5
        book = self.book("文.xlsx", (*HEADINGS, "语文"), (1, 1, "甲", 150))
        self.import_exam(book, exam)
        result = self.run_program("analyze", self.library, "--exam", exam, "--out", ".",
                                  expect=ERROR)
        self.assertEqual(result.err.count(" - Sub ZHFX/Mdl_MDB"), 4)
        names = openpyxl.load_workbook(result.out.splitlines()[0]).sheetnames
        self.assertEqual(names, ["Sheet1", "Sheet2", "考试分析", "对比分析"])

    def test_streams_that_differ_in_signs_of_no_file_name_get_a_file_each(self):
        for stream, sign in (("文", "?"), ("理", "*")):
            for table in ("信息表", "考试名称表", "成绩表"):
                self.change(f"update {table} set 科类='班{sign}' where 科类='{stream}'")
        paths = self.analyze("--out", ".", expect=ERROR).out.splitlines()
        self.assertEqual([Path(path).name for path in paths],
                         ["期中综合分析(班_).xlsx", "期中综合分析(班_)_.xlsx"])
        students = [openpyxl.load_workbook(path).worksheets[0]["C2"].value for path in paths]
        self.assertEqual(len(set(students)), 2)

    def test_a_folder_that_cannot_be_made_is_an_error(self):
        (self.folder / "档").write_text("")
        result = self.analyze("--out", "档/下", expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertIn("不能建立文件夹", result.err)

    def test_existing_files_are_overwritten_by_force_only(self):
        written = Path(self.analyze("--out", ".").out.splitlines()[1])
        written.write_text("别的内容")
        result = self.analyze("--out", ".", expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertIn("期中综合分析(文).xlsx 已存在，没有覆盖。要覆盖它，请加上 --force。", result.err)
        self.assertEqual(written.read_text(), "别的内容")
        Path(written.parent / "期中综合分析(文).xlsx").unlink()
        self.analyze("--out", ".", expect=ERROR)
        self.assertFalse(Path(written.parent / "期中综合分析(文).xlsx").exists())
        self.analyze("--out", ".", "--force")
        self.assertEqual(len(openpyxl.load_workbook(written).sheetnames), 4)

    def test_a_library_without_streams_gives_no_workbook(self):
        self.change("delete from 信息表")
        self.assertEqual(self.analyze("--out", ".").out, "")
        self.assertEqual(self.books(), {})


class Usage(Prepared):
    def test_item_or_button_and_an_exam_are_needed(self):
        both = "--item 和 --button 必须给出其中一个。"
        self.wrong("report", self.library, "--exam", "期中", says=both)
        self.wrong("report", self.library, "--exam", "期中", "--item", "考试人数", "--button",
                   "考试人数", says=both)
        self.wrong("report", self.library, "--item", "考试人数", says="缺少选项 --exam。")
        self.wrong("report", self.library, "--item", "考试人数", "--exam", "",
                   says="缺少选项 --exam。")
        self.wrong("report", says="缺少参数。")

    def test_names_that_the_library_does_not_have(self):
        report = ("report", self.library, "--item")
        self.wrong(*report, "别的", "--exam", "期中", says="没有名为“别的”的报表。")
        self.wrong(*report, "考试人数 ", "--exam", "期中", says="没有名为“考试人数 ”的报表。")
        self.wrong(*report, "考试人数", "--exam", "期中,没有", says="成绩库里没有考试“没有”。")
        self.wrong(*report, "考试人数", "--exam", "期中", "--categories", "9",
                   says="成绩库里没有类别代码“9”。")
        self.wrong(*report, "考试人数", "--exam", "期中", "--format", "xml",
                   says="选项 --format 的值只能是：tsv、json")

    def test_analysis_of_nothing(self):
        analyze = ("analyze", self.library)
        self.wrong(*analyze, "--out", ".", says="缺少选项 --exam。")
        self.wrong(*analyze, "--exam", "期中", says="缺少选项 --out。")
        self.wrong(*analyze, "--exam", "没有", "--out", ".", says="成绩库里没有考试“没有”。")
        self.assertEqual(list(self.folder.glob("*综合分析*")), [])

    def test_a_library_that_is_not_there(self):
        for command in (("report", "--item", "考试人数"), ("analyze", "--out", ".")):
            result = self.run_program(command[0], self.folder / "没有.CJK", *command[1:],
                                      "--exam", "期中", expect=ERROR)
            self.assertEqual(result.out, "")
            self.assertNotEqual(result.err, "")


if __name__ == "__main__":
    yunshan.main()
