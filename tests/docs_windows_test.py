"""Runs the commands of the pages for Windows on a machine in the lab, and compares what they print
with what the pages show. What the pages say without a machine is tested by tests/docs_test.py.

    python3 -m tests.docs_windows_test --build build/windows
"""

import contextlib
import functools
import re
import shutil
import sys
from pathlib import Path

from tests.docs.commands import agrees, sessions
from tests.docs.pages import read_pages
from tests.support import programs
from tests.support.cases import run
from tests.support.cli import ROOT
from tests.support.installer_packages import Package

sys.path.insert(0, str(ROOT / "lab"))
from machine.client_view import KERNEL_POWER, SLEPT, WOKE  # in that folder
from machine.installation import Installation
from machine.machine import START_OF_TIME, Machine
from machine.options import machine_options
from steps.living import machine_that_knows_office_hours

PROMPT = "> "
# A change is that of the shell which the page's reader types at.
HEAD = """\
@echo off
cd /d C:\\pages
{path}
"""
LINE = """\
{line}
if errorlevel 1 (echo This line failed: {number}& exit /b 1)
"""


class Desk:
    """Where the reader of a page sits: a machine with the files that the page speaks of."""

    def __init__(self, installation, machine):
        self._installation = installation
        self._machine = machine
        self._folder = installation.wine.drive / "pages"
        self._code = ""

    @contextlib.contextmanager
    def ready_for(self, page):
        self._machine.reset()
        shutil.rmtree(self._folder, ignore_errors=True)
        self._folder.mkdir()
        # Folders of the reader's own that pages name.
        (self._installation.wine.drive / "metrics").mkdir(exist_ok=True)
        self._make_second_drive()
        if any("msiexec" in block.text for block in blocks_to_run(page)):
            with self._machine.package.at_hand() as package:
                shutil.copy(package, self._folder)
                self._code = Package(Path(package)).properties["ProductCode"]
                yield
        else:
            self._code = ""
            self._log_some_days()
            machine_that_knows_office_hours(self._machine)
            self._machine.restart_service()
            for folder in self._folder, self._machine.data_folder:
                shutil.copy(ROOT / "packaging" / "default-settings.ini", folder / "FILE")
            # What a reader has copied from the machine.
            shutil.copy(self._machine.data_folder / "cpredict.z7", self._folder)
            yield

    def _make_second_drive(self):
        folder = self._installation.folder / "second drive"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        letter = self._installation.wine.drive.parent / "dosdevices" / "d:"
        letter.unlink(missing_ok=True)
        letter.symlink_to(folder)

    def _log_some_days(self):
        """Windows' own log of the days before the service was there."""
        for day in (1, 2):
            for time, event in (("08:00", WOKE), ("18:00", SLEPT)):
                self._machine.clock.set(f"2026-01-0{day} {time}")
                self._machine.client_view.log_system_event(KERNEL_POWER, event)
        self._machine.clock.set(START_OF_TIME)

    def run(self, lines, typed=""):
        """Runs lines as they are typed in a command prompt until one fails: the exit code, and all
        that they printed."""
        build = str(self._installation.build).replace("/", "\\")
        # The installer changes the path, which a new command prompt knows.
        path = "" if self._code else f"set PATH=Z:{build};%PATH%"
        lines = [line.replace("{ProductCode}", self._code) for line in lines]
        script = HEAD.format(path=path) + "".join(
            LINE.format(line=line, number=number) for number, line in enumerate(lines, 1))
        (self._folder / "page.bat").write_bytes(script.replace("\n", "\r\n").encode())
        wine = self._installation.wine
        process = wine.start_piped("cmd", "/c", "C:\\pages\\page.bat")
        output, errors = wine.waiting.for_end(process, "the lines do not end", typed.encode())
        text = (output + errors).decode(errors="replace").replace("\r\n", "\n")
        return process.returncode, text


def blocks_to_run(page):
    """Commands for Windows."""
    return [block for block in page.blocks if block.is_run and
            (block.language == "cmd" or block.language == "console" and
             block.text.startswith(PROMPT))]


def commands_work(page, desk):
    mistakes = []
    with desk.ready_for(page):
        for block in blocks_to_run(page):
            if block.language == "cmd":
                code, output = desk.run(block.text.splitlines(), "y\n")
                if code != 0:
                    mistakes.append(f"{block.place}: exit code {code}\n{output}")
                continue
            for command, shown in sessions(block, PROMPT):
                _, output = desk.run([command], "y\n")
                output = re.sub("This line failed: .*\n", "", output)
                if not agrees(shown, output, "shape" in block.words):
                    mistakes.append(f"{block.place}: {command}\nshown:\n{shown}\n"
                                    f"printed:\n{output}")
    if mistakes:
        raise AssertionError("\n" + "\n".join(mistakes))


def command_of_the_tree_shows(block):
    """Commands of the sources' folder that need the lab."""
    for command, shown in sessions(block, "$ "):
        done = programs.run(["bash", "-c", command], cwd=ROOT, capture_output=True)
        if not agrees(shown, done.stdout.decode()):
            raise AssertionError(f"{block.place}: {command}\n{done.stderr.decode()}\n"
                                 f"shown:\n{shown}\nprinted:\n{done.stdout.decode()}")


def a_command_that_fails_is_found(desk):
    page = read_pages(ROOT)["docs/dozewellctl.md"]
    with desk.ready_for(page):
        for line in ("dozewellctl statis", "dozewellctl power set dc hibernate-after 3x",
                     "net start NoService"):
            if desk.run([line])[0] == 0:
                raise AssertionError(f"{line} does not fail")


def cases(desk):
    for name, page in read_pages(ROOT).items():
        if blocks_to_run(page):
            yield f"commands of {name}", functools.partial(commands_work, page, desk)
        for block in page.blocks:
            if "lab" in block.words:
                yield (f"commands of {name} in the tree",
                       functools.partial(command_of_the_tree_shows, block))
    yield "a command that fails is found", functools.partial(a_command_that_fails_is_found, desk)


def main():
    parser = machine_options(__doc__, "docs-lab")
    parser.add_argument("words", nargs="*", help="parts of names; all cases without any")
    options = parser.parse_args()
    with Installation(options.folder, options.build) as installation:
        return run(list(cases(Desk(installation, Machine(installation)))), options.words)


if __name__ == "__main__":
    sys.exit(main())
