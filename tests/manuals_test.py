"""Tests the manual pages and the completions that are written from the tools' command lines: they
are installed where they belong, other programs find nothing wrong in them, they have all commands,
and bash completes by them. What they offer in PowerShell is not tested.

    python3 -m tests.manuals_test --build build/native
"""

import functools
import os
import pty
import re
import select
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from tests.support import programs
from tests.support.cases import option_parser, run, tests_in
from tests.support.expect import contains, equal

TOOLS = ("dozewellctl", "dozewell-replay")


def output_of(*command, **options):
    done = programs.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    equal(done.returncode, 0, done.stdout.decode())
    return done.stdout.decode()


def test_everything_is_installed_where_it_belongs(installed):
    equal(sorted(str(path.relative_to(installed)) for path in installed.rglob("*")
                 if path.is_file()),
          ["bin/dozewell-replay", "share/bash-completion/completions/dozewell-replay",
           "share/bash-completion/completions/dozewellctl",
           "share/dozewell/dozewell-replay.completion.ps1",
           "share/dozewell/dozewellctl.completion.ps1",
           "share/man/man1/dozewell-replay.1", "share/man/man1/dozewellctl.1"])


def test_nothing_is_wrong_in_the_manual_pages(installed):
    for tool in TOOLS:
        page = installed / "share" / "man" / "man1" / f"{tool}.1"
        equal(output_of("mandoc", "-Tlint", "-Wwarning", page), "", tool)
        equal(output_of("groff", "-man", "-ww", "-z", "-Tutf8", page), "", tool)


def test_the_manual_page_has_each_command_of_the_help_with_its_options(installed):
    tool = installed / "bin" / "dozewell-replay"
    shown = manual(installed, "dozewell-replay")
    commands = re.findall(r"(?m)^  ([a-z][\w-]*) +\S", output_of(tool, "--help").partition(
        "Commands:")[2].partition("Example")[0])
    equal(len(commands) > 10, True, "commands of the help")
    for command in commands:
        section = re.search(rf"(?m)^   {command}\b(.*?)(?=^   \w|^\w)", shown, re.DOTALL).group()
        for option in re.findall(r"(?m)^  (--[\w-]+)", output_of(tool, command, "--help")):
            contains(section, option)


def manual(installed, tool):
    page = installed / "share" / "man" / "man1" / f"{tool}.1"
    return output_of("man", "-l", page, env={**os.environ, "MANWIDTH": "100", "LC_ALL": "C.UTF-8",
                                             "MANPAGER": "cat"})


def test_the_manual_page_of_the_client_has_what_its_table_has(installed):
    shown = " ".join(manual(installed, "dozewellctl").split())
    for text in ("power set SOURCE SETTING VALUE", "dozewellctl power set dc hibernate-after 3h",
                 "3 the service does not answer", "dozewell-replay(1)"):
        contains(shown, text)


def offered(installed, *words, folder="/"):
    """What is offered for the last of these words."""
    tool = words[0]
    script = installed / "share" / "bash-completion" / "completions" / tool
    lines = (f'source "{script}"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); '
             f'_{tool.replace("-", "_")}; printf "%s\\n" "${{COMPREPLY[@]}}"')
    return output_of("bash", "-c", lines, "bash", *words, cwd=folder).split()


def test_commands_and_their_options_are_offered(installed):
    equal(offered(installed, "dozewellctl", "re"), ["reset-history", "report"])
    equal(offered(installed, "dozewellctl", "wake", ""), ["get", "set", "raw"])
    equal(offered(installed, "dozewellctl", "power", "set", "d"), ["dc"])
    equal(offered(installed, "dozewellctl", "power", "set", "dc", "h"),
          ["hibernate-after", "hybrid-sleep"])
    equal(offered(installed, "dozewellctl", "disable", "--y"), ["--yes"])
    equal(offered(installed, "dozewell-replay", "sample", "--kind", ""),
          ["office", "home", "shift", "erratic"])
    equal(offered(installed, "dozewell-replay", "sample", "--days", ""), [])
    equal(offered(installed, "dozewell-replay", "learn", "--h"), ["--history", "--help"])
    equal(offered(installed, "dozewell-replay", "nothing", ""), [])


def test_files_are_offered_where_a_file_is_named(installed):
    with tempfile.TemporaryDirectory() as folder:
        Path(folder, "history.csv").touch()
        equal(offered(installed, "dozewell-replay", "learn", "--history", "his", folder=folder),
              ["history.csv"])
        equal(offered(installed, "dozewellctl", "report", "--out", "", folder=folder),
              ["history.csv"])


def test_a_shell_completes_what_its_user_types(installed):
    script = installed / "share" / "bash-completion" / "completions" / "dozewellctl"
    process, terminal = pty.fork()
    if process == 0:
        os.execvpe("bash", ["bash", "--norc", "--noprofile", "-i"],
                   {**os.environ, "PS1": "ready> ", "TERM": "dumb", "INPUTRC": "/dev/null"})
    try:
        os.write(terminal, f"source '{script}'; echo sour''ced\n".encode())
        read_until(terminal, "sourced")
        os.write(terminal, b"echo dozewellctl; : dozewellctl; dozewellctl pow\t")
        read_until(terminal, "dozewellctl power ")
        os.write(terminal, b"se\t")
        read_until(terminal, "set ")
    finally:
        os.close(terminal)
        os.waitpid(process, 0)


def read_until(terminal, text):
    shown, end = "", time.monotonic() + 60
    while text not in shown:
        if time.monotonic() > end or not select.select([terminal], [], [], 60)[0]:
            raise AssertionError(f"{shown!r} lacks {text!r}")
        shown += os.read(terminal, 4096).decode()


def test_nothing_is_wrong_in_the_scripts_for_bash(installed):
    for tool in TOOLS:
        script = installed / "share" / "bash-completion" / "completions" / tool
        equal(output_of("shellcheck", script), "", tool)


def main():
    parser = option_parser(__doc__)
    parser.add_argument("--build", type=Path, required=True, help="folder of a native build")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="manuals_test_") as folder:
        output_of("cmake", "--install", options.build.resolve(), "--prefix", folder)
        return run([(name, functools.partial(test, Path(folder)))
                    for name, test in tests_in(globals())], options.words)


if __name__ == "__main__":
    sys.exit(main())
