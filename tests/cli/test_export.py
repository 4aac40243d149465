"""The score export from outside: what it writes, as JSON and as a file, and what it refuses."""

import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import openpyxl
import yunshan
from yunshan import DONE, ERROR, USAGE

FINISHED = "成绩导出完毕！"
CHOICE = ("--exam", "期中,期末", "--subjects", "语文,总分", "--classes", "1,2")


def row(cells, number, columns):
    return [cells.get(f"{number},{column}", "") for column in range(1, columns + 1)]


class Prepared(yunshan.ProgramTest):
    """Two scored exams of classes 1 (文), 2 and 3 (理)."""

    def setUp(self):
        super().setUp()
        self.make_scored_exams(best=90)

    def export(self, *options, choice=CHOICE, expect=DONE):
        return self.run_program("export", self.library, *choice, *options, expect=expect)

    def json(self, *options, choice=CHOICE, expect=DONE):
        return self.export("--format", "json", *options, choice=choice, expect=expect).json()

    def sheet(self, *options, **arguments):
        return self.json(*options, **arguments)["content"]["Sheet1"]

    def cells(self, *options, **arguments):
        return self.sheet(*options, **arguments)["cells"]


class Json(Prepared):
    def test_all_that_the_workbook_holds(self):
        book = self.json("--info-row")
        self.assertEqual(set(book), {"sheets", "content", "Messages"})
        self.assertEqual((book["sheets"], book["Messages"]),
                         (["Sheet1", "Sheet2", "Sheet3"], [FINISHED]))
        sheet = book["content"]["Sheet1"]
        self.assertEqual(set(sheet), {"cells", "merges", "borders", "widths", "breaks", "page",
                                      "charts", "shapes"})
        self.assertEqual(sheet["cells"]["1,1"], "1 班1 号：甲")
        self.assertEqual(row(sheet["cells"], 2, 5), ["考试名称", "语文", "语名", "总分", "总名"])
        self.assertEqual(row(sheet["cells"], 3, 5), ["期中", "90", "1", "170", "1"])
        self.assertEqual(sheet["cells"]["7,1"], "1 班2 号：乙")
        self.assertEqual(row(sheet["cells"], 9, 5), ["期中", "-1", "-1", "60.5", "2"])
        self.assertEqual(sheet["merges"][:2], [[1, 1, 1, 5], [7, 1, 7, 5]])
        self.assertEqual(sheet["borders"][:2], [[2, 1, 4, 5], [8, 1, 10, 5]])
        self.assertEqual([sheet["widths"][str(column)] for column in (1, 2, 4, 7, 35)],
                         [7.5, 4, 5.75, 5.25, 4])
        self.assertEqual(len(sheet["widths"]), 35)
        self.assertEqual((sheet["page"]["orientation"], sheet["page"]["paper"]), (2, 13))
        for margin in sheet["page"]["margins"]:
            self.assertAlmostEqual(margin, 28.346, places=3)
        self.assertEqual((sheet["breaks"], sheet["charts"], sheet["shapes"]), ([], [], []))

    def test_a_chart_for_each_student(self):
        sheet = self.sheet("--chart", "--info-row")
        self.assertEqual(sheet["breaks"], [31, 62, 93, 124])
        self.assertEqual(len(sheet["charts"]), 4)
        self.assertEqual([shape["kind"] for shape in sheet["shapes"]], ["line", "label"] * 4)
        chart, line, label = sheet["charts"][1], *sheet["shapes"][2:4]
        self.assertEqual(chart["frame"], [36, 1, 61, 12])
        self.assertEqual(chart["categories"], [[34, 1], [35, 1]])
        self.assertEqual(chart["values"], [[34, 5], [35, 5]])
        told = ("title", "valueTitle", "reversed", "min", "max", "dataLabels")
        self.assertEqual([chart[key] for key in told],
                         ["乙排名分析(共2人)", "名次", True, 1, 2, True])
        self.assertEqual((chart["left"], chart["top"]), (0, 35 * 13.5))
        inside = chart["inside"]
        self.assertAlmostEqual(line["x1"], 3 + inside["left"])
        self.assertAlmostEqual(line["y1"], chart["top"] + 3 + inside["top"] + inside["height"])
        self.assertAlmostEqual(line["x2"] - line["x1"], inside["width"])
        self.assertEqual((line["y2"], line["dash"], line["weight"]), (line["y1"], 4, 1))
        self.assertEqual((label["x"], label["y"], label["w"], label["h"], label["text"]),
                         (line["x2"], line["y2"], 20, 12, "平均2"))

    def test_both_averages_have_the_label_and_the_exam_of_the_classs(self):
        cells = self.cells("--info-row", "--class-average", "期中", "--grade-average", "期末",
                           choice=("--exam", "期末", "--subjects", "语文", "--classes", "2"))
        self.assertEqual([row(cells, number, 3) for number in (3, 4, 5)],
                         [["期末", "70", "3"], ["期中班平", "72.5", ""], ["期中班平", "75", ""]])

    def test_the_grades_average_alone(self):
        options = ("--info-row", "--grade-average", "期末")
        choice = ("--exam", "期末", "--subjects", "语文", "--classes", "2")
        result = self.export("--format", "json", *options, choice=choice)
        self.assertIn("只勾选了年级平均分", result.err)
        book = result.json()
        self.assertEqual(book["Messages"], [FINISHED])
        self.assertEqual(row(book["content"]["Sheet1"]["cells"], 4, 3), ["选择考试班平", "0", ""])
        result = self.export("--format", "json", *options, "--grade-by-own-exam", choice=choice)
        self.assertEqual(result.err, FINISHED + "\n")
        self.assertEqual(row(result.json()["content"]["Sheet1"]["cells"], 4, 3),
                         ["期末年平", "75", ""])

    def test_exams_subjects_and_classes_count_in_the_order_of_their_lists(self):
        self.assertEqual(self.json("--exam", "期末,期中", "--subjects", "总分,语文",
                                   "--classes", "2,1", choice=()), self.json())

    def test_blank_rows_as_typed(self):
        for text, second in (("-3", 7), ("abc", 4), ("0", 4)):
            with self.subTest(text):
                self.assertEqual(self.cells(f"--blank-rows={text}")[f"{second},1"], "考试名称")

    def test_columns_stand_for_the_saved_list(self):
        self.change("insert into 自定义显示表 (项目名称, 显示项目) values ('导出成绩False','姓名')")
        self.assertEqual(row(self.cells(), 1, 2), ["姓名", ""])
        book = self.json("--columns", "语文,物理,考试名称")
        self.assertEqual(row(book["content"]["Sheet1"]["cells"], 1, 3), ["语文", "考试名称", ""])
        self.assertEqual(book["Messages"], ["成绩表里没有列 物理，没有导出。", FINISHED])

    def test_a_student_without_rows_has_a_chart_without_data(self):
        self.change("delete from 成绩表 where 姓名='乙'")
        sheet = self.sheet("--chart", expect=ERROR)
        chart = sheet["charts"][1]
        self.assertEqual((chart["title"], chart["categories"], chart["values"]),
                         ("乙排名分析(共2人)", [], []))
        self.assertEqual(sheet["shapes"][3]["text"], "平均0")

    def test_one_student_in_the_grade(self):
        self.change("delete from 信息表 where 姓名='乙'")
        path = self.folder / "成绩.xlsx"
        sheet = self.sheet("--chart", "--out", path)
        self.assertEqual((sheet["charts"][0]["min"], sheet["charts"][0]["max"]), (1, 1))
        scaling = openpyxl.load_workbook(path)["Sheet1"]._charts[0].y_axis.scaling
        self.assertEqual((scaling.min, scaling.max), (1, None))

    def test_a_list_without_the_rank_gives_charts_without_data(self):
        result = self.export("--chart", "--columns", "考试名称,语文", "--format", "json",
                             expect=ERROR)
        sheet = result.json()["content"]["Sheet1"]
        self.assertEqual((sheet["charts"][0]["categories"], sheet["charts"][0]["values"]),
                         ([], []))
        self.assertEqual({shape["text"] for shape in sheet["shapes"] if shape["kind"] == "label"},
                         {"平均0"})
        self.assertEqual(len(result.json()["Messages"]), 2)

    def test_students_without_rows_cost_one_message_with_its_count(self):
        self.change("delete from 成绩表 where 班级=2")
        result = self.export("--format", "json", expect=ERROR)
        self.assertEqual(result.json()["Messages"][0],
                         "没有当前记录。 - Private Sub Command1_Click/FormDaoChu")
        self.assertIn("（同样的提示另有 1 条）", result.err)
        self.assertEqual(result.json()["content"]["Sheet1"]["cells"]["11,1"], "考试名称")

    def test_students_stay_together_where_asked(self):
        self.assertEqual(self.sheet("--keep-together", "--blank-rows", "27")["breaks"],
                         [31, 61, 91])

    def test_a_page_that_overflows_is_told(self):
        for number in range(30):
            self.change("insert into 成绩表 (id, 考试名称, 科类, 总分年名) "
                        "select ID, '期中', 科类, 1 from 信息表 where 姓名='甲'")
        self.assertEqual(self.json("--chart")["Messages"],
                         ["有 1 页放不下成绩和图。请减少考试后重新导出。", FINISHED])


