"""dozewellctl switches the feature on and off, and with it the driver's timers."""

import json

from machine.lab_device import ENABLED, READ_TIMER, WRITE_TIMER
from machine.registry import BRANDING, CURRENT, DEFAULT, predictor_key
from machine.service_control import CONTINUE, PAUSE
from machine.service_record import information
from steps.client import DONE, MISUSED, NO_DRIVER, done, failed
from steps.expect import expect, expect_true
from steps.living import machine_that_knows_office_hours
from steps.nights import events

ACCESS_DENIED, E_FAIL = 5, 0x80004005
NOT_ENABLED = 0x12345678, 0x30000000
BOTH_ENABLED = 0x92345678, 0xB0000000
OR_NOT_STARTED = ", or the controller could not be started"
STARTED_AT_EIGHT = [information("5/1/2026 8:0:0 - Activating"), information("Active")]


def _running(machine, total_attempts=0, current_attempt=0, **settings):
    machine.provision(total_attempts, current_attempt, **settings)
    return machine.start_service()


def _expect_ping(machine):
    answer = machine.client.run("ping --json")
    expect((answer.exit_code, answer.error), (DONE, ""), "exit code and error of ping")
    expect_true(json.loads(answer.output)["milliseconds"] > 0, "ping took no time")
    expect(answer.step.entries, [], "what the service did for a ping")


# Ping

def a_ping_is_answered_with_its_duration(machine):
    _running(machine)
    answer = machine.client.run("ping")
    expect((answer.exit_code, answer.error), (DONE, ""), "exit code and error")
    start, _, rest = answer.output.partition(", in ")
    milliseconds, _, end = rest.partition(" ")
    expect((start, end), ("The service answers", "ms.\n"), "words")
    expect_true(float(milliseconds) > 0, "it took no time")
    _expect_ping(machine)


def a_ping_is_answered_by_a_service_that_is_paused_or_has_no_controller(machine):
    _running(machine, total_attempts=10)
    machine.service.control(PAUSE)
    machine.take_step()
    _expect_ping(machine)
    machine.service.control(CONTINUE)


# GetDriverEnabled

def the_driver_counts_as_enabled_when_one_of_its_timers_is(machine):
    _running(machine)
    for words, is_enabled in (((0, 0), False), ((~ENABLED, ~ENABLED), False), ((ENABLED, 0), True),
                              ((0, ENABLED), True), (BOTH_ENABLED, True)):
        words = tuple(word & 0xFFFFFFFF for word in words)
        machine.driver.words = words
        step = done(machine, "driver --json",
                    f'{{"driverEnabled":{"true" if is_enabled else "false"}}}\n')
        expect(step.of("driver"), [f"read timer 0x{words[0]:x} 0x{words[1]:x}"], "driver")
    done(machine, "driver", "The driver's wake timers are enabled.\n")
    machine.driver.words = NOT_ENABLED
    done(machine, "driver", "The driver's wake timers are not enabled.\n")


def without_a_driver_that_answers_nothing_is_known_of_it(machine):
    _running(machine)
    machine.driver.fail(READ_TIMER)
    failed(machine, "driver", NO_DRIVER)
    machine.driver.hide()
    machine.restart_service()
    failed(machine, "driver --json", NO_DRIVER)


# SetFeatureEnabled

def enabling_starts_the_controller_and_opens_the_start_gate(machine):
    expect(events(_running(machine, total_attempts=10, current_attempt=2)), [], "events")
    machine.driver.words = NOT_ENABLED
    step = done(machine, "enable", "The feature is on.\n")
    expect(events(step), STARTED_AT_EIGHT, "events")
    expect(step.of("setting")[-2:], ["write CurrentAttempt 10", "write EnableZ7Feature 1"],
           "settings")
    expect(step.of("driver"), ["read timer 0x12345678 0x30000000",
                               "write timer 0x92345678 0xb0000000"], "driver")
    machine.clock.pass_until("2026-01-05 09:00")
    expect(events(machine.restart_service())[-2:],
           [information("5/1/2026 9:0:0 - Activating"), information("Active")],
           "events of the next start")


