"""One student's exams and chart by mouse and keyboard, from the menu to a picture and a workbook.

What the screen shows is compared with what yunshan-cli tells of the same student.
"""

import struct
import sys
import zipfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import openpyxl
import yunshan

EXAMS = ("高一期中", "高一期末")
# A surname that has another reading elsewhere: 曾佳涵 is found by Z, not by C.
NAME, INITIALS, CLASS, NUMBER = "曾佳涵", "zjh", 1, 22
NEXT_NAME, NEXT_NUMBER = "赵瑶", 23
SCREEN = "个人分析"
FIRST, SECOND = "语文", "数学"
TWIPS_PER_PIXEL = 15
DRAGGED = (60, -25)


def rgb(colour):
    """A stored colour as red, green and blue."""
    return colour & 255, colour >> 8 & 255, colour >> 16 & 255


class Bitmap:
    """A BMP file of 24 or 32 bits a pixel without palette."""

    def __init__(self, path):
        self.data = path.read_bytes()
        magic, size, self.start = struct.unpack("<2sI4xI", self.data[:14])
        self.width, self.height, _, bits, packing = struct.unpack("<iiHHI", self.data[18:34])
        if magic != b"BM" or size != len(self.data) or bits not in (24, 32) or packing:
            raise AssertionError(f"{path.name} is no plain bitmap: {self.data[:34]}")
        self.bytes = bits // 8
        self.line = (self.width * self.bytes + 3) // 4 * 4

    def pixel(self, x, y):
        """Rows are stored from the bottom to the top, colours as blue, green, red."""
        place = self.start + (self.height - 1 - y) * self.line + x * self.bytes
        return tuple(reversed(self.data[place:place + 3]))


