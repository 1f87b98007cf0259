"""The model of the optimizer against answers worked out by hand."""

import math
import sys
import unittest

from tests.model import engine_model as model
from tests.model import optimizer_model as optimizer
from tests.model.optimizer_model import Outcome, SimEvent
from tests.support.cases import main

DAY, HOUR, MINUTE = 86400, 3600, 60

# A cycle of one day, in use from 08:00 to 12:00: the second night can be predicted.
DAILY = {"DaysInCycle": "1", "FirstLastWeight": "2", "SecondLastWeight": "1",
         "AgregationWeight": "1", "StrengthHigh": "70", "StrengthLow": "30"}
NIGHTS = [(8 * HOUR, 0), (12 * HOUR, 1), (DAY + 8 * HOUR, 0), (DAY + 12 * HOUR, 1)]
PREDICTED, RETURN = DAY + 12 * HOUR + 10 * MINUTE, 2 * DAY + 8 * HOUR


def simulate(records, **changes):
    values = {**DAILY, **changes}
    configuration = optimizer.simulated({k: v for k, v in values.items() if v is not None})
    return optimizer.simulate_predictor(configuration, [(float(t), c) for t, c in records])


def fixed(records, seconds):
    return optimizer.simulate_fixed_timeout([(float(t), c) for t, c in records], seconds)


def settings(**values):
    return model.Configuration(values, 10)


GRID = {"StrengthHighRange": "70", "StrengthLowRange": "30", "FirstLastWeightRange": "50",
        "SecondLastWeightRange": "25", "DayGroupingRange": "0", "WR": "50"}


class FixedTimeout(unittest.TestCase):
    def test_fewer_than_three_records_give_nothing(self):
        self.assertEqual(fixed([(0, 0), (10, 9)], 60), [])

    def test_a_sleep_longer_than_the_timeout_hibernates(self):
        records = [(0, 0), (100, 1), (701, 0)]
        self.assertEqual(fixed(records, 600), [(0, 0), (100, 2), (700, 3), (701, 0)])
        self.assertEqual(fixed(records, 601), [(0, 0), (100, 2), (701, 0)])

    def test_a_timeout_below_one_never_hibernates(self):
        for seconds in (0, -60):
            self.assertEqual(fixed([(0, 0), (100, 1), (9000, 0)], seconds),
                             [(0, 0), (100, 2), (9000, 0)])

    def test_the_last_sleep_has_no_end_and_does_not_hibernate(self):
        self.assertEqual(fixed([(0, 1), (5, 0), (100, 1)], 60), [(0, 2), (5, 0), (100, 2)])

    def test_repeated_states_collapse(self):
        records = [(0, 0), (1, 0), (2, 1), (3, 2), (4, 3), (5, 0)]
        self.assertEqual(fixed(records, 600), [(0, 0), (2, 2), (5, 0)])

    def test_an_unknown_code_ends_everything(self):
        with self.assertRaises(model.EngineError):
            fixed([(0, 0), (1, 1), (2, 4)], 60)


class WithPredictor(unittest.TestCase):
    def test_a_predicted_night_hibernates_and_wakes_back_to_sleep(self):
        line = simulate(NIGHTS + [(RETURN + 30 * MINUTE, 0)])
        self.assertEqual(line, [
            (8 * HOUR, 0), (12 * HOUR, 2), (DAY + 8 * HOUR, 0), (DAY + 12 * HOUR, 2),
            (PREDICTED, 5), (RETURN, 6), (RETURN + 30 * MINUTE, 0)])
        self.assertEqual(optimizer.count_outcome(line), Outcome(74400, 71400, 2, 0))

    def test_a_return_before_the_predicted_one_is_from_hibernation(self):
        line = simulate(NIGHTS + [(RETURN, 0)])
        self.assertEqual(line[4:], [(PREDICTED, 5), (RETURN, 0)])
        self.assertEqual(optimizer.count_outcome(line).resumesFromHibernate, 1)

    def test_a_return_at_the_predicted_hibernation_prevents_it(self):
        self.assertEqual(simulate(NIGHTS + [(PREDICTED, 0)])[4:], [(PREDICTED, 0)])

    def test_the_wake_back_hibernates_again_when_the_user_stays_away(self):
        away = RETURN + 20 * HOUR
        line = simulate(NIGHTS + [(away, 0)])
        self.assertEqual(line[4:], [(PREDICTED, 5), (RETURN, 6), (RETURN + 250 * MINUTE, 5),
                                    (away, 0)])

    def test_a_real_hibernation_is_ignored_while_one_is_predicted(self):
        back = RETURN + 30 * MINUTE
        line = simulate(NIGHTS + [(DAY + 12 * HOUR + 5 * MINUTE, 2), (back, 0)])
        # It comes before the prediction and is no user event, so it does not prevent it.
        self.assertEqual(line[4:], [(PREDICTED, 5), (RETURN, 6), (back, 0)])

    def test_a_real_hibernation_without_a_prediction_counts(self):
        line = simulate([(0, 0), (600, 1), (1200, 2), (1800, 0)])
        self.assertEqual(line, [(0, 0), (600, 2), (1200, 3), (1800, 0)])
        self.assertEqual(optimizer.count_outcome(line), Outcome(600, 600, 0, 1))

    def test_a_sleep_before_the_first_use_is_left_out(self):
        self.assertEqual(simulate([(0, 1), (600, 2), (700, 3), (900, 0)]),
                         [(600, 3), (700, 1), (900, 0)])
        self.assertEqual(simulate([(0, 1), (5, 1), (9, 1)]), [])

    def test_repeated_states_are_left_out(self):
        self.assertEqual(simulate([(0, 0), (5, 0), (9, 1), (10, 1), (20, 0)]),
                         [(0, 0), (9, 2), (20, 0)])

    def test_an_invalid_time_that_must_be_learnt_ends_everything(self):
        with self.assertRaisesRegex(model.EngineError, "wrong time ..."):
            simulate([(0, 0), (600, 1), (math.inf, 0)])
        # As the first event it changes nothing.
        self.assertEqual(simulate([(-1e9, 0), (600, 1), (700, 0)])[0], (-1000000000, 0))

    def test_the_simulator_is_built_before_the_records_are_counted(self):
        with self.assertRaisesRegex(model.EngineError, "No weigths specified"):
            simulate([], FirstLastWeight=None)
        with self.assertRaisesRegex(model.EngineError, "LoadDataIfExists"):
            simulate([(0, 9), (1, 9)], DaysInCycle="0")
        self.assertEqual(simulate([(0, 9), (1, 9)]), [])

    def test_an_unknown_code_ends_everything(self):
        with self.assertRaises(model.EngineError):
            simulate([(0, 0), (1, 1), (2, 4)])


