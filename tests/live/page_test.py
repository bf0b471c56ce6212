"""Templates in Chromium: page_test.py ZELTRANS

The pixels are compared with their colours multiplied by alpha, as a program that mixes them sees them: each message
with its PNG, and after each update with the message that "zeltrans fill" fills with the same texts.
"""

import json
import random
import time

from browser import Browser
from disk import *

FORM = 13
FADE = 400


def check_pixels(browser, wanted, what):
    got = browser.screenshot()
    assert got.size == wanted.size, (what, got.size)
    wrong = sum(a != b for a, b in zip(multiplied(got), multiplied(wanted)))
    assert wrong == 0, f"{what}: {wrong} pixels are wrong"


def check_messages(browser, pages, pictures):
    for page in pages:
        wanted = picture(pictures / (page.stem + ".png"))
        browser.resize(*wanted.size)
        browser.open(f"{page.parent.name}/{page.name}")
        assert browser.screenshot().getbbox() is None, f"{page}: something is shown before play"
        browser.run("update(''); play(); next();")
        if "picture" in form_of(page):
            time.sleep(0.3)
        check_pixels(browser, wanted, page)
        asked = browser.requests()
        assert len(asked) == 1 and asked[0].endswith(page.name), asked
        browser.run("stop()")
        assert browser.screenshot().getbbox() is None, f"{page}: something is shown after stop"
    errors = browser.errors()
    assert errors == [], errors


def xml(texts):
    escape = str.maketrans({"&": "&amp;", "<": "&lt;", '"': "&quot;", "\\": "&#92;"})
    return "<templateData>" + "".join(
        f'<componentData id="{key}"><data id="text" value="{text.translate(escape)}"/></componentData>'
        for key, text in texts.items()) + "</templateData>"


def spx(texts):
    encoded = {key: text.replace("\\", "&#92;").replace('"', "&#34;") for key, text in texts.items()}
    return json.dumps({**encoded, "comment": "[a comment]", "epochID": 1700000000000})


def updates_of(form):
    """What is sent to update, with the texts that are in it; the fields keep the others."""
    choose = random.Random(3)
    fields = form["fields"]
    signs = {"f0": 'A "B" \\C', "f2": "<D> & E's"}
    for text in signs.values():
        assert set(text) <= set(settable(form, fields[0])), "the font has no such glyph"
    updates = [(json.dumps(signs), signs), (xml(signs | {"f0": "X & Y"}), signs | {"f0": "X & Y"}), (spx(signs), signs),
               (json.dumps({"TOWN": "Kiel"}), {"f2": "Kiel"}), (xml({"name": "Ida"}), {"f0": "Ida"}),
               (json.dumps({"f0": ""}), {"f0": ""}), (json.dumps({"f1": "A whole line"}), {"f1": "A whole line"})]
    updates += [(text, {}) for text in
                ("", " ", "rubbish", "{", '{"f0"', "<", "<templateData><componentData", "<a/>", "[]", '{"f99": "A"}',
                 '{"f0": null}', '{"f0": {"f0": "A"}}', '{"__proto__": "A"}', "<?xml version='1.0'?>")]
    updates.append((json.dumps({"f0": "B\u4e2db\U0001F600\ud800"}), {"f0": "Bb"}))
    for write in (json.dumps, xml, spx):
        for _ in range(4):
            texts = {field["key"]: random_text(choose, settable(form, field), 9) for field in fields
                     if choose.random() < 0.7}
            updates.append((write(texts), texts))
    return updates


def check_updates(browser, page, message, folder):
    updates, present, records = updates_of(form_of(page)), {}, []
    for _, texts in updates:
        present = {**present, **texts}
        records.append(present)
    browser.resize(720, 486)
    browser.open(f"{page.parent.name}/{page.name}")
    browser.run("update(''); play();")
    for (sent, _), wanted, record in zip(updates, filled(message, records, folder / "filled"), records):
        assert wanted is not None, record
        browser.run("update(arguments[0])", sent)
        check_pixels(browser, wanted, sent)
    # The browser's own report about damaged XML has a style, which the page's policy forbids.
    errors = [error for error in browser.errors() if "inline style" not in error]
    assert errors == [], errors


def check_names(browser, page):
    """The page adds the functions of hosts to the window, and nothing else; a window has a function stop already."""
    browser.open("nothing.html")
    names = set(browser.run("return Object.getOwnPropertyNames(window)"))
    browser.open(f"{page.parent.name}/{page.name}")
    added = set(browser.run("return Object.getOwnPropertyNames(window)")) - names
    expected = {"update", "play", "next", "SPXGCTemplateDefinition"}
    assert {name for name in added if not name.startswith("cdc_")} == expected, added


