"""Tests `dozewell-replay compare` from outside.

    python3 -m tests.compare_cli_test --tool build/native/dozewell-replay
    python3 -m tests.compare_cli_test --tool "wine build/windows/dozewell-replay.exe"
"""

import json
import sys

from tests.support.cli import DAY, ROOT, main
from tests.support.expect import contains, equal

MINUTE = 60
HOUR = 60 * MINUTE
DAYS = 10
SLEEPS = DAYS - 1

# In use from 08:05 to 12:05 every day.
HISTORY = "".join("%d,0\n%d,1\n" % (start, start + 4 * HOUR)
                  for start in range(8 * HOUR + 5 * MINUTE, DAYS * DAY, DAY))

# All days are one group, so that each day predicts the next.
GIVEN = """\
[CyclicProbabilityPredictor]
DaysInCycle=7
FirstLastWeight=50
SecondLastWeight=30
AgregationWeight=20
StrengthHigh=60
StrengthLow=40
DayGrouping=255
"""
RANGES = """\
StrengthHighRange=60
StrengthLowRange=0, 40
FirstLastWeightRange=50
SecondLastWeightRange=30
DayGroupingRange=255
"""


def choices(tool, settings, *options, warnings=()):
    tool.write("h.csv", HISTORY)
    tool.write("s.ini", settings)
    out = tool.works("compare", "--history", "h.csv", "--settings", "s.ini", "--json", *options,
                     warnings=warnings)
    compared = json.loads(out)
    equal(compared["records"], 2 * DAYS)
    return {choice["name"]: choice for choice in compared["choices"]}


def choice(name, asleep, hibernated, from_sleep, from_hibernate, value=None, timeout=None,
           numbers=None):
    return {"name": name, "value": value, "sleepSeconds": asleep, "hibernateSeconds": hibernated,
            "resumesFromSleep": from_sleep, "resumesFromHibernate": from_hibernate,
            "hibernateAfterMinutes": timeout, "set": numbers}


def fixed(minutes, name=None, value=None):
    asleep = SLEEPS * minutes * MINUTE
    return choice(name or "%d minutes" % minutes, asleep, SLEEPS * 20 * HOUR - asleep, 0, SLEEPS,
                  value=value, timeout=None if name else minutes)


# Nothing is known at the first sleep. In later ones only the first and the last five minutes of a
# sleep are outside whole slots.
LEARNT = (20 * HOUR + (SLEEPS - 1) * 10 * MINUTE, (SLEEPS - 1) * (20 * HOUR - 10 * MINUTE),
          SLEEPS, 0)
NEVER = (SLEEPS * 20 * HOUR, 0, SLEEPS, 0)


def test_everything_in_its_order(tool):
    compared = choices(tool, GIVEN + RANGES + "WR=5 60\n")
    learnt = "50,30,20,60,40,255"
    equal(list(compared.values()),
          [fixed(10), fixed(30), fixed(60), fixed(180), choice("never", *NEVER, timeout=0),
           choice("settings", *LEARNT), fixed(10, "Best0", value="-1"),
           choice("Best1", *LEARNT, value=learnt, numbers=[50, 30, 20, 60, 40, 255]),
           choice("clairvoyant", SLEEPS * 10 * MINUTE, SLEEPS * (20 * HOUR - 10 * MINUTE), SLEEPS,
                  0)])


def test_the_table(tool):
    tool.write("h.csv", HISTORY)
    tool.write("s.ini", GIVEN + RANGES + "WR=5 60\n")
    table, walk = tool.works("compare", "--history", "h.csv", "--settings", "s.ini").split("\n\n")
    equal(table + "\n", """\
                                    hours        hours resumes from resumes from
                                   asleep   hibernated        sleep  hibernation
10 minutes                            1.5        178.5            0            9
30 minutes                            4.5        175.5            0            9
60 minutes                            9.0        171.0            0            9
180 minutes                          27.0        153.0            0            9
never                               180.0          0.0            9            0
settings                             21.3        158.7            9            0
Best0: -1                             1.5        178.5            0            9
Best1: 50,30,20,60,40,255            21.3        158.7            9            0
clairvoyant                           1.5        178.5            9            0
""")
    equal(walk, """\
Walked forward, as a real machine spends it: scores, and where 95 of 100 draws of weeks lie
strength                                    0                1
weight                                      5               60
best timeout in hindsight    94.9 (94.9-94.9) 60.0 (60.0-60.0)
  which is                           1 minute            never
timeout of the past          94.8 (94.8-94.9) 57.7 (57.1-60.0)
your timeout, 10 minutes     94.2 (94.2-94.2) 39.7 (39.7-39.7)
settings                     98.7 (98.5-99.2) 93.0 (91.1-99.7)
service                      98.7 (98.5-99.2) 93.0 (91.1-99.7)
service without wake         94.6 (94.5-94.6) 39.8 (39.8-39.8)
rates                        94.8 (93.5-99.4) 88.0 (86.0-94.7)
rates without wake           93.3 (92.8-94.8) 60.0 (60.0-60.0)
clairvoyant                  99.2 (99.2-99.2) 99.7 (99.7-99.7)
9 sleeps in 2 weeks, 0 searches
""")


