"""Tests dozewellctl from outside under Wine, against a service that runs in a console and one that
is installed. Neither finds the driver's device or a power scheme, so their commands are refused.

    python3 -m tests.ctl_cli_test --wine "wine" --folder build/windows

Works on the machine that WINEPREFIX names: it empties this product's registry keys and data folder
there, and installs and uninstalls the service.
"""

import json
import re
import shlex
import shutil
import subprocess
import sys
import time

from tests.support.cli import IDENTITY, ROOT, SETTINGS, WRONG_TIME
from tests.support.client_machine import NOT_INSTALLED, SECTION, await_controller, main
from tests.support.expect import contains, equal, matches
from tests.support.programs import wait_until
from tests.support.strict_json import documented_examples, expect_documented, strict_json

WEEK = ROOT / "tests" / "event_logs" / "week.xml"
COMMANDS = ("status", "check", "enable", "disable", "driver", "wake get", "wake set", "wake raw",
            "power get", "power set", "scheme get", "scheme set", "strength get", "strength set",
            "reset-history", "ping", "watch", "settings show", "settings export", "export",
            "explain", "import-history", "report")
GROUPS = ("wake", "power", "scheme", "strength", "settings")
# A command line for each command that asks the service.
SERVICE_COMMANDS = (
    ("status",), ("check",), ("enable",), ("disable",), ("driver",), ("wake", "get"),
    ("wake", "get", "1"), ("wake", "set", "0", "2026-11-21 06:30"), ("wake", "raw", "1"),
    ("wake", "raw", "1", "90"), ("power", "get"), ("power", "set", "ac", "sleep-after", "30m"),
    ("scheme", "get"), ("scheme", "set", "balanced"), ("strength", "get"), ("strength", "set", "1"),
    ("reset-history", "--yes"), ("ping",))

STOPPED = "the service is stopped; as administrator, net start DozewellService starts it"
NOTHING_LEARNT = r"C:\ProgramData\Brevan\Z7\cpredict.z7: ignored: it cannot be opened; what the " \
                 "service has learnt is not known, since the service does not answer"
NO_DRIVER = "the service has no driver device, or the driver does not answer"
NOT_ARMED = "the timer was not armed: the service has no driver device, or the driver did not " \
            "take it"
NO_ENGINE = r"SOFTWARE\Corisk\Z7: TimeResolution, DaysInCycle, MinutesInDay, FirstLastWeight, " \
            "SecondLastWeight, AgregationWeight are missing: " \
            "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations"
NOT_STORED = "the optimizer has stored nothing for strength %d yet"

# How new what is explained is.
AS_OF = re.compile(r'\AAs of .*\n|,"asOf":\{[^{}]*\}')


# The command line itself

def test_no_command(machine):
    machine.fails(2, "no command; dozewellctl --help lists them")
    for group in GROUPS:
        machine.fails(2, "no command; dozewellctl %s --help lists them" % group, group)


def test_unknown_arguments(machine):
    unexpected = "The following argument was not expected: "
    machine.fails(2, unexpected + "forget", "forget")
    machine.fails(2, unexpected + "--json", "--json")
    machine.fails(2, unexpected + "--yes", "enable", "--yes")
    machine.fails(2, unexpected + "more", "ping", "more")
    machine.fails(2, unexpected + "drop", "wake", "drop")
    machine.fails(2, unexpected + "/help", "ping", "/help")


def test_arguments_that_are_missing(machine):
    machine.fails(2, "TIMER is required", "wake", "set")
    machine.fails(2, "TIME is required", "wake", "set", "0")
    machine.fails(2, "TIMER is required", "wake", "raw")
    machine.fails(2, "VALUE is required", "power", "set", "ac", "sleep-after")
    machine.fails(2, "SCHEME is required", "scheme", "set")
    machine.fails(2, "STRENGTH is required", "strength", "set")
    machine.fails(2, "--at: 1 required TIME missing", "explain", "--at")


def test_values_out_of_range(machine):
    machine.fails(2, "TIMER: not 0 or 1: 2", "wake", "set", "2", "2026-11-21 06:30")
    machine.fails(2, "TIME: not a local time from 2000-01-01 00:00 to 2127-12-31 23:59: "
                  "2128-01-01 00:00", "wake", "set", "0", "2128-01-01 00:00")
    machine.fails(2, "DURATION: not 0 to 1048575 minutes, such as 45m or 1h30m: 1048576", "wake",
                  "raw", "1", "1048576")
    machine.fails(2, "DURATION: not 0 to 1048575 minutes, such as 45m or 1h30m: -1", "wake", "raw",
                  "1", "-1")
    machine.fails(2, "hybrid-sleep: not off or on: 2", "power", "set", "ac", "hybrid-sleep", "2")
    machine.fails(2, "STRENGTH: not a whole number from 0 to 2147483647: -5", "strength", "set",
                  "-5")


