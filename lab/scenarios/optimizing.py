"""When the service searches for better parameters, what puts it off and what ends it."""

import re

from machine.lab_device import ENDED_BY_TIMER
from machine.machine import HISTORY_FILE, POWER_STATUS_CHANGE, SUSPEND
from machine.registry import CURRENT, REG_QWORD, predictor_key
from machine.service_control import POWER_EVENT
from machine.service_record import information, success
from steps.data_files import asleep, awake, history_file
from steps.expect import expect, expect_true

DAY = 86400
BEST = predictor_key(CURRENT)
LAUNCHED = information("Launch optimizer thread, N\n")
STILL_ALIVE = information("Optimizer thread still alive, N\n")
STOPPED = information("Terminate optimizer thread, N\n")
SEARCHED = information("Optimizer runtime N\n")
APPLIED = information("Predictor disabled N\n")
POSTPONED = success("Optimizer thread run postponed as current power source is DC")
UNDEFINED = success("TotalOptimizerAttemptsInDCmode or CurrentOptimizerAttemptsInDCmode value is  "
                    "not defined in registry...")


def _machine(machine, seconds_ago=None, controller=False, **settings):
    """A service whose last search began some seconds ago, with a grid of one set and no delay."""
    machine.provision(total_attempts=0 if controller else None,
                      **{"OptimizerDelay": 0, **settings})
    for name, value in (("StrengthHighRange", "90"), ("StrengthLowRange", "60"),
                        ("FirstLastWeightRange", "10"), ("SecondLastWeightRange", "20"),
                        ("DayGroupingRange", "2"), ("WR", "50"), ("Strength", "0")):
        machine.registry.write(name, value, BEST)
    if seconds_ago is not None:
        _set_last_run(machine, seconds_ago)
    machine.start_service()
    return machine


def _set_last_run(machine, seconds_ago):
    machine.registry.write("LastOptimizerRun", _now(machine) - seconds_ago, CURRENT, REG_QWORD)


def _now(machine):
    return int(machine.clock.now.timestamp())


def _numberless(events):
    """Without what differs from run to run: the handle's number and the milliseconds."""
    return [event._replace(text=re.sub(r"\d+\n$", "N\n", event.text)) for event in events]


def _launch(machine):
    """The events of one change of the power status."""
    return _numberless(machine.change_power_status().events)


def _best(machine):
    return machine.registry.read("Best0", BEST)


def the_first_launch_only_starts_the_clock(machine):
    _machine(machine, DebugLogging=1)
    expect(sorted(_launch(machine)), sorted([LAUNCHED, success("Optimizer skipped\n")]), "events")
    expect(machine.setting("LastOptimizerRun"), _now(machine), "last run")
    expect(_best(machine), None, "best set")


def the_first_launch_is_silent_without_debug_logging(machine):
    _machine(machine)
    expect(_launch(machine), [LAUNCHED], "events")
    expect(machine.setting("LastOptimizerRun"), _now(machine), "last run")


def a_search_is_due_one_second_after_the_interval(machine):
    _machine(machine, 30 * DAY)
    expect(_launch(machine), [LAUNCHED], "events at the end of the interval")
    machine.clock.pass_time(seconds=1)
    expect_true(SEARCHED in _launch(machine), "no search one second later")
    expect(machine.setting("LastOptimizerRun"), _now(machine), "last run")
    expect(_best(machine), "-1", "best set")


def a_clock_that_was_set_back_puts_a_search_off(machine):
    _machine(machine, -DAY)
    machine.clock.pass_time(days=31)
    expect(_launch(machine), [LAUNCHED], "events 30 days after the time of the last search")
    machine.clock.pass_time(seconds=1)
    expect_true(SEARCHED in _launch(machine), "no search one second later")


