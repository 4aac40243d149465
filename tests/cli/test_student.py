"""One student from outside: his exams, his chart as values, as a picture and in a workbook; and the charts of a class."""

import re
import struct
import sys
import zipfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import openpyxl
import yunshan
from yunshan import DONE, ERROR, HEADINGS, USAGE

FINISHED = "导出完成！\n"
CHINESE, MATHS = 0xB4771F, 0x2CA02C
SHOW_TAG = " - Sub ShowGeRenCJ/FormGeRenChenJi"


class Scored(yunshan.ProgramTest):
    """Two scored exams of 甲 and 乙 (class 1, 文), 丙, 丁 and 戊 (理); 乙 was absent in 语文."""

    def setUp(self):
        super().setUp()
        self.make_scored_exams(best=90)

    def student(self, *options, expect=DONE):
        return self.run_program("student", self.library, *options, "--format", "json",
                                expect=expect).json()

    def chart(self, *options):
        return self.student("--id", "1", *options)["Chart"]

    def wrong(self, *arguments, says):
        result = self.run_program(*arguments, expect=USAGE)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith(says + "\n"), result.err)


class Exams(Scored):
    def test_tab_separated_text_is_the_default(self):
        result = self.run_program("student", self.library, "--id", "1")
        self.assertEqual(result.err, "")
        self.assertEqual(result.out, "考试名称\t语文\t数学\t总分\t语名\t数名\t总名\n"
                                     "期中\t90\t80\t170\t1\t1\t1\n"
                                     "期末\t90\t80\t170\t1\t1\t1\n")

    def test_json_holds_the_title_the_grid_and_the_messages(self):
        result = self.student("--id", "2")
        self.assertEqual(list(result), ["Chart", "Grid", "Messages", "Title"])
        self.assertEqual(result["Title"], "个人分析   -  乙 1 班 2 号 ，文")
        self.assertEqual(result["Messages"], [])
        self.assertEqual(result["Grid"],
                         {"Rows": 3, "Cols": 7, "FixedRows": 1, "MergeRow": [], "MergeCol": [],
                          "ColWidth": {"-1": 414, "0": 828},
                          "TextMatrix": [["考试名称", "语文", "数学", "总分", "语名", "数名", "总名"],
                                         ["期中", "缺考", "60.5", "60.5", "缺考", "2", "2"],
                                         ["期末", "缺考", "60.5", "60.5", "缺考", "2", "2"]]})

    def test_a_student_is_named_by_class_and_number_too(self):
        self.assertEqual(self.student("--class", "1", "--number", "2"), self.student("--id", "2"))

    def test_a_student_without_exams_keeps_the_heading_and_its_messages(self):
        self.add_students((1, 9, "新", "文"))
        result = self.student("--class", "1", "--number", "9", expect=ERROR)
        self.assertEqual(result["Grid"]["Rows"], 1)
        self.assertEqual(result["Title"], "个人分析   -  新 1 班 9 号 ，文")
        self.assertEqual(result["Messages"][0], "没有当前记录。" + SHOW_TAG)
        self.assertEqual(result["Messages"][1],
                         "没有当前记录。" + SHOW_TAG + "（同样的提示另有 2 条）")
        self.assertEqual(result["Chart"]["Dotted"], [])

    def test_unknown_students(self):
        self.wrong("student", self.library, "--id", "99", says="成绩库里没有 ID 为 99 的学生。")
        self.wrong("student", self.library, "--class", "1", "--number", "7",
                   says="成绩库里没有 1 班 7 号的学生。")
        self.wrong("student", self.library, "--id", "1 or 1=1", says="选项 --id 的值必须是数字。")
        self.wrong("student", self.library, says="缺少选项 --id。")
        self.wrong("student", self.library, "--class", "1", says="缺少选项 --number。")
        self.wrong("student", self.library, "--id", "1", "--class", "1",
                   says="--id 不能和 --class、--number 一起使用。")