def test_help_of_the_program(machine):
    text = machine.works("--help")
    contains(text, "Usage: dozewellctl [OPTIONS] [COMMAND]")
    for command in COMMANDS:
        contains(text, "\n  %s " % command.split()[0])
    examples = re.findall(r"^  dozewellctl (.*)$", text, re.MULTILINE)
    equal(len(examples), 3)
    for group in GROUPS:
        text = machine.works(group, "--help")
        contains(text, "Usage: dozewellctl %s [OPTIONS] [COMMAND]" % group)
        for command in COMMANDS:
            if command.startswith(group + " "):
                contains(text, "\n  %s " % command.split()[1])


def test_help_of_each_command(machine):
    for command in COMMANDS:
        text = machine.works(*command.split(), "--help")
        contains(text, "Usage: dozewellctl %s [OPTIONS]" % command)
        contains(text, "--json")
        equal([line for line in text.splitlines() if len(line) > 110], [])
        # Each example is understood: it fails only because there is no service.
        examples = re.findall(r"^  dozewellctl (.*)$", text, re.MULTILINE)
        if not examples:
            raise AssertionError("no example of " + command)
        for example in examples:
            words = shlex.split(example)
            equal(" ".join(words).startswith(command), True)
            if command == "import-history":
                equal(machine.ctl(*words)[0], 1)
            elif command.startswith("settings"):
                equal(machine.ctl(*words)[0], 0)
            elif command == "export":
                equal(machine.ctl(*words)[0], 4)
            elif command not in ("watch", "explain", "report"):
                equal(machine.ctl(*words)[0], 1 if words == ["reset-history"] else 3)


def test_version(machine):
    version = (ROOT / "VERSION").read_text().strip()
    equal(machine.works("--version"), "dozewellctl %s\n" % version)


def test_output_that_cannot_be_written(machine):
    with open("/dev/full", "wb") as full:
        machine.fails(1, "standard output: cannot be written: No space left on device", "--help",
                      stdout=full)


# Without a service

def test_a_service_that_is_not_installed(machine):
    for command in SERVICE_COMMANDS[2:]:
        machine.fails(3, NOT_INSTALLED, *command)
        machine.fails(3, NOT_INSTALLED, *command, "--json")


def test_status_without_a_service(machine):
    machine.provision(attempts=3)
    code, out, err = machine.ctl("status")
    equal((code, err), (3, "dozewellctl: %s\n" % NOT_INSTALLED))
    contains(out, "Service             not installed\n")
    contains(out, "Feature             not known, as the service does not answer\n")
    contains(out, "Start attempts      0 of 3: 3 more starts or resumes only count\n")
    contains(out, "Controller          does not run: the service does not answer\n")
    contains(out, "Wake timers         not known, as the service does not answer\n")
    code, out, err = machine.ctl("status", "--json")
    equal((code, err), (3, "dozewellctl: %s\n" % NOT_INSTALLED))
    status = json.loads(out)
    equal((status["answers"], status["service"], status["totalAttempts"]),
          (False, "not installed", 3))


def test_check_without_a_service(machine):
    machine.provision(attempts=3)
    code, out, err = machine.ctl("check")
    equal((code, err), (3, "dozewellctl: %s\n" % NOT_INSTALLED))
    contains(out, "\nBAD   Service           not installed\n")
    contains(out, "\nnote  Account           the service is not installed\n")
    contains(out, "\nBAD   RPC               does not answer\n")
    contains(out, "\nnote  Last nights       the System log cannot be read (error 120)\n")
    equal([line for line in out.splitlines() if not re.match("(ok  |note|BAD )  | +-> |\\d+ ok, ", line)],
          [])
    equal(machine.data.parent.exists(), False)


def test_watch_where_there_is_no_event_log(machine):
    machine.fails(1, "the event log cannot be watched (error 120)", "watch")
    contains(machine.ctl("status")[1], "Last events         could not be read (error 120)\n")


def test_explanation_without_settings(machine):
    machine.fails(1, NO_ENGINE, "explain")
    machine.fails(2, WRONG_TIME % "--at" + "noon", "explain", "--at", "noon")


