#!/usr/bin/env python3
"""Times the product against a bare program that does only the same reading, arithmetic and writing.

    compare.py --bound DIR [--programs DIR] [--rounds 7] [--only WHAT]

The bound's folder holds gen.py (makes its libraries and a workbook), floor.cpp (scores) and
xlsx_floor.cpp (imports a workbook, writes one). Both sides run in turns in one go, each on a fresh
copy; ratios are taken within a round, and their median is printed.
"""
import argparse
import re
import shutil
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

# An exam that bench_scoring has scored.
SCORED_EXAM = "第 1次考试"
# The one that it has yet to score.
PENDING_EXAM = "待算考试"
SIZES = {"A": 1200, "B": 3000, "C": 12000}


def run(*command):
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True)
    if done.returncode:
        sys.exit(f"{command}: {done.stdout}{done.stderr}")
    return done.stdout + done.stderr


def figure(text, name):
    return float(re.search(rf"\b{name}=([\d.]+)", text).group(1))


def fresh(source, folder, name):
    copy = folder / name
    copy.unlink(missing_ok=True)
    shutil.copyfile(source, copy)
    # Both sides start with a warm page cache and nothing of the copy left to write.
    run("sync", copy)
    return copy


def bound_library(bound, floor, size, folder):
    path = folder / f"bound-{size}.db"
    path.unlink(missing_ok=True)
    run(sys.executable, bound / "gen.py", "library", size, path)
    run(floor, "score", path, "*", "journal=delete")
    return path


def compare_scoring(options, floor, folder):
    bench = options.programs / "bench_scoring"
    for size, students in SIZES.items():
        theirs = bound_library(options.bound, floor, size, folder)
        ours = folder / f"ours-{size}.CJK"
        run(bench, "make", students, ours)
        times, bounds, ratios, peak = [], [], [], 0
        for _ in range(options.rounds):
            text = run(floor, "score", fresh(theirs, folder, "t.db"), "待算考试",
                       f"journal={options.journal}", "sync=full")
            bounds.append(figure(text, "total"))
            text = run(bench, "run", fresh(ours, folder, "o.CJK"))
            times.append(figure(text, "total"))
            peak = max(peak, figure(text, "peak_mb"))
            ratios.append(times[-1] / bounds[-1])
        report(f"scoring {students}", times, bounds, ratios, f", peak {peak:.0f} MB")
        theirs.unlink()
        ours.unlink()


def compare_import(options, floor, reader, folder):
    book = folder / "book.xlsx"
    run(sys.executable, options.bound / "gen.py", "xlsx", 3000, book)
    theirs = bound_library(options.bound, floor, "B", folder)
    times, bounds, ratios = [], [], []
    for _ in range(options.rounds):
        text = run(reader, "import", book, fresh(theirs, folder, "t.db"), "导入", 42)
        bounds.append(figure(text, "total"))
        text = run(options.programs / "bench_import", book)
        times.append(float(re.search(r"([\d.]+) ms", text).group(1)))
        ratios.append(times[-1] / bounds[-1])
    report("import 3000 x 12", times, bounds, ratios)


def compare_writing(options, writer, folder):
    """The bound as a whole process against the first workbook that a process of ours writes."""
    times, bounds, ratios, peak = [], [], [], 0
    for _ in range(options.rounds):
        begin = time.perf_counter()
        run(writer, "write", folder / "bound.xlsx")
        bounds.append((time.perf_counter() - begin) * 1000)
        text = run(options.programs / "bench_writer", folder / "ours.xlsx")
        times.append(figure(text, "first"))
        peak = max(peak, figure(text, "peak_mb"))
        ratios.append(times[-1] / bounds[-1])
    report("writing 3000 x 30 and 40 tables", times, bounds, ratios, f", peak {peak:.0f} MB")


def compare_blocks(options, folder):
    """The score export's workbook, saved, against libxlsxwriter alone; both as built here."""
    for charts in ([], ["charts"]):
        times, bounds, ratios, filled, peak = [], [], [], [], 0
        for _ in range(options.rounds):
            begin = time.perf_counter()
            run(options.programs / "bare_blocks", folder / "bound.xlsx", *charts)
            bounds.append((time.perf_counter() - begin) * 1000)
            text = run(options.programs / "bench_blocks", folder / "ours.xlsx", *charts)
            times.append(figure(text, "saved"))
            filled.append(figure(text, "filled"))
            peak = max(peak, figure(text, "peak_mb"))
            ratios.append(times[-1] / bounds[-1])
        report(" ".join(["saving 3000 blocks", *charts]), times, bounds, ratios,
               f", filled in {statistics.median(filled):.0f} ms, peak {peak:.0f} MB")


