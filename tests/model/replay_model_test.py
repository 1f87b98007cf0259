"""Compares the replay tool with the model on made-up and recorded histories, byte for byte.

    python3 -m tests.model.replay_model_test --tool build/native/dozewell-replay --cases 200

A second tool, if given, gets the same runs and must answer exactly as the first.
"""

import functools
import json
import math
import sys
from pathlib import Path

from tests.model import engine_model as model
from tests.model import histories
from tests.model.comparison import Run, main


# What the model expects

def data_run(arguments, inputs, made, answer):
    """A run on a data file; `made` makes the model's tracker, `answer` its text on stdout."""
    run = Run(arguments, inputs=inputs)
    try:
        tracker, ignored = made()
        run.stdout = answer(tracker).encode()
        run.warnings = 1 if ignored else 0
    except model.EngineError as error:
        run.exit_code, run.error, run.stdout = 2, str(error), b""
    except model.NotDescribed:
        run.exit_code, run.warnings = None, None
    return run


def probabilities_text(tracker):
    return "".join("%d %s\n" % (i, model.format_float(tracker.slot_probability(i)))
                   for i in range(tracker.block.slot_count))


def compact(value):
    return json.dumps(value, separators=(",", ":")) + "\n"


def predictions_text(tracker, tm):
    return compact([{"time": model.iso_text(time), "minutes": minutes}
                    for time, minutes in tracker.get_predictions(tm)])


def suspend_text(tracker, tm):
    predictions = tracker.get_predictions(tm)
    decision = model.decide_suspend(predictions, tm)
    return compact({**decision._asdict(), **suspend_times(predictions, decision)})


def suspend_times(predictions, decision):
    """The times of a decision as YYYY-MM-DDTHH:MM:SS."""
    def later(time, minutes):
        return model.iso_text(model.add_seconds(time, model.wrap32(minutes * 60)))

    hibernates = decision.haMinutes is not None
    restores = decision.sleepRestoredAt != "never"
    again = decision.nextHAMinutes is not None
    return {"hibernateAtTime": later(*predictions[0]) if hibernates else None,
            "sleepRestoredAtTime": later(predictions[1][0], 0) if restores else None,
            "hibernateNextAtTime": later(*predictions[1]) if again else None}


def query_runs(data, settings, times):
    inputs = {"data.z7": data, "settings.ini": settings.encode()}
    common = ["--data", "data.z7", "--settings", "settings.ini"]
    # Queries change nothing, so all of them use the same tracker.
    made = functools.cache(lambda: model.make_tracker(model.parse_settings(settings), data))
    runs = [data_run(["probabilities"] + common, inputs, made, probabilities_text)]
    for tm in times:
        at = model.iso_text(tm)
        runs.append(data_run(["predict"] + common + ["--at", at, "--json"], inputs, made,
                             functools.partial(predictions_text, tm=tm)))
        runs.append(data_run(["suspend"] + common + ["--now", at, "--json"], inputs, made,
                             functools.partial(suspend_text, tm=tm)))
    return runs


def learn_run(name, content, records, settings):
    """The run that learns, and the data file's content or None when the engine throws."""
    arguments = ["learn", "--history", name, "--settings", "settings.ini", "--data", "data.z7"]
    run = Run(arguments, inputs={name: content, "settings.ini": settings.encode()}, warnings=None)
    try:
        tracker, refused = model.learn(model.parse_settings(settings), records)
    except model.NotDescribed:
        run.exit_code = None
        return run, None
    except model.EngineError as error:
        run.exit_code, run.error, run.stdout = 2, str(error), b""
        run.outputs = {"data.z7": None}
        return run, None
    data = tracker.block.pack()
    run.outputs = {"data.z7": data}
    if refused:
        run.reported = len(refused)
    return run, data


def merge_run(rng, history):
    history, pending, now, limit = histories.make_merge(rng, history)
    return Run(["merge", "--history", "old.dat", "--pending", "pending.dat", "--now", str(now),
                "--limit", str(limit), "--out", "merged.dat"],
               inputs={"old.dat": history, "pending.dat": pending},
               outputs={"merged.dat": model.merge(history, pending, now, limit)},
               warnings=None, second_tool=False)


# Cases

def query_times(rng, records, count):
    """Just after the last event that has a time, near the end of all times, and at random."""
    seconds = [int(time) for time, _ in records
               if math.isfinite(time) and 0 <= time <= model.MAX_SECONDS - 7200]
    last = seconds[-1] if seconds else histories.BASE
    times = [last + rng.randint(1, 3600)]
    while len(times) < count:
        times.append(rng.choice((last + rng.randint(-10, 20) * 86400 + rng.randint(0, 86400),
                                 rng.randint(0, 2**31), last // 60 * 60)))
    if rng.random() < 0.03:
        times.append(model.MAX_SECONDS - rng.randint(0, 3 * 86400))
    return [model.tm_of(min(max(t, 0), model.MAX_SECONDS)) for t in times]


def made_up_case(seed, index):
    rng = histories.random_for(seed, index)
    hostile = rng.random() < 0.6
    resolution = 1 if index % 25 == 7 else rng.choice((10, 10, 10, 10, 15, 20, 30, 45))
    history = histories.make_history(rng, rng.randint(1, 12 if resolution == 1 else 70), hostile)
    settings = histories.make_settings(rng, resolution, hostile)
    records = model.read_records(history)
    run, data = learn_run("history.dat", history, records, settings)
    runs = [run]
    times = query_times(rng, records, 3)
    if data is None:
        runs += query_runs(b"", settings, times[:1])
        runs += query_runs(foreign_content(rng, settings), settings, times[:1])
    else:
        runs += query_runs(data, settings, times)
        if rng.random() < 0.5:
            runs += query_runs(histories.change_data(rng, data), settings, times[:2])
        if rng.random() < 0.2:
            other = histories.make_settings(rng, rng.choice((10, 15)), True)
            runs += query_runs(data, other, times[:1])
    return runs + [merge_run(rng, history)]


def foreign_content(rng, settings):
    configuration = model.parse_settings(settings)
    return histories.foreign_data(rng, configuration.number("DaysInCycle", -1),
                                  configuration.number("MinutesInDay", -1),
                                  model.wrap32(configuration.time_resolution))


TRACE_RESOLUTIONS = (1, 10, 10, 15, 30)


def trace_case(path, seed, index):
    rng = histories.random_for(seed, index)
    content = path.read_bytes()
    records = model.read_csv(content.decode())
    settings = histories.make_settings(rng, TRACE_RESOLUTIONS[index], False)
    run, data = learn_run("history.csv", content, records, settings)
    return [run] + query_runs(data, settings, query_times(rng, records, 12))


def all_cases(options):
    for index in range(options.cases):
        yield "case-%d" % index, functools.partial(made_up_case, options.seed, index)
    if options.traces:
        for path in sorted(Path(options.traces).glob("*.csv")):
            for index in range(len(TRACE_RESOLUTIONS)):
                yield ("%s-%d" % (path.stem, index),
                       functools.partial(trace_case, path, options.seed, index))


if __name__ == "__main__":
    sys.exit(main(all_cases, __doc__, cases=200))
