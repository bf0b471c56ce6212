#!/usr/bin/env python3
"""Runs the example for GNU parallel in docs/scaling.md: parallel_test.py PAGE COMMAND

It is run twice: at first one of its processes is killed while it records. The merged library is then equal to the one
that the disks make one after the other.
"""
import os
import shutil
import signal
import sys
import time

from archive import DAMAGED, DISKS, LARGEST, Archive, check, check_same, count, examples_below

SKIPPED = 77


def main():
    page, command = sys.argv[1:]
    if shutil.which("parallel") is None:
        print("GNU parallel is missing")
        return SKIPPED
    archive = Archive(command)
    try:
        example = "\n".join(examples_below(page, "## On one machine: GNU parallel"))
        run = archive.start(example)
        while not archive.has_begun(LARGEST):
            check(run.poll() is None, "the example ended before its process could be killed")
            time.sleep(0.01)
        os.kill(archive.batch_of(LARGEST)[0], signal.SIGKILL)
        run.wait()
        merged = archive.path / "all.zellib"
        archive.make_single_library()
        check(0 < count(merged) < count(archive.path / "single.zellib"), "the killed process recorded everything")
        archive.run(example)
        check_same(merged, archive.path / "single.zellib")
        log = [line.split("\t") for line in (archive.path / "log.txt").read_text().splitlines()]
        exit_codes = {disk: line[log[0].index("Exitval")] for line in log[1:] for disk in DISKS
                      if f"shards/{disk}.zellib" in line[-1].replace("\\", "").replace("'", "")}
        check(exit_codes == {disk: "1" if disk == DAMAGED else "0" for disk in DISKS}, f"log.txt: {exit_codes}")
        again = archive.run(examples_below(page, "## Merging")[0])
        check(again.count(" 0 added, 0 replaced, ") == len(DISKS), f"merged again: {again}")
    finally:
        archive.remove()
    return 0


if __name__ == "__main__":
    sys.exit(main())
