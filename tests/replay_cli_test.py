"""Tests the command line of dozewell-replay from outside: what it prints, what it writes, and what
it says and leaves behind when something is wrong.

    python3 -m tests.replay_cli_test --tool build/native/dozewell-replay
    python3 -m tests.replay_cli_test --tool "wine build/windows/dozewell-replay.exe"
"""

import json
import os
import pty
import re
import resource
import shutil
import signal
import struct
import sys
from pathlib import Path

from tests.support.cli import DAY, HISTORY, IDENTITY, ROOT, SETTINGS, WRONG_TIME, main, record
from tests.support.expect import contains, equal

COMMANDS = ("learn", "predict", "probabilities", "suspend", "explain", "week", "compare", "fleet",
            "report", "merge", "import", "export", "sample", "simulate", "baseline", "search",
            "apply")
# Slots of the example history.
FIRST_IN_USE, LAST_IN_USE, SLOTS = 16, 24, 48


def header(days=1, minutes=1440, slot_minutes=30, slots=SLOTS, version=0, last=None):
    last_state, last_time = last or (4, (0, 0, 0, 0, 0, -1, 0, 0, 0))
    return struct.pack("<Iiiii9iii", version, days, minutes, slot_minutes, last_state, *last_time,
                       slots, 0)


NOTHING_KNOWN = struct.pack("<iiiiq", -1, -1, -1, -1, -1)


# The command line itself

def test_no_command(tool):
    tool.fails("no command; dozewell-replay --help lists them")
    tool.fails("no command; dozewell-replay --help lists them", "--")


def test_unknown_arguments(tool):
    unexpected = "The following argument was not expected: "
    tool.fails(unexpected + "forget", "forget")
    tool.fails(unexpected + "--json", "--json")
    tool.fails(unexpected + "--speed", "predict", "--data", "d", "--speed")
    tool.fails(unexpected + "more", "week", "--data", "d", "more")
    tool.fails(unexpected + "--each", "week", "--data", "d", "--each")
    tool.fails(unexpected + "/help", "week", "--data", "d", "/help")
    tool.fails(unexpected + "Learn", "Learn")
    tool.fails(unexpected + '""', "")
    several = "The following arguments were not expected: "
    tool.fails(several + "one two", "week", "--data", "d", "one", "two")
    # A required option that is misspelt is not only missing.
    tool.fails(several + "--histor x", "learn", "--histor", "x", "--data", "d")


def test_options_that_are_missing(tool):
    required = {
        "learn": ["--history", "--data"],
        "predict": ["--data"],
        "probabilities": ["--data"],
        "suspend": ["--data"],
        "explain": ["--data"],
        "week": ["--data"],
        "compare": ["--history"],
        "fleet": [],
        "report": ["--history", "--data", "--out"],
        "merge": ["--history", "--pending", "--now", "--limit", "--out"],
        "import": ["--history", "--out"],
        "export": ["--history", "--out"],
        "sample": ["--kind", "--days", "--seed", "--out"],
        "simulate": ["--history"],
        "baseline": ["--history"],
        "search": ["--history"],
        "apply": ["--strength", "--best"],
    }
    equal(sorted(required), sorted(COMMANDS))
    for command, options in required.items():
        for missing in options:
            given = [word for option in options if option != missing for word in (option, "x")]
            tool.fails(missing + " is required", command, *given)


def test_options_that_are_given_wrongly(tool):
    tool.fails("--data: 1 required FILE missing", "predict", "--data")
    tool.fails("--data: given more than once", "predict", "--data", "a", "--data", "b")
    tool.fails("--data: the name is empty", "predict", "--data", "")
    tool.fails("--out: the name is empty", "export", "--history", "h", "--out", "")


def test_option_and_value_in_one_word(tool):
    tool.example()
    equal(tool.works("predict", "--data=d.z7", "--settings=s.ini", "--at=1970-01-03T00:10:00"),
          tool.works("predict", "--data", "d.z7", "--settings", "s.ini", "--at",
                     "1970-01-03T00:10:00"))


def test_help_of_the_program(tool):
    text = tool.works("--help")
    for command in COMMANDS:
        contains(text, "\n  %s " % command)
    contains(text, "Usage: dozewell-replay [OPTIONS] [COMMAND]")
    contains(text, "\nExample:\n  dozewell-replay sample ")


def test_help_of_each_command(tool):
    for command in COMMANDS:
        text = tool.works(command, "--help")
        contains(text, "Usage: dozewell-replay %s [OPTIONS]" % command)
        contains(text, "\nExample:\n  dozewell-replay %s --" % command)
        equal([line for line in text.splitlines() if len(line) > 100], [])


def test_help_is_given_to_all_who_ask_for_it(tool):
    text = tool.works("--help")
    for asking in (["-h"], ["/?"], ["help"]):
        equal(tool.works(*asking), text)
    text = tool.works("learn", "--help")
    for asking in (["learn", "-h"], ["learn", "/?"], ["help", "learn"]):
        equal(tool.works(*asking), text)


def test_help_tells_how_times_durations_and_files_are_given(tool):
    text = tool.works("report", "--help")
    contains(text, "--now TIME ")
    contains(text, "--hibernate-after DURATION ")
    contains(text, '\nTIME is a local time "YYYY-MM-DD HH:MM"')
    contains(text, "\nDURATION is minutes, or has units: ")
    equal("DURATION" in tool.works("explain", "--help"), False)


def test_help_is_given_whatever_else_is_wrong(tool):
    contains(tool.works("learn", "--help", "--speed"), "Usage: dozewell-replay learn")
    contains(tool.works("sample", "--days", "x", "--help"), "Usage: dozewell-replay sample")


def test_examples_of_the_help_work(tool):
    text = tool.works("--help")
    tool.write("new.csv", HISTORY)
    examples = re.findall(r"^  dozewell-replay (.*)$", text, re.MULTILINE)
    equal(len(examples), 3)
    for example in examples:
        tool.works(*example.split())
    shutil.copy(tool.folder / "office.z7", tool.folder / "cpredict.z7")
    shutil.copy(tool.folder / "office.csv", tool.folder / "history.csv")
    (tool.folder / "machines").mkdir()
    shutil.copy(tool.folder / "office.csv", tool.folder / "machines" / "PC-1.csv")
    tool.works("import", "--history", "office.csv", "--out", "zs7state.dat")
    for command in COMMANDS:
        example = re.search(r"^Example:\n  dozewell-replay (.*)$", tool.works(command, "--help"),
                            re.MULTILINE).group(1)
        equal(example.split()[0], command)
        tool.works(*example.split())


