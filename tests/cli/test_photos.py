"""Photos from outside: those of a folder are set, the students without one are listed."""

import base64
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import DONE, ERROR, USAGE

TAG = " - Private Sub Command1_Click/FormSheZhiZhaoPian"
FINISHED = "设置完毕！\n"
GIF = base64.b64decode("R0lGODlhAQABAIAAAP///wAAACwAAAAAAQABAAACAkQBADs=")


class Photos(yunshan.ProgramTest):
    """Three students: 1-1 甲, 1-2 乙 and 2-1 丙; the folder has a photo of 甲 and of 丙."""

    def setUp(self):
        super().setUp()
        self.make_library("语文")
        self.add_students((1, 1, "甲", "理"), (1, 2, "乙", "理"), (2, 1, "丙", "理"))
        self.pictures = self.file("1/1.jpg", GIF).parents[1]
        self.file("2/丙.JPG", GIF + b"third")

    def file(self, name, content):
        path = self.folder / "照片" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def photos(self, *options, expect=DONE):
        return self.run_program("photos", self.library, *options, expect=expect)

    def stored(self):
        return self.rows("select 姓名, 照片名, 照片 from 信息表 order by ID")

    def wrong(self, *options, says):
        result = self.photos(*options, expect=USAGE)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith(says + "\n"), result.err)

    def copies(self):
        return list(self.folder.glob("*.bak"))

    def test_the_photos_of_a_folder_are_set(self):
        result = self.photos(self.pictures)
        self.assertEqual(result.out, "")
        self.assertEqual(result.err, "设置了 2 名学生的照片。\n没有照片文件：1 名\n" + FINISHED)
        self.assertEqual(self.stored(), [("甲", "1.jpg", GIF), ("乙", None, None),
                                         ("丙", "丙.JPG", GIF + b"third")])
        self.assertEqual(len(self.copies()), 1)

    def test_without_a_copy_if_asked(self):
        self.photos(self.pictures, "--no-backup")
        self.assertEqual(self.copies(), [])

    def test_the_students_without_a_photo_are_listed(self):
        self.photos(self.pictures)
        before = yunshan.file_hash(self.library)
        self.assertEqual(self.photos("--missing").out, "ID\t班级\t学号\t姓名\n2\t1\t2\t乙\n")
        listed = self.photos("--missing", "--format", "json").json()
        self.assertEqual(listed["TextMatrix"], [["ID", "班级", "学号", "姓名"], ["2", "1", "2", "乙"]])
        self.assertEqual(yunshan.file_hash(self.library), before)

    def test_photos_that_are_there_stay_unless_they_are_replaced(self):
        self.photos(self.pictures)
        self.file("1/1.jpg", GIF + b"new")
        self.file("1/2.jpg", GIF)
        result = self.photos(self.pictures)
        self.assertIn("找到 3 名学生的照片，其中 2 名已经有照片。", result.err)
        self.assertIn("只补没有照片的", result.err)
        self.assertEqual([photo for _, _, photo in self.stored()], [GIF, GIF, GIF + b"third"])
        self.photos(self.pictures, "--replace")
        self.assertEqual([photo for _, _, photo in self.stored()], [GIF + b"new", GIF, GIF + b"third"])

    def test_a_file_that_is_no_picture_is_refused_and_the_others_are_set(self):
        path = self.file("1/2.jpg", b"text")
        result = self.photos(self.pictures, expect=ERROR)
        self.assertIn(f"照片文件“{path}”不是图片，或已损坏。{TAG}\n", result.err)
        self.assertTrue(result.err.endswith("照片文件不能用：1 名\n" + FINISHED), result.err)
        self.assertEqual([name for _, name, _ in self.stored()], ["1.jpg", None, "丙.JPG"])

    def test_large_photos_go_in_as_they_are_unless_smaller_ones_are_wanted(self):
        large = GIF + bytes(5 * 1024 * 1024)
        self.file("1/1.jpg", large)
        self.assertIn("1 张照片很大", self.photos(self.pictures).err)
        self.assertEqual(self.stored()[0][2], large)
        self.photos(self.pictures, "--replace", "--smaller")
        self.assertTrue(self.stored()[0][2].startswith(b"\xff\xd8\xff"))
        self.assertLess(len(self.stored()[0][2]), 2000)

    def test_a_folder_that_is_not_there_is_told(self):
        result = self.photos(self.folder / "没有", expect=ERROR)
        self.assertEqual(result.err, f"文件夹不存在：\n{self.folder / '没有'}\n")

    def test_wrong_use(self):
        self.wrong(says="缺少照片文件夹。")
        self.wrong("", says="缺少照片文件夹。")
        self.wrong(self.pictures, "--missing", says="--missing 不能和照片文件夹一起使用。")
        self.wrong("--missing", "--no-backup", says="--missing 不能和 --no-backup 一起使用。")
        self.wrong("--missing", "--replace", says="--missing 不能和 --replace 一起使用。")
        self.wrong(self.pictures, "--format", "json", says="--format 只和 --missing 一起使用。")


yunshan.main()
