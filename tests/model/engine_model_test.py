"""The model against answers worked out by hand."""

import math
import struct
import sys
import unittest

from tests.model import engine_model as model
from tests.model.engine_model import Tm
from tests.support.cases import main

WEIGHTS = {"FirstLastWeight": "2", "SecondLastWeight": "1", "AgregationWeight": "1"}
WEEK = {"DaysInCycle": "7", "MinutesInDay": "1440", "StrengthHigh": "70", "StrengthLow": "30",
        **WEIGHTS}


def configuration(resolution=15, **changes):
    values = {**WEEK, **changes}
    return model.Configuration({key: value for key, value in values.items() if value is not None},
                               resolution)


def tracker(resolution=15, **changes):
    return model.make_tracker(configuration(resolution, **changes))[0]


def at(hour, minute=0, second=0, day=0):
    """A time of the first cycle; day 0 is Thursday 1970-01-01."""
    return model.tm_of(((day * 24 + hour) * 60 + minute) * 60 + second)


def slots(t):
    """Slots that hold anything: index to (count, sum, second-last, last, stamp)."""
    b = t.block
    records = zip(b.count, b.sum, b.second, b.last, b.stamp)
    return {i: r for i, r in enumerate(records) if r != (-1, -1, -1, -1, -1)}


def thrown(function, *arguments):
    try:
        function(*arguments)
    except model.EngineError as error:
        return str(error)
    return None


class Numbers(unittest.TestCase):
    def test_text_becomes_a_number_that_saturates(self):
        texts = ("70", " \t+5x", "-8", "", "abc", "0x10", "- 5", "99999999999", "-99999999999")
        self.assertEqual([model.text_to_number(t) for t in texts],
                         [70, 5, -8, 0, 0, 0, 0, 2147483647, -2147483648])

    def test_a_double_that_does_not_fit_becomes_the_least_integer(self):
        least = -9223372036854775808
        values = (10.7, -0.5, -1.5, math.nan, math.inf, -math.inf, 2.0**63, -2.0**63)
        self.assertEqual([model.truncate_double(v) for v in values],
                         [10, 0, -1, least, least, least, least, least])

    def test_sums_and_products_wrap(self):
        self.assertEqual(model.wrap32(2147483647 + 1), -2147483648)
        self.assertEqual(model.wrap32(1440 * 2982617), 1184)
        self.assertEqual(model.wrap64(2**63), -2**63)

    def test_division_truncates_toward_zero(self):
        self.assertEqual((model.quotient(-7, 2), model.remainder(-7, 2)), (-3, -1))
        self.assertEqual((model.quotient(7, -2), model.remainder(7, -2)), (-3, 1))

    def test_float_division_by_zero_follows_the_standard(self):
        self.assertEqual(model.f32_divide(1.0, 0.0), math.inf)
        self.assertEqual(model.f32_divide(-1.0, 0.0), -math.inf)
        self.assertEqual(model.f32_divide(1.0, -0.0), -math.inf)
        self.assertTrue(math.isnan(model.f32_divide(0.0, 0.0)))

    def test_floats_print_with_nine_digits(self):
        self.assertEqual([model.format_float(v) for v in
                          (-1.0, model.f32(0.1), -math.nan, math.inf, -0.0)],
                         ["-1", "0.100000001", "nan", "inf", "-0"])


class WallClock(unittest.TestCase):
    def test_the_epoch_is_a_thursday(self):
        self.assertEqual(model.tm_of(0), Tm(0, 0, 0, 1, 0, 70, 4, 0, 0))
        self.assertEqual(model.ascii_time(model.tm_of(0)), "Thu Jan  1 00:00:00 1970")

    def test_a_leap_day_has_its_fields(self):
        self.assertEqual(model.tm_of(1330473599), Tm(59, 59, 23, 28, 1, 112, 2, 58, 0))
        self.assertEqual(model.tm_of(1330473600), Tm(0, 0, 0, 29, 1, 112, 3, 59, 0))

    def test_fields_out_of_range_are_normalised(self):
        self.assertEqual(model.seconds_of(Tm(61, 60, 24, 0, 12, 69, 0, 0, 0)), 3661)
        self.assertEqual(model.seconds_of(Tm(0, 0, 0, 1, -12, 71, 0, 0, 0)), 0)

    def test_before_1970_and_after_3000_there_is_no_time(self):
        self.assertEqual(model.seconds_of(Tm(59, 59, 23, 31, 11, 69, 0, 0, 0)), -1)
        self.assertEqual(model.seconds_of(Tm(59, 59, 23, 31, 11, 1100, 0, 0, 0)), 32535215999)
        self.assertEqual(model.seconds_of(Tm(0, 0, 0, 1, 0, 1101, 0, 0, 0)), -1)
        self.assertEqual(model.tm_of(32535215999).year, 1100)
        self.assertEqual(model.tm_of(32535216000), model.INVALID_TM)
        self.assertEqual(model.tm_of(-1), model.INVALID_TM)
        self.assertEqual(model.seconds_of(model.INVALID_TM), -1)


