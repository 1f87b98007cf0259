"""For the programs that run tables of wrong command lines: each must end with the table's exit code
and one line of error, and change nothing."""

import hashlib
import shlex
from dataclasses import dataclass

from tests.support.cli import ROOT
from tests.support.expect import contains, equal


@dataclass
class WrongCommand:
    exit_code: int
    error: str        # part of the error
    arguments: list

    def name(self):
        return shlex.join(self.arguments) or "no arguments"


def read_table(name):
    """The commands of a table in tests/wrong_commands."""
    commands = []
    for line in (ROOT / "tests" / "wrong_commands" / name).read_text().splitlines():
        if line and not line.startswith("#"):
            exit_code, error, arguments = (part.strip() for part in line.split("|", 2))
            commands.append(WrongCommand(int(exit_code), error, shlex.split(arguments)))
    names = [command.name() for command in commands]
    equal(len(names), len(set(names)), "the table has a command twice")
    return commands


def fingerprints(folder):
    """What a folder and those below it hold: a hash of each file."""
    return {str(path.relative_to(folder)):
            hashlib.sha256(path.read_bytes()).hexdigest() if path.is_file() else "folder"
            for path in folder.rglob("*")}


def check(command, program, folders, run):
    """Runs a command by `run`, which takes the arguments and returns exit code, standard output and
    standard error, and checks what came of it. Nothing in the folders may change."""
    before = [fingerprints(folder) for folder in folders]
    exit_code, out, err = run(*command.arguments)
    lines = err.splitlines(keepends=True)
    warning = program + ": warning: "
    errors = [line for line in lines if not line.startswith(warning)]
    equal(len(errors), 1, err)
    equal(lines[-1], errors[0])
    contains(errors[0], command.error)
    equal((errors[0].startswith(program + ": "), errors[0].endswith("\n"), out, exit_code),
          (True, True, "", command.exit_code), err)
    equal([fingerprints(folder) for folder in folders], before)