def test_version(tool):
    version = (ROOT / "VERSION").read_text().strip()
    equal(tool.works("--version"), "dozewell-replay %s\n" % version)


# Learning and what comes of it

def test_learn_writes_the_data_file(tool):
    equal(tool.example(), "d.z7: learnt from 4 records, 4 in order, 0 refused\n")
    # Asleep since 1970-01-02 12:00, a Friday.
    expected = header(last=(1, (0, 0, 12, 2, 0, 70, 5, 1, 0)))
    for slot in range(SLOTS):
        if FIRST_IN_USE <= slot <= LAST_IN_USE:
            stamp = DAY + slot * 1800
            expected += struct.pack("<iiiiq", -1, -1, 1, 1, stamp)
        else:
            expected += struct.pack("<iiiiq", -1, -1, -1, 0, -1)
    equal(tool.read("d.z7"), expected)
    equal(sorted(tool.files()), ["d.z7", "h.csv", "s.ini"])


def test_learn_from_nothing(tool):
    tool.write("s.ini", SETTINGS)
    tool.write("h.dat", "")
    equal(tool.works("learn", "--history", "h.dat", "--settings", "s.ini", "--data", "d.z7"),
          "d.z7: learnt from 0 records, 0 in order, 0 refused\n")
    equal(tool.read("d.z7"), header() + SLOTS * NOTHING_KNOWN)


def test_learn_starts_afresh(tool):
    tool.example()
    once = tool.read("d.z7")
    tool.example()
    equal(tool.read("d.z7"), once)


def test_learn_passes_over_records_out_of_order_and_a_partial_tail(tool):
    tool.example()
    records = [record(28800, 0), record(28800, 1), record(43200, 1), record(100, 0),
               record(115200, 0), record(129600.75, 7), record(float("nan"), 0)]
    tool.write("h.dat", b"".join(records) + b"partial")
    equal(tool.works("learn", "--history", "h.dat", "--settings", "s.ini", "--data", "e.z7",
                     "--json", warnings=[
                         "h.dat: damaged: 3 records not later than one before, 1 record without a "
                         "time, 1 record with a state above 3, an incomplete record at the end"]),
          '{"records":7,"inOrder":4,"refused":0}\n')
    equal(tool.read("e.z7"), tool.read("d.z7"))


def test_refused_events_are_reported_with_their_line(tool):
    tool.write("s.ini", SETTINGS)
    tool.write("h.csv", "100,0\n\n100.5,1\n40000000000,1\n1e300,1\n1970-01-01T08:00,0\n")
    out = tool.works(
        "learn", "--history", "h.csv", "--settings", "s.ini", "--data", "d.z7", warnings=[
            "h.csv: damaged: 1 record not later than one before",
            "h.csv: line 3, 1970-01-01T00:01:40: event refused: "
            "state start is later than state end",
            "h.csv: line 4, 40000000000 seconds: event refused: wrong time ...",
            "h.csv: line 5, 1e+300 seconds: event refused: wrong time ..."])
    equal(out, "d.z7: learnt from 5 records, 4 in order, 3 refused\n")


def test_refused_events_are_reported_with_their_offset(tool):
    tool.write("s.ini", SETTINGS)
    tool.write("h.dat", record(200, 0) + record(100, 0) + record(200.5, 1))
    equal(tool.works("learn", "--history", "h.dat", "--settings", "s.ini", "--data", "d.z7",
                     "--json",
                     warnings=["h.dat: damaged: 1 record not later than one before",
                               "h.dat: record 3 at offset 32, 1970-01-01T00:03:20: event refused: "
                               "state start is later than state end"]),
          '{"records":3,"inOrder":2,"refused":1}\n')


def test_ten_refused_events_are_reported_and_the_rest_counted(tool):
    def history(refused):
        return "".join("100.%02d,%d\n" % (i, i > 0) for i in range(refused + 1))

    def lines(count):
        return ["h.csv: line %d, 1970-01-01T00:01:40: event refused: "
                "state start is later than state end" % (i + 2) for i in range(count)]

    tool.write("s.ini", SETTINGS)
    command = ("learn", "--history", "h.csv", "--settings", "s.ini", "--data", "d.z7")
    tool.write("h.csv", history(10))
    contains(tool.works(*command, warnings=lines(10)), ", 10 refused\n")
    tool.write("h.csv", history(13))
    contains(tool.works(*command, warnings=lines(10) + ["h.csv: 3 more events refused"]),
             ", 13 refused\n")


def test_predictions(tool):
    tool.example()
    command = ("predict", "--data", "d.z7", "--settings", "s.ini", "--at", "1970-01-03T00:10:00")
    equal(tool.works(*command, "--json"),
          '[{"time":"1970-01-03T00:10:00","minutes":20},'
          '{"time":"1970-01-03T08:00:00","minutes":270}]\n')
    equal(tool.works(*command),
          "1970-01-03T00:10:00: next idle stretch in 20 minutes\n"
          "1970-01-03T08:00:00: expected back in use; then next idle stretch in 270 minutes\n")


