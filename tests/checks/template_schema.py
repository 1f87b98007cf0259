"""What Windows' schema says of the two files of an administrative template: for each element its
attributes, its children and its text. It covers the parts that a template for registry values
needs; what is missing here counts as an error."""

import re
from typing import NamedTuple

NAMESPACES = ("http://schemas.microsoft.com/GroupPolicy/2006/07/PolicyDefinitions",
              "http://www.microsoft.com/GroupPolicy/PolicyDefinitions")


def _pattern(text):
    compiled = re.compile(text)
    return lambda value: compiled.fullmatch(value) is not None


def _is_number(value):
    return re.fullmatch(r"\d{1,10}", value) is not None and int(value) < 2**32


_NAME = r"\w+"  # letters, digits and underscores
TYPES = {
    "text": lambda value: True,
    "number": _is_number,
    "yes or no": _pattern("true|false|0|1"),
    "version": _pattern(r"\d{1,4}\.\d{1,5}"),
    "name": _pattern(_NAME),
    "reference": _pattern(rf"({_NAME}:)?{_NAME}"),
    "string": _pattern(rf"\$\(string\.{_NAME}\)"),
    "presentation": _pattern(rf"\$\(presentation\.{_NAME}\)"),
    "class": _pattern("User|Machine|Both"),
    "guid": _pattern(r"\{[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}\}"),
    "uri": _pattern(r"\S+"),
    "language": _pattern(r"[a-zA-Z]{1,8}(-[a-zA-Z0-9]{1,8})*"),
}


class Element(NamedTuple):
    # Attributes by name with their types; "?" stands behind the name of one that may be missing.
    attributes: str = ""
    # The children in their order, as a regular expression over their names, each with a blank
    # behind it.
    children: str = ""
    has_text: bool = False


_VALUE = "(delete |decimal |longDecimal |string )"
_OF_ELEMENT = "id=text clientExtension?=guid key?=text valueName?=text"
_OF_NUMBER = "required?=yes_or_no minValue?=number maxValue?=number storeAsText?=yes_or_no " \
             "soft?=yes_or_no"
_OF_BOX = "refId=text defaultValue?=number spin?=yes_or_no spinStep?=number"
_DESCRIBED = "displayName=string explainText?=string"
_PLACED = "(annotation )*(parentCategory )?(seeAlso )*(keywords )?"

# By the element's name, and where elements of one name differ, by its parent's name and its own.
ELEMENTS = {
    "policyDefinitions": Element(
        "revision=version schemaVersion=version",
        "policyNamespaces (supersededAdm )*(annotation )*resources (supportedOn )?(categories )?"
        "(policies )?"),
    "policyNamespaces": Element("", "target (using )*"),
    "target": Element("prefix=name namespace=uri"),
    "using": Element("prefix=name namespace=uri"),
    "policyDefinitions/resources": Element("minRequiredRevision=version fallbackCulture?=language"),
    "policyDefinitions/supportedOn": Element("", "(definitions )?"),
    "definitions": Element("", "(definition )+"),
    "definition": Element("name=name displayName=string"),
    "categories": Element("", "(category )+"),
    "category": Element(f"name=name {_DESCRIBED}", _PLACED),
    "parentCategory": Element("ref=reference"),
    "policies": Element("", "(policy )+"),
    "policy": Element(
        f"name=name class=class {_DESCRIBED} presentation?=presentation key=text valueName?=text",
        f"{_PLACED}supportedOn (enabledValue )?(disabledValue )?(enabledList )?(disabledList )?"
        "(elements )?"),
    "policy/supportedOn": Element("ref=reference"),
    "enabledValue": Element("", _VALUE),
    "disabledValue": Element("", _VALUE),
    "enabledList": Element("defaultKey?=text", "(item )+"),
    "disabledList": Element("defaultKey?=text", "(item )+"),
    "enabledList/item": Element("key?=text valueName=text", "value "),
    "disabledList/item": Element("key?=text valueName=text", "value "),
    "enum/item": Element("displayName=string", "value (valueList )?"),
    "value": Element("", _VALUE),
    "delete": Element(),
    "value/decimal": Element("value=number"),
    "value/string": Element(has_text=True),
    "elements": Element("", "((boolean |decimal |text |enum |list |longDecimal |multiText ))+"),
    "elements/decimal": Element(f"{_OF_ELEMENT} {_OF_NUMBER}"),
    "elements/text": Element(f"{_OF_ELEMENT} required?=yes_or_no maxLength?=number "
                             "expandable?=yes_or_no soft?=yes_or_no"),
    "enum": Element(f"{_OF_ELEMENT} required?=yes_or_no", "(item )*"),
    "policyDefinitionResources": Element(
        "revision=version schemaVersion=version",
        "displayName description (annotation )*resources "),
    "displayName": Element(has_text=True),
    "description": Element(has_text=True),
    "policyDefinitionResources/resources": Element("", "(stringTable )?(presentationTable )?"),
    "stringTable": Element("", "(string )+"),
    "stringTable/string": Element("id=name", has_text=True),
    "presentationTable": Element("", "(presentation )+"),
    "presentation": Element(
        "id=name", "((text |decimalTextBox |textBox |checkBox |comboBox |dropdownList |listBox |"
                   "longDecimalTextBox |multiTextBox ))*"),
    "presentation/text": Element(has_text=True),
    "decimalTextBox": Element(_OF_BOX, has_text=True),
    "dropdownList": Element("refId=text noSort?=yes_or_no defaultItem?=number", has_text=True),
    "textBox": Element("refId=text", "label (defaultValue )?"),
    "textBox/label": Element(has_text=True),
    "textBox/defaultValue": Element(has_text=True),
}


def local_name(element):
    return element.tag.rsplit("}", 1)[-1]


def schema_errors(element, parent=""):
    """What the schema does not allow in an element and all below it."""
    name = local_name(element)
    known = ELEMENTS.get(f"{parent}/{name}") or ELEMENTS.get(name)
    if element.tag.partition("}")[0][1:] not in NAMESPACES or known is None:
        yield f"{element.tag} within {parent or 'the file'}: no such element"
        return
    yield from (f"{name}: {error}" for error in _attribute_errors(element, known))
    children = "".join(local_name(child) + " " for child in element)
    if not re.fullmatch(known.children, children):
        yield f"{name}: children that it cannot have, or in that order: {children}"
    texts = [element.text, *(child.tail for child in element)]
    if not known.has_text and any(text and text.strip() for text in texts):
        yield f"{name}: text"
    for child in element:
        yield from schema_errors(child, name)


def _attribute_errors(element, known):
    types = dict(word.split("=") for word in known.attributes.split())
    required = {name for name in types if not name.endswith("?")}
    types = {name.rstrip("?"): kind.replace("_", " ") for name, kind in types.items()}
    for name in sorted(required - set(element.keys())):
        yield f"no {name}"
    for name, value in element.items():
        if name not in types:
            yield f"no attribute: {name}"
        elif not TYPES[types[name]](value):
            yield f"{name} is no {types[name]}: {value}"
