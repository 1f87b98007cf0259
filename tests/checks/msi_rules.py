#!/usr/bin/env python3
"""Checks the tables of an installer package against rules like those of Windows' own evaluators
(ICE), and some of this package's own: msi_rules.py PACKAGE

Each rule is a function that yields what is wrong. The evaluators themselves run on Windows only."""

import re
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "packaging"))
from msi_file import Table  # in that folder
from msi_values import VALUES, is_condition  # in this one

# Listed among the tables, and none.
_NO_TABLES = ("_SummaryInformation", "_ForceCodepage")
_EXECUTE = "InstallExecuteSequence"
_SEQUENCES = (_EXECUTE, "InstallUISequence", "AdminExecuteSequence", "AdminUISequence",
              "AdvtExecuteSequence")

# Standard actions that have one order among each other.
_ORDER = ("AppSearch", "LaunchConditions", "CostInitialize", "FileCost", "CostFinalize",
          "MigrateFeatureStates", "InstallValidate", "InstallInitialize", "ProcessComponents",
          "UnpublishFeatures", "StopServices", "DeleteServices", "RemoveRegistryValues",
          "RemoveEnvironmentStrings", "RemoveFiles", "RemoveFolders", "CreateFolders",
          "InstallAdminPackage", "InstallFiles", "WriteRegistryValues", "WriteEnvironmentStrings",
          "InstallServices", "StartServices", "RegisterUser", "RegisterProduct", "PublishFeatures",
          "PublishProduct", "InstallFinalize")
_ANYWHERE = ("FindRelatedProducts", "ValidateProductID", "RemoveExistingProducts", "ExecuteAction")
_COSTING = {"CostInitialize", "CostFinalize"}
_SCRIPT = {"InstallValidate", "InstallInitialize", "InstallFinalize"}
_REGISTERING = {"RegisterUser", "RegisterProduct", "PublishFeatures", "PublishProduct"}
_REQUIRED = {
    _EXECUTE: {*_COSTING, "FileCost", *_SCRIPT, "ProcessComponents", "UnpublishFeatures"},
    "InstallUISequence": {*_COSTING, "FileCost", "ExecuteAction"},
    "AdminExecuteSequence": {*_COSTING, "FileCost", *_SCRIPT, "InstallAdminPackage",
                             "InstallFiles"},
    "AdminUISequence": {*_COSTING, "FileCost", "ExecuteAction"},
    "AdvtExecuteSequence": {*_COSTING, *_SCRIPT, "PublishFeatures", "PublishProduct"},
}
_CHANGING = {"InstallServices", "DeleteServices", "StartServices", "StopServices",
             "WriteRegistryValues", "RemoveRegistryValues", "RemoveExistingProducts"}
_PROHIBITED = {
    _EXECUTE: {"ExecuteAction", "InstallAdminPackage"},
    "InstallUISequence": {*_SCRIPT, *_CHANGING, "InstallFiles"} - {"InstallValidate"},
    "AdminExecuteSequence": {"ExecuteAction", *_CHANGING, *_REGISTERING},
    "AdminUISequence": {*_SCRIPT, *_CHANGING, "InstallFiles"} - {"InstallValidate"},
    "AdvtExecuteSequence": {"ExecuteAction", *_CHANGING, "InstallFiles"},
}

# Parts of a custom action's type.
_KIND, _IN_SCRIPT, _WHEN_UNDONE, _AT_THE_END = 0x3F, 0x400, 0x100, 0x200
_KINDS = {1, 2, 5, 6, 17, 18, 19, 21, 22, 34, 35, 37, 38, 50, 51, 53, 54}
_SETS_FOLDER, _SETS_PROPERTY = 35, 51
_KNOWN_BITS = 0x3FFF
# What the bits of these columns stand for is known.
_BITS = {("Component", "Attributes"): 0x9FF, ("File", "Attributes"): 0x7E07,
         ("Feature", "Attributes"): 0x3F, ("ServiceControl", "Event"): 0xBB,
         ("Upgrade", "Attributes"): 0x707}
_64_BIT_COMPONENT = 0x100