def test_no_prediction(tool):
    tool.write("s.ini", SETTINGS)
    tool.write("h.dat", "")
    tool.works("learn", "--history", "h.dat", "--settings", "s.ini", "--data", "d.z7")
    command = ("--data", "d.z7", "--settings", "s.ini")
    at = "2024-03-01T18:00:00"
    equal(tool.works("predict", *command, "--at", at, "--json"),
          '[{"time":"2024-03-01T18:00:00","minutes":-1}]\n')
    equal(tool.works("predict", *command, "--at", at),
          "2024-03-01T18:00:00: no idle stretch expected\n")
    equal(tool.works("suspend", *command, "--now", at, "--json"),
          '{"hibernateAt":"no prediction","sleepRestoredAt":"never",'
          '"hibernateNextAt":"no prediction","haMinutes":null,"timerMinutes":null,'
          '"nextHAMinutes":null,"hibernateAtTime":null,"sleepRestoredAtTime":null,'
          '"hibernateNextAtTime":null}\n')
    equal(tool.works("suspend", *command, "--now", at),
          "Predicted Hibernate at: no prediction\n"
          "Predicted Sleep restored at: never\n"
          "Predicted Hibernate next at: no prediction\n"
          "Hibernate-after timeout: left as it is\n"
          "Wake timer: not armed\n"
          "Hibernate-after timeout once woken: left as it is\n")


def test_suspend(tool):
    tool.example()
    command = ("suspend", "--data", "d.z7", "--settings", "s.ini", "--now", "1970-01-03T00:10:00")
    equal(tool.works(*command, "--json"),
          '{"hibernateAt":"Sat Jan  3 00:30:00 1970","sleepRestoredAt":"Sat Jan  3 08:00:00 1970",'
          '"hibernateNextAt":"Sat Jan  3 12:30:00 1970","haMinutes":20,"timerMinutes":470,'
          '"nextHAMinutes":270,"hibernateAtTime":"1970-01-03T00:30:00",'
          '"sleepRestoredAtTime":"1970-01-03T08:00:00",'
          '"hibernateNextAtTime":"1970-01-03T12:30:00"}\n')
    equal(tool.works(*command),
          "Predicted Hibernate at: Sat Jan  3 00:30:00 1970\n"
          "Predicted Sleep restored at: Sat Jan  3 08:00:00 1970\n"
          "Predicted Hibernate next at: Sat Jan  3 12:30:00 1970\n"
          "Hibernate-after timeout: 20 minutes\n"
          "Wake timer: 470 minutes\n"
          "Hibernate-after timeout once woken: 270 minutes\n")


def test_suspend_without_predictions(tool):
    tool.example()
    tool.write("off.ini", SETTINGS.replace("[Settings]\n", "[Settings]\nDisablePrediction=1\n"))
    command = ("--data", "d.z7", "--settings", "off.ini")
    warnings = ["off.ini: DisablePrediction is 1, so the service acts on no prediction"]
    contains(tool.works("suspend", *command, warnings=warnings),
             "Predicted Hibernate at: no prediction\n")
    equal(tool.works("explain", *command, warnings=warnings),
          tool.works("explain", "--data", "d.z7", "--settings", "s.ini"))


def test_a_time_has_several_forms(tool):
    tool.example()
    environment = {**tool.environment, "TZ": "CET-1CEST,M3.5.0,M10.5.0/3"}
    for command, option in (("predict", "--at"), ("suspend", "--now"), ("explain", "--at")):
        run = (command, "--data", "d.z7", "--settings", "s.ini", option)
        expected = tool.works(*run, "1970-01-03T00:10:00")
        for form in ("1970-01-03T00:10", "1970-01-03 00:10:00", "1970-01-03 00:10"):
            equal(tool.works(*run, form), expected)
        # Wine takes its time zone from elsewhere.
        if tool.is_native:
            done = tool.run(*run, str(2 * DAY - 3000), env=environment)
            equal((done.returncode, done.stdout.decode()), (0, expected))



def rates_file(newest=-1):
    """A rates.z7 that has learnt nothing: its usual rate is 0.05 returns an hour."""
    cells, factors = 7 * 72 * 10, 1169
    state = struct.pack("<%dfddqq%ddqq" % (2 * cells, 1 + factors), *[0.0] * (2 * cells), 0.0, 0.0,
                        0, 0, 0.05 / 3600, *[1.0] * factors, -1, newest)
    checksum = 0xcbf29ce484222325
    for byte in state:
        checksum = (checksum ^ byte) * 0x100000001b3 % 2 ** 64
    return struct.pack("<IIQ", 1, len(state), checksum) + state


