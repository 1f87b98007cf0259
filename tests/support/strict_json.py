"""A strict reader of JSON, and what the manual says of it."""

import json
import re
from pathlib import Path

from tests.support.expect import equal

PAGE = Path(__file__).resolve().parents[2] / "docs" / "json.md"
# A heading with the JSON that stands below it.
EXAMPLE = re.compile(r"^(##+) ([^\n]+)\n((?:(?!#)[^\n]*\n)*)", re.MULTILINE)


def _no_constant(name):
    raise AssertionError(f"{name} is no JSON")


def _no_duplicates(pairs):
    keys = [key for key, _ in pairs]
    equal(sorted(set(keys)), sorted(keys), "keys")
    return dict(pairs)


def _number(text):
    value = float(text)
    if value.is_integer() and abs(value) < 2**53:
        raise AssertionError(f"{text} is whole and has a fraction")
    return value


def strict_json(output):
    """The document that a command has printed: one, on one line, in ASCII."""
    equal((output.count("\n"), output.endswith("\n")), (1, True), f"lines of {output[:200]!r}")
    equal(output.isascii() and output[:-1].isprintable(), True, "ASCII that can be printed")
    return json.loads(output, parse_constant=_no_constant, object_pairs_hook=_no_duplicates,
                      parse_float=_number)


def documented_examples(program):
    """The examples in the manual, by the commands' names."""
    examples = {}
    section = None
    for level, heading, text in EXAMPLE.findall(PAGE.read_text("utf-8")):
        if level == "##":
            section = heading
        _, found, block = text.partition("```json\n")
        if section == program and found:
            example = json.loads(block.partition("```")[0], object_pairs_hook=_no_duplicates)
            for command in re.split(", | and ", heading):
                examples[command] = example
    return examples


def without_identity(document):
    """A document without the machine's identity, which is its last key. The objects of a list have
    it only if the machine has a name."""
    if isinstance(document, list):
        return [without_identity(item) if isinstance(item, dict) and "identity" in item else item
                for item in document]
    equal(list(document)[-1], "identity", "the last key")
    return {key: value for key, value in document.items() if key != "identity"}


def _identities(document):
    if isinstance(document, dict):
        return [document["identity"]]
    return [item["identity"] for item in document if isinstance(item, dict) and "identity" in item]


def expect_documented(got, example, where="the document"):
    """Expects that a document has the keys of an example, in its order, and values of its kinds,
    and the machine's identity behind them. Anything but the program's version may be null."""
    _expect_kinds(without_identity(got), example, where)
    documented = documented_examples("The machine")["identity"]["identity"]
    for identity in _identities(got):
        _expect_kinds(identity, documented, f"the identity in {where}")
        equal(isinstance(identity["version"], str), True, f"a version in {where}")


def expect_documented_of_many(got, example, where="the document"):
    """The same for a document about many machines, which has no identity."""
    _expect_kinds(got, example, where)


def _expect_kinds(got, example, where):
    if got is None or example is None:
        return
    if isinstance(example, dict):
        equal(list(got), list(example), f"keys of {where}")
        for key, value in example.items():
            _expect_kinds(got[key], value, f"{where}, {key}")
    elif isinstance(example, list):
        equal(isinstance(got, list), True, f"{where} is a list")
        for item in got if example else []:
            _expect_kinds(item, example[0], f"an item of {where}")
    else:
        kinds = (int, float) if type(example) in (int, float) else (type(example),)
        equal(type(got) in kinds, True, f"kind of {where}, {got!r}")