def on_battery_a_search_is_put_off_as_often_as_allowed(machine):
    _machine(machine, 31 * DAY, TotalOptimizerAttemptsInDCmode=2,
             CurrentOptimizerAttemptsInDCmode=0)
    machine.set_mains(False)
    for attempt in 1, 2:
        expect(sorted(_launch(machine)), sorted([LAUNCHED, POSTPONED]), f"events of {attempt}")
        expect(machine.setting("CurrentOptimizerAttemptsInDCmode"), attempt, "attempts")
        expect(_best(machine), None, "best set")
    expect_true(SEARCHED in _launch(machine), "no search at the third launch")
    expect(machine.setting("CurrentOptimizerAttemptsInDCmode"), 0, "attempts afterwards")
    expect(_best(machine), "-1", "best set")


def back_on_mains_a_search_begins_whatever_the_counter_says(machine):
    _machine(machine, 31 * DAY, TotalOptimizerAttemptsInDCmode=9,
             CurrentOptimizerAttemptsInDCmode=0)
    machine.set_mains(False)
    _launch(machine)
    machine.set_mains(True)
    expect_true(SEARCHED in _launch(machine), "no search")
    expect(machine.setting("CurrentOptimizerAttemptsInDCmode"), 0, "attempts afterwards")


def on_battery_an_undefined_counter_keeps_a_search_from_beginning(machine):
    for defined in ({}, {"TotalOptimizerAttemptsInDCmode": 2},
                    {"CurrentOptimizerAttemptsInDCmode": 2}):
        machine.reset()
        counters = {"TotalOptimizerAttemptsInDCmode": None,
                    "CurrentOptimizerAttemptsInDCmode": None, **defined}
        _machine(machine, 31 * DAY, **counters)
        machine.set_mains(False)
        for _ in range(2):
            expect(sorted(_launch(machine)), sorted([LAUNCHED, UNDEFINED]), f"with {defined}")
        machine.set_mains(True)
        expect_true(SEARCHED in _launch(machine), "no search on mains")


def a_source_that_cannot_be_read_counts_as_battery(machine):
    _machine(machine, 31 * DAY, TotalOptimizerAttemptsInDCmode=2,
             CurrentOptimizerAttemptsInDCmode=0)
    machine.calls.fail("GetSystemPowerStatus", 5, times=1)
    expect(sorted(_launch(machine)), sorted([LAUNCHED, POSTPONED]), "events")


def a_search_begins_after_its_delay_and_counts_from_its_launch(machine):
    _machine(machine, 31 * DAY, DebugLogging=1, OptimizerDelay=30)
    launched = _now(machine)
    step = machine.change_power_status()
    expect(step.of("sleep"), ["1800000 ms"], "delay")
    # The thread may be quicker than the report of its launch.
    expect(sorted(_numberless(step.events)),
           sorted([LAUNCHED, information("Optimizer will sleep for 1800 seconds\n")]), "events")
    machine.clock.pass_time(minutes=29)
    expect(machine.take_step().events, [], "events after 29 minutes")
    machine.clock.pass_time(minutes=1)
    expect_true(SEARCHED in _numberless(machine.take_step().events), "no search after 30 minutes")
    expect(machine.setting("LastOptimizerRun"), launched, "last run")


def one_thread_lives_at_a_time(machine):
    _machine(machine, 31 * DAY, OptimizerDelay=30)
    expect(_launch(machine), [LAUNCHED], "events of the first launch")
    expect(_numberless(machine.change_power_status().events), [STILL_ALIVE],
           "events of the second")
    machine.clock.pass_time(minutes=30)
    machine.take_step()
    expect(_launch(machine), [LAUNCHED], "events of a launch after its end")


def a_suspend_during_the_delay_ends_the_search_when_it_begins(machine):
    _machine(machine, 31 * DAY, OptimizerDelay=30, controller=True)
    launched = _now(machine)
    _launch(machine)
    expect_true(STOPPED in _numberless(machine.suspend().events), "no stop is asked for")
    machine.clock.pass_time(minutes=30)
    expect(_numberless(machine.take_step().events), [SEARCHED], "events after the delay")
    expect(_best(machine), None, "best set")
    # It counts as a search, and the next one is not stopped.
    expect(machine.setting("LastOptimizerRun"), launched, "last run")
    _set_last_run(machine, 31 * DAY)
    _launch(machine)
    machine.clock.pass_time(minutes=30)
    machine.take_step()
    expect(_best(machine), "-1", "best set of the next search")


