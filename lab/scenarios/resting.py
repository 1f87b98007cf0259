"""A service that has nothing to do does nothing. That no thread runs for some seconds shows that
nothing recurs more often than that; that nothing happens while the clock passes weeks shows that
no thread sleeps until a time. A rarer wake-up by other means than Sleep would go unseen."""

import time

from steps.expect import expect, expect_true
from steps.states import ACTIVE, SUSPENDED, bring_to

SECONDS = 4
# The calls that a poll of anything outside the process would go through.
ASKING = ("_time64", "GetSystemTimeAsFileTime", "Sleep", "CreateThread", "GetSystemPowerStatus",
          "DeviceIoControl", "RegOpenKeyExW", "RegOpenKeyExA", "PowerGetActiveScheme")


def _expect_rest(machine):
    machine.await_rest()
    runs, calls = machine.thread_runs(), machine.calls.all_made()
    expect_true(len(runs) >= 3, "the service's threads are there")
    time.sleep(SECONDS)
    expect(machine.thread_runs(), runs, f"runs of each thread in {SECONDS} s")
    expect(machine.calls.all_made(), calls, f"calls of the system in {SECONDS} s")
    expect(machine.take_step().entries, [], f"what was done in {SECONDS} s")


def _expect_rest_for_weeks(machine):
    calls = {call: machine.calls.made(call) for call in ASKING}
    for awake in (True, False):
        machine.clock.pass_time(days=20, awake=awake)
    # A thread that slept until then is on its way now.
    time.sleep(0.2)
    expect({call: machine.calls.made(call) for call in ASKING}, calls, "calls in six weeks")
    expect(machine.take_step().entries, [], "what was done in six weeks")


def a_service_without_controller_does_nothing_by_itself(machine):
    machine.provision(total_attempts=9)
    machine.start_service()
    _expect_rest(machine)
    _expect_rest_for_weeks(machine)


def a_service_in_use_does_nothing_by_itself(machine):
    bring_to(machine, ACTIVE)
    _expect_rest(machine)
    _expect_rest_for_weeks(machine)


def a_suspended_service_does_nothing_by_itself(machine):
    bring_to(machine, SUSPENDED)
    _expect_rest(machine)
    _expect_rest_for_weeks(machine)
