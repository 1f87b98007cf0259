"""The model of the return-rate predictor against answers worked out by hand."""

import math
import sys
import unittest
from itertools import pairwise

from tests.model import engine_model as model
from tests.model import histories
from tests.model import optimizer_model as optimizer
from tests.model import rates_model as rates
from tests.model import rates_walk
from tests.model.engine_model import ACTIVATING, SHUTTING_DOWN, SUSPEND
from tests.model.rates_model import DAY, HOUR, MINUTE, Forecast, Plan
from tests.support.cases import main

MONDAY = 4 * DAY  # 1970-01-05
THURSDAY, SATURDAY = 3, 5
E2, E8 = math.exp(-2), math.exp(-8)


def cells(table):
    """What a table holds: (weekday, clock, class) to value."""
    return {(day, clock, away): value for day, rows in enumerate(table)
            for clock, row in enumerate(rows) for away, value in enumerate(row) if value}


def learnt(*stretches):
    made = rates.Learnt()
    for suspend, resume in stretches:
        made.learn(suspend, resume)
    return made


def predictor(*stretches, **options):
    """A predictor that has been away for these stretches."""
    made = rates.Predictor(**options)
    for suspend, resume in stretches:
        made.process_event(model.tm_of(suspend), SUSPEND)
        made.process_event(model.tm_of(resume), ACTIVATING)
    return made


def office(days, **options):
    """In use from 08:00 to 12:00 on the days from Monday, and how the days are away."""
    return predictor(*[(MONDAY + day * DAY + 12 * HOUR, MONDAY + (day + 1) * DAY + 8 * HOUR)
                       for day in range(days)], **options)


class Pieces(unittest.TestCase):
    def test_a_stretch_is_cut_at_marks_of_the_clock_and_of_the_time_away(self):
        starts = [p.start for p in rates.pieces(5 * MINUTE, 80 * MINUTE)]
        self.assertEqual([s / 60 for s in starts],
                         [0, 1, 2, 3, 5, 7, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 75])
        self.assertEqual([p.end for p in rates.pieces(30, 700)],
                         [60, 120, 180, 300, 420, 570, 600, 700])

    def test_a_piece_belongs_to_the_cell_of_its_middle(self):
        friday_evening = 2 * DAY - 90  # 23:58:30
        self.assertEqual([tuple(p) for p in rates.pieces(friday_evening, 130)],
                         [(0, 60, 71, 0, 4), (60, 90, 71, 0, 4), (90, 120, 0, 0, 5),
                          (120, 130, 0, 0, 5)])

    def test_a_lower_edge_belongs_to_its_class(self):
        hours = (0, 0.05, 1 / 6, 25 / 60, 1, 2.5, 6, 12, 24, 60)
        for away, edge in enumerate(hours):
            seconds = round(edge * 3600)
            self.assertEqual(rates.cell_of(0, seconds)[1], away)
            self.assertEqual(rates.cell_of(0, max(0, seconds - 0.5))[1], max(0, away - 1))

    def test_nothing_has_no_pieces(self):
        self.assertEqual(list(rates.pieces(1000, 0)), [])


