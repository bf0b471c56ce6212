"""Sets the messages of the demonstration disk from font kits, and rebuilds the pages from the planes.

Arguments: the command zeltrans, and a directory for the files.
"""
import json
import os
import pathlib
import subprocess
import sys

from PIL import Image

import bmfont

ZELTRANS, SCRATCH = sys.argv[1], pathlib.Path(sys.argv[2])


def run(*arguments):
    subprocess.run([ZELTRANS, *map(str, arguments)], check=True, stdout=subprocess.DEVNULL,
                   env={**os.environ, "XDG_CONFIG_HOME": str(SCRATCH / "settings")})


def wrong_pixels(a, b):
    if a.size != b.size:
        return -1
    a, b = a.tobytes(), b.tobytes()
    return sum(a[at:at + 4] != b[at:at + 4] for at in range(0, len(a), 4))


def check(condition, text):
    if not condition:
        sys.exit(text)


class Kits:
    """The kits of the fonts of one message, in its colours."""

    def __init__(self, message, directory):
        self.message, self.directory, self.fonts = message, directory, {}

    def font(self, number, colour_set):
        kit = self.directory / f"{number:04}"
        if not kit.exists():
            run("font", SCRATCH / f"disk/MACHINE/.{number:04}", "--kit", kit, "--colours", self.message)
        key = number, colour_set
        if key not in self.fonts:
            self.fonts[key] = bmfont.BmFont(kit / f"{number:04}_set{colour_set}.fnt")
        return self.fonts[key]


def colour_set(document, character):
    """The first set with the colours of a character."""
    for number, colours in enumerate(document["palette"]):
        if colours[1] == character["face_colour"] and colours[2] == character["edge_colour"]:
            return number
    return 7


def set_message(message, directory):
    """@return the number of wrong pixels, and that of characters."""
    png, document = directory / "message.png", directory / "message.json"
    run("import", message, "--maps", SCRATCH / "disk", "--png", png, "--json", document)
    expected = Image.open(png).convert("RGBA")
    document = json.loads(document.read_text("utf-8"))
    if document["kind"] != "message":
        return None
    kits = Kits(message, directory)
    picture = Image.new("RGBA", expected.size)
    lines, count = {}, 0
    for character in document["characters"]:
        if character["form"] != "bitmap" or "font" not in character:
            return None
        font = kits.font(character["font"]["number"], colour_set(document, character))
        char = font.chars.get(character["code"])
        if char is None or char["width"] == 0:
            continue
        top = character["y"] + character["base_shift"]
        # The first character of a font in a row gives the line; the others follow by their offsets.
        line = character["row"], character["font"]["number"], character.get("glyph_y")
        top = lines.setdefault(line, top - char["yoffset"]) + char["yoffset"]
        bmfont.draw(picture, font.glyph(character["code"]), character["x"] + char["xoffset"], top)
        count += 1
    return wrong_pixels(picture, expected), count


def check_header(font, path):
    """What engines demand of a font with coloured pages."""
    common = font.common
    check(font.info["unicode"] == 1 and font.info["outline"] == 0 and font.info["size"] > 0, f"{path}: info")
    check(common["packed"] == 0 and not any(common[c + "Chnl"] for c in ("alpha", "red", "green", "blue")),
          f"{path}: common")
    check(len(font.chars) == font.count and 32 in font.chars, f"{path}: chars")
    check(common["pages"] == len(font.pages), f"{path}: pages")
    for page in font.pages.values():
        check(page.mode == "RGBA", f"{path}: a page is no RGBA file")
        check(page.size == (common["scaleW"], common["scaleH"]), f"{path}: size of a page")
        check(all(side & (side - 1) == 0 and side <= 4096 for side in page.size), f"{path}: no power of two")


def check_gaps(font, path):
    """No two glyphs overlap or touch, and all are a pixel from the borders."""
    taken = {page: set() for page in font.pages}
    for char in font.chars.values():
        check(char["chnl"] == 15, f"{path}: chnl")
        if char["width"] == 0:
            continue
        check(char["x"] > 0 and char["y"] > 0 and char["x"] + char["width"] < font.common["scaleW"] and
              char["y"] + char["height"] < font.common["scaleH"], f"{path}: {char['id']} is at a border")
        # With the gap on two sides, each pixel belongs to one glyph.
        cells = {(x, y) for x in range(char["x"], char["x"] + char["width"] + 1)
                 for y in range(char["y"], char["y"] + char["height"] + 1)}
        check(not cells & taken[char["page"]], f"{path}: {char['id']} touches another glyph")
        taken[char["page"]] |= cells