class Files(Prepared):
    def test_saves_and_prints_the_path(self):
        path = self.folder / "成绩.xlsx"
        result = self.export("--out", "成绩.xlsx", "--info-row")
        self.assertEqual((result.out, result.err), (f"{path}\n", FINISHED + "\n"))
        sheet = openpyxl.load_workbook(path)["Sheet1"]
        self.assertEqual([cell.value for cell in sheet[3]][:5], ["期中", 90, 1, 170, 1])
        self.assertEqual(sheet.page_setup.orientation, "landscape")

    def test_saves_the_charts_and_the_page_breaks(self):
        path = self.folder / "成绩.xlsx"
        self.export("--chart", "--out", path)
        sheet = openpyxl.load_workbook(path)["Sheet1"]
        self.assertEqual([shown.id for shown in sheet.row_breaks.brk], [30, 61, 92, 123])
        self.assertEqual(len(sheet._charts), 4)
        series = sheet._charts[1].series[0]
        self.assertEqual((series.cat.strRef.f, series.val.numRef.f),
                         ("'Sheet1'!$A$33:$A$34", "'Sheet1'!$H$33:$H$34"))
        self.assertEqual(sheet._charts[1].y_axis.scaling.orientation, "maxMin")

    def test_a_file_is_overwritten_by_force_only(self):
        path = self.folder / "成绩.xlsx"
        path.write_text("mine")
        result = self.export("--out", path, expect=ERROR)
        self.assertIn("已存在，没有覆盖。要覆盖它，请加上 --force。", result.err)
        self.assertEqual((result.out, path.read_text()), ("", "mine"))
        self.export("--out", path, "--force")
        self.assertIn("Sheet1", openpyxl.load_workbook(path).sheetnames)

    def test_what_is_no_regular_file_is_not_replaced_even_by_force(self):
        pipe, link = self.folder / "pipe.xlsx", self.folder / "link.xlsx"
        os.mkfifo(pipe)
        link.symlink_to(self.folder / "gone.xlsx")
        for place in (pipe, link, self.folder):
            with self.subTest(place.name):
                result = self.export("--out", place, "--force", expect=ERROR)
                self.assertIn("不是普通文件，不能覆盖。", result.err)
        self.assertTrue(pipe.is_fifo() and link.is_symlink())

    def test_no_score_library_is_replaced_even_by_force(self):
        path = self.folder / "另一个.xlsx"
        library = self.library.read_bytes()
        for content in (library, library[:200], b"\0\1\0\0Standard Jet DB\0 and more"):
            with self.subTest(content[:20]):
                path.write_bytes(content)
                result = self.export("--out", path, "--force", expect=ERROR)
                self.assertEqual((result.out, result.err), ("", f"{path} 是成绩库，不能覆盖。\n"))
                self.assertEqual(path.read_bytes(), content)

    def test_saves_and_prints_the_content(self):
        path = self.folder / "成绩.xlsx"
        self.assertEqual(self.json("--out", path)["sheets"], openpyxl.load_workbook(path).sheetnames)

    def test_a_place_that_cannot_be_written_is_told(self):
        result = self.export("--out", self.folder / "没有" / "成绩.xlsx", expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err)


