#!/usr/bin/env python3
"""Checks that the DLLs NX loads need only what NX 8.5 exports.

Compiles every source of Vornadel.dll, readconfig.dll and bodyinfo.dll for the Microsoft ABI
(Debian's clang, MinGW-w64's C and C++ headers) against the NX declarations of --include, lists
the NX symbols their objects import (decorated C++ names in namespace NXOpen, user-function C
names) and compares them with the list of NX 8.5's exports (nx85-exports.txt beside this file,
made by make_nx85_exports.sh). Decorated names carry every parameter type, const and calling
convention, so a declaration that differs from NX's in any of them shows up as a missing symbol.

With --sdk (NX's UGOPEN folder, which has the import libraries) it also links the three DLLs with
lld-link and checks what NX sees of them: the three user-function entry points exported
undecorated, nothing else exported that the plug-in does not mean to, the NX DLLs imported, and
the signing block present exactly once. C++ runtime symbols stay unresolved in that link (there is
no libstdc++ for the Microsoft ABI), so those DLLs are for checking only, never for shipping.

Exit status: 0 all found, 1 something missing or wrong (each named on standard output), 2 the
check could not run (a tool missing, a source that does not compile).

Usage: nxlink_check.py --source ROOT --include NXINCLUDE --work DIR [--sdk UGOPEN] [--exports LIST]
                       [--std c++98|c++11] [--jobs N]
"""

import argparse
import concurrent.futures
import glob
import os
import re
import shutil
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
EXPORTS = os.path.join(HERE, "nx85-exports.txt")
MINGW = "/usr/lib/gcc/x86_64-w64-mingw32"
MINGW_SYSROOT = "/usr/x86_64-w64-mingw32"

# Each define works around one clash between MinGW's headers and the Microsoft target; with the
# old string ABI, std::vector and std::basic_string decorate as Visual Studio's do.
CLANG_FLAGS = [
    "--target=x86_64-pc-windows-msvc", "-fgnuc-version=12.0", "-nostdlibinc", "-D__STRICT_ANSI__", "-D__declspec(a)=__declspec(a)",
    "-D_GLIBCXX_USE_CXX11_ABI=0", "-D_WIN32_WINNT=0x0600", "-D_GLIBCXX_GTHREAD_USE_WEAK=0",
    "-O1", "-w", "-c",
]

# The NX import libraries the plug-in links (cmake/libs.cmake), and the Windows ones.
NX_LIBRARIES = ["libufun", "libugopenint", "libnxopencpp", "libnxopencpp_layer", "libnxopenuicpp"]
WINDOWS_LIBRARIES = ["kernel32", "user32", "shell32", "msvcrt"]
# What a DLL may export: the user-function entry points, and for the plug-in the dialog class and
# its base (the tests and other programs call its public operations), for the libraries their
# imported classes.
ENTRY_POINTS = ["ufusr", "ufusr_ask_unload", "ufusr_cleanup"]
SIGNING_BLOCK = b"NXAUTHBLOCK" + b" " * 512 + b"NXAUTHBLOCK"


def mingw_includes():
    """The MinGW-w64 C++ and C header folders, as g++ searches them, less GCC's own built-in
    headers (intrinsics): clang keeps its own."""
    versions = sorted(glob.glob(os.path.join(MINGW, "*-posix"))) or sorted(glob.glob(os.path.join(MINGW, "*")))
    if not versions:
        sys.exit("nxlink_check: MinGW-w64's headers are missing (install g++-mingw-w64-x86-64-posix)")
    gcc = versions[-1]
    return [os.path.join(gcc, "include", "c++"), os.path.join(gcc, "include", "c++", "x86_64-w64-mingw32"),
            os.path.join(gcc, "include", "c++", "backward"), os.path.join(MINGW_SYSROOT, "include")]


def dll_sources(root):
    """The sources of each DLL, as cmake/plugin.cmake, cmake/libs.cmake and cmake/xls.cmake
    gather them for the NX build."""
    def files(pattern):
        return sorted(glob.glob(os.path.join(root, pattern), recursive=True))
    platform = files("src/platform/common/*.cpp") + [
        os.path.join(root, "src/platform/win32", name + ".cpp")
        for name in ("CodePage", "DialogWindows", "Environment", "Files")]
    plugin = [f for f in files("src/**/*.cpp") if not re.search(r"/src/platform/(common|posix|win32)/", f)]
    plugin += [os.path.join(root, "src/platform/win32/Desktop.cpp")]
    return {
        "Vornadel.dll": (plugin + platform + files("libs/xls/*.cpp"), []),
        "readconfig.dll": (files("libs/readconfig/*.cpp") + platform, ["-DREADCONFIG_BUILD"]),
        "bodyinfo.dll": (files("libs/bodyinfo/*.cpp"), ["-DBODYINFO_BUILD"]),
    }


