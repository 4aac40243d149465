"""The commands that are disturbed, each with the folder that it runs in and the states of the library
that it may leave."""

import re
import shutil
import sqlite3
from dataclasses import dataclass, field
from pathlib import Path

import injection
import libraries
from injection import yunshan

import oldsamples

LIBRARY = "试验.CJK"
OLD = "旧库.CJK"
SUBJECTS = ("语文", "数学", "英语")
BEFORE, AFTER = "before", "after"
# 综合分析完毕！ is none of them: it is told before the workbooks are saved; nor is 调整完毕。, which is told before
# exams are scored anew.
CLOSING_TEXTS = ("导入完成！", "新建数据库成功", "压缩完毕!", "计算总分 完成！", "分班完成！",
                 "删除完毕！", "设置保存成功！", "设置完毕！", "已经彻底删除", "恢复完毕，")
EARLIER_COPIES = 5
REMARK = "备注" * 350
PICTURE = bytes.fromhex("47494638396101000100800000ffffff00000021f90401000000002c0000000001000100"
                        "0002024401003b")


@dataclass
class Scenario:
    """A command, and the folder of which each run gets a copy."""

    name: str
    folder: Path
    command: tuple
    # By name, the commands that lead to the states that lie between before and after.
    between: dict = field(default_factory=dict)
    # By the name of a state, the command that leads from it to the end, if that is not the same.
    finish: dict = field(default_factory=dict)
    makes_copies: bool = False
    notes_restore: bool = False
    keeps_content: bool = False
    usual_code: int = yunshan.DONE
    # What measure() finds out.
    states: dict = field(default_factory=dict)  # content to name
    before: str = ""
    final: str = ""
    earlier: str = ""  # what the copies hold that are there before
    earlier_copies: int = 0
    calls: list = field(default_factory=list)
    usual_out: list = field(default_factory=list)
    usual_err: list = field(default_factory=list)
    books: dict = field(default_factory=dict)

    def place(self, folder):
        return Path(shutil.copytree(self.folder, folder))


def cli(*arguments):
    command, *rest = arguments
    return ("yunshan-cli", command, LIBRARY, *rest)


def screen(command, *rest):
    return ("screen_commands", command, LIBRARY, *rest)


def score(number):
    """Scores of a pupil, some of them with a fraction."""
    return 60 + number * 7 % 40, 55 + number * 11 % 45 + 0.5, 70 + number * 3 % 30


def pupils(classes, size=10):
    return [(group, number, f"学生{group}之{number}") for group in classes
            for number in range(1, size + 1)]


def exam_sheet(classes, size=10, more=0):
    rows = [(*yunshan.HEADINGS, *SUBJECTS)]
    rows += [(*pupil, *score(7 * pupil[0] + pupil[1] + more)) for pupil in pupils(classes, size)]
    rows[2] = (*rows[2][:3], "缺考", *rows[2][4:])
    return {"Sheet": rows}


def class_sheet():
    """Classes 1 and 2 and classes 3 and 4 change places; one pupil is missing, one has another name, one
    is unknown."""
    rows = [(*pupil, 3 - pupil[0] if pupil[0] < 3 else 7 - pupil[0], pupil[1])
            for pupil in pupils((1, 2, 3, 4))]
    rows[4] = (*rows[4][:2], "改名", *rows[4][3:])
    rows[7] = (9, 9, "生人", 1, 8)
    return {"Sheet": [(*yunshan.HEADINGS, "新班级", "新学号"), *rows]}


def write_books(folder):
    names = [(*pupil, "文" if pupil[0] < 3 else "理") for pupil in pupils((1, 2, 3, 4))]
    yunshan.write_book(folder / "名单.xlsx", {"Sheet": [(*yunshan.HEADINGS, "科类"), *names]})
    for name, sheet in {"文.xlsx": exam_sheet((1, 2)), "理.xlsx": exam_sheet((3, 4)),
                        "新.xlsx": exam_sheet((1, 2), 12, 5)}.items():
        yunshan.write_book(folder / name, sheet)
    yunshan.write_book(folder / "分班.xlsx", class_sheet())
    stopped = exam_sheet((1, 2), 12, 5)
    stopped["Sheet"].append((1, 1, "别人", *score(1)))
    yunshan.write_book(folder / "中断.xlsx", stopped)


