"""A plain model of a history walked forward: what the service, timeouts, rates and a clairvoyant would
have made of each sleep, decided from what came before it alone and counted as a machine spends it.

It stands on the models of the engine, of the optimizer and of the rates, and is written in the same
way: to be read and compared with. Where the rules leave room, this is how they are read:
- Of several records of one kind in a row the first counts. A sleep at the end counts nothing.
- The first resume only starts the clock of the searches. Every resume launches the optimizer, the
  machine is on mains, a search takes no time, and local time stands for UTC.
- A search that is due saves the history when its delay is over. A suspend until then, the last
  second included, costs the search, and the next one is due after another interval.
- Without a prediction the user's own timeout holds. Timer and timeouts run in whole minutes. After a
  wake back to sleep without a timeout of its own the first one is still set.
"""

from collections import namedtuple
from itertools import pairwise

from tests.model import engine_model as model
from tests.model import optimizer_model as optimizer
from tests.model import rates_walk
from tests.model.optimizer_model import Outcome

MINUTE, DAY = 60, 86400
SLOT, IDLE_STRETCH = 10 * MINUTE, 30 * MINUTE
TIMEOUTS = (1, 5, 10, 20, 30, 45, 60, 90, 120, 180, 240, 360, 480, 600, 720, 0)  # 0: never
NOTHING = Outcome(0, 0, 0, 0)

Habits = namedtuple("Habits", "interval_days delay_minutes limit_days")


def walk(settings, records, user_minutes, habits):
    """The outcomes by the names of the choices."""
    records = model.increasing(records)
    sleeps = sleeps_of(records)
    weights = optimizer.integer_list(settings.get("WR"))
    outcomes = {name_of(minutes): total(sleeps, lambda suspend, m=minutes: [m] if m else [])
                for minutes in sorted({*TIMEOUTS, user_minutes})}
    outcomes["clairvoyant"] = clairvoyant(sleeps)
    lives = [Life(settings, None, user_minutes, habits)]
    lives += [Life(settings, strength, user_minutes, habits) for strength in range(len(weights))]
    found = {}
    for life in lives:
        life.live(records, found)
        outcomes.update(life.outcomes())
    for strength, weight in enumerate(weights):
        outcomes["best timeout, strength %d" % strength] = outcomes[name_of(
            best_timeout(weight, sleeps, user_minutes))]
        outcomes["timeout of the past, strength %d" % strength] = past(weight, sleeps, user_minutes)
    if len(records) < optimizer.FEWEST_RECORDS:
        return {name: NOTHING for name in outcomes}
    plain = rates_walk.alternating([(model.truncate_double(time), int(code != 0))
                                    for time, code in records])
    names = [name % strength for strength in range(len(weights))
             for name in ("rates, strength %d", "rates without wake, strength %d")]
    for name, one in zip(names, rates_walk.walk(plain, weights)):
        outcomes[name] = optimizer.count_outcome(one.time_line)
    return outcomes


def name_of(minutes):
    return "never" if minutes == 0 else "1 minute" if minutes == 1 else "%d minutes" % minutes


# Sleeps

def sleeps_of(records):
    """(suspend, resume) of each sleep with a resume."""
    if len(records) < optimizer.FEWEST_RECORDS:
        return []
    kept = rates_walk.alternating([(model.truncate_double(time), int(code != 0))
                                   for time, code in records])
    return [(first[0], second[0]) for first, second in pairwise(kept) if first[1]]


def spend(suspend, resume, minutes):
    """A sleep that changes between asleep and hibernated after each of these minutes."""
    times = [suspend] + [at for at in (suspend + MINUTE * m for m in minutes) if at < resume]
    lengths = [b - a for a, b in pairwise(times + [resume])]
    woken = len(lengths) % 2
    return Outcome(sum(lengths[::2]), sum(lengths[1::2]), woken, 1 - woken)


def add(a, b):
    return Outcome(*(x + y for x, y in zip(a, b)))


def total(sleeps, minutes_of):
    outcome = NOTHING
    for suspend, resume in sleeps:
        outcome = add(outcome, spend(suspend, resume, minutes_of(suspend)))
    return outcome


