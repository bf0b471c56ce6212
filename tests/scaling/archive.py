"""An archive of several disks, the examples of docs/scaling.md, and the comparison of two libraries."""
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile

# The largest disk takes some seconds, so that a process can be killed while it records. A name may have a blank.
DISKS = {"BIG": 1500, "ELECTION 92": 40, "NEWS": 10, "SPORTS": 0, "TRAVEL": 25, "WEATHER": 5}
LARGEST = "BIG"
# This disk has a message that can't be imported.
DAMAGED = "WEATHER"


def check(condition, what):
    if not condition:
        sys.exit(f"FAILED: {what}")


def examples_below(page, heading):
    """The indented blocks below a heading, up to the next one."""
    lines = pathlib.Path(page).read_text().splitlines()
    check(heading in lines, f"{page} has no heading \"{heading}\"")
    blocks, inside = [], False
    for line in lines[lines.index(heading) + 1:]:
        if line.startswith("#"):
            break
        if line.startswith("    "):
            if not inside:
                blocks.append("")
            blocks[-1] += line[4:] + "\n"
        inside = line.startswith("    ")
    return blocks


class Archive:
    """A scratch directory with the disks in `archive`, in which commands run; `zeltrans` is the command."""

    def __init__(self, command):
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="zeltrans-scaling-"))
        programs = self.path / "bin"
        programs.mkdir()
        (programs / "zeltrans").symlink_to(command)
        self.temporary = self.path / "tmp"
        self.temporary.mkdir()
        self.environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}", HOME=str(self.path),
                                TMPDIR=str(self.temporary), XDG_CONFIG_HOME=str(self.path / "config"))
        for disk, copies in DISKS.items():
            self._make_disk(disk, copies)

    def _make_disk(self, disk, copies):
        self.run(f"zeltrans sample 'archive/{disk}' >sample.log")
        messages = self.path / "archive" / disk / "MESSAGES"
        originals = sorted(path for path in messages.iterdir() if path.name.startswith("."))
        for number in range(copies):
            shutil.copy(originals[number % len(originals)], messages / f".{2000 + number:04}")
        if disk == DAMAGED:
            (messages / ".9000").write_bytes(b"cut short")

    def run(self, line, expected=0):
        """Runs a shell script and returns its standard output."""
        result = subprocess.run(["bash", "-c", line], cwd=self.path, env=self.environment, text=True,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        check(expected is None or result.returncode == expected,
              f"exit code {result.returncode} of: {line}\n{result.stdout}\n{result.stderr}")
        return result.stdout

    def start(self, line):
        return subprocess.Popen(["bash", "-c", line], cwd=self.path, env=self.environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def batch_of(self, disk):
        """The process that imports a disk, and its library; None before it runs."""
        for process in pathlib.Path("/proc").iterdir():
            try:
                words = (process / "cmdline").read_bytes().decode().split("\0")
                if words[1:3] == ["batch", f"archive/{disk}"] and (process / "cwd").resolve() == self.path.resolve():
                    return int(process.name), self.path / words[words.index("--library") + 1]
            except (OSError, ValueError, UnicodeDecodeError):
                continue
        return None

    def has_begun(self, disk):
        """Whether a process has recorded some messages of a disk, and goes on."""
        batch = self.batch_of(disk)
        return batch is not None and 0 < count(batch[1]) < DISKS[disk]

    def make_single_library(self):
        for disk in sorted(DISKS):
            self.run(f"zeltrans batch 'archive/{disk}' 0 9999 --disk '{disk}' --library single.zellib --jobs 1 "
                     "--settings single-settings", expected=1 if disk == DAMAGED else 0)

    def remove(self):
        shutil.rmtree(self.path, ignore_errors=True)


def count(library):
    """Number of recordings of a library that another process may be making."""
    try:
        with sqlite3.connect(f"file:{library}?mode=ro", uri=True) as database:
            return database.execute("SELECT count(*) FROM recording").fetchone()[0]
    except sqlite3.Error:
        return 0


def contents(library):
    """Each table's rows, those of recordings identified by disk and number. The time of recording is left out."""
    with sqlite3.connect(f"file:{library}?mode=ro", uri=True) as database:
        check(database.execute("PRAGMA integrity_check").fetchall() == [("ok",)], f"{library} is damaged")
        keys = {row[0]: row[1:] for row in database.execute("SELECT id, disk, number FROM recording")}
        names = [row[0] for row in database.execute(
            "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'search\\_%' ESCAPE '\\'")]
        tables = {}
        for name in names:
            columns = [row[1] for row in database.execute(f"PRAGMA table_info({name})")]
            owner = "id" if name == "recording" else "rowid" if name == "search" else \
                "recording" if "recording" in columns else "NULL"
            values = ", ".join(f'"{column}"' for column in columns if column not in ("id", "recording", "recorded_at"))
            rows = database.execute(f"SELECT {owner}, {values} FROM {name}")
            tables[name] = sorted((repr((keys.get(row[0]), row[1:])) for row in rows))
        return tables


def check_same(library, expected):
    """Both libraries have the same rows in every table."""
    one, other = contents(library), contents(expected)
    check(set(one) == set(other) and len(one) >= 8, f"tables: {sorted(one)} and {sorted(other)}")
    for name, rows in other.items():
        check(rows, f"{expected}: the table {name} is empty")
        check(one[name] == rows, f"{library}: the table {name} differs: {len(one[name])} and {len(rows)} rows")