def test_rates_are_explained(tool):
    tool.write("rates.z7", rates_file(newest=DAY // 2))
    tool.write("s.ini", SETTINGS.replace("WR=\nStrength=", "WR=60\nStrength=0"))
    command = ("explain", "--predictor", "rates", "--data", "rates.z7", "--settings", "s.ini")
    text = ("Suspended Thu 12:00, learnt from 0 sleeps.\n"
            "A wait weighs as much as 12.0 hours asleep: asleep pays above 0.08 returns an hour.\n"
            "Until three sleeps are learnt it stays asleep for an hour at least.\n"
            "At Thu 14:00: 0.05 = 0.05 usual x 1.00 time away x 1.00 time of day\n"
            "  x 1.00 weekday x 1.00 both together; seen around here (this class,\n"
            "  20 minutes to each side, days of its kind): 0.0 returns in 0.0 h.\n"
            "Hibernates Thu 13:00.\n")
    equal(tool.works(*command), text)
    beginner = "Until three sleeps are learnt it stays asleep for an hour at least.\n"
    equal(tool.works(*command, "--no-wake"),
          text.replace(beginner, beginner + "Nothing can wake it, so no wake is planned.\n"))
    contains(tool.works(*command, "--at", "1970-01-03T00:10:00"), "Hibernates Sat 01:10.")
    answer = json.loads(tool.works(*command, "--json"))
    equal(answer["decision"]["haMinutes"], 60)
    equal((answer["weight"], answer["waitHours"], len(answer["rates"])), (60, 12.0, 1))


def test_rates_that_cannot_be_explained(tool):
    command = ("explain", "--predictor", "rates", "--data", "rates.z7")
    tool.write("rates.z7", rates_file())
    tool.fails("rates.z7: holds no event whose time could be taken; give --at", *command)
    damaged = "rates.z7: is not a file of rates (rates.z7), or it is damaged"
    for content in (rates_file()[:-1], rates_file()[:-1] + b"\0", b""):
        tool.write("rates.z7", content)
        tool.fails(damaged, *command, "--at", "1970-01-03T00:10:00")
    tool.fails("--no-wake goes with --predictor rates", "explain", "--data", "rates.z7",
               "--no-wake")

def test_without_a_time_the_last_event_counts(tool):
    tool.example()
    common = ("--data", "d.z7", "--settings", "s.ini", "--json")
    equal(tool.works("predict", *common),
          tool.works("predict", *common, "--at", "1970-01-02T12:00:00"))
    equal(tool.works("suspend", *common),
          tool.works("suspend", *common, "--now", "1970-01-02T12:00:00"))


def test_without_a_time_and_an_event_there_is_nothing_to_predict_from(tool):
    tool.write("s.ini", SETTINGS)
    tool.write("d.z7", header() + SLOTS * NOTHING_KNOWN)
    for command, option in (("predict", "--at"), ("suspend", "--now")):
        tool.fails("d.z7: holds no event whose time could be taken; give " + option,
                   command, "--data", "d.z7", "--settings", "s.ini")


def test_probabilities(tool):
    tool.example()
    command = ("probabilities", "--data", "d.z7", "--settings", "s.ini")
    expected = [int(FIRST_IN_USE <= slot <= LAST_IN_USE) for slot in range(SLOTS)]
    equal(tool.works(*command), "".join("%d %d\n" % pair for pair in enumerate(expected)))
    equal(tool.works(*command, "--json"), json.dumps(expected, separators=(",", ":")) + "\n")


def test_probabilities_between_and_beyond_numbers(tool):
    # Slots with the last two observations, weighted 2 to 1; with none; and with 1 of 3 older ones.
    slots = (struct.pack("<iiiiq", -1, -1, 1, 0, -1) + struct.pack("<iiiiq", -1, -1, 0, 1, -1) +
             NOTHING_KNOWN + struct.pack("<iiiiq", 3, 1, 0, 0, -1))
    tool.write("d.z7", header(minutes=4, slot_minutes=1, slots=4) + slots)
    settings = SETTINGS.replace("1440", "4").replace("TimeResolution=30", "TimeResolution=1")
    tool.write("s.ini", settings)
    command = ("probabilities", "--data", "d.z7", "--settings", "s.ini")
    equal(tool.works(*command), "0 0.333333343\n1 0.666666687\n2 -1\n3 0.0833333358\n")
    equal(tool.works(*command, "--json"), "[0.333333343,0.666666687,-1,0.0833333358]\n")
    # Weights whose sum is zero.
    tool.write("s.ini", settings.replace("FirstLastWeight=2", "FirstLastWeight=-2"))
    equal(tool.works(*command), "0 nan\n1 nan\n2 -1\n3 nan\n")
    equal(tool.works(*command, "--json"), "[null,null,-1,null]\n")


def test_week_is_plain_text_without_a_terminal(tool):
    tool.example()
    equal(tool.works("week", "--data", "d.z7", "--settings", "s.ini"),
          "       00:00 03:00 06:00 09:00 12:00 15:00 18:00 21:00\n"
          "day 0 |                @@@@@@@@@                       |\n"
          "      never in use | .:-=+*#%@| always in use, ? not known\n"
          "\n"
          "       00:00 03:00 06:00 09:00 12:00 15:00 18:00 21:00\n"
          "day 0 |111111111111111122222222211111111111111111111111|\n"
          "      how sure that is: seen 1 to 9 times, + more often, ? not known\n")


def test_week_for_programs(tool):
    tool.example()
    cells = [0] * 16 + [1] * 9 + [0] * 23
    command = ("week", "--data", "d.z7", "--settings", "s.ini", "--json")
    equal(json.loads(tool.works(*command)),
          {"minutesPerCell": 30, "rows": [{"name": "day 0", "day": 0, "cells": cells,
                                               "seen": [1] * 16 + [2] * 9 + [1] * 23}]})
    tool.write("d.z7", header() + SLOTS * NOTHING_KNOWN)
    row = json.loads(tool.works(*command))["rows"][0]
    equal((row["cells"], row["seen"]), ([None] * 48, [0] * 48))


def test_week_has_colours_on_a_terminal_unless_they_are_not_wanted(tool):
    if not tool.is_native:
        return
    tool.example()

    def shown(environment):
        master, slave = pty.openpty()
        with os.fdopen(master, "rb", 0) as screen:
            done = tool.run("week", "--data", "d.z7", "--settings", "s.ini", env=environment,
                            stdout=slave, stderr=None)
            os.close(slave)
            equal(done.returncode, 0)
            return screen.read(100000)

    plain = {name: value for name, value in tool.environment.items() if name != "NO_COLOR"}
    plain["TERM"] = "xterm"
    contains(shown(plain), b"\x1b[48;5;220;38;5;16m@@@@@@@@@\x1b[")
    contains(shown({**plain, "NO_COLOR": ""}), b"\x1b[48;5;220")
    equal(b"\x1b" in shown({**plain, "NO_COLOR": "1"}), False)
    equal(b"\x1b" in shown({**plain, "TERM": "dumb"}), False)


def test_a_cycle_without_whole_days_has_no_picture(tool):
    tool.write("s.ini", SETTINGS.replace("DaysInCycle=1", "DaysInCycle=-1")
               .replace("MinutesInDay=1440", "MinutesInDay=-60"))
    tool.write("d.z7", header(days=-1, minutes=-60, slots=2) + 2 * NOTHING_KNOWN)
    tool.fails("only a cycle of whole days of up to 100 hours has a picture",
               "week", "--data", "d.z7", "--settings", "s.ini")


# Data files and settings

def test_a_data_file_that_does_not_fit_is_ignored(tool):
    tool.write("s.ini", SETTINGS)
    fresh = '[{"time":"2024-03-01T18:00:00","minutes":-1}]\n'
    files = {
        "it is not of the size that the configured cycle needs": [
            b"", header()[:-1], header() + SLOTS * NOTHING_KNOWN + b"x",
            header(slot_minutes=15, slots=96) + 96 * NOTHING_KNOWN],
        "it was written for another cycle or time resolution": [
            header(days=2, minutes=720) + SLOTS * NOTHING_KNOWN],
        "its slot count does not fit its size": [header(slots=47) + SLOTS * NOTHING_KNOWN],
    }
    for why, contents in files.items():
        for content in contents:
            tool.write("d.z7", content)
            equal(tool.works("predict", "--data", "d.z7", "--settings", "s.ini", "--at",
                             "2024-03-01T18:00:00", "--json",
                             warnings=["d.z7: ignored: " + why]), fresh)
            equal(tool.read("d.z7"), content)


def test_the_last_event_of_an_ignored_data_file_does_not_count(tool):
    tool.example()
    tool.fails("d.z7: holds no event whose time could be taken; give --at", "predict", "--data",
               "d.z7", warnings=["d.z7: ignored: it is not of the size that the configured cycle "
                                 "needs"])


def test_what_the_engine_throws_ends_the_command(tool):
    tool.example()
    without = {
        "FirstLastWeight": "No weigths specified",
        "SecondLastWeight": "No weigths specified",
        "AgregationWeight": "No weigths specified",
        "TimeResolution": "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations",
        "DaysInCycle": "ArbitraryCycleProbabilityTracker - wrong configurations",
    }
    before = tool.files()
    for key, error in without.items():
        settings = re.sub("%s=.*\n" % key, "", SETTINGS)
        assert settings != SETTINGS
        tool.write("bad.ini", settings)
        tool.fails("bad.ini: %s is missing: %s" % (key, error), "learn", "--history", "h.csv",
                   "--settings", "bad.ini", "--data", "d.z7")
    tool.write("bad.ini", SETTINGS.replace("TimeResolution=30", "TimeResolution=7"))
    tool.fails("bad.ini: TimeResolution is 7, which does not divide MinutesInDay, 1440: "
               "Length of day modulus number of minutes within a slot is not zero", "learn",
               "--history", "h.csv", "--settings", "bad.ini", "--data", "d.z7")
    (tool.folder / "bad.ini").unlink()
    equal(tool.files(), before)


def test_a_data_file_of_another_version_ends_the_command(tool):
    tool.write("s.ini", SETTINGS)
    tool.write("d.z7", header(version=1) + SLOTS * NOTHING_KNOWN)
    for command in ("predict", "probabilities", "suspend", "week", "explain"):
        tool.fails("d.z7: Version 0 expected", command, "--data", "d.z7", "--settings", "s.ini")


def test_bad_settings_lines(tool):
    tool.example()
    for text, error in (("[Settings]\nTimeResolution\n",
                         "bad.ini: line 2: neither [section] nor key=value: TimeResolution"),
                        ("# c\n\nx=1\n", "bad.ini: line 3: a key before any [section]: x=1"),
                        ("[Settings\n", "bad.ini: line 1: neither [section] nor key=value: "
                                        "[Settings")):
        tool.write("bad.ini", text)
        tool.fails(error, "predict", "--data", "d.z7", "--settings", "bad.ini")


def test_settings_that_a_file_lacks_are_named(tool):
    tool.example()
    tool.write("few.ini", SETTINGS.replace("StrengthLow=30\nDayGrouping=0\n", ""))
    replaces = "; a settings file replaces all default settings"
    tool.works("explain", "--data", "d.z7", "--settings", "few.ini",
               warnings=["few.ini: lacks DayGrouping, StrengthLow" + replaces])
    # Only those that the command needs.
    tool.write("few.ini", SETTINGS[:SETTINGS.index("StrengthHighRange")])
    tool.works("explain", "--data", "d.z7", "--settings", "few.ini")
    tool.works("search", "--history", "h.csv", "--settings", "few.ini",
               warnings=["few.ini: lacks StrengthHighRange, StrengthLowRange, "
                         "FirstLastWeightRange, SecondLastWeightRange, DayGroupingRange, WR"
                         + replaces])


def test_the_default_settings_are_those_of_the_package(tool):
    tool.write("h.csv", HISTORY)
    shutil.copy(ROOT / "packaging" / "default-settings.ini", tool.folder / "s.ini")
    tool.works("learn", "--history", "h.csv", "--data", "default.z7")
    tool.works("learn", "--history", "h.csv", "--settings", "s.ini", "--data", "named.z7")
    equal(tool.read("default.z7"), tool.read("named.z7"))
    equal(tool.works("probabilities", "--data", "default.z7"),
          tool.works("probabilities", "--data", "named.z7", "--settings", "s.ini"))


# Files that are missing, bad or in the way

def test_files_that_are_missing(tool):
    tool.example()
    missing = "gone: cannot be read: No such file or directory"
    for command in ("predict", "probabilities", "suspend", "week", "explain"):
        tool.fails(missing, command, "--data", "gone")
        tool.fails(missing, command, "--data", "d.z7", "--settings", "gone")
    for command in ("import", "export"):
        tool.fails(missing, command, "--history", "gone", "--out", "out")
    tool.fails(missing, "learn", "--history", "gone", "--data", "out")
    tool.fails(missing, "learn", "--history", "h.csv", "--settings", "gone", "--data", "out")
    tool.fails(missing, "merge", "--history", "h.csv", "--pending", "gone", "--now", "0",
               "--limit", "0", "--out", "out")
    equal(sorted(tool.files()), ["d.z7", "h.csv", "s.ini"])


def test_folders_are_no_files(tool):
    tool.write("h.csv", HISTORY)
    (tool.folder / "folder").mkdir()
    unreadable = "folder: cannot be read: " + tool.folder_reason
    unwritable = "folder: cannot be written: not a regular file"
    tool.fails(unreadable, "predict", "--data", "folder")
    tool.fails(unreadable, "learn", "--history", "folder", "--data", "out")
    tool.fails(unreadable, "learn", "--history", "h.csv", "--settings", "folder", "--data", "out")
    tool.fails(unreadable, "merge", "--history", "folder", "--pending", "h.csv", "--now", "0",
               "--limit", "0", "--out", "out")
    tool.fails(unwritable, "learn", "--history", "h.csv", "--data", "folder")
    tool.fails(unwritable, "import", "--history", "h.csv", "--out", "folder")
    equal(sorted(path.name for path in tool.folder.iterdir()), ["folder", "h.csv"])


def test_outputs_into_no_folder(tool):
    tool.write("h.csv", HISTORY)
    tool.write("h.dat", "")
    error = "no/out: cannot be written: No such file or directory"
    tool.fails(error, "learn", "--history", "h.csv", "--data", "no/out")
    tool.fails(error, "import", "--history", "h.csv", "--out", "no/out")
    tool.fails(error, "export", "--history", "h.dat", "--out", "no/out")
    tool.fails(error, "sample", "--kind", "home", "--days", "1", "--seed", "1", "--out", "no/out")
    tool.fails(error, "merge", "--history", "h.csv", "--pending", "h.dat", "--now", "0",
               "--limit", "0", "--out", "no/out")


def test_a_device_is_not_replaced(tool):
    if not tool.is_native:
        return
    tool.write("h.csv", HISTORY)
    tool.fails("/dev/null: cannot be written: not a regular file", "learn", "--history", "h.csv",
               "--data", "/dev/null")
    equal(Path("/dev/null").is_char_device(), True)


def test_a_full_disk_leaves_the_old_output(tool):
    if not tool.is_native:
        return
    tool.example()
    before = tool.files()

    def limit_files():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100))

    tool.fails("h.csv: cannot be written: File too large", "sample", "--kind", "office", "--days",
               "60", "--seed", "1", "--out", "h.csv", preexec_fn=limit_files)
    tool.fails("d.z7: cannot be written: File too large", "learn", "--history", "h.csv", "--data", "d.z7",
               preexec_fn=limit_files)
    equal(tool.files(), before)


