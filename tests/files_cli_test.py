"""Tests from outside which files dozewell-replay refuses, what it takes for what, and how it replaces
a file: no input is written over, nothing is left beside an output, nothing is lost.

    python3 -m tests.files_cli_test --tool build/native/dozewell-replay
    python3 -m tests.files_cli_test --tool "wine build/windows/dozewell-replay.exe"
"""

import os
import pty
import random
import shutil
import signal
import stat
import struct
import subprocess
import sys
import time

from tests.support.cli import HISTORY, ROOT, main, record
from tests.support.expect import contains, equal, matches
from tests.support.programs import WAITING

LOG = ROOT / "tests" / "event_logs" / "spring.xml"
SPRING_RECORDS = 4
CSV_NAME = "; the name of a CSV history ends in .csv"
NO_HISTORY = "%s: no history (zs7state.dat): it looks like "
NO_DATA = "%s: no data file (cpredict.z7): it looks like "
NO_CSV = "%s: no CSV history: it looks like "
A_HISTORY = "a history (zs7state.dat)"
A_DATA_FILE = "a data file (cpredict.z7)"


def names(tool):
    return sorted(path.name for path in tool.folder.iterdir())


def example(tool):
    """All kinds of files: s.ini, h.csv, d.z7, h.dat and log.xml."""
    tool.example()
    tool.works("import", "--history", "h.csv", "--out", "h.dat")
    shutil.copy(LOG, tool.folder / "log.xml")


def give_other_names(tool, name):
    """Names by which a file can be reached too."""
    others = ["./" + name, str(tool.folder / name), "folder/../" + name]
    (tool.folder / "folder").mkdir(exist_ok=True)
    os.link(tool.folder / name, tool.folder / ("hard-" + name))
    others.append("hard-" + name)
    if tool.is_native:
        (tool.folder / ("link-" + name)).symlink_to(name)
        (tool.folder / ("links-" + name)).symlink_to("link-" + name)
        others += ["link-" + name, "links-" + name]
    else:
        others = [other.replace(str(tool.folder), "Z:" + str(tool.folder)) for other in others]
        others.append(name.upper())
    return others


# Outputs that are inputs

def test_an_output_that_is_an_input_is_refused_before_anything_is_read(tool):
    example(tool)
    cases = [
        ("h.csv", "--history", ("learn", "--history", "h.csv", "--data")),
        ("s.ini", "--settings", ("learn", "--history", "h.csv", "--settings", "s.ini", "--data")),
        ("h.csv", "--history", ("import", "--history", "h.csv", "--replace", "--out")),
        ("h.dat", "--history", ("export", "--history", "h.dat", "--out")),
        ("h.dat", "--history", ("merge", "--history", "h.dat", "--pending", "gone", "--now", "0",
                                "--limit", "0", "--out")),
        ("h.dat", "--pending", ("merge", "--history", "gone", "--pending", "h.dat", "--now", "0",
                                "--limit", "0", "--out")),
        ("h.dat", "--history", ("report", "--history", "h.dat", "--data", "gone", "--out")),
        ("d.z7", "--data", ("report", "--history", "gone", "--data", "d.z7", "--out")),
        ("s.ini", "--settings", ("report", "--history", "gone", "--data", "gone2", "--settings",
                                 "s.ini", "--out")),
        ("log.xml", "--from-event-log", ("import", "--from-event-log", "log.xml", "--out")),
        ("s.ini", "--settings", ("import", "--from-event-log", "log.xml", "--data", "new",
                                 "--settings", "s.ini", "--out")),
        ("log.xml", "--from-event-log", ("import", "--from-event-log", "log.xml", "--out", "new",
                                         "--data")),
        ("h.dat", "--history", ("import", "--from-event-log", "log.xml", "--history", "h.dat",
                                "--out", "new", "--data")),
        ("s.ini", "--settings", ("import", "--from-event-log", "log.xml", "--settings", "s.ini",
                                 "--out", "new", "--data")),
        ("h.dat", "--out", ("import", "--from-event-log", "log.xml", "--out", "h.dat", "--data")),
    ]
    others = {name: give_other_names(tool, name) for name in ("h.csv", "s.ini", "h.dat", "d.z7",
                                                              "log.xml")}
    before = tool.files()
    for name, option, command in cases:
        for output in [name] + others[name]:
            tool.fails("%s: cannot be written: it is also %s" % (output, option), *command, output)
    equal(tool.files(), before)


