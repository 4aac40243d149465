"""Makes the workbooks in books/ by other programs. They are kept as they were made.

Needs LibreOffice, python3-xlsxwriter and libspreadsheet-writeexcel-perl. Run with /usr/bin/python3.
"""

import subprocess
import tempfile
from pathlib import Path

import xlsxwriter

import bodies
import headings
from case import MARKS, SECOND
from files import BOOKS
from sheets import HEADINGS

PERL = r"""
use strict; use warnings; use utf8; use Encode; use Spreadsheet::WriteExcel;
my $book = Spreadsheet::WriteExcel->new(Encode::encode('UTF-8', Encode::decode('UTF-8', $ARGV[0])));
my $sheet = $book->add_worksheet("Sheet1");
my $title = $book->add_format(align => 'center', bold => 1);
$sheet->merge_range('A1:E1', "期中考试成绩", $title);
binmode STDIN, ':encoding(UTF-8)';
my $row = 1;
while (<STDIN>) { chomp; $sheet->write($row++, 0, [split /\t/]); }
$book->close;
"""


def by_libreoffice(case, name, kind):
    """Saves a case's workbook by LibreOffice, formulas with their results."""
    made = case.book.parent / "made"
    subprocess.run(["soffice", "--headless", "--convert-to", kind, "--outdir", made,
                    case.book], check=True, stdout=subprocess.DEVNULL)
    (BOOKS / f"{name}.{kind}").write_bytes((made / f"{case.book.stem}.{kind}").read_bytes())


def inline():
    book = xlsxwriter.Workbook(str(BOOKS / "xlsxwriter-inline.xlsx"), {"constant_memory": True})
    sheet = book.add_worksheet("成绩")
    rows = [("高一期中考试成绩",), ("班  级", "学  号", "姓  名", "语文", "数学", "英语"), *MARKS]
    for number, row in enumerate(rows):
        sheet.write_row(number, 0, row)
    book.close()


def grading():
    book = xlsxwriter.Workbook(str(BOOKS / "xlsxwriter-grading.xlsx"))
    sheet = book.add_worksheet("学生成绩")
    centre = book.add_format({"align": "center", "valign": "vcenter", "border": 1})
    sheet.merge_range("A1:P1", "2025-2026学年高一期中 学生成绩单", centre)
    for column, text in enumerate(("自定义考号", "班级", "学号", "姓名")):
        sheet.merge_range(1, column, 2, column, text, centre)
    for i, subject in enumerate(("语文", "数学", "英语")):
        sheet.merge_range(1, 4 + 4 * i, 1, 7 + 4 * i, subject, centre)
        sheet.write_row(2, 4 + 4 * i, ("得分", "校次", "班次", "联考名次"), centre)
    for number, row in enumerate(MARKS, 3):
        sheet.write_row(number, 0, (f"00{row[0]}{row[1]:02d}", f"{row[0]}班", row[1], row[2]))
        for i in range(3):
            sheet.write_row(number, 4 + 4 * i, (row[3 + i], number, number, number * 7))
    book.close()


def writeexcel():
    rows = [HEADINGS[1:] + ("语文", "数学", "英语"), *(row[1:] for row in SECOND)]
    text = "".join("\t".join(map(str, row)) + "\n" for row in rows)
    subprocess.run(["perl", "-e", PERL, str(BOOKS / "高三(2)班.xls")], input=text.encode(), check=True)


def main():
    BOOKS.mkdir(exist_ok=True)
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        by_libreoffice(headings.two_row_headings(folder), "libreoffice-two-rows", "xls")
        by_libreoffice(bodies.everything(folder), "libreoffice-everything", "xls")
        by_libreoffice(bodies.formulas_without_results(folder), "libreoffice-formulas", "xlsx")
        by_libreoffice(bodies.one_sheet_a_class(folder), "libreoffice-sheets", "xlsx")
        by_libreoffice(headings.already_strict(folder), "opendocument", "ods")
    inline()
    grading()
    writeexcel()


if __name__ == "__main__":
    main()
