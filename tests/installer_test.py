"""Tests the installer package: what its tables tell Windows, that the same inputs give the same
bytes, and, under Wine, what is on a machine after it was installed, repaired, upgraded and removed.

    python3 -m tests.installer_test --wine wine --programs build/windows --out build/installer-test

Works on the machine that WINEPREFIX names, on which the product must not be installed: it empties
this product's registry keys and data folder there. Wine's installer does not show a service's
delayed start and restarts, nor whose rights an action has; of these only the tables are tested.
"""

import configparser
import contextlib
import functools
import hashlib
import inspect
import os
import re
import shlex
import shutil
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support import programs
from tests.support.cases import option_parser, run, tests_in
from tests.support.cli import ROOT
from tests.support.expect import equal
from tests.support.programs import wait_until

sys.path.append(str(ROOT / "packaging"))
from msi_file import Table  # in that folder

VERSION = (ROOT / "VERSION").read_text("utf-8").strip()
NEXT_VERSION = re.sub(r"\d+$", lambda last: str(int(last.group()) + 1), VERSION)
DATE = "1790000000"

PRODUCT_KEY = r"HKLM\SOFTWARE\Corisk"
Z7_KEY = PRODUCT_KEY + r"\Z7"
SECTION = r"\Predictors\CyclicProbabilityPredictor"
SERVICE_KEY = r"HKLM\SYSTEM\CurrentControlSet\Services\DozewellService"
EVENT_KEY = r"HKLM\SYSTEM\CurrentControlSet\Services\EventLog\Application\Dozewell Service"
ENVIRONMENT_KEY = r"HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
UNINSTALL_KEY = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall"
PROGRAM_FOLDER = "C:\\Program Files\\Brevan\\Dozewell\\"

PROGRAMS = ("DozewellService", "dozewellctl", "dozewell-replay")
INSTALL_ERROR = 1603 & 0xFF  # Wine passes on the lowest byte
INSTALL_FAILURE = 1627 & 0xFF  # what Wine makes of a failed action

# The properties that an administrator may give: those that become default values, and all.
CHOICES = ("DEBUGLOGGING", "FEATUREENABLED", "HISTORYLIMIT", "STRENGTH", "TOTALATTEMPTS")
ALL_CHOICES = (*CHOICES, "INSTALLFOLDER", "REMOVEDATA", "USERSMAYREAD")


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

    def summary(self, field):
        text = subprocess.run(["msiinfo", "suminfo", self.path], check=True, capture_output=True,
                              text=True).stdout
        return re.search(rf"^{re.escape(field)}: (.*)$", text, re.MULTILINE).group(1)


def default_values():
    """The values of default-settings.ini as the registry must show them: by key, then by name."""
    ini = configparser.ConfigParser(interpolation=None)
    ini.optionxform = str
    ini.read(ROOT / "packaging" / "default-settings.ini", "utf-8")
    numbers = {**ini["Settings"], **ini["Start"]}
    return {Z7_KEY + r"\Default": {name: ("REG_DWORD", hex(int(value)))
                                   for name, value in numbers.items()},
            Z7_KEY + r"\Default" + SECTION: {name: ("REG_SZ", value)
                                             for name, value in ini[SECTION[12:]].items()}}


def as_a_user(package):
    """The package whose repairs are started by somebody who is no administrator, which nobody is
    under Wine. Repairs are those of the package that was installed."""
    path = package.path.with_name("as-a-user.msi")
    shutil.copy(package.path, path)
    with tempfile.TemporaryDirectory() as scratch:
        for name, row in (("CustomAction", ("BeUser", "51", "AdminUser", "{}")),
                          ("InstallExecuteSequence", ("BeUser", "Installed", "30"))):
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
        code, _ = self.run("msiexec", option, f"Z:{package.path}".replace("/", "\\"), "/qn",
                           *(f"{name}={value}" for name, value in properties.items()))
        return code

    def install(self, package=None, **properties):
        equal(self.msiexec("/i", package or self.package, **properties), 0)

    def repair(self, package=None, **properties):
        # These options are what /fa stands for, which Wine's msiexec does not know.
        equal(self.msiexec("/i", package or self.package, REINSTALL="ALL", REINSTALLMODE="amus",
                           **properties), 0)

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


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def changes(machine, before):
    """What was added to and removed from the machine's folders and registry."""
    after = machine.everything()
    return after - before, before - after


