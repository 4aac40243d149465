"""Kinds of workbooks that differ by their headings."""

from case import FIRST, MARKS, SECOND, Case, kind, right
from sheets import HEADINGS, Sheet, above, write

SUBJECTS = ("语文", "数学", "英语")
PLAIN = (*HEADINGS, *SUBJECTS)


@kind("the strict form already")
def already_strict(folder):
    return right(write(folder / "期中.xlsx", Sheet(rows=[PLAIN, *MARKS])))


@kind("title rows above the headings, merged across them")
def title_rows(folder):
    lines, merges = above(6, "云杉中学2025—2026学年度第一学期期中考试成绩表", "高一年级　　2025年11月")
    return right(write(folder / "期中.xlsx", Sheet(rows=[*lines, PLAIN, *MARKS], merges=merges)))


@kind("a title, a blank row and a note above the headings")
def title_and_note(folder):
    rows = [("期中考试成绩",), (), ("注：缺考的学生记为缺，由教务处统计",), PLAIN, *MARKS]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


def two_rows(group, parts=("分数", "校名次", "班名次")):
    """Headings in two rows: each subject over its parts."""
    top, below = list(HEADINGS), [None] * 3
    for subject in SUBJECTS:
        top += [subject] + [None] * (len(parts) - 1)
        below += parts
    rows = [top, below]
    for number, (class_, seat, name, *marks) in enumerate(group, 1):
        rows.append([class_, seat, name])
        for mark in marks:
            rows[-1] += [mark, number * 10, number][:len(parts)]
    return rows


TWO_ROW_MERGES = ("A1:A2", "B1:B2", "C1:C2", "D1:F1", "G1:I1", "J1:L1")


@kind("headings in two rows: 语文 merged over 分数, 校名次, 班名次")
def two_row_headings(folder):
    return right(write(folder / "期中.xlsx", Sheet(rows=two_rows(MARKS), merges=TWO_ROW_MERGES)))


@kind("headings in two rows without merged cells")
def two_row_headings_unmerged(folder):
    return right(write(folder / "期中.xlsx", Sheet(rows=two_rows(MARKS))))


@kind("a title over headings in two rows")
def title_over_two_rows(folder):
    rows = [("高一期中考试各科成绩及名次",), *two_rows(MARKS)]
    merges = ("A1:L1", "A2:A3", "B2:B3", "C2:C3", "D2:F2", "G2:I2", "J2:L2")
    return right(write(folder / "期中.xlsx", Sheet(rows=rows, merges=merges)))


@kind("headings in three rows: the exam, the subject, its parts")
def three_row_headings(folder):
    rows = [[*HEADINGS, "期中考试", *[None] * 8], *two_rows(MARKS)]
    rows[1][:3] = [None] * 3
    merges = ("A1:A3", "B1:B3", "C1:C3", "D1:L1", "D2:F2", "G2:I2", "J2:L2")
    return right(write(folder / "期中.xlsx", Sheet(rows=rows, merges=merges)))


@kind("原始分 and 赋分 below one subject, in two rows: the raw marks")
def raw_and_assigned(folder):
    rows = [(*HEADINGS, "语文", "化学", None), (None, None, None, "分数", "原始分", "赋分"),
            *((class_, seat, name, first, 60 + seat, 80 + seat)
              for class_, seat, name, first, _, _ in MARKS)]
    book = write(folder / "期中.xlsx", Sheet(rows=rows, merges=("E1:F1",)))
    return right(book, *((*row[:4], 60 + row[1]) for row in MARKS), columns=("语文", "化学"))


@kind("raw and assigned marks side by side, as 化学 and 化学(赋分)")
def raw_and_assigned_in_one_row(folder):
    rows = [(*HEADINGS, "语文", "化学", "化学(赋分)"),
            *((*row[:4], 60 + row[1], 80 + row[1]) for row in MARKS)]
    book = write(folder / "期中.xlsx", Sheet(rows=rows))
    taken = [(*row[:4], 60 + row[1]) for row in MARKS]
    return right(book, *taken, columns=("语文", "化学"), asks=("化学",), answers=("--map", "化学=E"))


@kind("a subject in a column a stream: 数学（理）, 数学（文）")
def subject_by_stream(folder):
    rows = [(*HEADINGS, "语文", "数学（理）", "数学（文）"), *((*row[:5], None) for row in FIRST),
            *((*row[:4], None, row[4]) for row in SECOND)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("数学（理）", "数学（文）"))


