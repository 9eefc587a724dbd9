#!/bin/sh
# Remakes nx85-exports.txt, the decorated names NX 8.5 exports from the five import libraries the
# plug-in links, from a copy of NX 8.5's UGOPEN folder (64-bit, e.g. NX8.5_64_8.5.3.3/UGOPEN of
# the NX SDK). Each exported function or datum has an import thunk named __imp_<name>; data-only
# exports have nothing else, so the list is made from those names.
#   tools/nxlink/make_nx85_exports.sh UGOPEN > tools/nxlink/nx85-exports.txt
set -eu
ugopen=${1:?usage: make_nx85_exports.sh UGOPEN}
echo "# NX 8.5 (8.5.3.3, 64-bit) exports: library, decorated name. Made by make_nx85_exports.sh."
for lib in libufun libugopenint libnxopencpp libnxopencpp_layer libnxopenuicpp; do
    llvm-nm --defined-only "$ugopen/$lib.lib" | sed -n "s/^.* __imp_\(.*\)$/$lib \1/p" | LC_ALL=C sort -u
done