def expect_installed(machine, package, **chosen):
    """Checks everything that an installation with these choices leaves on a machine, except who can
    read what was learnt."""
    equal(machine.installed_files(), package.contents(), "files")
    expected = default_values()
    section = expected[Z7_KEY + r"\Default" + SECTION]
    for choice, value in chosen.items():
        name = {"FEATUREENABLED": "EnableZ7Feature", "TOTALATTEMPTS": "TotalAttempts",
                "STRENGTH": "Strength", "HISTORYLIMIT": "HistoryLimit",
                "DEBUGLOGGING": "DebugLogging"}[choice]
        if name in section:
            section[name] = ("REG_SZ", str(value))
        else:
            expected[Z7_KEY + r"\Default"][name] = ("REG_DWORD", hex(value))
    equal(machine.values(Z7_KEY + r"\Default"), expected, "default values")
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


# The package

def test_the_same_inputs_give_the_same_bytes(packages):
    out = packages.out
    copies = out / "copies"
    shutil.rmtree(copies, ignore_errors=True)
    # The same programs in another folder and with another date, packed at another time.
    shutil.copytree(packages.programs, copies, ignore=lambda folder, names: [
        name for name in names if not name.startswith(("dozewell", "Dozewell"))])
    again = build_package(copies, out / "again", VERSION, TZ="Asia/Tokyo", LC_ALL="C")
    for suffix in (".msi", ".contents.txt"):
        equal(digest(again.path.with_suffix(suffix)),
              digest(packages.this.path.with_suffix(suffix)), suffix)
    with open(copies / "dozewellctl.exe", "ab") as program:
        program.write(b"\0")
    other = build_package(copies, out / "again", VERSION)
    equal(other.summary("Revision number (UUID)") ==
          packages.this.summary("Revision number (UUID)"), False, "another package's code")


def test_versions_are_told_apart_and_belong_together(packages):
    this, following = packages.this, packages.following
    equal(this.path.name, f"dozewell-{VERSION}-x64.msi")
    equal(this.properties["ProductVersion"], VERSION)
    equal(this.properties["UpgradeCode"], following.properties["UpgradeCode"])
    equal(this.properties["ProductCode"] == following.properties["ProductCode"], False)
    components = this.cells("Component", "Component", "ComponentId")
    equal(components, following.cells("Component", "Component", "ComponentId"))
    equal(len(set(components.values())), len(components), "component codes")


def test_every_program_has_the_version(packages):
    parts = [int(part) for part in VERSION.split(".")]
    for name in (*PROGRAMS, "dozewell-setup"):
        data = (packages.programs / f"{name}.exe").read_bytes()
        place = data.index(b"\xbd\x04\xef\xfe")
        for field in struct.unpack_from("<IIII", data, place + 8)[0:2], \
                struct.unpack_from("<IIII", data, place + 8)[2:4]:
            equal(field, (parts[0] << 16 | parts[1], parts[2] << 16), name)
        for text in (VERSION, "Brevan", f"{name}.exe"):
            equal(text.encode("utf-16-le") + b"\0\0" in data, True, f"{text} in {name}")
    versions = packages.this.cells("File", "FileName", "Version")
    equal({name: versions[f"{name}.exe"] for name in PROGRAMS},
          dict.fromkeys(PROGRAMS, VERSION + ".0"))


def test_all_documents_are_there(packages):
    expected = {f"docs/{path.name}" for path in (ROOT / "docs").glob("*.md")}
    expected |= {"docs/LICENSE.txt", "docs/default-settings.ini"}
    expected |= {f"docs/licences/{name}.txt" for name in ("CLI11", "GCC", "JSON", "mingw-w64")}
    expected |= {f"{name}.exe" for name in PROGRAMS}
    equal(set(packages.this.contents()), expected)
    for path in ("DozewellService.exe", "dozewellctl.exe", "dozewell-replay.exe"):
        equal(packages.this.contents()[path], digest(packages.programs / path), path)
    equal(packages.this.table("Shortcut"), [])


