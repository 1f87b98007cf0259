"""A Wine machine's processes, as the Linux kernel beneath it sees them."""

from pathlib import Path


def thread_runs(wine_folder, program):
    """How often each thread of a program was given a processor: for a thread that goes on to wait,
    the same number however long one looks."""
    runs = {}
    for process in _processes(wine_folder, program):
        for thread in (process / "task").iterdir():
            try:
                lines = (thread / "status").read_text().splitlines()
            except (FileNotFoundError, ProcessLookupError):
                continue  # it has ended since
            status = dict(line.split(":\t", 1) for line in lines)
            runs[int(thread.name)] = (int(status["voluntary_ctxt_switches"]) +
                                      int(status["nonvoluntary_ctxt_switches"]))
    return runs


def _processes(wine_folder, program):
    ours = f"WINEPREFIX={wine_folder}".encode()
    for process in Path("/proc").glob("[0-9]*"):
        try:
            command = (process / "cmdline").read_bytes().split(b"\0")[0]
            if (command.endswith(program.encode()) and
                    ours in (process / "environ").read_bytes().split(b"\0")):
                yield process
        except OSError:
            continue  # it has ended, or is not ours to look at
