"""What `cmake --install` makes of a build: the tree, how the desktop knows the program, and that the
installed programs keep the tree as it is.

Called with the path of cmake and the build folder.
"""

import configparser
import gzip
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ET
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ROOT

CMAKE, BUILD = None, None
MIME = "{http://www.freedesktop.org/standards/shared-mime-info}"
TYPE = "application/x-yunshan-library"
HELP = "云杉学业册帮助文件.doc"


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


def state(folder):
    """What would differ after any write: names, bytes and times."""
    return {path: (path.lstat().st_mtime_ns, path.is_file() and path.read_bytes())
            for path in [folder, *folder.rglob("*")]}


def desktop_entry(path):
    parser = configparser.ConfigParser(interpolation=None, delimiters="=", strict=True)
    parser.optionxform = str
    parser.read(path, encoding="utf-8")
    return parser["Desktop Entry"]


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # Blanks and Chinese in a prefix must not matter.
        cls.folder = Path(tempfile.mkdtemp(prefix="yunshan 安装-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        cls.prefix = cls.folder / "usr"
        done = subprocess.run([CMAKE, "--install", BUILD, "--prefix", cls.prefix],
                              capture_output=True, text=True, check=False)
        if done.returncode:
            raise AssertionError(done.stdout + done.stderr)

    def setUp(self):
        home = tempfile.TemporaryDirectory(prefix="yunshan-")
        self.addCleanup(home.cleanup)
        self.home = Path(home.name)

    def run_installed(self, *arguments):
        result = yunshan.run(*arguments, program=self.prefix / "bin/yunshan-cli", cwd=self.home,
                             env=yunshan.environment(self.home / "share"))
        self.assertEqual(result.code, 0, f"stdout: {result.out}\nstderr: {result.err}")
        return result


class Tree(Installed):
    def expected(self):
        guide = files_below(ROOT / "docs/guide")
        data = {path.name for path in (ROOT / "data").iterdir()}
        return {
            "bin/yunshan", "bin/yunshan-cli", "share/applications/yunshan.desktop",
            "share/mime/packages/yunshan.xml", "share/yunshan/MFC.dll",
            "share/yunshan/示范成绩库.CJK",
            "share/doc/yunshan/copyright", "share/doc/yunshan/changelog.gz",
            "share/icons/hicolor/scalable/apps/yunshan.svg",
            *(f"share/icons/hicolor/{size}x{size}/apps/yunshan.png" for size in (48, 128, 256)),
            *(f"share/yunshan/data/{name}" for name in data),
            *(f"share/yunshan/{name}" for name in guide if name == HELP),
            *(f"share/doc/yunshan/guide/{name}" for name in guide if name != HELP),
        }

    def test_exactly_the_expected_files_are_installed(self):
        self.assertEqual(sorted(files_below(self.prefix)), sorted(self.expected()))

    def test_the_defaults_are_those_of_the_source(self):
        for path in (ROOT / "data").iterdir():
            shipped = self.prefix / "share/yunshan/data" / path.name
            self.assertEqual(shipped.read_bytes(), path.read_bytes(), path.name)

    def test_the_changelog_unpacks(self):
        with gzip.open(self.prefix / "share/doc/yunshan/changelog.gz") as packed:
            self.assertEqual(packed.read(), (ROOT / "CHANGELOG.md").read_bytes())

    def test_pictures_have_the_size_of_their_folder(self):
        for size in (48, 128, 256):
            picture = self.prefix / f"share/icons/hicolor/{size}x{size}/apps/yunshan.png"
            header = picture.read_bytes()[:24]
            self.assertEqual(header[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual((int.from_bytes(header[16:20], "big"),
                              int.from_bytes(header[20:24], "big")), (size, size))


class Desktop(Installed):
    def setUp(self):
        super().setUp()
        self.entry = desktop_entry(self.prefix / "share/applications/yunshan.desktop")
        self.mime = ET.parse(self.prefix / "share/mime/packages/yunshan.xml").getroot()

    def test_the_desktop_entry_opens_a_library_with_the_installed_program(self):
        self.assertEqual(self.entry["Type"], "Application")
        self.assertEqual(self.entry["Name"], "云杉学业册")
        self.assertEqual(self.entry["Exec"], "yunshan %f")
        self.assertEqual(self.entry["Terminal"], "false")

    def test_its_icon_is_installed(self):
        name = self.entry["Icon"]
        self.assertTrue((self.prefix / f"share/icons/hicolor/48x48/apps/{name}.png").is_file())

    def test_both_files_name_the_same_type(self):
        self.assertEqual(self.entry["MimeType"], TYPE + ";")
        self.assertEqual([kind.get("type") for kind in self.mime], [TYPE])

    def test_libraries_are_known_by_both_spellings_of_their_ending(self):
        globs = [glob.get("pattern") for glob in self.mime.iter(MIME + "glob")]
        self.assertEqual(globs, ["*.CJK", "*.cjk"])
        self.assertEqual(self.mime.find(f"*/{MIME}comment").text, "云杉成绩库文件")


class Programs(Installed):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # For an ordinary user nothing can be written; for root the comparison of states tells.
        for path in [cls.prefix, *cls.prefix.rglob("*")]:
            path.chmod(path.stat().st_mode & ~0o222)
        cls.addClassCleanup(cls.make_writable)

    @classmethod
    def make_writable(cls):
        for path in [cls.prefix, *cls.prefix.rglob("*")]:
            path.chmod(path.stat().st_mode | 0o200)

    def test_a_library_is_made_and_the_installed_tree_stays_as_it_was(self):
        before = state(self.prefix)
        library = self.home / "一中.CJK"
        self.run_installed("new", library, "--subjects", "语文,数学,总分")
        self.assertEqual(yunshan.query(library, "select count(*) from 颜色表"), [(16,)])
        self.assertIn("数学", self.run_installed("info", library).json()["Columns"]["All"])
        self.assertEqual(state(self.prefix), before)

    def test_the_user_gets_the_defaults_and_may_change_them(self):
        self.run_installed("new", self.home / "一中.CJK", "--subjects", "语文")
        own = self.home / "share/yunshan/data"
        self.assertEqual(files_below(own), files_below(ROOT / "data"))
        for path in own.iterdir():
            self.assertTrue(path.stat().st_mode & 0o200, f"{path.name} is read-only")

    def test_the_full_marks_of_the_user_are_the_ones_taken(self):
        library = self.home / "一中.CJK"
        self.run_installed("new", library, "--subjects", "语文")
        (self.home / "share/yunshan/data/满分.txt").write_text("语文=77\n", encoding="utf-8")
        names = yunshan.write_book(self.home / "名单.xlsx", {
            "Sheet": [("班级", "学号", "姓名", "科类"), (1, 1, "甲", "理")]})
        scores = yunshan.write_book(self.home / "期中.xlsx", {
            "Sheet": [("班级", "学号", "姓名", "语文"), (1, 1, "甲", 70)]})
        self.run_installed("import-students", library, names, "--no-backup")
        self.run_installed("import-exam", library, scores, "--exam", "期中", "--no-backup")
        self.assertEqual(yunshan.query(library, "select 语文 from 考试名称表"), [(77,)])


if __name__ == "__main__":
    CMAKE, BUILD = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1], verbosity=2)
