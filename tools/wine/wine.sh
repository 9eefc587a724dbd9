#!/bin/sh
# Wine for the Windows test suite (build-win/), everything inside the build folder:
#   wine.sh BUILD start              make the prefix BUILD/wine when it is missing, start a
#                                    persistent wineserver and Wine's services
#   wine.sh BUILD stop               stop them
#   wine.sh BUILD run PROGRAM ARGS   run a Windows program in that prefix
# Headless (Wine's null graphics driver) and Chinese: the ANSI code page is 936 (GBK). Wine takes
# the code page from LC_ALL and names files on disk in the locale's character set, so the glibc
# locale zh_CN.UTF-8 is compiled into BUILD/wine-locale (Debian's "locales" has its sources).
set -eu
build=$(realpath -m "$1")
action=$2
shift 2
export WINEPREFIX="$build/wine" WINEDEBUG=-all LC_ALL=zh_CN.UTF-8 LOCPATH="$build/wine-locale"
export WINEDLLOVERRIDES="mscoree,mshtml="

if [ "$action" = run ]; then
    exec wine "$@"
fi

# Everything Wine starts in the background must let go of CTest's output pipes: its own output
# goes to a log beside the prefix.
mkdir -p "$build"
exec </dev/null >>"$build/wine.log" 2>&1

case "$action" in
    start)
        if [ ! -d "$LOCPATH/zh_CN.UTF-8" ]; then
            mkdir -p "$LOCPATH"
            localedef -i zh_CN -f UTF-8 "$LOCPATH/zh_CN.UTF-8"
        fi
        if [ ! -f "$WINEPREFIX/system.reg" ]; then
            wine wineboot --init
            wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
            wineserver --wait
            # The user's shell folders (the desktop among them) are folders of the prefix, not
            # links to $HOME: what a test exports to the desktop stays in the build folder.
            for link in "$WINEPREFIX"/drive_c/users/*/*; do
                if [ -L "$link" ]; then rm "$link"; mkdir "$link"; fi
            done
        fi
        # The user's desktop folder (what SHGetSpecialFolderPathA gives for CSIDL_DESKTOPDIRECTORY)
        # is C:\Users\designer\Desktop, the desktop of the runner's transcripts on every platform.
        if [ ! -d "$WINEPREFIX/drive_c/users/designer/Desktop" ]; then
            mkdir -p "$WINEPREFIX/drive_c/users/designer/Desktop"
            for key in 'User Shell Folders' 'Shell Folders'; do
                wine reg add "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\$key" \
                    /v Desktop /d 'C:\Users\designer\Desktop' /f
            done
        fi
        # Drive D: is a folder beside the prefix (the plug-in reads D:\MYTOOL\config\TK\Layerwrk.txt);
        # the prefix has no other drive but C: and Z:.
        mkdir -p "$build/wine-drive-d"
        ln -sfn "$build/wine-drive-d" "$WINEPREFIX/dosdevices/d:"
        # (A server of this prefix that is still running is kept.)
        wineserver --persistent || true
        # Wine's services start with the first program of a session and outlive it: start them
        # here, where nothing waits for their output.
        wine wineboot
        ;;
    stop)
        wineserver --kill || true
        ;;
    *)
        exit 2
        ;;
esac