class Chart(Scored):
    def test_all_of_it_in_twips(self):
        self.assertEqual(self.chart("--columns", "语文"), {
            "Width": 9000, "Height": 4000, "Frame": [500, 500, 8500, 3500],
            "Dotted": [[2500, 3500, 2500, 500], [6500, 3500, 6500, 500]],
            "Segments": [{"column": "语文", "x1": 2500, "y1": 2000, "x2": 6500, "y2": 2000,
                          "colour": CHINESE}],
            "Points": [{"column": "语文", "x": 2500, "y": 2000, "colour": CHINESE},
                       {"column": "语文", "x": 6500, "y": 2000, "colour": CHINESE}],
            "RankLabels": [{"text": "1", "tip": "语文年级名次: 1", "x": 2500, "bottom": 1900},
                           {"text": "1", "tip": "语文年级名次: 1", "x": 6500, "bottom": 1900}],
            "ExamLabels": [{"text": "期中", "x": 2500}, {"text": "期末", "x": 6500}],
            "Note": "共2人", "Name": "甲"})

    def test_the_first_column_alone_is_ticked_unless_told_otherwise(self):
        self.assertEqual(self.chart(), self.chart("--columns", "语文"))

    def test_columns_count_in_the_order_of_the_library(self):
        chart = self.chart("--columns", "数学,语文")
        self.assertEqual([(p["column"], p["colour"]) for p in chart["Points"]],
                         [("语文", CHINESE)] * 2 + [("数学", MATHS)] * 2)

    def test_no_column_leaves_frame_exams_and_name(self):
        chart = self.chart("--columns", "")
        self.assertEqual((chart["Points"], chart["Segments"], chart["RankLabels"]), ([], [], []))
        self.assertEqual((chart["Note"], chart["Name"]), ("", "甲"))
        self.assertEqual(len(chart["Dotted"]), 2)

    def test_ranks_in_the_class_have_its_head_count(self):
        chart = self.student("--id", "3", "--rank", "班名")["Chart"]
        self.assertEqual(chart["Note"], "共2人")
        self.assertEqual(chart["RankLabels"][0]["tip"], "语文班级名次: 2")
        self.assertEqual(self.student("--id", "3")["Chart"]["Note"], "共3人")

    def test_an_absent_exam_has_no_point(self):
        chart = self.student("--id", "2")["Chart"]
        self.assertEqual((chart["Points"], chart["Note"]), ([], "共2人"))

    def test_another_size(self):
        chart = self.chart("--size", "3000x2000")
        self.assertEqual(chart["Frame"], [500, 500, 2500, 1500])
        self.assertEqual([p["y"] for p in chart["Points"]], [1000, 1000])

    def test_an_exam_with_an_apostrophe_is_told_and_has_no_point(self):
        self.change("update 成绩表 set 考试名称='O''Neil' where 考试名称='期末'")
        result = self.student("--id", "1", expect=ERROR)
        self.assertEqual([p["x"] for p in result["Chart"]["Points"]], [2500])
        self.assertEqual(result["Chart"]["ExamLabels"][1]["text"], "O'\nNeil")
        self.assertTrue(result["Messages"][0].endswith(" - Function GetMC/Mdl_MDB"), result)

    def test_a_colour_that_is_no_number_is_told(self):
        self.change("update 颜色表 set 颜色='红' where ID=1")
        result = self.student("--id", "1", expect=ERROR)
        self.assertEqual(result["Messages"], ["颜色表中 1 号的颜色“红”不是颜色的数值。"
                                              " - Private Sub Form_Load/FormGeRenChenJi"])
        self.assertEqual(result["Chart"]["Points"][0]["colour"], 0)

    def test_wrong_choices(self):
        for option, value, says in (
                ("--columns", "体育", "成绩库里没有科目或总分“体育”。"),
                ("--rank", "校名", "选项 --rank 的值只能是：年名、班名"),
                ("--size", "9000", "选项 --size 的值是宽x高，例如 9000x4000，各在 1 到 100000 之间。"),
                ("--size", "0x5", "选项 --size 的值是宽x高，例如 9000x4000，各在 1 到 100000 之间。"),
                ("--size", "200000x5",
                 "选项 --size 的值是宽x高，例如 9000x4000，各在 1 到 100000 之间。"),
                ("--picture", "图.jpg", "选项 --picture 的文件只能是 .png、.bmp 或 .pdf。"),
                ("--out", "", "缺少选项 --out。"),
                ("--format", "csv", "选项 --format 的值只能是：tsv、json")):
            self.wrong("student", self.library, "--id", "1", option, value, says=says)
        self.wrong("student", self.library, "--id", "1", "--with-chart", says="缺少选项 --out。")


class Columns(yunshan.ProgramTest):
    def test_behind_the_fifteenth_the_colours_begin_again_after_one_message(self):
        subjects = [f"科{chr(0x4E00 + i)}" for i in range(18)]
        self.make_library(*subjects)
        self.add_students((1, 1, "甲", "理"))
        book = self.book("成绩.xlsx", (*HEADINGS, *subjects), (1, 1, "甲", *[60] * 18))
        marks = ",".join(f"{subject}=100" for subject in subjects)
        self.import_exam(book, "期中", "--full-marks", marks)
        self.run_program("score", self.library, "期中")
        result = self.run_program("student", self.library, "--id", "1", "--format", "json",
                                  "--columns", ",".join(subjects), expect=ERROR).json()
        colours = [p["colour"] for p in result["Chart"]["Points"]]
        self.assertEqual(colours[15:], colours[:3])
        self.assertEqual(len(set(colours[:15])), 15)
        self.assertEqual(result["Messages"], ["颜色表只有 0 到 15 号颜色，没有 16 号。"
                                              " - Private Sub Form_Load/FormGeRenChenJi"])
        self.assertEqual(self.rows("select count(*) from 颜色表"), [(16,)])