def clairvoyant(sleeps):
    outcome = NOTHING
    for suspend, resume in sleeps:
        first = (suspend // SLOT + 1) * SLOT
        last = (resume - 1) // SLOT * SLOT
        hibernated = 0
        if last - first >= IDLE_STRETCH:
            hibernated = last - (suspend - (suspend - first) // MINUTE * MINUTE)
        outcome = add(outcome, Outcome(resume - suspend - hibernated, hibernated, 1, 0))
    return outcome


# Timeouts

def score(weight, outcome):
    resumes = outcome.resumesFromSleep + outcome.resumesFromHibernate
    seconds = outcome.sleepSeconds + outcome.hibernateSeconds
    if not resumes or not seconds:
        return -1e300
    return (weight * (outcome.resumesFromSleep / resumes) +
            (100 - weight) * (outcome.hibernateSeconds / seconds))


def best_timeout(weight, sleeps, in_force, user_minutes=None):
    """The best one for these sleeps. Among equal ones the one in force stays, else the shortest."""
    own = in_force if user_minutes is None else user_minutes
    timeouts = sorted({*TIMEOUTS, own} - {0}) + [0]
    scores = {minutes: score(weight, total(sleeps, lambda _, m=minutes: [m] if m else []))
              for minutes in timeouts}
    best = max(scores.values())
    return in_force if scores[in_force] == best else next(m for m in timeouts if scores[m] == best)


def past(weight, sleeps, user_minutes):
    outcome, chosen = NOTHING, user_minutes
    for index, (suspend, resume) in enumerate(sleeps):
        chosen = best_timeout(weight, sleeps[:index], chosen, user_minutes)
        outcome = add(outcome, spend(suspend, resume, [chosen] if chosen else []))
    return outcome


# The service

class Life:
    """The service at one strength; at None it keeps the parameters that it has and never searches."""

    def __init__(self, settings, strength, user_minutes, habits):
        self.settings = settings
        self.strength = strength
        self.user_minutes = user_minutes
        self.habits = habits
        self.configuration = optimizer.simulated_from(settings)
        self.tracker = model.make_tracker(self.configuration)[0]
        self.disabled = False
        self.last_run = 0
        self.file, self.pending = [], []
        self.decisions = []  # (suspend, resume, decision)
        if strength is not None:
            self.apply(settings.get("Best%d" % strength))

    def apply(self, text):
        disabled, _, texts = optimizer.apply_best_set(text)
        self.disabled = disabled == 1
        if texts:
            self.configuration.values.update(zip(optimizer.SET_KEYS, texts))
            self.tracker.reload_parameters()

    def live(self, records, found):
        if len(records) < optimizer.FEWEST_RECORDS:
            return
        asleep = False
        for index, (time, code) in enumerate(records):
            self.pending.append((time, code))
            time = model.truncate_double(time)
            if index > 0 and (code != 0) == asleep:
                continue
            asleep = code != 0
            if asleep:
                suspend, decision = time, self.decide(time)
            elif index > 0:
                self.decisions.append((suspend, time, decision))
            self.tracker.process_event(model.tm_of(time),
                                       model.SUSPEND if asleep else model.ACTIVATING)
            if not asleep and index > 0 and self.strength is not None:
                self.launch(time, next_suspend(records[index + 1:]), found)

    def decide(self, time):
        tm = model.tm_of(time)
        return model.decide_suspend([] if self.disabled else self.tracker.get_predictions(tm), tm)

    def launch(self, now, suspend, found):
        if self.last_run == 0:
            self.last_run = now
            return
        if now - self.last_run <= self.habits.interval_days * DAY:
            return
        self.last_run = now
        begin = now + self.habits.delay_minutes * MINUTE
        cutoff = begin - self.habits.limit_days * DAY
        self.file = [record for record in self.file if record[0] >= cutoff] + self.pending
        self.pending = []
        if suspend is not None and suspend <= begin:
            return
        if begin not in found:  # Searches are the same at each strength.
            found[begin] = optimizer.search(self.settings, self.file, self.user_minutes).best
        self.apply(found[begin][self.strength].value)

    def outcomes(self):
        if self.strength is None:
            return {"settings": self.outcome(True)}
        return {"service, strength %d" % self.strength: self.outcome(True),
                "service without wake, strength %d" % self.strength: self.outcome(False)}

    def outcome(self, can_wake):
        outcome = NOTHING
        for suspend, resume, decision in self.decisions:
            outcome = add(outcome, spend(suspend, resume, self.minutes_of(decision, can_wake)))
        return outcome

    def minutes_of(self, decision, can_wake):
        first = self.user_minutes if decision.haMinutes is None else decision.haMinutes
        if first <= 0:
            return []
        if decision.haMinutes is None or decision.timerMinutes is None or not can_wake:
            return [first]
        second = first if decision.nextHAMinutes is None else decision.nextHAMinutes
        return [first, decision.timerMinutes, decision.timerMinutes + second]


def next_suspend(records):
    return next((model.truncate_double(time) for time, code in records if code != 0), None)
