"""A plain model of the optimizer: the simulator, the parameter search and the adoption of a set.

It stands on the model of the prediction engine and is written in the same way: to be read and
compared with, not to be fast.
"""

import math
import re
from collections import deque, namedtuple
from itertools import pairwise

from tests.model import engine_model as model
from tests.model.engine_model import Configuration, EngineError, f32, f32_divide, wrap32, wrap64

ACTIVE, LIMBO, ASLEEP, HIBERNATING, PREDICTED_HIBERNATION, WAKE_BACK = 0, 1, 2, 3, 5, 6

SET_KEYS = ("FirstLastWeight", "SecondLastWeight", "AgregationWeight", "StrengthHigh",
            "StrengthLow", "DayGrouping")
FEWEST_RECORDS = 3

SimEvent = namedtuple("SimEvent", "time state")
Outcome = namedtuple("Outcome",
                     "sleepSeconds hibernateSeconds resumesFromSleep resumesFromHibernate")


# A simulation

def states_of(records, state_of_code):
    """The history as events; an unknown code ends everything."""
    for time, code in records:
        if code not in state_of_code:
            raise EngineError("")  # The rules give no text for it.
        yield SimEvent(model.truncate_double(time), state_of_code[code])


def simulate_fixed_timeout(records, timeout_seconds):
    if len(records) < FEWEST_RECORDS:
        return []
    queue = deque()
    previous = None
    for event in list(states_of(records, {0: ACTIVE, 1: ASLEEP, 2: ASLEEP, 3: ASLEEP})):
        if event.state != previous:
            queue.append(event)
        previous = event.state
    time_line = []
    while queue:
        event = queue.popleft()
        time_line.append(event)
        end = wrap64(event.time + timeout_seconds)
        if event.state == ASLEEP and timeout_seconds >= 1 and queue and queue[0].time > end:
            queue.appendleft(SimEvent(end, HIBERNATING))
    return time_line


