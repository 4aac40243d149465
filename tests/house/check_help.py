#!/usr/bin/env python3
"""The help document is what packaging/make_help.py makes of the guide as it stands."""
import subprocess
import sys
import tempfile
from pathlib import Path


def main():
    top = Path(sys.argv[1])
    guide = top / "docs" / "guide"
    with tempfile.TemporaryDirectory() as folder:
        made = Path(folder) / "help.doc"
        subprocess.run([sys.executable, "-B", top / "packaging" / "make_help.py", guide, made],
                       check=True)
        documents = list(guide.glob("*.doc"))
        if len(documents) != 1 or documents[0].read_bytes() != made.read_bytes():
            sys.exit("The help document is older than the guide: run packaging/make_help.py")
    print("The help document is that of the guide.")


if __name__ == "__main__":
    main()
