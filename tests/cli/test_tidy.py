"""Workbooks of schools in the form that the imports want."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import openpyxl
import yunshan
from yunshan import DONE, ERROR, USAGE

SCHOOLS = (("高三(1)班期中考试成绩", None, None, None, None),
           ("考号", "姓 名", "语文成绩", "数学", "总分"),
           ("10001", "张 三", 90, "缺", 90),
           ("10002", "李四", 80, 70, 150),
           ("平均分", None, 85, 70, 120))
HOW = ("用 --map 项目=列 指定一列（列用字母或表头，不用的列写 不导入=列），班级也可以写 "
       "班级=标题、班级=表名 或 班级=文件名；用 --class 文字=班号 指定班级，--mark 文字=缺考 指定标记，"
       "--sheets 指定数据表。\n")


class TidyTest(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.target = self.folder / "整理.xlsx"

    def tidy(self, *rows, options=(), expect=DONE):
        book = self.book("期中.xlsx", *rows)
        return self.run_program("tidy", book, "--out", self.target, *options, expect=expect)

    def sheets(self):
        book = openpyxl.load_workbook(self.target)
        return {sheet.title: [tuple(row) for row in sheet.iter_rows(values_only=True)]
                for sheet in book}


class WithALibrary(TidyTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文", "数学", "总分")
        self.add_students((301, 1, "张三", "理"), (301, 2, "李四", "理"), (302, 1, "王五", "理"))

    def test_the_result_is_taken_by_the_import(self):
        result = self.tidy(*SCHOOLS, options=("--library", self.library))
        self.assertEqual(result.out, f"{self.target}\n")
        self.assertEqual(result.err, "整理了 1 张数据表，2 名学生；缺考 1 处，作弊 0 处。\n"
                                     "按考号、学籍号或班级和姓名找到 2 人。\n")
        self.assertEqual(self.sheets(), {"成绩": [("班级", "学号", "姓名", "语文", "数学"),
                                                (301, 1, "张三", 90, "缺考"),
                                                (301, 2, "李四", 80, 70)]})
        self.run_program("import-exam", self.library, self.target, "--exam", "期中", "--no-backup")
        self.assertEqual(self.rows("select id, 语文, 数学 from 成绩表 order by id"),
                         [(1, 90, -1), (2, 80, 70)])

    def test_students_who_are_not_found_are_listed(self):
        rows = (*SCHOOLS[:3], ("10009", "陌生人", 60, 60, 120))
        result = self.tidy(*rows, options=("--library", self.library))
        self.assertEqual(result.err,
                         "没有写入，“Sheet”第 4 行：没有学号。在成绩库里没有找到这个学生。\n"
                         "整理了 1 张数据表，1 名学生；缺考 1 处，作弊 0 处。\n"
                         "按考号、学籍号或班级和姓名找到 1 人。\n"
                         "有 1 行学生没有写入，列在数据表“没有写入的行”里。\n")
        self.assertEqual(self.sheets()["没有写入的行"][1],
                         ("Sheet", 4, "没有学号。在成绩库里没有找到这个学生。", "10009", "陌生人",
                          60, 60, 120))

    def test_a_sheet_a_stream_is_said_and_counted(self):
        self.add_students((311, 1, "赵六", "文"),)
        rows = (("班级", "学号", "姓名", "语文", "数学"), (301, 1, "张三", 90, 80),
                (301, 2, "李四", 80, 70), (311, 1, "赵六", 70, 60))
        result = self.tidy(*rows, options=("--library", self.library))
        self.assertEqual(result.err, "整理了 1 张数据表，3 名学生；缺考 0 处，作弊 0 处。\n"
                                     "按科类分成“理科”“文科” 2 张数据表，各导入一次。\n")
        self.assertEqual(list(self.sheets()), ["理科", "文科"])
        result = self.run_program("tidy", self.folder / "期中.xlsx", "--library", self.library,
                                  "--format", "json")
        self.assertEqual(result.json()["results"], [{"name": "理科", "students": 2},
                                                    {"name": "文科", "students": 1}])

    def test_rows_of_figures_are_no_students(self):
        rows = (("班级", "学号", "姓名", "语文", "数学"), (301, 1, "张三", 90, 80),
                (301, None, None, 85, 75), (301, None, "陌生人", 60, 50))
        result = self.tidy(*rows, options=("--library", self.library))
        self.assertEqual(result.err,
                         "没有写入，“Sheet”第 3 行：没有姓名和号码。\n"
                         "没有写入，“Sheet”第 4 行：没有学号。在成绩库里没有找到这个学生。\n"
                         "整理了 1 张数据表，1 名学生；缺考 0 处，作弊 0 处。\n"
                         "有 1 行学生没有写入，列在数据表“没有写入的行”里。\n"
                         "有 1 行有分数、没有姓名，没有写入，列在数据表“没有写入的行”里。\n")

    def test_rows_of_a_list_without_a_name_are_told(self):
        rows = (("班级", "学号", "姓名", "身份证", "性别"), (1, 1, "甲", 110101, "女"),
                (1, None, None, 110102, "男"))
        result = self.tidy(*rows, options=("--as", "students"))
        self.assertIn("有 1 行有数字、没有姓名，没有写入，列在数据表“没有写入的行”里。\n", result.err)

    def test_places_that_the_library_does_not_have_are_counted(self):
        rows = (("班级", "学号", "姓名", "语文", "数学"), (301, 1, "张三", 90, 80),
                (301, 9, "陌生人", 60, 50))
        result = self.tidy(*rows, options=("--library", self.library))
        self.assertEqual(result.err, "“Sheet”第 3 行：成绩库里没有 301 班 9 号。\n"
                                     "整理了 1 张数据表，2 名学生；缺考 0 处，作弊 0 处。\n"
                                     "有 1 人的班级和学号成绩库里没有。\n")

    def test_sheets_that_are_left_out_are_told(self):
        book = self.folder / "期中.xlsx"
        yunshan.write_book(book, {"301班": [["学号", "姓名", "语文"], [1, "张三", 90]],
                                  "说明": [["请核对"]]})
        result = self.run_program("tidy", book, "--library", self.library, "--out", self.target)
        self.assertIn("没有用数据表“说明”：没有找到表头。\n", result.err)

    def test_a_library_that_is_not_there_writes_nothing(self):
        self.tidy(*SCHOOLS, options=("--library", "没有.CJK"), expect=ERROR)
        self.assertFalse(self.target.exists())


class WithoutALibrary(TidyTest):
    def test_what_is_open_is_said_and_nothing_is_written(self):
        result = self.tidy(*SCHOOLS, expect=ERROR)
        self.assertEqual(result.out, "")
        self.assertEqual(result.err,
                         "还不能整理，请先确定：\n数据表“Sheet”里没有学号，不知道各行是谁。"
                         "打开有学生名单的成绩库，可以按班级和姓名查找学生。\n" + HOW)
        self.assertFalse(self.target.exists())

    def test_maps_decide_by_letters_or_headings(self):
        self.tidy(*SCHOOLS, options=("--map", "学号=A", "--map", "不导入=数学"))
        self.assertEqual(self.sheets(), {"成绩": [("班级", "学号", "姓名", "语文"),
                                                (1, 10001, "张三", 90), (1, 10002, "李四", 80)]})

    def test_marks_classes_and_sheets_are_decided(self):
        self.tidy(("班级", "学号", "姓名", "语文"), ("实验班", 1, "甲", "请假"), ("2班", 2, "乙", 3),
                  options=("--mark", "请假=缺考", "--class", "实验班=7", "--sheets", "Sheet"))
        self.assertEqual(self.sheets()["成绩"][1:], [(7, 1, "甲", "缺考"), (2, 2, "乙", 3)])

    def test_texts_are_compared_without_blanks_and_brackets(self):
        self.tidy(("班级", "学号", "姓名", "语文"), ("实验(甲)班", 1, "甲", "请 假"),
                  ("2班", 2, "乙", -1), ("2班", 3, "丙", 80),
                  options=("--class", "实验（甲）班=7", "--mark", "请假=缺考", "--mark=-1=缺考"))
        self.assertEqual(self.sheets()["成绩"][1:], [(7, 1, "甲", "缺考"), (2, 2, "乙", "缺考"),
                                                    (2, 3, "丙", 80)])

    def test_empty_cells_are_named_as_they_are_offered(self):
        rows = (("班级", "学号", "姓名", "语文", "数学"), (1, 1, "甲", None, 90), (1, 2, "乙", 80, 70))
        for mark, cell in (("（空白）=不变", None), ("(空白)=作弊", "作弊"), ("=不变", None)):
            with self.subTest(mark):
                self.target.unlink(missing_ok=True)
                self.tidy(*rows, options=(f"--mark={mark}",))
                self.assertEqual(self.sheets()["成绩"][1:], [(1, 1, "甲", cell, 90),
                                                            (1, 2, "乙", 80, 70)])
        self.target.unlink()
        result = self.tidy(*rows, options=("--mark", "缺=缺考"), expect=USAGE)
        self.assertIn("“缺”在成绩里没有出现，可以是：（空白）。", result.err)

    def test_a_list_of_students(self):
        self.tidy(("座号", "学生姓名", "班别", "身份证号"), (1, "甲", "3班", "110101201001010011"),
                  options=("--as", "students", "--map", "学号=座号"))
        self.assertEqual(self.sheets(), {"学生名单": [("班级", "学号", "姓名", "身份证"),
                                                  (3, 1, "甲", "110101201001010011")]})

    def test_json_prints_the_whole_proposal(self):
        book = self.book("期中.xlsx", *SCHOOLS)
        result = self.run_program("tidy", book, "--format", "json", "--map", "学号=A")
        proposal = result.json()
        self.assertEqual((proposal["decided"], proposal["questions"]), (True, []))
        sheet, = proposal["sheets"]
        self.assertEqual([column["use"] for column in sheet["columns"]],
                         ["学号", "姓名", "语文", "数学", "不导入"])
        self.assertEqual(sheet["columns"][0], {"column": "A", "heading": "考号", "use": "学号",
                                               "by": "user", "open": False,
                                               "reason": "您选择的。"})
        self.assertEqual(sheet["leftOut"],
                         [{"first": 1, "last": 1, "reason": "标题行"},
                          {"first": 2, "last": 2, "reason": "表头"},
                          {"first": 5, "last": 5, "reason": "合计、平均一类的行"}])
        self.assertEqual(sheet["class"], {"from": "title", "text": "高三(1)班"})
        self.assertEqual(proposal["counts"]["students"], 2)
        self.assertEqual(proposal["marks"],
                         [{"text": "缺", "use": "缺考", "count": 1, "open": False}])
        self.assertFalse(self.target.exists())

    def test_an_undecided_proposal_is_printed_as_json_too(self):
        book = self.book("期中.xlsx", *SCHOOLS)
        result = self.run_program("tidy", book, "--format", "json", expect=ERROR)
        self.assertFalse(result.json()["decided"])


class Refused(TidyTest):
    def test_wrong_options_are_wrong_usage(self):
        for options, text in (
                (("--map", "学号"), "选项 --map 的值应为 项目=列：学号"),
                (("--map", "数=A"), "选项 --map 里的“数”不是可以导入的项目"),
                (("--map", "学号=Z"), "工作簿里没有“Z”这一列。"),
                (("--mark", "请假=走"), "选项 --mark 的值应为 文字=缺考|作弊|不变：请假=走"),
                (("--mark", "请假=缺考"), "选项 --mark 里的“请假”在成绩里没有出现，没有可以指定的。"),
                (("--map", "学号=A", "--mark", "请假=缺考"),
                 "选项 --mark 里的“请假”在成绩里没有出现，可以是：缺。"),
                (("--class", "9班=9"), "选项 --class 里的“9班”不是表里班级的写法，可以是：高三(1)班。"),
                (("--class", "1=301"), "选项 --class 里的“1”不是表里班级的写法，可以是：高三(1)班。"),
                (("--class", "一班=一"),
                 "选项 --class 的值应为 文字=班号，班号是 1 或更大的整数：一班=一"),
                (("--sheets", "别的"), "工作簿里没有数据表“别的”。"),
                (("--as", "teachers"), "选项 --as 的值只能是：exam、students")):
            with self.subTest(options):
                self.assertIn(text, self.tidy(*SCHOOLS, options=options, expect=USAGE).err)
        for number in ("nan", "inf", "-3", "0", "1.5", "1e300", "1e2", "", "12345678901"):
            with self.subTest(number):
                text = f"高三(1)班={number}"
                self.assertIn(f"班号是 1 或更大的整数：{text}\n",
                              self.tidy(*SCHOOLS, options=("--class", text), expect=USAGE).err)
        book = self.book("期中.xlsx", *SCHOOLS)
        self.assertIn("缺少选项 --out。", self.run_program("tidy", book, expect=USAGE).err)

    def test_existing_files_are_kept(self):
        book = self.book("期中.xlsx", *SCHOOLS)
        result = self.run_program("tidy", book, "--out", book, "--force", expect=ERROR)
        self.assertEqual(result.err, "整理的结果不能写进原来的工作簿，请换一个文件名。\n")
        self.target.write_text("旧")
        result = self.tidy(*SCHOOLS, expect=ERROR)
        self.assertEqual(result.err,
                         f"文件 {self.target} 已存在，没有覆盖。要覆盖它，请加上 --force。\n")
        self.assertEqual(self.target.read_text(), "旧")

    def test_a_score_library_is_never_replaced(self):
        self.make_library("语文", "总分")
        before = self.library.read_bytes()
        named = self.library.with_suffix(".xlsx")
        named.write_bytes(before)
        for options, target, code, says in (
                (("--library", self.library), self.library, USAGE, "选项 --out 的文件只能是 .xlsx。"),
                ((), self.library, USAGE, "选项 --out 的文件只能是 .xlsx。"),
                (("--library", named), named, ERROR, f"文件 {named} 正在使用，不能覆盖。"),
                ((), named, ERROR, f"{named} 是成绩库，不能覆盖。")):
            with self.subTest(options=options, target=target):
                book = self.book("期中.xlsx", *SCHOOLS)
                result = self.run_program("tidy", book, "--out", target, "--force",
                                          "--map", "学号=A", *options, expect=code)
                self.assertEqual((result.out, result.err.splitlines()[0]), ("", says))
                self.assertEqual(target.read_bytes(), before)

    def test_a_file_that_is_no_workbook_is_told(self):
        page = self.folder / "网页.xls"
        page.write_text("<html></html>")
        result = self.run_program("tidy", page, "--out", self.target, expect=ERROR)
        self.assertIn("网页", result.err)
        result = self.run_program("tidy", "没有.xlsx", "--out", self.target, expect=ERROR)
        self.assertEqual(result.err, f"找不到工作簿：{self.folder / '没有.xlsx'}\n")


yunshan.main()
