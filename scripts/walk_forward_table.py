#!/usr/bin/env python3
"""Walks recorded and made-up histories forward and prints, in Markdown, what each choice scores at
several weights, and where the predictor of rates loses.

    walk_forward_table.py --tool build/native/dozewell-replay --traces FOLDER

Recorded histories are the *.csv in FOLDER; three years of each kind are made up by the tool.
"""

import argparse
import configparser
import json
import os
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
SECTION = "CyclicProbabilityPredictor"
SAMPLE_KINDS = ("office", "home", "shift", "erratic")
SAMPLE_SEEDS = (1, 2, 3)
SAMPLE_DAYS = 365
WEIGHTS = (30, 50, 70)

# The columns of the table, by the names of the choices without their strength.
COLUMNS = ("best timeout", "timeout of the past", "settings", "service", "service without wake",
           "rates", "rates without wake", "clairvoyant")
# Who is compared with whom; losses of rates are listed too.
RIVALS = {
    "service": ("best timeout", "timeout of the past", "settings"),
    "service without wake": ("best timeout", "timeout of the past"),
    "rates": ("best timeout", "timeout of the past", "settings", "service"),
    "rates without wake": ("best timeout", "timeout of the past", "service without wake"),
}


class Score:
    def __init__(self, score):
        self.value, self.low, self.high = score["score"], score["low"], score["high"]

    def __str__(self):
        return f"{self.value:.1f}"

    @property
    def with_range(self):
        return f"{self.value:.1f} ({self.low:.1f}-{self.high:.1f})"


def run(tool, *arguments):
    done = subprocess.run([tool, *arguments], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(done.stderr.strip())
    return done.stdout


def write_settings(path, source, weights):
    """The settings with these weights. Each begins with the set of the strength below it."""
    settings = configparser.ConfigParser()
    settings.optionxform = str
    settings.read_string(Path(source).read_text("utf-8"))
    values = settings[SECTION]
    strengths = list(map(int, values["WR"].replace(",", " ").split()))
    sets = {weight: values.pop(f"Best{strength}", "") for strength, weight in enumerate(strengths)}
    for strength, weight in enumerate(weights):
        values[f"Best{strength}"] = sets[max(w for w in strengths if w <= max(weight, strengths[0]))]
    values["WR"] = " ".join(map(str, weights))
    lines = []
    for section in settings.sections():
        lines += [f"[{section}]", *(f"{key}={value}" for key, value in settings[section].items())]
    path.write_text("\n".join(lines) + "\n", "utf-8")


def scores_of(compared, weights):
    """A list, by weight, of scores by the name of the column."""
    found = [{} for _ in weights]
    for choice in compared["walkForward"]:
        for score in choice["scores"]:
            name = choice["name"].removesuffix(f", strength {score['strength']}")
            found[score["strength"]][name] = Score(score)
    return found


def histories(options, folder):
    """Names and files."""
    if options.traces:
        for path in sorted(options.traces.glob("*.csv")):
            yield path.stem, str(path)
    for kind in SAMPLE_KINDS:
        for seed in options.seeds:
            path = os.path.join(folder, f"{kind}-{seed}.csv")
            run(options.tool, "sample", "--kind", kind, "--days", str(options.days), "--seed",
                str(seed), "--out", path)
            yield f"{kind} {seed}", path


def print_table(rows):
    print("| | " + " | ".join(COLUMNS) + " |")
    print("|---" * (len(COLUMNS) + 1) + "|")
    for name, scores in rows:
        cells = [", ".join(str(at_weight[column]) for at_weight in scores) for column in COLUMNS]
        print("| " + " | ".join([name, *cells]) + " |")
    print()


def losses(rows, weights, rates):
    """Lines that say where rates score less than a rival, the greatest loss first."""
    found = []
    for name, scores in rows:
        for weight, at_weight in zip(weights, scores):
            own = at_weight[rates]
            for rival in RIVALS[rates]:
                lost = at_weight[rival].value - own.value
                if lost > 0:
                    found.append((lost, f"- {name}, weight {weight}: {own.with_range}, "
                                        f"{lost:.1f} less than {rival} with "
                                        f"{at_weight[rival].with_range}"))
    return [line for _, line in sorted(found, key=lambda loss: -loss[0])]


def print_losses(rows, weights):
    cells = len(rows) * len(weights)
    for choice, rivals in RIVALS.items():
        for rival in rivals:
            behind = sum(at_weight[choice].value < at_weight[rival].value
                         for _, scores in rows for at_weight in scores)
            print(f"- {choice} against {rival}: behind in {behind} of {cells}")
    for rates in ("rates", "rates without wake"):
        lines = losses(rows, weights, rates)
        print(f"\nWhere {rates} lose:\n")
        print("\n".join(lines) if lines else "nowhere")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tool", default=str(ROOT / "build" / "native" / "dozewell-replay"),
                        help="dozewell-replay")
    parser.add_argument("--traces", type=Path, help="folder of recorded histories")
    parser.add_argument("--settings", type=Path,
                        default=ROOT / "packaging" / "default-settings.ini")
    parser.add_argument("--hibernate-after", default="180", help="the user's own timeout")
    parser.add_argument("--weights", type=int, nargs="+", default=WEIGHTS)
    parser.add_argument("--days", type=int, default=SAMPLE_DAYS, help="of a made-up history")
    parser.add_argument("--seeds", type=int, nargs="+", default=SAMPLE_SEEDS)
    options = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder:
        settings = Path(folder, "settings.ini")
        write_settings(settings, options.settings, options.weights)

        def row(history):
            name, path = history
            compared = run(options.tool, "compare", "--history", path, "--settings", str(settings),
                           "--hibernate-after", options.hibernate_after, "--json")
            return name, scores_of(json.loads(compared), options.weights)

        with ThreadPoolExecutor(os.cpu_count()) as threads:
            rows = list(threads.map(row, histories(options, folder)))
    print("Scores at the weights " + ", ".join(map(str, options.weights)) + "\n")
    print_table(rows)
    print_losses(rows, options.weights)


if __name__ == "__main__":
    main()
