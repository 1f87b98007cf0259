"""A night from the last use of the day to the user's return, step by step."""

from machine.service_record import information
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import (come_back_at, events, expect_timeouts, hibernate_at, suspend_at,
                          wake_by_timer_at)

USERS_OWN = 180, 60
STATUS_4, STATUS_5 = (information(f"GetPreviousSleepStatus {status}\n") for status in (4, 5))
STATUS_1 = information("GetPreviousSleepStatus 1\n")
ARMED_FOR = "HW Timer Duration = {} min\n"


def _asleep(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()


def _hibernated(machine):
    _asleep(machine)
    hibernate_at(machine, "2026-02-02 18:10")
    machine.suspend()


def _woken_by_timer(machine):
    _asleep(machine)
    wake_by_timer_at(machine, "2026-02-03 08:00")


def the_systems_own_wake_into_hibernation_changes_nothing(machine):
    _asleep(machine)
    armed = machine.driver.words
    step = hibernate_at(machine, "2026-02-02 18:10")
    expect(events(step), [information("2/2/2026 18:10:0 - Activating"), STATUS_4,
                          information("Spike_S3ToS4")], "events")
    expect(step.of("setting", "scheme"), ["read 0 hibernate AC 600"], "settings")
    expect(step.of("driver"), [f"read timer 0x{armed[0]:x} 0x{armed[1]:x}", "read status 0x4",
                               "read status 0x4"], "driver")
    expect(step.traces, [
        "State Machine event: ", "2/2/2026 18:10:0 - Activating", "\n",
        "GImpl_GoingToS3: ", "false\n",
        "GImpl_GoingToS4: ", "true\n", "SuspendDuration = 600 sec, HA = 600 sec\n",
        "State Machine new state: ", "Spike_S3ToS4", "\n",
    ], "traces")
    expect_timeouts(machine, (10, 10), cached=USERS_OWN)


def the_suspend_after_it_arms_the_timer_anew(machine):
    _asleep(machine)
    hibernate_at(machine, "2026-02-02 18:10")
    machine.driver.words = 0x12345678, 0x30000000
    step = suspend_at(machine, "2026-02-02 18:10:30")
    expect(events(step), [information("2/2/2026 18:10:30 - Suspend"), information("Suspended")],
           "events")
    expect(step.traces, [
        "State Machine event: ", "2/2/2026 18:10:30 - Suspend", "\n",
        "AH_TimeStampEvent\n",
        "AH_RetryPredictedHWTimer\n",
        ARMED_FOR.format(829),
        "State Machine new state: ", "Suspended", "\n",
    ], "traces")
    expect(step.of("setting", "scheme"), [], "settings")
    expect(machine.driver.words, (0x12345678, 0xB8000000 | 829), "the driver's timer")
    expect_timeouts(machine, (10, 10), cached=USERS_OWN)


def the_timer_wakes_the_machine_and_it_goes_back_to_sleep(machine):
    _hibernated(machine)
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(events(step), [information("3/2/2026 8:0:0 - Activating"), STATUS_5,
                          information("Spike_S4ToS3")], "events")
    expect(step.traces, [
        "State Machine event: ", "3/2/2026 8:0:0 - Activating", "\n",
        "GImpl_GoingToS3: ", "true\n",
        "AH_SetNextPredictedHA\n",
        "AH_ProgramSleep\n",
        "State Machine new state: ", "Spike_S4ToS3", "\n",
    ], "traces")
    expect(step.of("setting", "scheme"), [
        "write 0 hibernate AC 36600", "activate 0", "write 0 hibernate DC 36600", "activate 0",
    ], "settings")  # until 18:10
    expect(step.of("thread", "suspend"), ["start", "SetSuspendState 0 0 0", "end"],
           "back to sleep, on a thread of its own")
    expect_timeouts(machine, (610, 610), cached=USERS_OWN)


def the_suspend_after_the_timer_wake_sets_nothing(machine):
    _woken_by_timer(machine)
    words = machine.driver.words
    step = suspend_at(machine, "2026-02-03 08:00:20")
    expect(events(step), [information("3/2/2026 8:0:20 - Suspend"), information("Suspended")],
           "events")
    expect(step.traces, [
        "State Machine event: ", "3/2/2026 8:0:20 - Suspend", "\n",
        "AH_TimeStampEvent\n",
        "State Machine new state: ", "Suspended", "\n",
    ], "traces")
    expect(step.of("setting", "scheme", "driver"), [], "settings")
    expect(machine.driver.words, words, "the driver's timer")
    expect_timeouts(machine, (610, 610), cached=USERS_OWN)


def when_nobody_comes_it_hibernates_again_without_a_timer(machine):
    _woken_by_timer(machine)
    suspend_at(machine, "2026-02-03 08:00:20")
    step = hibernate_at(machine, "2026-02-03 18:10:20")
    expect(events(step)[-1:], [information("Spike_S3ToS4")], "the last event")
    expect(step.traces[-4:-3], ["SuspendDuration = 36600 sec, HA = 36600 sec\n"], "time asleep")
    step = machine.suspend()
    expect(step.traces[3:-3], ["AH_TimeStampEvent\n"], "traces")
    expect(step.of("driver"), [], "driver")


def the_users_return_brings_the_users_own_timeouts_back(machine):
    _woken_by_timer(machine)
    suspend_at(machine, "2026-02-03 08:00:20")
    step = come_back_at(machine, "2026-02-03 08:25")
    expect(events(step), [information("3/2/2026 8:25:0 - Activating"), STATUS_1, STATUS_1,
                          information("Active")], "events")
    expect([line for line in step.traces if "AH_" in line or "GImpl" in line], [
        "GImpl_GoingToS3: ", "GImpl_GoingToS4: ",
        "GImpl_RealActivate\n", "GImpl_GoingToS3: ", "GImpl_GoingToS4: ",
        "AH_RecordHistoryEvent\n", "AH_LogEvent\n", "AH_RestoreHA\n", "AH_CancelHWTimer\n",
    ], "guards and actions")
    expect(step.of("setting", "scheme"), 2 * ["read 0 hibernate AC 36600"] + [
        "delete HA_AC", "write 0 hibernate AC 10800", "activate 0",
        "delete HA_DC", "write 0 hibernate DC 3600", "activate 0",
    ], "settings")
    expect([text for text in step.of("driver") if text.startswith("write")], [],
           "what the driver is told")
    expect_timeouts(machine, USERS_OWN)
