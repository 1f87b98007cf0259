"""Which power scheme is written to, and which timeouts the user gets back."""

from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, expect_timeouts, wake_by_timer_at

USERS_OWN = 180, 60


def a_scheme_of_the_users_own_is_served_as_well(machine):
    machine.schemes.activate("custom")
    machine_that_knows_office_hours(machine)
    step = machine.suspend()
    expect(step.of("scheme"), [
        "read 3 hibernate AC 10800", "read 3 hibernate DC 3600",
        "write 3 hibernate AC 600", "activate 3", "write 3 hibernate DC 600", "activate 3",
    ], "settings")
    expect(machine.schemes.active, "custom", "active scheme")
    come_back_at(machine, "2026-02-03 08:00")
    expect_timeouts(machine, USERS_OWN)
    expect(machine.schemes.get("hibernate", scheme="balanced"), 180, "another scheme's timeout")


def nothing_but_the_hibernation_timeout_is_touched(machine):
    machine_that_knows_office_hours(machine)
    machine.schemes.set("display", 7)
    machine.schemes.set("sleep", 11, "DC")
    before = _all_values(machine)
    machine.suspend()
    wake_by_timer_at(machine, "2026-02-03 08:00")
    come_back_at(machine, "2026-02-03 08:01")
    expect(_all_values(machine), before, "all settings of all schemes")


def _all_values(machine):
    return [machine.schemes.get(setting, source, scheme)
            for scheme in ("balanced", "power saver", "high performance", "custom")
            for setting in ("display", "sleep", "hibernate", "wake-timers", "hybrid-sleep")
            for source in ("AC", "DC")]


def what_was_put_aside_goes_to_the_scheme_that_is_active_then(machine):
    machine_that_knows_office_hours(machine)
    machine.schemes.set("hibernate", 45, "AC", "power saver")
    machine.suspend()
    machine.schemes.activate("power saver")
    step = come_back_at(machine, "2026-02-03 08:00")
    expect(step.of("setting", "scheme")[-6:], [
        "delete HA_AC", "write 1 hibernate AC 10800", "activate 1",
        "delete HA_DC", "write 1 hibernate DC 3600", "activate 1",
    ], "what was given back")
    expect(machine.schemes.active, "power saver", "active scheme")
    expect(machine.schemes.get("hibernate", "AC", "balanced"), 10, "timeout of the other scheme")
    expect_timeouts(machine, USERS_OWN)


def a_timer_wake_sets_the_scheme_that_is_active_then(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.schemes.activate("high performance")
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(step.of("scheme"), ["write 2 hibernate AC 36600", "activate 2",
                               "write 2 hibernate DC 36600", "activate 2"], "settings")


def a_start_gives_back_what_was_put_aside(machine):
    """A service that was killed in the night finds its user's timeouts at its next start."""
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.service.kill()
    machine.clock.pass_until("2026-02-03 08:00", awake=False)
    step = machine.start_service()
    expect([text for text in step.of("setting", "scheme") if "Service" not in text], [
        "write StartTime 1770123600",
        "delete HA_AC", "write 0 hibernate AC 10800", "activate 0",
        "delete HA_DC", "write 0 hibernate DC 3600", "activate 0",
    ], "what was given back")
    expect_timeouts(machine, USERS_OWN)
