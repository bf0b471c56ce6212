"""Chromium for the tests beside it: pages from a server of its own, on a transparent ground."""

import base64
import functools
import http.server
import io
import json
import shutil
import sys
import threading

from PIL import Image

try:
    from selenium import webdriver
    from selenium.webdriver.common.action_chains import ActionChains
    from selenium.webdriver.chrome.service import Service
except ImportError:
    sys.exit(77)
if not shutil.which("chromium") or not shutil.which("chromedriver"):
    sys.exit(77)


class Handler(http.server.SimpleHTTPRequestHandler):
    extensions_map = {**http.server.SimpleHTTPRequestHandler.extensions_map, ".mjs": "text/javascript"}

    def log_message(self, *_):
        pass


class Browser:
    """Serves a folder to Chromium. The ground of its pages is clear, and a pixel of a page is one of a screenshot."""

    def __init__(self, folder):
        handler = functools.partial(Handler, directory=str(folder))
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        self.address = f"http://127.0.0.1:{self.server.server_port}/"
        options = webdriver.ChromeOptions()
        for argument in ("headless=new", "no-sandbox", "disable-gpu", "hide-scrollbars", "force-device-scale-factor=1"):
            options.add_argument("--" + argument)
        options.binary_location = shutil.which("chromium")
        options.set_capability("goog:loggingPrefs", {"performance": "ALL", "browser": "ALL"})
        self.driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)
        self.driver.execute_cdp_cmd("Emulation.setDefaultBackgroundColorOverride",
                                    {"color": {"r": 0, "g": 0, "b": 0, "a": 0}})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.driver.quit()
        self.server.shutdown()

    def resize(self, width, height):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                    {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def open(self, path):
        self.requests()
        self.driver.get(self.address + path)

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def run_async(self, script):
        """The value of an asynchronous function with this body."""
        text = f"const done = arguments[0]; (async () => {{ {script} }})().then(done, e => done('failed: ' + e.stack));"
        return self.driver.execute_async_script(text)

    def click(self):
        """A person's click in the upper left corner."""
        ActionChains(self.driver).move_by_offset(0, 0).click().perform()

    def screenshot(self):
        data = self.driver.execute_cdp_cmd("Page.captureScreenshot", {"format": "png"})["data"]
        return Image.open(io.BytesIO(base64.b64decode(data))).convert("RGBA")

    def requests(self):
        """The addresses that were asked for since the last call, without those of data."""
        messages = [json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance")]
        return [message["params"]["request"]["url"] for message in messages
                if message["method"] == "Network.requestWillBeSent"
                and not message["params"]["request"]["url"].startswith("data:")]

    def errors(self):
        """What pages said as errors since the last call."""
        return [entry["message"] for entry in self.driver.get_log("browser") if entry["level"] == "SEVERE"]
