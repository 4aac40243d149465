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

import openpyxl

NOBODY = 65534
PROGRAM = ""


class Written(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        path = Path(cls.folder.name) / "样本.xlsx"
        subprocess.run([PROGRAM, path], check=True)
        cls.book = openpyxl.load_workbook(path)
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

    def test_picture(self):
        path = Path(self.folder.name) / "样本.xlsx"
        listing = subprocess.run(["unzip", "-l", path], capture_output=True, text=True)
        if listing.returncode == 127:
            self.skipTest("unzip is missing")
        self.assertIn("xl/media/image1.png", listing.stdout)

    def test_what_a_merge_covers_is_in_the_file(self):
        with zipfile.ZipFile(Path(self.folder.name) / "样本.xlsx") as parts:
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

    def assertRefused(self, reason):
        result = subprocess.run([self.program, self.target], capture_output=True, text=True,
                                preexec_fn=self.become_nobody)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, f"无法保存 {self.target}：{reason}\n")
        self.assertEqual(self.target.read_bytes(), b"older")
        self.assertEqual([path.name for path in self.place.iterdir()], ["a.xlsx"])

    def test_a_folder_that_may_not_be_written(self):
        if os.getuid() == 0:
            os.chown(self.target, NOBODY, NOBODY)
        self.place.chmod(0o555)
        self.addCleanup(self.place.chmod, 0o755)
        self.assertRefused("不能在这个文件夹中写文件，请检查权限和磁盘空间。")

    def test_a_file_that_may_not_be_written(self):
        self.place.chmod(0o777)
        self.target.chmod(0o444)
        self.assertRefused("原有的文件是只读的。")


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
