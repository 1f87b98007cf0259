"""Tests the installer package: what its tables tell Windows, that the same inputs give the same
bytes, and, under Wine, what is on a machine after it was installed, repaired, upgraded and removed.

    python3 -m tests.installer_test --wine wine --programs build/windows --out build/installer-test

Works on the machine that WINEPREFIX names, on which the product must not be installed: it empties
this product's registry keys and data folder there. Wine's installer does not show a service's
delayed start and restarts, nor whose rights an action has, and it undoes no repair; of these only
the tables are tested.
"""

import contextlib
import functools
import inspect
import os
import shutil
import struct
import sys
from pathlib import Path

from tests.support.cases import option_parser, run, tests_in
from tests.support.cli import ROOT
from tests.support.expect import equal
from tests.support.installer_machine import (
    EVENT_KEY, PRODUCT_KEY, SECTION, SERVICE_KEY, VALUES_OF_CHOICES, Z7_KEY, Machine, changes,
    expect_installed, expect_removed, expect_still_learnt, learn)
from tests.support.installer_packages import (
    VERSION, Packages, as_a_user, build_package, digest, that_fails)
from tests.support.programs import wait_until

PROGRAMS = ("DozewellService", "dozewellctl", "dozewell-replay")
INSTALL_ERROR = 1603 & 0xFF  # Wine passes on the lowest byte
INSTALL_FAILURE = 1627 & 0xFF  # what Wine makes of a failed action

# The properties that an administrator may give: those that become default values, and all.
CHOICES = tuple(sorted(VALUES_OF_CHOICES))
WORDS = {"PREDICTOR": ("slots", "rates"), "WAKETIMER": ("driver", "windows")}
SWITCHES = ("DEBUGLOGGING", "FEATUREENABLED", "USERSMAYREAD")
LARGEST = {**dict.fromkeys(SWITCHES, 1), "STRENGTH": 4}  # of a choice; of the others 2147483647
ALL_CHOICES = (*CHOICES, "INSTALLFOLDER", "REMOVEDATA", "USERSMAYREAD")


# The package

def test_the_same_inputs_give_the_same_bytes(packages):
    out = packages.out
    copies = out / "copies"
    shutil.rmtree(copies, ignore_errors=True)
    # The same programs in another folder and with another date, packed at another time.
    shutil.copytree(packages.programs, copies, ignore=lambda folder, names: [
        name for name in names if not name.startswith(("dozewell", "Dozewell"))])
    again = build_package(copies, out / "again", VERSION, TZ="Asia/Tokyo", LC_ALL="C")
    for suffix in (".msi", ".contents.txt", ".deployment.json"):
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
    versions = {name.split("|")[-1]: version for name, version in
                packages.this.cells("File", "FileName", "Version").items()}
    equal({name: versions[f"{name}.exe"] for name in PROGRAMS},
          dict.fromkeys(PROGRAMS, VERSION + ".0"))


def test_all_documents_are_there(packages):
    expected = {f"docs/{path.name}" for path in (ROOT / "docs").glob("*.md")}
    expected |= {"docs/LICENSE.txt", "docs/default-settings.ini"}
    expected |= {f"docs/licences/{name}.txt" for name in ("CLI11", "GCC", "JSON", "mingw-w64")}
    expected |= {"policy/Dozewell.admx", "policy/en-US/Dozewell.adml"}
    expected |= {f"{name}.exe" for name in PROGRAMS}
    equal(set(packages.this.contents()), expected)
    for path in ("DozewellService.exe", "dozewellctl.exe", "dozewell-replay.exe"):
        equal(packages.this.contents()[path], digest(packages.programs / path), path)
    equal(packages.this.table("Shortcut"), [])