class Preparation:
    """Makes the libraries that scenarios begin with by the program itself."""

    def __init__(self, programs, folder):
        self.programs = programs
        self.folder = folder

    def copied(self, name, of):
        return Path(shutil.copytree(of, self.folder / name))

    def run(self, place, *commands, expect=yunshan.DONE):
        for command in commands:
            result = injection.run(self.programs, place, command)
            if result.code != expect:
                raise SystemExit(f"{command} ended with {result.code}: {result.err}")
        shutil.rmtree(place / "scratch", ignore_errors=True)
        return place

    def books(self):
        place = self.folder / "books"
        place.mkdir()
        write_books(place)
        return place

    def empty(self, of):
        place = self.copied("empty", of)
        self.run(place, cli("new", "--subjects", ",".join(SUBJECTS) + ",总分"))
        conn = sqlite3.connect(place / LIBRARY)
        conn.execute("update 总分公式 set 公式='语文+数学+英语' where 总分='总分'")
        conn.execute("delete from 总分公式 where 总分<>'总分'")
        conn.commit()
        conn.close()
        return place

    def spread(self, place):
        """Long remarks, so that a table has many pages and a run reads them when it needs them."""
        conn = sqlite3.connect(place / LIBRARY)
        for table in ("信息表", "成绩表"):
            conn.execute(f"update {table} set 备注=?", (REMARK,))
        conn.commit()
        conn.close()
        return place

    def with_earlier_copies(self, place):
        """As many copies as are kept, none of the present state."""
        earlier = self.folder / "empty" / LIBRARY
        for day in range(EARLIER_COPIES):
            shutil.copyfile(earlier, place / f"{LIBRARY}_2024-03-0{day + 1}_0800.bak")
        return place

    def crashed(self, of, command):
        """The command was killed while it wrote the library, whose journal is left."""
        place = self.copied("crashed", of)
        calls, _ = injection.logged_calls(self.programs, self.copied("uncrashed", of), command)
        writes = [number for number, (kind, file) in enumerate(calls, 1)
                  if kind == "write" and file.endswith(LIBRARY)]
        fault = injection.Fault(injection.ANY, writes[-1], injection.KILLS)
        injection.run(self.programs, place, command, fault)
        if not Path(f"{place / LIBRARY}-journal").exists():
            raise SystemExit("the crashed library has no journal")
        shutil.rmtree(place / "scratch")
        return place


def import_scenarios(make, students, scored):
    names = ("import-exam", "新.xlsx", "--exam", "期末", "--add-students")
    stopped = ("import-exam", "中断.xlsx", "--exam", "期末", "--add-students", "--no-backup")
    yield Scenario("import of students", make.with_earlier_copies(make.copied("list", make.bare)),
                   cli("import-students", "名单.xlsx"), makes_copies=True)
    yield Scenario("import of students who are there", students,
                   cli("import-students", "名单.xlsx", "--accept-existing", "add"),
                   makes_copies=True)
    copied = make.with_earlier_copies(make.copied("copied", students))
    yield Scenario("import of an exam", copied,
                   cli("import-exam", "文.xlsx", "--exam", "期中"), makes_copies=True)
    yield Scenario("import into an exam", scored,
                   cli("import-exam", "新.xlsx", "--exam", "期中", "--existing"),
                   makes_copies=True)
    yield Scenario("import of an exam again", scored,
                   cli("import-exam", "文.xlsx", "--exam", "期中", "--accept-duplicate"),
                   makes_copies=True)
    yield Scenario("import with newcomers and scoring", scored, cli(*names, "--score"),
                   between={"after the names": (cli(*stopped),),
                            "after the exam's rows": (cli(*names, "--no-backup"),)},
                   finish={"after the exam's rows": cli("score", "期末")}, makes_copies=True)


def reclass_scenario(scored):
    return Scenario("re-classing", scored,
                    cli("reclass", "分班.xlsx", "--on-missing", "delete", "--on-mismatch",
                        "replace"),
                    between={"after the work table": (screen("refuse-classes", "分班.xlsx"),)},
                    makes_copies=True)


def upkeep_scenarios(make, scored):
    correct = ("correct", "--exam", "期中", "--class", "1", "--number", "1", "--subject", "语文",
               "--score", "99.5")
    yield Scenario("correction of a score", scored, cli(*correct, "--rescore"),
                   between={"after the score": (cli(*correct),)})
    yield Scenario("removal of subjects", make.with_earlier_copies(make.copied("removal", scored)),
                   cli("delete-subjects", "数学,英语", "--yes"), makes_copies=True)
    recorded = make.copied("record", scored)
    (recorded / "照片.gif").write_bytes(PICTURE)
    change = ("record", "--id", "1", "--set", "性别=女", "--set", "学号=77")
    yield Scenario("change of a record", recorded, cli(*change, "--photo", "照片.gif"),
                   between={"without the photo, which could not be read": (cli(*change),)})


