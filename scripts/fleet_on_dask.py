#!/usr/bin/python3
"""Judges the histories of many machines on a Dask cluster, in parts, and adds them up.

    scripts/fleet_on_dask.py --scheduler tcp://10.0.0.1:8786 --results RESULTS FOLDER... \\
        [-- OPTION...]

Every worker needs dozewell-replay and sees the folders under the same names. What follows -- are
options of `dozewell-replay fleet --merge`, such as --json or --out. Each part's partial result is
put into RESULTS when it is complete, so a worker may die at any time: another one makes its part
anew, and the totals are the same. A second run makes what is missing there. Runs with Debian's
python3-distributed.
"""

import argparse
import os
import socket
import subprocess
import sys
from pathlib import Path

from distributed import Client, as_completed


def judge_part(tool, options, folders, result):
    """Runs on a worker: makes one partial result. Whoever has made it first has made it for all,
    since all make the same."""
    unfinished = f"{result}.{socket.gethostname()}.{os.getpid()}.tmp"
    done = subprocess.run([tool, "fleet", "--json", "--partial", unfinished, *options, *folders],
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
    if done.returncode != 0:
        raise RuntimeError(done.stderr.decode(errors="replace"))
    os.replace(unfinished, result)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--scheduler", required=True, help="address of the cluster's scheduler")
    parser.add_argument("--results", required=True, type=Path,
                        help="folder for the partial results, which all workers see")
    parser.add_argument("--tool", default="dozewell-replay", help="the program, on the workers")
    parser.add_argument("--parts", type=int, default=64, help="more than there are workers")
    parser.add_argument("--threads", type=int, default=1, help="threads of each part")
    parser.add_argument("--settings", help="as of dozewell-replay fleet, on the workers")
    parser.add_argument("--hibernate-after", help="the same")
    parser.add_argument("folders", nargs="+", metavar="FOLDER")
    given, merging = sys.argv[1:], []
    if "--" in given:
        given, merging = given[:given.index("--")], given[given.index("--") + 1:]
    return parser.parse_args(given), merging


def main():
    options, merging = arguments()
    options.results.mkdir(parents=True, exist_ok=True)
    results = [str(options.results.resolve() / f"part-{number}-of-{options.parts}.part")
               for number in range(1, options.parts + 1)]
    asked = ["--threads", str(options.threads)]
    for name in ("settings", "hibernate_after"):
        if getattr(options, name):
            asked += ["--" + name.replace("_", "-"), getattr(options, name)]
    with Client(options.scheduler) as client:
        tasks = [client.submit(judge_part, options.tool,
                               [*asked, "--part", f"{number}/{options.parts}"], options.folders,
                               result, key=result, retries=2)
                 for number, result in enumerate(results, 1) if not Path(result).exists()]
        for task in as_completed(tasks):
            task.result()
    for unfinished in options.results.glob("*.tmp"):
        unfinished.unlink()
    return subprocess.run([options.tool, "fleet", "--merge", *merging, *results],
                          check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
