"""Kinds of workbooks that differ by the rows below their headings."""

import openpyxl

from case import FIRST, MARKS, SECOND, Case, kind, right
from headings import PLAIN
from sheets import HEADINGS, Sheet, above, write


def written(row, class_text):
    """A row with its class written out."""
    return (class_text.format(row[0]), *row[1:])


@kind("classes written out: 高三(1)班")
def class_written_out(folder):
    rows = [PLAIN, *(written(row, "高三({})班") for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("classes in full width: 高三（１）班, 1班, 高三2班 in one column")
def class_in_several_ways(folder):
    ways = ("高三（１）班", "1班", "高三(1)班", "高三1班", "高三（2）班", "2 班", "2")
    rows = [PLAIN, *((way, *row[1:]) for way, row in zip(ways, MARKS))]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("classes in Chinese numerals: 一班, 高三(二)班")
def class_in_chinese(folder):
    rows = [PLAIN, *(("一班" if row[0] == 1 else "高三(二)班", *row[1:]) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("the class only in the first row of each class, merged down")
def class_merged_down(folder):
    rows = [PLAIN, *((row[0] if row[1] == 1 else None, *row[1:]) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows, merges=("A2:A5", "A6:A8"))))


@kind("the class only in the first row of each class, the cells below empty")
def class_above_empty_cells(folder):
    rows = [PLAIN, *((row[0] if row[1] == 1 else None, *row[1:]) for row in MARKS)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("的 7 名学生里有 5 名没有班级",))


@kind("one student's class left empty")
def one_empty_class(folder):
    rows = [PLAIN, *MARKS[:6], (None, *MARKS[6][1:])]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), *MARKS[:6], left_out=("没有班级",))


@kind("the classes left empty in the rest of the column")
def rest_without_class(folder):
    rows = [PLAIN, *MARKS[:3], *((None, *row[1:]) for row in MARKS[3:])]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), *MARKS[:3], left_out=("没有班级",) * 4)


@kind("one sheet a class, without a column for it")
def one_sheet_a_class(folder):
    heads = ("学号", "姓名", "语文", "数学", "英语")
    sheets = [Sheet(title, [heads, *(row[1:] for row in group)])
              for title, group in (("高一(1)班", FIRST), ("高一(2)班", SECOND))]
    return right(write(folder / "期中.xlsx", *sheets))


@kind("one sheet a class, each with a title and its own order of columns")
def unlike_sheets(folder):
    first = [("高一(1)班成绩",), ("学号", "姓名", "语文", "数学", "英语"), *(row[1:] for row in FIRST)]
    second = [("姓名", "学号", "英语", "数学", "语文"),
              *((row[2], row[1], row[5], row[4], row[3]) for row in SECOND)]
    return right(write(folder / "期中.xlsx", Sheet("1班", first), Sheet("2班", second)))


@kind("one sheet a class, one of them without 英语")
def subject_missing_on_a_sheet(folder):
    first = [("学号", "姓名", *PLAIN[3:]), *(row[1:] for row in FIRST)]
    second = [("学号", "姓名", "语文", "数学"), *(row[1:5] for row in SECOND)]
    return right(write(folder / "期中.xlsx", Sheet("1班", first), Sheet("2班", second)), *FIRST,
                 *((*row[:5], "缺考") for row in SECOND), says=("2班（3 人）没有“英语”一列",))


@kind("one file a class: the class stands in the file's name alone")
def one_file_a_class(folder):
    heads = ("学号", "姓名", "语文", "数学", "英语")
    book = write(folder / "高一(2)班期中成绩.xlsx", Sheet(rows=[heads, *(row[1:] for row in SECOND)]))
    return right(book, *SECOND)


@kind("the class stands nowhere")
def class_nowhere(folder):
    heads = ("学号", "姓名", "语文", "数学", "英语")
    book = write(folder / "期中.xlsx", Sheet(rows=[heads, *(row[1:] for row in FIRST)]))
    return right(book, *FIRST, asks=("班级",), answers=("--map", "班级=文件名", "--class", "期中=1"))


