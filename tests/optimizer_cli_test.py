"""Tests the optimizer's commands of dozewell-replay from outside: simulate, baseline, search and
apply.

    python3 -m tests.optimizer_cli_test --tool build/native/dozewell-replay
    python3 -m tests.optimizer_cli_test --tool "wine build/windows/dozewell-replay.exe"
"""

import json
import os
import pty
import sys

from tests.support.cli import DAY, ROOT, main, record
from tests.support.expect import contains, equal

MINUTE = 60
HOUR = 60 * MINUTE
SECTION = "[CyclicProbabilityPredictor]\n"

# A cycle of one day, in use from 08:00 to 12:00, so that the second night can be predicted:
# hibernation at 12:10 and sleep again at 08:00. The user comes half an hour later.
DAILY = SECTION + """\
DaysInCycle=1
FirstLastWeight=2
SecondLastWeight=1
AgregationWeight=1
StrengthHigh=70
StrengthLow=30
DayGrouping=0
"""
USES = [(8 * HOUR, 0), (12 * HOUR, 1), (DAY + 8 * HOUR, 0), (DAY + 12 * HOUR, 1),
        (2 * DAY + 8 * HOUR + 30 * MINUTE, 0)]
OUTCOME = ('{"sleepSeconds":74400,"hibernateSeconds":71400,'
           '"resumesFromSleep":2,"resumesFromHibernate":0}\n')
NOTHING = ('{"sleepSeconds":0,"hibernateSeconds":0,'
           '"resumesFromSleep":0,"resumesFromHibernate":0}\n')

RANGES = {"StrengthHighRange": "70", "StrengthLowRange": "30", "FirstLastWeightRange": "50",
          "SecondLastWeightRange": "25", "DayGroupingRange": "0", "WR": "50"}
BAR_WIDTH = len("[] 100%") + 50
UNKNOWN_CODE = "Unknown event in the history"


def with_timeline(outcome, pairs):
    return outcome.replace("}", ',"timeline":[%s]}' % pairs)


def csv(records):
    return "".join("%d,%d\n" % pair for pair in records)


def settings(**changes):
    return SECTION + "".join("%s=%s\n" % pair for pair in {**RANGES, **changes}.items())


def on_a_terminal(tool, *arguments):
    """Runs with messages going to a terminal, and returns the run and what the terminal shows."""
    master, slave = pty.openpty()
    with os.fdopen(master, "rb", 0) as screen:
        done = tool.run(*arguments, stderr=slave)
        os.close(slave)
        return done, screen.read(100000).decode()


def simulate(tool, records, text, *options):
    tool.write("h.csv", csv(records))
    tool.write("s.ini", text)
    return tool.works("simulate", "--history", "h.csv", "--settings", "s.ini", *options)


def baseline(tool, records, *options):
    tool.write("h.csv", csv(records))
    return tool.works("baseline", "--history", "h.csv", *options)


def search(tool, *options, records=USES, **changes):
    tool.write("h.csv", csv(records))
    tool.write("s.ini", settings(**changes))
    return tool.works("search", "--history", "h.csv", "--settings", "s.ini", *options)


def found(tool, *options, **changes):
    return json.loads(search(tool, "--json", *options, **changes))


def rows(tool, **changes):
    lines = [line for line in search(tool, "--each", **changes).splitlines()
             if line.count(",") == 9]
    table = [[int(number) for number in line.split(",")] for line in lines]
    equal(found(tool, "--each", **changes)["each"], table)
    return table


def apply(tool, text, strength="0"):
    tool.write("best.txt", text)
    return json.loads(tool.works("apply", "--strength", strength, "--best", "best.txt", "--json"))


# With predictions

def test_simulate_counts_time_and_resumes(tool):
    equal(simulate(tool, USES, DAILY, "--json"), OUTCOME)
    equal(simulate(tool, USES, DAILY),
          "Asleep: 20.7 hours\n"
          "Hibernated: 19.8 hours\n"
          "Resumes from sleep: 2\n"
          "Resumes from hibernation: 0\n")


