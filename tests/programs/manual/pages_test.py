#!/usr/bin/env python3
"""Compares each manual page with the help of its command, and lets mandoc judge it: pages_test.py DIRECTORY ZELTRANS [DESKTOP]"""
import os
import pathlib
import re
import shutil
import subprocess
import sys

SUBCOMMANDS = {"library": ["list", "search", "show", "texts", "merge", "remove"], "settings": ["get", "set", "unset"]}


def help_of(program, words):
    result = subprocess.run([program, *words, "--help"], capture_output=True, text=True, check=True,
                            env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
    return set(re.findall(r"(?<![\w-])--[a-z][a-z-]+", "\n".join(re.findall(r"^  (-.*?)(?:  |$)", result.stdout, re.M))))


def page_options(text):
    items = re.findall(r"^\.It (Fl .*)$", text.replace("\\-", "-"), re.M)
    return set(re.findall(r"Fl (--[a-z][a-z-]+|-[a-z][a-z-]+)", " ".join(items)))


def main():
    directory, program = pathlib.Path(sys.argv[1]), sys.argv[2]
    desktop = sys.argv[3] if len(sys.argv) > 3 else None
    if not shutil.which("mandoc"):
        print("mandoc is not installed")
        sys.exit(77)
    faults = []
    pages = sorted(directory.glob("*.[135]"))
    commands = re.findall(r"^  ([a-z]+) ", subprocess.run([program, "--help"], capture_output=True, text=True,
                                                          check=True).stdout.split("Commands:")[1], re.M)
    for missing in {f"zeltrans-{command}.1" for command in commands} - {page.name for page in pages}:
        faults.append(f"{missing}: there is no such page")
    for page in pages:
        lint = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", page], capture_output=True, text=True, check=False)
        faults += [lint.stdout.strip()] * bool(lint.stdout.strip())
        command = page.name.removeprefix("zeltrans-").removesuffix(".1")
        if command in commands:
            helped = help_of(program, [command]).union(*(help_of(program, [command, sub]) for sub in SUBCOMMANDS.get(command, [])))
        elif command == "desktop" and desktop:
            helped = help_of(desktop, [])
        else:
            continue
        described = {"-" + name if not name.startswith("--") else name for name in page_options(page.read_text())}
        faults += [f"{page.name}: {name} is only in {'the help' if name in helped else 'the page'}" for name in helped ^ described]
    print("\n".join(faults) or f"{len(pages)} pages")
    sys.exit(bool(faults))


if __name__ == "__main__":
    main()