def walked(tool, settings, *options):
    tool.write("h.csv", HISTORY)
    tool.write("s.ini", settings)
    return json.loads(tool.works("compare", "--history", "h.csv", "--settings", "s.ini", "--json",
                                 *options))


def test_the_choices_of_a_walk(tool):
    walk = walked(tool, GIVEN + RANGES + "WR=5 60\n", "--hibernate-after", "37")
    by_strength = [f"{name}, strength {strength}" for name in
                   ("best timeout", "timeout of the past", "service", "service without wake",
                    "rates", "rates without wake") for strength in (0, 1)]
    minutes = (5, 10, 20, 30, 37, 45, 60, 90, 120, 180, 240, 360, 480, 600, 720)
    equal([choice["name"] for choice in walk["walkForward"]],
          ["1 minute"] + [f"{number} minutes" for number in minutes] + ["never"] +
          by_strength[:4] + ["settings"] + by_strength[4:] + ["clairvoyant"])
    equal((walk["sleeps"], walk["weeks"], walk["searches"]), (SLEEPS, 2, []))
    found = {choice["name"]: choice for choice in walk["walkForward"]}
    equal(found["37 minutes"], {
        "name": "37 minutes", "strength": None, "sleepSeconds": SLEEPS * 37 * MINUTE,
        "hibernateSeconds": SLEEPS * (20 * HOUR - 37 * MINUTE), "resumesFromSleep": 0,
        "resumesFromHibernate": SLEEPS, "hibernateAfterMinutes": 37,
        "scores": [{"strength": 0, "weight": 5, "score": 92.071, "low": 92.071, "high": 92.071},
                   {"strength": 1, "weight": 60, "score": 38.767, "low": 38.767, "high": 38.767}]})
    equal((found["best timeout, strength 1"]["strength"],
           found["best timeout, strength 1"]["hibernateAfterMinutes"]), (1, 0))


def test_nothing_known_yet_leaves_the_users_timeout(tool):
    # The simulation leaves the machine asleep there.
    settings = GIVEN + RANGES + "WR=60\n"
    for timeout, minutes in (("37", 37), ("10", 10)):
        walk = walked(tool, settings, "--hibernate-after", timeout)
        found = {choice["name"]: choice for choice in walk["walkForward"]}["settings"]
        equal((found["sleepSeconds"], found["resumesFromSleep"], found["resumesFromHibernate"]),
              (minutes * MINUTE + (SLEEPS - 1) * 10 * MINUTE, SLEEPS - 1, 1))


def test_searches_come_when_the_settings_say(tool):
    # The first resume starts the clock; each day is in use for four hours.
    for delay, is_cut_short in ((240, True), (239, False)):
        walk = walked(tool, "[Settings]\nOptimizerInterval=2\nOptimizerDelay=%d\n" % delay +
                      GIVEN + RANGES + "WR=60\n")
        equal(walk["searches"], [{"time": f"1970-01-{day:02}T08:05:00", "cutShort": is_cut_short}
                                 for day in (5, 8)])


def test_a_strength_begins_with_its_stored_set(tool):
    settings = GIVEN.replace("StrengthLow=40", "StrengthLow=0") + RANGES + "WR=60 60 60\n"
    walk = walked(tool, settings + "Best0=50,30,20,60,40,255\nBest1=-1\n", "--hibernate-after",
                  "never")
    found = {choice["name"]: choice["sleepSeconds"] for choice in walk["walkForward"]}
    equal([found[f"service, strength {strength}"] for strength in (0, 1, 2)],
          [LEARNT[0], NEVER[0], NEVER[0]])


def test_json_on_one_line(tool):
    tool.write("h.csv", "")
    out = tool.works("compare", "--history", "h.csv", "--json")
    equal(out[:out.index("}") + 1],
          '{"records":0,"choices":[{"name":"10 minutes","value":null,"sleepSeconds":0,'
          '"hibernateSeconds":0,"resumesFromSleep":0,"resumesFromHibernate":0,'
          '"hibernateAfterMinutes":10,"set":null}')
    equal(out[-4:], "}]}\n")
    equal(out.count("\n"), 1)


