"""Tests the metrics of dozewellctl from outside under Wine, as metric collectors read them: with a
parser of theirs.

    /usr/bin/python3 -m tests.ctl_metrics_test --wine "wine" --folder build/windows

Works on the machine that WINEPREFIX names: it empties this product's registry keys and data folder
there.
"""

import json
import re
import sys
import threading

from prometheus_client.parser import text_string_to_metric_families

from tests.support.cli import ROOT
from tests.support.client_machine import NOT_INSTALLED, SECTION, await_controller, main
from tests.support.expect import equal
from tests.support.programs import wait_until

# By the conventions for names of metrics: one prefix, small letters, no unit but a base unit at the
# end, and no ending that stands for another type.
NAME = re.compile(r"dozewell_[a-z]+(_[a-z]+)*")
OTHER_UNITS = ("minutes", "hours", "days", "milliseconds", "percent")
OTHER_TYPES = ("total", "count", "sum", "bucket", "created")


def parsed(text):
    """The metrics by name: the numbers of the samples, by the values of their labels."""
    equal(text.endswith("\n"), True, "the last line ends")
    equal("\r" in text, False, "a carriage return")
    metrics = {}
    for family in text_string_to_metric_families(text):
        equal((family.name in metrics, family.type), (False, "gauge"), family.name)
        metrics[family.name] = {tuple(sample.labels.values()): sample.value
                                for sample in family.samples}
        equal(len(metrics[family.name]), len(family.samples), f"samples of {family.name}")
        equal(family.documentation.endswith("."), True, family.documentation)
    return metrics


def number(metrics, name):
    return metrics[f"dozewell_{name}"][()]


def test_a_collector_reads_what_the_status_says(machine):
    machine.provision(attempts=3)
    machine.write_setting("\\Current", "CurrentAttempt", "REG_DWORD", 3)
    machine.write_setting("\\Current", "LastOptimizerRun", "REG_QWORD", 1782945000)
    machine.write_setting("\\Current" + SECTION, "Strength", "REG_SZ", "4")
    with machine.service():
        await_controller(machine)
        metrics = parsed(machine.works("status", "--metrics"))
        status = json.loads(machine.works("status", "--json"))
    equal(number(metrics, "up"), 1)
    version = (ROOT / "VERSION").read_text("utf-8").strip()
    equal(metrics["dozewell_build_info"], {(version,): 1})
    for name, key in (("feature_enabled", "featureEnabled"), ("strength", "strength"),
                      ("predictions_enabled", "predictionsEnabled"),
                      ("start_attempts", "currentAttempt"),
                      ("start_attempts_required", "totalAttempts"),
                      ("strength_has_result", "strengthHasResult"),
                      ("last_search_timestamp_seconds", "lastOptimizerRunUtcSeconds")):
        equal(number(metrics, name), float(status[key]), name)
    equal(metrics["dozewell_controller"], {("no",): 0, ("maybe",): 0, ("yes",): 1})
    equal(status["controller"]["runs"], "yes")
    equal(metrics["dozewell_machine_ability"][("driver",)], 0)
    # Nothing answers for the driver and the power scheme.
    for name in ("wake_timers_enabled", "hibernate_after_seconds"):
        equal(f"dozewell_{name}" in metrics, False, name)


def test_names_keep_the_conventions(machine):
    machine.provision()
    _, text, _ = machine.ctl("status", "--metrics")
    names = documented() | parsed(text).keys()
    for name in names:
        equal(NAME.fullmatch(name) is not None, True, name)
        last = name.rsplit("_", 1)[-1]
        equal(last in OTHER_UNITS or last in OTHER_TYPES, False, name)


def test_a_service_that_does_not_answer_is_seen(machine):
    code, text, errors = machine.ctl("status", "--metrics")
    equal((code, errors), (3, f"dozewellctl: {NOT_INSTALLED}\n"))
    metrics = parsed(text)
    equal((number(metrics, "up"), number(metrics, "service_running")), (0, 0))
    equal(metrics["dozewell_controller"][("no",)], 1)


def await_read(seen, content):
    wait_until(lambda: content in seen, "the file is not read")


def test_a_reader_never_sees_a_part_of_the_file(machine):
    machine.provision()
    file = machine.scratch / "dozewell.prom"
    seen, done = [], threading.Event()

    def watch():
        while not done.is_set():
            content = file.read_bytes() if file.exists() else None
            if content is not None and (not seen or content != seen[-1]):
                seen.append(content)

    watcher = threading.Thread(target=watch)
    watcher.start()
    try:
        for strength in range(4):
            machine.write_setting("\\Current" + SECTION, "Strength", "REG_SZ", str(strength))
            code, text, _ = machine.ctl("status", "--metrics", "--out", "dozewell.prom")
            equal((code, text), (3, ""))
            await_read(seen, file.read_bytes())
    finally:
        done.set()
        watcher.join()
    equal([number(parsed(content.decode()), "strength") for content in seen], [0, 1, 2, 3])
    equal([path.name for path in machine.scratch.iterdir()], ["dozewell.prom"], "files")


def test_the_manual_lists_every_metric(_):
    source = (ROOT / "tools" / "ctl" / "status_metrics.cpp").read_text("utf-8")
    timeouts = {"display_off_seconds", "sleep_after_seconds", "hibernate_after_seconds"}
    written = set(re.findall(r'metrics\.Add\(\s*"(\w+)"', source)) | timeouts
    equal(documented(), {f"dozewell_{name}" for name in written})


def documented():
    page = (ROOT / "docs" / "monitoring.md").read_text("utf-8")
    return set(re.findall(r"^\| `(dozewell_\w+)", page, re.MULTILINE))


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
