"""Life without the wake timer's driver, with the system's own timer in its place."""

from machine.client_view import FROM_S3, TIMER_WAKE
from machine.clock import local
from machine.machine_state import POWER_SOURCES
from machine.registry import DEFAULT, predictor_key
from machine.service_record import information
from machine.system_timer import REASON
from steps.client import done, failed
from steps.expect import expect, expect_true
from steps.living import machine_that_knows_office_hours
from steps.nights import (come_back_at, events, expect_timeouts, hibernate_at, suspend_at,
                          wake_by_system_timer)

USERS_OWN = 180, 60
MORNING = "2026-02-03 08:00"
NOT_KNOWN = information("GetPreviousSleepStatus 0\n")
ACTIVE = information("Active")
BACK_TO_SLEEP = ["SetSuspendState 0 0 0"]
STATUS_NOT_IMPLEMENTED = 0xC0000002
STATE = "WindowsTimerState"
NOT_ARMED = ("the timer was not armed: the service has no driver device, or the driver did not "
             "take it")
WAKES_NOTHING = ("it wakes nothing: Windows' timer, which is in the driver's place, knows only "
                 "durations, and only in timer 1")


def _choose_timer(machine, wake_timer="windows"):
    machine.driver.hide()
    machine.registry.write("WakeTimer", wake_timer, predictor_key(DEFAULT))


def _asleep(machine):
    """Since six in the evening, with the timer armed for eight in the morning."""
    machine.driver.hide()
    machine_that_knows_office_hours(machine)
    # Until now no timer woke the machine, as its user came at the times that it would be armed for.
    _choose_timer(machine)
    machine.restart_service()
    return machine.suspend()


def _hibernated(machine):
    step = _asleep(machine)
    hibernate_at(machine, "2026-02-02 18:10")
    machine.suspend()
    return step


def _expect_armed_until(machine, time):
    due = None if time is None else local(time)
    expect(machine.timer.due, due, "when the timer is due")


def _expect_awake(machine, step, what):
    expect((events(step)[-1], step.of("suspend")), (ACTIVE, []), what)
    expect_timeouts(machine, USERS_OWN)


def a_night_with_the_systems_timer(machine):
    step = _asleep(machine)
    expect(step.of("timer"), [f"arm {int(local(MORNING).timestamp())}"], "what is armed")
    expect((machine.timer.wakes_the_machine, machine.timer.reason), (True, REASON),
           "what the system is told")
    expect_timeouts(machine, (10, 10), cached=USERS_OWN)

    step = hibernate_at(machine, "2026-02-02 18:10")
    expect(events(step)[1:], [NOT_KNOWN, information("Spike_S3ToS4")], "wake into hibernation")
    step = suspend_at(machine, "2026-02-02 18:10:30")
    _expect_armed_until(machine, "2026-02-03 07:59:30")

    step = wake_by_system_timer(machine)
    expect(events(step)[1:], [NOT_KNOWN, information("Spike_S4ToS3")], "the timer's wake")
    expect(step.of("suspend"), BACK_TO_SLEEP, "back to sleep")
    expect_timeouts(machine, (610, 610), cached=USERS_OWN)
    step = suspend_at(machine, "2026-02-03 07:59:50")
    expect(step.of("timer"), [], "what is armed for the second sleep")
    # Right after the timer's wake, when it could most easily be taken for another one.
    step = come_back_at(machine, "2026-02-03 08:00:20")
    _expect_awake(machine, step, "the user's return")
    _expect_armed_until(machine, None)
    expect(step.of("driver", "device"), [], "what the driver is asked")


def a_user_who_comes_earlier_finds_the_timer_cancelled(machine):
    _hibernated(machine)
    step = come_back_at(machine, "2026-02-02 21:00")
    _expect_awake(machine, step, "the user's return")
    expect(step.of("timer"), ["cancel"], "the system's timer")
    _expect_armed_until(machine, None)


def a_user_who_comes_long_after_a_forbidden_wake_is_not_put_to_sleep(machine):
    for source in POWER_SOURCES:
        machine.schemes.set("wake-timers", 0, source)
    _hibernated(machine)
    _expect_armed_until(machine, MORNING)
    machine.clock.pass_until("2026-02-03 10:00", awake=False)
    machine.timer.fire()
    step = machine.resume()
    _expect_awake(machine, step, "the user's return")
    step = suspend_at(machine, "2026-02-03 10:10")
    step = come_back_at(machine, "2026-02-03 10:11")
    _expect_awake(machine, step, "the return after a second sleep")


