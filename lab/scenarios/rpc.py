"""Packets that must not be carried out, and many clients at once, on a machine with everything that
they could reach. tests/rpc has the programs."""

from machine.machine import RESUME, SUSPEND
from machine.registry import CURRENT
from machine.service_control import POWER_EVENT
from steps.expect import expect, expect_true
from steps.states import ACTIVE, bring_to

CLIENTS = 100


def _expect_all_passed(answer):
    expect(answer.exit_code, 0, f"exit code, after\n{answer.output}\n")


def packets_that_must_not_be_carried_out_reach_nothing(machine):
    bring_to(machine, ACTIVE)
    answer = machine.packets.run("-refused")
    _expect_all_passed(answer)
    expect(answer.step.entries, [], "what the service did")


def clients_at_once_are_served_while_the_machine_sleeps_and_wakes(machine):
    bring_to(machine, ACTIVE)
    machine.registry.write("EnableZ7Feature", 1, CURRENT)
    crowd = machine.crowd.begin(f"-running {CLIENTS}")
    nights = 0
    while not crowd.has_ended():
        machine.deliver_meanwhile(POWER_EVENT, SUSPEND)
        machine.deliver_meanwhile(POWER_EVENT, RESUME)
        nights += 1
    answer = crowd.finish()
    _expect_all_passed(answer)
    expect_true(nights > 1, "the machine never slept meanwhile")
    kinds = {entry.kind for entry in answer.step.entries}
    expect({"driver", "scheme", "setting"} - kinds, set(), "what the clients did not reach")
    machine.stop_service()
