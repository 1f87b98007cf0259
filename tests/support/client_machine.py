"""For the programs that test dozewellctl from outside under Wine: the machine that WINEPREFIX names,
with the client and the service on it. The tests empty this product's registry keys and data folder
there."""

import contextlib
import functools
import os
import re
import shlex
import shutil
import signal
import subprocess
from pathlib import Path

from tests.support import programs
from tests.support.cases import option_parser, run, tests_in
from tests.support.cli import IDENTITY, SETTINGS
from tests.support.expect import equal
from tests.support.programs import wait_until

ROOT_KEY = r"HKLM\SOFTWARE\Corisk\Z7"
SECTION = r"\Predictors\CyclicProbabilityPredictor"
NOT_INSTALLED = "the service is not installed; its installer package installs it"


class Machine:
    """The Wine machine and the programs on it."""

    def __init__(self, wine, folder):
        self.wine = shlex.split(wine)
        self.programs = Path(folder).resolve()
        drive = Path(os.environ["WINEPREFIX"]) / "drive_c"
        self.data = drive / "ProgramData" / "Brevan" / "Z7"
        self.scratch = drive / "ctl_test"

    def start(self, program, *arguments, **options):
        return subprocess.Popen([*self.wine, program, *arguments], cwd=self.scratch, **options)

    def run(self, program, *arguments, **options):
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", subprocess.PIPE)
        return programs.run([*self.wine, program, *arguments], cwd=self.scratch,
                            stderr=subprocess.PIPE, **options)

    def program(self, name):
        return str(self.programs / (name + ".exe"))

    def ctl(self, *arguments, **options):
        done = self.run(self.program("dozewellctl"), *arguments, **options)
        return done.returncode, (done.stdout or b"").decode(), done.stderr.decode()

    def works(self, *arguments, warnings=(), **options):
        """Runs without an error and returns what was printed, with --json without the machine's
        identity."""
        code, out, err = self.ctl(*arguments, **options)
        equal(err, "".join("dozewellctl: warning: %s\n" % warning for warning in warnings))
        equal(code, 0)
        return IDENTITY.sub("", out) if "--json" in arguments else out

    def fails(self, expected_code, error, *arguments, **options):
        """Fails with an error, and prints nothing but one line for it."""
        code, out, err = self.ctl(*arguments, **options)
        equal(err, "dozewellctl: %s\n" % error)
        equal(code, expected_code)
        equal(out, "")

    def reg(self, *arguments):
        return self.run("reg", *arguments)

    def write_setting(self, key, name, kind, data):
        done = self.reg("add", ROOT_KEY + key, "/v", name, "/t", kind, "/d", str(data), "/f")
        equal(done.returncode, 0)

    def read_setting(self, key, name):
        """The value's text, or None."""
        done = self.reg("query", ROOT_KEY + key, "/v", name)
        found = re.search(r"\b%s\s+REG_\w+\s+(\S+)" % name, done.stdout.decode())
        return found.group(1) if found else None

    def provision(self, attempts=0):
        """The settings of SETTINGS, and a start gate that opens after so many attempts."""
        self.write_setting("\\Default", "TimeResolution", "REG_DWORD", 30)
        self.write_setting("\\Default", "TotalAttempts", "REG_DWORD", attempts)
        self.write_setting("\\Default", "CurrentAttempt", "REG_DWORD", 0)
        for name, value in re.findall(r"^(\w+)=(\d+)$", SETTINGS, re.MULTILINE)[1:]:
            self.write_setting("\\Default" + SECTION, name, "REG_SZ", value)

    @contextlib.contextmanager
    def service(self):
        """A service in a console for as long as the context lasts."""
        process = self.start(self.program("DozewellService"), "-local", stdin=subprocess.DEVNULL,
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wait_until(lambda: self.ctl("ping")[0] == 0, "the service does not answer")
            yield
        finally:
            # The service sees this as Ctrl+C.
            process.send_signal(signal.SIGINT)
            try:
                programs.WAITING.for_end(process, "the service does not end")
            except programs.Hang:
                process.kill()
                process.wait()
                raise

    def clean(self):
        shutil.rmtree(self.data.parent, ignore_errors=True)
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir()
        self.reg("delete", ROOT_KEY, "/f")


def await_controller(machine):
    wait_until(lambda: machine.read_setting("\\Current", "ServiceFeedback") == "0x1",
               "the controller is not started")


def machine_and_words(description):
    """The machine that the options of a test program name, and the words that choose cases."""
    parser = option_parser(description)
    parser.add_argument("--wine", required=True, help="command that starts a Windows program")
    parser.add_argument("--folder", required=True, help="folder of the programs")
    options = parser.parse_args()
    if "WINEPREFIX" not in os.environ:
        parser.error("WINEPREFIX names no machine that may be changed")
    return Machine(options.wine, options.folder), options.words


def _on_a_clean_machine(test, machine):
    machine.clean()
    test(machine)


def main(names, description):
    """Runs the tests of a program, given as its globals(), each on a clean machine."""
    machine, words = machine_and_words(description)
    exit_code = run([(name, functools.partial(_on_a_clean_machine, test, machine))
                     for name, test in tests_in(names)], words)
    machine.clean()
    return exit_code
