"""Old libraries become libraries of ours, and stay as they are."""

import os
import random
import re
import resource
import shutil
import sqlite3
import subprocess
import sys
import tempfile
from pathlib import Path

import openpyxl

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import oldsamples
import yunshan
from yunshan import DONE, ERROR, USAGE

NOBODY = 65534
RECOMPUTE = "总分、标准分和名次原样转入；要重新计算，请用 yunshan-cli score。"


class ConvertTest(yunshan.ProgramTest):
    """A folder with an old library, which nothing may change."""

    sample = oldsamples.SMALL

    def setUp(self):
        super().setUp()
        self.old = self.put("旧库.CJK", oldsamples.data(self.sample))
        self.new = self.folder / "旧库（转换）.CJK"

    def put(self, name, content):
        path = self.folder / name
        path.write_bytes(content)
        os.utime(path, (1_200_000_000, 1_200_000_000))
        return path

    def convert(self, *arguments, expect=DONE, **options):
        """Converts; the files that were there are as they were, and only those in `made` came."""
        before = oldsamples.found(self.folder)
        made = set(options.pop("made", [self.new.name] if expect == DONE else []))
        result = self.run_program("convert", *(arguments or (self.old,)), expect=expect, **options)
        after = oldsamples.found(self.folder)
        self.assertEqual({name: after.get(name) for name in before if name not in made},
                         {name: before[name] for name in before if name not in made})
        self.assertEqual(set(after) - set(before) | made, made)
        if expect != DONE:
            self.assertEqual(result.out, "")
        return result

    def refused(self, *arguments, sentence, expect=ERROR, **options):
        result = self.convert(*arguments, expect=expect, **options)
        self.assertEqual(result.err, sentence + "\n")


def query(path, sql):
    """As yunshan.query does, for names that are no part of an address."""
    conn = sqlite3.connect(path)
    try:
        return conn.execute(sql).fetchall()
    finally:
        conn.close()


def columns(library, table):
    return [row[0] for row in yunshan.query(library, "select name from pragma_table_info(?)", table)]


def rows(library, table, names):
    listed = ", ".join(f"[{name}]" for name in names)
    return [[oldsamples.picture(value) if isinstance(value, bytes) else value for value in row]
            for row in yunshan.query(library, f"select {listed} from [{table}] order by rowid")]


class Content(ConvertTest):
    """Every cell of the samples, against what is known of them."""

    def assertContent(self, sample):
        old_tables = oldsamples.tables(sample)
        new_tables = [row[0] for row in yunshan.query(
            self.new, "select name from sqlite_master where type='table'"
                      " and name not like 'sqlite%' order by rowid")]
        self.assertEqual(new_tables, [table.name for table in old_tables])
        for table in old_tables:
            self.assertEqual(columns(self.new, table.name), table.columns, table.name)
            found = rows(self.new, table.name, table.columns)
            for number, (row, expected) in enumerate(zip(found, table.rows), 1):
                self.assertEqual(row, expected, f"{table.name}, row {number}")
            self.assertEqual(len(found), len(table.rows), table.name)

    def test_every_cell_of_the_samples(self):
        for sample in oldsamples.ALL:
            with self.subTest(sample=sample):
                self.old.write_bytes(oldsamples.data(sample))
                result = self.convert(self.old, "--force", made=[self.new.name])
                self.assertEqual(result.out, f"{self.new}\n")
                self.assertContent(sample)
                self.assertEqual(yunshan.query(self.new, "pragma integrity_check"), [("ok",)])

    def test_texts_and_numbers_keep_their_kind(self):
        self.convert()
        for table in oldsamples.tables(self.sample):
            for name, kind in zip(table.columns, table.types):
                expected = ("integer" if kind in ("AutoNumber", "Long", "Integer", "Boolean") else
                            "real" if kind in ("Single", "Double") else
                            "blob" if kind == "OLE" else "text")
                found = yunshan.query(self.new, f"select distinct typeof([{name}]) from "
                                                f"[{table.name}] where [{name}] is not null")
                self.assertLessEqual(set(found), {(expected,)}, f"{table.name}.{name}")

    def test_the_new_library_opens_and_is_scored(self):
        self.convert()
        info = self.run_program("info", self.new).json()
        self.assertEqual(info["Streams"], ["文", "理"])
        self.assertEqual(info["ExamList"], ["高一期中", "高一期末", "高二月考"])
        self.run_program("score", self.new, "高一期中")

    def test_a_number_that_was_deleted_is_not_given_again(self):
        self.convert()
        highest = max(record["ID"] for record in oldsamples.table(self.sample, "信息表").records())
        book = self.book("新生.xlsx", (*yunshan.HEADINGS, "科类"), (2, 99, "新生", "文"))
        self.run_program("import-students", self.new, book, "--no-backup")
        self.assertGreater(yunshan.query(self.new, "select max(ID) from 信息表")[0][0], highest)


