"""The steps of the service's start and stop, as the record shows them."""

from machine.machine import IDLE_BACKGROUND_TASK
from machine.service_control import RUNNING, STOPPED, STOP_PENDING, sent
from machine.service_record import Entry

# At the start of time.
REGISTRATION = [
    Entry("handler", "DozewellService"),
    Entry("notification", f"register {IDLE_BACKGROUND_TASK.bytes_le.hex()} flags 1"),
    Entry("setting", "write StartTime 1767618000"),
]
DRIVER_AND_RUNNING = [Entry("device", "search"), sent(RUNNING)]
RPC_SET_UP = ("RpcServerUseProtseqEpW", "RpcServerRegisterIf", "RpcServerRegisterAuthInfoW",
              "RpcServerListen")
SERVES = Entry("setting", "write ServiceStatus 0")
WAIT = "RpcMgmtWaitServerListen"

END = [
    sent(STOP_PENDING, 3000),
    Entry("notification", "unregister"),
    Entry("setting", "write ServiceStatus 1"),
    sent(STOPPED),
]
# What the control handler does, and then the service's main routine.
STOP = [sent(STOP_PENDING), *END]
