"""What a scenario sees: a Windows machine whose user, power manager and clock are the test's, with
the service's executable on it as it is shipped."""

import configparser
import contextlib
import shutil
import signal
import struct
import subprocess
import time
import uuid
from pathlib import Path
from typing import NamedTuple

from machine import service_control
from machine.client_view import ClientView
from machine.clock import Clock
from machine.installation import PROGRAM
from machine.installer_package import InstallerPackage
from machine.lab_device import Driver
from machine.link import CallFailed, Link, LinkLost
from machine.power_schemes import PowerSchemes
from machine.processes import any_at_work
from machine.registry import CURRENT, DEFAULT, ROOT, Registry, predictor_key
from machine.service_control import Service
from machine.service_record import EVENTS, Record, of_kinds
from machine.system_calls import SystemCalls
from machine.system_timer import SystemTimer
from machine.tool import Tool

_LAB = Path(__file__).resolve().parents[1]
SCENARIO_SETTINGS = _LAB / "settings.ini"
DEFAULT_SETTINGS = _LAB.parent / "packaging" / "default-settings.ini"
START_OF_TIME = "2026-01-05 08:00"  # a Monday
# Days between searches for better parameters, which are counted in seconds.
LONGEST_INTERVAL = 2**32 // 86400

SUSPEND, RESUME_BY_USER, POWER_STATUS_CHANGE, RESUME, SETTING_CHANGE = 4, 7, 10, 18, 0x8013
IDLE_BACKGROUND_TASK = uuid.UUID("515c31d8-f734-163d-a0fd-11a08c91e8f1")

SERVICE_PROGRAM = "DozewellService.exe"
# The call that the service waits in until it is stopped.
SERVES = "RpcMgmtWaitServerListen"

HOUR_MS = 3_600_000

HISTORY_FILE, DATA_FILE = "zs7state.dat", "cpredict.z7"


class Step(NamedTuple):
    """What the service did in one step of a scenario, its threads included."""

    entries: list
    result: int = 0        # of its control handler
    microseconds: int = 0  # that its control handler took

    def of(self, *kinds):
        """The texts of some kinds of entries."""
        return [entry.text for entry in of_kinds(self.entries, *kinds)]

    @property
    def events(self):
        """What was written to the event log."""
        return of_kinds(self.entries, *EVENTS)

    @property
    def traces(self):
        return self.of("trace")


class Finished(NamedTuple):
    """A run of the program with an argument, from its start to its end."""

    exit_code: int
    output: bytes
    step: Step