def test_simulate_prints_the_time_line_first(tool):
    line = "28800 0\n43200 2\n115200 0\n129600 2\n130200 5\n201600 6\n203400 0\n"
    contains(simulate(tool, USES, DAILY, "--timeline"), line + "Asleep: ")
    equal(simulate(tool, USES, DAILY, "--json", "--timeline"), with_timeline(
        OUTCOME, "[28800,0],[43200,2],[115200,0],[129600,2],[130200,5],[201600,6],[203400,0]"))


def test_simulate_reads_hibernation_and_limbo(tool):
    records = [(600, 0), (1200, 1), (1800, 2), (2400, 3), (3000, 0)]
    equal(simulate(tool, records, DAILY, "--timeline", "--json"),
          '{"sleepSeconds":600,"hibernateSeconds":600,'
          '"resumesFromSleep":0,"resumesFromHibernate":0,'
          '"timeline":[[600,0],[1200,2],[1800,3],[2400,1],[3000,0]]}\n')


def test_simulate_has_its_own_slots_and_day(tool):
    text = DAILY + "MinutesInDay=0\n[Settings]\nTimeResolution=7\n"
    equal(simulate(tool, USES, text, "--json"), OUTCOME)


def test_simulate_and_search_take_the_default_settings(tool):
    tool.write("h.csv", csv(USES))
    tool.write("s.ini", (ROOT / "packaging" / "default-settings.ini").read_bytes())
    for command in ("simulate", "search"):
        run = (command, "--history", "h.csv", "--json")
        equal(tool.works(*run), tool.works(*run, "--settings", "s.ini"))


def test_a_history_of_two_records_is_not_simulated(tool):
    for records in ([], USES[:2], [(1, 3), (2, 3)]):
        equal(simulate(tool, records, DAILY, "--timeline", "--json"), with_timeline(NOTHING, ""))
        equal(baseline(tool, records, "--timeline", "--json"), with_timeline(NOTHING, ""))


def test_simulate_needs_parameters_even_for_no_records(tool):
    tool.write("h.csv", "")
    for text, error in (
            ("", "DaysInCycle, FirstLastWeight, SecondLastWeight, AgregationWeight are missing: "
             "No weigths specified"),
            (DAILY + "SecondLastWeight=-1\n", "SecondLastWeight is -1: No weigths specified"),
            (DAILY + "DaysInCycle=0\n", "DaysInCycle is 0: "
             "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations"),
            (DAILY.replace("DaysInCycle=1\n", ""), "DaysInCycle is missing: "
             "ArbitraryCycleProbabilityTracker - wrong configurations")):
        tool.write("s.ini", text)
        tool.fails("s.ini: " + error, "simulate", "--history", "h.csv", "--settings", "s.ini", "--timeline")


def test_an_unknown_code_ends_the_simulation(tool):
    tool.write("h.dat", record(0, 0) + record(5, 1) + record(9, 4))
    tool.write("s.ini", DAILY)
    error = "h.dat: record 3 at offset 32: " + UNKNOWN_CODE + ": 4"
    warnings = ["h.dat: damaged: 1 record with a state above 3"]
    tool.fails(error, "simulate", "--history", "h.dat", "--settings", "s.ini", "--timeline",
               warnings=warnings)
    tool.fails(error, "baseline", "--history", "h.dat", "--timeline", "--json", warnings=warnings)


def test_a_refused_event_ends_the_simulation(tool):
    tool.write("s.ini", DAILY)
    command = ("simulate", "--history", "h.dat", "--settings", "s.ini", "--timeline")
    tool.write("h.dat", record(0, 0) + record(600.25, 1) + record(600.75, 0))
    tool.fails("h.dat: state start is later than state end", *command)
    tool.write("h.dat", record(0, 0) + record(600, 1) + record(1e18, 0))
    tool.fails("h.dat: wrong time ...", *command)


