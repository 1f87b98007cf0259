"""Runs scripts/fleet_on_dask.py on a cluster of a scheduler and two workers, one of which is killed
while it judges a part, and compares the totals with those of one run. Needs the Python that
Debian's python3-distributed is for.

    /usr/bin/python3 -m tests.fleet_dask_test --tool build/native/dozewell-replay
"""

import os
import re
import shutil
import signal
import subprocess
import sys

from tests.fleet_cli_test import KINDS
from tests.support.cli import ROOT, main
from tests.support.expect import equal
from tests.support.programs import wait_until

SCRIPT = str(ROOT / "scripts" / "fleet_on_dask.py")
MACHINES, DAYS, PARTS = 40, 180, 8


class Cluster:
    """A scheduler and two workers on this machine, each a process of its own."""

    def __init__(self, folder):
        self.folder = folder
        self.processes = []

    def start(self, program, *arguments):
        log = open(self.folder / f"{len(self.processes)}.log", "wb")
        self.processes.append(subprocess.Popen([sys.executable, "-m", program, *arguments],
                                               cwd=self.folder, stdout=log, stderr=log,
                                               stdin=subprocess.DEVNULL))
        log.close()
        return self.processes[-1]

    def __enter__(self):
        address = self.folder / "scheduler.json"
        self.start("distributed.cli.dask_scheduler", "--host", "127.0.0.1", "--port", "0",
                   "--no-dashboard", "--scheduler-file", str(address))
        wait_until(address.exists, "the scheduler")
        self.address = re.search(r'"(tcp://[^"]+)"', address.read_text("utf-8")).group(1)
        self.workers = [self.start("distributed.cli.dask_worker", self.address, "--no-nanny",
                                   "--nthreads", "1", "--no-dashboard", "--local-directory",
                                   str(self.folder)) for _ in range(2)]
        return self

    def __exit__(self, *_):
        for process in self.processes:
            process.kill()
            process.wait()


def one_worker_that_is_at_work(cluster, results):
    """The first of the workers that has a part half done, once there are parts that are done."""
    found = []

    def look():
        names = os.listdir(results) if results.is_dir() else []
        done = sum(name.endswith(".part") for name in names)
        busy = {int(name.split(".")[-2]) for name in names if name.endswith(".tmp")
                and (results / name).stat().st_size > 0}
        found[:] = [worker for worker in cluster.workers if worker.pid in busy]
        return done >= 1 and found

    wait_until(look, "a worker at work")
    return found[0]


def test_a_worker_that_is_killed_changes_nothing(tool):
    (tool.folder / "all").mkdir()
    for number in range(MACHINES):
        tool.works("sample", "--kind", KINDS[number % len(KINDS)], "--days", str(DAYS), "--seed",
                   str(number), "--out", f"all/PC-{number:03}.dat")
    tool.write("all/broken.csv", "1,0\n2;1\n")
    asked = ("--json", "--out", "one.html", "--csv", "one.csv", "--partial", "one.part")
    one = tool.run("fleet", *asked, "all")
    equal(one.returncode, 0)
    logs = tool.folder / "logs"
    logs.mkdir()
    results = tool.folder / "results"
    with Cluster(logs) as cluster:
        command = [sys.executable, SCRIPT, "--scheduler", cluster.address, "--results",
                   str(results), "--tool", tool.command[0], "--parts", str(PARTS),
                   "all", "--", "--json", "--out", "many.html", "--csv", "many.csv", "--partial",
                   "many.part"]
        # The workers see the folder under this name.
        shutil.copytree(tool.folder / "all", logs / "all")
        with subprocess.Popen(command, cwd=tool.folder, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as running:
            killed = one_worker_that_is_at_work(cluster, results)
            killed.send_signal(signal.SIGKILL)
            killed.wait()
            output, errors = running.communicate()
        alive = [worker.poll() is None for worker in cluster.workers]
    equal(running.returncode, 0, errors.decode())
    equal(sorted(alive), [False, True], "one worker was killed")
    equal(output, one.stdout)
    for kind in ("html", "csv", "part"):
        equal(tool.read("many." + kind) == tool.read("one." + kind), True, kind)
    equal(sorted(os.listdir(results)), sorted(f"part-{number}-of-{PARTS}.part"
                                              for number in range(1, PARTS + 1)))


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