def test_the_service_is_described_to_windows(packages):
    service, = packages.this.table("ServiceInstall")
    equal((service["Name"], service["DisplayName"], service["Description"]),
          ("DozewellService", "DozewellService", "Brevan dozewell service"))
    # It has its own process and starts automatically; without it the installation fails.
    equal((service["ServiceType"], service["StartType"], service["ErrorControl"]),
          ("16", "2", "32769"))
    control, = packages.this.table("ServiceControl")
    # It is started and stopped by installing, stopped and deleted by removing, each with a wait.
    equal((control["Name"], int(control["Event"]), control["Wait"]),
          ("DozewellService", 0x1 + 0x2 + 0x20 + 0x80, "1"))


def test_steps_are_taken_as_the_system_and_in_their_place(packages):
    actions = {row["Action"]: row for row in packages.this.table("CustomAction")}
    setup = 2 + 1024 + 2048  # a program of the package, in the script, not as the user
    when_undone = 256
    goes_on = 64
    folder = '"[INSTALLFOLDER]."'
    for name, command, added in (
            ("RestoreMachine", "restore", goes_on),
            ("StartServiceAgain", "start-service", when_undone + goes_on),
            ("StopService", "stop-service", goes_on),
            ("RemoveLearntData", "remove-learnt-data", goes_on),
            ("RemoveInstallFolder", f"remove-install-folder {folder}", goes_on),
            ("UndoInstallFolder", f"remove-install-folder {folder}", when_undone + goes_on),
            ("SecureInstallFolder", f"secure-install-folder {folder}", 0),
            ("SecureDataFolder", 'secure-data-folder "[USERSMAYREAD]"', 0),
            ("ConfigureService", "configure-service", goes_on)):
        equal((actions[name]["Source"], actions[name]["Target"], actions[name]["Type"]),
              ("Setup", command, str(setup + added)), name)
    sequence = packages.this.cells("InstallExecuteSequence", "Action", "Sequence")
    order = sorted(sequence, key=lambda action: int(sequence[action]))
    for first, second in (
            ("AppSearch", "Remember.STRENGTH"), ("Remember.STRENGTH", "Take.STRENGTH"),
            ("Take.STRENGTH", "LaunchConditions"), ("InstallInitialize", "RemoveExistingProducts"),
            ("RemoveExistingProducts", "ProcessComponents"), ("InstallInitialize", "RestoreMachine"),
            ("RestoreMachine", "StopService"), ("StartServiceAgain", "StopService"),
            ("StopService", "StopServices"), ("DeleteServices", "RemoveLearntData"),
            ("RemoveFolders", "RemoveInstallFolder"), ("SecureInstallFolder", "UndoInstallFolder"),
            ("UndoInstallFolder", "CreateFolders"), ("CreateFolders", "InstallFiles"),
            ("RemoveRegistryValues", "RemoveLearntData"), ("WriteRegistryValues", "StartServices"),
            ("InstallServices", "SecureDataFolder"), ("SecureDataFolder", "StartServices"),
            ("InstallServices", "ConfigureService"), ("ConfigureService", "StartServices"),
            ("StartServices", "InstallFinalize")):
        equal(order.index(first) < order.index(second), True, f"{first} before {second}")
    conditions = packages.this.cells("InstallExecuteSequence", "Action", "Condition")
    equal(conditions["RestoreMachine"], 'REMOVE="ALL" AND NOT UPGRADINGPRODUCTCODE')
    equal(conditions["StopService"], "Installed")
    equal(conditions["SecureInstallFolder"], 'NOT REMOVE="ALL"')


