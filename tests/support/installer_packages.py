"""Installer packages to test, made from the programs of a Windows build."""

import hashlib
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.cli import ROOT

sys.path.append(str(ROOT / "packaging"))
from msi_file import Table  # in that folder

VERSION = (ROOT / "VERSION").read_text("utf-8").strip()
NEXT_VERSION = re.sub(r"\d+$", lambda last: str(int(last.group()) + 1), VERSION)
DATE = "1790000000"


def build_package(programs, out, version, **environment):
    done = subprocess.run(
        [ROOT / "packaging" / "build_msi.py", "--programs", programs, "--out", out, "--version",
         version], env={**os.environ, "SOURCE_DATE_EPOCH": DATE, **environment}, check=True,
        capture_output=True, text=True)
    return Package(Path(done.stdout.strip()))


class Package:
    def __init__(self, path):
        self.path = path

    def table(self, name):
        """Rows as dictionaries."""
        text = subprocess.run(["msiinfo", "export", self.path, name], check=True,
                              capture_output=True, encoding="utf-8").stdout
        columns, _, _, *rows = [line.split("\t") for line in text.splitlines()]
        return [dict(zip(columns, row)) for row in rows]

    def cells(self, table, key, value):
        """The cells of one column of a table, by those of another."""
        return {row[key]: row[value] for row in self.table(table)}

    @property
    def properties(self):
        return self.cells("Property", "Property", "Value")

    def contents(self):
        """Digests of the installed files by their path, from the list beside the package."""
        lines = self.path.with_suffix(".contents.txt").read_text("utf-8").splitlines()
        rows = [re.fullmatch(r"([0-9a-f]{64}) +(\d+)  (\S+)", line).groups() for line in lines]
        return {path: digest for digest, _, path in rows}

    def deployment(self):
        """What tools that deploy it are told."""
        return json.loads(self.path.with_suffix(".deployment.json").read_text("utf-8"))

    def summary(self, field):
        text = subprocess.run(["msiinfo", "suminfo", self.path], check=True, capture_output=True,
                              text=True).stdout
        return re.search(rf"^{re.escape(field)}: (.*)$", text, re.MULTILINE).group(1)


def as_a_user(package):
    """The package whose repairs are started by somebody who is no administrator, which nobody is
    under Wine. Repairs are those of the package that was installed."""
    return with_action(package, "as-a-user.msi", ("BeUser", "51", "AdminUser", "{}"), "Installed", 21)


def that_fails(package, when):
    """The package whose installation fails under this condition just before the service is started:
    its program does not know such a step."""
    return with_action(package, "fails.msi", ("Fail", str(2 + 1024 + 2048), "Setup", "fail"), when,
                       5850)


def with_action(package, name, action, when, place):
    path = package.path.with_name(name)
    shutil.copy(package.path, path)
    with tempfile.TemporaryDirectory() as scratch:
        for name, row in (("CustomAction", action),
                          ("InstallExecuteSequence", (action[0], when, str(place)))):
            table = Table.read(path, name)
            table.add(row)
            table.write(path, Path(scratch))
    return Package(path)


class Packages:
    """A package of this version and one of the next, of the same programs."""

    def __init__(self, programs, out):
        self.programs = programs
        self.out = out
        self.this = build_package(programs, out, VERSION)
        self.following = build_package(programs, out, NEXT_VERSION)


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()
