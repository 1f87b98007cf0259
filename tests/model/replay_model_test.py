"""Compares the replay tool with the model on made-up and recorded histories, byte for byte.

    replay_model_test.py --tool build/native/dozewell-replay --cases 200 --seed 1

A second tool, if given, gets the same runs and must answer exactly as the first.
"""

import argparse
import functools
import json
import math
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field
from pathlib import Path

import engine_model as model
import histories

RUN_SECONDS = 120


@dataclass
class Run:
    """One call of the tool in a case's folder and what must come of it."""
    arguments: list
    exit_code: object = 0            # None: not described, 0 or 2 will do
    stdout: object = None            # None: any text
    outputs: dict = field(default_factory=dict)  # name to content; None: must not exist
    error: str = ""                  # the engine's text, part of the one line on stderr
    warnings: object = 0             # lines on stderr that are no error; None: any number
    reported: object = None          # a number that must be told
    inputs: dict = field(default_factory=dict)   # name to content, written before the run
    second_tool: bool = True


@dataclass
class Answer:
    exit_code: object
    stdout: bytes
    stderr: list
    outputs: dict


class Tool:
    """A command to run; `noise` are the lines on stderr that its runner prints by itself."""

    def __init__(self, command):
        words = shlex.split(command)
        self.command = [str(Path(w).resolve()) if Path(w).is_file() else w for w in words]
        self.environment = dict(os.environ)
        self.environment.setdefault("WINEDEBUG", "-all")
        self.noise = set(self.start(["--help"], ".")[2])

    def start(self, arguments, folder):
        """Exit code, stdout and stderr; the code is a text where the tool did not end."""
        # Files, not pipes: a runner's own services may inherit a pipe and keep it open for ever.
        with tempfile.TemporaryFile() as stdout, tempfile.TemporaryFile() as stderr:
            try:
                code = subprocess.run(self.command + arguments, cwd=folder, env=self.environment,
                                      stdin=subprocess.DEVNULL, stdout=stdout, stderr=stderr,
                                      timeout=RUN_SECONDS, check=False).returncode
            except (OSError, subprocess.TimeoutExpired) as error:
                code = str(error)
            stdout.seek(0)
            stderr.seek(0)
            return code, stdout.read(), stderr.read().decode(errors="replace").splitlines()

    def answer(self, run, folder):
        for name, content in run.inputs.items():
            write_or_remove(folder / name, content)
        for name in run.outputs:
            write_or_remove(folder / name, None)
        code, stdout, stderr = self.start(run.arguments, folder)
        lines = [line for line in stderr if line.strip() and line not in self.noise]
        outputs = {name: (folder / name).read_bytes() if (folder / name).exists() else None
                   for name in run.outputs}
        return Answer(code, stdout, lines, outputs)


def write_or_remove(path, content):
    if content is None:
        path.unlink(missing_ok=True)
    else:
        path.write_bytes(content)


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
    return compact(model.decide_suspend(tracker.get_predictions(tm), tm)._asdict())


def query_runs(data, settings, times):
    inputs = {"data.z7": data, "settings.ini": settings.encode()}
    common = ["--data", "data.z7", "--settings", "settings.ini"]
    # Queries change nothing, so all of them may ask the same tracker.
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
    """The run that learns and the data file's content, None where the engine throws."""
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


# Comparing

def first_difference(expected, got):
    if got is None or expected is None:
        return "expected %s, got %s" % tuple("no file" if x is None else "a file of %d bytes" %
                                             len(x) for x in (expected, got))
    at = next((i for i, (a, b) in enumerate(zip(expected, got)) if a != b),
              min(len(expected), len(got)))
    return "byte %d of %d (got %d): expected %r, got %r" % (
        at, len(expected), len(got), expected[max(0, at - 12):at + 24],
        got[max(0, at - 12):at + 24])


