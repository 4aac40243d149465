"""A library on the command line; what the result grid copies and finds."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop

EXAM = "高一期末"
# Without the first row and column, which are headings: a click there takes all of a row or column.
BLOCK_ROWS, BLOCK_COLUMNS = range(1, 5), range(1, 5)


class OpenLibrary(desktop.DesktopTest):
    def test_copying_and_finding_in_the_grid(self):
        self.make_library(self.library, EXAM)
        self.cli("score", self.library, EXAM)
        self.start(self.library)
        window = self.running.window("frame", f"云杉学业册 - {self.library}")
        window.find("list", "考试名称").choose(EXAM)
        window.find("push button", "浏览成绩").press()
        grid = window.find("table", "结果表格")
        self.copy_a_block(grid)
        self.find_a_student(grid)

    def test_a_path_with_blanks_that_comes_in_pieces(self):
        """Some desktops hand a path over without quotes."""
        self.library = self.folder / "高一 下学期 成绩.CJK"
        self.cli("new", self.library, "--subjects", desktop.SUBJECTS)
        self.start(*str(self.library).split(" "))
        self.running.window("frame", f"云杉学业册 - {self.library}")

    def assertCopies(self, expected):
        """Ctrl+C puts this on the clipboard."""
        self.desktop.press("ctrl+c")
        desktop.wait_for(f"“{expected}” on the clipboard",
                         lambda: self.desktop.clipboard() == expected)

    def copy_a_block(self, grid):
        """Cells are joined by tabs; lines end as on Windows, which spreadsheets there expect."""
        block = grid.cells(BLOCK_ROWS, BLOCK_COLUMNS)
        self.assertTrue(all(all(row) for row in block))
        grid.cell(BLOCK_ROWS[0], BLOCK_COLUMNS[0]).click()
        grid.cell(BLOCK_ROWS[-1], BLOCK_COLUMNS[-1]).click("shift")
        self.assertCopies("".join("\t".join(row) + "\r\n" for row in block))

    def assertShownIn(self, cell, grid):
        """The cell lies where the grid shows it."""
        left, top, width, height = grid.box()
        x, y, cell_width, cell_height = cell.box()
        self.assertTrue(left <= x and x + cell_width <= left + width, f"{cell.box()} {grid.box()}")
        self.assertTrue(top <= y and y + cell_height <= top + height, f"{cell.box()} {grid.box()}")

    def find_a_student(self, grid):
        """The last one of a name of its own, far below what the window shows."""
        browsed = self.cli("browse", self.library, "--exam", EXAM).out.splitlines()
        column = browsed[0].split("\t").index("姓名")
        names = [line.split("\t")[column] for line in browsed]
        row = max(row for row, name in enumerate(names) if names.count(name) == 1)
        self.desktop.press("ctrl+f")
        self.desktop.paste(names[row])
        self.desktop.press("Return")
        cell = grid.cell(row, column)
        self.assertEqual(cell.name, names[row])
        desktop.wait_for(f"selected {names[row]}", lambda: cell.has("SELECTED"))
        self.assertShownIn(cell, grid)
        self.desktop.press("Escape")
        self.assertCopies(names[row] + "\r\n")


if __name__ == "__main__":
    desktop.main()
