"""A Wine machine in a folder of its own."""

import os
import shutil
import subprocess

# The zone has daylight saving, so that scenarios of its changes need no other machine.
ZONE = "America/New_York"


def _without_random_addresses():
    # With addresses drawn by chance, Wine finds a page of its own taken once in some thousand
    # starts.
    command = ["setarch", "-R"]
    works = subprocess.run([*command, "true"], stderr=subprocess.DEVNULL, check=False)
    return command if works.returncode == 0 else []


class Wine:
    def __init__(self, folder, zone=ZONE):
        self.folder = folder
        self.drive = folder / "drive_c"
        self._command = [*_without_random_addresses(), "wine"]
        self._environment = {
            **os.environ,
            "WINEPREFIX": str(folder),
            "WINEARCH": "win64",
            "WINEDEBUG": "-all",
            # Without its debugger a crash ends a program with an error, with it sometimes as a
            # success.
            "WINEDLLOVERRIDES": "mscoree,mshtml,winedbg.exe=d",
            "LC_ALL": "C.UTF-8",
            "TZ": zone,
        }
        self._environment.pop("DISPLAY", None)

    def create(self):
        """A machine with nothing on it, switched off."""
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        self._call([*self._command, "wineboot", "-i"])
        self._server("-w")

    def boot(self):
        # Keeps the machine running between programs.
        self._server("-p")
        # Whatever starts first also starts the machine's services, which keep its output open.
        self._call([*self._command, "cmd", "/c", "exit"])

    def switch_off(self):
        self._server("-k")
        self._server("-w")

    def run(self, program, *arguments, timeout):
        """Runs a program to its end, for its exit code and its output."""
        return subprocess.run([*self._command, program, *arguments], env=self._environment,
                              cwd=self.drive, stdin=subprocess.DEVNULL, capture_output=True,
                              timeout=timeout, check=False)

    def start(self, program, *arguments, output=subprocess.DEVNULL):
        return subprocess.Popen([*self._command, program, *arguments], env=self._environment,
                                cwd=self.drive, stdin=subprocess.DEVNULL, stdout=output,
                                stderr=subprocess.DEVNULL)

    def start_piped(self, program, *arguments):
        """Starts a program whose input, output and errors are the caller's."""
        pipe = subprocess.PIPE
        return subprocess.Popen([*self._command, program, *arguments], env=self._environment,
                                cwd=self.drive, stdin=pipe, stdout=pipe, stderr=pipe)

    def _server(self, option):
        self._call(["wineserver", option])

    def _call(self, command):
        subprocess.run(command, env=self._environment, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=120,
                       check=False)
