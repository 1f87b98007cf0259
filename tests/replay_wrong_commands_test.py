"""Runs the wrong command lines of tests/wrong_commands/replay.txt.

    python3 -m tests.replay_wrong_commands_test --tool build/native/dozewell-replay
    python3 -m tests.replay_wrong_commands_test --tool "wine build/windows/dozewell-replay.exe"
"""

import functools
import os
import shutil
import sys
import tempfile
from pathlib import Path

from tests.support.cases import option_parser, run
from tests.support.cli import HISTORY, ROOT, Tool
from tests.support.wrong_commands import check, read_table

CONTENTS = {
    "half.csv": "\n".join(HISTORY.splitlines()[:3]) + "\n",
    "text": "Nothing that any command reads.\n",
    "utf16": HISTORY.encode("utf-16"),
    "utf16.csv": HISTORY.encode("utf-16"),
    "bad.csv": "1,0\n2;1\n",
    "nan.csv": "1,0\n2,1\nnan,0\n",
    "inf.csv": "inf,0\n",
    "h4.csv": "0,0\n100,1\n200,4\n",
    "bad.ini": "[A]\nx\n",
    "early.ini": "key=1\n",
    "nothing.ini": "[CyclicProbabilityPredictor]\n",
    "page.xml": "<html>\n<body/></html>",
    "empty": "",
    "log.evtx": b"ElfFile\0\0\0",
    "best.txt": "50,30,20,70,30,0",
    # What has learnt nothing.
    "empty.dat": "",
}


def lay_down_files(tool):
    tool.example()
    for name, content in CONTENTS.items():
        tool.write(name, content)
    tool.works("import", "--history", "h.csv", "--out", "h.dat")
    tool.works("learn", "--history", "empty.dat", "--settings", "s.ini", "--data", "fresh.z7")
    tool.write("version.z7", b"\1" + tool.read("d.z7")[1:])
    shutil.copy(ROOT / "tests" / "event_logs" / "spring.xml", tool.folder / "log.xml")
    tool.write("cut.xml", tool.read("log.xml")[:-20])
    os.link(tool.folder / "h.dat", tool.folder / "hard.dat")
    (tool.folder / "folder").mkdir()


def run_tool(tool, *arguments):
    done = tool.run(*arguments)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


def main():
    parser = option_parser(__doc__)
    parser.add_argument("--tool", required=True, help="command that starts dozewell-replay")
    options = parser.parse_args()
    tool = Tool(options.tool)
    with tempfile.TemporaryDirectory(prefix="wrong_commands_") as folder:
        tool.folder = Path(folder)
        lay_down_files(tool)
        return run([(command.name(), functools.partial(check, command, "dozewell-replay",
                                                       [tool.folder],
                                                       functools.partial(run_tool, tool)))
                    for command in read_table("replay.txt")], options.words)


if __name__ == "__main__":
    sys.exit(main())
