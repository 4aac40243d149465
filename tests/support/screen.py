"""A screen for programs (Xvfb with the window manager jwm) with a session bus and an accessibility
bus: keys, mouse, clipboard, pictures. desktop.py drives the program on it.
"""

import contextlib
import ctypes
import os
import shutil
import signal
import struct
import subprocess
import time
import uuid
import zlib
from pathlib import Path

import yunshan

LIMIT = 30
POLL = 0.02
SCREEN = (1400, 900)
BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
PACKAGES = {"Xvfb": "xvfb", "jwm": "jwm", "xdotool": "xdotool", "xclip": "xclip",
            "dbus-daemon": "dbus", BUS_LAUNCHER: "at-spi2-core"}
# What the desktop of whoever runs the tests says to programs.
FOREIGN = ("QT_", "DBUS_", "AT_SPI_", "KDE_", "GNOME_", "DESKTOP_")
# Windows are activated by a click and when they appear; no tray, no keys of the manager's own.
JWM_SETTINGS = "<?xml version='1.0'?><JWM><Desktops width='1' height='1'/></JWM>"

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
    """The first true value of `probe`, asked over and over; a failure of the bus is none."""
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


def die_with_test():
    """A test that is killed takes its processes with it."""
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

    size = struct.pack(">2I5B", width, height, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", size)
            + chunk(b"IDAT", zlib.compress(bytes(rows), 6)) + chunk(b"IEND", b""))


def become(user, folder):
    """The test goes on as this user, who owns the folder and what is in it."""
    for path in (folder, *folder.rglob("*")):
        os.chown(path, user, user)
    os.setgroups([])
    os.setgid(user)
    os.setuid(user)


class Desktop:
    """A screen with a window manager and the buses, in a folder that holds the user's home."""

    def __init__(self, folder):
        self.folder = folder
        self.mark = f"YUNSHAN_DESKTOP={uuid.uuid4()}"
        self.env = yunshan.environment(folder / "home")
        for name in [name for name in self.env if name.startswith(FOREIGN)]:
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

    def start(self):
        # Without -noreset the screen starts anew when the asking for the window manager ends, and
        # turns the manager away that comes at that moment.
        self.env["DISPLAY"] = ":" + self.told(
            "Xvfb", "-displayfd", "{}", "-screen", "0", f"{SCREEN[0]}x{SCREEN[1]}x24",
            "-noreset", "-nolisten", "tcp", "-fbdir", str(self.folder / "screen"))
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
                                    stderr=log, preexec_fn=die_with_test, **options)

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
        return self.pixels()(x, y)

    def pixels(self):
        """What gives the colour of a place of the screen, which is as it is now."""
        dump = self.dump()
        header = struct.unpack(">25I", dump[:100])
        start, line = header[0] + 12 * header[19], header[12]

        def pixel(x, y):
            place = start + y * line + 4 * x
            return dump[place + 2], dump[place + 1], dump[place]

        return pixel

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], env=self.env, check=True, timeout=LIMIT,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def windows_of(self, process):
        """The visible windows of a process, as the screen numbers them."""
        done = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(process)],
                              env=self.env, timeout=LIMIT, capture_output=True, check=False)
        return set(done.stdout.split())

    def press(self, *keys):
        self.xdotool("key", "--delay", 20, *keys)

    def click_at(self, x, y, modifier=None):
        hold = ["keydown", modifier] if modifier else []
        release = ["keyup", modifier] if modifier else []
        self.xdotool("mousemove", x, y, *hold, "click", 1, *release)

    def right_click_at(self, x, y):
        self.xdotool("mousemove", x, y, "click", 3)

    def drag(self, x, y, to_x, to_y):
        """Drags by the left button, in two steps as a hand does."""
        self.xdotool("mousemove", x, y, "mousedown", 1)
        self.xdotool("mousemove", (x + to_x) // 2, (y + to_y) // 2)
        self.xdotool("mousemove", to_x, to_y, "mouseup", 1)

    def paste(self, text):
        """Puts a text where the keyboard is; typing would lose the first of Chinese characters."""
        subprocess.run(["xclip", "-selection", "clipboard"], env=self.env, input=text.encode(),
                       check=True, timeout=LIMIT, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        self.press("ctrl+v")

    def clipboard(self):
        """The text that the program has put on the clipboard; None if there is none."""
        done = subprocess.run(["xclip", "-o", "-selection", "clipboard"], env=self.env,
                              timeout=LIMIT, capture_output=True, check=False)
        return done.stdout.decode() if done.returncode == 0 else None
