#!/usr/bin/env python3
"""Times the start of the desktop program: from its exec to its first painted window.

    start.py [--programs DIR] [--library FILE] [--platform offscreen xcb] [--rounds 11]

Qt tells on stderr when it hands the first painted pixels to the platform. The program runs with a
home of its own, which it fills in the first round; that round is told apart and not counted. For
xcb without a DISPLAY a display is made by Xvfb.
"""
import argparse
import contextlib
import os
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

BOUND_MS = 500
PAINTED = b"Flushing QRegion"


@contextlib.contextmanager
def display():
    """The DISPLAY at hand, or one that Xvfb makes and that ends with the block."""
    if os.environ.get("DISPLAY"):
        yield os.environ["DISPLAY"]
        return
    read, write = os.pipe()
    with subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1920x1080x24",
                           "-noreset"],
                          pass_fds=[write], stderr=subprocess.DEVNULL) as server:
        os.close(write)
        try:
            with os.fdopen(read) as number:
                yield ":" + number.readline().strip()
        finally:
            server.terminate()


def start(command, environment):
    """Milliseconds until the first flush; the program is ended behind it."""
    begin = time.perf_counter()
    with subprocess.Popen(command, env=environment, stderr=subprocess.PIPE,
                          stdin=subprocess.DEVNULL) as program:
        for line in program.stderr:
            if PAINTED in line:
                took = (time.perf_counter() - begin) * 1000
                program.kill()
                return took
    sys.exit(f"{command} ended with {program.returncode} before it painted")


def measure(platform, options, environment):
    with tempfile.TemporaryDirectory() as home:
        environment = environment | {
            "QT_QPA_PLATFORM": platform, "HOME": home, "XDG_DATA_HOME": home,
            "XDG_RUNTIME_DIR": home, "QT_LOGGING_RULES": "qt.widgets.painting=true"}
        command = [options.programs / "yunshan", *filter(None, [options.library])]
        first = start(command, environment)
        times = sorted(start(command, environment) for _ in range(options.rounds))
    middle = statistics.median(times)
    print(f"start {platform}: median {middle:.0f} ms, {times[0]:.0f} to {times[-1]:.0f} ms, "
          f"first {first:.0f} ms", flush=True)
    return middle


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--programs", type=Path,
                        default=Path(__file__).resolve().parent.parent / "build/release/bin")
    parser.add_argument("--library", type=Path, help="opened at the start")
    parser.add_argument("--platform", nargs="+", default=["offscreen", "xcb"])
    parser.add_argument("--rounds", type=int, default=11)
    options = parser.parse_args()
    options.programs = options.programs.resolve()
    medians = []
    for platform in options.platform:
        with display() if platform == "xcb" else contextlib.nullcontext() as name:
            environment = os.environ | ({"DISPLAY": name} if name else {})
            medians.append(measure(platform, options, environment))
    sys.exit(max(medians) > BOUND_MS)


if __name__ == "__main__":
    main()
