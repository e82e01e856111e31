#!/usr/bin/env python3
"""Turns the raw benchmark results in DIR into tables: one per architecture, printed, and written
as DIR/x86_64.csv, DIR/aarch64.csv and DIR/report.md (the README's copy)."""
import csv
import json
import os
import sys

out = sys.argv[1]
OURS = "ZELK"
BANDWIDTH = "memcpy-same-bytes"


def x86_rows():
    data = json.load(open(os.path.join(out, "x86_64.json")))
    times = {}  # (function, impl, n) -> ns
    for b in data["benchmarks"]:
        if b.get("aggregate_name") != "median":
            continue
        fn, impl, n = b["run_name"].split("/")
        times[(fn, impl, int(n))] = b["real_time"]
    rows = []
    for (fn, impl, n), ours in sorted(times.items(), key=lambda kv: (kv[0][0], kv[0][2])):
        if impl != OURS:
            continue
        peers = {i: t for (f, i, m), t in times.items() if f == fn and m == n and i not in (OURS, BANDWIDTH)}
        best = min(peers, key=peers.get) if peers else "-"
        bw = times.get((fn, BANDWIDTH, n))
        rows.append({"function": fn, "n": n, "ours_ns": round(ours, 1), "best_peer": best,
                     "peer_ns": round(peers[best], 1) if peers else "",
                     "ratio": round(ours / peers[best], 2) if peers else "",
                     "memcpy_ns": round(bw, 1) if bw else "",
                     "ratio_memcpy": round(ours / bw, 2) if bw else ""})
    return rows, data["context"]


def arm_rows():
    counts = {}
    for line in open(os.path.join(out, "aarch64_counts.txt")):
        fn, impl, n, at_n, at_0 = line.split()
        counts[(fn, impl, int(n))] = (int(at_n) - int(at_0)) / int(n)
    rows = []
    for (fn, impl, n), ours in sorted(counts.items(), key=lambda kv: (kv[0][0], kv[0][2])):
        if impl != OURS:
            continue
        peers = {i: c for (f, i, m), c in counts.items() if f == fn and m == n and i != OURS}
        best = min(peers, key=peers.get) if peers else "-"
        rows.append({"function": fn, "n": n, "ours_ipe": round(ours, 3), "best_peer": best,
                     "peer_ipe": round(peers[best], 3) if peers else "",
                     "ratio": round(ours / peers[best], 2) if peers else ""})
    return rows


def write(name, rows):
    with open(os.path.join(out, name), "w", newline="") as fh:
        w = csv.DictWriter(fh, fieldnames=list(rows[0].keys()))
        w.writeheader()
        w.writerows(rows)


def markdown(rows, cols, heads):
    lines = ["| " + " | ".join(heads) + " |", "|" + "---|" * len(heads)]
    for r in rows:
        lines.append("| " + " | ".join(str(r[c]) for c in cols) + " |")
    return "\n".join(lines)


x86, ctx = x86_rows()
arm = arm_rows()
write("x86_64.csv", x86)
write("aarch64.csv", arm)
cpu = next((l.split(":", 1)[1].strip() for l in open("/proc/cpuinfo") if l.startswith("model name")), "?")
# The report shows the sizes the targets name, or a function's own sizes; the CSV files hold
# every size.
shown = (4096, 262144, 1048576)
own = {r["function"] for r in x86} - {r["function"] for r in x86 if r["n"] in shown}
x86_md = [r for r in x86 if r["n"] in shown or r["function"] in own]
md = ["### x86-64, timed (median ns per call; ratio = ours / best peer; memcpy = a copy of the same bytes read and written)",
      "", "Machine: %s, %d logical CPUs, %s." % (cpu, ctx.get("num_cpus", 0), ctx.get("date", "")), "",
      markdown(x86_md, ["function", "n", "ours_ns", "best_peer", "peer_ns", "ratio", "memcpy_ns", "ratio_memcpy"],
               ["function", "n", "ours ns", "best peer", "peer ns", "ratio", "memcpy ns", "ours/memcpy"]),
      "", "### AArch64, counted (instructions per element under qemu-aarch64; ratio = ours / best peer)", "",
      markdown(arm, ["function", "n", "ours_ipe", "best_peer", "peer_ipe", "ratio"],
               ["function", "n", "ours", "best peer", "peer", "ratio"])]
open(os.path.join(out, "report.md"), "w").write("\n".join(md) + "\n")
print("\n".join(md))
