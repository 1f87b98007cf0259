"""A plain model of the prediction engine, written to be read and compared with, not to be fast.

Every integer that is 32 bits wide in the engine is wrapped to 32 bits here, every float is rounded
to single precision after each operation, and divisions truncate toward zero.
"""

import ctypes
import datetime
import math
import struct
from collections import namedtuple

ACTIVATING, SUSPEND, SHUTTING_DOWN, CONTAINER_STOPPED = 0, 1, 2, 4

NO_WEIGHTS = "No weigths specified"
NO_STRENGTH = "StrengthThreshold is not declared"
TRACKER_WRONG_CONFIGURATIONS = "ArbitraryCycleProbabilityTracker - wrong configurations"
TRACKER_WRONG_FILE = "ArbitraryCycleProbabilityTracker - wrong data file format"
WRONG_MODULUS = "Length of day modulus number of minutes within a slot is not zero"
LOAD_WRONG_CONFIGURATIONS = (
    "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations")
WRONG_VERSION = "Version 0 expected"
STOPPED_PASSED = "ContainerStopped should not be passed to the ProbabilityTracker"
WRONG_TIME = "wrong time ..."
START_LATER = "state start is later than state end"

SIZE_DIFFERS = "size"
COUNT_DIFFERS = "slot count"
CONFIGURATION_DIFFERS = "configuration"

HEADER = struct.Struct("<Iiiii9iiI")
SLOT = struct.Struct("<iiiiq")
RECORD = struct.Struct("<dII")

MAX_SECONDS = 32535215999  # 3000-12-31 23:59:59
SECTION = "CyclicProbabilityPredictor"


class EngineError(Exception):
    """What the engine throws; the message is the engine's own text."""


class NotDescribed(Exception):
    """The rules give no answer here, so there is nothing to compare with."""


# Numbers

def wrap32(value):
    return (value + 0x80000000 & 0xFFFFFFFF) - 0x80000000


def wrap64(value):
    return (value + (1 << 63) & (1 << 64) - 1) - (1 << 63)


def quotient(a, b):
    """Integer division that truncates toward zero."""
    if b == 0:
        raise NotDescribed("division by zero")
    q = abs(a) // abs(b)
    return q if (a < 0) == (b < 0) else -q


def remainder(a, b):
    return a - b * quotient(a, b)


def text_to_number(text):
    """`atoi` of the Windows runtime: saturates at 32 bits."""
    text = text.lstrip(" \t\n\v\f\r")
    sign = 1
    if text[:1] in ("+", "-"):
        sign = -1 if text[0] == "-" else 1
        text = text[1:]
    value = 0
    for c in text:
        if c not in "0123456789":
            break
        value = value * 10 + int(c)
    return max(-0x80000000, min(0x7FFFFFFF, sign * value))


def truncate_double(value):
    """A double as a signed 64-bit integer; what does not fit becomes -2^63."""
    if not math.isfinite(value):
        return -(1 << 63)
    whole = math.trunc(value)
    return whole if -(1 << 63) <= whole < 1 << 63 else -(1 << 63)


def f32(value):
    return ctypes.c_float(value).value


def f32_divide(a, b):
    if b == 0:
        if a == 0 or math.isnan(a):
            return math.nan
        return math.copysign(math.inf, a) * math.copysign(1.0, b)
    return f32(a / b)


def format_float(value):
    return "nan" if math.isnan(value) else "%.9g" % value


# Wall-clock time

Tm = namedtuple("Tm", "sec min hour mday mon year wday yday isdst")
INVALID_TM = Tm(*[-1] * 9)
EPOCH = datetime.datetime(1970, 1, 1)
EPOCH_DAYS = EPOCH.toordinal()
WEEKDAYS = "Sun Mon Tue Wed Thu Fri Sat".split()
MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()


def days_before_month(year, month):
    """Days from 1970-01-01 to the first of the month (0..11) of any year, proleptic Gregorian."""
    cycles, rest = divmod(year - 1, 400)
    ordinal = datetime.date(rest + 1, month + 1, 1).toordinal()
    return cycles * 146097 + ordinal - EPOCH_DAYS


def seconds_of(tm):
    """Wall-clock seconds of `tm` read as UTC with its fields normalised, or -1."""
    years, month = divmod(tm.mon, 12)
    days = days_before_month(tm.year + 1900 + years, month) + tm.mday - 1
    seconds = ((days * 24 + tm.hour) * 60 + tm.min) * 60 + tm.sec
    return seconds if 0 <= seconds <= MAX_SECONDS else -1