class Settings(unittest.TestCase):
    def test_the_last_value_counts_and_blanks_are_trimmed(self):
        c = model.parse_settings("[Settings]\n TimeResolution = 15 \n# x\n[Other]\nDayGrouping=9\n"
                                 "[CyclicProbabilityPredictor]\n;y\nStrengthHigh=1\n\n"
                                 "StrengthHigh\t=\t70\n")
        self.assertEqual((c.time_resolution, c.values), (15, {"StrengthHigh": "70"}))

    def test_an_absent_or_negative_slot_length_is_unsigned(self):
        self.assertEqual(model.parse_settings("").time_resolution, 0xFFFFFFFF)
        text = "[Settings]\nTimeResolution=-10"
        self.assertEqual(model.parse_settings(text).time_resolution, 0xFFFFFFF6)


class Construction(unittest.TestCase):
    def test_refusals_have_their_texts(self):
        load, wrong = model.LOAD_WRONG_CONFIGURATIONS, model.TRACKER_WRONG_CONFIGURATIONS
        self.assertEqual(load,
                         "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations")
        self.assertEqual(wrong, "ArbitraryCycleProbabilityTracker - wrong configurations")
        modulus = "Length of day modulus number of minutes within a slot is not zero"
        weights = "No weigths specified"
        for expected, resolution, changes in (
                (load, 0xFFFFFFFF, {}), (load, 15, {"DaysInCycle": "0"}),
                (load, 15, {"MinutesInDay": "x"}), (modulus, 7, {}), (wrong, 0, {}),
                (wrong, 15, {"DaysInCycle": None}), (modulus, 15, {"MinutesInDay": None}),
                (modulus, 7, {"DaysInCycle": None}), (wrong, 1, {"MinutesInDay": None}),
                (wrong, 0xFFFFFFF6, {"MinutesInDay": "-1440"}),
                (weights, 7, {"FirstLastWeight": None}), (weights, 0, {"AgregationWeight": "-1"}),
                (load, 0xFFFFFFFF, {"SecondLastWeight": None}), (None, 15, {})):
            with self.subTest(resolution=resolution, **changes):
                found = thrown(model.make_tracker, configuration(resolution, **changes))
                self.assertEqual(found, expected)

    def test_a_fresh_block_is_empty_and_of_its_size(self):
        data = tracker().block.pack()
        self.assertEqual(len(data), 16192)
        self.assertEqual(struct.unpack("<16i", data[:64]),
                         (0, 7, 1440, 15, 4, 0, 0, 0, 0, 0, -1, 0, 0, 0, 672, 0))
        self.assertEqual(data[64:], b"\xff" * (672 * 24))

    def test_weights_are_shares_of_their_sum(self):
        self.assertEqual(tracker().weights, [0.5, 0.25, 0.25])

    def test_a_zero_sum_of_weights_gives_infinite_and_undefined_ones(self):
        weights = tracker(FirstLastWeight="5", SecondLastWeight="-5", AgregationWeight="0").weights
        self.assertEqual(weights[:2], [math.inf, -math.inf])
        self.assertTrue(math.isnan(weights[2]))

    def test_the_sum_of_weights_wraps(self):
        weights = tracker(FirstLastWeight="2147483647", SecondLastWeight="1",
                          AgregationWeight="0").weights
        self.assertEqual(weights, [-1.0, -(2.0**-31), -0.0])

    def test_strengths_are_hundredths(self):
        t = tracker()
        self.assertEqual((t.strength_high, t.strength_low), (model.f32(0.7), model.f32(0.3)))

    def test_missing_strengths_keep_earlier_values(self):
        t = tracker()
        t.configuration = configuration(StrengthHigh="80", StrengthLow=None)
        t.reload_parameters()
        self.assertEqual((t.strength_high, t.strength_low), (model.f32(0.8), model.f32(0.3)))
        t.configuration = configuration(StrengthHigh=None, StrengthLow="10")
        t.reload_parameters()
        self.assertEqual((t.strength_high, t.strength_low), (model.f32(0.8), model.f32(0.3)))
        fresh = tracker(StrengthHigh=None)
        self.assertEqual((fresh.strength_high, fresh.strength_low), (0.0, 0.0))

    def test_day_flags_are_the_low_seven_bits(self):
        self.assertEqual(tracker(DayGrouping="12").day_flags, [0, 0, 1, 1, 0, 0, 0])
        self.assertEqual(tracker(DayGrouping="255").day_flags, [1] * 7)
        self.assertEqual(tracker(DayGrouping=None).day_flags, [0] * 7)


