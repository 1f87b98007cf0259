"""Wakes in the night: which are the system's own, and what happens when the way back to sleep
fails."""

from datetime import timedelta

from machine.service_record import information, success
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import (come_back_at, events, expect_timeouts, hibernate_at, suspend_at,
                          wake_by_timer_at)

USERS_OWN = 180, 60
STATUS_5 = information("GetPreviousSleepStatus 5\n")


def _asleep(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()


def a_resume_during_a_spike_is_taken_for_the_users_without_asking_the_driver(machine):
    _asleep(machine)
    wake_by_timer_at(machine, "2026-02-03 08:00")
    step = come_back_at(machine, "2026-02-03 08:01")
    expect(events(step), [information("3/2/2026 8:1:0 - Activating"), information("Active")],
           "events out of the timer's wake")
    expect(step.of("driver"), [], "driver")
    expect_timeouts(machine, USERS_OWN)

    suspend_at(machine, "2026-02-03 18:00")
    hibernate_at(machine, "2026-02-03 18:10")
    step = come_back_at(machine, "2026-02-03 18:11")
    expect(events(step), [information("3/2/2026 18:11:0 - Activating"), information("Active")],
           "events out of the wake into hibernation")
    expect_timeouts(machine, USERS_OWN)


def a_wake_is_the_systems_own_within_a_minute_of_the_timeout(machine):
    machine.provision(DisablePrediction=1)
    machine.schemes.hibernate_after = 180, 60
    machine.start_service()
    for seconds, state in ((-61, "Active"), (-60, "Spike_S3ToS4"), (0, "Spike_S3ToS4"),
                           (60, "Spike_S3ToS4"), (61, "Active")):
        machine.suspend()
        step = hibernate_at(machine, machine.clock.now + timedelta(minutes=180, seconds=seconds))
        expect(events(step)[-1], information(state), f"state after {seconds} seconds more")
        if state != "Active":
            come_back_at(machine, machine.clock.now + timedelta(seconds=1))


def a_sleep_that_fails_is_reported(machine):
    _asleep(machine)
    machine.calls.fail("SetSuspendState", 5, times=1)
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(sorted(events(step)), sorted([
        information("3/2/2026 8:0:0 - Activating"), STATUS_5, information("Spike_S4ToS3"),
        success("Failed to move the system to sleep")]), "events")
    expect(events(machine.resume())[-1], information("Active"), "what the next resume leads to")


def a_sleep_without_a_thread_to_ask_for_it_is_left_out(machine):
    _asleep(machine)
    machine.calls.fail("CreateThread", 8, times=1)
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(events(step), [information("3/2/2026 8:0:0 - Activating"), STATUS_5,
                          information("Spike_S4ToS3")], "events")
    expect(step.of("suspend"), [], "sleep")
    expect_timeouts(machine, (610, 610), cached=USERS_OWN)
