#!/usr/bin/env python3
"""Checks that the tables of docs/operating.md list every text that the service hands to the event
log, with its type where the call gives it, and no text that the service does not have; and that
docs/monitoring.md says of all that may be a problem whether it is worth an alert."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "operating.md"
ALERTS_PAGE = ROOT / "docs" / "monitoring.md"

ALERTS = {"at once", "if often", "never"}
# The types of events that report a problem, each also others.
PROBLEMS = {"error", "success"}

COMMENT = re.compile(r"//[^\n]*")
LITERAL = re.compile(r'L?"((?:[^"\\\n]|\\.)*)"')
ADJACENT = re.compile(r'"\s+L?"')
CALL = re.compile(r'LogServiceEvent\(\s*L"((?:[^"\\\n]|\\.)*)"[^;]*kEvent(\w+)\)')
# Texts for the console and the compiler, and the reason of the wake timer, are not logged by the
# service.
ELSEWHERE = re.compile(r"((fputs|static_assert)\(|WakeReason\[\] = )[^;]*;")
# The names of events and states are logged without any other word.
NAME = re.compile(r'return L"(\w+)";')
# What stands for a value in a message: in the sources, and on the page.
CONVERSION = re.compile(r"%l?[a-z]")
PLACEHOLDER = re.compile(r"D/M/Y H:M:S -|\b(?:TIME|STATE|EVENT)\b|(?<=\b0x)N\b|\bN\b")


def pieces(text, gap):
    """The words of a text, split where a number, a time or a name is inserted."""
    text = text.replace("\\n", " ")
    return {piece.strip() for piece in gap.split(text) if re.search(r"[A-Za-z]{2}", piece)}


def source_text(path):
    text = ADJACENT.sub("", COMMENT.sub("", path.read_text()))
    return ELSEWHERE.sub("", text)


def read_sources():
    """All pieces that the sources have, those that the page must have, and the types of calls."""
    has, needed, types = set(), set(), {}
    for path in sorted((ROOT / "src").rglob("*")):
        if path.suffix not in (".cpp", ".h") or path.name.endswith("_test.cpp"):
            continue
        text = source_text(path)
        for literal in LITERAL.findall(text):
            found = pieces(literal, CONVERSION)
            has |= found
            # Single words are keys, units and the like.
            if " " in literal:
                needed |= found
        needed |= set(NAME.findall(text))
        for literal, event_type in CALL.findall(text):
            found = pieces(literal, CONVERSION)
            needed |= found
            types[frozenset(found)] = event_type.lower()
    return has, needed, types


def read_page(page):
    """The cells of each row of the tables of events and other texts."""
    listed = False
    for line in page.read_text().splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        if not line.startswith("|"):
            listed = False
        elif cells[0] in ("event", "text"):
            listed = True
        elif listed and cells[0].startswith("`"):
            yield cells[0].strip("`"), *cells[1:]


def check_alerts(events):
    """What is wrong with the list of alerts; `events` has the types of all texts."""
    alerts = {}
    for text, event_type, alert, *_ in read_page(ALERTS_PAGE):
        if events.get(text) != event_type:
            yield f"{ALERTS_PAGE.name}: {PAGE.name} has no {event_type} event: {text}"
        if alert not in ALERTS:
            yield f"{ALERTS_PAGE.name}: {text}: no kind of alert: {alert}"
        if text in alerts:
            yield f"{ALERTS_PAGE.name} lists twice: {text}"
        alerts[text] = alert
    for text, event_type in events.items():
        if event_type in PROBLEMS and text not in alerts:
            yield f"{ALERTS_PAGE.name} does not list: {text}"


def main():
    has, needed, types = read_sources()
    errors, on_page = [], set()
    events = {text: event_type for text, event_type, *_ in read_page(PAGE)}
    for text, event_type in events.items():
        words = pieces(text, PLACEHOLDER)
        on_page |= words
        errors += [f"no source has: {piece}" for piece in sorted(words - has)]
        expected = types.get(frozenset(words), event_type)
        if event_type != expected:
            errors.append(f"{text}: listed as {event_type}, logged as {expected}")
    errors += [f"{PAGE.name} does not list: {piece}" for piece in sorted(needed - on_page)]
    errors += check_alerts(events)
    for error in errors:
        print(error)
    print(f"{len(needed)} texts checked, {len(errors)} errors")
    return 1 if errors or not needed else 0


if __name__ == "__main__":
    sys.exit(main())
