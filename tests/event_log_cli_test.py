"""Tests `dozewell-replay import --from-event-log` from outside, on captures of event logs.

    python3 -m tests.event_log_cli_test --tool build/native/dozewell-replay
    python3 -m tests.event_log_cli_test --tool "wine build/windows/dozewell-replay.exe"
"""

import datetime
import json
import shutil
import struct
import sys

from tests.support.cli import ROOT, SETTINGS, main
from tests.support.expect import contains, equal

LOGS = ROOT / "tests" / "event_logs"
CENTRAL_EUROPE = "CET-1CEST,M3.5.0,M10.5.0/3"
NEW_YORK = "EST5EDT,M3.2.0,M11.1.0"
JAPAN = "JST-9"

# When the machine of week.xml was used. It fell asleep at 02:30 before the clocks were put back and
# woke at 02:10 after that. A timer woke it on Monday at 20:30, when it hibernated, and on Wednesday
# at 03:00; neither counts as use. On Wednesday it lost power.
WEEK = """\
2026-10-19 07:58:10 in use
2026-10-19 12:01:00 asleep
2026-10-19 12:48:31 in use
2026-10-19 17:30:00 asleep
2026-10-20 07:55:00 in use
2026-10-20 12:00:00 asleep
2026-10-20 12:30:00 in use
2026-10-20 17:45:00 asleep
2026-10-21 08:02:00 in use
2026-10-21 12:09:45 asleep
2026-10-21 12:14:00 in use
2026-10-21 17:20:00 asleep
2026-10-22 08:00:30 in use
2026-10-22 18:00:00 asleep
2026-10-23 06:30:00 in use
2026-10-23 09:00:00 asleep
2026-10-23 13:00:00 in use
2026-10-23 16:00:00 asleep
2026-10-24 22:00:00 in use
2026-10-25 02:30:00 asleep
2026-10-25 02:30:01 in use
2026-10-25 04:00:00 asleep
2026-10-26 08:00:00 in use
2026-10-26 08:41:07 asleep
"""
WEEK_EVENTS = 56
# The clocks were put forward while the machine was in use.
SPRING = """\
2026-03-28 20:00:00 in use
2026-03-29 03:30:00 asleep
2026-03-29 09:00:00 in use
2026-03-29 22:00:00 asleep
"""
# The clock's battery was empty, so the clock started in 2009 twice. On 2 June it was set afterwards,
# on 3 June it was not. On 4 June it was set back by an hour.
CLOCK = """\
2026-06-01 08:00:00 in use
2026-06-01 17:00:00 asleep
2026-06-02 08:00:35 in use
2026-06-02 16:00:00 asleep
2026-06-04 09:00:00 in use
2026-06-04 12:00:00 asleep
"""
# Modern standby; once the machine went from it into hibernation.
STANDBY = """\
2026-05-11 08:00:00 in use
2026-05-11 12:00:00 asleep
2026-05-11 13:00:00 in use
2026-05-11 18:00:00 asleep
2026-05-12 07:30:01 in use
2026-05-12 17:00:00 asleep
"""
# This system logs only one event for a wake.
POWERSHELL = """\
2026-03-07 08:00:00 in use
2026-03-08 00:30:00 asleep
2026-03-08 08:00:00 in use
2026-03-08 18:00:00 asleep
"""


def capture(tool, name):
    """Puts a capture in the test's folder."""
    shutil.copy(LOGS / name, tool.folder / name)
    return name


def run_import(tool, *arguments, zone=CENTRAL_EUROPE, **options):
    return tool.works("import", "--from-event-log", *arguments, "--zone", zone, **options)


def records(tool, name="h.dat"):
    return list(struct.iter_unpack("<dII", tool.read(name)))


def told(tool, name="h.dat"):
    """The records as lines."""
    begin = datetime.datetime(1970, 1, 1)
    return "".join("%s %s\n" % (begin + datetime.timedelta(seconds=time),
                                ("in use", "asleep")[asleep])
                   for time, asleep, reserved in records(tool, name) if reserved == 0)


def imported(tool, name, zone):
    """The history that is made of a capture, and what the tool prints."""
    out = run_import(tool, capture(tool, name), "--out", "h.dat", zone=zone)
    return told(tool), out


def seconds(text):
    when = datetime.datetime.fromisoformat(text).replace(tzinfo=datetime.timezone.utc)
    return when.timestamp()