def test_records_not_later_than_the_last_do_not_count(tool):
    records = [record(*pair) for pair in USES]
    odd = [record(USES[1][0], 0), record(5, 9), record(float("nan"), 9)]
    tool.write("h.dat", b"".join(records[:2] + odd + records[2:]) + b"partial")
    tool.write("s.ini", DAILY)
    warnings = ["h.dat: damaged: 3 records not later than one before, 1 record without a time, "
                "2 records with a state above 3, an incomplete record at the end"]
    equal(tool.works("simulate", "--history", "h.dat", "--settings", "s.ini", "--json",
                     warnings=warnings), OUTCOME)
    tool.write("s.ini", settings())
    out = tool.works("search", "--history", "h.dat", "--settings", "s.ini", "--json",
                     warnings=warnings)
    equal(json.loads(out)["records"], 5)


# With rates

def rates(tool, kind, *options):
    """Of a made-up history: seconds asleep and hibernated, resumes from sleep and hibernation."""
    tool.works("sample", "--kind", kind, "--days", "120", "--seed", "1", "--out", "sample.csv")
    out = json.loads(tool.works("simulate", "--history", "sample.csv", "--predictor", "rates",
                                "--timeline", "--json", *options))
    return [*out.values()][:4]


def test_rates_come_to_the_same_on_every_system(tool):
    equal(rates(tool, "office"), [954992, 7202241, 235, 7])
    equal(rates(tool, "office", "--no-wake"), [566651, 7590582, 159, 83])
    equal(rates(tool, "home"), [1358660, 7196484, 213, 42])
    equal(rates(tool, "home", "--no-wake"), [1007038, 7548106, 120, 135])


def test_rates_decide_each_sleep_from_what_came_before_it(tool):
    tool.works("sample", "--kind", "office", "--days", "60", "--seed", "1", "--out", "h.csv")
    records = (tool.folder / "h.csv").read_text().splitlines()
    command = ("simulate", "--predictor", "rates", "--timeline", "--json", "--history")
    whole = json.loads(tool.works(*command, "h.csv"))["timeline"]
    for count in (21, 62, 63):
        tool.write("begin.csv", "\n".join(records[:count]) + "\n")
        begin = json.loads(tool.works(*command, "begin.csv"))["timeline"]
        # How the last sleep goes on depends on its end, which is not there yet.
        equal(begin[:-1], whole[:len(begin) - 1])


def test_rates_take_strength_and_weights_from_the_settings(tool):
    """Weights of 0 and 100 hibernate after three minutes and never."""
    of_rates = ("--predictor", "rates", "--json")
    slept = 2 * (DAY - 4 * HOUR) + 30 * MINUTE
    for changes, asleep in (("WR=0 100\nStrength=0\n", 2 * 3 * MINUTE),
                            ("WR=0 100\nStrength=1\n", slept)):
        figures = json.loads(simulate(tool, USES, SECTION + changes, *of_rates))
        equal([figures["sleepSeconds"], figures["hibernateSeconds"]], [asleep, slept - asleep])
    without_entry = [simulate(tool, USES, SECTION + text, *of_rates)
                     for text in ("WR=50\nStrength=0\n", "WR=0 100\nStrength=2\n",
                                  "WR=0\nStrength=-1\n")]
    equal(without_entry, without_entry[:1] * 3)


def test_the_predictor_to_simulate(tool):
    equal(simulate(tool, USES, DAILY, "--json", "--predictor", "slots"), OUTCOME)
    command = ("simulate", "--history", "h.csv", "--settings", "s.ini")
    tool.fails("--predictor: not slots or rates: best", *command, "--predictor", "best")
    for options in ([], ["--predictor", "slots"]):
        tool.fails("--no-wake goes with --predictor rates", *command, "--no-wake", *options)


# With a fixed timeout

def test_baseline_hibernates_when_the_timeout_is_over(tool):
    equal(baseline(tool, USES[:3], "--timeline", "--json"),
          '{"sleepSeconds":600,"hibernateSeconds":71400,'
          '"resumesFromSleep":0,"resumesFromHibernate":1,'
          '"timeline":[[28800,0],[43200,2],[43800,3],[115200,0]]}\n')
    equal(baseline(tool, USES[:3]),
          "Asleep: 0.2 hours\n"
          "Hibernated: 19.8 hours\n"
          "Resumes from sleep: 0\n"
          "Resumes from hibernation: 1\n")