class Simulator:
    """One replay of a history with a predictor that learns as it goes: a tracker, or what answers
    the same two calls, `process_event` and `get_predictions`."""

    LEARNT_CODES = {ACTIVE: 0, LIMBO: 2, ASLEEP: 1, HIBERNATING: 1, PREDICTED_HIBERNATION: 1,
                    WAKE_BACK: 1}

    def __init__(self, predictor):
        self.predictor = predictor
        self.predictions = []
        self.queue = deque()
        self.time_line = []
        self.pending_hibernations = 0
        self.pending_scheduled = 0

    def run(self, records):
        if len(records) < FEWEST_RECORDS:
            return
        self.queue.extend(states_of(records, {0: ACTIVE, 1: ASLEEP, 2: HIBERNATING, 3: LIMBO}))
        handler = self.initial
        while self.queue:
            event = self.queue.popleft()
            if event.state == PREDICTED_HIBERNATION:
                self.pending_scheduled -= 1
                self.pending_hibernations -= 1
            elif event.state == WAKE_BACK:
                self.pending_scheduled -= 1
            if handler(event) == 0:
                handler = {ACTIVE: self.active, LIMBO: self.limbo, ASLEEP: self.asleep,
                           WAKE_BACK: self.asleep, HIBERNATING: self.hibernating,
                           PREDICTED_HIBERNATION: self.hibernating}[event.state]

    # Handlers

    def initial(self, event):
        if event.state == ACTIVE:
            self.record(event)
            self.append(event)
        return 0

    def active(self, event):
        if event.state == LIMBO:
            self.record(event)
            self.cancel_scheduled()
            self.append(event)
        elif event.state in (ASLEEP, HIBERNATING):
            self.predictions = self.predictor.get_predictions(model.tm_of(event.time))
            self.record(event)
            self.cancel_scheduled()
            self.schedule_hibernation(event)
            self.append(event)
        elif event.state in (PREDICTED_HIBERNATION, WAKE_BACK):
            self.cancel_scheduled()
        return 0

    def limbo(self, event):
        if event.state in (ACTIVE, PREDICTED_HIBERNATION, WAKE_BACK):
            self.record(event)
            self.cancel_scheduled()
            self.append(event)
        return 0

    def asleep(self, event):
        if event.state in (ACTIVE, LIMBO):
            self.record(event)
            self.cancel_scheduled()
            self.append(event)
        elif event.state == HIBERNATING:
            if self.pending_hibernations > 0 and any(
                    queued.state == PREDICTED_HIBERNATION for queued in self.queue):
                return -1
            self.record(event)
            self.schedule_wake_back(event)
            self.append(event)
        elif event.state == PREDICTED_HIBERNATION:
            self.record(event)
            self.cancel_scheduled_hibernations()
            self.schedule_wake_back(event)
            self.append(event)
        return 0

    def hibernating(self, event):
        if event.state == ACTIVE:
            self.record(event)
            self.cancel_scheduled()
            self.append(event)
        elif event.state == LIMBO:
            self.record(event)
            self.append(event)
        elif event.state == PREDICTED_HIBERNATION:
            self.cancel_scheduled_hibernations()
        elif event.state == WAKE_BACK:
            self.record(event)
            self.cancel_scheduled()
            self.schedule_hibernation(event)
            self.append(event)
        return 0

    # What handlers do

    def append(self, event):
        self.time_line.append(event)

    def record(self, event):
        self.predictor.process_event(model.tm_of(event.time), self.LEARNT_CODES[event.state])

    def schedule_hibernation(self, event):
        for tm, minutes in self.predictions:
            time = model.seconds_of(tm) + 60 * minutes
            if minutes > 0 and time > event.time:
                self.insert_scheduled(SimEvent(time, PREDICTED_HIBERNATION))
                return

    def schedule_wake_back(self, event):
        for tm, _ in self.predictions:
            time = model.seconds_of(tm)
            if time > event.time:
                self.insert_scheduled(SimEvent(time, WAKE_BACK))
                return

    def insert_scheduled(self, event):
        for place, queued in enumerate(self.queue):
            if queued.time > event.time:
                self.queue.insert(place, event)
                self.pending_scheduled += 1
                if event.state == PREDICTED_HIBERNATION:
                    self.pending_hibernations += 1
                return
            if queued.state not in (HIBERNATING, PREDICTED_HIBERNATION):
                return

    def cancel_scheduled(self):
        """Oddly, only a removed wake-back lowers the count of hibernations."""
        if self.pending_scheduled <= 0:
            return
        for event in self.remove(PREDICTED_HIBERNATION, WAKE_BACK):
            self.pending_scheduled -= 1
            if event.state == WAKE_BACK:
                self.pending_hibernations -= 1

    def cancel_scheduled_hibernations(self):
        if self.pending_hibernations <= 0:
            return
        for _ in self.remove(PREDICTED_HIBERNATION):
            self.pending_scheduled -= 1
            self.pending_hibernations -= 1

    def remove(self, *states):
        removed = [event for event in self.queue if event.state in states]
        self.queue = deque(event for event in self.queue if event.state not in states)
        return removed


def simulate_predictor(configuration, records):
    """The time line. The simulator is built even when the history is too short for a run."""
    simulator = Simulator(model.make_tracker(configuration)[0])
    simulator.run(records)
    return simulator.time_line


def count_outcome(time_line):
    sleep = hibernate = sleep_resumes = hibernate_resumes = 0
    for previous, current in pairwise(time_line):
        seconds = current.time - previous.time
        resumed = current.state == ACTIVE
        if previous.state in (ASLEEP, WAKE_BACK):
            sleep += seconds
            sleep_resumes += resumed
        elif previous.state in (HIBERNATING, PREDICTED_HIBERNATION):
            hibernate += seconds
            hibernate_resumes += resumed
    return Outcome(wrap64(sleep), wrap64(hibernate), sleep_resumes, hibernate_resumes)


# The search