def test_an_error_leaves_the_old_output_and_nothing_else(tool):
    tool.example()
    tool.write("bad.csv", "1,0\n2;1\n")
    tool.write("h.dat", record(1, 0))
    tool.write("bad.ini", "[CyclicProbabilityPredictor]\n")
    before = tool.files()
    line = "bad.csv: line 2: not two columns with a comma between them"
    tool.fails(line, "learn", "--history", "bad.csv", "--data", "d.z7")
    tool.fails("bad.ini: TimeResolution, DaysInCycle, MinutesInDay, FirstLastWeight, "
               "SecondLastWeight, AgregationWeight are missing: "
               "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations", "learn",
               "--history", "h.csv", "--settings", "bad.ini", "--data", "d.z7")
    tool.fails(line, "import", "--history", "bad.csv", "--out", "h.csv")
    tool.fails(line, "merge", "--history", "bad.csv", "--pending", "h.dat", "--now", "0",
               "--limit", "0", "--out", "h.csv")
    tool.fails("--limit: not a whole number from 0 to 4294967295: all", "merge", "--history",
               "h.csv", "--pending", "h.csv", "--now", "0", "--limit", "all", "--out", "h.csv")
    tool.fails("--days: not a whole number from 1 to 36500: 0", "sample", "--kind", "home",
               "--days", "0", "--seed", "1", "--out", "h.csv")
    equal(tool.files(), before)