class Messages(ConvertTest):
    def test_what_was_done_is_told(self):
        lines = self.convert().err.splitlines()
        counts = "，".join(f"{table.name} {len(table.rows)} 行"
                          for table in oldsamples.tables(self.sample))
        self.assertEqual(lines, [f"转换完成，共 11 个表：{counts}。", RECOMPUTE,
                                 "有 2 项需要说明；转换时加上 --report FILE 可以存下来。"])

    def test_a_saved_report_is_named(self):
        result = self.convert(self.old, "--report", "报告.txt", made=[self.new.name, "报告.txt"])
        self.assertEqual(result.err.splitlines()[2:],
                         ["有 2 项需要说明，在用 --report 存的报告里。"])

    def test_signs_in_the_name_of_a_table_are_told_as_they_are(self):
        whole = oldsamples.data(self.sample)
        self.old.write_bytes(whole.replace("分班表".encode("utf-16-le"), "表%2".encode("utf-16-le")))
        count = len(oldsamples.table(self.sample, "分班表").rows)
        self.assertIn(f"表%2 {count} 行", self.convert().err)

    def test_the_new_library_can_be_named(self):
        inner = self.folder / "里面"
        inner.mkdir()
        result = self.convert("旧库.CJK", "里面/新库.cjk", made=["里面"])
        self.assertEqual(result.out, f"{inner / '新库.cjk'}\n")
        self.assertEqual([path.name for path in inner.iterdir()], ["新库.cjk"])

    def test_names_of_files_that_are_hostile(self):
        for name in ("it's.CJK", "a'; drop table 信息表 --.CJK", "两\n行.CJK", "  空 格  .CJK", "没有点",
                     "百分%1%s#?.CJK", "长" * 75 + ".CJK", "x" * 200 + ".CJK",
                     "-库.CJK", ".CJK"):
            with self.subTest(name=name):
                old = self.put(name, oldsamples.data(self.sample))
                new = old.with_name(f"{old.stem.removesuffix('.CJK')}（转换）.CJK")
                self.assertEqual(self.convert(old, made=[new.name]).out, f"{new}\n")
                self.assertEqual(query(new, "select count(*) from 信息表"), [(181,)])

    def test_a_name_that_is_too_long_with_what_is_added(self):
        old = self.put("长" * 80 + ".CJK", oldsamples.data(self.sample))
        self.assertRegex(self.convert(old, expect=ERROR).err, "^无法写入文件 .*（.*太长.*）。\n$")
        self.convert(old, self.new)


