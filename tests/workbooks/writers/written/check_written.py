#!/usr/bin/python3
"""The sample workbook as openpyxl reads it, and places where it may not be written.

check_written.py PROGRAM
"""

import datetime
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path
from xml.etree import ElementTree

import openpyxl

NOBODY = 65534
PROGRAM = ""
# Units of drawings in a point.
UNITS = 12700
# Twelve columns, of which the fourth is hidden, in points.
WIDTH_OF_CHART = (65 + 10 * 37) * .75
# Title and names of a chart, in points.
ABOVE_PLOT = 26 + 30
NAMES = {"xdr": "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing",
         "c": "http://schemas.openxmlformats.org/drawingml/2006/chart",
         "a": "http://schemas.openxmlformats.org/drawingml/2006/main"}


class Written(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.path = Path(cls.folder.name) / "样本.xlsx"
        subprocess.run([PROGRAM, cls.path], check=True)
        cls.book = openpyxl.load_workbook(cls.path)
        cls.report, cls.page, cls.hidden = cls.book.worksheets

    def test_sheets(self):
        self.assertEqual(self.book.sheetnames, ["考试分析", "导出", "Sheet3"])
        self.assertEqual([sheet.sheet_state for sheet in self.book], ["visible", "visible", "hidden"])
        self.assertEqual(self.book.active.title, "导出")

    def test_values_and_types(self):
        rows = [[cell.value for cell in row] for row in self.report["A1:C4"]]
        self.assertEqual(rows, [["考试人数", None, None], ["班级", "语文\n参试/缺考/总计", "数学"],
                                ["1班", "52/1/53", 85.5], ["2班", "0805", -1]])
        self.assertEqual(self.page["A2"].value, "<&\"'>")
        self.assertEqual(self.page["A3"].value, datetime.datetime(2009, 7, 31))
        self.assertEqual(self.page["B3"].value, datetime.datetime(2009, 7, 31, 8, 30))
        self.assertEqual(self.page["C3"].value, datetime.time(8, 30))
        self.assertIs(self.page["E3"].value, True)

    def test_names_that_begin_like_a_formula_stay_texts(self):
        for cell, name in zip(self.report[6], ["=1+1", "+张三", "-李四", "@王五"]):
            self.assertEqual((cell.value, cell.data_type, cell.number_format), (name, "s", "@"))

    def test_a_single_and_an_early_day(self):
        self.assertEqual(self.report["A7"].value, 89.7)
        self.assertEqual(self.report["B7"].value, datetime.datetime(1900, 1, 15))

    def test_merges(self):
        self.assertEqual([str(merge) for merge in self.report.merged_cells.ranges], ["A1:C1"])
        self.assertEqual([str(merge) for merge in self.page.merged_cells.ranges], ["A1:E1"])

    def test_borders(self):
        # openpyxl itself takes the lines inside a merge away.
        self.assertEqual([cell.border.top.style for cell in self.report["A1:C1"][0]], ["thin"] * 3)
        for row in self.report["A2:C4"]:
            for cell in row:
                border = cell.border
                sides = {side.style for side in (border.left, border.right, border.top, border.bottom)}
                self.assertEqual(sides, {"thin"}, cell.coordinate)
        for name in ("D1", "A5"):
            self.assertIsNone(self.report[name].border.left.style)

    def test_alignment_and_fonts(self):
        for name in ("A1", "A2", "C4"):
            self.assertEqual(self.report[name].alignment.horizontal, "center", name)
        self.assertTrue(self.report["B2"].alignment.wrap_text)
        self.assertFalse(self.report["A2"].alignment.wrap_text)
        self.assertEqual(self.report.column_dimensions["A"].alignment.horizontal, "center")
        self.assertEqual(self.report.column_dimensions["A"].max, 16384)
        self.assertEqual((self.report["A1"].font.b, self.report["A1"].font.sz), (True, 16))
        self.assertEqual((self.report["A2"].font.b, self.report["A2"].font.sz), (False, 11))
        self.assertEqual({self.report["A2"].font.name, self.page["D9"].font.name}, {"宋体"})
        self.assertEqual(self.page["A1"].alignment.vertical, "center")
        self.assertEqual(self.page["A2"].alignment.horizontal, "left")
        self.assertEqual(self.page["B2"].alignment.horizontal, "right")

    def test_sizes(self):
        columns = self.page.column_dimensions
        self.assertEqual((columns["A"].width, columns["B"].width), (7.5 + 5 / 8, 4 + 5 / 8))
        self.assertEqual((columns["E"].min, columns["E"].max), (5, 35))
        self.assertTrue(columns["D"].hidden)
        self.assertEqual(self.page.row_dimensions[2].height, 30)
        self.assertTrue(self.page.row_dimensions[4].hidden)
        self.assertEqual(self.page.sheet_format.defaultRowHeight, 13.5)
        self.assertEqual(self.report.row_dimensions[2].height, 40.5)
        self.assertIsNone(self.report.row_dimensions[3].height)

    def test_page(self):
        setup, margins = self.page.page_setup, self.page.page_margins
        self.assertEqual((setup.orientation, int(setup.paperSize)), ("landscape", 13))
        for margin in (margins.left, margins.right, margins.top, margins.bottom):
            self.assertAlmostEqual(margin, 1 / 2.54, places=6)
        self.assertEqual([mark.id for mark in self.page.row_breaks.brk], [31, 62])
        self.assertEqual(int(self.report.page_setup.paperSize), 9)
        self.assertAlmostEqual(self.report.page_margins.left, 0.7)

    def corner(self, marker):
        """Column, row, and how far the corner lies inside them, in points."""
        return (marker.col + 1, marker.row + 1, round(marker.colOff / UNITS, 2),
                round(marker.rowOff / UNITS, 2))

    def anchored(self, sheet):
        """The drawings of a sheet as (kind, corners, element), from the lowest to the uppermost."""
        number = self.book.worksheets.index(sheet)
        with zipfile.ZipFile(self.path) as parts:
            root = ElementTree.fromstring(parts.read(f"xl/drawings/drawing{number}.xml"))
        found = []
        for anchor in root:
            lower, upper, shape, _ = anchor
            corners = [[int(part.text) for part in corner] for corner in (lower, upper)]
            found.append((shape.tag.split("}")[1],
                          [(column + 1, row + 1, round(x / UNITS, 2), round(y / UNITS, 2))
                           for column, x, row, y in corners], shape))
        return found

    def test_picture(self):
        kind, corners, _ = self.anchored(self.page)[0]
        self.assertEqual((kind, corners), ("pic", [(1, 5, 0, 1), (1, 5, 1.5, 1.75)]))
        with zipfile.ZipFile(self.path) as parts:
            self.assertTrue(parts.read("xl/media/image1.png").startswith(b"\x89PNG"))

    def test_the_chart_ends_at_the_very_cells(self):
        chart, = self.page._charts
        self.assertEqual(self.corner(chart.anchor._from), (1, 14, 0, 0))
        self.assertEqual(self.corner(chart.anchor.to), (13, 31, 0, 0))

    def test_the_chart_shows_its_cells(self):
        chart, = self.page._charts
        series, = chart.series
        self.assertEqual(series.cat.strRef.f, "'导出'!$A$10:$A$12")
        self.assertEqual(series.val.numRef.f, "'导出'!$C$10:$C$12")
        self.assertEqual([(point.idx, point.v) for point in series.cat.strRef.strCache.pt],
                         [(0, "期中"), (1, "期末<&>"), (2, "月考")])
        self.assertEqual([(point.idx, point.v) for point in series.val.numRef.numCache.pt],
                         [(0, 100), (2, 120)])
        self.assertEqual(series.marker.symbol, "diamond")
        self.assertEqual((series.dLbls.showVal, series.dLbls.dLblPos), (True, "t"))

    def test_titles_and_axis_of_the_chart(self):
        chart, = self.page._charts
        for title, text, size in ((chart.title, "张三排名分析(共300人)", 1200),
                                  (chart.y_axis.title, "名次", 1500)):
            run, = title.tx.rich.p[0].r
            self.assertEqual((run.t, run.rPr.sz, run.rPr.b), (text, size, True))
        scaling = chart.y_axis.scaling
        self.assertEqual((scaling.min, scaling.max, scaling.orientation), (1, 300, "maxMin"))
        self.assertEqual(chart.y_axis.crosses, "autoZero")
        self.assertIsNone(chart.legend)

    def test_the_plot_is_white_in_a_thin_grey_frame(self):
        with zipfile.ZipFile(self.path) as parts:
            root = ElementTree.fromstring(parts.read("xl/charts/chart1.xml"))
        fill, frame = root.find("c:chart/c:plotArea/c:spPr", NAMES)
        self.assertEqual(fill.find("a:srgbClr", NAMES).get("val"), "FFFFFF")
        self.assertEqual(frame.find(".//a:srgbClr", NAMES).get("val"), "808080")
        self.assertEqual(frame.get("w"), "9525")

    def test_the_inside_of_the_plot_as_shares_of_the_chart(self):
        chart, = self.page._charts
        layout = chart.layout.manualLayout
        self.assertEqual((layout.layoutTarget, layout.xMode, layout.yMode), ("inner", "edge", "edge"))
        width, height = WIDTH_OF_CHART, 17 * 13.5
        for share, points in ((layout.x, (3 + 54) / width), (layout.y, (3 + ABOVE_PLOT) / height),
                              (layout.w, (width - 6 - 54 - 60) / width),
                              (layout.h, (height - 6 - ABOVE_PLOT - 12) / height)):
            self.assertAlmostEqual(share, points, places=5)

    def test_line_and_label_lie_on_the_chart_in_their_order(self):
        drawings = self.anchored(self.page)
        self.assertEqual([kind for kind, _, _ in drawings], ["pic", "graphicFrame", "cxnSp", "sp"])
        y = 13 * 13.5 + 3 + ABOVE_PLOT + 110.5 * (17 * 13.5 - 6 - ABOVE_PLOT - 12) / 300
        row, offset = int(y // 13.5), round(y % 13.5, 2)
        (_, (begin, end), line), (_, (corner, _), label) = drawings[2:]
        left, right = 3 + 54, WIDTH_OF_CHART - 3 - 60
        self.assertEqual(begin, (2, row + 1, left - 65 * .75, offset))
        self.assertEqual(end, (10, row + 1, right - (65 + 7 * 37) * .75, offset))
        self.assertEqual(corner, end)
        look = line.find("xdr:spPr/a:ln", NAMES)
        self.assertEqual(look.get("w"), "12700")
        self.assertEqual(look.find("a:prstDash", NAMES).get("val"), "dash")
        self.assertEqual(label.find(".//a:t", NAMES).text, "平均110.5 <&>")
        self.assertEqual(label.find(".//a:rPr", NAMES).get("sz"), "1000")
        self.assertEqual(label.find(".//a:bodyPr", NAMES).get("wrap"), "none")

    def test_a_sheet_of_lines_alone(self):
        drawings = self.anchored(self.hidden)
        self.assertEqual([kind for kind, _, _ in drawings], ["cxnSp"] * 4 + ["graphicFrame"])
        flips = [(place.get("flipH"), place.get("flipV"))
                 for place in (shape.find("xdr:spPr/a:xfrm", NAMES) for _, _, shape in drawings[:4])]
        self.assertEqual(flips, [(None, None), ("1", None), ("1", "1"), (None, "1")])
        colors = [shape.find(".//a:srgbClr", NAMES).get("val") for _, _, shape in drawings[:4]]
        self.assertEqual(colors, ["000000"] * 3 + ["C00000"])
        chart, = self.hidden._charts
        self.assertEqual(len(chart.series), 0)
        self.assertIsNone(chart.y_axis.scaling.max)

    def test_what_a_merge_covers_is_in_the_file(self):
        with zipfile.ZipFile(self.path) as parts:
            row = parts.read("xl/worksheets/sheet1.xml").split(b"</row>")[0]
        self.assertEqual(row.count(b"<v>0</v>"), 3)


class WithoutRights(unittest.TestCase):
    """The program as a user who may not write."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.place = self.folder / "place"
        self.place.mkdir()
        self.folder.chmod(0o755)
        self.program = shutil.copy2(PROGRAM, self.folder)
        self.target = self.place / "a.xlsx"
        self.target.write_bytes(b"older")

    @staticmethod
    def become_nobody():
        if os.getuid() == 0:
            os.setgroups([])
            os.setgid(NOBODY)
            os.setuid(NOBODY)

    def assertRefused(self, message):
        result = subprocess.run([self.program, self.target], capture_output=True, text=True,
                                preexec_fn=self.become_nobody)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, message.format(self.target) + "\n")
        self.assertEqual(self.target.read_bytes(), b"older")
        self.assertEqual([path.name for path in self.place.iterdir()], ["a.xlsx"])

    def test_a_folder_that_may_not_be_written(self):
        if os.getuid() == 0:
            os.chown(self.target, NOBODY, NOBODY)
        self.place.chmod(0o555)
        self.addCleanup(self.place.chmod, 0o755)
        self.assertRefused("无法写入文件 {}（没有权限）。")

    def test_a_file_that_may_not_be_written(self):
        self.place.chmod(0o777)
        self.target.chmod(0o444)
        self.assertRefused("无法保存 {}：原有的文件是只读的。")


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
