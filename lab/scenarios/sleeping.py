"""What the service does when the machine goes to sleep and when its user comes back."""

from machine.service_record import information
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import events


def a_suspend_hibernates_at_the_end_of_use_and_wakes_before_the_next(machine):
    machine_that_knows_office_hours(machine)
    machine.driver.words = 0x12345678, 0x30000000
    step = machine.suspend()
    expect(step.events, [
        information("2/2/2026 18:0:0 - Suspend"),
        information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n"),
        information("Predicted Sleep restored at: Tue Feb  3 08:00:00 2026\n"),
        information("Predicted Hibernate next at: Tue Feb  3 18:10:00 2026\n"),
        information("Suspended"),
    ], "events")
    expect(step.of("scheme", "setting", "driver"), [
        "read 0 hibernate AC 10800",
        "write HA_AC 180",
        "read 0 hibernate DC 3600",
        "write HA_DC 60",
        "write 0 hibernate AC 600",
        "activate 0",
        "write 0 hibernate DC 600",
        "activate 0",
        "read timer 0x12345678 0x30000000",
        "write timer 0x12345678 0xb8000348",  # 14 hours in minutes, enabled, its own bits kept
    ], "what was set, in order")
    expect(machine.driver.words, (0x12345678, 0xB8000348), "the driver's timer")


def a_suspend_traces_each_step(machine):
    machine_that_knows_office_hours(machine)
    expect(machine.suspend().traces, [
        "State Machine event: ", "2/2/2026 18:0:0 - Suspend", "\n",
        "AH_RecordHistoryEvent\n",
        "AH_TimeStampEvent\n",
        "AH_SetPredictedSettings\n",
        "Now: Mon Feb  2 18:00:00 2026\n",
        "Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n",
        "Predicted Sleep restored at: Tue Feb  3 08:00:00 2026\n",
        "Predicted Hibernate next at: Tue Feb  3 18:10:00 2026\n",
        "HW Timer Duration = 840 min\n",
        "AH_LogEvent\n",
        "State Machine new state: ", "Suspended", "\n",
    ], "traces")


def a_real_resume_gives_the_users_own_timeouts_back(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    expect(machine.schemes.hibernate_after, (10, 10), "timeouts asleep")

    machine.clock.pass_until("2026-02-03 07:00", awake=False)
    step = machine.resume()
    expect(events(step), [
        information("3/2/2026 7:0:0 - Activating"),
        information("GetPreviousSleepStatus 0\n"),
        information("GetPreviousSleepStatus 0\n"),
        information("Active"),
    ], "events")
    expect(step.of("setting", "scheme")[-6:], [
        "delete HA_AC", "write 0 hibernate AC 10800", "activate 0",
        "delete HA_DC", "write 0 hibernate DC 3600", "activate 0",
    ], "what was given back, in order")
    expect(machine.schemes.hibernate_after, (180, 60), "timeouts in use")
    expect((machine.setting("HA_AC"), machine.setting("HA_DC")), (None, None), "the cache")


def a_prediction_that_is_switched_off_sets_nothing(machine):
    machine_that_knows_office_hours(machine, DisablePrediction=1)
    words = machine.driver.words
    step = machine.suspend()
    expect(step.events[1:-1], [
        information("Predicted Hibernate at: no prediction"),
        information("Predicted Sleep restored at: never"),
        information("Predicted Hibernate next at: no prediction"),
    ], "predictions")
    expect(step.of("scheme", "setting", "driver"), [], "what was set")
    expect(machine.driver.words, words, "the driver's timer")
