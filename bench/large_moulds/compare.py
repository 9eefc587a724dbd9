#!/usr/bin/env python3
"""Large moulds before and after: bench_large_moulds and whole runner runs of two builds, side by side.

    bench/large_moulds/compare.py BEFORE_REF [AFTER_REF] [--sizes 5000,20000,50000] [--repeat 3] [--seed 1]

BEFORE_REF (a commit, branch or tag; e.g. main) is checked out into a git worktree under
build/bench-before/, AFTER_REF likewise under build/bench-after/; without AFTER_REF the checkout
this script is in is measured as it stands (uncommitted changes included). The bench's current
sources (bench/MouldBench.hpp, bench/large_moulds/ and its block of cmake/bench.cmake) are copied
into each worktree, so that the same bench code is built against each side's host and plug-in.
Each side is built in its own folder (RelWithDebInfo, ccache, only bench_large_moulds,
vornadel-host with the plug-in, and moldgen).

For each size the two builds then run, alternating: bench_large_moulds once each (REPEAT openings
of the dialog, least times), then REPEAT whole runs each of `vornadel-host M.part.json -e close`
under /usr/bin/time -v (the bundled configuration, a per-user copy made by an untimed run first),
on the same part file made by the after side's moldgen. One table shows both sides.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
CHECKOUT = os.path.dirname(os.path.dirname(HERE))
BLOCK = re.compile(r"# begin bench_large_moulds.*?# end bench_large_moulds\n", re.S)

# The bench's columns (its table's data rows, one token each), by name.
BENCH_COLUMNS = ["bodies", "lines", "rows", "json_mb", "load_ms", "load_mbs", "display", "group", "dissolve", "save",
                 "export", "heap_mb", "heap10_mb", "heap_pct", "rss_mb", "rss10_mb", "rss_pct"]


def say(text):
    print(text, file=sys.stderr, flush=True)


def run(cmd):
    done = subprocess.run(cmd, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit("%s failed (exit status %d):\n%s%s" % (" ".join(cmd), done.returncode, done.stdout[-3000:],
                                                        done.stderr[-3000:]))
    return done.stdout


def git(*args):
    return run(["git", "-C", CHECKOUT] + list(args)).strip()


def worktree(ref, folder):
    """A detached worktree of ref in folder/src with the current bench sources: its path and ref's commit."""
    commit = git("rev-parse", "--verify", ref + "^{commit}")
    src = os.path.join(folder, "src")
    if os.path.isdir(src):
        # Only a worktree of its own is reset: git in a plain folder would act on this checkout.
        if not os.path.exists(os.path.join(src, ".git")):
            sys.exit("%s is not a git worktree: remove it and run again" % src)
        run(["git", "-C", src, "checkout", "-q", "--detach", "--force", commit])
        run(["git", "-C", src, "clean", "-q", "-fdx"])
    else:
        git("worktree", "prune")
        git("worktree", "add", "-q", "--detach", "--force", src, commit)
    shutil.copy2(os.path.join(CHECKOUT, "bench", "MouldBench.hpp"), os.path.join(src, "bench", "MouldBench.hpp"))
    shutil.rmtree(os.path.join(src, "bench", "large_moulds"), ignore_errors=True)
    shutil.copytree(HERE, os.path.join(src, "bench", "large_moulds"),
                    ignore=shutil.ignore_patterns("__pycache__"))
    with open(os.path.join(CHECKOUT, "cmake", "bench.cmake"), encoding="utf-8") as f:
        block = BLOCK.search(f.read()).group(0)
    target = os.path.join(src, "cmake", "bench.cmake")
    with open(target, encoding="utf-8") as f:
        text = BLOCK.sub("", f.read())
    with open(target, "w", encoding="utf-8") as f:
        f.write(text.rstrip("\n") + "\n\n" + block)
    return src, commit


def build(src, folder):
    """Builds the bench, the runner with the plug-in and moldgen of src in folder/build; its bin folder."""
    out = os.path.join(folder, "build")
    # A build folder made from another source folder (the checkout, then a commit) is made afresh.
    cache = os.path.join(out, "CMakeCache.txt")
    if os.path.exists(cache):
        with open(cache, encoding="utf-8", errors="replace") as f:
            home = re.search(r"^CMAKE_HOME_DIRECTORY:INTERNAL=(.*)$", f.read(), re.M)
        if not home or os.path.realpath(home.group(1)) != os.path.realpath(src):
            shutil.rmtree(out)
    run(["cmake", "-S", src, "-B", out, "-DCMAKE_BUILD_TYPE=RelWithDebInfo", "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache",
         "-DCMAKE_C_COMPILER_LAUNCHER=ccache"])
    run(["cmake", "--build", out, "-j2", "--target", "bench_large_moulds", "vornadel-host", "moldgen"])
    return os.path.join(out, "bin")


def bench(bin_dir, size, options):
    """bench_large_moulds on one size: its data row by column name."""
    out = run([os.path.join(bin_dir, "bench_large_moulds"), "--sizes", str(size), "--repeat", str(options.repeat),
               "--seed", options.seed])
    for line in out.splitlines():
        cells = line.split()
        if len(cells) == len(BENCH_COLUMNS) and cells[0] == str(size):
            return dict(zip(BENCH_COLUMNS, (float(c) for c in cells)))
    sys.exit("bench_large_moulds printed no row for %d bodies:\n%s" % (size, out))


