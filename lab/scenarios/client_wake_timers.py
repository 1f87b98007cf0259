"""dozewellctl arms the driver's wake timers and shows what they hold."""

from machine.lab_device import READ_TIMER, WRITE_TIMER
from steps.client import NO_DRIVER, done, failed
from steps.expect import expect, expect_true

# Bits 28 to 30 are the driver's own.
WORDS = 0x12345678, 0x70000000
NOT_READ = "the timer could not be read: " + NO_DRIVER
NOT_ARMED = ("the timer was not armed: the service has no driver device, or the driver did not "
             "take it")
# 2126-11-21 06:30, a year counted from 2000.
A_TIME = 126 << 20 | 11 << 16 | 21 << 11 | 6 << 6 | 30

ARM = ('wake set 0 "2126-11-21 06:30"', "wake raw 1 1h30m")
SHOW = ("wake get", "wake raw 0", "wake raw 1 --json")


def _running(machine):
    machine.provision()
    machine.start_service()
    machine.driver.words = WORDS


def _expect_armed(step, machine, *words):
    expect(step.of("driver"), ["read timer 0x{:x} 0x{:x}".format(*WORDS),
                               "write timer 0x{:x} 0x{:x}".format(*words)], "driver")
    expect(machine.driver.words, words, "the driver's timers")
    machine.driver.words = WORDS


# SetWakeTime

def a_timer_is_armed_for_a_time_and_the_other_one_is_left_alone(machine):
    _running(machine)
    step = done(machine, ARM[0], "Timer 0 is armed for 2126-11-21 06:30.\n")
    _expect_armed(step, machine, 0x90000000 | A_TIME, WORDS[1])
    step = done(machine, "wake set 1 2126-11-21T06:30 --json",
                '{"timer":1,"time":"2126-11-21 06:30","year":126,"month":11,"day":21,"hour":6,'
                '"minute":30}\n')
    _expect_armed(step, machine, WORDS[0], 0xF0000000 | A_TIME)


def a_timer_takes_the_first_and_the_last_time_that_there_is(machine):
    _running(machine)
    for time, payload, warning in (
            ("2000-01-01 00:00", 1 << 16 | 1 << 11, "2000-01-01 00:00 has passed"),
            ("2127-12-31 23:59", 127 << 20 | 12 << 16 | 31 << 11 | 23 << 6 | 59, None)):
        step = done(machine, f'wake set 0 "{time}"', f"Timer 0 is armed for {time}.\n", warning)
        _expect_armed(step, machine, 0x90000000 | payload, WORDS[1])
        machine.driver.words = payload, 0
        expect_true(f" as a time: {time};" in machine.client.run("wake get 0").output,
                    f"{time} is not shown")
        machine.driver.words = WORDS


# SetWakeRaw

def a_timer_is_armed_for_a_duration_and_the_other_one_is_left_alone(machine):
    _running(machine)
    step = done(machine, "wake raw 1 1h30m", "Timer 1 is armed for 1 h 30 min from now.\n")
    _expect_armed(step, machine, WORDS[0], 0xF8000000 | 90)
    step = done(machine, "wake raw 0 0 --json", '{"timer":0,"durationMinutes":0}\n')
    _expect_armed(step, machine, 0x98000000, WORDS[1])
    step = done(machine, "wake raw 0 1048575",
                "Timer 0 is armed for 728 d 04 h 15 min from now.\n")
    _expect_armed(step, machine, 0x98000000 | 0xFFFFF, WORDS[1])


# GetWakeTime and GetWakeRaw

def what_a_timer_holds_is_shown_in_both_forms(machine):
    _running(machine)
    # Only the payload is shown.
    machine.driver.words = 0xF0000000 | A_TIME, 0xF8000000 | 90
    alarm = "Timer 0 as a time: 2126-11-21 06:30; as a duration: 530 d 18 h 38 min\n"
    duration = ("Timer 1 as a time: no time of the calendar (year 0, month 0, day 0, hour 1, "
                "minute 26); as a duration: 1 h 30 min\n")
    done(machine, "wake get", alarm + duration)
    done(machine, "wake get 1", duration)
    done(machine, "wake raw 1", "Timer 1: 1 h 30 min\n")
    done(machine, "wake raw 1 --json", '{"timer":1,"durationMinutes":90}\n')
    step = done(machine, "wake get --json",
                '[{"timer":0,"time":"2126-11-21 06:30","year":126,"month":11,"day":21,"hour":6,'
                '"minute":30,"durationMinutes":764318},'
                '{"timer":1,"time":null,"year":0,"month":0,"day":0,"hour":1,"minute":26,'
                '"durationMinutes":90}]\n')
    expect(step.of("driver"), 4 * [f"read timer 0x{0xF0000000 | A_TIME:x} 0xf800005a"], "driver")


def a_timer_that_was_never_armed_holds_no_time(machine):
    _running(machine)
    machine.driver.words = 0, 0x80000000
    done(machine, "wake get", "Timer 0 as a time: no time is set; as a duration: 0 min\n"
                              "Timer 1 as a time: no time is set; as a duration: 0 min\n")


# Refusals

def without_a_driver_timers_are_neither_shown_nor_armed(machine):
    machine.driver.hide()
    _running(machine)
    for command in SHOW:
        failed(machine, command, NOT_READ)
    for command in ARM:
        failed(machine, command, NOT_ARMED)
    expect(machine.driver.words, WORDS, "the driver's timers")


def a_driver_that_cannot_be_read_refuses_all(machine):
    _running(machine)
    machine.driver.fail(READ_TIMER)
    for command in SHOW:
        failed(machine, command, NOT_READ)
    for command in ARM:
        step = failed(machine, command, NOT_ARMED)
        expect(step.of("driver"), ["read timer error 31"], f"driver for {command}")


def a_driver_that_fails_halfway_refuses_what_it_has_begun(machine):
    _running(machine)
    machine.driver.fail(WRITE_TIMER)
    for command in ARM:
        failed(machine, command, NOT_ARMED)
    expect(machine.driver.words, WORDS, "the driver's timers")
    # The first read, as a time, succeeds, and the second fails.
    machine.driver.fail(READ_TIMER, call=2)
    step = failed(machine, "wake get 0", NOT_READ)
    expect(len(step.of("driver")), 2, "calls of the driver")
