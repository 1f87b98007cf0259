"""Tests `dozewell-replay report` from outside. report_browser_test.py tests how the page looks.

    python3 -m tests.report_cli_test --tool build/native/dozewell-replay
    python3 -m tests.report_cli_test --tool "wine build/windows/dozewell-replay.exe"
"""

import sys

from tests.support.cli import WRONG_TIME, main
from tests.support.expect import contains, equal

FILES = ("--history", "h.csv", "--data", "d.z7", "--settings", "s.ini")


def page(tool, *more, warnings=()):
    out = tool.works("report", *FILES, "--out", "r.html", *more, warnings=warnings)
    html = tool.read("r.html")
    equal(out, "r.html: %d bytes\n" % len(html))
    return html.decode()


def test_a_report_is_of_the_last_event_unless_a_time_is_given(tool):
    tool.example()
    html = page(tool)
    contains(html, "<title>Dozewell report, Fri 2 Jan 1970</title>")
    contains(html, "Dozewell report of Fri 2 Jan 1970, 12:00. The history has 4 records, from "
                   "Thu 1 Jan 1970 to Fri 2 Jan 1970.")
    equal(page(tool, "--now", "1970-01-02T12:00:00"), html)
    equal(page(tool, "--now", "1970-01-02 12:00"), html)
    equal(tool.works("report", *FILES, "--out", "r.html", "--json"),
          '{"file":"r.html","bytes":%d}\n' % len(html.encode()))
    contains(page(tool, "--now", "1970-01-05T07:30:00"), "report of Mon 5 Jan 1970, 07:30.")


def test_the_time_that_it_predicts_from_is_that_of_the_report(tool):
    tool.example()
    html = page(tool, "--now", "1970-01-03T09:00:00")
    contains(html, tool.works("explain", "--data", "d.z7", "--settings", "s.ini", "--at",
                              "1970-01-03T09:00:00"))


def test_the_timeout_to_compare_with(tool):
    tool.example()
    own = "; the user&#39;s own timeout (%s): "
    contains(page(tool), own % "180 minutes")
    contains(page(tool, "--hibernate-after", "10"), own % "10 minutes")
    contains(page(tool, "--hibernate-after", "0"), own % "never")


def test_what_is_compared_is_what_compare_says(tool):
    tool.example()
    html = page(tool).split('<section id="choices"')[1]
    # What comes after the blank line is walked forward.
    table = tool.works("compare", "--history", "h.csv", "--settings", "s.ini").split("\n\n")[0]
    rows = [line.split() for line in table.splitlines()]
    names = {"never": "never", "settings": "these settings", "clairvoyant": "best possible"}
    found = 0
    for row in rows:
        if row[0] in names:
            found += 1
            shown = html.split('<th scope="row">%s</th>' % names[row[0]])[1].split("</tr>")[0]
            equal([cell.split("<")[0] for cell in shown.split('<td class="number">')[1:]], row[1:])
    equal(found, len(names))


def test_a_data_file_that_is_ignored_is_told_on_the_page_too(tool):
    tool.example()
    tool.write("d.z7", b"short\0")
    warning = "d.z7: ignored: it is not of the size that the configured cycle needs"
    tool.works("report", *FILES, "--out", "r.html", "--now", "1970-01-05T07:30:00",
               warnings=[warning])
    contains(tool.read("r.html").decode(), '<p class="note">%s</p>' % warning)
    tool.fails("d.z7: holds no event whose time could be taken; give --now", "report", *FILES,
               "--out", "r.html", warnings=[warning])


def test_a_history_that_cannot_be_replayed(tool):
    tool.example()
    tool.write("h.csv", "0,0\n100,1\n200,4\n")
    warning = "h.csv: damaged: 1 record with a state above 3"
    html = page(tool, warnings=[warning])
    contains(html, "The history cannot be replayed: Unknown event in the history.")
    contains(html, '<p class="note">%s</p>' % warning)


def test_what_goes_wrong_leaves_the_page_that_was_there(tool):
    tool.example()
    tool.write("r.html", "old")
    before = tool.files()
    out = ("--out", "r.html")
    missing = "gone: cannot be read: No such file or directory"
    tool.fails(missing, "report", "--history", "gone", "--data", "d.z7", *out)
    tool.fails(missing, "report", "--history", "h.csv", "--data", "gone", *out)
    tool.fails(missing, "report", *FILES[:4], "--settings", "gone", *out)
    tool.fails(WRONG_TIME % "--now" + "noon", "report", *FILES, *out, "--now", "noon")
    tool.fails("--hibernate-after: not never or 1 to 4294967295 minutes, such as 45m or 1h30m: ten",
               "report", *FILES, *out, "--hibernate-after", "ten")
    equal(tool.files(), before)


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
