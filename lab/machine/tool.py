"""A command-line program, run on the machine as a user runs it."""

import re
import shlex
from typing import NamedTuple

# The last key of each document, or of each object in a list.
IDENTITY = re.compile(r',"identity":\{[^{}]*\}(?=[}\]])')


class Answer(NamedTuple):
    """A run of a tool, from its start to its end."""

    exit_code: int
    output: str  # without the machine's identity, which ends each document
    error: str
    step: object  # what the service did meanwhile


class Tool:
    """A command is one text, as it is typed, with quotation marks around what has blanks in it."""

    def __init__(self, wine, program, take_step):
        self._wine = wine
        self._program = program
        self._take_step = take_step

    def run(self, command, typed=""):
        """Runs a command to its end; `typed` is what its user answers to questions."""
        return self.begin(command).finish(typed)

    def begin(self, command):
        """Begins a command that may have to wait; Run.finish() waits until it has ended."""
        process = self._wine.start_piped(self._program, *shlex.split(command))
        return Run(process, self._wine.waiting, command, self._take_step)


class Run:
    def __init__(self, process, waiting, command, take_step):
        self._process = process
        self._waiting = waiting
        self._what = f"{command!r} does not end"
        self._watch = waiting.watch(self._what)
        self._take_step = take_step

    def has_ended(self):
        """To be asked often by a caller who does other things until then."""
        self._watch.look()
        return self._process.poll() is not None

    def finish(self, typed=""):
        output, error = self._waiting.for_end(self._process, self._what, typed.encode())
        return Answer(self._process.returncode, IDENTITY.sub("", output.decode()), error.decode(),
                      self._take_step())
