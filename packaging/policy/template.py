#!/usr/bin/env python3
"""Makes the administrative template for the values of the registry key Branding:

    packaging/policy/template.py --out FOLDER

writes Dozewell.admx there, and its English texts in en-US/Dozewell.adml."""

import argparse
import sys
import xml.etree.ElementTree as ET
from pathlib import Path

PACKAGING = Path(__file__).resolve().parents[1]
sys.path.append(str(PACKAGING))

from default_values import default_values  # in that folder
from policy.policies import POLICIES, Number, Switch, Text, Word
from policy.settings_page import settings

NAMESPACE = "http://schemas.microsoft.com/GroupPolicy/2006/07/PolicyDefinitions"
SCHEMA_VERSION = "1.0"
DEFINITIONS, TEXTS = "Dozewell.admx", "en-US/Dozewell.adml"

_PRODUCT = "Dozewell"
_SUPPORTED = "SUPPORTED_Dozewell"

_PREFERENCE = """\
This is a preference, not a policy. Enabled writes the value into the registry key Branding, Disabled \
deletes it there, Not Configured leaves it as it is. It stays on a machine when this policy no longer \
applies to that machine. To take it back, choose Disabled, wait until all machines have got that, and \
only then remove the policy.

A value {name} in the registry key Current wins over this one.

If a machine has no key Branding when the service starts, the service looks there only after its next \
start."""
_WARNING = """\
WARNING: This value is also written into Current while the service runs ({written}). From then on the \
preference has no effect on that machine."""


class _Files:
    """The two files as they grow, each a tree."""

    def __init__(self, version):
        attributes = {"revision": version, "schemaVersion": SCHEMA_VERSION, "xmlns": NAMESPACE}
        self.definitions = ET.Element("policyDefinitions", attributes)
        namespaces = _add(self.definitions, "policyNamespaces")
        _add(namespaces, "target", prefix="dozewell", namespace="Brevan.Policies.Dozewell")
        _add(self.definitions, "resources", minRequiredRevision=version)
        supported = _add(_add(self.definitions, "supportedOn"), "definitions")
        self.texts = ET.Element("policyDefinitionResources", attributes)
        _add(self.texts, "displayName").text = _PRODUCT
        _add(self.texts, "description").text = f"Values of the key Branding of {_PRODUCT}"
        resources = _add(self.texts, "resources")
        self._strings = _add(resources, "stringTable")
        self._presentations = _add(resources, "presentationTable")
        _add(supported, "definition", name=_SUPPORTED,
             displayName=self.string(_SUPPORTED, f"{_PRODUCT} {version} and later"))
        self.categories = _add(self.definitions, "categories")
        self.policies = _add(self.definitions, "policies")

    def string(self, name, text):
        """The reference to a new text."""
        _add(self._strings, "string", id=name).text = text
        return f"$(string.{name})"

    def presentation(self, name):
        """The reference to a new form, and the form."""
        return f"$(presentation.{name})", _add(self._presentations, "presentation", id=name)


def make_template(version):
    """The texts of the two files, by their names, for a version such as "0.1.0"."""
    files = _Files(".".join(version.split(".")[:2]))
    described, defaults = settings(), {value.name: value.text for value in default_values()}
    _add(files.categories, "category", name=_PRODUCT,
         displayName=files.string(_PRODUCT, _PRODUCT))
    for category, policies in POLICIES.items():
        name = f"{_PRODUCT}_{category}"
        added = _add(files.categories, "category", name=name,
                     displayName=files.string(name, category))
        _add(added, "parentCategory", ref=_PRODUCT)
        for policy in policies:
            setting = described[policy.name]
            _add_policy(files, name, policy, setting,
                        defaults.get(policy.name, setting.absent))
    return {DEFINITIONS: _xml(files.definitions), TEXTS: _xml(files.texts)}


