"""Life without the wake timer's driver, or with one that does not do as it is told."""

from machine.lab_device import READ_STATUS, READ_TIMER, WRITE_TIMER
from machine.service_record import information
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, expect_timeouts, hibernate_at, wake_by_timer_at

NOT_ARMED = 0x12345678, 0x30000000
ERROR_INVALID_HANDLE, ERROR_GEN_FAILURE = 6, 31


def _asleep(machine, armed=True):
    machine_that_knows_office_hours(machine)
    machine.driver.words = NOT_ARMED
    step = machine.suspend()
    expect(machine.driver.words, (NOT_ARMED[0], 0xB8000348) if armed else NOT_ARMED,
           "the driver's timer")
    expect(events(step)[-1], information("Suspended"), "state")
    expect_timeouts(machine, (10, 10), cached=(180, 60))
    return step


def _failed(control, error=ERROR_GEN_FAILURE):
    return f"{control} error {error}"


def without_a_driver_timeouts_are_set_all_the_same(machine):
    machine.driver.hide()
    step = _asleep(machine, armed=False)
    expect(step.of("driver"), [_failed("read timer", ERROR_INVALID_HANDLE)], "driver")
    step = hibernate_at(machine, "2026-02-02 18:10")
    expect(events(step)[1:], [information("GetPreviousSleepStatus 0\n"),
                              information("Spike_S3ToS4")], "events of the wake into hibernation")
    machine.suspend()
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(events(step)[1:], [information("GetPreviousSleepStatus 0\n")] * 2 +
           [information("Active")], "events of a wake by a timer that it cannot see")
    expect_timeouts(machine, (180, 60))


def a_driver_that_appears_after_the_start_is_not_used(machine):
    machine.driver.hide()
    machine_that_knows_office_hours(machine)
    machine.driver.show()
    machine.driver.words = NOT_ARMED
    machine.suspend()
    expect(machine.driver.words, NOT_ARMED, "the driver's timer")
    expect(machine.driver.calls(READ_TIMER), 0, "calls of the driver")

    machine.clock.pass_until("2026-02-03 08:00", awake=False)
    machine.resume()
    machine.restart_service()
    machine.suspend()
    expect(machine.driver.calls(READ_TIMER), 1, "calls of the driver after a restart")


def a_driver_that_disappears_stays_in_use(machine):
    machine_that_knows_office_hours(machine)
    machine.driver.hide()
    machine.suspend()
    expect(machine.driver.armed_minutes, 840, "minutes that it is armed for")


def a_timer_that_cannot_be_read_is_not_armed(machine):
    machine.driver.fail(READ_TIMER)
    step = _asleep(machine, armed=False)
    expect(step.of("driver"), [_failed("read timer")], "driver")


def a_timer_that_cannot_be_written_is_not_tried_again(machine):
    machine.driver.fail(WRITE_TIMER)
    step = _asleep(machine, armed=False)
    expect(step.of("driver"), ["read timer 0x12345678 0x30000000",
                               _failed("write timer 0x12345678 0xb8000348")], "driver")


def a_timer_that_cannot_be_read_did_not_expire(machine):
    _asleep(machine)
    machine.driver.fail(READ_TIMER)
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(events(step)[1:], [information("GetPreviousSleepStatus 5\n")] * 2 +
           [information("Active")], "events")


def without_the_last_sleeps_status_the_timer_alone_tells_its_wake(machine):
    _asleep(machine)
    machine.driver.fail(READ_STATUS)
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(events(step)[1:], [information("GetPreviousSleepStatus 0\n"),
                              information("Spike_S4ToS3")], "events")


def without_the_last_sleeps_status_the_timeout_alone_tells_hibernation(machine):
    _asleep(machine)
    machine.driver.fail(READ_STATUS)
    step = hibernate_at(machine, "2026-02-02 18:10")
    expect(events(step)[1:], [information("GetPreviousSleepStatus 0\n"),
                              information("Spike_S3ToS4")], "events")


def each_question_asks_the_driver_afresh(machine):
    _asleep(machine)
    # It does not answer any more when the first question is asked for the second time.
    machine.driver.expire_timer()
    machine.driver.fail(READ_STATUS, call=3)
    step = come_back_at(machine, "2026-02-02 19:00")
    expect([text for text in step.of("driver") if "status" in text],
           2 * ["read status 0x1"] + [_failed("read status")], "calls of the driver")
    expect(events(step)[1:], [information("GetPreviousSleepStatus 1\n"),
                              information("GetPreviousSleepStatus 0\n")], "events")
    # The second question took it for the timer's wake, so it was none of the three.
    expect(events(machine.suspend())[-1].kind, "error", "a suspend where it was before")