def test_two_outputs_that_are_one_are_refused_before_there_is_any(tool):
    shutil.copy(LOG, tool.folder / "log.xml")
    for output in ("new", "./new"):
        tool.fails(output + ": cannot be written: it is also --out", "import", "--from-event-log",
                   "log.xml", "--out", "new", "--data", output)
    equal(names(tool), ["log.xml"])


def test_the_input_of_a_pipe_is_refused_too(tool):
    if not tool.is_native:
        return
    example(tool)
    before = tool.files()
    with open(tool.folder / "h.dat", "rb") as history:
        tool.fails("h.dat: cannot be written: it is also --history", "learn", "--history",
                   "/dev/stdin", "--data", "h.dat", stdin=history)
    equal(tool.files(), before)


# What import would lose

def import_log(*more):
    return ("import", "--from-event-log", "log.xml", "--zone", "UTC0") + more


def test_import_does_not_replace_records_that_it_lacks(tool):
    example(tool)
    lost = "h.dat would lose 4 records; --replace replaces it"
    before = tool.files()
    tool.fails(lost + ", --history h.dat extends it", *import_log("--out", "h.dat"))
    tool.write("other.csv", "28800,0\n43200,1\n1,0\n")
    tool.fails("h.dat would lose 2 records; --replace replaces it", "import", "--history",
               "other.csv", "--out", "h.dat",
               warnings=["other.csv: damaged: 1 record not later than one before"])
    os.remove(tool.folder / "other.csv")
    tool.fails("h.csv would lose 4 records; --replace replaces it, --history h.csv extends it",
               *import_log("--out", "h.csv"))
    equal(tool.files(), before)
    tool.works(*import_log("--out", "h.dat", "--replace"))
    equal(len(tool.read("h.dat")), 16 * SPRING_RECORDS)


def test_import_replaces_what_loses_nothing(tool):
    example(tool)
    tool.works("import", "--history", "h.csv", "--out", "h.dat")
    tool.write("more.csv", HISTORY + "200000,0\n")
    tool.works("import", "--history", "more.csv", "--out", "h.dat")
    equal(len(tool.read("h.dat")), 5 * 16)
    tool.works(*import_log("--out", "log.dat"))
    tool.works(*import_log("--out", "log.dat"))
    # A history that is extended loses none, even if it begins by repeating a state.
    tool.write("log.dat", record(2e9, 1) + record(2e9 + 1, 1) + record(2e9 + 2, 0))
    tool.works(*import_log("--history", "log.dat", "--out", "log.dat"))
    equal(len(tool.read("log.dat")), 16 * (SPRING_RECORDS + 1))
    # What is no history has no records.
    for content in (b"", b"some text\n", tool.read("d.z7")):
        tool.write("x", content)
        tool.works("import", "--history", "h.csv", "--out", "x")
        equal(len(tool.read("x")), 4 * 16)


def test_import_counts_what_waits_beside_a_history_of_the_service(tool):
    example(tool)
    tool.write("zs7state.dat", b"")
    tool.write("zs7state.dat.new", record(1, 0))
    tool.write("zs7state.dat.part", b"half")
    tool.fails("zs7state.dat would lose 1 record; --replace replaces it", "import", "--history",
               "h.csv", "--out", "zs7state.dat")
    equal(tool.read("zs7state.dat.new"), record(1, 0))
    tool.works("export", "--history", "zs7state.dat", "--out", "e.csv")
    equal(tool.read("e.csv"), b"epoch_wallclock_seconds,asleep\n1,0\n")
    tool.works(*import_log("--history", "zs7state.dat", "--out", "zs7state.dat"))
    equal(tool.read("zs7state.dat"), record(1, 0))
    equal([name for name in names(tool) if "zs7" in name], ["zs7state.dat"])


def test_what_waits_beside_other_files_is_not_the_services(tool):
    example(tool)
    tool.write("h.dat.new", "mine")
    tool.works("import", "--history", "h.csv", "--out", "h.dat")
    equal(tool.read("h.dat.new"), b"mine")


def test_learn_replaces_a_data_file_of_the_service_and_what_waits_beside_it(tool):
    example(tool)
    tool.write("cpredict.z7", b"old")
    tool.write("cpredict.z7.new", b"newer")
    tool.works("learn", "--history", "h.csv", "--settings", "s.ini", "--data", "cpredict.z7")
    equal(tool.read("cpredict.z7"), tool.read("d.z7"))
    equal([name for name in names(tool) if "cpredict" in name], ["cpredict.z7"])