def compare_reports(options, floor, folder):
    """Twelve tables of one exam. The bound's tables differ a little: a row for each stream besides the
    classes, differences from the mean and Z and T averages where ours have lines and rank bands."""
    bench = options.programs / "bench_report"
    tables = folder / "tables"
    tables.mkdir()
    for size, students in SIZES.items():
        theirs = bound_library(options.bound, floor, size, folder)
        ours = folder / f"ours-{size}.CJK"
        run(options.programs / "bench_scoring", "make", students, ours)
        exam = sqlite3.connect(theirs).execute("select 考试名称 from 成绩表").fetchone()[0]
        times, bounds, ratios, slowest = [], [], [], 0
        for _ in range(options.rounds):
            bounds.append(figure(run(floor, "reports", theirs, exam, tables), "total"))
            text = run(bench, "tables", ours, SCORED_EXAM)
            times.append(figure(text, "total"))
            slowest = max(slowest, figure(text, "slowest"))
            ratios.append(times[-1] / bounds[-1])
        report(f"twelve reports of {students}", times, bounds, ratios,
               f", slowest single report {slowest:.1f} ms")
        if size == "B":
            text = run(bench, "analyze", ours, SCORED_EXAM, tables)
            print(f"comprehensive analysis of {students}, saved: {figure(text, 'total'):.0f} ms, "
                  f"peak {figure(text, 'peak_mb'):.0f} MB", flush=True)
        theirs.unlink()
        ours.unlink()


def compare_growth(options, folder):
    """One exam of a large library against the same exam alone: the others must cost nothing."""
    students = SIZES["C"]
    alone, among = folder / "alone.CJK", folder / "among.CJK"
    run(options.programs / "bench_scoring", "make", students, alone, 0)
    run(options.programs / "bench_scoring", "make", students, among, 59)
    works = {"scoring": lambda path: run(options.programs / "bench_scoring", "run",
                                         fresh(path, folder, "o.CJK")),
             "browsing": lambda path: run(options.programs / "bench_browse", path, PENDING_EXAM)}
    for what, work in works.items():
        times, bounds, ratios = [], [], []
        for _ in range(options.rounds):
            bounds.append(figure(work(alone), "total"))
            times.append(figure(work(among), "total"))
            ratios.append(times[-1] / bounds[-1])
        report(f"{what} one exam of 60 against it alone, {students}", times, bounds, ratios)


def report(what, times, bounds, ratios, more=""):
    middle = statistics.median
    print(f"{what}: {middle(times):.1f} ms, bound {middle(bounds):.1f} ms, "
          f"ratio {middle(ratios):.2f}{more}", flush=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--bound", type=Path, required=True)
    parser.add_argument("--programs", type=Path,
                        default=Path(__file__).resolve().parent.parent / "build/release/bin")
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--journal", default="delete", choices=["delete", "wal"])
    parser.add_argument("--only", choices=["writing", "scoring", "import", "reports", "growth", "blocks"])
    options = parser.parse_args()
    options.bound = options.bound.resolve()
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        floor = folder / "floor"
        run("g++", "-O2", "-std=c++20", options.bound / "floor.cpp", "-lsqlite3", "-o", floor)
        workbooks = folder / "xlsx_floor"
        run("g++", "-O2", "-std=c++20", options.bound / "xlsx_floor.cpp", "-lsqlite3", "-lexpat",
            "-lz", "-o", workbooks)
        comparisons = {"writing": lambda: compare_writing(options, workbooks, folder),
                       "scoring": lambda: compare_scoring(options, floor, folder),
                       "import": lambda: compare_import(options, floor, workbooks, folder),
                       "reports": lambda: compare_reports(options, floor, folder),
                       "growth": lambda: compare_growth(options, folder),
                       "blocks": lambda: compare_blocks(options, folder)}
        for what, compare in comparisons.items():
            if options.only in (None, what):
                compare()


if __name__ == "__main__":
    main()
