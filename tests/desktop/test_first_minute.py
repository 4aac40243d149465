"""The first minute of a teacher with two workbooks of their own, a list of students and an exam:
from an empty home to the scored exam, every click counted and every question read.
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import openpyxl
import yunshan

MOST_CLICKS = 25
MOST_KEYS = 12
SUBJECTS = ("语文", "数学", "英语", "物理", "化学", "生物")
STUDENTS = [(1, 1, "王芳"), (1, 2, "李明"), (2, 1, "陈静"), (2, 2, "赵磊")]
IMPORTED = "导入完成！"


class CountedHand:
    """Counts what the test does by mouse and keyboard: clicks, and keys other than typed names."""

    def __init__(self, screen):
        self.clicks = 0
        self.keys = 0
        self.screen = screen
        self.before = screen.click_at, screen.press
        screen.click_at, screen.press = self.click_at, self.press

    def click_at(self, *arguments):
        self.clicks += 1
        self.before[0](*arguments)

    def press(self, *keys):
        self.keys += len(keys)
        self.before[1](*keys)

    def stop(self):
        del self.screen.click_at, self.screen.press


class FirstMinute(desktop.DesktopTest):
    def write_workbooks(self):
        book = openpyxl.Workbook()
        for row in [("班级", "学号", "姓名"), *STUDENTS]:
            book.active.append(row)
        book.save(self.folder / "高三名单.xlsx")
        book = openpyxl.Workbook()
        book.active.append(("班级", "学号", "姓名", *SUBJECTS))
        for number, student in enumerate(STUDENTS):
            book.active.append((*student, *range(60 + number, 60 + number + len(SUBJECTS))))
        book.save(self.folder / "高三期中.xlsx")

    def button(self, window, name):
        window.find("push button", name).press()

    def note(self):
        """The next step that the main window names, as a button."""
        return next(button.name for button in self.running.main_window().all("push button")
                    if button.name.startswith("下一步："))

    def next_step(self, name):
        self.button(self.running.main_window(), f"下一步：{name}")

    def test_from_an_empty_home_to_the_first_scored_exam(self):
        self.write_workbooks()
        self.start()
        hand = CountedHand(self.desktop)
        self.addCleanup(hand.stop)
        self.make_the_library()
        self.import_students()
        self.import_the_exam()
        print(f"{hand.clicks} clicks and {hand.keys} keys", file=sys.stderr)
        self.assertLessEqual(hand.clicks, MOST_CLICKS)
        self.assertLessEqual(hand.keys, MOST_KEYS)
        ranks = yunshan.query(self.library, "select 姓名, 理科总分年名 from 成绩表 order by 2")
        self.assertEqual(ranks, [("赵磊", 1), ("陈静", 2), ("李明", 3), ("王芳", 4)])
        self.assertFalse(any(button.name.startswith("下一步") for button
                             in self.running.main_window().all("push button")))

    def make_the_library(self):
        self.button(self.running.main_window(), "新建成绩库…")
        screen = self.running.window("dialog", "新建成绩库")
        subjects = screen.find("list", "请为新成绩库选择科目")
        subjects.find("list item", SUBJECTS[0]).click()
        subjects.find("list item", SUBJECTS[-1]).click("shift")
        subjects.find("list item", "理科总分").click("ctrl")
        self.button(screen, "确定")
        self.running.choose_file(self.library.with_suffix(""))
        self.assertEqual(self.running.answer(), "新建数据库成功，现在将设置学生信息。")

    def import_students(self):
        screen = self.running.window("dialog", "导入学生信息")
        self.button(screen, "浏览")
        self.running.choose_file(self.folder / "高三名单.xlsx")
        self.button(self.running.window("dialog", "导入学生信息"), "导入")
        self.assertEqual(self.running.answer(), IMPORTED)
        self.button(screen, "退出")
        self.running.gone(screen)
        behind = self.running.window("dialog", "新建成绩库")
        self.button(behind, "取消")
        self.running.gone(behind)

    def import_the_exam(self):
        self.assertEqual(self.note(), "下一步：导入考试")
        self.next_step("导入考试")
        screen = self.running.window("dialog", "导入考试成绩")
        self.button(screen, "浏览")
        self.running.choose_file(self.folder / "高三期中.xlsx")
        screen = self.running.shown("dialog", "导入考试成绩")
        screen.find("check box", "导入后计算总分").click()
        self.button(screen, "导入")
        # A click reaches it even while the window manager still hands the keyboard around.
        marks = self.running.shown("dialog", "输入各科满分")
        self.button(marks, "确定")
        self.assertEqual(self.running.answer(), IMPORTED)
        self.button(screen, "退出")
        self.running.gone(screen)

    def test_the_demonstration_is_a_click_away(self):
        self.start()
        self.button(self.running.main_window(), "打开示范成绩库")
        own = self.desktop.folder / "home/Documents/云杉学业册/示范成绩库.CJK"
        desktop.wait_for("library in the title", lambda: self.running.main_window().name
                         == f"云杉学业册 - {own}")
        self.assertEqual(yunshan.query(own, "select count(*), min(备注) from 考试名称表"),
                         [(6, "示范数据：学校、学生和成绩都是虚构的。")])
        self.running.menu("f", "x")
        self.assertEqual(self.running.end(), 0)

    def test_libraries_of_before_are_opened_by_the_keyboard(self):
        self.make_library(self.library)
        self.start(self.library)
        self.running.main_window()
        self.running.menu("f", "x")
        self.assertEqual(self.running.end(), 0)
        self.start()
        page = self.running.main_window().find("list", "最近的成绩库")
        desktop.wait_for("focus on the list", lambda: page.has("FOCUSED") or any(
            entry.has("FOCUSED") for entry in page.children()))
        self.desktop.press("Return")
        desktop.wait_for("library in the title", lambda: self.running.main_window().name
                         == f"云杉学业册 - {self.library}")


if __name__ == "__main__":
    desktop.main()