class Password(ConvertTest):
    def setUp(self):
        super().setUp()
        self.old.write_bytes(oldsamples.with_password(oldsamples.data(self.sample), "1234"))

    def test_the_right_one_converts(self):
        self.convert(self.old, "--password", "1234")
        self.assertEqual(yunshan.query(self.new, "select count(*) from 信息表"), [(181,)])

    def test_none_names_the_option(self):
        self.refused(self.old, sentence=f"{self.old} 有密码，请用 --password 给出。")

    def test_a_wrong_one_is_refused(self):
        for wrong in ("", "123", "12345", "1234 ", "4321", "１２３４", "1234'", "x" * 1000):
            with self.subTest(wrong=wrong):
                self.refused(self.old, f"--password={wrong}",
                             sentence=f"--password 给出的密码不对，{self.old} 没有转换。")

    def test_letters_count_as_they_are(self):
        self.old.write_bytes(oldsamples.with_password(oldsamples.data(self.sample), "aB密码 '𬭎"))
        self.refused(self.old, "--password", "AB密码 '𬭎",
                     sentence=f"--password 给出的密码不对，{self.old} 没有转换。")
        self.convert(self.old, "--password", "aB密码 '𬭎")

    def test_where_there_is_none_any_is_right(self):
        self.old.write_bytes(oldsamples.data(self.sample))
        self.convert(self.old, "--password", "1234")


class BadFiles(ConvertTest):
    """What is no whole old library gets a sentence and leaves nothing."""

    def setUp(self):
        super().setUp()
        self.whole = oldsamples.data(self.sample)

    def test_files_that_are_none(self):
        noise = random.Random(7).randbytes
        cases = (("空.CJK", b"", "是空文件，不是成绩库。"),
                 ("乱.CJK", noise(100_000), "不是旧格式的成绩库。"),
                 ("短.CJK", b"\0\1", "不是旧格式的成绩库。"),
                 ("文字.CJK", "班级\t学号\n".encode() * 100, "不是旧格式的成绩库。"))
        for name, content, sentence in cases:
            with self.subTest(name=name):
                path = self.put(name, content)
                result = self.convert(path, expect=ERROR)
                self.assertIn(f"{path} {sentence}", result.err)

    def test_a_true_beginning_with_nothing_behind_it(self):
        noise = random.Random(8).randbytes(500_000)
        for name, content in (("头.CJK", oldsamples.HEADER),
                              ("乱.CJK", oldsamples.HEADER + noise),
                              ("零.CJK", oldsamples.HEADER + bytes(100_000)),
                              ("页.CJK", self.whole[:4096] + noise)):
            with self.subTest(name=name):
                path = self.put(name, content)
                result = self.convert(path, expect=ERROR)
                self.assertRegex(result.err, f"^{re.escape(str(path))} [^\n]+。\n$")

    def test_cut_off_anywhere(self):
        sizes = (20, 4000, 4096, 8192, 100_000, len(self.whole) * 3 // 5, len(self.whole) - 4096,
                 len(self.whole) - 1)
        for size in sizes:
            with self.subTest(size=size):
                path = self.put("断.CJK", self.whole[:size])
                result = self.convert(path, expect=ERROR)
                self.assertRegex(result.err, f"^{re.escape(str(path))} [^\n]+。\n$")

    def test_a_missing_file_and_a_folder(self):
        path = self.folder / "没有.CJK"
        self.refused(path, sentence=f"找不到文件 {path}。")
        foreign = self.put(os.fsdecode(b"\xbe\xc9.CJK"), self.whole)
        self.assertIn("的名称里有不是 UTF-8 编码的字，请先给文件改名。",
                      self.convert(foreign, expect=ERROR).err)
        folder = self.folder / "里面.CJK"
        folder.mkdir()
        self.refused(folder, sentence=f"{folder} 是文件夹，不是成绩库。")

    def test_a_pipe_is_not_waited_for(self):
        pipe = self.folder / "管道.CJK"
        os.mkfifo(pipe)
        self.refused(pipe, sentence=f"{pipe} 不是普通文件，不是成绩库。", timeout=20)
        self.assertIn("库文件不存在！", self.run_program("info", pipe, expect=ERROR, timeout=20).err)

    def test_a_library_of_ours_needs_none(self):
        self.make_library("语文", "总分")
        self.refused(self.library, sentence=f"{self.library} 是现在的格式，不需要转换。")
        self.convert()
        self.refused(self.new, sentence=f"{self.new} 是现在的格式，不需要转换。")

    def test_another_database_is_no_library(self):
        path = self.folder / "别的.CJK"
        conn = sqlite3.connect(path)
        conn.execute("create table other(x)")
        conn.commit()
        conn.close()
        self.assertIn("不是旧格式的成绩库。", self.convert(path, expect=ERROR).err)