def test_a_return_at_the_timeout_is_from_sleep(tool):
    asleep = ('{"sleepSeconds":72000,"hibernateSeconds":0,'
              '"resumesFromSleep":1,"resumesFromHibernate":0}\n')
    for minutes in ("1200", "20h", "0", "never", "4294967295"):
        equal(baseline(tool, USES[:3], "--hibernate-after", minutes, "--json"), asleep)
    contains(baseline(tool, USES[:3], "--hibernate-after", "1199", "--json"),
             '"hibernateSeconds":60,')


def test_baseline_takes_all_codes_but_0_for_sleep_and_repeated_ones_once(tool):
    records = [(0, 0), (60, 0), (120, 2), (180, 3), (240, 1), (300, 0)]
    equal(baseline(tool, records, "--timeline", "--json"),
          '{"sleepSeconds":180,"hibernateSeconds":0,'
          '"resumesFromSleep":1,"resumesFromHibernate":0,'
          '"timeline":[[0,0],[120,2],[300,0]]}\n')


def test_bad_timeouts(tool):
    tool.write("h.csv", csv(USES))
    for minutes in ("ten", "-1", "4294967296", "1.5", " 5"):
        for command in ("baseline", "search"):
            tool.fails("--hibernate-after: not never or 1 to 4294967295 minutes, such as 45m or "
                       "1h30m: " + minutes,
                       command, "--history", "h.csv", "--hibernate-after=" + minutes)


# The search

def test_search_tells_what_it_would_store(tool):
    # A week is too long a cycle for this history: nothing is predicted.
    equal(search(tool, "--json", WR="50, 0 100"),
          '{"records":5,"sets":1,"baselineOutcome":{"sleepSeconds":1200,"hibernateSeconds":144600,'
          '"resumesFromSleep":0,"resumesFromHibernate":2},"best":['
          '{"name":"Best0","value":"50,25,25,70,30,0","score":50,"baseline":49.5884781,'
          '"set":[50,25,25,70,30,0]},'
          '{"name":"Best1","value":"-1","score":0,"baseline":99.1769562,"set":null},'
          '{"name":"Best2","value":"50,25,25,70,30,0","score":100,"baseline":0,'
          '"set":[50,25,25,70,30,0]}]}\n')


def test_search_in_words(tool):
    equal(search(tool, WR="50, 0"),
          "5 records, 1 sets\n"
          "\n"
          "With a timeout of 10 minutes:\n"
          "Asleep: 0.3 hours\n"
          "Hibernated: 40.2 hours\n"
          "Resumes from sleep: 0\n"
          "Resumes from hibernation: 2\n"
          "\n"
          "Name        Weight      Score       Timeout's   Set\n"
          "Best0       50          50          49.5884781  50,25,25,70,30,0\n"
          "Best1       0           0           99.1769562  -1, no better than the timeout\n")
    contains(search(tool, "--hibernate-after", "0"), "\n\nWith no timeout:\nAsleep: 40.5 hours\n")


def test_search_without_weights_chooses_no_set(tool):
    equal(found(tool, WR="")["best"], [])
    equal(found(tool, WR=" ,, ")["sets"], 1)
    contains(search(tool, WR=""), "\nNo weights (WR), so no set is chosen.\n")
    equal(found(tool, WR="x")["best"][0]["baseline"], 99.1769562)


def test_search_takes_the_given_timeout(tool):
    equal(found(tool, "--hibernate-after", "1199")["baselineOutcome"]["sleepSeconds"], 2 * 71940)
    equal(found(tool, "--hibernate-after", "0")["best"][0]["baseline"], 50)


def test_sets_that_score_alike_lose_to_the_last(tool):
    equal(found(tool, DayGroupingRange="0,127")["best"][0]["value"], "50,25,25,70,30,127")
    equal(found(tool, DayGroupingRange="127,0")["best"][0]["value"], "50,25,25,70,30,0")


def test_search_over_no_sets(tool):
    # No low threshold is below the high one.
    equal(found(tool, StrengthLowRange="71", WR="100 0"), {
        "records": 5, "sets": 0,
        "baselineOutcome": {"sleepSeconds": 1200, "hibernateSeconds": 144600,
                            "resumesFromSleep": 0, "resumesFromHibernate": 2},
        "best": [{"name": "Best0", "value": ",,,,,", "score": 0, "baseline": 0, "set": None},
                 {"name": "Best1", "value": "-1", "score": 0, "baseline": 99.1769562,
                  "set": None}]})
    equal(found(tool, "--each", DayGroupingRange="")["each"], [])
    equal(found(tool, FirstLastWeightRange="60", SecondLastWeightRange="40")["sets"], 0)


