"""What cannot be opened, read or written: one clear message each, and the program goes on."""

import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import yunshan

EXAM = "高一期中"
STUDENTS = 240
NOBODY = 65534
OPENING = " - Public Sub OpenDB/Mdl_MDB"
IMPORTING = " - Private Sub Command1_Click/FormDaoRu"
READ_ONLY = ("成绩库是只读的，不能写入。（attempt to write a readonly database）"
             "这一步已经停止，什么也没有写入。 - Sub PanNJBjMC/Mdl_MDB")
CUT_OFF = "{0} 不完整或已损坏：.xlsx 文件的压缩包无法读完。请重新复制或下载后再试。"


class BadInputs(desktop.DesktopTest):
    # Nothing is read-only to root.
    user = NOBODY if os.getuid() == 0 else None

    @classmethod
    def prepare(cls):
        cls.place = cls.shared / "place"
        cls.place.mkdir()
        cls.made = cls.place / "期中.CJK"
        cls.make_library(cls.made, EXAM)
        whole = (yunshan.DEMO / f"{EXAM}.xlsx").read_bytes()
        cls.cut_off = cls.shared / "cut-off.xlsx"
        cls.cut_off.write_bytes(whole[:len(whole) // 2])

    def assertGoesOn(self, title=desktop.TITLE):
        self.assertEqual(self.running.main_window().name, title)
        self.running.menu("f", "x")
        self.assertEqual(self.running.end(), 0)

    def test_a_path_that_does_not_exist(self):
        self.start(self.library)
        self.assertEqual(self.running.answer(), f"{self.library}\n库文件不存在！")
        self.assertGoesOn()
        self.assertFalse(self.library.exists())

    def test_a_text_that_is_named_like_a_library(self):
        self.library.write_text("班级,学号,姓名\n" * 100)
        self.start(self.library)
        self.assertEqual(self.running.answer(), f"{self.library} 不是成绩库。{OPENING}")
        self.assertGoesOn()
        self.assertEqual(self.library.read_text(), "班级,学号,姓名\n" * 100)

    def open_the_library(self):
        self.start(self.made)
        return self.running.window("frame", f"云杉学业册 - {self.made}")

    def test_a_library_in_a_folder_that_may_not_be_written(self):
        """It can be read; computing totals fails at its first write and goes on to its end."""
        before = yunshan.file_hash(self.made)
        self.place.chmod(0o555)
        self.addCleanup(self.place.chmod, 0o755)
        window = self.open_the_library()
        window.find("list", "考试名称").choose(EXAM)
        window.find("push button", "计算总分").press()
        self.assertEqual(self.running.answer(), READ_ONLY)
        self.assertTrue(self.running.answer().startswith("计算总分 完成！"))
        window.find("push button", "浏览成绩").press()
        self.assertEqual(window.find("table", "结果表格").size()[0], STUDENTS + 1)
        self.assertGoesOn(f"云杉学业册 - {self.made}")
        self.assertEqual(yunshan.file_hash(self.made), before)
        self.assertEqual([path.name for path in self.place.iterdir()], [self.made.name])

    def test_a_cut_off_workbook(self):
        window = self.open_the_library()
        window.find("push button", "导入考试").press()
        screen = self.running.window("dialog", "导入考试成绩")
        screen.find("push button", "浏览").press()
        self.running.choose_file(self.cut_off)
        screen = self.running.window("dialog", "导入考试成绩")
        fault = CUT_OFF.format(self.cut_off)
        screen.find("label", fault)
        screen.find("push button", "导入").press()
        self.assertEqual(self.running.answer(), fault + IMPORTING)
        self.assertEqual(self.running.answer(title="错误"), "要分析的工作簿未打开！")
        screen.find("push button", "退出").press()
        self.running.gone(screen)
        self.assertGoesOn(f"云杉学业册 - {self.made}")


if __name__ == "__main__":
    desktop.main()
