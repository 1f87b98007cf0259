#!/usr/bin/env python3
"""Checks the administrative template against the rules that Microsoft's documentation of such files
states, and some of this product's own: template_rules.py FOLDER

Each rule is a function that yields what is wrong. The editors of policies themselves run on Windows
only."""

import re
import sys
import xml.etree.ElementTree as ET
from collections import Counter
from pathlib import Path

from template_schema import local_name, schema_errors  # in this folder

ROOT = Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "packaging"))
from policy.policies import BRANDING, LEFT_OUT, POLICIES, PREDICTOR_SECTION  # in that folder
from policy.settings_page import settings
from policy.template import DEFINITIONS, TEXTS

# The control of a form that can ask for each kind of element.
_CONTROLS = {"decimal": {"decimalTextBox"}, "text": {"textBox", "comboBox"},
             "enum": {"dropdownList"}, "boolean": {"checkBox"}, "list": {"listBox"},
             "longDecimal": {"longDecimalTextBox"}, "multiText": {"multiTextBox"}}
_LONGEST_STRING = 255       # that an item of an enumeration may set
_LONGEST_TEXT = 1023        # of a text element that has no maxLength
_LARGEST_NUMBER = 9999      # of a decimal element that has no maxValue
_FIRST_NUMBER = 1           # in a box that has no defaultValue
_REFERENCE = re.compile(r"\$\((string|presentation)\.(\w+)\)")
_CASE_IS_IGNORED = re.IGNORECASE


class Template:
    """The two files, as trees."""

    def __init__(self, definitions, texts):
        self.definitions, self.texts = definitions, texts

    @classmethod
    def read(cls, folder):
        return cls(*(ET.fromstring((folder / name).read_bytes()) for name in (DEFINITIONS, TEXTS)))

    def each(self, name):
        """All elements of this name, in both files."""
        return [element for tree in (self.definitions, self.texts) for element in tree.iter()
                if local_name(element) == name]

    def strings(self):
        """The texts by their names."""
        return {element.get("id"): element.text or "" for element in self.each("string")
                if element.get("id")}

    def elements(self, policy):
        return [child for part in policy if local_name(part) == "elements" for child in part]

    def controls(self, policy):
        """The controls of a policy's form by the element that they ask for."""
        _, _, name = (policy.get("presentation") or "").partition("presentation.")
        return {control.get("refId"): control for form in self.each("presentation")
                if form.get("id") == name.rstrip(")") for control in form if control.get("refId")}

    def values(self, policy):
        """Keys and names of the values that a policy writes."""
        return [(element.get("key") or policy.get("key"), element.get("valueName"))
                for element in (policy, *self.elements(policy)) if element.get("valueName")]


def the_files_keep_the_schema(template):
    """Documented: ADMX schema."""
    for tree, name in ((template.definitions, "policyDefinitions"),
                       (template.texts, "policyDefinitionResources")):
        if local_name(tree) != name:
            yield f"the file begins with {local_name(tree)} instead of {name}"
        yield from schema_errors(tree)


def all_strings_and_forms_that_are_named_are_there(template):
    """Documented: stringTable, presentationTable."""
    there = {"string": template.strings().keys(),
             "presentation": {form.get("id") for form in template.each("presentation")}}
    named = {"string": set(), "presentation": set()}
    for element in template.definitions.iter():
        for value in element.attrib.values():
            if reference := _REFERENCE.fullmatch(value):
                named[reference[1]].add(reference[2])
    for kind in there:
        for name in sorted(named[kind] - there[kind]):
            yield f"no {kind} {name}"
        for name in sorted(there[kind] - named[kind]):
            yield f"nobody names the {kind} {name}"


def no_text_is_empty(template):
    """Documented: string."""
    for name, text in template.strings().items():
        if not text.strip():
            yield f"{name} is empty"


def names_are_given_once(template):
    """Documented: name and id are unique."""
    of_texts = [element for element in template.each("string") if element.get("id")]
    for what, names in (
            ("policy", [policy.get("name") for policy in template.each("policy")]),
            ("category", [category.get("name") for category in template.each("category")]),
            ("definition", [found.get("name") for found in template.each("definition")]),
            ("string", [text.get("id") for text in of_texts]),
            ("form", [form.get("id") for form in template.each("presentation")]),
            *((f"element of {policy.get('name')}",
               [element.get("id") for element in template.elements(policy)])
              for policy in template.each("policy"))):
        for name in _repeated(names):
            yield f"two of {what}: {name}"


