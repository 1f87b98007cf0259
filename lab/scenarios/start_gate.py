"""When the service's starts are enough for its sleep controller to start."""

from machine.machine import RESUME
from machine.registry import BRANDING, CURRENT, DEFAULT
from machine.service_control import POWER_EVENT
from machine.service_record import Entry, information, success
from steps.expect import expect

COUNTERS_MISSING = success("TotalAttempts or CurrentAttempt value is not defined in registry...")
STARTED_AT_EIGHT = [information("5/1/2026 8:0:0 - Activating"), information("Active")]
NO_MORE_THREADS = 1450
SERVES = Entry("setting", "write ServiceStatus 0")


def _expect_off(machine, step, what):
    """The start or resume has started no controller, so events lead to nothing."""
    expect(step.events, [], f"events of {what}")
    expect(step.of("thread"), [], f"threads of {what}")
    expect(machine.suspend().of("trace", "information", "error"), [], f"a suspend after {what}")
    expect(machine.setting("ServiceFeedback"), None, f"ServiceFeedback after {what}")


def the_first_starts_only_count_until_the_total_is_reached(machine):
    machine.provision(total_attempts=3, current_attempt=0)
    for attempt in (1, 2, 3):
        machine.clock.set(f"2026-01-05 0{attempt}:00")
        _expect_off(machine, machine.start_service(), f"start {attempt}")
        expect(machine.setting("CurrentAttempt"), attempt, "CurrentAttempt")
        expect(machine.setting("StartTime"), int(machine.clock.now.timestamp()), "StartTime")
        machine.stop_service()

    machine.clock.set("2026-01-05 08:00")
    step = machine.start_service()
    expect(step.events, STARTED_AT_EIGHT, "events of start 4")
    expect(step.of("thread"), ["start", "end"], "threads of start 4")
    expect(machine.setting("CurrentAttempt"), 3, "CurrentAttempt")
    expect(machine.setting("StartTime"), int(machine.clock.now.timestamp()), "StartTime")
    expect(machine.setting("ServiceFeedback"), 1, "ServiceFeedback")
    expect(machine.registry.names(CURRENT),
           ["CurrentAttempt", "ServiceFeedback", "ServiceStatus", "StartTime"], "settings written")


def resumes_count_as_starts(machine):
    machine.provision(total_attempts=3, current_attempt=0)
    _expect_off(machine, machine.start_service(), "the start")
    for attempt in (2, 3):
        machine.clock.pass_time(hours=1)
        _expect_off(machine, machine.resume(), f"attempt {attempt}")
        expect(machine.setting("CurrentAttempt"), attempt, "CurrentAttempt")
        expect(machine.setting("StartTime"), int(machine.clock.now.timestamp()), "StartTime")
    machine.clock.set("2026-01-05 08:00")
    expect(machine.resume().events, STARTED_AT_EIGHT, "events of the last resume")
    expect(machine.setting("ServiceFeedback"), 1, "ServiceFeedback")


def without_counters_the_controller_stays_off(machine):
    for total, current in ((None, 0), (0, None), (None, None)):
        machine.registry.delete_key(DEFAULT)
        machine.provision(total_attempts=total, current_attempt=current)
        step = machine.start_service()
        expect(step.events, [COUNTERS_MISSING], f"events with {total} and {current}")
        expect(step.of("thread", "setting"), ["write ServiceStatus 0"], "what was done")
        expect(machine.suspend().events, [], "events of a suspend")
        expect(machine.resume().events, [COUNTERS_MISSING], "events of a resume")
        machine.stop_service()


def the_counters_are_looked_up_in_three_keys(machine):
    machine.provision(total_attempts=0, current_attempt=7)
    machine.registry.write("TotalAttempts", 9, BRANDING)
    _expect_off(machine, machine.start_service(), "a start that Branding has to wait for 9")
    expect(machine.setting("CurrentAttempt"), 8, "counted on from Default into Current")
    expect(machine.registry.read("CurrentAttempt", DEFAULT), 7, "CurrentAttempt in Default")

    machine.registry.write("TotalAttempts", 8, CURRENT)
    expect(machine.resume().events, STARTED_AT_EIGHT, "events when Current says 8")


def the_counters_are_compared_without_a_sign(machine):
    machine.provision(total_attempts=0xFFFFFFFF, current_attempt=0x7FFFFFFF)
    _expect_off(machine, machine.start_service(), "the start")
    expect(machine.setting("CurrentAttempt"), 0x80000000, "CurrentAttempt")
    machine.registry.write("TotalAttempts", 1)
    expect(machine.resume().events, STARTED_AT_EIGHT, "events when the count is beyond the total")
    expect(machine.setting("CurrentAttempt"), 0x80000000, "CurrentAttempt")


def a_feature_that_is_off_counts_but_does_not_start(machine):
    for value in (0, 2):
        machine.registry.delete_key(CURRENT)
        machine.provision(total_attempts=1, current_attempt=0, EnableZ7Feature=value)
        _expect_off(machine, machine.start_service(), "the start")
        expect(machine.setting("CurrentAttempt"), 1, "CurrentAttempt")
        machine.clock.pass_time(hours=1)
        _expect_off(machine, machine.resume(), "a resume")
        expect(machine.setting("StartTime"), int(machine.clock.now.timestamp()), "StartTime")
        machine.stop_service()


def feedback_that_says_more_is_not_overwritten(machine):
    machine.provision(ServiceFeedback=3)
    machine.start_service()
    expect(machine.setting("ServiceFeedback"), None, "ServiceFeedback")


def a_controller_whose_thread_cannot_be_created_starts_with_the_next_attempt(machine):
    machine.provision()
    machine.calls.fail("CreateThread", NO_MORE_THREADS, times=2)
    _expect_off(machine, machine.start_service(), "the start")
    _expect_off(machine, machine.resume(), "a resume without a thread")
    expect(machine.resume().events, STARTED_AT_EIGHT, "events of the next resume")


def an_attempt_while_the_controller_starts_starts_no_other(machine):
    machine.provision()
    with machine.calls.held("SHGetKnownFolderPath", machine.begin_start):
        # The controller's thread is held, so a step would not end here.
        machine.record.wait_for(SERVES)
        machine.deliver_meanwhile(POWER_EVENT, RESUME)
        expect([entry.text for entry in machine.record.all() if entry.kind == "thread"], ["start"],
               "threads")
    step = machine.take_step()
    expect(step.events, STARTED_AT_EIGHT, "events")
    expect(step.of("thread"), ["start", "end"], "threads")


def the_start_time_is_cut_to_its_low_half(machine):
    machine.clock.set("2110-01-01 00:00")
    machine.provision(total_attempts=1)
    machine.start_service()
    expect(machine.setting("StartTime"), int(machine.clock.now.timestamp()) - 2**32, "StartTime")
