"""Compares what the replay tool plays with the return-rate predictor to the model, event by event.

    python3 -m tests.model.replay_rates_test --tool build/native/dozewell-replay --cases 40

A second tool, if given, gets the same runs and must answer exactly as the first.
"""

import functools
import sys
from pathlib import Path

from tests.model import engine_model as model
from tests.model import histories
from tests.model import optimizer_model as optimizer
from tests.model import rates_model as rates
from tests.model import searches
from tests.model.comparison import Run, main
from tests.model.replay_optimizer_test import expected, outcome_text

WEIGHT_LISTS = ("10 30 50 60 80", "10 30 50 60 80", "30,50,70", "0 100 50 1 99", "-5 170 , 45")
HOSTILE_LISTS = ("", None, " ,", "x", "50x 3", "99999999999 2147483647 -99999999999")
STRENGTHS = ("0", "1", "2", "3", "4")
HOSTILE_STRENGTHS = (None, "-1", "7", "x", " 2", "1y", "99999999999")


def make_settings(rng, hostile):
    values = histories.tame_values(rng, 10)
    values["WR"] = rng.choice(WEIGHT_LISTS)
    values["Strength"] = rng.choice(STRENGTHS)
    if hostile:
        if rng.random() < 0.3:
            values["WR"] = rng.choice(HOSTILE_LISTS)
        if rng.random() < 0.3:
            values["Strength"] = rng.choice(HOSTILE_STRENGTHS)
    return histories.settings_text(rng, values, False)


def rates_run(name, content, records, settings, with_wake):
    def answer():
        weight = rates.weight_of(model.parse_settings(settings))
        simulator = optimizer.Simulator(rates.Predictor(weight, with_wake))
        simulator.run(model.increasing(records))
        return outcome_text(simulator.time_line)

    arguments = ["simulate", "--history", name, "--settings", "one.ini", "--timeline", "--json",
                 "--predictor", "rates"] + ([] if with_wake else ["--no-wake"])
    return expected(Run(arguments, inputs={name: content, "one.ini": settings.encode()}), answer)


# Cases

def months_away(rng, content):
    """The history with some sleeps that go on for more than a week, or almost."""
    records = searches.records_of(content)
    for _ in range(rng.randint(1, 3)):
        place = rng.randrange(len(records) + 1)
        gap = rng.choice((7, 8, 8, 9, 200)) * histories.DAY
        records[place:] = [(time + gap, code, rest) for time, code, rest in records[place:]]
    return histories.pack_records(records)


def made_up_case(seed, index):
    rng = histories.random_for(seed, index)
    hostile = rng.random() < 0.5
    content = searches.make_history(rng, rng.randint(1, 40), hostile)
    if rng.random() < 0.3:
        content = months_away(rng, content)
    return [rates_run("history.dat", content, model.read_records(content),
                      make_settings(rng, hostile), rng.random() < 0.7)]


def trace_case(path, seed):
    rng = histories.random_for(seed, len(path.stem))
    content = path.read_bytes()
    records = model.read_csv(content.decode())
    return [rates_run("history.csv", content, records, make_settings(rng, False), with_wake)
            for with_wake in (True, False)]


def all_cases(options):
    for index in range(options.cases):
        yield "case-%d" % index, functools.partial(made_up_case, options.seed, index)
    if options.traces:
        for path in sorted(Path(options.traces).glob("*.csv")):
            yield path.stem, functools.partial(trace_case, path, options.seed)


if __name__ == "__main__":
    sys.exit(main(all_cases, __doc__, cases=40))