def test_deploying_tools_are_told_what_the_package_and_the_page_say(packages):
    page = (ROOT / "docs" / "deploying.md").read_text("utf-8")
    for package in (packages.this, packages.following):
        told, properties = package.deployment(), package.properties
        equal((told["name"], told["publisher"], told["version"], told["productCode"],
               told["upgradeCode"]),
              tuple(properties[name] for name in ("ProductName", "Manufacturer", "ProductVersion",
                                                  "ProductCode", "UpgradeCode")))
        equal(told["file"], package.path.name)
    told = packages.this.deployment()
    for text in (told["install"], told["uninstall"].replace(told["productCode"], "{ProductCode}"),
                 told["detection"]["command"], told["upgradeCode"],
                 *map(str, sum(told["exitCodes"].values(), [])),
                 "PackageIdentifier: {publisher}.{name}\nPackageVersion: {version}\n"
                 "InstallerType: {type}\nScope: {scope}\n".format(**told),
                 "- Architecture: {architecture}\n    InstallerUrl: https://packages.example/{file}\n"
                 .format(**told)):
        equal(text in page, True, text)


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
    when_done = 512
    goes_on = 64
    folder = '"[ProgramFolder]."'
    for name, command, added in (
            ("UndoService", "undo-service", when_undone + goes_on),
            ("NoteService", "note-service", goes_on),
            ("StopService", "stop-service", goes_on),
            ("MakeInstallFolderAgain", f"secure-install-folder {folder}", when_undone + goes_on),
            ("UndoInstallFolder", "undo-install-folder", when_undone + goes_on),
            ("SecureInstallFolder", f"secure-install-folder {folder}", 0),
            ("AwaitDeletion", "await-deletion", 0),
            ("UndoDataFolder", "undo-data-folder", when_undone + goes_on),
            ("SecureDataFolder", 'secure-data-folder "[USERSMAYREAD]"', 0),
            ("ConfigureService", "configure-service", goes_on),
            ("ForgetNotes", "forget-notes", when_done + goes_on),
            ("ForgetNotes.Now", "forget-notes", goes_on),
            ("RestoreMachine", "restore", when_done + goes_on),
            ("RestoreMachine.Now", "restore", goes_on),
            ("RemoveLearntData", "remove-learnt-data", when_done + goes_on),
            ("RemoveLearntData.Now", "remove-learnt-data", goes_on),
            ("RemoveInstallFolder", f"remove-install-folder {folder}", when_done + goes_on),
            ("RemoveInstallFolder.Now", f"remove-install-folder {folder}", goes_on)):
        equal((actions[name]["Source"], actions[name]["Target"], actions[name]["Type"]),
              ("Setup", command, str(setup + added)), name)
    equal(sum(row["Source"] == "Setup" for row in actions.values()), 18, "all steps")
    sequence = packages.this.cells("InstallExecuteSequence", "Action", "Sequence")
    order = sorted(sequence, key=lambda action: int(sequence[action]))
    for first, second in (
            ("AppSearch", "Remember.STRENGTH"), ("Remember.STRENGTH", "Take.STRENGTH"),
            ("Take.STRENGTH", "LaunchConditions"), ("InstallInitialize", "RemoveExistingProducts"),
            ("RemoveExistingProducts", "ProcessComponents"), ("InstallInitialize", "NoteService"),
            ("NoteService", "StopService"), ("StopService", "StopServices"),
            ("RemoveFolders", "MakeInstallFolderAgain"), ("CreateFolders", "InstallFiles"),
            ("SecureInstallFolder", "CreateFolders"), ("WriteRegistryValues", "StartServices"),
            ("DeleteServices", "AwaitDeletion"), ("AwaitDeletion", "InstallServices"),
            ("InstallServices", "SecureDataFolder"), ("SecureDataFolder", "StartServices"),
            ("InstallServices", "ConfigureService"), ("ConfigureService", "StartServices"),
            ("PublishProduct", "ForgetNotes"), ("ForgetNotes", "RestoreMachine"),
            ("RestoreMachine", "RemoveLearntData"), ("RemoveLearntData", "RemoveInstallFolder"),
            ("RemoveInstallFolder", "InstallFinalize"),
            # What undoes a step stands before it.
            ("UndoService", "NoteService"), ("UndoInstallFolder", "SecureInstallFolder"),
            ("UndoDataFolder", "SecureDataFolder")):
        equal(order.index(first) < order.index(second), True, f"{first} before {second}")
    conditions = packages.this.cells("InstallExecuteSequence", "Action", "Condition")
    removing = 'REMOVE="ALL" AND NOT UPGRADINGPRODUCTCODE'
    equal(conditions["RestoreMachine"], f"{removing} AND NOT RollbackDisabled")
    equal(conditions["RestoreMachine.Now"], f"{removing} AND RollbackDisabled")
    equal(conditions["NoteService"], "NOT WIX_UPGRADE_DETECTED")
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
        equal(conditions[f"Ignore.{choice}"],
              {"INSTALLFOLDER": "Installed", "REMOVEDATA": "Installed AND NOT AdminUser"}.get(
                  choice, f"Installed AND (NOT AdminUser OR NOT ({is_valid(choice)}))"), choice)
    for choice in (*CHOICES, "INSTALLFOLDER"):
        equal(conditions[f"Ignore.CHOSEN_{choice}"], "Installed AND NOT AdminUser", choice)