class IndividualAnalysis(desktop.DesktopTest):
    def test_from_the_menu_to_a_picture_and_a_workbook(self):
        self.make_library(self.library, *EXAMS)
        self.cli("score", self.library, *EXAMS)
        self.start(self.library)
        self.running.window("frame", f"云杉学业册 - {self.library}")
        self.running.menu("p", "g")
        self.screen = self.running.window("dialog", "学生成绩分析")
        self.find_by_initials()
        self.walk_down_and_up()
        self.choose_class_ranks_and_another_column()
        place = self.drag_a_rank()
        self.export_picture(place)
        self.export_workbook()

    def told(self, number=NUMBER, rank="年名", columns=FIRST):
        """What the command line tells of a chart as large as the one on the screen."""
        _, _, width, height = self.chart().box()
        size = f"{width * TWIPS_PER_PIXEL}x{height * TWIPS_PER_PIXEL}"
        return self.cli("student", self.library, "--class", CLASS, "--number", number, "--rank",
                        rank, "--columns", columns, "--size", size, "--format", "json").json()

    def chart(self):
        return self.screen.find("filler", "名次走势图")

    def assertShows(self, told):
        """Title, table, and the chart's texts at their places, once they are there."""
        desktop.wait_for(told["Title"], lambda: self.screen.name == told["Title"])
        rows = told["Grid"]["TextMatrix"]
        grid = self.screen.find("table", "学生的各次考试")
        self.assertEqual(grid.size(), (len(rows), len(rows[0])))
        self.assertEqual(grid.cells(range(len(rows)), range(len(rows[0]))), rows)
        chart = told["Chart"]
        texts = [chart["Name"], chart["Note"],
                 *(label["text"] for kind in ("ExamLabels", "RankLabels") for label in chart[kind])]
        desktop.wait_for(f"{texts} on the chart",
                         lambda: sorted(self.chart().texts()) == sorted(texts))
        self.assertRanksStand(chart["RankLabels"])

    def assertRanksStand(self, ranks):
        left, top, _, _ = self.chart().box()
        shown = [(label.name, label.box()) for label in self.chart().all("label")]
        for rank in ranks:
            x, y = rank["x"] / TWIPS_PER_PIXEL, rank["bottom"] / TWIPS_PER_PIXEL
            self.assertTrue(any(
                name == rank["text"] and abs(box[0] + box[2] / 2 - left - x) <= 1
                and abs(box[1] + box[3] - top - y) <= 1 for name, box in shown), f"{rank} {shown}")

    def find_by_initials(self):
        self.screen.find("text", "查找学生").click()
        self.desktop.press(*INITIALS, "Return")
        told = self.told()
        self.assertEqual(told["Chart"]["Name"], NAME)
        self.assertEqual(told["Chart"]["Note"], "共80人")
        self.assertEqual(len(told["Chart"]["RankLabels"]), len(EXAMS))
        self.assertShows(told)
        photo = self.running.shown("dialog", NAME)
        self.assertTrue(any(photo.all(name="照片")))

    def walk_down_and_up(self):
        """The first ↓ leaves the field for the tree, whose student stays; each further one goes on."""
        self.desktop.press("Down", "Down")
        self.assertShows(self.told(NEXT_NUMBER))
        self.assertEqual(self.told(NEXT_NUMBER)["Chart"]["Name"], NEXT_NAME)
        self.desktop.press("Up")
        self.assertShows(self.told())

    def choose_class_ranks_and_another_column(self):
        self.screen.find("radio button", "班名").press()
        told = self.told(rank="班名")
        self.assertEqual(told["Chart"]["Note"], "共40人")
        self.assertShows(told)
        self.screen.find("check box", SECOND).press()
        told = self.told(rank="班名", columns=f"{FIRST},{SECOND}")
        self.assertEqual(len(told["Chart"]["RankLabels"]), 2 * len(EXAMS))
        self.assertShows(told)

    def drag_a_rank(self):
        """Where the label stands on the chart afterwards."""
        rank = self.told(rank="班名")["Chart"]["RankLabels"][0]["text"]
        label = next(label for label in self.chart().all("label", rank))
        x, y, width, height = label.box()
        moved = (x + DRAGGED[0], y + DRAGGED[1], width, height)
        self.desktop.drag(x + width // 2, y + height // 2, moved[0] + width // 2,
                          moved[1] + height // 2)
        desktop.wait_for(f"{rank} at {moved}", lambda: label.box() == moved)
        return moved

    def export_picture(self, dragged):
        """The file is what stands on the screen, with the rank where it was dragged to."""
        target = self.folder / "走势.bmp"
        self.running.choose_from_popup(self.chart(), "t")
        self.running.choose_file(target)
        self.running.window("dialog", SCREEN)
        desktop.wait_for(target.name, target.is_file)
        picture = Bitmap(target)
        left, top, width, height = self.chart().box()
        self.assertEqual((picture.width, picture.height), (width, height))
        self.desktop.xdotool("mousemove", 0, 0)
        desktop.wait_for("picture as on the screen", lambda: self.is_on_screen(picture, left, top))
        white = picture.pixel(1, 1)
        inked = {picture.pixel(x - left, y - top)
                 for x in range(dragged[0], dragged[0] + dragged[2])
                 for y in range(dragged[1], dragged[1] + dragged[3])}
        self.assertEqual(white, (255, 255, 255))
        self.assertGreater(len(inked - {white}), 1)
        for point in self.told(rank="班名", columns=f"{FIRST},{SECOND}")["Chart"]["Points"]:
            x, y = (round(point[axis] / TWIPS_PER_PIXEL) for axis in "xy")
            self.assertEqual(picture.pixel(x, y), rgb(point["colour"]), point)

    def is_on_screen(self, picture, left, top):
        shown = self.desktop.pixels()
        return all(picture.pixel(x, y) == shown(left + x, top + y)
                   for x in range(picture.width) for y in range(picture.height))

    def export_workbook(self):
        self.running.choose_from_popup(self.chart(), "s")
        self.assertEqual(self.running.answer(), "导出完成！")
        self.running.window("frame", "工作簿1")
        target = self.folder / "成绩.xlsx"
        self.desktop.press("ctrl+s")
        self.running.choose_file(target)
        self.running.window("frame", f"{target.name} - 工作簿")
        rows = [[str(cell.value) for cell in row]
                for row in openpyxl.load_workbook(target).worksheets[0].iter_rows()]
        self.assertEqual(rows[0][0], NAME)
        self.assertEqual(rows[1:], self.told()["Grid"]["TextMatrix"])
        with zipfile.ZipFile(target) as package:
            pictures = [name for name in package.namelist() if name.startswith("xl/media/")]
        self.assertEqual(len(pictures), 1)


if __name__ == "__main__":
    desktop.main()
