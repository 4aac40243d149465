"""Students sent to new classes by a workbook."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import ERROR, HEADINGS, USAGE

TAG = " - Private Sub Command1_Click/FormDaoRuFenBanXinXi"
NEW_HEADINGS = (*HEADINGS, "新班级", "新学号")
CLOSING = "分班完成！\n"
MISSING = ("[数据错误] 分班表中没有下列学生的信息： [2 班 1 号 丁] ，是否从数据库中删除当前学生记录！ "
           "→ ")


def mismatch(button):
    return ("[数据错误] Excel表格中学生的学号和姓名： [戌] 与数据库中记录的不一致！\n\n"
            "Excel表格中：2班2号 姓名为：[戌]\n"
            "数据库中记录：2班2号 姓名为：[戊]，二者不一致！\n\n"
            "[是]用现有姓名替换掉数据库中记录的姓名\n"
            "[否]保留数据库中记录的姓名,继续录入,即将[戌]和[戊]认为是同一人\n"
            f"[取消]终止当前导入\n → {button}\n")


COUNTS = (
    "分班表有 5 行，其中 1 行没有用到。\n"
    "移到新班级和新学号：3 人\n"
    "姓名不一致，要问是否改名，都留在原班：1 人\n"
    "分班表中没有，要问是否删除：1 人\n"
    "　　全部删除会连同他们现在的班级和学号名下的成绩 2 条一并删去\n"
    "　　这些成绩中有 1 条是别人以前的成绩\n\n"
    "继续：问完以后一次写入。\n"
    "取消：学生和成绩都不改动。 → 继续\n")


class Reclass(yunshan.ProgramTest):
    """甲 and 乙 swap, 丙 moves, 丁 is missing, 戊 is called 戌, and 己 is unknown."""

    def setUp(self):
        super().setUp()
        self.make_library("语文", "总分")
        self.add_students((1, 1, "甲", "文"), (1, 2, "乙", "文"), (1, 3, "丙", "文"),
                          (2, 1, "丁", "理"), (2, 2, "戊", "理"))
        for group, number, name in ((1, 1, "甲"), (2, 1, "丁"), (2, 2, "戊")):
            self.add_score("期中", group, number, name)
        # 丙 had the number of 丁 once.
        self.add_score("期初", 2, 1, "丙")
        self.sheet = self.book("分班.xlsx", NEW_HEADINGS, (1, 1, "甲", 1, 2), (1, 2, "乙", 1, 1),
                               (1, 3, "丙", 4, 9), (None,) * 5, (2, 2, "戌", 4, 1),
                               (7, 7, "己", 4, 2))

    def add_score(self, exam, group, number, name):
        self.change("insert into 成绩表(id,考试名称,班级,学号,姓名,语文) select ID,?,?,?,?,90 from 信息表 "
                    "where 姓名=?", exam, group, number, name, name)

    def reclass(self, *options, expect=yunshan.DONE):
        return self.run_program("reclass", self.library, self.sheet, "--no-backup", *options,
                                expect=expect)

    def students(self):
        return self.rows("select ID, 班级, 学号, 姓名, 科类 from 信息表 order by ID")

    def scores(self):
        return self.rows("select 考试名称, 班级, 学号, 姓名 from 成绩表 order by rowid")

    def test_without_options_the_missing_and_the_renamed_stay(self):
        scores = self.scores()
        result = self.reclass()
        self.assertEqual(result.out, "")
        self.assertEqual(result.err, f"{COUNTS}{MISSING}取消\n{mismatch('取消')}"
                         "移动 3 人，改名 0 人，删除 0 人（成绩 0 条），留在原班 2 人。\n" + CLOSING)
        self.assertEqual(self.students(),
                         [(1, 1, 2, "甲", "文"), (2, 1, 1, "乙", "文"), (3, 4, 9, "丙", "文"),
                          (4, 2, 1, "丁", "理"), (5, 2, 2, "戊", "理")])
        self.assertEqual(self.scores(), scores)
        self.assertEqual(self.rows("select 班级, 学号, 姓名, 新班级, 新学号, 已分班 from 分班表"),
                         [(1, 1, "甲", 1, 2, 1), (1, 2, "乙", 1, 1, 2), (1, 3, "丙", 4, 9, 3),
                          (2, 2, "戌", 4, 1, 0), (7, 7, "己", 4, 2, 0)])

    def test_the_missing_are_deleted_and_names_replaced_where_the_options_say_so(self):
        result = self.reclass("--on-missing", "delete", "--on-mismatch", "replace")
        self.assertEqual(result.err, f"{COUNTS}{MISSING}确定\n{mismatch('是')}"
                         "移动 3 人，改名 1 人，删除 1 人（成绩 2 条），留在原班 1 人。\n" + CLOSING)
        self.assertEqual(self.students(),
                         [(1, 1, 2, "甲", "文"), (2, 1, 1, "乙", "文"), (3, 4, 9, "丙", "文"),
                          (5, 2, 2, "戌", "理")])
        self.assertEqual(self.scores(), [("期中", 1, 1, "甲"), ("期中", 2, 2, "戊")])

    def test_keep_answers_no(self):
        result = self.reclass("--on-missing", "keep", "--on-mismatch", "keep")
        self.assertIn(mismatch("否"), result.err)
        self.assertEqual([name for (name,) in self.rows("select 姓名 from 信息表 order by ID")],
                         list("甲乙丙丁戊"))

    def test_the_other_tables_stay_as_they_were(self):
        def others():
            return [self.rows(f"select * from {table}")
                    for table in ("考试名称表", "教师表", "设置表", "详细设置表", "总分公式", "颜色表")]
        before = others()
        self.reclass("--on-missing", "delete")
        self.assertEqual(others(), before)

    def test_a_copy_is_made_unless_it_is_switched_off(self):
        self.reclass()
        self.assertEqual(list(self.folder.glob("*.bak")), [])
        before = yunshan.content_hash(self.library)
        self.run_program("reclass", self.library, self.sheet)
        copies = list(self.folder.glob("*.bak"))
        self.assertEqual(len(copies), 1)
        self.assertEqual(yunshan.content_hash(copies[0]), before)

    def test_the_sheet_is_chosen_by_its_name(self):
        self.sheet = yunshan.write_book(self.folder / "两张.xlsx", {
            "说明": [("说明",)], "分班": [NEW_HEADINGS, (1, 1, "甲", 8, 8)]})
        self.reclass("--sheet", "分班")
        self.assertEqual(self.students()[0], (1, 8, 8, "甲", "文"))
        before = yunshan.file_hash(self.library)
        result = self.reclass("--sheet", "没有", expect=USAGE)
        self.assertTrue(result.err.startswith("工作簿里没有数据表“没有”。\n"), result.err)
        self.assertUntouched(before)

    def test_wrong_headings_write_nothing(self):
        self.sheet = self.book("错.xlsx", HEADINGS, (1, 1, "甲"))
        before = yunshan.file_hash(self.library)
        self.assertEqual(self.reclass(expect=ERROR).err,
                         "[错误] 指定的工作表格式不对！\n\n前5列为：班级、学号、姓名、新班级、新学号\n")
        self.assertUntouched(before)

    def test_books_that_cannot_be_read_write_nothing(self):
        before = yunshan.file_hash(self.library)
        (self.folder / "坏.xlsx").write_bytes(self.sheet.read_bytes()[:1000])
        (self.folder / "空.xlsx").write_bytes(b"")
        for name in ("坏.xlsx", "空.xlsx"):
            self.sheet = self.folder / name
            result = self.reclass(expect=ERROR)
            self.assertIn(TAG, result.err)
            self.assertTrue(result.err.endswith("[错误] 要分析的工作簿未打开！\n"), result.err)
        self.sheet = self.folder / "没有.xlsx"
        self.assertTrue(self.reclass(expect=ERROR).err.startswith("找不到工作簿："))
        self.assertUntouched(before)

    def test_wrong_use(self):
        before = yunshan.file_hash(self.library)
        for options in (("--on-missing", "drop"), ("--on-mismatch", "yes"), ("--force",)):
            self.reclass(*options, expect=USAGE)
        self.run_program("reclass", self.library, expect=USAGE)
        self.assertUntouched(before)


if __name__ == "__main__":
    yunshan.main()
