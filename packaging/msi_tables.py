"""What the installer package holds beyond what wixl can write: rows of its tables."""

import msi_columns
from default_values import (
    KEY, SECTION, DefaultValue, default_values, number_of_strengths)
from deployment import INSTALLED_KEY, INSTALLED_VALUE
from msi_choices import Number, Word

SERVICE, TOOLS = "Service", "Tools"  # components
PROGRAMS = ("DozewellService.exe", "dozewellctl.exe", "dozewell_replay.exe")  # files
ENGLISH = "1033"

_NO_NEWER_VERSION = "NOT WIX_DOWNGRADE_DETECTED"

_MACHINE = "2"  # HKEY_LOCAL_MACHINE
_EVENT_SOURCE = r"SYSTEM\CurrentControlSet\Services\EventLog\Application\Dozewell Service"
_CHOICES = INSTALLED_KEY

# Properties that an administrator may give, the default value that each replaces, and what it may
# be.
CHOICES = {
    "FEATUREENABLED": ("EnableZ7Feature", Number(1)),
    "TOTALATTEMPTS": ("TotalAttempts", Number()),
    "STRENGTH": ("Strength", Number(number_of_strengths() - 1)),
    "HISTORYLIMIT": ("HistoryLimit", Number()),
    "DEBUGLOGGING": ("DebugLogging", Number(1)),
    "PREDICTOR": ("Predictor", Word("slots", "rates")),
    "WAKETIMER": ("WakeTimer", Word("driver", "windows")),
}

# Choices that become rights, a folder or actions and no default value. USERSMAYREAD is not
# remembered, since the data folder's rights are.
_FOLDER = "INSTALLFOLDER"
_USERS_MAY_READ = "USERSMAYREAD"
_OTHER_CHOICES = (_FOLDER, "REMOVEDATA", _USERS_MAY_READ)
_REMEMBERED = sorted((*CHOICES, _FOLDER))
_MAY_BE = {**{choice: may_be for choice, (_, may_be) in sorted(CHOICES.items())},
           _USERS_MAY_READ: Number(1)}

# Kinds of custom actions.
_SET_PROPERTY = 51
_RUN_OWN_PROGRAM = 2
_AS_SYSTEM_IN_SCRIPT = 1024 + 2048
_WHEN_UNDONE = 256
_WHEN_NOTHING_CAN_FAIL = 512
_IGNORE_FAILURE = 64

_INSTALLING = 'NOT REMOVE="ALL"'
# The product is removed, not replaced by a newer version.
_REMOVING = 'REMOVE="ALL" AND NOT UPGRADINGPRODUCTCODE'
# The removal of an older version notes its service's settings itself, and leaves the notes to the
# installation of the newer one.
_NOT_UPGRADING = "NOT WIX_UPGRADE_DETECTED"
_NOT_REPLACED = "NOT UPGRADINGPRODUCTCODE"
# The dot keeps the path's last backslash from the quotation mark.
_PATH = '"[ProgramFolder]."'
# A user who is no administrator may start a repair, which has the system's rights.
_STARTED_BY_USER = "Installed AND NOT AdminUser"

