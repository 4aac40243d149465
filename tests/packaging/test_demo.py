"""What ./run makes and tells where there is no display: the demonstration library, and on paper one
class of it.

Called with the path of yunshan-cli.
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import openpyxl
import yunshan
from yunshan import ROOT

STUDENTS_OF_THE_CLASS = 40
STEPS = "set -euo pipefail; . packaging/demo.sh; make_demo_library; show_demo_library"


class WithoutDisplay(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="yunshan 演示-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        cls.library = cls.folder / "云杉中学.CJK"
        names = {"bin": str(Path(yunshan.PROGRAM).parent), "demo": str(cls.library)}
        done = subprocess.run(["bash", "-c", STEPS], cwd=ROOT, capture_output=True, text=True,
                              env=yunshan.environment(cls.folder / "home") | names, check=False)
        if done.returncode:
            raise AssertionError(done.stdout + done.stderr)
        cls.lines = done.stdout.splitlines()

    def test_tells_what_the_library_holds_and_where_it_is(self):
        for line in ("文：1、2 班， 80 人", "考试：高一期中、高一期末、高二月考",
                     f"Library:  {self.library}"):
            self.assertIn(line, self.lines)

    def test_all_classes_but_one_have_photos_and_two_students_of_another_have_none(self):
        missing = yunshan.query(self.library, "select 班级, count(*) from 信息表 where 照片 is null"
                                              " or 照片名 is null group by 班级")
        self.assertEqual(missing, [(3, 2), (6, STUDENTS_OF_THE_CLASS)])
        (smallest, largest), = yunshan.query(
            self.library, "select min(length(照片)), max(length(照片)) from 信息表 where 照片 is not null")
        self.assertGreater(smallest, 1000)
        self.assertLess(largest, 20_000)

    def test_the_scores_of_a_class_have_a_chart_for_each_student(self):
        path = self.folder / "1班成绩.xlsx"
        self.assertIn(str(path), self.lines)
        sheet = openpyxl.load_workbook(path).worksheets[0]
        self.assertEqual(len(sheet._charts), STUDENTS_OF_THE_CLASS)
        self.assertIn("1 班1 号", sheet["A1"].value)

    def test_the_charts_of_the_class_have_a_page_for_each_student(self):
        path = self.folder / "1班分析图.pdf"
        self.assertIn(str(path), self.lines)
        self.assertEqual(path.read_bytes().count(b"/Type /Page\n"), STUDENTS_OF_THE_CLASS)


if __name__ == "__main__":
    yunshan.main()