def faults(run, answer):
    """What is wrong with an answer, first things first."""
    expected = (0, 2) if run.exit_code is None else (run.exit_code,)
    if answer.exit_code not in expected:
        yield "exit code %s instead of %s, stderr %r" % (answer.exit_code, run.exit_code,
                                                         answer.stderr[:2])
        return
    if run.stdout is not None and answer.stdout != run.stdout:
        yield "stdout, " + first_difference(run.stdout, answer.stdout)
    for name, content in run.outputs.items():
        if answer.outputs[name] != content:
            yield "%s, %s" % (name, first_difference(content, answer.outputs[name]))
    if run.error:
        if not answer.stderr or run.error not in answer.stderr[-1]:
            yield "stderr %r lacks %r" % (answer.stderr, run.error)
        # An ignored data file has its own warning line before the error.
        if len(answer.stderr) > (2 if run.inputs.get("data.z7") is not None else 1):
            yield "more than one error line: %r" % answer.stderr
    elif run.warnings is not None and len(answer.stderr) != run.warnings:
        yield "%d warning lines expected, got %r" % (run.warnings, answer.stderr)
    if run.reported is not None:
        told = answer.stdout.decode(errors="replace") + "\n".join(answer.stderr)
        if not re.search(r"(?<!\d)%d(?!\d)" % run.reported, told):
            yield "%d refused events are not reported" % run.reported


def second_faults(first, second):
    if first.exit_code != second.exit_code:
        yield "second tool: exit code %s, first %s" % (second.exit_code, first.exit_code)
    if first.stdout != second.stdout:
        yield "second tool: stdout, " + first_difference(first.stdout, second.stdout)
    for name, content in first.outputs.items():
        if content != second.outputs.get(name):
            yield "second tool: %s, %s" % (name, first_difference(content,
                                                                  second.outputs.get(name)))


def case_fault(runs, tools, folder):
    """The first fault of a case, or None."""
    for run in runs:
        answer = tools[0].answer(run, folder)
        found = list(faults(run, answer))
        if not found and len(tools) > 1 and run.second_tool:
            found = list(second_faults(answer, tools[1].answer(run, folder)))
        if found:
            return "%s: %s" % (" ".join(run.arguments), found[0])
    return None


def run_case(name, runs, tools, root):
    folder = root / name
    folder.mkdir()
    fault = case_fault(runs, tools, folder)
    if fault is None:
        shutil.rmtree(folder)
        return True
    print("FAILED %s: %s (kept %s)" % (name, fault, folder), flush=True)
    return False


def all_cases(options):
    for index in range(options.cases):
        yield "case-%d" % index, made_up_case(options.seed, index)
    if options.traces:
        for path in sorted(Path(options.traces).glob("*.csv")):
            for index in range(len(TRACE_RESOLUTIONS)):
                yield "%s-%d" % (path.stem, index), trace_case(path, options.seed, index)


def main(all_cases, description, cases):
    """Runs the command line of a comparison; `all_cases` makes named lists of runs."""
    parser = argparse.ArgumentParser(description=description,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tool", required=True, help="command that starts the replay tool")
    parser.add_argument("--second-tool", help="command whose answers must equal the first's")
    parser.add_argument("--cases", type=int, default=cases)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--traces", help="folder with recorded *.csv histories")
    options = parser.parse_args()
    tools = [Tool(command) for command in (options.tool, options.second_tool) if command]
    root = Path(tempfile.mkdtemp(prefix="replay_model_"))
    results, undescribed = [], 0
    for name, runs in all_cases(options):
        undescribed += sum(run.exit_code is None for run in runs)
        results.append(run_case(name, runs, tools, root))
    if all(results):
        root.rmdir()
    if undescribed:
        print("%d runs have no described answer; only that they end was checked" % undescribed)
    print("%d passed, %d failed" % (sum(results), len(results) - sum(results)))
    return 0 if all(results) and results else 1


if __name__ == "__main__":
    sys.exit(main(all_cases, __doc__, cases=200))