class Targets(ConvertTest):
    def test_a_file_that_stands_there_is_kept(self):
        self.put(self.new.name, b"something else")
        self.refused(self.old, sentence=f"文件 {self.new} 已存在，没有覆盖。要覆盖它，请加上 --force。")

    def test_force_replaces_it(self):
        self.put(self.new.name, b"something else")
        self.convert(self.old, "--force")
        self.assertEqual(yunshan.query(self.new, "select count(*) from 信息表"), [(181,)])

    def test_a_failure_keeps_what_force_would_have_replaced(self):
        self.put(self.new.name, b"something else")
        cut = self.put("断.CJK", self.old.read_bytes()[:-40960])
        self.assertIn("断.CJK", self.convert(cut, self.new, "--force", expect=ERROR).err)

    def test_never_the_old_file_itself(self):
        link, hard = self.folder / "链接.CJK", self.folder / "同一个.CJK"
        link.symlink_to(self.old)
        os.link(self.old, hard)
        for target in (self.old, self.folder / "." / self.old.name, link, hard):
            for force in ((), ("--force",)):
                with self.subTest(target=target, force=force):
                    self.refused(self.old, target, *force,
                                 sentence=f"{target} 就是旧成绩库，不能覆盖。")

    def test_never_the_empty_library_of_the_program(self):
        program = self.folder / "program"
        program.mkdir()
        for name in ("MFC.dll", Path(yunshan.PROGRAM).name):
            shutil.copy2(Path(yunshan.PROGRAM).parent / name, program)
        (program / "data").mkdir()
        empty = program / "MFC.dll"
        before = empty.read_bytes()
        result = yunshan.run("convert", self.old, empty, "--force", cwd=self.folder,
                             program=program / Path(yunshan.PROGRAM).name)
        self.assertEqual((result.code, result.err),
                         (ERROR, f"{empty} 是程序的空白成绩库，不能覆盖。\n"))
        self.assertEqual(empty.read_bytes(), before)

    def test_a_library_in_use_is_not_replaced(self):
        self.convert()
        before = oldsamples.found(self.folder)
        other = sqlite3.connect(self.new, isolation_level=None)
        other.execute("begin exclusive")
        # Not by convert(), whose look at the files would end the lock of this process.
        result = self.run_program("convert", self.old, "--force", expect=ERROR)
        other.close()
        self.assertEqual(result.err, f"文件 {self.new} 正在使用，不能覆盖。\n")
        self.assertEqual(oldsamples.found(self.folder), before)

    def test_force_through_a_link_replaces_what_it_leads_to(self):
        target = self.put("真的.CJK", b"something else")
        self.new.symlink_to(target)
        self.convert(self.old, "--force", made=[target.name, self.new.name])
        self.assertTrue(self.new.is_symlink())
        self.assertEqual(yunshan.query(target, "select count(*) from 信息表"), [(181,)])

    def test_a_folder_is_not_replaced(self):
        self.new.mkdir()
        for force in ((), ("--force",)):
            self.refused(self.old, *force, sentence=f"{self.new} 不是普通文件，不能覆盖。")

    def test_a_folder_that_does_not_exist(self):
        target = self.folder / "没有" / "新.CJK"
        self.assertIn("文件夹不存在", self.convert(self.old, target, expect=ERROR).err)

    def test_no_name_is_told(self):
        self.refused(self.old, "", sentence="无法写入文件 （文件夹不存在）。")

    def test_what_a_dead_library_left_does_not_spoil_the_new_one(self):
        """A journal whose library was deleted lies under the new library's name."""
        self.convert()
        before = rows(self.new, "信息表", ("ID", "姓名"))
        other = sqlite3.connect(self.new, isolation_level=None)
        other.execute("pragma cache_size=5")
        other.execute("begin")
        other.execute("update 信息表 set 备注=hex(zeroblob(3000))")
        journal = Path(f"{self.new}-journal")
        content = journal.read_bytes()
        other.close()
        self.new.unlink()
        journal.write_bytes(content)
        self.assertTrue(yunshan.is_hot(journal))
        self.run_program("convert", self.old)
        self.assertFalse(journal.exists())
        self.run_program("info", self.new)
        self.assertEqual(rows(self.new, "信息表", ("ID", "姓名")), before)
        self.assertEqual(yunshan.query(self.new, "pragma integrity_check"), [("ok",)])

    def test_a_limit_on_sizes_of_files_is_a_full_disk(self):
        for limit in (0, 100_000, 300_000):
            def small(size=limit):
                resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))
            with self.subTest(limit=limit):
                result = self.convert(expect=ERROR, preexec_fn=small)
                self.assertRegex(result.err, "磁盘(可能)?已满")


