"""What pages state in sentences, with the numbers that the sources have. A sentence whose number
changes in the sources is not found on its page any more."""

CTL, REPLAY = "docs/dozewellctl.md", "docs/dozewell-replay.md"


def stated(sources):
    """Pairs of a page and a part of a sentence on it."""
    installed, numbers = sources.as_installed, sources.numbers
    days = installed("HistoryLimit")
    yield "docs/privacy.md", (f"`HistoryLimit` days: {days} as installed, "
                              f"{numbers['DefaultHistoryLimitDays']} if not set")
    yield "docs/privacy.md", f"for the last `HistoryLimit` days ({days})"
    yield "docs/importing.md", f"`HistoryLimit` days ({days} as installed)"
    yield "docs/defaults.md", f"`HistoryLimit` {days}."
    yield "docs/defaults.md", _set(sources)
    yield "docs/settings.md", f"client ({numbers['ClientSwitchTotalAttempts']} when absent)"
    yield "docs/settings.md", f"client ({numbers['ClientSwitchCurrentAttempt']} when absent)"

    fixed = sources.constant("tools/common/optimizer_inputs.cpp", "kUsualMinutes")
    yield "docs/report.md", f"`--hibernate-after`, {fixed} minutes without it"
    yield CTL, f"({fixed} minutes when that cannot be read)"

    stop = sources.constant("tools/setup/stop_service_windows.cpp", "kLongestWaitMs") // 1000
    yield "docs/installing.md", f"after {stop} seconds in all this step goes on"
    yield "docs/attack-surface.md", f"delays the installation by {stop} seconds in all"
    gone = sources.constant("tools/setup/await_deletion_windows.cpp", "kLongestDeletionMs") // 1000
    yield "docs/installing.md", f"for {gone} seconds; then the upgrade is undone"
    yield "docs/installing.md", f"after {gone} seconds the installation is undone"
    yield "docs/first-run-on-windows.md", f"within {gone} seconds it goes on or says why not"
    closing = sources.constant("src/service/service_host_windows.cpp", "kLongestWaitMs") // 1000
    yield "docs/operating.md", f"or after {closing} seconds. Windows itself"
    megabytes = sources.constant("tools/powerwatch/watch_log.h", "kMostBytes") // 1000000
    yield "docs/dozewell-powerwatch.md", f"at most {megabytes} MB"
    yield "docs/privacy.md", f"no more than {megabytes} MB are written"

    yield from _exit_codes(sources)


def _set(sources):
    """The settings before the first search, as the tables of defaults.md name them."""
    return ",".join(sources.as_installed(name) for name in (
        "FirstLastWeight", "SecondLastWeight", "AgregationWeight", "StrengthHigh", "StrengthLow",
        "DayGrouping"))


def _exit_codes(sources):
    codes = sources.ctl_exit_codes
    done, not_done, silent = codes["Done"], codes["NotDone"], codes["NotReachable"]
    yield "docs/operating.md", (f"exit code {done} | {not_done}: at least one line is BAD, and says "
                                f"what to do; {silent}: the service does not answer")
    yield "docs/operating.md", f"exit code {silent}: it does not answer"
    yield CTL, f"for code {silent}, with what to do"
    yield CTL, f"it is refused with code {codes['Usage']}"
    yield CTL, f"the message says so, and the exit code is {not_done}"
    yield CTL, f"missing or wrong; the exit code is {not_done}"
    yield CTL, f"the exit code is {silent}."
    yield CTL, f"It fails with code {not_done} when the controller does not run"
    yield CTL, f"else the command fails with code {not_done} and imports nothing"
    yield "docs/json.md", (f"with code {done}, with code {silent} of `dozewellctl status`, and with "
                           f"codes {not_done} and {silent} of `dozewellctl check`")
    failure = sources.constant("tools/replay/replay.cpp", "kFailure")
    yield REPLAY, f"An error is one line, exit code {failure}"
    powerwatch = sources.number("tools/powerwatch/command_line.cpp",
                                r"catch [^}]*return (\d+);")
    yield "docs/dozewell-powerwatch.md", f"name what went wrong, with exit code {powerwatch}"


# The tables of exit codes: the heading of the first cell, the page, and a word of each code's row.
EXIT_CODE_TABLES = (
    ("code", CTL, {"Done": "done", "NotDone": "not done", "Usage": "makes no sense",
                   "NotReachable": "does not answer", "NothingLearnt": "no history"}),
    ("exit code", "docs/check.md", {"Done": "no line is BAD", "NotDone": "at least one is",
                                    "Usage": "makes no sense", "NotReachable": "does not answer"}),
)
