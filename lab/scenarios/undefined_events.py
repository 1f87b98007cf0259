"""Events that mean nothing in the state that the controller is in. They are reported and change
nothing: an event that the state knows still does what it should."""

from machine.service_control import STOP
from machine.service_record import error, information
from steps.expect import expect
from steps.nights import events, hibernate_at, stamped, wake_by_timer_at

ACCESS_DENIED = 5
NOT_HEARD = error("SetServiceStatus error 5\n")
CANNOT_STOP = error("StopRPCServer: RpcMgmtStopServerListening() failed!")


def _stop(machine):
    """A stop after which the service goes on, because its server does."""
    machine.calls.fail("RpcMgmtStopServerListening", 1, times=1)
    return machine.deliver(STOP)


def _idle_after_a_day(machine):
    machine.clock.pass_time(days=1, seconds=1)
    return machine.notify_idle()


EVENTS = {
    "Activating": lambda machine: machine.resume(),
    "Suspend": lambda machine: machine.suspend(),
    "ShuttingDown": lambda machine: machine.shut_down(),
    "Uninitializing": _stop,
    "Saving": _idle_after_a_day,
}


def _active(machine):
    """In use for an hour. From now on the service control manager is told of no state, since it
    would end a service that has stopped."""
    machine.provision()
    machine.start_service()
    machine.calls.fail("SetServiceStatus", ACCESS_DENIED)
    machine.clock.pass_time(hours=1)


def _suspended(machine):
    _active(machine)
    machine.suspend()


def _events(step):
    *rest, last = events(step)
    expect(last, NOT_HEARD, "last event")
    return rest


def _expect_undefined(machine, state, *names):
    for name in names:
        step = EVENTS[name](machine)
        event = stamped(machine, name)
        report = f"State Machine Error: State: {state}, Undefined event: {event}"
        stop = [CANNOT_STOP] if name == "Uninitializing" else []
        expect(_events(step), [information(event), error(report), *stop], f"events of {name}")
        expect(step.traces, ["State Machine event: ", event, "\n", report], f"traces of {name}")
        expect(step.of("setting", "scheme", "driver", "thread"), [], f"what {name} did")


def a_controller_in_use_is_not_activated_again(machine):
    _active(machine)
    _expect_undefined(machine, "Active", "Activating")
    expect(_events(machine.suspend())[-1], information("Suspended"), "state after a suspend")


def a_suspended_controller_is_only_activated(machine):
    _suspended(machine)
    _expect_undefined(machine, "Suspended", "Suspend", "ShuttingDown", "Uninitializing", "Saving")
    expect(_events(machine.resume())[-1], information("Active"), "state after a resume")


def on_the_way_into_hibernation_it_neither_stops_nor_saves(machine):
    _suspended(machine)
    hibernate_at(machine, "2026-01-05 12:00")
    _expect_undefined(machine, "Spike_S3ToS4", "Uninitializing", "Saving")
    expect(_events(machine.suspend())[-1], information("Suspended"), "state after a suspend")


def on_the_way_back_to_sleep_it_neither_stops_nor_saves(machine):
    _suspended(machine)
    wake_by_timer_at(machine, "2026-01-05 12:00")
    _expect_undefined(machine, "Spike_S4ToS3", "Uninitializing", "Saving")
    expect(_events(machine.suspend())[-1], information("Suspended"), "state after a suspend")


def once_uninitialized_it_is_only_activated(machine):
    _active(machine)
    step = _stop(machine)
    expect(_events(step), [information("5/1/2026 9:0:0 - Uninitializing"),
                          information("Uninitialized"), CANNOT_STOP], "events of a stop")
    _expect_undefined(machine, "Uninitialized", "Suspend", "ShuttingDown", "Uninitializing",
                      "Saving")
    expect(_events(machine.resume())[-1], information("Active"), "state after a resume")


def once_off_it_takes_nothing(machine):
    _active(machine)
    step = machine.shut_down()
    expect(_events(step), [information("5/1/2026 9:0:0 - ShuttingDown"), information("Off")],
           "events of a shutdown")
    _expect_undefined(machine, "Off", *EVENTS)