def opacities(browser, call):
    """The opacities of the frames after a call, until they no longer change; and the milliseconds until then."""
    return browser.run_async(f"""
        const canvas = document.querySelector('canvas'), seen = [], start = performance.now();
        {call};
        for (let last = start; performance.now() - last < 300;) {{
            await new Promise(requestAnimationFrame);
            if (seen.length === 0 || seen[seen.length - 1][0] !== Number(canvas.style.opacity)) {{
                last = performance.now();
                seen.push([Number(canvas.style.opacity), last - start]);
            }}
        }}
        return seen;""")


def check_fades(browser, page):
    path = f"{page.parent.name}/{page.name}?fade={FADE},{FADE // 2}"
    browser.open(path)
    for call, duration, rises in (("play()", FADE, True), ("stop()", FADE // 2, False)):
        seen = opacities(browser, call)
        values = [value if rises else 1 - value for value, _ in seen]
        assert len(values) > 2 and values == sorted(values) and values[0] < 0.5 and values[-1] == 1, (call, seen)
        assert duration - 20 <= seen[-1][1] < duration + 1500, (call, seen)
    assert browser.screenshot().getbbox() is None
    seen = opacities(browser, "play(); setTimeout(stop, 100); setTimeout(play, 200)")
    assert max(value for value, time in seen if time < 200) < 1 and seen[-1][0] == 1, seen


def check_places(browser, page):
    wanted = {(1024, 576, "pillar"): [124, 0, 776, 576], (1024, 576, "fill"): [0, 0, 1024, 576],
              (720, 540, "pillar"): [0, 2, 720, 535], (1920, 1080, "pillar"): [232, 0, 1455, 1080],
              (1920, 1080, "pixel"): [600, 296, 720, 486], (720, 486, "pillar"): [0, 0, 720, 486]}
    for (width, height, fit), box in wanted.items():
        browser.resize(width, height)
        browser.open(f"{page.parent.name}/{page.name}?play=1&fit={fit}")
        rect = browser.run("const r = document.querySelector('canvas').getBoundingClientRect();"
                           "return [r.left, r.top, r.width, r.height]")
        assert rect == box, (width, height, fit, rect)
    browser.resize(1920, 1080)
    height = browser.run_async("""
        const canvas = document.querySelector('canvas'), start = performance.now();
        while (canvas.clientHeight !== 1080 && performance.now() - start < 5000)
            await new Promise(requestAnimationFrame);
        return canvas.clientHeight;""")
    assert height == 1080, height


def check_panel(browser, page):
    count = "return document.querySelectorAll('input').length"
    data = "return document.querySelector('canvas').toDataURL()"
    path = f"{page.parent.name}/{page.name}"
    fields = [field for field in form_of(page)["fields"] if not field["fault"]]
    browser.resize(1280, 720)
    browser.open(path + "?edit=1")
    inputs = browser.driver.find_elements("css selector", "input")
    assert [each.get_property("value") for each in inputs] == [field["text"] for field in fields]
    inputs[0].clear()
    inputs[0].send_keys("Typed \u4e2d")
    notes = browser.run("return document.querySelector('.notes').textContent")
    assert "has no glyph for \"\u4e2d\"" in notes, notes
    typed = browser.run(data)
    browser.open(path)
    before = browser.run("play(); " + data)
    browser.run("""update('{"f0": "Typed "}')""")
    assert browser.run(data) == typed != before
    # A click opens the panel of a page that no host has called; a host's call closes it.
    browser.open(path)
    browser.click()
    assert browser.run(count) == len(fields)
    browser.run("update('')")
    assert browser.run(count) == 0
    for opened in (path + "?play=1", path):
        browser.open(opened)
        browser.run("if (location.search === '') stop()")
        browser.click()
        assert browser.run(count) == 0, opened
    (page.parent / "frame.html").write_text(f'<iframe src="{page.name}" width="800" height="600"></iframe>')
    browser.open(f"{page.parent.name}/frame.html")
    browser.click()
    browser.driver.switch_to.frame(0)
    assert browser.run(count) == 0


def main():
    with temporary_folder() as folder:
        disk = sample_disk(folder)
        exports = export(disk, ["png", "template"])
        pages = sorted(exports["template"].glob("*.html"))
        assert len(pages) == 21, pages
        form = file_of(exports["template"], FORM, ".html")
        (folder / "nothing.html").write_text("<!DOCTYPE html><link rel=icon href='data:,'>")
        with Browser(folder) as browser:
            check_messages(browser, pages, exports["png"])
            check_updates(browser, form, disk / f"MESSAGES/.{FORM:04d}", folder)
            check_names(browser, form)
            check_fades(browser, form)
            check_places(browser, form)
            check_panel(browser, form)


main()
