"""Tests the page of `dozewell-replay report` in a real browser, Chromium without a window.

    python3 -m tests.report_browser_test --tool build/native/dozewell-replay [--screenshots FOLDER]
"""

import base64
import functools
import json
import os
import select
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support import programs
from tests.support.cases import option_parser, run, tests_in
from tests.support.expect import equal

PHONE, DESKTOP = 360, 1100

SETTINGS = """\
[Settings]
TimeResolution=10
[CyclicProbabilityPredictor]
DaysInCycle=7
MinutesInDay=1440
FirstLastWeight=20
SecondLastWeight=10
AgregationWeight=70
StrengthHigh=30
StrengthLow=10
DayGrouping=12
StrengthHighRange=30, 50
StrengthLowRange=10, 30
FirstLastWeightRange=20
SecondLastWeightRange=10, 20
DayGroupingRange=0, 12
WR=10, 50, 90
Strength=1
"""

# Each visible text with the contrast between its colour and what lies behind it.
CONTRASTS = """
(() => {
  const parse = text => {
    const numbers = text.match(/[\\d.]+/g).map(Number);
    return numbers.length < 4 ? [...numbers.slice(0, 3), 1] : numbers;
  };
  const over = (top, below) => [0, 1, 2].map(i => top[i] * top[3] + below[i] * (1 - top[3]));
  const luminance = rgb => {
    const [r, g, b] = rgb.map(c => c / 255).map(
      c => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  const behind = element => {
    if (!element) return [255, 255, 255];
    const style = getComputedStyle(element);
    if (style.backgroundImage !== 'none') throw 'text over an image: ' + element.outerHTML;
    return over(parse(style.backgroundColor), behind(element.parentElement));
  };
  const results = [];
  const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) {
    const text = walker.currentNode.textContent.trim();
    const element = walker.currentNode.parentElement;
    const style = getComputedStyle(element);
    if (!text || element.closest('.unseen') || style.fontSize === '0px') continue;
    const below = behind(element);
    const ink = over(parse(style.color), below);
    const [light, dark] = [luminance(ink), luminance(below)].sort((a, b) => b - a);
    const size = parseFloat(style.fontSize);
    const large = size >= 24 || (size >= 18.66 && style.fontWeight >= 700);
    results.push({text: text.slice(0, 40), ratio: (light + 0.05) / (dark + 0.05),
                  needed: large ? 3 : 4.5});
  }
  return results;
})()
"""

SEMANTICS = """
(() => {
  const wrong = [];
  const all = selector => [...document.querySelectorAll(selector)];
  const need = (condition, what) => { if (!condition) wrong.push(what); };
  need(document.documentElement.lang === 'en', 'no language');
  need(document.title, 'no title');
  need(all('h1').length === 1 && all('main').length === 1, 'not one h1 and main');
  need(!all('script, iframe, object, img[src], link[rel=stylesheet]').length, 'loads something');
  all('table').forEach(t => need(t.caption && t.caption.textContent, 'table without caption'));
  all('th').forEach(h => need(h.scope, 'header without scope: ' + h.textContent));
  all('tbody tr').forEach(r => need(r.closest('.list') || r.cells[0].tagName === 'TH',
                                    'row without header'));
  all('[role=img]').forEach(i => need(i.getAttribute('aria-label'), 'picture without label'));
  all('section').forEach(s => {
    need(document.getElementById(s.getAttribute('aria-labelledby')), 'section without name');
    need(s.querySelector('.explanation').textContent.trim().endsWith('.'), 'no sentence: ' + s.id);
  });
  const ids = all('[id]').map(e => e.id);
  need(new Set(ids).size === ids.length, 'an id twice');
  let level = 0;
  all('h1, h2, h3').forEach(h => {
    need(h.tagName[1] <= level + 1, 'heading leaves out a level: ' + h.textContent);
    level = +h.tagName[1];
  });
  return wrong;
})()
"""

