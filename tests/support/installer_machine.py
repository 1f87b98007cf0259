"""A Wine machine to install packages on, and what an installation must leave there."""

import configparser
import os
import re
import shlex
import shutil
import subprocess
from pathlib import Path

from tests.support import programs
from tests.support.cli import ROOT
from tests.support.expect import equal
from tests.support.installer_packages import VERSION, digest

PRODUCT_KEY = r"HKLM\SOFTWARE\Corisk"
Z7_KEY = PRODUCT_KEY + r"\Z7"
SECTION = r"\Predictors\CyclicProbabilityPredictor"
SERVICE_KEY = r"HKLM\SYSTEM\CurrentControlSet\Services\DozewellService"
EVENT_KEY = r"HKLM\SYSTEM\CurrentControlSet\Services\EventLog\Application\Dozewell Service"
ENVIRONMENT_KEY = r"HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
UNINSTALL_KEY = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall"
# What the package lays down beyond its default settings, and the value that each choice becomes.
OPTIONS = {"Predictor": "slots", "WakeTimer": "driver"}
VALUES_OF_CHOICES = {"FEATUREENABLED": "EnableZ7Feature", "TOTALATTEMPTS": "TotalAttempts",
                     "STRENGTH": "Strength", "HISTORYLIMIT": "HistoryLimit",
                     "DEBUGLOGGING": "DebugLogging", "PREDICTOR": "Predictor",
                     "WAKETIMER": "WakeTimer"}
PROGRAM_FOLDER = "C:\\Program Files\\Brevan\\Dozewell\\"


def default_values():
    """The values of default-settings.ini and the options as the registry must show them: by key, then
    by name."""
    ini = configparser.ConfigParser(interpolation=None)
    ini.optionxform = str
    ini.read(ROOT / "packaging" / "default-settings.ini", "utf-8")
    numbers = {**ini["Settings"], **ini["Start"]}
    texts = {**ini[SECTION[12:]], **OPTIONS}
    return {Z7_KEY + r"\Default": {name: ("REG_DWORD", hex(int(value)))
                                   for name, value in numbers.items()},
            Z7_KEY + r"\Default" + SECTION: {name: ("REG_SZ", value)
                                             for name, value in texts.items()}}


class Machine:
    """The Wine machine, and the packages to put on it."""

    def __init__(self, wine, packages):
        self.wine = shlex.split(wine)
        self.drive = Path(os.environ["WINEPREFIX"]) / "drive_c"
        self.program_folder = self.drive / "Program Files" / "Brevan" / "Dozewell"
        self.data = self.drive / "ProgramData" / "Brevan" / "Z7"
        self.package, self.next_package = packages.this, packages.following

    def run(self, *command):
        # Programs of the current folder would be found first; this one has none.
        done = programs.run([*self.wine, *command], cwd=self.drive, stdin=subprocess.DEVNULL,
                            capture_output=True)
        return done.returncode, done.stdout.decode(errors="replace").replace("\r\n", "\n")

    def msiexec(self, option, package, **properties):
        # It prints nothing, and a pipe would stay open in Wine's desktop for a second after its end.
        quiet = subprocess.DEVNULL
        return programs.run([*self.wine, "msiexec", option,
                             f"Z:{package.path}".replace("/", "\\"), "/qn",
                             *(f"{name}={value}" for name, value in properties.items())],
                            cwd=self.drive, stdin=quiet, stdout=quiet, stderr=quiet).returncode

    def install(self, package=None, **properties):
        equal(self.msiexec("/i", package or self.package, **properties), 0)

    def repair(self, package=None, **properties):
        equal(self.msiexec("/i", package or self.package, REINSTALL="ALL", **properties), 0)

    def remove(self, package=None, **properties):
        equal(self.msiexec("/x", package or self.package, **properties), 0)

    def values(self, key):
        """All values below a registry key: by key, then by name their type and data."""
        code, text = self.run("reg", "query", key, "/s")
        found, values = {}, None
        for line in text.splitlines() if code == 0 else ():
            if line.startswith("HKEY_LOCAL_MACHINE\\"):
                values = found.setdefault(line.replace("HKEY_LOCAL_MACHINE", "HKLM", 1), {})
            elif line.strip():
                name, kind, *data = line.strip().split("    ")
                values[name] = (kind, *data)
        return {key: values for key, values in found.items() if values}

    def value(self, key, name):
        """The data of a value as text, or None."""
        return self.values(key).get(key, {}).get(name, (None, None))[-1]

    def set_value(self, key, name, kind, data):
        equal(self.run("reg", "add", key, "/v", name, "/t", kind, "/d", str(data), "/f")[0], 0)

    def service_state(self):
        """As the service control manager tells it, or None without the service."""
        code, text = self.run("sc", "query", "DozewellService")
        return re.search(r"STATE +: \d+ +(\w+)", text).group(1) if code == 0 else None

    def ctl(self, *arguments):
        # By its name alone, so that it must be in a folder of the machine's path.
        return self.run("dozewellctl", *arguments)

    def installed_files(self):
        """Digests of the files in the program folder by their path."""
        return {str(path.relative_to(self.program_folder)): digest(path)
                for path in self.program_folder.rglob("*") if path.is_file()}

    def products(self):
        """Name and version of what Windows lists as installed."""
        return [(values["DisplayName"][-1], values["DisplayVersion"][-1])
                for values in self.values(UNINSTALL_KEY).values()
                if values.get("Publisher", ("",))[-1] == "Brevan"]

    def folders(self):
        """Every file and folder that is not Wine's own."""
        own = self.drive / "windows"
        return {str(path.relative_to(self.drive)) for path in self.drive.rglob("*")
                if own not in path.parents}

    def registry(self):
        """All keys and values that a product or a service may have."""
        found = set()
        for key in (r"HKLM\SOFTWARE", r"HKLM\SYSTEM\CurrentControlSet\Services"):
            self.run("regedit", "/E", "C:\\exported.reg",
                     key.replace("HKLM", "HKEY_LOCAL_MACHINE"))
            file = self.drive / "exported.reg"
            text = file.read_text("utf-16").replace("\\\n", "")
            file.unlink()
            for line in filter(None, text.splitlines()):
                is_key = line.startswith("[")
                if is_key:
                    key = line[1:-1].replace("HKEY_LOCAL_MACHINE", "HKLM", 1)
                # Wine's installer leaves empty keys behind.
                if not (is_key and r"\CurrentVersion\Installer" in key):
                    found.add(key if is_key else f"{key}: {line}")
        return found

    def everything(self):
        return self.folders() | self.registry()

    def clean(self):
        if self.products():
            any(self.msiexec("/x", package) == 0 for package in (self.package, self.next_package))
        self.run("reg", "delete", PRODUCT_KEY, "/f")
        for path in self.data.parents[1].glob("Brevan*"):
            shutil.rmtree(path) if path.is_dir() else path.unlink()


