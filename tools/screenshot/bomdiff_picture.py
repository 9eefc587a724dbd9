#!/usr/bin/env python3
"""Makes the README's picture of a change workbook: vornadel-bomdiff's -o for a generated mould
exported before and after a design change, as Gnumeric prints the workbook.

    tools/screenshot/bomdiff_picture.py [--out PNG] [--dpi N]

1. Writes the mould M30 with build/bin/moldgen (30 bodies, seed 1) and a changed copy: the sprue
   bush (唧嘴) removed, two more guide pillars (导柱), the locating ring (定位圈) bought from
   another supplier, a screw of a new size (M8×20).
2. Exports both through the runner (build/bin/vornadel-host, press button01) into one folder, as
   M30标准件BOM.xls and M30标准件BOM-1.xls, and compares them with
   `build/bin/vornadel-bomdiff FOLDER -o 变更单.xls`.
3. Prints the workbook to PDF with Gnumeric (ssconvert), renders the first page with Ghostscript
   and crops it to the sheet.

Needs the build (moldgen, vornadel-host, vornadel-bomdiff); installs what is missing of gnumeric
(ssconvert) and ghostscript (gs) with apt-get. Default output: docs/change-list.png. Nothing here is a test; the tests do not use it."""
import argparse
import json
import os
import shutil
import struct
import subprocess
import sys
import zlib

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from readme_picture import ROOT, run, sheet_box  # noqa: E402

WORK = os.path.join(ROOT, "build", "bomdiff-picture")
BIN = os.path.join(ROOT, "build", "bin")


def changed(part):
    """The mould after the design change."""
    bodies, pillar, screw = [], None, None
    for body in part["bodies"]:
        attributes = body["attributes"]
        name = attributes.get("名称", "")
        if name == "唧嘴":
            continue
        if name == "定位圈":
            attributes["供应商"] = "盘起工业"
        if name == "导柱" and pillar is None:
            pillar = json.loads(json.dumps(body))
        if name == "内六角螺钉" and screw is None:
            screw = json.loads(json.dumps(body))
        bodies.append(body)
    for i in range(2):
        copy = json.loads(json.dumps(pillar))
        copy["tag"] = 99100 + i
        copy["at"][0] += 500 + 40 * i
        bodies.append(copy)
    screw["tag"] = 99001
    screw["attributes"]["类型"] = "M8×20"
    bodies.append(screw)
    part["bodies"] = bodies
    return part


def export(part_file):
    run(os.path.join(BIN, "vornadel-host"), "run", part_file, "--drive", "C=" + os.path.join(WORK, "c"),
        "--localappdata", "C:\\app", "--time", "2000-01-01T00:00:00", "-e", "folder C:\\out",
        "-e", "press button01", "-e", "close", stdout=subprocess.DEVNULL)


def read_pnm(path):
    """Width, height and pixel bytes of a binary PGM or PPM as Ghostscript writes it (a comment
    line in its header included)."""
    with open(path, "rb") as f:
        data = f.read()
    fields, position = [], 0
    while len(fields) < 4:  # magic, width, height, maximum
        while data[position:position + 1].isspace():
            position += 1
        if data[position:position + 1] == b"#":
            position = data.index(b"\n", position)
            continue
        start = position
        while not data[position:position + 1].isspace():
            position += 1
        fields.append(data[start:position])
    return int(fields[1]), int(fields[2]), data[position + 1:]


def write_png(path, width, height, rgb):
    """An 8-bit RGB PNG of the pixels."""
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body) & 0xFFFFFFFF)
    rows = b"".join(b"\0" + rgb[y * width * 3:(y + 1) * width * 3] for y in range(height))
    with open(path, "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
                chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def picture(workbook, out, dpi):
    pdf = os.path.join(WORK, "changes.pdf")
    # Gnumeric's printing says "gnm_style_conditions_eval: assertion 'sc != NULL' failed" for
    # every .xls, the export's BOM too; the PDF is whole.
    run("ssconvert", "-T", "Gnumeric_pdf:pdf_assistant", workbook, pdf, stderr=subprocess.DEVNULL)
    gs = ["gs", "-q", "-dNOPAUSE", "-dBATCH", "-dFirstPage=1", "-dLastPage=1", "-r%d" % dpi,
          "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4"]
    pgm, ppm = os.path.join(WORK, "page.pgm"), os.path.join(WORK, "page.ppm")
    run(*gs, "-sDEVICE=pgmraw", "-o", pgm, pdf)
    width, height, grey = read_pnm(pgm)
    with open(pgm, "wb") as f:  # without the comment, as sheet_box reads it
        f.write(b"P5\n%d %d\n255\n" % (width, height) + grey)
    left, top, box_width, box_height = sheet_box(pgm, dpi)
    run(*gs, "-sDEVICE=ppmraw", "-o", ppm, pdf)
    page_width, _, rgb = read_pnm(ppm)
    crop = b"".join(rgb[((top + y) * page_width + left) * 3:((top + y) * page_width + left + box_width) * 3]
                    for y in range(box_height))
    write_png(out, box_width, box_height, crop)
    print("%s: %d x %d pixels, %d KiB" % (out, box_width, box_height, os.path.getsize(out) // 1024))


def set_up():
    """The Debian packages this picture needs, installed when missing (as dev.sh does)."""
    missing = [package for program, package in (("ssconvert", "gnumeric"), ("gs", "ghostscript"))
               if shutil.which(program) is None]
    if missing:
        sudo = [] if os.geteuid() == 0 else ["sudo"]
        run(*sudo, "apt-get", "update", "-qq")
        run(*sudo, "apt-get", "install", "-y", "-qq", "--no-install-recommends", *missing,
            env=dict(os.environ, DEBIAN_FRONTEND="noninteractive"))


def main():
    parser = argparse.ArgumentParser(description="Makes the README's picture of a change workbook.")
    parser.add_argument("--out", default=os.path.join(ROOT, "docs", "change-list.png"), help="the PNG to write")
    parser.add_argument("--dpi", type=int, default=110, help="resolution of the page (default 110)")
    args = parser.parse_args()
    set_up()
    shutil.rmtree(WORK, ignore_errors=True)
    os.makedirs(os.path.join(WORK, "c", "out"))
    before, after = os.path.join(WORK, "before.part.json"), os.path.join(WORK, "after.part.json")
    run(os.path.join(BIN, "moldgen"), "--bodies", "30", "--seed", "1", "--leaf", "M30", "--out", before)
    with open(before, encoding="utf-8") as f:
        part = json.load(f)
    with open(after, "w", encoding="utf-8") as f:
        json.dump(changed(part), f, ensure_ascii=False)
    export(before)
    export(after)
    workbook = os.path.join(WORK, "变更单.xls")
    run(os.path.join(BIN, "vornadel-bomdiff"), os.path.join(WORK, "c", "out", "M30"), "-o", workbook)
    picture(workbook, os.path.abspath(args.out), args.dpi)


if __name__ == "__main__":
    main()
