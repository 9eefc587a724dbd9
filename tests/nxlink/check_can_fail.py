#!/usr/bin/env python3
"""The NX link check names what it must name: a copy of the host's NX declarations with one
declaration changed on purpose, and a copy of NX 8.5's export list without one class, each make
tools/nxlink/nxlink_check.py fail and name the symbol that no longer matches.

Usage: check_can_fail.py SOURCE_ROOT WORK_DIR"""

import os
import shutil
import subprocess
import sys

root, work = sys.argv[1], sys.argv[2]
tool = os.path.join(root, "tools/nxlink/nxlink_check.py")
failures = 0


def check(name, include, exports, expected):
    """Runs the check and expects exit status 1 with every expected text in its report."""
    global failures
    command = [sys.executable, tool, "--source", root, "--include", include,
               "--work", os.path.join(work, name), "--exports", exports]
    result = subprocess.run(command, capture_output=True, text=True)
    missing = [text for text in expected if text not in result.stdout]
    if result.returncode != 1 or missing:
        print(f"{name}: expected exit status 1 naming {missing or expected}, got {result.returncode}:\n"
              f"{result.stdout}{result.stderr}")
        failures += 1
    else:
        print(f"{name}: the check failed as it must, naming {', '.join(expected)}")


exports = os.path.join(root, "tools/nxlink/nx85-exports.txt")

# A const dropped from a parameter: the mask list of Selection::SelectObjects, which the group
# command calls.
include = os.path.join(work, "const-dropped", "include")
shutil.rmtree(os.path.dirname(include), ignore_errors=True)
shutil.copytree(os.path.join(root, "host/include"), include)
header = os.path.join(include, "NXOpen/Selection.hxx")
with open(header, encoding="utf-8") as f:
    text = f.read()
declaration = ("bool includeFeatures, bool keepHighlighted, const std::vector<NXOpen::Selection::MaskTriple> &maskArray, "
               "std::vector<NXOpen::NXObject *> &objectArray);")
assert declaration in text, "the declaration this test changes has moved"
with open(header, "w", encoding="utf-8") as f:
    f.write(text.replace(declaration, declaration.replace("const std::vector", "std::vector")))
check("const-dropped", include, exports,
      ["?SelectObjects@Selection@NXOpen@@", "needed by src/commands/CommandDispatch.cpp"])

# A class NX no longer exports: every member of NXOpen::BlockStyler::Node gone from the list.
trimmed = os.path.join(work, "class-not-exported.txt")
with open(exports, encoding="ascii") as f, open(trimmed, "w", encoding="ascii") as out:
    out.writelines(line for line in f if "@Node@BlockStyler@NXOpen@@" not in line.split(" ", 1)[-1].split("@@")[0] + "@@")
check("class-not-exported", os.path.join(root, "host/include"), trimmed,
      ["@Node@BlockStyler@NXOpen@@", "needed by src/"])

print(f"{2 - failures} passed, {failures} failed")
sys.exit(1 if failures else 0)
