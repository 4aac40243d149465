"""A small .xls of one sheet, since no Debian library for Python writes the old format.

One stream of records in a compound file: a list of sectors in the first, the directory in the second,
the records behind them.
"""

import struct

SECTOR = 512
END_OF_CHAIN, FREE, FAT_SECTOR = 0xFFFFFFFE, 0xFFFFFFFF, 0xFFFFFFFD
SMALLEST_STREAM = 4096  # shorter ones are kept in another way


def record(kind, content):
    return struct.pack("<HH", kind, len(content)) + content


def cell(row, column, value):
    place = struct.pack("<HHH", row, column, 0)
    if isinstance(value, str):
        return record(0x204, place + struct.pack("<HB", len(value), 1) + value.encode("utf-16-le"))
    return record(0x203, place + struct.pack("<d", value))


def begin(kind):
    return record(0x809, struct.pack("<HHHHII", 0x600, kind, 0x0DBB, 1996, 0, 6))


def sheet_records(rows):
    cells = b"".join(cell(row, column, value) for row, values in enumerate(rows)
                     for column, value in enumerate(values) if value is not None)
    return begin(0x10) + cells + record(0x0A, b"")


def stream(title, rows):
    name = struct.pack("<BB", len(title), 1) + title.encode("utf-16-le")
    head = begin(5) + record(0xE0, bytes(20))
    sheet_at = len(head) + 4 + 6 + len(name) + 4
    book = head + record(0x85, struct.pack("<IH", sheet_at, 0) + name) + record(0x0A, b"")
    assert len(book) == sheet_at
    whole = book + sheet_records(rows)
    whole = whole.ljust(SMALLEST_STREAM, b"\0")
    return whole.ljust(-(-len(whole) // SECTOR) * SECTOR, b"\0")


def directory_entry(name, kind, start, size, child=FREE):
    text = (name + "\0").encode("utf-16-le") if name else b""
    return (text.ljust(64, b"\0") + struct.pack("<HBB", len(text), kind, 1)
            + struct.pack("<III", FREE, FREE, child) + bytes(36)
            + struct.pack("<IQ", start, size))


def xls_bytes(title, rows):
    content = stream(title, rows)
    sectors = len(content) // SECTOR
    chain = [FAT_SECTOR, END_OF_CHAIN] + list(range(3, sectors + 2)) + [END_OF_CHAIN]
    table = struct.pack("<128I", *(chain + [FREE] * (128 - len(chain))))
    header = (bytes.fromhex("D0CF11E0A1B11AE1") + bytes(16)
              + struct.pack("<HHHHH", 0x3E, 3, 0xFFFE, 9, 6) + bytes(6)
              + struct.pack("<IIIIIIIII", 0, 1, 1, 0, SMALLEST_STREAM, END_OF_CHAIN, 0,
                            END_OF_CHAIN, 0)
              + struct.pack("<109I", 0, *[FREE] * 108))
    directory = (directory_entry("Root Entry", 5, END_OF_CHAIN, 0, child=1)
                 + directory_entry("Workbook", 2, 2, len(content))
                 + directory_entry("", 0, 0, 0) * 2)
    return header + table + directory + content
