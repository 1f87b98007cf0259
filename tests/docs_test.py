"""Tests that the pages tell the truth, as far as this computer can tell: every block says by its
language what it is, commands are run, and what they print, defaults, exit codes, keys, folders and
files are those of the programs and the sources. tests/docs_windows_test.py runs the commands for
Windows.

    python3 -m tests.docs_test --build build/native
"""

import functools
import sys
from pathlib import Path

from tests.docs import checks
from tests.docs.commands import Shell, mistakes_of, unknown_options, unknown_options_of_client
from tests.docs.tree import Tree, changed
from tests.support.cases import option_parser, run
from tests.support.cli import ROOT


def expect_no_mistakes(mistakes):
    found = list(mistakes)
    if found:
        raise AssertionError("\n" + "\n".join(found))


def commands_of_page(page, tool):
    with Shell(ROOT, tool) as shell:
        expect_no_mistakes(mistakes_of(page, shell))


def options_of_pages(tree, tool):
    with Shell(ROOT, tool) as shell:
        expect_no_mistakes(mistake for page in tree.pages.values()
                           for mistake in unknown_options(page, shell))


# Changes that make pages wrong, so that each check is seen to find what it is for: the check, the
# file, what stands in it, and what would.
BITES = {
    "a changed default of the sources is found": (
        "values_when_absent", "src/settings/setting_names.h",
        "kDefaultOptimizerIntervalDays = 30", "kDefaultOptimizerIntervalDays = 31"),
    "a changed default in a sentence is found": (
        "sentences", "src/settings/setting_names.h",
        "kDefaultHistoryLimitDays = 60", "kDefaultHistoryLimitDays = 61"),
    "a changed default of the package is found": (
        "values_by_hand", "packaging/default-settings.ini", "StrengthHigh=20", "StrengthHigh=30"),
    "a changed default of a choice is found": (
        "choices", "packaging/default-settings.ini", "HistoryLimit=180", "HistoryLimit=90"),
    "a changed exit code is found": (
        "exit_codes", "tools/ctl/command_failure.h", "NotReachable = 3", "NotReachable = 4"),
    "a changed exit code in a sentence is found": (
        "sentences", "tools/replay/replay.cpp", "kFailure = 2", "kFailure = 3"),
    "a changed key is found": (
        "keys", "docs/operating.md", r"HKLM\SOFTWARE\Corisk\Z7", r"HKLM\SOFTWARE\Corisc\Z7"),
    "a changed folder is found": (
        "folders", "src/settings/data_folder_windows.cpp", r"\\Brevan\\Z7", r"\\Brevan\\Z8"),
    "a changed name of a data file is found": (
        "data_files", "src/prediction/rates/rates_file.h", "rates.z7", "rate.z7"),
    "a changed version is found": ("package_names", "VERSION", "0.", "9."),
    "a block without a language is found": (
        "languages", "docs/installing.md", "```sh not-run\n./package\n", "```\n./package\n"),
    "a wrong word behind a language is found": (
        "languages", "docs/installing.md", "```sh not-run\n./package\n",
        "```sh later\n./package\n"),
    "a program that is not there is found": (
        "own_programs", "docs/installing.md", "```sh not-run\n./package\n",
        "```sh not-run\n./pack\n"),
    "a mark without its meaning is found": (
        "doubts", "docs/installing.md", "are marked (?)", "are marked"),
}


def bites(check, file, old, new):
    if list(getattr(checks, check)(Tree(ROOT))):
        raise AssertionError("there is a mistake without the change")
    with changed(ROOT, file, old, new) as tree:
        if not list(getattr(checks, check)(tree)):
            raise AssertionError(f"{check} does not find that {file} has {new!r} for {old!r}")


def bites_commands(tool, old, new, runs):
    """The same for a command in docs/dozewell-replay.md."""
    with changed(ROOT, "docs/dozewell-replay.md", old, new) as tree, Shell(ROOT, tool) as shell:
        mistakes = mistakes_of if runs else unknown_options
        if not list(mistakes(tree.pages["docs/dozewell-replay.md"], shell)):
            raise AssertionError(f"{new!r} for {old!r} is not found")


def options_of_client(tree, completion):
    expect_no_mistakes(mistake for page in tree.pages.values()
                       for mistake in unknown_options_of_client(page, completion))


def bites_client(completion, old, new):
    with changed(ROOT, "docs/dozewellctl.md", old, new) as tree:
        if not list(unknown_options_of_client(tree.pages["docs/dozewellctl.md"], completion)):
            raise AssertionError(f"{new!r} for {old!r} is not found")


def cases(tree, build):
    tool = build / "dozewell-replay"
    completion = (build / "manual" / "dozewellctl.bash").read_text("utf-8")
    for check in checks.CHECKS:
        yield check.__name__, lambda check=check: expect_no_mistakes(check(tree))
    for name, page in tree.pages.items():
        if any(block.language in ("sh", "console") for block in page.blocks):
            yield f"commands of {name}", functools.partial(commands_of_page, page, tool)
    yield "options of dozewell-replay", functools.partial(options_of_pages, tree, tool)
    yield "options of dozewellctl", functools.partial(options_of_client, tree, completion)
    for name, change in BITES.items():
        yield name, functools.partial(bites, *change)
    for name, old, new, runs in (
            ("a broken command is found", "--kind office --days", "--kind offices --days", True),
            ("a broken output is found", "FirstLastWeight is missing", "it is missing", True),
            ("a broken command in a sentence is found", "`dozewell-replay --help`",
             "`dozewell-replay lern --history h.csv`", False),
            ("a broken option is found", "--kind office --days", "--sort office --days", False)):
        yield name, functools.partial(bites_commands, tool, old, new, runs)
    for name, old, new in (
            ("a broken command of the client is found", "dozewellctl power set",
             "dozewellctl pow set"),
            ("a broken option of the client is found", "dozewellctl explain --at",
             "dozewellctl explain --when")):
        yield name, functools.partial(bites_client, completion, old, new)


def main():
    parser = option_parser(__doc__)
    parser.add_argument("--build", type=Path, required=True, help="folder of a native build")
    options = parser.parse_args()
    return run(list(cases(Tree(ROOT), options.build.resolve())), options.words)


if __name__ == "__main__":
    sys.exit(main())
