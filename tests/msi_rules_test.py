"""Tests that the package keeps the rules of tests/checks/msi_rules.py, and that each of them finds
what it is there for: a copy of the tables is broken, and that rule must say so and no other.

    python3 -m tests.msi_rules_test --programs build/windows --out build/msi-rules-test
"""

import copy
import functools
import os
import subprocess
import sys
from pathlib import Path

from tests.support.cases import option_parser, run, tests_in
from tests.support.cli import ROOT
from tests.support.expect import equal

sys.path += [str(ROOT / "tests" / "checks"), str(ROOT / "packaging")]
from msi_rules import RULES, Package, broken_rules  # in these folders
from msi_values import is_condition
from short_names import with_short_names

EXECUTE = "InstallExecuteSequence"
GUID = "{7A0B1C26-61A6-4B49-9E6B-5D3C2A64B0E1}"


def change(table, key, column, value):
    def make(package):
        package.by_key(table)[key][column] = value
    return make


def add(table, **cells):
    def make(package):
        package.tables[table].append({**dict.fromkeys(package.columns[table], ""), **cells})
    return make


def delete(table, key):
    def make(package):
        package.tables[table].remove(package.by_key(table)[key])
    return make


def all_of(*makes):
    def make(package):
        for each in makes:
            each(package)
    return make


def add_property(name, value):
    return add("Property", Property=name, Value=value)


def add_step(name, number, place, target="restore", condition="", source="Setup"):
    """A custom action with its place in the sequence."""
    return all_of(add("CustomAction", Action=name, Type=str(number), Source=source, Target=target),
                  add(EXECUTE, Action=name, Condition=condition, Sequence=str(place)))


def lose_column(package):
    package.columns["File"].remove("Version")


def swap_places(first, second):
    def make(package):
        rows = package.by_key(EXECUTE)
        rows[first]["Sequence"], rows[second]["Sequence"] = (rows[second]["Sequence"],
                                                             rows[first]["Sequence"])
    return make


def condition_without_installed(package):
    row = package.tables["LaunchCondition"][0]
    row["Condition"] = row["Condition"].removeprefix("Installed OR ")


def make_old(package):
    package.schema = 110


# What breaks each rule.
BREAKS = {
    "key_paths_belong_to_their_components": [
        change("Component", "Service", "KeyPath", "dozewellctl.exe")],
    "every_value_fits_its_column": [
        change("File", "DozewellService.exe", "FileName", "DozewellService.exe"),
        change("File", "DozewellService.exe", "FileName", "A B.EXE|DozewellService.exe"),
        change("File", "DozewellService.exe", "Version", "1.70000"),
        change("File", "DozewellService.exe", "FileSize", ""),
        change("File", "DozewellService.exe", "FileSize", "many"),
        change("Registry", "TypesSupported", "Component_", "Nobody"),
        change("Registry", "TypesSupported", "Key", "\\SYSTEM"),
        change("Environment", "Path", "Value", "[ProgramFolder"),
        change("Directory", "DocsFolder", "DefaultDir", "documents of all kinds"),
        change("ServiceInstall", "DozewellService", "StartType", "5"),
        change(EXECUTE, "StopService", "Condition", "Installed AND"),
        change("_Validation", "_Validation", "Nullable", "perhaps"),
        change("CreateFolder", "BrevanFolder", "Directory_", "NoFolder"),
        add_property("Manufacturer", "Somebody else")],
    "every_file_is_on_the_medium": [
        change("Media", "1", "LastSequence", "3"),
        change("File", "DozewellService.exe", "Sequence", "2")],
    "required_properties_are_there": [delete("Property", "Manufacturer")],
    "every_column_is_described": [lose_column, delete("_Validation", "Media")],
    "component_codes_differ": [change("Component", "Tools", "ComponentId", GUID)],
    "folders_are_set_where_they_can_be": [
        change(EXECUTE, "Take.INSTALLFOLDER", "Sequence", "1010"),
        add_step("SetFolder", 35, 70, "C:\\elsewhere", source="DocsFolder")],
    "the_product_name_is_short_enough": [change("Property", "ProductName", "Value", "D" * 64)],
    "components_without_key_path_make_their_folders": [change("Component", "Tools", "KeyPath", "")],
    "every_component_belongs_to_a_feature": [
        lambda package: package.tables["FeatureComponents"].pop()],
    "the_product_has_valid_codes_and_version": [
        change("Property", "ProductCode", "Value", GUID.lower()),
        change("Property", "ProductLanguage", "Value", "English"),
        change("Property", "ProductVersion", "Value", "0.256.0")],
    "sequences_have_what_they_need_and_no_more": [
        delete(EXECUTE, "ProcessComponents"),
        add(EXECUTE, Action="InstallFile", Sequence="4001"),
        add("AdminExecuteSequence", Action="StartServices", Sequence="5900")],
    "standard_actions_are_in_order": [swap_places("InstallFiles", "CreateFolders")],
    "no_two_files_get_the_same_name": [
        change("File", "dozewellctl.exe", "FileName", "DOZEWE~1.EXE|dozewellctl.exe"),
        change("File", "Document.files.md", "FileName", "JSON.MD")],
    "the_mode_of_repairs_is_left_to_who_repairs": [add_property("REINSTALLMODE", "amus")],
    "no_reserved_bit_is_set": [change("Component", "Tools", "Attributes", "768"),
                               change("ServiceControl", "DozewellService", "Event", "67")],
    "properties_differ_by_more_than_case": [add_property("Strength", "2")],
    "searched_properties_are_public": [
        change("AppSearch", "CHOSEN_STRENGTH", "Property", "Chosen.Strength")],
    "no_component_mixes_a_users_data_with_the_machines": [
        change("Registry", "TypesSupported", "Root", "1")],
    "only_older_versions_are_replaced": [
        lambda package: package.tables["Upgrade"][0].update(VersionMax="255.0.0"),
        lambda package: package.tables["Upgrade"][0].update(VersionMax=""),
        lambda package: package.tables["Upgrade"][0].update(Attributes=str(0x1 + 0x200))],
    "earlier_versions_are_removed_in_a_safe_place": [
        change(EXECUTE, "RemoveExistingProducts", "Sequence", "1700"),
        change(EXECUTE, "RemoveExistingProducts", "Sequence", "1450")],
    "custom_actions_are_of_known_types": [
        change("CustomAction", "StopService", "Type", str(3138 - 2 + 3)),
        change("CustomAction", "Take.STRENGTH", "Type", str(51 + 256))],
    "references_to_files_stay_in_their_component": [
        change("Registry", "EventMessageFile", "Value", "#%[#dozewellctl.exe]")],
    "the_first_medium_is_the_first": [change("Media", "1", "DiskId", "2")],
    "steps_of_the_script_are_within_it": [change(EXECUTE, "ConfigureService", "Sequence", "6601"),
                                          change(EXECUTE, "StopService", "Sequence", "1490")],
    "a_64_bit_package_says_so": [make_old, change("Component", "Tools", "Attributes", "0")],
    "places_in_a_sequence_differ": [
        change(EXECUTE, "StopService", "Sequence", "1870"),
        delete(EXECUTE, "RegisterUser")],
    "folders_are_no_properties_of_the_system": [
        all_of(add_property("DocsFolder", "docs"))],
    "repairs_and_removals_pass_all_conditions": [condition_without_installed],
    "folders_are_private": [add("Directory", Directory="OTHERFOLDER", Directory_Parent="TARGETDIR",
                                DefaultDir="other")],
    "what_is_done_at_the_end_is_done_without_undoing_too": [
        delete("CustomAction", "RestoreMachine.Now"),
        change(EXECUTE, "RestoreMachine.Now", "Condition", 'REMOVE="ALL"')],
}

