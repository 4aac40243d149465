#!/usr/bin/python3
"""Makes the demonstration workbooks of this folder: an invented school with invented names.

make_demo.py           writes 学生名单.xlsx and the three exams anew, always the same
make_demo.py --check   compares the workbooks that stand here with what would be written
"""

import datetime
import io
import random
import re
import sys
import zipfile
from pathlib import Path

import openpyxl
from openpyxl.styles import Alignment, Font

HERE = Path(__file__).resolve().parent
CLASSES = {1: "文", 2: "文", 3: "理", 4: "理", 5: "理", 6: "理"}
CLASS_SIZE = 40
SUBJECTS = {"文": ("语文", "数学", "英语", "政治", "历史", "地理"),
            "理": ("语文", "数学", "英语", "物理", "化学", "生物")}
FULL_MARKS = {"语文": 150, "数学": 150, "英语": 150}
# How hard each exam was: the mean as a share of the full marks.
EXAMS = {"高一期中": 0.66, "高一期末": 0.62, "高二月考": 0.64}
SURNAMES = "王李张刘陈杨赵黄周吴徐孙胡朱高林何郭马罗梁宋郑谢韩唐冯于董萧程曹袁邓许傅沈曾彭吕"
GIVEN_FIRST = "子雨思文嘉梓俊晓明佳浩欣海志云天一若书星"
GIVEN_SECOND = "涵轩怡豪琪宇婷杰洁宁萱阳琳峰雪航瑶晨悦安"
GIRLS = "怡琪婷洁萱琳雪瑶悦"


def full_mark(subject):
    return FULL_MARKS.get(subject, 100)


def make_students(dice):
    """Rows of the student list, ordered by class and number; no name twice."""
    names = set()
    students = []
    for class_number, stream in CLASSES.items():
        for number in range(1, CLASS_SIZE + 1):
            while True:
                given = dice.choice(GIVEN_SECOND)
                if dice.random() < 0.8:
                    given = dice.choice(GIVEN_FIRST) + given
                name = dice.choice(SURNAMES) + given
                if name not in names:
                    break
            names.add(name)
            born = datetime.date(2008, 9, 1) + datetime.timedelta(days=dice.randrange(365))
            sex = "女" if name[-1] in GIRLS else "男"
            guest = dice.random() < 0.06
            students.append((class_number, number, name, stream, sex, born,
                             2 if guest else 1, "借读" if guest else "统招"))
    return students


def score(dice, subject, ability, mean):
    """A score in halves: the mean of the exam moved by the student's ability and a day's luck."""
    share = mean + 0.13 * ability + dice.gauss(0, 0.07)
    points = round(2 * full_mark(subject) * min(0.98, max(0.08, share))) / 2
    return int(points) if points == int(points) else points


def make_abilities(dice, students):
    """Per student (class, number): an ability per subject around a common one."""
    abilities = {}
    for student in students:
        common = dice.gauss(0, 0.8)
        abilities[student[:2]] = {subject: common + dice.gauss(0, 0.6)
                                  for subject in SUBJECTS[student[3]]}
    return abilities


def make_exam(dice, students, abilities, stream, mean):
    """The rows of one sheet: heading, then a row per student; a few were absent or cheated."""
    subjects = SUBJECTS[stream]
    rows = [("班级", "学号", "姓名") + subjects]
    seated = [s for s in students if s[3] == stream]
    ill = dice.choice(seated)
    absent = {(s[:2], dice.choice(subjects)) for s in dice.sample(seated, 3)}
    cheated = {(dice.choice(seated)[:2], dice.choice(subjects))}
    for student in seated:
        cells = []
        for subject in subjects:
            points = score(dice, subject, abilities[student[:2]][subject], mean)
            where = (student[:2], subject)
            cells.append("缺考" if student is ill or where in absent
                         else "作弊" if where in cheated else points)
        rows.append(student[:3] + tuple(cells))
    return rows


def make_books():
    """All workbooks: file name to sheet name to rows."""
    dice = random.Random(20240901)
    students = make_students(dice)
    abilities = make_abilities(dice, students)
    heading = ("班级", "学号", "姓名", "科类", "性别", "出生时间", "类别代码", "类别")
    books = {"学生名单.xlsx": {"学生信息": [heading] + students}}
    for exam, mean in EXAMS.items():
        books[f"{exam}.xlsx"] = {stream + "科": make_exam(dice, students, abilities, stream, mean)
                                 for stream in SUBJECTS}
    return books


def fill(sheet, rows):
    for row in rows:
        sheet.append(row)
    for cell in sheet[1]:
        cell.font = Font(bold=True)
        cell.alignment = Alignment(horizontal="center")
    for cells in sheet.iter_rows(min_row=2):
        for cell in cells:
            if cell.is_date:
                cell.number_format = "yyyy-mm-dd"
    for number, title in enumerate(rows[0]):
        sheet.column_dimensions["ABCDEFGHI"[number]].width = 12 if title == "出生时间" else 8
    sheet.freeze_panes = "D2"


def without_times(content):
    """The bytes of a workbook, packed anew with one fixed time, so that equal means equal."""
    packed = io.BytesIO()
    with zipfile.ZipFile(io.BytesIO(content)) as old, zipfile.ZipFile(packed, "w") as new:
        for entry in old.infolist():
            part = old.read(entry)
            if entry.filename == "docProps/core.xml":
                part = re.sub(rb"\d{4}-\d\d-\d\dT[\d:]+Z", b"2024-09-01T00:00:00Z", part)
            info = zipfile.ZipInfo(entry.filename, (2024, 9, 1, 0, 0, 0))
            info.compress_type = zipfile.ZIP_DEFLATED
            new.writestr(info, part)
    return packed.getvalue()


def write(name, sheets):
    book = openpyxl.Workbook()
    book.remove(book.active)
    for title, rows in sheets.items():
        fill(book.create_sheet(title), rows)
    content = io.BytesIO()
    book.save(content)
    (HERE / name).write_bytes(without_times(content.getvalue()))


def stands(name, sheets):
    """Whether the workbook in this folder holds exactly these rows."""
    def plain(value):
        return value.date() if isinstance(value, datetime.datetime) else value
    book = openpyxl.load_workbook(HERE / name)
    found = {sheet.title: [tuple(plain(value) for value in row)
                           for row in sheet.iter_rows(values_only=True)] for sheet in book}
    return found == sheets


def main():
    books = make_books()
    if sys.argv[1:] == ["--check"]:
        wrong = [name for name, sheets in books.items() if not stands(name, sheets)]
        for name in wrong:
            print(f"demo/{name} is not what make_demo.py makes")
        return 1 if wrong else 0
    for name, sheets in books.items():
        write(name, sheets)
    return 0


if __name__ == "__main__":
    sys.exit(main())
