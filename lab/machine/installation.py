"""Puts the lab on a Wine machine and boots it."""

import ctypes
import fcntl
import os
import secrets
import shutil

from machine.lab_device import Driver
from machine.link import CallFailed, Link
from machine.machine_state import MachineState, create_machine_state
from machine.registry import Registry
from machine.waiting import Hang
from machine.wine import ZONE, Wine

PROGRAM = "C:\\Program Files\\Dozewell\\DozewellService.exe"
SETUP_PROGRAM = "C:\\Program Files\\Dozewell\\dozewell-setup.exe"
STATE_FILE = "lab/machine.bin"
TOKEN_FILE = "lab/token"

_PROGRAM_FOLDER = "Program Files/Dozewell"
_DRIVER = "dozewell_lab"
_KERNEL_DRIVER, _DEMAND_START = 1, 3
_SYSTEM_CLASS = "{4D36E97D-E325-11CE-BFC1-08002BE10318}"
# The programs that load the lab's stand-ins.
_SERVED = ("DozewellService.exe", "dozewell-setup.exe")
# Those that the client loads, from the system's folder.
_CLIENT = "dozewellctl.exe"
_CLIENT_LIBRARIES = {"powrprof": "lab/client/powrprof.dll", "wevtapi": "lab/client/wevtapi.dll"}


class Installation:
    """A with statement boots it and switches it off at its end; in between, `wine`, `state` and
    `agent` can be used, and `token`, which whoever asks the agent or the service for something must
    know. `build` is the folder of the Windows build. The machine's own folder is
    kept, so that it boots faster the next time."""

    def __init__(self, folder, build, zone=ZONE):
        self.folder = folder.resolve()
        self.build = build.resolve()
        self.zone = zone
        self._lock = None
        self.wine = Wine(self.folder / "wine", zone)
        self.state = None
        self.token = None
        self.token_file = self.wine.drive / TOKEN_FILE
        self.agent = None

    def __enter__(self):
        self.folder.mkdir(parents=True, exist_ok=True)
        self._lock = open(self.folder / "lock", "w", encoding="ascii")
        # One folder is one machine, for one user at a time.
        fcntl.flock(self._lock, fcntl.LOCK_EX)
        try:
            try:
                self._boot()
            except Hang:
                # Wine rarely forgets to load the driver while it boots. Twice would be our fault.
                self.wine.switch_off()
                self._boot()
        except BaseException:
            self.wine.switch_off()
            raise
        return self

    def __exit__(self, *_):
        self.wine.switch_off()
        self._lock.close()

    def _boot(self):
        finished = self.folder / "finished"
        is_new = not finished.exists()
        if is_new:
            self.wine.create()
        self._copy_files()
        self._draw_token()
        self.state = create_machine_state(self.wine.drive / STATE_FILE)
        self.wine.boot()
        self._start_agent()
        if is_new:
            self._install_driver()
        self._prefer_the_labs_libraries()
        self.wine.waiting.until(self._driver_answers, "the driver does not answer")
        finished.touch()

    def _copy_files(self):
        places = {
            "lab/agent.exe": "lab",
            "lab/dozewell_lab.sys": "windows/system32/drivers",
            "lab/powrprof.dll": _PROGRAM_FOLDER,
            **dict.fromkeys(_CLIENT_LIBRARIES.values(), "windows/system32"),
            **dict.fromkeys(_SERVED, _PROGRAM_FOLDER),
        }
        for file, place in places.items():
            folder = self.wine.drive / place
            folder.mkdir(parents=True, exist_ok=True)
            shutil.copy(self.build / file, folder)

    def _draw_token(self):
        """A new one for each boot, in a file that nobody else can read from its beginning."""
        self.token = secrets.token_hex(32)
        self.token_file.unlink(missing_ok=True)
        descriptor = os.open(self.token_file, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o600)
        with open(descriptor, "w", encoding="ascii") as file:
            file.write(self.token)

    def _start_agent(self):
        self.wine.start("C:\\lab\\agent.exe")
        waiting = self.wine.waiting
        port = waiting.until(lambda: self.state.agent_port, "the agent does not start")
        if self.state.size != ctypes.sizeof(MachineState):
            raise RuntimeError("machine_state.py and native/shared/machine_state.h differ")
        self.agent = Link(port, self.token, waiting)

    def _install_driver(self):
        device = f"SYSTEM\\CurrentControlSet\\Enum\\ROOT\\{_DRIVER}\\0000"
        registry = Registry(self.agent)
        registry.write("ClassGUID", _SYSTEM_CLASS, device)
        registry.write("Service", _DRIVER, device)
        self.agent.ask("create-service", _DRIVER, _KERNEL_DRIVER, _DEMAND_START,
                       f"C:\\windows\\system32\\drivers\\{_DRIVER}.sys")
        self.agent.ask("start-service", _DRIVER)

    def _prefer_the_labs_libraries(self):
        libraries = {**dict.fromkeys(_SERVED, ["powrprof"]), _CLIENT: list(_CLIENT_LIBRARIES)}
        for program, names in libraries.items():
            for name in names:
                Registry(self.agent).write(
                    name, "native,builtin",
                    f"HKCU\\Software\\Wine\\AppDefaults\\{program}\\DllOverrides")

    def _driver_answers(self):
        try:
            Driver(self.agent).reset()
        except CallFailed:
            return False
        return True
