"""Exam results from workbooks: what is stored, what is asked, what is refused."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import DONE, ERROR, FINISHED, HEADINGS, USAGE

TWO_SUBJECTS = (*HEADINGS, "语文", "数学")
MISMATCH = ("[数据错误] Excel表格中学生的学号和姓名： [{0}] 与数据库中记录的不一致！\n\n"
            "Excel表格中：1班1号 姓名为：[{0}]\n"
            "数据库中记录：1班1号 姓名为：[{1}]，二者不一致！\n\n"
            "[是]用现有姓名替换掉数据库中记录的姓名\n"
            "[否]保留数据库中记录的姓名,继续录入,即将[{0}]和[{1}]认为是同一人\n"
            "[取消]终止当前导入\n → {2}\n")


class ExamTest(yunshan.ProgramTest):
    """A library with the students 甲, 乙, 丙 of class 1 (文) and 戊 of class 2 (理)."""

    def setUp(self):
        super().setUp()
        self.make_library("语文", "数学", "总分")
        self.change("update 总分公式 set 公式='语文+数学' where 总分='总分'")
        self.add_students((1, 1, "甲", "文"), (1, 2, "乙", "文"), (1, 3, "丙", "文"),
                          (2, 1, "戊", "理"))

    def take(self, *rows, exam="期中", options=(), headings=TWO_SUBJECTS, expect=DONE):
        return self.import_exam(self.book("成绩.xlsx", headings, *rows), exam, *options,
                                expect=expect)

    def scores(self, columns="班级, 学号, 语文, 数学"):
        return self.rows(f"select {columns} from 成绩表 order by rowid")

    def exams(self, columns="考试名称, 科类, 考试编号"):
        return self.rows(f"select {columns} from 考试名称表 order by rowid")

    def bad_cells(self, result):
        """The rows of the list of bad scores on stderr, which its count precedes."""
        lines = result.err.splitlines()
        start = next(i for i, line in enumerate(lines) if line.startswith("共发现 "))
        listed = [tuple(line.split("\t")) for line in lines[start + 1:] if "\t" in line]
        self.assertEqual(lines[start], f"共发现 {len(listed)} 处成绩有问题！")
        return listed


class Stored(ExamTest):
    def test_a_row_per_student(self):
        result = self.take((1, 1, "甲", 90, 80.5), (1, 2, "乙", "70", 60))
        self.assertEqual(result.out, "")
        self.assertEqual(result.err, f"文科：期中：满分 语文=150，数学=150\n{FINISHED}")
        self.assertEqual(
            self.scores("id, 班级, 学号, 姓名, 类别代码, 科类, 考试名称, 考试编号, 语文, 数学"),
            [(1, 1, 1, "甲", 1, "文", "期中", 1, 90, 80.5),
             (2, 1, 2, "乙", 1, "文", "期中", 1, 70, 60)])
        self.assertEqual(self.rows("select 总分, 语文年名, 语文Z分, 语文T分, 备注 from 成绩表"),
                         [(None,) * 5] * 2)

    def test_the_exam_row_carries_full_marks_and_formulas(self):
        self.take((1, 1, "甲", 90, 80), options=("--full-marks", "数学=120.5"))
        self.assertEqual(self.exams("考试名称, 科类, 考试编号, 语文, 数学"),
                         [("期中", "文", 1, 150, 120.5)])
        self.assertEqual(self.exams("总分"),
                         self.rows("select 公式 from 总分公式 where 总分='总分'"))

    def test_full_marks_of_subjects_that_are_not_on_the_sheet_are_told_and_passed_over(self):
        marks = "体育=50,语文=120,总分=300"
        result = self.take((1, 1, "甲", 90), headings=(*HEADINGS, "语文"),
                           options=("--full-marks", marks))
        self.assertEqual(result.err, "数据表里没有科目“体育”、“总分”，为它给出的满分不起作用。\n"
                                     f"文科：期中：满分 语文=120\n{FINISHED}")
        self.assertEqual(self.exams("语文, 数学"), [(120, None)])

    def test_absent_cheated_and_other_texts(self):
        result = self.take((1, 1, "甲", "缺考", "作弊"), (1, 2, "乙", "abc", " 缺考"),
                           (1, 3, "丙", "8 5分", "12.5"), options=("--accept-texts",))
        self.assertNotIn("处成绩有问题", result.err)
        self.assertIn("有 3 个单元格的文字既不是缺考也不是作弊，按 0 分计：“ 缺考”（1）、abc（1）；"
                      "按开头的数字计：8 5分（1） → 继续\n", result.err)
        self.assertEqual(self.scores(), [(1, 1, -1, 0), (1, 2, 0, 0), (1, 3, 85, 12.5)])

    def test_bad_cells_are_listed_and_stored_as_the_sheet_has_them(self):
        result = self.take((1, 1, "甲", 151, 60), (1, 2, "乙", -5, None),
                           (1, 3, "丙", "abc", " 缺考"), (2, 1, "戊", 100.5, "作弊"),
                           options=("--full-marks", "语文=100,数学=100", "--accept-texts"))
        self.assertEqual(self.bad_cells(result),
                         [("1", "1", "甲", "语文", "151", "超过总分"),
                          ("1", "2", "乙", "语文", "-5", "分值不能为负"),
                          ("1", "2", "乙", "数学", "0", "分值不能为空"),
                          ("2", "1", "戊", "语文", "100.5", "超过总分")])
        self.assertEqual(self.scores(), [(1, 1, 151, 60), (1, 2, -5, 0), (1, 3, 0, 0),
                                         (2, 1, 100.5, 0)])

    def test_a_score_equal_to_the_full_mark_passes(self):
        result = self.take((1, 1, "甲", 90.1, 100), (1, 2, "乙", 90.2, 0),
                           options=("--full-marks", "语文=90.1,数学=100"))
        self.assertEqual(self.bad_cells(result), [("1", "2", "乙", "语文", "90.2", "超过总分")])
        self.assertEqual(self.scores("语文"), [(yunshan.single(90.1),), (yunshan.single(90.2),)])

    def test_an_empty_number_ends_the_sheet(self):
        result = self.take((1, 1, "甲", 90, 80), (1, None, "乙", 1, 1), (1, 3, "丙", 70, 60))
        self.assertIn("第 3 行没有学号，导入到此为止，从第 3 行起有内容的 2 行没有导入。\n" + FINISHED,
                      result.err)
        self.assertEqual(self.scores(), [(1, 1, 90, 80)])

    def test_columns_that_are_no_subjects_are_passed_over(self):
        self.take((1, 1, "甲", "01001", 170, 80, "转", 90),
                  headings=(*HEADINGS, "考号", "总分", "数学", None, "语文"))
        self.assertEqual(self.scores("语文, 数学, 总分"), [(90, 80, None)])

    def test_a_subject_that_is_not_on_the_sheet_stays_empty(self):
        self.take((1, 1, "甲", 90), headings=(*HEADINGS, "语文"))
        self.assertEqual(self.scores("语文, 数学"), [(90, None)])
        self.assertEqual(self.exams("语文, 数学"), [(150, None)])

    def test_stream_and_category_are_those_of_the_class(self):
        book = self.book("更多.xlsx", (*HEADINGS, "科类", "类别代码"), (3, 1, "首", "理", 2),
                         (3, 2, "次", "文", 1))
        self.run_program("import-students", self.library, book, "--no-backup")
        self.take((3, 2, "次", 90, 80), (3, 1, "首", 80, 70))
        self.assertEqual(self.scores("学号, 科类, 类别代码"), [(2, "理", 2), (1, "理", 2)])
        self.assertEqual(self.exams("科类"), [("理",)])

    def test_the_class_of_the_first_row_stands_for_the_sheet(self):
        result = self.take((2, 1, "戊", 90, 80), (1, 1, "甲", 90, 80))
        self.assertIn("理科：期中：满分 ", result.err)
        self.assertEqual(self.exams("科类"), [("理",)])
        self.assertEqual(self.scores("科类"), [("理",), ("文",)])

    def test_names_are_trimmed_and_numbers_read_from_texts(self):
        result = self.take(("1", " 2", "  乙 ", 90, 80), ("1班", "1号", "甲", 70, 60))
        self.assertIn("文科：期中：满分 ", result.err)
        self.assertEqual(self.scores("id, 班级, 学号, 姓名"), [(2, 1, 2, "乙"), (1, 1, 1, "甲")])

    def test_a_first_class_that_is_no_number_has_stream_1(self):
        result = self.take(("1班", 2, "乙", 90, 80), expect=ERROR)
        self.assertIn(" - Function GetBJKL/Mdl_MDB\n1科：期中：满分 ", result.err)
        self.assertEqual((self.exams("科类"), self.scores("id, 科类")), ([("1",)], [(2, "文")]))


class Names(ExamTest):
    def mismatch(self, *options, expect, name="假"):
        return self.take((1, 2, "乙", 70, 60), (1, 1, name, 90, 80),
                         (1, 3, "丙", 50, 40), options=options, expect=expect)

    def test_a_wrong_name_ends_the_import_if_nothing_else_was_said(self):
        for options in ((), ("--on-mismatch", "cancel")):
            result = self.mismatch(*options, expect=ERROR)
            self.assertIn(MISMATCH.format("假", "甲", "取消"), result.err)
            self.assertNotIn(FINISHED, result.err)
            self.assertEqual((self.scores(), self.exams()), ([], []))
            self.assertEqual(self.rows("select 姓名 from 信息表 where 班级=1 and 学号=1"), [("甲",)])

    def test_replace_puts_the_name_into_the_library_everywhere(self):
        self.take((1, 1, "甲", 90, 80), exam="月考")
        result = self.mismatch("--on-mismatch", "replace", expect=DONE)
        self.assertIn(MISMATCH.format("假", "甲", "是"), result.err)
        self.assertEqual(self.rows("select 姓名 from 信息表 where ID=1"), [("假",)])
        self.assertEqual(self.scores("考试名称, 姓名"), [("月考", "假"), ("期中", "乙"), ("期中", "假"),
                                                       ("期中", "丙")])

    def test_keep_leaves_the_library_its_name(self):
        result = self.mismatch("--on-mismatch", "keep", expect=DONE)
        self.assertIn(MISMATCH.format("假", "甲", "否"), result.err)
        self.assertEqual(self.rows("select 姓名 from 信息表 where ID=1"), [("甲",)])
        self.assertEqual(self.scores("id, 姓名"), [(2, "乙"), (1, "假"), (3, "丙")])

    def test_an_apostrophe_in_a_new_name_fails_with_its_messages(self):
        result = self.mismatch("--on-mismatch", "replace", expect=ERROR, name="戊'己")
        self.assertEqual(result.err.count(" - Sub SetStuName/Mdl_MDB"), 2)
        self.assertIn(FINISHED, result.err)
        self.assertEqual(self.rows("select 姓名 from 信息表 where ID=1"), [("甲",)])
        self.assertEqual(self.scores("id, 姓名"), [(2, "乙"), (1, "戊'己"), (3, "丙")])

    def test_a_cancelled_import_keeps_the_students_added_so_far(self):
        result = self.take((1, 9, "新", 70, 60), (1, 1, "假", 90, 80), (1, 10, "后", 1, 1),
                           options=("--add-students",), expect=ERROR)
        self.assertIn("→ 取消", result.err)
        self.assertEqual(self.rows("select 班级, 学号, 姓名, 类别代码, 科类 from 信息表 where 学号>3"),
                         [(1, 9, "新", 1, "文")])
        self.assertEqual((self.scores(), self.exams()), ([], []))

    def test_the_same_number_in_another_class_is_another_student(self):
        self.take((2, 3, "丙", 1, 1), options=("--add-students",))
        self.assertEqual(self.rows("select 科类 from 信息表 where 班级=2 and 学号=3"), [("理",)])


class Unknown(ExamTest):
    QUESTION = "是否添加新学生： 1 班 9 号 ,新 → "

    def test_a_skipped_student_gets_scores_all_the_same(self):
        for exam, options in (("期中", ()), ("期末", ("--on-unknown", "skip"))):
            result = self.take((1, 9, "新", 70, 60), exam=exam, options=options)
            self.assertIn(self.QUESTION + "取消\n", result.err)
        self.assertEqual(self.rows("select count(*) from 信息表"), [(4,)])
        self.assertEqual(self.scores("id, 学号, 姓名, 科类, 语文"), [(None, 9, "新", "文", 70)] * 2)

    def test_an_added_student_takes_the_stream_of_the_class(self):
        result = self.take((1, 9, "新", 70, 60), options=("--on-unknown", "add"))
        self.assertIn(self.QUESTION + "确定\n", result.err)
        self.assertEqual(self.rows("select 学号, 姓名, 类别代码, 科类 from 信息表 where ID=5"),
                         [(9, "新", 1, "文")])
        self.assertEqual(self.scores("id, 姓名"), [(5, "新")])

    def test_add_students_asks_nothing(self):
        result = self.take((1, 9, "新", 70, 60), options=("--add-students",))
        self.assertNotIn("是否添加新学生", result.err)
        self.assertEqual(self.scores("id, 姓名"), [(5, "新")])

    def test_a_new_class_takes_the_stream_that_is_given(self):
        result = self.take((7, 1, "新", 70, 60), (1, 1, "甲", 90, 80), (7, 2, "又", 60, 50),
                           options=("--add-students", "--stream", "理"))
        self.assertEqual(result.err, f"理科：期中：满分 语文=150，数学=150\n{FINISHED}")
        self.assertEqual(self.rows("select 学号, 姓名, 科类 from 信息表 where 班级=7"),
                         [(1, "新", "理"), (2, "又", "理")])
        self.assertEqual(self.scores("id, 班级, 科类"), [(5, 7, "理"), (1, 1, "文"), (6, 7, "理")])
        self.assertEqual(self.exams("科类"), [("理",)])

    def test_a_new_class_of_refused_students_has_the_stream_in_their_scores(self):
        result = self.take((7, 1, "新", 70, 60), options=("--on-unknown", "skip", "--stream", "文"),
                           expect=ERROR)
        self.assertIn(" - Function GetLeiBie/Mdl_MDB", result.err)
        self.assertEqual(self.exams("科类"), [("文",)])
        self.assertEqual(self.scores("id, 班级, 科类, 类别代码"), [(None, 7, "文", 1)])


class Exams(ExamTest):
    def test_a_typed_name_is_a_new_exam_even_if_it_exists(self):
        self.take((1, 1, "甲", 90, 80))
        self.take((2, 1, "戊", 70, 60))
        self.take((1, 1, "甲", 91, 81), options=("--accept-duplicate",))
        self.assertEqual(self.exams(), [("期中", "文", 1), ("期中", "理", 1), ("期中", "文", 1)])
        self.assertEqual(self.scores(), [(1, 1, 90, 80), (2, 1, 70, 60), (1, 1, 91, 81)])

    def test_a_further_exam_gets_the_next_number(self):
        for exam in ("期中", "期末", "月考"):
            self.take((1, 1, "甲", 90, 80), exam=exam)
        self.assertEqual(self.exams("考试名称, 考试编号"), [("期中", 1), ("期末", 2), ("月考", 3)])
        self.assertEqual(self.scores("考试名称, 考试编号"), [("期中", 1), ("期末", 2), ("月考", 3)])

    def test_an_existing_exam_is_overwritten_after_a_question(self):
        self.take((1, 1, "甲", 90, 80), (1, 2, "乙", 70, 60))
        result = self.take((1, 1, "甲", 91, 81), (1, 3, "丙", 50, 40), options=("--existing",))
        self.assertIn("[提示] 确实要将数据到入 期中 吗？原有数据将被新数据替换！ → 确定\n", result.err)
        self.assertEqual(self.exams(), [("期中", "文", 1)])
        self.assertEqual(self.scores(), [(1, 1, 91, 81), (1, 2, 70, 60), (1, 3, 50, 40)])

    def test_an_existing_exam_takes_over_the_first_row_of_each_student(self):
        self.take((1, 1, "甲", 90, 80), exam="期中")
        self.take((1, 1, "甲", 50, 40), exam="期末")
        self.take((1, 1, "甲", 51), exam="期末", headings=(*HEADINGS, "语文"),
                  options=("--existing", "--accept-overwrite", "original"))
        self.assertEqual(self.scores("考试名称, 考试编号, 语文, 数学"),
                         [("期末", 2, 51, 80), ("期末", 2, 50, 40)])
        self.assertEqual(self.exams("考试名称, 考试编号"), [("期中", 1), ("期末", 2)])

    def test_an_existing_exam_can_keep_to_its_own_rows(self):
        self.take((1, 1, "甲", 90, 80), exam="期中")
        self.take((1, 1, "甲", 50, 40), exam="期末")
        self.take((1, 1, "甲", 51, 41), (2, 1, "戊", 61, 60), exam="期末",
                  options=("--existing", "--accept-overwrite", "this-exam"))
        self.assertEqual(self.scores("姓名, 考试名称, 考试编号, 语文"),
                         [("甲", "期中", 1, 90), ("甲", "期末", 2, 51), ("戊", "期末", 2, 61)])

    def test_the_second_stream_of_an_existing_exam_has_its_full_marks_where_the_flag_says(self):
        self.take((1, 1, "甲", 90, 80))
        self.take((2, 1, "戊", 90, 80))
        for flag, mark, marks in (("this-exam", 130, [("文", 150), ("理", 130)]),
                                  ("original", 120, [("文", 120), ("理", 130)])):
            self.take((2, 1, "戊", 91, 81),
                      options=("--existing", "--accept-overwrite", flag,
                               "--full-marks", f"语文={mark}"))
            self.assertEqual(self.exams("科类, 语文"), marks)

    def test_an_existing_exam_keeps_the_full_marks_of_other_subjects(self):
        self.take((1, 1, "甲", 90, 80), options=("--full-marks", "语文=120,数学=100"))
        self.take((1, 1, "甲", 91), options=("--existing", "--full-marks", "语文=130"),
                  headings=(*HEADINGS, "语文"))
        self.assertEqual(self.exams("语文, 数学"), [(130, 100)])

    def test_an_exam_that_does_not_exist_cannot_be_picked(self):
        before = yunshan.file_hash(self.library)
        result = self.take((1, 1, "甲", 90, 80), options=("--existing",), expect=USAGE)
        self.assertTrue(result.err.startswith("成绩库里没有考试“期中”。\n"), result.err)
        self.assertUntouched(before)

    def test_score_computes_the_exam_afterwards(self):
        self.take((1, 1, "甲", 90, 80), (1, 2, "乙", 70, 60), options=("--score",))
        self.assertEqual(self.scores("总分, 总分年名, 总分班名, 语文年名, 语文Z分, 语文T分"),
                         [(170, 1, 1, 1, 0.71, 57), (130, 2, 2, 2, -0.71, 43)])


class Refused(ExamTest):
    def refused(self, *rows, says, headings=TWO_SUBJECTS, options=(), exam="期中", expect=ERROR):
        before = yunshan.file_hash(self.library)
        result = self.take(*rows, headings=headings, options=options, exam=exam, expect=expect)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith(says), result.err)
        self.assertUntouched(before)

    def test_what_a_flag_would_accept(self):
        self.take((1, 1, "甲", 60, 60), exam="高一期末")
        self.take((1, 1, "甲", 61, 61), exam="期中")
        cases = (
            (((7, 1, "新", 70, 60),), "月考", ("--add-students",),
             "班级 7 还没有学生，科类设为： → 取消\n", "请用 --stream 文 或 --stream 理 给出这些班级的科类。\n"),
            (((1, 1, "甲", 70, 60),), "期中", ("--existing",),
             "将覆盖 1 名学生其他考试（高一期末）的成绩。", "--accept-overwrite this-exam（只更新本考试）。\n"),
            (((2, 1, "戊", 70, 60),), "期中", ("--existing",),
             "满分和总分公式会写到“文”科的考试行，不是“理”科的。", "--accept-overwrite this-exam（只更新本考试）。\n"),
            (((1, 1, "甲", 70, 60), (1, 2, "乙", 70, 60)), "期中", (),
             "考试“期中”里已有这些学生的成绩，再次导入会使 1 人的成绩重复。 → 取消\n",
             "确实要再次导入，请加上 --accept-duplicate。\n"),
            (((1, 1, "甲", 70, 60),), "期末", (),
             "“期末”是已有考试“高一期末”的一部分，", "确实要用这个名称，请加上 --accept-unlisted。\n"),
            (((1, 1, "甲", "abc", "请假"), (1, 2, "乙", "abc", 60)), "月考", (),
             "有 3 个单元格的文字既不是缺考也不是作弊，按 0 分计：abc（2）、请假（1） → 取消\n",
             "确实要这样导入，请加上 --accept-texts。\n"))
        before = yunshan.file_hash(self.library)
        for rows, exam, options, question, hint in cases:
            result = self.take(*rows, exam=exam, options=options, expect=ERROR)
            self.assertIn(question, result.err)
            self.assertTrue(result.err.endswith(hint), result.err)
            self.assertNotIn("：满分 ", result.err)
            self.assertUntouched(before)

    def test_a_name_of_an_exam_that_cannot_be(self):
        self.take((1, 1, "甲", 60, 60), exam="AB")
        for name, says in (("考" * 51, "[错误] 考试名称最多 50 个字，现在有 51 个字。\n"),
                           ("期\n中", "[错误] 考试名称里不能有换行、制表符等控制字符。\n"),
                           ("ab", "[错误] 已有考试“AB”，与“ab”只有字母的大小写不同，请换一个名称。\n")):
            self.refused((1, 1, "甲", 90, 80), exam=name, says=says)

    def test_a_stream_that_cannot_be(self):
        self.refused((7, 1, "新", 90, 80), options=("--stream", "数"), expect=USAGE,
                     says="科类“数”不正确，可以是：文、理。\n")

    def test_a_stream_that_is_not_the_only_one(self):
        self.change("update 信息表 set 科类='文'")
        self.refused((7, 1, "新", 90, 80), options=("--stream", "理"), expect=USAGE,
                     says="科类“理”不正确，可以是：文。\n")
        self.take((7, 1, "新", 90, 80), options=("--stream", "文", "--add-students"))
        self.assertEqual(self.scores("科类"), [("文",)])

    def test_headings_must_stand_exactly(self):
        says = "[错误] 指定的工作表格式不对！\n\n前3列名称应为：班级,学号,姓名\n"
        for headings in (("班级 ", "学号", "姓名", "语文"), ("班级", "姓名", "学号", "语文")):
            self.refused((1, 1, "甲", 90), headings=headings, says=says)

    def test_a_sheet_without_subjects(self):
        self.refused((1, 1, "甲", 90), headings=(*HEADINGS, "总分"),
                     says="[错误] 没有找到科目，程序退出！\n")

    def test_no_exam_name(self):
        self.refused((1, 1, "甲", 90, 80), exam="", says="[错误] 请输入考试名称！\n")

    def test_the_option_for_the_exam_left_out(self):
        book = self.book("成绩.xlsx", TWO_SUBJECTS, (1, 1, "甲", 90, 80))
        before = yunshan.file_hash(self.library)
        result = self.run_program("import-exam", self.library, book, expect=USAGE)
        self.assertTrue(result.err.startswith("缺少选项 --exam。\n"))
        result = self.run_program("import-exam", self.library, book, "--exam", "", expect=ERROR)
        self.assertEqual(result.err, "[错误] 请输入考试名称！\n")
        self.assertUntouched(before)

    def test_an_exam_name_that_other_commands_could_not_name(self):
        for name in ("期中,期末", " 期中", "期中 ", " "):
            self.refused((1, 1, "甲", 90, 80), exam=name, expect=USAGE,
                         says=f"考试名称“{name}”不能含有逗号，两端也不能有空格。\n")

    def test_a_sheet_that_is_not_there(self):
        self.refused((1, 1, "甲", 90, 80), options=("--sheet", "没有"), expect=USAGE,
                     says="工作簿里没有数据表“没有”。\n")

    def test_a_workbook_that_is_not_there(self):
        before = yunshan.file_hash(self.library)
        result = self.import_exam("没有.xlsx", "期中", expect=ERROR)
        self.assertNotEqual(result.err, "")
        self.assertUntouched(before)

    def test_full_marks_that_are_none_are_refused(self):
        for mark in ("", "0", "-5", "abc", "1e39", "1e-50"):
            with self.subTest(mark):
                self.refused((1, 1, "甲", 90, 80), options=("--full-marks", f"语文={mark}"),
                             says=f"满分不正确：语文={mark}（应为 科目=满分）\n", expect=USAGE)

    def test_a_subject_without_a_full_mark(self):
        self.run_program("new", self.library, "--subjects", "烹饪,总分", "--force")
        self.add_students((1, 1, "甲", "文"))
        self.refused((1, 1, "甲", 90), headings=(*HEADINGS, "烹饪"), expect=USAGE,
                     says="科目“烹饪”没有满分，请用 --full-marks 给出。\n")
        self.take((1, 1, "甲", 9.5), headings=(*HEADINGS, "烹饪"),
                  options=("--full-marks", "烹饪=10"))
        self.assertEqual(self.rows("select 烹饪 from 成绩表"), [(9.5,)])


class Paths(ExamTest):
    def test_relative_paths_are_relative_to_where_the_program_runs(self):
        inner = self.folder / "里"
        inner.mkdir()
        self.book("成绩.xlsx", TWO_SUBJECTS, (1, 1, "甲", 90, 80))
        self.run_program("import-exam", "../试验.CJK", "../成绩.xlsx", "--exam", "期中",
                         "--no-backup", cwd=inner)
        self.assertEqual(self.scores(), [(1, 1, 90, 80)])

    def test_a_sheet_is_chosen_by_its_name(self):
        book = yunshan.write_book(self.folder / "两张.xlsx",
                                  {"文科": (TWO_SUBJECTS, (1, 1, "甲", 90, 80)),
                                   "理科": (TWO_SUBJECTS, (2, 1, "戊", 70, 60))})
        self.import_exam(book, "期中", "--sheet", "理科")
        self.import_exam(book, "期中")
        self.assertEqual(self.scores(), [(2, 1, 70, 60), (1, 1, 90, 80)])

    def test_the_library_is_copied_before_the_import(self):
        before = yunshan.content_hash(self.library)
        book = self.book("成绩.xlsx", TWO_SUBJECTS, (1, 1, "甲", 90, 80))
        self.run_program("import-exam", self.library, book, "--exam", "期中")
        copies = [path for path in self.folder.iterdir() if path.suffix == ".bak"]
        self.assertEqual([yunshan.content_hash(copy) for copy in copies], [before])


if __name__ == "__main__":
    yunshan.main()