def test_nothing_is_explained_or_reported_without_learnt_data(machine):
    machine.provision()
    for command in "explain", "report":
        machine.fails(4, NOTHING_LEARNT, command)
    equal(machine.data.parent.exists(), False)
    equal((machine.scratch / "dozewell-report.html").exists(), False)


def test_explanation_is_that_of_the_replay_tool(machine):
    machine.provision()
    (machine.scratch / "s.ini").write_text(SETTINGS)
    (machine.scratch / "h.csv").write_text("28800,0\n43200,1\n115200,0\n129600,1\n")
    machine.data.mkdir(parents=True)
    replay = machine.program("dozewell-replay")
    done = machine.run(replay, "learn", "--history", "h.csv", "--settings", "s.ini", "--data",
                       "d.z7")
    equal((done.returncode, done.stderr), (0, b""))
    shutil.copy(machine.scratch / "d.z7", machine.data / "cpredict.z7")
    for form in ((), ("--json",)):
        expected = machine.run(replay, "explain", "--data", "d.z7", "--settings", "s.ini", "--at",
                               "1970-01-03T00:10:00", *form)
        equal((expected.returncode, expected.stderr), (0, b""))
        contains(expected.stdout.decode(), "1970-01-03" if form else "wakes it after")
        out = machine.works("explain", "--at", "1970-01-03 00:10", *form)
        equal(AS_OF.sub("", out), IDENTITY.sub("", expected.stdout.decode()))
        equal(len(AS_OF.findall(out)), 1)
    now = machine.works("explain")
    equal(now.splitlines()[0],
          "As of the last save, 1970-01-02 12:00:00, since the service does not answer.")
    matches(now.splitlines()[1], r"A suspend at \w{3} \d{4}-\d\d-\d\d \d\d:\d\d.*")


def test_report_is_that_of_the_replay_tool(machine):
    machine.provision()
    (machine.scratch / "s.ini").write_text(SETTINGS)
    (machine.scratch / "h.csv").write_text("28800,0\n43200,1\n115200,0\n129600,1\n")
    machine.data.mkdir(parents=True)
    identity = json.loads(machine.ctl("status", "--json")[1])["identity"]
    with open(machine.scratch / "s.ini", "a", encoding="utf-8") as file:
        file.write("[Machine]\nName=%(name)s\nZone=%(zone)s\n" % identity)
    replay = machine.program("dozewell-replay")
    for command in (("learn", "--history", "h.csv", "--settings", "s.ini", "--data", "d.z7"),
                    ("import", "--history", "h.csv", "--out", "h.dat")):
        done = machine.run(replay, *command)
        equal((done.returncode, done.stderr), (0, b""))
    shutil.copy(machine.scratch / "d.z7", machine.data / "cpredict.z7")
    shutil.copy(machine.scratch / "h.dat", machine.data / "zs7state.dat")
    out = machine.works("report")
    page = (machine.scratch / "dozewell-report.html").read_text()
    equal(out, "dozewell-report.html: %d bytes\n" % len(page.encode()))
    date, clock = re.search(r"Dozewell report of \w+ (\d+ \w+ \d+), (\d\d:\d\d)\.", page).groups()
    now = time.strptime(date + clock, "%d %b %Y%H:%M")
    done = machine.run(replay, "report", "--history", "h.csv", "--data", "d.z7", "--settings",
                       "s.ini", "--now", time.strftime("%Y-%m-%dT%H:%M:00", now), "--out", "r.html")
    equal((done.returncode, done.stderr), (0, b""))
    # The page is too long to be printed when it differs.
    as_of = re.compile("<p class=\"note\">As of the last save, 1970-01-02 12:00:00, since the service "
                       "does not answer\\.</p>")
    equal(len(as_of.findall(page)), 1)
    equal(as_of.sub("", page) == (machine.scratch / "r.html").read_text(), True)


def save_nothing_learnt(machine):
    """A data file of a service that has learnt nothing."""
    (machine.scratch / "s.ini").write_text(SETTINGS)
    (machine.scratch / "h.csv").write_text("")
    done = machine.run(machine.program("dozewell-replay"), "learn", "--history", "h.csv",
                       "--settings", "s.ini", "--data", "d.z7")
    equal((done.returncode, done.stderr), (0, b""))
    machine.data.mkdir(parents=True, exist_ok=True)
    shutil.copy(machine.scratch / "d.z7", machine.data / "cpredict.z7")