@kind("a sheet a grade, both with classes 1 and 2")
def sheet_a_grade(folder):
    rows = [PLAIN, *MARKS]
    return Case(write(folder / "期中.xlsx", Sheet("高一", rows), Sheet("高二", rows)), asks=("高一(1)班", "高二(1)班"))


@kind("classes of two streams: 文1班 and 理1班")
def classes_of_streams(folder):
    rows = [PLAIN, *(("理1班" if row[0] == 1 else "文1班", *row[1:]) for row in MARKS)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("理1班", "文1班"))


@kind("a date as the name of the sheet, and the class nowhere")
def date_as_name(folder):
    rows = [("学号", "姓名", *PLAIN[3:]), *(row[1:] for row in FIRST)]
    return Case(write(folder / "期中.xlsx", Sheet("9.15", rows)), asks=("没有班级",))


@kind("a title of several classes: 1—3班")
def several_classes(folder):
    rows = [("1—3班期中成绩",), ("学号", "姓名", *PLAIN[3:]), *(row[1:] for row in FIRST)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("没有班级",))


@kind("a class's title row between the students")
def class_rows(folder):
    rows = [PLAIN, ("高一(1)班",), *FIRST, ("高一(2)班",), *SECOND]
    merges = ("A2:F2", "A7:F7")
    return right(write(folder / "期中.xlsx", Sheet(rows=rows, merges=merges)))


@kind("合计, 平均分, 最高分, 及格率 at the foot")
def foot_rows(folder):
    foot = [("合计", None, None, 729.5, 733.5, 703.5), ("平均分", None, None, 104.2, 104.8, 100.5),
            (None, None, "最高分", 132, 140, 128.5), (None, None, "及格率", "85%", "71%", "86%")]
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *MARKS, *foot])))


@kind("平均分 after every class")
def foot_of_every_class(folder):
    rows = [PLAIN, *FIRST, ("1班平均分", None, None, 106.1, 104.4, 100.3), *SECOND,
            ("2班平均分", None, None, 101.7, 105.3, 100.8)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("a signature and a note at the foot")
def signature(folder):
    rows = [PLAIN, *MARKS, (), ("制表人：安老师", None, None, "审核：", None, "2025-11-20"),
            ("说明：本表只供校内使用",)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("absent as 缺, 缺考, —, /, 免考, 未考 or an empty cell")
def marks_of_absence(folder):
    marks = ("缺", "缺考", "—", "/", "免考", "未考", None)
    rows = [(*row[:4], mark, row[5]) for row, mark in zip(MARKS, marks)]
    absent = [(*row[:4], "缺考", row[5]) for row in MARKS]
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])), *absent)


@kind("cheated as 作弊, 舞弊 or 违纪")
def cheated(folder):
    rows = [list(row) for row in MARKS]
    for row, mark in zip(rows, ("作弊", "舞弊", "违纪")):
        row[4] = mark
    case = right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])))
    for row in case.rows[1:4]:
        row[4] = "作弊"
    return case


@kind("marks with words: 98分, ▲110, 120 (补)")
def marks_with_words(folder):
    rows = [list(row) for row in MARKS]
    rows[0][3], rows[1][3], rows[2][3] = "98分", "▲110", "120 (补)"
    book = write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows]))
    case = right(book, says=("120 (补)",), asks=("▲110",), answers=("--mark", "▲110=不变"))
    case.rows[1][3], case.rows[2][3], case.rows[3][3] = 98, "▲110", "120 (补)"
    return case


@kind("marks with footnotes: 8①, 95², ①")
def footnotes(folder):
    rows = [list(row) for row in MARKS]
    rows[0][3], rows[1][4], rows[2][5] = "8①", "95²", "①"
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])), *rows, asks=("①",),
                 answers=("--mark", "①=不变"), says=("8①", "95²"))


@kind("blanks inside and around names, full-width ones too")
def blanks_in_names(folder):
    names = {"王芳": "王　芳", "李娜": "李 娜", "张伟": " 张\u00a0伟 ", "刘洋": "刘  洋\t"}
    rows = [(*row[:2], names.get(row[2], row[2]), *row[3:]) for row in MARKS]
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])))


