"""Walks histories forward with the model of the return-rate predictor and scores it beside fixed
timeouts: what each sleep would have come to, decided from what came before it alone.

    python3 -m tests.model.rates_walk --traces FOLDER --years 12
    python3 -m tests.model.rates_walk --history year.csv another.csv

Fails when, without a wake, a score is more than 1 below the best fixed timeout in hindsight, or
when a recorded history does not come to what it is known to come to. A made-up user without any
habits may cost 2: there is nothing to learn, and the best of many timeouts in hindsight is partly
luck.
"""

import functools
import sys
from collections import namedtuple
from pathlib import Path

from tests.model import engine_model as model
from tests.model import histories
from tests.model import optimizer_model as optimizer
from tests.model import rates_model as rates
from tests.model.optimizer_model import SimEvent
from tests.support.cases import option_parser
from tests.support.cases import run as run_cases

WEIGHTS = (30, 50, 70)
TIMEOUT_MINUTES = (0, 1, 5, 10, 20, 30, 45, 60, 90, 120, 180, 240, 360, 480, 600, 720)  # 0: never
MOST_LOST, MOST_LOST_WITHOUT_HABITS = 1.0, 2.0

# What recorded histories come to at these weights, with a wake and without.
KNOWN = {
    "tracebase-desktop-de-2012": ((76.1, 74.3, 75.9), (72.7, 67.9, 72.2)),
    "tracebase-monitor-au-2013": ((92.5, 88.7, 86.3), (85.5, 77.2, 75.5)),
    "tracebase-monitor-de-2012": ((75.9, 77.2, 80.8), (74.8, 73.2, 76.6)),
}
KNOWN_TO = 0.1

Walk = namedtuple("Walk", "weight with_wake time_line")


def walk(records, weights):
    """A Walk for each weight, with a wake and without, on records whose states alternate."""
    predictor = rates.Predictor()
    walks = [Walk(weight, with_wake, []) for weight in weights for with_wake in (True, False)]
    for index, (time, asleep) in enumerate(records):
        time = int(time)
        for one in walks:
            one.time_line.append(SimEvent(time, optimizer.ASLEEP if asleep else optimizer.ACTIVE))
        if asleep and index + 1 < len(records):
            expected = rates.forecast(predictor.factors, time)
            for one in walks:
                predictor.weight, predictor.with_wake = one.weight, one.with_wake
                one.time_line.extend(events_of(predictor.plan_from(expected), time,
                                               int(records[index + 1][0])))
        predictor.process_event(model.tm_of(time),
                                model.SUSPEND if asleep else model.ACTIVATING)
    return walks


def events_of(plan, suspend, resume):
    """What happens before the resume."""
    states = (optimizer.PREDICTED_HIBERNATION, optimizer.WAKE_BACK,
              optimizer.PREDICTED_HIBERNATION)
    for minutes, state in zip(plan, states):
        if minutes is None or suspend + minutes * rates.MINUTE >= resume:
            return
        yield SimEvent(suspend + minutes * rates.MINUTE, state)


def score(weight, time_line):
    return optimizer.score_of(weight, optimizer.shares(optimizer.count_outcome(time_line)))


def best_fixed(weight, records):
    """The best score of a fixed timeout in hindsight, and its minutes."""
    return max((score(weight, optimizer.simulate_fixed_timeout(records, minutes * rates.MINUTE)),
                -minutes) for minutes in TIMEOUT_MINUTES)


def check(name, records, weights, most_lost):
    """Prints a line for each weight; throws when a score is not what it ought to be."""
    records = alternating(model.increasing(records))
    scores = {(one.weight, one.with_wake): score(one.weight, one.time_line)
              for one in walk(records, weights)}
    wrong = []
    for weight in weights:
        fixed, minutes = best_fixed(weight, records)
        woken, alone = scores[weight, True], scores[weight, False]
        print("%-32s %6d %8.1f %8.1f %8.1f at %s" % (
            name, weight, woken, alone, fixed, -minutes or "never"), flush=True)
        if alone < fixed - most_lost:
            wrong.append("w = %d: %.2f is more than %g below %.2f" % (
                weight, alone, most_lost, fixed))
        for got, known in zip((woken, alone), known_scores(name, weight)):
            if abs(got - known) > KNOWN_TO:
                wrong.append("w = %d: %.2f instead of %.1f" % (weight, got, known))
    if wrong:
        raise AssertionError("; ".join(wrong))


def known_scores(name, weight):
    if name not in KNOWN or weight not in WEIGHTS:
        return ()
    return [scores[WEIGHTS.index(weight)] for scores in KNOWN[name]]


def alternating(records):
    kept = []
    for record in records:
        if not kept or record[1] != kept[-1][1]:
            kept.append(record)
    return kept


def made_up(make_day, index, options):
    rng = histories.random_for(options.seed, index)
    return [(time, asleep) for time, asleep, _ in
            histories.records_of_days(rng, make_day, options.days)]


def named_histories(options):
    paths = list(map(Path, options.history))
    if options.traces:
        paths += sorted(Path(options.traces).glob("*.csv"))
    for path in paths:
        yield path.stem, model.read_csv(path.read_text()), MOST_LOST
    for index in range(options.years):
        make_day = histories.TAME_KINDS[index % len(histories.TAME_KINDS)]
        yield ("%s, %d days, %d" % (make_day.__name__, options.days, index),
               made_up(make_day, index, options),
               MOST_LOST_WITHOUT_HABITS if make_day is histories.erratic_day else MOST_LOST)


def main():
    parser = option_parser(__doc__)
    parser.add_argument("--history", nargs="*", default=[], metavar="CSV")
    parser.add_argument("--traces", help="folder with recorded *.csv histories")
    parser.add_argument("--years", type=int, default=0, help="how many years are made up")
    parser.add_argument("--days", type=int, default=365, help="the length of a made-up year")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--weights", type=int, nargs="+", default=list(WEIGHTS))
    options = parser.parse_args()
    print("%-32s %6s %8s %8s %8s" % ("", "weight", "wake", "no wake", "fixed"))
    return run_cases([(name, functools.partial(check, name, records, options.weights, most_lost))
                      for name, records, most_lost in named_histories(options)], options.words)


if __name__ == "__main__":
    sys.exit(main())
