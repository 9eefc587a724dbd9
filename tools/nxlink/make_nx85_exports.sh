#!/bin/sh
# Remakes nx85-exports.txt, the decorated names NX 8.5 exports from the five import libraries the
# plug-in links, from a copy of NX 8.5's UGOPEN folder (64-bit, e.g. NX8.5_64_8.5.3.3/UGOPEN of
# the NX SDK). Each exported function or datum has an import thunk named __imp_<name>; data-only
# exports have nothing else, so the list is made from those names.
#   tools/nxlink/make_nx85_exports.sh UGOPEN > tools/nxlink/nx85-exports.txt
# The list keeps what plug-in code can name: every C name, and the NX Open members of the classes
# whose NX 8.5 headers the host declares (host/include/NXOpen). Code that compiles against the
# host can call nothing else, so nothing else needs checking.
set -eu
ugopen=${1:?usage: make_nx85_exports.sh UGOPEN}
headers=$(dirname "$0")/../../host/include/NXOpen
echo "# NX 8.5 (8.5.3.3, 64-bit) exports: library, decorated name. Made by make_nx85_exports.sh."
for lib in libufun libugopenint libnxopencpp libnxopencpp_layer libnxopenuicpp; do
    llvm-nm --defined-only "$ugopen/$lib.lib" | sed -n "s/^.* __imp_\(.*\)$/$lib \1/p" | LC_ALL=C sort -u
done | python3 -c '
import os, sys
headers = set(name[:-4] for name in os.listdir(sys.argv[1]) if name.endswith(".hxx"))
for line in sys.stdin:
    name = line.split(" ", 1)[1].strip()
    if not name.startswith("?"):
        sys.stdout.write(line)
        continue
    # ?member@Inner@Outer@NXOpen@@... or, for constructors, destructors and operators,
    # ??<code>Inner@Outer@NXOpen@@...: the scopes inside NXOpen, outermost first.
    if name.startswith("??"):
        scoped = name[4:] if name.startswith("??_") else name[3:]
    else:
        scoped = name[name.find("@") + 1:]
    parts = scoped.split("@@")[0].split("@")[::-1]
    if parts[0] != "NXOpen":
        continue
    inside = parts[1:]
    if any("_".join(inside[:n]) in headers for n in range(len(inside), 0, -1)):
        sys.stdout.write(line)
' "$headers"