class DataFile(unittest.TestCase):
    def setUp(self):
        t = tracker()
        t.process_event(at(10), 0)
        t.process_event(at(11), 1)
        self.data = t.block.pack()

    def loaded(self, data, resolution=15, **changes):
        block, ignored = model.load_data(configuration(resolution, **changes), data)
        return None if block is None else block.pack(), ignored

    def test_a_file_comes_back_as_it_was(self):
        self.assertEqual(self.loaded(self.data), (self.data, None))

    def test_no_file_is_no_block(self):
        self.assertEqual(self.loaded(None), (None, None))

    def test_a_byte_too_few_or_too_many_is_ignored(self):
        self.assertEqual(self.loaded(self.data[:-1]), (None, model.SIZE_DIFFERS))
        self.assertEqual(self.loaded(self.data + b"\0"), (None, model.SIZE_DIFFERS))

    def test_another_slot_length_is_ignored(self):
        self.assertEqual(self.loaded(self.data, 10), (None, model.SIZE_DIFFERS))

    def test_the_same_size_with_other_words_is_ignored(self):
        self.assertEqual(self.loaded(self.data, 30, DaysInCycle="14"),
                         (None, model.CONFIGURATION_DIFFERS))
        wrong = self.data[:56] + struct.pack("<i", 671) + self.data[60:]
        self.assertEqual(self.loaded(wrong), (None, model.COUNT_DIFFERS))

    def test_a_version_is_refused_before_the_weights_are_read(self):
        wrong = b"\1" + self.data[1:]
        for changes in ({}, {"FirstLastWeight": None}):
            self.assertEqual(thrown(model.make_tracker, configuration(**changes), wrong),
                             "Version 0 expected")

    def test_an_uneven_day_is_refused_with_a_file_too(self):
        header = model.HEADER.pack(0, 7, 1440, 7, 4, *[0] * 9, 1440, 0)
        data = header + b"\xff" * (24 * 1440)
        self.assertEqual(thrown(model.make_tracker, configuration(7), data), model.WRONG_MODULUS)
        self.assertEqual(thrown(model.make_tracker, configuration(7, AgregationWeight=None), data),
                         model.NO_WEIGHTS)


