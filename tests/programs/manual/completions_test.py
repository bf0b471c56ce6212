#!/usr/bin/env python3
"""Completes command lines in bash, zsh and fish: completions_test.py DIRECTORY ZELTRANS"""
import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time

# What is typed, and the one word that its last word becomes.
CASES = [
    ("imp", "import"),
    ("library sea", "search"),
    ("import --pn", "--png"),
    ("import --answer ca", "cancel"),
    ("batch --answ", "--answer"),
    ("library show --di", "--disk"),
    ("batch box/di", "box/disk/"),
    ("batch box/disk 70", "7012"),
    ("export mess", "messages.zellib"),
    ("library show messages.zellib 7", "7012"),
    ("font box/disk/MACHINE/.000", "box/disk/MACHINE/.0009"),
]


def bash(directory, line):
    words = ["zeltrans", *line.split(" ")]
    script = f"""source {directory}/zeltrans.bash
COMP_WORDS=({' '.join(words)}) COMP_CWORD={len(words) - 1}
_zeltrans
printf '%s\\n' "${{COMPREPLY[@]}}" """
    found = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=False).stdout.split()
    # Readline adds the slash.
    return [word + "/" if pathlib.Path(word).is_dir() else word for word in found]


def fish(directory, line):
    script = f"source {directory}/zeltrans.fish; complete -C 'zeltrans {line}'"
    lines = subprocess.run(["fish", "--no-config", "-c", script], capture_output=True, text=True, check=False).stdout.splitlines()
    return [each.split("\t")[0] for each in lines]


def read_until(terminal, pattern, seconds=15):
    text, end = "", time.monotonic() + seconds
    while time.monotonic() < end:
        if select.select([terminal], [], [], 0.1)[0]:
            try:
                text += os.read(terminal, 4096).decode(errors="replace")
            except OSError:
                break
            if re.search(pattern, text):
                return text
    return text


def zsh(directory, line):
    """Types the line into a terminal, presses Tab, and lets the shell print what is there."""
    functions = pathlib.Path(tempfile.mkdtemp())
    shutil.copy(f"{directory}/zeltrans.zsh", functions / "_zeltrans")
    child, terminal = pty.fork()
    if child == 0:
        os.environ["TERM"] = "dumb"
        os.execvp("zsh", ["zsh", "-f", "-i"])
    setup = (f"PS1='>'; fpath=({functions} $fpath); autoload -Uz compinit; compinit -u -D; unsetopt zle_bracketed_paste; "
             "show() { print -r -- \"<<$BUFFER>>\"; }; zle -N show; bindkey '^X' show; print read''y\r")
    os.write(terminal, setup.encode())
    read_until(terminal, r"ready\r?\n")
    os.write(terminal, f"zeltrans {line}\t\x18".encode())
    shown = read_until(terminal, r"<<.*>>")
    os.close(terminal)
    os.waitpid(child, 0)
    shutil.rmtree(functions)
    found = re.search(r"<<(.*?)>>", shown, re.S)
    words = found[1].rstrip(" ").split(" ") if found else [shown]
    return [words[-1]]


def main():
    directory, program = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    shells = [shell for shell in (bash, zsh, fish) if shutil.which(shell.__name__)]
    faults = []
    with tempfile.TemporaryDirectory() as home:
        os.chdir(home)
        os.environ.update(HOME=home, XDG_CONFIG_HOME=home, PATH=f"{program.parent}:{os.environ['PATH']}")
        subprocess.run([program, "sample", "sample"], check=True, stdout=subprocess.DEVNULL)
        for folder, file, name in (("MESSAGES", ".0001", ".7012"), ("MACHINE", None, ".0009")):
            os.makedirs(f"box/disk/{folder}")
            source = pathlib.Path("sample", folder, file) if file else sorted(pathlib.Path("sample", folder).iterdir())[0]
            shutil.copy(source, f"box/disk/{folder}/{name}")
        subprocess.run([program, "batch", "box/disk", "7012", "--fonts", "sample/MACHINE", "--library", "messages.zellib"],
                       check=True, stdout=subprocess.DEVNULL)
        pathlib.Path("messages.txt").touch()
        for shell in shells:
            for line, wanted in CASES:
                found = shell(directory, line)
                if found != [wanted]:
                    faults.append(f"{shell.__name__}: \"zeltrans {line}\" is completed to {found}, not to {wanted}")
    missing = {"bash", "zsh", "fish"} - {shell.__name__ for shell in shells}
    print("\n".join(faults) or f"{len(CASES)} lines in {len(shells)} shells")
    if missing:
        print(f"not installed: {', '.join(sorted(missing))}")
    sys.exit(1 if faults else 77 if missing else 0)


if __name__ == "__main__":
    main()
