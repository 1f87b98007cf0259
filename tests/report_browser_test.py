"""Tests the pages of `dozewell-replay report` and `fleet` in a real browser, Chromium without a
window.

    python3 -m tests.report_browser_test --tool build/native/dozewell-replay [--screenshots FOLDER]
"""

import base64
import functools
import json
import re
import sys
import tempfile
from pathlib import Path

from tests.support import programs
from tests.support.browser import DESKTOP, NARROW, PHONE, SCREEN, Browser
from tests.support.cases import option_parser, run, tests_in
from tests.support.expect import contains, equal
from tests.support.page_measures import (CERTAINTIES, CONTRASTS, NEIGHBOURS, OVERFLOWING,
                                         SEMANTICS)

WIDTHS = (NARROW, PHONE, DESKTOP)
SCHEMES = ("light", "dark")

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


class Pages:
    """The pages under test, in a folder of their own."""

    def __init__(self, tool, folder):
        self.tool = str(Path(tool).resolve())
        self.folder = folder
        (folder / "s.ini").write_text(SETTINGS)
        self.learnt = self.page_of("learnt", "office", 60)
        self.day = self.page_of("day", "office", 1)
        self.fortnight = self.page_of("fortnight", "office", 14)
        self.erratic = self.page_of("erratic", "erratic", 60)
        self.years = self.page_of("years", "office", 1825)
        # Nothing is learnt and recorded here.
        (folder / "empty.csv").write_text("")
        self.run("learn", "--history", "empty.csv", "--settings", "s.ini", "--data", "empty.z7")
        self.blank = self.report("blank", "empty.csv", "empty.z7", "--now", "2024-03-01T12:00:00")
        # The file's name is 200 characters long, has no place to break, and looks like markup.
        self.long_name = ("<img src=x onerror=alert(1)>" + "x" * 200)[:200]
        (folder / self.long_name).write_text("")
        self.named = self.report("named", "office60.csv", self.long_name, "--now",
                                 "2024-03-01T12:00:00")
        self.fleet = self.fleet_page()

    def run(self, *arguments):
        return programs.run([self.tool, *arguments], cwd=self.folder, check=True,
                            capture_output=True, text=True).stdout

    def page_of(self, name, kind, days):
        history, data = "%s%d.csv" % (kind, days), "%s%d.z7" % (kind, days)
        self.run("sample", "--kind", kind, "--days", str(days), "--seed", "1", "--out", history)
        self.run("learn", "--history", history, "--settings", "s.ini", "--data", data)
        return self.report(name, history, data)

    def report(self, name, history, data, *more):
        page = self.folder / (name + ".html")
        self.run("report", "--history", history, "--data", data, "--settings", "s.ini",
                 "--out", page.name, *more)
        return page

    def fleet_page(self):
        """Of machines in two groups, one of them with a name that has no place to break, and a
        history that cannot be judged."""
        machines = self.folder / "machines"
        machines.mkdir()
        for number, kind in enumerate(("office", "home", "shift", "erratic", "erratic")):
            name = "y" * 200 if number == 3 else "PC-%d" % number
            self.run("sample", "--kind", kind, "--days", "70", "--seed", str(number), "--out",
                     "machines/%s.csv" % name)
        (machines / self.long_name).with_suffix(".csv").write_text("1,0\n2;1\n")
        (self.folder / "groups.csv").write_text("PC-0.csv,Desks\nPC-1.csv,Desks\n")
        self.run("fleet", "--settings", "s.ini", "--groups", "groups.csv", "--hibernate-after",
                 "600", "--out", "fleet.html", "machines")
        return self.folder / "fleet.html"

    def all(self):
        return (self.learnt, self.day, self.fortnight, self.erratic, self.years, self.blank,
                self.named, self.fleet)


def text_of(browser, selector):
    return browser.evaluate("document.querySelector(%s).innerText" % json.dumps(selector))


def open_all(browser):
    browser.evaluate("document.querySelectorAll('details').forEach(d => d.open = true); 0")


