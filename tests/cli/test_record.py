"""One student's record from outside: printed, changed field by field, and given a photo."""

import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import DONE, ERROR, USAGE

SAVE_TAG = " - Private Sub Command1_Click/FormXGXX"
FIELDS = ["班级", "学号", "姓名", "类别", "科类", "性别", "照片名", "出生时间", "入学时间", "学籍号",
          "原毕业学校", "身份证", "民族", "籍贯", "备注"]


class Scored(yunshan.ProgramTest):
    """甲 and 乙 of class 1 (文), 丙, 丁 and 戊 (理), with two scored exams."""

    def setUp(self):
        super().setUp()
        self.make_scored_exams(best=90)

    def record(self, *options, student=("--id", "1"), expect=DONE):
        return self.run_program("record", self.library, *student, *options, expect=expect)

    def student(self, *columns, student=1):
        return self.rows(f"select {','.join(columns)} from 信息表 where ID=?", student)[0]

    def gif(self, name="甲.gif"):
        """The smallest picture there is."""
        path = self.folder / name
        path.write_bytes(bytes.fromhex("47494638396101000100800000ffffff00000021f90401000000002c"
                                       "00000000010001000002024401003b"))
        return path


class Printed(Scored):
    def test_tab_separated_text_is_the_default(self):
        self.change("update 信息表 set 性别='女', 备注='第一行\n第二行' where ID=1")
        result = self.record()
        values = {"班级": "1", "学号": "1", "姓名": "甲", "科类": "文", "性别": "女",
                  "备注": "第一行⏎第二行"}
        self.assertEqual(result.err, "")
        self.assertEqual(result.out, "".join(f"{field}\t{values.get(field, '')}\n"
                                             for field in FIELDS))

    def test_json_is_the_grid(self):
        result = self.record("--format", "json").json()
        self.assertEqual(result["Rows"], 15)
        self.assertEqual(result["Cols"], 2)
        self.assertEqual(result["FixedRows"], 0)
        self.assertEqual(result["TextMatrix"][2], ["姓名", "甲"])
        self.assertEqual(result["Messages"], [])
        self.assertEqual(result["Sql"], "")

    def test_a_student_is_named_by_class_and_number_too(self):
        self.assertEqual(self.record(student=("--class", "1", "--number", "2")).out,
                         self.record(student=("--id", "2")).out)

    def test_printing_writes_nothing(self):
        before = yunshan.file_hash(self.library)
        self.record()
        self.assertUntouched(before)


class Changed(Scored):
    def test_fields_are_set_and_nothing_is_printed(self):
        result = self.record("--set", "性别=女", "--set", "备注=a=b", "--set", "出生时间=2009-07-31",
                             "--set=籍贯=O'Brien --")
        self.assertEqual((result.out, result.err), ("", ""))
        self.assertEqual(self.student("性别", "备注", "出生时间", "籍贯"),
                         ("女", "a=b", "2009-07-31", "O'Brien --"))
        self.assertEqual(self.student("性别", "备注", student=2), (None, None))

    def test_an_empty_value_keeps_the_old_one(self):
        self.record("--set", "姓名=")
        self.assertEqual(self.student("姓名"), ("甲",))

    def test_a_text_for_a_number_is_refused_and_the_rest_saved(self):
        result = self.record("--set", "班级=三班", "--set", "性别=女")
        self.assertEqual(result.err, "“三班”不能存入列“班级”：不是数字。" + SAVE_TAG + "\n")
        self.assertEqual(self.student("班级", "性别"), (1, "女"))

    def test_a_new_name_stays_here_alone(self):
        result = self.record("--set", "姓名=申")
        self.assertEqual(result.err, "“甲”改名为“申”。以前的 2 条成绩里还是原来的姓名，要一起改吗？"
                                     " → 只改这里\n")
        self.assertEqual(self.student("姓名"), ("申",))
        self.assertEqual(self.rows("select distinct 姓名 from 成绩表 where id=1"), [("甲",)])

    def test_a_third_stream_is_not_made(self):
        before = yunshan.content_hash(self.library)
        result = self.record("--set", "科类=艺", "--set", "性别=女")
        self.assertTrue(result.err.startswith(
            "保存以后成绩库里有 3 个科类：文（1 人）、理（3 人）、艺（1 人）。"), result.err)
        self.assertTrue(result.err.endswith(" → 取消\n"), result.err)
        self.assertEqual(yunshan.content_hash(self.library), before)

    def test_two_students_do_not_come_to_one_number(self):
        result = self.record("--set", "学号=2")
        self.assertIn("1 班 2 号已经有 1 人：乙。", result.err)
        self.assertEqual(self.student("学号"), (1,))

    def test_a_read_only_library_is_told(self):
        self.library.chmod(0o444)
        self.folder.chmod(0o555)
        self.addCleanup(self.folder.chmod, 0o755)
        if os.access(self.library, os.W_OK):
            self.skipTest("this user writes whatever the permissions")
        result = self.record("--set", "性别=女", expect=ERROR)
        self.assertTrue(result.err.endswith(SAVE_TAG + "\n"), result.err)
        self.assertEqual(self.student("性别"), (None,))


