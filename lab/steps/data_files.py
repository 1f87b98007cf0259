"""What the service has learnt, byte for byte as its files hold it."""

import struct
from datetime import timedelta, timezone
from typing import NamedTuple

from machine.clock import local

_HEADER = struct.Struct("<Iiiii9iiI")
_SLOT = struct.Struct("<iiiiq")
_ENTRY = struct.Struct("<dII")
ENTRY_SIZE = _ENTRY.size

_STATE_OFFSET, _NO_STATE = 16, 4
_NOT_KNOWN = -1


def wall_clock_seconds(time):
    """Seconds since 1970 on the wall clock, from a local time or its text."""
    time = local(time) if isinstance(time, str) else time
    return int(time.replace(tzinfo=timezone.utc).timestamp())


class HistoryEntry(NamedTuple):
    time: int  # wall clock
    asleep: int
    reserved: int


def history(data):
    """The entries of a history file."""
    return [HistoryEntry(*fields) for fields in _ENTRY.iter_unpack(data)]


def awake(time):
    return HistoryEntry(wall_clock_seconds(time), 0, 0)


def asleep(time):
    return HistoryEntry(wall_clock_seconds(time), 1, 0)


def history_file(entries):
    return b"".join(_ENTRY.pack(*entry) for entry in entries)


class Slot(NamedTuple):
    older: int = _NOT_KNOWN         # observations before the last two
    older_in_use: int = _NOT_KNOWN
    second_last: int = _NOT_KNOWN
    last: int = _NOT_KNOWN
    marked: int = _NOT_KNOWN        # when it was last in use, by the wall clock


class LearntData(NamedTuple):
    version: int
    days: int
    minutes_in_day: int
    minutes_per_slot: int
    state: int
    time: tuple  # of the last event: year, month, day, hour, minute, second
    slots: list

    def slot_at(self, time):
        seconds = wall_clock_seconds(time)
        return self.slots[seconds // (60 * self.minutes_per_slot) % len(self.slots)]

    def between(self, start, end):
        """The slots from one time to before another."""
        start, end = local(start), local(end)
        step = timedelta(minutes=self.minutes_per_slot)
        return [self.slot_at(start + i * step) for i in range((end - start) // step)]


def learnt_data(data):
    """The content of a data file."""
    version, days, minutes_in_day, minutes_per_slot, state, *time, slots, _ = (
        _HEADER.unpack_from(data))
    second, minute, hour, day, month, year, *_ = time
    if len(data) != _HEADER.size + slots * _SLOT.size:
        raise ValueError(f"{slots} slots in {len(data)} bytes")
    return LearntData(version, days, minutes_in_day, minutes_per_slot, state,
                      (year + 1900, month + 1, day, hour, minute, second),
                      [Slot(*_SLOT.unpack_from(data, _HEADER.size + i * _SLOT.size))
                       for i in range(slots)])


def without_last_event(data):
    """A data file with the same slots, whose tracker has seen no event yet."""
    return data[:_STATE_OFFSET] + struct.pack("<i", _NO_STATE) + data[_STATE_OFFSET + 4:]
