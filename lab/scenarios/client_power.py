"""dozewellctl shows and changes the active power scheme and its settings."""

import json

from steps.client import done, failed
from steps.expect import expect
from steps.living import machine_that_knows_office_hours

ACCESS_DENIED = 5
ALL_BALANCED = ('{"displayOffMinutes":10,"sleepAfterMinutes":30,"hibernateAfterMinutes":180,'
                '"allowWakeTimers":1,"allowHybridSleep":0}')
NOT_READ = "the service could not read the active power scheme"
NO_NAME = ("the active power scheme is not balanced, power-saver or high-performance, or could "
           "not be read")

SETTINGS = {"display-off": "display", "sleep-after": "sleep", "hibernate-after": "hibernate",
            "wake-timers": "wake-timers", "hybrid-sleep": "hybrid-sleep"}
SCHEMES = ("balanced", "power-saver", "high-performance")
CUSTOM = 3


def _running(machine):
    machine.provision()
    machine.start_service()


def _not_written(setting):
    return f"the service could not write {setting} into the active power scheme"


# GetPowerSettings

def the_settings_are_shown_for_mains_and_battery(machine):
    _running(machine)
    machine.schemes.set("display", 5, "DC")
    machine.schemes.set("sleep", 1.99, "DC")  # seconds do not count
    machine.schemes.set("hibernate", 0, "DC")
    machine.schemes.set("wake-timers", 2, "DC")
    machine.schemes.set("hybrid-sleep", 1)
    step = done(machine, "power get", (
        "                    ac                  dc\n"
        "  display-off       10 min              5 min\n"
        "  sleep-after       30 min              1 min\n"
        "  hibernate-after   3 h 00 min          never\n"
        "  wake-timers       on                  important\n"
        "  hybrid-sleep      on                  off\n"))
    expect(step.of("scheme"), [
        "read 0 display AC 600", "read 0 sleep AC 1800", "read 0 hibernate AC 10800",
        "read 0 wake-timers AC 1", "read 0 hybrid-sleep AC 1",
        "read 0 display DC 300", "read 0 sleep DC 119", "read 0 hibernate DC 0",
        "read 0 wake-timers DC 2", "read 0 hybrid-sleep DC 0"], "what was read")
    step = done(machine, "power get dc --json",
                '{"dc":{"displayOffMinutes":5,"sleepAfterMinutes":1,"hibernateAfterMinutes":0,'
                '"allowWakeTimers":2,"allowHybridSleep":0}}\n')
    expect(len(step.of("scheme")), 5, "values read for battery alone")


def a_setting_that_cannot_be_read_is_not_available_and_the_others_are(machine):
    _running(machine)
    for call in "PowerGetActiveScheme", "PowerReadACValueIndex":
        for place, name in enumerate(json.loads(ALL_BALANCED)):
            machine.calls.fail(call, ACCESS_DENIED, place + 1, times=1)
            power = {**json.loads(ALL_BALANCED), name: None}
            done(machine, "power get ac --json",
                 json.dumps({"ac": power}, separators=(",", ":")) + "\n")
    machine.calls.fail("PowerReadDCValueIndex", ACCESS_DENIED, 3, times=1)
    done(machine, "power get dc", ("                    dc\n"
                                   "  display-off       10 min\n"
                                   "  sleep-after       30 min\n"
                                   "  hibernate-after   not available\n"
                                   "  wake-timers       on\n"
                                   "  hybrid-sleep      off\n"))


def settings_of_which_none_can_be_read_are_refused(machine):
    _running(machine)
    machine.calls.fail("PowerReadACValueIndex", ACCESS_DENIED)
    failed(machine, "power get", NOT_READ)
    done(machine, "power get dc --json", f'{{"dc":{ALL_BALANCED}}}\n')
    machine.calls.fail("PowerReadDCValueIndex", ACCESS_DENIED)
    failed(machine, "power get dc", NOT_READ)
    machine.calls.reset()
    machine.calls.fail("PowerGetActiveScheme", ACCESS_DENIED)
    failed(machine, "power get ac --json", NOT_READ)


