"""What the columns of an installer package's tables may hold: a function for each category of values
that tells whether a text is one."""

import re

_NAME = r"[^\\?|><:/*\"]+"
_SHORT_CHARACTERS = r"[^\\?|><:/*\"+,;=\[\]\s.]"
_SHORT_NAME = rf"{_SHORT_CHARACTERS}{{1,8}}(\.{_SHORT_CHARACTERS}{{1,3}})?"
_FILE_NAME = rf"{_SHORT_NAME}(\|{_NAME})?"

_TOKEN = re.compile(r'\s*(?:(?P<value>-?\d+|"[^"]*"|[%$&?!]?[A-Za-z_][\w.]*)|(?P<compares><>|<=|>=|'
                    r"=|<|>)|(?P<bracket>[()]))")
_CONNECTING = {"AND", "OR", "XOR", "EQV", "IMP"}


class _Condition:
    """Reads a condition from left to right; each method tells whether it found what it is named
    after."""

    def __init__(self, text):
        self._tokens = []
        place = 0
        while text[place:].strip():
            token = _TOKEN.match(text, place)
            self._tokens.append((token.lastgroup, token.group().strip()) if token else ("?", ""))
            place = token.end() if token else len(text)

    def is_all(self):
        return self._expression() and not self._tokens

    def _take(self, group, texts=None):
        if self._tokens and self._tokens[0][0] == group and (
                texts is None or self._tokens[0][1].upper() in texts):
            self._tokens.pop(0)
            return True
        return False

    def _expression(self):
        if not self._term():
            return False
        while self._take("value", _CONNECTING):
            if not self._term():
                return False
        return True

    def _term(self):
        if self._take("value", {"NOT"}):
            return self._term()
        if self._take("bracket", {"("}):
            return self._expression() and self._take("bracket", {")"})
        return self._operand() and (not self._take("compares") or self._operand())

    def _operand(self):
        if self._tokens and self._tokens[0][1].upper() in {*_CONNECTING, "NOT"}:
            return False
        return self._take("value")


def is_condition(text):
    return _Condition(text).is_all()


def _is_formatted(text):
    depth = 0
    for character in text:
        depth += {"[": 1, "]": -1}.get(character, 0)
        if depth not in (0, 1):
            return False
    return depth == 0


def _is_version(text):
    return re.fullmatch(r"\d+(\.\d+){0,3}", text) and all(
        int(number) < 65536 for number in text.split("."))


def _pattern(pattern):
    return lambda text: re.fullmatch(pattern, text) is not None


_IDENTIFIER = r"[A-Za-z_][\w.]*"

VALUES = {
    "Binary": bool,
    "Cabinet": _pattern(rf"#{_IDENTIFIER}|{_SHORT_NAME}"),
    "Condition": is_condition,
    "CustomSource": _pattern(_IDENTIFIER),
    "DefaultDir": _pattern(rf"SourceDir|\.|{_FILE_NAME}(:({_FILE_NAME}|\.))?"),
    "Filename": _pattern(_FILE_NAME),
    "Formatted": _is_formatted,
    "Guid": _pattern(r"\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}"),
    "Identifier": _pattern(_IDENTIFIER),
    "Language": _pattern(r"\d{1,5}(,\d{1,5})*"),
    "Property": _pattern(_IDENTIFIER),
    "RegPath": lambda text: _is_formatted(text) and _pattern(r"[^\\].*[^\\]|[^\\]")(text),
    "Shortcut": _is_formatted,
    "Template": _is_formatted,
    "Text": bool,
    "UpperCase": lambda text: text == text.upper(),
    "Version": _is_version,
    "WildCardFilename": _pattern(r"[^\\|><:/\"]+"),
}
