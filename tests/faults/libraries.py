"""What a library holds, whether it is whole, and whether the files around it are."""

import hashlib
import shutil
import sqlite3
import tempfile
import zipfile
from pathlib import Path

ABSENT = "there is no library"
# Each run empties the work table, and the numbers of its rows go on from there.
COLUMNS = {"分班表": "班级, 学号, 姓名, 新班级, 新学号, 已分班"}


class NotWhole(Exception):
    """What is wrong with a file."""


def dump(conn):
    """All rows of all tables, in their order, with the tables' columns."""
    tables = conn.execute("select name from sqlite_master where type='table'"
                          " and name not like 'sqlite%' order by name").fetchall()
    for (table,) in tables:
        yield table, [row[1:3] for row in conn.execute(f"pragma table_info([{table}])")]
        yield from conn.execute(
            f"select {COLUMNS.get(table, '*')} from [{table}] order by rowid")


def read_whole(path):
    conn = sqlite3.connect(path)
    try:
        checked = conn.execute("pragma integrity_check").fetchall()
        if checked != [("ok",)]:
            raise NotWhole(f"damaged: {checked[:3]}")
        return hashlib.sha256(repr(list(dump(conn))).encode()).hexdigest()
    except sqlite3.Error as error:
        raise NotWhole(f"unreadable: {error}") from error
    finally:
        conn.close()


def content(library):
    """A hash of all that a library holds once its journal, if one lies beside it, is played back.
    The files stay untouched. Throws NotWhole."""
    if not library.exists():
        return ABSENT
    with tempfile.TemporaryDirectory(prefix="yunshan-look-") as name:
        copy = Path(name) / library.name
        shutil.copyfile(library, copy)
        for ending in ("-journal", "-wal"):
            log = Path(f"{library}{ending}")
            if log.exists():
                shutil.copyfile(log, f"{copy}{ending}")
        return read_whole(copy)


def copies(library):
    """The files beside a library that are named as its copies."""
    return sorted(library.parent.glob(f"{library.name}_*.bak"))


def workbook(path):
    """The parts of a workbook but its date, without the folder that the run had. Throws NotWhole."""
    place = bytes(path.parents[1])
    try:
        with zipfile.ZipFile(path) as book:
            return {name: book.read(name).replace(place, b"") for name in book.namelist()
                    if name != "docProps/core.xml"}
    except (zipfile.BadZipFile, EOFError, OSError) as error:
        raise NotWhole(f"{path.name}: {error}") from error
