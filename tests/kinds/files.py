"""Kinds of workbooks that differ by the program that made them; make_books.py makes those in books/."""

from pathlib import Path

from case import FIRST, MARKS, SECOND, Case, kind, right
from sheets import HEADINGS

BOOKS = Path(__file__).resolve().parent / "books"


@kind("a web page named .xls")
def web_page(folder):
    path = folder / "期中.xls"
    cells = "".join(f"<td>{text}" for text in (*HEADINGS, "语文"))
    path.write_text(f"<html><meta charset=utf-8><table><tr>{cells}</table></html>", encoding="utf-8")
    return Case(path, refused="其实是网页文件")


@kind("text with tabs or commas named .xls")
def plain_text(folder):
    path = folder / "期中.xls"
    path.write_bytes("班级,学号,姓名,语文\r\n1,1,王芳,90\r\n".encode("gb18030"))
    return Case(path, refused="其实是纯文本文件")


@kind("an OpenDocument spreadsheet")
def open_document(_):
    return Case(BOOKS / "opendocument.ods", refused="是 .ods 表格，无法读取")


@kind("headings in two rows, .xls of LibreOffice")
def libreoffice_two_rows(_):
    return right(BOOKS / "libreoffice-two-rows.xls")


@kind("a title, repeated headings and foot rows, .xls of LibreOffice")
def libreoffice_everything(_):
    case = right(BOOKS / "libreoffice-everything.xls")
    case.rows[2][3] = "缺考"
    return case


@kind("formulas with their results, .xlsx of LibreOffice")
def libreoffice_formulas(_):
    return right(BOOKS / "libreoffice-formulas.xlsx")


@kind("one sheet a class, .xlsx of LibreOffice")
def libreoffice_sheets(_):
    return right(BOOKS / "libreoffice-sheets.xlsx")


@kind("texts written inline, .xlsx of XlsxWriter")
def inline_texts(_):
    return right(BOOKS / "xlsxwriter-inline.xlsx")


@kind("a class's list with 高三(2)班 in its name, .xls of Perl's WriteExcel")
def writeexcel(_):
    return right(BOOKS / "高三(2)班.xls", *SECOND)


@kind("a sheet that a grading program makes: 考号 as text, 学号, raw marks, ranks of three kinds")
def grading_program(_):
    return right(BOOKS / "xlsxwriter-grading.xlsx")
