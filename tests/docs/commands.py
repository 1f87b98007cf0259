"""Runs the commands of the pages on this computer, with what they need at hand, and compares what
they print with what the pages show."""

import re
import shutil
import subprocess
import tempfile
from pathlib import Path

from tests.support import programs
from tests.support.cli import SETTINGS

PROMPT = "$ "
GAP = "..."


class Shell:
    """A folder of its own for a page's commands, in which dozewell-replay is found by its name."""

    def __init__(self, root, tool):
        self.folder = Path(tempfile.mkdtemp(prefix="docs_test_"))
        self._root = root
        self._helps = {}
        (self.folder / "bin").mkdir()
        (self.folder / "bin" / "dozewell-replay").symlink_to(tool)
        self._put_files_there()

    def _put_files_there(self):
        """What a reader has at hand who follows the pages."""
        logs = self._root / "tests" / "event_logs"
        shutil.copy(logs / "week.xml", self.folder / "system.xml")
        watched = sorted((self._root / "lab" / "recordings").glob("*.csv"))[0]
        shutil.copy(watched, self.folder / "powerwatch.csv")
        self.run("dozewell-replay sample --kind office --days 60 --seed 1 --out office.csv\n"
                 "dozewell-replay import --history office.csv --out zs7state.dat\n"
                 "dozewell-replay learn --history zs7state.dat --data cpredict.z7\n")
        # Settings that lack what no predictor works without.
        (self.folder / "s.ini").write_text(
            re.sub("FirstLastWeight=.*\n", "", SETTINGS), "utf-8")

    def run(self, script):
        """Runs a script to its end or its first failure: its exit code, and all that it printed."""
        done = programs.run(["bash", "-euo", "pipefail", "-c", script], cwd=self.folder,
                            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT,
                            env={"PATH": f"{self.folder / 'bin'}:/usr/bin:/bin", "TZ": "UTC",
                                 "LC_ALL": "C.UTF-8", "HOME": str(self.folder)})
        return done.returncode, done.stdout.decode()

    def help_of(self, command):
        """What dozewell-replay says of a command."""
        if command not in self._helps:
            self._helps[command] = self.run(f"dozewell-replay {command} --help")[1]
        return self._helps[command]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.folder)


def mistakes_of(page, shell):
    """Runs the blocks of a page in their order."""
    for block in page.blocks:
        if block.language == "sh" and block.is_run:
            code, output = shell.run(block.text)
            if code != 0:
                yield f"{block.place}: exit code {code}\n{output}"
        elif block.language == "console" and block.is_run and "lab" not in block.words:
            for command, shown in sessions(block, PROMPT):
                _, output = shell.run(command)
                if not agrees(shown, output, "shape" in block.words):
                    yield f"{block.place}: {command}\nshown:\n{shown}\nprinted:\n{output}"


def sessions(block, prompt):
    """The commands of a console with what is shown below each."""
    found = []
    for line in block.text.splitlines(keepends=True):
        if line.startswith(prompt):
            found.append([line[len(prompt):].rstrip("\n"), ""])
        elif found:
            found[-1][1] += line
    return found


def agrees(shown, printed, only_shape=False):
    """Whether a program printed what is shown. A line of dots stands for any lines, and what
    follows the last line shown is left out by it. A shape is a text without its numbers."""
    if only_shape:
        shown, printed = shape(shown), shape(printed)
    pattern = ".*".join(re.escape(part) for part in re.split(rf"(?m)^{re.escape(GAP)}\n", shown))
    return re.fullmatch(pattern, printed, re.DOTALL) is not None


def shape(text):
    text = re.sub(r"\d+(?:[.,]\d+)*", "0", text)
    return re.sub(r"(?m)[ \t]+", " ", re.sub(r"(?m)[ \t]+$", "", text))


def named_commands(page, program):
    """What follows a program's name in sentences and in blocks, run or not, and where it stands."""
    texts = [(code.place, code.text) for code in page.codes]
    for block in page.blocks:
        if block.language in ("sh", "cmd", "console"):
            texts += [(block.place, line) for line in block.text.splitlines()]
    for place, text in texts:
        for command in re.findall(rf"(?:^|&& |[$>] ){program} ([^|>#&]*)", text):
            # Names in capitals stand for what a reader puts there.
            if command.split() and re.match("[a-z]", command):
                yield place, command


def unknown_options(page, shell):
    """Commands of dozewell-replay: each and its options are those of the program's own help."""
    for place, command in named_commands(page, "dozewell-replay"):
        word = command.split()[0]
        explained = shell.help_of(word)
        if f"Usage: dozewell-replay {word} " not in explained:
            yield f"{place}: dozewell-replay has no command {word}"
            continue
        for option in re.findall(r"--[\w-]+", command):
            if not re.search(rf"{option}\b", explained):
                yield f"{place}: dozewell-replay {word} has no {option}"


def unknown_options_of_client(page, completion):
    """The same for dozewellctl, which does not run here: they are those that its completion for
    bash offers."""
    options = {name: words.split() for name, words in
               re.findall(r'(?m)^    "([a-z -]+)"\) words="([^"]*)"', completion)}
    groups = {name.split()[0] for name in options if " " in name}
    for place, command in named_commands(page, "dozewellctl"):
        words = command.split()
        name = " ".join(words[:2]) if words[0] in groups else words[0]
        if name not in options and name not in groups:
            yield f"{place}: dozewellctl has no command {name}"
        for option in re.findall(r"--[\w-]+", command):
            if option not in options.get(name, ["--help"]):
                yield f"{place}: dozewellctl {name} has no {option}"