def write_history(tool, name, *lines):
    tool.write(name, b"".join(struct.pack("<dII", seconds(time), asleep, 0)
                              for time, asleep in lines))


# What is read from logs

def test_a_week_of_a_laptop(tool):
    history, out = imported(tool, "week.xml", CENTRAL_EUROPE)
    equal(history, WEEK)
    equal(out, "h.dat: 24 records; from the event log: 24 records, 2026-10-19 07:58 to "
               "2026-10-26 08:41\n"
               "2 wakes left out: the machine went straight back to sleep\n"
               "1 use ended unexpectedly; its end is when the machine was last known to run\n"
               "1 event moved by as much as the clock was set afterwards\n")


def test_the_order_of_a_log_does_not_matter(tool):
    lines = (LOGS / "week.xml").read_text().splitlines()
    tool.write("log.xml", "\n".join(reversed(lines)))
    run_import(tool, "log.xml", "--out", "h.dat")
    equal(told(tool), WEEK)
    tool.write("log.xml", "".join(lines[1::2] + lines[::2] + lines[::3]))
    run_import(tool, "log.xml", "--out", "h.dat")
    equal(told(tool), WEEK)


def test_a_spring_as_the_event_viewer_saves_it(tool):
    equal(imported(tool, "spring.xml", CENTRAL_EUROPE),
          (SPRING, "h.dat: 4 records; from the event log: 4 records, 2026-03-28 20:00 to "
                   "2026-03-29 22:00\n"))


def test_a_clock_that_was_wrong(tool):
    equal(imported(tool, "clock.xml", "UTC0"),
          (CLOCK, "h.dat: 6 records; from the event log: 6 records, 2026-06-01 08:00 to "
                  "2026-06-04 12:00\n"
                  "7 events moved by as much as the clock was set afterwards\n"
                  "6 events left out: the clock was wrong and was never set\n"))


def test_modern_standby_with_the_latest_event_first(tool):
    equal(imported(tool, "standby.xml", JAPAN),
          (STANDBY, "h.dat: 6 records; from the event log: 6 records, 2026-05-11 08:00 to "
                    "2026-05-12 17:00\n"
                    "1 wake left out: the machine went straight back to sleep\n"))


def test_utf_16_as_powershell_writes_it(tool):
    equal(imported(tool, "powershell.xml", NEW_YORK)[0], POWERSHELL)
    text = (LOGS / "powershell.xml").read_bytes().decode("utf-16")
    for encoding in ("utf-16-be", "utf-8", "cp850"):
        mark = "\ufeff" if encoding == "utf-16-be" else ""
        tool.write("log.xml", (mark + text).encode(encoding, "replace"))
        run_import(tool, "log.xml", "--out", "other.dat", zone=NEW_YORK)
        equal(told(tool, "other.dat"), POWERSHELL)


def test_a_history_as_csv(tool):
    run_import(tool, capture(tool, "spring.xml"), "--out", "h.csv")
    equal(tool.read("h.csv").splitlines()[:2],
          [b"epoch_wallclock_seconds,asleep", b"%d,0" % seconds("2026-03-28 20:00:00")])


def test_json(tool):
    out = run_import(tool, capture(tool, "week.xml"), "--out", "h.dat", "--json")
    equal(json.loads(out), {
        "records": 24, "added": 24, "from": "2026-10-19T07:58:10", "to": "2026-10-26T08:41:07",
        "events": WEEK_EVENTS, "wakesLeftOut": 2, "unexpectedEnds": 1, "eventsCorrected": 1,
        "eventsLeftOut": 0, "learnt": False})


def test_without_a_zone_this_machines_counts(tool):
    tool.environment["TZ"] = "UTC0"
    try:
        tool.works("import", "--from-event-log", capture(tool, "clock.xml"), "--out", "h.dat")
        equal(told(tool), CLOCK)
    finally:
        del tool.environment["TZ"]


# What dozewell-powerwatch wrote

WATCH = ROOT / "lab" / "recordings" / "a_laptops_evening.csv"
# It woke at 20:32 to go on into hibernation.
EVENING = """\
2026-11-20 17:40:41 in use
2026-11-20 20:02:11 asleep
2026-11-20 22:15:40 in use
2026-11-20 23:30:05 asleep
2026-11-21 08:03:30 in use
2026-11-21 08:40:00 asleep
"""


