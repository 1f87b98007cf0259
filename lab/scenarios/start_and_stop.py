"""The order in which the service starts and stops."""

import threading
import time

from machine.service_control import RUNNING, STOP_PENDING, sent
from machine.service_record import Entry, error, information
from steps.expect import expect
from steps.sequences import DRIVER_AND_RUNNING, END, REGISTRATION, RPC_SET_UP, SERVES, STOP, WAIT

RPC_STOP = "RpcMgmtStopServerListening"


def a_start_that_only_counts_goes_step_by_step(machine):
    machine.provision(total_attempts=1)
    expect(machine.start_service().entries, [
        *REGISTRATION, Entry("setting", "write CurrentAttempt 1"), *DRIVER_AND_RUNNING, SERVES,
    ], "what was done")


def the_controllers_thread_is_started_before_the_driver_is_looked_for(machine):
    machine.provision()
    with machine.calls.held("SHGetKnownFolderPath", machine.begin_start):
        machine.record.wait_for(SERVES)
        expect(machine.record.take(),
               [*REGISTRATION, Entry("thread", "start"), *DRIVER_AND_RUNNING, SERVES],
               "what was done while the controller's thread was held")
    machine.take_step()


def the_rpc_server_is_set_up_after_the_service_runs_and_before_it_says_so(machine):
    machine.provision(total_attempts=9)
    for call in RPC_SET_UP[0], RPC_SET_UP[-1]:
        with machine.calls.held(call, machine.begin_start):
            expect(machine.take_step().entries[-1], sent(RUNNING), f"the last before {call}")
        machine.record.wait_for(SERVES)
        machine.stop_service()
        machine.record.clear()


def a_stop_goes_step_by_step(machine):
    machine.provision(total_attempts=1)
    machine.start_service()
    expect(machine.stop_service().entries, STOP, "what was done")


def the_controller_ends_after_the_notification_and_before_the_service_says_so(machine):
    machine.provision()
    machine.start_service()
    with machine.calls.held("UnregisterPowerSettingNotification", machine.begin_stop):
        machine.take_step()
        expect(machine.suspend().events[:1], [information("5/1/2026 8:0:0 - Suspend")],
               "events of a suspend while there is a controller")
    machine.finish_stop()

    machine.start_service()
    with machine.calls.held("RegCreateKeyExW", machine.begin_stop):
        machine.take_step()
        expect(machine.suspend().entries, [sent(STOP_PENDING, 3000)],
               "a suspend when the controller has ended")
    machine.finish_stop()


def a_stop_that_comes_before_the_rpc_server_listens_is_not_lost(machine):
    for call in *RPC_SET_UP[:3], WAIT:
        machine.reset()
        machine.provision()
        with machine.calls.held(call, machine.begin_start):
            machine.take_step()
            machine.clock.pass_time(hours=1)
            machine.begin_stop()
            stop = machine.take_step()
        listens = call == WAIT
        expect(stop.events, [
            information("5/1/2026 9:0:0 - Uninitializing"),
            information("Uninitialized"),
            *([] if listens else [error("StopRPCServer: RpcMgmtStopServerListening() failed!")]),
        ], f"events of a stop before {call}")
        expect(machine.finish_stop().entries, ([] if listens else [SERVES]) + END,
               f"what was done after a stop before {call}")


def the_rpc_server_does_not_begin_to_listen_while_it_is_being_stopped(machine):
    machine.provision(total_attempts=9)
    stopping = threading.Thread(target=machine.begin_stop)

    def stop_before_it_listens():
        with machine.calls.held(RPC_SET_UP[-2], machine.begin_start):
            stopping.start()
            machine.waiting.until(lambda: machine.calls.made(RPC_STOP) == 1, "no stop")

    with machine.calls.held(RPC_STOP, stop_before_it_listens):
        # Long enough to begin, if it did not wait.
        time.sleep(0.3)
        expect(machine.calls.made(RPC_SET_UP[-1]), 0, "begins to listen")
    stopping.join()
    machine.finish_stop()
