"""Reads the installable fonts of a disk by fontTools, saves them again, and draws them by FreeType and Pango.

Arguments: the command zeltrans, and a directory for the files.
"""
import io
import json
import os
import pathlib
import shutil
import subprocess
import sys

from fontTools.ttLib import TTFont
from PIL import Image, ImageDraw, ImageFont

ZELTRANS, SCRATCH = sys.argv[1], pathlib.Path(sys.argv[2])
TABLES = {"OS/2", "cmap", "glyf", "head", "hhea", "hmtx", "loca", "maxp", "name", "post", "gasp", "prep"}


def run(*arguments):
    subprocess.run([ZELTRANS, *map(str, arguments)], check=True, stdout=subprocess.DEVNULL,
                   env={**os.environ, "XDG_CONFIG_HOME": str(SCRATCH / "settings")})


def check(condition, text):
    if not condition:
        sys.exit(text)


def saved_again(path):
    """The font after fontTools has read all its tables and written them again."""
    font = TTFont(path, checkChecksums=2)
    for tag in font.keys():
        if tag != "GlyphOrder":
            font[tag]
    saved = io.BytesIO()
    font.save(saved)
    saved.seek(0)
    return font, TTFont(saved)


def check_same_glyphs(path, font, again):
    for name in font.getGlyphOrder():
        a, b = font["glyf"][name], again["glyf"][name]
        check(a == b, f"{path}: {name} is saved otherwise")
        if a.numberOfContours:
            check((a.xMin, a.yMin, a.xMax, a.yMax) == (b.xMin, b.yMin, b.xMax, b.yMax), f"{path}: bounds of {name}")
    for field in ("xMin", "yMin", "xMax", "yMax", "unitsPerEm"):
        check(getattr(font["head"], field) == getattr(again["head"], field), f"{path}: head.{field}")
    for field in ("advanceWidthMax", "minLeftSideBearing", "minRightSideBearing", "xMaxExtent", "numberOfHMetrics"):
        check(getattr(font["hhea"], field) == getattr(again["hhea"], field), f"{path}: hhea.{field}")
    for field in ("maxPoints", "maxContours", "numGlyphs"):
        check(getattr(font["maxp"], field) == getattr(again["maxp"], field), f"{path}: maxp.{field}")
    check(font.getBestCmap() == again.getBestCmap(), f"{path}: cmap")


def check_layers(path, font, metrics):
    palettes = font["CPAL"].palettes
    check(len(palettes) == 8, f"{path}: {len(palettes)} palettes")
    for palette, colours in zip(palettes, metrics["sets"]):
        for colour, expected in zip(palette, (colours["face"], colours["edge"])):
            check(f"#{colour.red:02X}{colour.green:02X}{colour.blue:02X}" == expected and colour.alpha == 255,
                  f"{path}: palettes")
    layers = font["COLR"].ColorLayers
    for glyph in metrics["glyphs"]:
        if glyph["kind"] == "run-coded":
            name = font.getBestCmap()[0xF000 + glyph["code"]]
            check(layers[name][-1].colorID == 0, f"{path}: the face of {glyph['code']} isn't above the rest")


def check_coverage(path, metrics, kit):
    """The outlines, drawn by FreeType at the size of the strike, against the levels of the pixels."""
    size = metrics["line_height"]
    # Without the strike, so that the outline is drawn.
    plain = TTFont(path)
    del plain["sbix"]
    saved = io.BytesIO()
    plain.save(saved)
    saved.seek(0)
    font = ImageFont.truetype(saved, size)
    errors = covered = 0
    for glyph in metrics["glyphs"]:
        if not glyph["file"] or glyph["code"] < 33 or 127 <= glyph["code"] < 161:
            continue
        alpha = Image.open(kit / glyph["file"]).getchannel("A")
        drawn = Image.new("L", alpha.size)
        ImageDraw.Draw(drawn).text((0, glyph["top"]), chr(glyph["code"]), fill=255, font=font, anchor="ls")
        for a, b in zip(alpha.tobytes(), drawn.tobytes()):
            errors += abs(a - b)
            covered += max(a, b)
    check(errors <= covered * 0.1, f"{path}: error of coverage {errors / covered:.3f}")
    return errors / covered