def test_import_asks_on_a_terminal(tool):
    if not tool.is_native:
        return
    example(tool)
    before = tool.read("h.dat")

    def answer(text):
        master, slave = pty.openpty()
        with os.fdopen(master, "r+b", 0) as screen:
            screen.write(text)
            done = tool.run(*import_log("--out", "h.dat"), stdin=slave, stderr=slave)
            os.close(slave)
            return done.returncode, screen.read(10000).decode()

    code, shown = answer(b"n\n")
    equal(code, 2)
    contains(shown, "h.dat would lose 4 records. Replace it? [y/N] ")
    contains(shown, "dozewell-replay: nothing was imported")
    equal(tool.read("h.dat"), before)
    code, shown = answer(b"y\n")
    equal(code, 0)
    equal(len(tool.read("h.dat")), 16 * SPRING_RECORDS)


def test_import_needs_a_history_that_exists_unless_it_is_the_output(tool):
    example(tool)
    tool.fails("gone.dat: cannot be read: No such file or directory",
               *import_log("--history", "gone.dat", "--out", "new.dat"))
    equal("new.dat" in names(tool), False)
    tool.works(*import_log("--history", "./new.dat", "--out", "new.dat"))


# Wrong files

def test_a_history_of_another_kind_is_refused(tool):
    example(tool)
    wrong = {
        HISTORY: "text" + CSV_NAME,
        b"\xff\xfe1\0,\0" + b"\x30\0\n\0": "UTF-16 text" + CSV_NAME,
        b"\xfe\xff\0001": "UTF-16 text" + CSV_NAME,
        b"x" * 5000 + b"\0": "text" + CSV_NAME,
        tool.read("d.z7"): A_DATA_FILE,
        struct.pack("<Iiii40xii", 0, -1, -60, 30, 2, 0) + 48 * b"x": A_DATA_FILE,
    }
    for content, what in wrong.items():
        tool.write("x", content)
        error = NO_HISTORY % "x" + what
        for command in (("learn", "--history", "x", "--data", "out"),
                        ("export", "--history", "x", "--out", "out"),
                        ("merge", "--history", "x", "--pending", "h.dat", "--now", "0", "--limit",
                         "0", "--out", "out"),
                        ("merge", "--history", "h.dat", "--pending", "x", "--now", "0", "--limit",
                         "0", "--out", "out"),
                        ("report", "--history", "x", "--data", "d.z7", "--out", "out"),
                        ("compare", "--history", "x"), ("simulate", "--history", "x"),
                        ("baseline", "--history", "x"), ("search", "--history", "x"),
                        import_log("--history", "x", "--out", "out")):
            tool.fails(error, *command)
    equal("out" in names(tool), False)


def test_text_from_a_pipe_is_no_history(tool):
    if not tool.is_native:
        return
    tool.fails(NO_HISTORY % "/dev/stdin" + "text" + CSV_NAME, "learn", "--history", "/dev/stdin",
               "--data", "out", stdin=None, input=b"1,0\n")
    equal(names(tool), [])


def test_what_only_resembles_another_kind_is_a_history(tool):
    tool.example()
    header = struct.pack("<Iiii40xii", 0, 7, 1440, 0, 2, 0)
    for content, warnings in (
            (header + 48 * b"\0", ["h.dat: damaged: 6 records not later than one before, "
                                   "1 record with a state above 3"]),
            (record(1, 0)[:5] + b"\0\0\0", ["h.dat: damaged: an incomplete record at the end"]),
            (b"x" * 4000 + b"\0" * 96 + b"x" * 16, None)):
        tool.write("h.dat", content)
        done = tool.run("learn", "--history", "h.dat", "--settings", "s.ini", "--data", "out")
        equal(done.returncode, 0)
        if warnings:
            equal(done.stderr.decode().splitlines(),
                  ["dozewell-replay: warning: " + warning for warning in warnings])