class Counters(unittest.TestCase):
    def simulator(self, *events):
        made = optimizer.Simulator(model.make_tracker(optimizer.simulated(DAILY))[0])
        made.queue.extend(SimEvent(*event) for event in events)
        return made

    def counters(self, simulator):
        return simulator.pending_hibernations, simulator.pending_scheduled

    def test_cancelling_all_lowers_the_hibernations_by_the_wake_backs(self):
        s = self.simulator((10, 5), (20, 6), (30, 6), (40, 0))
        s.pending_hibernations, s.pending_scheduled = 1, 3
        s.cancel_scheduled()
        self.assertEqual(list(s.queue), [(40, 0)])
        self.assertEqual(self.counters(s), (-1, 0))

    def test_without_a_count_nothing_is_cancelled(self):
        s = self.simulator((10, 5), (20, 6))
        s.cancel_scheduled()
        s.cancel_scheduled_hibernations()
        self.assertEqual(len(s.queue), 2)

    def test_cancelling_hibernations_lowers_both(self):
        s = self.simulator((10, 5), (20, 6))
        s.pending_hibernations, s.pending_scheduled = 1, 2
        s.cancel_scheduled_hibernations()
        self.assertEqual((list(s.queue), self.counters(s)), ([(20, 6)], (0, 1)))

    def test_insertion_passes_hibernations_only_and_never_the_end(self):
        for queue, expected in ((((5, 3), (8, 5), (20, 0)), 2), (((5, 2), (20, 0)), None),
                                (((10, 0), (20, 0)), None), (((11, 0),), 0), ((), None),
                                (((5, 3),), None), (((5, 6), (20, 0)), None)):
            s = self.simulator(*queue)
            s.insert_scheduled(SimEvent(10, 5))
            place = s.queue.index((10, 5)) if (10, 5) in s.queue else None
            self.assertEqual(place, expected, queue)
            self.assertEqual(self.counters(s), (0, 0) if expected is None else (1, 1))


class Outcomes(unittest.TestCase):
    def test_time_and_resumes_go_to_the_state_before(self):
        line = [(0, 0), (1, 2), (3, 5), (7, 6), (15, 0), (20, 2), (30, 0), (31, 3), (40, 0),
                (50, 1), (60, 3), (70, 1)]
        counted = optimizer.count_outcome([SimEvent(*e) for e in line])
        self.assertEqual(counted, Outcome(2 + 8 + 10, 4 + 9 + 10, 2, 1))

    def test_a_single_entry_counts_nothing(self):
        self.assertEqual(optimizer.count_outcome([SimEvent(5, 2)]), Outcome(0, 0, 0, 0))


