"""Removing subjects and exams."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, USAGE

SURE = "[提示] 确实要删除以下{}吗？删除后不可恢复，最好在删除前备份数据库。\n\n"
DONE = "删除完毕！\n"
ENDINGS = ("", "年名", "班名", "Z分", "T分")


class Delete(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_scored_exams(90)
        self.change("delete from 总分公式")

    def columns(self, table):
        return [row[0] for row in self.rows("select name from pragma_table_info(?)", table)]

    def copies(self):
        return sorted(self.folder.glob("*.bak"))

    def delete_subjects(self, names, *more, **options):
        return self.run_program("delete-subjects", self.library, names, *more, **options)


class Subjects(Delete):
    def test_all_columns_of_a_subject_go_and_nothing_else(self):
        kept = [name for name in self.columns("成绩表")
                if name not in [f"数学{ending}" for ending in ENDINGS]]
        statement = f"select rowid, {', '.join(kept)} from 成绩表"
        before = self.rows(statement)
        result = self.delete_subjects("数学", "--yes")
        self.assertEqual(result.err,
                         SURE.format("科目") + "数学\n → 确定\n" + self.uses(4) + DONE)
        self.assertEqual(self.columns("成绩表"), kept)
        self.assertEqual(self.rows(statement), before)
        self.assertNotIn("数学", self.columns("考试名称表") + self.columns("教师表"))

    @staticmethod
    def uses(formulas):
        return (f"要删除的科目还写在：\n\n各次考试的总分公式：{formulas} 个\n\n这些公式和设置保持原样。"
                "公式里的科目没有了，计算总分时会提示，总分里也不再有它的分。 → 仍然删除\n")

    def test_the_library_is_copied_first_unless_that_is_switched_off(self):
        before = yunshan.content_hash(self.library)
        self.delete_subjects("数学", "--yes", "--no-backup")
        self.assertEqual(self.copies(), [])
        self.delete_subjects("语文,总分", "--yes")
        self.assertEqual(len(self.copies()), 1)
        self.assertNotEqual(yunshan.content_hash(self.copies()[0]), before)
        self.assertIn("语文T分", [row[0] for row in yunshan.query(
            self.copies()[0], "select name from pragma_table_info('成绩表')")])
        self.assertEqual(self.columns("考试名称表"), ["ID", "考试名称", "科类", "考试编号", "备注"])

    def test_without_yes_nothing_is_removed(self):
        before = yunshan.file_hash(self.library)
        result = self.delete_subjects("总分, 数学", expect=ERROR)
        self.assertEqual(result.err, SURE.format("科目") + "总分\n数学\n → 取消\n")
        self.assertUntouched(before)
        self.assertEqual(self.copies(), [])

    def test_a_subject_that_the_teachers_lack_is_told_and_the_rest_goes(self):
        self.change("alter table 教师表 drop column 数学")
        result = self.delete_subjects("语文,数学", "--yes", "--no-backup", expect=ERROR)
        self.assertTrue(result.err.endswith(
            "没有名为“数学”的列。（no such column: \"数学\"）"
            " - Private Sub Command1_Click/FormDelKM\n" + DONE), result.err)
        self.assertEqual(self.columns("考试名称表")[5:], ["总分"])
        self.assertEqual(self.columns("教师表"), ["考试名称", "班级", "总分"])

    def test_a_name_that_the_library_does_not_have_is_wrong_usage(self):
        before = yunshan.file_hash(self.library)
        for name in ("物理", "语文年名", "姓名", "'", "语文--"):
            result = self.delete_subjects(f"数学,{name}", "--yes", expect=USAGE)
            self.assertTrue(result.err.startswith(f"成绩库里没有科目“{name}”。\n"), result.err)
        self.assertUntouched(before)

    def test_without_a_name_it_asks_for_one(self):
        result = self.delete_subjects(" , ", "--yes", expect=ERROR)
        self.assertEqual(result.err, "请选择要删除的 科目！\n")

    def test_a_total_that_names_a_removed_subject_meets_an_unknown_column(self):
        self.delete_subjects("数学", "--yes", "--no-backup")
        result = self.run_program("score", self.library, "期中", expect=ERROR)
        self.assertIn("没有名为“数学”的列。", result.err)
        self.assertEqual(self.rows("select 总分 from 考试名称表 where 考试名称='期中'"),
                         [("语文+数学",)] * 2)
        self.assertEqual(self.rows("select 总分 from 成绩表 where 考试名称='期中'"),
                         [(90,), (-1,), (70,), (75,), (80,)])


class Exams(Delete):
    def delete_exams(self, names, *more, **options):
        return self.run_program("delete-exams", self.library, names, *more, **options)

    def test_the_statements_are_refused_and_the_exams_stay(self):
        before = yunshan.file_hash(self.library)
        result = self.delete_exams("期中,期末", "--yes", expect=ERROR)
        lines = result.err.splitlines()
        self.assertEqual("\n".join(lines[:5]), SURE.format("考试") + "期末\n期中\n → 确定")
        self.assertEqual(len(lines), 7, result.err)
        self.assertTrue(lines[5].startswith("语句有语法错误"), result.err)
        self.assertTrue(lines[5].endswith(" - Sub DelKaoShi/Mdl_MDB"))
        self.assertTrue(lines[6].endswith("（同样的提示另有 3 条）"))
        self.assertUntouched(before)
        self.assertEqual(self.copies(), [])

    def test_without_yes_no_statement_is_run(self):
        before = yunshan.file_hash(self.library)
        result = self.delete_exams("期中", "--no-backup", expect=ERROR)
        self.assertEqual(result.err, SURE.format("考试") + "期中\n → 取消\n")
        self.assertUntouched(before)

    def test_nothing_selected_asks_nothing(self):
        self.assertEqual(self.delete_exams("", "--yes").err, "")

    def test_an_exam_that_the_library_does_not_have_is_wrong_usage(self):
        result = self.delete_exams("期中,没有", "--yes", expect=USAGE)
        self.assertTrue(result.err.startswith("成绩库里没有考试“没有”。\n"))


if __name__ == "__main__":
    yunshan.main()
