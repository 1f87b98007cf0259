"""A real browser for tests, Chromium without a window."""

import base64
import json
import os
import select
import subprocess

from tests.support import programs

NARROW, PHONE, DESKTOP = 320, 360, 1280  # pixels wide
SCREEN = 800  # pixels high


class Browser:
    """Chromium, steered over a pipe by its DevTools protocol."""

    def __init__(self, profile):
        to_browser, self.output = os.pipe()
        self.input, from_browser = os.pipe()
        flags = ["--headless", "--remote-debugging-pipe", "--user-data-dir=%s" % profile,
                 "--disable-gpu", "--hide-scrollbars", "--no-first-run", "--disable-extensions"]
        if os.geteuid() == 0:
            flags.append("--no-sandbox")
        # The browser reads its commands from descriptor 3 and answers on 4.
        script = 'exec chromium "$@" 3<&%d 4>&%d' % (to_browser, from_browser)
        self.process = subprocess.Popen(
            ["bash", "-c", script, "bash", *flags], pass_fds=(to_browser, from_browser),
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.pending = b""
        self.number = 0
        self.events = []
        self.session = None
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target,
                                 flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")

    def close(self):
        self.session = None
        self.call("Browser.close")
        programs.WAITING.for_end(self.process, "the browser does not end")

    def receive(self):
        watch = programs.WAITING.watch("the browser does not answer")
        while b"\0" not in self.pending:
            if not select.select([self.input], [], [], watch.look_seconds)[0]:
                watch.look()
                continue
            got = os.read(self.input, 1 << 20)
            if not got:
                raise AssertionError("the browser is gone")
            self.pending += got
        message, self.pending = self.pending.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, **parameters):
        self.number += 1
        request = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            request["sessionId"] = self.session
        os.write(self.output, json.dumps(request).encode() + b"\0")
        while True:
            message = self.receive()
            if message.get("id") != self.number:
                self.events.append(message)
            elif "error" in message:
                raise AssertionError("%s: %s" % (method, message["error"]["message"]))
            else:
                return message["result"]

    def wait_for(self, method):
        while not any(event["method"] == method for event in self.events):
            self.events.append(self.receive())

    def evaluate(self, expression):
        result = self.call("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in result:
            raise AssertionError(json.dumps(result["exceptionDetails"]))
        return result["result"]["value"]

    def open(self, page, width=DESKTOP, scheme="light", media=""):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=SCREEN,
                  deviceScaleFactor=1, mobile=width < DESKTOP)
        self.call("Emulation.setEmulatedMedia", media=media,
                  features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.events.clear()
        self.call("Page.navigate", url=page.as_uri())
        self.wait_for("Page.loadEventFired")

    def press(self, key, text=None):
        self.call("Input.dispatchKeyEvent", type="keyDown", key=key, code=key,
                  windowsVirtualKeyCode={"Tab": 9, "Enter": 13}[key],
                  **({"text": text} if text else {}))
        self.call("Input.dispatchKeyEvent", type="keyUp", key=key, code=key,
                  windowsVirtualKeyCode={"Tab": 9, "Enter": 13}[key])

    def screenshot(self, path):
        shot = self.call("Page.captureScreenshot", captureBeyondViewport=True)
        path.write_bytes(base64.b64decode(shot["data"]))
