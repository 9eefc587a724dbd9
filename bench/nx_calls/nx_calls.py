#!/usr/bin/env python3
"""NX calls per operation of the plug-in on moulds of tools/moldgen, counted by the host.

Inside NX the time a designer waits is NX's, so the figure that carries over from the host is the
number of NX calls each operation makes. For each mould size this runs the runner
(vornadel-host --nx-calls --format tsv) on the mould for: the first display, a save, an export,
a group of two bodies (the group button) and the dissolve of that group (the tree's menu). Each
operation's count is its run's count minus that of the run without it. Next to the counts stand
the counts the documented algorithms make, as formulas in the rows R of the tree, its purchase
lines G and the rows R' of the tree the operation rebuilds, where the algorithms fix them.

    bench/nx_calls/nx_calls.py --bin build/bin [--sizes 1000,5000] [--seed 1] [--all]

--all lists every entry point an operation calls; without it, those with a formula and the five
most called others.
"""

import argparse
import os
import subprocess
import sys
import tempfile


def run(bin_dir, part, commands, scratch):
    cmd = [os.path.join(bin_dir, "vornadel-host"), "run", part, "--format", "tsv", "--nx-calls",
           "--localappdata", os.path.join(scratch, "appdata"), "--drive", "C=" + scratch,
           "--time", "2024-06-03T14:05:09.027"]
    for c in commands + ["show tree", "close"]:
        cmd += ["-e", c]
    done = subprocess.run(cmd, capture_output=True, text=True)
    if done.returncode not in (0, 3):
        sys.exit("vornadel-host failed (%d): %s" % (done.returncode, done.stderr))
    counts, rows = {}, []
    for line in done.stdout.splitlines():
        fields = line.split("\t")
        if fields[0] == "nx-call":
            counts[fields[1]] = int(fields[2])
        elif fields[0] in ("0", "1") and len(fields) >= 15:
            rows.append((int(fields[0]), fields[-1]))
    return counts, rows


def last_tree(rows):
    # "show tree" runs once, at the end: rows holds exactly that tree.
    lines, r = [], 0
    for depth, body in rows:
        r += 1
        if depth == 0:
            lines.append([body])
        else:
            lines[-1].append(body)
    return r, lines


def delta(after, before):
    return {k: after.get(k, 0) - before.get(k, 0) for k in set(after) | set(before) if after.get(k, 0) != before.get(k, 0)}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--bin", default="build/bin")
    parser.add_argument("--sizes", default="1000,5000")
    parser.add_argument("--seed", default="1")
    parser.add_argument("--all", action="store_true")
    options = parser.parse_args()

    for size in [int(s) for s in options.sizes.split(",")]:
        with tempfile.TemporaryDirectory() as scratch:
            part = os.path.join(scratch, "mould.part.json")
            subprocess.run([os.path.join(options.bin, "moldgen"), "--bodies", str(size), "--seed", options.seed,
                            "--out", part], check=True)
            os.makedirs(os.path.join(scratch, "out"), exist_ok=True)
            base, rows = run(options.bin, part, [], scratch)
            R, lines = last_tree(rows)
            G = len(lines)
            # The two bodies grouped: the first body rows of the first two lines with body rows.
            two = [l[1] for l in lines if len(l) > 1][:2]
            ops = []
            save, _ = run(options.bin, part, ["press button0"], scratch)
            ops.append(("save", delta(save, base), {
                "UF_ATTR_assign": ("12 R", 12 * R), "UF_MODL_update": ("12 R", 12 * R),
                "NXObject::SetUserAttribute": ("11 + 1", 12)}))
            export, _ = run(options.bin, part, ["folder C:\\out", "press button01"], scratch)
            ops.append(("export", delta(export, base), {
                "UF_ATTR_assign": ("12 R (the save)", 12 * R), "UF_MODL_update": ("12 R (the save)", 12 * R),
                "Node::GetColumnDisplayText": ("12 R (save) + 11 G (sheet)", 12 * R + 11 * G)}))
            group, grows = run(options.bin, part, ["answer-selection ok %s %s" % tuple(two), "press button04"], scratch)
            R1, lines1 = last_tree(grows)
            ops.append(("group", delta(group, base), {
                "NXObject::SetUserAttribute": ("2 (the bodies chosen)", 2),
                "Tree::CreateNode": ("R' (the rebuilt tree)", R1), "Tree::InsertNode": ("R'", R1),
                "Tree::DeleteNode": ("G (each line of the old tree)", G)}))
            line = next(i for i, l in enumerate(lines1) if two[0] in l[1:]) + 1
            dissolve, drows = run(options.bin, part, ["answer-selection ok %s %s" % tuple(two), "press button04",
                                                             "menu %d 1" % line], scratch)
            R2, _ = last_tree(drows)
            members = len(lines1[line - 1])
            ops.append(("dissolve", delta(dissolve, group), {
                "NXObject::DeleteUserAttribute": ("1 + body rows of the line", members),
                "Tree::CreateNode": ("R'' (the rebuilt tree)", R2), "Tree::InsertNode": ("R''", R2),
                "Tree::DeleteNode": ("G' (each line of the old tree)", len(lines1))}))
            first = {k: v for k, v in base.items()}
            ops.insert(0, ("first display", first, {"Tree::CreateNode": ("R", R), "Tree::InsertNode": ("R", R)}))

            print("%d bodies: R = %d rows, G = %d purchase lines" % (size, R, G))
            print("  %-14s %-34s %10s  %-30s %10s  %s" % ("operation", "entry point", "calls", "formula", "formula", ""))
            for name, counts, formulas in ops:
                shown = sorted(counts, key=lambda k: -counts[k])
                if not options.all:
                    shown = [k for k in shown if k in formulas] + [k for k in shown if k not in formulas][:5]
                total = sum(counts.values())
                for k in shown:
                    f = formulas.get(k)
                    mark = "" if f is None else ("=" if counts[k] == f[1] else ("more" if counts[k] > f[1] else "fewer"))
                    print("  %-14s %-34s %10d  %-30s %10s  %s" % (name, k, counts[k], f[0] if f else "", f[1] if f else "", mark))
                for k, f in formulas.items():
                    if k not in counts:
                        print("  %-14s %-34s %10d  %-30s %10s  %s" % (name, k, 0, f[0], f[1], "fewer" if f[1] else "="))
                print("  %-14s %-34s %10d" % (name, "(all NX calls)", total))
            print()


if __name__ == "__main__":
    main()
