"""Tests that the administrative template keeps the rules of tests/checks/template_rules.py, and that
each of them finds what it is there for: a copy of the template is broken, and that rule must say so
and no other.

    python3 -m tests.template_rules_test
"""

import copy
import functools
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
from pathlib import Path

from tests.support.cases import option_parser, run, tests_in
from tests.support.cli import ROOT
from tests.support.expect import contains, equal

sys.path += [str(ROOT / "tests" / "checks"), str(ROOT / "packaging")]
from default_values import default_values  # in these folders
from policy.policies import LEFT_OUT
from policy.settings_page import Setting, settings
from policy.template import DEFINITIONS, TEXTS, make_template
from template_rules import RULES, Template, broken_rules
from template_schema import NAMESPACES, local_name

DEFAULTS = {value.name: value.text for value in default_values()}
VERSION = (ROOT / "VERSION").read_text("utf-8").strip()
SETTING_NAMES = ROOT / "src" / "settings" / "setting_names.h"


def template(version=VERSION):
    texts = make_template(version)
    return Template(*(ET.fromstring(texts[name].encode()) for name in (DEFINITIONS, TEXTS)))


# What breaks each rule: a function that changes the template.

def at(template, path):
    """The element at a path of names, each with an optional name or id of the element in brackets."""
    found = template.definitions if not path.startswith("texts/") else template.texts
    for step in path.removeprefix("texts/").split("/"):
        name, _, wanted = step.rstrip("]").partition("[")
        found = next(child for child in found if local_name(child) == name and (
            not wanted or wanted in (child.get("name"), child.get("id"), child.get("refId"))))
    return found


def change(path, attribute, value):
    return lambda template: at(template, path).set(attribute, value)


def lose(path, attribute):
    return lambda template: at(template, path).attrib.pop(attribute)


def say(path, text):
    def make(template):
        at(template, path).text = text
    return make


def rename(path, name):
    def make(template):
        at(template, path).tag = f"{{{NAMESPACES[0]}}}{name}"
    return make


def delete(path):
    def make(template):
        parent, _, _ = path.rpartition("/")
        at(template, parent).remove(at(template, path))
    return make


def repeat(path):
    def make(template):
        parent, _, _ = path.rpartition("/")
        at(template, parent).append(copy.deepcopy(at(template, path)))
    return make


def all_of(*makes):
    def make(template):
        for each in makes:
            each(template)
    return make


def switch_by_texts(template):
    """Has a switch write texts."""
    for item in at(template, "policies/policy[DebugLogging]/elements/enum"):
        number = item[0][0]
        number.tag, number.text = f"{{{NAMESPACES[0]}}}string", number.attrib.pop("value")


def replace(old, new):
    """In all explanations."""
    def make(template):
        for text in template.each("string"):
            text.text = (text.text or "").replace(old, new)
    return make


POLICY = "policies/policy[HistoryLimit]"
ELEMENT = f"{POLICY}/elements/decimal"
DELETED = f"{POLICY}/disabledList/item"
ITEMS = "policies/policy[Predictor]/elements/enum"
FORMS = "texts/resources/presentationTable"
STRINGS = "texts/resources/stringTable"
LIST = f"{FORMS}/presentation[Predictor]/dropdownList"
BOX = f"{FORMS}/presentation[HistoryLimit]/decimalTextBox"