def check_xml(font, path):
    elements = bmfont.read_xml(path)
    chars = [attributes for tag, attributes in elements if tag == "char"]
    check([{name: str(value) for name, value in char.items()} for char in font.chars.values()] == chars,
          f"{path}: other characters than in the text form")
    for tag in ("info", "common"):
        attributes = next(attributes for found, attributes in elements if found == tag)
        check({name: str(value) for name, value in getattr(font, tag).items()} == attributes, f"{path}: {tag}")


def rebuilt_page(kit, metrics, page, number):
    """A page in a colour set, from the planes and the palette alone."""
    picture = Image.new("RGBA", (metrics["page_width"], metrics["page_height"]))
    if page["stored"]:
        picture = Image.open(kit / page["stored"])
    if not page["index"]:
        return picture
    index, level = (Image.open(kit / page[plane]) for plane in ("index", "level"))
    check(index.mode == level.mode == "L", f"{kit}: a plane is not grey")
    high = Image.open(kit / page["index_high"]).tobytes() if page["index_high"] else bytes(len(index.tobytes()))
    palette = [bytes.fromhex(colour[1:]) for colour in metrics["palettes"][number]]
    pixels = bytearray(picture.tobytes())
    for at, (low, upper, alpha) in enumerate(zip(index.tobytes(), high, level.tobytes())):
        if alpha:
            pixels[at * 4:at * 4 + 4] = palette[low + 256 * upper] + bytes([alpha])
    return Image.frombytes("RGBA", picture.size, bytes(pixels))


def check_kit(kit):
    stem = kit.name
    metrics = json.loads((kit / f"{stem}.json").read_text("utf-8"))
    check(not metrics["lost"], f"{kit}: lost glyphs")
    for number in range(8):
        path = kit / f"{stem}_set{number}.fnt"
        font = bmfont.BmFont(path)
        check_header(font, path)
        check_xml(font, kit / f"{stem}_set{number}.xml")
        for id, page in enumerate(metrics["pages"]):
            wrong = wrong_pixels(rebuilt_page(kit, metrics, page, number), font.pages[id])
            check(wrong == 0, f"{kit}: set {number}: {wrong} pixels of page {id} differ from the planes")
    check_gaps(font, path)
    for glyph in metrics["glyphs"]:
        char = font.chars[glyph["code"]]
        same = [("x", "x"), ("y", "y"), ("width", "width"), ("height", "height"), ("xadvance", "advance"),
                ("yoffset", "y_offset"), ("page", "page")]
        check(all(char[a] == glyph[b] for a, b in same), f"{kit}: {glyph['code']} differs in the metrics")
        if glyph["file"]:
            own = bmfont.BmFont(kit / f"{stem}_set{metrics['glyph_set']}.fnt").glyph(glyph["code"])
            check(wrong_pixels(Image.open(kit / glyph["file"]), own) == 0, f"{kit}: picture of {glyph['code']}")


def main():
    run("sample", SCRATCH / "disk")
    messages = characters = 0
    for message in sorted((SCRATCH / "disk/MESSAGES").glob(".[0-9]*")):
        directory = SCRATCH / "set" / message.name[1:]
        directory.mkdir(parents=True)
        result = set_message(message, directory)
        if result is None:
            continue
        wrong, count = result
        check(wrong == 0, f"{message}: {wrong} wrong pixels")
        messages += 1
        characters += count
    check(messages >= 15 and characters >= 500, f"{messages} messages and {characters} characters are too few")
    # One colour, more than 256 mixtures, stored glyphs.
    for number in ("0001", "0015", "0032"):
        kit = SCRATCH / "kits" / number
        run("font", SCRATCH / f"disk/MACHINE/.{number}", "--kit", kit, "--colour-set", "3")
        check_kit(kit)
    print(f"{messages} messages, {characters} characters: 0 wrong pixels")


main()