def test_nothing_is_loaded_and_nothing_is_complained_about(browser, pages):
    for page in pages.all():
        browser.open(page)
        browser.evaluate("new Promise(done => setTimeout(done, 100))")
        requests = [event["params"]["request"]["url"] for event in browser.events
                    if event["method"] == "Network.requestWillBeSent"]
        equal([url for url in requests if not url.startswith("data:")], [page.as_uri()])
        equal([event for event in browser.events if event["method"] in
               ("Runtime.consoleAPICalled", "Runtime.exceptionThrown", "Log.entryAdded")], [])


def test_the_contents_come_first_and_name_what_follows(browser, pages):
    browser.open(pages.learnt)
    links = browser.evaluate("[...document.querySelectorAll('nav a')].map("
                             "a => [a.innerText, a.getAttribute('href')])")
    equal([text for text, _ in links],
          ["What will happen tonight", "What it has learnt, and how sure it is",
           "What it was worth", "Why",
           "Every choice, walked forward", "Every choice, replayed", "What a search chooses", "The recorded past"])
    equal(browser.evaluate("[...document.querySelectorAll('main h2')].map(h => [h.innerText, "
                           "'#' + h.parentElement.id])"), links)
    equal(browser.evaluate("document.querySelector('nav').getBoundingClientRect().bottom < 250"),
          True)


def test_the_details_begin_within_three_screens(browser, pages):
    for page in (pages.learnt, pages.day, pages.erratic, pages.years):
        for width in WIDTHS:
            browser.open(page, width)
            top = browser.evaluate("document.querySelector('#details').getBoundingClientRect().top")
            if top > 3 * SCREEN:
                raise AssertionError("%s at %d: %d" % (page.stem, width, top))


def test_the_map_shows_what_the_tool_says_of_each_half_hour(browser, pages):
    for name, page in (("office60", pages.learnt), ("office1", pages.day),
                       ("erratic60", pages.erratic)):
        week = json.loads(pages.run("week", "--data", name + ".z7", "--settings", "s.ini",
                                    "--json"))
        browser.open(page)
        rows = browser.evaluate("[...document.querySelectorAll('.map tbody tr')].map(row => "
                                "[...row.cells].map(cell => cell.textContent))")
        equal([row[0] for row in rows], ["Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"])
        for shown, row in zip(rows, week["rows"]):
            equal(len(shown), 1 + 48)
            for text, likely, seen in zip(shown[1:], row["cells"], row["seen"]):
                if likely is None:
                    equal(text, "not seen yet")
                    continue
                percent, times = text.split(" %, seen ")
                equal(times, "once" if seen == 1 else "%d times" % seen)
                if abs(float(percent) - 100 * likely) > 0.5 + 1e-4:
                    raise AssertionError("%s: %s, not %f" % (shown[0], text, likely))


def test_a_bar_is_as_high_as_its_time_is_likely_and_as_full_as_it_is_sure(browser, pages):
    kinds = set()
    for page in (pages.learnt, pages.day, pages.fortnight):
        browser.open(page)
        cells = browser.evaluate(
            "[...document.querySelectorAll('.map tbody td:not(.unknown)')].map(cell => "
            "[cell.textContent, cell.className, cell.getBoundingClientRect().height, "
            "getComputedStyle(cell, '::before').height])")
        for text, kind, full, height in cells:
            percent, times = text.split(" %, seen ")
            seen = 1 if times == "once" else int(times.split()[0])
            equal(kind, "once" if seen == 1 else "some" if seen < 5 else "often")
            kinds.add(kind)
            expected = 4 + (full - 8) * float(percent) / 100
            if abs(float(height[:-2]) - expected) > 0.5:
                raise AssertionError("%s is %s high, not %f" % (text, height, expected))
    equal(kinds, {"once", "some", "often"})