def test_a_data_file_of_another_kind_is_refused(tool):
    example(tool)
    wrong = {
        HISTORY: "text",
        "\ufeff1,0".encode("utf-16-be"): "UTF-16 text",
        tool.read("h.dat"): A_HISTORY,
        record(0, 3) + record(32535215999, 0, 7): A_HISTORY,
    }
    for content, what in wrong.items():
        tool.write("x", content)
        error = NO_DATA % "x" + what
        for command in ("predict", "probabilities", "suspend", "week", "explain"):
            tool.fails(error, command, "--data", "x")
        tool.fails(error, "report", "--history", "h.dat", "--data", "x", "--out", "out")
    equal("out" in names(tool), False)


def test_a_data_file_that_only_resembles_a_history_is_ignored_as_the_service_does(tool):
    tool.example()
    for content in (b"", record(1, 0), record(1, 0) + record(1, 1), record(1, 4) + record(2, 0),
                    record(-1, 0) + record(2, 0), record(1, 0) + record(float("nan"), 0),
                    record(1, 0) + record(32535216000, 0), record(1, 0) + record(2, 1) + b"\0"):
        tool.write("x", content)
        tool.works("probabilities", "--data", "x", warnings=[
            "x: ignored: it is not of the size that the configured cycle needs"])


def test_a_csv_of_another_kind_is_refused(tool):
    example(tool)
    for content, what in ((HISTORY.encode("utf-16"), "UTF-16 text; it must be UTF-8"),
                          (tool.read("h.dat"), A_HISTORY), (tool.read("d.z7"), A_DATA_FILE)):
        tool.write("x.csv", content)
        error = NO_CSV % "x.csv" + what
        tool.fails(error, "import", "--history", "x.csv", "--out", "out")
        tool.fails(error, "learn", "--history", "x.csv", "--data", "out")


def test_a_damaged_history_is_answered_with_a_warning(tool):
    tool.example()
    good = [record(28800, 0), record(43200, 1), record(115200, 0), record(129600, 1)]
    nan = record(float("nan"), 0)
    tool.write("h.dat", b"".join(good))
    expected = tool.works("baseline", "--history", "h.dat")
    for content, damage in (
            (good + [b"tail"], "an incomplete record at the end"),
            (good[:2] + good[:1] + good[2:], "1 record not later than one before"),
            (good + [nan, nan], "2 records not later than one before, 2 records without a time"),
            (good[:3] + [record(129600, 2)] + [record(100, 4)],
             "1 record not later than one before, 1 record with a state above 3")):
        tool.write("h.dat", b"".join(content))
        out = tool.works("baseline", "--history", "h.dat", warnings=["h.dat: damaged: " + damage])
        equal(out, expected)


def test_an_endless_input_is_refused(tool):
    if not tool.is_native:
        return
    tool.example()
    most = 36525 * 100 * 32
    for device in ("/dev/zero", "/dev/full"):
        error = "%s: larger than %d bytes, more than any such file needs" % (device, most)
        tool.fails(error, "learn", "--history", device, "--data", "out")
        tool.fails(error, "predict", "--data", device)
        tool.fails(error, "predict", "--data", "d.z7", "--settings", device)
    tool.fails("/dev/zero: larger than %d bytes, more than any such file needs" % (512 << 20),
               "import", "--from-event-log", "/dev/zero", "--out", "out")
    equal(names(tool), ["d.z7", "h.csv", "s.ini"])


# How an output is replaced

def sample(out, days=60, seed=1):
    return ("sample", "--kind", "office", "--days", str(days), "--seed", str(seed), "--out", out)


def test_forty_runs_at_once_on_one_output_all_succeed(tool):
    runs = 40
    started = [subprocess.Popen([*tool.command, *sample("out.csv", 200, seed)], cwd=tool.folder,
                                env=tool.environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)
               for seed in range(runs)]
    for process in started:
        out, err = WAITING.for_end(process, "the tool does not end")
        equal((process.returncode, err), (0, b""))
        matches(out.decode(), r"out\.csv: \d+ records\n")
    left = tool.read("out.csv")
    equal(names(tool), ["out.csv"])
    for seed in range(runs):
        tool.works(*sample("one.csv", 200, seed))
        if tool.read("one.csv") == left:
            return
    raise AssertionError("the output is none of those that were written")


