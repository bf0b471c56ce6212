"""The demonstration disk, its exports and filled pictures, for the tests beside it."""

import contextlib
import json
import os
import random
import re
import shutil
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    from PIL import Image
except ImportError:
    sys.exit(77)

ZELTRANS = sys.argv[1]
NODE = os.environ.get("ZELTRANS_NODE", "node")
HERE = Path(__file__).parent
if not shutil.which(NODE):
    sys.exit(77)


def run(*command, check=True, **keywords):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True, **keywords)
    if check and result.returncode != 0:
        raise AssertionError(f"{command}: {result.stdout} {result.stderr}")
    return result.stdout


@contextlib.contextmanager
def temporary_folder():
    with tempfile.TemporaryDirectory(prefix="zeltrans-live-") as folder:
        yield Path(folder)


def sample_disk(folder):
    run(ZELTRANS, "sample", folder / "disk")
    return folder / "disk"


def export(disk, formats, *arguments, check=True):
    """The folders of the formats by name, with the files of all messages of a disk."""
    library = disk.with_suffix(".zellib")
    if not library.exists():
        run(ZELTRANS, "batch", disk, "--maps", disk, "--library", library)
    folders = {name: disk.with_suffix(f".{name}") for name in formats}
    for name, folder in folders.items():
        options = arguments if name != "png" else ()
        run(ZELTRANS, "export", library, "--format", name, "--out", folder, *options, check=check)
    return folders


def picture(file):
    return Image.open(file).convert("RGBA")


class Multiplied(dict):
    """Pixels as numbers, by what they are before their colours are multiplied by alpha, each to the nearest."""

    def __missing__(self, pixel):
        *colours, alpha = pixel.to_bytes(4, "little")
        result = bytes((colour * alpha + 127) // 255 for colour in colours) + bytes([alpha])
        self[pixel] = int.from_bytes(result, "little")
        return self[pixel]


MULTIPLIED = Multiplied()


def multiplied(image):
    """The pixels of a picture whose colours are multiplied by their alpha."""
    return [MULTIPLIED[pixel] for (pixel,) in struct.iter_unpack("<I", image.tobytes())]


def form_of(page):
    text = Path(page).read_text(encoding="utf-8")
    return json.loads(re.search(r'<script type="application/json" id="zeltrans-form">(.*?)</script>', text, re.S)[1])


def file_of(folder, number, suffix):
    """The file or folder that an export made of a message."""
    (file,) = Path(folder).glob(f"*_{number:04d}{suffix}")
    return file


def filled(message, records, folder, overflow="squeeze"):
    """For each record, a dictionary by field, the picture of the message that is filled with it; None with a fault."""
    folder.mkdir()
    (folder / "data.jsonl").write_text("".join(json.dumps(record) + "\n" for record in records))
    table = folder / "data.jsonl"
    run(ZELTRANS, "fill", message, "--data", table, "--out", folder, "--overflow", overflow, check=False)
    files = [folder / f"{number:04d}.png" for number in range(1, len(records) + 1)]
    return [picture(file) if file.exists() else None for file in files]


def settable(form, field):
    """The characters that a text in a field may have."""
    slot = field["slot"]
    font = form["slots"][slot] if slot < 16 else -1
    codes = form["fonts"][font].get("settable", []) if font >= 0 else []
    return "".join(map(chr, codes))


def random_text(choose, characters, most):
    return "".join(choose.choice(characters) for _ in range(choose.randrange(most))) if characters else ""
