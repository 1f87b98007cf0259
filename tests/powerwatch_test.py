"""Tests dozewell-powerwatch from outside under Wine: installing, what it writes, removing.

    python3 -m tests.powerwatch_test --wine wine --folder build/windows

Works on the machine that WINEPREFIX names, on which the watch must not be installed. Wine has one
account for all services and sends them no power events, and it keeps no list of privileges: that
the watch asks for its account and gives privileges up is all that shows here.
"""

import functools
import os
import re
import shlex
import shutil
import subprocess
import sys
from datetime import datetime
from pathlib import Path

from tests.support import programs
from tests.support.cases import option_parser, run, tests_in
from tests.support.cli import ROOT
from tests.support.expect import contains, equal, matches

sys.path.append(str(ROOT / "lab"))
from steps.watch_file import COLUMNS, read_watch_file  # in that folder

SERVICE = "DozewellPowerwatch"
KEY = r"HKLM\SYSTEM\CurrentControlSet\Services" + "\\" + SERVICE
FOLDER = r"C:\ProgramData" + "\\" + SERVICE


class Machine:
    def __init__(self, wine, folder):
        self.wine = shlex.split(wine)
        self.programs = Path(folder).resolve()
        self.drive = Path(os.environ["WINEPREFIX"]) / "drive_c"
        self.folder = self.drive / "ProgramData" / SERVICE
        self.file = self.folder / "powerwatch.csv"

    def run(self, program, *arguments):
        """Exit code, output and errors."""
        done = programs.run([*self.wine, program, *arguments], cwd=self.drive,
                            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE)
        return done.returncode, done.stdout.decode(), done.stderr.decode()

    def watch(self, *arguments):
        return self.run(str(self.programs / "dozewell-powerwatch.exe"), *arguments)

    def state(self):
        """As the service control manager tells it, or None without the service."""
        code, text, _ = self.run("sc", "query", SERVICE)
        return re.search(r"STATE +: \d+ +(\w+)", text).group(1) if code == 0 else None

    def service_value(self, name):
        _, text, _ = self.run("reg", "query", KEY, "/v", name)
        found = re.search(rf"\b{name} +REG_\w+ +(.*\S)", text)
        return found.group(1) if found else None

    def install(self):
        equal(self.watch("install"),
              (0, rf"Watching. It writes to {FOLDER}\powerwatch.csv" + "\n", ""))

    def remove(self):
        equal(self.watch("remove"), (0, "Removed, with all that it wrote.\n", ""))

    def clean(self):
        self.watch("remove")
        shutil.rmtree(self.folder, ignore_errors=True)

    def lines(self):
        return self.file.read_bytes().decode("ascii").split("\r\n")


def test_installing_makes_a_service_of_the_account_local_service(machine):
    machine.install()
    equal(machine.state(), "RUNNING")
    equal([machine.service_value(name) for name in ("ObjectName", "ImagePath", "Start", "Type")],
          [r"NT AUTHORITY\LocalService", rf'"{FOLDER}\dozewell-powerwatch.exe"', "0x2", "0x10"])
    equal(sorted(file.name for file in machine.folder.iterdir()),
          ["dozewell-powerwatch.exe", "powerwatch.csv"])
    equal(machine.folder.stat().st_mode & 0o002, 0, "everybody may write to the folder")


def test_removing_deletes_service_and_folder(machine):
    machine.install()
    machine.remove()
    equal(machine.state(), None)
    equal(machine.folder.exists(), False, "folder")
    machine.remove()
    machine.install()
    equal(machine.state(), "RUNNING")


def test_each_control_is_on_the_disk_when_it_was_answered(machine):
    machine.install()
    equal(len(machine.lines()), 3)
    for command in ("stop", "start", "stop"):
        equal(machine.run("net", command, SERVICE)[0], 0)
    lines = machine.lines()
    equal(lines[0], COLUMNS)
    equal([line[:line.find(",,") + 1] for line in lines[1:]],
          ["0,0,", "1,0,", "", "0,0,", "1,0,", ""])
    for line in filter(None, lines[1:]):
        matches(line, r"\d,0,,\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3},"
                      r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z,\d+,\d*,\d*,\d*,\d*$")


def test_what_is_written_is_read_by_the_lab_and_by_the_import(machine):
    machine.install()
    equal(machine.run("net", "stop", SERVICE)[0], 0)
    watched = read_watch_file(machine.file)
    equal([(line.control, line.type) for line in watched], [(0, 0), (1, 0)])
    age = datetime.utcnow() - watched[0].utc
    equal(0 <= age.total_seconds() < 3600, True, f"the watch began {age} ago")
    code, out, err = machine.run(str(machine.programs / "dozewell-replay.exe"), "import",
                                 "--from-event-log", str(machine.file), "--out", "watched.dat",
                                 "--replace")
    equal((code, err), (0, ""))
    contains(out, "watched.dat: 2 records; from the watch: 2 records, ")


def test_a_second_installation_is_refused_and_harms_nothing(machine):
    machine.install()
    equal(machine.watch("install"),
          (1, "", "dozewell-powerwatch: the service exists already (error 1073)\n"))
    equal(machine.state(), "RUNNING")
    equal(machine.file.exists(), True, "file")


def test_a_folder_that_somebody_made_before_is_not_used(machine):
    machine.folder.mkdir()
    machine.folder.chmod(0o777)
    (machine.folder / "powerwatch.csv").write_text("theirs")
    code, out, err = machine.watch("install")
    equal((code, out), (1, ""))
    equal(err, rf"dozewell-powerwatch: {FOLDER}: exists already; look at what is in it, and "
               "delete it\n")
    equal(machine.state(), None)
    code, out, err = machine.watch("remove")
    equal((code, out), (1, ""))
    equal(err, rf"dozewell-powerwatch: {FOLDER}: others may change it, so it is left as it is" "\n")
    equal(machine.file.read_text(), "theirs")


def test_started_by_hand_it_says_what_it_is_for(machine):
    for arguments in ((), ("--help",), ("install", "now")):
        code, out, err = machine.watch(*arguments)
        equal((code, err), (2, ""))
        contains(out, "\n  dozewell-powerwatch install ")
    equal(machine.state(), None)


def _on_a_clean_machine(test, machine):
    machine.clean()
    try:
        test(machine)
    finally:
        machine.clean()


def main():
    parser = option_parser(__doc__)
    parser.add_argument("--wine", required=True, help="command that runs a Windows program")
    parser.add_argument("--folder", required=True, help="folder of the programs")
    options = parser.parse_args()
    machine = Machine(options.wine, options.folder)
    return run([(name, functools.partial(_on_a_clean_machine, test, machine))
                for name, test in tests_in(globals())], options.words)


if __name__ == "__main__":
    sys.exit(main())
