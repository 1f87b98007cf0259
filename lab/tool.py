"""A command-line tool of the product, run on the machine as a user runs it."""

import shlex
from typing import NamedTuple

_SECONDS = 10  # that a run may take


class Answer(NamedTuple):
    """A run of a tool, from its start to its end."""

    exit_code: int
    output: str
    error: str
    step: object  # what the service did meanwhile


class Tool:
    """A command is one text, as it is typed, with quotation marks around what has blanks in it."""

    def __init__(self, wine, program, take_step, seconds=_SECONDS):
        self._wine = wine
        self._program = program
        self._take_step = take_step
        self._seconds = seconds

    def run(self, command, typed=""):
        """Runs a command to its end; `typed` is what its user answers to questions."""
        return self.begin(command).finish(typed)

    def begin(self, command):
        """Begins a command that may have to wait; Run.finish() waits until it has ended."""
        process = self._wine.start_piped(self._program, *shlex.split(command))
        return Run(process, self._take_step, self._seconds)


class Run:
    def __init__(self, process, take_step, seconds):
        self._process = process
        self._take_step = take_step
        self._seconds = seconds

    def has_ended(self):
        return self._process.poll() is not None

    def finish(self, typed=""):
        output, error = self._process.communicate(typed.encode(), timeout=self._seconds)
        return Answer(self._process.returncode, output.decode(), error.decode(), self._take_step())
