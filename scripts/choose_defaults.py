#!/usr/bin/env python3
"""Judges default settings by walking forward: parameters are chosen on the first part of a history
and judged on the weeks after it. Prints three tables in Markdown:

- what the parameters that hold before the first search should be;
- what the strengths of the settings come to, beside fixed timeouts and the best possible;
- what other ranges and other lengths of the history would have gained or lost.

Histories are made up by the tool; with --traces, recorded ones (*.csv) are judged too.

    choose_defaults.py --tool build/native/dozewell-replay --traces FOLDER
"""

import argparse
import configparser
import hashlib
import json
import os
import subprocess
import sys
import tempfile
from collections import namedtuple
from concurrent.futures import ThreadPoolExecutor
from functools import lru_cache
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
DAY = 86400
WEEK = 7 * DAY
SAMPLE_KINDS = ("office", "home", "shift", "erratic")
SAMPLE_DAYS, SAMPLE_SEEDS = 365, (1, 2, 3)
SEARCH_INTERVAL = 30 * DAY  # the service's
SECTION = "CyclicProbabilityPredictor"
SET_KEYS = ("FirstLastWeight", "SecondLastWeight", "AgregationWeight", "StrengthHigh",
            "StrengthLow", "DayGrouping")
FIXED = {"10": "10 minutes", "30": "30 minutes", "60": "60 minutes", "180": "180 minutes",
         "0": "never"}

# All parameters that are tried for the time before the first search.
FIRST_MONTH_RANGES = {
    "StrengthHighRange": "2 5 10 15 20 25 30 40 50 60 70 80 100",
    "StrengthLowRange": "2 5 10 15 20 25 30 40 50 60 70 80 100",
    "FirstLastWeightRange": "0 5 10 15 20 30 45",
    "SecondLastWeightRange": "0 5 10 15 20 30 45",
    "DayGroupingRange": "0 12 255",
}

# Changes to the settings that are tried.
ALTERNATIVES = {
    "as they are": {},
    "30 days of history": {"HistoryLimit": "30"},
    "60 days of history": {"HistoryLimit": "60"},
    "120 days of history": {"HistoryLimit": "120"},
    "365 days of history": {"HistoryLimit": "365"},
    "no thresholds below 20": {"StrengthHighRange": "20 30 40 50 60 80 100",
                               "StrengthLowRange": "20 30 40 50 60 80 100"},
    "no thresholds above 50": {"StrengthHighRange": "2 5 10 20 30 40 50",
                               "StrengthLowRange": "2 5 10 20 30 40 50"},
    "older observations alone": {"FirstLastWeightRange": "0", "SecondLastWeightRange": "0"},
    "older observations at 80 or more": {"FirstLastWeightRange": "0 5 10",
                                         "SecondLastWeightRange": "0 5 10"},
    "the last two at 60 or more": {"FirstLastWeightRange": "30 45",
                                   "SecondLastWeightRange": "30 45"},
    "days on their own only": {"DayGroupingRange": "0"},
    "weekends apart only": {"DayGroupingRange": "12"},
    "more groupings of days": {"DayGroupingRange": "0 12 255 4 8 2 6 14 28"},
    "ten times as many weights": {"FirstLastWeightRange": "0 5 10 15 20 25 30 35 40 45",
                                  "SecondLastWeightRange": "0 5 10 15 20 25 30 35 40 45"},
}


class Outcomes(namedtuple("Outcomes", "asleep hibernated from_sleep from_hibernation")):
    """Seconds asleep and hibernated, and numbers of resumes."""

    def __add__(self, other):
        return Outcomes(*(a + b for a, b in zip(self, other)))

    def __sub__(self, other):
        return Outcomes(*(a - b for a, b in zip(self, other)))

    @property
    def hours_asleep(self):
        """Per cent of the time that the machine is not in use."""
        return 100 * self.asleep / (self.asleep + self.hibernated)

    @property
    def waits(self):
        """Per cent of the resumes."""
        return 100 * self.from_hibernation / (self.from_sleep + self.from_hibernation)

    def score(self, weight):
        """As the search scores with an entry of WR."""
        return (weight * (100 - self.waits) + (100 - weight) * (100 - self.hours_asleep)) / 100