class Refusals(Prepared):
    def wrong(self, *arguments, says):
        result = self.run_program("export", self.library, *arguments, expect=USAGE)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith(says + "\n"), result.err)

    def test_names_that_the_library_does_not_have(self):
        json = ("--format", "json")
        for name, value, says in (("--exam", "期中,月考", "成绩库里没有考试“月考”。"),
                                  ("--subjects", "物理", "成绩库里没有科目“物理”。"),
                                  ("--classes", "1,9", "成绩库里没有班级“9”。")):
            with self.subTest(name):
                options = list(CHOICE)
                options[options.index(name) + 1] = value
                self.wrong(*options, *json, says=says)
        for name in ("--class-average", "--grade-average"):
            self.wrong(*CHOICE, *json, name, "O'Neil", says="成绩库里没有考试“O'Neil”。")

    def test_options_that_are_missing_or_do_not_go_together(self):
        self.wrong(*CHOICE[2:], "--format", "json", says="缺少选项 --exam。")
        self.wrong(*CHOICE[:4], "--format", "json", says="缺少选项 --classes。")
        self.wrong(*CHOICE, says="缺少选项 --out。")
        self.wrong(*CHOICE, "--format", "paths", says="缺少选项 --out。")
        self.wrong(*CHOICE, "--format", "json", "--chart", "--blank-rows", "2",
                   says="--blank-rows 和 --chart 只能给出其中一个。")

    def test_a_stopped_export_prints_its_message_alone(self):
        for options, says in (
                (("--exam", "", *CHOICE[2:]), "请选择 要导出成绩的 考试名称！"),
                ((*CHOICE[:2], "--subjects", "", *CHOICE[4:]), "请选择要导出成绩的 科目！"),
                ((*CHOICE[:4], "--classes", "", "--grade-average", "期末"),
                 "请选择 要导出成绩的 班级！"),
                ((*CHOICE[:2], "--subjects", "语文", *CHOICE[4:], "--chart"),
                 "没有选择总分，不能根据总分绘图！")):
            with self.subTest(says):
                path = self.folder / "成绩.xlsx"
                result = self.export("--out", path, choice=options, expect=ERROR)
                self.assertEqual((result.out, result.err), ("", says + "\n"))
                self.assertFalse(path.exists())

    def test_a_library_without_exams(self):
        empty = self.folder / "空.CJK"
        self.run_program("new", empty, "--subjects", "语文,总分")
        result = self.run_program("export", empty, "--exam", "", "--subjects", "语文", "--classes",
                                  "", "--format", "json", expect=ERROR)
        self.assertEqual((result.out, result.err), ("", "请选择 要导出成绩的 考试名称！\n"))

    def test_the_library_stays_as_it_was(self):
        before = yunshan.file_hash(self.library)
        self.json("--chart", "--class-average", "期中")
        self.assertUntouched(before)


if __name__ == "__main__":
    yunshan.main()