def while_the_machine_sleeps_the_predicted_timeout_is_shown(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    power = json.loads(machine.client.run("power get --json").output)
    expect([power[source]["hibernateAfterMinutes"] for source in ("ac", "dc")], [10, 10],
           "minutes until hibernation")


# SetPowerSettings

def each_setting_is_written_and_applied_alone(machine):
    _running(machine)
    for setting, value, written, said in (
            ("display-off", "45", 2700, "45 min"), ("sleep-after", "never", 0, "never"),
            ("hibernate-after", '"2d 3h 5min"', 183900, "2 d 03 h 05 min"),
            ("wake-timers", "important", 2, "important"), ("hybrid-sleep", "on", 1, "on")):
        before = _all_values(machine)
        step = done(machine, f"power set dc {setting} {value}", f"{setting} for dc is {said}.\n")
        expect(step.of("scheme"), [f"write 0 {SETTINGS[setting]} DC {written}", "activate 0"],
               f"what was written for {setting}")
        machine.schemes.set(SETTINGS[setting], before[SETTINGS[setting], "DC"], "DC")
        expect(_all_values(machine), before, "the other settings")


def _all_values(machine):
    return {(setting, source): machine.schemes.get(setting, source)
            for setting in SETTINGS.values() for source in ("AC", "DC")}


def the_longest_timeout_and_the_shortest_can_be_set(machine):
    _running(machine)
    for minutes in 71582788, 1, 0:
        done(machine, f"power set ac hibernate-after {minutes} --json",
             f'{{"source":"ac","hibernateAfterMinutes":{minutes}}}\n')
        expect(machine.schemes.hibernate_after, (minutes, 180), "timeouts")


def a_setting_that_cannot_be_written_is_refused(machine):
    _running(machine)
    before = _all_values(machine)
    for call, source in (("PowerGetActiveScheme", "ac"), ("PowerWriteACValueIndex", "ac"),
                         ("PowerWriteDCValueIndex", "dc")):
        machine.calls.fail(call, ACCESS_DENIED)
        for setting, value in (("sleep-after", "45m"), ("hybrid-sleep", "on")):
            step = failed(machine, f"power set {source} {setting} {value}", _not_written(setting))
            expect(step.of("scheme"), [], f"what was done without {call}")
        machine.calls.succeed(call)
    expect(_all_values(machine), before, "settings")


def a_setting_that_is_written_but_cannot_be_applied_is_done(machine):
    _running(machine)
    machine.calls.fail("PowerSetActiveScheme", ACCESS_DENIED)
    done(machine, "power set ac sleep-after 45m", "sleep-after for ac is 45 min.\n")
    expect(machine.schemes.get("sleep"), 45, "minutes until sleep")


# GetActiveScheme and SetActiveScheme

def each_scheme_can_be_made_the_active_one(machine):
    _running(machine)
    for number, name in reversed(list(enumerate(SCHEMES))):
        step = done(machine, f"scheme set {name}", f"The active power scheme is now {name}.\n")
        expect(step.of("scheme"), [f"activate {number}"], "what was done")
        expect(machine.schemes.active, name.replace("-", " "), "active scheme")
        done(machine, "scheme get", f"The active power scheme is {name}.\n")
    done(machine, "scheme set power-saver --json", '{"scheme":"power-saver"}\n')
    done(machine, "scheme get --json", '{"scheme":"power-saver"}\n')


def a_scheme_that_is_not_there_is_refused(machine):
    _running(machine)
    machine.calls.fail("PowerSetActiveScheme", 2)
    failed(machine, "scheme set power-saver",
           "Windows did not make power-saver the active power scheme; it may not be there")
    expect(machine.schemes.active, "balanced", "active scheme")


def without_an_active_scheme_its_name_is_refused(machine):
    _running(machine)
    machine.calls.fail("PowerGetActiveScheme", ACCESS_DENIED)
    failed(machine, "scheme get", NO_NAME)
    failed(machine, "scheme get --json", NO_NAME)


def a_scheme_of_the_users_own_has_no_name_but_its_settings(machine):
    machine.schemes.activate("custom")
    _running(machine)
    failed(machine, "scheme get", NO_NAME)
    done(machine, "power get ac --json", f'{{"ac":{ALL_BALANCED}}}\n')
    step = done(machine, "power set ac hibernate-after 3h30m",
                "hibernate-after for ac is 3 h 30 min.\n")
    expect(step.of("scheme"), [f"write {CUSTOM} hibernate AC 12600", f"activate {CUSTOM}"],
           "what was written")
    expect(machine.schemes.get("hibernate", scheme="balanced"), 180, "another scheme's timeout")
    done(machine, "scheme set balanced", "The active power scheme is now balanced.\n")