NOTHING = Outcomes(0, 0, 0, 0)


class Settings:
    """The settings file, with some values changed."""

    def __init__(self, path, changes=()):
        self.values = configparser.ConfigParser()
        self.values.optionxform = str
        self.values.read_string(Path(path).read_text("utf-8"))
        for key, value in dict(changes).items():
            section = "Settings" if key in self.values["Settings"] else SECTION
            self.values[section][key] = value

    @property
    def history_limit(self):
        return int(self.values["Settings"]["HistoryLimit"]) * DAY

    @property
    def weights(self):
        return [int(word) for word in self.values[SECTION]["WR"].replace(",", " ").split()]

    @property
    def set(self):
        """The parameters before the first search."""
        return ",".join(self.values[SECTION][key] for key in SET_KEYS)

    def starting_set(self, strength):
        """Those of a strength."""
        return self.values[SECTION].get(f"Best{strength}", self.set)


class Tool:
    """Runs dozewell-replay on files."""

    def __init__(self, program, folder):
        self._program = program
        self._folder = folder

    def sample(self, kind, seed):
        name = os.path.join(self._folder, f"{kind}-{seed}.csv")
        self._run("sample", "--kind", kind, "--days", str(SAMPLE_DAYS), "--seed", str(seed),
                  "--out", name)
        return Path(name).read_text("utf-8")

    def records_file(self, records):
        return self._file("".join(f"{time!r},{asleep}\n" for time, asleep in records), ".csv")

    def search(self, records, settings, timeout):
        """What would be stored for each weight: a set, or -1."""
        found = self._run("search", "--history", self.records_file(records), "--settings",
                          self._settings_file(settings), "--hibernate-after", timeout, "--json")
        return [best["value"] for best in json.loads(found)["best"]]

    def each_set(self, records, settings):
        """Pairs of a set and its outcomes."""
        found = self._run("search", "--history", self.records_file(records), "--settings",
                          self._settings_file(settings), "--each", "--json")
        for numbers in json.loads(found)["each"]:
            parameters, outcomes = numbers[:len(SET_KEYS)], numbers[len(SET_KEYS):]
            yield ",".join(map(str, parameters)), Outcomes(*outcomes)

    @lru_cache(maxsize=None)
    def compare(self, records_file, parameters):
        """The outcomes of all choices by their names, with the set as the settings."""
        values = configparser.ConfigParser()
        values.optionxform = str
        values[SECTION] = {"DaysInCycle": "7", **dict(zip(SET_KEYS, parameters.split(",")))}
        compared = self._run("compare", "--history", records_file, "--settings",
                             self._ini_file(values), "--json")
        return {choice["name"]: Outcomes(choice["sleepSeconds"], choice["hibernateSeconds"],
                                         choice["resumesFromSleep"],
                                         choice["resumesFromHibernate"])
                for choice in json.loads(compared)["choices"]}

    def _settings_file(self, settings):
        return self._ini_file(settings.values)

    def _ini_file(self, values):
        lines = []
        for section in values.sections():
            lines.append(f"[{section}]")
            lines += [f"{key}={value}" for key, value in values[section].items()]
        return self._file("\n".join(lines) + "\n", ".ini")

    def _file(self, text, suffix):
        """Named after its content, so that the same text is written once."""
        digest = hashlib.sha256(text.encode()).hexdigest()[:24]
        path = Path(self._folder, digest + suffix)
        if not path.exists():
            # Another thread may be writing the same file; nobody may read half of it.
            with tempfile.NamedTemporaryFile("w", dir=self._folder, delete=False) as unfinished:
                unfinished.write(text)
            os.replace(unfinished.name, path)
        return str(path)

    def _run(self, *arguments):
        done = subprocess.run([self._program, *arguments], capture_output=True, text=True,
                              check=False)
        if done.returncode != 0:
            sys.exit(done.stderr.strip())
        return done.stdout


