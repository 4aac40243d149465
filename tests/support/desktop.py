"""Driving the real program from outside: what assistive technology sees of it, by keys and mouse.

A test file has one class derived from DesktopTest and ends with `desktop.main()`; it is called with
the program, with yunshan-cli and with the folder for pictures of failed tests.
"""

import contextlib
import os
import re
import shutil
import sys
import tempfile
import unittest
from pathlib import Path

import screen
import yunshan
from screen import LIMIT, Desktop, wait_for

PROGRAM = None
PICTURES = None
TITLE = "云杉学业册"
SUBJECTS = "语文,数学,英语,物理,化学,生物,政治,历史,地理,文科总分,理科总分,总分"
# The middle of a window's close box, so far left of its right edge and above its content.
CLOSE_BOX = (8, 10)
LIKE_TABLES = {"table", "tree table", "tree"}
# A caption's access key and what stands behind it.
KEY = re.compile(r"\([A-Z0-9]\)(…|:)?$")


class Element:
    """Something on the screen, as assistive technology sees it."""

    def __init__(self, desktop, accessible):
        self.desktop = desktop
        self.accessible = accessible

    @property
    def name(self):
        return self.accessible.get_name() or ""

    @property
    def role(self):
        return self.accessible.get_role_name()

    def caption(self):
        """The name without access key."""
        return KEY.sub("", self.name)

    def has(self, state):
        return self.accessible.get_state_set().contains(getattr(screen.Atspi.StateType, state))

    def children(self):
        for i in range(self.accessible.get_child_count()):
            child = self.accessible.get_child_at_index(i)
            if child is not None:
                yield Element(self.desktop, child)

    def all(self, role=None, name=None):
        """What is shown within, outermost first; cells of tables are left out."""
        for child in self.children():
            if not child.has("SHOWING"):
                continue
            if role in (None, child.role) and name in (None, child.name, child.caption()):
                yield child
            if child.role not in LIKE_TABLES:
                yield from child.all(role, name)

    def find(self, role, name=None):
        return wait_for(f"{role} {name or ''} in {self.role} {self.name}",
                        lambda: next(self.all(role, name), None))

    def texts(self, role="label"):
        return [label.name for label in self.all(role) if label.name]

    def box(self):
        """Left, top, width and height on the screen."""
        extents = self.accessible.get_extents(screen.Atspi.CoordType.SCREEN)
        return extents.x, extents.y, extents.width, extents.height

    def click(self, modifier=None):
        x, y, width, height = self.box()
        self.desktop.click_at(x + width // 2, y + height // 2, modifier)

    def press(self):
        """Clicks a button as soon as it can be."""
        wait_for(f"enabled {self.name}", lambda: self.has("SENSITIVE"))
        self.click()

    def content(self):
        """What stands in a field."""
        text = self.accessible.get_text_iface()
        return text.get_text(0, text.get_character_count())

    def write(self, text):
        """Replaces what stands in a field, by keys."""
        self.click()
        wait_for(f"focus in {self.name}", lambda: self.has("FOCUSED"))
        self.desktop.press("ctrl+a")
        self.desktop.paste(text)
        wait_for(f"“{text}” in {self.name}", lambda: self.content() == text)

    def size(self):
        """Rows and columns of a table."""
        table = self.accessible.get_table_iface()
        return table.get_n_rows(), table.get_n_columns()

    def cell(self, row, column):
        table = self.accessible.get_table_iface()
        return Element(self.desktop, table.get_accessible_at(row, column))

    def cells(self, rows, columns):
        return [[self.cell(row, column).name for column in columns] for row in rows]

    def choose(self, *texts):
        """Selects the entries of a list with these texts, and nothing else."""
        modifier = None
        for text in texts:
            entry = self.find("list item", text)
            entry.click(modifier)
            wait_for(f"selected {text}", lambda: entry.has("SELECTED"))
            modifier = "ctrl"

    def pick(self, text):
        """Chooses an entry of a combo box by two clicks."""
        self.click()
        self.find("list item", text).click()
        wait_for(f"chosen {text}", lambda: self.name == text and not any(self.all("list item")))

    def dump(self, depth=0):
        """What is shown, a line each, for reading after a failure."""
        lines = [f"{'  ' * depth}{self.role} “{self.name}” {self.box()}"]
        if self.role not in LIKE_TABLES:
            for child in self.children():
                if child.has("SHOWING"):
                    lines += child.dump(depth + 1)
        return lines


class Run:
    """The program while it runs."""

    def __init__(self, desktop, command, **options):
        self.desktop = desktop
        self.process = desktop.spawn(*map(str, command), **options)

    def windows(self):
        root = screen.Atspi.get_desktop(0)
        root.clear_cache()
        for i in range(root.get_child_count()):
            application = root.get_child_at_index(i)
            if application is not None and application.get_process_id() == self.process.pid:
                yield from (window for window in Element(self.desktop, application).children()
                            if window.has("SHOWING"))

    def shown(self, role, title="", state="SHOWING"):
        """The window of this role whose title begins with `title`."""
        return wait_for(f"{state.lower()} {role} {title}", lambda: next(
            (window for window in self.windows() if window.role == role
             and window.name.startswith(title) and window.has(state)), None))

    def window(self, role, title=""):
        """The same, once it has the keyboard."""
        return self.shown(role, title, "ACTIVE")

    def bring_forward(self, role, title):
        """Activates a window as a task bar does."""
        self.shown(role, title)
        self.desktop.xdotool("search", "--onlyvisible", "--name", f"^{title}", "windowactivate")
        return self.window(role, title)

    def main_window(self):
        return self.window("frame", TITLE)

    def titles(self):
        return [window.name for window in self.windows()]

    def gone(self, window):
        wait_for(f"end of the window {window.name}",
                 lambda: all(other.accessible != window.accessible for other in self.windows()))

    def close(self, window):
        """Presses the close box, which stands at the right end of the title."""
        left, top, width, _ = window.box()
        self.desktop.click_at(left + width - CLOSE_BOX[0], top - CLOSE_BOX[1])
        self.gone(window)

    def menu(self, menu, item):
        """Chooses from the main window's menu by the access keys."""
        window = self.main_window()
        self.desktop.press(f"alt+{menu}")
        window.find("popup menu")
        self.desktop.press(item)

    def answer(self, button="确定", title=TITLE):
        """Presses a button of the message box that comes up; gives its text."""
        box = self.window("alert", title)
        text = "\n".join(box.texts())
        box.find("push button", button).press()
        self.gone(box)
        return text

    def choose_from_menu(self, menu, name):
        """Chooses an entry of the main window's menu by the mouse."""
        window = self.main_window()
        window.find("menu item", menu).click()
        window.find("popup menu").find("menu item", name).click()

    def choose_from_popup(self, element, key):
        """Chooses by its access key from the menu that the right button opens on an element. Qt does
        not list such menus among the program's windows."""
        x, y, width, height = element.box()
        before = self.desktop.windows_of(self.process.pid)
        self.desktop.right_click_at(x + width // 2, y + height // 2)
        wait_for(f"menu on {element.name}",
                 lambda: self.desktop.windows_of(self.process.pid) - before)
        self.desktop.press(key)

    def resize(self, window, width, height):
        """Gives the active window this size, as by dragging its corner."""
        self.desktop.xdotool("getactivewindow", "windowsize", width, height)
        wait_for(f"size of {window.name}", lambda: window.box()[2:] == (width, height))

    def choose_file(self, path):
        """Gives the file dialog a path."""
        dialog = self.window("dialog")
        field = dialog.find("text")
        field.write(str(path))
        self.desktop.press("Return")
        self.gone(dialog)

    def end(self):
        """Waits until the program has ended by itself; gives its exit code."""
        return self.process.wait(timeout=LIMIT)

    def dump(self):
        return "\n".join(line for window in self.windows() for line in window.dump())


class DesktopTest(unittest.TestCase):
    """A desktop for all tests of a file, with copies of the programs and of the shipped data; for
    each test a folder of its own. `user` is who the tests run as, if not who started them."""

    maxDiff = None
    user = None

    @classmethod
    def setUpClass(cls):
        screen.need_programs()
        folder = tempfile.TemporaryDirectory(prefix="yunshan-desktop-")
        cls.addClassCleanup(folder.cleanup)
        cls.shared = Path(folder.name).resolve()
        cls.shared.chmod(0o755)
        cls.copy_programs()
        cls.prepare()
        if cls.user is not None:
            screen.become(cls.user, cls.shared)
        cls.desktop = Desktop(cls.shared / "desktop")
        cls.addClassCleanup(cls.desktop.stop)
        cls.desktop.start()

    @classmethod
    def prepare(cls):
        """What is to be there before the tests run as their user."""

    @classmethod
    def copy_programs(cls):
        """A program that may write beside itself keeps its files there, not in the build."""
        programs = cls.shared / "program"
        programs.mkdir()
        for program in (PROGRAM, yunshan.PROGRAM):
            shutil.copy2(program, programs)
        for shipped in ("MFC.dll", "示范成绩库.CJK"):
            shutil.copy2(Path(PROGRAM).parent / shipped, programs)
        shutil.copytree(yunshan.ROOT / "data", programs / "data")
        cls.program = programs / Path(PROGRAM).name

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="yunshan-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()
        self.library = self.folder / "试验.CJK"
        self.running = None
        self.addCleanup(self.end_program)

    def end_program(self):
        if self.running is not None and self.running.process.poll() is None:
            self.running.process.kill()
            self.running.process.wait()

    def start(self, *arguments):
        self.running = Run(self.desktop, [self.program, *arguments], cwd=self.folder)
        return self.running

    @classmethod
    def cli(cls, *arguments):
        program = cls.program.parent / Path(yunshan.PROGRAM).name
        result = yunshan.run(*arguments, program=program, cwd=cls.shared)
        if result.code != yunshan.DONE:
            raise AssertionError(f"{arguments}: {result.err}")
        return result

    @classmethod
    def make_library(cls, library, *exams):
        """The library of the demonstration with exams that are not scored."""
        cls.cli("new", library, "--subjects", SUBJECTS)
        cls.cli("import-students", library, yunshan.DEMO / "学生名单.xlsx", "--no-backup")
        for exam in exams:
            for sheet in ("文科", "理科"):
                cls.cli("import-exam", library, yunshan.DEMO / f"{exam}.xlsx", "--exam", exam,
                        "--sheet", sheet, "--no-backup")

    def show_failure(self):
        folder = PICTURES if os.access(PICTURES, os.W_OK) else tempfile.gettempdir()
        picture = Path(folder) / f"{self.id()}.png"
        self.desktop.picture(picture)
        print(f"\nThe screen is in {picture}\n{self.desktop.log()}", file=sys.stderr)
        with contextlib.suppress(Exception):
            print(self.running.dump(), file=sys.stderr)


class PicturedResult(unittest.TextTestResult):
    """Takes a picture of the screen at once where a test fails."""

    def addFailure(self, test, err):
        super().addFailure(test, err)
        self.show(test)

    def addError(self, test, err):
        super().addError(test, err)
        self.show(test)

    @staticmethod
    def show(test):
        with contextlib.suppress(Exception):
            test.show_failure()


def main():
    global PROGRAM, PICTURES
    PROGRAM = str(Path(sys.argv.pop(1)).resolve())
    yunshan.PROGRAM = str(Path(sys.argv.pop(1)).resolve())
    PICTURES = sys.argv.pop(1)
    unittest.main(verbosity=2,
                  testRunner=unittest.TextTestRunner(resultclass=PicturedResult, verbosity=2))
