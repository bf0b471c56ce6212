"""Clips, read by ffprobe and ffmpeg: clip_test.py ZELTRANS

For a message of each video standard, both codecs, straight and premultiplied: size, pixel shape, rate and field order;
the first frame after the fade against the PNG of the same message; the frames of the fades. And the clip that the
command line beside a sequence makes.
"""

import os
import shutil
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

try:
    from PIL import Image
except ImportError:
    sys.exit(77)
if not shutil.which("ffmpeg") or not shutil.which("ffprobe"):
    sys.exit(77)

ZELTRANS = sys.argv[1]
FADE_IN, HOLD, FADE_OUT = 4, 3, 2
LEVELS = [(0, 4), (1, 4), (2, 4), (3, 4), (1, 1), (1, 1), (1, 1), (1, 2), (0, 2)]
# By number of a message in NTSC and one in PAL, what ffprobe says: pixel shape, rate, fields.
STANDARDS = {1: ("10:11", "30000/1001", "bb"), 9: ("12:11", "25/1", "tt")}


def run(*command, check=True, **keywords):
    result = subprocess.run([str(word) for word in command], capture_output=True, **keywords)
    if check and result.returncode != 0:
        raise AssertionError(f"{command}: {result.stderr.decode()}")
    return result


def export(library, number, out, *arguments, **keywords):
    return run(ZELTRANS, "export", library, number, "--out", out, *arguments, **keywords)


def probe(clip):
    entries = "codec_name,width,height,sample_aspect_ratio,r_frame_rate,field_order,nb_frames"
    text = run("ffprobe", "-v", "error", "-show_entries", f"stream={entries}", "-of", "default=nk=0:nw=1", clip).stdout
    return dict(line.split("=", 1) for line in text.decode().split())


def frames(clip, size):
    data = run("ffmpeg", "-v", "error", "-i", clip, "-f", "rawvideo", "-pix_fmt", "rgba", "-").stdout
    step = size[0] * size[1] * 4
    assert len(data) % step == 0, clip
    return [data[at:at + step] for at in range(0, len(data), step)]


def faded(picture, level, of, premultiplied):
    """The frame by the formula, in whole numbers."""
    result = bytearray(picture)
    alpha = bytes((value * level * 2 + of) // (of * 2) for value in picture[3::4])
    result[3::4] = alpha
    if premultiplied:
        for channel in range(3):
            result[channel::4] = bytes((c * a + 127) // 255 for c, a in zip(picture[channel::4], alpha))
    return bytes(result)


def is_near(one, other, most):
    """Whether no channel differs by more; of 100,000 one may differ by one more, by the rounding of the transform."""
    differences = Counter(map(abs, map(int.__sub__, one, other)))
    beyond = sum(count for value, count in differences.items() if value > most)
    return max(differences) <= most + bool(most) and beyond * 100000 <= len(one)


def check_clip(clip, picture, size, premultiplied, expected):
    facts = probe(clip)
    codec = "qtrle" if "_qtrle_" in clip.name else "prores"
    shape, rate, fields = expected
    wanted = {"codec_name": codec, "width": str(size[0]), "height": str(size[1]), "sample_aspect_ratio": shape,
              "r_frame_rate": rate, "field_order": fields, "nb_frames": str(len(LEVELS))}
    assert facts == wanted, (clip.name, facts, wanted)
    decoded = frames(clip, size)
    assert len(decoded) == len(LEVELS), clip.name
    for number, (frame, (level, of)) in enumerate(zip(decoded, LEVELS)):
        assert is_near(frame, faded(picture, level, of, premultiplied), 0 if codec == "qtrle" else 2), (clip.name, number)


def main(scratch):
    library = scratch / "library"
    run(ZELTRANS, "sample", scratch / "disk")
    run(ZELTRANS, "batch", scratch / "disk", "--maps", scratch / "disk", "--library", library, "--disk", "")
    timing = ["--fade-in", FADE_IN, "--hold", HOLD, "--fade-out", FADE_OUT]
    out = scratch / "out"
    for number, expected in STANDARDS.items():
        export(library, number, out, "--format", "png")
        with Image.open(out / f"000{number}.png") as image:
            picture, size = image.convert("RGBA").tobytes(), image.size
        for codec in ("qtrle", "prores"):
            for premultiplied in (False, True):
                alpha = "premultiplied" if premultiplied else "straight"
                export(library, number, out, "--format", "clip", "--codec", codec, *timing,
                       *(["--premultiplied"] if premultiplied else []))
                check_clip(out / f"000{number}_{codec}_{alpha}.mov", picture, size, premultiplied, expected)
    run("sha256sum", "--check", "--quiet", "SHA256SUMS", cwd=out)

    # In an HD frame: square pixels, no fields.
    hd = scratch / "hd"
    export(library, 9, hd, "--frame", "1280x720", "--format", "png", "--format", "clip", *timing)
    with Image.open(hd / "0009.png") as image:
        check_clip(hd / "0009_qtrle_straight.mov", image.tobytes(), image.size, False, ("1:1", "25/1", "progressive"))

    # Without ffmpeg, exit code 1; the command line makes the same clip.
    sequence = scratch / "sequence"
    result = export(library, 1, sequence, "--format", "clip", *timing, check=False,
                    env={**os.environ, "PATH": "/nothing"})
    assert result.returncode == 1 and b"there is no ffmpeg on the PATH" in result.stderr, result
    command = (sequence / "0001_qtrle_straight.txt").read_text()
    run("sh", "-c", command, cwd=sequence)
    name = "0001_qtrle_straight.mov"
    assert frames(sequence / name, (720, 486)) == frames(out / name, (720, 486))
    assert probe(sequence / name) == probe(out / name)


with tempfile.TemporaryDirectory() as directory:
    main(Path(directory))