class Learning(unittest.TestCase):
    def feed(self, t, *events):
        for tm, state in events:
            t.process_event(tm, state)
        return t

    def test_the_first_event_only_sets_state_and_time(self):
        t = self.feed(tracker(), (at(10, 5), 0))
        self.assertEqual(slots(t), {})
        self.assertEqual((t.block.last_state, t.block.last_time), (0, at(10, 5)))

    def test_an_event_after_container_stopped_only_sets_state_and_time(self):
        t = self.feed(tracker(), (at(10), 0))
        t.block.last_state = 4
        self.feed(t, (at(9), 1))
        self.assertEqual((slots(t), t.block.last_state, t.block.last_time), ({}, 1, at(9)))

    def test_container_stopped_is_refused(self):
        self.assertEqual(thrown(tracker().process_event, at(10), 4),
                         "ContainerStopped should not be passed to the ProbabilityTracker")

    def test_shutting_down_does_not_restart_an_inactive_stretch(self):
        t = self.feed(tracker(), (at(10), 1), (at(10, 20), 2), (at(10, 45), 0))
        self.assertEqual(slots(t), {41: (-1, -1, -1, 0, -1), 42: (-1, -1, -1, 0, -1)})

    def test_another_inactive_state_ends_the_stretch(self):
        t = self.feed(tracker(), (at(10), 1), (at(10, 45), 3))
        self.assertEqual((sorted(slots(t)), t.block.last_state), ([41, 42], 3))

    def test_a_stretch_in_use_marks_every_slot_it_touches(self):
        t = self.feed(tracker(), (at(10, 5), 0), (at(10, 20), 1))
        self.assertEqual(slots(t), {40: (-1, -1, -1, 1, 36300), 41: (-1, -1, -1, 1, 37200)})

    def test_the_same_stretch_inactive_marks_nothing(self):
        t = self.feed(tracker(), (at(10, 5), 1), (at(10, 20), 0))
        self.assertEqual((slots(t), t.block.last_state), ({}, 0))

    def test_a_slot_in_use_twice_at_once_is_marked_once(self):
        events = [(at(10, 5), 0), (at(10, 7), 1), (at(10, 9), 0), (at(10, 11), 1)]
        t = self.feed(tracker(), *events)
        self.assertEqual(slots(t), {40: (-1, -1, -1, 1, 36300)})
        self.feed(t, (at(10, 13), 0), (at(10, 16), 1))
        self.assertEqual(slots(t), {40: (-1, -1, -1, 1, 36300), 41: (-1, -1, -1, 1, 36780)})

    def test_observations_move_on_and_fold(self):
        t = tracker(60, DaysInCycle="1")
        for day in range(4):
            self.feed(t, (at(10, 0, 0, day), 0), (at(10, 30, 0, day), 1))
        self.assertEqual(slots(t)[10], (2, 2, 1, 1, 3 * 86400 + 36000))
        # The slots from 11:00 to 9:00 of the next day lie wholly between the two uses.
        self.assertEqual(len(slots(t)), 24)
        self.assertEqual(slots(t)[23], (1, 0, 0, 0, -1))

    def test_a_stretch_over_the_end_of_the_cycle_goes_round(self):
        t = self.feed(tracker(60), (at(22, 30, 0, 6), 0), (at(1, 30, 0, 7), 1))
        start = (6 * 24 + 22) * 3600 + 1800
        self.assertEqual({i: r[4] for i, r in slots(t).items()},
                         {166: start, 167: start + 3600, 0: start + 7200, 1: start + 10800})

    def test_a_stretch_longer_than_a_cycle_counts_by_its_remainder(self):
        t = self.feed(tracker(60), (at(10), 0), (at(12, 30, 0, 7), 1))
        self.assertEqual(sorted(slots(t)), [10, 11, 12])
        t = self.feed(tracker(60), (at(10), 1), (at(12, 30, 0, 14), 0))
        self.assertEqual(sorted(slots(t)), [11])

    def test_repeated_states_change_nothing(self):
        t = self.feed(tracker(), (at(10), 0), (at(11), 0))
        self.assertEqual((slots(t), t.block.last_time), ({}, at(10)))

    def test_impossible_times_are_refused_and_leave_the_state(self):
        t = self.feed(tracker(), (at(10), 0))
        self.assertEqual(thrown(t.process_event, at(10), 1), "state start is later than state end")
        self.assertEqual(thrown(t.process_event, at(9), 1), "state start is later than state end")
        self.assertEqual(thrown(t.process_event, model.INVALID_TM, 1), "wrong time ...")
        self.assertEqual((t.block.last_state, t.block.last_time), (0, at(10)))


