"""A site, opened from its folder in Chromium: site_test.py ZELTRANS

The search of the page against `library search`, its time with 10,000 messages, the keyboard, what the page asks for, and
texts that would be markup. The scripts are held against their types by tsc.
"""

import json
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from urllib.parse import unquote

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.keys import Keys
except ImportError:
    sys.exit(77)
if not all(shutil.which(program) for program in ("chromium", "chromedriver", "tsc")):
    sys.exit(77)

ZELTRANS = sys.argv[1]
SCRIPTS = Path(__file__).parents[2] / "src/host/export/site"
HOSTILE = "<img src=x onerror=\"document.title='run'\"> </script><script>document.title='run'</script> &amp;"
# Beginnings, several words, phrases, another case, accents in both directions, punctuation, numbers, and misses.
WORDS = ["head", "HEADLINES", "ferry", "f", "northern cup", "cup northern", "ellery rovers", "to-night", "tonight's",
         "20:59:48", "412.50", "name", "17 char", "whole line", "ete", "Été", "ile", "ÎLE D'ÉTÉ", "d'ete messages",
         "été/messages/.0002", "0007", "colour sets", "sets-colour", "xyzzy", "ferry xyzzy", "- ferry", "-", "\"ferry\"",
         "ferry*", "OR", "ferry NOT spring", "eadlines", "box 0001", "°", "town rovers"]


def run(*command, **keywords):
    result = subprocess.run([str(word) for word in command], capture_output=True, **keywords)
    assert result.returncode == 0, (command, result.stdout.decode(), result.stderr.decode())
    return result.stdout.decode()


def start_browser():
    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which("chromium")
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--window-size=1200,900"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)


def requests(browser):
    messages = (json.loads(entry["message"])["message"] for entry in browser.get_log("performance"))
    return [message["params"]["request"]["url"] for message in messages
            if message["method"] == "Network.requestWillBeSent"]


def in_library(library, words):
    lines = run(ZELTRANS, "library", "search", library, words, "--json").splitlines()
    return sorted((entry["disk"], entry["number"]) for entry in map(json.loads, lines))


def in_page(browser, words):
    """What the page's field finds: all of it is shown when the window is as high as the list."""
    browser.execute_script("""
        const query = document.getElementById("query");
        query.value = arguments[0];
        query.dispatchEvent(new Event("input"));""", words)
    links = browser.execute_script(
        'return [...document.querySelectorAll("#messages a")].map((link) => link.getAttribute("href"));')
    return sorted(links)


def check_search(browser, library, site):
    browser.get((site / "index.html").as_uri())
    browser.set_window_size(1200, 4000)
    stems = {(entry["disk"], entry["number"]): None
             for entry in map(json.loads, run(ZELTRANS, "library", "list", library, "--json").splitlines())}
    for message in json.loads((site / "manifest.json").read_text())["messages"]:
        page = next(file["name"] for file in message["files"] if file["name"].startswith("pages/"))
        stems[message["disk"], message["number"]] = page
    found = 0
    for words in WORDS:
        expected = sorted(stems[key] for key in in_library(library, words))
        assert in_page(browser, words) == expected, (words, in_page(browser, words), expected)
        found += bool(expected)
    assert found >= 20, found


def check_pages(browser, site):
    outside = [url for url in requests(browser) if not url.startswith((site.as_uri() + "/", "data:"))]
    assert not outside, outside
    for page in sorted((site / "pages").glob("*.html")):
        browser.get(page.as_uri())
        loaded = browser.execute_script("""
            return performance.getEntriesByType("resource").map((entry) => entry.name);""")
        assert all(name.startswith(site.as_uri()) for name in loaded), loaded
        for link in browser.execute_script("return [...document.links].map((link) => link.href);"):
            assert link.startswith(site.as_uri() + "/"), link
            if "#" not in link:
                assert Path(unquote(link.removeprefix("file://"))).exists(), link
    errors = [entry for entry in browser.get_log("browser") if entry["level"] in ("SEVERE", "WARNING")]
    assert not errors, errors


