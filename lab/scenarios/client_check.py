"""What dozewellctl check says of a machine, good or bad."""

import json
import os

from machine.client_view import (HIBERNATION_FILE, KERNEL_POWER, MODERN_STANDBY, S3, S4, SLEPT, WOKE)
from machine.installation import PROGRAM
from machine.machine import HISTORY_FILE
from steps.client import DONE, NOT_DONE, NOT_REACHABLE
from steps.expect import expect, expect_true
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, suspend_at, wake_by_timer_at

DEMAND_START, DISABLED = 3, 4


def _check(machine, options="--json"):
    return machine.client.run(f"check {options}")


def _bad_lines(machine):
    """Names and texts of the lines that are BAD, each of which says what to do."""
    answer = _check(machine)
    bad = [line for line in json.loads(answer.output)["lines"] if line["verdict"] == "bad"]
    expect_true(all(line["advice"] for line in bad), "a line that is BAD has no advice")
    expect(answer.exit_code, NOT_DONE if bad else DONE, "exit code")
    return {line["name"]: line["text"] for line in bad}


def _expect_bad(machine, name, part):
    bad = _bad_lines(machine)
    expect(list(bad), [name], "lines that are BAD")
    expect_true(part in bad[name], f"{bad[name]!r} lacks {part!r}")


def _verdict(machine, name):
    return next(line["verdict"] for line in json.loads(_check(machine).output)["lines"]
                if line["name"] == name)


def _running_service(machine):
    machine.provision()
    machine.start_service()


def _night(machine, unheard_nap=False):
    """A night in both logs, after which it is the next morning."""
    _running_service(machine)
    machine.client_view.register_event_source(PROGRAM)
    machine.client_view.log_service_events(machine.restart_service())
    step = suspend_at(machine, "2026-01-05 18:00")
    machine.client_view.log_system_event(KERNEL_POWER, SLEPT)
    machine.client_view.log_service_events(step)
    if unheard_nap:
        machine.clock.pass_until("2026-01-06 03:00", awake=False)
        machine.client_view.log_system_event(KERNEL_POWER, WOKE)
        machine.clock.pass_until("2026-01-06 03:10", awake=False)
        machine.client_view.log_system_event(KERNEL_POWER, SLEPT)
    step = come_back_at(machine, "2026-01-06 08:00")
    machine.client_view.log_system_event(KERNEL_POWER, WOKE)
    machine.client_view.log_service_events(step)


def nothing_is_bad_on_a_good_machine_and_nothing_is_changed(machine):
    _night(machine)
    names = machine.registry.names()
    files = sorted(machine.data_folder.parent.rglob("*"))
    machine.take_step()
    answer = _check(machine, "")
    expect((answer.exit_code, answer.error), (DONE, ""), "exit code and error")
    expect(answer.output.splitlines()[-1][-5:], "0 BAD", "end of the last line")
    expect_true("\nok    Last nights       2 of 2 sleeps, shut-downs and resumes seen\n"
                in answer.output, "the night is not seen")
    expect(answer.step.of("setting", "scheme", "information", "error"), [], "what the service did")
    expect(machine.registry.names(), names, "settings")
    expect(sorted(machine.data_folder.parent.rglob("*")), files, "files")


def a_machine_that_lacks_a_way_to_sleep(machine):
    _running_service(machine)
    view = machine.client_view
    for name, part, capability, has in (
            ("modern-standby", "in the place of sleep", MODERN_STANDBY, True),
            ("sleep", "can only hibernate", S3, False),
            ("hibernation", "nothing to decide", S4, False),
            ("hibernation-file", "never hibernates", HIBERNATION_FILE, False)):
        view.set_capability(capability, has)
        _expect_bad(machine, name, part)
        view.set_capability(capability, not has)
    expect(_bad_lines(machine), {}, "lines that are BAD at last")


def status_tells_the_kind_of_machine(machine):
    _running_service(machine)

    def expect_kind(kind):
        output = machine.client.run("status").output
        expect([line[20:] for line in output.splitlines() if line.startswith("Machine")], [kind],
               "the line of the machine")
    expect_kind("sleeps and hibernates")
    machine.client_view.set_fast_startup(1)
    expect_kind("Fast Startup")
    machine.client_view.set_capability(MODERN_STANDBY, True)
    machine.client_view.set_capability(S3, False)
    machine.client_view.set_capability(HIBERNATION_FILE, False)
    machine.client_view.overrule("wake-timers", "DC", 0)
    machine.client_view.overrule("hibernate", "AC", 600)
    expect_kind("Modern Standby, no sleep (S3), no hibernation file, Fast Startup, wake timers "
                "forbidden, hibernate-after under policy")


def a_machine_without_the_driver(machine):
    machine.provision()
    machine.driver.hide()
    machine.start_service()
    expect(_verdict(machine, "driver"), "note", "verdict on the driver")


