#!/usr/bin/python3
"""Every file call of every scenario fails once, and from then on; the program is killed at every file
call, and at random moments. Prints what went wrong, and the figures; ends with 1 if anything did.

all_faults.py YUNSHAN-CLI SCREEN_COMMANDS SHIM [--kills N] [--only TEXT] [--most N] [--list]
"""

import argparse
import sys
import tempfile
import time
from pathlib import Path

import campaign
import injection


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("programs", nargs=3, type=Path, metavar="PROGRAM")
    parser.add_argument("--kills", type=int, default=1000, help="at random moments (1000)")
    parser.add_argument("--only", default="", help="scenarios whose names hold this text")
    parser.add_argument("--most", type=int, help="of each kind of fault no more than this many")
    parser.add_argument("--list", action="store_true", help="print each complaint")
    return parser.parse_args()


def run_all(given, folder):
    programs = injection.Programs(*(path.resolve() for path in given.programs))
    trial = campaign.Campaign(programs, folder, lambda name: given.only in name)
    thin = injection.thinned(given.most) if given.most else injection.every
    for scenario in trial.scenarios:
        begun = time.monotonic()
        found = trial.run(scenario, thin)
        print(f"{scenario.name}: {len(scenario.calls)} file calls, {len(found)} complaints, "
              f"{time.monotonic() - begun:.0f} s", flush=True)
    if given.kills:
        trial.kill_at_random(given.kills)
    return trial.figures


def main():
    given = arguments()
    with tempfile.TemporaryDirectory(prefix="yunshan-faults-") as folder:
        figures = run_all(given, folder)
    complaints = figures.complaints
    told = complaints if given.list else campaign.grouped(complaints)
    for line in (*told, *campaign.report(figures)):
        print(line)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