def test_choices_reach_an_installation_with_more_rights(packages):
    properties = packages.this.properties
    equal(sorted(properties["SecureCustomProperties"].split(";")),
          sorted((*ALL_CHOICES, "WIX_DOWNGRADE_DETECTED", "WIX_UPGRADE_DETECTED")))
    # Without this, the system calls everybody an administrator who installs with its rights.
    equal(properties["MSIUSEREALADMINDETECTION"], "1")
    conditions = packages.this.cells("InstallExecuteSequence", "Action", "Condition")
    for choice in ALL_CHOICES:
        equal(conditions[f"Ignore.{choice}"], "Installed AND NOT AdminUser", choice)


# Installing

def test_installing_puts_everything_in_place(machine):
    machine.install()
    expect_installed(machine, machine.package)
    equal({values for values in machine.values(Z7_KEY + r"\Installer").popitem()[1].values()},
          {("REG_SZ",)}, "choices")


def test_an_installed_service_works_on_its_first_start(machine):
    machine.install()
    wait_until(lambda: machine.value(Z7_KEY + r"\Current", "ServiceFeedback") == "0x1",
               "the controller is not started")
    equal(machine.value(Z7_KEY + r"\Current", "ServiceStatus"), "0x0")
    equal(machine.ctl("ping")[0], 0)


def test_installing_leaves_other_values_alone(machine):
    branding = {Z7_KEY + r"\Branding": {"HistoryLimit": ("REG_DWORD", "0x1e")}}
    machine.set_value(Z7_KEY + r"\Branding", "HistoryLimit", "REG_DWORD", 30)
    machine.set_value(Z7_KEY + r"\Current", "EnableZ7Feature", "REG_DWORD", 0)
    machine.set_value(Z7_KEY + r"\Current", "TotalAttempts", "REG_DWORD", 9)
    machine.install()
    expect_installed(machine, machine.package)
    equal(machine.values(Z7_KEY + r"\Branding"), branding)
    equal(machine.value(Z7_KEY + r"\Current", "EnableZ7Feature"), "0x0")
    equal(machine.value(Z7_KEY + r"\Current", "TotalAttempts"), "0x9")
    machine.remove(REMOVEDATA=1)
    equal(machine.values(Z7_KEY), branding)


def test_choices_are_laid_down(machine):
    chosen = {"FEATUREENABLED": 0, "TOTALATTEMPTS": 10, "STRENGTH": 2, "HISTORYLIMIT": 90,
              "DEBUGLOGGING": 1}
    machine.install(**chosen)
    expect_installed(machine, machine.package, **chosen)
    wait_until(lambda: machine.value(Z7_KEY + r"\Current", "CurrentAttempt") == "0x1",
               "the start is not counted")
    equal(machine.value(Z7_KEY + r"\Current", "ServiceFeedback"), None)


def test_invalid_choices_are_refused(machine):
    for choice, value in (("FEATUREENABLED", "2"), ("FEATUREENABLED", "on"),
                          ("TOTALATTEMPTS", "-1"), ("TOTALATTEMPTS", "many"), ("STRENGTH", "1.5"),
                          ("HISTORYLIMIT", "90 days"), ("DEBUGLOGGING", "yes"),
                          ("USERSMAYREAD", "2"), ("USERSMAYREAD", "yes")):
        equal(machine.msiexec("/i", machine.package, **{choice: value}), INSTALL_ERROR,
              f"{choice}={value}")
    expect_removed(machine)
    equal(machine.values(PRODUCT_KEY), {})
    texts = machine.package.cells("LaunchCondition", "Condition", "Description").values()
    equal("FEATUREENABLED must be a whole number from 0 to 1." in texts, True)


def test_a_failed_installation_leaves_nothing(machine):
    before = machine.everything()
    # The data folder and all names to move it to are taken.
    program_data = machine.data.parents[1]
    names = ["Brevan", "Brevan.untrusted", *(f"Brevan.{i}.untrusted" for i in range(2, 101))]
    for name in names:
        (program_data / name).write_bytes(b"")
    equal(machine.msiexec("/i", machine.package), INSTALL_FAILURE)
    for name in names:
        (program_data / name).unlink()
    expect_removed(machine)
    equal(changes(machine, before), (set(), set()))