class Package:
    """All tables, by name: their columns, and their rows as dictionaries; and the summary's template
    and schema."""

    def __init__(self, path):
        names = _run("msiinfo", "tables", path).split()
        with tempfile.TemporaryDirectory() as scratch:
            read = [Table.read(path.resolve(), name, scratch) for name in names
                    if name not in _NO_TABLES]
        self.columns = {table.name: table.columns for table in read}
        self.keys = {table.name: table.columns[:table.keys] for table in read}
        self.tables = {"_Validation": [], **{table.name: [dict(zip(table.columns, row)) for row in table.rows]
                       for table in read}}
        summary = _run("msiinfo", "suminfo", path)
        self.template = re.search(r"^Template: (.*)$", summary, re.MULTILINE).group(1)
        self.schema = int(re.search(r"^Version: (\d+)", summary, re.MULTILINE).group(1))

    def column(self, table, column):
        return [row[column] for row in self.tables[table]]

    def by_key(self, table):
        return {row[self.columns[table][0]]: row for row in self.tables[table]}

    def places(self, sequence):
        """The places of a sequence's actions by their names."""
        return {row["Action"]: int(row["Sequence"]) for row in self.tables[sequence]
                if row["Sequence"]}

    @property
    def properties(self):
        return {row["Property"]: row["Value"] for row in self.tables["Property"]}


def _run(*command):
    return subprocess.run(command, check=True, capture_output=True, encoding="utf-8").stdout


def _repeated(texts):
    texts = list(texts)
    return sorted({text for text in texts if texts.count(text) > 1})


def _kind(action):
    return int(action["Type"]) & _KIND


def key_paths_belong_to_their_components(package):
    """ICE02"""
    owners = {key: row["Component_"] for table in ("File", "Registry")
              for key, row in package.by_key(table).items()}
    for row in package.tables["Component"]:
        if row["KeyPath"] and owners.get(row["KeyPath"]) != row["Component"]:
            yield f"the key path of {row['Component']} is not its own"


def every_value_fits_its_column(package):
    """ICE03"""
    keys = {table: set(package.column(table, columns[0]))
            for table, columns in package.columns.items()}
    for rule in package.tables["_Validation"]:
        for row in package.tables.get(rule["Table"], ()):
            value = row.get(rule["Column"], "")
            wrong = _what_is_wrong(value, rule, keys)
            if wrong:
                yield f"{rule['Table']}.{rule['Column']}: {value!r} {wrong}"
    for table, columns in package.keys.items():
        for key in _repeated(tuple(row[column] for column in columns)
                             for row in package.tables[table]):
            yield f"{table}: two rows have the key {key}"


def _what_is_wrong(value, rule, keys):
    if not value:
        return "" if rule["Nullable"] == "Y" else "must not be empty"
    if rule["MinValue"]:
        low, high = int(rule["MinValue"]), int(rule["MaxValue"])
        fits = re.fullmatch(r"-?\d+", value) and low <= int(value) <= high
        return "" if fits else f"is no number from {low} to {high}"
    if rule["Set"]:
        return "" if value in rule["Set"].split(";") else f"is none of {rule['Set']}"
    if rule["KeyTable"] and not any(value in keys[table] for table in rule["KeyTable"].split(";")):
        return f"is not in {rule['KeyTable']}"
    return "" if VALUES[rule["Category"]](value) else f"is no {rule['Category']}"


def every_file_is_on_the_medium(package):
    """ICE04"""
    last = max(map(int, package.column("Media", "LastSequence")))
    for row in package.tables["File"]:
        if int(row["Sequence"]) > last:
            yield f"{row['File']}: sequence {row['Sequence']} is beyond {last}"
    for number in _repeated(package.column("File", "Sequence")):
        yield f"two files have the sequence {number}"


def required_properties_are_there(package):
    """ICE05"""
    for name in ("ProductName", "ProductLanguage", "ProductVersion", "ProductCode", "Manufacturer"):
        if not package.properties.get(name):
            yield f"there is no {name}"


def every_column_is_described(package):
    """ICE06"""
    described = {(row["Table"], row["Column"]) for row in package.tables["_Validation"]}
    there = {(table, column) for table, columns in package.columns.items() for column in columns}
    for table, column in sorted(there - described):
        yield f"{table}.{column} is not described"
    for table, column in sorted(described - there):
        yield f"{table}.{column} is described and not there"


def component_codes_differ(package):
    """ICE08"""
    for code in _repeated(package.column("Component", "ComponentId")):
        yield f"two components have the code {code}"


def folders_are_set_where_they_can_be(package):
    """ICE12"""
    folders = set(package.column("Directory", "Directory"))
    for sequence in _SEQUENCES:
        places = package.places(sequence)
        for action in package.tables["CustomAction"]:
            name, kind = action["Action"], _kind(action)
            if name not in places or action["Source"] not in folders:
                continue
            is_late = places[name] > places["CostFinalize"]
            if (kind == _SETS_PROPERTY and is_late) or (kind == _SETS_FOLDER and not is_late):
                yield f"{sequence}: {name} sets a folder in the wrong place"


def the_product_name_is_short_enough(package):
    """ICE16"""
    if len(package.properties.get("ProductName", "")) > 63:
        yield "the product's name has more than 63 characters"


