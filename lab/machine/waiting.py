"""Waiting for what the machine does, however busy the computer is with other work."""

import subprocess
import time

from .processes import any_at_work

_REST_SECONDS = 60
_COMPUTING_SECONDS = 300
_LOOK_SECONDS = 0.5

# A pause is a fiftieth of what was waited until then, so that pauses hardly add to a wait.
_PART_OF_THE_WAIT = 1 / 50
_SHORTEST_PAUSE, _LONGEST_PAUSE = 0.0005, 0.05


class Hang(Exception):
    """What was waited for is not going to happen."""


class Waiting:
    """Waits on one machine. The one rule for all of them: a wait fails when the machine has rested
    in it for a minute, or has computed in it for five. It rests unless two looks in a row find a
    thread at work, and one that waits for a processor or the disk is at work. How long a wait takes
    by the clock means nothing."""

    def __init__(self, processes, rest_seconds=_REST_SECONDS, computing_seconds=_COMPUTING_SECONDS,
                 look_seconds=_LOOK_SECONDS):
        self._processes = processes
        self._limits = rest_seconds, computing_seconds, look_seconds

    def watch(self, what):
        """Watches over a wait that begins now; `what` says what has not happened yet."""
        return Watch(self._processes, what, *self._limits)

    def until(self, condition, what):
        """Waits until the condition holds, and gives its value."""
        watch = self.watch(what)
        start = time.monotonic()
        while not (value := condition()):
            waited = time.monotonic() - start
            time.sleep(min(max(waited * _PART_OF_THE_WAIT, _SHORTEST_PAUSE), _LONGEST_PAUSE))
            # Before the condition is asked again, since asking may put the machine to work.
            watch.look()
        return value

    def for_end(self, process, what, typed=None):
        """Waits until a process has ended, and gives its output and errors."""
        watch = self.watch(what)
        while True:
            try:
                return process.communicate(typed, timeout=watch.look_seconds)
            except subprocess.TimeoutExpired:
                typed = None  # it was handed over
                watch.look()


class Watch:
    """Looks after one wait."""

    def __init__(self, processes, what, rest_seconds, computing_seconds, look_seconds):
        self._processes = processes
        self._what = what
        self._rest_seconds = rest_seconds
        self._computing_seconds = computing_seconds
        self.look_seconds = look_seconds
        self._next_look = time.monotonic() + look_seconds
        self._threads = None  # at the last look
        self._rested = 0
        self._computed = 0

    def look(self):
        """To be called often while the wait goes on; throws Hang when it is in vain."""
        if time.monotonic() < self._next_look:
            return
        threads = self._processes.threads()
        if self._threads is not None:
            self._compare(self._threads, threads)
        self._threads = threads
        self._next_look = time.monotonic() + self.look_seconds

    def _compare(self, before, now):
        # Looks are counted and not the clock, since the test itself may not get a processor.
        self._rested = (0 if any_at_work(before) and any_at_work(now)
                        else self._rested + self.look_seconds)
        self._computed += sum(seen.computed - (before[thread].computed if thread in before else 0)
                              for thread, seen in now.items())
        if self._rested >= self._rest_seconds:
            raise Hang(f"{self._what}: nothing was at work for {self._rest_seconds} s")
        if self._computed >= self._computing_seconds:
            raise Hang(f"{self._what}: {self._computing_seconds} s of computing did not lead there")
