"""Programs that tests start, and waiting for what they do, however busy the computer is with other
work."""

import os
import signal
import subprocess

from lab.machine.processes import Processes
from lab.machine.waiting import Hang, Waiting
from tests.support.cases import Inconclusive

__all__ = ["WAITING", "Hang", "run", "wait_until"]


def _marks():
    """What marks the programs of a test by their environments: all that it starts inherit the
    first, and a Wine machine's own programs have the second."""
    os.environ["DOZEWELL_TEST"] = str(os.getpid())
    return [f"{name}={os.environ[name]}" for name in ("DOZEWELL_TEST", "WINEPREFIX")
            if name in os.environ]


WAITING = Waiting(Processes(*_marks()))


def run(command, capture_output=False, check=False, **options):
    """Does what subprocess.run does; fails when the program hangs, by no limit of time. Wine kills a
    program that needs more than a second to end, as on a busy computer, and its exit code is lost:
    that is Inconclusive."""
    typed = options.pop("input", None)
    if typed is not None:
        options["stdin"] = subprocess.PIPE
    if capture_output:
        options.update(stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    with subprocess.Popen(command, **options) as process:
        try:
            output, errors = WAITING.for_end(process, f"{command} does not end", typed)
        except BaseException:
            process.kill()
            raise
    if process.returncode == -signal.SIGKILL:
        raise Inconclusive(f"{command} was killed")
    done = subprocess.CompletedProcess(command, process.returncode, output, errors)
    if check:
        done.check_returncode()
    return done


def wait_until(condition, what):
    """Waits for what nothing tells the end of; `what` says what did not happen."""
    WAITING.until(condition, what)
