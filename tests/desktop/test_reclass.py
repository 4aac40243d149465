"""A school is re-classed by mouse and keyboard from a workbook that another program made.

Two students swap, one is missing, one has another name, one is unknown. What the window leaves is
compared with what yunshan-cli makes of the same, table by table.
"""

import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import yunshan

EXAM = "高一期中"
TABLES = ("信息表", "成绩表", "分班表", "考试名称表", "教师表", "设置表", "详细设置表", "总分公式")
SUMMARY = "移动 238 人，改名 1 人，删除 1 人（成绩 1 条），留在原班 1 人。"


class Reclass(desktop.DesktopTest):
    def test_a_school_goes_to_its_new_classes(self):
        self.make_library(self.library, EXAM)
        by_command = self.folder / "命令行.CJK"
        shutil.copyfile(self.library, by_command)
        book = self.class_book()
        self.start(self.library)
        self.running.window("frame", f"云杉学业册 - {self.library}")
        self.running.menu("d", "f")
        self.reclass(book)
        self.leave()
        self.cli("reclass", by_command, book, "--on-missing", "delete", "--on-mismatch", "replace",
                 "--no-backup")
        for table in TABLES:
            self.assertEqual(self.rows(self.library, table), self.rows(by_command, table), table)
        self.assertSwapped()

    def class_book(self):
        """Everyone goes to the class ten above; the last two of the list stay out of it."""
        students = yunshan.query(self.library, "select 班级, 学号, 姓名 from 信息表 order by ID")
        places = [place for *place, _ in students]
        places[0], places[1] = places[1], places[0]
        rows = [(*student, place[0] + 10, place[1]) for student, place in zip(students, places)]
        self.swapped = [rows[0], rows[1]]
        *_, (group, number, _name) = students
        rows[-2] = (*students[-2][:2], "改过的名", group + 10, number)
        rows[-1] = (99, 99, "生人", group + 10, number)
        return yunshan.write_book(self.folder / "分班.xlsx",
                                  {"分班": [(*yunshan.HEADINGS, "新班级", "新学号"), *rows]})

    def reclass(self, book):
        screen = self.running.window("dialog", "导入分班信息")
        screen.find("push button", "浏览").press()
        self.running.choose_file(book)
        screen = self.running.bring_forward("dialog", "导入分班信息")
        self.assertEqual(screen.find("combo box").name, "分班")
        screen.find("push button", "导入").press()
        counts = self.running.answer("继续", title="提示")
        self.assertIn("分班表有 240 行，其中 1 行没有用到。\n移到新班级和新学号：238 人", counts)
        self.assertIn("[改过的名] 与数据库中记录的不一致！",
                      self.running.answer("是", title="数据错误"))
        self.assertIn("是否从数据库中删除当前学生记录！",
                      self.running.answer("确定", title="数据错误"))
        self.assertEqual(self.running.answer(), SUMMARY)
        self.assertEqual(self.running.answer(), "分班完成！")
        self.assertEqual(len(list(self.folder.glob(f"{self.library.name}_*.bak"))), 1)

    def leave(self):
        """退出 closes the workbook, too."""
        self.assertIn("分班.xlsx - 工作簿", self.running.titles())
        screen = self.running.bring_forward("dialog", "导入分班信息")
        screen.find("push button", "退出").press()
        self.running.gone(screen)
        self.assertNotIn("分班.xlsx - 工作簿", self.running.titles())

    def rows(self, library, table):
        return yunshan.query(library, f"select * from {table} order by rowid")

    def assertSwapped(self):
        for group, number, name, new_group, new_number in self.swapped:
            found = yunshan.query(self.library,
                                  "select 姓名 from 信息表 where 班级=? and 学号=?", new_group,
                                  new_number)
            self.assertEqual(found, [(name,)])
            self.assertNotEqual((group, number), (new_group - 10, new_number))


if __name__ == "__main__":
    desktop.main()