class Grid(unittest.TestCase):
    def grid(self, **changes):
        return optimizer.parameter_grid(settings(**{**GRID, **changes}))

    def test_the_grouping_turns_fastest_and_the_high_threshold_slowest(self):
        self.assertEqual(
            self.grid(StrengthHighRange="60,80", StrengthLowRange="60 70", DayGroupingRange="0,12"),
            [(50, 25, 25, 60, 60, 0), (50, 25, 25, 60, 60, 12), (50, 25, 25, 80, 60, 0),
             (50, 25, 25, 80, 60, 12), (50, 25, 25, 80, 70, 0), (50, 25, 25, 80, 70, 12)])

    def test_a_set_without_aggregate_weight_is_skipped(self):
        self.assertEqual(self.grid(FirstLastWeightRange="60", SecondLastWeightRange="40"), [])
        self.assertEqual(self.grid(FirstLastWeightRange="60", SecondLastWeightRange="39,-5"),
                         [(60, 39, 1, 70, 30, 0), (60, -5, 45, 70, 30, 0)])

    def test_the_aggregate_weight_wraps(self):
        self.assertEqual(self.grid(FirstLastWeightRange="2147483647",
                                   SecondLastWeightRange="2147483647"),
                         [(2147483647, 2147483647, 102, 70, 30, 0)])

    def test_an_empty_list_empties_the_grid(self):
        for key in GRID.keys() - {"WR"}:
            self.assertEqual(self.grid(**{key: " , "}), [])

    def test_lists_take_any_text(self):
        self.assertEqual(optimizer.integer_list(" 60, 70,,80x -5\t6,x,99999999999"),
                         [60, 70, 80, -5, 0, 2147483647])


class Search(unittest.TestCase):
    HISTORY = [(float(t), c) for t, c in NIGHTS + [(RETURN + 30 * MINUTE, 0)]]

    def search(self, records=None, minutes=10, **changes):
        records = self.HISTORY if records is None else records
        return optimizer.search(settings(**{**GRID, **changes}), records, minutes)

    def test_baseline_and_shares(self):
        found = self.search()
        night, second = 20 * HOUR, 20 * HOUR + 30 * MINUTE
        self.assertEqual(found.baseline, Outcome(1200, night + second - 1200, 0, 2))
        # A week is too long a cycle for this history, so nothing is predicted.
        self.assertEqual(found.outcomes, [Outcome(night + second, 0, 2, 0)])
        hibernated = model.f32(model.f32(144600.0) / model.f32(145800.0))
        self.assertEqual(found.best, [("Best0", "50,25,25,70,30,0", 50.0,
                                       model.f32(50 * hibernated))])

    def test_ties_go_to_the_later_set(self):
        found = self.search(DayGroupingRange="0,127", WR="50,100")
        self.assertEqual([b.value for b in found.best], ["50,25,25,70,30,127"] * 2)

    def test_a_set_below_the_baseline_is_not_stored(self):
        self.assertEqual(self.search(WR="0").best[0].value, "-1")

    def test_fewer_than_three_records_store_no_set(self):
        found = self.search(records=self.HISTORY[:2])
        self.assertEqual(found.best[0][:3], ("Best0", "-1", 0.0))
        self.assertTrue(math.isnan(found.best[0].baseline))

    def test_an_empty_grid_stores_the_empty_set_at_a_baseline_of_zero(self):
        found = self.search(StrengthLowRange="71", minutes=0, WR="0,100")
        self.assertEqual([b.value for b in found.best], [",,,,,", "-1"])

    def test_a_weight_of_minus_one_is_refused(self):
        with self.assertRaisesRegex(model.EngineError, "No weigths specified"):
            self.search(records=[], SecondLastWeightRange="5,-1")

    def test_records_not_later_than_the_last_are_dropped(self):
        mixed = self.HISTORY[:2] + [(10.0, 7), self.HISTORY[1]] + self.HISTORY[2:]
        self.assertEqual(self.search(records=mixed), self.search())

    def test_names_have_nine_characters_at_most(self):
        self.assertEqual(optimizer.best_of(123456, 1, [], [], (0.0, 0.0)).name, "Best12345")

    def test_whole_numbers_are_rounded_once(self):
        self.assertEqual(optimizer.whole_f32((1 << 60) + (1 << 36) + 1), 2.0**60 + 2.0**37)
        self.assertEqual(optimizer.whole_f32((1 << 60) + (1 << 36)), 2.0**60)
        self.assertEqual(optimizer.whole_f32(-(1 << 63)), -(2.0**63))
        self.assertEqual(optimizer.whole_f32(16777217), 16777216.0)


class Adoption(unittest.TestCase):
    def test_texts(self):
        six = (0, 2, ["10", "20", "70", "90", "60", "2"])
        for text, expected in (
                ("10,20,70,90,60,2", six), (" 10,\t20,70, 90,60,+2 and more", six),
                ("-1", (1, 3, None)), ("-1 ", (0, 0, None)), ("", (0, 0, None)),
                ("10,20,70,90,60", (0, 0, None)), ("10 ,20,70,90,60,2", (0, 0, None)),
                (",,,,,", (0, 0, None)), ("10,20,70,90,60,x", (0, 0, None)),
                ("4294967306,2147483668,-4294967226,90,60,2",
                 (0, 2, ["10", "-2147483628", "70", "90", "60", "2"]))):
            self.assertEqual(optimizer.apply_best_set(text), expected, text)


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
