"""The copies of a library: what they were made ahead of, what they have otherwise, and the way back."""

import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, HEADINGS, USAGE

DONE = "恢复完毕，成绩库现在是 {} 的内容。\n"
REFUSED = "这份备份不能用，成绩库没有改变："
ABSENT = "文件 {} 不存在。"


class Backups(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_scored_exams(90)

    def copies(self):
        return self.run_program("backups", self.library, "--format", "json").json()["Copies"]

    def occasions(self):
        return ["；".join(each["Text"] for each in copy["Occasions"]) for copy in self.copies()]

    def import_exam_with_copy(self, name="期末考"):
        book = self.book("新.xlsx", (*HEADINGS, "语文", "数学"), (1, 1, "甲", 99, 80))
        self.run_program("import-exam", self.library, book, "--exam", name)

    def differences(self, copy="1"):
        return [line["Text"] for line in self.run_program(
            "backups", self.library, "--diff", copy, "--format", "json").json()["Differences"]]


class Occasions(Backups):
    def test_each_command_that_copies_says_which_it_was(self):
        self.import_exam_with_copy()
        self.run_program("set-streams", self.library, "--science", "2,3")
        classes = self.book("分班.xlsx", (*HEADINGS, "新班级", "新学号"), (1, 1, "甲", 1, 9))
        self.run_program("reclass", self.library, classes)
        students = self.book("名单.xlsx", HEADINGS, (7, 1, "新"))
        self.run_program("import-students", self.library, students)
        self.assertEqual(self.occasions(),
                         ["导入学生名单", "重新分班", "设置文理", "导入 期末考"])
        self.run_program("browse", self.library, "--exam", "期中", "--sql",
                         "delete from 颜色表", "--accept-changes", expect=ERROR)
        self.run_program("delete-subjects", self.library, "语文,数学", "--yes")
        self.assertEqual(self.occasions()[:2], ["删除科目 语文、数学", "执行语句 delete from 颜色表"])

    def test_what_stands_beside_the_library_is_listed_with_and_without_an_occasion(self):
        self.import_exam_with_copy()
        made = self.copies()[0]
        older = f"{self.library}_2020-01-02_0304.bak"
        shutil.copyfile(self.library, older)
        compacted = f"{self.library}_2019-05-06_.bak"
        shutil.copyfile(self.library, compacted)
        shutil.copyfile(self.library, self.folder / "我的副本.CJK")
        result = self.run_program("backups", self.library)
        lines = [line.split("\t") for line in result.out.splitlines()]
        self.assertEqual(lines[0], ["序号", "时间", "在哪一步之前", "大小", "文件"])
        self.assertEqual([line[0] for line in lines[1:]], ["1", "2", "3"])
        self.assertEqual(lines[1][2], "导入 期末考")
        self.assertEqual(lines[1][4], Path(made["Path"]).name)
        self.assertEqual(lines[2][1:3], ["2020-01-02 03:04:00", ""])
        self.assertEqual(lines[3][1:3], ["2019-05-06 00:00:00", "压缩数据库"])
        self.assertRegex(lines[2][3], r"^\d+\.\d KB$")

    def test_a_file_of_occasions_that_is_none_of_ours_harms_nothing(self):
        self.import_exam_with_copy()
        Path(self.copies()[0]["Path"] + ".json").write_bytes(b"\xff{not json")
        self.assertEqual(self.occasions(), [""])


class Differences(Backups):
    def test_names_what_is_otherwise_now(self):
        self.import_exam_with_copy()
        self.change("delete from 成绩表 where 考试名称='期中'")
        self.change("delete from 考试名称表 where 考试名称='期中'")
        self.change("update 成绩表 set 语文=语文+1 where 考试名称='期末' and 班级=2")
        self.change("update 成绩表 set 总分年名=77 where 考试名称='期末' and 班级=3")
        self.change("update 信息表 set 姓名='改名' where 姓名='乙'")
        self.change("update 信息表 set 班级=9 where 姓名='丁'")
        self.change("update 信息表 set 性别='女' where 姓名='丙'")
        self.change("delete from 信息表 where 姓名='戊'")
        self.change("insert into 信息表(班级,学号,姓名,科类) values(4,4,'新','理')")
        self.change("update 颜色表 set 颜色=颜色+1")
        result = self.run_program("backups", self.library, "--diff", "1")
        self.assertEqual(result.out, """恢复这份备份会怎样
备份以后增加、恢复后没有的考试：1 次
　　期末考
备份以后删除、恢复后又有的考试：1 次
　　期中
恢复后回到备份内容的考试：1 次，不同的成绩共 2 个
　　期末：成绩不同 2 个，总分、名次、班级或姓名不同 1 行
备份以后增加、恢复后没有的学生：1 名
　　4 班 4 号 新
备份以后删除、恢复后又有的学生：1 名
　　3 班 1 号 戊
恢复后回到原来班级和学号的学生：1 名
　　9 班 2 号 丁，备份里是 2 班 2 号 丁
恢复后改回原来姓名的学生：1 名
　　1 班 2 号 改名，备份里的姓名是 乙
其他信息回到备份内容的学生：1 名
　　2 班 1 号 丙
也回到备份内容的：1 项
　　分析图的颜色
""")

    def test_a_library_that_was_compacted_or_is_the_same_has_none(self):
        self.import_exam_with_copy()
        copy = self.copies()[0]["Path"]
        shutil.copyfile(copy, self.library)
        self.assertEqual(self.differences(), [])
        self.assertEqual(self.run_program("backups", self.library, "--diff", "1").out,
                         "恢复这份备份会怎样\n这份备份和现在的成绩库内容相同（照片只比较了大小）。\n")
        self.change("delete from 成绩表 where rowid=1")
        self.change("vacuum")
        self.assertEqual(self.differences(copy), ["恢复后回到备份内容的考试：1 次，1 人次的成绩恢复后又有"])

    def test_subjects_that_came_or_went(self):
        self.import_exam_with_copy()
        self.run_program("delete-subjects", self.library, "数学", "--yes", "--no-backup")
        self.assertEqual(self.differences()[-1], "备份以后删除、恢复后又有的科目：1 个")

    def test_a_copy_that_is_not_there_is_told(self):
        result = self.run_program("backups", self.library, "--diff", "7", expect=USAGE)
        self.assertIn("没有第 7 份备份，一共有 0 份。", result.err)
        self.run_program("backups", self.library, "--diff", "没有.bak", expect=ERROR)
        gone = self.folder / "没有.CJK"
        result = self.run_program("backups", gone, expect=ERROR)
        self.assertEqual(result.err, f"{gone} 不存在，旁边也没有它的备份。\n")


class Restore(Backups):
    def setUp(self):
        super().setUp()
        self.before = yunshan.content_hash(self.library)
        self.import_exam_with_copy()
        self.copy = self.copies()[0]["Path"]

    def restore(self, copy, **options):
        return self.run_program("restore", self.library, copy, **options)

    def test_brings_the_copy_back_and_keeps_what_was_there(self):
        after = yunshan.content_hash(self.library)
        result = self.restore("1")
        self.assertEqual(result.err, DONE.format(self.copy))
        self.assertEqual(yunshan.content_hash(self.library), self.before)
        former = result.out.strip()
        self.assertEqual(yunshan.content_hash(former), after)
        self.assertEqual(self.occasions(), ["恢复备份", "导入 期末考"])
        self.restore(former)
        self.assertEqual(yunshan.content_hash(self.library), after)
        self.assertEqual([path.name for path in self.folder.iterdir()
                          if path.name.startswith(".yunshan")], [])

    def test_the_oldest_copy_stays_while_it_is_restored(self):
        for day in range(1, 6):
            shutil.copyfile(self.library, f"{self.library}_2019-01-0{day}_080000.bak")
        oldest = f"{self.library}_2019-01-01_080000.bak"
        self.restore(oldest)
        self.assertTrue(Path(oldest).exists())

    def test_a_damaged_or_missing_library_comes_back_too(self):
        damaged = self.library.read_bytes()[:5000]
        self.library.write_bytes(damaged)
        result = self.restore("1")
        self.assertEqual(yunshan.content_hash(self.library), self.before)
        self.assertEqual(Path(result.out.strip()).read_bytes(), damaged)
        self.library.unlink()
        self.assertEqual(self.restore(self.copy).out, "")
        self.assertEqual(yunshan.content_hash(self.library), self.before)

    def test_a_copy_of_no_use_is_told_and_nothing_changes(self):
        before = yunshan.file_hash(self.library)
        files = {"旧.bak": b"\x00\x01\x00\x00Standard Jet DB\x00" + b"\0" * 5000,
                 "乱.bak": b"not a library" * 500, "空.bak": b"",
                 "断.bak": Path(self.copy).read_bytes()[:20000]}
        for name, content in files.items():
            (self.folder / name).write_bytes(content)
            result = self.restore(name, expect=ERROR)
            self.assertTrue(result.err.startswith(REFUSED), result.err)
            self.assertUntouched(before)
        pages = bytearray(Path(self.copy).read_bytes())
        pages[40960:49152] = b"\x55" * 8192
        (self.folder / "坏.bak").write_bytes(pages)
        damaged = self.folder / "坏.bak"
        self.assertEqual(self.restore(damaged, expect=ERROR).err,
                         f"{REFUSED}文件 {damaged} 已经损坏。\n")
        gone = self.folder / "没有.bak"
        self.assertEqual(self.restore(gone, expect=ERROR).err,
                         REFUSED + ABSENT.format(gone) + "\n")
        self.assertEqual(self.restore(self.library, expect=ERROR).err,
                         REFUSED + "它就是成绩库本身。\n")
        self.assertUntouched(before)
        self.assertEqual(len(self.copies()), 1)

    def test_wrong_use_says_what_is_wrong(self):
        for number in ("0", "2", "-1"):
            result = self.run_program("restore", self.library, number, expect=USAGE)
            self.assertIn(f"没有第 {number} 份备份，一共有 1 份。", result.err)
        self.assertIn("缺少参数。", self.run_program("restore", self.library, expect=USAGE).err)


if __name__ == "__main__":
    yunshan.main()
