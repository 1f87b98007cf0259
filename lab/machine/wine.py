"""A Wine machine in a folder of its own, set up by scripts/wine.sh."""

import subprocess
from pathlib import Path

from machine.processes import Processes
from machine.waiting import Waiting

# The zone has daylight saving, so that scenarios of its changes need no other machine.
ZONE = "America/New_York"

_SCRIPT = Path(__file__).resolve().parents[2] / "scripts" / "wine.sh"
_QUIET = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}


class Wine:
    """`processes` are the machine's own, and `waiting` waits for what they do."""

    def __init__(self, folder, zone=ZONE):
        self.drive = folder / "drive_c"
        self.processes = Processes(f"WINEPREFIX={folder}")
        self.waiting = Waiting(self.processes)
        self._command, self._environment = _set_up(folder, zone)

    def create(self):
        """A machine with nothing on it, switched off."""
        self._call("create_wine")

    def boot(self):
        self._call("boot_wine")

    def switch_off(self):
        self._call("stop_wine")

    def run(self, program, *arguments):
        """Runs a program to its end, for its exit code and its output."""
        process = self.start(program, *arguments, stdout=subprocess.PIPE)
        output, _ = self.waiting.for_end(process, f"{program} does not end")
        return process.returncode, output

    def start(self, program, *arguments, **streams):
        """Starts a program, all of whose streams lead nowhere unless they are given."""
        return subprocess.Popen([*self._command, program, *arguments], env=self._environment,
                                cwd=self.drive, **{**_QUIET, **streams})

    def start_piped(self, program, *arguments):
        """Starts a program whose input, output and errors are the caller's."""
        pipe = subprocess.PIPE
        return self.start(program, *arguments, stdin=pipe, stdout=pipe, stderr=pipe)

    def _call(self, function):
        script = subprocess.Popen(["bash", "-c", f'source "$0"; {function}', _SCRIPT],
                                  env=self._environment, **_QUIET)
        self.waiting.for_end(script, f"{function} does not end")


def _set_up(folder, zone):
    """The command that runs a program on the machine, and its environment."""
    words = subprocess.run(
        ["bash", "-c", 'source "$0"; use_wine "$1" "$2"; '
                       'printf "%s\\0" ${#WINE[@]} "${WINE[@]}"; env -0', _SCRIPT, folder, zone],
        check=True, capture_output=True, text=True).stdout.split("\0")[:-1]
    length = 1 + int(words[0])
    return words[1:length], dict(word.split("=", 1) for word in words[length:])
