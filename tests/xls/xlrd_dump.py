#!/usr/bin/python3
"""Dumps a workbook as JSON through xlrd, the independent reader the xls tests compare with.

Usage: /usr/bin/python3 xlrd_dump.py BOOK.xls
Prints {"sheets": [...], "names": [...], "xf_count": n, ...}; every cell that xlrd reports
(values, types and XF indexes), merged ranges, column and row formats per sheet. Any error of
xlrd (a file it cannot open) ends the program with status 1 and the message on stderr.
"""
import json
import sys

import xlrd


def dump(path):
    book = xlrd.open_workbook(path, formatting_info=True, ragged_rows=True)
    sheets = []
    for index in range(book.nsheets):
        sheet = book.sheet_by_index(index)
        cells = []
        for r in range(sheet.nrows):
            for c in range(sheet.row_len(r)):
                cell = sheet.cell(r, c)
                if cell.ctype == xlrd.XL_CELL_EMPTY:
                    continue
                cells.append([r, c, cell.ctype, cell.value, cell.xf_index])
        sheets.append({
            "name": sheet.name,
            "visibility": sheet.visibility,
            "nrows": sheet.nrows,
            "ncols": sheet.ncols,
            "cells": cells,
            "merged": sorted(list(m) for m in sheet.merged_cells),
            "colinfo": {str(c): [i.width, i.xf_index, i.hidden] for c, i in sorted(sheet.colinfo_map.items())},
            "rowinfo": {str(r): [i.height, i.has_default_height, i.xf_index]
                        for r, i in sorted(sheet.rowinfo_map.items())},
            "default_row_height": sheet.default_row_height,
        })
    names = sorted([n.name, n.scope, n.raw_formula.hex()]
                   for n in book.name_obj_list)
    return {
        "sheets": sheets,
        "names": names,
        "active": [i for i in range(book.nsheets) if book.sheet_by_index(i).sheet_selected],
        "xf_count": len(book.xf_list),
        "font_count": len(book.font_list),
        "format_count": len(book.format_map),
    }


if __name__ == "__main__":
    try:
        result = dump(sys.argv[1])
    except Exception as error:  # any failure of the reader is a failure of the file
        print("xlrd: %s: %s" % (type(error).__name__, error), file=sys.stderr)
        sys.exit(1)
    json.dump(result, sys.stdout, ensure_ascii=False, sort_keys=True)
    print()
