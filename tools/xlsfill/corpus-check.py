#!/usr/bin/python3
"""Fills every BIFF8 workbook of a folder the way the BOM export does and checks the result in xlrd.

Usage: /usr/bin/python3 tools/xlsfill/corpus-check.py XLSFILL FOLDER [ROWS]

For each *.xls in FOLDER that python3-xlrd opens as BIFF8: xlsfill writes the 11 head cells and
ROWS (default 3) part rows of 12 cells from row 6 into the active sheet, or, when that is a chart or
another sheet that cannot be written, into the first worksheet; xlrd then reads the result, which
must equal the input but for the written cells, which must hold their text as strings.
Prints one line per workbook (accepted, refused with xlsfill's message, not BIFF8, or a failure)
and the counts; the exit status is 1 when a filled workbook does not read back as it should.
"""
import contextlib
import io
import json
import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "xls"))
import xlrd  # noqa: E402
from xlrd_dump import dump  # noqa: E402

HEAD = [(1, 4), (1, 8), (2, 1), (2, 11), (4, 8), (1, 1), (3, 1), (4, 1), (3, 4), (2, 8), (3, 8)]
PART_COLUMNS = [0, 1, 3, 5, 7, 9, 11, 13, 14, 15, 16, 17]


def bom_cells(rows):
    cells = {}
    for k, at in enumerate(HEAD):
        cells[at] = u"表头%d" % k
    for i in range(rows):
        for k, col in enumerate(PART_COLUMNS):
            cells[(6 + i, col)] = u"%d" % (i + 1) if k == 0 else u"零件%d-%d" % (i + 1, col)
    return cells


def open_book(path):
    """xlrd's book, or why xlrd cannot read all of it."""
    try:
        with open(os.devnull, "w") as quiet:
            return xlrd.open_workbook(path, formatting_info=True, ragged_rows=True, logfile=quiet)
    except Exception as error:
        return "xlrd: %s: %s" % (type(error).__name__, error)


def fill(xlsfill, path, out, lines, options=()):
    filled = subprocess.run([xlsfill] + list(options) + [path, out], input=lines.encode("utf-8"),
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    return filled.returncode, filled.stderr.decode("utf-8", "replace").strip().split(": ", 2)[-1]


def same(a, b):
    """Cells compare by their JSON text, where a NaN equals itself."""
    return json.dumps(a) == json.dumps(b)


def differences(before, after, written):
    """What differs between the dumps apart from the written cells of one sheet; [] when nothing."""
    problems = []
    for key in ("names", "xf_count", "font_count", "format_count", "active"):
        if before[key] != after[key]:
            problems.append("%s changed" % key)
    if len(before["sheets"]) != len(after["sheets"]):
        return problems + ["number of sheets changed"]
    touched = 0
    for b, a in zip(before["sheets"], after["sheets"]):
        if same(b, a):
            continue
        old = {(c[0], c[1]): c for c in b["cells"]}
        new = {(c[0], c[1]): c for c in a["cells"]}
        if not any(at in new and new[at][3] == text and new[at][2] == xlrd.XL_CELL_TEXT
                   for at, text in written.items()):
            problems.append("sheet %r changed but holds none of the written cells" % b["name"])
            continue
        touched += 1
        for key in ("name", "visibility", "merged", "colinfo", "default_row_height"):
            if b[key] != a[key]:
                problems.append("%s of sheet %r changed" % (key, b["name"]))
        for at in set(old) | set(new):
            if at in written:
                cell = new.get(at)
                if cell is None or cell[2] != xlrd.XL_CELL_TEXT or cell[3] != written[at]:
                    problems.append("written cell %r reads %r" % (at, cell))
                elif at in old and old[at][4] != cell[4]:
                    problems.append("written cell %r lost its format %d" % (at, old[at][4]))
            elif not same(old.get(at), new.get(at)):
                problems.append("cell %r was %r, is %r" % (at, old.get(at), new.get(at)))
        for row, info in b["rowinfo"].items():
            if a["rowinfo"].get(row) != info:
                problems.append("row %s of sheet %r changed" % (row, b["name"]))
    if touched != 1:
        problems.append("%d sheets hold the written cells" % touched)
    return problems


def main():
    xlsfill, folder = sys.argv[1], sys.argv[2]
    rows = int(sys.argv[3]) if len(sys.argv) > 3 else 3
    written = bom_cells(rows)
    lines = "".join("%d\t%d\t%s\n" % (r, c, t) for (r, c), t in sorted(written.items()))
    counts = {}
    failed = False
    with tempfile.TemporaryDirectory() as work:
        out = os.path.join(work, "out.xls")
        for name in sorted(os.listdir(folder)):
            if not name.lower().endswith(".xls"):
                continue
            path = os.path.join(folder, name)
            book = open_book(path)
            if isinstance(book, str) or book.biff_version != 80:
                result = "not BIFF8 (%s)" % (book if isinstance(book, str) else book.biff_version)
            else:
                status, message = fill(xlsfill, path, out, lines)
                note = ""
                if status != 0 and "only worksheets can be written" in message:
                    # Every sheet in BOUNDSHEET order; xlrd maps each to its worksheet or -1.
                    first = book._all_sheets_map.index(0)
                    note = " (active sheet: %s; written into sheet %d)" % (message, first)
                    status, message = fill(xlsfill, path, out, lines, ["--sheet", str(first)])
                if status != 0:
                    result = "refused: %s" % message
                else:
                    try:
                        with contextlib.redirect_stdout(io.StringIO()):  # xlrd's warnings
                            problems = differences(dump(path), dump(out), written)
                    except Exception as error:
                        problems = ["xlrd: %s: %s" % (type(error).__name__, error)]
                    result = "FAILED: %s" % "; ".join(problems[:5]) if problems else "accepted" + note
                    failed = failed or bool(problems)
                if os.path.exists(out):
                    os.remove(out)
            print("%s: %s" % (name, result))
            kind = result if result.startswith(("refused", "FAILED")) else result.split(" (")[0]
            kind = kind.split(" (active sheet")[0]
            counts[kind] = counts.get(kind, 0) + 1
    print()
    for kind, count in sorted(counts.items(), key=lambda item: -item[1]):
        print("%5d  %s" % (count, kind))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