def enabling_where_no_attempt_was_ever_counted_sets_ten(machine):
    _running(machine, total_attempts=None, current_attempt=None)
    step = done(machine, "enable --json", '{"featureEnabled":true}\n')
    expect(events(step), STARTED_AT_EIGHT, "events")
    expect(machine.setting("CurrentAttempt"), 10, "CurrentAttempt")


def enabling_what_is_on_enables_the_timers_alone(machine):
    _running(machine, total_attempts=3, current_attempt=7)
    machine.driver.words = NOT_ENABLED
    step = done(machine, "enable", "The feature is on.\n")
    expect(events(step), [], "events")
    expect(step.of("setting"), ["write EnableZ7Feature 1"], "settings")
    expect(machine.driver.words, BOTH_ENABLED, "the driver's timers")


def disabling_ends_the_controller_for_good(machine):
    _running(machine)
    machine.driver.words = BOTH_ENABLED
    step = done(machine, "disable --yes", "The feature is off.\n")
    expect(events(step), [], "events")
    expect(step.of("setting"), ["write EnableZ7Feature 0"], "settings")
    expect(machine.driver.words, NOT_ENABLED, "the driver's timers")
    machine.clock.pass_until("2026-01-05 18:00")
    for step in machine.suspend(), machine.resume(), machine.restart_service():
        expect(events(step), [], "events afterwards")
    step = done(machine, "disable --json --yes", '{"featureEnabled":false}\n')
    expect(step.of("setting"), ["write EnableZ7Feature 0"], "settings of another time")


def nothing_is_switched_off_where_nobody_can_be_asked(machine):
    machine_that_knows_office_hours(machine)
    why = ("disable asks first, and there is no terminal to ask at; --yes does not ask. The "
           "service will lose what it has learnt since it last saved that; {}. To keep it, run net "
           "stop DozewellService, which saves it, and net start DozewellService first, as "
           "administrator.")
    step = failed(machine, "disable", why.format("nothing is saved yet"), MISUSED)
    expect(step.events, [], "events")
    expect(machine.setting("EnableZ7Feature"), None, "EnableZ7Feature")
    machine.stop_service()
    machine.start_service()
    failed(machine, "disable", why.format("what is saved ends at 2026-02-02 08:00:00"), MISUSED)


def what_was_disabled_can_be_enabled_again(machine):
    _running(machine)
    done(machine, "disable --yes", "The feature is off.\n")
    machine.clock.pass_until("2026-01-05 09:00")
    step = done(machine, "enable", "The feature is on.\n")
    expect(events(step), [information("5/1/2026 9:0:0 - Activating"), information("Active")],
           "events")
    expect(events(machine.suspend())[-1], information("Suspended"), "state after a suspend")


def _expect_switched_without_driver(machine, why):
    for command, switched, value, more in (("disable --yes", "off", 0, ""),
                                           ("enable", "on", 1, OR_NOT_STARTED)):
        machine.driver.words = NOT_ENABLED
        step = failed(machine, command, f"the feature is {switched} now, but the driver's timers "
                                        f"were not switched: {why}{more}")
        expect(events(step), STARTED_AT_EIGHT if value else [], f"events of {command}")
        expect(machine.setting("EnableZ7Feature"), value, f"EnableZ7Feature after {command}")
        expect(machine.driver.words, NOT_ENABLED, "the driver's timers")


def without_a_driver_the_feature_is_switched_all_the_same(machine):
    machine.driver.hide()
    _running(machine)
    _expect_switched_without_driver(machine, NO_DRIVER)


def with_a_driver_that_cannot_be_read_the_feature_is_switched_all_the_same(machine):
    _running(machine)
    machine.driver.fail(READ_TIMER)
    _expect_switched_without_driver(machine, NO_DRIVER)


