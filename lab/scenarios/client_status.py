"""The one screen on which dozewellctl shows all that there is to know."""

import json

from machine.lab_device import READ_TIMER
from machine.registry import CURRENT, REG_QWORD, predictor_key
from steps.client import DONE, done
from steps.expect import expect, expect_true

ACCESS_DENIED = 5
NO_EVENT_LOG = 120  # Wine's answer

POWER = ("                    ac                  dc\n"
         "  display-off       10 min              10 min\n"
         "  sleep-after       30 min              30 min\n"
         "  hibernate-after   3 h 00 min          3 h 00 min\n"
         "  wake-timers       on                  on\n"
         "  hybrid-sleep      off                 off\n")


def _status(machine):
    answer = machine.client.run("status --json")
    expect((answer.exit_code, answer.error), (DONE, ""), "exit code and error of status")
    return json.loads(answer.output)


def _expect_line(machine, label, text):
    output = machine.client.run("status").output
    expect([line for line in output.splitlines() if line.startswith(label)],
           [f"{label:19} {text}"], "line")


def all_is_shown_on_one_screen(machine):
    machine.provision(total_attempts=10, current_attempt=10)
    machine.start_service()
    machine.registry.write("Strength", "2", predictor_key(CURRENT))
    machine.registry.write("Best2", "-1", predictor_key(CURRENT))
    # 2026-01-01 01:30 in New York
    machine.registry.write("LastOptimizerRun", 1767249000, CURRENT, REG_QWORD)
    machine.driver.words = 0x80000000 | 26 << 20 | 11 << 16 | 22 << 11 | 6 << 6 | 30, 0x08000056
    done(machine, "status", (
        "Service             running\n"
        "Feature             on\n"
        "Start attempts      10 of 10: the controller starts with the service\n"
        "Controller          should run: the feature is on and enough start attempts were made\n"
        "Predictions         on\n"
        "Machine             sleeps and hibernates\n"
        "Power scheme        balanced\n" + POWER +
        "Wake timers         enabled\n"
        "  0, the alarm      2026-11-22 06:30\n"
        "  1, the duration   1 h 26 min\n"
        "Strength            2\n"
        "Last optimizer run  2026-01-01 01:30:00\n"
        f"Last events         could not be read (error {NO_EVENT_LOG})\n"))
    power = {"displayOffMinutes": 10, "sleepAfterMinutes": 30, "hibernateAfterMinutes": 180,
             "allowWakeTimers": 1, "allowHybridSleep": 0}
    expect(_status(machine), {
        "answers": True, "service": "running", "featureEnabled": True, "currentAttempt": 10,
        "totalAttempts": 10, "controller": {
            "runs": "yes", "why": "the feature is on and enough start attempts were made"},
        "predictionsEnabled": True, "scheme": "balanced", "power": {"ac": power, "dc": power},
        "driverEnabled": True, "alarm": "2026-11-22 06:30", "durationMinutes": 86, "strength": 2,
        "strengthHasResult": True, "lastOptimizerRun": "2026-01-01T01:30:00", "events": None,
        "serviceState": 4, "serviceError": 0,
        "alarmFields": {"year": 26, "month": 11, "day": 22, "hour": 6, "minute": 30},
        "lastOptimizerRunUtcSeconds": 1767249000, "eventsError": NO_EVENT_LOG,
        "machine": {"sleeps": True, "hibernates": True, "hibernationFile": True,
                    "modernStandby": False, "fastStartup": False, "wakeTimersForbidden": False,
                    "hibernateAfterUnderPolicy": False, "driver": True, "wakeTimer": "driver",
                    "wakeTimerLimits": []},
    }, "status as JSON")


def showing_it_changes_nothing(machine):
    machine.provision(total_attempts=1)
    machine.start_service()
    settings = machine.registry.names()
    step = machine.client.run("status").step
    expect([entry for entry in step.entries
            if not entry.text.startswith(("read timer", "read 0"))], [], "what the service did")
    expect(machine.registry.names(), settings, "settings")
    expect_true(not machine.data_folder.exists(), "a data folder was made")


def what_the_machine_lacks_is_shown(machine):
    machine.driver.hide()
    machine.schemes.activate("custom")
    machine.provision(DisablePrediction=1)
    machine.start_service()
    done(machine, "status", (
        "Service             running\n"
        "Feature             on\n"
        "Start attempts      0 of 0: the controller starts with the service\n"
        "Controller          should run: the feature is on and enough start attempts were made\n"
        "Predictions         off, as DisablePrediction is 1\n"
        "Machine             no driver\n"
        "Power scheme        not balanced, power-saver or high-performance, or could not be "
        "read\n" + POWER +
        "Wake timers         none: the driver does not answer\n"
        "Strength            0, for which the optimizer has stored nothing yet\n"
        "Last optimizer run  never\n"
        f"Last events         could not be read (error {NO_EVENT_LOG})\n"))


def what_cannot_be_read_at_the_moment_is_left_out(machine):
    machine.provision()
    machine.start_service()
    machine.driver.fail(READ_TIMER, call=2)
    machine.calls.fail("PowerGetActiveScheme", ACCESS_DENIED, times=1)
    machine.calls.fail("PowerReadDCValueIndex", ACCESS_DENIED, call=3, times=1)
    status = _status(machine)
    expect((status["driverEnabled"], status["alarm"], status["durationMinutes"]),
           (False, None, None), "wake timers")
    expect(status["scheme"], None, "scheme")
    expect((status["power"]["ac"]["hibernateAfterMinutes"],
            status["power"]["dc"]["hibernateAfterMinutes"]), (180, None), "timeouts")


def the_start_gate_is_followed_step_by_step(machine):
    machine.provision(total_attempts=2)
    machine.start_service()
    _expect_line(machine, "Start attempts", "1 of 2: 1 more start or resume only counts")
    _expect_line(machine, "Controller",
                 "does not run: too few start attempts yet; dozewellctl enable starts it at once")
    machine.resume()
    _expect_line(machine, "Start attempts", "2 of 2: the controller starts with the service")
    _expect_line(machine, "Controller", "may run: at the latest from the next start attempt on")
    machine.resume()
    _expect_line(machine, "Controller",
                 "should run: the feature is on and enough start attempts were made")
    done(machine, "disable --yes", "The feature is off.\n")
    _expect_line(machine, "Feature", "off")
    _expect_line(machine, "Controller", "does not run: the feature is off")


def without_counters_only_a_client_starts_the_controller(machine):
    machine.provision(total_attempts=None)
    machine.start_service()
    _expect_line(machine, "Start attempts",
                 "TotalAttempts is not set: the controller never starts by itself")
    _expect_line(machine, "Controller",
                 "may run: only if the feature was enabled since the service started")
