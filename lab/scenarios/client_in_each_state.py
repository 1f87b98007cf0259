"""A new strength and a reset of the history while the controller is in each of its states. A client
is told that its request was taken. The controller only carries it out while the machine is in use;
in any other state it reports it and goes on as before."""

from machine.registry import CURRENT, predictor_key
from machine.service_record import error, information
from steps.client import NO_RESULT, done
from steps.expect import expect
from steps.nights import events, stamped
from steps.states import (ACTIVE, BACK_TO_SLEEP, GOING_TO_HIBERNATE, OFF, SUSPENDED, UNINITIALIZED,
                          bring_to, undefined_event)

INVALID_HANDLE = 6
NOT_HEARD = error("SetServiceStatus error 6\n")

# What the history file holds until a reset.
KEPT = b"a history of 16."


def _ask_both(machine):
    """The events of both requests."""
    machine.write_data_file("zs7state.dat", KEPT)
    strength = done(machine, "strength set 1", "The strength is now 1.\n",
                    NO_RESULT.format(1))
    reset = done(machine, "reset-history --yes", "The service has been told to forget.\n")
    expect(machine.registry.read("Strength", predictor_key(CURRENT)), "1", "Strength")
    return events(strength), events(reset)


def _expect_reported(machine, state):
    bring_to(machine, state)
    feedback = machine.setting("ServiceFeedback")
    strength, reset = _ask_both(machine)
    expect(strength, undefined_event(state, "5/1/2026 12:0:0 - ParamChanging"),
           "events of a new strength")
    expect(reset, undefined_event(state, "5/1/2026 12:0:0 - ResetHistory"), "events of a reset")
    expect(machine.data_file("zs7state.dat"), KEPT, "the history")
    expect((machine.setting("DisablePrediction"), machine.setting("ServiceFeedback")),
           (None, feedback), "settings")


def _expect_next(machine, deed, event, state):
    machine.clock.pass_until("2026-01-05 13:00")
    found = events(deed())
    expect((found[0], found[-1]), (information(stamped(machine, event)), information(state)),
           "first and last event of what comes next")


def in_use_it_does_both(machine):
    bring_to(machine, ACTIVE)
    strength, reset = _ask_both(machine)
    expect(strength, [information("5/1/2026 12:0:0 - ParamChanging"),
                      information("Predictor disabled 0\n")], "events of a new strength")
    expect(reset, [information("5/1/2026 12:0:0 - ResetHistory")], "events of a reset")
    expect(machine.data_file("zs7state.dat"), None, "the history")
    expect((machine.setting("DisablePrediction"), machine.setting("ServiceFeedback")), (0, 1),
           "settings")
    _expect_next(machine, machine.suspend, "Suspend", SUSPENDED)


def suspended_it_does_neither(machine):
    _expect_reported(machine, SUSPENDED)
    _expect_next(machine, machine.resume, "Activating", ACTIVE)


def on_the_way_into_hibernation_it_does_neither(machine):
    _expect_reported(machine, GOING_TO_HIBERNATE)
    _expect_next(machine, machine.suspend, "Suspend", SUSPENDED)


def on_the_way_back_to_sleep_it_does_neither(machine):
    _expect_reported(machine, BACK_TO_SLEEP)
    _expect_next(machine, machine.suspend, "Suspend", SUSPENDED)


def after_a_stop_that_did_not_stop_it_does_neither(machine):
    _expect_reported(machine, UNINITIALIZED)
    _expect_next(machine, machine.resume, "Activating", ACTIVE)


def once_off_it_does_neither(machine):
    _expect_reported(machine, OFF)
    event = "5/1/2026 13:0:0 - Activating"
    machine.clock.pass_until("2026-01-05 13:00")
    # The answer says again that the service has stopped, after which the system ends its process.
    machine.calls.fail("SetServiceStatus", INVALID_HANDLE)
    expect(events(machine.resume()), [*undefined_event(OFF, event), NOT_HEARD], "what comes next")
