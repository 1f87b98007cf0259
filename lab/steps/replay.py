"""dozewell-replay on files in a folder of its own."""

import json
import subprocess
from pathlib import Path


class ReplayFailed(Exception):
    """Has the line in which dozewell-replay said why it failed."""


class Replay:
    def __init__(self, program, folder):
        self._program = program
        self._folder = Path(folder)

    def history(self, path):
        """The bytes of a zs7state.dat, made from a CSV file if need be."""
        if path.suffix == ".csv":
            imported = self._folder / "history.dat"
            self._run("import", "--history", path, "--out", imported, "--replace")
            return imported.read_bytes()
        # If it cannot read the file, it says itself what is wrong.
        self._run("export", "--history", path, "--out", self._folder / "history.csv")
        return path.read_bytes()

    def sample(self, kind, days, seed):
        """The bytes of a made-up history."""
        made_up = self._folder / "sample.csv"
        self._run("sample", "--kind", kind, "--days", days, "--seed", seed, "--out", made_up)
        return self.history(made_up)

    def learn(self, history, settings=None):
        """The data file that comes of learning a history, with the default settings or others."""
        data = self._folder / "known.z7"
        self._run("learn", "--history", self._known(history), "--data", data,
                  *self._with(settings))
        return data

    def reasons(self, data, time, settings=None):
        """Why the service decides as it does on a suspend at a time."""
        return self._run("explain", "--data", data, "--at", _text(time), *self._with(settings))

    def decision(self, data, time, settings=None):
        return json.loads(self._run("suspend", "--json", "--data", data, "--now", _text(time),
                                    *self._with(settings)))

    def search(self, history, timeout):
        """The texts that a search stores, by their names; the timeout is the one to beat, in
        minutes."""
        found = json.loads(self._run("search", "--json", "--history", self._known(history),
                                     "--hibernate-after", timeout))
        return {best["name"]: best["value"] for best in found["best"]}

    def walk(self, history, timeout):
        """What each choice comes to on a history walked forward, by its name; the timeout is the
        user's own, in minutes."""
        walked = json.loads(self._run("compare", "--json", "--history", self._known(history),
                                      "--hibernate-after", timeout or "never"))
        return {choice["name"]: choice for choice in walked["walkForward"]}

    def apply(self, strength, text):
        """What the settings become when a strength chooses a set."""
        best = self._folder / "best.txt"
        best.write_text(text)
        return json.loads(self._run("apply", "--json", "--strength", strength, "--best", best))

    def _known(self, history):
        known = self._folder / "known.dat"
        known.write_bytes(history)
        return known

    def _with(self, settings):
        """The options for settings, which are a ConfigParser or a file."""
        if settings is None:
            return []
        if isinstance(settings, Path):
            return ["--settings", settings]
        file = self._folder / "settings.ini"
        with open(file, "w", encoding="utf-8") as out:
            settings.write(out, space_around_delimiters=False)
        return ["--settings", file]

    def _run(self, *arguments):
        finished = subprocess.run([self._program, *map(str, arguments)], capture_output=True,
                                  text=True, check=False)
        if finished.returncode != 0:
            raise ReplayFailed(finished.stderr.strip())
        return finished.stdout


def _text(time):
    return time.strftime("%Y-%m-%dT%H:%M:%S")
