"""Tests scripts/walk_forward_table.py.

    python3 -m tests.walk_forward_table_test --tool build/native/dozewell-replay
"""

import configparser
import importlib.util
import json
import subprocess
import sys

from tests.support.cli import ROOT, main
from tests.support.expect import contains, equal

SCRIPT = ROOT / "scripts" / "walk_forward_table.py"
SETTINGS = """\
[Settings]
HistoryLimit=60
[CyclicProbabilityPredictor]
WR=10, 40 60
Best0=1,1,1,1,1,0
Best1=2,2,2,2,2,0
Best2=3,3,3,3,3,0
Strength=1
"""


def load_script():
    spec = importlib.util.spec_from_file_location("walk_forward_table", SCRIPT)
    script = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(script)
    return script


def run_script(tool, *options):
    done = subprocess.run([sys.executable, SCRIPT, "--tool", tool.command[0], *options],
                          capture_output=True, text=True, check=False)
    equal((done.returncode, done.stderr), (0, ""))
    return done.stdout


def scores(**values):
    script = load_script()
    return {name.replace("_", " "): script.Score({"score": value, "low": value - 1,
                                                  "high": value + 1})
            for name, value in values.items()}


def test_each_cell_is_what_compare_says(tool):
    tool.works("sample", "--kind", "shift", "--days", "70", "--seed", "2", "--out", "h.csv")
    (tool.folder / "traces").mkdir()
    (tool.folder / "h.csv").rename(tool.folder / "traces" / "a trace.csv")
    printed = run_script(tool, "--traces", str(tool.folder / "traces"), "--days", "30", "--seeds",
                         "1", "2", "--weights", "40", "60")
    rows = [line.strip("| ").split(" | ") for line in printed.splitlines()
            if line.startswith("| ") and not line.startswith("| |")]
    equal([row[0] for row in rows],
          ["a trace"] + [f"{kind} {seed}" for kind in ("office", "home", "shift", "erratic")
                         for seed in (1, 2)])
    load_script().write_settings(tool.folder / "s.ini", ROOT / "packaging" / "default-settings.ini",
                                 (40, 60))
    compared = json.loads(tool.works("compare", "--history", "traces/a trace.csv", "--settings",
                                     "s.ini", "--hibernate-after", "180", "--json"))
    got = {choice["name"]: choice["scores"] for choice in compared["walkForward"]}
    equal(rows[0][1:], [", ".join(
        "%.1f" % (got[f"{column}, strength {strength}"][0] if f"{column}, strength 0" in got else
                  got[column][strength])["score"] for strength in (0, 1))
        for column in load_script().COLUMNS])
    contains(printed, "rates against service: behind in ")
    contains(printed, " of 18")
    contains(printed, "Where rates lose:")
    contains(printed, "Where rates without wake lose:")


def test_losses_are_said_the_greatest_first(_):
    rows = [("a", [scores(rates=60, best_timeout=59, timeout_of_the_past=60, settings=60.5,
                          service=62.25)]),
            ("b", [scores(rates=70, best_timeout=69, timeout_of_the_past=70, settings=71,
                          service=70)])]
    equal(load_script().losses(rows, [50], "rates"), [
        "- a, weight 50: 60.0 (59.0-61.0), 2.2 less than service with 62.2 (61.2-63.2)",
        "- b, weight 50: 70.0 (69.0-71.0), 1.0 less than settings with 71.0 (70.0-72.0)",
        "- a, weight 50: 60.0 (59.0-61.0), 0.5 less than settings with 60.5 (59.5-61.5)"])


def test_a_weight_begins_with_the_set_of_the_strength_below_it(tool):
    tool.write("s.ini", SETTINGS)
    load_script().write_settings(tool.folder / "t.ini", tool.folder / "s.ini", (5, 10, 50, 70))
    settings = configparser.ConfigParser()
    settings.optionxform = str
    settings.read(tool.folder / "t.ini")
    equal(dict(settings["CyclicProbabilityPredictor"]),
          {"WR": "5 10 50 70", "Strength": "1", "Best0": "1,1,1,1,1,0", "Best1": "1,1,1,1,1,0",
           "Best2": "2,2,2,2,2,0", "Best3": "3,3,3,3,3,0"})
    equal(dict(settings["Settings"]), {"HistoryLimit": "60"})


def test_an_error_of_the_tool_is_the_scripts(tool):
    (tool.folder / "traces").mkdir()
    tool.write("traces/bad.csv", "epoch_wallclock_seconds,asleep\nx\n")
    done = subprocess.run([sys.executable, SCRIPT, "--tool", tool.command[0], "--traces",
                           str(tool.folder / "traces")], capture_output=True, text=True,
                          check=False)
    equal(done.returncode, 1)
    contains(done.stderr, "bad.csv: line 2")


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
