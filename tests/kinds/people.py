"""Kinds of workbooks that name their students in other ways, and lists of students."""

import datetime

from case import FIRST, MARKS, NAMESAKES, REGISTER, SECOND, Case, kind, right
from headings import PLAIN
from sheets import HEADINGS, Sheet, write

SUBJECTS = ("语文", "数学", "英语")


def ticket(row):
    """A number as marking systems give it."""
    return 2401000 + row[0] * 100 + row[1]


@kind("考号 instead of 学号, with the library")
def exam_number(folder):
    rows = [("考号", "班级", "姓名", *SUBJECTS), *((ticket(row), row[0], *row[2:]) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), with_library=True)


@kind("考号 instead of 学号, without a library")
def exam_number_alone(folder):
    rows = [("考号", "班级", "姓名", *SUBJECTS), *((ticket(row), row[0], *row[2:]) for row in MARKS)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("学号",))


@kind("both 考号 and 学号")
def both_numbers(folder):
    rows = [("准考证号", *PLAIN), *((str(ticket(row)), *row) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("class and name alone, with the library")
def names_alone(folder):
    rows = [("班级", "姓名", *SUBJECTS), *((row[0], *row[2:]) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), with_library=True)


@kind("names alone, one of them twice in the library")
def names_without_class(folder):
    rows = [("姓名", *SUBJECTS), *(row[2:] for row in MARKS)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("没有班级和学号",),
                says=("1班3号张伟、2班3号张伟",), with_library=True)


@kind("学籍号 alone, with the library")
def register_numbers(folder):
    rows = [("学籍号", "姓名", *SUBJECTS),
            *((REGISTER[row[:2]], *row[2:]) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), with_library=True)


@kind("two students of one name in one class, without numbers")
def namesakes(folder):
    rows = [("班级", "姓名", *SUBJECTS), *((class_, name, 90, 91, 92) for class_, _, name in NAMESAKES)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("没有找到班级和学号",),
                says=("3班1号周杰、3班2号周杰",), with_library=True)


@kind("students whom the library does not know")
def unknown_students(folder):
    rows = [PLAIN, *MARKS, (1, 9, "郑新", 90, 90, 90)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), *MARKS, (1, 9, "郑新", 90, 90, 90),
                 says=("没有 1 班 9 号",), with_library=True)


@kind("numbers of 16 and more digits as numbers")
def long_numbers(folder):
    rows = [(*PLAIN, "学籍号"), *((*row, 3201042010000000000 + i * 100) for i, row in enumerate(MARKS))]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), says=("16 ",))


@kind("another grade's classes 1 and 2, which the library has, too")
def another_grade(folder):
    rows = [("高二年级期中考试",), PLAIN, (1, 1, "高甲", 90, 80, 70), (2, 1, "高乙", 91, 81, 71)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("有 2 人（共 2 人）",), with_library=True)


@kind("学籍号 of 16 and more digits as numbers, and nothing else")
def long_numbers_alone(folder):
    rows = [("学籍号", *SUBJECTS), *((20250000000000100, *row[3:]) for row in FIRST)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("没有找到班级和学号",), says=("16 位",),
                with_library=True)


@kind("a list of students: 性别, 出生日期, 民族, 身份证号, 联系电话")
def student_list(folder):
    heads = (*HEADINGS, "性别", "出生日期", "民族", "身份证号", "联系电话")
    rows = [(*row[:3], "女", datetime.datetime(2009, 7, row[1]), "汉", f"32010420090{700 + row[1]}001{row[0]}",
             "13800000000") for row in MARKS]
    case = Case(write(folder / "名单.xlsx", Sheet(rows=[("学生名单",), heads, *rows])), goal="students")
    case.rows = [[*HEADINGS, "性别", "出生时间", "身份证", "民族"],
                 *([*row[:5], row[6], row[5]] for row in rows)]
    return case


@kind("a list of students with dates as texts: 2009.7.1, 20090702, 2009年7月3日")
def dates_as_texts(folder):
    dates = ("2009.7.1", "20090702", "2009年7月3日", "2009/7/4", "2009-07-05", "2009-7-6", "2009.07.07")
    rows = [(*row[:3], date) for row, date in zip(MARKS, dates)]
    case = Case(write(folder / "名单.xlsx", Sheet(rows=[(*HEADINGS, "出生年月日"), *rows])), goal="students")
    case.rows = [[*HEADINGS, "出生时间"], *map(list, rows)]
    return case


@kind("a list of students, one sheet a class, in two columns of names")
def list_of_classes(folder):
    sheets = [Sheet(f"高一({group[0][0]})班", [("学号", "姓名", "性别"), *((row[1], row[2], "男") for row in group)])
              for group in (FIRST, SECOND)]
    case = Case(write(folder / "名单.xlsx", *sheets), goal="students")
    case.rows = [[*HEADINGS, "性别"], *([*row[:3], "男"] for row in MARKS)]
    return case


@kind("a list of students with 学籍号 as numbers, whose zeros are shown alone")
def shown_zeros(folder):
    rows = [(*row[:3], 320000 + row[1]) for row in MARKS]
    case = Case(write(folder / "名单.xlsx", Sheet(rows=[(*HEADINGS, "学籍号"), *rows])), goal="students",
                says=("有 7 个号码是数字",))
    case.rows = [[*HEADINGS, "学籍号"], *([*row[:3], str(row[3])] for row in rows)]
    return case


@kind("a list of students with 选科: 物化生, 历史")
def chosen_subjects(folder):
    rows = [(*row[:3], "物化生" if row[0] == 1 else "历史") for row in MARKS]
    case = Case(write(folder / "名单.xlsx", Sheet(rows=[(*HEADINGS, "选科"), *rows])), goal="students",
                says=("“选科”一列",))
    case.rows = [[*HEADINGS], *(list(row[:3]) for row in MARKS)]
    return case


@kind("a list of students with 科类 as 物理类, 历史类")
def new_streams(folder):
    rows = [(*row[:3], "历史类" if row[0] == 1 else "物理类") for row in MARKS]
    return Case(write(folder / "名单.xlsx", Sheet(rows=[(*HEADINGS, "科类"), *rows])), goal="students",
                asks=("“历史类”",))


@kind("teaching classes instead of classes")
def teaching_classes(folder):
    rows = [("教学班", "学号", "姓名", *SUBJECTS), *MARKS]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("没有班级",))


@kind("a list of students with 科类 as 文科, 理科")
def streams(folder):
    rows = [(*row[:3], "文科" if row[0] == 1 else "理科") for row in MARKS]
    case = Case(write(folder / "名单.xlsx", Sheet(rows=[(*HEADINGS, "文理"), *rows])), goal="students")
    case.rows = [[*HEADINGS, "科类"], *([*row[:3], "文" if row[0] == 1 else "理"] for row in MARKS)]
    return case
