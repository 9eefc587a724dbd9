#!/usr/bin/python3
"""Reads back one library's book of the workbook job for bench_xls_compare (bench/README.md),
with xlrd as the independent reader, and prints one line: how many cells of the job hold their
text, and how much of the template's active sheet is kept (cell formats, merged cells, column
widths) and whether every sheet is still there.

    check-output.py JOB.tsv TEMPLATE.xls OUT.xls

Exit status 0 when every cell of the job holds its text, 1 otherwise."""
import sys

import xlrd


def active_sheet(book):
    for sheet in book.sheets():
        if sheet.sheet_visible:  # the sheet shown when the book was saved
            return sheet
    return book.sheet_by_index(0)


def style(book, sheet, row, col):
    """What the cell looks like: font, alignment, borders, fill; None outside the sheet."""
    if row >= sheet.nrows or col >= sheet.ncols:
        return None
    xf = book.xf_list[sheet.cell_xf_index(row, col)]
    font = book.font_list[xf.font_index]
    b = xf.border
    return (font.name, font.height, font.bold, xf.alignment.hor_align, xf.alignment.vert_align,
            xf.alignment.text_wrapped, b.left_line_style, b.right_line_style, b.top_line_style,
            b.bottom_line_style, xf.background.pattern_colour_index)


def main(job_path, template_path, out_path):
    job = []
    with open(job_path, encoding="utf-8") as f:
        for line in f:
            row, col, text = line.rstrip("\n").split("\t", 2)
            job.append((int(row), int(col), text))
    tbook = xlrd.open_workbook(template_path, formatting_info=True)
    try:
        obook = xlrd.open_workbook(out_path, formatting_info=True)
    except Exception as e:  # a book xlrd cannot read at all
        print("unreadable: %s" % e)
        return 1
    tsheet, osheet = active_sheet(tbook), active_sheet(obook)

    def text(row, col):
        if row >= osheet.nrows or col >= osheet.ncols:
            return None
        return osheet.cell_value(row, col)

    cells = sum(1 for row, col, value in job if text(row, col) == value)
    job_cells = {(row, col) for row, col, _ in job}
    kept = [(r, c) for r in range(tsheet.nrows) for c in range(tsheet.ncols) if (r, c) not in job_cells]
    formats = sum(1 for r, c in kept if style(obook, osheet, r, c) == style(tbook, tsheet, r, c))
    written = [(r, c) for r, c in job_cells if r < tsheet.nrows and c < tsheet.ncols]
    written_formats = sum(1 for r, c in written if style(obook, osheet, r, c) == style(tbook, tsheet, r, c))
    merged = len(set(tsheet.merged_cells) & set(osheet.merged_cells))
    widths = sum(1 for c, info in tsheet.colinfo_map.items()
                 if c in osheet.colinfo_map and osheet.colinfo_map[c].width == info.width)
    sheets = [s.name for s in tbook.sheets()] == [s.name for s in obook.sheets()]
    print("cells %d/%d, formats %d/%d, head formats %d/%d, merged %d/%d, widths %d/%d, sheets %s" % (
        cells, len(job), formats, len(kept), written_formats, len(written), merged, len(tsheet.merged_cells),
        widths, len(tsheet.colinfo_map), "kept" if sheets else "lost"))
    return 0 if cells == len(job) else 1


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