def whole_run(bin_dir, part, home):
    """One `vornadel-host PART -e close` under /usr/bin/time -v: (wall seconds, peak RSS MB)."""
    cmd = ["/usr/bin/time", "-v", os.path.join(bin_dir, "vornadel-host"), part, "--localappdata",
           os.path.join(home, "appdata"), "--desktop", os.path.join(home, "desktop"), "-e", "close"]
    done = subprocess.run(cmd, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit("%s failed (exit status %d):\n%s" % (" ".join(cmd), done.returncode, done.stderr[-3000:]))
    wall = re.search(r"Elapsed \(wall clock\) time \(h:mm:ss or m:ss\): (?:(\d+):)?(\d+):([\d.]+)", done.stderr)
    peak = re.search(r"Maximum resident set size \(kbytes\): (\d+)", done.stderr)
    if not wall or not peak:
        sys.exit("/usr/bin/time -v gave no wall time or peak memory:\n" + done.stderr[-3000:])
    seconds = int(wall.group(1) or 0) * 3600 + int(wall.group(2)) * 60 + float(wall.group(3))
    return seconds, int(peak.group(1)) / 1024.0


def number(value, decimals):
    return "%.*f" % (decimals, value)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("before", help="the commit measured as before (e.g. main)")
    parser.add_argument("after", nargs="?", help="the commit measured as after (default: this checkout as it stands)")
    parser.add_argument("--sizes", default="5000,20000,50000")
    parser.add_argument("--repeat", type=int, default=3, help="openings per bench run and whole runs per side")
    parser.add_argument("--seed", default="1")
    options = parser.parse_args()
    sizes = [int(s) for s in options.sizes.split(",")]
    started = time.time()

    sides = {}
    before_src, before_commit = worktree(options.before, os.path.join(CHECKOUT, "build", "bench-before"))
    say("building %s (%s) in build/bench-before ..." % (options.before, before_commit[:10]))
    sides["before"] = build(before_src, os.path.join(CHECKOUT, "build", "bench-before"))
    if options.after:
        after_src, after_commit = worktree(options.after, os.path.join(CHECKOUT, "build", "bench-after"))
        after_name = "%s (%s)" % (options.after, after_commit[:10])
    else:
        after_src = CHECKOUT
        dirty = git("status", "--porcelain", "--untracked-files=no")
        after_name = "this checkout (%s%s)" % (git("rev-parse", "--short=10", "HEAD"), ", with changes" if dirty else "")
    say("building %s in build/bench-after ..." % after_name)
    sides["after"] = build(after_src, os.path.join(CHECKOUT, "build", "bench-after"))

    results = {}
    with tempfile.TemporaryDirectory(prefix="vornadel-compare-") as scratch:
        homes = {}
        warmup = os.path.join(scratch, "warmup.part.json")
        run([os.path.join(sides["after"], "moldgen"), "--bodies", "20", "--seed", options.seed, "--out", warmup])
        for side in sides:
            homes[side] = os.path.join(scratch, side)
            for sub in ("appdata", "desktop"):
                os.makedirs(os.path.join(homes[side], sub))
            whole_run(sides[side], warmup, homes[side])  # makes the per-user copy of the configuration
        for size in sizes:
            part = os.path.join(scratch, "mould-%d.part.json" % size)
            run([os.path.join(sides["after"], "moldgen"), "--bodies", str(size), "--seed", options.seed, "--out", part])
            row = {}
            for side in sides:
                say("%d bodies: bench_large_moulds, %s ..." % (size, side))
                row[side] = bench(sides[side], size, options)
            runs = {side: [] for side in sides}
            for i in range(options.repeat):
                for side in sides:
                    say("%d bodies: whole run %d of %d, %s ..." % (size, i + 1, options.repeat, side))
                    runs[side].append(whole_run(sides[side], part, homes[side]))
            for side in sides:
                row[side]["run_s"] = min(r[0] for r in runs[side])
                row[side]["run_mb"] = min(r[1] for r in runs[side])
            results[size] = row

    load = os.getloadavg()
    print("large moulds, before and after (moldgen --seed %s; least of %d for each time: bench openings, whole runs)"
          % (options.seed, options.repeat))
    print("  before: %s (%s)" % (options.before, before_commit[:10]))
    print("  after:  %s" % after_name)
    print("  load average at the end %.1f %.1f %.1f; %d s in all\n" % (load[0], load[1], load[2], time.time() - started))
    measures = [("first display ms", "display", 1), ("group ms", "group", 1), ("dissolve ms", "dissolve", 1),
                ("save ms", "save", 1), ("export ms", "export", 1), ("whole run s", "run_s", 2),
                ("whole run peak MB", "run_mb", 0), ("load MB/s", "load_mbs", 1), ("heap +10 groups %", "heap_pct", 1),
                ("RSS +10 groups %", "rss_pct", 1)]
    cells = {(key, size, side): number(results[size][side][key], d)
             for _, key, d in measures for size in sizes for side in sides}
    width = 2 + max(6, *(len(cell) for cell in cells.values()))
    label = max(len(title) for title, _, _ in measures)
    print(" " * label + "".join(("%d bodies" % size).rjust(2 * width) for size in sizes))
    print(" " * label + "".join(side.rjust(width) for size in sizes for side in sides))
    for title, key, _ in measures:
        print(title.ljust(label) + "".join(cells[key, size, side].rjust(width) for size in sizes for side in sides))
    if len(sizes) > 1:
        print("\ngrowth of the first display from %d to %d bodies: before x%.1f, after x%.1f (bodies x%.1f)" % (
            sizes[0], sizes[-1], results[sizes[-1]]["before"]["display"] / results[sizes[0]]["before"]["display"],
            results[sizes[-1]]["after"]["display"] / results[sizes[0]]["after"]["display"], sizes[-1] / sizes[0]))


if __name__ == "__main__":
    main()
