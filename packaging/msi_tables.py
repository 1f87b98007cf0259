"""What the installer package holds beyond what wixl can write: rows of its tables."""

from default_values import default_values

SERVICE, TOOLS = "Service", "Tools"  # components
PROGRAMS = ("DozewellService.exe", "dozewellctl.exe", "dozewell_replay.exe")  # files
ENGLISH = "1033"

_MACHINE = "2"  # HKEY_LOCAL_MACHINE
_EVENT_SOURCE = r"SYSTEM\CurrentControlSet\Services\EventLog\Application\Dozewell Service"
_CHOICES = r"SOFTWARE\Corisk\Z7\Installer"

# Properties that an administrator may give, the default value that each replaces, and the largest
# number.
CHOICES = {
    "FEATUREENABLED": ("EnableZ7Feature", 1),
    "TOTALATTEMPTS": ("TotalAttempts", 2147483647),
    "STRENGTH": ("Strength", 2147483647),
    "HISTORYLIMIT": ("HistoryLimit", 2147483647),
    "DEBUGLOGGING": ("DebugLogging", 1),
}

# Choices that become rights or actions and no default value. USERSMAYREAD is not remembered, since
# the data folder's rights are.
_USERS_MAY_READ = "USERSMAYREAD"
_OTHER_CHOICES = ("INSTALLFOLDER", "REMOVEDATA", _USERS_MAY_READ)

# Kinds of custom actions.
_SET_PROPERTY = 51
_RUN_OWN_PROGRAM = 2
_AS_SYSTEM_IN_SCRIPT = 1024 + 2048
_WHEN_UNDONE = 256
_IGNORE_FAILURE = 64

_INSTALLING = 'NOT REMOVE="ALL"'
_INSTALLING_ANEW = "NOT Installed AND NOT WIX_UPGRADE_DETECTED"
# The product is removed, not replaced by a newer version.
_REMOVING = 'REMOVE="ALL" AND NOT UPGRADINGPRODUCTCODE'
# The dot keeps the path's last backslash from the quotation mark.
_FOLDER = '"[INSTALLFOLDER]."'
# A user who is no administrator may start a repair, which has the system's rights.
_STARTED_BY_USER = "Installed AND NOT AdminUser"

# Steps of dozewell-setup: the command, the condition, the place in the sequence, and what is added
# to the action's kind; without _IGNORE_FAILURE, the installation is undone when the step fails. The
# user's timeouts are restored before the service is stopped (1900). Its process ends before its file
# is deleted (3500) or replaced (4000). The folder for the programs is secured before anything is put
# into it (3700), the data folder and the service before the service is started (5900).
_STEPS = {
    "RestoreMachine": ("restore", _REMOVING, 1850, _IGNORE_FAILURE),
    "StartServiceAgain": ("start-service", "Installed", 1870, _WHEN_UNDONE + _IGNORE_FAILURE),
    "StopService": ("stop-service", "Installed", 1880, _IGNORE_FAILURE),
    "RemoveLearntData": ("remove-learnt-data", _REMOVING + ' AND REMOVEDATA="1"', 2650,
                         _IGNORE_FAILURE),
    "RemoveInstallFolder": (f"remove-install-folder {_FOLDER}", _REMOVING, 3640, _IGNORE_FAILURE),
    "SecureInstallFolder": (f"secure-install-folder {_FOLDER}", _INSTALLING, 3650, 0),
    "UndoInstallFolder": (f"remove-install-folder {_FOLDER}", _INSTALLING_ANEW, 3660,
                          _WHEN_UNDONE + _IGNORE_FAILURE),
    "SecureDataFolder": (f'secure-data-folder "[{_USERS_MAY_READ}]"', _INSTALLING, 5810, 0),
    "ConfigureService": ("configure-service", _INSTALLING, 5820, _IGNORE_FAILURE),
}

# Tables that wixl leaves out: their columns, types and number of key columns.
NEW_TABLES = {
    "Environment": (("Environment", "Name", "Value", "Component_"),
                    ("s72", "l255", "L255", "s72"), 1),
}


