#!/usr/bin/env python3
"""Writes docs/performance.md to standard output from the results of the benchmark programs, and the files figures.json
and slower beside them: write_table.py DIRECTORY [REVISION], with the revision that the command was compared with"""
import collections
import json
import os
import re
import statistics
import subprocess
import sys
import textwrap

UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}

# The ratios of the last landed run: time by baseline, so that less is faster.
FIGURES = "bench/figures.json"
SLOWER = 1.1


def read(path):
    """The processor times of each benchmark's repetitions in nanoseconds, and the counters of its last one."""
    times, counters = collections.defaultdict(list), {}
    for run in json.load(open(path))["benchmarks"]:
        if run.get("error_occurred"):
            sys.exit(f"{run['name']}: {run['error_message']}")
        if run.get("run_type") != "iteration":
            continue
        words = run["run_name"].split("/")
        name = "/".join(word for word in words if not re.match(r"iterations:|process_time|manual_time|real_time", word))
        field = "real_time" if "manual_time" in words or "real_time" in words else "cpu_time"
        times[name].append(run[field] * UNITS[run["time_unit"]])
        counters[name] = run
    return times, counters


def spread(times):
    """Half the distance between the quartiles, in percent of the median."""
    if len(times) < 4:
        return None
    low, _, high = statistics.quantiles(times, n=4)
    return 50 * (high - low) / statistics.median(times)


def shown(times):
    """The median with its spread."""
    median, around = statistics.median(times), spread(times)
    unit, size = next(((unit, size) for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)) if median >= size), ("ns", 1))
    text = f"{median / size:.3g} {unit}"
    return text if around is None else f"{text} ± {around:.0f} %"


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
    ("the same as bitmaps", "walk/bitmap_form", [("calling the callback", "walk/calls", 6, "within")]),
    ("The Bitstream list, 10,000 lines", "name_lists/bitstream/module",
     [("std::getline", "name_lists/bitstream/lines", 2, "within")]),
    ("The typeface list, 10,000 lines", "name_lists/typefaces/module",
     [("std::getline", "name_lists/typefaces/lines", 2, "within")]),
    ("A batch of 1,000 messages with 4 fonts each", "batch/plain/module",
     [("reading the same files", "batch/plain/raw", 2, "within")]),
    ("A batch of 300 messages with pictures", "batch/pictures/module",
     [("the PNG encoder alone", "batch/pictures/encoder", 2, "within")]),
    ("the same, the demonstration disk's messages", "batch/demonstration/module",
     [("the PNG encoder alone", "batch/demonstration/encoder", 2, "within")]),
    ("the same as a command, two jobs", "batch_jobs/two", [("one job", "batch_jobs/one", 1.8, "faster")]),
    ("PNG files of the demonstration disk's pictures", "png/fast",
     [("libpng as it is", "png/libpng", 25, "faster"), ("libpng, level 2, no filters", "png/libpng_level_2", 5, "faster")]),
    ("PNG file of a clear picture, 720 by 576", "png/clear/encoder", [("copying its pixels", "png/clear/copy", None, "within")]),
    ("50 of 100,000 recordings: `zeltrans library list`", "library/list", [("of an empty library", "library/empty", 2, "within")]),
    ("`zeltrans library search`, a word in 100 recordings", "library/search",
     [("of an empty library", "library/empty", 2, "within")]),
    ("the same, a word in 1,000 recordings", "library/search_more", [("of an empty library", "library/empty", 2, "within")]),
    ("the same, a word in all", "library/search_all", [("of an empty library", "library/empty", None, "within")]),
    ("The desktop program's first page of 100,000", "library/desktop",
     [("of an empty library", "library/desktop_empty", 2, "within")]),
    ("`zeltrans info`, a directory of 10,000 messages", "info/directory", [("find and cat", "info/cat", 2, "within")]),
    ("`zeltrans info`", "process/info", [("an empty program", "process/empty", 1.5, "within")]),
    ("`zeltrans import`", "process/import", [("an empty program", "process/empty", 3, "within")]),
]


