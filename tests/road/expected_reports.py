"""What the reports are expected to hold, computed from the library's rows."""

import statistics
from fractions import Fraction

import yunshan
from independent_check import FORMULAS, SUBJECTS

STREAMS = ("文", "理")
EXAM_HEAD = "考试名称"


def plain(number):
    """A number as a cell shows it."""
    number = float(number)
    return str(int(number)) if number == int(number) else repr(number)


def cell(number):
    """The same at two decimals, half to even; nothing for no value."""
    return "" if number is None else plain(round(Fraction(number), 2))


class Expected:
    """A grid as it is expected, block by block."""

    def __init__(self, cols=0):
        self.rows, self.cols = [], cols
        self.merged_rows = []
        # Stream, first row, last row and columns of each block.
        self.blocks = []

    def add(self, title, first, width, headings, lines):
        """A block: `first` is the first data column, `width` its data columns; headings and lines
        are lists of {column: text}; title cells that a heading of row 0 overwrites come as its
        first entry."""
        self.cols = max(self.cols, first + width)
        over, *headings = headings
        self.merged_rows.append(len(self.rows))
        self.rows.append(dict.fromkeys(range(self.cols), title) | over)
        self.rows += headings + lines
        last = len(self.rows) - 1
        self.blocks.append((title[0], last - len(headings + lines), last, self.cols))

    def merge_heading(self):
        """Equal neighbours of the first heading row of the block that follows."""
        self.merged_rows.append(len(self.rows) + 1)

    def matrix(self):
        return [[row.get(col, "") for col in range(self.cols)] for row in self.rows]


class School:
    """What the library holds, read once."""

    def __init__(self, library, categories=None):
        self.library = library
        roster = yunshan.query(library, "select 科类, 班级, count(*) from 信息表 group by 1, 2"
                                        " order by 1, 2")
        self.classes = {stream: [(int(c), n) for s, c, n in roster if s == stream]
                        for stream in STREAMS}
        self.scores = [row for row in yunshan.records(library, "select * from 成绩表")
                       if categories is None or row["类别代码"] in categories]
        self.marks = {(row["考试名称"], row["科类"]): row
                      for row in yunshan.records(library, "select * from 考试名称表")}
        self.teachers = {(row["考试名称"], row["班级"]): row
                         for row in yunshan.records(library, "select * from 教师表")}
        self.settings = dict(yunshan.query(library, "select 名称, 设置 from 设置表"))

    def rows(self, exam, stream, number=None):
        return [row for row in self.scores if (row["考试名称"], row["科类"]) == (exam, stream)
                and number in (None, row["班级"])]

    def subjects(self, exams, stream):
        """Subjects with their full marks, summed over the exams."""
        sums = {s: sum(self.marks[exam, stream][s] or 0 for exam in exams) for s in SUBJECTS}
        return {subject: marks for subject, marks in sums.items() if marks > 0}

    def items(self, exams, stream):
        """Subjects and totals."""
        subjects = self.subjects(exams, stream)
        return subjects | {total: sum(subjects.get(term, 0) for term in terms)
                           for total, terms in FORMULAS.items()}

    def lines(self, setting, stream):
        text = self.settings[setting].replace(" ", "")
        if "||" in text:
            text = dict(part.split("=") for part in text.split("||"))[stream]
        return text.split(",")

    def rank_test(self, entry, item, exam, stream):
        """A test of rows against a rank band."""
        x, rank = float(entry), item + "年名"
        if x > 0:
            return lambda row: row[rank] is not None and 0 < row[rank] <= x
        ranks = [row[rank] for row in self.rows(exam, stream) if row[rank] is not None]
        least = max(ranks, default=0) + x + 1
        return lambda row: row[rank] is not None and row[rank] >= least


def band_test(text, subject, marks):
    """A test of rows against an interval of shares of the full marks."""
    low, high = (Fraction(side or "0") for side in text[1:-1].split(","))
    low, high = low * Fraction(marks), (high or 1) * Fraction(marks)

    def test(row):
        score = row[subject]
        return (score is not None and (score >= low if text[0] == "[" else score > low)
                and (score <= high if text[-1] == "]" else score < high))
    return test


def names(exams, number, exam, second=None):
    """The cells that name a row."""
    return {0: f"{number}班"} | ({1: second or exam} if second or len(exams) > 1 else {})


def average(values):
    return sum(map(Fraction, values)) / len(values) if values else None


def ranked(texts):
    """Ranks of the averages as they stand in the cells, beside one more that counts as 0."""
    values = [float(text or 0) for text in texts] + [0.0]
    return [str(1 + sum(other > value for other in values)) if text else ""
            for text, value in zip(texts, values)]


