#!/usr/bin/env python3
"""Makes the README's picture of the exported BOM: the main job's export of the bundled sample
mould A100 as LibreOffice shows the workbook.

    tools/screenshot/readme_picture.py [--out PNG] [--dpi N]

1. Installs what is missing with apt-get: LibreOffice Calc (libreoffice-calc-nogui, enough
   headless), poppler-utils (pdftoppm) and a CJK font (fonts-noto-cjk) so that the Chinese shows.
2. Runs `./dev.sh main`: the runner (build/bin/vornadel-host) on samples/parts/A100.part.json with
   samples/scripts/main-job.txt, which fills the head with `set` commands, picks the desktop
   folder (under build/main) with `folder` and exports with `press button01`.
3. Converts the exported workbook with `libreoffice --headless --convert-to pdf`, renders the
   first page with pdftoppm and crops it to the sheet (the page's header, footer and margins left
   out).

Default output: docs/exported-bom.png. Nothing here is a test; the tests do not use it."""
import argparse
import os
import shutil
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
WORK = os.path.join(ROOT, "build", "readme-picture")


def run(*command, **kwargs):
    print("+", " ".join(command), file=sys.stderr)
    subprocess.run(command, check=True, **kwargs)


def installed(package):
    status = subprocess.run(["dpkg-query", "-W", "-f=${Status}", package], capture_output=True, text=True)
    return "install ok installed" in status.stdout


def set_up():
    """The Debian packages this picture needs, installed when missing (as dev.sh does)."""
    missing = []
    if shutil.which("soffice") is None:
        missing.append("libreoffice-calc-nogui")
    if shutil.which("pdftoppm") is None:
        missing.append("poppler-utils")
    fonts = subprocess.run(["fc-list", ":lang=zh"], capture_output=True, text=True).stdout.strip()
    if not fonts and not installed("fonts-noto-cjk"):
        missing.append("fonts-noto-cjk")
    if missing:
        sudo = [] if os.geteuid() == 0 else ["sudo"]
        run(*sudo, "apt-get", "update", "-qq")
        run(*sudo, "apt-get", "install", "-y", "-qq", "--no-install-recommends", *missing,
            env=dict(os.environ, DEBIAN_FRONTEND="noninteractive"))


def export():
    """The main job of ./dev.sh main; returns the path of the workbook it exported."""
    with open(os.path.join(WORK, "main-job.log"), "w") as log:
        run(os.path.join(ROOT, "dev.sh"), "main", stdout=log)
    workbook = os.path.join(ROOT, "build", "main", "c", "Users", "designer", "Desktop", "A100", "A100标准件BOM.xls")
    if not os.path.isfile(workbook):
        sys.exit("./dev.sh main exported no " + workbook)
    return workbook


def read_pgm(path):
    """Width, height and grey bytes of a binary PGM as pdftoppm writes it."""
    with open(path, "rb") as f:
        data = f.read()
    fields, position = [], 0
    while len(fields) < 4:  # "P5", width, height, maximum, separated by white space
        while data[position:position + 1].isspace():
            position += 1
        start = position
        while not data[position:position + 1].isspace():
            position += 1
        fields.append(data[start:position])
    width, height = int(fields[1]), int(fields[2])
    return width, height, data[position + 1:position + 1 + width * height]


def sheet_box(pgm, dpi):
    """The sheet on the page: the tallest block of rows with ink whose gaps are under an eighth of
    an inch (the page's header and footer stand further apart), and the columns with ink in it."""
    width, height, grey = read_pgm(pgm)
    ink = [any(g < 200 for g in grey[y * width:(y + 1) * width]) for y in range(height)]
    blocks, start, last = [], None, None
    for y, has_ink in enumerate(ink):
        if not has_ink:
            continue
        if start is None or y - last > dpi // 8:
            if start is not None:
                blocks.append((start, last))
            start = y
        last = y
    if start is None:
        sys.exit("the first page is empty")
    blocks.append((start, last))
    top, bottom = max(blocks, key=lambda b: b[1] - b[0])
    columns = [x for x in range(width) if any(grey[y * width + x] < 200 for y in range(top, bottom + 1))]
    margin = dpi // 10
    left, right = max(0, columns[0] - margin), min(width - 1, columns[-1] + margin)
    top, bottom = max(0, top - margin), min(height - 1, bottom + margin)
    return left, top, right - left + 1, bottom - top + 1


def picture(workbook, out, dpi):
    profile = "file://" + os.path.join(WORK, "libreoffice-profile")  # not the user's own profile
    run("soffice", "-env:UserInstallation=" + profile, "--headless", "--convert-to", "pdf", "--outdir", WORK, workbook)
    pdf = os.path.join(WORK, os.path.splitext(os.path.basename(workbook))[0] + ".pdf")
    page = os.path.join(WORK, "page")
    run("pdftoppm", "-f", "1", "-l", "1", "-r", str(dpi), "-gray", "-singlefile", pdf, page)
    left, top, width, height = sheet_box(page + ".pgm", dpi)
    run("pdftoppm", "-f", "1", "-l", "1", "-r", str(dpi), "-x", str(left), "-y", str(top), "-W", str(width), "-H",
        str(height), "-png", "-singlefile", pdf, os.path.splitext(out)[0])
    print("%s: %d x %d pixels, %d KiB" % (out, width, height, os.path.getsize(out) // 1024))


def main():
    parser = argparse.ArgumentParser(description="Makes the README's picture of the exported BOM.")
    parser.add_argument("--out", default=os.path.join(ROOT, "docs", "exported-bom.png"), help="the PNG to write")
    parser.add_argument("--dpi", type=int, default=110, help="resolution of the page (default 110)")
    args = parser.parse_args()
    if not args.out.endswith(".png"):
        sys.exit("--out wants a .png file")
    set_up()
    shutil.rmtree(WORK, ignore_errors=True)
    os.makedirs(WORK)
    picture(export(), os.path.abspath(args.out), args.dpi)


if __name__ == "__main__":
    main()