def is_valid(choice):
    """The condition under which a choice is taken."""
    if choice in WORDS:
        return " OR ".join(f'{choice} = "{word}"' for word in WORDS[choice])
    return f"{choice} >= 0 AND {choice} <= {LARGEST.get(choice, 2147483647)}"


# Installing

def test_installing_puts_everything_in_place(machine):
    machine.install()
    expect_installed(machine, machine.package)
    remembered = machine.values(Z7_KEY + r"\Installer").popitem()[1]
    equal(remembered.pop("Version"), ("REG_SZ", VERSION))
    equal(set(remembered.values()), {("REG_SZ",)}, "choices")


def test_an_installed_service_works_on_its_first_start(machine):
    machine.install()
    wait_until(lambda: machine.value(Z7_KEY + r"\Current", "ServiceFeedback") == "0x1",
               "the controller is not started")
    equal(machine.value(Z7_KEY + r"\Current", "ServiceStatus"), "0x0")
    equal(machine.ctl("ping")[0], 0)


def test_the_chosen_predictor_learns(machine):
    # The predictor of rates keeps a file of its own, which a stop saves.
    for chosen, saved in (({}, False), ({"PREDICTOR": "rates"}, True)):
        machine.clean()
        machine.install(**chosen)
        wait_until(lambda: machine.value(Z7_KEY + r"\Current", "ServiceFeedback") == "0x1",
                   "the controller is not started")
        machine.run("net", "stop", "DozewellService")
        equal((machine.data / "cpredict.z7").exists(), True, "the first predictor's file")
        equal((machine.data / "rates.z7").exists(), saved, f"the second one's, with {chosen}")


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
              "DEBUGLOGGING": 1, "PREDICTOR": "rates", "WAKETIMER": "windows"}
    machine.install(**chosen)
    expect_installed(machine, machine.package, **chosen)
    wait_until(lambda: machine.value(Z7_KEY + r"\Current", "CurrentAttempt") == "0x1",
               "the start is not counted")
    equal(machine.value(Z7_KEY + r"\Current", "ServiceFeedback"), None)


def test_invalid_choices_are_refused(machine):
    for choice, value in (("FEATUREENABLED", "2"), ("FEATUREENABLED", "on"),
                          ("TOTALATTEMPTS", "-1"), ("TOTALATTEMPTS", "many"), ("STRENGTH", "1.5"),
                          ("STRENGTH", "5"), ("STRENGTH", "99"),
                          ("HISTORYLIMIT", "90 days"), ("DEBUGLOGGING", "yes"),
                          ("USERSMAYREAD", "2"), ("USERSMAYREAD", "yes"),
                          ("PREDICTOR", "Rates"), ("PREDICTOR", "1"), ("PREDICTOR", "rates,slots"),
                          ("WAKETIMER", "on"), ("WAKETIMER", "window")):
        equal(machine.msiexec("/i", machine.package, **{choice: value}), INSTALL_ERROR,
              f"{choice}={value}")
    expect_removed(machine)
    equal(machine.values(PRODUCT_KEY), {})
    texts = machine.package.cells("LaunchCondition", "Condition", "Description").values()
    for text in ("FEATUREENABLED must be a whole number from 0 to 1.",
                 "STRENGTH must be a whole number from 0 to 4.",
                 "WAKETIMER must be driver or windows."):
        equal(text in texts, True, text)


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


