"""The program as installer and uninstaller of its service."""

from machine.service_control import RUNNING, STOPPED, Configuration
from machine.service_record import error, success
from steps.expect import expect

INSTALLED = success("Service is installed successfully.\n")
UNINSTALLED = success("Service is uninstalled successfully.\n")
NO_SUCH_SERVICE = error("OpenService failed, error code = 1060\n")
ACCESS_DENIED = 5


def _expect_events(finished, events, what):
    """A run that writes to the event log and prints nothing."""
    expect(finished.step.events, events, what)
    expect((finished.exit_code, finished.output), (0, b""), f"exit code and output, {what}")


def _expect_uninstalled(machine):
    machine.waiting.until(lambda: not machine.service.exists(), "the service is still there")


def installing_creates_and_starts_the_service(machine):
    machine.provision(total_attempts=1)
    installed = machine.install()
    _expect_events(installed, [INSTALLED], "installing")
    expect(machine.service.configuration(), Configuration(
        type=0x10, start=2, error_control=1,
        path='"C:\\Program Files\\Dozewell\\DozewellService.exe"',
        display_name="DozewellService", account="LocalSystem",
        description="Brevan dozewell service"), "configuration")
    expect(installed.step.of("config"), ["delayed start 1"], "start type asked for")
    expect(machine.service.status().state, RUNNING, "state")


def installing_twice_changes_nothing(machine):
    machine.provision(total_attempts=1)
    machine.install()
    before = machine.service.configuration(), machine.service.status()
    again = machine.run("-i")
    _expect_events(again, [error("Failed to create service, error code = 1073\n")], "again")
    expect(again.step.of("config"), [], "start type asked for")
    expect((machine.service.configuration(), machine.service.status()), before, "the service")


def uninstalling_stops_a_running_service_and_deletes_it(machine):
    machine.provision(total_attempts=1)
    machine.install()
    _expect_events(machine.run("-u"), [UNINSTALLED], "uninstalling")
    _expect_uninstalled(machine)
    expect(machine.setting("ServiceStatus"), 1, "ServiceStatus")


def uninstalling_a_service_that_is_stopped_reports_that_and_deletes_it(machine):
    machine.service.create()
    _expect_events(machine.run("-u"), [error("Failed to stop service! Error code = 1062\n"),
                                       UNINSTALLED], "uninstalling")
    _expect_uninstalled(machine)


def uninstalling_deletes_the_log_file_of_the_current_folder_alone(machine):
    here = machine.current_folder / "DozewellService.log"
    elsewhere = machine.current_folder / "Program Files" / "Dozewell" / "DozewellService.log"
    for file in (here, elsewhere):
        file.write_bytes(b"of yesterday")
    # Also without a service, and when it cannot even be found out whether there is one.
    _expect_events(machine.run("-u"), [NO_SUCH_SERVICE], "without a service")
    expect((here.exists(), elsewhere.exists()), (False, True), "log files left")

    here.write_bytes(b"of today")
    machine.calls.fail("OpenSCManagerW", ACCESS_DENIED)
    _expect_events(machine.run("-u"), [error("OpenSCManager failed, error code = 5\n")],
                   "without access")
    expect(here.exists(), False, "a log file is left")

    machine.calls.reset()
    _expect_events(machine.run("-u"), [NO_SUCH_SERVICE], "without a log file")
    elsewhere.unlink()


def the_arguments_may_be_of_any_case_and_only_the_first_counts(machine):
    machine.provision(total_attempts=1)
    _expect_events(machine.install("-I", "-u", "x"), [INSTALLED], "-I")
    _expect_events(machine.run("-U", "-i", "x"), [UNINSTALLED], "-U")
    _expect_uninstalled(machine)


def any_other_argument_shows_how_to_use_the_program(machine):
    usage = (b"Usage: \r\n"
             b"  DozewellService -i\t// install the service\r\n"
             b"  DozewellService -u\t// uninstall the service\r\n")
    for argument in ("-x", "", "i", "-install", "-i ", "--local", "/?"):
        finished = machine.run(argument, "-i")
        expect(finished.output, usage, f"output for {argument!r}")
        expect(finished.step.entries, [], f"what was done for {argument!r}")
    expect(machine.exit_code("-x"), -1, "exit code")
    expect(machine.service.exists(), False, "a service is installed")


def an_installation_that_fails_reports_the_call_and_its_error(machine):
    for call, report in (("OpenSCManagerW", "OpenSCManager failed, error code = 5\n"),
                         ("CreateServiceW", "Failed to create service, error code = 5\n")):
        machine.calls.reset()
        machine.calls.fail(call, ACCESS_DENIED)
        _expect_events(machine.run("-i"), [error(report)], call)
        expect(machine.service.exists(), False, f"a service is installed without {call}")


def a_service_that_cannot_be_started_stays_installed(machine):
    machine.calls.fail("StartServiceW", 1069)
    machine.calls.fail("ChangeServiceConfig2W", ACCESS_DENIED)
    _expect_events(machine.run("-i"),
                   [INSTALLED, error("Failed to start service! Error code = 1069\n")], "installing")
    expect(machine.service.status().state, STOPPED, "state")


def an_uninstallation_that_fails_reports_each_call_and_its_error(machine):
    machine.provision(total_attempts=1)
    machine.start_service()
    for calls, reports in (
            (["OpenServiceW"], ["OpenService failed, error code = 5\n"]),
            (["ControlService", "DeleteService"], [
                "Failed to stop service! Error code = 5\n",
                "Failed to delete service! Error code = 5\n"])):
        machine.calls.reset()
        for call in calls:
            machine.calls.fail(call, ACCESS_DENIED)
        _expect_events(machine.run("-u"), [error(report) for report in reports], str(calls))
        expect(machine.service.status().state, RUNNING, f"state without {calls}")

    machine.calls.reset()
    machine.calls.fail("ControlService", ACCESS_DENIED)
    _expect_events(machine.run("-u"), [error("Failed to stop service! Error code = 5\n"),
                                       UNINSTALLED], "not stopped")
    # A service that runs is only removed when it ends.
    expect(machine.service.status().state, RUNNING, "state of a service that was deleted")
    machine.begin_stop()
    _expect_uninstalled(machine)


def a_run_without_argument_outside_the_service_control_manager_reports_that(machine):
    machine.provision(total_attempts=1)
    # Wine takes a program for a service while the service that it started last is still there.
    machine.start_service()
    machine.stop_service()
    _expect_events(machine.run(),
                   [error("StartServiceCtrlDispatcher failed, error code = 1063\n")], "running")
