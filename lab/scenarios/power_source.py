"""Which timeout a wake is compared with: that of the power source the machine runs on."""

from datetime import timedelta

from machine.service_record import information
from steps.expect import expect
from steps.nights import events, hibernate_at

UNKNOWN_SOURCE = 255


def _asleep_without_prediction(machine, timeouts=(180, 60)):
    """The timeouts in force are the user's own."""
    machine.provision(DebugLogging=1)
    machine.schemes.hibernate_after = timeouts
    machine.start_service()
    machine.suspend()


def _state_after(machine, minutes):
    step = hibernate_at(machine, machine.clock.now + timedelta(minutes=minutes))
    return step, events(step)[-1].text


def on_mains_the_timeout_for_mains_counts(machine):
    _asleep_without_prediction(machine)
    step, state = _state_after(machine, 180)
    expect(state, "Spike_S3ToS4", "state")
    expect(step.of("power-source", "scheme"), ["read 1", "read 0 hibernate AC 10800"],
           "what is read")


def on_mains_the_timeout_for_battery_means_nothing(machine):
    _asleep_without_prediction(machine)
    expect(_state_after(machine, 60)[1], "Active", "state")


def on_battery_the_timeout_for_battery_counts(machine):
    _asleep_without_prediction(machine)
    machine.set_mains(False)
    step, state = _state_after(machine, 60)
    expect(state, "Spike_S3ToS4", "state")
    expect(step.of("power-source", "scheme"), ["read 0", "read 0 hibernate DC 3600"],
           "what is read")


def on_battery_the_timeout_for_mains_means_nothing(machine):
    _asleep_without_prediction(machine)
    machine.set_mains(False)
    expect(_state_after(machine, 180)[1], "Active", "state")


def an_unknown_source_counts_as_mains(machine):
    _asleep_without_prediction(machine)
    machine.set_line_status(UNKNOWN_SOURCE)
    expect(_state_after(machine, 180)[1], "Spike_S3ToS4", "state")


def a_source_that_cannot_be_read_makes_every_resume_a_real_one(machine):
    _asleep_without_prediction(machine)
    machine.calls.fail("GetSystemPowerStatus", 5)
    step, state = _state_after(machine, 180)
    expect(state, "Active", "state")
    expect(step.of("scheme"), [], "timeouts read")
    answer = [information("GetPreviousSleepStatus 4\n"), information("GoingToS4 0\n"),
              information("SuspendDuration = 0 sec, HA = 0 sec\n")]
    expect(events(step)[4:7], answer, "reasons")


def a_timeout_that_cannot_be_read_makes_every_resume_a_real_one(machine):
    _asleep_without_prediction(machine)
    machine.calls.fail("PowerReadACValueIndex", 2)
    step, state = _state_after(machine, 180)
    expect(state, "Active", "state")
    expect(events(step)[6], information("SuspendDuration = 0 sec, HA = 0 sec\n"), "reason")


def a_timeout_of_never_ends_no_sleep(machine):
    _asleep_without_prediction(machine, timeouts=(0, 0))
    step, state = _state_after(machine, 0)
    expect(state, "Active", "state")
    expect(events(step)[6], information("SuspendDuration = 0 sec, HA = 0 sec\n"), "reason")


def another_answer_of_the_driver_makes_it_a_real_resume(machine):
    _asleep_without_prediction(machine)
    machine.clock.pass_time(minutes=180, awake=False)
    for status in (0, 1, 3, 5, 6):
        machine.driver.set_previous_sleep_status(status)
        step = machine.resume()
        expect(events(step)[-1], information("Active"), f"state after {status}")
        machine.suspend()
        machine.clock.pass_time(minutes=180, awake=False)
