#!/usr/bin/env python3
"""Makes the README's picture of the exported BOM: the bundled sample mould A100 exported through
the runner and the workbook as LibreOffice shows it.

    tools/screenshot/readme_picture.py [--build DIR] [--out PNG] [--dpi N]

1. Installs what is missing with apt-get: LibreOffice Calc (libreoffice-calc-nogui, enough
   headless), poppler-utils (pdftoppm) and a CJK font (fonts-noto-cjk) so that the Chinese shows.
2. Builds the runner and the plug-in (build/bin/vornadel-host, libVornadel.so).
3. Runs tools/screenshot/export-a100.txt on samples/parts/A100.part.json: the head filled in,
   drive E: (a folder under build/readme-picture) picked as the output folder, button01 pressed.
   The configuration root is a copy of samples/config, so that nothing in the checkout changes.
4. Converts the workbook with `libreoffice --headless --convert-to pdf`, renders the first page
   with pdftoppm and crops it to the sheet (the page's header, footer and margins left out).

Default output: docs/exported-bom.png. Nothing here is a test; the tests do not use it."""
import argparse
import os
import shutil
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
HERE = os.path.join(ROOT, "tools", "screenshot")


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


def export(build, work):
    """Exports A100's BOM through the runner; returns the workbook's path."""
    run("cmake", "-S", ROOT, "-B", build, "-DCMAKE_BUILD_TYPE=RelWithDebInfo")
    run("cmake", "--build", build, "-j2", "--target", "vornadel-host", "Vornadel")
    shutil.rmtree(work, ignore_errors=True)
    for folder in ("root", "out", "appdata", "desktop"):
        os.makedirs(os.path.join(work, folder))
    shutil.copytree(os.path.join(ROOT, "samples", "config"), os.path.join(work, "root", "config"))
    run(os.path.join(build, "bin", "vornadel-host"), "run", os.path.join(ROOT, "samples", "parts", "A100.part.json"),
        "--config", os.path.join(work, "root"), "--drive", "E=" + os.path.join(work, "out"),
        "--localappdata", os.path.join(work, "appdata"), "--desktop", os.path.join(work, "desktop"),
        "--time", "2024-05-17T09:30:00", "--script", os.path.join(HERE, "export-a100.txt"))
    workbook = os.path.join(work, "out", "A100", "A100标准件BOM.xls")
    if not os.path.isfile(workbook):
        sys.exit("the export wrote no " + workbook)
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


def picture(workbook, work, out, dpi):
    profile = "file://" + os.path.join(work, "libreoffice-profile")  # not the user's own profile
    run("soffice", "-env:UserInstallation=" + profile, "--headless", "--convert-to", "pdf", "--outdir", work, workbook)
    pdf = os.path.join(work, os.path.splitext(os.path.basename(workbook))[0] + ".pdf")
    page = os.path.join(work, "page")
    run("pdftoppm", "-f", "1", "-l", "1", "-r", str(dpi), "-gray", "-singlefile", pdf, page)
    left, top, width, height = sheet_box(page + ".pgm", dpi)
    run("pdftoppm", "-f", "1", "-l", "1", "-r", str(dpi), "-x", str(left), "-y", str(top), "-W", str(width), "-H",
        str(height), "-png", "-singlefile", pdf, os.path.splitext(out)[0])
    print("%s: %d x %d pixels, %d KiB" % (out, width, height, os.path.getsize(out) // 1024))


def main():
    parser = argparse.ArgumentParser(description="Makes the README's picture of the exported BOM.")
    parser.add_argument("--build", default=os.path.join(ROOT, "build"), help="the build folder (default build/)")
    parser.add_argument("--out", default=os.path.join(ROOT, "docs", "exported-bom.png"), help="the PNG to write")
    parser.add_argument("--dpi", type=int, default=110, help="resolution of the page (default 110)")
    args = parser.parse_args()
    if not args.out.endswith(".png"):
        sys.exit("--out wants a .png file")
    set_up()
    work = os.path.join(os.path.abspath(args.build), "readme-picture")
    picture(export(os.path.abspath(args.build), work), work, os.path.abspath(args.out), args.dpi)


if __name__ == "__main__":
    main()
