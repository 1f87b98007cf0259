"""A plain model of the return-rate predictor, written to be read and compared with.

It learns how long the machine is away: for each time of day, time since the suspend and weekday the
seconds away and the returns. From these it fits a rate of return, from the rates it foresees a
stretch away, and from that it chooses when to hibernate and when to be asleep again.

All times are wall-clock seconds read as UTC. The two tables hold floats in single precision; all
else is double precision.

Where a rule leaves room, this is how it is read:
- Seconds, returns and the idle lengths fade by one product in double precision, then the tables are
  rounded. A stretch of no or negative length fades nothing, is no sleep that was learnt, and only
  sets the time of the last resume. A stretch of more than 8 days is a sleep that was learnt.
- The sleeps learnt are counted whole and never fade; the count of idle lengths fades.
- Before anything is learnt the base is its prior, 1 in 8 hours, and all other factors are 1.
- A kernel holds each cell at most three sigmas away, the one at exactly three included. Classes of
  time away have no neighbours beyond the first and the last. What is smoothed is the returns seen
  and the returns promised by the other factors, cell by cell; the pull is added afterwards.
- The factor of one kind of day learns from the days of that kind alone; the factors of all days are
  multiplied into what they promise.
- The forecast includes the piece in which the chance falls below 0.0001. Its end is always a
  choice, however early it is, and means never.
- The times of hibernating, waking and hibernating again are each rounded up to whole minutes after
  the suspend, so the second stretch is the difference of two such times, and at least a minute.
- Hibernating alone wins a tie with a second stretch.
- A strength that is absent, negative or beyond the list has the weight 50.

A sleep counts as hibernated from a planned time that comes strictly before the resume; a plan is
always made, so the user's own timeout never holds. What is asleep at the history's end counts
nothing.
"""

import math
from bisect import bisect_right
from collections import namedtuple
from itertools import accumulate
from operator import mul

from tests.model import engine_model as model
from tests.model.engine_model import f32
from tests.model.optimizer_model import integer_list

MINUTE, HOUR, DAY = 60, 3600, 86400
HORIZON = 8 * DAY

CLOCKS, CLOCK_SECONDS = 72, 20 * MINUTE
# The lower edges of the classes of time away.
CLASS_EDGES = (0, 3 * MINUTE, 10 * MINUTE, 25 * MINUTE, HOUR, 150 * MINUTE, 6 * HOUR, 12 * HOUR,
               24 * HOUR, 60 * HOUR)
CLASSES = len(CLASS_EDGES)
NOTHING = [0.0] * CLASSES
WEEKDAYS = range(7)  # Monday is 0.
KINDS = ((0, 1, 2, 3, 4), (5, 6))  # Days that share the factors of their clock.
KIND_OF_DAY = (0, 0, 0, 0, 0, 1, 1)

# A stretch is cut at the marks of the clock and at these times away.
CLOCK_MARK = 10 * MINUTE
AWAY_MARKS = tuple(minutes * MINUTE for minutes in
                   (1, 2, 3, 5, 7, 10, 15, 20, 25, 30, 40, 50, 60))

MEMORY_SECONDS = 120 * DAY
USUAL_IDLE, USUAL_IDLES = 8 * HOUR, 3

ROUNDS = 2
BASE_RETURNS, BASE_SECONDS = 2, 2 * 8 * HOUR

LEAST_SURVIVAL = 0.0001
WAKE_COST = 600
SHORTEST, SHORTEST_UNLEARNT, FEWEST_SLEEPS = 3 * MINUTE, HOUR, 3
NEVER = HORIZON // MINUTE
USUAL_WEIGHT = 50


# Pieces of a stretch

Piece = namedtuple("Piece", "start end clock away weekday")


def pieces(suspend, length):
    """A stretch cut at its marks. A piece's start and end are seconds since the suspend."""
    start = 0
    while start < length:
        clock_mark = start + CLOCK_MARK - (suspend + start) % CLOCK_MARK
        away_mark = next((mark for mark in AWAY_MARKS if mark > start), clock_mark)
        end = min(clock_mark, away_mark, length)
        middle = (start + end) / 2
        yield Piece(start, end, *cell_of(suspend + middle, middle))
        start = end