# Elements that reach beyond the page's margin and are not cut off.
OVERFLOWING = """
[...document.body.querySelectorAll('*')].filter(
  e => !e.closest('.strip, .unseen') && e.getBoundingClientRect().right >
    innerWidth - parseFloat(getComputedStyle(document.body).paddingRight) + 0.5
).map(e => e.outerHTML.slice(0, 80))
"""


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
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=800,
                  deviceScaleFactor=1, mobile=width == PHONE)
        self.call("Emulation.setEmulatedMedia", media=media,
                  features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.events.clear()
        self.call("Page.navigate", url=page.as_uri())
        self.wait_for("Page.loadEventFired")

    def screenshot(self, path):
        shot = self.call("Page.captureScreenshot", captureBeyondViewport=True)
        path.write_bytes(base64.b64decode(shot["data"]))


class Pages:
    """The pages under test, in a folder of their own."""

    def __init__(self, tool, folder):
        self.tool = str(Path(tool).resolve())
        self.folder = folder
        (folder / "s.ini").write_text(SETTINGS)
        self.run("sample", "--kind", "office", "--days", "60", "--seed", "1", "--out", "h.csv")
        self.run("learn", "--history", "h.csv", "--settings", "s.ini", "--data", "d.z7")
        self.learnt = self.report("learnt", "h.csv", "d.z7", "--hibernate-after", "180")
        # Nothing is learnt and recorded here, and the file's name looks like markup.
        (folder / "empty.csv").write_text("")
        (folder / "<img src=x onerror=alert(1)>").write_text("")
        self.blank = self.report("blank", "empty.csv", "<img src=x onerror=alert(1)>", "--now",
                                 "2024-03-01T12:00:00")

    def run(self, *arguments):
        return programs.run([self.tool, *arguments], cwd=self.folder, check=True,
                            capture_output=True, text=True).stdout

    def report(self, name, history, data, *more):
        page = self.folder / (name + ".html")
        self.run("report", "--history", history, "--data", data, "--settings", "s.ini",
                 "--out", page.name, *more)
        return page

    def both(self):
        return self.learnt, self.blank


def test_nothing_is_loaded_and_nothing_is_complained_about(browser, pages):
    for page in pages.both():
        browser.open(page)
        browser.evaluate("new Promise(done => setTimeout(done, 100))")
        requests = [event["params"]["request"]["url"] for event in browser.events
                    if event["method"] == "Network.requestWillBeSent"]
        equal([url for url in requests if not url.startswith("data:")], [page.as_uri()])
        equal([event for event in browser.events if event["method"] in
               ("Runtime.consoleAPICalled", "Runtime.exceptionThrown", "Log.entryAdded")], [])


def test_the_map_shows_what_the_tool_says_of_each_half_hour(browser, pages):
    slots = json.loads(pages.run("probabilities", "--data", "d.z7", "--settings", "s.ini",
                                 "--json"))
    browser.open(pages.learnt)
    rows = browser.evaluate("[...document.querySelectorAll('.map tbody tr')].map(row => "
                            "[...row.cells].map(cell => cell.textContent))")
    equal([row[0] for row in rows], ["Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"])
    # The first slot is a Thursday's.
    for day, row in zip((4, 5, 6, 0, 1, 2, 3), rows):
        equal(len(row), 1 + 48)
        for cell, text in enumerate(row[1:]):
            first = day * 144 + cell * 3
            mean = 100 * sum(slots[first:first + 3]) / 3
            if abs(float(text) - mean) > 0.5 + 1e-4:
                raise AssertionError("%s, cell %d: %s, not %f" % (row[0], cell, text, mean))
    browser.open(pages.blank)
    equal(browser.evaluate("document.querySelectorAll('.map td.unknown').length"), 7 * 48)


def test_the_colours_of_the_map_follow_the_probabilities(browser, pages):
    browser.open(pages.learnt)
    shades = browser.evaluate(
        "[...document.querySelectorAll('.map tbody td')].map(cell => [+cell.textContent, "
        "+(getComputedStyle(cell).backgroundColor.match(/[\\d.]+/g)[3] ?? 1)])")
    equal(len({percent for percent, _ in shades}) > 20, True)
    for percent, alpha in shades:
        if abs(alpha - percent / 100) > 0.005:
            raise AssertionError("%d %% is drawn with %f" % (percent, alpha))


def test_text_stands_out_in_light_and_dark(browser, pages):
    for page in pages.both():
        for scheme in ("light", "dark"):
            browser.open(page, scheme=scheme)
            results = browser.evaluate(CONTRASTS)
            equal(len(results) > 20, True)
            equal([result for result in results if result["ratio"] < result["needed"]], [])


def test_the_measure_of_contrast_finds_grey_on_grey(browser, pages):
    browser.open(pages.learnt)
    browser.evaluate("document.querySelector('h2').style.color = '#999'; 0")
    faint = [result for result in browser.evaluate(CONTRASTS)
             if result["ratio"] < result["needed"]]
    equal([result["text"] for result in faint], ["If it is put to sleep now"])


def test_a_phone_shows_it_without_scrolling_sideways(browser, pages):
    for page in pages.both():
        browser.open(page, PHONE)
        equal(browser.evaluate("innerWidth"), PHONE)
        browser.evaluate("document.querySelectorAll('details').forEach(d => d.open = true); 0")
        equal(browser.evaluate("document.documentElement.scrollWidth"), PHONE)
        equal(browser.evaluate(OVERFLOWING), [])


def test_it_prints(browser, pages):
    browser.open(pages.learnt, 720, media="print")
    equal(browser.evaluate("document.documentElement.scrollWidth"), 720)
    equal(browser.evaluate("getComputedStyle(document.querySelector('.strip i'))"
                           ".printColorAdjust"), "exact")
    pdf = base64.b64decode(browser.call("Page.printToPDF", printBackground=False)["data"])
    equal(pdf[:5], b"%PDF-")
    pages_printed = pdf.count(b"/Type /Page\n")
    equal(2 <= pages_printed <= 6, True)


def test_everything_has_a_name_for_those_who_cannot_see_it(browser, pages):
    for page in pages.both():
        browser.open(page)
        equal(browser.evaluate(SEMANTICS), [])


def test_texts_are_shown_and_never_taken_as_markup(browser, pages):
    browser.open(pages.blank)
    equal(browser.evaluate("document.querySelector('.note').textContent.split(':')[0]"),
          "<img src=x onerror=alert(1)>")
    equal(browser.evaluate("document.querySelectorAll('img').length"), 0)


def take_screenshots(browser, pages, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for page in pages.both():
        for width in (PHONE, DESKTOP):
            for scheme in ("light", "dark"):
                browser.open(page, width, scheme)
                browser.screenshot(folder / ("%s-%d-%s.png" % (page.stem, width, scheme)))


def main():
    parser = option_parser(__doc__)
    parser.add_argument("--tool", required=True)
    parser.add_argument("--screenshots", type=Path, help="folder to put pictures of the pages in")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        pages = Pages(options.tool, Path(folder))
        browser = Browser(Path(folder) / "profile")
        exit_code = run([(name, functools.partial(test, browser, pages))
                         for name, test in tests_in(globals())], options.words)
        if options.screenshots:
            take_screenshots(browser, pages, options.screenshots)
        browser.close()
    return exit_code


if __name__ == "__main__":
    sys.exit(main())
