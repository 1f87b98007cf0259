"""Installation, and how the service comes to life under the service control manager."""

from service import RUNNING, Configuration
from expect import expect
from record import error, information, success
from registry import DEFAULT

COUNTERS_MISSING = success("TotalAttempts or CurrentAttempt value is not defined in registry...")


def installing_creates_and_starts_the_service(machine):
    machine.provision(total_attempts=1)
    installed = machine.install()
    expect(installed.exit_code, 0, "exit code")
    expect(installed.output, b"", "output")
    expect(machine.service.configuration(), Configuration(
        type=0x10, start=2, error_control=1,
        path='"C:\\Program Files\\Dozewell\\DozewellService.exe"',
        display_name="DozewellService", account="LocalSystem",
        description="Brevan dozewell service"), "configuration")
    expect(installed.step.of("config"), ["delayed start 1"], "start type asked for")
    expect(installed.step.events, [success("Service is installed successfully.\n")], "events")
    expect(machine.service.status().state, RUNNING, "state")


def installing_twice_changes_nothing(machine):
    machine.provision(total_attempts=1)
    machine.install()
    before = machine.service.configuration(), machine.service.status()
    again = machine.run("-i")
    expect(again.exit_code, 0, "exit code")
    expect(again.step.events, [error("Failed to create service, error code = 1073\n")], "events")
    expect((machine.service.configuration(), machine.service.status()), before, "the service")


def the_first_starts_only_count_until_the_total_is_reached(machine):
    machine.provision(total_attempts=2, current_attempt=0)
    for attempt in (1, 2):
        step = machine.start_service()
        expect(step.events, [], f"events of start {attempt}")
        expect(step.of("thread"), [], f"threads of start {attempt}")
        expect(machine.setting("CurrentAttempt"), attempt, "CurrentAttempt")
        expect(machine.setting("ServiceFeedback"), None, "ServiceFeedback")
        machine.stop_service()

    machine.clock.pass_time(hours=1)
    step = machine.start_service()
    expect(step.events, [information("5/1/2026 9:0:0 - Activating"), information("Active")],
           "events of start 3")
    expect(machine.setting("CurrentAttempt"), 2, "CurrentAttempt")
    expect(machine.setting("StartTime"), int(machine.clock.now.timestamp()), "StartTime")
    expect(machine.setting("ServiceFeedback"), 1, "ServiceFeedback")


def a_resume_counts_as_a_start(machine):
    machine.provision(total_attempts=2, current_attempt=0)
    machine.start_service()
    expect(machine.resume().events, [], "events of the first resume")
    expect(machine.setting("CurrentAttempt"), 2, "CurrentAttempt")
    expect(machine.resume().events,
           [information("5/1/2026 8:0:0 - Activating"), information("Active")],
           "events of the second resume")


def without_counters_the_controller_stays_off(machine):
    machine.provision(total_attempts=None, current_attempt=0)
    expect(machine.start_service().events, [COUNTERS_MISSING], "events without a total")
    expect(machine.setting("StartTime"), None, "StartTime")
    machine.stop_service()

    machine.provision(total_attempts=0, current_attempt=None)
    machine.registry.delete("CurrentAttempt", DEFAULT)
    expect(machine.start_service().events, [COUNTERS_MISSING], "events without a count")
    expect(machine.suspend().events, [], "events of a suspend")


def the_service_reports_its_states_in_order(machine):
    machine.provision(total_attempts=1)
    up = "type 0x30 state {} controls 0xc7 exit 0 0 checkpoint 0 hint {}"
    started = machine.start_service()
    expect(started.of("handler", "notification", "status"), [
        "DozewellService",
        "register d8315c5134f73d16a0fd11a08c91e8f1 flags 1",
        up.format(4, 0),
    ], "start")
    expect(machine.setting("ServiceStatus"), 0, "ServiceStatus while it serves")
    stopped = machine.stop_service()
    expect(stopped.of("notification", "status"), [
        up.format(3, 0),
        up.format(3, 3000),
        "unregister",
        up.format(1, 0),
    ], "stop")
    expect(machine.setting("ServiceStatus"), 1, "ServiceStatus after the stop")