def test_an_output_behind_a_link_is_replaced_there(tool):
    if not tool.is_native:
        return
    tool.write("h.csv", HISTORY)
    (tool.folder / "folder").mkdir()
    tool.write("folder/real.dat", "old")
    (tool.folder / "link.dat").symlink_to("folder/real.dat")
    tool.works("import", "--history", "h.csv", "--out", "link.dat")
    equal((tool.folder / "link.dat").is_symlink(), True)
    equal(tool.read("folder/real.dat"), record(28800, 0) + record(43200, 1) +
          record(115200, 0) + record(129600, 1))


def test_a_history_from_a_pipe(tool):
    if not tool.is_native:
        return
    tool.example()
    tool.works("import", "--history", "h.csv", "--out", "h.dat")
    done = tool.run("learn", "--history", "/dev/stdin", "--settings", "s.ini", "--data", "e.z7",
                    stdin=None, input=tool.read("h.dat"))
    equal((done.returncode, done.stderr), (0, b""))
    equal(tool.read("e.z7"), tool.read("d.z7"))


def piped(tool, content, *arguments):
    """What comes out at standard output of what goes in at standard input."""
    data = content.encode() if isinstance(content, str) else content
    done = tool.run(*arguments, stdin=None, input=data)
    equal((done.returncode, done.stderr), (0, b""), " ".join(arguments))
    return done.stdout


def test_a_file_may_be_standard_input_or_output(tool):
    tool.example()
    settings = ("--settings", "s.ini")
    for history in (HISTORY, tool.works("import", "--history", "h.csv", "--out", "h.dat") and
                    tool.read("h.dat")):
        equal(piped(tool, history, "learn", "--history", "-", *settings, "--data", "-"),
              tool.read("d.z7"))
    equal(piped(tool, tool.read("d.z7"), "explain", "--data", "-", *settings).decode(),
          tool.works("explain", "--data", "d.z7", *settings))
    equal(piped(tool, SETTINGS, "explain", "--data", "d.z7", "--settings", "-").decode(),
          tool.works("explain", "--data", "d.z7", *settings))
    equal(piped(tool, tool.read("h.dat"), "export", "--history", "-", "--out", "-").decode(),
          HISTORY)
    equal(piped(tool, HISTORY, "import", "--history", "-", "--out", "-"), tool.read("h.dat"))
    out = piped(tool, "-1", "apply", "--strength", "0", "--best", "-", "--json").decode()
    equal(IDENTITY.sub("", out),
          tool.works("apply", "--strength", "0", "--best", "h.csv", "--json").replace(
              '"disabled":0,"feedback":0', '"disabled":1,"feedback":3'))
    equal(sorted(tool.files()), ["d.z7", "h.csv", "h.dat", "s.ini"])


def test_a_standard_stream_is_one_file_only(tool):
    tool.fails("only one file can be -, standard input", "learn", "--history", "-", "--settings",
               "-", "--data", "d")
    tool.fails("only one file can be -, standard output", "import", "--from-event-log", "x",
               "--out", "-", "--data", "-")
    tool.fails("--json prints to standard output, so no file can be - there", "export",
               "--history", "h", "--out", "-", "--json")


