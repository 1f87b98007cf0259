"""Stop and shutdown in each state of the sleep controller: what is done, and what is saved."""

from datetime import date

from machine.machine import DATA_FILE, HISTORY_FILE
from machine.service_control import STOPPED, sent
from machine.service_record import Entry, information
from steps.data_files import asleep, awake, history, learnt_data
from steps.expect import expect
from steps.living import office_days
from steps.sequences import STOP
from steps.states import (ACTIVE, BACK_TO_SLEEP, GOING_TO_HIBERNATE, OFF, SUSPENDED, UNINITIALIZED,
                          bring_to, event, stop, undefined_event)

STOP_AT_NOON = "5/1/2026 12:0:0 - Uninitializing"
SHUTDOWN_AT_NOON = "5/1/2026 12:0:0 - ShuttingDown"
EIGHT, HALF_PAST, NOON = "2026-01-05 08:00", "2026-01-05 08:30", "2026-01-05 12:00"


def _files(machine):
    return machine.data_file(HISTORY_FILE), machine.data_file(DATA_FILE)


def _traced(text, *actions, state):
    """An event as it is traced, and logged, with the actions that it leads to."""
    def traces(*texts):
        return [Entry("trace", text) for text in texts]
    return [*traces("State Machine event: ", text, "\n"), information(text),
            *traces(*(action + "\n" for action in actions)),
            *traces("State Machine new state: ", state, "\n"), information(state)]


def _expect_saved(machine, entries, last_event):
    expect(history(machine.data_file(HISTORY_FILE)), entries, "history")
    data = learnt_data(machine.data_file(DATA_FILE))
    expect((data.state, data.time), last_event, "the last event in the habits")


def a_stop_in_use_saves_all_that_was_learnt(machine):
    bring_to(machine, ACTIVE)
    expect(stop(machine).entries, _traced(
        STOP_AT_NOON, "AH_RecordHistoryEvent", "AH_SaveHistory", "AH_PredictorContainerOff",
        state=UNINITIALIZED) + STOP, "what was done")
    # Only the history records a stop; for the habits the machine goes on being in use.
    _expect_saved(machine, [awake(EIGHT), asleep(NOON)], (0, (2026, 1, 5, 8, 0, 0)))


def a_stop_in_any_other_state_is_reported_and_saves_nothing(machine):
    for state in (UNINITIALIZED, SUSPENDED, GOING_TO_HIBERNATE, BACK_TO_SLEEP, OFF):
        machine.reset()
        bring_to(machine, state)
        files = _files(machine)
        step = stop(machine)
        expect(step.events, undefined_event(state, STOP_AT_NOON), f"events in {state}")
        expect([entry for entry in step.entries if entry in STOP], STOP, f"the end in {state}")
        expect(_files(machine), files, f"files in {state}")
        expect(files == (None, None), state not in (UNINITIALIZED, OFF), f"no files in {state}")


def a_stop_while_suspended_leaves_the_users_timeouts_for_the_next_start(machine):
    machine.provision()
    machine.schemes.hibernate_after = 180, 60
    machine.start_service()
    office_days(machine, date(2026, 1, 5), days=20)
    machine.clock.pass_until("2026-02-02 18:00")
    machine.suspend()
    machine.clock.pass_time(hours=1, awake=False)
    expect(machine.stop_service().of("scheme"), [], "power schemes at the stop")
    expect(machine.schemes.hibernate_after, (10, 10), "timeouts while it is stopped")

    machine.start_service()
    expect(machine.schemes.hibernate_after, (180, 60), "timeouts after the next start")
    expect((machine.setting("HA_AC"), machine.setting("HA_DC")), (None, None), "the cache")


def a_shutdown_in_use_saves_the_history_first(machine):
    bring_to(machine, ACTIVE)
    expect(machine.shut_down().entries, [*_traced(
        SHUTDOWN_AT_NOON, "AH_RecordHistoryEvent", "AH_SaveHistory", "AH_LogEvent",
        "AH_PredictorContainerOff", state=OFF), sent(STOPPED)], "what was done")
    _expect_saved(machine, [awake(EIGHT), asleep(NOON)], (2, (2026, 1, 5, 12, 0, 0)))


def a_shutdown_between_two_sleeps_saves_the_history_last(machine):
    for state in (GOING_TO_HIBERNATE, BACK_TO_SLEEP):
        machine.reset()
        bring_to(machine, state)
        expect(machine.shut_down().entries, [*_traced(
            SHUTDOWN_AT_NOON, "AH_RecordHistoryEvent", "AH_LogEvent", "AH_PredictorContainerOff",
            "AH_SaveHistory", state=OFF), sent(STOPPED)], f"what was done in {state}")
        # The machine has been at rest since it was suspended.
        _expect_saved(machine, [awake(EIGHT), asleep(HALF_PAST), asleep(NOON)],
                      (1, (2026, 1, 5, 8, 30, 0)))


def a_shutdown_in_any_other_state_is_reported_and_saves_nothing(machine):
    for state in (UNINITIALIZED, SUSPENDED, OFF):
        machine.reset()
        bring_to(machine, state)
        files = _files(machine)
        step = machine.shut_down()
        expect(step.events, undefined_event(state, SHUTDOWN_AT_NOON), f"events in {state}")
        expect(step.of("status"), [sent(STOPPED).text], f"answer in {state}")
        expect(_files(machine), files, f"files in {state}")


def a_shutdown_leaves_the_rest_of_the_service_running(machine):
    # The system is not told of it here, or it would end the process.
    bring_to(machine, OFF)
    expect(machine.setting("ServiceStatus"), 0, "ServiceStatus")
    expect(machine.calls.made("RpcMgmtStopServerListening"), 0, "stops of the RPC server")


def a_stop_that_the_rpc_server_does_not_hear_is_reported_and_can_be_repeated(machine):
    machine.provision()
    machine.start_service()
    machine.clock.pass_time(hours=1)
    machine.calls.fail("RpcMgmtStopServerListening", 1715, times=1)
    machine.begin_stop()
    expect(machine.take_step().events, [
        *event("5/1/2026 9:0:0 - Uninitializing", UNINITIALIZED),
        Entry("error", "StopRPCServer: RpcMgmtStopServerListening() failed!"),
    ], "events of the first stop")
    expect(machine.setting("ServiceStatus"), 0, "ServiceStatus")
    expect(machine.resume().events, event("5/1/2026 9:0:0 - Activating", ACTIVE), "a resume")
    machine.clock.pass_time(hours=1)
    expect(stop(machine).events, event("5/1/2026 10:0:0 - Uninitializing", UNINITIALIZED),
           "events of the second stop")