def a_driver_that_fails_between_its_two_calls_is_told_from_one_that_is_absent(machine):
    _running(machine)
    machine.driver.fail(WRITE_TIMER)
    machine.driver.words = BOTH_ENABLED
    failed(machine, "disable --yes",
           "the feature is off now, but the driver's timers were not switched: "
           "the driver did not take it")
    expect(machine.setting("EnableZ7Feature"), 0, "EnableZ7Feature")
    expect(machine.driver.words, BOTH_ENABLED, "the driver's timers")


def a_switch_that_cannot_be_stored_holds_until_the_service_ends(machine):
    _running(machine)
    for call in "RegCreateKeyExW", "RegSetValueExW":
        machine.calls.fail(call, ACCESS_DENIED)
        done(machine, "disable --yes", "The feature is off.\n")
        expect(events(machine.resume()), [], f"events of a resume without {call}")
        expect(machine.setting("EnableZ7Feature"), None, f"EnableZ7Feature without {call}")
        machine.calls.succeed(call)
        expect(events(machine.restart_service()), STARTED_AT_EIGHT, "events of the next start")


def a_switch_that_neither_registry_nor_driver_takes_is_refused(machine):
    _running(machine, EnableZ7Feature=1)
    machine.calls.fail("RegSetValueExW", ACCESS_DENIED)
    machine.driver.fail(WRITE_TIMER)
    failed(machine, "disable --yes", "the service could not switch the feature")


# SetFeatureEnabled when the engine throws

def settings_that_make_no_controller_are_told_and_all_else_is_switched(machine):
    _running(machine, total_attempts=10, EnableZ7Feature=0)
    section = predictor_key(DEFAULT)
    for name, why in (("DaysInCycle", "ArbitraryCycleProbabilityTracker - wrong configurations"),
                      ("FirstLastWeight", "No weigths specified")):
        value = machine.registry.read(name, section)
        machine.registry.delete(name, section)
        for form in "", " --json":
            machine.driver.words = NOT_ENABLED
            step = failed(machine, "enable" + form, r"the controller cannot be built: "
                          rf"SOFTWARE\Corisk\Z7: {name} is missing: {why}")
            expect(step.events, [], f"events without {name}")
            expect(machine.driver.words, BOTH_ENABLED, f"the driver's timers without {name}")
        _expect_ping(machine)
        machine.registry.write(name, value, section)
    expect((machine.setting("EnableZ7Feature"), machine.setting("CurrentAttempt")), (1, 10),
           "settings")
    expect(events(done(machine, "enable", "The feature is on.\n")), STARTED_AT_EIGHT,
           "events with the settings repaired")


def a_controller_that_only_the_service_cannot_build_is_told_as_well(machine):
    _running(machine, total_attempts=10, EnableZ7Feature=0)
    machine.calls.fail("SHGetKnownFolderPath", E_FAIL)
    step = failed(machine, "enable",
                  "the feature is on now, but the driver's timers were not switched: "
                  "the driver did not take it" + OR_NOT_STARTED)
    expect(step.events, [], "events")
    _expect_ping(machine)
    machine.calls.succeed("SHGetKnownFolderPath")
    expect(events(done(machine, "enable", "The feature is on.\n")), STARTED_AT_EIGHT, "events")


# GetFeatureEnabled

def _feature(machine):
    return json.loads(machine.client.run("status --json").output)["featureEnabled"]


def the_feature_is_on_when_the_first_key_that_has_it_says_one(machine):
    machine.registry.write("Of", 0, BRANDING)
    _running(machine)
    expect(_feature(machine), True, "feature where no key has it")
    for key, value, is_on in ((DEFAULT, 0, False), (BRANDING, 1, True), (CURRENT, 2, False),
                              (CURRENT, 1, True)):
        machine.registry.write("EnableZ7Feature", value, key)
        expect(_feature(machine), is_on, f"feature with {value} in {key}")


def what_the_service_sees_counts_and_not_what_its_client_reads(machine):
    _running(machine, EnableZ7Feature=1)
    # A key that was not there when it was first looked for is not looked for again.
    machine.registry.write("EnableZ7Feature", 0, BRANDING)
    expect(_feature(machine), True, "feature while the service runs")
    machine.stop_service()
    expect(_feature(machine), None, "feature once it has stopped")