def test_one_monday_paints_no_day_at_full_strength(browser, pages):
    browser.open(pages.day)
    counts = browser.evaluate(
        "['once', 'some', 'often'].map(c => document.querySelectorAll('.map td.' + c).length)")
    # All five working days, and on each of them the same.
    equal((counts[0] > 5 * 10, counts[0] % 5), (True, 0))
    equal(counts[1:], [0, 0])
    for scheme in SCHEMES:
        browser.open(pages.day, scheme=scheme)
        equal(browser.evaluate(
            "[...document.querySelectorAll('.map td.once')].every(cell => "
            "getComputedStyle(cell, '::before').backgroundColor === "
            "getComputedStyle(document.body).backgroundColor)"), True)
    contains(text_of(browser, "#learnt strong"), "seen once")


def test_each_colour_has_one_meaning_and_a_place_in_a_legend(browser, pages):
    for scheme in SCHEMES:
        browser.open(pages.learnt, scheme=scheme)
        legends = browser.evaluate(
            "Object.fromEntries([...document.querySelectorAll('.legend i')].map(i => "
            "[i.classList[1], getComputedStyle(i).background]))")
        equal(sorted(legends), ["asleep", "hibernated", "none", "often", "once", "some", "unknown",
                                "use", "wait", "woken"])
        # A page's own colour stands for no record and, within an edge, for seen once.
        equal(len(set(legends.values())), len(legends) - 1)
        used = browser.evaluate(
            "[...new Set([...document.querySelectorAll('.strip i, .map td, .bar')].map("
            "e => e.className.replace('bar ', '')))].sort()")
        equal(set(used) - set(legends), {"bar", "score"})
        equal(browser.evaluate("getComputedStyle(document.querySelector('#choices .bar')).background"),
              legends["asleep"])


def test_neighbours_in_a_figure_differ_in_light_and_dark(browser, pages):
    found = set()
    for scheme in SCHEMES:
        for page in (pages.learnt, pages.day, pages.erratic, pages.years):
            browser.open(page, scheme=scheme)
            pairs = browser.evaluate(NEIGHBOURS)
            found.update(pairs)
            equal({pair: ratio for pair, ratio in pairs.items() if ratio < 3}, {})
        # All that stands for one of four states, side by side or not.
        browser.evaluate("""document.querySelector('.strip').innerHTML =
            'use asleep use hibernated use woken asleep hibernated woken none use none asleep none '
            .trim().split(' ').map(c => '<i class="' + c + '"></i>').join(''); 0""")
        equal({pair: ratio for pair, ratio in browser.evaluate(NEIGHBOURS).items() if ratio < 3},
              {})
        contrasts = browser.evaluate(CERTAINTIES)
        equal(contrasts.pop("onceIsHollow"), 1)
        equal({name: ratio for name, ratio in contrasts.items() if ratio < 3}, {})
    for pair in ("asleep use", "hibernated use", "use woken", "asleep hibernated",
                 "hibernated woken"):
        equal(pair in found, True)


def test_text_stands_out_in_light_and_dark(browser, pages):
    for page in pages.all():
        for scheme in SCHEMES:
            browser.open(page, scheme=scheme)
            open_all(browser)
            results = browser.evaluate(CONTRASTS)
            equal(len(results) >= 5, True)
            equal([result for result in results if result["ratio"] < result["needed"]], [])


def test_the_measures_of_contrast_find_grey_on_grey(browser, pages):
    browser.open(pages.learnt)
    browser.evaluate("document.querySelector('h2').style.color = '#999'; 0")
    faint = [result for result in browser.evaluate(CONTRASTS)
             if result["ratio"] < result["needed"]]
    equal([result["text"] for result in faint], ["What will happen tonight"])
    browser.evaluate("document.querySelectorAll('.strip .asleep').forEach("
                     "i => i.style.background = '#1f1b58'); 0")
    equal(browser.evaluate(NEIGHBOURS)["asleep hibernated"] < 3, True)


