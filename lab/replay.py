"""dozewell-replay on files in a folder of its own."""

import json
import subprocess
from pathlib import Path


class ReplayFailed(Exception):
    """The line that it gave for its failure."""


class Replay:
    def __init__(self, program, folder):
        self._program = program
        self._folder = Path(folder)

    def history(self, path):
        """The bytes of a zs7state.dat, made from a CSV file if need be."""
        if path.suffix == ".csv":
            imported = self._folder / "history.dat"
            self._run("import", "--history", path, "--out", imported)
            return imported.read_bytes()
        # What it cannot read it says best itself.
        self._run("export", "--history", path, "--out", self._folder / "history.csv")
        return path.read_bytes()

    def sample(self, kind, days, seed):
        """The bytes of a made-up history."""
        made_up = self._folder / "sample.csv"
        self._run("sample", "--kind", kind, "--days", days, "--seed", seed, "--out", made_up)
        return self.history(made_up)

    def learn(self, history):
        """The data file of one who has learnt the history."""
        known = self._folder / "known.dat"
        data = self._folder / "known.z7"
        known.write_bytes(history)
        self._run("learn", "--history", known, "--data", data)
        return data

    def reasons(self, data, time):
        """Why the service decides as it does on a suspend at a time."""
        return self._run("explain", "--data", data, "--at", _text(time))

    def decision(self, data, time):
        return json.loads(self._run("suspend", "--json", "--data", data, "--now", _text(time)))

    def _run(self, *arguments):
        finished = subprocess.run([self._program, *map(str, arguments)], capture_output=True,
                                  text=True, check=False)
        if finished.returncode != 0:
            raise ReplayFailed(finished.stderr.strip())
        return finished.stdout


def _text(time):
    return time.strftime("%Y-%m-%dT%H:%M:%S")
