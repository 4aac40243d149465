"""What a conversion that was killed leaves goes at the next start, whatever that works on."""

import os
import shutil
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import oldsamples
import yunshan

# Of another machine, whose processes nobody here knows; a day later they are taken for gone.
LEFT = ".yunshan-00000000-999999999-12345678.tmp"
TWO_DAYS = 2 * 24 * 60 * 60


class KilledConversion(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        program = Path(yunshan.PROGRAM)
        self.program = self.folder / "program" / program.name
        self.program.parent.mkdir()
        for name in (program.name, "MFC.dll"):
            shutil.copy2(program.parent / name, self.program.parent)
        shutil.copytree(yunshan.ROOT / "data", self.program.parent / "data")
        self.notes = self.program.parent / "data" / "转换"
        self.away = self.folder / "别处"
        self.away.mkdir()

    def run_copy(self, *arguments):
        return yunshan.run(*arguments, program=self.program, cwd=self.folder)

    def leave(self, path, content):
        path.write_bytes(content)
        then = time.time() - TWO_DAYS
        os.utime(path, (then, then))
        return path

    def test_any_command_removes_it(self):
        self.notes.mkdir()
        left = [self.leave(self.notes / LEFT, str(self.away / "新.CJK").encode()),
                self.leave(self.away / LEFT, b"half"),
                self.leave(self.away / f"{LEFT}-journal", b"half")]
        own = self.leave(self.away / "新.CJK.tmp", b"the user's own")
        self.run_copy("info", self.folder / "没有.CJK")
        self.assertEqual([path for path in left if path.exists()], [])
        self.assertTrue(own.exists())

    def test_a_conversion_that_ends_leaves_no_note(self):
        old = self.away / "旧库.CJK"
        old.write_bytes(oldsamples.data(oldsamples.SMALL))
        self.assertEqual(self.run_copy("convert", old).code, yunshan.DONE)
        self.assertEqual(list(self.notes.iterdir()), [])
        self.assertEqual(sorted(path.name for path in self.away.iterdir()),
                         ["旧库.CJK", "旧库（转换）.CJK"])


if __name__ == "__main__":
    yunshan.main()