def test_where_no_set_is_better_the_fixed_timeout_stays(tool):
    settings = GIVEN + RANGES + "WR=0\n"
    equal(choices(tool, settings)["Best0"], fixed(10, "Best0", value="-1"))
    equal(choices(tool, settings, "--hibernate-after", "60")["Best0"],
          fixed(60, "Best0", value="-1"))
    equal(choices(tool, settings, "--hibernate-after", "180")["Best0"],
          choice("Best0", *LEARNT, value="50,30,20,60,40,255",
                 numbers=[50, 30, 20, 60, 40, 255]))


def test_an_empty_set_changes_nothing(tool):
    # No set scores more than 0, and neither does a timeout that never hibernates.
    settings = GIVEN + RANGES.replace("0, 40", "99") + "WR=0\n"
    equal(choices(tool, settings, "--hibernate-after", "0")["Best0"],
          choice("Best0", *LEARNT, value=",,,,,"))


def test_without_weights_for_a_search_nothing_is_adopted(tool):
    lacks = ("s.ini: lacks StrengthHighRange, StrengthLowRange, FirstLastWeightRange, "
             "SecondLastWeightRange, DayGroupingRange, WR; a settings file replaces all default "
             "settings")
    compared = choices(tool, GIVEN, warnings=[lacks])
    equal([name for name in compared if name.startswith("Best")], [])


def test_the_default_settings(tool):
    tool.write("h.csv", HISTORY)
    defaults = str(ROOT / "packaging" / "default-settings.ini")
    tool.write("s.ini", open(defaults, "rb").read())
    equal(tool.works("compare", "--history", "h.csv"),
          tool.works("compare", "--history", "h.csv", "--settings", "s.ini"))


def test_the_default_settings_give_each_strength_a_set(tool):
    tool.works("sample", "--kind", "office", "--days", "90", "--seed", "1", "--out", "h.csv")
    compared = json.loads(tool.works("compare", "--history", "h.csv", "--hibernate-after", "180",
                                     "--json"))
    adopted = [choice for choice in compared["choices"] if choice["name"].startswith("Best")]
    equal([choice["name"] for choice in adopted], ["Best0", "Best1", "Best2", "Best3", "Best4"])
    equal([choice["name"] for choice in adopted if choice["value"] == "-1"], [])
    # With a greater strength, fewer resumes wait and the machine sleeps longer.
    waits = [choice["resumesFromHibernate"] for choice in adopted]
    equal(waits, sorted(waits, reverse=True))
    asleep = [choice["sleepSeconds"] for choice in adopted]
    equal(asleep, sorted(asleep))
    equal(waits[0] > waits[2] > waits[4], True)


def test_the_clairvoyant_is_explained(tool):
    contains(tool.works("compare", "--help"), "Clairvoyant is the best prediction for each sleep")


def test_settings_that_cannot_be_simulated(tool):
    tool.write("h.csv", HISTORY)
    tool.write("s.ini", GIVEN.replace("FirstLastWeight=50\n", ""))
    tool.fails("s.ini: FirstLastWeight is missing: No weigths specified", "compare", "--history", "h.csv", "--settings", "s.ini")


def test_ranges_that_cannot_be_simulated(tool):
    tool.write("h.csv", HISTORY)
    tool.write("s.ini", GIVEN + RANGES.replace("=50", "=-1"))
    tool.fails("s.ini: FirstLastWeightRange holds -1: No weigths specified", "compare",
               "--history", "h.csv", "--settings", "s.ini")


def test_a_history_with_an_unknown_code(tool):
    tool.write("h.csv", HISTORY + "99999999,4\n")
    tool.fails("h.csv: line %d: Unknown event in the history: 4" % (HISTORY.count("\n") + 1),
               "compare", "--history", "h.csv",
               warnings=["h.csv: damaged: 1 record with a state above 3"])


def test_bad_timeouts(tool):
    tool.write("h.csv", HISTORY)
    for text in ("-1", "4294967296", "ten"):
        tool.fails("--hibernate-after: not never or 1 to 4294967295 minutes, such as 45m or 1h30m: "
                   + text, "compare", "--history", "h.csv", "--hibernate-after=" + text)


def test_missing_files(tool):
    tool.write("h.csv", HISTORY)
    missing = "gone: cannot be read: No such file or directory"
    tool.fails(missing, "compare", "--history", "gone")
    tool.fails(missing, "compare", "--history", "h.csv", "--settings", "gone")


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