def test_it_never_scrolls_sideways(browser, pages):
    for page in pages.all():
        for width in WIDTHS:
            browser.open(page, width)
            equal(browser.evaluate("innerWidth"), width)
            open_all(browser)
            equal(browser.evaluate("document.documentElement.scrollWidth"), width)
            equal(browser.evaluate(OVERFLOWING), [])


def test_it_prints_in_light_with_everything_open(browser, pages):
    for scheme in SCHEMES:
        browser.open(pages.learnt, 720, scheme, "print")
        equal(browser.evaluate("document.documentElement.scrollWidth"), 720)
        equal(browser.evaluate("getComputedStyle(document.body).backgroundColor"),
              "rgb(255, 255, 255)")
        equal(browser.evaluate("getComputedStyle(document.documentElement).colorScheme"), "light")
        equal(browser.evaluate("getComputedStyle(document.querySelector('.strip i'))"
                               ".printColorAdjust"), "exact")
        equal(browser.evaluate("document.querySelectorAll('details').length"), 4)
        equal(browser.evaluate("[...document.querySelectorAll('details > :last-child')].map("
                               "e => e.checkVisibility({contentVisibilityAuto: true}) && "
                               "e.getBoundingClientRect().height > 40)"), [True] * 4)
    pdf = base64.b64decode(browser.call("Page.printToPDF", printBackground=False)["data"])
    equal(pdf[:5], b"%PDF-")
    pages_printed = pdf.count(b"/Type /Page\n")
    equal(2 <= pages_printed <= 12, True)


def test_folded_content_is_closed_on_a_screen(browser, pages):
    browser.open(pages.learnt)
    equal(browser.evaluate("[...document.querySelectorAll('details > :last-child')].some("
                           "e => e.checkVisibility())"), False)


def test_the_times_of_a_figure_stand_in_words_beside_it(browser, pages):
    for page in (pages.learnt, pages.day, pages.erratic):
        browser.open(page)
        open_all(browser)
        # What a tooltip of the recorded past says stands in the table of its day.
        wrong = browser.evaluate("""
          (() => {
            const days = {};
            document.querySelectorAll('#past .list tbody tr').forEach(
              row => days[row.cells[0].innerText] = row.cells[1].innerText);
            const wrong = [];
            document.querySelectorAll('#past .days tbody tr').forEach(row => {
              const told = days[row.cells[0].innerText] || '';
              row.querySelectorAll('.strip i').forEach(bar => {
                const at = bar.title.lastIndexOf(', ');
                const kind = told.split('; ').find(k => k.startsWith(bar.title.slice(0, at)));
                if (!kind || !kind.includes(bar.title.slice(at + 2))) wrong.push(bar.title);
              });
            });
            return wrong;
          })()
        """)
        equal(wrong, [])
        equal(browser.evaluate("document.querySelectorAll('#past .list tbody tr').length > 0 && "
                               "document.querySelectorAll('#past .list tbody tr').length === "
                               "document.querySelectorAll('#past .days tbody tr').length"), True)
        # The same of the map, a day at a time: the parts of the list cover the tooltips.
        numbers = browser.evaluate("[...document.querySelectorAll('#learnt .list tbody tr')].map("
                                   "row => [...row.cells].map(cell => cell.innerText))")
        titles = browser.evaluate("[...document.querySelectorAll('.map td')].map(c => c.title)")
        equal(len(titles), 7 * 48)
        told = {}
        for day, text in numbers:
            for part in text.split("; "):
                start, _, end, what = part.split(" ", 3)
                for minute in range(minutes(start), minutes(end), 30):
                    told[day, minute] = what
        for title in titles:
            when, what = title.split(": ")
            day, start, _, _ = when.split()
            equal(told[day, minutes(start)], what)


def minutes(clock):
    hours, rest = clock.split(":")
    return int(hours) * 60 + int(rest)