def fast_startup_is_worth_a_note(machine):
    _running_service(machine)
    expect(_verdict(machine, "fast-startup"), "ok", "verdict with it off")
    machine.client_view.set_fast_startup(1)
    expect(_verdict(machine, "fast-startup"), "note", "verdict with it on")


def wake_timers_that_a_policy_forbids(machine):
    _running_service(machine)
    machine.client_view.overrule("wake-timers", "DC", 0)
    _expect_bad(machine, "wake-timers", "forbidden by policy: allowed on mains, off on battery")


def a_timeout_that_a_policy_sets(machine):
    _running_service(machine)
    machine.client_view.overrule("hibernate", "AC", 600)
    _expect_bad(machine, "policy", "have no effect: 10 min on mains, 3 h 00 min on battery")
    answer = _check(machine, "--try --json")
    steps = json.loads(answer.output)["try"]["steps"]
    expect([step["name"] for step in steps if not step["done"]], ["write the timeout on mains"],
           "what cannot be done")


def a_timeout_that_nobody_knows(machine):
    _running_service(machine)
    machine.client_view.overrule("hibernate", "DC", None)
    expect(list(_bad_lines(machine)), ["scheme", "policy"], "lines that are BAD")


def a_machine_without_an_active_power_scheme(machine):
    _running_service(machine)
    machine.client_view.fail("PowerGetActiveScheme")
    _expect_bad(machine, "scheme", "Windows names no active power scheme")


def a_timeout_that_cannot_be_read(machine):
    _running_service(machine)
    machine.client_view.fail("PowerReadDCValueIndex")
    _expect_bad(machine, "scheme", "hibernates after 3 h 00 min on mains, not known on battery")


def a_machine_without_a_time_zone(machine):
    _running_service(machine)
    machine.client_view.fail("GetDynamicTimeZoneInformation")
    _expect_bad(machine, "zone", "Windows knows of none")


def a_service_that_is_not_there_or_stopped(machine):
    machine.provision()
    for what in "not installed", "stopped":
        answer = _check(machine, "")
        expect(answer.exit_code, NOT_REACHABLE, "exit code")
        expect_true(f"\nBAD   Service           {what}\n" in answer.output, "no line of the service")
        expect_true("\nBAD   RPC               does not answer\n" in answer.output, "no line of RPC")
        if not machine.service.exists():
            machine.service.create()


def a_service_that_only_starts_by_hand(machine):
    machine.provision()
    machine.service.create(start=DEMAND_START)
    machine.start_service()
    _expect_bad(machine, "start", "only when somebody starts it")


def a_service_that_is_disabled(machine):
    machine.provision()
    machine.service.create(start=DISABLED)
    answer = _check(machine, "")
    expect(answer.exit_code, NOT_REACHABLE, "exit code")
    expect_true("\nBAD   Start             disabled\n" in answer.output, "no line of the start")


def a_service_that_another_program_may_take_the_place_of(machine):
    machine.provision()
    machine.service.create(command=PROGRAM)
    machine.start_service()
    _expect_bad(machine, "program", "without quotation marks")


def a_service_whose_program_is_not_there(machine):
    machine.service.create(command='"C:\\lab\\gone.exe"')
    answer = _check(machine, "")
    expect_true("\nBAD   Program           C:\\lab\\gone.exe is not there\n" in answer.output,
                "no line of the program")


def a_service_whose_program_others_may_replace(machine):
    _running_service(machine)
    mode = machine.program_file.stat().st_mode
    machine.program_file.chmod(0o777)
    _expect_bad(machine, "program", "DozewellService.exe can be replaced by Everyone")
    machine.program_file.chmod(mode)


def a_service_in_another_account(machine):
    machine.provision()
    sc = machine.start_program("sc", "create", "DozewellService", "type=", "own", "start=", "auto",
                               "binpath=", f'"{PROGRAM}"', "obj=", "NT AUTHORITY\\LocalService")
    machine.waiting.for_end(sc, "sc does not end")
    answer = _check(machine, "")
    expect_true("\nBAD   Account           NT AUTHORITY\\LocalService, which lacks rights"
                in answer.output, "no line of the account")


def a_service_that_gives_up_its_privilege(machine):
    _running_service(machine)
    machine.client_view.give_up_privileges()
    _expect_bad(machine, "privilege", "gives up SeShutdownPrivilege")


def a_service_whose_token_lacks_the_privilege(machine):
    _running_service(machine)
    machine.service.lose_privilege("SeShutdownPrivilege")
    _expect_bad(machine, "privilege", "its token lacks SeShutdownPrivilege")


def a_process_in_the_services_place(machine):
    machine.provision()
    machine.service.create()
    console, _ = machine.start_console()
    machine.waiting.until(lambda: machine.client.run("ping").exit_code != NOT_REACHABLE,
                          "nobody answers")
    expect_true("answers in the service's place" in _bad_lines(machine)["rpc"], "who answers")
    machine.press_ctrl_c(console)


