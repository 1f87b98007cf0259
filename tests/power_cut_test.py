"""Ends the process of a save, or has a call of the system fail, at every step of it, and then a
number of times at random: the old or the new content counts, never less, and a next start goes on.

    python3 -m tests.power_cut_test --program build/native/power_cut
    python3 -m tests.power_cut_test --program "wine build/windows/power_cut.exe" --kills 1000
"""

import functools
import os
import random
import shlex
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from tests.support import programs
from tests.support.cases import option_parser, run

SAVES = "history", "data", "rates"
SITUATIONS = "usual", "first", "torn", "held", "torn-held"
ENDED = 9
CHECKED_AT_ONCE = 50


class Program:
    def __init__(self, command, folder):
        words = shlex.split(command)
        self.command = [str(Path(word).resolve()) if Path(word).is_file() else word
                        for word in words]
        self.folder = folder

    def run(self, *arguments):
        return programs.run([*self.command, *arguments], cwd=self.folder, capture_output=True,
                            text=True, stdin=subprocess.DEVNULL)

    def start(self, *arguments):
        return subprocess.Popen([*self.command, *arguments], cwd=self.folder, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                stdin=subprocess.DEVNULL, start_new_session=True)

    def new_folder(self, name):
        (self.folder / name).mkdir()
        return name


def passes(program, *arguments):
    """The complaints of a run that is to have none."""
    result = program.run(*arguments)
    if result.returncode == 0:
        return []
    return [f"{' '.join(arguments[:3])}: exit code {result.returncode}",
            *(result.stdout + result.stderr).splitlines()]


def ended_at_every_call(program, save, situation):
    name = f"{save}-{situation}"
    steps = program.run("steps", save, situation, program.new_folder(name))
    if steps.returncode != 0 or int(steps.stdout) < 10:
        return [f"no steps: {steps}"]
    calls = int(steps.stdout)
    folders = []
    complaints = []
    for call in range(1, calls + 1):
        folders.append(program.new_folder(f"{name}-{call}"))
        ended = program.run("cut", save, situation, folders[-1], str(call))
        if ended.returncode != ENDED:
            complaints.append(f"call {call} of {calls}: {ended}")
    for first in range(0, calls, CHECKED_AT_ONCE):
        complaints += passes(program, "check", save, situation,
                             *folders[first:first + CHECKED_AT_ONCE])
    return complaints


def every_call_failed(program, save, situation):
    return passes(program, "fail", save, situation, program.new_folder(f"{save}-{situation}-fails"))


def medium_failed(program, save):
    return passes(program, "medium", save, program.new_folder(f"{save}-medium"))


def killed_at_random(program, number, chance):
    save = SAVES[number % 2]
    folder = program.new_folder(f"random-{number}")
    saving = program.start("loop", save, ("usual", "held")[number // 2 % 2], folder)
    # After the first save the times are the save's own, not those of a start.
    saved = int(saving.stdout.readline() or 0)
    time.sleep(chance.uniform(0, 0.2))
    os.killpg(saving.pid, signal.SIGKILL)
    rest, _ = saving.communicate()
    whole = rest[:rest.rfind("\n") + 1].split()
    saved = int(whole[-1]) if whole else saved
    return passes(program, "after", save, folder, str(saved))


def without_complaints(test, *arguments):
    complaints = test(*arguments)
    if complaints:
        raise AssertionError("\n".join(complaints[:20]))


def main():
    parser = option_parser(__doc__.splitlines()[0])
    parser.add_argument("--program", required=True)
    parser.add_argument("--kills", type=int, default=20, help="how many at random")
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    chance = random.Random(options.seed)
    with tempfile.TemporaryDirectory() as folder:
        program = Program(options.program, Path(folder))
        cases = []

        def case(name, *test):
            cases.append((name, functools.partial(without_complaints, *test)))

        for save in SAVES:
            for situation in SITUATIONS:
                case(f"{save}, {situation}: ended at every call",
                     ended_at_every_call, program, save, situation)
                case(f"{save}, {situation}: every call failed",
                     every_call_failed, program, save, situation)
            case(f"{save}: medium failed", medium_failed, program, save)
        for number in range(options.kills):
            case(f"kill {number} at random", killed_at_random, program, number, chance)
        return run(cases, options.words)


if __name__ == "__main__":
    sys.exit(main())