def categories_and_products_that_are_named_are_there(template):
    """Documented: parentCategory, supportedOn."""
    parents = {category.get("name"): [child.get("ref") for child in category
                                      if local_name(child) == "parentCategory"]
               for category in template.each("category")}
    products = {found.get("name") for found in template.each("definition")}
    for element in (*template.each("policy"), *template.each("category")):
        for child in element:
            there = {"parentCategory": parents.keys(), "supportedOn": products}.get(
                local_name(child))
            if there is not None and child.get("ref") not in there:
                yield f"{element.get('name')}: no {child.get('ref')}"
        if local_name(element) == "policy" and not any(
                local_name(child) == "parentCategory" for child in element):
            yield f"{element.get('name')} has no category"
    for name in parents:
        seen = []
        while name in parents and parents[name] and name not in seen:
            seen.append(name)
            name = parents[name][0]
        if name in seen:
            yield f"{name} is within itself"


def every_element_has_one_control_of_its_kind(template):
    """Documented: elements, presentation."""
    for policy in template.each("policy"):
        name, controls = policy.get("name"), template.controls(policy)
        elements = {element.get("id"): local_name(element)
                    for element in template.elements(policy)}
        for missing in sorted(elements.keys() - controls.keys()):
            yield f"{name}: nothing asks for {missing}"
        for control in sorted(controls.keys() - elements.keys()):
            yield f"{name}: a control asks for {control}, which is no element"
        for element in sorted(elements.keys() & controls.keys()):
            if local_name(controls[element]) not in _CONTROLS[elements[element]]:
                yield (f"{name}: {local_name(controls[element])} asks for {element}, "
                       f"a {elements[element]}")
    for form in template.each("presentation"):
        for control in _repeated(control.get("refId") for control in form
                                 if control.get("refId")):
            yield f"{form.get('id')}: two controls ask for {control}"


def limits_and_first_values_fit(template):
    """Documented: decimal, text, enum, decimalTextBox, dropdownList."""
    for policy in template.each("policy"):
        controls = template.controls(policy)
        for element in template.elements(policy):
            control = controls.get(element.get("id"))
            if control is None:
                continue
            check = {"decimal": _number_error, "text": _text_error, "enum": _list_error}.get(
                local_name(element), lambda *_: None)
            if error := check(element, control):
                yield f"{policy.get('name')}: {error}"


def _number_error(element, control):
    least = int(element.get("minValue", 0))
    most = int(element.get("maxValue", _LARGEST_NUMBER))
    first = int(control.get("defaultValue", _FIRST_NUMBER))
    # The manual allows no larger limit, although most editors take one.
    if not least <= first <= most <= _LARGEST_NUMBER:
        return f"{first} is first, from {least} to {most}"
    return None


def _text_error(element, control):
    longest = int(element.get("maxLength", _LONGEST_TEXT))
    first = next((child.text or "" for child in control if local_name(child) == "defaultValue"), "")
    return f"{first} is longer than {longest}" if len(first) > longest else None


def _list_error(element, control):
    first = int(control.get("defaultItem", 0))
    if first >= len(element):
        return f"item {first} is first, of {len(element)}"
    values = [ET.tostring(value) for item in element for value in item]
    return "two items set the same" if _repeated(values) else None


def strings_that_are_set_are_short_enough(template):
    """Documented: string (value), at most 255 characters."""
    for element in template.definitions.iter():
        if local_name(element) == "string" and len(element.text or "") > _LONGEST_STRING:
            yield f"{element.text[:20]}... is too long"


def keys_have_no_hive(template):
    """Documented: key."""
    for element in template.definitions.iter():
        key = element.get("key")
        if key is not None and (not key or key != key.strip("\\") or
                                re.match(r"HK(EY_|LM|CU)", key, _CASE_IS_IGNORED)):
            yield f"no key below a hive: {key}"