def test_report_on_standard_output(machine):
    machine.provision()
    save_nothing_learnt(machine)
    warnings = [r"C:\ProgramData\Brevan\Z7\zs7state.dat: ignored: it cannot be opened"]
    # The page says at which minute it was made, so both are made within one.
    while True:
        out = machine.works("report", "--out", "-", warnings=warnings)
        machine.works("report", "--out", "page.html", warnings=warnings)
        page = (machine.scratch / "page.html").read_text()
        times = [re.search(r"Dozewell report of .*?\.", text)[0] for text in (out, page)]
        if times[0] == times[1]:
            break
    equal(out == page, True)
    machine.fails(2, "--json prints to standard output, so the page cannot be written there",
                  "report", "--out", "-", "--json")


def test_report_without_settings_or_a_place(machine):
    machine.fails(1, NO_ENGINE, "report")
    equal((machine.scratch / "dozewell-report.html").exists(), False)
    machine.provision()
    (machine.scratch / "folder").mkdir()
    save_nothing_learnt(machine)
    code, out, err = machine.ctl("report", "--out", "folder")
    equal((code, out), (1, ""))
    equal(err.splitlines()[-1], "dozewellctl: folder: cannot be written: not a regular file")


def test_explanation_of_what_is_not_done(machine):
    machine.provision()
    machine.write_setting("\\Current", "EnableZ7Feature", "REG_DWORD", 0)
    machine.write_setting("\\Current", "DisablePrediction", "REG_DWORD", 1)
    save_nothing_learnt(machine)
    machine.works("explain", warnings=[
        "the feature is off, so the service does none of this",
        "DisablePrediction is 1, so the service does none of this"])


def test_import_where_there_is_no_event_log(machine):
    machine.provision()
    machine.fails(1, "the System log cannot be read (error 120); --from reads an export of it",
                  "import-history", "--yes")
    equal(machine.data.parent.exists(), False)


def test_import_of_an_event_log(machine):
    machine.provision()
    shutil.copy(WEEK, machine.scratch / "week.xml")
    (machine.scratch / "s.ini").write_text(SETTINGS)
    done = machine.run(machine.program("dozewell-replay"), "import", "--from-event-log", "week.xml",
                       "--out", "h.dat", "--data", "d.z7", "--settings", "s.ini")
    equal((done.returncode, done.stderr), (0, b""))
    question = r"C:\ProgramData\Brevan\Z7\zs7state.dat gets 24 records, "
    code, out, err = machine.ctl("import-history", "--from", "week.xml", stdin=None, input=b"n\n")
    equal((code, out, err.startswith(question)), (1, "", True))
    contains(err, r"C:\ProgramData\Brevan\Z7\cpredict.z7 is made from it. Go on? [y/N] ")
    contains(err, "dozewellctl: nothing was imported\n")
    equal(machine.data.parent.exists(), False)
    out = machine.works("import-history", "--from", "week.xml", "--yes")
    contains(out, r"C:\ProgramData\Brevan\Z7\zs7state.dat: 24 records; from the event log: 24 ")
    contains(out, "\nC:\\ProgramData\\Brevan\\Z7\\cpredict.z7: learnt\n")
    for name, expected in (("zs7state.dat", "h.dat"), ("cpredict.z7", "d.z7")):
        equal((machine.data / name).read_bytes(), (machine.scratch / expected).read_bytes())
    # The service would continue from what was learnt.
    machine.works("explain")
    again = json.loads(machine.works("import-history", "--from", "week.xml", "--json"))
    equal((again["records"], again["added"], again["learnt"]), (24, 0, False))


def test_import_of_an_event_log_from_standard_input(machine):
    machine.provision()
    log = WEEK.read_bytes()
    machine.fails(2, "--from -: the log takes the place of an answer; --yes does not ask",
                  "import-history", "--from", "-", stdin=None, input=log)
    equal(machine.data.parent.exists(), False)
    out = machine.works("import-history", "--from", "-", "--yes", stdin=None, input=log)
    contains(out, r"C:\ProgramData\Brevan\Z7\zs7state.dat: 24 records; from the event log: 24 ")
    equal((machine.data / "zs7state.dat").stat().st_size, 24 * 16)


# With a service in a console

def test_ping(machine):
    with machine.service():
        matches(machine.works("ping"), r"The service answers, in \d+\.\d\d ms\.\n")
        equal(list(json.loads(machine.works("ping", "--json"))), ["milliseconds"])
    machine.fails(3, NOT_INSTALLED, "ping")


