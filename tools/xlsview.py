#!/usr/bin/python3
"""Prints the active sheet of an .xls workbook as a table for a terminal.

Usage: /usr/bin/python3 tools/xlsview.py BOOK.xls

Reads the file with python3-xlrd (an independent reader, not the plug-in's workbook engine) and
prints every row up to the last that holds text, leaving out columns that are empty in every row.
Wide characters (Chinese) take two terminal cells, ambiguous ones such as × and Φ one, as most
terminals outside East Asian locales show them. A cell merged across columns (the title) does not
widen its first column.
"""
import sys
import unicodedata

import xlrd


def width(text):
    return sum(2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text)


def text_of(cell):
    if cell.ctype == xlrd.XL_CELL_NUMBER and cell.value == int(cell.value):
        return str(int(cell.value))
    return str(cell.value) if cell.ctype != xlrd.XL_CELL_EMPTY else ""


def main(path):
    book = xlrd.open_workbook(path, formatting_info=True)
    active = next((i for i in range(book.nsheets) if book.sheet_by_index(i).sheet_selected), 0)
    sheet = book.sheet_by_index(active)
    rows = [[text_of(sheet.cell(r, c)) for c in range(sheet.ncols)] for r in range(sheet.nrows)]
    while rows and not any(rows[-1]):
        rows.pop()
    columns = [c for c in range(sheet.ncols) if any(row[c] for row in rows)]
    spanning = {(r, c) for (r, _, c, c_end) in sheet.merged_cells if c_end - c > 1}
    widths = {c: max(width(row[c]) if (r, c) not in spanning else 0 for r, row in enumerate(rows)) for c in columns}
    print("%s, sheet %s (%d rows)" % (path, sheet.name, len(rows)))
    for row in rows:
        print("  ".join(row[c] + " " * max(0, widths[c] - width(row[c])) for c in columns).rstrip())


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    try:
        main(sys.argv[1])
    except Exception as error:  # a file xlrd cannot read is reported, not thrown
        sys.exit("xlsview: %s: %s" % (sys.argv[1], error))
