"""One call of the system fails, each call of a night in turn: the night goes on, the next one is as
if nothing had happened, and the user's timeouts are lost only where nothing could have kept
them."""

from steps.expect import expect
from steps.failing_nights import Outcome, fail_each, machine_of_every_day

E_FAIL = 0x80004005

NOTHING = Outcome(reported=[], lost=[], late=0, forgotten=0)

NO_CONFIGURATION = "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations"
NO_WEIGHTS = "No weigths specified"
NO_FOLDER = "invalid string position"
NOT_SET = "Failed to set passed HA value for {}"
NOT_GIVEN_BACK = "Failed to set cached HA value for {}"
# One question found a real resume and the next one none, so the resume was none of the three.
STILL_ASLEEP = "State Machine Error: State: Suspended, Undefined event: {}"


def _expect_outcomes(machine, outcomes, **error):
    machine_of_every_day(machine)
    for function, outcome in outcomes.items():
        expect(fail_each(machine, function, **error), outcome, f"outcome for {function}")


def settings_that_cannot_be_read(machine):
    _expect_outcomes(machine, {
        "RegOpenKeyExW": NOTHING._replace(reported=[NO_CONFIGURATION, *3 * [NO_WEIGHTS]],
                                          forgotten=8),
        # What is put aside is deleted, whether it could be read or not.
        "RegQueryValueExW": Outcome(reported=[NO_CONFIGURATION], forgotten=1, late=0,
                                    lost=[("come back", "AC"), ("come back", "DC")]),
    })


def predictor_values_whose_keys_cannot_be_opened(machine):
    _expect_outcomes(machine, {
        "RegOpenKeyExA": NOTHING._replace(reported=6 * [NO_WEIGHTS], forgotten=14),
    })


def predictor_values_that_cannot_be_read(machine):
    _expect_outcomes(machine, {
        "RegQueryValueExA": NOTHING._replace(reported=6 * [NO_WEIGHTS], forgotten=14),
    })


def settings_that_cannot_be_written_or_deleted(machine):
    never_put_aside = NOTHING._replace(lost=[("suspend", "AC"), ("suspend", "DC")])
    _expect_outcomes(machine, {
        "RegCreateKeyExW": never_put_aside,
        "RegSetValueExW": never_put_aside,
        "RegDeleteValueW": NOTHING,
    })


def the_event_log(machine):
    _expect_outcomes(machine, {
        "RegisterEventSourceW": NOTHING,
        "ReportEventW": NOTHING,
        "DeregisterEventSource": NOTHING,
    })


def the_driver(machine):
    _expect_outcomes(machine, {
        "DeviceIoControl": NOTHING._replace(
            reported=[STILL_ASLEEP.format("Suspend"), STILL_ASLEEP.format("Saving")], late=1),
    })


def power_schemes_that_cannot_be_read(machine):
    _expect_outcomes(machine, {
        "PowerGetActiveScheme": NOTHING._replace(
            reported=[NOT_SET.format("AC"), NOT_SET.format("DC"), STILL_ASLEEP.format("Suspend"),
                      NOT_SET.format("AC"), NOT_SET.format("DC"),
                      NOT_GIVEN_BACK.format("AC"), NOT_GIVEN_BACK.format("DC")],
            lost=[("suspend", "AC"), ("suspend", "DC"),
                  ("come back", "AC"), ("come back", "DC")]),
        "PowerReadACValueIndex": NOTHING._replace(reported=[STILL_ASLEEP.format("Suspend")],
                                                  lost=[("suspend", "AC")]),
        "PowerReadDCValueIndex": NOTHING._replace(lost=[("suspend", "DC")]),
        "GetSystemPowerStatus": NOTHING._replace(reported=[STILL_ASLEEP.format("Suspend")]),
    })


def power_schemes_that_cannot_be_written(machine):
    _expect_outcomes(machine, {"PowerSetActiveScheme": NOTHING, **{
        f"PowerWrite{source}ValueIndex": NOTHING._replace(
            reported=2 * [NOT_SET.format(source)] + [NOT_GIVEN_BACK.format(source)],
            lost=[("come back", source)])
        for source in ("AC", "DC")}})


def threads_and_sleep(machine):
    _expect_outcomes(machine, {
        "CreateThread": NOTHING,
        "SetSuspendState": NOTHING._replace(reported=["Failed to move the system to sleep"]),
    })


def the_clock(machine):
    _expect_outcomes(machine, {
        "_time64": NOTHING._replace(
            reported=["wrong time ...", STILL_ASLEEP.format("Suspend"), "wrong time ..."]),
    })


def data_files_and_their_folder(machine):
    _expect_outcomes(machine, {
        "_wfopen": NOTHING,
        "MoveFileExW": NOTHING,
        "SHGetKnownFolderPath": NOTHING._replace(reported=[NO_FOLDER], forgotten=1),
    }, error=E_FAIL)