def test_nothing_is_imported_beside_a_service_in_a_console(machine):
    with machine.service():
        machine.fails(1, "the service runs in a console; end it there first", "import-history",
                      "--from", str(WEEK), "--yes")


def test_what_needs_the_driver_is_refused(machine):
    with machine.service():
        machine.fails(1, NO_DRIVER, "driver")
        machine.fails(1, "the timer could not be read: " + NO_DRIVER, "wake", "get")
        machine.fails(1, "the timer could not be read: " + NO_DRIVER, "wake", "raw", "0")
        machine.fails(1, NOT_ARMED, "wake", "set", "1", "2126-11-21 06:30")
        machine.fails(1, NOT_ARMED, "wake", "raw", "0", "1h30m")


def test_what_needs_the_power_scheme_is_refused(machine):
    with machine.service():
        machine.fails(1, "the service could not read the active power scheme", "power", "get")
        machine.fails(1, "the service could not write hibernate-after into the active power scheme",
                      "power", "set", "dc", "hibernate-after", "3h")
        machine.fails(1, "the active power scheme is not balanced, power-saver or "
                      "high-performance, or could not be read", "scheme", "get")


def test_strength(machine):
    with machine.service():
        equal(machine.works("strength", "get"), "The strength is 0.\n")
        equal(machine.works("strength", "set", "2147483647", warnings=[NOT_STORED % 2147483647]),
              "The strength is now 2147483647.\n")
        equal(machine.read_setting("\\Current" + SECTION, "Strength"), "2147483647")
        equal(machine.works("strength", "get", "--json"), '{"strength":2147483647}\n')
        machine.write_setting("\\Current" + SECTION, "Best1", "REG_SZ", "-1")
        equal(machine.works("strength", "set", "1", "--json"), '{"strength":1}\n')
        equal(machine.read_setting("\\Current" + SECTION, "Strength"), "1")
        # A value of another type stays as it is.
        machine.write_setting("\\Current" + SECTION, "Strength", "REG_BINARY", "00")
        machine.fails(1, "the service could not store the strength", "strength", "set", "2")
        equal(machine.read_setting("\\Current" + SECTION, "Strength"), "00")


def test_the_feature_is_switched_although_the_driver_is_absent(machine):
    machine.provision(attempts=3)
    without_driver = "the feature is %s now, but the driver's timers were not switched: " \
                     + NO_DRIVER
    not_started = ", or the controller could not be started"
    with machine.service():
        machine.fails(1, without_driver % "on" + not_started, "enable")
        equal(machine.read_setting("\\Current", "EnableZ7Feature"), "0x1")
        equal(machine.read_setting("\\Current", "CurrentAttempt"), "0x3")
        equal(machine.works("reset-history", "--yes"), "The service has been told to forget.\n")
        machine.fails(1, without_driver % "off", "disable", "--json", "--yes")
        equal(machine.read_setting("\\Current", "EnableZ7Feature"), "0x0")
        machine.fails(1, "the history was not reset, since the controller does not run; "
                      "dozewellctl status shows why", "reset-history", "--yes")


def test_a_controller_that_cannot_be_built_is_reported_and_the_choice_kept(machine):
    with machine.service():
        machine.fails(1, "the controller cannot be built: " + NO_ENGINE,
                      "enable")
        equal(machine.read_setting("\\Current", "EnableZ7Feature"), "0x1")
        matches(machine.works("ping"), r"The service answers, in .*\n")


def test_reset_asks_first(machine):
    machine.provision()
    question = "The service will forget all that it has learnt. Go on? [y/N] "
    with machine.service():
        await_controller(machine)
        for answer in (b"", b"\n", b"n\n", b"yeah\n", b"no, yes\n"):
            code, out, err = machine.ctl("reset-history", stdin=None, input=answer)
            equal((code, out, err),
                  (1, "", question + "\ndozewellctl: nothing was reset\n"))
        machine.write_setting("\\Current", "ServiceFeedback", "REG_DWORD", 2)
        for answer in (b"y\n", b"YES\r\n"):
            code, out, err = machine.ctl("reset-history", "--json", stdin=None, input=answer)
            out = IDENTITY.sub("", out)
            equal((code, out, err), (0, '{"reset":true}\n', question + "\n"))
        equal(machine.read_setting("\\Current", "ServiceFeedback"), "0x1")


