"""The service in a console, where one looks for its faults."""

from machine.machine import DATA_FILE, HISTORY_FILE
from machine.service_control import STOPPED, STOP_PENDING, sent
from machine.service_record import Entry, error, information
from steps.data_files import asleep, awake, history, learnt_data
from steps.expect import expect

LISTENS = b"RPC server is listening...\r\n"
NOT_SENT = error("SetServiceStatus failed, error code = 6\n")
NOT_ANSWERED = error("SetServiceStatus error 6\n")


def in_a_console_the_service_runs_and_reports_that_it_cannot_send_its_state(machine):
    machine.provision(total_attempts=1)
    console, started = machine.start_console()
    expect(started.of("handler"), [], "control handlers registered")
    expect(started.events, [NOT_SENT], "events of the start")
    expect(machine.setting("CurrentAttempt"), 1, "CurrentAttempt")
    expect(machine.setting("ServiceStatus"), 0, "ServiceStatus while it serves")

    ended = machine.press_ctrl_c(console)
    expect((ended.exit_code, ended.output), (0, LISTENS), "exit code and output")
    expect(ended.step.events, [NOT_ANSWERED, NOT_SENT, NOT_SENT], "events of the end")
    expect(machine.setting("ServiceStatus"), 1, "ServiceStatus after the end")


def ctrl_c_stops_the_service_as_the_service_control_manager_does(machine):
    machine.provision()
    for hour, argument in ((9, "-local"), (10, "-LOCAL"), (11, "-Local")):
        machine.clock.set(f"2026-01-05 {hour:02}:00")
        console, started = machine.start_console(argument, "-u")
        expect([event for event in started.events if event != NOT_SENT], [
            information(f"5/1/2026 {hour}:0:0 - Activating"),
            information("Active"),
        ], f"events of the start by {argument}")

        machine.clock.pass_time(minutes=30)
        ended = machine.press_ctrl_c(console)
        expect((ended.exit_code, ended.output), (0, LISTENS), "exit code and output")
        expect([entry for entry in ended.step.entries if entry.kind != "trace"],
               _a_stop_in_a_console(hour), f"the end of {argument}")
        expect(history(machine.data_file(HISTORY_FILE))[-2:],
               [awake(f"2026-01-05 {hour:02}:00"), asleep(f"2026-01-05 {hour:02}:30")], "history")
        data = learnt_data(machine.data_file(DATA_FILE))
        expect((data.state, data.time), (0, (2026, 1, 5, 9, 0, 0)), "in use since, by the habits")


def _a_stop_in_a_console(hour):
    return [
        information(f"5/1/2026 {hour}:30:0 - Uninitializing"),
        information("Uninitialized"),
        sent(STOP_PENDING), NOT_ANSWERED,
        sent(STOP_PENDING, 3000), NOT_SENT,
        Entry("notification", "unregister"),
        Entry("setting", "write ServiceStatus 1"),
        sent(STOPPED), NOT_SENT,
    ]


def closing_the_console_lets_the_service_end(machine):
    machine.provision()
    console, _ = machine.start_console()
    machine.clock.set("2026-01-05 09:30")
    ended = machine.close_console(console)
    expect((ended.exit_code, ended.output), (0, LISTENS), "exit code and output")
    expect([entry for entry in ended.step.entries if entry.kind not in ("trace", "sleep")],
           _a_stop_in_a_console(9), "the end")
    expect(ended.step.of("sleep"), ["20000 ms"], "how long closing would wait")
    expect(machine.setting("ServiceStatus"), 1, "ServiceStatus after the end")
