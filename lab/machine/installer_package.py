"""The installer package, and what it does to the machine."""

import contextlib
import os
import shutil
import subprocess
from pathlib import Path

from machine.installation import SETUP_PROGRAM
from machine.registry import Registry
from machine.tool import Tool

_BUILD_PACKAGE = Path(__file__).resolve().parents[2] / "packaging" / "build_msi.py"
_OVERRIDES = "HKCU\\Software\\Wine\\DllOverrides"


class InstallerFailed(Exception):
    pass


class InstallerPackage:
    def __init__(self, installation, take_step):
        self._folder = installation.folder / "package"
        self._wine = installation.wine
        self._build = installation.build
        self._registry = Registry(installation.agent)
        # The program that the installer runs, to be run without it.
        self.setup = Tool(self._wine, SETUP_PROGRAM, take_step)

    @contextlib.contextmanager
    def at_hand(self):
        """Builds the package and gives its path; at the end of the with statement the product is
        removed. Until then every program loads the lab's stand-ins, since the installer runs its
        setup program under names that it makes up."""
        package = self._build_package()
        system = self._wine.drive / "windows" / "system32" / "powrprof.dll"
        own = system.with_name("powrprof.own")
        system.replace(own)
        shutil.copy(self._build / "lab" / "powrprof.dll", system)
        self._registry.write("powrprof", "native,builtin", _OVERRIDES)
        try:
            yield package
        finally:
            self._installer_exit_code("/x", package)
            self._registry.delete("powrprof", _OVERRIDES)
            own.replace(system)

    def install(self, package):
        self._call_installer("/i", package)

    def remove(self, package):
        self._call_installer("/x", package)

    def _build_package(self):
        done = subprocess.run(
            [_BUILD_PACKAGE, "--programs", self._build, "--out", self._folder],
            env={**os.environ, "SOURCE_DATE_EPOCH": "1767600000"}, check=True,
            capture_output=True, text=True)
        return done.stdout.strip()

    def _call_installer(self, option, package):
        exit_code = self._installer_exit_code(option, package)
        if exit_code != 0:
            raise InstallerFailed(f"msiexec {option} ended with {exit_code}")

    def _installer_exit_code(self, option, package):
        path = "Z:" + package.replace("/", "\\")
        exit_code, _ = self._wine.run("msiexec", option, path, "/qn")
        return exit_code