# Steps of dozewell-setup: the command, the condition, the place in the sequence, and what is added
# to the action's kind; without _IGNORE_FAILURE, the installation is undone when the step fails.
#
# What undoes a step stands before it, so that it is there when the step is cut short. Steps that
# cannot be undone wait until nothing can fail any more. The service's settings are noted before it
# is stopped (1900). Its process ends before its file is deleted (3500) or replaced (4000). When a
# removal is undone, the folder for the programs is made anew with its rights before the files come
# back to it, so this step stands behind their deletion. That folder is secured before anything is
# put into it (3700), the data folder and the service before the service is started (5900).
_STEPS = {
    "UndoService": ("undo-service", _NOT_UPGRADING, 1860, _WHEN_UNDONE + _IGNORE_FAILURE),
    "NoteService": ("note-service", _NOT_UPGRADING, 1870, _IGNORE_FAILURE),
    "StopService": ("stop-service", "Installed", 1880, _IGNORE_FAILURE),
    "MakeInstallFolderAgain": (f"secure-install-folder {_PATH}", 'REMOVE="ALL"', 3610,
                               _WHEN_UNDONE + _IGNORE_FAILURE),
    "UndoInstallFolder": ("undo-install-folder", _INSTALLING, 3640, _WHEN_UNDONE + _IGNORE_FAILURE),
    "SecureInstallFolder": (f"secure-install-folder {_PATH}", _INSTALLING, 3650, 0),
    "AwaitDeletion": ("await-deletion", _INSTALLING, 5790, 0),
    "UndoDataFolder": ("undo-data-folder", _INSTALLING, 5805, _WHEN_UNDONE + _IGNORE_FAILURE),
    "SecureDataFolder": (f'secure-data-folder "[{_USERS_MAY_READ}]"', _INSTALLING, 5810, 0),
    "ConfigureService": ("configure-service", _INSTALLING, 5820, _IGNORE_FAILURE),
    "ForgetNotes": ("forget-notes", _NOT_REPLACED, 6510, _WHEN_NOTHING_CAN_FAIL + _IGNORE_FAILURE),
    "RestoreMachine": ("restore", _REMOVING, 6520, _WHEN_NOTHING_CAN_FAIL + _IGNORE_FAILURE),
    "RemoveLearntData": ("remove-learnt-data", _REMOVING + ' AND REMOVEDATA="1"', 6530,
                         _WHEN_NOTHING_CAN_FAIL + _IGNORE_FAILURE),
    "RemoveInstallFolder": (f"remove-install-folder {_PATH}", _REMOVING, 6540,
                            _WHEN_NOTHING_CAN_FAIL + _IGNORE_FAILURE),
}

# Tables that wixl leaves out: their columns, types and number of key columns.
NEW_TABLES = {
    "_Validation": (("Table", "Column", "Nullable", "MinValue", "MaxValue", "KeyTable", "KeyColumn",
                     "Category", "Set", "Description"),
                    ("s32", "s32", "s4", "I4", "I4", "S255", "I2", "S32", "S255", "S255"), 2),
    "Environment": (("Environment", "Name", "Value", "Component_"),
                    ("s72", "l255", "L255", "s72"), 1),
}


def added_rows():
    """Rows by table; each row in the order of the table's columns."""
    replaced = {name: choice for choice, (name, _) in CHOICES.items()}
    values = [*default_values(), *_options()]
    missing = replaced.keys() - {value.name for value in values}
    if missing:
        raise ValueError(f"the default settings lack {', '.join(sorted(missing))}")
    all_choices = sorted((*CHOICES, *_OTHER_CHOICES))
    return {
        "_Validation": msi_columns.validation_rows(),
        "Property": [
            ("ARPNOMODIFY", "1"),
            # Otherwise AdminUser is also set for a user whose installation has the system's rights.
            ("MSIUSEREALADMINDETECTION", "1"),
            *((f"Default.{value.name}", value.text) for value in values if value.name in replaced),
        ],
        "Registry": [
            ("EventMessageFile", _MACHINE, _EVENT_SOURCE, "EventMessageFile",
             "#%[#DozewellService.exe]", SERVICE),
            ("TypesSupported", _MACHINE, _EVENT_SOURCE, "TypesSupported", "#7", SERVICE),
            *(_default_value_row(value, replaced) for value in values),
            *((f"Choice.{choice}", _MACHINE, _CHOICES, choice, f"[{choice}]", SERVICE)
              for choice in _REMEMBERED),
            # For tools that look for what is installed, in whatever folder it is.
            ("Installed.Version", _MACHINE, INSTALLED_KEY, INSTALLED_VALUE, "[ProductVersion]",
             SERVICE),
        ],
        # A folder that holds only folders is removed with the product if the product creates it.
        "CreateFolder": [("BrevanFolder", SERVICE)],
        "Environment": [("Path", "=-*PATH", "[~];[ProgramFolder]", TOOLS)],
        "AppSearch": [(_chosen(choice), f"Chosen.{choice}") for choice in _REMEMBERED],
        # 18: a text in the 64-bit registry.
        "RegLocator": [(f"Chosen.{choice}", _MACHINE, _CHOICES, choice, "18")
                       for choice in _REMEMBERED],
        "LaunchCondition": [(f"Installed OR NOT {choice} OR ({may_be.condition(choice)})",
                             f"{choice} must be {may_be.rule()}.")
                            for choice, may_be in _MAY_BE.items()],
        "CustomAction": [
            *((f"Ignore.{name}", str(_SET_PROPERTY), name, "{}", "")
              for name in (*all_choices, *map(_chosen, _REMEMBERED))),
            *((f"Remember.{choice}", str(_SET_PROPERTY), choice, f"[{_chosen(choice)}]", "")
              for choice in _REMEMBERED),
            *((f"Take.{choice}", str(_SET_PROPERTY), _taken(choice), f"[{choice}]", "")
              for choice in _REMEMBERED),
            *((action, str(_RUN_OWN_PROGRAM + _AS_SYSTEM_IN_SCRIPT + added), "Setup", step, "")
              for action, (step, _, _, added) in _steps()),
        ],
        "InstallExecuteSequence": [
            *((f"Ignore.{name}", _is_ignored(name), str(26 + place))
              for place, name in enumerate((*all_choices, *map(_chosen, _REMEMBERED)))),
            ("AppSearch", "", "50"),
            # A choice made now replaces the one that an earlier installation remembered.
            *((f"Remember.{choice}", _is_remembered(choice), str(51 + place))
              for place, choice in enumerate(_REMEMBERED)),
            *((f"Take.{choice}", choice, str(61 + place))
              for place, choice in enumerate(_REMEMBERED)),
            ("RemoveRegistryValues", "", "2600"),
            ("RemoveEnvironmentStrings", "", "3300"),
            ("RemoveFolders", "", "3600"),
            ("CreateFolders", "", "3700"),
            ("WriteRegistryValues", "", "5000"),
            ("WriteEnvironmentStrings", "", "5200"),
            *((action, when, str(place)) for action, (_, when, place, _) in _steps()),
        ],
    }