@kind("full-width headings, digits and letters")
def full_width(folder):
    wide = {ord(narrow): ord(narrow) + 0xFEE0 for narrow in "0123456789."}
    rows = [tuple(str(cell).translate(wide) for cell in row) for row in MARKS]
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])))


@kind("numbers as texts, with leading zeros and apostrophes")
def numbers_as_texts(folder):
    rows = [(f"{row[0]:02d}", f"{row[1]:03d}", row[2], *map(str, row[3:])) for row in MARKS]
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])))


@kind("headings repeated in the middle, as printed pages have them")
def repeated_headings(folder):
    title = ("期中成绩",)
    rows = [title, PLAIN, *MARKS[:3], title, PLAIN, *MARKS[3:]]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows, merges=("A1:F1", "A6:F6"))))


@kind("two tables one above the other, each with its headings")
def two_tables_stacked(folder):
    rows = [("1班",), PLAIN, *FIRST, (), ("2班",), PLAIN, *SECOND]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("blank rows in the middle")
def blank_rows(folder):
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *MARKS[:3], (), (), *MARKS[3:]])))


@kind("rows that a filter hides")
def filtered(folder):
    sheet = Sheet(rows=[PLAIN, *MARKS], filtered="A1:F8", hidden_rows=(3, 4))
    return right(write(folder / "期中.xlsx", sheet))


@kind("hidden columns and rows")
def hidden(folder):
    rows = [(*HEADINGS, "语文", "旧数学", "数学", "英语"),
            *((*row[:4], 0, row[4], row[5]) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows, hidden_columns=("E",), hidden_rows=(5,))))


@kind("a hidden sheet and a cover sheet beside the marks")
def cover_sheet(folder):
    cover = Sheet("说明", [("期中考试成绩",), ("请勿外传",)])
    old = Sheet("旧", [PLAIN, *((*row[:3], 1, 1, 1) for row in MARKS)], state="hidden")
    return right(write(folder / "期中.xlsx", cover, Sheet("成绩", [PLAIN, *MARKS]), old))


@kind("a sheet of statistics beside the marks")
def statistics_sheet(folder):
    averages = Sheet("各班平均分", [("班级", "人数", "语文", "数学", "英语"), (1, 4, 106.1, 104.4, 100.3),
                                  (2, 3, 101.7, 105.3, 100.8)])
    return right(write(folder / "期中.xlsx", Sheet("成绩", [PLAIN, *MARKS]), averages))


@kind("a sheet of rooms and seats beside the marks: 语文考场, 语文座位")
def sheet_of_seats(folder):
    heads = (*PLAIN[:3], "语文考场", "语文座位", "数学考场", "数学座位")
    seats = Sheet("考场安排", [heads, *((*row[:3], 3, row[1], 4, row[1]) for row in MARKS)])
    return right(write(folder / "期中.xlsx", Sheet("成绩", [PLAIN, *MARKS]), seats), says=("没有科目的成绩",))


@kind("a sheet of homework beside the marks: 语文作业, 数学作业")
def sheet_of_homework(folder):
    homework = Sheet("平时", [(*PLAIN[:3], "语文作业", "数学作业"), *((*row[:3], 5, 4) for row in MARKS)])
    return right(write(folder / "期中.xlsx", Sheet("成绩", [PLAIN, *MARKS]), homework), says=("不像成绩",))


@kind("a sheet of all and sheets of the classes with the same students")
def sheet_of_all(folder):
    sheets = [Sheet("全年级", [PLAIN, *MARKS]), Sheet("1班", [PLAIN, *FIRST]),
              Sheet("2班", [PLAIN, *SECOND])]
    return right(write(folder / "期中.xlsx", *sheets))


@kind("scores as formulas whose results are not stored")
def scores_without_results(folder):
    rows = [(*row[:3], f"={row[3]}+0", *row[4:]) for row in MARKS]
    return Case(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])), asks=("“语文”里有 7 个公式没有结果",))


