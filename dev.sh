#!/bin/sh
# Vornadel's two everyday commands, for a fresh Debian machine:
#   ./dev.sh main   set up what is missing, build, run the plug-in on the bundled sample mould
#   ./dev.sh test   set up what is missing, build, run every test
set -eu
cd "$(dirname "$0")"

# Debian packages the build and the tests need; installed only when missing.
PACKAGES="g++ cmake make libgtest-dev nlohmann-json3-dev python3-xlrd"

setup() {
    missing=""
    for p in $PACKAGES; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing="$missing $p"
    done
    if [ -n "$missing" ]; then
        echo "installing:$missing"
        SUDO=""; [ "$(id -u)" -eq 0 ] || SUDO="sudo"
        $SUDO apt-get update -qq
        DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq $missing
    fi
}

build() {
    cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build build -j "$(nproc)"
}

case "${1:-}" in
    main)
        setup; build
        build/bin/vornadel-host run --script samples/scripts/first-view.txt
        ;;
    test)
        setup; build
        ctest --test-dir build --output-on-failure -j "$(nproc)"
        ;;
    *)
        echo "usage: ./dev.sh main | ./dev.sh test" >&2
        exit 2
        ;;
esac