class Report(ConvertTest):
    def test_a_text(self):
        result = self.convert(self.old, "--report", "报告.txt", made=[self.new.name, "报告.txt"])
        lines = [line.split("\t") for line in
                 (self.folder / "报告.txt").read_text("utf-8").splitlines()]
        self.assertEqual({len(line) for line in lines}, {5})
        self.assertEqual(lines[0], ["表", "行", "列", "值", "处理"])
        self.assertIn(str(self.old), [line[3] for line in lines])
        self.assertIn(str(self.new), [line[3] for line in lines])
        for table in oldsamples.tables(self.sample):
            self.assertIn([table.name, f"{len(table.rows)} 行"], [[line[0], line[3]] for line in lines])
        self.assertEqual(result.out, f"{self.new}\n")

    def test_a_workbook(self):
        self.convert(self.old, "--report", "报告.xlsx", made=[self.new.name, "报告.xlsx"])
        sheet = openpyxl.load_workbook(self.folder / "报告.xlsx").active
        found = [[cell.value or "" for cell in row] for row in sheet.iter_rows()]
        self.assertEqual(found[0], ["表", "行", "列", "值", "处理"])
        self.assertIn(str(self.old), [row[3] for row in found])

    def test_a_file_that_stands_there_is_kept(self):
        report = self.put("报告.txt", b"something else")
        self.refused(self.old, "--report", report,
                     sentence=f"文件 {report} 已存在，没有覆盖。要覆盖它，请加上 --force。")
        self.convert(self.old, "--report", report, "--force", made=[self.new.name, report.name])
        self.assertTrue(report.read_text("utf-8").startswith("表\t"))

    def test_neither_of_the_libraries(self):
        self.refused(self.old, "--report", self.old, "--force",
                     sentence=f"{self.old} 就是旧成绩库，不能覆盖。")
        result = self.convert(self.old, "--report", self.folder / "." / self.new.name, expect=USAGE)
        self.assertEqual(result.err.splitlines()[0], "--report 不能是新成绩库的文件。")
        self.put(self.new.name, b"something else")
        link = self.folder / "链接.txt"
        link.symlink_to(self.new)
        result = self.convert(self.old, "--report", link, "--force", expect=USAGE)
        self.assertEqual(result.err.splitlines()[0], "--report 不能是新成绩库的文件。")

    def test_no_other_library(self):
        other = self.put("另一个.CJK", oldsamples.data(self.sample))
        self.refused(self.old, "--report", other, "--force",
                     sentence=f"{other} 是成绩库，不能覆盖。")

    def test_neither_of_the_libraries_behind_a_linked_folder(self):
        (self.folder / "链接").symlink_to(self.folder)
        for report in (f"链接/{self.new.name}", f"链接/链接/{self.new.name}"):
            result = self.convert(self.old, "--report", report, expect=USAGE)
            self.assertEqual(result.err.splitlines()[0], "--report 不能是新成绩库的文件。")
        report = self.folder / "链接" / self.old.name
        self.refused(self.old, "--report", report, "--force",
                     sentence=f"{report} 就是旧成绩库，不能覆盖。")

    def test_a_report_that_cannot_be_written_is_told_before_the_work(self):
        report = self.folder / "没有" / "报告.txt"
        before = oldsamples.found(self.folder)
        result = self.run_program("convert", self.old, "--report", report, expect=ERROR)
        self.assertIn("无法写入", result.err)
        self.assertEqual(result.out, "")
        self.assertEqual(oldsamples.found(self.folder), before)

    def test_rows_that_are_missing_are_accepted_by_the_option_alone(self):
        definition = self.old.read_bytes()
        page = next(at for at in range(0, len(definition), 4096)
                    if definition[at:at + 2] == b"\x02\x01"
                    and definition[at + 16:at + 20] == (181).to_bytes(4, "little"))
        self.old.write_bytes(definition[:page + 16] + (200).to_bytes(4, "little")
                             + definition[page + 20:])
        result = self.run_program("convert", self.old, expect=ERROR)
        self.assertIn("的表“信息表”记着 200 行，只读到 181 行，文件可能已损坏，没有转换。"
                      "读到的要照样转换，请加 --accept-missing-rows。", result.err)
        self.assertFalse(self.new.exists())
        self.run_program("convert", self.old, "--accept-missing-rows")
        self.assertEqual(yunshan.query(self.new, "select count(*) from 信息表"), [(181,)])



