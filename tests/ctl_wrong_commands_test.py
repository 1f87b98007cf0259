"""Runs the wrong command lines of tests/wrong_commands/ctl.txt under Wine, on a machine without the
service.

    python3 -m tests.ctl_wrong_commands_test --wine "wine" --folder build/windows

Works on the machine that WINEPREFIX names: it empties this product's registry keys and data folder
there.
"""

import functools
import os
import shutil
import sys

from tests.support.cases import run
from tests.support.cli import HISTORY, ROOT, SETTINGS
from tests.support.client_machine import machine_and_words
from tests.support.expect import equal
from tests.support.wrong_commands import check, read_table

CONTENTS = {
    "h.csv": HISTORY,
    "s.ini": SETTINGS,
    "text": "Nothing that any command reads.\n",
    "page.xml": "<html>\n<body/></html>",
    "empty": "",
    "log.evtx": "ElfFile\0\0\0",
}


def lay_down_files(machine):
    machine.clean()
    machine.provision()
    for name, content in CONTENTS.items():
        (machine.scratch / name).write_text(content)
    replay = machine.program("dozewell-replay")
    for command in (("learn", "--history", "h.csv", "--settings", "s.ini", "--data", "d.z7"),
                    ("import", "--history", "h.csv", "--out", "h.dat")):
        equal(machine.run(replay, *command).returncode, 0)
    shutil.copy(ROOT / "tests" / "event_logs" / "spring.xml", machine.scratch / "log.xml")
    (machine.scratch / "cut.xml").write_bytes((machine.scratch / "log.xml").read_bytes()[:-20])
    machine.data.mkdir(parents=True)
    shutil.copy(machine.scratch / "d.z7", machine.data / "cpredict.z7")
    shutil.copy(machine.scratch / "h.dat", machine.data / "zs7state.dat")
    os.link(machine.data / "cpredict.z7", machine.scratch / "hard.z7")
    os.link(machine.data / "zs7state.dat", machine.scratch / "hard.dat")
    (machine.scratch / "folder").mkdir()


def main():
    machine, words = machine_and_words(__doc__)
    lay_down_files(machine)
    exit_code = run([(command.name(), functools.partial(check, command, "dozewellctl",
                                                        [machine.scratch, machine.data.parent],
                                                        machine.ctl))
                     for command in read_table("ctl.txt")], words)
    machine.clean()
    return exit_code


if __name__ == "__main__":
    sys.exit(main())
