"""Making a library, and what is said of files that are none."""

import os
import resource
import shutil
import sqlite3
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, USAGE

MADE = "新建数据库成功，现在将设置学生信息。\n"
QUESTION = "[文件已存在] 文件已存在,是否覆盖原文件？"
COLUMNS = ("", "年名", "班名", "Z分", "T分")


class NewLibrary(yunshan.ProgramTest):
    def columns(self, table):
        return [row[0] for row in self.rows("select name from pragma_table_info(?)", table)]

    def test_subjects_become_columns_in_the_order_given(self):
        result = self.run_program("new", self.library, "--subjects", "数学, 语文,,理科总分")
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.endswith(MADE), result.err)
        expected = [subject + tail for subject in ("数学", "语文", "理科总分") for tail in COLUMNS]
        self.assertEqual(self.columns("成绩表")[8:], expected + ["理科总分T分年名", "备注"])
        self.assertEqual(self.columns("考试名称表")[5:], ["数学", "语文", "理科总分"])
        self.assertEqual(self.columns("教师表"), ["考试名称", "班级", "数学", "语文", "理科总分"])

    def test_a_new_library_is_empty_but_for_settings_and_formulas(self):
        self.make_library("语文", "总分")
        for table in ("信息表", "成绩表", "考试名称表", "教师表", "分班表", "详细设置表"):
            self.assertEqual(self.rows(f"select count(*) from [{table}]"), [(0,)], table)
        self.assertEqual(self.rows("select 设置 from 设置表 where 名称='T分'"), [("10z+50",)])
        self.assertIn(("总分",), self.rows("select 总分 from 总分公式"))
        self.assertEqual(self.rows("select count(*) from 颜色表"), [(16,)])

    def test_formulas_keep_subjects_that_the_library_lacks_unless_they_are_trimmed(self):
        formula = "select 公式 from 总分公式 where 总分='理科总分'"
        subjects = ("--subjects", "语文,数学,理科总分")
        result = self.run_program("new", self.library, *subjects)
        self.assertIn("理科总分=语文+数学+英语+物理+化学+生物 → 语文+数学\n", result.err)
        self.assertTrue(result.err.endswith(" → 保持不变\n" + MADE), result.err)
        self.assertEqual(self.rows(formula), [("语文+数学+英语+物理+化学+生物",)])
        result = self.run_program("new", self.library, *subjects, "--force", "--trim-formulas")
        self.assertTrue(result.err.endswith(" → 改为现有科目\n" + MADE), result.err)
        self.assertEqual(self.rows(formula), [("语文+数学",)])

    def test_without_subjects_nothing_is_made(self):
        result = self.run_program("new", self.library, expect=USAGE)
        self.assertTrue(result.err.startswith("缺少选项 --subjects。\n"))
        self.assertFalse(self.library.exists())
        for arguments in (("--subjects", ""), ("--subjects", " , ")):
            result = self.run_program("new", self.library, *arguments, expect=ERROR)
            self.assertEqual((result.out, result.err), ("", "请选择科目！\n"))
            self.assertFalse(self.library.exists())

    def test_an_existing_file_is_kept(self):
        self.library.write_bytes(b"something else")
        result = self.run_program("new", self.library, "--subjects", "语文", expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertEqual(result.err, QUESTION + " → 取消\n用户取消，新建成绩库失败。\n")
        self.assertEqual(self.library.read_bytes(), b"something else")

    def test_force_overwrites_an_existing_file(self):
        self.make_library("语文")
        self.add_students((1, 1, "甲", "文"))
        result = self.run_program("new", self.library, "--subjects", "数学", "--force")
        self.assertEqual(result.err, QUESTION + " → 确定\n" + MADE)
        self.assertEqual(self.columns("考试名称表")[5:], ["数学"])
        self.assertEqual(self.rows("select count(*) from 信息表"), [(0,)])

    def test_a_limit_on_sizes_of_files_is_an_error_and_the_old_library_stays(self):
        self.make_library("语文")
        before = yunshan.file_hash(self.library)
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (50_000, 50_000))
        result = yunshan.run("new", self.library, "--subjects", "数学", "--force", cwd=self.folder,
                             preexec_fn=limit)
        self.assertEqual((result.code, result.out), (ERROR, ""))
        self.assertEqual(result.err, QUESTION + f" → 确定\n无法写入文件 {self.library}（磁盘已满，"
                         "或文件的大小受到限制）。 - Private Sub Command1_Click/FormNew\n" + MADE)
        self.assertEqual(yunshan.file_hash(self.library), before)
        self.assertEqual([path.name for path in self.folder.iterdir()], [self.library.name])

    def test_force_through_a_link_leaves_nothing_of_a_crash_to_the_new_library(self):
        self.make_library("语文")
        other = sqlite3.connect(self.library, isolation_level=None)
        other.execute("pragma cache_size=5")
        other.execute("begin")
        other.execute("insert into 信息表(班级, 备注) with recursive n(i) as (select 1 union all "
                      "select i+1 from n where i<3000) select 1, hex(zeroblob(100)) from n")
        crashed = self.folder / "断电.CJK"
        for ending in ("", "-journal"):
            shutil.copyfile(f"{self.library}{ending}", f"{crashed}{ending}")
        other.close()
        os.truncate(crashed, 80_000)
        link = self.folder / "链接.CJK"
        link.symlink_to(crashed)
        self.run_program("new", link, "--subjects", "数学", "--force")
        self.assertTrue(link.is_symlink())
        self.assertFalse(Path(f"{crashed}-journal").exists())
        self.assertEqual(yunshan.query(crashed, "pragma integrity_check"), [("ok",)])
        self.assertIn(("数学",), yunshan.query(crashed, "select name from pragma_table_info('考试名称表')"))

    def test_force_asks_nothing_when_there_is_no_file(self):
        result = self.run_program("new", self.library, "--subjects", "语文", "--force")
        self.assertEqual(result.err, MADE)

    def test_a_relative_path_is_relative_to_where_the_program_runs(self):
        inner = self.folder / "库"
        inner.mkdir()
        self.run_program("new", "../甲.CJK", "--subjects", "语文", cwd=inner)
        self.run_program("new", "乙.CJK", "--subjects", "语文", cwd=inner)
        self.assertTrue((self.folder / "甲.CJK").exists())
        self.assertTrue((inner / "乙.CJK").exists())

    def test_a_subject_named_twice_costs_a_message_each_column(self):
        result = self.run_program("new", self.library, "--subjects", "语文,语文", expect=ERROR)
        self.assertIn("语文", result.err)
        self.assertEqual(self.columns("考试名称表")[5:], ["语文"])

    def test_a_folder_that_does_not_exist(self):
        path = self.folder / "没有" / "甲.CJK"
        result = self.run_program("new", path, "--subjects", "语文", expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertEqual(result.err,
                         f"无法写入文件 {path}（文件夹不存在）。"
                         f" - Private Sub Command1_Click/FormNew\n{path}\n库文件不存在！\n")

    def test_a_library_that_another_program_writes_is_not_overwritten(self):
        self.make_library("语文")
        content = self.library.read_bytes()
        other = sqlite3.connect(self.library, isolation_level=None)
        other.execute("begin exclusive")
        result = self.run_program("new", self.library, "--subjects", "数学", "--force",
                                  expect=ERROR)
        other.execute("rollback")
        other.close()
        self.assertIn(f"文件 {self.library} 正在使用，不能覆盖。", result.err)
        self.assertEqual(self.library.read_bytes(), content)

    def test_a_folder_is_not_asked_about(self):
        self.library.mkdir()
        result = self.run_program("new", self.library, "--subjects", "语文", "--force",
                                  expect=ERROR)
        self.assertEqual(result.err,
                         f"无法写入文件 {self.library}（它是文件夹）。"
                         f" - Private Sub Command1_Click/FormNew\n{self.library}\n库文件不存在！\n")

    def test_no_journal_is_left(self):
        self.make_library("语文")
        self.assertEqual([path.name for path in self.folder.iterdir() if "试验" in path.name],
                         ["试验.CJK"])


class OpenLibrary(yunshan.ProgramTest):
    """Every command but `new` opens the library first."""

    def commands(self):
        book = self.book("成绩.xlsx", (*yunshan.HEADINGS, "语文"), (1, 1, "甲", 90))
        return (("info", self.library), ("score", self.library, "期中"),
                ("browse", self.library, "--exam", "期中"),
                ("import-students", self.library, book),
                ("import-exam", self.library, book, "--exam", "期中"))

    def assertRefused(self, *sentences):
        content = self.library.read_bytes() if self.library.is_file() else None
        for command in self.commands():
            result = self.run_program(*command, expect=ERROR)
            self.assertEqual(result.out, "", command)
            for sentence in sentences:
                self.assertIn(sentence, result.err, command)
            if content is not None:
                self.assertEqual(self.library.read_bytes(), content, command)
        self.assertEqual([path.name for path in self.folder.iterdir()
                          if path.name.startswith("试验") and path != self.library], [])

    def test_missing_file(self):
        self.assertRefused(f"{self.library}\n库文件不存在！\n")

    def test_a_name_that_is_no_utf8(self):
        self.make_library("语文")
        foreign = self.folder / os.fsdecode("高一".encode("gb18030") + b".CJK")
        self.library.rename(foreign)
        result = self.run_program("info", foreign, expect=ERROR)
        self.assertIn("名称里有不是 UTF-8 编码的字，请先给文件改名。\n", result.err)
        self.assertTrue(result.err.endswith("库文件不存在！\n"), result.err)

    def test_missing_file_by_a_relative_name(self):
        result = self.run_program("info", "没有.CJK", expect=ERROR)
        self.assertIn(f"{self.folder.resolve() / '没有.CJK'}\n库文件不存在！\n", result.err)

    def test_a_folder(self):
        self.library.mkdir()
        result = self.run_program("info", self.library, expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertNotEqual(result.err, "")

    def test_an_empty_file(self):
        self.library.write_bytes(b"")
        self.assertRefused("是空文件，不是成绩库。")

    def test_a_file_of_another_kind(self):
        self.library.write_bytes("班级\t学号\n".encode() * 100)
        self.assertRefused(f"{self.library} 不是成绩库。")

    def test_a_database_without_our_tables(self):
        conn = sqlite3.connect(self.library)
        conn.execute("create table other(x)")
        conn.commit()
        conn.close()
        self.assertRefused(f"{self.library} 不是成绩库：没有“")

    def test_a_library_that_is_cut_off(self):
        self.make_library("语文", "总分")
        content = self.library.read_bytes()
        self.library.write_bytes(content[:len(content) // 2])
        self.assertRefused("不完整（后面一部分丢失了），无法打开。")

    def test_a_library_with_a_spoiled_schema(self):
        self.make_library("语文", "总分")
        content = bytearray(self.library.read_bytes())
        content[100:1500] = b"\xff" * 1400
        self.library.write_bytes(content)
        self.assertRefused("损坏")

    def test_a_library_in_a_folder_with_blanks_and_quotes(self):
        folder = self.folder / "甲 '乙' #100%"
        folder.mkdir()
        self.make_library("语文")
        moved = shutil.move(self.library, folder / "a b.CJK")
        self.assertEqual(self.run_program("info", moved).json()["LibPath"], str(moved))


if __name__ == "__main__":
    yunshan.main()