class Files(Scored):
    def picture(self, name, *options):
        path = self.folder / name
        result = self.run_program("student", self.library, "--id", "1", "--picture", path, *options)
        self.assertEqual(result.err, "")
        self.assertTrue(result.out.startswith("考试名称\t"))
        return path.read_bytes()

    def test_a_picture_has_the_size_of_the_chart_on_a_screen(self):
        png = self.picture("图.png")
        self.assertEqual(png[:8], b"\x89PNG\r\n\x1a\n")
        self.assertEqual(struct.unpack(">II", png[16:24]), (600, 267))
        bmp = self.picture("图.bmp", "--size", "1500x3000")
        self.assertEqual(bmp[:2], b"BM")
        self.assertEqual(struct.unpack("<ii", bmp[18:26]), (100, 200))
        self.assertEqual(self.picture("图.PDF")[:4], b"%PDF")

    def test_no_display_is_needed_and_none_is_asked(self):
        environment = yunshan.environment(self.folder) | {"QT_QPA_PLATFORM": "xcb",
                                                          "DISPLAY": ":4711"}
        self.run_program("student", self.library, "--id", "1", "--picture", "图.png",
                         env=environment)
        self.assertTrue((self.folder / "图.png").exists())

    def test_names_are_more_than_rows_of_boxes(self):
        shapes = set()
        for name in ("甲", "乙", "龘"):
            self.change("update 成绩表 set 姓名=? where id=1", name)
            shapes.add(self.picture("图.png", "--force", "--columns", ""))
        self.assertEqual(len(shapes), 3)

    def test_a_workbook_holds_the_exams_and_the_chart_if_wanted(self):
        for options, pictures in (((), 0), (("--with-chart",), 1)):
            path = self.folder / f"成绩{pictures}.xlsx"
            result = self.run_program("student", self.library, "--id", "2", "--out", path, *options)
            self.assertEqual(result.err, FINISHED)
            sheet = openpyxl.load_workbook(path).worksheets[0]
            rows = [[cell.value for cell in row][:5] for row in sheet.iter_rows()]
            self.assertEqual(rows, [["乙", None, None, None, None],
                                    ["考试名称", "语文", "数学", "总分", "语名"],
                                    ["期中", "缺考", 60.5, 60.5, "缺考"],
                                    ["期末", "缺考", 60.5, 60.5, "缺考"]])
            self.assertEqual(len(self.anchors(path)), pictures)
            self.assertEqual(sheet["G4"].border.bottom.style, "thin")
            self.assertIsNone(sheet["A1"].border.top.style)
        self.assertEqual(self.anchors(path), [("0", "0", "4", "12700")])

    def anchors(self, path):
        """Column, its offset, row and its offset, from 0, of the corner of each bitmap."""
        with zipfile.ZipFile(path) as package:
            parts = package.namelist()
            drawings = [package.read(part).decode() for part in parts if "drawings/drawing" in part]
            self.assertEqual(len([part for part in parts if part.endswith(".bmp")]), len(drawings))
        pattern = "<xdr:from>" + "".join(f"<xdr:{name}>(\\d+)</xdr:{name}>"
                                         for name in ("col", "colOff", "row", "rowOff"))
        return [corner for drawing in drawings for corner in re.findall(pattern, drawing)]

    def test_the_message_of_the_workbook_stands_in_the_object(self):
        result = self.student("--id", "1", "--out", self.folder / "成绩.xlsx")
        self.assertEqual(result["Messages"], ["导出完成！"])

    def test_files_that_exist_are_refused(self):
        for option, name in (("--picture", "图.png"), ("--out", "成绩.xlsx")):
            path = self.folder / name
            path.write_bytes(b"old")
            result = self.run_program("student", self.library, "--id", "1", option, path,
                                      expect=ERROR)
            self.assertEqual((result.out, result.err),
                             ("", f"文件 {path} 已存在，没有覆盖。要覆盖它，请加上 --force。\n"))
            self.assertEqual(path.read_bytes(), b"old")
            self.run_program("student", self.library, "--id", "1", option, path, "--force")
            self.assertNotEqual(path.read_bytes(), b"old")

    def test_the_library_is_not_replaced_even_by_force(self):
        before = self.library.read_bytes()
        result = self.run_program("student", self.library, "--id", "1", "--out", self.library,
                                  "--force", expect=ERROR)
        self.assertEqual((result.out, result.err),
                         ("", f"文件 {self.library} 正在使用，不能覆盖。\n"))
        self.assertEqual(self.library.read_bytes(), before)

    def test_a_folder_that_is_not_there_is_told(self):
        for option, name in (("--picture", "图.png"), ("--out", "成绩.xlsx")):
            result = self.run_program("student", self.library, "--id", "1", option,
                                      self.folder / "没有" / name, expect=ERROR)
            self.assertIn(str(self.folder / "没有" / name), result.err)
            self.assertEqual(result.out, "")