def test_a_file_of_the_watch_is_known_by_its_content(tool):
    shutil.copy(WATCH, tool.folder / "w.csv")
    out = tool.works("import", "--from-event-log", "w.csv", "--out", "h.dat")
    equal(out, "h.dat: 6 records; from the watch: 6 records, 2026-11-20 17:40 to "
               "2026-11-21 08:40\n"
               "1 wake left out: the machine went straight back to sleep\n")
    equal(told(tool), EVENING)


def test_a_watched_evening_extends_a_history(tool):
    shutil.copy(WATCH, tool.folder / "w.csv")
    write_history(tool, "h.dat", ("2026-11-21 08:00:00", 0), ("2026-11-21 18:00:00", 1))
    tool.works("import", "--from-event-log", "w.csv", "--history", "h.dat", "--out", "h.dat")
    equal(told(tool), "".join(EVENING.splitlines(True)[:4]) +
          "2026-11-21 08:00:00 in use\n2026-11-21 18:00:00 asleep\n")


def test_a_file_of_the_watch_has_its_own_local_time(tool):
    shutil.copy(WATCH, tool.folder / "w.csv")
    fails(tool, "--zone: w.csv has its machine's local time itself", "w.csv", "--out", "h.dat",
          "--zone", "UTC0")


def test_a_line_that_the_watch_did_not_write_is_named(tool):
    lines = WATCH.read_bytes().splitlines(True)
    tool.write("w.csv", b"".join(lines) + lines[6][:30])
    fails(tool, "w.csv: line 15: not 10 columns with commas between", "w.csv", "--out", "h.dat")
    tool.write("w.csv", b"".join(lines).replace(b"13,18,", b"13,x,", 1))
    fails(tool, "w.csv: line 7: type is no number: x", "w.csv", "--out", "h.dat")
    tool.write("w.csv", lines[0])
    fails(tool, "w.csv: no event of it tells when the machine was in use", "w.csv", "--out",
          "h.dat")


# Before another history, and what is learnt

def test_only_what_is_older_comes_before_a_history(tool):
    capture(tool, "spring.xml")
    write_history(tool, "old.dat", ("2026-03-29 08:00:00", 0), ("2026-03-30 18:00:00", 1))
    out = run_import(tool, "spring.xml", "--history", "old.dat", "--out", "h.dat")
    equal(out, "h.dat: 4 records; from the event log: 2 records, 2026-03-28 20:00 to "
               "2026-03-29 03:30\n")
    equal(told(tool), "2026-03-28 20:00:00 in use\n2026-03-29 03:30:00 asleep\n"
                      "2026-03-29 08:00:00 in use\n2026-03-30 18:00:00 asleep\n")


def test_states_alternate_where_the_histories_meet(tool):
    capture(tool, "spring.xml")
    write_history(tool, "h.dat", ("2026-03-29 10:00:00", 0), ("2026-03-30 18:00:00", 1))
    run_import(tool, "spring.xml", "--history", "h.dat", "--out", "h.dat")
    equal(told(tool), "".join(SPRING.splitlines(True)[:3]) + "2026-03-30 18:00:00 asleep\n")
    before = tool.read("h.dat")
    out = run_import(tool, "spring.xml", "--history", "h.dat", "--out", "h.dat")
    equal(out, "h.dat: 4 records; from the event log: no records\n")
    equal(tool.read("h.dat"), before)


def test_a_csv_history_is_put_behind_too(tool):
    tool.write("old.csv", "2026-03-29T08:00,0\n")
    run_import(tool, capture(tool, "spring.xml"), "--history", "old.csv", "--out", "h.dat")
    equal(len(records(tool)), 3)


def test_a_history_that_does_not_exist_yet(tool):
    run_import(tool, capture(tool, "spring.xml"), "--history", "h.dat", "--out", "h.dat")
    equal(told(tool), SPRING)


def test_a_data_file_is_written_as_learn_writes_it(tool):
    tool.write("s.ini", SETTINGS)
    out = run_import(tool, capture(tool, "week.xml"), "--out", "h.dat", "--data", "d.z7",
                     "--settings", "s.ini")
    contains(out, "\nd.z7: learnt\n")
    tool.works("learn", "--history", "h.dat", "--settings", "s.ini", "--data", "expected.z7")
    equal(tool.read("d.z7"), tool.read("expected.z7"))
    out = run_import(tool, "week.xml", "--out", "i.dat", "--data", "i.z7", "--json")
    equal(json.loads(out)["learnt"], True)
    tool.works("learn", "--history", "h.dat", "--data", "expected.z7")
    equal(tool.read("i.z7"), tool.read("expected.z7"))