def test_every_idle_stretch_is_listed_and_their_number_told(browser, pages):
    most = 0
    for page in (pages.learnt, pages.erratic):
        browser.open(page)
        listed = browser.evaluate("document.querySelectorAll('#tonight .list tbody tr').length")
        shown = browser.evaluate(
            "[...document.querySelectorAll('#tonight .strip i.hibernated')].filter(bar => "
            "!bar.title.includes(', 00:00 to ')).length")
        equal(listed, shown)
        most = max(most, listed)
        summary = browser.evaluate("document.querySelector('#tonight summary').innerText")
        equal(summary, "All %d idle stretches of these days, in words" % listed)
    equal(most > 6, True)


def test_figures_of_searched_sets_are_called_hindsight(browser, pages):
    browser.open(pages.learnt)
    groups = browser.evaluate("[...document.querySelectorAll('#choices .group')].map("
                              "g => [g.innerText, [...g.closest('tbody').rows].slice(1).map("
                              "r => r.cells[0].innerText)])")
    equal([names for title, names in groups if title.startswith("Hindsight: ")],
          [["strength 0", "strength 1", "strength 2"]])
    contains(text_of(browser, "#search .explanation"), "All scores are hindsight")
    groups = browser.evaluate("[...document.querySelectorAll('#walked .group')].map("
                              "g => g.innerText)")
    contains(groups, "Hindsight: the timeout that turned out best")


def test_the_worth_is_what_compare_walks_forward(browser, pages):
    walk = json.loads(pages.run("compare", "--history", "office60.csv", "--settings", "s.ini",
                                "--hibernate-after", "180", "--json"))
    choices = {choice["name"]: choice for choice in walk["walkForward"]}
    browser.open(pages.learnt)
    shown = dict(browser.evaluate("[...document.querySelectorAll('#worth tbody tr')].map("
                                  "r => [r.cells[0].innerText, "
                                  "[...r.cells].slice(1).map(c => c.innerText)])"))
    # The settings have strength 1.
    for row, name in (("the user's own, 180 minutes", "180 minutes"),
                      ("timeout chosen on the past", "timeout of the past, strength 1"),
                      ("the service, with wakes", "service, strength 1"),
                      ("the service, without wakes", "service without wake, strength 1"),
                      ("best possible", "clairvoyant")):
        score = [s for s in choices[name]["scores"] if s["strength"] == 1][0]
        equal(shown.pop(row), ["%.1f" % (choices[name]["sleepSeconds"] / 3600),
                               "%d" % choices[name]["resumesFromHibernate"],
                               "%.1f (%.1f to %.1f)" % (score["score"], score["low"],
                                                        score["high"])])
    equal(shown, {})
    equal(text_of(browser, "#worth .explanation").split(",")[0],
          "%d recorded sleeps in %d weeks" % (walk["sleeps"], walk["weeks"]))


def test_a_machine_without_records_is_told_so(browser, pages):
    browser.open(pages.blank)
    equal(browser.evaluate("[...document.querySelectorAll('h1, h2')].map(h => h.innerText)"),
          ["When this machine is needed", "Nothing is known yet"])
    equal(browser.evaluate("document.querySelectorAll('article, table, .strip, .bar').length"), 0)


def test_what_is_compared_is_compared_with_one_timeout(browser, pages):
    browser.open(pages.learnt)
    text = browser.evaluate("document.body.innerText")
    equal(set(re.findall(r"(?:fixed timeout of |own timeout[ ,(]+)(\d+) minutes", text)), {"180"})


