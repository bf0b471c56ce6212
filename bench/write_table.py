#!/usr/bin/env python3
"""Writes docs/performance.md from the results of the benchmark programs: write_table.py DIRECTORY"""
import json
import os
import re
import sys
import textwrap

UNITS = {"ns": 1, "us": 1e3, "ms": 1e6}


def read(path):
    """The minimum processor time of each benchmark in nanoseconds, and the counters of its last run."""
    times, counters = {}, {}
    for run in json.load(open(path))["benchmarks"]:
        if run.get("error_occurred"):
            sys.exit(f"{run['name']}: {run['error_message']}")
        if run.get("run_type") != "iteration":
            continue
        words = run["run_name"].split("/")
        name = "/".join(word for word in words if not re.match(r"iterations:|process_time|manual_time|real_time", word))
        field = "real_time" if "manual_time" in words else "cpu_time"
        time = run[field] * UNITS[run["time_unit"]]
        times[name] = min(time, times.get(name, time))
        counters[name] = run
    return times, counters


def shown(nanoseconds):
    for unit, size in (("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


# What is measured, its benchmark, and for each baseline: what it is, its benchmark, the target, and the target's kind:
# the module is at least that many times faster ("faster") or takes at most that many times as long ("within").
ROWS = [
    ("A stored glyph's pixels, converted and flipped: all 65,536 pairs", "stored/pairs/module",
     [("the formula in doubles", "stored/pairs/formula", 8, "faster"), ("QImage", "stored/pairs/qimage", 2, "faster"),
      ("memcpy", "stored/pairs/memcpy", None, "within")]),
    ("the same, a letter of 40 by 30", "stored/letter/module",
     [("the formula in doubles", "stored/letter/formula", 8, "faster"), ("QImage", "stored/letter/qimage", 2, "faster"),
      ("memcpy", "stored/letter/memcpy", None, "within")]),
    ("A run-coded glyph, anti-aliased, 48 by 60", "run_codes/smooth/module",
     [("the formula in doubles", "run_codes/smooth/formula", 4, "faster")]),
    ("Run codes of 32 pixels", "run_codes/runs_of_32/module",
     [("std::fill", "run_codes/runs_of_32/fill", 1 / 0.7, "within")]),
    ("The size of a run-coded glyph", "measure/module", [("one pass over its words", "measure/pass", 2, "within")]),
    ("Reading a message", "message/module", [("open, fstat, read, close", "message/raw", 1.3, "within")]),
    ("Reading a font", "font/module", [("open, fstat, read, close", "font/raw", 1.5, "within")]),
    ("A stored glyph on request, 40 by 30", "glyph_on_request/module",
     [("open, pread, close", "glyph_on_request/raw", 2, "within")]),
    ("The walk over 720 characters as text", "walk/text_form", [("calling the callback", "walk/calls", 4, "within")]),
    ("the same as bitmaps", "walk/bitmap_form", [("calling the callback", "walk/calls", 4, "within")]),
    ("The Bitstream list, 10,000 lines", "name_lists/bitstream/module",
     [("std::getline", "name_lists/bitstream/lines", 2, "within")]),
    ("The typeface list, 10,000 lines", "name_lists/typefaces/module",
     [("std::getline", "name_lists/typefaces/lines", 2, "within")]),
    ("A batch of 1,000 messages with 4 fonts each", "batch/plain/module",
     [("reading the same files", "batch/plain/raw", 2, "within")]),
    ("A batch of 300 messages with pictures", "batch/pictures/module",
     [("the PNG encoder alone", "batch/pictures/encoder", 1.2, "within")]),
    ("`zeltrans info`", "process/info", [("an empty program", "process/empty", 1.5, "within")]),
    ("`zeltrans import`", "process/import", [("an empty program", "process/empty", 3, "within")]),
]


def table(times):
    lines = ["| what | time | baseline | its time | ratio | target | met |", "|---|---|---|---|---|---|---|"]
    for what, name, baselines in ROWS:
        for index, (baseline, baseline_name, target, kind) in enumerate(baselines):
            if name not in times or baseline_name not in times:
                continue
            mine, other = times[name], times[baseline_name]
            ratio = other / mine if kind == "faster" else mine / other
            is_met = target is not None and (ratio >= target if kind == "faster" else ratio <= target)
            met = "" if target is None else "yes" if is_met else "no"
            bound = "" if target is None else f"{'at least' if kind == 'faster' else 'at most'} {target:.3g}"
            first = (what, shown(mine)) if index == 0 else ("", "")
            lines.append(f"| {first[0]} | {first[1]} | {baseline} | {shown(other)} | {ratio:.2f} "
                         f"{'times faster' if kind == 'faster' else 'times as long'} | {bound} | {met} |")
    return lines


def per_unit(times, counters, memory):
    code = 1e9 / counters["run_codes/smooth/module"]["items_per_second"]
    few, many = (memory[f"memory/{n}"]["KiB"] / 1024 for n in (10, 9999))
    character = times["walk/text_form"] / 720
    return [
        f"- A run code of an anti-aliased glyph takes {code:.2f} ns; the target of 3 ns is "
        f"{'met' if code <= 3 else 'not met'}.",
        f"- A character of the walk takes {character:.1f} ns as text, which is {1000 / character:.0f} million per "
        "second.",
        f"- A batch of 10 messages with pictures takes at most {few:.1f} MiB, one of 9,999 at most {many:.1f} MiB; the "
        f"target of 8 MiB of difference is {'met' if many - few <= 8 else 'not met'}.",
    ]


def filled(text):
    return textwrap.fill(text, 120, subsequent_indent="  " if text.startswith("- ") else "", break_on_hyphens=False)


def processor():
    for line in open("/proc/cpuinfo"):
        if line.startswith("model name"):
            return line.split(":")[1].strip()
    return "an unnamed processor"


def main():
    results = sys.argv[1]
    times, counters = read(os.path.join(results, "module.json"))
    times.update(read(os.path.join(results, "host.json"))[0])
    memory = read(os.path.join(results, "memory.json"))[1]
    notes = open(os.path.join(os.path.dirname(__file__), "notes.md")).read().strip()
    print("# Performance\n")
    print(filled("Written by `scripts/bench`; the text below the numbers is `bench/notes.md`. Each row is compared "
                 "with baselines from the same run. Each time is the minimum processor time of several repetitions."))
    print()
    print(f"Machine: {os.cpu_count()} cores, {processor()}; g++, `-O2`.\n")
    print("\n".join(table(times)))
    print()
    print("\n".join(filled(line) for line in per_unit(times, counters, memory)))
    print("\n" + notes)


if __name__ == "__main__":
    main()
