"""What docs/settings.md says of each value, so that the template's explanations say the same."""

import re
from pathlib import Path
from typing import NamedTuple

PAGE = Path(__file__).resolve().parents[2] / "docs" / "settings.md"

_SAME = "the same"
_TYPE = re.compile(r"^[DQ]WORD(, )?")
_LINK = re.compile(r"\[([^\]]*)\]\([^)]*\)")
# From when a value counts, by the words of the page for when it is read. Clients take it into
# account at once.
_COUNTS = {
    "at the start of the service": "from the next start of the service on",
    "at every attempt": "from the next start of the service on, or the next resume while the "
                        "controller does not run",
    "at every suspend": "from the next suspend on",
    "at every save of the history": "from the next save of the history on",
    "at every launch": "from the optimizer's next launch on, at a resume or a change of power",
    "every run": "from the optimizer's next search on",
    "optimizer when changed": "when the optimizer next stores its results",
    "whenever the predictor is built": "from the next daily save, reset of the history or start of "
                                       "the controller on",
}
_COUNTS["built"] = _COUNTS["built, changed"] = _COUNTS["whenever the predictor is built"]
_COUNTS["at the start of the service, if no driver was found"] = _COUNTS[
    "at the start of the service"]
_COUNTS["at every launch that is due"] = _COUNTS["at every launch"]
_COUNTS["at every launch that is due, on battery"] = _COUNTS["at every launch"]
_COUNTS["rates: built, changed"] = "with the predictor of rates " + _COUNTS["built"]


class Setting(NamedTuple):
    """A value's row of the page, as plain text."""
    name: str
    unit: str       # empty for a switch
    absent: str     # what holds then
    meaning: str
    read: str       # by whom and when
    written: str    # likewise; empty: the service does not write it

    def counts(self):
        """From when on a new value counts, as what stands behind "It counts"."""
        times = []
        for part in self.read.split("; "):
            if part.startswith("client"):
                continue
            if part not in _COUNTS:
                raise ValueError(f"{PAGE.name}: {self.name}: nothing tells what \"{part}\" means "
                                 "for from when it counts")
            times.append(_COUNTS[part])
        return "; ".join(times)


def settings(page=PAGE):
    """The settings by name."""
    found, is_listed, before = {}, False, None
    for line in page.read_text("utf-8").splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        if not line.startswith("|"):
            is_listed = False
        elif cells[0] == "value":
            is_listed = True
        elif is_listed and cells[0].startswith("`"):
            texts = [plain_text(cell) for cell in cells[1:]]
            if before:
                texts = [old if new == _SAME else new for old, new in zip(before, texts)]
            before = texts
            for name in re.findall(r"`([\w%]+)`", cells[0].partition(":")[0]):
                found[name] = Setting(name, _TYPE.sub("", texts[0]), *texts[1:])
    return found


def plain_text(markdown):
    return _LINK.sub(r"\1", markdown).replace("`", "").replace("**", "")