BREAKS = {
    "the_files_keep_the_schema": [
        change("categories/category", "text", "more"),
        change(POLICY, "class", "Computer"),
        change(ELEMENT, "maxValue", "many"),
        change(ELEMENT, "maxValue", "4294967296"),
        change("supportedOn/definitions/definition", "displayName", "Dozewell"),
        lose("policyNamespaces/target", "namespace"),
        lambda template: at(template, "policies").insert(0, ET.Element("policy")),
        lambda template: template.definitions.remove(at(template, "policyNamespaces")),
        lambda template: at(template, POLICY).insert(
            0, copy.deepcopy(at(template, f"{POLICY}/supportedOn"))),
        rename(f"{FORMS}/presentation[WR]/textBox/label", "caption"),
        say("categories/category", "Dozewell"),
        lambda template: template.texts.set("revision", "1")],
    "all_strings_and_forms_that_are_named_are_there": [
        delete(f"{STRINGS}/string[Predictor_0]"),
        change(f"{ITEMS}/item", "displayName", "$(string.Predictor_7)"),
        lambda template: ET.SubElement(at(template, STRINGS), at(template, STRINGS)[0].tag,
                                       id="More").__setattr__("text", "more"),
        all_of(repeat(f"{FORMS}/presentation[WR]"),
               change(f"{FORMS}/presentation[WR]", "id", "More"))],
    "no_text_is_empty": [say(f"{STRINGS}/string[Predictor_0]", " \n")],
    "names_are_given_once": [
        repeat("categories/category[Dozewell_Search]"),
        repeat("supportedOn/definitions/definition"),
        repeat(f"{STRINGS}/string[Predictor_0]"),
        change("policies/policy[WR]", "name", "HistoryLimit")],
    "categories_and_products_that_are_named_are_there": [
        change(f"{POLICY}/parentCategory", "ref", "Dozewell_Clients"),
        change(f"{POLICY}/supportedOn", "ref", "windows:SUPPORTED_Windows10"),
        delete(f"{POLICY}/parentCategory"),
        lambda template: at(template, "categories/category[Dozewell]").append(
            ET.Element(at(template, f"{POLICY}/parentCategory").tag, ref="Dozewell_Search"))],
    "every_element_has_one_control_of_its_kind": [
        change(BOX, "refId", "Limit"),
        repeat(f"{BOX}"),
        delete(BOX),
        all_of(lose(LIST, "noSort"), lose(LIST, "defaultItem"), rename(LIST, "decimalTextBox"))],
    "limits_and_first_values_fit": [
        change(BOX, "defaultValue", "10000"),
        change(ELEMENT, "minValue", "181"),
        change(ELEMENT, "maxValue", "10000"),
        all_of(lose(BOX, "defaultValue"), change(ELEMENT, "minValue", "2")),
        say(f"{FORMS}/presentation[WR]/textBox/defaultValue", "1 " * 128),
        change(LIST, "defaultItem", "2"),
        say(f"{ITEMS}/item/value/string", "rates")],
    "strings_that_are_set_are_short_enough": [say(f"{ITEMS}/item/value/string", "s" * 256)],
    "keys_have_no_hive": [
        all_of(*(change(path, "key", "HKLM\\SOFTWARE\\Corisk\\Z7\\Branding")
                 for path in (POLICY, DELETED))),
        all_of(*(change(path, "key", "SOFTWARE\\Corisk\\Z7\\Branding\\")
                 for path in (POLICY, DELETED)))],
    "the_revisions_fit": [
        change("resources", "minRequiredRevision", "9.0"),
        lambda template: template.definitions.set("schemaVersion", "2.0")],
    "no_two_policies_write_the_same_value": [
        all_of(change(ELEMENT, "valueName", "debuglogging"),
               change(DELETED, "valueName", "debuglogging"))],
    "a_disabled_policy_takes_back_what_an_enabled_one_writes": [
        delete(f"{POLICY}/disabledList"),
        change(DELETED, "valueName", "HistoryLimits")],
    "values_are_those_that_the_service_looks_for": [
        delete("policies/policy[WR]"),
        change(POLICY, "class", "Both"),
        all_of(*(change(path, "valueName", "StartTime") for path in (ELEMENT, DELETED))),
        all_of(*(change(path, "key", "SOFTWARE\\Corisk\\Z7\\Default")
                 for path in (POLICY, DELETED)))],
    "values_have_the_type_that_the_service_reads": [
        change(ELEMENT, "storeAsText", "true"),
        lose("policies/policy[Strength]/elements/decimal", "storeAsText"),
        switch_by_texts],
    "explanations_say_what_a_preference_is": [
        replace("This is a preference, not a policy.", ""),
        replace("wins over this one", "wins"),
        replace("WARNING: ", ""),
        replace("A new value counts", "It counts"),
        lambda template: at(template, f"{STRINGS}/string[HistoryLimit_Help]").__setattr__(
            "text", at(template, f"{STRINGS}/string[Strength_Help]").text)],
}

