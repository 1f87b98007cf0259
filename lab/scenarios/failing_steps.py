"""Steps of the service's start and stop that fail."""

import time

from machine.service_control import INTERROGATE, RUNNING, STOPPED, STOP_PENDING, sent
from machine.service_record import Entry, error, information
from steps.expect import expect
from steps.sequences import DRIVER_AND_RUNNING, END, REGISTRATION, RPC_SET_UP, SERVES, WAIT

INVALID_HANDLE = 6
NO_SERVER = 0x6CC

STATUS_FAILED = error("SetServiceStatus failed, error code = 6\n")
RPC_REPORTS = [
    "RpcServerUseProtseqEp returned 0x6cc\n",
    "RpcServerRegisterIf returned 0x6cc\n",
    "StartRPCServer: RpcServerRegisterAuthInfo() failed!",
    "RpcServerListen returned: 0x6cc\n",
]


def a_service_whose_rpc_server_cannot_start_reports_why_and_stops(machine):
    for place, (call, report) in enumerate(zip(RPC_SET_UP, RPC_REPORTS)):
        machine.reset()
        machine.provision(total_attempts=1)
        machine.calls.fail(call, NO_SERVER)
        machine.begin_start()
        machine.finish_stop()
        expect(machine.record.all(), [
            *REGISTRATION, Entry("setting", "write CurrentAttempt 1"), *DRIVER_AND_RUNNING,
            Entry("failed", f"{call} 1740"), error(report), *END,
        ], f"what was done without {call}")
        expect([machine.calls.made(step) for step in RPC_SET_UP],
               [1] * (place + 1) + [0] * (3 - place), f"calls after {call}")


def a_service_that_cannot_wait_for_its_stop_reports_that_and_stops(machine):
    machine.provision(total_attempts=1)
    machine.calls.fail(WAIT, NO_SERVER)
    machine.begin_start()
    machine.finish_stop()
    expect(machine.record.all()[-7:], [
        SERVES, Entry("failed", f"{WAIT} 1740"),
        error("StartRPCServer: RpcMgmtWaitServerListen() failed!"), *END], "what was done")


def a_service_without_rpc_server_ends_a_controller_that_is_still_starting(machine):
    machine.provision()
    machine.calls.fail("RpcServerListen", NO_SERVER)
    with machine.calls.held("SHGetKnownFolderPath", machine.begin_start):
        machine.record.wait_for(END[1])
        # Long enough for the end to go on, if it did not wait for the controller's start.
        time.sleep(0.2)
    machine.service.wait_for(STOPPED)
    machine.waiting.until(lambda: not machine.thread_runs(), "the process does not end")
    expect([entry for entry in machine.record.all() if entry.kind == "information" or entry in END],
           [*END[:2], information("5/1/2026 8:0:0 - Activating"), information("Active"), *END[2:]],
           "the end")


def a_service_without_control_handler_does_nothing(machine):
    machine.provision()
    machine.calls.fail("RegisterServiceCtrlHandlerExW", 5)
    asking = machine.ask_for_start()
    machine.record.wait_for(error("RegisterServiceCtrlHandler failed 5\n"))
    machine.service.kill()
    expect(asking.finish().exit_code, 1, "exit code of the program that asked for the start")
    expect(machine.record.all(), [
        Entry("handler", "DozewellService"),
        Entry("failed", "RegisterServiceCtrlHandlerExW 5"),
        error("RegisterServiceCtrlHandler failed 5\n"),
    ], "what was done")


def a_running_service_that_cannot_say_so_serves_and_says_so_with_the_next_control(machine):
    machine.provision(total_attempts=1)
    machine.calls.fail("SetServiceStatus", INVALID_HANDLE, times=1)
    asking = machine.ask_for_start()
    machine.record.wait_for(SERVES)
    expect(machine.record.take()[-4:], [
        sent(RUNNING), Entry("failed", "SetServiceStatus 6"), STATUS_FAILED, SERVES], "the start")
    expect(machine.deliver(INTERROGATE).entries, [sent(RUNNING)], "the next control")
    expect(asking.finish().exit_code, 0, "exit code of the program that asked for the start")
    machine.stop_service()


def each_status_of_a_stop_that_cannot_be_sent_is_reported(machine):
    machine.provision(total_attempts=1)
    machine.start_service()
    machine.calls.fail("SetServiceStatus", INVALID_HANDLE)
    machine.begin_stop()
    machine.record.wait_for(sent(STOPPED))
    machine.service.kill()
    failed = Entry("failed", "SetServiceStatus 6")
    expect(machine.take_step().entries, [
        sent(STOP_PENDING), failed, error("SetServiceStatus error 6\n"),
        sent(STOP_PENDING, 3000), failed, STATUS_FAILED,
        *END[1:], failed, STATUS_FAILED,
    ], "what was done")


def a_service_without_notifications_runs_and_stops(machine):
    machine.provision(total_attempts=1)
    machine.calls.fail("RegisterPowerSettingNotification", INVALID_HANDLE)
    machine.calls.fail("UnregisterPowerSettingNotification", INVALID_HANDLE)
    expect(machine.start_service().entries[-2:], [sent(RUNNING), SERVES], "the start")
    expect(machine.stop_service().entries[-3:], [
        Entry("failed", "UnregisterPowerSettingNotification 6"), *END[2:]], "the stop")