def test_disable_asks_nobody_but_a_user(machine):
    machine.provision()
    refused = "dozewellctl: disable asks first, and there is no terminal to ask at; --yes does " \
              "not ask. The service will lose what it has learnt since it last saved that; " \
              "nothing is saved yet. To keep it, run net stop DozewellService, which saves it, " \
              "and net start DozewellService first, as administrator.\n"
    with machine.service():
        await_controller(machine)
        for answer in (b"", b"y\n"):
            equal(machine.ctl("disable", stdin=None, input=answer), (2, "", refused))
        equal(machine.read_setting("\\Current", "EnableZ7Feature"), None)


def test_json_is_what_the_manual_says(machine):
    machine.provision()
    examples = documented_examples("dozewellctl")
    equal(sorted(set(COMMANDS) - set(examples)), [])
    with machine.service():
        await_controller(machine)
        machine.write_setting("\\Current" + SECTION, "Best1", "REG_SZ", "-1")
        for command, more in (("status", ()), ("strength set", ("1",)), ("strength get", ()),
                              ("reset-history", ("--yes",)), ("ping", ())):
            code, out, err = machine.ctl(*command.split(), *more, "--json")
            equal((code, err), (0, ""))
            expect_documented(strict_json(out), examples[command], command)
        code, out, err = machine.ctl("check", "--try", "--json")
        check = strict_json(out)
        expect_documented(check, examples["check"], "check")
        equal((code, err), (1, "dozewellctl: %d of %d lines are BAD\n" %
                            (check["bad"], len(check["lines"]))))
        replayed = documented_examples("dozewell-replay")
        save_nothing_learnt(machine)
        for command, more in (("explain", ()), ("report", ("--out", "ü.html"))):
            code, out, _ = machine.ctl(command, *more, "--json")
            equal(code, 0)
            example = {**replayed[command], **examples[command]}
            expect_documented(strict_json(out), example, command)


def test_status_of_a_service_in_a_console(machine):
    machine.provision()
    with machine.service():
        await_controller(machine)
        out = machine.works("status")
        equal([line for line in out.splitlines() if len(line) > 100], [])
        equal(out.splitlines()[:5], [
            "Service             not installed, but one answers; it may run in a console",
            "Feature             on",
            "Start attempts      0 of 0: the controller starts with the service",
            "Controller          should run: the feature is on and enough start attempts were made",
            "Predictions         on"])
        contains(out, "\nWake timers         none: the driver does not answer\n")
        contains(out, "\nStrength            0, for which the optimizer has stored nothing yet\n")
        contains(out, "\nLast optimizer run  never\n")
        summer = 1782945000
        machine.write_setting("\\Current", "LastOptimizerRun", "REG_QWORD", summer)
        status = json.loads(machine.works("status", "--json"))
        equal(status["answers"], True)
        equal(status["controller"]["runs"], "yes")
        equal(status["scheme"], None)
        equal(status["power"]["dc"]["hibernateAfterMinutes"], None)
        equal(status["driverEnabled"], None)
        equal(status["lastOptimizerRun"],
              time.strftime("%Y-%m-%dT%H:%M:%S", time.localtime(summer)))


# With an installed service

def test_an_installed_service(machine):
    machine.provision(attempts=1)
    service = machine.program("DozewellService")
    try:
        # The service would keep a pipe open.
        machine.run(service, "-i", stdout=subprocess.DEVNULL)
        wait_until(lambda: machine.ctl("ping")[0] == 0, "the service does not answer")
        out = machine.works("status")
        contains(out, "Service             running\n")
        # Only the first start counted.
        contains(out, "Start attempts      1 of 1: the controller starts with the service\n")
        contains(out, "Controller          may run: at the latest from the next start attempt on\n")
        machine.fails(1, "the service must be stopped, but its state is running; as administrator, "
                      "net stop DozewellService stops it", "import-history", "--from", str(WEEK))
        equal(machine.run("net", "stop", "DozewellService").returncode, 0)
        wait_until(lambda: b"STOPPED" in machine.run("sc", "query", "DozewellService").stdout,
                   "the service does not stop")
        machine.fails(3, STOPPED, "ping")
        machine.fails(3, STOPPED, "enable", "--json")
        code, out, err = machine.ctl("status")
        equal((code, err), (3, "dozewellctl: %s\n" % STOPPED))
        contains(out, "Service             stopped\n")
    finally:
        machine.run(service, "-u", stdout=subprocess.DEVNULL)
    wait_until(lambda: machine.ctl("ping")[2] == "dozewellctl: %s\n" % NOT_INSTALLED,
               "the service stays installed")


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