class Probability(unittest.TestCase):
    def with_slot(self, record, **changes):
        t = tracker(**changes)
        self.put(t, 0, record)
        return t.slot_probability(0)

    def put(self, t, slot, record):
        b = t.block
        b.count[slot], b.sum[slot], b.second[slot], b.last[slot] = record

    def test_nothing_known_is_minus_one(self):
        t = tracker()
        self.assertEqual({t.slot_probability(i) for i in range(672)}, {-1.0})

    def test_one_observation_is_the_answer(self):
        self.assertEqual(self.with_slot((-1, -1, -1, 1)), 1.0)
        self.assertEqual(self.with_slot((-1, -1, -1, 0)), 0.0)

    def test_two_observations_share_by_their_weights(self):
        p = self.with_slot((-1, -1, 0, 1))
        self.assertEqual((p, model.format_float(p)), (11184811 / 2**24, "0.666666687"))

    def test_older_observations_join_with_theirs(self):
        p = self.with_slot((3, 1, 0, 1))
        # 0.5 + 11184811/2^25 * 0.25 = 78293675/2^27, rounded to 24 bits.
        self.assertEqual((p, model.format_float(p)), (9786709 / 2**24, "0.583333313"))

    def test_an_empty_aggregate_divides_by_zero(self):
        self.assertTrue(math.isnan(self.with_slot((0, 0, 0, 1))))
        self.assertEqual(self.with_slot((0, 2, 0, 1)), math.inf)

    def test_weights_of_zero_sum_make_it_undefined(self):
        p = self.with_slot((-1, -1, 0, 1), FirstLastWeight="0", SecondLastWeight="0",
                           AgregationWeight="0")
        self.assertEqual(model.format_float(p), "nan")

    def test_no_pooling_for_grouping_0_and_127_and_other_cycles(self):
        for changes in ({"DayGrouping": "0"}, {"DayGrouping": "127"},
                        {"DayGrouping": "12", "DaysInCycle": "14"}):
            t = tracker(**changes)
            self.put(t, 3 * 96, (-1, -1, -1, 1))
            self.assertEqual((t.slot_probability(2 * 96), t.slot_probability(3 * 96)), (-1.0, 1.0))

    def test_grouping_12_pools_the_weekend_and_the_other_days(self):
        t = tracker(DayGrouping="12")
        self.put(t, 2 * 96 + 5, (-1, -1, -1, 1))
        self.assertEqual([t.slot_probability(day * 96 + 5) for day in range(7)],
                         [-1.0, -1.0, 1.0, 1.0, -1.0, -1.0, -1.0])
        t = tracker(DayGrouping="12")
        self.put(t, 4 * 96 + 5, (-1, -1, -1, 0))
        # The observed slot itself counts its observation twice and adds (-5 / -5) * 0.25.
        self.assertEqual([t.slot_probability(day * 96 + 5) for day in range(7)],
                         [0.0, 0.0, -1.0, -1.0, 0.25, 0.0, 0.0])

    def test_grouping_255_pools_all_days(self):
        t = tracker(DayGrouping="255")
        self.put(t, 6 * 96, (-1, -1, -1, 1))
        self.assertEqual({t.slot_probability(day * 96) for day in range(6)}, {1.0})

    def test_the_nearest_earlier_days_give_the_observations(self):
        t = tracker(DayGrouping="255")
        self.put(t, 0, (-1, -1, 7, 5))
        self.put(t, 5 * 96, (-1, -1, -1, 3))
        self.put(t, 2 * 96, (-1, -1, -1, 9))
        # From day 0 back: days 6, 5, 4, ... so 3 comes before 9, and each day adds -1 and -1.
        self.assertEqual(t.pooled_record(0), (-7, -7, 9, 3))
        self.assertEqual(t.pooled_record(3 * 96), (-7, -7, 5, 9))

    def test_a_lone_observation_takes_the_slots_own_as_second(self):
        t = tracker(DayGrouping="12")
        self.put(t, 2 * 96, (4, 3, 0, 1))
        # The walk from day 2 meets day 3 (nothing) and then itself.
        self.assertEqual(t.pooled_record(2 * 96), (3, 2, 1, 1))
        # For day 3 the own last observation is absent, so one observation remains.
        self.assertEqual(t.pooled_record(3 * 96), (3, 2, -1, 1))
        self.assertEqual(t.slot_probability(3 * 96), 1.0)
        # 0.5 + 0.25 + (2/3) * 0.25 = 0.75 + 11184811/2^26, rounded to 24 bits.
        self.assertEqual(t.slot_probability(2 * 96), 15379115 / 2**24)

    def test_pooled_aggregates_of_minus_one_are_added_as_they_are(self):
        t = tracker(DayGrouping="12")
        self.put(t, 2 * 96, (-1, -1, -1, 1))
        self.put(t, 3 * 96, (0, 0, 0, 0))
        # The sum is -1 again and counts as no aggregate: (0 * 0.5 + 1 * 0.25) / 0.75.
        self.assertEqual(t.pooled_record(2 * 96), (-1, -1, 1, 0))
        self.assertEqual(t.slot_probability(2 * 96), 11184811 / 2**25)


