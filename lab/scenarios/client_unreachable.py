"""dozewellctl and a service that does not answer, or not at once."""

import re

from machine.service_control import CONTINUE, PAUSE
from machine.service_record import information
from steps.client import DONE, NO_RESULT, NOT_REACHABLE, done, failed
from steps.expect import expect, expect_true
from steps.sequences import RPC_SET_UP, SERVES

NOT_INSTALLED = "the service is not installed; its installer package installs it"
STOPPED = "the service is stopped; as administrator, net start DozewellService starts it"
AWAITS_START = ("the service is still to start after the start of Windows; it does so by itself "
                "within some minutes, so do not start it by hand")
STARTING = "the service is starting; try again in a moment"
STOPPING = "the service is stopping; once it has, net start DozewellService starts it again"
NOT_ANSWERING = ("the service runs but does not answer (error 1722); its events may say why "
                 "(dozewellctl status), and net stop and net start DozewellService restart it")
WENT_AWAY = ("the service went away during the call (error 1726), which it may or may not have "
             "carried out; dozewellctl status shows which")

FREE_OF_TIMERS = "The driver's wake timers are not enabled.\n"


def _expect_not_reached(machine, why, service):
    """Neither by a call nor by status, which still shows what it can."""
    failed(machine, "ping", why, NOT_REACHABLE)
    failed(machine, "reset-history --yes --json", why, NOT_REACHABLE)
    status = machine.client.run("status")
    expect((status.exit_code, status.error), (NOT_REACHABLE, f"dozewellctl: {why}\n"),
           "exit code and error of status")
    expect(status.output.splitlines()[0], f"Service             {service}", "first line")
    expect_true("\nController          does not run: the service does not answer\n"
                in status.output, "status does not tell that the controller does not run")


def a_service_that_is_not_installed(machine):
    _expect_not_reached(machine, NOT_INSTALLED, "not installed")


def a_service_whose_delayed_start_is_still_to_come(machine):
    machine.provision()
    machine.service.create()
    _expect_not_reached(machine, AWAITS_START, "stopped")
    machine.start_service()
    expect(machine.client.run("ping").exit_code, DONE, "exit code of ping after the start")
    machine.stop_service()
    failed(machine, "ping", STOPPED, NOT_REACHABLE)


def a_service_that_is_stopped(machine):
    machine.provision()
    machine.start_service()
    machine.stop_service()
    settings = machine.registry.names()
    _expect_not_reached(machine, STOPPED, "stopped")
    for command in "enable", "strength set 1", "scheme set balanced", "wake raw 1 90":
        step = failed(machine, command, STOPPED, NOT_REACHABLE)
        expect(step.entries, [], f"what was done for {command}")
    expect(machine.registry.names(), settings, "settings")


def a_service_whose_start_hangs(machine):
    machine.provision()
    with machine.calls.held("RegisterServiceCtrlHandlerExW", machine.ask_for_start) as asking:
        _expect_not_reached(machine, STARTING, "starting")
    expect(asking.finish().exit_code, 0, "exit code of the program that asked for the start")
    machine.record.wait_for(SERVES)
    expect(machine.client.run("ping").exit_code, DONE, "exit code of ping after the start")


def a_service_that_runs_without_its_rpc_server(machine):
    machine.provision()
    with machine.calls.held(RPC_SET_UP[0], machine.begin_start):
        _expect_not_reached(machine, NOT_ANSWERING, "running")
    machine.record.wait_for(SERVES)
    expect(machine.client.run("ping").exit_code, DONE, "exit code of ping after the start")


def a_service_whose_server_does_not_listen_yet_is_waited_for(machine):
    machine.provision()
    with machine.calls.held("RpcServerListen", machine.begin_start):
        asking = machine.client.begin("driver")
        machine.clock.pass_time(minutes=1)
    answer = asking.finish()
    expect((answer.exit_code, answer.output), (DONE, FREE_OF_TIMERS), "exit code and output")


def a_service_that_cannot_set_up_its_server_has_stopped(machine):
    machine.provision()
    machine.calls.fail("RpcServerListen", 1740)
    machine.start_service()
    _expect_not_reached(machine, STOPPED, "stopped")


def a_service_whose_stop_hangs(machine):
    machine.provision()
    machine.start_service()
    with machine.calls.held("UnregisterPowerSettingNotification", machine.begin_stop):
        _expect_not_reached(machine, STOPPING, "stopping")
    machine.finish_stop()


def a_call_in_flight_is_answered_by_a_service_that_is_stopped_meanwhile(machine):
    machine.provision()
    machine.start_service()
    with machine.calls.held("DeviceIoControl", lambda: machine.client.begin("driver")) as asking:
        machine.begin_stop()
    answer = asking.finish()
    expect((answer.exit_code, answer.output), (DONE, FREE_OF_TIMERS), "exit code and output")
    machine.finish_stop()
    failed(machine, "ping", STOPPED, NOT_REACHABLE)


def a_service_that_dies_during_a_call(machine):
    machine.provision()
    machine.start_service()
    with machine.calls.held("DeviceIoControl", lambda: machine.client.begin("enable")) as asking:
        machine.service.kill()
    answer = asking.finish()
    expect((answer.exit_code, answer.output, answer.error),
           (NOT_REACHABLE, "", f"dozewellctl: {WENT_AWAY}\n"), "exit code, output and error")
    expect(machine.setting("EnableZ7Feature"), 1, "what the call had come to")
    # The service control manager does not know of it.
    _expect_not_reached(machine, NOT_ANSWERING, "running")
    machine.start_service()
    done(machine, "driver", FREE_OF_TIMERS)


def a_service_that_is_paused_answers(machine):
    machine.provision()
    machine.start_service()
    machine.service.control(PAUSE)
    machine.take_step()
    expect(done(machine, "strength set 1", "The strength is now 1.\n", NO_RESULT.format(1)).events[:1],
           [information("5/1/2026 8:0:0 - ParamChanging")], "first event")
    expect(machine.client.run("status").output.splitlines()[0],
           "Service             paused, which changes nothing of what it does", "first line")
    machine.service.control(CONTINUE)


def a_service_in_a_console_answers(machine):
    machine.provision()
    console, _ = machine.start_console()
    done(machine, "driver", FREE_OF_TIMERS)
    status = machine.client.run("status")
    expect(status.exit_code, DONE, "exit code of status")
    expect(status.output.splitlines()[0],
           "Service             not installed, but one answers; it may run in a console",
           "first line")
    machine.press_ctrl_c(console)
    failed(machine, "driver", NOT_INSTALLED, NOT_REACHABLE)


def a_process_that_answers_in_the_services_place_is_told(machine):
    machine.provision()
    machine.service.create()
    console, _ = machine.start_console()
    answer = machine.client.run("driver")
    expect((answer.exit_code, answer.output), (DONE, FREE_OF_TIMERS), "exit code and output")
    expect(re.sub(r"\d+", "N", answer.error, count=1),
           "dozewellctl: warning: process N answers in the service's place; unless it is "
           "DozewellService -local in a console, do not trust it\n", "warning")
    machine.press_ctrl_c(console)

    machine.start_service()
    done(machine, "driver", FREE_OF_TIMERS)