@kind("totals as formulas whose results are not stored")
def totals_without_results(folder):
    rows = [list(row) for row in MARKS]
    for number, row in enumerate(rows, 2):
        row.append(f"=SUM(D{number}:F{number})")
    return right(write(folder / "期中.xlsx", Sheet(rows=[(*PLAIN, "总分"), *rows])))


@kind("error cells: #N/A")
def error_cells(folder):
    rows = [list(row) for row in MARKS]
    rows[2][4] = "#N/A"
    case = right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])), asks=("#N/A",),
                 answers=("--mark", "#N/A=缺考"))
    case.rows[3][4] = "缺考"
    return case


@kind("the same student twice")
def student_twice(folder):
    rows = [*MARKS, (1, 2, "李娜", 99, 99, 99)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])), asks=("请确定用哪一行",))


@kind("the same row twice")
def row_twice(folder):
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *MARKS, MARKS[1]])),
                 says=("只取一次",))


@kind("two tables one above the other, of other subjects each")
def tables_of_other_subjects(folder):
    rows = [PLAIN, *FIRST, (*PLAIN[:3], "数学", "语文", "物理"), *SECOND]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("另一个表头",))


@kind("scores without a name and a number between the students")
def scores_of_nobody(folder):
    rows = [PLAIN, *FIRST, (1, None, None, 98, 97, 96), *SECOND]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), left_out=("没有姓名和号码",))


@kind("a count of students in the column of the numbers, above their sums")
def unnamed_sums(folder):
    rows = [PLAIN, *MARKS, (None, 45, None, 4500, 4300, 4100), (None, None, "优分率", 0.5, 0.4, 0.3)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), left_out=("像是合计的行",))


@kind("marks of this time and of last time: 本次数学, 上次数学")
def last_time(folder):
    rows = [("班级", "学号", "姓名", "语文", "本次数学", "上次数学", "英语"),
            *((*row[:5], 50, row[5]) for row in MARKS)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("数学",),
                answers=("--map", "数学=本次数学"), rows=right(None).rows)


@kind("a title, two-row headings, repeated headings, foot rows and 高三(1)班 at once")
def everything(folder):
    lines, merges = above(9, "云杉中学高三期中考试成绩", "考试时间：2025年11月")
    top = ("序号", "班级", "学号", "姓名", "语文", None, "数学", None, "英语")
    below = (None, None, None, None, "分数", "级名", "分数", "级名", "分数")
    body = [(i, f"高三（{row[0]}）班", row[1], row[2], row[3], i, row[4], i, row[5])
            for i, row in enumerate(MARKS, 1)]
    body[1] = (*body[1][:4], "缺", None, *body[1][6:])
    body[5] = (*body[5][:3], "陈 静", *body[5][4:])
    rows = [*lines, top, below, *body[:4], top, below, *body[4:], (None, "合计", None, None, 1, None, 2)]
    merges += ("A3:A4", "B3:B4", "C3:C4", "D3:D4", "E3:F3", "G3:H3")
    case = right(write(folder / "期中.xlsx", Sheet(rows=rows, merges=merges)))
    case.rows[2][3] = "缺考"
    return case


@kind("3,000 rows in one class column")
def many_rows(folder):
    rows = [(11 + i // 50, 1 + i % 50, f"学生{i}", 60 + i % 70, 60, 60) for i in range(3000)]
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *rows])), *rows)


@kind("an empty workbook")
def empty(folder):
    return Case(write(folder / "空.xlsx", Sheet()), asks=("空的数据表",))


@kind("values separated by commas in column A")
def commas_in_one_column(folder):
    rows = [(",".join(PLAIN),), *((",".join(map(str, row)),) for row in MARKS)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("没有找到表头",))


@kind("dates where scores are expected: 1-2 that became a date")
def dates_in_scores(folder):
    path = write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *MARKS]))
    book = openpyxl.load_workbook(path)
    cell = book.active["E3"]
    cell.value, cell.number_format = 45658, "m-d"
    book.save(path)
    return Case(path, says=("李娜",))
