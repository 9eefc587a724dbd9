#!/usr/bin/env python3
"""Every source NX's toolset compiles (src/, libs/) that holds text beyond ASCII starts with a UTF-8
byte-order mark and is UTF-8 throughout. Visual Studio 2010 reads a source without a mark in the
system code page: on a Chinese Windows the Chinese literals would come out as UTF-8 bytes in GBK
text, or a UTF-8 sequence read as GBK would swallow a closing quote. With the mark it reads UTF-8
and converts the literals to the system code page, as GCC and clang do with
-finput-charset=UTF-8 -fexec-charset=GBK (both skip the mark).

Usage: check_source_marks.py SOURCE_ROOT"""

import os
import sys

MARK = b"\xef\xbb\xbf"
EXTENSIONS = (".cpp", ".h", ".hpp", ".rc")

root = sys.argv[1]
problems = checked = 0
for folder in ("src", "libs"):
    for directory, _, names in os.walk(os.path.join(root, folder)):
        for name in sorted(names):
            if not name.endswith(EXTENSIONS):
                continue
            path = os.path.join(directory, name)
            with open(path, "rb") as f:
                data = f.read()
            body = data[len(MARK):] if data.startswith(MARK) else data
            rel = os.path.relpath(path, root)
            try:
                body.decode("utf-8")
            except UnicodeDecodeError as e:
                print(f"{rel}: not UTF-8 at byte {e.start}")
                problems += 1
                continue
            if body.isascii():
                continue
            checked += 1
            if not data.startswith(MARK):
                print(f"{rel}: holds text beyond ASCII without a UTF-8 byte-order mark")
                problems += 1
print(f"{checked} sources with text beyond ASCII checked, {problems} without a mark or not UTF-8")
sys.exit(1 if problems else 0)