def check_pango(kits):
    """Pango finds an installed font by its name and draws it in the colours of its first palette."""
    directory = SCRATCH / "fonts"
    shutil.copytree(kits, directory, ignore=shutil.ignore_patterns("*.png", "*.fnt", "*.xml", "*.json"))
    (SCRATCH / "fonts.conf").write_text(
        f"<fontconfig><dir>{directory}</dir><cachedir>{SCRATCH}/cache</cachedir></fontconfig>", "utf-8")
    os.environ["FONTCONFIG_FILE"] = str(SCRATCH / "fonts.conf")
    import gi
    for module in ("Pango", "PangoCairo"):
        gi.require_version(module, "1.0")
    import cairo
    from gi.repository import Pango, PangoCairo
    for name, family, size, metrics in fonts_to_draw(kits):
        surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, 900, 200)
        context = cairo.Context(surface)
        layout = PangoCairo.create_layout(context)
        description = Pango.FontDescription()
        description.set_family(family)
        description.set_absolute_size(size * Pango.SCALE)
        layout.set_font_description(description)
        layout.set_text("Hamburg", -1)
        found = layout.get_context().load_font(description).describe().get_family()
        check(found == family, f"{name}: Pango takes {found} for {family}")
        PangoCairo.show_layout(context, layout)
        surface.write_to_png(str(SCRATCH / f"{name}.png"))
        picture = Image.open(SCRATCH / f"{name}.png").convert("RGBA")
        colours = {f"#{r:02X}{g:02X}{b:02X}": n for n, (r, g, b, a) in picture.getcolors(1 << 20) if a == 255}
        for role in ("face", "edge"):
            check(colours.get(metrics["sets"][0][role], 0) > 100, f"{name}: Pango shows no {role}: {colours}")


def fonts_to_draw(kits):
    """A font with an edge, as outlines and as pixels."""
    metrics = json.loads((kits / "0012/0012.json").read_text("utf-8"))
    yield "layers", metrics["name"], 90, metrics
    yield "pixels", metrics["name"] + " Pixels", metrics["line_height"], metrics


def main():
    run("sample", SCRATCH / "disk")
    run("font", SCRATCH / "disk", "--kit", SCRATCH / "kits", "--otf")
    run("font", SCRATCH / "disk/MACHINE/.0015", "--kit", SCRATCH / "again", "--otf")
    worst = 0
    for kit in sorted((SCRATCH / "kits").iterdir()):
        stem = kit.name
        metrics = json.loads((kit / f"{stem}.json").read_text("utf-8"))
        for name in (metrics["true_type"], metrics["pixel_true_type"]):
            path = kit / name
            if stem == "0015":
                check(path.read_bytes() == (SCRATCH / "again" / name).read_bytes(), f"{path}: other bytes")
            font, again = saved_again(path)
            check(TABLES <= set(font.keys()), f"{path}: tables")
            check_same_glyphs(path, font, again)
            for glyph in metrics["glyphs"]:
                check(0xF000 + glyph["code"] in font.getBestCmap(), f"{path}: {glyph['code']} has no character")
            if "COLR" in font:
                check_layers(path, font, metrics)
            if "sbix" in font:
                strike = font["sbix"].strikes[metrics["line_height"]]
                for glyph in metrics["glyphs"]:
                    image = strike.glyphs[font.getBestCmap()[0xF000 + glyph["code"]]].imageData
                    if glyph["file"]:
                        own = Image.open(kit / glyph["file"])
                        own = own.crop(own.getbbox()).tobytes()
                        check(Image.open(io.BytesIO(image)).convert("RGBA").tobytes() == own, f"{path}: strike")
        # The pictures of font 60 are half clear in large parts, which an outline can't be.
        if stem != "0060":
            worst = max(worst, check_coverage(kit / metrics["pixel_true_type"], metrics, kit))
    check_pango(SCRATCH / "kits")
    print(f"largest error of coverage {worst:.3f}")


main()