def compile_all(root, include, work, jobs, standard):
    """Compiles every source once per DLL; returns {dll: [(source, object)]}. The plug-in is
    C++98 as Visual Studio 2010 compiles it; the headers of NX 11 and later need C++11, and a
    compiler of that age (Visual Studio 2015) for char16_t."""
    msvc = "16.00" if standard == "c++98" else "19.00"
    base = ["clang++", f"-std={standard}", f"-fms-compatibility-version={msvc}"] + CLANG_FLAGS + [f"-isystem{d}" for d in mingw_includes()] + [
        f"-I{include}", f"-I{root}/src", f"-I{root}/src/platform", f"-I{root}/libs/xls"]
    tasks = []
    for dll, (sources, defines) in dll_sources(root).items():
        for source in sources:
            rel = os.path.relpath(source, root)
            obj = os.path.join(work, "obj", dll, rel.replace("/", "_") + ".obj")
            tasks.append((dll, rel, obj, base + defines + [source, "-o", obj]))
    os.makedirs(work, exist_ok=True)
    for dll in dll_sources(root):
        os.makedirs(os.path.join(work, "obj", dll), exist_ok=True)

    def run(task):
        return task, subprocess.run(task[3], capture_output=True, text=True)

    objects, failed = {}, []
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for (dll, rel, obj, _), result in pool.map(run, tasks):
            if result.returncode != 0:
                failed.append((rel, result.stderr))
            objects.setdefault(dll, []).append((rel, obj))
    if failed:
        for rel, err in failed:
            print(f"{rel}: does not compile for the Microsoft ABI:\n{err}")
        sys.exit(2)
    return objects


def nm(obj, which):
    """The object's symbols; a call through dllimport names the import thunk __imp_<name>."""
    out = subprocess.run(["llvm-nm", which, "--format=just-symbols", obj],
                         capture_output=True, text=True, check=True).stdout
    return {s[len("__imp_"):] if s.startswith("__imp_") else s for s in out.split()}


def is_nx_symbol(symbol):
    """A name NX would have to supply: declared in namespace NXOpen (its qualified name, up to
    the first "@@", ends in or passes through NXOpen), or a user-function C call."""
    if symbol.startswith("?"):
        scope = symbol.split("@@", 1)[0]
        return scope.endswith("@NXOpen") or "@NXOpen@" in scope
    return re.match(r"^(UF_|uc\d|uf_)", symbol) is not None


def read_exports(path):
    exports = {}
    with open(path, encoding="ascii") as f:
        for line in f:
            if line.startswith("#") or not line.strip():
                continue
            library, symbol = line.split()
            exports[symbol] = library
    return exports


def check_symbols(objects, exports):
    """Prints what each DLL needs from NX; returns the number of symbols NX does not export."""
    defined = {dll: set().union(*(nm(obj, "--defined-only") for _, obj in objs)) for dll, objs in objects.items()}
    everything_defined = set().union(*defined.values())
    missing = 0
    for dll, objs in objects.items():
        needed = {}
        for rel, obj in objs:
            for symbol in nm(obj, "--undefined-only"):
                if is_nx_symbol(symbol) and symbol not in everything_defined:
                    needed.setdefault(symbol, []).append(rel)
        by_library = {}
        for symbol in needed:
            by_library.setdefault(exports.get(symbol, "missing"), []).append(symbol)
        counts = ", ".join(f"{lib} {len(syms)}" for lib, syms in sorted(by_library.items()) if lib != "missing")
        print(f"{dll}: {len(needed)} NX symbols ({counts})")
        for symbol in sorted(by_library.get("missing", [])):
            print(f"  not exported by NX 8.5: {symbol}")
            print(f"    {undecorate(symbol)}")
            print(f"    needed by {', '.join(sorted(set(needed[symbol])))}")
            missing += 1
    return missing


def undecorate(symbol):
    result = subprocess.run(["llvm-undname", symbol], capture_output=True, text=True)
    lines = result.stdout.strip().splitlines()
    return lines[-1] if result.returncode == 0 and lines else symbol


