"""Runs of the replay tool whose answers the model knows, and what is wrong with the tool's."""

import functools
import json
import math
import os
import re
import shlex
import shutil
import struct
import subprocess
import tempfile
from dataclasses import dataclass, field
from pathlib import Path

from tests.support import programs
from tests.support.cases import option_parser
from tests.support.cases import run as run_cases


@dataclass
class Run:
    """One call of the tool in a case's folder and its expected outcome."""
    arguments: list
    exit_code: object = 0            # None: either 0 or 2 is right
    stdout: object = None            # None: any text
    outputs: dict = field(default_factory=dict)  # name to content; None: must not exist
    error: str = ""                  # the engine's text, part of the one line on stderr
    warnings: object = 0             # lines on stderr that are no error; None: any number
    reported: object = None          # a number that the output must contain
    inputs: dict = field(default_factory=dict)   # name to content, written before the run
    second_tool: bool = True


@dataclass
class Answer:
    exit_code: object
    stdout: bytes
    stderr: list     # without warnings of damaged histories
    damaged: set     # names of the histories that the tool says are damaged
    outputs: dict


class Tool:
    """A command to run; `noise` are lines on stderr that are not the tool's but Wine's."""

    def __init__(self, command):
        words = shlex.split(command)
        self.command = [str(Path(w).resolve()) if Path(w).is_file() else w for w in words]
        self.environment = dict(os.environ)
        self.environment.setdefault("WINEDEBUG", "-all")
        self.noise = set(self.start(["--help"], ".")[2])

    def start(self, arguments, folder):
        """Exit code, stdout and stderr. The code is a text when the tool did not end."""
        # Not pipes, since Wine's services may inherit one and keep it open.
        with tempfile.TemporaryFile() as stdout, tempfile.TemporaryFile() as stderr:
            try:
                code = programs.run(self.command + arguments, cwd=folder, env=self.environment,
                                    stdin=subprocess.DEVNULL, stdout=stdout,
                                    stderr=stderr).returncode
            except (OSError, programs.Hang) as error:
                code = str(error)
            stdout.seek(0)
            stderr.seek(0)
            return code, stdout.read(), stderr.read().decode(errors="replace").splitlines()

    def answer(self, run, folder):
        for name, content in run.inputs.items():
            write_or_remove(folder / name, content)
        for name in run.outputs:
            write_or_remove(folder / name, None)
        code, stdout, stderr = self.start(run.arguments, folder)
        # Which keys a command asks for is not the model's business.
        lines = [line for line in stderr if line.strip() and line not in self.noise
                 and not re.fullmatch(r".*: lacks [\w, ]+; a settings file replaces .*", line)]
        damaged = {line: found.group(1) for line in lines
                   if (found := re.search(r"warning: (.+): damaged: ", line))}
        lines = [line for line in lines if line not in damaged]
        outputs = {name: (folder / name).read_bytes() if (folder / name).exists() else None
                   for name in run.outputs}
        return Answer(code, stdout, lines, set(damaged.values()), outputs)


def write_or_remove(path, content):
    if content is None:
        path.unlink(missing_ok=True)
    else:
        path.write_bytes(content)


