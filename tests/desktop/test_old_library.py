"""A library of the old engine, given on the command line, becomes a new one beside it."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import oldsamples
import yunshan

QUESTION = "这是旧格式的成绩库"


class OldLibrary(desktop.DesktopTest):
    def setUp(self):
        super().setUp()
        self.old = self.folder / "2008级.CJK"
        self.new = self.folder / "2008级（转换）.CJK"
        self.put(oldsamples.data(oldsamples.ONE_STREAM))

    def put(self, content):
        self.content = content
        self.old.write_bytes(content)

    def assertOpened(self):
        """The new library, with the exams that the old one has."""
        window = self.running.window("frame", f"云杉学业册 - {self.new}")
        exams = [row[0] for row in yunshan.query(
            self.new, "select distinct 考试名称 from 考试名称表")]
        self.assertTrue(exams)
        shown = window.find("list", "考试名称")
        self.assertEqual(sorted(item.name for item in shown.all("list item")), sorted(exams))
        self.assertEqual(self.old.read_bytes(), self.content)
        return window

    def test_it_is_converted_and_opened(self):
        self.start(self.old)
        self.assertTrue(self.running.answer("转换").startswith(QUESTION))
        told = self.running.answer("查看报告")
        self.assertTrue(told.startswith("转换完成："), told)
        report = self.running.window("dialog", "转换报告")
        rows, _ = report.find("table", "转换报告").size()
        self.assertGreater(rows, 3)
        report.find("push button", "关闭").press()
        self.running.gone(report)
        self.assertOpened()
        recent = (self.program.parent / "data" / "recent.dat").read_text(encoding="utf-8")
        self.assertIn(str(self.new), recent)
        self.assertNotIn(str(self.old) + "\n", recent)

    def test_a_password_is_typed(self):
        self.put(oldsamples.with_password(self.content, "1234"))
        self.start(self.old)
        self.running.answer("转换")
        for password in ("4321", "1234"):
            box = self.running.window("dialog", desktop.TITLE)
            box.find("password text").click()
            self.desktop.xdotool("type", password)
            self.desktop.press("Return")
            self.running.gone(box)
        self.running.answer("关闭")
        self.assertOpened()

    def test_it_stays_without_the_conversion(self):
        self.start(self.old)
        self.running.answer("取消")
        self.assertEqual(self.running.window("frame", desktop.TITLE).name, desktop.TITLE)
        self.assertEqual([path.name for path in self.folder.iterdir()], [self.old.name])
        self.assertEqual(self.old.read_bytes(), self.content)


if __name__ == "__main__":
    desktop.main()
