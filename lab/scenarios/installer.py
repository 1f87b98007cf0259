"""The service is installed as a package, and removed again."""

from machine.lab_device import ENABLED, READ_TIMER
from machine.machine import HISTORY_FILE, SERVICE_PROGRAM
from machine.registry import CURRENT, predictor_key
from machine.service_control import RUNNING, STOPPED
from machine.service_record import error
from steps.expect import expect, expect_true
from steps.living import machine_that_knows_office_hours, sixty_days
from steps.nights import cached_timeouts, expect_timeouts

USERS_OWN = 180, 60
INSTALLED_PATH = '"C:\\Program Files\\Brevan\\Dozewell\\DozewellService.exe"'
NOT_SWITCHED_OFF = "the driver's wake timers could not be switched off"


def _sleep_on_predictions(machine):
    machine.suspend()
    expect(cached_timeouts(machine), USERS_OWN, "timeouts put aside")
    expect_true(machine.schemes.hibernate_after != USERS_OWN, "predicted timeouts are in force")
    expect_true(machine.driver.words[1] & ENABLED, "the wake timer is switched on")


def _expect_left_as_its_user_had_it(machine, words):
    """The timeouts are given back; the wake timers are off and keep what they were set to."""
    expect_timeouts(machine, USERS_OWN)
    expect(machine.driver.words, tuple(word & ~ENABLED for word in words), "wake timers")


def _machine_that_sleeps_on_predictions(machine):
    machine_that_knows_office_hours(machine)
    _sleep_on_predictions(machine)
    return machine.driver.words


def a_machine_that_had_the_package_is_left_as_its_user_had_it(machine):
    machine.schemes.hibernate_after = USERS_OWN
    with machine.package.at_hand() as package:
        machine.install_package(package)
        expect(machine.service.status().state, RUNNING, "state after the installation")
        expect(machine.service.configuration().path, INSTALLED_PATH, "path of the program")
        sixty_days(machine)
        expect_true(machine.registry.read("Best0", predictor_key(CURRENT)), "a search was made")
        machine.restart_service()
        machine.clock.pass_time(hours=10)
        _sleep_on_predictions(machine)
        words, history = machine.driver.words, machine.data_file(HISTORY_FILE)
        expect_true(history, "the history was saved")

        machine.package.remove(package)
        step = machine.take_step()
        _expect_left_as_its_user_had_it(machine, words)
        expect(machine.service.exists(), False, "the service is still there")
        expect(machine.data_file(HISTORY_FILE), history, "history")
        did = [f"{entry.kind} {entry.text}" for entry in step.entries]
        restored = did.index("scheme write 0 hibernate AC 10800")
        stopping = next(place for place, text in enumerate(did) if "state 3" in text)
        expect_true(restored > stopping, "no service sets timeouts again once they are back")


def restoring_beside_a_running_service_leaves_it_running(machine):
    words = _machine_that_sleeps_on_predictions(machine)
    restored = machine.package.setup.run("restore")
    expect((restored.exit_code, restored.output, restored.error), (0, "", ""), "the setup program")
    _expect_left_as_its_user_had_it(machine, words)
    expect(machine.service.status().state, RUNNING, "state")


def restoring_works_after_the_service_was_stopped(machine):
    words = _machine_that_sleeps_on_predictions(machine)
    machine.stop_service()
    expect(cached_timeouts(machine), USERS_OWN, "timeouts that a stop leaves put aside")
    restored = machine.package.setup.run("restore")
    expect(restored.exit_code, 0, "exit code")
    _expect_left_as_its_user_had_it(machine, words)


def restoring_without_a_device_gives_back_the_timeouts(machine):
    _machine_that_sleeps_on_predictions(machine)
    machine.driver.hide()
    restored = machine.package.setup.run("restore")
    expect((restored.exit_code, restored.error), (0, ""), "the setup program")
    expect_timeouts(machine, USERS_OWN)


def a_driver_that_does_not_tell_its_timers_is_reported(machine):
    _machine_that_sleeps_on_predictions(machine)
    machine.driver.fail(READ_TIMER)
    restored = machine.package.setup.run("restore")
    expect((restored.exit_code, restored.error), (1, f"dozewell-setup: {NOT_SWITCHED_OFF}\n"),
           "the setup program")
    expect(restored.step.events, [error(f"dozewell-setup: {NOT_SWITCHED_OFF}")], "events")
    expect_timeouts(machine, USERS_OWN)


def an_installed_service_is_asked_to_start_late_and_to_be_restarted(machine):
    machine.service.create()
    configured = machine.package.setup.run("configure-service")
    expect((configured.exit_code, configured.error), (0, ""), "the setup program")
    expect(configured.step.of("config"),
           ["delayed start 1", "restart after 60000 300000 900000 ms, anew after 86400 s"],
           "what was asked for")


def the_service_is_stopped_with_its_process_and_can_be_started_again(machine):
    machine.provision()
    machine.start_service()
    _set_up(machine, "note-service")
    _set_up(machine, "stop-service")
    expect(machine.processes.threads(SERVICE_PROGRAM), {}, "threads of the service")
    machine.finish_stop()
    expect(machine.service.status().state, STOPPED, "state")

    _set_up(machine, "stop-service")
    _set_up(machine, "undo-service")
    machine.service.wait_for(RUNNING)


def _set_up(machine, step):
    done = machine.package.setup.run(step)
    expect((done.exit_code, done.error), (0, ""), step)