def link_and_inspect(root, objects, sdk, work):
    """Links the three DLLs against NX's import libraries and checks what NX sees of them."""
    problems = 0
    mingw_lib = os.path.join(MINGW_SYSROOT, "lib")
    resource = os.path.join(work, "NXSigningResource.res")
    subprocess.run(["llvm-rc", "/FO", resource, os.path.join(root, "src/shell/NXSigningResource.rc")],
                   check=True, capture_output=True)
    nx_libs = [os.path.join(sdk, lib + ".lib") for lib in NX_LIBRARIES]
    win_libs = [os.path.join(mingw_lib, f"lib{lib}.a") for lib in WINDOWS_LIBRARIES]
    order = ["bodyinfo.dll", "readconfig.dll", "Vornadel.dll"]
    for dll in order:
        out = os.path.join(work, dll)
        extra = [os.path.join(work, d.replace(".dll", ".lib")) for d in order[:order.index(dll)]]
        command = ["lld-link", "/DLL", "/NOENTRY", "/MACHINE:X64", "/FORCE:UNRESOLVED", f"/OUT:{out}",
                   f"/IMPLIB:{out.replace('.dll', '.lib')}"] + [obj for _, obj in objects[dll]] + nx_libs + win_libs + extra
        if dll == "Vornadel.dll":
            command.append(resource)
        result = subprocess.run(command, capture_output=True, text=True)
        unresolved = set(re.findall(r"undefined symbol: (\S+)", result.stderr))
        nx_unresolved = sorted(s for s in unresolved if is_nx_symbol(s))
        if not os.path.exists(out):
            print(f"{dll}: lld-link made no DLL:\n{result.stderr}")
            problems += 1
            continue
        for symbol in nx_unresolved:
            print(f"{dll}: unresolved against NX 8.5's libraries: {symbol}")
            problems += 1
        imports = readobj(out, "--coff-imports")
        imported = sorted(set(re.findall(r"Name: (\S+\.dll)", imports, re.IGNORECASE)))
        exports = readobj(out, "--coff-exports")
        exported = re.findall(r"Name: (\S+)", exports)
        print(f"{dll}: linked; {len(unresolved)} C++ runtime symbols left unresolved; imports {', '.join(imported)}; "
              f"{len(exported)} exports")
        if dll == "Vornadel.dll":
            for entry in ENTRY_POINTS:
                if entry not in exported:
                    print(f"{dll}: entry point {entry} is not exported undecorated")
                    problems += 1
            stray = [s for s in exported if s not in ENTRY_POINTS and not re.search(r"@(Vornadel|BaseBom)@@", s)]
            for symbol in stray:
                print(f"{dll}: exports {symbol}, which the plug-in does not mean to")
                problems += 1
            for lib in ("libufun.dll", "libnxopencpp.dll", "libnxopenuicpp.dll", "libnxopencpp_layer.dll"):
                if lib not in [i.lower() for i in imported]:
                    print(f"{dll}: does not import {lib}")
                    problems += 1
            with open(out, "rb") as f:
                blocks = f.read().count(SIGNING_BLOCK)
            print(f"{dll}: signing block present {blocks} time(s)")
            if blocks != 1:
                problems += 1
    return problems


def readobj(path, what):
    return subprocess.run(["llvm-readobj", what, path], capture_output=True, text=True, check=True).stdout


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--source", required=True, help="the checkout's root")
    parser.add_argument("--include", required=True, help="NX declarations: host/include or NX's UGOPEN folder")
    parser.add_argument("--work", required=True, help="a folder for the objects and DLLs")
    parser.add_argument("--exports", default=EXPORTS, help="NX 8.5's exports (default: %(default)s)")
    parser.add_argument("--sdk", help="NX's UGOPEN folder: also link the DLLs against its import libraries")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 2)
    parser.add_argument("--std", default="c++98", help="the C++ standard (default: %(default)s; NX 11 and later: c++11)")
    args = parser.parse_args()
    for tool in ["clang++", "llvm-nm", "llvm-undname"] + (["lld-link", "llvm-readobj", "llvm-rc"] if args.sdk else []):
        if shutil.which(tool) is None:
            sys.exit(f"nxlink_check: {tool} is missing (install clang, lld and llvm)")
    root = os.path.abspath(args.source)
    objects = compile_all(root, os.path.abspath(args.include), os.path.abspath(args.work), args.jobs, args.std)
    problems = check_symbols(objects, read_exports(args.exports))
    if args.sdk:
        problems += link_and_inspect(root, objects, os.path.abspath(args.sdk), os.path.abspath(args.work))
    print("NX link check: " + ("passed" if problems == 0 else f"{problems} problem(s)"))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
