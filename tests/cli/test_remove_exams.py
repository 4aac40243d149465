"""Erasing exams."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, USAGE

ASKED = ("要彻底删除这些考试吗？\n\n{}\n\n一共删去：成绩表 {} 行，考试名称表 {} 行，教师名单 {} 行。\n\n{} "
         "→ {}\n")
COPY, NO_COPY = "删除前会在成绩库旁边留一份备份。", "这次不留备份，删除后不可恢复。"
MIDTERM = "期中（文）：2 人有成绩，共 3 个成绩，另有 1 个缺考\n期中（理）：3 人有成绩，共 3 个成绩"
HOSTILE = ("'", "' or ''='", "2024--2025", "期中'--", "/*", "高一\n期中", "甲,乙", " 期中 ", "%", "?1")


class RemoveExams(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_scored_exams(90)

    def remove(self, *arguments, **options):
        return self.run_program("remove-exams", self.library, *arguments, **options)

    def exams(self):
        return [row[0] for row in self.rows("select 考试名称 from 考试名称表 order by rowid")]

    def copies(self):
        return sorted(self.folder.glob("*.bak"))

    def test_without_yes_the_counts_are_printed_and_nothing_is_written(self):
        before = yunshan.file_hash(self.library)
        result = self.remove("期中", expect=ERROR)
        self.assertEqual(result.err, ASKED.format(MIDTERM, 5, 2, 0, COPY, "取消"))
        self.assertUntouched(before)
        self.assertEqual(self.copies(), [])

    def test_an_exam_goes_from_all_tables_after_a_copy(self):
        self.change("insert into 教师表(考试名称, 班级) values('期中', 1)")
        before = yunshan.content_hash(self.library)
        result = self.remove("期中", "--yes")
        self.assertEqual(result.err, ASKED.format(MIDTERM, 5, 2, 1, COPY, "彻底删除")
                         + "已经彻底删除 1 次考试：成绩表 5 行，考试名称表 2 行，教师名单 1 行。\n")
        self.assertEqual(self.exams(), ["期末", "期末"])
        self.assertEqual(self.rows("select distinct 考试名称 from 成绩表"), [("期末",)])
        self.assertEqual(self.rows("select count(*) from 教师表"), [(0,)])
        self.assertEqual([yunshan.content_hash(copy) for copy in self.copies()], [before])

    def test_several_go_together_and_without_a_copy_if_that_is_switched_off(self):
        result = self.remove("期中, 期末", "--yes", "--no-backup")
        self.assertIn(NO_COPY, result.err)
        self.assertEqual(self.exams(), [])
        self.assertEqual(self.copies(), [])
        self.assertEqual(self.rows("select count(*) from 成绩表"), [(0,)])
        self.assertEqual(self.rows("select count(*) from 信息表"), [(5,)])

    def test_a_name_is_taken_as_it_stands_by_an_option_of_its_own(self):
        for name in (*HOSTILE, "长" * 10_000):
            self.change("insert into 考试名称表(考试名称, 科类) values(?, '理')", name)
            self.change("insert into 成绩表(考试名称, 科类, 语文) values(?, '理', 5)", name)
            self.remove("--exam", name, "--yes", "--no-backup")
            self.assertEqual(self.exams(), ["期中", "期中", "期末", "期末"], name[:40])
            self.assertEqual(self.rows("select count(*) from 成绩表"), [(10,)], name[:40])

    def test_a_list_is_parted_at_its_commas(self):
        self.change("insert into 考试名称表(考试名称, 科类) values('期中,期末', '理')")
        self.remove("期中,期末", "--yes", "--no-backup")
        self.assertEqual(self.exams(), ["期中,期末"])

    def test_an_exam_that_the_list_passes_over_can_go_too(self):
        self.change("insert into 考试名称表(考试名称, 科类) values('期', '理')")
        self.remove("期", "--yes", "--no-backup")
        self.assertEqual(self.exams(), ["期中", "期中", "期末", "期末"])

    def test_what_the_library_does_not_have_is_wrong_usage(self):
        before = yunshan.file_hash(self.library)
        for name in ("没有", "'", "期"):
            result = self.remove(f"期中,{name}", "--yes", expect=USAGE)
            self.assertTrue(result.err.startswith(f"成绩库里没有考试“{name}”。\n"), result.err)
        for nothing in ((), (" ",), (",",)):
            result = self.remove(*nothing, "--yes", expect=USAGE)
            self.assertTrue(result.err.startswith(
                "没有给出考试：请把名称写在成绩库后面，用逗号隔开，或用 --exam 给出。\n"), result.err)
        self.assertUntouched(before)


if __name__ == "__main__":
    yunshan.main()
