"""Driving the real program from outside: a screen of its own (Xvfb with the window manager jwm), what
assistive technology sees of the program (AT-SPI), keys and mouse.

A test file has one class derived from DesktopTest and ends with `desktop.main()`; it is called with
the program, with yunshan-cli and with the folder for pictures of failed tests.
"""

import contextlib
import ctypes
import os
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import uuid
import zlib
from pathlib import Path

import yunshan

PROGRAM = None
PICTURES = None
LIMIT = 30
POLL = 0.02
SCREEN = (1400, 900)
BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
PACKAGES = {"Xvfb": "xvfb", "jwm": "jwm", "xdotool": "xdotool", "xclip": "xclip",
            "dbus-daemon": "dbus", BUS_LAUNCHER: "at-spi2-core"}
# Windows are activated by a click and when they appear; no tray, no keys of the manager's own.
JWM_SETTINGS = "<?xml version='1.0'?><JWM><Desktops width='1' height='1'/></JWM>"
TITLE = "云杉学业册"
PROGRAM_NAME = "yunshan"
# A caption's access key and what stands behind it.
KEY = re.compile(r"\([A-Z0-9]\)(…|:)?$")
LIKE_TABLES = {"table", "tree table", "tree"}

Atspi = None
GLib = None


def missing(name, package):
    return AssertionError(f"{name} is missing: install the Debian package {package}.")


def need_programs():
    for name, package in PACKAGES.items():
        if not shutil.which(name):
            raise missing(name, package)
    load_atspi()


def load_atspi():
    global Atspi, GLib
    try:
        import gi
    except ImportError:
        raise missing("The Python module gi", "python3-gi") from None
    try:
        gi.require_version("Atspi", "2.0")
    except ValueError:
        raise missing("The description of AT-SPI for Python", "gir1.2-atspi-2.0") from None
    from gi.repository import Atspi as atspi, GLib as glib
    Atspi, GLib = atspi, glib


def wait_for(what, probe, limit=LIMIT):
    """The first true value of `probe`, asked again and again; what the bus fails on counts as not yet."""
    end = time.monotonic() + limit
    while True:
        try:
            found = probe()
        except GLib.Error:
            found = None
        if found:
            return found
        if time.monotonic() > end:
            raise AssertionError(f"after {limit} s there is no {what}")
        time.sleep(POLL)


def begin_process(user):
    """Takes on the user, if one is named. A test that is killed takes its processes with it."""
    if user is not None:
        os.setgroups([])
        os.setgid(user)
        os.setuid(user)
    ctypes.CDLL(None).prctl(1, signal.SIGKILL)


def png_of(dump):
    """The PNG of an X window dump with 32 bits a pixel."""
    header = struct.unpack(">25I", dump[:100])
    width, height, line, colors = header[4], header[5], header[12], header[19]
    start = header[0] + 12 * colors
    rows = bytearray()
    for y in range(height):
        row = dump[start + y * line:start + y * line + 4 * width]
        rgb = bytearray(3 * width)
        rgb[0::3], rgb[1::3], rgb[2::3] = row[2::4], row[1::4], row[0::4]
        rows += b"\0" + rgb

    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data
                + struct.pack(">I", zlib.crc32(kind + data)))

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">2I5B", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(bytes(rows), 6)) + chunk(b"IEND", b""))


def hand_over(folder, user):
    """Makes the folder and what is in it the user's own."""
    for path in (folder, *folder.rglob("*")):
        os.chown(path, user, user)