def a_user_who_comes_when_a_forbidden_wake_is_due_is_not_put_to_sleep(machine):
    for source in POWER_SOURCES:
        machine.schemes.set("wake-timers", 0, source)
    _hibernated(machine)
    step = come_back_at(machine, "2026-02-03 08:00:30")
    _expect_awake(machine, step, "the user's return")


def a_timer_that_fires_in_use_ends_no_later_sleep(machine):
    _asleep(machine)
    # The user comes at the moment at which the machine would hibernate, so the service waits for
    # the timer still.
    step = hibernate_at(machine, "2026-02-02 18:10")
    expect(events(step)[-1], information("Spike_S3ToS4"), "what the user's return is taken for")
    _expect_armed_until(machine, MORNING)
    machine.clock.pass_until("2026-02-03 08:00")
    machine.timer.fire()
    suspend_at(machine, "2026-02-03 08:01")
    step = come_back_at(machine, "2026-02-03 08:01:30")
    _expect_awake(machine, step, "the return after a second sleep")


def a_clients_timer_that_fires_in_use_ends_no_later_sleep(machine):
    _choose_timer(machine)
    machine.provision()
    machine.start_service()
    done(machine, "wake raw 1 45m", "Timer 1 is armed for 45 min from now.\n")
    _expect_armed_until(machine, "2026-01-05 08:45")
    machine.clock.pass_until("2026-01-05 08:45")
    machine.timer.fire()
    machine.clock.pass_time(seconds=30)
    machine.suspend()
    step = come_back_at(machine, "2026-01-05 08:46")
    expect((events(step)[-1], step.of("suspend")), (ACTIVE, []), "the user's return")


def a_wake_two_minutes_late_is_still_the_timers(machine):
    for late, kind in (("08:02:00", "Spike_S4ToS3"), ("08:02:01", "Active")):
        if machine.service.exists():
            machine.reset()
        _hibernated(machine)
        step = come_back_at(machine, f"2026-02-03 {late}")
        expect(events(step)[-1], information(kind), f"what a wake at {late} is taken for")


def where_the_last_sleep_is_not_told_the_time_of_the_resume_decides(machine):
    for late, kind in (("08:02:00", "Spike_S4ToS3"), ("08:02:01", "Active")):
        if machine.service.exists():
            machine.reset()
        _hibernated(machine)
        machine.calls.fail("CallNtPowerInformation", STATUS_NOT_IMPLEMENTED)
        step = come_back_at(machine, f"2026-02-03 {late}")
        expect(events(step)[-1], information(kind), f"what a resume at {late} is taken for")
        machine.suspend()
        step = come_back_at(machine, "2026-02-03 08:02:30")
        _expect_awake(machine, step, "the next resume")


def a_machine_that_no_timer_wakes_counts_as_one_without(machine):
    machine.timer.cannot_wake()
    step = _asleep(machine)
    expect([text.split()[0] for text in step.of("timer")], ["arm", "cancel"], "the system's timer")
    expect(machine.setting(STATE), 2, "what clients are told")
    expect_timeouts(machine, (10, 10), cached=USERS_OWN)
    step = come_back_at(machine, MORNING)
    _expect_awake(machine, step, "the user's return at the time of the wake")


def stopping_and_switching_off_leave_no_timer_armed(machine):
    for leave in (lambda: machine.stop_service(),
                  lambda: done(machine, "disable --yes", "The feature is off.\n")):
        if machine.service.exists():
            machine.reset()
        _asleep(machine)
        _expect_armed_until(machine, MORNING)
        leave()
        expect_true("cancel" in [entry.text for entry in machine.record.all()],
                    "the timer is not cancelled")
        _expect_armed_until(machine, None)
    machine.stop_service()
    expect(machine.setting(STATE), None, "what clients are told after the stop")


def a_killed_service_begins_anew(machine):
    _asleep(machine)
    machine.service.kill()
    machine.clock.pass_until("2026-02-03 09:00", awake=False)
    step = machine.start_service()
    expect(step.of("timer"), ["create"], "the system's timer")
    _expect_armed_until(machine, None)
    expect_timeouts(machine, USERS_OWN)
    machine.suspend()
    step = come_back_at(machine, "2026-02-03 09:01")
    _expect_awake(machine, step, "the return after the first sleep")


def the_driver_comes_first(machine):
    machine.registry.write("WakeTimer", "windows", predictor_key(DEFAULT))
    machine_that_knows_office_hours(machine)
    step = machine.suspend()
    expect(machine.driver.armed_minutes, 840, "minutes that the driver is armed for")
    expect([entry for entry in machine.record.all() if entry.kind == "timer"], [],
           "the system's timer")
    expect((step.of("timer"), machine.setting(STATE)), ([], None), "the system's timer")


