"""The service as the service control manager keeps it."""

import contextlib
from typing import NamedTuple

from machine.link import CallFailed
from machine.service_record import Entry

NAME = "DozewellService"

STOPPED, START_PENDING, STOP_PENDING, RUNNING, PAUSED = 1, 2, 3, 4, 7
STOP, PAUSE, CONTINUE, INTERROGATE, SHUTDOWN = 1, 2, 3, 4, 5
POWER_EVENT, SESSION_CHANGE = 13, 14

OWN_PROCESS, AUTO_START = 0x10, 2
START_TIMEOUT, NO_SUCH_SERVICE = 1053, 1060


class Status(NamedTuple):
    state: int
    process: int
    controls: int
    wait_hint: int
    exit_code: int


class Configuration(NamedTuple):
    type: int
    start: int
    error_control: int
    path: str
    display_name: str
    account: str
    description: str


def sent(state, wait_hint=0):
    """How the record shows a status that the service sends."""
    return Entry("status", f"{_state(state)}controls 0xc7 exit 0 0 checkpoint 0 hint {wait_hint}")


def stops(entries):
    """Whether the service has sent, by these entries of the record, that it stops or has stopped."""
    return any(entry.kind == "status" and
               entry.text.startswith((_state(STOP_PENDING), _state(STOPPED))) for entry in entries)


def _state(state):
    return f"type 0x30 state {state} "


class Service:
    """Errors of the service control manager come as CallFailed."""

    def __init__(self, agent, program, waiting):
        self._agent = agent
        self._program = program
        self._waiting = waiting

    def create(self, command=None, start=AUTO_START):
        """Creates the service as its installer does, without starting it; or in another way."""
        self._agent.ask("create-service", NAME, OWN_PROCESS, start,
                        command or f'"{self._program}"')

    def start(self):
        self._agent.ask("start-service", NAME)

    def control(self, control):
        """Sends a control as any program may. Shutdown, power and session events are refused, since
        only the system may send them."""
        self._agent.ask("control-service", NAME, control)

    def delete(self):
        self._agent.ask("delete-service", NAME)

    def exists(self):
        try:
            self.status()
        except CallFailed as error:
            if error.code == NO_SUCH_SERVICE:
                return False
            raise
        return True

    def status(self):
        return Status(*map(int, self._agent.ask("query-service", NAME)))

    def has_stopped(self):
        return self.status().state == STOPPED

    def configuration(self):
        kind, start, error_control, *texts = self._agent.ask("describe-service", NAME)
        return Configuration(int(kind), int(start), int(error_control), *texts)

    def wait_for(self, state):
        self._waiting.until(lambda: self.status().state == state,
                            f"the service does not come to state {state}")

    def kill(self):
        """Ends the service's process at once. The service control manager goes on showing the
        service as running until it is started again."""
        self._agent.ask("kill-process", self.status().process)

    def lose_privilege(self, privilege):
        """Takes a privilege from the service's process, until the next start."""
        self._agent.ask("remove-privilege", self.status().process, privilege)

    def stop_somehow(self):
        """Stops the service, by killing and starting it first if it does not take the control."""
        if self.has_stopped():
            return
        try:
            self.control(STOP)
        except CallFailed:
            with contextlib.suppress(CallFailed):
                self.kill()
            self.start()
            self.wait_for(RUNNING)
            self.control(STOP)
        self.wait_for(STOPPED)
