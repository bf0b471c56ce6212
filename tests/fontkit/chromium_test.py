"""Shows the installable fonts of a disk in Chromium: it accepts each, its palettes are the colour sets, and a strike at
its size has exactly the pixels of the glyphs.

Arguments: the command zeltrans, and a directory for the files.
"""
import base64
import io
import json
import os
import pathlib
import subprocess
import sys

from PIL import Image
from selenium import webdriver

ZELTRANS, SCRATCH = sys.argv[1], pathlib.Path(sys.argv[2])
WIDTH = 1600
#: Size of the palettes' samples in pixels.
SAMPLE = 200


def check(condition, text):
    if not condition:
        sys.exit(text)


def open_browser():
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                     "--force-device-scale-factor=1"):
        options.add_argument(argument)
    return webdriver.Chrome(options=options, executable_path="/usr/bin/chromedriver")


class Page:
    """A page with one font, and what is drawn in it."""

    def __init__(self, font, style=""):
        data = base64.b64encode(font.read_bytes()).decode()
        self.style = (f"@font-face{{font-family:f;src:url(data:font/ttf;base64,{data})}}"
                      f"body{{margin:0;background:transparent}}div{{position:absolute;font-family:f;white-space:pre}}"
                      + style)
        self.items, self.height = [], 1

    def add(self, left, top, size, code, style=""):
        self.items.append(f'<div style="left:{left}px;top:{top}px;font-size:{size}px;line-height:{size}px;{style}">'
                          f"&#x{code:X};</div>")
        self.height = max(self.height, top + 2 * size)

    def draw(self, browser, name):
        path = SCRATCH / f"{name}.html"
        path.write_text(f"<!DOCTYPE html><meta charset=utf-8><style>{self.style}</style>{''.join(self.items)}", "utf-8")
        browser.get(path.as_uri())
        browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                {"width": WIDTH, "height": self.height, "deviceScaleFactor": 1, "mobile": False})
        browser.execute_cdp_cmd("Emulation.setDefaultBackgroundColorOverride",
                                {"color": {"r": 0, "g": 0, "b": 0, "a": 0}})
        loaded = browser.execute_async_script(
            "const done = arguments[0]; document.fonts.load('20px f').then(f => done(f.length), e => done(String(e)))")
        check(loaded == 1, f"{name}: Chromium refuses the font: {loaded}")
        shot = browser.execute_cdp_cmd("Page.captureScreenshot", {"format": "png"})["data"]
        (SCRATCH / f"{name}.png").write_bytes(base64.b64decode(shot))
        return Image.open(io.BytesIO(base64.b64decode(shot))).convert("RGBA")


def multiplied(pixel):
    return tuple((channel * pixel[3] + 127) // 255 for channel in pixel[:3]) + (pixel[3],)


def check_strike(browser, kit, metrics):
    """@return the number of glyphs."""
    size = metrics["line_height"]
    page = Page(kit / metrics["pixel_true_type"])
    x = y = 40
    row = size + 60
    places = []
    for glyph in metrics["glyphs"]:
        if not glyph["file"]:
            continue
        if x + glyph["width"] + 40 > WIDTH:
            x, y = 40, y + row + 80
        # A character of the font's own code where that can be typed, else that of the private use area.
        code = glyph["code"]
        page.add(x, y, size, code if code >= 33 and not 127 <= code < 161 else 0xF000 + code)
        places.append((glyph, x, y + metrics["base"] - glyph["top"]))
        x += glyph["width"] + 40
    shot = page.draw(browser, f"strike-{kit.name}").load()
    for glyph, left, top in places:
        own = Image.open(kit / glyph["file"]).convert("RGBA").load()
        wrong = sum(multiplied(shot[left + x, top + y]) != multiplied(own[x, y])
                    for y in range(glyph["height"]) for x in range(glyph["width"]))
        check(wrong == 0, f"{kit}: {wrong} pixels of {glyph['code']} are not those of the strike")
    return len(places)


def check_palettes(browser, kit, metrics):
    """Each palette shows the face and the edge of its colour set, and no other pure colour."""
    styles = "".join(f"@font-palette-values --p{k}{{font-family:f;base-palette:{k}}}" for k in range(8))
    page = Page(kit / metrics["true_type"], styles)
    for number in range(8):
        page.add(number * SAMPLE, 0, SAMPLE // 2, ord("H"), f"font-palette:--p{number}")
    shot = page.draw(browser, f"palettes-{kit.name}")
    has_edge = len(metrics["palettes"][0]) > 100
    for number, colours in enumerate(metrics["sets"]):
        part = shot.crop((number * SAMPLE, 0, (number + 1) * SAMPLE, 2 * SAMPLE))
        counts = {f"#{r:02X}{g:02X}{b:02X}": count for count, (r, g, b, a) in part.getcolors(1 << 20) if a == 255}
        check(counts.get(colours["face"], 0) > 200, f"{kit}: palette {number} shows no face")
        if has_edge:
            check(counts.get(colours["edge"], 0) > 50, f"{kit}: palette {number} shows no edge")
        for other in metrics["sets"]:
            for role in ("face", "edge"):
                mine = other[role] in (colours["face"], colours["edge"])
                check(mine or counts.get(other[role], 0) < 20, f"{kit}: palette {number} shows another set")


def main():
    environment = {**os.environ, "XDG_CONFIG_HOME": str(SCRATCH / "settings")}
    for arguments in (["sample", SCRATCH / "disk"],
                      ["font", SCRATCH / "disk", "--kit", SCRATCH / "kits", "--otf", "--colour-set", "6"]):
        subprocess.run([ZELTRANS, *map(str, arguments)], check=True, stdout=subprocess.DEVNULL, env=environment)
    browser = open_browser()
    glyphs = fonts = 0
    try:
        for kit in sorted((SCRATCH / "kits").iterdir()):
            metrics = json.loads((kit / f"{kit.name}.json").read_text("utf-8"))
            glyphs += check_strike(browser, kit, metrics)
            if any(glyph["kind"] == "run-coded" for glyph in metrics["glyphs"]):
                check_palettes(browser, kit, metrics)
            else:
                page = Page(kit / metrics["true_type"])
                page.add(0, 0, 40, ord("A"))
                page.draw(browser, f"outline-{kit.name}")
            fonts += 1
    finally:
        browser.quit()
    print(f"{fonts} fonts, {glyphs} glyphs: 0 wrong pixels")


main()
