#!/usr/bin/env python3
"""Makes the help document of the guide: make_help.py [--pictures] [GUIDE [OUT]]

The chapters stand in the order of the contents page, README.md. The document is Rich Text under the
name of a word processor's, so that every word processor opens it. Of Markdown it knows what the
guide uses: headings, paragraphs, lists, tables, quotes, indented code, bold, code, links, pictures.
"""
import argparse
import re
import struct
from pathlib import Path

FOLDER = Path(__file__).resolve().parent.parent / "docs" / "guide"
DOCUMENT = "云杉学业册帮助文件.doc"

TEXT_WIDTH = 9072  # of a page, in twips
HEAD = (r"{\rtf1\ansi\ansicpg936\uc1\deff0\deflang2052\deflangfe2052"
        r"{\fonttbl{\f0\fnil\fcharset134 Microsoft YaHei;}{\f1\fmodern\fcharset134 SimSun;}}"
        r"{\colortbl;\red31\green77\blue58;\red238\green243\blue240;\red90\green90\blue90;}"
        r"{\stylesheet{\s0\f0\fs21 Normal;}{\s1\outlinelevel0\b\fs36 heading 1;}"
        r"{\s2\outlinelevel1\b\fs28 heading 2;}{\s3\outlinelevel2\b\fs24 heading 3;}}"
        r"{\info{\title %s}}\paperw11906\paperh16838\margl1417\margr1417\margt1417\margb1417"
        r"\viewkind1\f0\fs21 ")
PARAGRAPH = r"\pard\plain\s0\f0\fs21\sa120\sl300\slmult1 "
HEADINGS = {
    1: r"\pard\plain\s1\outlinelevel0\keepn\f0\b\fs36\cf1\sb0\sa240 ",
    2: r"\pard\plain\s2\outlinelevel1\keepn\f0\b\fs28\cf1\sb280\sa140 ",
    3: r"\pard\plain\s3\outlinelevel2\keepn\f0\b\fs24\cf1\sb200\sa100 ",
}
LIST_INDENT = 360

INLINE = re.compile(r"\*\*(?P<bold>.+?)\*\*|`(?P<code>[^`]+)`|(?<!!)\[(?P<link>[^\]]+)\]\([^)]*\)")
PICTURE = re.compile(r"^!\[(?P<caption>[^\]]*)\]\((?P<file>[^)]+)\)$")
ITEM = re.compile(r"^(?P<indent> *)(?P<mark>-|\d+\.) +(?P<text>.*)$")
HEADING = re.compile(r"^(?P<level>#{1,3}) +(?P<text>.*)$")


def escaped(text):
    """The text in ASCII: what is beyond it as \\uN? in UTF-16 units, which are signed."""
    units = []
    for sign in text:
        if sign in "\\{}":
            units.append("\\" + sign)
        elif ord(sign) < 128:
            units.append(sign)
        else:
            pairs = sign.encode("utf-16-le")
            units += [f"\\u{unit}?" for (unit,) in struct.iter_unpack("<h", pairs)]
    return "".join(units)


def inline(text):
    """Text with bold, code and links; a link keeps its words only."""
    text = text.replace(r"\|", "|")
    parts = []
    end = 0
    for match in INLINE.finditer(text):
        parts.append(escaped(text[end:match.start()]))
        end = match.end()
        if match["bold"] is not None:
            parts.append(r"{\b " + inline(match["bold"]) + "}")
        elif match["code"] is not None:
            parts.append(r"{\f1 " + escaped(match["code"]) + "}")
        else:
            parts.append(inline(match["link"]))
    return "".join(parts) + escaped(text[end:])


def heading(level, text):
    return HEADINGS[level] + inline(text) + "\\par\n"


def paragraph(text):
    return PARAGRAPH + inline(text) + "\\par\n"


def quote(text):
    return PARAGRAPH + r"\li280\ri280\cbpat2 " + inline(text) + "\\par\n"


def code(lines):
    return "".join(PARAGRAPH + r"\li480\f1 " + escaped(line) + "\\par\n" for line in lines)


def item(match):
    level = 1 + len(match["indent"]) // 2
    mark = r"\bullet " if match["mark"] == "-" else match["mark"]
    places = rf"\li{LIST_INDENT * level}\fi-{LIST_INDENT}\tx{LIST_INDENT * level}\sa60 "
    return PARAGRAPH + places + mark + r"\tab " + inline(match["text"]) + "\\par\n"