class Disturbed(ConvertTest):
    """Somebody writes the file while it is read; nothing is left of the conversion."""

    def disturb(self, change):
        """Converts while `change` happens to the old file again and again."""
        process = subprocess.Popen([yunshan.PROGRAM, "convert", self.old], cwd=self.folder,
                                   env=yunshan.environment(self.folder), stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE)
        with open(self.old, "r+b") as file:
            while process.poll() is None:
                change(file)
                file.flush()
        out, err = process.communicate()
        self.assertEqual((process.returncode, out), (ERROR, b""), err.decode())
        self.assertEqual([path.name for path in self.folder.iterdir()], [self.old.name])
        return err.decode()

    def grow(self, file):
        if file.seek(0, os.SEEK_END) < 50_000_000:
            file.write(bytes(4096))
        else:
            file.truncate(len(oldsamples.data(self.sample)))

    def test_it_grows(self):
        self.assertIn("在读取时被别的程序改动了", self.disturb(self.grow))

    def test_it_is_written_in_its_place(self):
        self.assertIn("在读取时被别的程序改动了",
                      self.disturb(lambda file: (file.seek(0), file.write(b"\0"))))

    def test_it_becomes_shorter(self):
        def cut(file):
            size = os.fstat(file.fileno()).st_size
            file.truncate(max(4096, size - 4096))
        self.assertRegex(self.disturb(cut), f"{re.escape(str(self.old))} [^\n]+。\n$")

    def limited(self, kilobytes, *arguments):
        """A run that has so much memory."""
        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (kilobytes * 1024, kilobytes * 1024))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        return yunshan.run(*arguments, cwd=self.folder, preexec_fn=limit)

    def test_memory_runs_out(self):
        starts, fails = 400_000, 20_000
        if self.limited(starts, "--help").code != DONE:
            self.skipTest("sanitizers want more addresses than there is memory")
        while starts - fails > 100:
            middle = (starts + fails) // 2
            code = self.limited(middle, "--help").code
            starts, fails = (middle, fails) if code == DONE else (starts, middle)
        ends = []
        for kilobytes in (*range(starts + 100, starts + 2100, 200), starts + 50_000):
            result = self.limited(kilobytes, "convert", self.old)
            ends.append(result.code)
            self.assertEqual([path.name for path in self.folder.iterdir() if path != self.old],
                             [self.new.name] if result.code == DONE else [])
            if result.code != DONE:
                self.assertTrue(result.err.startswith("内存不足。"), result)
                self.assertEqual(result.code, ERROR)
            self.new.unlink(missing_ok=True)
        self.assertEqual((ends[0], ends[-1]), (ERROR, DONE))