class Reports:
    """The reports on some exams, as expected grids with widths."""

    def __init__(self, school, exams):
        self.school, self.exams = school, exams
        self.first = 2 if len(exams) > 1 else 1
        self.heads = {0: "班级"} | ({1: EXAM_HEAD} if self.first == 2 else {})

    def widths(self, every, classes=None):
        return ({"-1": every} | ({"0": classes} if classes else {})
                | ({"1": 900} if self.first == 2 and every == 750 else {}))

    def by_class(self, stream, fill):
        """A row for each class and exam, data cells from `fill(rows, exam, roster)`."""
        lines = []
        for number, roster in self.school.classes[stream]:
            for exam in self.exams:
                cells = fill(self.school.rows(exam, stream, number), exam, number, roster)
                lines.append(names(self.exams, number, exam)
                             | dict(enumerate(cells, self.first)))
        return lines

    def attendance(self, _):
        grid = Expected()
        for stream in STREAMS:
            items = self.school.items(self.exams, stream)

            def fill(rows, *_, items=items):
                for item in items:
                    taken = [row[item] for row in rows if row[item] is not None]
                    sat = sum(score >= 0 for score in taken)
                    yield f"{sat}/{len(taken) - sat}/{len(taken)}"
            head = self.heads | {k: f"{item}\n参试/缺考/总计" for k, item in enumerate(items, 1)}
            grid.add(f"{stream}科考试人数", 1, len(items), [{}, head], self.by_class(stream, fill))
        return grid, {"-1": 1100}

    def pairs(self, title, heads, fill_with):
        """A report with two columns a subject."""
        grid = Expected()
        for stream in STREAMS:
            subjects = self.school.subjects(self.exams, stream)

            def fill(rows, _exam, _number, roster, subjects=subjects):
                return [text for subject, marks in subjects.items()
                        for text in fill_with(rows, subject, marks, roster)]
            doubled = [subject for subject in subjects for _ in heads]
            grid.merge_heading()
            grid.add(title.format(stream), self.first, len(doubled),
                     [{}, self.heads | dict(enumerate(doubled, self.first)),
                      self.heads | dict(enumerate(heads * len(subjects), self.first))],
                     self.by_class(stream, fill))
        return grid

    def groups(self, _):
        def counts(rows, subject, marks, _roster):
            for name in ("高分段", "低分段"):
                yield str(sum(map(band_test(self.school.settings[name], subject, marks), rows)))
        return self.pairs("{}科 高、低分段", ["高分段", "低分段"], counts), self.widths(750)

    def rate(self, name):
        def share(rows, subject, marks, roster):
            count = sum(map(band_test(self.school.settings[name], subject, marks), rows))
            return str(count), cell(Fraction(count * 100, roster))
        return self.pairs("{}科" + name, ["人数", "比例%"], share), self.widths(750, 1100)

    def averages(self, _):
        grid = Expected()
        for stream in STREAMS:
            subjects = list(self.school.subjects(self.exams, stream))

            def fill(rows, exam, number, _roster, subjects=subjects):
                teachers = self.school.teachers.get((exam, number), {})
                for subject in subjects:
                    yield cell(average([r[subject] for r in rows if r[subject] is not None]))
                    yield ""
                    yield teachers.get(subject) or ""
            lines = self.by_class(stream, fill)
            for column in range(self.first, self.first + 3 * len(subjects), 3):
                for e in range(len(self.exams)):
                    group = lines[e::len(self.exams)]
                    for line, rank in zip(group, ranked([line[column] for line in group])):
                        line[column + 1] = rank
            upper = [text for subject in subjects for text in (subject, subject, "教师")]
            second = {1: EXAM_HEAD} if self.first == 2 else {}
            grid.merge_heading()
            grid.add(f"{stream}科各科平均分", self.first, len(upper),
                     [{0: "班级"}, second | dict(enumerate(upper, self.first)),
                      self.heads | dict(enumerate(["平均分", "名次", ""] * len(subjects),
                                                  self.first))], lines)
        return grid, self.widths(750, 1100)

    def aggregate(self, name):
        take, absent, stride = {
            "各科最高分": (max, True, 3), "各科最低分": (min, False, 3),
            "各科标准差": (lambda v: statistics.stdev(v) if len(v) > 1 else None, False, 1)}[name]
        grid = Expected()
        for stream in STREAMS:
            subjects = list(self.school.subjects(self.exams, stream))

            def fill(rows, *_, subjects=subjects):
                for subject in subjects:
                    values = [row[subject] for row in rows if row[subject] is not None
                              and (absent or row[subject] >= 0)]
                    yield cell(take(values)) if values else ""
                    yield from [""] * (stride - 1)
            head = {self.first + k * stride: subject for k, subject in enumerate(subjects)}
            second = {1: EXAM_HEAD} if self.first == 2 else {}
            if absent:
                grid.merge_heading()
            grid.add(f"{stream}科{' ' if stride == 1 else ''}{name}", self.first,
                     len(subjects) * stride,
                     [{0: "班级"} if absent else {}, (second if absent else self.heads) | head],
                     self.by_class(stream, fill))
        return grid, self.widths(750, 1100)

    def score_bands(self, name):
        widths = [float(part[2:]) for part in self.school.settings[name].split(",")]
        grid = Expected()
        for stream in STREAMS:
            for item, marks in self.school.items(self.exams, stream).items():
                width = widths[item.endswith("总分")]
                count, rest = divmod(marks, width)
                count = int(count) + (rest > 0)

                def fill(rows, *_, item=item, marks=marks, width=width, count=count, rest=rest):
                    places = [int(row[item] // width) - (rest == 0 and row[item] == marks)
                              for row in rows if row[item] is not None and row[item] >= 0]
                    return [str(places.count(place)) for place in range(count)]
                heads = [f"[{plain(k * width)},{plain((k + 1) * width)})" for k in range(count)]
                if rest == 0:
                    heads[-1] = heads[-1][:-1] + "]"
                grid.add(f"{stream}科  {item}{name}", 1, count,
                         [{}, {0: "班级"} | dict(enumerate(heads, 1))],
                         self.by_class(stream, fill))
        return grid, {"-1": 900}

    def total_lines(self, _):
        grid = Expected()
        for stream in STREAMS:
            lines = self.school.lines("总分上线人数", stream)

            def fill(rows, *_, lines=lines):
                return [str(sum(row["总分"] is not None and row["总分"] >= float(line)
                                for row in rows)) for line in lines]
            grid.add(f"{stream}科总分上线人数", self.first, len(lines),
                     [{}, self.heads | {self.first + t: line + "线"
                                        for t, line in enumerate(lines)}],
                     self.by_class(stream, fill))
        return grid, {"-1": 1100}

    def rank_bands(self, name):
        setting, title = "各名次段人数", "各名次段人数"
        if name == "历次考试进入年级前x名人数":
            setting = name + " "
            title = f"  {len(self.exams)}次考试进入年级前{self.school.settings[setting]}名人数"
        grid = Expected(1)
        for stream in STREAMS:
            bands = self.school.lines(setting, stream)
            for item in self.school.items(self.exams, stream):
                tests = {exam: [self.school.rank_test(band, item, exam, stream) for band in bands]
                         for exam in self.exams}

                def fill(rows, exam, *_, tests=tests):
                    return [str(sum(map(test, rows))) for test in tests[exam]]
                heads = [("前" if float(b) > 0 else "后") + b.lstrip("-") + "名" for b in bands]
                grid.add(f"{stream}科  {item}{title}", self.first, len(bands),
                         [{}, self.heads | dict(enumerate(heads, self.first))],
                         self.by_class(stream, fill))
        return grid, {"-1": 900}

    def rank_averages(self, name):
        grid, (exam,) = Expected(), self.exams
        for stream in STREAMS:
            bands, items = self.school.lines(name, stream), self.school.items([exam], stream)
            lines = [names([], number, exam, ("前" if float(b) > 0 else "后") + b.lstrip("-"))
                     for number, _ in self.school.classes[stream] for b in bands]
            for k, item in enumerate(items):
                column = 2 + 3 * k
                for b, band in enumerate(bands):
                    group = lines[b::len(bands)]
                    test = self.school.rank_test(band, item, exam, stream)
                    for line, (number, _) in zip(group, self.school.classes[stream]):
                        within = [row[item] for row in self.school.rows(exam, stream, number)
                                  if test(row) and row[item] is not None]
                        line[column] = str(len(within))
                        line[column + 1] = cell(average([v for v in within if v >= 0]))
                    for line, rank in zip(group, ranked([line[column + 1] for line in group])):
                        line[column + 2] = rank
            heads = {0: "班级", 1: "名次段"}
            grid.merge_heading()
            grid.add(f"{stream}科  {name}", 2, 3 * len(items),
                     [{}, heads | dict(enumerate([i for i in items for _ in range(3)], 2)),
                      heads | dict(enumerate(["人数", "平均分", "名次"] * len(items), 2))], lines)
        return grid, {"-1": 750, "0": 1100, "1": 900}


ONE_EXAM = {"考试人数": Reports.attendance, "各分数段人数": Reports.score_bands,
            "各名次段均分": Reports.rank_averages}
MANY = {"高分段、低分段": Reports.groups, "各科优秀率": Reports.rate, "各科良好率": Reports.rate,
        "各科及格率": Reports.rate, "各科差生率": Reports.rate, "各科平均分": Reports.averages,
        "各科最高分": Reports.aggregate, "各科最低分": Reports.aggregate,
        "各科标准差": Reports.aggregate, "总分上线人数": Reports.total_lines,
        "历次总分上线人数": Reports.total_lines, "各名次段人数": Reports.rank_bands,
        "历次各名次段人数对比": Reports.rank_bands,
        "历次考试进入年级前x名人数": Reports.rank_bands}
# Reports of a block for each item: what was fixed before stays, and only classes merge by columns.
FIXED_AS_IT_STANDS = ("各分数段人数", "各名次段人数", "历次各名次段人数对比",
                      "历次考试进入年级前x名人数")


def merged_columns(item, exams):
    """The columns in which equal neighbours are merged."""
    if item == "考试人数":
        return []
    if item == "各名次段均分" or (len(exams) > 1 and item not in FIXED_AS_IT_STANDS):
        return [0, 1]
    return [0]
