"""The workbench on a dark desktop and on a screen of high density."""

import itertools
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import screen

EXAM = "高一期中"
BUTTONS = ("上移考试", "下移考试", "保存", "浏览成绩", "计算总分", "导入考试", "自定义显示", "综合分析",
           "执行统计")
FIELDS = ("check box", "combo box", "list", "radio button", "text")
# The colours of a desktop that the program reads at its start.
DARK = """[Colors:Window]
BackgroundNormal=35,38,41
ForegroundNormal=239,240,241
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=239,240,241
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=239,240,241
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=239,240,241
"""
DARK_DESKTOP = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}
SCALE = 1.5
DARKEST_LIGHT = 128


def overlap(first, second):
    """Whether two boxes share a place."""
    return all(first[side] < second[side] + second[side + 2]
               and second[side] < first[side] + first[side + 2] for side in (0, 1))


class DarkAndScaled(desktop.DesktopTest):
    @classmethod
    def prepare(cls):
        cls.made = cls.shared / "期中.CJK"
        cls.make_library(cls.made, EXAM)

    def setUp(self):
        super().setUp()
        self.before = dict(self.desktop.env)
        self.addCleanup(setattr, self.desktop, "env", self.before)

    def open_library(self, env):
        self.desktop.env = self.before | env
        self.start(self.made)
        return self.running.window("frame", desktop.TITLE)

    def assertWithin(self, outer, inner):
        x, y, width, height = outer.box()
        left, top, inner_width, inner_height = inner.box()
        self.assertTrue(x <= left and y <= top and left + inner_width <= x + width
                        and top + inner_height <= y + height,
                        f"{inner.name} {inner.box()} leaves {outer.name} {outer.box()}")

    def assertLaidOut(self, window):
        """Everything to click or type in lies within the window, and nothing over another."""
        bench = window.find("filler", "基本信息")
        parts = [bench.find("push button", name) for name in BUTTONS]
        for role in FIELDS:
            parts += bench.all(role)
        for part in parts:
            self.assertWithin(window, part)
        for first, second in itertools.combinations(parts, 2):
            self.assertFalse(overlap(first.box(), second.box()),
                             f"{first.name} {first.box()} lies over {second.name} {second.box()}")

    def brightness(self, element):
        """Of a place just within its corner, where no text stands: 0 for black, 255 for white."""
        x, y, width, height = element.box()
        return sum(self.desktop.pixel(x + width - 8, y + height - 8)) / 3

    def test_the_layout_as_it_is_otherwise(self):
        self.assertLaidOut(self.open_library({}))

    def test_a_dark_desktop(self):
        (self.shared / "desktop/home/.config/kdeglobals").write_text(DARK)
        window = self.open_library(DARK_DESKTOP)
        self.assertLaidOut(window)
        exams = window.find("list", "考试名称")
        desktop.wait_for("dark list", lambda: self.brightness(exams) < DARKEST_LIGHT)

    def test_a_screen_of_high_density(self):
        """The places are told in the program's own pixels, which are larger than the screen's."""
        window = self.open_library({"QT_SCALE_FACTOR": str(SCALE)})
        self.assertLaidOut(window)
        x, y, width, height = window.box()
        self.assertLessEqual((x + width) * SCALE, screen.SCREEN[0])
        self.assertLessEqual((y + height) * SCALE, screen.SCREEN[1])


if __name__ == "__main__":
    desktop.main()
