"""Tests that what dozewell-replay prints with --json is JSON for the strictest reader, and what the
manual says that it is.

    python3 -m tests.json_cli_test --tool build/native/dozewell-replay
    python3 -m tests.json_cli_test --tool "wine build/windows/dozewell-replay.exe"
"""

import os
import sys

from tests.replay_cli_test import COMMANDS, NOTHING_KNOWN, SLOTS, header
from tests.support.cli import ROOT, SETTINGS, main
from tests.support.expect import contains, equal
from tests.support.strict_json import (documented_examples, expect_documented,
                                       expect_documented_of_many, strict_json)

WEEK = str(ROOT / "tests" / "event_logs" / "week.xml")


def printed(tool, *arguments):
    done = tool.run(*arguments, "--json")
    equal((done.returncode, done.stderr), (0, b""), " ".join(arguments))
    return strict_json(done.stdout.decode("utf-8"))


def all_commands(history="office.csv", data="office.z7", settings=()):
    """A command line of each command; those that write come first."""
    with_settings = ("--settings", *settings) if settings else ()
    return {
        "sample": ("--kind", "office", "--days", "30", "--seed", "1", "--out", "sample.csv"),
        "learn": ("--history", history, "--data", data, *with_settings),
        "import": ("--from-event-log", WEEK, "--zone", "UTC0", "--out", "i.dat"),
        "merge": ("--history", "i.dat", "--pending", history, "--now", "0", "--limit", "9", "--out",
                  "m.dat"),
        "export": ("--history", "m.dat", "--out", "e.csv"),
        "report": ("--history", history, "--data", data, "--out", "r.html", *with_settings),
        "apply": ("--strength", "0", "--best", "best.txt"),
        "predict": ("--data", data, *with_settings),
        "probabilities": ("--data", data, *with_settings),
        "suspend": ("--data", data, *with_settings),
        "explain": ("--data", data, *with_settings),
        "week": ("--data", data, *with_settings),
        "compare": ("--history", history, *with_settings),
        "fleet": (history, *with_settings),
        "simulate": ("--history", history, "--timeline", *with_settings),
        "baseline": ("--history", history, "--timeline"),
        "search": ("--history", history, "--each", *with_settings),
    }


def make_history(tool):
    tool.works("sample", "--kind", "office", "--days", "30", "--seed", "1", "--out", "office.csv")
    tool.write("best.txt", "45,45,10,20,20,12")


def test_each_command_prints_what_the_manual_says(tool):
    make_history(tool)
    examples = documented_examples("dozewell-replay")
    equal(sorted(examples), sorted(COMMANDS))
    lines = all_commands()
    equal(sorted(lines), sorted(COMMANDS))
    for command, options in lines.items():
        expect = expect_documented_of_many if command == "fleet" else expect_documented
        expect(printed(tool, command, *options), examples[command], command)


def identity(tool, *arguments):
    document = printed(tool, *arguments)
    return (document[0] if isinstance(document, list) else document)["identity"]


def test_each_answer_says_which_machine_it_is_about(tool):
    make_history(tool)
    tool.write("s.ini", SETTINGS + "[Machine]\nName=OFFICE-7\nZone=W. Europe Standard Time\n")
    data = ("--data", "office.z7", "--settings", "s.ini")
    learnt = identity(tool, "learn", "--history", "office.csv", *data)
    equal((learnt["name"], learnt["zone"]), ("OFFICE-7", "W. Europe Standard Time"))
    for command in ("suspend", "explain", "predict", "week"):
        equal(identity(tool, command, *data), learnt, command)
    for command in ("compare", "simulate", "search"):
        equal(identity(tool, command, "--history", "office.csv", "--settings", "s.ini"), learnt)
    equal(identity(tool, "suspend", *data, "--machine", "ü")["name"], "ü")
    # A mark tells settings apart, and only them.
    tool.write("same.ini", "# Others' comments\n" + SETTINGS.replace("=70", "= 70 "))
    equal(identity(tool, "suspend", "--data", "office.z7", "--settings", "same.ini"),
          {**learnt, "name": None, "zone": None})
    # What programs read stays as it is until somebody names the machine.
    unnamed = printed(tool, "predict", "--data", "office.z7", "--settings", "same.ini")
    equal({tuple(item) for item in unnamed}, {("time", "minutes")})
    tool.write("other.ini", SETTINGS.replace("StrengthHigh=70", "StrengthHigh=71"))
    other = identity(tool, "suspend", "--data", "office.z7", "--settings", "other.ini")
    equal(other["settings"] != learnt["settings"], True)