def test_search_over_fewer_than_three_records(tool):
    equal(search(tool, "--each", "--json", records=USES[:2]),
          '{"records":2,"sets":1,"baselineOutcome":' + NOTHING.strip() +
          ',"best":[{"name":"Best0","value":"-1","score":0,"baseline":null,"set":null}],'
          '"each":[[50,25,25,70,30,0,0,0,0,0]]}\n')


def test_each_set_has_its_line_in_the_order_of_the_grid(tool):
    ranges = {"StrengthHighRange": "90 60", "StrengthLowRange": "60,70",
              "FirstLastWeightRange": "60,10", "SecondLastWeightRange": "30 40",
              "DayGroupingRange": "12,0,115"}
    expected = [[first, second, 100 - first - second, high, low, grouping]
                for high, low in ((90, 60), (90, 70), (60, 60))
                for first, second in ((60, 30), (10, 30), (10, 40))
                for grouping in (12, 0, 115)]
    equal([row[:6] for row in rows(tool, **ranges)], expected)
    # A code that the service does not write makes the tool simulate the sets one by one.
    one_by_one = [*USES, (3 * DAY, 2), (3 * DAY + HOUR, 0)]
    equal([row[:6] for row in rows(tool, records=one_by_one, **ranges)], expected)


def test_each_set_comes_to_what_simulate_gives(tool):
    records = [(day * DAY + hour * HOUR + day % 5 * 600, asleep)
               for day in range(25) for hour, asleep in ((8, 0), (12, 1), (13, 0), (18, 1))]
    ranges = {"StrengthHighRange": "80", "StrengthLowRange": "10,40", "FirstLastWeightRange": "20",
              "SecondLastWeightRange": "20 30", "DayGroupingRange": "0,12"}
    for history in (records, [*records, (30 * DAY, 2), (31 * DAY, 0)]):
        outcomes = set()
        for first, second, rest, high, low, grouping, *outcome in rows(tool, records=history,
                                                                       **ranges):
            text = SECTION + ("DaysInCycle=7\nFirstLastWeight=%d\nSecondLastWeight=%d\n"
                              "AgregationWeight=%d\nStrengthHigh=%d\nStrengthLow=%d\n"
                              "DayGrouping=%d\n" % (first, second, rest, high, low, grouping))
            equal(list(json.loads(simulate(tool, history, text, "--json")).values()), outcome)
            outcomes.add(tuple(outcome))
        equal(len(outcomes) > 3, True)


def test_an_exception_ends_the_search(tool):
    tool.write("h.csv", csv(USES))
    command = ("search", "--history", "h.csv", "--settings", "s.ini", "--each", "--json")
    tool.write("s.ini", settings(FirstLastWeightRange="50,-1"))
    tool.fails("s.ini: FirstLastWeightRange holds -1: No weigths specified", *command)
    tool.write("s.ini", settings(DayGroupingRange=""))
    tool.write("h.csv", csv([*USES[:2], (DAY, 4)]))
    tool.fails("h.csv: line 3: " + UNKNOWN_CODE + ": 4", *command,
               warnings=["h.csv: damaged: 1 record with a state above 3"])
    tool.write("s.ini", settings())
    tool.write("h.csv", "0,0\n600.25,1\n600.75,0\n")
    tool.fails("h.csv: state start is later than state end", *command)