class Rights(ConvertTest):
    """As a user whom rights bind; root is bound by none."""

    def setUp(self):
        super().setUp()
        self.home = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="yunshan-home-")))
        self.user = {"env": yunshan.environment(self.home)}
        if os.geteuid() == 0:
            self.user |= {"user": NOBODY, "group": NOBODY, "extra_groups": []}
            for path in (self.folder, self.home, self.old):
                os.chown(path, NOBODY, NOBODY)

    def run_program(self, *arguments, **options):
        return super().run_program(*arguments, **(self.user | options))

    def test_a_file_that_may_not_be_read(self):
        self.old.chmod(0)
        self.assertIn(f"无法读取文件 {self.old}（", self.convert(expect=ERROR).err)

    def test_a_file_that_may_only_be_read(self):
        self.old.chmod(0o400)
        self.convert()

    def test_a_folder_that_may_only_be_read(self):
        self.folder.chmod(0o555)
        self.addCleanup(self.folder.chmod, 0o755)
        result = self.convert(expect=ERROR)
        self.assertIn(f"无法写入文件 {self.new}（", result.err)
        target = self.home / "新.CJK"
        self.assertEqual(self.convert(self.old, target, made=[]).out, f"{target}\n")


class OtherCommands(ConvertTest):
    """They name the command that converts, and end as on wrong usage."""

    REQUIRED = {
        "import-students": ("名单.xlsx",),
        "import-exam": ("成绩.xlsx", "--exam", "期中"),
        "reclass": ("分班.xlsx",),
        "score": ("高一期中",),
        "browse": ("--exam", "高一期中"),
        "report": ("--item", "考试人数", "--exam", "高一期中"),
        "analyze": ("--exam", "高一期中", "--out", "."),
        "export": ("--exam", "高一期中", "--subjects", "语文", "--classes", "2", "--out", "导出.xlsx"),
        "student": ("--id", "1"),
        "class-charts": ("--class", "2", "--out", "图.pdf"),
        "record": ("--id", "1"),
        "photos": ("--missing",),
        "correct": ("--exam", "高一期中", "--class", "2", "--number", "1", "--subject", "语文",
                    "--score", "1"),
        "delete-subjects": ("语文", "--yes"),
        "delete-exams": ("高一期中", "--yes"),
        "settings": (),
        "teachers": ("--exam", "高一期中"),
        "set-streams": ("--science", "1"),
        "info": (),
        "backups": (),
        "restore": ("1",),
        "remove-exams": ("高一期中", "--yes"),
        "move-student": ("--class", "2", "--number", "1", "--to-class", "1", "--yes"),
    }

    def commands(self):
        usage = self.run_program("--help").out
        return set(re.findall(r"^yunshan-cli ([a-z-]+) ", usage, re.M))

    def test_all_of_them(self):
        self.assertEqual(set(self.REQUIRED) | {"new", "convert", "tidy"}, self.commands())
        sentence = f"{self.old} 是旧格式的成绩库，请先用 yunshan-cli convert 转换。"
        before = oldsamples.found(self.folder)
        for command, arguments in self.REQUIRED.items():
            with self.subTest(command=command):
                result = self.run_program(command, self.old, *arguments, expect=USAGE)
                self.assertEqual((result.out, result.err.splitlines()[0]), ("", sentence))
                self.assertEqual(oldsamples.found(self.folder), before)

    def test_tidy_over_its_students(self):
        book = self.folder / "成绩.csv"
        book.write_text("班级,学号,姓名,语文\n1,1,甲,90\n")
        result = self.run_program("tidy", book, "--library", self.old, "--out", self.folder / "整理.xlsx",
                                  expect=USAGE)
        self.assertEqual(result.err.splitlines()[0],
                         f"{self.old} 是旧格式的成绩库，请先用 yunshan-cli convert 转换。")

    def test_no_new_library_takes_its_place(self):
        before = oldsamples.found(self.folder)
        for force in ((), ("--force",)):
            result = self.run_program("new", self.old, "--subjects", "语文", *force, expect=USAGE)
            self.assertIn("是旧格式的成绩库，请先用 yunshan-cli convert 转换。", result.err)
        self.assertEqual(oldsamples.found(self.folder), before)


if __name__ == "__main__":
    yunshan.main()