def _add_policy(files, category, policy, setting, default):
    presentation, form = files.presentation(policy.name)
    added = _add(
        files.policies, "policy", {"class": "Machine"}, name=policy.name, key=policy.key,
        displayName=files.string(policy.name, f"{policy.title} ({policy.name})"),
        explainText=files.string(f"{policy.name}_Help", _explanation(policy, setting, default)),
        presentation=presentation)
    _add(added, "parentCategory", ref=category)
    _add(added, "supportedOn", ref=_SUPPORTED)
    # The editor then knows a disabled policy from one that is not configured.
    deleted = _add(_add(added, "disabledList"), "item", key=policy.key, valueName=policy.name)
    _add(_add(deleted, "value"), "delete")
    _FORMS[type(policy.form)](files, _add(added, "elements"), form, policy, default)


def _explanation(policy, setting, default):
    meaning = f"{setting.meaning[:1].upper()}{_sentence(setting.meaning[1:])}"
    if isinstance(policy.form, (Number, Text)):
        meaning += f" {_KIND_OF_UNIT[type(policy.form)]}: {setting.unit}."
    absent = f"Without any value: {_sentence(setting.absent)}"
    if default != setting.absent:
        absent += f" The installer lays down {default}."
    warnings = [_WARNING.format(written=setting.written)] if setting.written else []
    return "\n\n".join([meaning, absent, f"A new value counts {setting.counts()}.", *warnings,
                        _PREFERENCE.format(name=policy.name)])


def _sentence(text):
    return text if text.endswith(".") else text + "."


_KIND_OF_UNIT = {Number: "Unit", Text: "Form"}

# How each kind of value is asked for: its element of the policy and its control of the form.

def _add_items(element, files, policy, values):
    """The values to choose among: their words, and an element for what the registry gets."""
    for number, (words, kind, value) in enumerate(values):
        item = _add(element, "item", displayName=files.string(f"{policy.name}_{number}", words))
        added = _add(_add(item, "value"), kind)
        if kind == "decimal":
            added.set("value", value)
        else:
            added.text = value


def _add_list(files, elements, form, policy, values, default):
    element = _add(elements, "enum", id=policy.name, valueName=policy.name, required="true")
    _add_items(element, files, policy, values)
    place = [value for _, _, value in values].index(default)
    _add(form, "dropdownList", refId=policy.name, noSort="true",
         defaultItem=str(place)).text = f"{policy.title}:"


def _add_switch(files, elements, form, policy, default):
    values = [(policy.form.off, "decimal", "0"), (policy.form.on, "decimal", "1")]
    _add_list(files, elements, form, policy, values, default)


def _add_word(files, elements, form, policy, default):
    values = [(words, "string", value) for value, words in policy.form.words.items()]
    _add_list(files, elements, form, policy, values, default)


def _add_number(_, elements, form, policy, default):
    element = _add(elements, "decimal", id=policy.name, valueName=policy.name, required="true",
                   minValue=str(policy.form.least), maxValue=str(policy.form.most))
    if policy.form.is_text:
        element.set("storeAsText", "true")
    _add(form, "decimalTextBox", refId=policy.name, defaultValue=default).text = f"{policy.title}:"


def _add_text(_, elements, form, policy, default):
    _add(elements, "text", id=policy.name, valueName=policy.name, required="true",
         maxLength=str(policy.form.longest))
    box = _add(form, "textBox", refId=policy.name)
    _add(box, "label").text = f"{policy.title}:"
    _add(box, "defaultValue").text = default


_FORMS = {Switch: _add_switch, Number: _add_number, Word: _add_word, Text: _add_text}


def _add(parent, tag, attributes=None, /, **more):
    return ET.SubElement(parent, tag, {**(attributes or {}), **more})


def _xml(tree):
    ET.indent(tree)
    return ET.tostring(tree, "utf-8", xml_declaration=True).decode() + "\n"


def write_template(folder, version):
    for name, text in make_template(version).items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, "utf-8")


def main():
    parser = argparse.ArgumentParser(description="Makes the administrative template.")
    parser.add_argument("--out", type=Path, required=True, help="folder for the two files")
    version = (PACKAGING.parent / "VERSION").read_text("utf-8").strip()
    write_template(parser.parse_args().out, version)


if __name__ == "__main__":
    main()