def a_gate_without_counters(machine):
    machine.provision(total_attempts=None)
    machine.start_service()
    _expect_bad(machine, "gate", "TotalAttempts is not set")


def a_machine_without_settings_has_no_predictor(machine):
    machine.start_service()
    expect(list(_bad_lines(machine)), ["gate", "weights"], "lines that are BAD")


def timeouts_that_were_not_put_back(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    _expect_bad(machine, "cached-timeouts", "HA_AC holds 3 h 00 min, HA_DC holds 1 h 00 min")
    before = machine.schemes.hibernate_after
    answer = _check(machine, "--try --json")
    expect(answer.exit_code, NOT_DONE, "exit code")
    expect(json.loads(answer.output)["try"]["refusal"],
           "HA_AC is cached: a predicted timeout is in force", "refusal")
    expect(machine.schemes.hibernate_after, before, "timeouts")


def trying_writes_each_timeout_as_it_is(machine):
    _running_service(machine)
    machine.schemes.hibernate_after = 180.25, 0
    tried = json.loads(_check(machine, "--try --json").output)["try"]
    expect((tried["done"], tried["refusal"], len(tried["steps"])), (True, None, 7), "outcome")
    expect(machine.schemes.hibernate_after, (180.25, 0), "timeouts")
    expect(machine.setting("HA_AC"), None, "cached timeout")


def a_data_folder_that_others_may_change(machine):
    _running_service(machine)
    machine.restart_service()
    machine.data_folder.chmod(0o777)
    _expect_bad(machine, "data-folder", "Brevan\\Z7 can be changed by Everyone")


def a_data_folder_of_somebody_else(machine):
    if os.geteuid() != 0:
        print("a folder of somebody else cannot be made without root")
        return
    _running_service(machine)
    machine.restart_service()
    os.chown(machine.data_folder, 12345, 12345)
    _expect_bad(machine, "data-folder", "Brevan\\Z7 belongs to anonymous users")


def a_data_folder_that_is_a_link(machine):
    _running_service(machine)
    machine.restart_service()
    aside = machine.data_folder.rename(machine.data_folder.with_name("aside"))
    machine.data_folder.symlink_to(aside)
    _expect_bad(machine, "data-folder", "Brevan\\Z7 is a link")


def a_data_file_with_a_second_name(machine):
    _running_service(machine)
    machine.restart_service()
    history = machine.data_folder / HISTORY_FILE
    history.with_name("second name").hardlink_to(history)
    _expect_bad(machine, "data-folder", f"{HISTORY_FILE} has a second name")


def a_machine_without_a_folder_for_program_data(machine):
    _running_service(machine)
    machine.client_view.fail("SHGetKnownFolderPath")
    bad = _bad_lines(machine)
    # A predictor finds no file in it either.
    expect(list(bad), ["weights", "data-folder"], "lines that are BAD")
    expect(bad["data-folder"], "Windows does not say where it is", "the folder's line")


def an_event_source_without_its_texts(machine):
    _running_service(machine)
    machine.client_view.register_event_source(PROGRAM)
    expect(_verdict(machine, "event-source"), "ok", "verdict on the service's program")
    machine.client_view.register_event_source("C:\\lab\\gone.exe")
    _expect_bad(machine, "event-source", "has no text for the events (error 2)")
    machine.client_view.register_event_source("C:\\lab\\agent.exe")
    _expect_bad(machine, "event-source", "agent.exe has no text for the events")


def a_sleep_and_a_resume_that_the_service_never_heard_of(machine):
    _night(machine, unheard_nap=True)
    _expect_bad(machine, "nights", "2 of 4 sleeps, shut-downs and resumes seen; never heard of: "
                                   "resume at 2026-01-06 03:00:00, sleep at 2026-01-06 03:10:00")


def a_machine_that_stays_awake_after_the_services_own_wake(machine):
    machine_that_knows_office_hours(machine)
    view = machine.client_view
    step = machine.suspend()
    view.log_system_event(KERNEL_POWER, SLEPT)
    view.log_service_events(step)
    step = wake_by_timer_at(machine, "2026-02-03 07:50")
    view.log_system_event(KERNEL_POWER, WOKE)
    view.log_service_events(step)
    machine.clock.pass_until("2026-02-03 08:30")
    step = machine.resume()
    view.log_service_events(step)
    bad = _bad_lines(machine)
    expect(list(bad), ["returns"], "lines that are BAD")
    expect_true("it stayed awake at 2026-02-03 07:50:00" in bad["returns"], "the wake")


def machine_wide_tz_is_worth_a_note(machine):
    _running_service(machine)
    key = "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment"
    expect(_verdict(machine, "zone-variable"), "ok", "verdict without it")
    machine.registry.write("TZ", "UTC0", key)
    expect(_verdict(machine, "zone-variable"), "note", "verdict with it")
    machine.registry.delete("TZ", key)