def test_search_shows_how_far_it_is_on_a_terminal_only(tool):
    if not tool.is_native:
        return
    tool.write("h.csv", csv(USES))
    tool.write("s.ini", settings(DayGroupingRange="0,1,2,3"))
    done, shown = on_a_terminal(tool, "search", "--history", "h.csv", "--settings", "s.ini",
                                "--json")
    equal(done.returncode, 0)
    equal(json.loads(done.stdout)["sets"], 4)
    bars = ["[%s%s] %d%%" % ("#" * (share // 2), " " * (50 - share // 2), share)
            for share in (0, 25, 50, 75, 100)]
    equal(shown.split("\r"), ["", *bars, " " * BAR_WIDTH, ""])


def test_the_bar_is_gone_before_an_error(tool):
    if not tool.is_native:
        return
    tool.write("h.csv", csv(USES))
    tool.write("s.ini", settings(FirstLastWeightRange="-1"))
    done, shown = on_a_terminal(tool, "search", "--history", "h.csv", "--settings", "s.ini")
    equal(done.returncode, 2)
    equal(shown.split(" " * BAR_WIDTH + "\r")[1], "dozewell-replay: s.ini: "
          "FirstLastWeightRange holds -1: No weigths specified\r\n")


# Applying what was found

PARAMETERS = ("FirstLastWeight", "SecondLastWeight", "AgregationWeight", "StrengthHigh",
              "StrengthLow", "DayGrouping")


def applied(*texts):
    return {"disabled": 0, "feedback": 2, **dict(zip(PARAMETERS, texts)),
            "set": [int(text) for text in texts]}


def not_applied(disabled, feedback):
    return {"disabled": disabled, "feedback": feedback, **dict.fromkeys(PARAMETERS), "set": None}


def test_apply_tells_what_would_be_stored(tool):
    tool.write("b", "10,20,70,90,60,2\n")
    command = ("apply", "--strength", "0", "--best", "b")
    equal(tool.works(*command, "--json"),
          '{"disabled":0,"feedback":2,"FirstLastWeight":"10","SecondLastWeight":"20",'
          '"AgregationWeight":"70","StrengthHigh":"90","StrengthLow":"60","DayGrouping":"2",'
          '"set":[10,20,70,90,60,2]}\n')
    equal(tool.works(*command),
          "Best0: taken\n"
          "FirstLastWeight=10\nSecondLastWeight=20\nAgregationWeight=70\n"
          "StrengthHigh=90\nStrengthLow=60\nDayGrouping=2\n"
          "DisablePrediction=0\nServiceFeedback=2\n")


def test_apply_switches_predictions_off(tool):
    for text in ("-1", "-1\n"):
        equal(apply(tool, text), not_applied(1, 3))
    tool.write("b", "-1")
    equal(tool.works("apply", "--strength", "1", "--best", "b"),
          "Best1: no better than the timeout, so there are no predictions\n"
          "DisablePrediction=1\nServiceFeedback=3\n")


def test_apply_of_no_set(tool):
    for text in ("", "\n", "-1 ", " -1", "-1\n\n", "-1\r\n", "10,20,70,90,60", "10,20,70,90,60,",
                 "10 ,20,70,90,60,2", "10,20,70,90,60,x", ",,,,,", "10;20;70;90;60;2",
                 "10,20,70,90,60,- 2", "0x10,20,70,90,60,2"):
        equal(apply(tool, text), not_applied(0, 0))
    equal(tool.works("apply", "--strength", "7", "--best", "gone.txt"),
          "Best7: no set, so the parameters stay as they are\n"
          "DisablePrediction=0\nServiceFeedback=0\n")


def test_apply_reads_numbers_as_scanf_does(tool):
    equal(apply(tool, " 10,\t20,\n+70,-90,060,2 and more"),
          applied("10", "20", "70", "-90", "60", "2"))
    equal(apply(tool, "4294967306,2147483648,-2147483649,-4294967297,18446744073709551617,2"),
          applied("10", "-2147483648", "2147483647", "-1", "1", "2"))


def test_apply_takes_any_strength(tool):
    for strength in ("", "1", "none", "-1"):
        equal(apply(tool, "-1", "" + strength)["disabled"], 1)


def test_a_set_that_cannot_be_read(tool):
    (tool.folder / "folder").mkdir()
    tool.fails("folder: cannot be read: " + tool.folder_reason, "apply", "--strength", "0",
               "--best", "folder")


def test_what_a_search_finds_can_be_applied(tool):
    best = found(tool)["best"][0]["value"]
    equal(apply(tool, best), applied(*best.split(",")))


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