def test_interrupted_runs_leave_nothing(tool):
    tool.works(*sample("out.csv", 36500))
    whole = {tool.read("out.csv")}
    tool.works(*sample("whole.csv", 36500, 2))
    whole.add(tool.read("whole.csv"))
    os.remove(tool.folder / "whole.csv")
    start = time.monotonic()
    tool.works(*sample("out.csv", 36500, 2))
    takes = time.monotonic() - start
    rng = random.Random(1)
    interrupted = writing = 0
    for number in range(60 if tool.is_native else 10):
        process = subprocess.Popen([*tool.command, *sample("out.csv", 36500)], cwd=tool.folder,
                                   env=tool.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        if number % 2 == 0:
            while process.poll() is None and len(names(tool)) == 1:
                pass
            writing += len(names(tool)) > 1
        else:
            time.sleep(rng.uniform(0.3, 1) * takes)
        process.send_signal(rng.choice((signal.SIGINT, signal.SIGTERM)) if tool.is_native
                            else signal.SIGINT)
        # Under Wine the exit code of an interrupted program is 0.
        interrupted += WAITING.for_end(process, "the tool does not end")[0] == b""
        equal(names(tool), ["out.csv"])
        equal(tool.read("out.csv") in whole, True)
    if interrupted == 0 or writing == 0:
        raise AssertionError("%d runs were interrupted, %d while they wrote" % (interrupted, writing))


def test_a_temporary_file_that_others_left_does_not_matter(tool):
    for number in range(200):
        tool.write("out.csv.%d.tmp" % number, "left")
    tool.works(*sample("out.csv"))
    equal(len(names(tool)), 201)


def test_a_name_of_full_length_can_be_written(tool):
    if not tool.is_native:
        return
    name = "n" * 251 + ".csv"
    tool.works(*sample(name))
    equal(names(tool), [name])


def test_a_replaced_file_keeps_its_mode(tool):
    if not tool.is_native:
        return
    for mode in (0o600, 0o640, 0o664):
        tool.write("out.csv", "old")
        os.chmod(tool.folder / "out.csv", mode)
        tool.works(*sample("out.csv"))
        equal(stat.S_IMODE((tool.folder / "out.csv").stat().st_mode), mode)


def test_a_replaced_file_keeps_the_owner_that_root_may_give_it(tool):
    if not tool.is_native or os.geteuid() != 0:
        return
    tool.write("out.csv", "old")
    path = tool.folder / "out.csv"
    os.chown(path, 4711, 4712)
    os.chmod(path, 0o600)
    tool.works(*sample("out.csv"))
    status = path.stat()
    equal((status.st_uid, status.st_gid, stat.S_IMODE(status.st_mode)), (4711, 4712, 0o600))


def test_a_file_of_another_user_is_written_in_place(tool):
    if not tool.is_native or os.geteuid() != 0:
        return
    tool.write("out.csv", "old")
    path = tool.folder / "out.csv"
    os.chmod(tool.folder, 0o777)

    def other_user():
        os.setgroups([])
        os.setgid(4712)
        os.setuid(4711)

    os.chmod(path, 0o600)
    tool.fails("out.csv: cannot be written: Permission denied", *sample("out.csv"),
               preexec_fn=other_user)
    equal(tool.read("out.csv"), b"old")
    os.chmod(path, 0o666)
    before = path.stat()
    equal(tool.run(*sample("out.csv"), preexec_fn=other_user).returncode, 0)
    after = path.stat()
    equal((after.st_uid, after.st_ino, after.st_mode), (0, before.st_ino, before.st_mode))
    equal(tool.read("out.csv").startswith(b"epoch_wallclock_seconds,asleep\n"), True)
    equal(names(tool), ["out.csv"])


def test_a_replaced_file_keeps_its_access_list(tool):
    if not tool.is_native:
        return
    tool.write("out.csv", "old")
    path = tool.folder / "out.csv"
    # The owner, user 4711, the group, the mask and all others: rw-, rw-, ---, rw-, ---.
    entries = ((0x01, 6, 0xFFFFFFFF), (0x02, 6, 4711), (0x04, 0, 0xFFFFFFFF),
               (0x10, 6, 0xFFFFFFFF), (0x20, 0, 0xFFFFFFFF))
    access = struct.pack("<I", 2) + b"".join(struct.pack("<HHI", *entry) for entry in entries)
    try:
        os.setxattr(path, "system.posix_acl_access", access)
    except OSError:
        return  # This file system has no access lists.
    tool.works(*sample("out.csv"))
    equal(os.getxattr(path, "system.posix_acl_access"), access)
    equal(stat.S_IMODE(path.stat().st_mode), 0o660)


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