class Learning(unittest.TestCase):
    def test_each_piece_adds_its_length_and_the_last_one_a_return(self):
        suspend = 15 * MINUTE
        made = learnt((suspend, suspend + 12 * MINUTE))
        self.assertEqual(cells(made.away), {(THURSDAY, 0, 0): 180.0, (THURSDAY, 0, 1): 120.0,
                                            (THURSDAY, 1, 1): 300.0, (THURSDAY, 1, 2): 120.0})
        self.assertEqual(cells(made.returns), {(THURSDAY, 1, 2): 1.0})
        self.assertEqual((made.sleeps, made.idle_count, made.idle_seconds), (1, 1, 720))

    def test_the_mean_idle_length_begins_with_three_of_eight_hours(self):
        self.assertEqual(rates.Learnt().mean_idle(), 8 * HOUR)
        self.assertEqual(learnt((0, 4 * HOUR)).mean_idle(), 7 * HOUR)

    def test_all_fades_by_the_time_between_two_resumes(self):
        made = learnt((0, 60), (120 * DAY, 120 * DAY + 60))
        faded = model.f32(60 * math.exp(-1))
        self.assertEqual(cells(made.away), {(THURSDAY, 0, 0): faded, (4, 0, 0): 60.0})
        self.assertEqual(cells(made.returns), {(THURSDAY, 0, 0): model.f32(math.exp(-1)),
                                               (4, 0, 0): 1.0})
        self.assertEqual(made.idle_count, 1 + math.exp(-1))
        self.assertEqual(made.idle_seconds, 60 + 60 * math.exp(-1))
        self.assertEqual(made.sleeps, 2)

    def test_a_clock_that_was_set_back_fades_nothing(self):
        made = learnt((9 * DAY, 9 * DAY + 60), (2 * DAY, 2 * DAY + 60))
        self.assertEqual(cells(made.away), {(SATURDAY, 0, 0): 120.0})
        self.assertEqual(made.last_resume, 2 * DAY + 60)

    def test_of_more_than_eight_days_only_the_time_away_is_learnt(self):
        made = learnt((0, 8 * DAY + 1))
        self.assertEqual(sum(cells(made.away).values()), 8 * DAY)
        self.assertEqual(cells(made.returns), {})
        self.assertEqual((made.sleeps, made.idle_count, made.mean_idle()), (1, 0, 8 * HOUR))

    def test_exactly_eight_days_end_with_a_return(self):
        made = learnt((0, 8 * DAY))
        self.assertEqual(cells(made.returns), {(3, 71, 9): 1.0})
        self.assertEqual(made.idle_count, 1)

    def test_no_length_is_not_learnt_but_its_time_counts(self):
        for resume in (1000, 400):
            made = learnt((0, 60))
            self.assertFalse(made.learn(1000, resume))
            self.assertEqual((made.sleeps, made.last_resume), (1, resume))
            self.assertEqual(cells(made.returns), {(THURSDAY, 0, 0): 1.0})


class Events(unittest.TestCase):
    def test_the_first_suspend_begins_and_the_first_activation_ends(self):
        made = rates.Predictor()
        for time, state in ((0, ACTIVATING), (100, SUSPEND), (200, SHUTTING_DOWN), (300, SUSPEND),
                            (400, ACTIVATING), (500, ACTIVATING), (600, SHUTTING_DOWN),
                            (650, ACTIVATING)):
            made.process_event(model.tm_of(time), state)
        self.assertEqual((made.learnt.sleeps, made.learnt.last_resume), (2, 650))
        self.assertEqual(made.learnt.idle_seconds, 300 * math.exp(-250 / (120 * DAY)) + 50)

    def test_a_history_may_begin_with_a_suspend(self):
        self.assertEqual(predictor((5, 65)).learnt.sleeps, 1)

    def test_a_time_that_the_calendar_lacks_changes_nothing(self):
        made = rates.Predictor()
        for tm, state in ((model.tm_of(100), SUSPEND), (model.INVALID_TM, ACTIVATING),
                          (model.INVALID_TM, SUSPEND), (model.tm_of(160), ACTIVATING)):
            made.process_event(tm, state)
        self.assertEqual((made.learnt.sleeps, made.learnt.idle_seconds), (1, 60))
        self.assertEqual(made.get_predictions(model.INVALID_TM), [])

    def test_after_a_clock_set_back_the_next_sleep_is_learnt(self):
        made = predictor((1000, 900), (950, 1010))
        self.assertEqual((made.learnt.sleeps, made.learnt.last_resume), (1, 1010))