def check_keyboard(browser, site):
    browser.set_window_size(1200, 900)
    browser.get((site / "index.html").as_uri() + "#q=")
    browser.switch_to.active_element.send_keys("/")
    browser.switch_to.active_element.send_keys("cup", Keys.ARROW_DOWN, Keys.ARROW_RIGHT)
    assert browser.current_url.endswith("#q=cup"), browser.current_url
    href = browser.switch_to.active_element.get_attribute("href")
    browser.switch_to.active_element.send_keys(Keys.ENTER)
    assert browser.current_url == href and "/pages/" in href, (browser.current_url, href)
    browser.back()
    assert browser.find_element("id", "query").get_attribute("value") == "cup"
    # A font of a page leads to the messages with it.
    browser.get(href)
    browser.find_element("css selector", "a[href*='#font=']").click()
    count = browser.find_element("id", "count").text
    assert " of " in count and browser.find_element("id", "font").get_attribute("value"), count


def enlarged(site, target):
    """The site with 10,000 messages, the first with texts that would be markup."""
    shutil.copytree(site, target)
    page = (site / "index.html").read_text()
    begin = page.index('id="data">') + len('id="data">')
    end = page.index("</script>", begin)
    data = json.loads(page[begin:end])
    first = data["messages"]
    data["messages"] = [[*first[n % len(first)]] for n in range(10000)]
    for number, message in enumerate(data["messages"]):
        message[1] = number
        message[2] += f"\nnumber{number} of many"
    data["messages"][0][2] = data["messages"][0][8] = HOSTILE
    data["fonts"][0] = HOSTILE
    text = json.dumps(data, ensure_ascii=False, separators=(",", ":")).replace("<", "\\u003c")
    (target / "index.html").write_text(page[:begin] + text + page[end:])
    assert (target / "index.html").stat().st_size < 5 << 20


def check_many(browser, site):
    begin = time.monotonic()
    browser.get((site / "index.html").as_uri())
    assert browser.find_element("css selector", "#messages a")
    assert time.monotonic() - begin < 3
    nodes = browser.execute_script("return document.querySelectorAll('*').length")
    assert nodes < 1000, nodes
    times = browser.execute_script("""
        // The best of three, since other programs run at the same time.
        const query = document.getElementById("query"), words = ["number9", "n", "many of", "ferry number77", "xyzzy", ""];
        const times = words.map(() => Infinity);
        for (let round = 0; round < 3; ++round) {
            words.forEach((text, n) => {
                const begin = performance.now();
                query.value = text;
                query.dispatchEvent(new Event("input"));
                document.body.offsetHeight;
                times[n] = Math.min(times[n], performance.now() - begin);
            });
        }
        return times;""")
    assert max(times) < 100, times
    print("search times in ms:", [round(value, 1) for value in times])
    assert in_page(browser, "number9999 many")[0].endswith("9999.html")
    in_page(browser, "")
    browser.find_element("id", "query").send_keys(Keys.ARROW_DOWN, Keys.TAB)
    browser.execute_script("document.querySelector('#messages a').focus()")
    browser.switch_to.active_element.send_keys(Keys.END)
    assert browser.switch_to.active_element.get_attribute("href").endswith("9999.html")
    assert browser.execute_script("return document.querySelectorAll('#messages a').length") < 200
    assert browser.title == "Messages", browser.title


def main(scratch):
    run("tsc", "-p", SCRIPTS / "jsconfig.json")
    disk, library, site = scratch / "Île d'été", scratch / "library", scratch / "a site"
    run(ZELTRANS, "sample", disk)
    run(ZELTRANS, "batch", disk, "--maps", disk, "--library", library, "--disk", "<b>box</b>")
    run(ZELTRANS, "export", library, "1-10", "--out", site, "--format", "site", "--format", "json")
    run(ZELTRANS, "export", library, "11-30", "--out", site, "--format", "site", "--format", "png")
    run("sha256sum", "--check", "--quiet", "SHA256SUMS", cwd=site)
    enlarged(site, scratch / "many")
    browser = start_browser()
    try:
        check_search(browser, library, site)
        check_pages(browser, site)
        check_keyboard(browser, site)
        check_many(browser, scratch / "many")
    finally:
        browser.quit()


with tempfile.TemporaryDirectory() as directory:
    main(Path(directory))