def erasure_scenario(make, scored):
    """One of two exams goes."""
    place = make.spread(make.run(make.copied("erasure", scored),
                                 cli("import-exam", "新.xlsx", "--exam", "期末", "--no-backup")))
    return Scenario("erasure of an exam", make.with_earlier_copies(place),
                    cli("remove-exams", "期中", "--yes"), makes_copies=True)


def move_scenarios(make, scored):
    """With earlier scores, and exams scored anew behind the one batch."""
    one = ("move-student", "--class", "1", "--number", "1", "--with-scores", "--yes")
    place = make.with_earlier_copies(make.copied("moves", scored))
    yield Scenario("move of a student", place, cli(*one, "--to-class", "2", "--rescore"),
                   between={"after the move": (cli(*one, "--to-class", "2", "--no-backup"),)},
                   finish={"after the move": cli("score", "期中")}, makes_copies=True)
    yield Scenario("swap of two students", place, cli(*one, "--swap", "3/2"), makes_copies=True)
    yield Scenario("removal of a student", place, cli(*one, "--remove"), makes_copies=True)


def details_scenarios(make, scored):
    yield Scenario("details of an exam", make.with_earlier_copies(make.copied("details", scored)),
                   screen("rename-exam", "期中", "高一期中", "语文", "200"), makes_copies=True)
    yield Scenario("addition of a total", make.with_earlier_copies(make.copied("addition", scored)),
                   screen("add-subject", "两科总分", "语文+数学"), makes_copies=True)
    yield Scenario("addition of a student", scored,
                   screen("add-student", "1", "99", "' or ''='"))


def photo_scenario(make, scored):
    """Two photos of many pages; one that cannot be read is refused, and the other one is set."""
    place = make.copied("photos", scored)
    for folder, names in {"照片": ("1", "2"), "缺2": ("1",), "缺1": ("2",)}.items():
        (place / folder / "1").mkdir(parents=True)
        for name in names:
            (place / folder / "1" / f"{name}.jpg").write_bytes(PICTURE + name.encode() * 300_000)
    return Scenario("photos of a folder", place, cli("photos", "照片"),
                    between={f"without photo {name}": (cli("photos", f"缺{name}", "--no-backup"),)
                             for name in ("1", "2")}, makes_copies=True)


def new_scenarios(books, scored, crashed):
    new = cli("new", "--subjects", "语文,数学,总分")
    yield Scenario("new", books, new)
    yield Scenario("new over a library", scored, (*new, "--force"))
    yield Scenario("new over a crashed library", crashed, (*new, "--force"))


def conversion_scenarios(make, crashed):
    place = make.folder / "old"
    place.mkdir()
    (place / OLD).write_bytes(oldsamples.data(oldsamples.SMALL))
    convert = ("yunshan-cli", "convert", OLD, LIBRARY)
    yield Scenario("conversion", place, convert)
    replaced = make.copied("replaced", crashed)
    (replaced / "out").mkdir()
    shutil.copy2(place / OLD, replaced)
    yield Scenario("conversion over a crashed library", replaced,
                   (*convert, "--force", "--report", "out/报告.xlsx"))


def restore_scenarios(make, scored, crashed):
    """Over a library, over one whose last write was broken off, and where none is any more."""
    restore = cli("restore", f"{LIBRARY}_2024-03-01_0800.bak")
    over = make.with_earlier_copies(make.copied("restore", scored))
    yield Scenario("restore of a copy", over, restore, makes_copies=True)
    broken = make.with_earlier_copies(make.copied("restore crashed", crashed))
    yield Scenario("restore over a crashed library", broken, restore, makes_copies=True)
    lost = make.with_earlier_copies(make.copied("restore lost", scored))
    (lost / LIBRARY).unlink()
    yield Scenario("restore of a lost library", lost, restore)
    undone = make.run(make.copied("restore imported", scored),
                      cli("import-exam", "新.xlsx", "--exam", "期末", "--add-students"))
    copy, = libraries.copies(undone / LIBRARY)
    for ending in ("", ".json"):
        Path(f"{copy}{ending}").rename(undone / f"{LIBRARY}_2024-03-01_0800.bak{ending}")
    yield Scenario("restore of the copy of an import", undone, restore, makes_copies=True,
                   notes_restore=True)