def is_damaged(history):
    """Whether a zs7state.dat has anything that the service would not have written."""
    whole = history[:len(history) // 16 * 16]
    records = [(time, asleep) for time, asleep, _ in struct.iter_unpack("<dII", whole)]
    return (len(whole) != len(history) or
            any(not math.isfinite(time) or asleep > 3 for time, asleep in records) or
            any(not a[0] < b[0] for a, b in zip(records, records[1:])))


def first_difference(expected, got):
    if got is None or expected is None:
        return "expected %s, got %s" % tuple("no file" if x is None else "a file of %d bytes" %
                                             len(x) for x in (expected, got))
    at = next((i for i, (a, b) in enumerate(zip(expected, got)) if a != b),
              min(len(expected), len(got)))
    return "byte %d of %d (got %d): expected %r, got %r" % (
        at, len(expected), len(got), expected[max(0, at - 12):at + 24],
        got[max(0, at - 12):at + 24])


# Whose data and settings they are: the last key of each document, which the model does not know.
IDENTITY = re.compile(rb',"identity":\{[^{}]*\}')


def document(output):
    """The JSON document that an output is, with its keys in their order and without the machine's
    identity, or None. A fraction may be written with any digits that name the same number."""
    try:
        return json.loads(IDENTITY.sub(b"", output).decode(), object_pairs_hook=tuple,
                          parse_float=lambda digits: (float(digits),))
    except ValueError:
        return None


def says_the_same(expected, got):
    if expected == got:
        return True
    is_line = got.endswith((b"}\n", b"]\n")) and got.count(b"\n") == 1
    return is_line and document(expected) is not None and document(expected) == document(got)


def faults(run, answer):
    """What is wrong with an answer, the most important first."""
    expected = (0, 2) if run.exit_code is None else (run.exit_code,)
    if answer.exit_code not in expected:
        yield "exit code %s instead of %s, stderr %r" % (answer.exit_code, run.exit_code,
                                                         answer.stderr[:2])
        return
    damaged = {name for name, content in run.inputs.items()
               if name.endswith(".dat") and content is not None and is_damaged(content)}
    if {name for name in answer.damaged if name.endswith(".dat")} != damaged:
        yield "damaged: expected %s, got %s" % (sorted(damaged), sorted(answer.damaged))
    if run.stdout is not None and not says_the_same(run.stdout, answer.stdout):
        yield "stdout, " + first_difference(run.stdout, answer.stdout)
    for name, content in run.outputs.items():
        if answer.outputs[name] != content:
            yield "%s, %s" % (name, first_difference(content, answer.outputs[name]))
    if run.error:
        if not answer.stderr or run.error not in answer.stderr[-1]:
            yield "stderr %r lacks %r" % (answer.stderr, run.error)
        # An ignored data file has its own warning line before the error.
        if len(answer.stderr) > (2 if run.inputs.get("data.z7") is not None else 1):
            yield "more than one error line: %r" % answer.stderr
    elif run.warnings is not None and len(answer.stderr) != run.warnings:
        yield "%d warning lines expected, got %r" % (run.warnings, answer.stderr)
    if run.reported is not None:
        told = answer.stdout.decode(errors="replace") + "\n".join(answer.stderr)
        if not re.search(r"(?<!\d)%d(?!\d)" % run.reported, told):
            yield "%d refused events are not reported" % run.reported


def second_faults(first, second):
    if first.exit_code != second.exit_code:
        yield "second tool: exit code %s, first %s" % (second.exit_code, first.exit_code)
    if first.stdout != second.stdout:
        yield "second tool: stdout, " + first_difference(first.stdout, second.stdout)
    for name, content in first.outputs.items():
        if content != second.outputs.get(name):
            yield "second tool: %s, %s" % (name, first_difference(content,
                                                                  second.outputs.get(name)))


def check(make_runs, tools, folder):
    """Makes a case's runs in a folder; throws at the first wrong answer and keeps the folder then."""
    folder.mkdir(exist_ok=True)
    for run in make_runs():
        answer = tools[0].answer(run, folder)
        found = list(faults(run, answer))
        if not found and len(tools) > 1 and run.second_tool:
            found = list(second_faults(answer, tools[1].answer(run, folder)))
        if found:
            raise AssertionError("%s: %s (kept %s)" % (" ".join(run.arguments), found[0], folder))
    shutil.rmtree(folder)


def main(all_cases, description, cases):
    """Runs the command line of a comparison. all_cases(options) gives names and functions that make
    a list of runs; `cases` says how many are made up unless the command line does."""
    parser = option_parser(description)
    parser.add_argument("--tool", required=True, help="command that starts the replay tool")
    parser.add_argument("--second-tool", help="command whose answers must equal the first's")
    parser.add_argument("--cases", type=int, default=cases)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--traces", help="folder with recorded *.csv histories")
    options = parser.parse_args()
    tools = [Tool(command) for command in (options.tool, options.second_tool) if command]
    root = Path(tempfile.mkdtemp(prefix="replay_model_"))
    exit_code = run_cases([(name, functools.partial(check, make_runs, tools, root / name))
                           for name, make_runs in all_cases(options)], options.words)
    if exit_code == 0:
        root.rmdir()
    return exit_code
