"""OGraf graphics in Chromium, called as hosts call them: element_test.py ZELTRANS"""

import json
import time

from browser import Browser
from disk import *

FORM, FADE = 13, 400
# A page that defines the element under the name that SPX makes, with functions that make and load one.
SCRIPT = """
<!DOCTYPE html><link rel="icon" href="data:,"><style>body { margin: 0; }</style><script type="module">
import Graphic from './MAIN';
window.name1 = 'NAME';
customElements.define(name1, Graphic);
window.make = () => document.createElement(name1);
window.shown = async params => {
    document.body.textContent = '';
    const element = document.body.appendChild(make());
    await element.load(params);
    return window.element = element;
};
window.ready = true;
</script>
"""
SCHEDULE = [
    {"timestamp": 3000, "action": {"type": "stopAction", "params": {}}},
    {"timestamp": 2000, "action": {"type": "updateAction", "params": {"data": {"f2": "Kiel"}}}},
    {"timestamp": 0, "action": {"type": "updateAction", "params": {"data": {"f0": "Ida"}}}},
    {"timestamp": 1000, "action": {"type": "playAction", "params": {}}},
]
# By time in milliseconds the texts and the opacity, by fades of FADE.
TIMES = {0: ({"f0": "Ida"}, 0), 1000: ({"f0": "Ida"}, 0), 1100: ({"f0": "Ida"}, 0.25), 1999: ({"f0": "Ida"}, 1),
         2000: ({"f0": "Ida", "f2": "Kiel"}, 1), 3300: ({"f0": "Ida", "f2": "Kiel"}, 0.25), 9000: ({}, 0)}


def make_page(package):
    (manifest_file,) = package.glob("*.ograf.json")
    manifest = json.loads(manifest_file.read_text())
    name = f"{manifest['id']}-v{manifest['version']}"
    (package / "element.html").write_text(SCRIPT.replace("MAIN", manifest["main"]).replace("NAME", name))
    return f"{package.parent.name}/{package.name}/element.html"


def open_page(browser, path):
    browser.open(path)
    while not browser.run("return window.ready === true"):
        time.sleep(0.02)


def check_pixels(browser, wanted, what, opacity=1):
    got = multiplied(browser.screenshot())
    if opacity == 1:
        wrong = sum(a != b for a, b in zip(got, multiplied(wanted)))
        assert wrong == 0, f"{what}: {wrong} pixels are wrong"
        return
    # A faded pixel is rounded by the browser.
    alphas = zip((pixel >> 24 for pixel in got), wanted.getchannel("A").tobytes())
    assert all(abs(alpha - full * opacity) <= 1 for alpha, full in alphas), what


def check_messages(browser, packages, pictures):
    for package in packages:
        wanted = picture(pictures / (package.name + ".png"))
        browser.resize(*wanted.size)
        path = make_page(package)
        open_page(browser, path)
        asked = browser.requests()
        assert len(asked) == 2, asked
        browser.run_async("await shown(); ")
        assert browser.screenshot().getbbox() is None, f"{package}: something is shown before play"
        assert browser.run_async("return await element.playAction({})") == {"statusCode": 200, "currentStep": 0}
        check_pixels(browser, wanted, package)
        assert browser.requests() == []


def check_calls(browser):
    """Elements without a document and without data, in both modes; what the calls return, and how long they take."""
    calls = {"realtime": [("updateAction", {"data": {"f0": "Ida"}}), ("playAction", {}), ("stopAction", {})],
             "non-realtime": [("setActionsSchedule", {"schedule": SCHEDULE}), ("goToTime", {"timestamp": 5000})]}
    special = {"playAction": {"statusCode": 200, "currentStep": 0}, "setActionsSchedule": None, "dispose": None}
    for mode, steps in calls.items():
        for load in ({"renderType": mode}, {"renderType": mode, "data": {}, "renderCharacteristics": {}}):
            sequence = [("load", load), *steps, ("customAction", {"id": "none", "payload": None}), ("dispose", {}),
                        ("load", load), *steps, ("dispose", {"renderType": mode})]
            results = browser.run_async(f"""
                const element = make(), results = [];
                for (const [name, params] of {json.dumps(sequence)}) {{
                    const start = performance.now(), result = await element[name](params);
                    const keys = result === undefined ? null : Object.keys(result).filter(k => result[k] === undefined);
                    results.push([name, result === undefined ? null : result, keys, performance.now() - start]);
                }}
                return [results, element.childNodes.length];""")
            for (name, result, undefined, milliseconds) in results[0]:
                assert result == special.get(name, {"statusCode": 200}), (mode, name, result)
                assert not undefined and milliseconds < 3000, (mode, name, undefined, milliseconds)
            assert results[1] == 0
    # Without arguments, and before load, nothing throws.
    names = ["updateAction", "playAction", "stopAction", "customAction", "goToTime", "setActionsSchedule", "dispose",
             "load"]
    codes = browser.run_async(f"""
        const element = make(), codes = [];
        for (const name of {json.dumps(names * 2)}) codes.push(((await element[name]()) || {{}}).statusCode || 0);
        return codes;""")
    assert codes == [400] * 5 + [0, 0, 200] + [200] * 5 + [0, 0, 200], codes


