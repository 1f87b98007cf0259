"""Random inputs of the optimizer, tame to hostile: histories, ranges, timeouts, stored sets."""

from tests.model import engine_model as model
from tests.model import histories
from tests.model import optimizer_model as optimizer

MOST_SETS = 16


def records_of(content):
    return list(histories.RECORD.iter_unpack(content[:len(content) // 16 * 16]))


def mixed_codes(rng, content):
    """The history with codes that the service does not write, now and then unknown ones."""
    share = rng.choice((0.02, 0.1, 0.4))
    codes = (1, 2, 2, 3, 0) if rng.random() < 0.8 else (2, 3, 4)
    return histories.pack_records(
        [(time, rng.choice(codes) if rng.random() < share else code, rest)
         for time, code, rest in records_of(content)])


def real_hibernations(rng, content):
    """The history with sleeps that turn into hibernation or limbo, once or several times."""
    records = []
    for time, code, rest in records_of(content):
        records.append((time, 2 if code == 1 and rng.random() < 0.1 else code, rest))
        while code and rng.random() < 0.6:
            time += rng.choice((1, 5, 5, 10, 30, 120, 600)) * 60
            records.append((time, rng.choice((2, 2, 2, 2, 3, 1)), 0))
    return histories.pack_records(records)


def regular_days(rng, days):
    """Use at the same times of every day, so that predictions come true."""
    edges = sorted(rng.sample(range(0, 1440, 5), 2 * rng.randint(1, 3)))
    base = histories.BASE + rng.randint(0, 2000) * histories.DAY
    records = []
    for day in range(days):
        late = rng.choice((0, 0, 0, 300, 1800, 40000))
        for i, minute in enumerate(edges):
            if rng.random() > 0.03:
                records.append((float(base + day * histories.DAY + minute * 60 + late), i % 2, 0))
    return histories.pack_records(records)


def make_history(rng, days, hostile):
    if rng.random() < 0.5:
        content = regular_days(rng, days)
    else:
        content = histories.make_history(rng, days, hostile and rng.random() < 0.6)
    if hostile and rng.random() < 0.6:
        content = rng.choice((mixed_codes, real_hibernations, real_hibernations))(rng, content)
    return content


# Inputs of a simulation

CYCLES = ("7", "7", "7", "1", "2", "14", None, "0", "x", "-7", "7x", " 7", "2982617")


def make_parameters(rng, hostile):
    values = histories.tame_values(rng, 10)
    if hostile:
        histories.make_hostile(rng, values)
    # The model is too slow for long cycles.
    values["DaysInCycle"] = rng.choice(CYCLES) if hostile else rng.choice(CYCLES[:6])
    return histories.settings_text(rng, values, hostile)


# Inputs of a search

TAME_RANGES = {
    "StrengthHighRange": (30, 50, 60, 70, 80, 90, 100),
    "StrengthLowRange": (10, 20, 30, 40, 50, 60),
    "FirstLastWeightRange": (5, 10, 20, 30, 50), "SecondLastWeightRange": (5, 10, 20, 30, 40),
    "DayGroupingRange": (0, 12, 127, 255, 96), "WR": (0, 10, 25, 50, 75, 90, 100),
}
# The weights 100, -100 and 100 make probabilities of exactly -1, and so do other pairs here.
HOSTILE_RANGES = {
    "StrengthHighRange": (0, -50, 101, 130, 2147483647, "x"),
    "StrengthLowRange": (0, -1, -150, 100, 101, -2147483648, "99999999999", "10.5"),
    "FirstLastWeightRange": (0, 100, -100, -50, -200, 2147483647, -2147483648, "50x"),
    "SecondLastWeightRange": (0, 100, -100, -75, 2147483647, "-99999999999", "+7"),
    "DayGroupingRange": (115, 128, -1, 85, -128, 2147483647, "all"),
    "WR": (-1, 101, 150, -50, 2147483647, -2147483648, "50x", "none", 50, 50),
}
TAME_SEPARATORS = (",", ", ", " ")
HOSTILE_SEPARATORS = (",", " , ", ",,", "   ", ",\t", " ,,, ")


def range_text(rng, key, hostile):
    """None for a missing range."""
    if hostile and rng.random() < 0.03:
        return rng.choice((None, "", " , "))
    values = TAME_RANGES[key]
    if hostile and rng.random() < 0.5:
        values = HOSTILE_RANGES[key] + values[:2]
    if key.endswith("WeightRange") and hostile and rng.random() < 0.02:
        values = (-1,)
    most = 6 if key == "WR" else 3
    picked = [str(rng.choice(values)) for _ in range(rng.randint(1, most))]
    separator = rng.choice(HOSTILE_SEPARATORS if hostile else TAME_SEPARATORS)
    border = rng.choice(("", ",", " ")) if hostile else ""
    return border + separator.join(picked) + border


def make_ranges(rng, hostile):
    """Settings whose grid the model can do in reasonable time."""
    while True:
        ranges = {key: range_text(rng, key, hostile) for key in TAME_RANGES}
        text = histories.settings_text(rng, {"TimeResolution": rng.choice(("10", "7")), **ranges},
                                       hostile)
        if len(optimizer.parameter_grid(model.parse_settings(text))) <= MOST_SETS:
            return text


TIMEOUTS = (None, 0, 1, 10, 30, 60, 180, 1440, 100000, 35791395, 4294967295)


def make_timeout(rng):
    """Minutes, or None for an option that is left out."""
    return rng.choice(TIMEOUTS)


# Stored sets

def make_best(rng):
    """The content of a file with a stored set, or None for no file."""
    if rng.random() < 0.05:
        return None
    if rng.random() < 0.1:
        return rng.choice(("-1", "-1\n", "", "\n", " -1", "-1 ", "-1\n\n", "-2", ",,,,,"))
    numbers = [rng.choice((0, 7, 20, 70, -5, 2**31, 2**31 - 1, -2**31 - 1, 2**32 + 3, 2**64 + 9))
               for _ in range(rng.choice((6, 6, 6, 5, 7)))]
    text = ",".join(rng.choice(("", "", "", " ", "\t", " \n")) + rng.choice(("%d", "%d", "%+d"))
                    % number for number in numbers)
    if rng.random() < 0.2:
        i = rng.randrange(len(text) + 1)
        text = text[:i] + rng.choice((" ", "x", ",", "-", "\r", "0", ".")) + text[i:]
    return text + rng.choice(("", "\n", "\n", " tail", "\r\n"))