def table(rows, times, figures, before):
    """The lines of the table. Adds the ratio of each row to `figures`."""
    lines = ["| what | time | baseline | its time | ratio | before | target | met |", "|---|---|---|---|---|---|---|---|"]
    for what, name, baselines in rows:
        for index, (baseline, baseline_name, target, kind) in enumerate(baselines):
            if name not in times or baseline_name not in times:
                continue
            mine, other = (statistics.median(times[which]) for which in (name, baseline_name))
            key = f"{name} : {baseline_name}"
            figures[key] = float(f"{mine / other:.3g}")

            def ratio(figure):
                return f"{1 / figure if kind == 'faster' else figure:.2f}"

            is_met = target is not None and (mine / other <= (1 / target if kind == "faster" else target))
            met = "" if target is None else "yes" if is_met else "no"
            bound = "" if target is None else f"{'at least' if kind == 'faster' else 'at most'} {target:.3g}"
            first = (what, shown(times[name])) if index == 0 else ("", "")
            lines.append(f"| {first[0]} | {first[1]} | {baseline} | {shown(times[baseline_name])} | {ratio(mine / other)} "
                         f"{'times faster' if kind == 'faster' else 'times as long'} | "
                         f"{ratio(before[key]) if key in before else ''} | {bound} | {met} |")
    return lines


def landed_figures():
    """The ratios of the last landed run; none if this is not a clone."""
    landed = subprocess.run(["git", "show", f"HEAD:{FIGURES}"], capture_output=True, text=True, check=False)
    return json.loads(landed.stdout) if landed.returncode == 0 else {}


def slower(figures, before):
    """One line for each row that takes more than a tenth longer than in the last landed run."""
    return [f"- {key}: {figures[key]:.3g}, before {before[key]:.3g}" for key in figures
            if key in before and figures[key] > SLOWER * before[key]]


def memory(counters, name, jobs):
    few, many = (counters[f"{name}/{n}"]["KiB"] / 1024 for n in (10, 9999))
    return (f"- With {jobs}, a batch of 10 messages with pictures takes at most {few:.1f} MiB, one of 9,999 at most "
            f"{many:.1f} MiB; the target of 4 MiB of difference is {'met' if many - few <= 4 else 'not met'}.")


def per_unit(times, counters):
    code = 1e9 / counters["run_codes/smooth/module"]["items_per_second"]
    character = statistics.median(times["walk/text_form"]) / 720
    return [
        f"- A run code of an anti-aliased glyph takes {code:.2f} ns; the target of 3 ns is "
        f"{'met' if code <= 3 else 'not met'}.",
        f"- A character of the walk takes {character:.1f} ns as text, which is {1000 / character:.0f} million per "
        "second.",
    ] + [memory(counters, *name) for name in (("memory", "two jobs"), ("memory_one_job", "one job"))]


def png_bytes(counters):
    """What the PNG files of the demonstration disk take."""
    size = {name: counters[f"png{name}"]["bytes"] for name in
            ("/fast", "/libpng", "_size/small", "_size/libpng_level_9")}
    pictures = counters["png/fast"]["pictures"]
    small = size["_size/small"] / size["_size/libpng_level_9"]
    return [
        f"- The PNG files of the {pictures:.0f} pictures take {size['/fast']:,.0f} bytes, those of libpng "
        f"{size['/libpng']:,.0f}; the target of no more is {'met' if size['/fast'] <= size['/libpng'] else 'not met'}.",
        f"- With `--small` they take {size['_size/small']:,.0f} bytes, {100 * small:.1f} % of libpng's level 9 "
        f"({size['_size/libpng_level_9']:,.0f}); the target of 80 % is {'met' if small <= 0.8 else 'not met'}.",
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
    host_times, host_counters = read(os.path.join(results, "host.json"))
    times.update(host_times)
    counters.update(host_counters)
    counters.update(read(os.path.join(results, "once.json"))[1])
    rows = list(ROWS)
    if len(sys.argv) > 2:
        times.update(read(os.path.join(results, "against.json"))[0])
        rows.append(("A batch of 400 messages with pictures, documents and a library, one job", "against/new",
                     [(f"revision {sys.argv[2]}", "against/old", 3, "faster")]))
    notes = open(os.path.join(os.path.dirname(__file__), "notes.md")).read().strip()
    print("# Performance\n")
    print(filled("Written by `scripts/bench`; the text below the numbers is `bench/notes.md`. Each row is compared "
                 "with baselines from the same run. Each time is the median processor time of interleaved repetitions; "
                 "after it, half the distance between the quartiles. The column `before` has the ratio of the last "
                 f"landed run, from `{FIGURES}`."))
    print()
    print(f"Machine: {os.cpu_count()} cores, {processor()}; g++, `-O2`.\n")
    figures, before = {}, landed_figures()
    print("\n".join(table(rows, times, figures, before)))
    print()
    print("\n".join(filled(line) for line in per_unit(times, counters) + png_bytes(counters)))
    print("\n" + notes)
    with open(os.path.join(results, "figures.json"), "w") as file:
        json.dump(figures, file, indent=1)
        file.write("\n")
    with open(os.path.join(results, "slower"), "w") as file:
        file.writelines(line + "\n" for line in slower(figures, before))


if __name__ == "__main__":
    main()