def _steps():
    """The steps with what stands for those of the end where the installation cannot be undone,
    which the installer then leaves out."""
    for action, (command, when, place, added) in _STEPS.items():
        if not added & _WHEN_NOTHING_CAN_FAIL:
            yield action, (command, when, place, added)
            continue
        yield action, (command, f"{when} AND NOT RollbackDisabled", place, added)
        yield f"{action}.Now", (command, f"{when} AND RollbackDisabled", place + 1,
                                added - _WHEN_NOTHING_CAN_FAIL)


def changed_cells(version):
    """New contents of cells by table, first cell of the row, and column."""
    file_version = {"Version": version + ".0", "Language": ENGLISH}
    return {
        "File": {program: file_version for program in PROGRAMS},
        "Property": {"SecureCustomProperties": {"Value": ";".join([
            "WIX_DOWNGRADE_DETECTED", "WIX_UPGRADE_DETECTED",
            *sorted((*CHOICES, *_OTHER_CHOICES))])}},
        # Without its service, the installation fails.
        "ServiceInstall": {"DozewellService": {"ErrorControl": str(1 + 0x8000)}},
        "LaunchCondition": {_NO_NEWER_VERSION: {"Condition": f"Installed OR {_NO_NEWER_VERSION}"}},
        # A failure after this point brings the previous version back.
        "InstallExecuteSequence": {"RemoveExistingProducts": {"Sequence": "1501"}},
    }


# Windows compares files that have a version by the version, not by their hash.
DELETED_ROWS = {"MsiFileHash": PROGRAMS}


def _default_value_row(value, replaced):
    text = f"[Default.{value.name}]" if value.name in replaced else value.text
    return (f"Default.{value.name}", _MACHINE, value.key, value.name,
            "#" + text if value.is_number else text, SERVICE)


def _options():
    """Values that a choice lays down although the default settings do not have them, since the
    service works the same without them: each with its first word, until another is chosen."""
    return [DefaultValue(rf"{KEY}\Predictors\{SECTION}", name, may_be.words[0], False)
            for name, may_be in CHOICES.values() if isinstance(may_be, Word)]


def _chosen(choice):
    """The property with what an earlier installation remembers."""
    return f"CHOSEN_{choice}"


def _taken(choice):
    """What a choice replaces: the folder of the programs or a default value."""
    return "ProgramFolder" if choice == _FOLDER else f"Default.{CHOICES[choice][0]}"


def _is_ignored(name):
    """What an installed product does not take, since its launch conditions let everything pass."""
    if name == _FOLDER:
        return "Installed"
    if name in _MAY_BE:
        return f"Installed AND (NOT AdminUser OR NOT ({_MAY_BE[name].condition(name)}))"
    return _STARTED_BY_USER


def _is_remembered(choice):
    chosen = _chosen(choice)
    valid = f" AND ({_MAY_BE[choice].condition(chosen)})" if choice in _MAY_BE else ""
    return f"NOT {choice} AND {chosen}{valid}"
