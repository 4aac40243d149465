"""What the kinds of workbooks are put together of: sheets as lists of rows, and the files they make."""

import re
from dataclasses import dataclass, field

import openpyxl
from openpyxl.styles import Alignment

HEADINGS = ("班级", "学号", "姓名")


@dataclass
class Sheet:
    """A sheet: its rows, the blocks that are merged, and what is hidden."""

    title: str = "Sheet1"
    rows: list = field(default_factory=list)
    merges: tuple = ()
    hidden_rows: tuple = ()
    hidden_columns: tuple = ()
    filtered: str = ""
    state: str = "visible"


def fill(sheet, told):
    for row in told.rows:
        sheet.append(list(row) or [None])
    for block in told.merges:
        sheet.merge_cells(block)
        sheet[block.split(":")[0]].alignment = Alignment(horizontal="center", vertical="center")
    for row in told.hidden_rows:
        sheet.row_dimensions[row].hidden = True
    for column in told.hidden_columns:
        sheet.column_dimensions[column].hidden = True
    if told.filtered:
        sheet.auto_filter.ref = told.filtered
    sheet.sheet_state = told.state


def write(path, *sheets):
    """An .xlsx of these sheets."""
    book = openpyxl.Workbook()
    book.remove(book.active)
    for told in sheets:
        fill(book.create_sheet(told.title), told)
    book.save(path)
    return path


def above(width, *lines):
    """Rows that hold one text each, merged over the first columns: the rows and their merges."""
    last = openpyxl.utils.get_column_letter(width)
    return ([(line,) for line in lines],
            tuple(f"A{row}:{last}{row}" for row in range(1, len(lines) + 1)))


def strict(*rows, columns=("语文", "数学", "英语")):
    """A strict sheet as it should come out: its headings and rows."""
    return [[*HEADINGS, *columns], *map(list, rows)]


def one_file_name(text):
    """A text as the name of a file that any system takes."""
    return re.sub(r"[^\w()（）-]+", "_", text)
