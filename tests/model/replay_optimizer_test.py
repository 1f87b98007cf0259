"""Compares what the replay tool shows of the optimizer with the model, byte for byte.

    python3 -m tests.model.replay_optimizer_test --tool build/native/dozewell-replay --cases 60

A second tool, if given, gets the same runs and must answer exactly as the first.
"""

import functools
import json
import math
import sys
from pathlib import Path

from tests.model import engine_model as model
from tests.model import histories
from tests.model import optimizer_model as optimizer
from tests.model import searches
from tests.model.comparison import Run, main


def expected(run, answer):
    """Completes the run with what the model answers."""
    try:
        run.stdout = answer().encode()
    except model.EngineError as error:
        run.exit_code, run.error, run.stdout, run.warnings = 2, str(error), b"", 1
    except model.NotDescribed:
        run.exit_code, run.warnings = None, None
    return run


def line(value):
    return json.dumps(value, separators=(",", ":")) + "\n"


def outcome_text(time_line):
    return line({**optimizer.count_outcome(time_line)._asdict(),
                 "timeline": [list(entry) for entry in time_line]})


def simulate_run(name, content, records, settings):
    def answer():
        configuration = optimizer.simulated_from(model.parse_settings(settings))
        return outcome_text(optimizer.simulate_predictor(configuration, model.increasing(records)))

    arguments = ["simulate", "--history", name, "--settings", "one.ini", "--timeline", "--json"]
    return expected(Run(arguments, inputs={name: content, "one.ini": settings.encode()}), answer)


def timeout_option(minutes):
    return [] if minutes is None else ["--hibernate-after", str(minutes)]


def minutes_of(minutes):
    return 10 if minutes is None else minutes


def baseline_run(name, content, records, minutes):
    def answer():
        return outcome_text(optimizer.simulate_fixed_timeout(model.increasing(records),
                                                             minutes_of(minutes) * 60))

    arguments = ["baseline", "--history", name, "--timeline", "--json"] + timeout_option(minutes)
    return expected(Run(arguments, inputs={name: content}), answer)


def number(value):
    """The number with 9 digits, whole if they are."""
    if not math.isfinite(value):
        return None
    shown = float("%.9g" % value)
    return int(shown) if shown.is_integer() else shown


def best_json(best):
    numbers = optimizer.apply_best_set(best.value)[2]
    return {"name": best.name, "value": best.value, "score": number(best.score),
            "baseline": number(best.baseline), "set": numbers and list(map(int, numbers))}


def search_text(found, records):
    return line({"records": len(model.increasing(records)), "sets": len(found.sets),
                 "baselineOutcome": found.baseline._asdict(),
                 "best": list(map(best_json, found.best)),
                 "each": [[*numbers, *outcome]
                          for numbers, outcome in zip(found.sets, found.outcomes)]})


def search_run(name, content, records, settings, minutes):
    def answer():
        found = optimizer.search(model.parse_settings(settings), records, minutes_of(minutes))
        return search_text(found, records)

    arguments = ["search", "--history", name, "--settings", "ranges.ini", "--each", "--json"]
    return expected(Run(arguments + timeout_option(minutes),
                        inputs={name: content, "ranges.ini": settings.encode()}), answer)


def apply_run(strength, content):
    chosen = content or ""
    disabled, feedback, texts = optimizer.apply_best_set(chosen.removesuffix("\n"))
    stored = dict(zip(optimizer.SET_KEYS, texts or [None] * 6))
    return Run(["apply", "--strength", strength, "--best", "best.txt", "--json"],
               inputs={"best.txt": None if content is None else content.encode()},
               stdout=line({"disabled": disabled, "feedback": feedback, **stored,
                            "set": texts and list(map(int, texts))}).encode())


# Cases

def history_runs(rng, name, content, records, hostile):
    minutes = searches.make_timeout(rng)
    return [simulate_run(name, content, records, searches.make_parameters(rng, hostile)),
            baseline_run(name, content, records, minutes),
            search_run(name, content, records, searches.make_ranges(rng, hostile), minutes)]


def made_up_case(seed, index):
    rng = histories.random_for(seed, index)
    hostile = rng.random() < 0.6
    content = searches.make_history(rng, rng.randint(1, 30), hostile)
    return (history_runs(rng, "history.dat", content, model.read_records(content), hostile) +
            [apply_run(rng.choice("0127"), searches.make_best(rng)) for _ in range(3)])


def trace_case(path, seed):
    rng = histories.random_for(seed, len(path.stem))
    content = path.read_bytes()
    return history_runs(rng, "history.csv", content, model.read_csv(content.decode()), False)


def all_cases(options):
    for index in range(options.cases):
        yield "case-%d" % index, functools.partial(made_up_case, options.seed, index)
    if options.traces:
        for path in sorted(Path(options.traces).glob("*.csv")):
            yield path.stem, functools.partial(trace_case, path, options.seed)


if __name__ == "__main__":
    sys.exit(main(all_cases, __doc__, cases=60))