def all_scenarios(programs, folder):
    """All scenarios, their libraries prepared in the folder."""
    make = Preparation(programs, folder)
    books = make.books()
    make.bare = make.empty(books)
    students = make.spread(make.run(make.copied("students", make.bare),
                                    cli("import-students", "名单.xlsx", "--no-backup")))
    unscored = make.spread(make.run(
        make.copied("unscored", students),
        cli("import-exam", "文.xlsx", "--exam", "期中", "--no-backup"),
        cli("import-exam", "理.xlsx", "--exam", "期中", "--no-backup")))
    scored = make.run(make.copied("scored", unscored), cli("score", "期中"))
    crashed = make.crashed(unscored, cli("score", "期中"))
    exported = make.copied("exported", scored)
    (exported / "out").mkdir()
    change = "update 成绩表 set 语文=100 where 班级=1"
    return [
        Scenario("scoring", unscored, cli("score", "期中")),
        Scenario("scoring on the screen", unscored, screen("totals", "期中")),
        *import_scenarios(make, students, scored),
        reclass_scenario(scored),
        photo_scenario(make, scored),
        *new_scenarios(books, scored, crashed),
        *conversion_scenarios(make, crashed),
        Scenario("analysis", scored, cli("analyze", "--exam", "期中", "--out", "out", "--force")),
        Scenario("score export", exported,
                 cli("export", "--exam", "期中", "--subjects", "语文,总分", "--classes", "1,2",
                     "--chart", "--class-average", "期中", "--out", "out/成绩.xlsx", "--force")),
        Scenario("tidying", exported,
                 ("yunshan-cli", "tidy", "文.xlsx", "--library", LIBRARY,
                  "--out", "out/整理.xlsx", "--force")),
        Scenario("settings", scored,
                 cli("settings", "--set", "各科优秀率=[0.8,1]", "--analysis", "各科及格率=否")),
        # A statement that changes something gives no rows to show, which is told as an error.
        Scenario("typed statement", scored,
                 cli("browse", "--exam", "期中", "--sql", change, "--accept-changes"),
                 usual_code=yunshan.ERROR, makes_copies=True),
        *upkeep_scenarios(make, scored),
        erasure_scenario(make, scored),
        *move_scenarios(make, scored),
        *details_scenarios(make, scored),
        Scenario("streams of classes", scored, cli("set-streams", "--science", "1,2"),
                 makes_copies=True),
        Scenario("list of teachers", scored,
                 cli("teachers", "--exam", "期中", "--set", "1:语文=张三")),
        *restore_scenarios(make, scored, crashed),
        Scenario("compaction", scored, screen("compact"), makes_copies=True, keeps_content=True),
        Scenario("compaction of a crashed library", crashed, screen("compact-named"),
                 makes_copies=True, keeps_content=True),
        Scenario("opening a crashed library", crashed, cli("info"), keeps_content=True),
    ]


def state_after(programs, scenario, folder, commands):
    place = scenario.place(folder)
    for command in commands:
        injection.run(programs, place, command)
    found = libraries.content(place / LIBRARY)
    shutil.rmtree(place)
    return found


def lines(text, place):
    """The lines of an output, without the folder that the run had and the times of its copies."""
    return re.sub(r"_\d{4}-\d{2}-\d{2}_\d{6}\.bak", "_TIME.bak",
                  text.replace(str(place), "")).splitlines()


def measure_states(programs, scenario, folder):
    scenario.before = state_after(programs, scenario, folder / "state", ())
    scenario.states = {scenario.before: BEFORE}
    for name, commands in scenario.between.items():
        scenario.states[state_after(programs, scenario, folder / "state", commands)] = name
    for copy in libraries.copies(scenario.folder / LIBRARY):
        scenario.earlier = libraries.content(copy)
        scenario.earlier_copies += 1


def measure(programs, scenario, folder):
    """Sets what the scenario does undisturbed: its calls, its output, and the states it may leave."""
    measure_states(programs, scenario, folder)
    place = scenario.place(folder / "run")
    scenario.calls, usual = injection.logged_calls(programs, place, scenario.command)
    if usual.code != scenario.usual_code:
        raise SystemExit(f"{scenario.name} ended with {usual.code}: {usual.err}")
    scenario.usual_out, scenario.usual_err = lines(usual.out, place), lines(usual.err, place)
    scenario.final = scenario.before
    if not scenario.keeps_content:
        scenario.final = libraries.content(place / LIBRARY)
    scenario.states[scenario.final] = AFTER
    scenario.books = {book.name: libraries.workbook(book) for book in place.glob("out/*.xlsx")}
    shutil.rmtree(place)