def test_a_folder_for_the_programs_that_others_may_change_is_refused(machine):
    before = machine.everything()
    folder = machine.drive / "open"
    for mode, owner in ((0o777, 0), (0o755, 12345)):
        if owner and os.geteuid() != 0:
            print("a folder of somebody else cannot be made without root")
            continue
        folder.mkdir()
        # Wine deletes an empty folder when it undoes an installation that has not come to its making.
        (folder / "not empty").write_bytes(b"")
        folder.chmod(mode)
        if owner:
            os.chown(folder, owner, owner)
        for path in ("C:\\open", "C:\\open\\Dozewell"):
            equal(machine.msiexec("/i", machine.package, INSTALLFOLDER=path), INSTALL_FAILURE, path)
        equal([path.name for path in folder.iterdir()], ["not empty"], "what is in it")
        shutil.rmtree(folder)
    expect_removed(machine)
    equal(changes(machine, before), (set(), set()))


def test_a_folder_for_the_programs_is_made_for_administrators(machine):
    before = machine.everything()
    machine.install(INSTALLFOLDER="C:\\made\\here")
    folder = machine.drive / "made" / "here"
    for path in (folder, folder.parent):
        equal(path.stat().st_mode & 0o022, 0, f"others may write to {path}")
    equal((folder / "DozewellService.exe").is_file(), True)
    equal(machine.values(SERVICE_KEY)[SERVICE_KEY]["ImagePath"][-1],
          '"C:\\made\\here\\DozewellService.exe"')
    equal(machine.service_state(), "RUNNING", "state of the service")
    machine.remove(INSTALLFOLDER="C:\\made\\here", REMOVEDATA=1)
    equal(changes(machine, before), (set(), set()))


def test_a_data_folder_of_somebody_else_is_not_used(machine):
    machine.data.mkdir(parents=True)
    (machine.data / "zs7state.dat").write_bytes(b"planted")
    if os.geteuid() != 0:
        print("a folder of somebody else cannot be made without root")
        return
    os.chown(machine.data.parent, 12345, 12345)
    machine.install()
    expect_installed(machine, machine.package)
    equal((machine.data / "zs7state.dat").exists(), False)
    aside = machine.data.parent.with_name("Brevan.untrusted")
    equal((aside / "Z7" / "zs7state.dat").read_bytes(), b"planted")


# Repairing

def test_repairing_brings_back_what_was_damaged(machine):
    machine.install(FEATUREENABLED=0)
    learn(machine)
    (machine.program_folder / "dozewellctl.exe").write_bytes(b"damaged")
    (machine.program_folder / "docs" / "settings.md").unlink()
    machine.run("reg", "delete", Z7_KEY + r"\Default", "/v", "TimeResolution", "/f")
    machine.set_value(Z7_KEY + r"\Default" + SECTION, "DaysInCycle", "REG_SZ", "9")
    machine.run("reg", "delete", EVENT_KEY, "/f")
    machine.repair()
    expect_installed(machine, machine.package, FEATUREENABLED=0)
    expect_still_learnt(machine)


def test_repairing_can_change_a_choice(machine):
    machine.install(FEATUREENABLED=0, STRENGTH=1)
    machine.repair(STRENGTH=2)
    expect_installed(machine, machine.package, FEATUREENABLED=0, STRENGTH=2)


def test_choices_of_a_user_who_starts_a_repair_are_ignored(machine):
    chosen = {"DEBUGLOGGING": 1, "FEATUREENABLED": 1, "HISTORYLIMIT": 9, "STRENGTH": 4,
              "TOTALATTEMPTS": 9}
    package = as_a_user(machine.package)
    machine.install(package, FEATUREENABLED=0)
    learn(machine)
    # Taken, the last one would be refused.
    machine.repair(package, INSTALLFOLDER="C:\\elsewhere", REMOVEDATA=1, **chosen, USERSMAYREAD=7)
    expect_installed(machine, machine.package, FEATUREENABLED=0)
    equal((machine.drive / "elsewhere").exists(), False, "another folder")
    expect_still_learnt(machine)
    # An administrator's are taken.
    machine.remove(package, REMOVEDATA=1)
    machine.install(FEATUREENABLED=0)
    machine.repair(**chosen, USERSMAYREAD=1)
    expect_installed(machine, machine.package, **chosen)