def tm_of(seconds):
    """The reverse of `seconds_of`; all fields are -1 where there is no such time."""
    if not 0 <= seconds <= MAX_SECONDS:
        return INVALID_TM
    d = EPOCH + datetime.timedelta(seconds=seconds)
    return Tm(d.second, d.minute, d.hour, d.day, d.month - 1, d.year - 1900,
              d.isoweekday() % 7, d.timetuple().tm_yday - 1, 0)


def iso_text(tm):
    """YYYY-MM-DDTHH:MM:SS"""
    if tm == INVALID_TM:
        raise NotDescribed("text of an invalid time")
    return "%04d-%02d-%02dT%02d:%02d:%02d" % (
        tm.year + 1900, tm.mon + 1, tm.mday, tm.hour, tm.min, tm.sec)


def ascii_time(tm):
    """Thu Jan  1 00:00:00 1970, without a line feed."""
    if tm == INVALID_TM:
        raise NotDescribed("text of an invalid time")
    return "%s %s %2d %02d:%02d:%02d %d" % (
        WEEKDAYS[tm.wday], MONTHS[tm.mon], tm.mday, tm.hour, tm.min, tm.sec, tm.year + 1900)


def seconds_between(a, b):
    return wrap32(seconds_of(b) - seconds_of(a))


def minutes_between(a, b):
    return quotient(seconds_between(a, b), 60)


def add_seconds(tm, seconds):
    if seconds == 0:
        return tm
    return tm_of(seconds_of(tm) + seconds)


# Settings

class Configuration:
    """What the predictor reads: section values as text, absent ones empty."""

    def __init__(self, values, time_resolution):
        self.values = values
        self.time_resolution = time_resolution  # unsigned, 0xFFFFFFFF when absent

    def get(self, key):
        return self.values.get(key, "")

    def number(self, key, missing):
        text = self.get(key)
        return text_to_number(text) if text else missing


def parse_settings(text):
    """A Configuration from a settings file's text."""
    sections = {"Settings": {}, SECTION: {}}
    current = {}
    for line in text.split("\n"):
        line = line.strip(" \t\r")
        if not line or line[0] in "#;":
            continue
        if line[0] == "[" and line[-1] == "]":
            current = sections.setdefault(line[1:-1].strip(" \t"), {})
        elif "=" in line:
            key, value = line.split("=", 1)
            current[key.strip(" \t")] = value.strip(" \t")
    resolution = sections["Settings"].get("TimeResolution")
    number = -1 if resolution is None else text_to_number(resolution)
    return Configuration(sections[SECTION], number & 0xFFFFFFFF)


# The tracker and its data block

class Block:
    """The tracker's data: five header words, the last time, the slots as five columns."""

    def __init__(self, days_in_cycle, minutes_in_day, minutes_per_slot, slot_count):
        self.version = 0
        self.days_in_cycle = days_in_cycle
        self.minutes_in_day = minutes_in_day
        self.minutes_per_slot = minutes_per_slot
        self.last_state = CONTAINER_STOPPED
        self.last_time = Tm(0, 0, 0, 0, 0, -1, 0, 0, 0)
        self.slot_count = slot_count
        self.reserved = 0
        self.count = [-1] * slot_count
        self.sum = [-1] * slot_count
        self.second = [-1] * slot_count
        self.last = [-1] * slot_count
        self.stamp = [-1] * slot_count

    def pack(self):
        header = HEADER.pack(self.version, self.days_in_cycle, self.minutes_in_day,
                             self.minutes_per_slot, self.last_state, *self.last_time,
                             self.slot_count, self.reserved)
        slots = zip(self.count, self.sum, self.second, self.last, self.stamp)
        return header + b"".join(SLOT.pack(*slot) for slot in slots)

    @staticmethod
    def unpack(data):
        words = HEADER.unpack_from(data)
        block = Block(words[1], words[2], words[3], words[14])
        block.version = words[0]
        block.last_state = words[4]
        block.last_time = Tm(*words[5:14])
        block.reserved = words[15]
        if block.slot_count:
            columns = zip(*SLOT.iter_unpack(data[HEADER.size:]))
            block.count, block.sum, block.second, block.last, block.stamp = map(list, columns)
        return block


def slot_count_of(minutes_in_day, days_in_cycle, minutes_per_slot):
    return quotient(wrap32(minutes_in_day * days_in_cycle), minutes_per_slot)


