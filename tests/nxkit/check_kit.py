#!/usr/bin/env python3
"""The NX install kit: installs it from a Windows build and checks what NX will find in it.

check_kit.py --cmake CMAKE --build BUILD --kit FOLDER --objdump OBJDUMP --source SOURCE

- the layout of an NX custom directory: application/ (the DLLs and the dialog file), startup/
  (the menu file), the configuration root VDConfig/ and D/MYTOOL/;
- Vornadel.dll exports NX's entry points and needs no DLL of the MinGW runtime;
- the menu file is MenuScript as NX documents it (statements in their order, every block closed,
  keywords in capitals) and has a button "标准件BOM" whose action is Vornadel.dll.
Prints what is wrong and exits 1; exits 0 when the kit is sound.
"""
import argparse
import filecmp
import os
import re
import shutil
import subprocess
import sys

RUNTIME_DLLS = {"libstdc++-6.dll", "libgcc_s_seh-1.dll", "libwinpthread-1.dll"}
TOP_MENUS = {"UG_GATEWAY_MAIN_MENUBAR", "UG_GATEWAY_VIEW_POPUP"}
# Block openers and the statements that close them.
BLOCKS = {"TOP_MENU": "END_OF_TOP_MENU", "MENU": "END_OF_MENU", "BEFORE": "END_OF_BEFORE",
          "AFTER": "END_OF_AFTER", "MODIFY": "END_OF_MODIFY"}
BUTTONS = {"BUTTON", "CASCADE_BUTTON", "TOGGLE_BUTTON", "APPLICATION_BUTTON", "SEPARATOR"}
BUTTON_STATEMENTS = {"LABEL", "ACTIONS", "BITMAP", "MESSAGE", "SYNONYMS", "ACCELERATOR", "LIBRARIES",
                     "MENU_FILES", "TOGGLE", "SENSITIVITY", "VISIBILITY", "HELP", "RADIO_BUTTON"}
NAME = re.compile(r"^[A-Z][A-Z0-9_]*$")


def parse_menu(text):
    """MenuScript statements -> (problems, buttons: list of dicts)."""
    problems, buttons = [], []
    statements = []
    for number, line in enumerate(text.splitlines(), 1):
        line = line.strip()
        if not line or line.startswith("!"):
            continue
        keyword, _, argument = line.partition(" ")
        statements.append((number, keyword, argument.strip()))
    if not statements or statements[0][1] != "VERSION" or not statements[0][2].isdigit():
        return ["the first statement must be VERSION <number>"], buttons
    if len(statements) < 2 or statements[1][1] not in ("EDIT", "CREATE") or statements[1][2] not in TOP_MENUS:
        return ["the second statement must be EDIT or CREATE of " + " or ".join(sorted(TOP_MENUS))], buttons
    open_block, cascades, menus = None, set(), set()
    for number, keyword, argument in statements[2:]:
        where = "line %d: " % number
        if keyword != keyword.upper():
            problems.append(where + "keyword %s is not in capitals" % keyword)
        if open_block is None:
            if keyword in ("HIDE", "SHOW") and argument:
                continue
            if keyword not in BLOCKS:
                problems.append(where + "%s outside a block" % keyword)
                continue
            if keyword in ("MENU", "BEFORE", "AFTER") and not NAME.match(argument):
                problems.append(where + "%s needs a button or menu name" % keyword)
            if keyword == "MENU":
                menus.add(argument)
            open_block = keyword
        elif keyword == BLOCKS[open_block]:
            open_block = None
        elif keyword in BUTTONS:
            if keyword != "SEPARATOR" and not NAME.match(argument):
                problems.append(where + "%s needs a name in capitals" % keyword)
            if keyword == "CASCADE_BUTTON":
                cascades.add(argument)
            buttons.append({"kind": keyword, "name": argument})
        elif keyword in BUTTON_STATEMENTS:
            if not buttons:
                problems.append(where + "%s before any button" % keyword)
            else:
                buttons[-1][keyword] = argument
        else:
            problems.append(where + "unknown statement %s inside %s" % (keyword, open_block))
    if open_block is not None:
        problems.append("%s is never closed by %s" % (open_block, BLOCKS[open_block]))
    for cascade in sorted(cascades - menus):
        problems.append("cascade button %s has no MENU block" % cascade)
    return problems, buttons


def check(kit, source, objdump):
    problems = []
    for path in ["application/Vornadel.dll", "application/readconfig.dll", "application/bodyinfo.dll",
                 "application/Vornadel.dlx", "startup/vornadel.men", "VDConfig/config/standard.csv",
                 "VDConfig/config/TK/std_layers.csv", "D/MYTOOL/config/TK/Layerwrk.txt"]:
        if not os.path.isfile(os.path.join(kit, path)):
            problems.append("missing " + path)
    if problems:
        return problems
    if not filecmp.cmp(os.path.join(kit, "application/Vornadel.dlx"), os.path.join(source, "dialog/Vornadel.dlx"), False):
        problems.append("application/Vornadel.dlx is not the dialog file of the sources")

    dump = subprocess.run([objdump, "-p", os.path.join(kit, "application/Vornadel.dll")],
                          capture_output=True, text=True, check=True).stdout
    for entry in ("ufusr", "ufusr_ask_unload"):
        if not re.search(r"\]\s+%s\s*$" % entry, dump, re.M):
            problems.append("Vornadel.dll does not export " + entry)
    for dll in re.findall(r"DLL Name: (\S+)", dump):
        if dll.lower() in RUNTIME_DLLS:
            problems.append("Vornadel.dll needs the MinGW runtime DLL " + dll)

    with open(os.path.join(kit, "startup/vornadel.men"), "rb") as f:
        text = f.read().decode("gbk")
    menu_problems, buttons = parse_menu(text)
    problems += ["vornadel.men: " + p for p in menu_problems]
    bom = [b for b in buttons if b["kind"] == "BUTTON" and b.get("LABEL") == "标准件BOM"]
    if len(bom) != 1:
        problems.append('vornadel.men: there must be one button labelled "标准件BOM"')
    elif bom[0].get("ACTIONS") != "Vornadel.dll":
        problems.append('vornadel.men: the button "标准件BOM" must run Vornadel.dll')
    return problems


def main():
    parser = argparse.ArgumentParser()
    for option in ("--cmake", "--build", "--kit", "--objdump", "--source"):
        parser.add_argument(option, required=True)
    args = parser.parse_args()
    shutil.rmtree(args.kit, ignore_errors=True)
    subprocess.run([args.cmake, "--install", args.build, "--prefix", args.kit, "--component", "nxkit"],
                   check=True, stdout=subprocess.DEVNULL)
    problems = check(args.kit, args.source, args.objdump)
    for problem in problems:
        print("kit: " + problem)
    print("the NX install kit in %s is %s" % (args.kit, "wrong" if problems else "sound"))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