def test_file_names_in_other_letters(tool):
    tool.write("vorräte-\N{CJK UNIFIED IDEOGRAPH-6642}.csv", HISTORY)
    name = "vorräte-\N{CJK UNIFIED IDEOGRAPH-6642}"
    equal(tool.works("import", "--history", name + ".csv", "--out", name + ".dat"),
          name + ".dat: 4 records\n")
    equal(len(tool.read(name + ".dat")), 64)
    tool.fails(name + ": cannot be read: No such file or directory", "export", "--history", name,
               "--out", "out")


def test_an_error_is_one_line_whatever_it_quotes(tool):
    tool.example()
    tool.fails(WRONG_TIME % "--at" + "a?b?", "predict", "--data", "d.z7",
               "--settings", "s.ini", "--at", "a\nb\x1b")
    tool.write("bad.ini", "[A]\nx\x07y\rz\n")
    tool.fails("bad.ini: line 2: neither [section] nor key=value: x?y?z", "predict", "--data",
               "d.z7", "--settings", "bad.ini")


def test_output_that_cannot_be_printed(tool):
    if not tool.is_native:
        return
    tool.example()
    with open("/dev/full", "wb") as full:
        tool.fails("standard output: cannot be written: No space left on device", "probabilities",
                   "--data", "d.z7", "--settings", "s.ini", stdout=full)


# Values of options

def test_bad_times(tool):
    tool.example()
    for text in ("", "now", "2024-03-01", "2024-03-01T18", "2024-03-01 18:00:00Z", "1.5", " 0",
                 "2023-02-29T00:00:00", "2024-03-01T24:00:00", "1969-12-31T23:59:59",
                 "3001-01-01T00:00:00", "99999999999999999999", "9223372036854775807", "{}"):
        for command, option in (("predict", "--at"), ("suspend", "--now")):
            tool.fails(WRONG_TIME % option + (text or '""'), command, "--data", "d.z7",
                       "--settings", "s.ini", option, text)


def test_bad_numbers(tool):
    tool.write("h.csv", HISTORY)
    sample = {"--days": "1", "--seed": "1"}
    merge = {"--now": "0", "--limit": "0"}
    cases = [("--days", "1 to 36500", ["0", "36501", "-1", "1.5", "x", ""]),
             ("--seed", "0 to 18446744073709551615", ["-1", "18446744073709551616", "0x1"]),
             ("--limit", "0 to 4294967295", ["-1", "4294967296", "1 "])]
    for option, bounds, texts in cases:
        for text in texts:
            if option in sample:
                command = ["sample", "--kind", "home", "--out", "out"]
                values = {**sample, option: text}
            else:
                command = ["merge", "--history", "h.csv", "--pending", "h.csv", "--out", "out"]
                values = {**merge, option: text}
            tool.fails("%s: not a whole number from %s: %s" % (option, bounds, text or '""'),
                       *command, *[word for pair in values.items() for word in pair])
    for text in ("9223372036854775808", "noon"):
        tool.fails(WRONG_TIME % "--now" + text, "merge", "--history", "h.csv", "--pending", "h.csv",
                   "--out", "out", "--limit", "0", "--now", text)
    equal(sorted(tool.files()), ["h.csv"])


def test_bad_kind(tool):
    tool.fails("--kind: not one of office, home, shift, erratic: Office", "sample", "--kind",
               "Office", "--days", "1", "--seed", "1", "--out", "out")


# Histories

def test_import_and_export_are_each_others_opposite(tool):
    lines = ["epoch_wallclock_seconds,asleep", "1337027146,0", "1337027146.25,1", "0.1,4294967295",
             "-5,0", "-0,1", "1e+300,0", "5e-324,2", "9007199254740992,0",
             "-1e+300,7"]
    text = "\n".join(lines) + "\n"
    tool.write("h.csv", text)
    damage = "damaged: 6 records not later than one before, 2 records with a state above 3"
    equal(tool.works("import", "--history", "h.csv", "--out", "h.dat",
                     warnings=["h.csv: " + damage]), "h.dat: 9 records\n")
    times = [1337027146, 1337027146.25, 0.1, -5, -0.0, 1e300, 5e-324, 9007199254740992, -1e300]
    marks = [0, 1, 4294967295, 0, 1, 0, 2, 0, 7]
    equal(tool.read("h.dat"), b"".join(map(record, times, marks)))
    equal(tool.works("export", "--history", "h.dat", "--out", "back.csv", "--json",
                     warnings=["h.dat: " + damage]), '{"records":9}\n')
    equal(tool.read("back.csv").decode(), text)


def test_import_reads_times_as_people_write_them(tool):
    tool.write("h.csv", "\ufeffTime, Asleep\r\n\r\n2012-05-14T20:25:46,0\r\n2012-05-14 20:26 , 1\r\n")
    equal(tool.works("import", "--history", "h.csv", "--out", "h.dat", "--json"),
          '{"records":2}\n')
    equal(tool.read("h.dat"), record(1337027146, 0) + record(1337027160, 1))


def test_histories_without_records(tool):
    tool.write("h.csv", "")
    tool.works("import", "--history", "h.csv", "--out", "h.dat")
    equal(tool.read("h.dat"), b"")
    tool.works("export", "--history", "h.dat", "--out", "back.csv")
    equal(tool.read("back.csv"), b"epoch_wallclock_seconds,asleep\n")
    tool.works("merge", "--history", "h.dat", "--pending", "h.dat", "--now", "1", "--limit", "0",
               "--out", "out.dat")
    equal(tool.read("out.dat"), b"")


def test_import_takes_any_name_as_csv_and_export_none(tool):
    tool.write("h.txt", "1,0\n")
    tool.works("import", "--history", "h.txt", "--out", "out.csv")
    equal(tool.read("out.csv"), record(1, 0))
    tool.works("export", "--history", "out.csv", "--out", "back.dat")
    equal(tool.read("back.dat"), b"epoch_wallclock_seconds,asleep\n1,0\n")


def test_export_passes_over_reserved_bytes_and_a_partial_tail(tool):
    tool.write("h.dat", record(2, 1, 99) + record(1, 0) + b"1234567")
    tool.works("export", "--history", "h.dat", "--out", "h.csv", warnings=[
        "h.dat: damaged: 1 record not later than one before, an incomplete record at the end"])
    equal(tool.read("h.csv"), b"epoch_wallclock_seconds,asleep\n2,1\n1,0\n")