class Machine:
    def __init__(self, installation):
        self._wine = installation.wine
        self._state = installation.state
        self._token = installation.token
        self.token_file = installation.token_file
        self._channel = None
        self._served_before = 0
        agent = installation.agent
        self.waiting = self._wine.waiting
        self.processes = self._wine.processes
        self.clock = Clock(self._state, self._wake_sleepers, installation.zone)
        self.driver = Driver(agent)
        self.timer = SystemTimer(self._state)
        self.calls = SystemCalls(self._state, self.waiting)
        self.schemes = PowerSchemes(self._state)
        self.record = Record(self._state, self.waiting)
        self.registry = Registry(agent)
        self.client_view = ClientView(self._state, self.registry, installation.token_file.parent)
        self.service = Service(agent, PROGRAM, self.waiting)
        self.client = self._tool(installation.build / "dozewellctl.exe")
        self.replay = self._tool(installation.build / "dozewell-replay.exe")
        self.packets = self._tool(installation.build / "rpc_wire_test.exe")
        self.crowd = self._tool(installation.build / "rpc_clients_test.exe")
        self.package = InstallerPackage(installation, self.take_step)
        self.program_file = self._wine.drive / "Program Files" / "Dozewell" / SERVICE_PROGRAM
        self.data_folder = self._wine.drive / "ProgramData" / "Brevan" / "Z7"
        # Where the program runs when it is run with an argument.
        self.current_folder = self._wine.drive

    def reset(self):
        """A machine on which nothing of the product was ever installed, at the start of time."""
        self._close_channel()
        # No call fails and there are no settings, so that a process that is started only to be
        # stopped does stop.
        self.calls.reset()
        self.registry.delete_key(ROOT)
        if self.service.exists():
            self.service.stop_somehow()
            self.service.delete()
            # It goes when the last program that has it open closes it.
            self.waiting.until(lambda: not self.service.exists(), "the deleted service does not go")
        # Until then it may have made more calls and settings.
        self.calls.reset()
        self.registry.delete_key(ROOT)
        shutil.rmtree(self.data_folder.parent, ignore_errors=True)
        self.driver.reset()
        self.schemes.reset()
        self.client_view.reset()
        self.clock.reset(START_OF_TIME)
        self._state.awake_ms = 0
        # The machine slept before, but it was not the service's doing.
        self._state.uptime_ms = 10 * HOUR_MS
        self._state.last_sleep_ms, self._state.last_wake_ms = 1 * HOUR_MS, 9 * HOUR_MS
        self.timer.reset()
        self._state.busy_threads = 0
        self.set_mains(True)
        self.record.clear()

    def provision(self, total_attempts=0, current_attempt=0, file=SCENARIO_SETTINGS, **settings):
        """Writes what an installer would: the settings of a file, the start gate's counters (None
        leaves one out), and more settings by their names."""
        ini = configparser.ConfigParser()
        ini.optionxform = str
        ini.read(file, "utf-8")
        for name, value in ini["Settings"].items():
            self.registry.write(name, int(value), DEFAULT)
        for name, value in ini["CyclicProbabilityPredictor"].items():
            self.registry.write(name, value, predictor_key(DEFAULT))
        counters = {"TotalAttempts": total_attempts, "CurrentAttempt": current_attempt}
        for name, value in {**counters, **settings}.items():
            if value is not None:
                self.registry.write(name, value, DEFAULT)

    # The program

    def run(self, *arguments):
        """Runs the program to its end."""
        exit_code, output = self._wine.run(PROGRAM, *arguments)
        return Finished(exit_code, output, self.take_step())

    def start_program(self, program, *arguments, **streams):
        """Starts any other program, for the caller to end."""
        return self._wine.start(program, *arguments, **streams)

    def exit_code(self, *arguments):
        """The whole exit code of a run, of which run() knows the lowest byte only."""
        program = PROGRAM.replace("Program Files", '"Program Files"')
        command = " ".join([program, *arguments, "> nul & echo !errorlevel!"])
        _, output = self._wine.run("cmd", "/v:on", "/c", command)
        return int(output)

    def install(self, *arguments):
        """Has the program install itself, and waits for the service that it starts."""
        self._before_start()
        exit_code, output = self._wine.run(PROGRAM, *(arguments or ["-i"]))
        self._await_serving()
        return Finished(exit_code, output, self.take_step())

    def install_package(self, package):
        """Has a package installed, and waits for the service that it starts."""
        self._before_start()
        self.package.install(package)
        self._await_serving()
        return self.take_step()

    def start_console(self, *arguments):
        """Starts the program in a console, to be ended with press_ctrl_c, and waits until it
        serves."""
        self._before_start()
        console = self._wine.start(PROGRAM, *(arguments or ["-local"]), stdout=subprocess.PIPE)
        self._await_serving()
        return console, self.take_step()

    def press_ctrl_c(self, console):
        console.send_signal(signal.SIGINT)
        return self._await_end(console)

    def close_console(self, console):
        """The system calls the program's handler, and ends the program when that returns."""
        with contextlib.suppress(LinkLost):
            self._ask_service("close-console")
        return self._await_end(console)

    def _await_end(self, console):
        output, _ = self.waiting.for_end(console, "the program does not end in its console")
        self._close_channel()
        return Finished(console.returncode, output, self.take_step())

    # The service control manager

    def start_service(self):
        """Starts the service, which is created if need be, and waits until it serves or has stopped
        and its threads are done."""
        self.begin_start()
        self._await_serving()
        return self.take_step()

    def begin_start(self):
        if not self.service.exists():
            self.service.create()
        self._before_start()
        done_before = len(self.record.all())
        try:
            self.service.start()
        except CallFailed as failure:
            # A service that is stopping by the time the service control manager looks at it is taken
            # for one that never started.
            if (failure.code != service_control.START_TIMEOUT or
                    not service_control.stops(self.record.all()[done_before:])):
                raise

    def ask_for_start(self):
        """Lets another program ask for the service's start and wait for it, and gives its run; for
        starts of which the service control manager is told nothing."""
        self.service.create()
        self._before_start()
        return self._tool("net").begin(f"start {service_control.NAME}")

    def stop_service(self):
        self.begin_stop()
        return self.finish_stop()

    def begin_stop(self):
        """The control handler has returned when this returns."""
        self.service.control(service_control.STOP)

    def finish_stop(self):
        """Waits until the service has stopped."""
        self.service.wait_for(service_control.STOPPED)
        self._close_channel()
        return self.take_step()

    def restart_service(self):
        self.stop_service()
        return self.start_service()

    # What only the system sends

    def deliver(self, control, event_type=0, data=b""):
        """Calls the service's control handler and waits until it has returned."""
        result, microseconds = self.deliver_meanwhile(control, event_type, data)
        return self.take_step(result, microseconds)

    def deliver_meanwhile(self, control, event_type=0, data=b""):
        """The same, but without waiting for the service's threads and without a step; for use while
        a thread is held."""
        result, microseconds = self._ask_service("deliver", control, event_type, data.hex())
        return int(result), int(microseconds)

    def power_event(self, event_type, data=b""):
        return self.deliver(service_control.POWER_EVENT, event_type, data)

    def suspend(self):
        """Tells the service, and then the machine sleeps."""
        step = self.power_event(SUSPEND)
        self._state.last_sleep_ms = self._state.uptime_ms
        return step

    def resume(self):
        """The resume that the system always reports, no matter what woke the machine."""
        self._state.last_wake_ms = self._state.uptime_ms
        return self.power_event(RESUME)

    def change_power_status(self):
        return self.power_event(POWER_STATUS_CHANGE)

    def notify_idle(self, setting=IDLE_BACKGROUND_TASK):
        """Tells the service that the system is idle, or that another power setting changed."""
        data = setting.bytes_le + struct.pack("<II", 4, 0)
        return self.power_event(SETTING_CHANGE, data)

    def shut_down(self):
        try:
            return self.deliver(service_control.SHUTDOWN)
        except LinkLost:
            # Once the service has said that it stopped, the system may end its process.
            self._close_channel()
            return self.take_step()

    # The rest of the machine

    def open_ports(self):
        """Where the lab listens for the test: the agent, and the service while it runs."""
        return [port for port in (self._state.agent_port, self._state.service_port) if port]

    def set_mains(self, on_mains):
        self.set_line_status(1 if on_mains else 0)

    def set_line_status(self, status):
        """The power source as the system reports it, which may be neither mains nor battery."""
        self._state.ac_line_status = status

    def setting(self, name):
        """A value of the service's own key, or None."""
        return self.registry.read(name, CURRENT)

    def data_file(self, name):
        """The bytes of a data file, or None."""
        path = self.data_folder / name
        return path.read_bytes() if path.exists() else None

    def write_data_file(self, name, data):
        self.data_folder.mkdir(parents=True, exist_ok=True)
        (self.data_folder / name).write_bytes(data)

    def thread_runs(self):
        """How often each thread of the service was given a processor."""
        return self.processes.thread_runs(SERVICE_PROGRAM)

    def await_rest(self):
        """Waits until no thread of the service has anything left to do."""
        def rests():
            runs = self.thread_runs()
            time.sleep(0.2)
            return (self.thread_runs() == runs and
                    not any_at_work(self.processes.threads(SERVICE_PROGRAM)))
        self.waiting.until(rests, "the service's threads do not come to rest")

    def take_step(self, result=0, microseconds=0):
        """What the service did since the last step, once its threads are done; with the answer of
        its control handler, if it was called."""
        self.waiting.until(lambda: self._state.busy_threads == 0,
                           "the service's threads neither end nor sleep")
        return Step(self.record.take(), result, microseconds)

    # A process of the service

    def _tool(self, program):
        return Tool(self._wine, program, self.take_step)

    def _before_start(self):
        self._close_channel()
        self._state.busy_threads = 0
        self._served_before = self.calls.made(SERVES)

    def _await_serving(self):
        # Asking the service control manager slows down the start that is waited for.
        next_question = time.monotonic() + 0.2

        def serves_or_has_stopped():
            nonlocal next_question
            if self.calls.made(SERVES) > self._served_before:
                return True
            if time.monotonic() < next_question:
                return False
            next_question = time.monotonic() + 0.2
            return self.service.exists() and self.service.has_stopped()
        self.waiting.until(serves_or_has_stopped, "the service neither serves nor stops")

    def _ask_service(self, *request):
        if self._channel is None:
            port = self.waiting.until(lambda: self._state.service_port, "no control handler")
            self._channel = Link(port, self._token, self.waiting)
        return self._channel.ask(*request)

    def _wake_sleepers(self):
        if self._channel is not None or self._state.service_port:
            self._ask_service("wake")

    def _close_channel(self):
        if self._channel is not None:
            self._channel.close()
            self._channel = None
        self._state.service_port = 0
