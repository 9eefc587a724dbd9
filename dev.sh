#!/bin/sh
# Vornadel's two everyday commands, for a fresh Debian machine:
#   ./dev.sh main   set up what is missing, build the plug-in and the runner, export the BOM of the
#                   bundled sample mould and print it
#   ./dev.sh test   set up what is missing, build, run every test: the Linux suite (build/) and
#                   the Windows suite (build-win/: MinGW-w64, run under Wine)
set -eu
cd "$(dirname "$0")"

# Debian packages the build and the tests need; installed only when missing.
# gnumeric: its ssconvert checks that exported workbooks open without complaint.
# clang, lld, llvm: the NX link check compiles the DLLs' sources for the Microsoft ABI (tools/nxlink).
# time: /usr/bin/time -v, whole runs of the runner in bench/large_moulds/compare.py.
PACKAGES="g++ cmake make libgtest-dev nlohmann-json3-dev libedit-dev python3-xlrd gnumeric clang lld llvm time"
# The Windows build and its tests: the MinGW-w64 compilers with POSIX threads, 64-bit Wine, and
# the sources of the glibc locale zh_CN.UTF-8 that Wine runs under (tools/wine/wine.sh).
# Installed without their recommendations (Wine's recommend a desktop's worth).
WINDOWS_PACKAGES="g++-mingw-w64-x86-64-posix wine wine64 locales"

# setup [--no-install-recommends] PACKAGE...: installs those that are missing.
setup() {
    options=""
    if [ "$1" = --no-install-recommends ]; then options=$1; shift; fi
    missing=""
    for p in "$@"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing="$missing $p"
    done
    if [ -n "$missing" ]; then
        echo "installing:$missing"
        SUDO=""; [ "$(id -u)" -eq 0 ] || SUDO="sudo"
        $SUDO apt-get update -qq
        DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq $options $missing
    fi
}

configure() {
    cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
}

build() {
    configure
    cmake --build build -j "$(nproc)"
}

# The main job on the bundled sample mould, as a designer of its own (drive C: is build/main/c)
# with a copy of the bundled configuration, so that nothing of the checkout or the user changes:
# fill the head, show the dialog, export the BOM, then print the exported sheet.
main_job() {
    configure
    cmake --build build -j "$(nproc)" --target Vornadel vornadel-host
    rm -rf build/main
    mkdir -p build/main/c/Users/designer/AppData/Local build/main/c/Users/designer/Desktop build/main/c/VDConfig
    cp -R samples/config build/main/c/VDConfig/config
    build/bin/vornadel-host run --drive C=build/main/c --config 'C:\VDConfig' \
        --localappdata 'C:\Users\designer\AppData\Local' --desktop 'C:\Users\designer\Desktop' \
        --script samples/scripts/main-job.txt
    echo
    /usr/bin/python3 tools/xlsview.py build/main/c/Users/designer/Desktop/A100/A100标准件BOM.xls
}

build_windows() {
    cmake -S . -B build-win -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/mingw-w64.cmake \
          -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build build-win -j "$(nproc)"
}

case "${1:-}" in
    main)
        setup $PACKAGES; main_job
        ;;
    test)
        setup $PACKAGES
        setup --no-install-recommends $WINDOWS_PACKAGES
        build
        build_windows
        # Both suites run, whatever the first one gives.
        status=0
        ctest --test-dir build --output-on-failure -j "$(nproc)" || status=1
        ctest --test-dir build-win --output-on-failure -j "$(nproc)" || status=1
        exit $status
        ;;
    *)
        echo "usage: ./dev.sh main | ./dev.sh test" >&2
        exit 2
        ;;
esac