def without_the_value_the_systems_timer_is_not_touched(machine):
    for value in ("driver", "Windows"):
        if machine.service.exists():
            machine.reset()
        _choose_timer(machine, value)
        machine_that_knows_office_hours(machine)
        machine.suspend()
        expect([entry for entry in machine.record.all() if entry.kind == "timer"], [],
               "the system's timer")


def _expect_lines(machine, command, *lines):
    output = machine.client.run(command).output.splitlines()
    expect([line for line in lines if line not in output], [], f"lines that {command} lacks")


def status_and_check_tell_each_kind_of_machine(machine):
    machine.provision()
    machine.start_service()
    _expect_lines(machine, "status", "Machine             sleeps and hibernates",
                  "Wake timers         not enabled")
    _expect_lines(machine, "check", "ok    Driver            answers")

    machine.driver.hide()
    machine.restart_service()
    _expect_lines(machine, "status", "Machine             no driver",
                  "Wake timers         none: the driver does not answer")
    _expect_lines(machine, "check", "note  Driver            none: the machine hibernates when "
                  "predicted, but nothing wakes it ahead of its use")

    _choose_timer(machine)
    machine.restart_service()
    _expect_lines(machine, "status", "Machine             no driver but Windows' timer",
                  "Wake timers         not enabled, Windows' own")
    _expect_lines(machine, "check", "ok    Driver            none; Windows' own timer wakes the "
                  "machine in its place")

    machine.client_view.set_capability(TIMER_WAKE, FROM_S3)
    machine.schemes.set("wake-timers", 0, "DC")
    limits = ("the machine's clock does not wake it from hibernation",
              "Windows does not allow it on battery")
    _expect_lines(machine, "status", *(f"  limit             {limit}" for limit in limits))
    _expect_lines(machine, "check", "note  Driver            none, with Windows' own timer in its "
                  f"place; but {', '.join(limits)}")

    machine.timer.cannot_wake()
    failed(machine, "wake raw 1 45m", NOT_ARMED)
    _expect_lines(machine, "status",
                  "  limit             Windows says that it cannot wake this machine")


def what_wakes_nothing_is_said_when_it_is_set(machine):
    _choose_timer(machine)
    machine.provision()
    machine.start_service()
    done(machine, "wake set 0 '2126-11-21 06:30'", "Timer 0 holds 2126-11-21 06:30.\n",
         WAKES_NOTHING)
    _expect_lines(machine, "status", "  0, the alarm      2126-11-21 06:30, which wakes nothing")
    done(machine, "wake set 1 '2126-11-21 06:30'", "Timer 1 holds 2126-11-21 06:30.\n",
         WAKES_NOTHING)
    _expect_lines(machine, "status",
                  "  1, the duration   a time of the calendar, which wakes nothing")
    expect([entry.text for entry in machine.record.all() if entry.kind == "timer"], ["create"],
           "the system's timer")
    done(machine, "wake raw 1 45m", "Timer 1 is armed for 45 min from now.\n")
    machine.clock.pass_time(minutes=20)
    _expect_lines(machine, "status", "  1, the duration   25 min")
    done(machine, "enable", "The feature is on.\n")
    _expect_armed_until(machine, "2026-01-05 08:45")


def rates_wake_by_the_systems_timer_where_it_can(machine):
    limits = {
        "none": lambda: None,
        "the scheme allows only important ones": lambda: machine.schemes.set("wake-timers", 2),
        "a policy forbids them": lambda: machine.client_view.overrule("wake-timers", "AC", 0),
        "the clock does not wake from hibernation":
            lambda: machine.client_view.set_capability(TIMER_WAKE, FROM_S3),
        "the machine is on battery, where they are off": lambda: _on_battery(machine),
    }
    for what, limit in limits.items():
        if machine.service.exists():
            machine.reset()
        machine.registry.write("Predictor", "rates", predictor_key(DEFAULT))
        limit()
        step = _asleep(machine)
        expect([text.split()[0] for text in step.of("timer")], ["arm"] if what == "none" else [],
               f"the system's timer, limit: {what}")
        expect(information("Predicted Sleep restored at: never") in step.events, what != "none",
               f"whether no wake is planned, limit: {what}")


def _on_battery(machine):
    machine.schemes.set("wake-timers", 0, "DC")
    machine.set_mains(False)