class Predicting(unittest.TestCase):
    def idle_week(self, in_use=(), resolution=15, **changes):
        t = tracker(resolution, **changes)
        t.block.last = [0] * t.block.slot_count
        for slot in in_use:
            t.block.last[slot] = 1
        return t

    def test_a_fresh_tracker_predicts_nothing(self):
        t = tracker()
        self.assertEqual(t.predict_hibernate(at(10)), [(at(10), -1)])
        self.assertEqual(t.predict_wake(at(10)), [])
        self.assertEqual(t.get_predictions(at(10)), [(at(10), -1)])

    def test_minutes_to_the_idle_stretch_round_up(self):
        t = self.idle_week()
        self.assertEqual(t.predict_hibernate(at(10, 5))[0][1], 10)
        self.assertEqual(t.predict_hibernate(at(10, 5, 30))[0][1], 10)
        self.assertEqual(t.predict_hibernate(at(10, 14, 59))[0][1], 1)
        self.assertEqual(t.predict_hibernate(at(10))[0][1], 15)

    def test_a_slot_in_use_starts_the_count_anew(self):
        t = self.idle_week(in_use=[42])
        self.assertEqual(t.predict_hibernate(at(10, 5))[0][1], 40)

    def test_an_unknown_slot_ends_the_search(self):
        t = self.idle_week()
        t.block.last[42] = -1
        self.assertEqual(t.predict_hibernate(at(10, 5))[0][1], -1)
        self.assertEqual(t.predict_wake(at(10, 5)), [])

    def test_hibernate_wake_and_the_next_idle_stretch(self):
        t = self.idle_week(in_use=[60])
        self.assertEqual(t.get_predictions(at(10, 5)), [(at(10, 5), 10), (at(15), 15)])

    def test_the_search_goes_round_the_cycle_but_not_to_its_own_slot(self):
        t = self.idle_week(in_use=[39])
        self.assertEqual(t.predict_wake(at(10, 5))[0][0], at(9, 45, 0, 7))
        t = self.idle_week(in_use=[40])
        self.assertEqual(t.predict_wake(at(10, 5)), [])
        # The search for the wake begins at 10:15, so slot 40 is the last one of its round.
        self.assertEqual(t.get_predictions(at(10, 5)), [(at(10, 5), 10), (at(10, 0, 0, 7), 15)])

    def test_slots_longer_than_half_an_hour_never_hibernate(self):
        t = self.idle_week(in_use=[20], resolution=45)
        self.assertEqual(t.get_predictions(at(10)), [(at(10), -1)])
        self.assertEqual(t.predict_wake(at(10)), [(at(15), -1)])

    def test_one_slot_is_too_few(self):
        t = self.idle_week(resolution=60, DaysInCycle="1", MinutesInDay="60")
        self.assertEqual((t.get_predictions(at(10)), t.predict_wake(at(10))), ([(at(10), -1)], []))

    def test_a_probability_at_the_high_strength_counts_and_one_at_the_low_does_not(self):
        t = self.idle_week(StrengthHigh="0", StrengthLow="0")
        self.assertEqual(t.predict_wake(at(10, 5)), [(at(10, 15), -1)])
        self.assertEqual(t.predict_hibernate(at(10, 5))[0][1], -1)


class SuspendDecision(unittest.TestCase):
    def test_two_predictions(self):
        decision = model.decide_suspend([(at(10, 5), 10), (at(15), 15)], at(10, 5))
        self.assertEqual(decision, model.Suspend(
            "Thu Jan  1 10:15:00 1970", "Thu Jan  1 15:00:00 1970", "Thu Jan  1 15:15:00 1970",
            10, 295, 15))

    def test_one_prediction_only(self):
        self.assertEqual(model.decide_suspend([(at(10, 5), 10)], at(10, 5)), model.Suspend(
            "Thu Jan  1 10:15:00 1970", "never", "no prediction", 10, None, None))

    def test_a_second_start_not_after_now_counts_as_absent(self):
        for second in (at(10, 5), at(9)):
            decision = model.decide_suspend([(at(10, 5), 10), (second, 15)], at(10, 5))
            self.assertEqual(decision[1:], ("never", "no prediction", 10, None, None))

    def test_no_first_duration_and_no_predictions_are_no_prediction(self):
        nothing = model.Suspend("no prediction", "never", "no prediction", None, None, None)
        self.assertEqual(model.decide_suspend([(at(10), -1)], at(10)), nothing)
        self.assertEqual(model.decide_suspend([], at(10)), nothing)

    def test_no_second_duration_still_arms_the_timer(self):
        decision = model.decide_suspend([(at(10), 10), (at(15), -1)], at(10))
        self.assertEqual(decision[1:], ("Thu Jan  1 15:00:00 1970", "no prediction", 10, 300, None))

    def test_a_start_less_than_a_minute_away_arms_nothing(self):
        decision = model.decide_suspend([(at(10), 10), (at(10, 0, 59), 15)], at(10))
        self.assertEqual((decision.sleepRestoredAt, decision.timerMinutes),
                         ("Thu Jan  1 10:00:59 1970", None))