# What a break also breaks: the service looks for other values, and nobody names the texts of a
# policy that is gone.
ALSO_BROKEN = {
    ("keys_have_no_hive", 0): {"values_are_those_that_the_service_looks_for"},
    ("keys_have_no_hive", 1): {"values_are_those_that_the_service_looks_for"},
    ("no_two_policies_write_the_same_value", 0): {"values_are_those_that_the_service_looks_for"},
    ("values_are_those_that_the_service_looks_for", 0):
        {"all_strings_and_forms_that_are_named_are_there"},
}


def test_the_template_keeps_all_rules(template):
    equal(broken_rules(template), {})


def test_every_rule_has_what_breaks_it(_):
    equal(sorted(BREAKS), sorted(rule.__name__ for rule in RULES))


def test_each_rule_finds_what_breaks_it_and_no_other_does(template):
    for name, makes in BREAKS.items():
        for number, make in enumerate(makes):
            broken = copy.deepcopy(template)
            make(broken)
            equal(set(broken_rules(broken)), {name, *ALSO_BROKEN.get((name, number), ())},
                  f"{name} {number}")


def test_the_page_has_all_values_of_the_service_and_no_other(_):
    names = set(re.findall(r'Name\[\] = L?"(\w+)"', SETTING_NAMES.read_text("utf-8")))
    equal(settings().keys() - {"Best%d"}, names)


def test_the_pages_say_what_is_not_offered_and_why(_):
    page = (ROOT / "docs" / "deploying.md").read_text("utf-8").partition("| not offered |")[2]
    rows = [line.strip("|").split("|") for line in page.splitlines() if line.startswith("| `")]
    said = {name: why.strip() for names, why in rows for name in re.findall(r"`([^`]+)`", names)}
    equal(said, LEFT_OUT)


def test_explanations_are_those_of_the_page(template):
    texts = template.strings()
    text = texts["HistoryLimit_Help"]
    limit = settings()["HistoryLimit"]
    contains(text, limit.meaning[1:] + ". Unit: days.\n\nWithout any value: " + limit.absent + ".")
    contains(text, f"The installer lays down {DEFAULTS['HistoryLimit']}.")
    contains(text, "A new value counts from the next save of the history on.")
    contains(texts["DisablePrediction_Help"], "(0 or 1 by the optimizer)")
    # What the page says "the same" for, it says in the row before.
    equal(settings()["SecondLastWeight"].absent, settings()["FirstLastWeight"].absent)


def test_a_time_that_nothing_explains_is_refused(_):
    try:
        Setting("A", "", "", "", "client; at full moon", "").counts()
    except ValueError as error:
        contains(str(error), '"at full moon"')
    else:
        raise AssertionError("no error")


def test_the_files_are_written_as_windows_looks_for_them(_):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([ROOT / "packaging" / "policy" / "template.py", "--out", folder], check=True)
        written = {str(path.relative_to(folder)): path.read_text("utf-8")
                   for path in Path(folder).rglob("*") if path.is_file()}
    equal(written, make_template(VERSION))
    equal(sorted(written), ["Dozewell.admx", "en-US/Dozewell.adml"])


def main():
    options = option_parser(__doc__).parse_args()
    whole = template()
    return run([(name, functools.partial(test, whole)) for name, test in tests_in(globals())],
               options.words)


if __name__ == "__main__":
    sys.exit(main())
