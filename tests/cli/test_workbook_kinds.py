"""Files that are no workbooks, or broken ones: each kind has its own sentence, and the library stays."""

import re
import sys
import zipfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import xls
import yunshan
from yunshan import ERROR, FINISHED, HEADINGS

ROWS = ((*HEADINGS, "语文"), (1, 1, "甲", 90.5), (1, 2, "乙", "缺考"))
TAGS = {"import-students": " - Private Sub Command1_Click/FormDaoRuXinXi",
        "import-exam": " - Private Sub Command1_Click/FormDaoRu"}
HEADING_TEXTS = {"import-students": "前3列为 班级、学号、姓名", "import-exam": "前3列名称应为：班级,学号,姓名"}
SAVE_ANEW = "请用电子表格软件打开它，另存为 .xlsx 后再试。"


class WorkbookKinds(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文", "总分")
        self.add_students((1, 1, "甲", "文"), (1, 2, "乙", "文"))

    def imports(self, path):
        return (("import-students", self.library, path),
                ("import-exam", self.library, path, "--exam", "期中"))

    def refused(self, name, content, sentence):
        """Both imports say the sentence about the file and leave the library alone, with no copy."""
        path = self.folder / name
        if content is not None:
            path.write_bytes(content)
        before = yunshan.file_hash(self.library)
        for command in self.imports(path):
            result = self.run_program(*command, expect=ERROR)
            self.assertEqual(result.out, "")
            self.assertEqual(result.err, f"{path} {sentence}{TAGS[command[0]]}\n"
                                         "[错误] 要分析的工作簿未打开！\n")
            self.assertUntouched(before)
        self.assertEqual(list(self.folder.glob("*.bak")), [])

    def wrong_headings(self, path):
        before = yunshan.file_hash(self.library)
        for command in self.imports(path):
            result = self.run_program(*command, expect=ERROR)
            self.assertEqual(result.err,
                             f"[错误] 指定的工作表格式不对！\n\n{HEADING_TEXTS[command[0]]}\n")
            self.assertUntouched(before)
        self.assertEqual(list(self.folder.glob("*.bak")), [])

    def xlsx(self):
        return self.book("whole.xlsx", *ROWS).read_bytes()

    def test_cut_off_xlsx(self):
        content = self.xlsx()
        for length in (len(content) // 2, len(content) - 30, 200):
            self.refused("成绩.xlsx", content[:length],
                         "不完整或已损坏：.xlsx 文件的压缩包无法读完。请重新复制或下载后再试。")

    def test_cut_off_xls(self):
        content = xls.xls_bytes("Sheet", ROWS)
        for length in (len(content) // 2, len(content) - 512, 600):
            self.refused("成绩.xls", content[:length],
                         "不完整或已损坏：.xls 文件的内容在中途断开。请重新复制或下载后再试。")

    def test_web_page(self):
        page = "<html><meta charset=utf-8><table><tr><td>班级<td>学号<td>姓名<td>语文</tr></table></html>"
        self.refused("成绩.xls", page.encode(), "其实是网页文件，不是工作簿。" + SAVE_ANEW)

    def test_plain_text(self):
        for encoding in ("utf-8", "gb18030", "utf-16"):
            self.refused("成绩.xls", "班级\t学号\t姓名\t语文\n1\t1\t甲\t90\n".encode(encoding),
                         "其实是纯文本文件，不是工作簿。" + SAVE_ANEW)

    def test_xml_table(self):
        table = ('<?xml version="1.0"?><?mso-application progid="Excel.Sheet"?>'
                 '<Workbook xmlns="urn:schemas-microsoft-com:office:spreadsheet"></Workbook>')
        self.refused("成绩.xml", table.encode(), "其实是 XML 表格文件，不是工作簿。" + SAVE_ANEW)

    def test_empty_file(self):
        self.refused("成绩.xlsx", b"", "是空文件，里面没有任何内容。")

    def test_other_binary_file(self):
        self.refused("成绩.xlsx", bytes(range(256)) * 20, "不是可以识别的工作簿文件。")

    def test_archive_without_a_workbook(self):
        path = self.folder / "成绩.xlsx"
        with zipfile.ZipFile(path, "w") as archive:
            archive.writestr("readme.txt", "no workbook")
        self.refused("成绩.xlsx", None, "里面没有工作簿，可能是其他类型的文档。")

    def test_xlsx_with_broken_xml(self):
        whole = self.folder / "whole.xlsx"
        whole.write_bytes(self.xlsx())
        path = self.folder / "成绩.xlsx"
        with zipfile.ZipFile(whole) as old, zipfile.ZipFile(path, "w") as new:
            for entry in old.namelist():
                part = old.read(entry)
                if re.search(r"worksheets/sheet1\.xml$", entry):
                    part = part[:len(part) // 2] + b"<<&"
                new.writestr(entry, part)
        self.refused("成绩.xlsx", None, "已损坏：工作簿内部的 XML 内容有错误。")

    def test_no_file_at_all(self):
        (self.folder / "成绩").mkdir()
        before = yunshan.file_hash(self.library)
        for name in ("成绩", "没有.xlsx"):
            for command in self.imports(self.folder / name):
                result = self.run_program(*command, expect=ERROR)
                self.assertEqual((result.out, result.err),
                                 ("", f"找不到工作簿：{self.folder / name}\n"))
        self.assertUntouched(before)

    def test_empty_sheet(self):
        self.wrong_headings(self.book("空表.xlsx"))

    def test_heading_with_blank(self):
        self.wrong_headings(self.book("空格.xlsx", ("班级 ", "学号", "姓名", "语文"), (1, 1, "甲", 90)))


class GoodWorkbooks(yunshan.ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_library("语文", "总分")
        self.add_students((1, 1, "甲", "文"), (1, 2, "乙", "文"))

    def stored(self):
        return self.rows("select 班级, 学号, 姓名, 语文 from 成绩表 order by rowid")

    def test_the_kind_is_told_by_the_content(self):
        expected = [(1, 1, "甲", 90.5), (1, 2, "乙", -1)]
        new = self.book("新.xlsx", *ROWS).rename(self.folder / "新.xls")
        old = self.folder / "旧.xlsx"
        old.write_bytes(xls.xls_bytes("一班", ROWS))
        for round_, path in enumerate((new, old), 1):
            result = self.import_exam(path, "期中", "--accept-duplicate")
            self.assertTrue(result.err.endswith(FINISHED))
            self.assertEqual(self.stored(), expected * round_)

    def test_filtered_and_hidden_rows_are_read(self):
        path = self.book("筛选.xlsx", *ROWS)
        book = yunshan.openpyxl.load_workbook(path)
        book.active.auto_filter.ref = "A1:D3"
        book.active.auto_filter.add_filter_column(1, ["1"])
        book.active.row_dimensions[3].hidden = True
        book.save(path)
        self.import_exam(path, "期中")
        self.assertEqual(len(self.stored()), 2)

    def test_an_error_cell_is_a_bad_cell(self):
        result = self.import_exam(self.book("错.xlsx", (*HEADINGS, "语文"), (1, 1, "甲", "#N/A")),
                                  "期中")
        self.assertIn("1\t1\t甲\t语文\t0\t分值不能为空\n", result.err)
        self.assertEqual(self.stored(), [(1, 1, "甲", 0)])


if __name__ == "__main__":
    yunshan.main()