class Kernels(unittest.TestCase):
    def test_neighbours_reach_three_sigmas(self):
        reaches = [len(weights) // 2 for weights in (
            rates.ELAPSED[1], rates.CLOCK_WIDE[1], rates.CLOCK[1], rates.CLASS_WIDE[1],
            rates.CLASS[1], rates.LOCAL_CLOCK, rates.LOCAL_CLASS)]
        self.assertEqual(reaches, [1, 15, 2, 13, 4, 5, 2])

    def test_the_peak_is_1(self):
        self.assertEqual(rates.kernel(0.5), [E2, 1.0, E2])
        self.assertEqual(rates.clock_kernel(20), [math.exp(-4.5), E2, math.exp(-0.5), 1.0,
                                                  math.exp(-0.5), E2, math.exp(-4.5)])

    def test_the_clock_is_a_circle(self):
        line = [0.0] * 72
        line[71] = 1.0
        got = rates.smooth_over_clock(line, [E8, E2, 1.0, E2, E8])
        self.assertEqual({i: v for i, v in enumerate(got) if v},
                         {69: E8, 70: E2, 71: 1.0, 0: E2, 1: E8})

    def test_the_time_away_has_ends(self):
        line = [0.0] * 10
        line[9] = 2.0
        self.assertEqual(rates.smooth_over_classes(line, [E2, 1.0, E2]),
                         [0.0] * 8 + [2 * E2, 2.0])


class Fit(unittest.TestCase):
    """On one return after a minute, on Thursday at 00:00."""

    def setUp(self):
        self.learnt = learnt((0, 60))
        self.tables = (self.learnt.away, self.learnt.returns)
        self.factors = rates.Factors()
        self.factors.fit_base(*self.tables)
        self.base = 3 / (60 + 57600)
        self.expected = 60 * self.base

    def assert_ratios(self, got, ratios):
        """Each (returns, kernel's weight, pull); all others are 1."""
        for place, value in enumerate(got):
            weight, pull = ratios.get(place, (0, 1))
            self.assertAlmostEqual(
                value, (weight + pull) / (weight * self.expected + pull), delta=1e-15)

    def test_without_anything_learnt_there_is_a_return_in_eight_hours(self):
        self.assertEqual(rates.Factors().rate(0, 0, 0), 1 / (8 * HOUR))
        factors = rates.Factors()
        factors.fit(rates.Learnt())
        self.assertEqual({factors.rate(c, e, d) for c in range(72) for e in range(10)
                          for d in range(7)}, {1 / (8 * HOUR)})

    def test_base(self):
        self.assertEqual(self.factors.base, self.base)

    def test_elapsed(self):
        self.factors.fit_elapsed(*self.tables)
        self.assert_ratios(self.factors.elapsed, {0: (1, 1.5), 1: (E2, 1.5)})

    def test_day(self):
        self.factors.fit_day(*self.tables)
        self.assert_ratios(self.factors.day, {THURSDAY: (1, 3)})

    def test_clock(self):
        self.factors.fit_time_of_day(*self.tables)
        wide = {i % 72: (math.exp(-(i / 5) ** 2 / 2), 1) for i in range(-15, 16)}
        self.assert_ratios(self.factors.clock_wide, wide)
        self.expected *= self.factors.clock_wide[0]
        self.assert_ratios(self.factors.clock, {
            i % 72: (math.exp(-(i / 0.9) ** 2 / 2), 1.5) for i in range(-2, 3)})
        self.expected *= self.factors.clock[0]
        self.assert_ratios(self.factors.class_wide[0], {
            i % 72: (math.exp(-(i / 4.5) ** 2 / 2), 1) for i in range(-13, 14)})
        self.expected *= self.factors.class_wide[0][0]
        self.assert_ratios(self.factors.class_[0], {
            i % 72: (math.exp(-(i / 1.5) ** 2 / 2), 2) for i in range(-4, 5)})
        self.assertEqual(self.factors.class_wide[1] + self.factors.class_[1], [1.0] * 144)

    def test_local(self):
        self.factors.fit_local(*self.tables)
        for clock in range(72):
            distance = min(clock, 72 - clock)
            along = math.exp(-(distance / 1.75) ** 2 / 2) if distance <= 5 else 0
            self.assert_ratios(self.factors.local[clock], {
                0: (along, 1.2), 1: (along * math.exp(-(1 / 0.45) ** 2 / 2), 1.2),
                2: (along * math.exp(-(2 / 0.45) ** 2 / 2), 1.2)})

    def test_a_factor_is_measured_by_the_newest_of_the_others(self):
        self.factors.elapsed[0] = 2.0
        self.factors.fit_day(*self.tables)
        self.expected *= 2
        self.assert_ratios(self.factors.day, {THURSDAY: (1, 3)})
        self.factors.fit_base(*self.tables)
        day = self.factors.day[THURSDAY]
        self.assertAlmostEqual(self.factors.base, 3 / (60 * 2 * day + 57600), delta=1e-18)

    def test_a_fit_goes_on_from_the_last_one(self):
        once, twice = rates.Factors(), rates.Factors()
        once.fit(self.learnt)
        for _ in range(2):
            twice.fit(self.learnt)
        self.assertNotEqual(once.elapsed, twice.elapsed)

    def test_workdays_and_weekends_have_clocks_of_their_own(self):
        made = learnt((2 * DAY, 2 * DAY + 60))  # Saturday
        factors = rates.Factors()
        factors.fit_time_of_day(made.away, made.returns)
        self.assertEqual(factors.class_[0], [1.0] * 72)
        self.assertGreater(factors.class_[1][0], 1.1)


