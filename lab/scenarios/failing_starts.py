"""One call of the system fails while the service starts on the morning after it was killed in the
night, each call in turn. The next resume at the latest brings the controller to life, and the
user's timeouts come back."""

from typing import NamedTuple

from machine.machine import DATA_FILE
from machine.service_control import RUNNING
from machine.service_record import information
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import cached_timeouts, events

ACCESS_DENIED, E_FAIL = 5, 0x80004005
USERS_OWN = 180, 60
ACTIVE = [information("3/2/2026 8:0:0 - Activating"), information("Active")]
NOT_GIVEN_BACK = "Failed to set cached HA value for {}"
NO_COUNTERS = "TotalAttempts or CurrentAttempt value is not defined in registry..."


def _morning_after(machine, data):
    """The service was killed while the predicted timeouts were in force."""
    machine.write_data_file(DATA_FILE, data)
    machine.schemes.hibernate_after = 10, 10
    machine.registry.write("HA_AC", 180)
    machine.registry.write("HA_DC", 60)


def _killed_in_the_night(machine):
    machine_that_knows_office_hours(machine)
    machine.stop_service()
    machine.clock.pass_until("2026-02-03 08:00")
    return machine.data_file(DATA_FILE)


class Outcome(NamedTuple):
    at_once: int = 0    # how often the controller came up with the service
    later: int = 0      # how often at the next resume
    reported: list = []
    lost: list = []     # timeouts of the user's, in minutes


def _fail_each(machine, function, error=ACCESS_DENIED):
    data = _killed_in_the_night(machine)
    _morning_after(machine, data)
    before = machine.calls.made(function)
    expect(events(machine.start_service()), ACTIVE, "events of a usual start")
    calls = machine.calls.made(function) - before
    at_once, later, reported, lost = 0, 0, [], []
    for number in range(1, calls + 1):
        machine.stop_service()
        _morning_after(machine, data)
        machine.calls.fail(function, error, number, times=1)
        started = machine.start_service()
        what = f"after call {number} of {function} had failed"
        expect(len(started.of("failed")), 1, f"failures {what}")
        expect(machine.service.status().state, RUNNING, f"state {what}")
        reported += [event.text for event in events(started) if event.kind != "information"]
        if information("Active") in events(started):
            at_once += 1
        else:
            expect(events(machine.resume()), ACTIVE, f"events of a resume {what}")
            later += 1
        lost += [own for own, now, cached in zip(USERS_OWN, machine.schemes.hibernate_after,
                                                 cached_timeouts(machine))
                 if own not in (now, cached)]
    machine.stop_service()
    _morning_after(machine, data)
    expect(events(machine.start_service()), ACTIVE, "events of the last start")
    machine.clock.pass_until("2026-02-03 18:00")
    expect(events(machine.suspend())[1],
           information("Predicted Hibernate at: Tue Feb  3 18:10:00 2026\n"), "prediction")
    machine.resume()
    expect(machine.schemes.hibernate_after, USERS_OWN, "timeouts")
    return Outcome(at_once, later, reported, lost)


def settings_that_cannot_be_opened(machine):
    expect(_fail_each(machine, "RegOpenKeyExW"),
           Outcome(at_once=17, later=6, reported=2 * [NO_COUNTERS]), "outcome")


def settings_that_cannot_be_read(machine):
    # What is put aside is deleted, whether it could be read or not.
    expect(_fail_each(machine, "RegQueryValueExW"),
           Outcome(at_once=10, later=3, reported=2 * [NO_COUNTERS], lost=[180, 60]), "outcome")


def predictor_values_whose_keys_cannot_be_opened(machine):
    expect(_fail_each(machine, "RegOpenKeyExA"), Outcome(at_once=21, later=6), "outcome")


def predictor_values_that_cannot_be_read(machine):
    expect(_fail_each(machine, "RegQueryValueExA"), Outcome(at_once=11, later=6), "outcome")


def everything_else(machine):
    for function, outcome in {
            "RegCreateKeyExW": Outcome(at_once=2),
            "RegSetValueExW": Outcome(at_once=2),
            "RegDeleteValueW": Outcome(at_once=2),
            "CreateThread": Outcome(later=1),
            "RegisterPowerSettingNotification": Outcome(at_once=1),
            "PowerSetActiveScheme": Outcome(at_once=2),
            "PowerGetActiveScheme": Outcome(
                at_once=2, reported=[NOT_GIVEN_BACK.format("AC"), NOT_GIVEN_BACK.format("DC")],
                lost=[180, 60]),
            "PowerWriteDCValueIndex": Outcome(at_once=1, reported=[NOT_GIVEN_BACK.format("DC")],
                                              lost=[60]),
            "_wfopen": Outcome(at_once=1),
            "SHGetKnownFolderPath": Outcome(later=1),
    }.items():
        machine.reset()
        expect(_fail_each(machine, function, error=E_FAIL), outcome, f"outcome for {function}")