class Tracker:
    """Learns from state changes and predicts from what it has learnt."""

    def __init__(self, configuration, block=None):
        self.configuration = configuration
        self.strength_high = 0.0
        self.strength_low = 0.0
        self.probabilities = {}
        if block is not None and block.version != 0:
            raise EngineError(WRONG_VERSION)
        self.reload_weights()
        self.reload_strengths()
        self.block = self.new_block() if block is None else self.checked(block)

    def new_block(self):
        days = self.configuration.number("DaysInCycle", -1)
        minutes = self.configuration.number("MinutesInDay", -1)
        resolution = wrap32(self.configuration.time_resolution)
        if days == 0 or resolution == -1 or minutes == 0 or resolution <= 0:
            raise EngineError(TRACKER_WRONG_CONFIGURATIONS)
        if remainder(minutes, resolution) != 0:
            raise EngineError(WRONG_MODULUS)
        slots = slot_count_of(minutes, days, resolution)
        if slots <= 0:
            raise EngineError(TRACKER_WRONG_CONFIGURATIONS)
        if wrap32(resolution * 60) <= 0 or wrap32(wrap32(days * minutes) * 60) == 0:
            raise NotDescribed("a slot or a cycle that wraps to no length")
        return Block(days, minutes, resolution, slots)

    @staticmethod
    def checked(block):
        if block.days_in_cycle == 0 or block.minutes_per_slot == 0 or block.minutes_in_day == 0:
            raise EngineError(TRACKER_WRONG_FILE)
        if remainder(block.minutes_in_day, block.minutes_per_slot) != 0:
            raise EngineError(WRONG_MODULUS)
        return block

    def reload_weights(self):
        first = self.configuration.number("FirstLastWeight", -1)
        second = self.configuration.number("SecondLastWeight", -1)
        aggregate = self.configuration.number("AgregationWeight", -1)
        grouping = self.configuration.number("DayGrouping", 0)
        if -1 in (first, second, aggregate):
            raise EngineError(NO_WEIGHTS)
        total = f32(wrap32(first + second + aggregate))
        self.weights = [f32_divide(f32(n), total) for n in (first, second, aggregate)]
        self.day_grouping = grouping
        self.day_flags = [grouping >> i & 1 for i in range(7)]
        self.probabilities = {}

    def reload_strengths(self):
        try:
            self.strength_high = self.read_strength("StrengthHigh")
            self.strength_low = self.read_strength("StrengthLow")
        except EngineError:
            pass

    def read_strength(self, key):
        text = self.configuration.get(key)
        if not text:
            raise EngineError(NO_STRENGTH)
        return f32_divide(f32(text_to_number(text)), 100.0)

    def reload_parameters(self):
        self.reload_strengths()
        self.reload_weights()

    def slot_seconds(self):
        return wrap32(self.block.minutes_per_slot * 60)

    def cycle_seconds(self):
        product = wrap32(self.block.days_in_cycle * self.block.minutes_in_day)
        return wrap32(product * 60)

    def process_event(self, tm, state):
        block = self.block
        if state == CONTAINER_STOPPED:
            raise EngineError(STOPPED_PASSED)
        previous = block.last_state
        if previous != CONTAINER_STOPPED and block.last_time.year != -1:
            asleep = (SUSPEND, SHUTTING_DOWN)
            if previous in asleep and state in asleep:
                return
            if previous == ACTIVATING and state == ACTIVATING:
                return
            start = seconds_of(block.last_time)
            end = seconds_of(tm)
            if start == -1 or end == -1:
                raise EngineError(WRONG_TIME)
            if end <= start:
                raise EngineError(START_LATER)
            stretch = self.touched_slots(start, end, previous)
            if stretch:
                self.mark(*stretch, start, previous)
        block.last_state = state
        block.last_time = tm

    def touched_slots(self, start, end, previous):
        """First and last slot of a stretch, or None."""
        length, slots = self.slot_seconds(), self.block.slot_count
        if previous != ACTIVATING:
            first = quotient(start, length) + 1
            last = quotient(end, length) - 1
            if first > last:
                return None
            return remainder(first, slots), remainder(last, slots)
        cycle = self.cycle_seconds()
        first = quotient(remainder(start, cycle), length)
        last = quotient(remainder(end, cycle), length)
        if first < 0 or last < 0:
            raise NotDescribed("negative slot")
        # A cycle length that has wrapped may reach one slot beyond the last. It counts as the slot
        # in which marks of that index are stored.
        stamp = self.block.stamp[remainder(first, slots)]
        if stamp != -1 and wrap64(start - stamp) < length:
            following = quotient(start, length) + 1
            if following > quotient(end, length):
                return None
            first = remainder(following, slots)
        return first, last

    def mark(self, first, last, start, previous):
        block = self.block
        slots, length = block.slot_count, self.slot_seconds()
        observation = 1 if previous == ACTIVATING else 0
        if first > last:
            last += slots
        if first < 0:
            raise NotDescribed("negative slot")
        for i in range(first, last + 1):
            s = i % slots
            if block.second[s] != -1:
                if block.count[s] == -1:
                    block.count[s] = 1
                    block.sum[s] = block.second[s]
                else:
                    block.count[s] = wrap32(block.count[s] + 1)
                    block.sum[s] = wrap32(block.sum[s] + block.second[s])
            if block.last[s] != -1:
                block.second[s] = block.last[s]
            block.last[s] = observation
            if previous == ACTIVATING:
                block.stamp[s] = wrap64(start + wrap32((i - first) * length))
        self.probabilities = {}

    def slot_probability(self, slot):
        known = self.probabilities.get(slot)
        if known is None:
            known = self.probabilities[slot] = self.compute_probability(slot)
        return known

    def compute_probability(self, slot):
        count, total, second, last = self.pooled_record(slot)
        if last == -1:
            return -1.0
        if second == -1:
            return f32(last)
        w1, w2, w3 = self.weights
        recent = f32(f32(f32(last) * w1) + f32(f32(second) * w2))
        if total == -1:
            return f32_divide(recent, f32(w1 + w2))
        older = f32_divide(f32(total), f32(count))
        return f32(recent + f32(older * w3))

    def pooled_record(self, slot):
        """Aggregate count and sum, second-last and last observation to estimate a slot from."""
        block = self.block
        own = (block.count[slot], block.sum[slot], block.second[slot], block.last[slot])
        if self.day_grouping in (0, 127) or block.days_in_cycle != 7:
            return own
        per_day = quotient(block.minutes_in_day, block.minutes_per_slot)
        if per_day * 7 != block.slot_count:
            raise NotDescribed("days do not fill the cycle")
        group = self.day_flags[slot // per_day]
        count, total, second, last = 0, 0, -1, -1
        k = slot
        for _ in range(7):
            k -= per_day
            if k < 0:
                k += block.slot_count
            if self.day_flags[k // per_day] != group:
                continue
            if last == -1:
                last = block.last[k]
            elif second == -1:
                second = block.last[k]
            count = wrap32(count + block.count[k])
            total = wrap32(total + block.sum[k])
        if last == -1:
            if second != -1:
                raise EngineError("Unknown exception")
            return own
        return count, total, block.last[slot] if second == -1 else second, last

    def current_slot(self, seconds):
        return quotient(remainder(seconds, self.cycle_seconds()), self.slot_seconds())

    def following_slots(self, seconds):
        """The steps from the slot of `seconds` on, each with its probability."""
        slots = self.block.slot_count
        if slots < 2:
            return
        current = self.current_slot(seconds)
        for j in range(1, slots):
            slot = remainder(current + j, slots)
            if slot < 0:
                raise NotDescribed("negative slot")
            yield j, self.slot_probability(slot)

    def predict_hibernate(self, tm):
        run = quotient(30, self.block.minutes_per_slot)
        length = self.slot_seconds()
        seconds = seconds_of(tm)
        count = 0
        for j, p in self.following_slots(seconds):
            if p == -1.0:
                break
            if self.strength_low > p:
                count += 1
                if count == run:
                    passed = wrap32(remainder(seconds, length))
                    numerator = wrap32((j - run + 1) * length - passed + 59)
                    return [(tm, quotient(numerator, 60))]
            else:
                count = 0
        return [(tm, -1)]

    def predict_wake(self, tm):
        length = self.slot_seconds()
        seconds = seconds_of(tm)
        for j, p in self.following_slots(seconds):
            if p == -1.0:
                return []
            if p >= self.strength_high:
                wake = tm_of(seconds - remainder(seconds, length) + wrap32(j * length))
                return [(wake, self.predict_hibernate(wake)[0][1])]
        return []

    def get_predictions(self, tm):
        first = self.predict_hibernate(tm)[0]
        if first[1] == -1:
            return [first]
        idle = tm_of(seconds_of(tm) + wrap32(first[1] * 60))
        return [first] + self.predict_wake(idle)


# The predictor

def load_data(configuration, content):
    """The block of a data file's content and None, or None and the reason."""
    days = configuration.number("DaysInCycle", -1)
    minutes = configuration.number("MinutesInDay", -1)
    if days == 0 or configuration.time_resolution == 0xFFFFFFFF or minutes == 0:
        raise EngineError(LOAD_WRONG_CONFIGURATIONS)
    if content is None:
        return None, None
    resolution = wrap32(configuration.time_resolution)
    if resolution <= 0:
        return None, SIZE_DIFFERS
    slots = slot_count_of(minutes, days, resolution)
    if slots <= 0 or len(content) != slots * SLOT.size + HEADER.size:
        return None, SIZE_DIFFERS
    words = HEADER.unpack_from(content)
    if words[1:4] != (days, minutes, resolution):
        return None, CONFIGURATION_DIFFERS
    if words[14] != slots:
        return None, COUNT_DIFFERS
    return Block.unpack(content), None


def make_tracker(configuration, content=None):
    """A tracker as the predictor constructs it, and why the content was ignored, if it was.

    `content` is the data file's, None when there is no file.
    """
    block, ignored = load_data(configuration, content)
    return Tracker(configuration, block), ignored


# History

def read_records(content):
    """(time, asleep) of each whole record."""
    whole = len(content) - len(content) % RECORD.size
    return [(time, asleep) for time, asleep, _ in RECORD.iter_unpack(content[:whole])]


def read_csv(text):
    """Records of a CSV history with a header line and whole seconds. Comments begin with #."""
    lines = [line.strip() for line in text.split("\n")]
    pairs = [line.split(",") for line in lines if line and not line.startswith("#")][1:]
    return [(float(time), int(asleep)) for time, asleep in pairs]


def increasing(records):
    kept = []
    for record in records:
        if not kept or record[0] > kept[-1][0]:
            kept.append(record)
    return kept


def learn(configuration, records):
    """A tracker that has seen the records, and the texts of the events it refused."""
    tracker, _ = make_tracker(configuration)
    refused = []
    for time, asleep in increasing(records):
        try:
            tracker.process_event(tm_of(truncate_double(time)), SUSPEND if asleep else ACTIVATING)
        except EngineError as error:
            refused.append(str(error))
    return tracker, refused


def merge(history, pending, now, limit):
    """The history file's new content; `history` is None when there is no file."""
    cutoff = float(wrap64(now - limit * 86400))
    kept = []

    def last_time():
        return RECORD.unpack(kept[-1])[0]

    if history is not None:
        buffer = bytes(16)
        # The read that meets the end of the file counts as one more, even if it got nothing.
        for offset in range(0, len(history) + 1, 16):
            got = history[offset:offset + 16]
            buffer = got + buffer[len(got):]
            time = RECORD.unpack(buffer)[0]
            if time >= cutoff and (not kept or time > last_time()):
                kept.append(buffer)
    for offset in range(0, len(pending) - 15, 16):
        record = pending[offset:offset + 16]
        if not kept or RECORD.unpack(record)[0] > last_time():
            kept.append(record)
    return b"".join(kept)


# The suspend decision

Suspend = namedtuple(
    "Suspend", "hibernateAt sleepRestoredAt hibernateNextAt haMinutes timerMinutes nextHAMinutes")


def decide_suspend(predictions, now):
    """What is logged and set on a suspend at `now`, with None for each value that is not set."""
    next_sleep_time = next_ha = None
    if len(predictions) >= 2 and seconds_between(now, predictions[1][0]) > 0:
        next_sleep_time, next_ha = predictions[1]
        if next_ha == -1:
            next_ha = None
    hibernate_at = hibernate_next_at = "no prediction"
    ha_minutes = timer_minutes = None
    if predictions and predictions[0][1] != -1:
        start, idle = predictions[0]
        hibernate_at = ascii_time(add_seconds(start, wrap32(idle * 60)))
        ha_minutes = wrap32(minutes_between(now, start) + idle)
    if next_ha is not None:
        hibernate_next_at = ascii_time(add_seconds(next_sleep_time, wrap32(next_ha * 60)))
    if next_sleep_time is not None:
        minutes = minutes_between(now, next_sleep_time)
        timer_minutes = minutes if minutes > 0 else None
    restored_at = "never" if next_sleep_time is None else ascii_time(next_sleep_time)
    return Suspend(hibernate_at, restored_at, hibernate_next_at, ha_minutes, timer_minutes, next_ha)