class History:
    """Records, and the steps of the walk through them."""

    def __init__(self, group, text):
        self.group = group  # those of one group count as one
        self.records = []
        for line in text.splitlines():
            time, _, asleep = line.partition(",")
            if time.strip().isdecimal():
                self.records.append((int(time), int(asleep)))
        self.start = self.records[0][0] // DAY * DAY
        self.end = self.records[-1][0] + 1
        length = self.end - self.start
        if length > 4 * SEARCH_INTERVAL:
            self.first, self.step = SEARCH_INTERVAL, SEARCH_INTERVAL
        else:
            # The first third, in whole weeks.
            self.first, self.step = -(-length // (3 * WEEK)) * WEEK, WEEK

    def between(self, start, end):
        return [record for record in self.records if start <= record[0] < end]

    def until(self, end):
        return self.between(self.start, end)

    def folds(self):
        """When the choices are made, and until when they are judged."""
        start = self.start + self.first
        while start < self.end:
            yield start, min(start + self.step, self.end)
            start += self.step


def fold_outcomes(tool, history, start, end, parameters):
    """Outcomes of the weeks from `start` to `end`, with everything before them learnt."""
    after = tool.compare(tool.records_file(history.until(end)), parameters)
    before = tool.compare(tool.records_file(history.until(start)), parameters)
    return {name: after[name] - before[name] for name in after}


def walk(tool, history, settings, timeout):
    """Outcomes of the weeks after the first part: by strength, and of all other choices."""
    strengths = [NOTHING] * len(settings.weights)
    others = {}
    for start, end in history.folds():
        known = history.between(max(history.start, start - settings.history_limit), start)
        fold = fold_outcomes(tool, history, start, end, settings.set)
        for name, outcomes in fold.items():
            others[name] = others.get(name, NOTHING) + outcomes
        for strength, chosen in enumerate(tool.search(known, settings, timeout)):
            if chosen == "-1":
                outcomes = fold[FIXED[timeout]]
            else:
                outcomes = fold_outcomes(tool, history, start, end, chosen)["settings"]
            strengths[strength] += outcomes
    return strengths, others


def mean(numbers):
    numbers = list(numbers)
    return sum(numbers) / len(numbers)


def by_group(histories, items):
    """The items that belong to the histories of each group."""
    groups = {}
    for history, item in zip(histories, items):
        groups.setdefault(history.group, []).append(item)
    return groups


def print_table(heads, rows):
    print("| " + " | ".join(heads) + " |")
    print("|---" * len(heads) + "|")
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


def best_fixed(outcomes, weight):
    """The score of the fixed timeout that turns out best."""
    return max(outcomes[name].score(weight) for name in FIXED.values())


def gains_of_sets(tool, histories, settings, weights):
    """By weight, set and group, what the first month scores more than the best fixed timeout."""
    ranges = Settings(settings, FIRST_MONTH_RANGES)

    def gains(history):
        month = history.until(history.start + SEARCH_INTERVAL)
        compared = tool.compare(tool.records_file(month), ranges.set)
        sets = list(tool.each_set(month, ranges))
        return {weight: {parameters: outcomes.score(weight) - best_fixed(compared, weight)
                         for parameters, outcomes in sets} for weight in weights}

    groups = by_group(histories, map(gains, histories))
    sets = next(iter(groups.values()))[0][weights[0]]
    return {weight: {parameters: {group: mean(gain[weight][parameters] for gain in of_group)
                                  for group, of_group in groups.items()} for parameters in sets}
            for weight in weights}


def first_month(gains, weight, starting_set):
    groups = list(next(iter(gains.values())))

    def best(without):
        return max(gains, key=lambda parameters: mean(
            gain for group, gain in gains[parameters].items() if group != without))

    rows = []
    for name, parameters in (("best of all", best(None)), ("as it is", starting_set)):
        gain = gains.get(parameters, {})
        rows.append([name, parameters] + [f"{gain[group]:+.1f}" if gain else "not tried"
                                          for group in groups] +
                    [f"{mean(gain.values()):+.1f}" if gain else ""])
    chosen = {group: best(group) for group in groups}
    left_out = [gains[chosen[group]][group] for group in groups]
    rows.append(["best of the others", "one for each"] + [f"{gain:+.1f}" for gain in left_out] +
                [f"{mean(left_out):+.1f}"])
    print(f"The first month, weight {weight}: score against the best fixed timeout\n")
    print_table(["", "set", *groups, "mean"], rows)


def cell(walks, pick):
    """Hours asleep and waits, in the mean of a group."""
    outcomes = [pick(walked) for walked in walks]
    return f"{mean(o.hours_asleep for o in outcomes):.0f} / {mean(o.waits for o in outcomes):.0f}"


def strengths(histories, walks, weights):
    groups = by_group(histories, walks)
    rows = []
    for name in list(FIXED.values()) + ["clairvoyant", "settings"]:
        rows.append([name] + [cell(of_group, lambda walked, name=name: walked[1][name])
                              for of_group in groups.values()])
    for strength, weight in enumerate(weights):
        rows.append([f"strength {strength} (WR {weight})"] +
                    [cell(of_group, lambda walked, strength=strength: walked[0][strength])
                     for of_group in groups.values()])
    print("After that: per cent of the time asleep / of the resumes with a wait\n")
    print_table(["", *groups], rows)


def gains_of_strengths(histories, walks, weights):
    """By strength and group, the score against the fixed timeout that turns out best."""
    for strength, weight in enumerate(weights):
        gains = [walked[0][strength].score(weight) - best_fixed(walked[1], weight)
                 for walked in walks]
        yield {group: mean(of_group) for group, of_group in by_group(histories, gains).items()}


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tool", default=str(ROOT / "build" / "native" / "dozewell-replay"),
                        help="dozewell-replay")
    parser.add_argument("--traces", type=Path, help="folder of recorded histories")
    parser.add_argument("--settings", type=Path,
                        default=ROOT / "packaging" / "default-settings.ini")
    parser.add_argument("--hibernate-after", choices=FIXED, default="180",
                        help="the user's own timeout in minutes; 0 is never")
    options = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder:
        tool = Tool(options.tool, folder)
        histories = [History(trace.stem, trace.read_text("utf-8"))
                     for trace in sorted(options.traces.glob("*.csv"))] if options.traces else []
        histories += [History(kind, tool.sample(kind, seed))
                      for kind in SAMPLE_KINDS for seed in SAMPLE_SEEDS]

        def walk_all(settings):
            with ThreadPoolExecutor(os.cpu_count()) as threads:
                return list(threads.map(
                    lambda history: walk(tool, history, settings, options.hibernate_after),
                    histories))

        settings = Settings(options.settings)
        weights = list(dict.fromkeys(settings.weights))
        gains = gains_of_sets(tool, histories, options.settings, weights)
        for strength, weight in enumerate(settings.weights):
            first_month(gains[weight], weight, settings.starting_set(strength))

        walks = walk_all(settings)
        strengths(histories, walks, settings.weights)
        rows = [[f"strength {place}"] + [f"{gain:+.1f}" for gain in gains.values()] +
                [f"{mean(gains.values()):+.1f}"] for place, gains in
                enumerate(gains_of_strengths(histories, walks, settings.weights))]
        groups = list(by_group(histories, histories))
        print("The same as scores, against the fixed timeout that turns out best\n")
        print_table(["", *groups, "mean"], rows)

        rows = []
        for name, changes in ALTERNATIVES.items():
            changed = Settings(options.settings, changes)
            means = [mean(gains.values()) for gains in
                     gains_of_strengths(histories, walk_all(changed), changed.weights)]
            rows.append([name] + [f"{gain:+.1f}" for gain in means] + [f"{mean(means):+.2f}"])
        print("Other settings, in the mean of all histories\n")
        print_table(["", *(f"strength {place}" for place in range(len(settings.weights))), "mean"],
                    rows)


if __name__ == "__main__":
    main()