def record(time, asleep=0, rest=0):
    return struct.pack("<dII", time, asleep, rest)


class History(unittest.TestCase):
    def test_only_whole_records_that_are_later_are_kept(self):
        content = b"".join(record(t) for t in (10.0, 10.0, 9.0, 11.0)) + b"\0" * 15
        self.assertEqual(model.increasing(model.read_records(content)), [(10.0, 0), (11.0, 0)])
        self.assertEqual(model.read_records(b""), [])

    def test_a_first_time_that_is_no_number_drops_all_others(self):
        kept = model.increasing([(math.nan, 1), (1.0, 0)])
        self.assertEqual(len(kept), 1)

    def test_learning_truncates_times_and_tells_refusals(self):
        t, refused = model.learn(configuration(), [(10.2, 0), (10.7, 1), (36000.0, 7)])
        self.assertEqual(refused, ["state start is later than state end"])
        self.assertEqual((t.block.last_state, t.block.last_time), (1, at(10)))
        self.assertEqual(sorted(slots(t)), list(range(41)))

    def test_learning_a_time_beyond_the_calendar(self):
        t, refused = model.learn(configuration(), [(36000.0, 0), (4e10, 1)])
        self.assertEqual((refused, t.block.last_time), (["wrong time ..."], at(10)))
        t, refused = model.learn(configuration(), [(-5.0, 0), (36000.0, 1)])
        self.assertEqual((refused, slots(t), t.block.last_time), ([], {}, at(10)))

    def test_csv_rows_are_records(self):
        text = "epoch_wallclock_seconds,asleep\r\n7,1\r\n"
        self.assertEqual(model.read_csv(text), [(7.0, 1)])
        self.assertEqual(model.read_csv("# {}\n" + text), [(7.0, 1)])


class Merging(unittest.TestCase):
    NOW = 1700000000
    CUTOFF = NOW - 5184000

    def test_records_older_than_the_limit_are_dropped(self):
        old, kept = record(self.CUTOFF - 1), record(self.CUTOFF) + record(self.CUTOFF + 1, 1, 9)
        self.assertEqual(model.merge(old + kept, b"", self.NOW, 60), kept)

    def test_a_pending_record_older_than_the_limit_is_written(self):
        self.assertEqual(model.merge(None, record(5.0, 1), self.NOW, 60), record(5.0, 1))

    def test_a_pending_record_not_later_than_the_last_is_discarded(self):
        history = record(self.NOW, 1)
        pending = record(self.NOW) + record(self.NOW - 1) + record(self.NOW + 1) + b"\1" * 15
        self.assertEqual(model.merge(history, pending, self.NOW, 60),
                         history + record(self.NOW + 1))

    def test_a_whole_file_comes_back_unchanged(self):
        history = b"".join(record(self.NOW + i, i % 2, i) for i in range(5))
        self.assertEqual(model.merge(history, b"", self.NOW, 60), history)

    def test_a_tail_is_laid_over_the_record_before(self):
        history = record(self.NOW, 1, 77)
        tail = record(self.NOW + 5, 0, 0)
        for length in (8, 9, 12, 15):
            self.assertEqual(model.merge(history + tail[:length], b"", self.NOW, 60),
                             history + tail[:length] + history[length:])

    def test_a_short_tail_that_is_no_later_is_dropped(self):
        history = record(float(self.NOW), 1)
        self.assertEqual(model.merge(history + b"\0", b"", self.NOW, 60), history)

    def test_an_empty_file_leaves_the_zero_buffer_to_be_tested(self):
        self.assertEqual(model.merge(b"", b"", self.NOW, 60), b"")
        self.assertEqual(model.merge(b"", b"", 0, 0), bytes(16))
        self.assertEqual(model.merge(None, b"", 0, 0), b"")

    def test_a_time_that_is_no_number_is_dropped_from_the_file_only(self):
        odd = record(math.nan)
        self.assertEqual(model.merge(odd, b"", self.NOW, 60), b"")
        self.assertEqual(model.merge(None, odd + record(1.0), self.NOW, 60), odd)


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