SearchResult = namedtuple("SearchResult", "baseline sets outcomes best")
Best = namedtuple("Best", "name value score baseline")


def simulated(values):
    """The configuration of a simulation, which has 10-minute slots whatever the settings are."""
    return Configuration({**values, "MinutesInDay": "1440", "Strength": "90",
                          "UseDualStrength": "True"}, 10)


def simulated_from(settings):
    return simulated({key: settings.get(key) for key in ("DaysInCycle",) + SET_KEYS})


def integer_list(text):
    return [model.text_to_number(token) for token in re.split("[ ,]+", text) if token]


def parameter_grid(settings):
    """Tuples in the order of SET_KEYS, in the order of the search."""
    def values(key):
        return integer_list(settings.get(key + "Range"))

    return [(f, s, wrap32(100 - s - f), h, l, d)
            for h in values("StrengthHigh")
            for l in values("StrengthLow") if l <= h
            for f in values("FirstLastWeight")
            for s in values("SecondLastWeight")
            for d in values("DayGrouping")
            if wrap32(100 - s - f) > 0]


def whole_f32(number):
    """A whole number of any size in single precision, rounded once."""
    size, sign = abs(number), math.copysign(1.0, number)
    surplus = max(0, size.bit_length() - 32)
    kept = size >> surplus
    if kept << surplus != size:
        kept |= 1  # One bit stands for all bits that were cut off.
    return sign * f32(float(kept)) * 2.0**surplus


def shares(outcome):
    """Share of the resumes that were from sleep, and of the time that was hibernated."""
    resumes = wrap32(outcome.resumesFromSleep + outcome.resumesFromHibernate)
    seconds = wrap64(outcome.hibernateSeconds + outcome.sleepSeconds)
    return (f32_divide(whole_f32(outcome.resumesFromSleep), whole_f32(resumes)),
            f32_divide(whole_f32(outcome.hibernateSeconds), whole_f32(seconds)))


def score_of(weight, outcome_shares):
    sleep, hibernate = outcome_shares
    return f32(f32(whole_f32(weight) * sleep) +
               f32(whole_f32(wrap32(100 - weight)) * hibernate))


def search(settings, records, hibernate_after_minutes):
    """The whole run on the records of a history file: its results and what it stores."""
    history = model.increasing(records)
    baseline = count_outcome(simulate_fixed_timeout(history, hibernate_after_minutes * 60))
    grid = parameter_grid(settings)
    weights = integer_list(settings.get("WR"))
    outcomes = []
    for parameters in grid:
        values = dict(zip(SET_KEYS, map(str, parameters)), DaysInCycle="7")
        outcomes.append(count_outcome(simulate_predictor(simulated(values), history)))
    best = [best_of(i, weight, grid, outcomes, shares(baseline))
            for i, weight in enumerate(weights)]
    return SearchResult(baseline, grid, outcomes, best)


def best_of(index, weight, grid, outcomes, baseline_shares):
    best_score, best_set = 0.0, ("",) * len(SET_KEYS)
    for parameters, outcome in zip(grid, outcomes):
        score = score_of(weight, shares(outcome))
        if score >= best_score:
            best_score, best_set = score, parameters
    baseline = score_of(weight, baseline_shares)
    value = ",".join(map(str, best_set)) if best_score >= baseline else "-1"
    return Best(("Best%d" % index)[:9], value, best_score, baseline)


# Adoption

NO_SET = "-1"
# What "%d,%d,%d,%d,%d,%d" reads: blanks before each number, none before a comma.
SIX_NUMBERS = re.compile(",".join([r"[ \t\n\v\f\r]*([+-]?[0-9]+)"] * 6))


def apply_best_set(chosen):
    """(disabled, feedback, the six texts that are stored, or None)."""
    if chosen == NO_SET:
        return 1, 3, None
    numbers = SIX_NUMBERS.match(chosen)
    if not numbers:
        return 0, 0, None
    return 0, 2, [str(wrap32(int(number))) for number in numbers.groups()]
