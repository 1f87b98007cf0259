"""How the lab itself waits: a wait fails when nothing goes on any more, and never because the
computer is busy."""

import contextlib
import os
import socket
import subprocess
import sys
import time

from machine.link import Link
from machine.waiting import Hang, Waiting
from steps.expect import expect, expect_true

ENDLESS_LOOP = "for /l %i in (1,0,2) do @rem"
LOOP_FOREVER = "while True: pass"
REST = "nothing was at work for 0.5 s"


def _waiting(machine, **limits):
    """Looks often and gives up soon."""
    return Waiting(machine.processes, **{"rest_seconds": 0.5, "look_seconds": 0.05, **limits})


def _expect_in_vain(wait, reason):
    found = None
    try:
        wait()
    except Hang as hang:
        found = str(hang)
    expect(found, reason, "reason for which the wait failed")


def _wait_for_a_second(waiting):
    end = time.monotonic() + 1
    waiting.until(lambda: time.monotonic() > end, "a second does not pass")


def _computed(machine, program):
    """For how long the program has computed so far, in seconds; it may not be seen to run yet."""
    thread = machine.processes.threads().get(program.pid)
    return thread.computed if thread else 0


@contextlib.contextmanager
def _computing_program(machine):
    program = machine.start_program("cmd", "/c", ENDLESS_LOOP)
    try:
        machine.waiting.until(lambda: _computed(machine, program), "the program does not compute")
        yield program
    finally:
        program.kill()
        program.wait()


@contextlib.contextmanager
def _taken_processor(processor):
    """A program that is not the machine's takes a processor all the time."""
    other = subprocess.Popen([sys.executable, "-c", LOOP_FOREVER])
    try:
        os.sched_setaffinity(other.pid, {processor})
        yield
    finally:
        other.kill()
        other.wait()


def a_wait_on_a_machine_at_rest_fails(machine):
    machine.provision()
    console, _ = machine.start_console()
    waiting = _waiting(machine)
    _expect_in_vain(lambda: waiting.until(lambda: False, "nothing comes"), f"nothing comes: {REST}")

    _expect_in_vain(lambda: waiting.for_end(console, "it does not end"), f"it does not end: {REST}")
    with socket.create_server(("127.0.0.1", 0)) as server:
        silent = Link(server.getsockname()[1], "", waiting)
        _expect_in_vain(lambda: silent.ask("anything"), f"anything is not answered: {REST}")
        silent.close()
    machine.press_ctrl_c(console)


def a_wait_for_a_program_that_computes_goes_on(machine):
    with _computing_program(machine):
        _wait_for_a_second(_waiting(machine))


def a_wait_for_a_program_that_gets_no_processor_goes_on(machine):
    processor = min(os.sched_getaffinity(0))
    with _computing_program(machine) as program, _taken_processor(processor):
        os.sched_setscheduler(program.pid, os.SCHED_IDLE, os.sched_param(0))
        os.sched_setaffinity(program.pid, {processor})
        before = _computed(machine, program)
        _wait_for_a_second(_waiting(machine))
        computed = _computed(machine, program) - before
        expect_true(computed < 0.25, f"it was given a processor for {computed} s")


def a_wait_for_a_program_that_only_computes_fails_in_the_end(machine):
    with _computing_program(machine):
        waiting = _waiting(machine, computing_seconds=0.5)
        _expect_in_vain(lambda: waiting.until(lambda: False, "nothing comes"),
                        "nothing comes: 0.5 s of computing did not lead there")
