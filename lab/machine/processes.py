"""The processes of a Wine machine or of a test, as the Linux kernel sees them."""

import os
from pathlib import Path
from typing import NamedTuple

_TICKS_PER_SECOND = os.sysconf("SC_CLK_TCK")
# Running or ready to run, and waiting for the disk.
_AT_WORK = "RD"


class Thread(NamedTuple):
    is_at_work: bool  # it runs, or would if it were given a processor or the disk
    computed: float   # seconds of processor time since its start


class Processes:
    """The processes that have one of some variables, given as NAME=VALUE, in their environment,
    except this one."""

    def __init__(self, *marks):
        self._marks = {mark.encode() for mark in marks}

    def threads(self, program=""):
        """The threads of a program, or all of them, by their ids."""
        return {int(folder.name): _thread(text)
                for folder, text in self._files_of_threads("stat", program)}

    def thread_runs(self, program):
        """How often each thread of a program was given a processor: for a thread that goes on to
        wait, the same number however long one looks."""
        runs = {}
        for folder, text in self._files_of_threads("status", program):
            status = dict(line.split(":\t", 1) for line in text.splitlines())
            runs[int(folder.name)] = (int(status["voluntary_ctxt_switches"]) +
                                      int(status["nonvoluntary_ctxt_switches"]))
        return runs

    def _files_of_threads(self, name, program):
        for process in Path("/proc").glob("[0-9]*"):
            try:
                if not self._is_ours(process, program):
                    continue
                for folder in (process / "task").iterdir():
                    yield folder, (folder / name).read_text()
            except OSError:
                continue  # it has ended, or is not ours to look at

    def _is_ours(self, process, program):
        if process.name == str(os.getpid()):
            return False
        command = (process / "cmdline").read_bytes().split(b"\0")[0]
        return (command.endswith(program.encode()) and
                not self._marks.isdisjoint((process / "environ").read_bytes().split(b"\0")))


def any_at_work(threads):
    return any(thread.is_at_work for thread in threads.values())


def _thread(stat):
    # The name, which comes before, is in parentheses and may have any characters.
    state, *numbers = stat.rpartition(")")[2].split()
    user, system = int(numbers[10]), int(numbers[11])
    return Thread(state in _AT_WORK, (user + system) / _TICKS_PER_SECOND)
