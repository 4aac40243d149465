"""The old libraries among the fixtures: what they hold, value by value, and files made of them."""

import functools
import hashlib
import json
from dataclasses import dataclass
from pathlib import Path

import yunshan

FOLDER = yunshan.ROOT / "tests" / "fixtures" / "oldlibraries"
SMALL, ONE_STREAM, WIDE, PHOTOS = "small-two-streams", "one-stream", "wide", "photos"
ALL = (SMALL, ONE_STREAM, WIDE, PHOTOS)
HEADER = b"\0\1\0\0Standard Jet DB\0"
PASSWORD_PLACE = 0x42


@dataclass
class Table:
    name: str
    columns: list
    types: list
    rows: list  # of lists, as a new library has the values; pictures as picture() gives them

    def records(self):
        return [dict(zip(self.columns, row)) for row in self.rows]


def picture(data):
    """What stands for the bytes of a picture."""
    return {"sha256": hashlib.sha256(data).hexdigest(), "length": len(data)}


def value(stored, kind):
    """A value of the description as SQLite gives it."""
    if kind == "Single" and stored is not None:
        return yunshan.single(float(stored))
    return int(stored) if kind == "Boolean" else stored


@functools.cache
def tables(name):
    """The tables of a sample, in their order."""
    described = json.loads((FOLDER / f"{name}.json").read_text("utf-8"))["tables"]
    found = []
    for table in described:
        kinds = [column["type"] for column in table["columns"]]
        rows = [[value(*pair) for pair in zip(row, kinds)] for row in table["rows"]]
        columns = [column["name"] for column in table["columns"]]
        found.append(Table(table["name"], columns, kinds, rows))
    return found


def table(sample, name):
    return next(table for table in tables(sample) if table.name == name)


def data(sample):
    """The bytes of a sample's file."""
    return (FOLDER / f"{sample}.CJK").read_bytes()


def with_password(content, password):
    """The same file with a password, of which the pages know nothing. The file must have none: what
    lies over the password then shows in its place."""
    changed = bytearray(content)
    for place, byte in enumerate(password.encode("utf-16-le"), PASSWORD_PLACE):
        changed[place] ^= byte
    return bytes(changed)


def found(path):
    """What stands in a folder: names with content, dates and rights."""
    return {entry.name: (entry.lstat().st_mtime_ns, entry.lstat().st_mode,
                         yunshan.file_hash(entry) if entry.is_file() else None)
            for entry in path.iterdir()}