@kind("日语 beside 英语")
def another_language(folder):
    rows = [(*PLAIN, "日语"), *((*row, None) for row in FIRST), *((*row[:5], None, 88) for row in SECOND)]
    made = (*FIRST, *((*row[:5], "缺考") for row in SECOND))
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), *made, says=("有 3 名学生在“日语”一列有内容",))


@kind("headings with blanks, line breaks and full marks: 语 文, 数学(150分)")
def decorated_headings(folder):
    headings = ("班　级", "学\n号", " 姓 名 ", "语 文", "数学(150分)", "英语（满分150）")
    return right(write(folder / "期中.xlsx", Sheet(rows=[headings, *MARKS])))


@kind("full marks behind a stroke or a colon: 数学/150, 英语：150")
def full_marks_behind(folder):
    headings = (*HEADINGS, "语文", "数学/150", "英语：150")
    return right(write(folder / "期中.xlsx", Sheet(rows=[headings, *MARKS])))


@kind("a subject's name with something more: 语文（含附加）")
def subject_and_more(folder):
    headings = (*HEADINGS, "语文（含附加）", "数学", "英语")
    return right(write(folder / "期中.xlsx", Sheet(rows=[headings, *MARKS])), asks=("语文（含附加）",),
                 answers=("--map", "语文=D"))


@kind("a subject without any score")
def empty_subject(folder):
    rows = [(*PLAIN, "物理"), *((*row, None) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), says=("“物理”没有内容",))


@kind("subjects by their short names: 语, 数, 英")
def short_names(folder):
    return right(write(folder / "期中.xlsx", Sheet(rows=[(*HEADINGS, "语", "数", "英"), *MARKS])))


@kind("subjects as 语文成绩, 数学得分, 外语")
def other_names(folder):
    headings = ("班别", "学生学号", "学生姓名", "语文成绩", "数学得分", "外语")
    return right(write(folder / "期中.xlsx", Sheet(rows=[headings, *MARKS])))


@kind("a column of serial numbers in front, and columns in another order")
def serial_numbers(folder):
    rows = [("序号", "姓名", "学号", "班级", "数学", "英语", "语文")]
    rows += [(i, row[2], row[1], row[0], row[4], row[5], row[3]) for i, row in enumerate(MARKS, 1)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("the table begins in column C, below empty rows")
def away_from_the_corner(folder):
    rows = [(), (), (None, None, *PLAIN), *((None, None, *row) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("totals, averages and ranks beside the subjects")
def totals_and_ranks(folder):
    headings = (*HEADINGS, "语文", "语文名次", "数学", "数学排名", "英语", "总分", "平均分", "班次", "级名次")
    rows = [(*row[:3], row[3], i, row[4], i, row[5], sum(row[3:]), round(sum(row[3:]) / 3, 1), i, i)
            for i, row in enumerate(MARKS, 1)]
    return right(write(folder / "期中.xlsx", Sheet(rows=[headings, *rows])))


@kind("a row of full marks below the headings")
def full_mark_row(folder):
    rows = [PLAIN, ("满分", None, None, 150, 150, 150), *MARKS]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), says=("合计、平均一类的行",))


@kind("a row of teachers below the headings")
def teacher_row(folder):
    rows = [PLAIN, ("任课教师", None, None, "安老师", "柏老师", "程老师"), *MARKS]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)))


@kind("students across, subjects down")
def transposed(folder):
    rows = [("姓名", *(row[2] for row in MARKS)), ("班级", *(row[0] for row in MARKS)),
            ("学号", *(row[1] for row in MARKS))]
    rows += [(subject, *(row[3 + i] for row in MARKS)) for i, subject in enumerate(SUBJECTS)]
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("没有找到表头",))


@kind("no headings at all")
def no_headings(folder):
    return Case(write(folder / "期中.xlsx", Sheet(rows=list(MARKS))), asks=("没有找到表头",))


@kind("two columns of the same heading")
def heading_twice(folder):
    rows = [(*PLAIN, "语文"), *((*row, row[3] - 1) for row in MARKS)]
    return right(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("语文",), answers=("--map", "语文=D"))


@kind("two tables side by side, a class each")
def two_tables_side_by_side(folder):
    rows = [(*PLAIN, None, *PLAIN)]
    for i, row in enumerate(FIRST):
        other = SECOND[i] if i < len(SECOND) else ()
        rows.append((*row, None, *other))
    return Case(write(folder / "期中.xlsx", Sheet(rows=rows)), asks=("班级",))
