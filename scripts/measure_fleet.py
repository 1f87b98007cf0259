#!/usr/bin/env python3
"""Measures `dozewell-replay fleet` on made-up machines, and compares its sums with those of single
runs of compare.

    scripts/measure_fleet.py --tool build/native/dozewell-replay --folder build/fleet

The machines are of four kinds in turn, each with a seed of its own. They stay in the folder, and
what is there already is not made again. Prints a table in Markdown: time and processors, the most
memory for a tenth of the machines and for all, the processor time of reading each history and
searching in it once, and whether the sums of a hundred machines are those of compare.
"""

import argparse
import json
import os
import random
import re
import subprocess
import sys
import tempfile
import time
from collections import namedtuple
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

KINDS = ("office", "home", "shift", "erratic")
OUTCOMES = ("sleepSeconds", "hibernateSeconds", "resumesFromSleep", "resumesFromHibernate")
COMPARED = 100

Run = namedtuple("Run", "output seconds processor_seconds megabytes")


def most_memory(process_id):
    """The most memory that a process has had so far, in MiB; 0 once it has ended. What the system
    says of a process that has ended would be no less than this program's own."""
    status = Path(f"/proc/{process_id}/status").read_text("utf-8")
    found = re.search(r"VmHWM:\s+(\d+) kB", status)
    return int(found.group(1)) / 1024 if found else 0


def measured(command):
    """Runs a command; its output, time, processor time and most memory."""
    with tempfile.TemporaryFile() as output:
        start = time.monotonic()
        process = subprocess.Popen(command, stdout=output)
        megabytes = 0
        ended = 0
        while not ended:
            time.sleep(0.01)
            megabytes = max(megabytes, most_memory(process.pid))
            ended, status, usage = os.wait4(process.pid, os.WNOHANG)
        seconds = time.monotonic() - start
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            raise subprocess.CalledProcessError(process.returncode, command[:3])
        output.seek(0)
        return Run(output.read(), seconds, usage.ru_utime + usage.ru_stime, megabytes)


def make_machines(options):
    """The paths of the histories, which are made where they are missing."""
    paths = [options.folder / f"{number // 1000:03}" / f"PC-{number:06}" / "zs7state.dat"
             for number in range(options.machines)]

    def make(number):
        path = paths[number]
        if not path.exists():
            path.parent.mkdir(parents=True, exist_ok=True)
            subprocess.run([options.tool, "sample", "--kind", KINDS[number % len(KINDS)], "--days",
                            str(options.days), "--seed", str(number), "--out", str(path)],
                           check=True, stdout=subprocess.DEVNULL)

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        list(pool.map(make, range(options.machines)))
    return paths


def by_name(choices, taken=()):
    """Outcomes by the names that fleet has for them."""
    names = {}
    for choice in choices:
        name = choice["name"]
        if name in taken and choice.get("hibernateAfterMinutes") is None:
            name += ", walked forward"
        names[name] = [choice[key] for key in OUTCOMES]
    return names


def sums_are_those_of_compare(options, paths):
    """Whether fleet adds up some machines, drawn by chance, to what compare says of each."""
    drawn = [str(path) for path in random.Random(1).sample(paths, min(COMPARED, len(paths)))]
    fleet = json.loads(measured([options.tool, "fleet", "--json", *drawn]).output)
    sums = {}
    for path in drawn:
        done = json.loads(measured([options.tool, "compare", "--json", "--history", path]).output)
        names = by_name(done["choices"])
        names.update(by_name(done["walkForward"], names))
        for name, outcomes in names.items():
            sums[name] = [a + b for a, b in zip(sums.get(name, [0] * 4), outcomes)]
    return len(drawn), by_name(fleet["choices"]) == sums


def search_seconds(options, paths):
    """The processor time of a search in one history, reading it included, without the start of the
    program."""
    drawn = random.Random(2).sample(paths, min(COMPARED, len(paths)))
    start = sum(measured([options.tool, "--version"]).processor_seconds for _ in drawn)
    searches = sum(measured([options.tool, "search", "--json", "--history", str(path)])
                   .processor_seconds for path in drawn)
    return (searches - start) / len(drawn)


def fleet_on(options, folders, name):
    result = options.folder / name
    return measured([options.tool, "fleet", "--json", "--threads", str(options.threads),
                     "--partial", f"{result}.part", "--csv", f"{result}.table", "--out",
                     f"{result}.html", *map(str, folders)])


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tool", required=True)
    parser.add_argument("--folder", required=True, type=Path)
    parser.add_argument("--machines", type=int, default=10000)
    parser.add_argument("--days", type=int, default=180)
    parser.add_argument("--threads", type=int, default=len(os.sched_getaffinity(0)))
    options = parser.parse_args()
    paths = make_machines(options)
    folders = sorted({path.parents[1] for path in paths})
    tenth = fleet_on(options, paths[:options.machines // 10], "tenth")
    whole = fleet_on(options, folders, "whole")
    machines = json.loads(whole.output)["machines"]
    number, is_equal = sums_are_those_of_compare(options, paths)
    search = search_seconds(options, paths)
    each = whole.processor_seconds / machines
    print(f"""\
| machines of {options.days} days | {machines} |
|---|---|
| threads, on {os.cpu_count()} processors | {options.threads} |
| time | {whole.seconds:.0f} s |
| processor time, each machine | {1000 * each:.1f} ms |
| reading a history and one search in it | {1000 * search:.1f} ms |
| most memory, all machines | {whole.megabytes:.0f} MiB |
| most memory, a tenth of them | {tenth.megabytes:.0f} MiB |
| sums of {number} machines | {"those of compare" if is_equal else "NOT those of compare"} |""")
    return 0 if is_equal and machines == options.machines else 1


if __name__ == "__main__":
    sys.exit(main())
