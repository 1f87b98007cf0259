"""dozewellctl chooses which of the optimizer's results the service uses."""

from machine.registry import CURRENT, DEFAULT, predictor_key
from machine.service_record import information
from steps.client import NO_RESULT, done, failed
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import events

ACCESS_DENIED = 5
HERE, FALLBACK = predictor_key(CURRENT), predictor_key(DEFAULT)
PARAMETERS = ("FirstLastWeight", "SecondLastWeight", "AgregationWeight", "StrengthHigh",
              "StrengthLow", "DayGrouping")
CHANGING = information("5/1/2026 8:0:0 - ParamChanging")
NOT_STORED = "the service could not store the strength"


def _running(machine, **settings):
    machine.provision(**settings)
    machine.start_service()


def _predictor_is(state):
    return information(f"Predictor disabled {state}\n")


def _chosen(machine):
    """The settings that a choice changes."""
    return (machine.setting("DisablePrediction"), machine.setting("ServiceFeedback"),
            [machine.registry.read(name, HERE) for name in PARAMETERS])


# GetStrength

def the_strength_is_what_its_text_begins_with(machine):
    _running(machine)
    done(machine, "strength get", "The strength is 0.\n")
    for key, value, strength in ((FALLBACK, "3", 3), (HERE, "7 of 9", 7), (HERE, "-2", -2),
                                 (HERE, "high", 0), (HERE, 12, 12), (HERE, b"5", 0)):
        machine.registry.write("Strength", value, key)
        step = done(machine, "strength get --json", f'{{"strength":{strength}}}\n')
        expect(step.entries, [], f"what was done to read {value}")


# SetStrength

def a_strength_that_has_a_result_adopts_it(machine):
    _running(machine)
    machine.registry.write("Best1", "10,20,70,90,60,2", HERE)
    step = done(machine, "strength set 1", "The strength is now 1.\n")
    expect(events(step), [CHANGING, _predictor_is(0)], "events")
    expect(_chosen(machine), (0, 2, ["10", "20", "70", "90", "60", "2"]), "settings")
    expect(machine.registry.read("Strength", HERE), "1", "Strength")


def a_strength_without_a_result_changes_no_parameter(machine):
    _running(machine, DisablePrediction=1)
    step = done(machine, "strength set 2147483647 --json", '{"strength":2147483647}\n',
                NO_RESULT.format(2147483647))
    expect(events(step), [CHANGING, _predictor_is(0)], "events")
    expect(_chosen(machine), (0, 0, 6 * [None]), "settings")
    expect(machine.registry.read("Strength", HERE), "2147483647", "Strength")


def a_strength_for_which_nothing_was_good_enough_ends_predictions(machine):
    machine_that_knows_office_hours(machine)
    machine.registry.write("Best0", "-1", HERE)
    machine.registry.write("Best1", "20,20,60,50,30,12", HERE)
    step = done(machine, "strength set 0", "The strength is now 0.\n")
    expect(events(step)[-1], _predictor_is(1), "last event")
    expect(_chosen(machine), (1, 3, 6 * [None]), "settings")
    expect(events(machine.suspend())[1],
           information("Predicted Hibernate at: no prediction"), "a suspend")
    machine.resume()
    done(machine, "strength set 1", "The strength is now 1.\n")
    expect(events(machine.suspend())[1],
           information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n"), "the next one")


def parameters_that_are_adopted_count_at_once(machine):
    machine_that_knows_office_hours(machine)
    machine.registry.write("Best4", "20,20,60,50,0,12", HERE)  # nothing is ever idle
    done(machine, "strength set 4", "The strength is now 4.\n")
    expect(events(machine.suspend())[1],
           information("Predicted Hibernate at: no prediction"), "a suspend")


def without_a_controller_the_strength_is_only_stored(machine):
    _running(machine, total_attempts=10)
    step = done(machine, "strength set 1", "The strength is now 1.\n", NO_RESULT.format(1))
    expect((step.events, step.traces), ([], []), "what the controller did")
    expect(_chosen(machine), (None, None, 6 * [None]), "settings")
    done(machine, "strength get", "The strength is 1.\n")


def a_strength_that_cannot_be_stored_is_refused(machine):
    _running(machine)
    machine.registry.write("Strength", "3", HERE)
    for call in "RegCreateKeyExA", "RegSetValueExA":
        machine.calls.fail(call, ACCESS_DENIED)
        step = failed(machine, "strength set 1", NOT_STORED)
        machine.calls.succeed(call)
        # The controller looks for the strength's result all the same.
        expect(events(step), [CHANGING, _predictor_is(0)], f"events without {call}")
        done(machine, "strength get", "The strength is 3.\n")


def a_strength_of_a_foreign_type_is_left_alone(machine):
    _running(machine)
    machine.registry.write("Strength", b"3", HERE)
    failed(machine, "strength set 1 --json", NOT_STORED)
    expect(machine.registry.read("Strength", HERE), b"3", "Strength")
    machine.registry.write("Strength", 3, HERE)
    done(machine, "strength set 1", "The strength is now 1.\n", NO_RESULT.format(1))
    expect(machine.registry.read("Strength", HERE), 1, "Strength as a number")