def cell_of(time, away):
    clock = int(time % DAY // CLOCK_SECONDS)
    weekday = int(time // DAY + 3) % 7  # 1970-01-01 is a Thursday.
    return clock, bisect_right(CLASS_EDGES, away) - 1, weekday


# What is learnt

class Learnt:
    def __init__(self):
        # [weekday][clock][class]
        self.away = [[NOTHING[:] for _ in range(CLOCKS)] for _ in WEEKDAYS]
        self.returns = [[NOTHING[:] for _ in range(CLOCKS)] for _ in WEEKDAYS]
        self.idle_count = 0.0
        self.idle_seconds = 0.0
        self.sleeps = 0
        self.last_resume = None

    def mean_idle(self):
        return ((self.idle_seconds + USUAL_IDLES * USUAL_IDLE) / (self.idle_count + USUAL_IDLES))

    def learn(self, suspend, resume):
        """Whether the stretch was learnt; one of no or negative length is not."""
        length = resume - suspend
        if length > 0:
            self.fade(resume)
            self.add(suspend, length)
        self.last_resume = resume
        return length > 0

    def fade(self, resume):
        if self.last_resume is None:
            return
        kept = math.exp(-max(0, resume - self.last_resume) / MEMORY_SECONDS)
        for table in (self.away, self.returns):
            for day in table:
                for row in day:
                    row[:] = [f32(value * kept) if value else value for value in row]
        self.idle_count *= kept
        self.idle_seconds *= kept

    def add(self, suspend, length):
        for piece in pieces(suspend, min(length, HORIZON)):
            row = self.away[piece.weekday][piece.clock]
            row[piece.away] = f32(row[piece.away] + (piece.end - piece.start))
        if length <= HORIZON:
            row = self.returns[piece.weekday][piece.clock]
            row[piece.away] = f32(row[piece.away] + 1)
            self.idle_count += 1
            self.idle_seconds += length
        self.sleeps += 1


# The fit

def kernel(sigma, reach=None):
    """The weights of a cell's neighbours, itself in the middle."""
    reach = math.floor(3 * sigma) if reach is None else reach
    return [math.exp(-(i / sigma) ** 2 / 2) for i in range(-reach, reach + 1)]


def clock_kernel(sigma_minutes):
    return kernel(sigma_minutes * MINUTE / CLOCK_SECONDS)


# How strongly a factor is drawn to 1, in returns, and how it is smoothed.
ELAPSED = (1.5, kernel(0.5))
CLOCK_WIDE = (1, clock_kernel(100))
CLOCK = (1.5, clock_kernel(18))
CLASS_WIDE = (1, clock_kernel(90))
CLASS = (2, clock_kernel(30))
DAY_PULL = 3
LOCAL_PULL, LOCAL_CLOCK, LOCAL_CLASS = 1.2, clock_kernel(35), kernel(0.45, reach=2)


def smooth_over_clock(values, weights):
    reach = len(weights) // 2
    around = values[-reach:] + values + values[:reach]
    return [sum(map(mul, weights, around[i:])) for i in range(CLOCKS)]


def smooth_over_classes(values, weights):
    reach = len(weights) // 2
    around = [0.0] * reach + values + [0.0] * reach
    return [sum(map(mul, weights, around[i:])) for i in range(CLASSES)]


def smooth_over_both(rows):
    """[clock][class]"""
    rows = [smooth_over_classes(row, LOCAL_CLASS) for row in rows]
    columns = [smooth_over_clock(list(column), LOCAL_CLOCK) for column in zip(*rows)]
    return list(map(list, zip(*columns)))


def drawn_ratio(returns, expected, pull):
    return [(seen + pull) / (wanted + pull) for seen, wanted in zip(returns, expected)]


def quotients(values, divisors):
    return [value / divisor for value, divisor in zip(values, divisors)]


def summed(rows):
    """The sum of rows, member by member."""
    return list(map(sum, zip(*rows)))


# Sums of a table [weekday][clock][class]

def by_class(table):
    return summed(row for day in table for row in day)


def by_clock(table, days=WEEKDAYS):
    return summed(map(sum, table[day]) for day in days)


def by_weekday(table):
    return [sum(map(sum, day)) for day in table]


def by_clock_and_class(table):
    return [summed(rows) for rows in zip(*table)]


class Factors:
    """Their product is the rate of return, in returns a second."""

    def __init__(self):
        self.base = BASE_RETURNS / BASE_SECONDS
        self.elapsed = [1.0] * CLASSES
        self.clock_wide = [1.0] * CLOCKS
        self.clock = [1.0] * CLOCKS
        self.class_wide = [[1.0] * CLOCKS for _ in KINDS]
        self.class_ = [[1.0] * CLOCKS for _ in KINDS]
        self.day = [1.0] * len(WEEKDAYS)
        self.local = [[1.0] * CLASSES for _ in range(CLOCKS)]

    def time_of_day(self, clock, kind):
        return (self.clock_wide[clock] * self.clock[clock] *
                self.class_wide[kind][clock] * self.class_[kind][clock])

    def rate(self, clock, away, weekday):
        return (self.base * self.elapsed[away] * self.time_of_day(clock, KIND_OF_DAY[weekday]) *
                self.day[weekday] * self.local[clock][away])

    def expected(self, away):
        """The returns that the rates promise in a table of time away."""
        both = [[self.base * e * local for e, local in zip(self.elapsed, row)]
                for row in self.local]
        return [[self.expected_in(away[day][clock], both[clock],
                                  self.time_of_day(clock, KIND_OF_DAY[day]) * self.day[day])
                 for clock in range(CLOCKS)] for day in WEEKDAYS]

    @staticmethod
    def expected_in(seconds, rates, shared):
        if not any(seconds):
            return NOTHING
        return [shared * rate * s for rate, s in zip(rates, seconds)]

    def fit(self, learnt):
        for _ in range(ROUNDS):
            self.fit_base(learnt.away, learnt.returns)
            self.fit_elapsed(learnt.away, learnt.returns)
            self.fit_time_of_day(learnt.away, learnt.returns)
            self.fit_day(learnt.away, learnt.returns)
            self.fit_local(learnt.away, learnt.returns)

    # What the other factors promise is what all of them promise without the own one.

    def fit_base(self, away, returns):
        seconds = sum(by_weekday(self.expected(away))) / self.base
        self.base = (sum(by_weekday(returns)) + BASE_RETURNS) / (seconds + BASE_SECONDS)

    def fit_elapsed(self, away, returns):
        pull, weights = ELAPSED
        promised = quotients(by_class(self.expected(away)), self.elapsed)
        self.elapsed = drawn_ratio(smooth_over_classes(by_class(returns), weights),
                                   smooth_over_classes(promised, weights), pull)

    def fit_time_of_day(self, away, returns):
        expected = self.expected(away)
        promised = [quotients(by_clock(expected, days), self.time_of_day_line(kind))
                    for kind, days in enumerate(KINDS)]
        returns = [by_clock(returns, days) for days in KINDS]
        both = range(len(KINDS))
        self.clock_wide = self.fit_clock(self.clock_wide, CLOCK_WIDE, promised, returns, both)
        self.clock = self.fit_clock(self.clock, CLOCK, promised, returns, both)
        for factor, shape in ((self.class_wide, CLASS_WIDE), (self.class_, CLASS)):
            for kind in both:
                factor[kind] = self.fit_clock(factor[kind], shape, promised, returns, [kind])

    def fit_clock(self, factor, shape, promised, returns, kinds):
        """`promised` and `returns` are [kind][clock], the former without any time of day."""
        pull, weights = shape
        seen = summed(returns[kind] for kind in kinds)
        expected = summed(map(mul, promised[kind], self.time_of_day_line(kind)) for kind in kinds)
        return drawn_ratio(smooth_over_clock(seen, weights),
                           smooth_over_clock(quotients(expected, factor), weights), pull)

    def time_of_day_line(self, kind):
        return [self.time_of_day(clock, kind) for clock in range(CLOCKS)]

    def fit_day(self, away, returns):
        promised = quotients(by_weekday(self.expected(away)), self.day)
        self.day = drawn_ratio(by_weekday(returns), promised, DAY_PULL)

    def fit_local(self, away, returns):
        promised = map(quotients, by_clock_and_class(self.expected(away)), self.local)
        self.local = [drawn_ratio(seen, wanted, LOCAL_PULL) for seen, wanted in
                      zip(smooth_over_both(by_clock_and_class(returns)),
                          smooth_over_both(promised))]


# The forecast and the decision

Forecast = namedtuple("Forecast", "starts survival density")


def forecast(factors, suspend):
    """For each piece its start, the chance to be away still and the part of it that returns. The
    starts have one more, where the forecast ends."""
    starts, survival, density = [0], [], []
    left = 1.0
    for piece in pieces(suspend, HORIZON):
        rate = factors.rate(piece.clock, piece.away, piece.weekday)
        kept = left * math.exp(-rate * (piece.end - piece.start))
        survival.append(left)
        density.append(left - kept)
        starts.append(piece.end)
        left = kept
        if left < LEAST_SURVIVAL:
            break
    return Forecast(starts, survival, density)


def gains(expected, lam):
    """What being asleep gains until each start, in seconds."""
    return list(accumulate(
        (lam * lost - (end - start) * (left - lost / 2) for start, end, left, lost in
         zip(expected.starts, expected.starts[1:], expected.survival, expected.density)),
        initial=0.0))


# Minutes since the suspend. Without a second stretch asleep `wake` and `end` are None.
Plan = namedtuple("Plan", "hibernate wake end", defaults=(None, None))


def best_plan(expected, lam, shortest, with_wake):
    starts = expected.starts
    places = best_places(starts, gains(expected, lam), shortest, with_wake)
    plan = Plan(*(NEVER if place == len(starts) - 1 else -(-starts[place] // MINUTE)
                  for place in places))
    if plan.wake is not None and plan.end == plan.wake:
        return plan._replace(end=plan.end + 1)  # A timeout of no minutes would be none.
    return plan


def best_places(starts, gained, shortest, with_wake):
    """The pieces at which the machine had better hibernate, alone or together with those of a later
    stretch asleep. The last start, which stands for never, is never too early."""
    last = len(starts) - 1
    best, best_value = None, -math.inf
    end = last                              # The best end after the piece,
    second, second_value = (), -math.inf    # and the best stretch asleep.
    # From the last piece to the first, so that a tie goes to the earlier one.
    for place in range(last, -1, -1):
        if place == last or starts[place] >= shortest:
            together = gained[place] + second_value - WAKE_COST
            value = max(gained[place], together)
            if value >= best_value:
                best_value = value
                best = (place, *second) if together > gained[place] else (place,)
        if with_wake and place != last and gained[end] - gained[place] >= second_value:
            second, second_value = (place, end), gained[end] - gained[place]
        if gained[place] >= gained[end]:
            end = place
    return best


def weight_of(configuration):
    """How much not waiting weighs at the strength in force, of 100."""
    weights = integer_list(configuration.get("WR"))
    strength = configuration.number("Strength", -1)
    return weights[strength] if 0 <= strength < len(weights) else USUAL_WEIGHT


class Predictor:
    """Learns from events as they happen and is asked at a suspend."""

    def __init__(self, weight=USUAL_WEIGHT, with_wake=True):
        self.weight = weight
        self.with_wake = with_wake
        self.learnt = Learnt()
        self.factors = Factors()
        self.suspended = None

    def process_event(self, tm, state):
        """Of several suspends in a row the first counts, and so does the first of several
        activations. A time that the calendar lacks changes nothing."""
        seconds = model.seconds_of(tm)
        if seconds == -1:
            return
        if state != model.ACTIVATING:
            if self.suspended is None:
                self.suspended = seconds
        elif self.suspended is not None:
            suspended, self.suspended = self.suspended, None
            if self.learnt.learn(suspended, seconds):
                self.factors.fit(self.learnt)

    def plan(self, suspend):
        return self.plan_from(forecast(self.factors, suspend))

    def plan_from(self, expected):
        if self.weight <= 0:
            return Plan(SHORTEST // MINUTE)
        if self.weight >= 100:
            return Plan(NEVER)
        lam = self.weight / (100 - self.weight) * self.learnt.mean_idle()
        few = self.learnt.sleeps < FEWEST_SLEEPS
        return best_plan(expected, lam, SHORTEST_UNLEARNT if few else SHORTEST, self.with_wake)

    def get_predictions(self, tm):
        suspend = model.seconds_of(tm)
        if suspend == -1:
            return []
        plan = self.plan(suspend)
        records = [(tm, plan.hibernate)]
        if plan.wake is not None:
            records.append((model.add_seconds(tm, plan.wake * MINUTE), plan.end - plan.wake))
        return records