def components_without_key_path_make_their_folders(package):
    """ICE18"""
    made = {(row["Directory_"], row["Component_"]) for row in package.tables["CreateFolder"]}
    for row in package.tables["Component"]:
        if not row["KeyPath"] and (row["Directory_"], row["Component"]) not in made:
            yield f"the key path of {row['Component']} is a folder that it does not make"


def every_component_belongs_to_a_feature(package):
    """ICE21"""
    used = set(package.column("FeatureComponents", "Component_"))
    for component in package.column("Component", "Component"):
        if component not in used:
            yield f"no feature has {component}"


def the_product_has_valid_codes_and_version(package):
    """ICE24"""
    for name in ("ProductCode", "UpgradeCode"):
        if not VALUES["Guid"](package.properties.get(name, "")):
            yield f"{name} is no code in capitals"
    if not re.fullmatch(r"\d+", package.properties.get("ProductLanguage", "")):
        yield "ProductLanguage is no number"
    version = re.fullmatch(r"(\d+)\.(\d+)\.(\d+)", package.properties.get("ProductVersion", ""))
    if not version or any(int(number) > most for number, most in
                          zip(version.groups(), (255, 255, 65535))):
        yield "ProductVersion is no version"


def sequences_have_what_they_need_and_no_more(package):
    """ICE26"""
    known = {*_ORDER, *_ANYWHERE, *package.column("CustomAction", "Action")}
    for sequence in _SEQUENCES:
        actions = set(package.column(sequence, "Action"))
        for action in sorted(_REQUIRED[sequence] - actions):
            yield f"{sequence} lacks {action}"
        for action in sorted(_PROHIBITED[sequence] & actions):
            yield f"{sequence} must not have {action}"
        for action in sorted(actions - known):
            yield f"{sequence}: nobody knows {action}"


def standard_actions_are_in_order(package):
    """ICE27"""
    for sequence in _SEQUENCES:
        places = package.places(sequence)
        actions = [action for action in _ORDER if action in places]
        for first, second in zip(actions, actions[1:]):
            if places[first] >= places[second]:
                yield f"{sequence}: {first} is not before {second}"


def no_two_files_get_the_same_name(package):
    """ICE30"""
    folder_of = {row["Component"]: row["Directory_"] for row in package.tables["Component"]}
    for name in _repeated((folder_of.get(row["Component_"]), name.upper())
                          for row in package.tables["File"]
                          for name in set(row["FileName"].split("|"))):
        yield f"two files are called {name}"


def the_mode_of_repairs_is_left_to_who_repairs(package):
    """ICE40"""
    if "REINSTALLMODE" in package.properties:
        yield "REINSTALLMODE is set"


def no_reserved_bit_is_set(package):
    """ICE45"""
    for (table, column), known in _BITS.items():
        for row in package.tables[table]:
            if int(row[column] or 0) & ~known:
                yield f"{table}.{column}: {row[column]} has unknown bits"


def properties_differ_by_more_than_case(package):
    """ICE46"""
    names = {*package.properties, *package.column("AppSearch", "Property"),
             *package.properties.get("SecureCustomProperties", "").split(";"),
             *package.column("Upgrade", "ActionProperty"),
             *(row["Source"] for row in package.tables["CustomAction"]
               if _kind(row) == _SETS_PROPERTY)}
    for name in _repeated(name.upper() for name in names):
        yield f"two properties are called {name}"


def searched_properties_are_public(package):
    """ICE52"""
    for name in package.column("AppSearch", "Property"):
        if not VALUES["UpperCase"](name):
            yield f"{name} is not public"


def no_component_mixes_a_users_data_with_the_machines(package):
    """ICE57"""
    for row in package.tables["Registry"]:
        if row["Root"] not in ("0", "2"):
            yield f"{row['Registry']} is not the machine's"


def only_older_versions_are_replaced(package):
    """ICE61"""
    only_detected, includes_highest = 0x2, 0x200
    version = package.properties["ProductVersion"]
    for row in package.tables["Upgrade"]:
        attributes = int(row["Attributes"])
        if attributes & only_detected:
            continue
        if _version(row["VersionMax"]) > _version(version) or not row["VersionMax"] or (
                row["VersionMax"] == version and attributes & includes_highest):
            yield f"{row['ActionProperty']}: replaces this version or newer ones"


def _version(text):
    return [int(number) for number in text.split(".") if number]


def earlier_versions_are_removed_in_a_safe_place(package):
    """ICE63"""
    places = package.places(_EXECUTE)
    place = places.get("RemoveExistingProducts", 0)
    between = [action for action, other in places.items()
               if places["InstallInitialize"] < other < place]
    if place <= places["InstallInitialize"] or between:
        yield "RemoveExistingProducts does not come right after InstallInitialize"