def the_revisions_fit(template):
    """Documented: minRequiredRevision, schemaVersion."""
    needed = next((_version(element.get("minRequiredRevision"))
                   for element in template.each("resources")
                   if element.get("minRequiredRevision")), None)
    if needed is None or _version(template.texts.get("revision")) < needed:
        yield "the texts are older than what they are needed for"
    if template.definitions.get("schemaVersion") != "1.0":
        yield "no editor knows that version of the schema"


def _version(text):
    return [int(number) for number in re.findall(r"\d+", text or "")]


def no_two_policies_write_the_same_value(template):
    """This product's own."""
    for key, name in _repeated((key.upper(), name.upper()) for policy in template.each("policy")
                               for key, name in template.values(policy)):
        yield f"{key}: {name}"


def a_disabled_policy_takes_back_what_an_enabled_one_writes(template):
    """This product's own: otherwise a preference could only be taken back by hand."""
    for policy in template.each("policy"):
        deleted = [(item.get("key") or policy.get("key"), item.get("valueName"))
                   for part in policy if local_name(part) == "disabledList" for item in part
                   for value in item if [local_name(child) for child in value] == ["delete"]]
        if sorted(deleted) != sorted(template.values(policy)):
            yield policy.get("name")


def values_are_those_that_the_service_looks_for(template):
    """This product's own: each value of the page is offered in its key or left out for a reason."""
    described = settings()
    in_section = {policy.name for policies in POLICIES.values() for policy in policies
                  if policy.key == PREDICTOR_SECTION}
    written = {name: key for policy in template.each("policy")
               for key, name in template.values(policy)}
    for name in sorted(described.keys() - written.keys() - LEFT_OUT.keys()):
        yield f"{name} is neither offered nor left out"
    for name, key in written.items():
        if name not in described or name in LEFT_OUT:
            yield f"{name} is not to be offered"
        elif key != (PREDICTOR_SECTION if name in in_section else BRANDING):
            yield f"{name}: the service does not look in {key}"
    for policy in template.each("policy"):
        if policy.get("class") != "Machine":
            yield f"{policy.get('name')} is not the machine's"


def values_have_the_type_that_the_service_reads(template):
    """This product's own: the service takes the first four bytes of a value for a number, except in
    the section of a predictor, whose values are texts here as in the package."""
    for policy in template.each("policy"):
        for element in template.elements(policy):
            set_kinds = {local_name(child) for item in element for value in item for child in value}
            is_text = local_name(element) == "text" or set_kinds == {"string"} or (
                element.get("storeAsText") in ("true", "1"))
            in_section = (element.get("key") or policy.get("key")).startswith(rf"{BRANDING}\Predictors")
            if is_text != in_section:
                yield f"{element.get('valueName')} is {'a text' if is_text else 'a number'}"


# What each explanation has to say.
_SAID = ("This is a preference, not a policy.", "It stays on a machine when this policy no longer",
         "in the registry key Current wins over this one.", "A new value counts ")
_WARNING = "WARNING: This value is also written into Current"


def explanations_say_what_a_preference_is(template):
    """This product's own."""
    texts, described = template.strings(), settings()
    for policy in template.each("policy"):
        name = policy.get("name")
        reference = _REFERENCE.fullmatch(policy.get("explainText") or "")
        text = texts.get(reference[2], "") if reference else ""
        for part in _SAID:
            if part not in text:
                yield f"{name} does not say: {part}"
        if name in described and bool(described[name].written) != (_WARNING in text):
            yield f"{name}: a warning that is missing, or needless"


def _repeated(names):
    return [name for name, count in Counter(names).items() if count > 1]


RULES = [rule for name, rule in list(globals().items())
         if callable(rule) and getattr(rule, "__module__", "") == __name__
         and re.match(r"Documented|This product's own", rule.__doc__ or "")]


def broken_rules(template):
    """What is wrong, by the names of the rules. The other rules rely on the schema."""
    if errors := list(the_files_keep_the_schema(template)):
        return {the_files_keep_the_schema.__name__: errors}
    found = {rule.__name__: list(rule(template)) for rule in RULES}
    return {name: errors for name, errors in found.items() if errors}


def main():
    errors = broken_rules(Template.read(Path(sys.argv[1])))
    for name, texts in errors.items():
        for text in texts:
            print(f"{name}: {text}")
    print(f"{len(RULES)} rules checked, {sum(map(len, errors.values()))} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