# Upgrading

def test_upgrading_keeps_choices_and_what_was_learnt(machine):
    machine.install(FEATUREENABLED=0, TOTALATTEMPTS=3)
    learn(machine)
    (machine.program_folder / "dozewellctl.exe").write_bytes(b"of before")
    machine.install(machine.next_package, STRENGTH=1)
    expect_installed(machine, machine.next_package, FEATUREENABLED=0, TOTALATTEMPTS=3, STRENGTH=1)
    expect_still_learnt(machine)


def test_an_older_version_does_not_replace_a_newer_one(machine):
    machine.install(machine.next_package, FEATUREENABLED=0)
    equal(machine.msiexec("/i", machine.package), INSTALL_ERROR)
    expect_installed(machine, machine.next_package, FEATUREENABLED=0)


# Removing

def test_removing_leaves_what_was_learnt_and_nothing_else(machine):
    before = machine.everything()
    machine.install(FEATUREENABLED=0)
    learn(machine)
    machine.remove()
    expect_removed(machine)
    came, went = changes(machine, before)
    equal({name for name in came if not name.startswith(Z7_KEY + r"\Current")},
          {PRODUCT_KEY, Z7_KEY, "ProgramData/Brevan", "ProgramData/Brevan/Z7",
           "ProgramData/Brevan/Z7/zs7state.dat"})
    equal(went, set())
    expect_still_learnt(machine)


def test_removing_learnt_data_too_leaves_nothing(machine):
    before = machine.everything()
    machine.install()
    learn(machine)
    machine.remove(REMOVEDATA=1)
    expect_removed(machine)
    equal(changes(machine, before), (set(), set()))


def test_removing_gives_the_users_timeouts_back(machine):
    for stopped in (False, True):
        machine.install()
        wait_until(lambda: machine.value(Z7_KEY + r"\Current", "ServiceFeedback") == "0x1",
                   "the controller is not started")
        if stopped:
            machine.run("net", "stop", "DozewellService")
            equal(machine.service_state(), "STOPPED")
        machine.set_value(Z7_KEY + r"\Current", "HA_AC", "REG_DWORD", 180)
        machine.set_value(Z7_KEY + r"\Current", "HA_DC", "REG_DWORD", 60)
        machine.remove()
        # Without a power scheme, only the deleted values show that the timeouts were restored.
        equal(machine.value(Z7_KEY + r"\Current", "HA_AC"), None)
        equal(machine.value(Z7_KEY + r"\Current", "HA_DC"), None)
        equal(machine.value(Z7_KEY + r"\Current", "ServiceStatus"), "0x1")


def test_a_removed_version_can_come_back(machine):
    machine.install(FEATUREENABLED=0)
    learn(machine)
    machine.remove()
    machine.install()
    expect_installed(machine, machine.package)
    expect_still_learnt(machine)


def case(test, packages, machine):
    """A test of the packages alone, or of the machine, which is cleaned for it."""
    if "packages" in inspect.signature(test).parameters:
        test(packages)
    else:
        machine.clean()
        test(machine)


def main():
    parser = option_parser("Tests the installer package.")
    parser.add_argument("--wine", required=True, help="command that runs a Windows program")
    parser.add_argument("--programs", type=Path, required=True, help="folder of a Windows build")
    parser.add_argument("--out", type=Path, required=True, help="folder for the packages")
    options = parser.parse_args()
    packages = Packages(options.programs.resolve(), options.out.resolve())
    machine = Machine(options.wine, packages)
    # The first installation on a machine makes the system create keys that it keeps.
    machine.clean()
    machine.install()
    exit_code = run([(name, functools.partial(case, test, packages, machine))
                     for name, test in tests_in(globals())], options.words)
    with contextlib.suppress(Exception):
        machine.clean()
    return exit_code


if __name__ == "__main__":
    sys.exit(main())
