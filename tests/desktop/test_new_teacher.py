"""The road of a new teacher by mouse and keyboard, from no library to a saved analysis.

What the windows show is compared with what yunshan-cli computes from the same library.
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import openpyxl
import yunshan
from openpyxl.cell import MergedCell

EXAM = "高一期中"
SUBJECTS = ("语文", "数学", "英语", "物理", "化学", "生物", "政治", "历史", "地理", "总分",
            "文科总分", "理科总分")
IMPORTED = "导入完成！"
SUBJECTS_OF_A_STREAM = 6
WINDOW_SIZE = (1100, 640)
ROWS_COMPARED = (0, 1, 2, 40, 119, 240)


def rows_of(text):
    return [line.split("\t") for line in text.splitlines()]


class NewTeacher(desktop.DesktopTest):
    def test_from_no_library_to_a_saved_analysis(self):
        self.start()
        self.make_the_library()
        self.import_students()
        self.import_exam()
        self.compute_totals()
        self.browse()
        self.run_statistics()
        self.analyze()
        self.save_one_analysis()
        self.end_and_start_again()

    def workbench(self):
        return self.running.main_window().find("filler", "基本信息")

    def command(self, name):
        self.workbench().find("push button", name).press()

    def make_the_library(self):
        self.running.menu("f", "n")
        screen = self.running.window("dialog", "新建成绩库")
        screen.find("list", "请为新成绩库选择科目").choose(*SUBJECTS)
        screen.find("push button", "确定").press()
        self.running.choose_file(self.library.with_suffix(""))
        self.assertEqual(self.running.answer(), "新建数据库成功，现在将设置学生信息。")
        self.assertTrue(self.library.is_file())

    def import_students(self):
        screen = self.running.window("dialog", "导入学生信息")
        screen.find("push button", "浏览").press()
        self.running.choose_file(yunshan.DEMO / "学生名单.xlsx")
        screen = self.running.window("dialog", "导入学生信息")
        self.assertEqual(screen.find("combo box").name, "学生信息")
        self.assertIn("学生名单.xlsx - 工作簿", self.running.titles())
        screen.find("push button", "导入").press()
        self.assertEqual(self.running.answer(), IMPORTED)
        self.assertNotIn("学生名单.xlsx - 工作簿", self.running.titles())
        screen.find("push button", "退出").press()
        self.running.gone(screen)
        behind = self.running.window("dialog", "新建成绩库")
        behind.find("push button", "取消").press()
        self.running.gone(behind)
        self.assertEqual(self.running.main_window().name, f"云杉学业册 - {self.library}")
        self.assertEqual(yunshan.query(self.library, "select count(*) from 信息表"), [(240,)])

    def import_exam(self):
        self.command("导入考试")
        screen = self.running.shown("dialog", "导入考试成绩")
        screen.find("push button", "浏览").press()
        self.running.choose_file(yunshan.DEMO / f"{EXAM}.xlsx")
        for stream in ("文", "理"):
            screen = self.running.shown("dialog", "导入考试成绩")
            sheet, name = screen.all("combo box")
            sheet.pick(f"{stream}科")
            name.find("text").write(EXAM)
            screen.find("push button", "导入").press()
            self.confirm_full_marks(f"{stream}科：{EXAM}")
            self.assertEqual(self.running.answer(), IMPORTED)
        screen = self.running.shown("dialog", "导入考试成绩")
        screen.find("push button", "退出").press()
        self.running.gone(screen)

    def confirm_full_marks(self, heading):
        """The first Enter opens the first cell, one more each goes on, and the last one closes."""
        marks = self.running.window("dialog", "输入各科满分")
        self.assertIn(heading, marks.texts())
        table = marks.find("table")
        self.assertEqual(table.size(), (SUBJECTS_OF_A_STREAM + 1, 2))
        self.assertEqual(table.cells((0, 1), (0, 1)), [["科目", "满分"], ["语文", "150"]])
        self.desktop.press(*["Return"] * (SUBJECTS_OF_A_STREAM + 1))
        self.running.gone(marks)

    def compute_totals(self):
        self.workbench().find("list", "考试名称").choose(EXAM)
        self.command("计算总分")
        self.assertTrue(self.running.answer().startswith("计算总分 完成！"))

    def grid(self):
        return self.running.main_window().find("table", "结果表格")

    def assertGridShows(self, expected, rows):
        """The grid has the size of the expected rows, and the same texts in the named ones."""
        grid = self.grid()
        self.assertEqual(grid.size(), (len(expected), len(expected[0])))
        columns = range(len(expected[0]))
        self.assertEqual(grid.cells(rows, columns), [expected[row] for row in rows])

    def browse(self):
        self.command("浏览成绩")
        expected = rows_of(self.cli("browse", self.library, "--exam", EXAM).out)
        self.assertEqual(len(expected), 241)
        self.assertGridShows(expected, ROWS_COMPARED)

    def run_statistics(self):
        self.workbench().find("combo box", "统计项目").pick("各科平均分")
        self.command("执行统计")
        expected = rows_of(self.cli("report", self.library, "--button", "各科平均分", "--exam",
                                    EXAM).out)
        self.assertGridShows(expected, range(len(expected)))

    def analyze(self):
        self.command("综合分析")
        self.assertEqual(self.running.answer(), "综合分析完毕！")
        for number in (1, 2):
            self.running.shown("frame", f"工作簿{number}")

    def save_one_analysis(self):
        """The window of the first stream is saved; its sheets hold what yunshan-cli computes."""
        target = self.folder / "分析.xlsx"
        self.running.bring_forward("frame", "工作簿1")
        self.desktop.press("ctrl+s")
        self.running.choose_file(target.with_suffix(""))
        self.running.window("frame", "分析.xlsx - 工作簿")
        result = self.cli("analyze", self.library, "--exam", EXAM, "--format", "json")
        expected = result.json()["books"]["文"]
        saved = openpyxl.load_workbook(target)
        self.assertEqual(saved.sheetnames, expected["sheets"])
        for sheet in expected["sheets"]:
            self.assertSheetHolds(saved[sheet], expected["content"][sheet]["cells"])

    def assertSheetHolds(self, sheet, cells):
        """Some cells of all parts of a sheet; numbers are stored as such, merged blocks once."""
        self.assertGreater(len(cells), 100)
        for place in list(cells)[::97]:
            cell = sheet.cell(*map(int, place.split(",")))
            value, text = cell.value, cells[place]
            if isinstance(cell, MergedCell):
                continue
            if isinstance(value, (int, float)):
                self.assertAlmostEqual(value, float(text), places=4, msg=f"{sheet.title} {place}")
            else:
                self.assertEqual(value, text, f"{sheet.title} {place}")

    def end_and_start_again(self):
        """The second analysis was not saved, so its window asks; then all is where it was. The
        panel is there whenever no library is."""
        self.running.bring_forward("frame", "云杉学业册")
        self.running.resize(self.running.main_window(), *WINDOW_SIZE)
        self.close_panel()
        self.running.menu("f", "x")
        self.assertEqual(self.running.answer("否", "关闭工作簿"), "“工作簿2”还没有保存，是否保存？")
        self.assertEqual(self.running.end(), 0)
        self.start(self.library)
        self.assertSize()
        self.assertFalse(self.is_panel_shown())
        self.running.menu("f", "x")
        self.assertEqual(self.running.end(), 0)
        self.start()
        self.assertSize()
        self.assertTrue(self.is_panel_shown())
        self.running.choose_from_menu("文件", str(self.library))
        desktop.wait_for("library in the title", lambda: self.running.main_window().name
                         == f"云杉学业册 - {self.library}")

    def close_panel(self):
        panel = self.running.main_window().find("frame", "基本信息")
        panel.find("push button", "关闭").press()

    def is_panel_shown(self):
        return any(self.running.main_window().all("frame", "基本信息"))

    def assertSize(self):
        self.assertEqual(self.running.main_window().box()[2:], WINDOW_SIZE)


if __name__ == "__main__":
    desktop.main()
