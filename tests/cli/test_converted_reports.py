"""A converted library gives the reports that the same data give when they are imported.

Import cannot make all that stands in the samples. What it makes otherwise is set by statements before
the scoring: cells that are empty among scores (imported as 0), the category of a score row (imported
as the class has it), students who have left since; and the tables that no import writes.
"""

import json
import sqlite3
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import oldsamples
import yunshan

REPORTS = ("考试人数", "高分段", "低分段", "各科优秀率", "各科良好率", "各科及格率", "各科差生率", "各科平均分",
           "各科最高分", "各科最低分", "各科标准差", "各分数段人数", "总分上线人数", "历次总分上线人数",
           "各名次段人数", "历次各名次段人数对比", "各名次段均分", "历次考试进入年级前x名人数")
FIRST_SUBJECT = 5  # among the columns of 考试名称表
NEVER_IMPORTED = ("设置表", "详细设置表", "教师表", "自定义显示表", "颜色表")


def is_total(column):
    return column.endswith("总分")


class Sample:
    """What an old library holds, seen as the workbooks that it came from."""

    def __init__(self, name):
        self.name = name
        self.exam_rows = oldsamples.table(name, "考试名称表").records()
        self.score_rows = oldsamples.table(name, "成绩表").records()
        self.columns = oldsamples.table(name, "考试名称表").columns[FIRST_SUBJECT:]
        self.subjects = [column for column in self.columns if not is_total(column)]
        self.exams = list(dict.fromkeys(row["考试名称"] for row in self.exam_rows))

    def students(self):
        return oldsamples.table(self.name, "信息表").records()

    def left(self):
        """Students who have scores and are not listed any more."""
        listed = {(row["班级"], row["学号"]) for row in self.students()}
        return [{**row, "类别": None} for row in self.score_rows
                if (row["班级"], row["学号"]) not in listed]

    def sheet(self, exam_row):
        """The rows of the exam in its stream, and the subjects that it has."""
        rows = [row for row in self.score_rows
                if all(row[key] == exam_row[key] for key in ("考试名称", "科类"))]
        return rows, [subject for subject in self.subjects if exam_row[subject]]


def cell(score):
    return "缺考" if score == -1 else score


class Imported:
    """The library that is made of a sample by today's road."""

    def __init__(self, test, sample):
        self.test, self.sample = test, sample
        self.library = test.folder / "导入.CJK"

    def make(self):
        self.test.run_program("new", self.library, "--subjects", ",".join(self.sample.columns))
        self.add_students([*self.sample.students(), *self.sample.left()])
        self.copy_tables(("总分公式",))
        for exam_row in self.sample.exam_rows:
            self.add_exam(exam_row)
        self.set_what_import_cannot()
        self.test.run_program("score", self.library, *self.sample.exams)

    def add_students(self, students):
        headings = (*yunshan.HEADINGS, "科类", "类别代码", "类别")
        book = self.test.book("名单.xlsx", headings,
                              *([student[name] for name in headings] for student in students))
        self.test.run_program("import-students", self.library, book, "--no-backup")

    def add_exam(self, exam_row):
        rows, subjects = self.sample.sheet(exam_row)
        book = self.test.book("成绩.xlsx", (*yunshan.HEADINGS, *subjects),
                              *([*(row[name] for name in yunshan.HEADINGS),
                                 *(cell(row[subject]) for subject in subjects)] for row in rows))
        marks = ",".join(f"{subject}={exam_row[subject]}" for subject in subjects)
        self.test.run_program("import-exam", self.library, book, "--exam", exam_row["考试名称"],
                              "--full-marks", marks, "--no-backup")

    def copy_tables(self, names):
        conn = sqlite3.connect(self.library)
        for name in names:
            table = oldsamples.table(self.sample.name, name)
            conn.execute(f"delete from [{name}]")
            listed = ",".join(f"[{column}]" for column in table.columns)
            marks = ",".join("?" * len(table.columns))
            conn.executemany(f"insert into [{name}]({listed}) values ({marks})", table.rows)
        conn.commit()
        conn.close()

    def set_what_import_cannot(self):
        self.copy_tables(NEVER_IMPORTED)
        conn = sqlite3.connect(self.library)
        where = "where 考试名称=:考试名称 and 班级=:班级 and 学号=:学号"
        for row in self.sample.score_rows:
            conn.execute(f"update 成绩表 set 类别代码=:类别代码 {where}", row)
            for subject in self.sample.subjects:
                if row[subject] is None:
                    conn.execute(f"update 成绩表 set [{subject}]=null {where}", row)
        conn.executemany("delete from 信息表 where 班级=:班级 and 学号=:学号",
                         self.sample.left())
        conn.commit()
        conn.close()


class ConvertedReports(yunshan.ProgramTest):
    # 信息 of this exam was given values and never scored.
    NOT_SCORED = {oldsamples.ONE_STREAM: ("信息", "高二期中")}

    def convert(self, sample):
        old = self.folder / f"{sample.name}.CJK"
        old.write_bytes(oldsamples.data(sample.name))
        return Path(self.run_program("convert", old).out[:-1])

    def both(self, name):
        """The converted library, scored where the old one was not, and the imported one."""
        sample = Sample(name)
        converted = self.convert(sample)
        if name in self.NOT_SCORED:
            self.run_program("score", converted, self.NOT_SCORED[name][1])
        imported = Imported(self, sample)
        imported.make()
        return sample, converted, imported.library

    def answers(self, library, *arguments):
        command, *rest = arguments
        result = yunshan.run(command, library, *rest, cwd=self.folder)
        return result.code, json.loads(result.out or "null"), result.err

    def assertSame(self, ours, theirs, *arguments):
        """Gives what both print."""
        found = self.answers(ours, *arguments)
        self.assertEqual(found, self.answers(theirs, *arguments), arguments)
        return found[1]

    def check_reports(self, name):
        sample, converted, imported = self.both(name)
        exams = ",".join(sample.exams)
        for report in REPORTS:
            for each in ((), ("--each",)):
                grid = self.assertSame(converted, imported, "report", "--item", report, "--exam",
                                       exams, *each, "--format", "json")
                self.assertTrue(grid or not each, report)
        self.assertSame(converted, imported, "analyze", "--exam", sample.exams[0], "--format", "json")
        # Of one exam the old library has the streams mixed, the imported one behind each other.
        for show in ("原始分和名次", "Z分", "T分"):
            self.assertSame(converted, imported, "browse", "--exam", exams, "--show", show,
                            "--order", "考试编号,班级,学号", "--format", "json")

    def test_of_two_streams(self):
        self.check_reports(oldsamples.SMALL)

    def test_of_one_stream(self):
        self.check_reports(oldsamples.ONE_STREAM)

    def test_of_many_subjects(self):
        self.check_reports(oldsamples.WIDE)

    def test_scoring_anew_gives_what_was_stored(self):
        for name in oldsamples.ALL:
            with self.subTest(sample=name):
                sample = Sample(name)
                converted = self.convert(sample)
                self.run_program("score", converted, *sample.exams)
                stored = yunshan.records(converted, "select * from 成绩表 order by rowid")
                unscored = self.NOT_SCORED.get(name, (None, None))
                for scored, row in zip(stored, sample.score_rows):
                    changed = {column for column in row if scored[column] != row[column]}
                    if row["考试名称"] == unscored[1]:
                        changed -= {unscored[0] + tail for tail in ("年名", "班名", "Z分", "T分")}
                    self.assertEqual(changed, set(), row["id"])


if __name__ == "__main__":
    yunshan.main()