class ClassCharts(Scored):
    def charts(self, target, *options, expect=DONE):
        return self.run_program("class-charts", self.library, "--class", "1", "--out", target,
                                *options, expect=expect)

    def test_a_pdf_has_a_page_for_each_student(self):
        path = self.folder / "一班.pdf"
        result = self.charts(path, "--columns", "语文,总分", "--rank", "班名")
        self.assertEqual((result.out, result.err), (f"{path}\n", FINISHED))
        self.assertEqual(path.read_bytes().count(b"/Type /Page\n"), 2)

    def test_a_folder_has_a_picture_for_each_student(self):
        result = self.charts("图")
        names = ["1班1号甲.png", "1班2号乙.png"]
        self.assertEqual(result.out.splitlines(), [str(self.folder / "图" / n) for n in names])
        self.assertEqual(sorted(path.name for path in (self.folder / "图").iterdir()), names)

    def test_what_exists_is_kept_without_force(self):
        for target, says in (("一班.pdf", "已存在，没有覆盖。要覆盖它，请加上 --force。"),
                             ("图", "图片没有导出。要覆盖同名的图片，请加上 --force。")):
            self.charts(target)
            before = self.files(target)
            result = self.charts(target, "--columns", "总分", expect=ERROR)
            self.assertEqual(result.out, "")
            self.assertTrue(result.err.endswith(says + "\n"), result.err)
            self.assertEqual(self.files(target), before)
            self.charts(target, "--columns", "总分", "--force")
            self.assertNotEqual(self.files(target), before)

    def files(self, target):
        path = self.folder / target
        return [file.read_bytes() for file in (sorted(path.iterdir()) if path.is_dir() else [path])]

    def test_a_place_that_takes_no_file_is_told(self):
        (self.folder / "文件").write_bytes(b"old")
        for target in ("文件", "文件/图", "文件/一班.pdf"):
            result = self.charts(target, expect=ERROR)
            self.assertEqual(result.out, "")
            self.assertIn(str(self.folder / "文件"), result.err)
        self.assertEqual((self.folder / "文件").read_bytes(), b"old")

    def test_wrong_choices(self):
        command = ("class-charts", self.library)
        self.wrong(*command, "--out", "图", says="缺少选项 --class。")
        self.wrong(*command, "--class", "1", says="缺少选项 --out。")
        self.wrong(*command, "--class", "9", "--out", "图", says="成绩库里没有班级“9”。")
        self.wrong(*command, "--class", "1", "--out", "图", "--columns", "体育",
                   says="成绩库里没有科目或总分“体育”。")
        self.assertFalse((self.folder / "图").exists())

    def test_a_class_of_sixty_has_sixty_pages(self):
        self.add_students(*((5, number, f"学生{number}", "理") for number in range(1, 61)))
        self.run_program("class-charts", self.library, "--class", "5", "--out", "五班.pdf")
        pages = re.findall(rb"/Type /Page\b", (self.folder / "五班.pdf").read_bytes())
        self.assertEqual(len(pages), 60)

    def test_a_stream_that_is_wrong_hides_no_class(self):
        self.add_students((5, 1, "甲", "理"), (6, 1, "乙", "理"))
        self.change("update 信息表 set 科类='艺' where 班级=5")
        result = self.run_program("class-charts", self.library, "--class", "6", "--out", "六班.pdf",
                                  expect=ERROR)
        self.assertIn("科类设置不正确", result.err)
        self.assertTrue((self.folder / "六班.pdf").exists())


class NothingYet(yunshan.ProgramTest):
    def test_a_library_without_exams(self):
        self.make_library("语文", "总分")
        self.add_students((1, 1, "甲", "理"))
        self.run_program("class-charts", self.library, "--class", "1", "--out", "一班.pdf")
        result = self.run_program("student", self.library, "--id", "1", expect=ERROR)
        self.assertEqual(result.out, "考试名称\t语文\t总分\t语名\t总名\n")
        self.assertIn("成绩库里还没有考试，导入考试以后才有成绩和名次可以分析。", result.err)


if __name__ == "__main__":
    yunshan.main()