def test_a_data_file_that_is_there_stays(tool):
    tool.write("d.z7", b"learnt")
    out = run_import(tool, capture(tool, "week.xml"), "--out", "h.dat", "--data", "d.z7")
    contains(out, "\nd.z7: left as it is\n")
    equal(tool.read("d.z7"), b"learnt")


def test_settings_that_make_no_predictor_leave_nothing_behind(tool):
    capture(tool, "week.xml")
    tool.write("s.ini", "[Settings]\n")
    before = tool.files()
    tool.fails("s.ini: TimeResolution, DaysInCycle, MinutesInDay, FirstLastWeight, "
               "SecondLastWeight, AgregationWeight are missing: "
               "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations", "import",
               "--from-event-log", "week.xml", "--out", "h.dat", "--data", "d.z7", "--settings",
               "s.ini")
    equal(tool.files(), before)


# Errors

def fails(tool, error, *arguments):
    before = tool.files()
    tool.fails(error, "import", "--from-event-log", *arguments)
    equal(tool.files(), before)


def test_a_log_that_is_cut_off(tool):
    lines = (LOGS / "week.xml").read_text().splitlines(True)
    tool.write("log.xml", "".join(lines)[:-len("</Event>\n")])
    fails(tool, "log.xml: line %d: <Event> has no end" % len(lines), "log.xml", "--out", "h.dat")
    tool.write("log.xml", "".join(lines[:9]) + lines[9].split("SystemTime='20")[0] + "SystemTime='20")
    fails(tool, "log.xml: line 10: an attribute's value has no end", "log.xml", "--out", "h.dat")


def test_a_file_that_is_no_log(tool):
    for content, error in (
            ("hello\n", "line 1: text where an element should be"),
            ("<html>\n<body/></html>", "line 2: <body> where an <Event> should be"),
            ("<Event>\n<System/></Event>",
             "line 2: the event that ends here has no time that could be read"),
            ("<!DOCTYPE x><x/>", "line 1: a declaration, which event logs do not have"),
            ("", "no event of it tells when the machine was in use"),
            ("<Events/>", "no event of it tells when the machine was in use"),
            (b"ElfFile\0\0\0", "an event log itself, no export of one; wevtutil qe log.xml "
                               "/lf:true /f:xml exports it")):
        tool.write("log.xml", content)
        fails(tool, "log.xml: " + error, "log.xml", "--out", "h.dat")


def test_files_that_cannot_be_read_or_written(tool):
    capture(tool, "week.xml")
    missing = ": No such file or directory"
    fails(tool, "none.xml: cannot be read" + missing, "none.xml", "--out", "h.dat")
    fails(tool, "no/h.dat: cannot be written" + missing, "week.xml", "--out", "no/h.dat")
    fails(tool, "none.ini: cannot be read" + missing, "week.xml", "--out", "h.dat", "--data", "d",
          "--settings", "none.ini")
    # The learnt data is not written either.
    fails(tool, "no/h.dat: cannot be written" + missing, "week.xml", "--out", "no/h.dat", "--data",
          "d.z7")


def test_options_that_do_not_go_together(tool):
    capture(tool, "week.xml")
    tool.write("h.csv", "0,0\n")
    for option in ("--zone", "--data", "--settings"):
        tool.fails(option + " requires --from-event-log", "import", "--history", "h.csv", "--out",
                   "h.dat", option, "x")
    fails(tool, "--settings requires --data", "week.xml", "--out", "h.dat", "--settings", "x")
    fails(tool, "--zone: not a zone's rules as UTC0 or CET-1CEST,M3.5.0,M10.5.0/3: Europe/Berlin",
          "week.xml", "--out", "h.dat", "--zone", "Europe/Berlin")


def test_the_example_of_the_help_works(tool):
    shutil.copy(LOGS / "week.xml", tool.folder / "system.xml")
    example = "import --from-event-log system.xml --out zs7state.dat --data cpredict.z7"
    contains(tool.works("import", "--help"), "\n  dozewell-replay %s\n" % example)
    tool.works(*example.split())
    equal(sorted(tool.files()), ["cpredict.z7", "system.xml", "zs7state.dat"])


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