def cells_of(line):
    cells = re.split(r"(?<!\\)\|", line.strip().strip("|"))
    return [cell.strip() for cell in cells]


def weight(text):
    """How wide a text stands: a Chinese character takes the place of two Latin ones."""
    return sum(1 if ord(sign) < 256 else 2 for sign in text)


def column_edges(rows):
    """Columns share the width as their longest cells need, a long one less than in proportion."""
    wants = [max(4, min(60, max(weight(row[i]) for row in rows))) for i in range(len(rows[0]))]
    total = sum(wants)
    edges = []
    place = 0
    for want in wants:
        place += want
        edges.append(TEXT_WIDTH * place // total)
    return edges


def table_row(cells, edges, is_head):
    sides = "".join(rf"\clbrdr{side}\brdrs\brdrw8" for side in "tlbr")
    shade = r"\clcbpat2" if is_head else ""
    row = r"\trowd\trgaph100\trkeep" + (r"\trhdr" if is_head else "")
    row += "".join(rf"{sides}{shade}\cellx{edge}" for edge in edges) + "\n"
    look = r"\pard\plain\intbl\f0\fs19\sb30\sa30" + (r"\b " if is_head else " ")
    for cell in cells:
        row += look + inline(cell) + "\\cell\n"
    return row + "\\row\n"


def table(lines):
    rows = [cells_of(line) for line in lines]
    del rows[1]  # the rule below the heading
    edges = column_edges(rows)
    made = [table_row(row, edges, index == 0) for index, row in enumerate(rows)]
    return "".join(made) + r"\pard\plain\fs10\par" + "\n"


def picture(path, caption):
    data = path.read_bytes()
    width, height = struct.unpack(">II", data[16:24])
    shown = min(TEXT_WIDTH, width * 15)
    return (r"\pard\plain\qc\sa60 {\pict\pngblip"
            rf"\picw{width}\pich{height}\picwgoal{shown}\pichgoal{shown * height // width}" "\n"
            + data.hex() + "}\\par\n" + PARAGRAPH + r"\qc\fs18\cf3 " + inline(caption) + "\\par\n")


class Chapter:
    """Turns the lines of one file into Rich Text."""

    def __init__(self, path, with_pictures):
        self.lines = path.read_text(encoding="utf-8").splitlines()
        self.folder = path.parent
        self.with_pictures = with_pictures
        self.place = 0

    def run_of(self, belongs):
        """The lines from here on as long as they belong together."""
        start = self.place
        while self.place < len(self.lines) and belongs(self.lines[self.place]):
            self.place += 1
        return self.lines[start:self.place]

    def block(self):
        line = self.lines[self.place]
        if line.startswith("|"):
            return table(self.run_of(lambda each: each.startswith("|")))
        if line.startswith(">"):
            lines = self.run_of(lambda each: each.startswith(">"))
            return quote("".join(each[1:].strip() for each in lines))
        if line.startswith("    "):
            return code(each[4:] for each in self.run_of(lambda each: each.startswith("    ")))
        self.place += 1
        return self.single_line(line)

    def single_line(self, line):
        if match := HEADING.match(line):
            return heading(len(match["level"]), match["text"])
        if match := PICTURE.match(line):
            if not self.with_pictures:
                return ""
            return picture(self.folder / match["file"], match["caption"])
        if match := ITEM.match(line):
            return item(match)
        return paragraph(line) if line.strip() else ""

    def rich_text(self):
        made = []
        while self.place < len(self.lines):
            made.append(self.block())
        return "".join(made)


def chapter_files(guide):
    """The contents page and what it links to, in its order."""
    contents = guide / "README.md"
    links = re.findall(r"\]\(([^)]+\.md)\)", contents.read_text(encoding="utf-8"))
    return [contents] + [guide / link for link in links]


def make_help(guide, with_pictures):
    chapters = [Chapter(path, with_pictures) for path in chapter_files(guide)]
    body = "\\page\n".join(chapter.rich_text() for chapter in chapters)
    return HEAD.replace("%s", escaped("云杉学业册使用指南")) + "\n" + body + "}\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--pictures", action="store_true", help="with the pictures of the guide")
    parser.add_argument("guide", nargs="?", type=Path, default=FOLDER)
    parser.add_argument("out", nargs="?", type=Path)
    arguments = parser.parse_args()
    out = arguments.out or arguments.guide / DOCUMENT
    out.write_text(make_help(arguments.guide, arguments.pictures), encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()
