"""The score export with charts by mouse and keyboard, from the menu to a file.

The file is compared with what yunshan-cli tells of the same choices.
"""

import re
import sys
import zipfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import openpyxl
import yunshan

EXAMS = ("高一期中", "高一期末")
SUBJECTS = ("语文", "数学", "总分")
CLASSES = ("1", "2")
STUDENTS = 80
FINISHED = "成绩导出完毕！"


class ScoreExport(desktop.DesktopTest):
    def test_from_the_menu_to_a_file_with_charts(self):
        self.make_library(self.library, *EXAMS)
        self.cli("score", self.library, *EXAMS)
        self.start(self.library)
        self.running.window("frame", f"云杉学业册 - {self.library}")
        self.running.menu("p", "e")
        self.export()
        self.compare(self.saved())
        self.leave()

    def export(self):
        screen = self.running.window("dialog", "导出成绩到Excel")
        for caption, texts in (("考试名称", EXAMS), ("科目", SUBJECTS), ("班级", CLASSES)):
            screen.find("list", caption).choose(*texts)
        screen.find("check box", "学生信息单独一行").press()
        screen.find("check box", "添加班级平均分").press()
        screen.find("combo box", EXAMS[-1]).pick(EXAMS[0])
        screen.find("radio button", "绘制总分排名折线图(一人一页)").press()
        screen.find("push button", "导出").press()
        self.assertEqual(self.running.answer(), FINISHED)

    def saved(self):
        target = self.folder / "成绩.xlsx"
        self.running.window("frame", "工作簿1")
        self.desktop.press("F12")
        self.running.choose_file(target.with_suffix(""))
        self.running.window("frame", f"{target.name} - 工作簿")
        return target

    def leave(self):
        screen = self.running.bring_forward("dialog", "导出成绩到Excel")
        screen.find("push button", "退出").press()
        self.running.gone(screen)
        self.running.shown("frame", "成绩.xlsx - 工作簿")

    def compare(self, path):
        told = self.cli("export", self.library, "--exam", ",".join(EXAMS), "--subjects",
                        ",".join(SUBJECTS), "--classes", ",".join(CLASSES), "--info-row",
                        "--class-average", EXAMS[0], "--chart", "--format", "json").json()
        self.assertEqual(told["Messages"], [FINISHED])
        book = openpyxl.load_workbook(path)
        self.assertEqual(book.sheetnames, told["sheets"])
        sheet, content = book.worksheets[0], told["content"][told["sheets"][0]]
        self.assertHolds(sheet, content["cells"])
        self.assertEqual(sorted([block.min_row, block.min_col, block.max_row, block.max_col]
                                for block in sheet.merged_cells.ranges), sorted(content["merges"]))
        self.assertEqual([shown.id + 1 for shown in sheet.row_breaks.brk], content["breaks"])
        self.assertEqual(len(content["charts"]), STUDENTS)
        self.assertEqual([self.frame(chart.anchor) for chart in sheet._charts],
                         [chart["frame"] for chart in content["charts"]])
        self.assertEqual(self.shapes(path), [(shape["kind"], shape.get("text", ""))
                                             for shape in content["shapes"]])

    def assertHolds(self, sheet, cells):
        """The sheet has these texts and no others; numbers are stored as such."""
        saved = {f"{cell.row},{cell.column}": cell.value for row in sheet.iter_rows()
                 for cell in row if cell.value is not None}
        self.assertEqual(saved.keys(), cells.keys())
        for place, value in saved.items():
            expected = float(cells[place]) if isinstance(value, (int, float)) else cells[place]
            self.assertEqual(value, expected, place)
        self.assertGreater(sum(isinstance(value, (int, float)) for value in saved.values()),
                           STUDENTS * len(EXAMS))

    @staticmethod
    def frame(anchor):
        """The cells below a drawing, from 1; the last row and column have more than an edge of it."""
        begin, end = anchor._from, anchor.to
        return [begin.row + 1, begin.col + 1, end.row + (end.rowOff > 0),
                end.col + (end.colOff > 0)]

    @staticmethod
    def shapes(path):
        """Kind and text of each line and label, in the order in which they are drawn."""
        with zipfile.ZipFile(path) as package:
            drawing = package.read("xl/drawings/drawing1.xml").decode()
        found = re.findall("<xdr:(cxnSp|sp)[ >].*?</xdr:\\1>", drawing, re.S)
        labels = iter(re.findall("<a:t>(.*?)</a:t>", drawing))
        return [("line", "") if kind == "cxnSp" else ("label", next(labels)) for kind in found]


if __name__ == "__main__":
    desktop.main()