class Forecasts(unittest.TestCase):
    def test_it_halves_each_minute_and_ends_below_a_ten_thousandth(self):
        factors = rates.Factors()
        factors.base = math.log(2) / 60
        made = rates.forecast(factors, MONDAY)
        self.assertEqual(made.starts, [0, 60, 120, 180, 300, 420, 600, 900])
        for got, halvings in zip(made.survival, (0, 1, 2, 3, 5, 7, 10)):
            self.assertAlmostEqual(got, 2.0 ** -halvings, delta=1e-15)
        for got, (left, right) in zip(made.density, pairwise((0, 1, 2, 3, 5, 7, 10, 15))):
            self.assertAlmostEqual(got, 2.0 ** -left - 2.0 ** -right, delta=1e-15)

    def test_it_ends_after_eight_days(self):
        factors = rates.Factors()
        factors.base = 1e-6
        made = rates.forecast(factors, MONDAY + 100)
        self.assertEqual(made.starts[-3:], [8 * DAY - 700, 8 * DAY - 100, 8 * DAY])
        self.assertAlmostEqual(made.survival[-1], math.exp(-(8 * DAY - 100) * 1e-6), delta=1e-13)

    def test_being_asleep_gains_returns_and_costs_time(self):
        made = Forecast([0, 60, 180], [1.0, 0.75], [0.25, 0.5])
        self.assertEqual(rates.gains(made, 1000),
                         [0, 250 - 60 * 0.875, 250 - 52.5 + 500 - 120 * 0.5])


class Choices(unittest.TestCase):
    STARTS = [0, 180, 600, 1200, 1800, 2400]

    def choose(self, *gained, shortest=180, with_wake=True):
        return rates.best_places(self.STARTS, list(gained), shortest, with_wake)

    def test_the_best_time_to_hibernate(self):
        self.assertEqual(self.choose(0, 5, 30, 20, 10, 0), (2,))

    def test_not_before_the_shortest_time(self):
        self.assertEqual(self.choose(90, 5, 30, 20, 10, 0), (2,))
        self.assertEqual(self.choose(90, 5, 30, 20, 10, 0, shortest=601), (3,))

    def test_the_end_is_never_too_early(self):
        self.assertEqual(self.choose(90, 5, 30, 20, 10, 0, shortest=3600), (5,))

    def test_a_tie_goes_to_the_earlier_piece(self):
        self.assertEqual(self.choose(30, 30, 30, 20, 10, 30), (1,))
        self.assertEqual(self.choose(0, 900, 0, 0, 900, 900), (1, 2, 4))

    def test_a_second_stretch_must_gain_more_than_a_wake_costs(self):
        self.assertEqual(self.choose(0, 0, -500, -600, 0, 0), (1,))
        self.assertEqual(self.choose(0, 0, -500, -601, 0, 0), (1, 3, 4))
        self.assertEqual(self.choose(0, 0, -500, -601, 0, 0, with_wake=False), (1,))

    def test_both_stretches_are_chosen_together(self):
        # Alone the first would go on until 1800, over the valley.
        self.assertEqual(self.choose(0, 100, -900, -400, 150, 140), (1, 2, 4))

    def test_minutes_are_rounded_up_and_the_end_means_never(self):
        made = Forecast([0, 181, 700, 1000], [1.0, 0.9, 0.4], [0.1, 0.5, 0.1])
        self.assertEqual(rates.best_plan(made, 0, 180, True), Plan(4))
        self.assertEqual(rates.best_plan(made, 1e9, 180, True), Plan(11520))

    def test_a_second_stretch_to_the_end_lasts_eight_days(self):
        made = Forecast([0, 181, 7001, 8000], [1.0, 1.0, 0.9], [0.0, 0.1, 0.9])
        self.assertEqual(rates.best_plan(made, 5000, 180, True), Plan(4, 117, 11520))

    def test_a_second_stretch_lasts_a_minute_at_least(self):
        made = Forecast([0, 180, 1830, 1860, 9000], [1.0, 1.0, 1.0, 0.5], [0.0, 0.0, 0.5, 0.0])
        self.assertEqual(rates.best_plan(made, 5000, 180, True), Plan(3, 31, 32))


