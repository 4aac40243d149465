"""What a kind of workbook is: how one is made, and what right looks like."""

from dataclasses import dataclass
from pathlib import Path

from sheets import strict

# Class, number, name and three scores. Two classes have a 张伟.
MARKS = ((1, 1, "王芳", 120.5, 98, 110), (1, 2, "李娜", 101, 87.5, 95), (1, 3, "张伟", 88, 130, 76),
         (1, 4, "欧阳明", 115, 102, 120), (2, 1, "刘洋", 97, 111, 84), (2, 2, "陈静", 132, 140, 128.5),
         (2, 3, "张伟", 76, 65, 90))
FIRST, SECOND = MARKS[:4], MARKS[4:]

# What stands in the library beside them: 学籍号, and two students of one name in class 3.
REGISTER = {(1, 1): "G320101", (1, 2): "G320102", (1, 3): "G320103", (1, 4): "G320104",
            (2, 1): "G320201", (2, 2): "G320202", (2, 3): "G320203"}
NAMESAKES = ((3, 1, "周杰"), (3, 2, "周杰"))


@dataclass
class Case:
    """A workbook and what becomes of it.

    `rows` is the strict sheet; None means that none can be made. `asks` are pieces of the open
    questions' sentences: with some of them there is no sheet before `answers`, options of the
    command line, are given; a question that stays open has no answers. `says` are pieces of what
    is warned about or named as left out. `left_out` are pieces of the reasons of the rows that the
    result lists as not written, in their order. `refused` is a piece of what is said of a file that cannot
    be read.
    """

    book: Path
    rows: list | None = None
    asks: tuple = ()
    answers: tuple = ()
    says: tuple = ()
    left_out: tuple = ()
    refused: str = ""
    goal: str = "exam"
    with_library: bool = False


@dataclass
class Kind:
    told: str
    make: object


KINDS = []


def kind(told):
    """Lists a function that makes a workbook in a folder and gives its Case."""
    def listed(make):
        KINDS.append(Kind(told, make))
        return make
    return listed


def right(book, *rows, columns=("语文", "数学", "英语"), **more):
    return Case(book, strict(*(rows or MARKS), columns=columns), **more)