def test_a_folder_for_the_programs_is_made_for_administrators_and_remembered(machine):
    before = machine.everything()
    machine.install(INSTALLFOLDER="C:\\made\\here")
    expect_programs_in(machine, "made", "here")
    # Another one cannot be chosen for what is installed.
    machine.repair(INSTALLFOLDER="C:\\elsewhere", STRENGTH=1)
    expect_programs_in(machine, "made", "here")
    machine.install(machine.next_package)
    expect_programs_in(machine, "made", "here")
    equal((machine.drive / "elsewhere").exists(), False, "another folder")
    machine.remove(machine.next_package, REMOVEDATA=1)
    equal(changes(machine, before), (set(), set()))


def expect_programs_in(machine, *parts):
    folder = machine.drive.joinpath(*parts)
    for path in (folder, folder.parent):
        equal(path.stat().st_mode & 0o022, 0, f"others may write to {path}")
    for name in ("DozewellService.exe", "docs/settings.md", "docs/licences/JSON.txt"):
        equal((folder / name).is_file(), True, name)
    equal(machine.program_folder.exists(), False, "the usual folder")
    equal(machine.values(SERVICE_KEY)[SERVICE_KEY]["ImagePath"][-1],
          '"C:\\' + "\\".join(parts) + '\\DozewellService.exe"')
    equal(machine.service_state(), "RUNNING", "state of the service")


def test_a_failed_installation_gives_back_what_it_changed(machine):
    machine.data.mkdir(parents=True)
    (machine.data / "zs7state.dat").write_bytes(b"somebody's")
    (machine.data / "cpredict.z7").mkdir()
    places = (machine.data.parent, machine.data, machine.data / "zs7state.dat")
    for path in places:
        path.chmod(0o777)
    before = machine.everything()
    equal(machine.msiexec("/i", that_fails(machine.package, "NOT Installed"),
                          INSTALLFOLDER="C:\\made\\here"), INSTALL_FAILURE)
    equal(changes(machine, before), (set(), set()))
    for path in places:
        equal(path.stat().st_mode & 0o002, 0o002, f"rights of {path}")
    expect_removed(machine)
    # With the same package all of that is changed.
    machine.install()
    for path in places:
        equal(path.stat().st_mode & 0o002, 0, f"rights of {path}")
    equal((machine.data / "cpredict.z7.untrusted").is_dir(), True)


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


# Deploying, in the words of the file for tools that do that

def command(machine, text):
    """Exit code and output of a command, where the packages are in the current folder."""
    for package in (machine.package, machine.next_package):
        shutil.copy(package.path, machine.drive)
    try:
        return machine.run(*text.split())
    finally:
        for package in (machine.package, machine.next_package):
            (machine.drive / package.path.name).unlink()


def detected_version(machine, told):
    """By the rule that a package tells, or None."""
    code, text = command(machine, told["detection"]["command"])
    if code != 0:
        return None
    name, kind, version = text.split()[-3:]
    equal((name, kind), (told["detection"]["value"], "REG_SZ"))
    return version


def test_a_tool_installs_detects_upgrades_and_removes_as_it_is_told(machine):
    this, following = machine.package.deployment(), machine.next_package.deployment()
    equal(detected_version(machine, this), None)
    equal(command(machine, this["install"] + " FEATUREENABLED=0 INSTALLFOLDER=C:\\made\\here")[0], 0)
    equal(detected_version(machine, this), this["detection"]["version"])
    # The rule of the next version finds that it is still to be installed.
    equal(detected_version(machine, following) == following["detection"]["version"], False)
    equal(command(machine, following["install"])[0], 0)
    equal(detected_version(machine, following), following["detection"]["version"])
    equal(machine.value(Z7_KEY + r"\Default", "EnableZ7Feature"), "0x0")
    # An older one is refused, which no exit code calls done.
    equal(command(machine, this["install"])[0], INSTALL_ERROR)
    equal(command(machine, following["uninstall"])[0], 0)
    equal(detected_version(machine, following), None)
    expect_removed(machine)


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


