"""The wake timer's driver, reached through its private device. Its other half, with what each field
means, is native/driver/lab_device.h."""

import contextlib
import ctypes

from machine.counted_calls import FOR_EVER, numbers_of

GET_STATE = 0x9C403C00
SET_STATE = 0x9C403C04

WRITE_TIMER, READ_TIMER, READ_STATUS = range(3)

ENABLED = 0x80000000
EXPIRED = 0x40000000
DURATION = 0x08000000
MINUTES = 0x000FFFFF

# Answers to how the machine last slept. The first one means nothing to the service.
ENDED_BY_USER = 1
WENT_ON_TO_HIBERNATION = 4
ENDED_BY_TIMER = 5

STATUS_UNSUCCESSFUL = 0xC0000001


class _Control(ctypes.Structure):
    _fields_ = [
        ("made", ctypes.c_uint32),
        ("fail_from", ctypes.c_uint32),
        ("fail_to", ctypes.c_uint32),
        ("ntstatus", ctypes.c_uint32),
    ]


class _State(ctypes.Structure):
    _fields_ = [
        ("timer_words", ctypes.c_uint32 * 2),
        ("previous_sleep_status", ctypes.c_uint32),
        ("present", ctypes.c_uint32),
        ("controls", _Control * 3),
    ]


class Driver:
    def __init__(self, agent):
        self._agent = agent

    def reset(self):
        self._set(_State(present=1))

    @property
    def words(self):
        """Both words of the timer record."""
        return tuple(self._get().timer_words)

    @words.setter
    def words(self, words):
        with self._changing() as state:
            state.timer_words[:] = words

    @property
    def armed_minutes(self):
        """What the second word's timer is armed with, or None."""
        word = self.words[1]
        return word & MINUTES if word & ENABLED and word & DURATION else None

    def expire_timer(self):
        with self._changing() as state:
            state.timer_words[1] |= EXPIRED

    def set_previous_sleep_status(self, status):
        with self._changing() as state:
            state.previous_sleep_status = status

    def hide(self):
        """From now on the device is not to be found; a program that has it open keeps it."""
        with self._changing() as state:
            state.present = 0

    def show(self):
        with self._changing() as state:
            state.present = 1

    def fail(self, control, call=1, times=FOR_EVER, ntstatus=STATUS_UNSUCCESSFUL):
        """Makes the call-th call from now of a control fail, and those that follow it."""
        with self._changing() as state:
            entry = state.controls[control]
            entry.fail_from, entry.fail_to = numbers_of(entry.made, call, times)
            entry.ntstatus = ntstatus

    def calls(self, control):
        """How often a control was called since the reset."""
        return self._get().controls[control].made

    def _get(self):
        size = ctypes.sizeof(_State)
        answer, = self._agent.ask("control-lab-device", GET_STATE, "", size)
        return _State.from_buffer_copy(bytes.fromhex(answer))

    def _set(self, state):
        self._agent.ask("control-lab-device", SET_STATE, bytes(state).hex(), 0)

    @contextlib.contextmanager
    def _changing(self):
        state = self._get()
        yield state
        self._set(state)