def check_steps(browser):
    steps = browser.run_async("""
        await shown();
        const steps = [];
        for (const params of [{}, {delta: -1}, {goto: 0}, {delta: 1}, {}, {goto: 5, skipAnimation: true}, {goto: 0}])
            steps.push((await element.playAction(params)).currentStep);
        return steps.map(step => step === undefined ? 'end' : step);""")
    assert steps == [0, 0, 0, "end", 0, "end", 0], steps


def check_overlap(browser, wanted):
    """Calls that don't wait for each other, as a host that sends them at once; the last ones count."""
    done = browser.run_async("""
        document.body.textContent = '';
        window.element = document.body.appendChild(make());
        const results = await Promise.all([
            element.load({renderType: 'realtime'}), element.updateAction({data: {f0: 'Max'}}), element.playAction({}),
            element.stopAction({}), element.updateAction({data: {f0: 'Ida', f9: 'none'}}), element.playAction({}),
            element.updateAction({data: {f2: 'Kiel'}}), element.playAction({delta: 0, data: {f0: 'Ida'}})]);
        return results.map(result => result.statusCode);""")
    assert done == [200] * 8, done
    check_pixels(browser, wanted, "overlapping calls")
    left = browser.run_async("""
        const playing = element.stopAction({});
        await element.dispose({});
        await playing;
        await element.load({data: {f0: 'Ida', f2: 'Kiel'}});
        const count = element.querySelectorAll('canvas').length;
        await element.playAction({skipAnimation: true});
        return count;""")
    assert left == 1, left
    check_pixels(browser, wanted, "loaded again")


def check_times(browser, pictures):
    """Times in any order show the same as alone, whatever was shown before."""
    browser.run_async(f"""
        await shown({{renderType: 'non-realtime', data: {{}}}});
        await element.setActionsSchedule({{schedule: [{{timestamp: 0, action: {{type: 'playAction'}}}}]}});
        await element.goToTime({{timestamp: 4000}});
        await element.setActionsSchedule({{schedule: {json.dumps(SCHEDULE)}}});""")
    seen = {}
    for at in [9000, 2000, 1100, 0, 3300, 1999, 1100, 1000, 2000, 9000, 1999, 0, 3300]:
        assert browser.run_async(f"return await element.goToTime({{timestamp: {at}}})") == {"statusCode": 200}
        texts, opacity = TIMES[at]
        shot = browser.screenshot()
        if opacity == 0:
            assert shot.getbbox() is None, at
        else:
            check_pixels(browser, pictures[json.dumps(texts)], at, opacity)
        assert seen.setdefault(at, shot.tobytes()) == shot.tobytes(), at
    browser.run_async(f"""
        await shown({{renderType: 'non-realtime'}});
        await element.setActionsSchedule({{schedule: {json.dumps(SCHEDULE)}}});
        await element.goToTime({{timestamp: 3300}});""")
    assert browser.screenshot().tobytes() == seen[3300]


def check_fade(browser):
    seen = browser.run_async("""
        await shown();
        const canvas = element.querySelector('canvas'), seen = [], start = performance.now();
        let done = false;
        element.playAction({}).then(() => { done = true; });
        while (!done) {
            await new Promise(requestAnimationFrame);
            seen.push(Number(canvas.style.opacity));
        }
        return [seen, performance.now() - start];""")
    values, milliseconds = seen
    assert values == sorted(values) and values[0] < 0.5 and values[-1] == 1 and len(values) > 2, seen
    assert FADE - 20 <= milliseconds < FADE + 1500, seen


def check_place(browser, wanted):
    """In a box of its own, or in a layer; the rest of the page stays clear."""
    browser.resize(1280, 720)
    load = {"data": {"f0": "Ida", "f2": "Kiel"}, "renderCharacteristics": {"resolution": {"width": 9, "height": 9}}}
    for style in ("display: block; width: 720px; height: 486px", "position: absolute; width: 720px; height: 486px"):
        browser.run_async(f"""
            await shown({json.dumps(load)});
            element.style.cssText = '{style}';
            await new Promise(requestAnimationFrame);
            await new Promise(requestAnimationFrame);
            await element.playAction({{skipAnimation: true}});""")
        shot = browser.screenshot()
        assert multiplied(shot.crop((0, 0, 720, 486))) == multiplied(wanted), style
        left, top, right, bottom = shot.getbbox()
        assert right <= 720 and bottom <= 486, (style, shot.getbbox())


def main():
    with temporary_folder() as folder:
        disk = sample_disk(folder)
        fades = ["--fade-in", f"{FADE}ms", "--fade-out", f"{FADE}ms"]
        exports = export(disk, ["png", "ograf"], *fades)
        packages = sorted(path for path in exports["ograf"].iterdir() if path.is_dir())
        assert len(packages) == 21, packages
        form = file_of(exports["ograf"], FORM, "")
        records = [{"f0": "Ida"}, {"f0": "Ida", "f2": "Kiel"}]
        images = filled(disk / f"MESSAGES/.{FORM:04d}", records, folder / "filled")
        pictures = dict(zip(map(json.dumps, records), images))
        wanted = pictures[json.dumps(records[1])]
        with Browser(folder) as browser:
            check_messages(browser, packages, exports["png"])
            browser.resize(720, 486)
            open_page(browser, make_page(form))
            check_calls(browser)
            check_steps(browser)
            check_overlap(browser, wanted)
            check_times(browser, pictures)
            check_fade(browser)
            check_place(browser, wanted)
            errors = browser.errors()
            assert errors == [], errors


main()