# A missing action is also an unknown one of the sequence.
ALSO_BROKEN = {("what_is_done_at_the_end_is_done_without_undoing_too", 0):
               {"sequences_have_what_they_need_and_no_more"}}


def test_the_package_keeps_all_rules(package):
    equal(broken_rules(package), {})


def test_every_rule_has_what_breaks_it(_):
    equal(sorted(BREAKS), sorted(rule.__name__ for rule in RULES))
    equal(len(BREAKS) >= 20, True)


def test_each_rule_finds_what_breaks_it_and_no_other_does(package):
    for name, makes in BREAKS.items():
        for number, make in enumerate(makes):
            broken = copy.deepcopy(package)
            make(broken)
            equal(set(broken_rules(broken)), {name, *ALSO_BROKEN.get((name, number), ())},
                  f"{name} {number}")


def test_conditions_are_told_from_what_is_none(_):
    for text in ("Installed", "NOT Installed", 'REMOVE="ALL" AND NOT UPGRADINGPRODUCTCODE',
                 "A >= 0 AND (B <= 1 OR NOT (C <> -3))", "NOT NOT A", "&Complete=3 XOR ?Service=2"):
        equal(is_condition(text), True, text)
    for text in ("", "AND", "A AND", "A B", "(A", "A)", "A >= ", ">= 1", 'A="b', "A == 1", "NOT",
                 "A;B"):
        equal(is_condition(text), False, text)


def test_names_that_are_too_long_get_short_ones_that_differ(_):
    equal(with_short_names(["a-long-name.md", "a-long-note.md", "short.md", "A-LONG~1.MD",
                            "no.long.name", "x.html", "without-dot", "one two.md"]),
          {"A-LONG~1.MD": "A-LONG~1.MD", "a-long-name.md": "A-LONG~2.MD|a-long-name.md",
           "a-long-note.md": "A-LONG~3.MD|a-long-note.md", "no.long.name": "NOLONG~1.NAM|no.long.name",
           "one two.md": "ONETWO~1.MD|one two.md", "short.md": "short.md",
           "without-dot": "WITHOU~1|without-dot", "x.html": "X~1.HTM|x.html"})


def main():
    parser = option_parser("Tests the rules for the package's tables.")
    parser.add_argument("--programs", type=Path, required=True, help="folder of a Windows build")
    parser.add_argument("--out", type=Path, required=True, help="folder for the package")
    options = parser.parse_args()
    done = subprocess.run(
        [ROOT / "packaging" / "build_msi.py", "--programs", options.programs, "--out", options.out],
        env={**os.environ, "SOURCE_DATE_EPOCH": "1790000000"}, check=True, capture_output=True,
        text=True)
    package = Package(Path(done.stdout.strip()))
    return run([(name, functools.partial(test, package)) for name, test in tests_in(globals())],
               options.words)


if __name__ == "__main__":
    sys.exit(main())
