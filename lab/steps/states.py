"""The states of the sleep controller, and how to get there."""

from machine.lab_device import ENDED_BY_TIMER, WENT_ON_TO_HIBERNATION
from machine.machine import Step
from machine.service_control import STOP
from machine.service_record import error, information

UNINITIALIZED, ACTIVE, SUSPENDED, OFF = "Uninitialized", "Active", "Suspended", "Off"
GOING_TO_HIBERNATE, BACK_TO_SLEEP = "Spike_S3ToS4", "Spike_S4ToS3"


def bring_to(machine, state):
    """Starts the service at eight, on a machine that has learnt nothing, and brings its controller
    to a state. It is noon then."""
    machine.provision()
    machine.start_service()
    machine.clock.pass_until("2026-01-05 08:30")
    _WAYS[state](machine)
    machine.clock.set("2026-01-05 12:00")
    machine.take_step()


def stop(machine):
    """Stops the service, even when the service control manager would not ask it to."""
    done_before = len(machine.record.all())
    # Keeps the process from ending before the answer of its handler has arrived.
    with machine.calls.held("UnregisterPowerSettingNotification",
                            lambda: machine.deliver(STOP)):
        pass
    machine.finish_stop()
    return Step(machine.record.all()[done_before:])


def event(text, state):
    """What the event log shows of an event, with the state that it leads to."""
    return [information(text), information(state)]


def undefined_event(state, text):
    """What the event log shows of an event that a state does not know."""
    return [information(text),
            error(f"State Machine Error: State: {state}, Undefined event: {text}")]


def _stop_in_vain(machine):
    machine.calls.fail("RpcMgmtStopServerListening", 1715, times=1)
    machine.begin_stop()


def _hibernate(machine):
    machine.suspend()
    machine.driver.set_previous_sleep_status(WENT_ON_TO_HIBERNATION)
    minutes_on_mains, _ = machine.schemes.hibernate_after
    machine.clock.pass_time(minutes=minutes_on_mains, awake=False)
    machine.resume()


def _wake_by_timer(machine):
    machine.suspend()
    machine.driver.set_previous_sleep_status(ENDED_BY_TIMER)
    machine.driver.expire_timer()
    machine.resume()


def _shut_down_unheard(machine):
    # Once the system knows that a service has stopped, it ends its process.
    machine.calls.fail("SetServiceStatus", 6, times=1)
    machine.shut_down()


_WAYS = {
    UNINITIALIZED: _stop_in_vain,
    ACTIVE: lambda machine: None,
    SUSPENDED: lambda machine: machine.suspend(),
    GOING_TO_HIBERNATE: _hibernate,
    BACK_TO_SLEEP: _wake_by_timer,
    OFF: _shut_down_unheard,
}
