"""Random histories, settings and data files, tame to hostile, the same for the same seed."""

import math
import random
import struct

from tests.model.engine_model import HEADER, MAX_SECONDS, SLOT

RECORD = struct.Struct("<dII")
DAY = 86400
BASE = 1325376000  # 2012-01-01, a Sunday


def random_for(seed, index):
    return random.Random(seed * 1000003 + index)


# Tame days: (hour in use from, hour until) stretches

def office_day(rng, day):
    if day % 7 in (0, 6):
        return []
    start = rng.uniform(7.5, 9.5)
    lunch = rng.uniform(11.5, 12.5)
    return [(start, lunch), (lunch + rng.uniform(0.2, 1.2), rng.uniform(16, 18.5))]


def home_day(rng, day):
    stretches = [(rng.uniform(18, 20), rng.uniform(21, 23.8))]
    if day % 7 in (0, 6) and rng.random() < 0.7:
        stretches.insert(0, (rng.uniform(9, 11), rng.uniform(11.5, 17)))
    return stretches


def shift_day(rng, day):
    start = (6, 14, 22)[day // 7 % 3] + rng.uniform(-0.3, 0.3)
    return [(start, start + rng.uniform(6, 7.9))] if day % 7 < 5 else []


def erratic_day(rng, _):
    edges = sorted(rng.uniform(0, 24) for _ in range(2 * rng.randint(0, 5)))
    return list(zip(edges[::2], edges[1::2]))


TAME_KINDS = (office_day, home_day, shift_day, erratic_day)


def tame_records(rng, days):
    return records_of_days(rng, rng.choice(TAME_KINDS), days)


def records_of_days(rng, make_day, days):
    base = BASE + rng.randint(0, 2000) * DAY
    records = []
    for day in range(days):
        for start, end in make_day(rng, day):
            for hour, asleep in ((start, 0), (end, 1)):
                records.append((float(base + day * DAY + int(hour * 3600)), asleep, 0))
    return records


# Hostile changes to a list of records

def place(rng, records):
    return rng.randrange(len(records) + 1)


def near(rng, records):
    return records[rng.randrange(len(records))][0] if records else float(BASE)


def add_equal_time(rng, records):
    i = place(rng, records)
    records.insert(i, (near(rng, records), rng.randint(0, 1), 0))


def add_backward_time(rng, records):
    i = place(rng, records)
    time = records[i - 1][0] if i else float(BASE)
    records.insert(i, (time - rng.choice((1, 59, 3600, 10 * DAY)), rng.randint(0, 1), 0))


def repeat_state(rng, records):
    i = place(rng, records)
    time, asleep = records[i - 1][:2] if i else (float(BASE), 0)
    records.insert(i, (time + rng.randint(1, 900), asleep, 0))


def odd_code(rng, records):
    if records:
        i = rng.randrange(len(records))
        code = rng.choice((2, 3, 4, 7, 256, 0x80000000, 0xFFFFFFFF))
        records[i] = (records[i][0], code, rng.getrandbits(32))


def odd_time(rng, records):
    odd = (math.nan, math.nan, math.nan, -math.nan, math.inf, -math.inf, -0.0, -0.5, 0.0, -1.0,
           -1e9, 1e18, -1e300, 9.3e18, 1e300, 5e-324, MAX_SECONDS + 0.0, MAX_SECONDS + 0.5,
           MAX_SECONDS + 1.0, 2.0**31, 2.0**32)
    place_at = rng.choice((0, place(rng, records), len(records)))
    records.insert(place_at, (rng.choice(odd), rng.randint(0, 1), 0))


def fractional_pair(rng, records):
    i = place(rng, records)
    time = math.floor(records[i - 1][0]) if i and math.isfinite(records[i - 1][0]) else BASE
    asleep = rng.randint(0, 1)
    records[i:i] = [(time + 10.2, asleep, 0), (time + 10.7, 1 - asleep, 0)]


def long_gap(rng, records):
    i = place(rng, records)
    gap = rng.choice((7 * DAY, 7 * DAY - 600, 8 * DAY + 5, 14 * DAY, 400 * DAY, 40000 * DAY))
    records[i:] = [(time + gap, asleep, rest) for time, asleep, rest in records[i:]]


def short_uses(rng, records):
    i = place(rng, records)
    time = records[i - 1][0] if i else float(BASE)
    asleep = rng.randint(0, 1)
    extra = []
    for _ in range(rng.randint(2, 12)):
        time += rng.randint(1, 700)
        extra.append((time, asleep, 0))
        asleep = 1 - asleep
    records[i:i] = extra


def uses_a_slot_apart(rng, records):
    i = place(rng, records)
    time = records[i - 1][0] if i else float(BASE)
    step = rng.choice((30, 300, 450, 600))
    records[i:i] = [(time + step * n, n % 2, 0) for n in range(1, rng.randint(3, 12))]


def beyond_calendar(rng, records):
    shift = MAX_SECONDS - BASE - rng.randint(0, 20) * DAY
    i = place(rng, records)
    records[i:] = [(time + shift, asleep, rest) for time, asleep, rest in records[i:]]


CHANGES = (add_equal_time, add_backward_time, repeat_state, odd_code, odd_time, odd_time,
           fractional_pair, long_gap, short_uses, uses_a_slot_apart, beyond_calendar)


def pack_records(records):
    return b"".join(RECORD.pack(*record) for record in records)


def make_history(rng, days, hostile):
    """The bytes of a history file; a hostile one may have a partial tail or no record at all."""
    records = tame_records(rng, days)
    if not hostile:
        return pack_records(records)
    if rng.random() < 0.06:
        records = []
    for _ in range(rng.randint(0, 6)):
        rng.choice(CHANGES)(rng, records)
    content = pack_records(records)
    if rng.random() < 0.3:
        content += partial_record(rng)
    if rng.random() < 0.04:
        content = b""
    return content


def partial_record(rng):
    # Without a zero byte a file that has no whole record would be text.
    return rng.randbytes(rng.randint(0, 14)) + b"\0"


def make_merge(rng, history):
    """(history or None, pending, now, limit) for a merge around the end of a history."""
    whole = history[:len(history) // 16 * 16]
    times = [time for time, _, _ in RECORD.iter_unpack(whole) if 0 < time < 2**31 - 1000 * DAY]
    last = int(max(times, default=BASE))
    now = last + rng.randint(-5, 90) * DAY + rng.randint(0, DAY)
    limit = rng.choice((60, 60, 0, 1, 7, rng.randint(0, 120), 24855, 24856, 30000, 49711, 100000))
    if times and rng.random() < 0.2:
        now = int(rng.choice(times)) + limit * DAY  # a record exactly at the limit
    if rng.random() < 0.1 or now >= 2**31:
        now = rng.randint(0, DAY)
    pending = [(last + rng.uniform(-2 * DAY, 4 * DAY), rng.randint(0, 1), rng.getrandbits(32))
               for _ in range(rng.randint(0, 12))]
    if rng.random() < 0.7:
        pending.sort()
    if rng.random() < 0.3:
        pending.insert(0, (float(last), 1, 0))
    if rng.random() < 0.15:
        odd_time(rng, pending)
    content = pack_records(pending)
    if rng.random() < 0.2:
        content += partial_record(rng)
    return None if rng.random() < 0.1 else history, content, now, limit


# Settings

GROUPINGS = ("0", "12", "96", "127", "255", "-1", "31", "1", "64")


def tame_values(rng, resolution):
    first, second = rng.randint(20, 60), rng.randint(5, 30)
    high = rng.randint(40, 90)
    low = rng.randint(10, high)
    if rng.random() < 0.3:
        high, low = first, second  # probabilities that meet the strengths exactly
    return {
        "TimeResolution": str(resolution), "DaysInCycle": "7", "MinutesInDay": "1440",
        "FirstLastWeight": str(first), "SecondLastWeight": str(second),
        "AgregationWeight": str(100 - first - second), "DayGrouping": rng.choice(GROUPINGS),
        "StrengthHigh": str(high), "StrengthLow": str(low),
    }


HOSTILE_WEIGHTS = (
    ("1", "-1", "0"), ("2", "-3", "1"), ("0", "0", "0"), ("5", "-5", "0"), ("-2", "-2", "-2"),
    ("2", "1", "1"), ("2147483647", "1", "1"), ("99999999999", "99999999999", "2"),
    ("-99999999999", "-2147483648", "7"), ("3", "-3", "10"), ("16777217", "33554433", "5"),
    ("0", "0", "7"), (" 7x", "abc", "+3"), ("100", "-50", "-25"))

HOSTILE_CYCLES = (
    ("10", "1", "1440"), ("10", "14", "1440"), ("10", "7", "720"), ("15", "7", "2880"),
    ("60", "1", "60"), ("30", "2", "30"), ("30", "-7", "-1440"), ("10", "2982617", "1440"),
    ("1440", "7", "1440"), ("31", "7", "1488"), ("20", "3", "1440"), ("1440", "1000", "1440"),
    ("1440", "30000", "1440"))

REFUSED = (
    {"TimeResolution": "7"}, {"TimeResolution": None}, {"TimeResolution": "-1"},
    {"TimeResolution": "0"}, {"TimeResolution": "-10"}, {"TimeResolution": "-7"},
    {"TimeResolution": "none"}, {"DaysInCycle": "0"}, {"DaysInCycle": None},
    {"DaysInCycle": "-7"}, {"DaysInCycle": "x"}, {"MinutesInDay": "0"}, {"MinutesInDay": None},
    {"MinutesInDay": "-1440"}, {"MinutesInDay": "1439"}, {"FirstLastWeight": None},
    {"SecondLastWeight": "-1"}, {"AgregationWeight": ""},
    {"DaysInCycle": None, "TimeResolution": "7"}, {"DaysInCycle": "0", "TimeResolution": "7"},
    {"FirstLastWeight": None, "TimeResolution": None}, {"FirstLastWeight": None,
                                                       "TimeResolution": "7"},
    {"AgregationWeight": None, "TimeResolution": "0"},
    {"MinutesInDay": "-1440", "TimeResolution": "-10"}, {"TimeResolution": "99999999999"},
    {"DaysInCycle": "-1", "MinutesInDay": "1", "TimeResolution": "2"})

STRENGTHS = ((None, None), ("70", None), (None, "30"), ("30", "70"), ("0", "0"), ("100", "101"),
             ("-5", "-5"), ("", "50"), ("2147483648", "-2147483649"), ("1x", " 99"),
             ("-100", "1000"), ("50", "-100"))


def make_hostile(rng, values):
    if rng.random() < 0.4:
        values.update(zip(("FirstLastWeight", "SecondLastWeight", "AgregationWeight"),
                          rng.choice(HOSTILE_WEIGHTS)))
    if rng.random() < 0.4:
        values.update(zip(("StrengthHigh", "StrengthLow"), rng.choice(STRENGTHS)))
    if rng.random() < 0.3:
        values.update(zip(("TimeResolution", "DaysInCycle", "MinutesInDay"),
                          rng.choice(HOSTILE_CYCLES)))
    if rng.random() < 0.2:
        values["DayGrouping"] = rng.choice((None, "2147483648", "-128", "128", "all", "-2"))
    if rng.random() < 0.2:
        values.update(rng.choice(REFUSED))


def settings_text(rng, values, hostile):
    """Settings as a file's text; a hostile one has comments, blanks, unknown and repeated keys."""
    lines = ["[Settings]"]
    service = {"TimeResolution": values["TimeResolution"], "HistoryLimit": "60"}
    predictor = {key: value for key, value in values.items() if key != "TimeResolution"}
    for section in (service, predictor):
        items = [(key, value) for key, value in section.items() if value is not None]
        rng.shuffle(items)
        for key, value in items:
            if hostile and rng.random() < 0.1:
                lines += ["; " + key + "=5", "", "  # a remark", "Stranger = 12"]
            if hostile and rng.random() < 0.1:
                lines.append(key + "=3")
            lines.append(rng.choice(("%s=%s", "  %s\t= %s  ")) % (key, value)
                         if hostile else "%s=%s" % (key, value))
        if section is service:
            lines.append("[CyclicProbabilityPredictor]")
    if hostile and rng.random() < 0.2:
        lines += ["[Elsewhere]", "DaysInCycle=9"]
    return "\n".join(lines) + ("\n" if not hostile or rng.random() < 0.8 else "")


def make_settings(rng, resolution, hostile):
    values = tame_values(rng, resolution)
    if hostile:
        make_hostile(rng, values)
    return settings_text(rng, values, hostile)


# Data files

def change_last_event(rng, data):
    fields = [rng.choice((-1, 0, 1, 5, 112, 2**31 - 1, -2**31)) for _ in range(9)]
    struct.pack_into("<i9i", data, 16, rng.choice((-1, 0, 1, 2, 3, 4, 77)), *fields)


def change_slots(rng, data):
    odd = (-1, -1, 0, 0, 1, 1, 1, 2, -2, 3, 7, 16777217, 2**31 - 1, -2**31)
    share = rng.choice((0.05, 1.0))
    for offset in range(HEADER.size, len(data) - SLOT.size + 1, SLOT.size):
        if rng.random() < share:
            SLOT.pack_into(data, offset, *[rng.choice(odd) for _ in range(4)],
                           rng.choice((-1, 0, 2**63 - 1, -2**63)))


def plausible_slots(rng, data):
    for offset in range(HEADER.size, len(data) - SLOT.size + 1, SLOT.size):
        count = rng.choice((-1, 1, 2, 3, 7))
        SLOT.pack_into(data, offset, count, rng.randint(0, count) if count > 0 else -1,
                       rng.choice((0, 0, 1)), rng.choice((0, 0, 1)), -1)


def set_word(offset, *values):
    def change(rng, data):
        struct.pack_into("<i", data, offset, rng.choice(values))
    return change


def shorten(rng, data):
    del data[-rng.choice((1, 24, len(data))):]


def lengthen(rng, data):
    data.extend(bytes(rng.choice((1, 24))))


DATA_CHANGES = (
    change_last_event, change_slots, change_slots, plausible_slots, plausible_slots,
    plausible_slots, set_word(0, 1, -1, 256), set_word(4, 0, 8, -7), set_word(8, 0, 1441),
    set_word(12, 0, 11, -10), set_word(56, 0, -1, 1, 1007, 1009, 2**31 - 1, 178957012),
    set_word(60, 5), shorten, lengthen)


def change_data(rng, content):
    """A learnt data file's content, changed in one or two ways."""
    data = bytearray(content)
    for change in rng.sample(DATA_CHANGES, rng.choice((1, 1, 2))):
        if len(data) > HEADER.size:
            change(rng, data)
    return bytes(data)


def foreign_data(rng, days, minutes, resolution):
    """A data file with the header of this configuration, which may be invalid."""
    slots = abs(days * minutes // resolution) if resolution else 10
    slots = slots if slots < 20000 else 10
    version = rng.choice((0, 0, 1))
    header = HEADER.pack(version, days, minutes, resolution, 4, *[0] * 5, -1, *[0] * 3, slots, 0)
    return header + SLOT.pack(-1, -1, -1, -1, -1) * slots