class Plans(unittest.TestCase):
    def test_an_hour_while_fewer_than_three_sleeps_are_learnt(self):
        night = 8 * HOUR
        for count, minutes in ((0, 60), (2, 60), (3, 3)):
            made = predictor(*[(n * DAY, n * DAY + night) for n in range(count)], weight=1)
            self.assertEqual(made.plan(20 * DAY).hibernate, minutes)

    def test_at_the_ends_of_the_weights_nothing_is_weighed(self):
        for weight, minutes in ((0, 3), (-5, 3), (100, 11520), (170, 11520)):
            self.assertEqual(office(5, weight=weight).plan(MONDAY), Plan(minutes))
            self.assertEqual(rates.Predictor(weight).plan(MONDAY), Plan(minutes))

    def test_unlearnt_it_waits_an_hour_or_for_ever(self):
        self.assertEqual(rates.Predictor(50).plan(MONDAY), Plan(60))
        self.assertEqual(rates.Predictor(55).plan(MONDAY), Plan(11520))

    def test_the_machine_is_woken_before_the_user_comes(self):
        records = office(14).get_predictions(model.tm_of(MONDAY + 14 * DAY + 12 * HOUR + 7))
        self.assertEqual([(model.iso_text(tm), minutes) for tm, minutes in records],
                         [("1970-01-19T12:00:07", 3), ("1970-01-20T06:40:07", 280)])

    def test_without_a_wake_there_is_one_record(self):
        records = office(14, with_wake=False).get_predictions(model.tm_of(MONDAY + 14 * DAY))
        self.assertEqual(len(records), 1)


class Weights(unittest.TestCase):
    def weight(self, **values):
        return rates.weight_of(model.Configuration(values, 10))

    def test_the_strength_chooses_from_the_list(self):
        self.assertEqual([self.weight(WR="10 30,50, 60", Strength=s) for s in "0123"],
                         [10, 30, 50, 60])
        self.assertEqual(self.weight(WR="10 30", Strength=" 1x"), 30)

    def test_where_there_is_none_it_is_50(self):
        for values in ({}, {"WR": "1"}, {"Strength": "0"}, {"WR": "1 2", "Strength": "2"},
                       {"WR": "1 2", "Strength": "-1"}, {"WR": " ,", "Strength": "0"}):
            self.assertEqual(self.weight(**values), 50)


class Walks(unittest.TestCase):
    def test_a_walk_is_what_the_simulator_plays(self):
        rng = histories.random_for(1, 1)
        records = [(time, asleep) for time, asleep, _ in
                   histories.records_of_days(rng, histories.home_day, 20)]
        for one in rates_walk.walk(records, (30, 70)):
            simulator = optimizer.Simulator(rates.Predictor(one.weight, one.with_wake))
            simulator.run(records)
            self.assertEqual(simulator.time_line, one.time_line)

    def test_a_plan_counts_until_the_resume(self):
        plan = Plan(10, 20, 30)
        states = [[state for _, state in rates_walk.events_of(plan, 1000, 1000 + length)]
                  for length in (600, 601, 1200, 1201, 1800, 1801)]
        self.assertEqual(states, [[], [5], [5], [5, 6], [5, 6], [5, 6, 5]])


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
