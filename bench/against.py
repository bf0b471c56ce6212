#!/usr/bin/env python3
"""Times a batch with pictures, documents and a library by the commands of two revisions, one after the other in turns:
against.py OLD_COMMAND NEW_COMMAND RESULT.json"""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

MESSAGES = 400
REPETITIONS = 7


def make_disk(command, directory):
    """The demonstration disk, with its messages again and again as the numbers from 1."""
    subprocess.run([command, "sample", directory], check=True, stdout=subprocess.DEVNULL)
    files = sorted(file for file in pathlib.Path(directory, "MESSAGES").iterdir() if file.name[1:].isdigit())
    contents = [file.read_bytes() for file in files]
    for file in files:
        file.unlink()
    for number in range(1, MESSAGES + 1):
        pathlib.Path(directory, "MESSAGES", f".{number:04}").write_bytes(contents[number % len(contents)])


def processor_time(command, disk, scratch):
    """Seconds of one batch on one core. A message with a deliberate fault gives the exit code 1."""
    shutil.rmtree(scratch, ignore_errors=True)
    os.makedirs(scratch)
    before = os.times()
    result = subprocess.run([command, "batch", disk, "1", str(MESSAGES), "--library", f"{scratch}/library", "--settings",
                             f"{scratch}/settings", "--jobs", "1"], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                            text=True, check=False)
    if result.returncode not in (0, 1):
        sys.exit(f"{command}: {result.stderr}")
    after = os.times()
    return after.children_user + after.children_system - before.children_user - before.children_system


def main():
    old, new, result = sys.argv[1:]
    runs = []
    with tempfile.TemporaryDirectory() as directory:
        disk = f"{directory}/disk"
        make_disk(new, disk)
        for _ in range(REPETITIONS):
            for name, command in (("against/old", old), ("against/new", new)):
                seconds = processor_time(command, disk, f"{directory}/scratch")
                runs.append({"name": name, "run_name": name, "run_type": "iteration", "cpu_time": seconds * 1000,
                             "real_time": seconds * 1000, "time_unit": "ms"})
    with open(result, "w") as file:
        json.dump({"benchmarks": runs}, file)


if __name__ == "__main__":
    main()
