"""Compares what the replay tool's `compare` counts when it walks a history forward with the model.

    python3 -m tests.model.replay_walk_test --tool build/native/dozewell-replay --cases 20

A second tool, if given, gets the same runs and must print exactly the same.
"""

import functools
import json
import shutil
import sys
import tempfile
from pathlib import Path

from tests.model import engine_model as model
from tests.model import histories, searches, service_walk
from tests.model.comparison import Run, Tool
from tests.model.optimizer_model import Outcome
from tests.support.cases import option_parser
from tests.support.cases import run as run_cases
from tests.support.expect import equal

TIMEOUTS = (None, 0, 1, 10, 37, 180, 1440)
DEFAULT_TIMEOUT = 10
# Searches often, so that a short history has some, and now and then suspends come too early.
INTERVALS, DELAYS, LIMITS = (0, 2, 5, 8), (0, 5, 30, 200, 600), (4, 12, 60)
MOST_SETS = 6
STORED = (None, None, "-1", "45,45,10,20,20,12", "45,45,10,100,100,12", "5,5,90,50,10,0", ",,,,,")


def make_settings(rng, habits):
    values = histories.tame_values(rng, 10)
    ranges = {"StrengthHighRange": (2, 20, 60, 100), "StrengthLowRange": (2, 20, 60, 100),
              "FirstLastWeightRange": (5, 45), "SecondLastWeightRange": (5, 30),
              "DayGroupingRange": (0, 12, 255)}
    while True:
        for key, choices in ranges.items():
            values[key] = " ".join(map(str, rng.sample(choices, rng.randint(1, 2))))
        text = histories.settings_text(rng, values, False)
        if len(service_walk.optimizer.parameter_grid(model.parse_settings(text))) <= MOST_SETS:
            break
    values["WR"] = rng.choice(("30 50 70", "10 50 90", "50", "0 100", "50 50"))
    for strength in range(3):
        values["Best%d" % strength] = rng.choice(STORED)
    return histories.settings_text(rng, values, False).replace(
        "HistoryLimit=60", "HistoryLimit=%d\nOptimizerInterval=%d\nOptimizerDelay=%d" % (
            habits.limit_days, habits.interval_days, habits.delay_minutes))


def make_history(rng):
    content = searches.make_history(rng, rng.randint(1, 40), False)
    if rng.random() < 0.3:
        content = searches.real_hibernations(rng, content)
    if rng.random() < 0.2:
        content = content[16:]  # begins asleep
    return content


def compared(tool, run, folder):
    answer = tool.answer(run, folder)
    equal((answer.exit_code, answer.stderr), (0, []))
    return answer.stdout


def check(make_case, tools, folder):
    name, content, records, settings, timeout, habits = make_case()
    folder.mkdir()
    arguments = ["compare", "--history", name, "--settings", "s.ini", "--json"]
    if timeout is not None:
        arguments += ["--hibernate-after", "%d" % timeout if timeout else "never"]
    run = Run(arguments, inputs={name: content, "s.ini": settings.encode()})
    printed = compared(tools[0], run, folder)
    expected = service_walk.walk(model.parse_settings(settings), records,
                                 DEFAULT_TIMEOUT if timeout is None else timeout, habits)
    got = {choice["name"]: Outcome(*(choice[key] for key in Outcome._fields))
           for choice in json.loads(printed)["walkForward"]}
    equal(sorted(got), sorted(expected))
    for choice, outcome in expected.items():
        equal(got[choice], outcome, "%s (kept %s)" % (choice, folder))
    for tool in tools[1:]:
        equal(compared(tool, run, folder), printed, "the second tool")
    shutil.rmtree(folder)


def made_up_case(seed, index):
    rng = histories.random_for(seed, index)
    habits = service_walk.Habits(rng.choice(INTERVALS), rng.choice(DELAYS), rng.choice(LIMITS))
    content = make_history(rng)
    return ("history.dat", content, model.read_records(content), make_settings(rng, habits),
            rng.choice(TIMEOUTS), habits)


def trace_case(path, seed):
    rng = histories.random_for(seed, len(path.stem))
    habits = service_walk.Habits(20, 30, 60)
    content = path.read_bytes()
    return ("history.csv", content, model.read_csv(content.decode()), make_settings(rng, habits),
            180, habits)


def all_cases(options):
    for index in range(options.cases):
        yield "case-%d" % index, functools.partial(made_up_case, options.seed, index)
    if options.traces:
        for path in sorted(Path(options.traces).glob("*.csv")):
            yield path.stem, functools.partial(trace_case, path, options.seed)


def main():
    parser = option_parser(__doc__)
    parser.add_argument("--tool", required=True, help="command that starts the replay tool")
    parser.add_argument("--second-tool", help="command whose answers must equal the first's")
    parser.add_argument("--cases", type=int, default=20)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--traces", help="folder with recorded *.csv histories")
    options = parser.parse_args()
    tools = [Tool(command) for command in (options.tool, options.second_tool) if command]
    root = Path(tempfile.mkdtemp(prefix="replay_walk_"))
    return run_cases([(name, functools.partial(check, make_case, tools, root / name))
                      for name, make_case in all_cases(options)], options.words)


if __name__ == "__main__":
    sys.exit(main())
