"""The file in which the test, the agent and the service's processes share the machine's state. Its
other half, with what each field means, is native/shared/machine_state.h."""

import ctypes
import mmap
import uuid

POWER_SETTINGS = ("display", "sleep", "hibernate", "wake-timers", "hybrid-sleep")
POWER_SOURCES = ("AC", "DC")
POWER_SCHEMES = {
    "balanced": uuid.UUID("381b4222-f694-41f0-9685-ff5bb260df2e"),
    "power saver": uuid.UUID("a1841308-3541-4fab-bc81-f71556f20b4a"),
    "high performance": uuid.UUID("8c5e7fda-e8bf-4a96-9a85-a6e23a8c635c"),
    "custom": uuid.UUID("5b1a2ab6-5d0c-4c1e-9c0e-2f6c3f4a7d10"),
}
POWER_CAPABILITIES = 76
MAX_SYSTEM_CALLS = 64
RECORD_CAPACITY = 32 << 20


class PowerScheme(ctypes.Structure):
    _fields_ = [
        ("id", ctypes.c_uint8 * 16),
        ("values", ctypes.c_uint32 * len(POWER_SETTINGS) * len(POWER_SOURCES)),
    ]


class SystemCall(ctypes.Structure):
    _fields_ = [
        ("name", ctypes.c_char * 40),
        ("made", ctypes.c_uint32),
        ("fail_from", ctypes.c_uint32),
        ("fail_to", ctypes.c_uint32),
        ("error", ctypes.c_uint32),
        ("hold_at", ctypes.c_uint32),
    ]


class MachineState(ctypes.Structure):
    _fields_ = [
        ("size", ctypes.c_uint32),
        ("agent_port", ctypes.c_uint32),
        ("service_port", ctypes.c_uint32),
        ("busy_threads", ctypes.c_uint32),
        ("clock", ctypes.c_int64),
        ("awake_ms", ctypes.c_uint64),
        ("uptime_ms", ctypes.c_uint64),
        ("last_sleep_ms", ctypes.c_uint64),
        ("last_wake_ms", ctypes.c_uint64),
        ("timer_due", ctypes.c_int64),
        ("timer_wakes", ctypes.c_uint32),
        ("timer_cannot_wake", ctypes.c_uint32),
        ("timer_reason", ctypes.c_char * 128),
        ("ac_line_status", ctypes.c_uint32),
        ("active_scheme", ctypes.c_uint32),
        ("zone", ctypes.c_char * 32),
        ("schemes", PowerScheme * len(POWER_SCHEMES)),
        ("setting_policies", ctypes.c_uint32 * len(POWER_SETTINGS) * len(POWER_SOURCES)),
        ("scheme_policy", ctypes.c_uint32),
        ("capabilities", ctypes.c_uint8 * POWER_CAPABILITIES),
        ("gives_up_privileges", ctypes.c_uint32),
        ("fails_for_client", ctypes.c_char * 40),
        ("calls", SystemCall * MAX_SYSTEM_CALLS),
        ("record_size", ctypes.c_uint32),
        ("record", ctypes.c_char * RECORD_CAPACITY),
    ]


def create_machine_state(path):
    """A state of zeros in a new file."""
    with open(path, "wb") as file:
        file.truncate(ctypes.sizeof(MachineState))
    with open(path, "r+b") as file:
        return MachineState.from_buffer(mmap.mmap(file.fileno(), 0))