def custom_actions_are_of_known_types(package):
    """ICE68"""
    for row in package.tables["CustomAction"]:
        number = int(row["Type"])
        is_undoing = number & (_WHEN_UNDONE | _AT_THE_END)
        if _kind(row) not in _KINDS or number & ~_KNOWN_BITS or (
                is_undoing and not number & _IN_SCRIPT) or (
                is_undoing == _WHEN_UNDONE | _AT_THE_END):
            yield f"{row['Action']}: nobody knows the type {number}"


def references_to_files_stay_in_their_component(package):
    """ICE69"""
    owners = {row["File"]: row["Component_"] for row in package.tables["File"]}
    for table, column in (("Registry", "Value"), ("Environment", "Value")):
        for row in package.tables[table]:
            for file in re.findall(r"\[[#!]([\w.]+)\]", row[column]):
                if owners.get(file) != row["Component_"]:
                    yield f"{table}: {row[column]} is not of {row['Component_']}"


def the_first_medium_is_the_first(package):
    """ICE71"""
    if "1" not in package.column("Media", "DiskId"):
        yield "no medium has the number 1"


def steps_of_the_script_are_within_it(package):
    """ICE77"""
    places = package.places(_EXECUTE)
    for row in package.tables["CustomAction"]:
        if int(row["Type"]) & _IN_SCRIPT and row["Action"] in places and not (
                places["InstallInitialize"] < places[row["Action"]] < places["InstallFinalize"]):
            yield f"{row['Action']} is not between InstallInitialize and InstallFinalize"


def a_64_bit_package_says_so(package):
    """ICE80"""
    is_64_bit = package.template.startswith("x64;")
    if is_64_bit and package.schema < 200:
        yield f"schema {package.schema} knows no 64-bit package"
    for row in package.tables["Component"]:
        if bool(int(row["Attributes"]) & _64_BIT_COMPONENT) != is_64_bit:
            yield f"{row['Component']} is for another processor than the package"


def places_in_a_sequence_differ(package):
    """ICE82"""
    for sequence in _SEQUENCES:
        for place in _repeated(package.places(sequence).values()):
            yield f"{sequence}: two actions have the place {place}"
    there = _REGISTERING & package.places(_EXECUTE).keys()
    if there != _REGISTERING:
        yield f"of the actions that register the product there are only {sorted(there)}"


def folders_are_no_properties_of_the_system(package):
    """ICE99"""
    taken = {"ALLUSERS", "INSTALLLEVEL", "Installed", "Privileged", "REINSTALL", "REMOVE", "System",
             *package.properties}
    for name in package.column("Directory", "Directory"):
        if name in taken:
            yield f"a folder has the name of the property {name}"


def repairs_and_removals_pass_all_conditions(package):
    """This package's own: a machine must never be stuck with the product."""
    for condition in package.column("LaunchCondition", "Condition"):
        if not condition.startswith("Installed OR ") or not is_condition(condition):
            yield f"{condition} keeps an installed product from being repaired or removed"


def folders_are_private(package):
    """This package's own: Windows passes public ones from the user's process, which knows no earlier
    choice."""
    for name in package.column("Directory", "Directory"):
        if name.upper() == name and name != "TARGETDIR":
            yield f"{name} is public"


def what_is_done_at_the_end_is_done_without_undoing_too(package):
    """This package's own: Windows leaves such actions out where rollback is disabled."""
    conditions = {row["Action"]: row["Condition"] for row in package.tables[_EXECUTE]}
    steps = {(row["Target"], conditions.get(row["Action"])): int(row["Type"])
             for row in package.tables["CustomAction"]}
    for (target, condition), number in steps.items():
        if number & _AT_THE_END and steps.get(
                (target, (condition or "").replace("NOT RollbackDisabled", "RollbackDisabled"))
        ) != number - _AT_THE_END:
            yield f"{target} is not done where rollback is disabled"


RULES = [rule for name, rule in list(globals().items())
         if callable(rule) and getattr(rule, "__module__", "") == __name__
         and re.match(r"ICE\d\d|This package's own", rule.__doc__ or "")]


def broken_rules(package):
    """What is wrong, by the names of the rules."""
    found = {rule.__name__: list(rule(package)) for rule in RULES}
    return {name: errors for name, errors in found.items() if errors}


def main():
    errors = broken_rules(Package(Path(sys.argv[1])))
    for name, texts in errors.items():
        for text in texts:
            print(f"{name}: {text}")
    print(f"{len(RULES)} rules checked, {sum(map(len, errors.values()))} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
