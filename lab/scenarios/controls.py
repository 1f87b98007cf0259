"""Controls, and what the service answers to each."""

import uuid

from machine.machine import IDLE_BACKGROUND_TASK, RESUME_BY_USER, SETTING_CHANGE, SUSPEND
from machine.service_control import (CONTINUE, INTERROGATE, PAUSE, PAUSED, RUNNING, SESSION_CHANGE,
                                     STOPPED, STOP_PENDING, sent)
from machine.service_record import error, information
from steps.expect import expect

MEANINGLESS_POWER_EVENTS = [0, 1, 5, 6, RESUME_BY_USER, 8, 9, 11, 19, 0x8012, 0x8014, 0xFFFFFFFF]


def _control(machine, control):
    """A control from the service control manager."""
    machine.service.control(control)
    return machine.take_step()


def _expect_answer(step, entries, what):
    expect(step.entries, entries, what)
    expect(step.result, 0, f"result of {what}")


def pausing_and_continuing_change_the_state_alone(machine):
    machine.provision()
    machine.start_service()
    _expect_answer(_control(machine, PAUSE), [sent(PAUSED)], "pausing")
    expect(machine.service.status().state, PAUSED, "state")

    machine.clock.pass_time(hours=1)
    step = machine.suspend()
    expect((step.events[0], step.events[-1]),
           (information("5/1/2026 9:0:0 - Suspend"), information("Suspended")), "a suspend")
    expect(step.entries[-1], sent(PAUSED), "its answer")

    _expect_answer(_control(machine, CONTINUE), [sent(RUNNING)], "continuing")
    expect(machine.service.status().state, RUNNING, "state")


def a_paused_service_can_be_stopped(machine):
    machine.provision(total_attempts=1)
    machine.start_service()
    _control(machine, PAUSE)
    expect(machine.stop_service().of("status"),
           [sent(STOP_PENDING).text, sent(STOP_PENDING, 3000).text, sent(STOPPED).text], "states")


def interrogation_and_a_change_of_session_are_answered_with_the_state_as_it_is(machine):
    machine.provision()
    machine.start_service()
    for control, state in ((INTERROGATE, RUNNING), (PAUSE, PAUSED), (INTERROGATE, PAUSED)):
        _expect_answer(_control(machine, control), [sent(state)], f"control {control}")
        for event_type in (1, 5, 6):
            _expect_answer(machine.deliver(SESSION_CHANGE, event_type, bytes(8)), [sent(state)],
                           f"session change {event_type}")


def an_unknown_control_is_reported_and_answered(machine):
    machine.provision()
    machine.start_service()
    _expect_answer(_control(machine, 200), [error("Unrecognized opcode 200\n"), sent(RUNNING)],
                   "a control from the service control manager")
    for control, shown in ((0, 0), (6, 6), (12, 12), (15, 15), (99, 99), (0xFFFFFFFF, -1)):
        _expect_answer(machine.deliver(control),
                       [error(f"Unrecognized opcode {shown}\n"), sent(RUNNING)], str(control))


def power_events_without_meaning_are_only_answered(machine):
    machine.provision()
    machine.start_service()
    machine.clock.pass_time(days=2)
    for event_type in MEANINGLESS_POWER_EVENTS:
        _expect_answer(machine.power_event(event_type, IDLE_BACKGROUND_TASK.bytes_le),
                       [sent(RUNNING)], f"power event {event_type}")


def changes_of_other_power_settings_are_only_answered(machine):
    machine.provision()
    machine.start_service()
    machine.clock.pass_time(days=2)
    _expect_answer(machine.power_event(SETTING_CHANGE), [sent(RUNNING)], "a change without data")
    for place in range(16):
        other = bytearray(IDLE_BACKGROUND_TASK.bytes_le)
        other[place] ^= 1
        _expect_answer(machine.notify_idle(uuid.UUID(bytes_le=bytes(other))), [sent(RUNNING)],
                       f"a change of a setting that differs in byte {place}")
    expect(machine.notify_idle().events[0], information("7/1/2026 8:0:0 - Saving"), "the right one")


def without_a_controller_events_are_only_answered(machine):
    machine.provision(total_attempts=1)
    machine.start_service()
    machine.clock.pass_time(days=2)
    _expect_answer(machine.power_event(SUSPEND), [sent(RUNNING)], "a suspend")
    _expect_answer(machine.notify_idle(), [sent(RUNNING)], "an idle machine")
    _expect_answer(machine.shut_down(), [sent(STOPPED)], "a shutdown")
