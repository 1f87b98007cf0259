"""For the programs that test the command line of dozewell-replay from outside: the tool, run in a
folder of its own for each case, and the example that most of them start from."""

import functools
import os
import re
import shlex
import shutil
import struct
import subprocess
import tempfile
from pathlib import Path

from tests.support import programs
from tests.support.cases import option_parser, run, tests_in
from tests.support.expect import equal

ROOT = Path(__file__).resolve().parents[2]
DAY = 86400

# A day of half hours, in use from 08:00 to 12:00 on two days: figures can be worked out by hand. A
# search has no sets to try.
SETTINGS = """\
[Settings]
TimeResolution=30
[CyclicProbabilityPredictor]
DaysInCycle=1
MinutesInDay=1440
FirstLastWeight=2
SecondLastWeight=1
AgregationWeight=1
StrengthHigh=70
StrengthLow=30
DayGrouping=0
StrengthHighRange=
StrengthLowRange=
FirstLastWeightRange=
SecondLastWeightRange=
DayGroupingRange=
WR=
Strength=
"""
HISTORY = """\
epoch_wallclock_seconds,asleep
28800,0
43200,1
115200,0
129600,1
"""
# The last key of a document, or of each object in a list of a machine that has a name.
IDENTITY = re.compile(r',"identity":\{[^{}]*\}(?=[}\]])')


class Tool:
    """The program under test. Each case has a folder of its own, in which it is started."""

    def __init__(self, command):
        words = shlex.split(command)
        self.command = [str(Path(word).resolve()) if Path(word).is_file() else word
                        for word in words]
        self.is_native = not words[-1].endswith(".exe")
        self.folder_reason = "Is a directory" if self.is_native else "Permission denied"
        self.environment = {**os.environ, "LC_ALL": "C.UTF-8"}
        self.environment.setdefault("WINEDEBUG", "-all")
        self.folder = Path()

    def run(self, *arguments, **options):
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("stderr", subprocess.PIPE)
        options.setdefault("env", self.environment)
        return programs.run([*self.command, *arguments], cwd=self.folder, **options)

    def works(self, *arguments, warnings=()):
        """Runs without an error and returns what was printed, with --json without the machine's
        identity."""
        done = self.run(*arguments)
        expected = "".join("dozewell-replay: warning: %s\n" % warning for warning in warnings)
        equal(done.stderr.decode(), expected)
        equal(done.returncode, 0)
        out = done.stdout.decode()
        return IDENTITY.sub("", out) if "--json" in arguments else out

    def fails(self, error, *arguments, warnings=(), **options):
        """Fails with an error, and prints nothing but one line for it and the warnings."""
        done = self.run(*arguments, **options)
        lines = ["warning: " + warning for warning in warnings] + [error]
        equal(done.stderr.decode(), "".join("dozewell-replay: %s\n" % line for line in lines))
        equal(done.stdout or b"", b"")
        equal(done.returncode, 2)

    def write(self, name, content):
        data = content.encode() if isinstance(content, str) else content
        (self.folder / name).write_bytes(data)

    def read(self, name):
        return (self.folder / name).read_bytes()

    def files(self):
        return {str(path.relative_to(self.folder)): path.read_bytes()
                for path in self.folder.rglob("*") if path.is_file()}

    def example(self):
        """Writes the example history and its settings, and learns it."""
        self.write("s.ini", SETTINGS)
        self.write("h.csv", HISTORY)
        return self.works("learn", "--history", "h.csv", "--settings", "s.ini", "--data", "d.z7")


WRONG_TIME = '%s: not a local time "YYYY-MM-DD HH:MM" or UTC seconds since 1970: '


def record(time, asleep, reserved=0):
    return struct.pack("<dII", time, asleep, reserved)


def _in_a_folder_of_its_own(test, tool):
    tool.folder = Path(tempfile.mkdtemp(prefix="replay_cli_"))
    try:
        test(tool)
    finally:
        shutil.rmtree(tool.folder)


def main(names, description):
    """Runs the tests of a program, given as its globals()."""
    parser = option_parser(description)
    parser.add_argument("--tool", required=True, help="command that starts dozewell-replay")
    options = parser.parse_args()
    tool = Tool(options.tool)
    return run([(name, functools.partial(_in_a_folder_of_its_own, test, tool))
                for name, test in tests_in(names)], options.words)