class Desktop:
    """A screen with a window manager and the buses, in a folder that holds the user's home. `user` is
    who runs it all, if not the user of the test."""

    def __init__(self, folder, user=None):
        need_programs()
        self.folder = folder
        self.user = user
        self.mark = f"YUNSHAN_DESKTOP={uuid.uuid4()}"
        self.env = yunshan.environment(folder / "home")
        for name in [name for name in self.env if name.startswith(("QT_", "DBUS_", "AT_SPI_"))]:
            del self.env[name]
        self.env |= {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb",
                     "XDG_RUNTIME_DIR": str(folder / "run"),
                     "XDG_CONFIG_HOME": str(folder / "home/.config"),
                     "XDG_DATA_HOME": str(folder / "home/.local/share"),
                     "XDG_CACHE_HOME": str(folder / "home/.cache")}
        self.env.update([self.mark.split("=")])
        for place in ("home/.config", "home/.local/share", "home/.cache", "screen"):
            (folder / place).mkdir(parents=True)
        (folder / "run").mkdir(mode=0o700)
        (folder / "home/.jwmrc").write_text(JWM_SETTINGS)
        if user is not None:
            hand_over(folder, user)

    def start(self):
        self.env["DISPLAY"] = ":" + self.told(
            "Xvfb", "-displayfd", "{}", "-screen", "0", f"{SCREEN[0]}x{SCREEN[1]}x24",
            "-nolisten", "tcp", "-fbdir", str(self.folder / "screen"))
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self.told("dbus-daemon", "--session", "--nofork",
                                                         "--nopidfile", "--print-address={}")
        self.spawn("jwm")
        self.connect()
        wait_for("window manager", self.is_managed)

    def connect(self):
        """This process joins the accessibility bus; it can do so once."""
        os.environ.update({name: self.env[name] for name in (
            "DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR")})
        Atspi.init()
        Atspi.set_timeout(LIMIT * 1000, LIMIT * 1000)

    def is_managed(self):
        return subprocess.run(["xdotool", "get_num_desktops"], env=self.env, check=False,
                              capture_output=True).returncode == 0

    def spawn(self, *command, **options):
        with open(self.folder / "log", "ab") as log:
            return subprocess.Popen(command, env=self.env, stdin=subprocess.DEVNULL, stdout=log,
                                    stderr=log,
                                    preexec_fn=lambda: begin_process(self.user), **options)

    def told(self, *command):
        """The first line that the command writes to the descriptor that stands for {}."""
        read, write = os.pipe()
        self.spawn(*(part.format(write) if "{}" in part else part for part in command),
                   pass_fds=[write])
        os.close(write)
        with open(read, encoding="utf-8") as pipe:
            line = pipe.readline().strip()
        if not line:
            raise AssertionError(f"{command[0]} did not start:\n{self.log()}")
        return line

    def log(self):
        return (self.folder / "log").read_text(encoding="utf-8", errors="replace")

    def processes(self):
        """What runs with this desktop's environment: also what the buses and xclip left behind."""
        found = []
        for entry in Path("/proc").iterdir():
            with contextlib.suppress(OSError, ValueError):
                if self.mark.encode() in (entry / "environ").read_bytes().split(b"\0"):
                    found.append(int(entry.name))
        return found

    def stop(self):
        end = time.monotonic() + 10
        while (running := self.processes()) and time.monotonic() < end:
            for process in running:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(process, signal.SIGKILL)
            with contextlib.suppress(ChildProcessError):
                while os.waitpid(-1, os.WNOHANG) != (0, 0):
                    pass
            time.sleep(POLL)

    def dump(self):
        return (self.folder / "screen/Xvfb_screen0").read_bytes()

    def picture(self, path):
        Path(path).write_bytes(png_of(self.dump()))

    def pixel(self, x, y):
        """The red, green and blue at a place of the screen."""
        dump = self.dump()
        header = struct.unpack(">25I", dump[:100])
        place = header[0] + 12 * header[19] + y * header[12] + 4 * x
        return dump[place + 2], dump[place + 1], dump[place]

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], env=self.env, check=True, timeout=LIMIT,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def press(self, *keys):
        self.xdotool("key", "--delay", 20, *keys)

    def click_at(self, x, y, modifier=None):
        hold = ["keydown", modifier] if modifier else []
        release = ["keyup", modifier] if modifier else []
        self.xdotool("mousemove", x, y, *hold, "click", 1, *release)

    def paste(self, text):
        """Puts a text where the keyboard is; typing loses the first of several Chinese characters."""
        subprocess.run(["xclip", "-selection", "clipboard"], env=self.env, input=text.encode(),
                       check=True, timeout=LIMIT, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        self.press("ctrl+v")

    def clipboard(self):
        """The text that the program has put on the clipboard; None if there is none."""
        done = subprocess.run(["xclip", "-o", "-selection", "clipboard"], env=self.env, timeout=LIMIT,
                              capture_output=True, check=False)
        return done.stdout.decode() if done.returncode == 0 else None


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
        return self.accessible.get_state_set().contains(getattr(Atspi.StateType, state))

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
        extents = self.accessible.get_extents(Atspi.CoordType.SCREEN)
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
        return Element(self.desktop, self.accessible.get_table_iface().get_accessible_at(row, column))

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
        root = Atspi.get_desktop(0)
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

    def resize(self, window, width, height):
        """Gives the active window this size, as by dragging its corner."""
        self.desktop.xdotool("getactivewindow", "windowsize", width, height)
        wait_for(f"size of {window.name}", lambda: window.box()[2:] == (width, height))

    def choose_file(self, path):
        """Gives the file dialog a path."""
        dialog = self.window("dialog")
        field = dialog.find("text", "文件名称")
        field.write(str(path))
        self.desktop.press("Return")
        self.gone(dialog)

    def end(self):
        """Waits until the program has ended by itself; gives its exit code."""
        return self.process.wait(timeout=LIMIT)

    def dump(self):
        return "\n".join(line for window in self.windows() for line in window.dump())


class DesktopTest(unittest.TestCase):
    """A desktop, and copies of the programs with the data as it is shipped."""

    maxDiff = None
    user = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="yunshan-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()
        self.folder.chmod(0o755)
        self.library = self.folder / "试验.CJK"
        self.program = self.copied_program()
        self.desktop = Desktop(self.folder / "desktop", self.user)
        self.addCleanup(self.desktop.stop)
        self.desktop.start()
        self.running = None

    def copied_program(self):
        """A program that may write beside itself keeps its files there, not in the build."""
        programs = self.folder / "program"
        programs.mkdir()
        shutil.copy2(PROGRAM, programs)
        shutil.copy2(Path(PROGRAM).parent / "MFC.dll", programs)
        shutil.copytree(yunshan.ROOT / "data", programs / "data")
        if self.user is not None:
            hand_over(programs, self.user)
        return programs / Path(PROGRAM).name

    def start(self, *arguments, env=None, **options):
        if env:
            self.desktop.env.update(env)
        self.running = Run(self.desktop, [options.pop("program", self.program), *arguments],
                           cwd=self.folder, **options)
        return self.running

    def cli(self, *arguments):
        result = yunshan.run(*arguments, cwd=self.folder)
        self.assertEqual(result.code, yunshan.DONE, result.err)
        return result

    def make_library(self, *exams):
        """The library of the demonstration with these exams, scored."""
        subjects = "语文,数学,英语,物理,化学,生物,政治,历史,地理,文科总分,理科总分,总分"
        self.cli("new", self.library, "--subjects", subjects)
        self.cli("import-students", self.library, yunshan.DEMO / "学生名单.xlsx", "--no-backup")
        for exam in exams:
            for sheet in ("文科", "理科"):
                self.cli("import-exam", self.library, yunshan.DEMO / f"{exam}.xlsx", "--exam", exam,
                         "--sheet", sheet, "--no-backup")
            self.cli("score", self.library, exam)

    def show_failure(self):
        picture = Path(PICTURES) / f"{self.id()}.png"
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