class Photos(Scored):
    def test_a_photo_goes_in(self):
        path = self.gif()
        result = self.record("--photo", path.name)
        self.assertEqual((result.out, result.err), ("", ""))
        self.assertEqual(self.student("照片名", "照片"), ("甲.gif", path.read_bytes()))
        # The same name once more is another photo all the same.
        path.write_bytes(path.read_bytes() + b"\0")
        self.record("--photo", path.name)
        self.assertEqual(self.student("照片"), (path.read_bytes(),))

    def test_what_is_no_picture_is_refused_and_the_fields_are_saved(self):
        path = self.folder / "名单.xlsx"
        result = self.record("--photo", path, "--set", "性别=女", expect=ERROR)
        self.assertIn(f"“{path}”", result.err)
        self.assertEqual(self.student("照片名", "照片", "性别"), (None, None, "女"))

    def test_a_file_that_does_not_exist_is_told(self):
        for name in ("没有.jpg", ""):
            result = self.record("--photo", name, "--set", "性别=女", expect=ERROR)
            self.assertEqual(result.err, f"照片文件不存在：\n{name}\n")
            self.assertEqual(self.student("照片名", "性别"), (None, "女"))

    def test_a_photo_of_a_save_that_is_given_up_is_none(self):
        result = self.record("--photo", self.gif(), "--set", "科类=艺", expect=ERROR)
        self.assertIn(" → 取消\n", result.err)
        self.assertEqual(self.student("照片名"), (None,))


class Usage(Scored):
    def wrong(self, *arguments, says):
        before = yunshan.file_hash(self.library)
        result = self.run_program("record", self.library, *arguments, expect=USAGE)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith(says + "\n"), result.err)
        self.assertUntouched(before)

    def test_the_student_has_to_be_named_and_there(self):
        self.wrong(says="缺少选项 --id。")
        self.wrong("--class", "1", says="缺少选项 --number。")
        self.wrong("--id", "1", "--class", "1", says="--id 不能和 --class、--number 一起使用。")
        self.wrong("--id", "99", says="成绩库里没有 ID 为 99 的学生。")
        self.wrong("--class", "1", "--number", "9", "--set", "性别=女",
                   says="成绩库里没有 1 班 9 号的学生。")

    def test_fields_have_to_be_those_of_the_record(self):
        self.wrong("--id", "1", "--set", "爱好=棋",
                   says=f"学生信息里没有“爱好”，可以是：{'、'.join(FIELDS)}。")
        self.wrong("--id", "1", "--set", "性别", says="选项 --set 的值应为 字段=值：性别")
        self.wrong("--id", "1", "--set", "照片名=a.jpg", says="照片请用 --photo 给出。")

    def test_help_shows_the_usage(self):
        result = self.run_program("record", "--help")
        self.assertTrue(result.out.startswith("yunshan-cli record LIB (--id N | --class C"))


if __name__ == "__main__":
    yunshan.main()