def added_rows():
    """Rows by table; each row in the order of the table's columns."""
    replaced = {name: choice for choice, (name, _) in CHOICES.items()}
    values = default_values()
    missing = replaced.keys() - {value.name for value in values}
    if missing:
        raise ValueError(f"the default settings lack {', '.join(sorted(missing))}")
    choices = sorted(CHOICES)
    all_choices = sorted((*CHOICES, *_OTHER_CHOICES))
    return {
        "Property": [
            ("ARPNOMODIFY", "1"),
            # Otherwise AdminUser is also set for a user whose installation has the system's rights.
            ("MSIUSEREALADMINDETECTION", "1"),
            *((value.name, value.text) for value in values if value.name in replaced),
        ],
        "Registry": [
            ("EventMessageFile", _MACHINE, _EVENT_SOURCE, "EventMessageFile",
             "#%[#DozewellService.exe]", SERVICE),
            ("TypesSupported", _MACHINE, _EVENT_SOURCE, "TypesSupported", "#7", SERVICE),
            *(_default_value_row(value, replaced) for value in values),
            *((f"Choice.{choice}", _MACHINE, _CHOICES, choice, f"[{choice}]", SERVICE)
              for choice in choices),
        ],
        # A folder that holds only folders is removed with the product if the product creates it.
        "CreateFolder": [("BREVANFOLDER", SERVICE)],
        "Environment": [("Path", "=-*PATH", "[~];[INSTALLFOLDER]", TOOLS)],
        "AppSearch": [(f"Chosen.{choice}", f"Chosen.{choice}") for choice in choices],
        # 18: a text in the 64-bit registry.
        "RegLocator": [(f"Chosen.{choice}", _MACHINE, _CHOICES, choice, "18")
                       for choice in choices],
        "LaunchCondition": [(_is_valid(choice, largest),
                             f"{choice} must be a whole number from 0 to {largest}.")
                            for choice, largest in
                            (*((choice, largest) for choice, (_, largest) in
                               sorted(CHOICES.items())), (_USERS_MAY_READ, 1))],
        "CustomAction": [
            *((f"Ignore.{choice}", str(_SET_PROPERTY), choice, "{}", "")
              for choice in all_choices),
            *((f"Remember.{choice}", str(_SET_PROPERTY), choice, f"[Chosen.{choice}]", "")
              for choice in choices),
            *((f"Take.{choice}", str(_SET_PROPERTY), CHOICES[choice][0], f"[{choice}]", "")
              for choice in choices),
            *((action, str(_RUN_OWN_PROGRAM + _AS_SYSTEM_IN_SCRIPT + added), "Setup", step, "")
              for action, (step, _, _, added) in _STEPS.items()),
        ],
        "InstallExecuteSequence": [
            *((f"Ignore.{choice}", _STARTED_BY_USER, str(31 + place))
              for place, choice in enumerate(all_choices)),
            ("AppSearch", "", "50"),
            # A choice made now replaces the one that an earlier installation remembered.
            *((f"Remember.{choice}", f"NOT {choice} AND Chosen.{choice}", str(51 + place))
              for place, choice in enumerate(choices)),
            *((f"Take.{choice}", choice, str(61 + place))
              for place, choice in enumerate(choices)),
            ("RemoveRegistryValues", "", "2600"),
            ("RemoveEnvironmentStrings", "", "3300"),
            ("RemoveFolders", "", "3600"),
            ("CreateFolders", "", "3700"),
            ("WriteRegistryValues", "", "5000"),
            ("WriteEnvironmentStrings", "", "5200"),
            *((action, when, str(place)) for action, (_, when, place, _) in _STEPS.items()),
        ],
    }


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
        # A failure after this point brings the previous version back.
        "InstallExecuteSequence": {"RemoveExistingProducts": {"Sequence": "1501"}},
    }


# Windows compares files that have a version by the version, not by their hash.
DELETED_ROWS = {"MsiFileHash": PROGRAMS}


def _default_value_row(value, replaced):
    text = f"[{value.name}]" if value.name in replaced else value.text
    return (f"Default.{value.name}", _MACHINE, value.key, value.name,
            "#" + text if value.is_number else text, SERVICE)


def _is_valid(choice, largest):
    return f"NOT {choice} OR ({choice} >= 0 AND {choice} <= {largest})"