def test_repairing_by_the_options_of_the_pages_brings_programs_back(machine):
    machine.install(FEATUREENABLED=0)
    learn(machine)
    # Wine's msiexec has no /f. Such an option stands for these properties.
    for mode, damage in (("omus", None), ("emus", b"damaged"), ("a", b"damaged")):
        program = machine.program_folder / "dozewellctl.exe"
        program.unlink()
        if damage:
            program.write_bytes(damage)
        machine.repair(REINSTALLMODE=mode)
        expect_installed(machine, machine.package, FEATUREENABLED=0)
        equal(machine.value(Z7_KEY + r"\Current" + SECTION, "Strength"), "7", mode)


def test_repairing_can_change_a_choice(machine):
    machine.install(FEATUREENABLED=0, STRENGTH=1, WAKETIMER="windows")
    machine.repair(STRENGTH=2, PREDICTOR="rates")
    expect_installed(machine, machine.package, FEATUREENABLED=0, STRENGTH=2, WAKETIMER="windows",
                     PREDICTOR="rates")
    machine.repair(WAKETIMER="driver")
    expect_installed(machine, machine.package, FEATUREENABLED=0, STRENGTH=2, PREDICTOR="rates")


def test_choices_of_a_user_who_starts_a_repair_are_ignored(machine):
    chosen = {"DEBUGLOGGING": 1, "FEATUREENABLED": 1, "HISTORYLIMIT": 9, "STRENGTH": 4,
              "TOTALATTEMPTS": 9, "PREDICTOR": "rates", "WAKETIMER": "windows"}
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


def test_choices_that_are_out_of_range_do_not_keep_a_product_from_being_repaired(machine):
    machine.install(STRENGTH=1, HISTORYLIMIT=9, PREDICTOR="rates")
    machine.set_value(Z7_KEY + r"\Installer", "STRENGTH", "REG_SZ", "most")
    machine.set_value(Z7_KEY + r"\Installer", "PREDICTOR", "REG_SZ", "best")
    machine.repair(HISTORYLIMIT="-1", DEBUGLOGGING="yes", USERSMAYREAD=7, WAKETIMER="yes")
    expect_installed(machine, machine.package, HISTORYLIMIT=9)
    machine.set_value(Z7_KEY + r"\Installer", "HISTORYLIMIT", "REG_SZ", "all")
    machine.remove(FEATUREENABLED="off")
    expect_removed(machine)


# Upgrading

def test_upgrading_keeps_choices_and_what_was_learnt(machine):
    machine.install(FEATUREENABLED=0, TOTALATTEMPTS=3, PREDICTOR="rates")
    learn(machine)
    (machine.program_folder / "dozewellctl.exe").write_bytes(b"of before")
    machine.install(machine.next_package, STRENGTH=1)
    expect_installed(machine, machine.next_package, FEATUREENABLED=0, TOTALATTEMPTS=3, STRENGTH=1,
                     PREDICTOR="rates")
    expect_still_learnt(machine)


def test_a_strength_that_an_older_package_has_accepted_does_not_stop_an_upgrade(machine):
    machine.install(FEATUREENABLED=0)
    machine.set_value(Z7_KEY + r"\Installer", "STRENGTH", "REG_SZ", "99")
    machine.install(machine.next_package)
    expect_installed(machine, machine.next_package, FEATUREENABLED=0)


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


def test_a_failed_removal_takes_nothing_that_cannot_be_brought_back(machine):
    package = that_fails(machine.package, 'REMOVE="ALL"')
    # Without the feature, the service neither saves anything nor restores a timeout.
    machine.install(package, FEATUREENABLED=0)
    learn(machine)
    machine.set_value(Z7_KEY + r"\Current", "EnableZ7Feature", "REG_DWORD", 0)
    machine.set_value(Z7_KEY + r"\Current", "HA_AC", "REG_DWORD", 180)
    equal(machine.msiexec("/x", package, REMOVEDATA=1), INSTALL_FAILURE)
    equal((machine.data / "zs7state.dat").read_bytes(), b"learnt")
    equal(machine.value(Z7_KEY + r"\Current", "HA_AC"), "0xb4")


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