def test_csv_and_pages_say_which_machine_they_are_about(tool):
    make_history(tool)
    tool.works("import", "--history", "office.csv", "--out", "o.dat")
    tool.works("export", "--history", "o.dat", "--out", "e.csv", "--machine", "OFFICE-7")
    comment = tool.read("e.csv").decode().splitlines()[0]
    equal(comment[:2], "# ")
    told = strict_json(comment[2:] + "\n")
    equal((told["name"], told["settings"], told["zone"]), ("OFFICE-7", None, None))
    # What reads CSV reads past it.
    equal(identity(tool, "baseline", "--history", "e.csv")["time"], told["time"])
    tool.works("export", "--history", "o.dat", "--out", "nameless.csv")
    equal(tool.read("e.csv").split(b"\n", 1)[1], tool.read("nameless.csv"))
    found = tool.works("search", "--history", "e.csv", "--each", "--machine", "OFFICE-7")
    equal(strict_json(found.splitlines()[0][2:] + "\n")["name"], "OFFICE-7")
    tool.works("learn", "--history", "e.csv", "--data", "o.z7")
    tool.works("report", "--history", "e.csv", "--data", "o.z7", "--out", "r.html", "--machine",
               "<OFFICE-7>")
    contains(tool.read("r.html").decode(), "&lt;OFFICE-7&gt;; data to " +
             told["time"].replace("T", " ") + "; settings ")


def test_lists_are_there_only_when_they_are_asked_for(tool):
    make_history(tool)
    for command, option, key, items in (("simulate", "--timeline", "timeline", 2),
                                        ("baseline", "--timeline", "timeline", 2),
                                        ("search", "--each", "each", 10)):
        run = (command, "--history", "office.csv")
        asked = printed(tool, *run, option)
        equal({len(item) for item in asked[key]}, {items})
        del asked[key]
        equal(printed(tool, *run), asked)


def test_nothing_known_and_nothing_found(tool):
    examples = documented_examples("dozewell-replay")
    tool.write("s.ini", SETTINGS.replace("FirstLastWeight=2", "FirstLastWeight=-2"))
    tool.write("d.z7", header(last=(1, (0, 0, 12, 2, 0, 70, 5, 1, 0))) + SLOTS * NOTHING_KNOWN)
    tool.write("h.csv", "")
    tool.write("best.txt", "-1")
    lines = all_commands("h.csv", "d.z7", ("s.ini",))
    for command in ("predict", "probabilities", "suspend", "explain", "week", "compare", "simulate",
                    "baseline", "search", "apply", "learn"):
        expect_documented(printed(tool, command, *lines[command]), examples[command], command)


def test_what_is_no_number_is_null(tool):
    # Weights whose sum is zero make probabilities of not-a-number.
    tool.example()
    tool.write("s.ini", SETTINGS.replace("FirstLastWeight=2", "FirstLastWeight=-2"))
    common = ("--data", "d.z7", "--settings", "s.ini")
    equal(printed(tool, "probabilities", *common)[20], None)
    # Without a resume, a score is divided by nothing.
    tool.write("h.csv", "0,0\n100,1\n")
    equal(printed(tool, "search", "--history", "h.csv")["best"][0]["baseline"], None)


def test_names_that_are_not_unicode(tool):
    make_history(tool)
    tool.works(*("learn", "--history", "office.csv", "--data", "office.z7"))
    report = ("report", "--history", "office.csv", "--data", "office.z7", "--out")
    equal(printed(tool, *report, "ü \U0001F4CA.html")["file"], "ü \U0001F4CA.html")
    if tool.is_native:
        equal(printed(tool, *report, os.fsdecode(b"\xfc\xed\xa0\x80.html"))["file"],
              "\N{REPLACEMENT CHARACTER}" * 4 + ".html")


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