def test_the_keyboard_reaches_all_that_can_be_used(browser, pages):
    browser.open(pages.learnt)
    reached = []
    usable = browser.evaluate("[...document.querySelectorAll('a, summary')].map(e => e.innerText)")
    for _ in usable:
        browser.press("Tab")
        name, outline, visible = browser.evaluate("""
          (() => {
            const e = document.activeElement, box = e.getBoundingClientRect();
            const style = getComputedStyle(e);
            return [e.innerText, style.outlineStyle + ' ' + parseFloat(style.outlineWidth),
                    box.top >= 0 && box.bottom <= innerHeight];
          })()
        """)
        equal((outline, visible), ("solid 3", True))
        reached.append(name)
    equal(reached, usable)
    equal(len(usable), 8 + 4)
    browser.open(pages.learnt)
    browser.press("Tab")
    browser.press("Tab")
    browser.press("Enter", "\r")
    equal(browser.evaluate("location.hash"), "#learnt")
    equal(abs(browser.evaluate("document.querySelector('#learnt').getBoundingClientRect().top")) < 2,
          True)
    browser.press("Tab")
    equal(browser.evaluate("document.activeElement.innerText"), "The same in numbers")
    browser.press("Enter", "\r")
    equal(browser.evaluate("document.activeElement.parentElement.open"), True)


def test_fingers_find_what_can_be_used(browser, pages):
    for width in (NARROW, PHONE):
        browser.open(pages.learnt, width)
        equal(browser.evaluate("[...document.querySelectorAll('a, summary')].filter("
                               "e => e.getBoundingClientRect().height < 23.5).map("
                               "e => e.innerText)"), [])


def test_everything_has_a_name_for_those_who_cannot_see_it(browser, pages):
    for page in pages.all():
        browser.open(page)
        equal(browser.evaluate(SEMANTICS), [])


def test_a_table_of_a_fleet_scrolls_by_itself_for_the_keyboard_too(browser, pages):
    browser.open(pages.fleet, NARROW)
    usable = browser.evaluate("[...document.querySelectorAll('a, .wide')].map("
                              "e => e.ariaLabel || e.innerText)")
    reached = []
    for _ in usable:
        browser.press("Tab")
        reached.append(browser.evaluate("document.activeElement.ariaLabel || "
                                        "document.activeElement.innerText"))
    equal(reached, usable)
    contains(usable, "Machines that lose most")
    scrolling = browser.evaluate("[...document.querySelectorAll('.wide')].map("
                                 "e => [e.scrollWidth > e.clientWidth, "
                                 "getComputedStyle(e).overflowX])")
    contains(scrolling, [True, "auto"])
    # Its columns are not squeezed to the width of a letter.
    equal(browser.evaluate("document.documentElement.scrollHeight") < 8000, True)


def test_headings_of_a_fleet_stand_over_what_they_name(browser, pages):
    browser.open(pages.fleet)
    wrong = browser.evaluate("""
      (() => {
        const side = cell => getComputedStyle(cell).textAlign.replace('start', 'left');
        return [...document.querySelectorAll('.fleet')].flatMap(table =>
          [...table.tBodies[0].rows].flatMap(row => [...row.cells].filter(
            (cell, i) => side(cell) !== side(table.tHead.rows[0].cells[i])
          ).map(cell => cell.innerText)));
      })()
    """)
    equal(wrong, [])


def test_a_fleet_is_printed_whole(browser, pages):
    for scheme in SCHEMES:
        browser.open(pages.fleet, 720, scheme, "print")
        equal(browser.evaluate("getComputedStyle(document.body).backgroundColor"),
              "rgb(255, 255, 255)")
        equal(browser.evaluate("document.documentElement.scrollWidth"), 720)
        equal(browser.evaluate("[...document.querySelectorAll('.fleet')].filter("
                               "t => t.getBoundingClientRect().right > innerWidth).map("
                               "t => t.caption.innerText)"), [])


def test_texts_are_shown_and_never_taken_as_markup(browser, pages):
    browser.open(pages.named)
    equal(text_of(browser, ".note").split(":")[0], pages.long_name)
    equal(browser.evaluate("document.querySelectorAll('img').length"), 0)


def take_screenshots(browser, pages, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for page in pages.all():
        for width in WIDTHS:
            for scheme in SCHEMES:
                browser.open(page, width, scheme)
                browser.screenshot(folder / ("%s-%d-%s.png" % (page.stem, width, scheme)))
        browser.open(page, 720, "dark", "print")
        browser.screenshot(folder / ("%s-print.png" % page.stem))


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