def changes(machine, before):
    """What was added to and removed from the machine's folders and registry."""
    after = machine.everything()
    return after - before, before - after


def expect_installed(machine, package, **chosen):
    """Checks everything that an installation with these choices leaves on a machine, except who can
    read what was learnt."""
    equal(machine.installed_files(), package.contents(), "files")
    equal(machine.values(Z7_KEY + r"\Undo"), {}, "notes")
    expected = default_values()
    section = expected[Z7_KEY + r"\Default" + SECTION]
    for choice, value in chosen.items():
        name = VALUES_OF_CHOICES[choice]
        if name in section:
            section[name] = ("REG_SZ", str(value))
        else:
            expected[Z7_KEY + r"\Default"][name] = ("REG_DWORD", hex(value))
    equal(machine.values(Z7_KEY + r"\Default"), expected, "default values")
    equal(machine.value(Z7_KEY + r"\Installer", "Version"), package.properties["ProductVersion"])
    equal(machine.values(EVENT_KEY)[EVENT_KEY],
          {"EventMessageFile": ("REG_EXPAND_SZ", PROGRAM_FOLDER + "DozewellService.exe"),
           "TypesSupported": ("REG_DWORD", "0x7")}, "event source")
    equal(machine.service_state(), "RUNNING", "state of the service")
    service = machine.values(SERVICE_KEY)[SERVICE_KEY]
    equal({name: service[name][-1] for name in ("Description", "DisplayName", "ErrorControl",
                                                "ImagePath", "ObjectName", "Start", "Type")},
          {"Description": "Brevan dozewell service", "DisplayName": "DozewellService",
           "ErrorControl": "0x1", "ImagePath": f'"{PROGRAM_FOLDER}DozewellService.exe"',
           "ObjectName": "LocalSystem", "Start": "0x2", "Type": "0x10"}, "service")
    equal(machine.products(), [("Dozewell", package.properties["ProductVersion"])], "products")
    equal(path_entries(machine).count(PROGRAM_FOLDER), 1, "entries of the path")
    equal(machine.ctl("--version"), (0, f"dozewellctl {VERSION}\n"), "dozewellctl by its name")
    equal(machine.data.is_dir(), True, "data folder")
    for folder in (machine.data, machine.data.parent):
        equal(folder.stat().st_mode & 0o002, 0, f"everybody may write to {folder}")


def expect_removed(machine):
    equal(machine.ctl("--version")[0] != 0, True, "dozewellctl is still found")
    equal(machine.service_state(), None, "state of the service")
    equal((machine.drive / "Program Files" / "Brevan").exists(), False, "program folder")
    equal(machine.products(), [], "products")
    equal(machine.values(EVENT_KEY), {}, "event source")
    equal(machine.values(Z7_KEY + r"\Default"), {}, "default values")
    equal(machine.values(Z7_KEY + r"\Installer"), {}, "choices")
    equal(path_entries(machine).count(PROGRAM_FOLDER), 0, "entries of the path")


def path_entries(machine):
    return machine.value(ENVIRONMENT_KEY, "PATH").split(";")


def learn(machine):
    """Writes learnt data, and live settings as the service and its clients do."""
    (machine.data / "zs7state.dat").write_bytes(b"learnt")
    machine.set_value(Z7_KEY + r"\Current", "EnableZ7Feature", "REG_DWORD", 1)
    machine.set_value(Z7_KEY + r"\Current" + SECTION, "Strength", "REG_SZ", "7")


def expect_still_learnt(machine):
    equal((machine.data / "zs7state.dat").read_bytes(), b"learnt")
    equal(machine.value(Z7_KEY + r"\Current", "EnableZ7Feature"), "0x1")
    equal(machine.value(Z7_KEY + r"\Current" + SECTION, "Strength"), "7")