def a_suspend_during_the_search_ends_it(machine):
    _machine(machine, 31 * DAY, controller=True)

    def launch():
        machine.deliver_meanwhile(POWER_EVENT, POWER_STATUS_CHANGE)
    # It is asked for once before the search and then during the search.
    with machine.calls.held("GetSystemPowerStatus", launch, call=2):
        machine.deliver_meanwhile(POWER_EVENT, SUSPEND)
    events = _numberless(machine.take_step().events)
    expect_true(STOPPED in events, "no stop is asked for")
    expect(events[-1], SEARCHED, "last event")
    expect(_best(machine), None, "best set")
    expect(machine.setting("LastOptimizerRun"), _now(machine), "last run")


def a_suspend_without_a_search_asks_for_no_stop(machine):
    _machine(machine, 0, controller=True)
    expect([event for event in machine.suspend().events if "optimizer" in event.text], [], "events")


def a_history_that_cannot_be_simulated_ends_the_thread_and_is_tried_again(machine):
    _machine(machine, 31 * DAY, DebugLogging=1)
    unknown = awake("2026-01-03 09:00")._replace(asleep=7)
    machine.write_data_file(HISTORY_FILE, history_file(
        [awake("2026-01-03 08:00"), unknown, asleep("2026-01-03 10:00")]))
    last = machine.setting("LastOptimizerRun")
    for _ in range(2):
        expect(sorted(_launch(machine)), sorted([LAUNCHED, success("Optimizer exception\n")]),
               "events")
        expect(machine.setting("LastOptimizerRun"), last, "last run")


def a_launch_without_a_thread_is_made_up_for_by_the_next(machine):
    _machine(machine)
    machine.calls.fail("CreateThread", 8, times=1)
    expect(machine.change_power_status().events, [information("Launch optimizer thread, 0\n")],
           "events without a thread")
    expect(machine.setting("LastOptimizerRun"), None, "last run")
    expect(_launch(machine), [LAUNCHED], "events of the next launch")
    expect(machine.setting("LastOptimizerRun"), _now(machine), "last run")


def a_real_resume_launches_the_optimizer_and_a_wake_by_timer_does_not(machine):
    _machine(machine, 0, controller=True)
    machine.suspend()
    machine.clock.pass_time(hours=8, awake=False)
    machine.driver.expire_timer()
    machine.driver.set_previous_sleep_status(ENDED_BY_TIMER)
    expect_true(LAUNCHED not in _numberless(machine.resume().events), "launched by the timer")
    machine.suspend()
    machine.clock.pass_time(hours=1, awake=False)
    machine.driver.set_previous_sleep_status(0)
    expect_true(LAUNCHED in _numberless(machine.resume().events), "not launched by the user")


def without_a_controller_the_found_sets_are_stored_and_not_applied(machine):
    _machine(machine, 31 * DAY)
    events = _launch(machine)
    expect_true(APPLIED not in events, "applied")
    expect((_best(machine), machine.setting("DisablePrediction")), ("-1", None), "settings")


def with_a_controller_a_search_without_a_winner_switches_prediction_off(machine):
    _machine(machine, 31 * DAY, controller=True)
    step = machine.change_power_status()
    expect([event for event in _numberless(step.events) if "thread" not in event.text],
           [information("5/1/2026 8:0:0 - ParamChanging"), APPLIED, SEARCHED], "events")
    expect((machine.setting("DisablePrediction"), machine.setting("ServiceFeedback")), (1, 3),
           "settings")


def a_stop_of_the_service_waits_for_no_search(machine):
    _machine(machine, 31 * DAY, OptimizerDelay=30, controller=True)
    _launch(machine)
    expect_true(STOPPED in _numberless(machine.stop_service().events), "no stop is asked for")
    expect(machine.setting("CurrentOptimizerAttemptsInDCmode"), None, "attempts")