def test_bad_csv_lines(tool):
    for text, error in (
            ("1,0\n\nx,1\n", "h.csv: line 3: neither seconds nor a local time: x"),
            ("1;0\n", "h.csv: line 1: not two columns with a comma between them"),
            ("1,2,3\n", "h.csv: line 1: asleep is not a whole number from 0 to 4294967295: 2,3"),
            ("nan,0\n", "h.csv: line 1: neither seconds nor a local time: nan"),
            ("1,0\n-INF,0\n", "h.csv: line 2: neither seconds nor a local time: -INF"),
            ("infinity,0\n", "h.csv: line 1: neither seconds nor a local time: infinity"),
            ("1e400,0\n", "h.csv: line 1: neither seconds nor a local time: 1e400"),
            ("1,yes\n", "h.csv: line 1: asleep is not a whole number from 0 to 4294967295: yes"),
            ("1,0\r\n2012-02-30T00:00,1\r\n",
             "h.csv: line 2: neither seconds nor a local time: 2012-02-30T00:00")):
        tool.write("h.csv", text)
        tool.fails(error, "import", "--history", "h.csv", "--out", "out")
        tool.fails(error, "learn", "--history", "h.csv", "--data", "out")
    equal(sorted(tool.files()), ["h.csv"])


def merged(tool, now, limit, warnings=()):
    tool.works("merge", "--history", "old.dat", "--pending", "new.dat", "--now", str(now),
               "--limit", str(limit), "--out", "out.dat", warnings=warnings)
    return tool.read("out.dat")


def test_merge_drops_what_is_old_or_not_later(tool):
    old = [record(1000, 0, 1), record(2000, 1, 2), record(1500, 0, 3), record(3000, 0, 4)]
    new = [record(3000, 1, 5), record(500, 0, 6), record(3500, 1, 7)]
    tool.write("old.dat", b"".join(old))
    tool.write("new.dat", b"".join(new) + b"partial tail")
    warnings = ["old.dat: damaged: 1 record not later than one before",
                "new.dat: damaged: 1 record not later than one before, an incomplete record at "
                "the end"]
    equal(merged(tool, DAY + 1500, 1, warnings), old[1] + old[3] + new[2])
    equal(merged(tool, DAY + 2000, 1, warnings), old[1] + old[3] + new[2])
    equal(merged(tool, DAY + 2001, 1, warnings), old[3] + new[2])
    # Pending records stay even if they are old.
    equal(merged(tool, DAY * 9, 1, warnings), new[0] + new[2])


def test_the_time_of_a_merge_may_be_local(tool):
    if not tool.is_native:
        return
    tool.environment = {**tool.environment, "TZ": "EST5EDT,M3.2.0,M11.1.0"}
    tool.write("old.dat", record(DAY, 0, 1) + record(2 * DAY, 1, 2))
    tool.write("new.dat", b"")
    # 19:00 of that day is midnight, UTC.
    equal(merged(tool, "1970-01-02 19:00:00", 1), merged(tool, 2 * DAY, 1))
    equal(merged(tool, "1970-01-02 19:00:01", 1), merged(tool, 2 * DAY + 1, 1))
    equal(merged(tool, 2 * DAY, 1) == merged(tool, 2 * DAY + 1, 1), False)


def test_merge_lays_a_partial_tail_over_the_record_before(tool):
    old = [record(1000, 2, 8)]
    tool.write("new.dat", b"")
    tool.write("old.dat", old[0] + struct.pack("<d", 2000) + b"\x01\x02")
    damaged = ["old.dat: damaged: an incomplete record at the end"]
    equal(merged(tool, 0, 0, damaged), old[0] + struct.pack("<dIi", 2000, 0x0201, 8))
    tool.write("old.dat", struct.pack("<d", 2000))
    equal(merged(tool, 0, 0, damaged), record(2000, 0))


def test_merge_into_no_history_and_into_an_empty_one(tool):
    tool.write("new.dat", record(-5, 1) + record(5, 0))
    equal(merged(tool, 0, 0), record(-5, 1) + record(5, 0))
    # The end of an empty file is read as a record of zeros.
    tool.write("old.dat", "")
    equal(merged(tool, 0, 0), record(0, 0) + record(5, 0))
    equal(merged(tool, 1, 0), record(-5, 1) + record(5, 0))


def test_merge_takes_and_makes_histories_by_their_names(tool):
    tool.write("old.csv", "1000,0\n")
    tool.write("new.CSV", "2000,1\n")
    equal(tool.works("merge", "--history", "old.csv", "--pending", "new.CSV", "--now", "-5",
                     "--limit", "1", "--out", "out.csv", "--json"), '{"records":2}\n')
    equal(tool.read("out.csv"), b"epoch_wallclock_seconds,asleep\n1000,0\n2000,1\n")
    equal(tool.works("merge", "--history", "gone.csv", "--pending", "new.CSV", "--now", "0",
                     "--limit", "4294967295", "--out", "out.dat"), "out.dat: 1 records\n")
    equal(tool.read("out.dat"), record(2000, 1))


def test_samples(tool):
    first_lines = {"office": b"1704097067,0\n1704111812,1\n", "home": b"1704092753,0\n1704093567,1\n",
                   "shift": b"1704088518,0\n1704103412,1\n",
                   "erratic": b"1704267984,0\n1704280966,1\n"}
    for kind, lines in first_lines.items():
        command = ("sample", "--kind", kind, "--days", "60", "--seed", "1", "--out")
        tool.works(*command, "s.csv")
        tool.works(*command, "s.dat")
        csv = tool.read("s.csv")
        equal(csv[:csv.index(b"\n") + 1 + len(lines)], b"epoch_wallclock_seconds,asleep\n" + lines)
        tool.works("import", "--history", "s.csv", "--out", "t.dat", "--replace")
        equal(tool.read("s.dat"), tool.read("t.dat"))
        out = tool.works(*command, "s.csv", "--json")
        equal(out, '{"records":%d}\n' % (csv.count(b"\n") - 1))
        equal(tool.read("s.csv"), csv)


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
