"""The values that the installer lays down: default-settings.ini, value by value."""

import configparser
import re
from pathlib import Path
from typing import NamedTuple

FILE = Path(__file__).with_name("default-settings.ini")
KEY = r"SOFTWARE\Corisk\Z7\Default"
SECTION = "CyclicProbabilityPredictor"

# Sections whose values are numbers, and the one whose values are texts.
_NUMBERS = ("Settings", "Start")


class DefaultValue(NamedTuple):
    key: str         # below HKEY_LOCAL_MACHINE
    name: str
    text: str        # decimal numbers, with commas or blanks between them in a list
    is_number: bool  # a DWORD, else a text


def number_of_strengths(file=FILE):
    """How many strengths there are to choose among: the entries of WR."""
    weights, = (value.text for value in default_values(file) if value.name == "WR")
    return len(weights.replace(",", " ").split())


def default_values(file=FILE):
    ini = configparser.ConfigParser(interpolation=None)
    ini.optionxform = str
    ini.read_string(file.read_text("utf-8"), str(file))
    values = []
    for section in ini.sections():
        is_number = section in _NUMBERS
        if not is_number and section != SECTION:
            raise ValueError(f"{file}: unknown section [{section}]")
        key = KEY if is_number else rf"{KEY}\Predictors\{section}"
        for name, text in ini[section].items():
            _check(file, name, text, is_number)
            values.append(DefaultValue(key, name, text, is_number))
    return values


def _check(file, name, text, is_number):
    if is_number:
        if not re.fullmatch(r"\d{1,10}", text) or int(text) >= 2**31:
            raise ValueError(f"{file}: {name}: not a number from 0 to 2147483647: {text}")
    elif not re.fullmatch(r"[-\d][-\d, ]*", text):
        raise ValueError(f"{file}: {name}: not a list of numbers: {text}")
