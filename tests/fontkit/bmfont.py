"""An independent reader of BMFont files and their pages."""
import pathlib
import re
import xml.etree.ElementTree

from PIL import Image

ATTRIBUTE = re.compile(r'(\w+)=("[^"]*"|\S+)')


class BmFont:
    """A font of a text file, with its pages."""

    def __init__(self, path):
        path = pathlib.Path(path)
        self.info, self.common, self.pages, self.chars = {}, {}, {}, {}
        for line in path.read_text("utf-8").splitlines():
            tag, _, rest = line.partition(" ")
            values = {name: self._value(value) for name, value in ATTRIBUTE.findall(rest)}
            if tag in ("info", "common"):
                setattr(self, tag, values)
            elif tag == "page":
                self.pages[values["id"]] = Image.open(path.parent / values["file"])
            elif tag == "char":
                self.chars[values["id"]] = values
            elif tag == "chars":
                self.count = values["count"]

    @staticmethod
    def _value(text):
        if text.startswith('"'):
            return text[1:-1]
        return int(text) if re.fullmatch(r"-?\d+", text) else text

    def glyph(self, code):
        """The pixels of a glyph."""
        char = self.chars[code]
        box = (char["x"], char["y"], char["x"] + char["width"], char["y"] + char["height"])
        return self.pages[char["page"]].crop(box)


def read_xml(path):
    """The attributes of all elements of an XML file, as texts."""
    return [(element.tag, element.attrib) for element in xml.etree.ElementTree.parse(path).getroot().iter()]


def over(source, ground):
    """A straight pixel over another, each channel rounded to the nearest."""
    if source[3] == 255 or (ground[3] == 0 and source[3] != 0):
        return source
    if source[3] == 0:
        return ground
    above = source[3] * 255
    below = ground[3] * (255 - source[3])
    both = above + below
    mixed = [(s * above + g * below + both // 2) // both for s, g in zip(source[:3], ground[:3])]
    return (*mixed, (both + 127) // 255)


def draw(picture, glyph, left, top):
    """Draws a glyph on a picture, both RGBA."""
    pixels, source = picture.load(), glyph.load()
    for y in range(max(0, -top), min(glyph.height, picture.height - top)):
        for x in range(max(0, -left), min(glyph.width, picture.width - left)):
            pixel = source[x, y]
            if pixel[3] != 0:
                pixels[left + x, top + y] = over(pixel, pixels[left + x, top + y])
