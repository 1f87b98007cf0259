"""What the service did, in order, as the lab recorded it."""

from typing import NamedTuple

EVENTS = ("success", "error", "information")
_ESCAPES = {"n": "\n", "t": "\t", "\\": "\\"}


class Entry(NamedTuple):
    """One thing that was done. Kinds and their texts:

    success, error, information   an event in the event log, as it reads there
    trace                         a text to the debugger
    status                        the state sent to the service control manager
    scheme                        read|write SCHEME SETTING SOURCE VALUE, or activate SCHEME
    driver                        read timer|write timer|read status, the words in or out
    setting                       write NAME VALUE, or delete NAME
    device                        search for the driver's device
    timer                         create, arm SECONDS, or cancel: the system's waitable timer
    power-source, sleep, thread, suspend, handler, notification, config, event-log
    failed                        CALL ERROR, when a test made it fail
    """

    kind: str
    text: str


def success(text):
    return Entry("success", text)


def error(text):
    return Entry("error", text)


def information(text):
    return Entry("information", text)


def of_kinds(entries, *kinds):
    return [entry for entry in entries if entry.kind in kinds]


def _unescaped(text):
    parts = text.split("\\")
    plain = [parts[0]]
    rest = iter(parts[1:])
    for part in rest:
        if part:
            plain.append(_ESCAPES[part[0]] + part[1:])
        else:
            # An escaped backslash leaves an empty part, and the next one starts with no escape.
            plain.append("\\" + next(rest, ""))
    return "".join(plain)


def _entry(line):
    kind, text = line.split("\t", 1)
    return Entry(kind, _unescaped(text))


class Record:
    def __init__(self, state, waiting):
        self._state = state
        self._waiting = waiting
        self._taken = 0

    def clear(self):
        size = min(self._state.record_size, type(self._state).record.size)
        memory = self._bytes()
        memory[:size] = bytes(size)
        self._state.record_size = 0
        self._taken = 0

    def take(self):
        """What was done since this was called last."""
        entries, self._taken = self._read(self._taken)
        return entries

    def all(self):
        return self._read(0)[0]

    def wait_for(self, entry):
        """Waits until the record has an entry."""
        self._waiting.until(lambda: entry in self.all(), f"{entry} does not happen")

    def _bytes(self):
        offset = type(self._state).record.offset
        return memoryview(self._state).cast("B")[offset:]

    def _read(self, start):
        size = self._state.record_size
        memory = self._bytes()
        if size > len(memory):
            raise OverflowError("The record is full")
        # A line whose writer has claimed its place but not yet filled it is zeros.
        self._waiting.until(lambda: b"\0" not in bytes(memory[start:size]),
                            "a line of the record is not written to its end")
        text = bytes(memory[start:size]).decode()
        return [_entry(line) for line in text.split("\n")[:-1]], size
