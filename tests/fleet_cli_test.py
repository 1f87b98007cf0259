"""Tests `dozewell-replay fleet` from outside.

    python3 -m tests.fleet_cli_test --tool build/native/dozewell-replay
    python3 -m tests.fleet_cli_test --tool "wine build/windows/dozewell-replay.exe"
"""

import csv
import html.parser
import io
import json
import os
import re
import signal
import subprocess
import sys
from fractions import Fraction

from tests.support.cli import ROOT, main, record
from tests.support.expect import contains, equal
from tests.support.programs import wait_until
from tests.support.strict_json import documented_examples, expect_documented_of_many, strict_json

OUTCOMES = ("sleepSeconds", "hibernateSeconds", "resumesFromSleep", "resumesFromHibernate")
KINDS = ("office", "home", "shift", "erratic")
DAYS = 70  # with two searches

# What walks several weeks in a moment: a search has few sets to try.
QUICK = """\
[Settings]
TimeResolution=10
[CyclicProbabilityPredictor]
DaysInCycle=7
MinutesInDay=1440
FirstLastWeight=45
SecondLastWeight=45
AgregationWeight=10
StrengthHigh=20
StrengthLow=20
DayGrouping=12
FirstLastWeightRange=5 45
SecondLastWeightRange=15
StrengthHighRange=20 60
StrengthLowRange=5 20
DayGroupingRange=12
WR=10 50 80
Strength=1
"""
WITH_SETTINGS = ("--settings", "s.ini")


def make_machines(tool, count, days=DAYS):
    """Histories of both kinds of files, in folders of their own and together; returns their paths
    in the order of the results."""
    tool.write("s.ini", QUICK)
    (tool.folder / "all" / "together").mkdir(parents=True)
    paths = []
    for number in range(count):
        kind = KINDS[number % len(KINDS)]
        path = f"all/together/{kind}{number}.csv"
        if number % 3 == 0:
            path = f"all/PC-{number:03}/Brevan/Z7/zs7state.dat"
        (tool.folder / path).parent.mkdir(parents=True, exist_ok=True)
        tool.works("sample", "--kind", kind, "--days", str(days), "--seed", str(number), "--out",
                   path)
        paths.append(path)
    return sorted(as_result(tool, path) for path in paths)


def as_result(tool, path):
    return path if tool.is_native else path.replace("/", "\\")


def fleet(tool, *options, folders=("all",), warnings=()):
    out = tool.works("fleet", *WITH_SETTINGS, "--json", *options, *folders, warnings=warnings)
    return strict_json(out)


def compared(tool, path):
    """What compare says of a machine, by the names that fleet has for it."""
    done = json.loads(tool.works("compare", *WITH_SETTINGS, "--json", "--history", path))
    by_name = {choice["name"]: choice for choice in done["choices"]}
    for choice in done["walkForward"]:
        name = choice["name"]
        if name in by_name and choice["hibernateAfterMinutes"] is None:
            name += ", walked forward"
        by_name[name] = choice
    return {name: [choice[key] for key in OUTCOMES] for name, choice in by_name.items()}


def outcomes_by_name(document):
    return {choice["name"]: [choice[key] for key in OUTCOMES] for choice in document["choices"]}


def rows_of(tool, name):
    return list(csv.DictReader(io.StringIO(tool.read(name).decode("utf-8"))))


# What it comes to

def test_sums_are_those_of_single_runs_of_compare(tool):
    paths = make_machines(tool, 8)
    document = fleet(tool)
    singles = [compared(tool, path) for path in paths]
    equal(document["machines"], 8)
    expected = {name: [sum(single[name][i] for single in singles) for i in range(4)]
                for name in singles[0]}
    equal(outcomes_by_name(document), expected)
    names = list(expected)
    for name in ("10 minutes", "180 minutes", "never", "settings", "Best0", "clairvoyant",
                 "settings, walked forward"):
        equal(name in names, True, name)


def test_timeouts_shown_twice_by_compare_are_the_same(tool):
    make_machines(tool, 4)
    for path in tool.folder.rglob("*.csv"):
        done = json.loads(tool.works("compare", *WITH_SETTINGS, "--json", "--history",
                                     str(path.relative_to(tool.folder))))
        walked = {choice["name"]: choice for choice in done["walkForward"]}
        for choice in done["choices"]:
            if choice["hibernateAfterMinutes"] is not None:
                equal([choice[key] for key in OUTCOMES],
                      [walked[choice["name"]][key] for key in OUTCOMES], choice["name"])


def test_the_document(tool):
    make_machines(tool, 2)
    document = fleet(tool)
    equal(list(document), ["machines", "broken", "choices"])
    equal(document["broken"], [])
    equal(list(document["choices"][0]), ["name", *OUTCOMES])
    expect_documented_of_many(document, documented_examples("dozewell-replay")["fleet"])


def test_each_machine_has_a_row_with_its_outcomes(tool):
    paths = make_machines(tool, 6)
    fleet(tool, "--csv", "rows.csv", "--threads", "3")
    rows = rows_of(tool, "rows.csv")
    equal([row["path"] for row in rows], paths)
    equal(rows[0]["machine"], "PC-000")
    equal(rows[-1]["machine"], "shift%d" % 5 if "shift5" in rows[-1]["path"] else rows[-1]["machine"])
    for row in rows:
        for name, outcomes in compared(tool, row["path"]).items():
            equal([int(row[f"{name}: {key}"]) for key in OUTCOMES], outcomes, name)
        equal(row["from"][:10], "2024-01-01")
        equal((row["broken"], row["damaged"]), ("", ""))


def test_energy_and_money(tool):
    make_machines(tool, 3)
    fleet(tool, "--csv", "rows.csv", "--watts-asleep", "2.5", "--watts-hibernated", "0.5",
          "--price", "0.31")
    for row in rows_of(tool, "rows.csv"):
        for name in ("10 minutes", "never", "settings"):
            energy = (int(row[f"{name}: sleepSeconds"]) * Fraction("2.5") +
                      int(row[f"{name}: hibernateSeconds"]) * Fraction("0.5")) / 3600000
            for key, exact in (("kilowattHours", energy), ("cost", energy * Fraction("0.31"))):
                given = Fraction(row[f"{name}: {key}"])
                equal(abs(given - exact) <= Fraction(1, 1999999), True, f"{name} {key}")


def test_energy_that_is_left_out_is_that_of_the_manual(tool):
    make_machines(tool, 3)
    fleet(tool, "--csv", "left.csv")
    fleet(tool, "--csv", "given.csv", "--watts-asleep", "4", "--watts-hibernated", "2", "--price",
          "0.2")
    equal(tool.read("left.csv"), tool.read("given.csv"))


def test_threads_do_not_change_anything(tool):
    make_machines(tool, 9)
    results = []
    for threads in ("1", "2", "7"):
        document = fleet(tool, "--threads", threads, "--csv", "r.csv", "--out", "p.html",
                         "--partial", f"{threads}.part")
        results.append((document, tool.read("r.csv"), tool.read("p.html"),
                        tool.read(f"{threads}.part")))
    equal(results[1] == results[0], True)
    equal(results[2] == results[0], True)


def test_the_table(tool):
    make_machines(tool, 3)
    text = tool.works("fleet", *WITH_SETTINGS, "all")
    lines = text.splitlines()
    equal(lines[0].startswith("3 machines, 2024-01-01 to 2024-03-"), True, lines[0])
    document = fleet(tool)
    for choice in document["choices"]:
        line = next(line for line in lines if re.match(re.escape(choice["name"]) + "  ", line))
        equal([int(number) for number in line[len(choice["name"]):].split()[2:4]],
              [choice["resumesFromSleep"], choice["resumesFromHibernate"]])
    contains(text, "\nRecommended:\nall machines, 3 machines, slots: strength ")


def test_the_users_own_timeout(tool):
    make_machines(tool, 2)
    names = [choice["name"] for choice in fleet(tool, "--hibernate-after", "77")["choices"]]
    equal(names[6:9], ["60 minutes", "77 minutes", "90 minutes"])


def test_no_machines(tool):
    tool.write("s.ini", QUICK)
    (tool.folder / "all").mkdir()
    document = fleet(tool, "--out", "p.html", "--csv", "r.csv")
    equal((document["machines"], document["broken"]), (0, []))
    equal({tuple(choice[key] for key in OUTCOMES) for choice in document["choices"]}, {(0,) * 4})


def test_a_history_without_records_is_a_machine(tool):
    make_machines(tool, 2)
    before = fleet(tool)
    tool.write("all/empty.dat", "")
    document = fleet(tool)
    equal(document["machines"], 3)
    equal(document["choices"], before["choices"])


# What is found

def test_what_is_given_twice_counts_once(tool):
    make_machines(tool, 3)
    equal(fleet(tool, folders=("all", "all")), fleet(tool))


def test_a_history_may_be_given_itself(tool):
    paths = make_machines(tool, 3)
    equal(fleet(tool, folders=(paths[0],))["machines"], 1)


def test_other_files_are_no_histories(tool):
    make_machines(tool, 2)
    for name in ("cpredict.z7", "zs7state.dat.new", "notes.txt", "dat"):
        tool.write(f"all/{name}", "nothing")
    equal(fleet(tool)["machines"], 2)


def test_folders_that_are_not_there(tool):
    tool.write("s.ini", QUICK)
    tool.fails("gone: cannot be listed: No such file or directory", "fleet", "gone")
    tool.fails("FOLDER is required", "fleet")
    tool.fails("FOLDER: the name is empty", "fleet", "")


def test_links_to_folders_are_not_followed(tool):
    if not tool.is_native:
        return
    make_machines(tool, 2)
    (tool.folder / "all" / "again").symlink_to(".")
    equal(fleet(tool)["machines"], 2)


def test_names_that_are_not_unicode(tool):
    if not tool.is_native:
        return
    make_machines(tool, 3)
    plain = fleet(tool)
    for old, new in (("all/PC-000", b"all/\xfc"), ("all/together", "all/ü".encode())):
        os.rename(tool.folder / old, os.fsencode(tool.folder) + b"/" + new)
    fleet(tool, "--partial", "w.part", "--csv", "r.csv")
    equal(fleet(tool, "--partial", "w.part", "--resume")["choices"], plain["choices"])
    equal("\N{REPLACEMENT CHARACTER}" in rows_of(tool, "r.csv")[2]["path"], True)


# What is broken

def break_some(tool):
    """Adds histories that cannot be judged; returns what is said of them."""
    tool.write("all/a,b\".csv", "1,0\n2;1\n")
    tool.write("all/text.dat", "Nothing that any command reads.\n")
    tool.write("all/together/code.csv", "0,0\n100,1\n200,4\n")
    return {
        as_result(tool, "all/a,b\".csv"): "line 2: not a time and 0 or 1: 2;1",
        as_result(tool, "all/text.dat"): None,
        as_result(tool, "all/together/code.csv"): "line 3: Unknown event in the history: 4",
    }


def test_a_broken_history_costs_one_line(tool):
    if not tool.is_native:
        return  # Windows has no such name
    make_machines(tool, 4)
    before = fleet(tool)
    expected = break_some(tool)
    done = tool.run("fleet", *WITH_SETTINGS, "--json", "--csv", "r.csv", "--out", "p.html", "all")
    equal(done.returncode, 0)
    document = strict_json(done.stdout.decode())
    equal((document["machines"], document["choices"]), (4, before["choices"]))
    equal([broken["path"] for broken in document["broken"]], sorted(expected))
    for broken in document["broken"]:
        equal(list(broken), ["path", "reason"])
        equal(broken["path"] in broken["reason"], False, broken["reason"])
    equal(document["broken"][-1]["reason"], expected["all/together/code.csv"])
    equal(len(done.stderr.decode().splitlines()), 3)
    contains(done.stderr.decode(), "dozewell-replay: warning: all/text.dat: ")
    rows = rows_of(tool, "r.csv")
    equal(len(rows), 7)
    broken = [row for row in rows if row["broken"]]
    equal([row["path"] for row in broken], sorted(expected))
    equal({row["never: sleepSeconds"] for row in broken}, {""})
    contains(tool.read("p.html").decode(), "Histories that could not be judged")


def test_a_folder_that_cannot_be_listed_costs_one_line(tool):
    if not tool.is_native or os.geteuid() == 0:
        return
    make_machines(tool, 2)
    (tool.folder / "all" / "shut").mkdir(mode=0)
    path = as_result(tool, "all/shut")
    document = fleet(tool, warnings=[f"{path}: cannot be listed: Permission denied"])
    equal(document["broken"], [{"path": path, "reason": "cannot be listed: Permission denied"}])


def test_a_damaged_history_is_judged_as_compare_does(tool):
    make_machines(tool, 1)
    path = as_result(tool, "all/PC-000/Brevan/Z7/zs7state.dat")
    tool.write(path if tool.is_native else path.replace("\\", "/"),
               tool.read("all/PC-000/Brevan/Z7/zs7state.dat") + record(5, 1) + b"xyz")
    warning = f"{path}: damaged: 1 record not later than one before, an incomplete record at the end"
    document = fleet(tool, "--csv", "r.csv", warnings=[warning])
    single = json.loads(tool.works("compare", *WITH_SETTINGS, "--json", "--history", path,
                                   warnings=[warning]))
    names = outcomes_by_name(document)
    for choice in single["choices"]:
        equal(names[choice["name"]], [choice[key] for key in OUTCOMES])
    equal(rows_of(tool, "r.csv")[0]["damaged"], warning.split(": ", 1)[1])


def test_settings_that_cannot_be_simulated(tool):
    make_machines(tool, 1)
    tool.write("s.ini", QUICK.replace("FirstLastWeightRange=5 45", "FirstLastWeightRange=-1"))
    tool.fails("s.ini: FirstLastWeightRange holds -1: No weigths specified", "fleet",
               *WITH_SETTINGS, "all")


# Runs that are stopped

def test_a_run_goes_on_wherever_it_was_stopped(tool):
    make_machines(tool, 5)
    tool.write("all/text.dat", "Nothing.\n")
    warning = tool.run("fleet", *WITH_SETTINGS, "all").stderr.decode().split("warning: ")[1].strip()
    whole = fleet(tool, "--partial", "w.part", "--csv", "w.csv", warnings=[warning])
    content, table = tool.read("w.part"), tool.read("w.csv")
    head = content.index(b"\n") + 1
    for size in {head, head + 1, head + 200, len(content) // 2, content.rindex(b"\n", 0, -1) + 1,
                 content.rindex(b"\n", 0, -1) + 5, len(content) - 1, len(content)}:
        tool.write("w.part", content[:size])
        equal(fleet(tool, "--partial", "w.part", "--resume", "--csv", "w.csv", warnings=[warning]),
              whole, f"stopped after {size} bytes")
        equal(tool.read("w.part") == content, True, f"stopped after {size} bytes")
        equal(tool.read("w.csv") == table, True)
    equal([name for name in tool.files() if "whole" in name or "tmp" in name], [])


def test_what_is_done_is_not_done_again(tool):
    make_machines(tool, 3)
    whole = fleet(tool, "--partial", "w.part")
    content = tool.read("w.part")
    end = content.rindex(b"\n", 0, -1) + 1
    tool.write("w.part", content[:end])
    for path in tool.folder.rglob("all/**/*.*"):
        if path.is_file():
            path.write_bytes(b"")
    equal(fleet(tool, "--partial", "w.part", "--resume"), whole)


def test_a_run_that_is_killed_goes_on(tool):
    if not tool.is_native:
        return
    make_machines(tool, 6, days=180)
    tool.write("d.ini", open(ROOT / "packaging" / "default-settings.ini", encoding="utf-8").read())
    command = ("fleet", "--settings", "d.ini", "--threads", "1", "--json", "--partial")
    whole = tool.works(*command, "w.part", "all")
    with subprocess.Popen([*tool.command, *command, "k.part", "all"], cwd=tool.folder,
                          stdout=subprocess.DEVNULL) as running:
        part = tool.folder / "k.part"
        wait_until(lambda: part.exists() and part.read_bytes().count(b"\n") > 2, "two machines")
        running.send_signal(signal.SIGKILL)
    equal(part.read_bytes().count(b"\n") < 8, True, "killed before the end")
    equal(tool.works(*command, "k.part", "--resume", "all"), whole)
    equal(tool.read("k.part") == tool.read("w.part"), True)


def test_resuming_something_else(tool):
    make_machines(tool, 3)
    fleet(tool, "--partial", "w.part")
    run = ("fleet", "--settings", "s.ini", "--partial", "w.part", "--resume")
    other = "w.part: was begun with other settings, another timeout, part or version"
    tool.fails(other, *run, "--hibernate-after", "30", "all")
    tool.fails(other, *run, "--part", "1/2", "all")
    tool.write("t.ini", QUICK.replace("WR=10", "WR=20"))
    tool.fails(other, "fleet", "--settings", "t.ini", "--partial", "w.part", "--resume", "all")
    tool.write("all/PC-0/new.csv" if (tool.folder / "all/PC-0").exists() else "all/A.csv", "")
    tool.fails("w.part: was begun with other histories; %s is not next"
               % as_result(tool, "all/PC-000/Brevan/Z7/zs7state.dat"), *run, "all")
    tool.fails("--resume: needs --partial", "fleet", "--resume", "all")


def test_resuming_what_was_never_begun_begins_it(tool):
    make_machines(tool, 2)
    equal(fleet(tool, "--partial", "w.part", "--resume"), fleet(tool))


# Parts

def in_parts(tool, number):
    for part in range(1, number + 1):
        fleet(tool, "--part", f"{part}/{number}", "--partial", f"{part}-{number}.part")
    return [f"{part}-{number}.part" for part in range(1, number + 1)]


def merged(tool, *arguments):
    return strict_json(tool.works("fleet", "--merge", "--json", *arguments))


def test_parts_add_up_exactly(tool):
    make_machines(tool, 7)
    whole = fleet(tool, "--csv", "w.csv", "--out", "w.html", "--partial", "w.part")
    for number in (1, 3, 10):
        parts = in_parts(tool, number)
        equal(merged(tool, "--csv", "m.csv", "--out", "m.html", "--partial", "m.part",
                     *reversed(parts)), whole)
        for kind in ("csv", "html", "part"):
            equal(tool.read("m." + kind) == tool.read("w." + kind), True, kind)


def test_merged_results_can_be_merged(tool):
    make_machines(tool, 5)
    (tool.folder / "all" / "together").rename(tool.folder / "second")
    whole = fleet(tool, folders=("all", "second"))
    for folder in ("all", "second"):
        fleet(tool, "--partial", folder + ".part", folders=(folder,))
    merged(tool, "--partial", "both.part", "all.part", "second.part")
    equal(merged(tool, "both.part"), whole)


def test_results_that_do_not_belong_together(tool):
    make_machines(tool, 4)
    parts = in_parts(tool, 3)
    run = ("fleet", "--merge")
    tool.fails("part 2 of 3 is missing", *run, parts[0], parts[2])
    tool.fails("part 1 of 3 is there more often than part 2 of 3", *run, parts[0], *parts)
    fleet(tool, "--partial", "w.part")
    path = as_result(tool, "all/PC-000/Brevan/Z7/zs7state.dat")
    tool.fails(f"{parts[0]}: {path} is in w.part too", *run, "w.part", *parts)
    fleet(tool, "--hibernate-after", "30", "--partial", "o.part")
    tool.fails("o.part: was made with other settings, another timeout or another version than "
               "w.part", *run, "w.part", "o.part")
    tool.write("cut.part", tool.read("w.part")[:-20])
    tool.fails("cut.part: its end is missing; the run was stopped, and goes on with --resume",
               *run, "cut.part")
    tool.fails("gone.part: cannot be read: No such file or directory", *run, "gone.part")
    tool.fails("s.ini: no partial result of fleet", *run, "s.ini")


def test_damaged_results(tool):
    make_machines(tool, 2)
    fleet(tool, "--partial", "w.part")
    lines = tool.read("w.part").decode().splitlines(keepends=True)
    for changed, line in (([lines[0], lines[2], lines[1], lines[3]], 3),
                          ([lines[0], lines[1], lines[3]], 3),
                          ([*lines, lines[1]], 5),
                          ([lines[0], lines[1].replace("[", "", 1), *lines[2:]], 2),
                          ([lines[0], lines[1].replace("],[", "],[-", 1), *lines[2:]], 2)):
        tool.write("d.part", "".join(changed))
        done = tool.run("fleet", "--merge", "d.part")
        equal((done.returncode, done.stdout), (2, b""))
        contains(done.stderr.decode(), f"dozewell-replay: d.part: line {line}: damaged: ")
        equal(done.stderr.count(b"\n"), 1)


# Groups

def test_recommendations_by_group(tool):
    paths = make_machines(tool, 6)
    tool.write("g.csv", "# who is where\ntogether,Desks\n\npc-003 , Labs\nshift5.csv,Shifts\n")
    text = tool.works("fleet", *WITH_SETTINGS, "--hibernate-after", "180", "--groups", "g.csv",
                      "all")
    groups = re.findall(r"^(.*), (\d+) machines?, slots: strength", text, re.MULTILINE)
    rest = len(paths) - 4 - 1
    equal(groups, [("Desks", "4"), ("Labs", "1"), ("other machines", str(rest))]
          if not any("shift5" in path for path in paths) else groups)
    equal(sum(int(number) for _, number in groups), 6)


def test_the_recommended_strength_saves_most_without_more_waiting(tool):
    make_machines(tool, 4)
    document = outcomes_by_name(fleet(tool, "--hibernate-after", "180"))
    text = tool.works("fleet", *WITH_SETTINGS, "--hibernate-after", "180", "all")
    own = document["180 minutes"]
    for predictor, name in (("slots", "service, strength %d"), ("rates", "rates, strength %d")):
        choices = [document[name % strength] for strength in range(3)]
        within = [i for i in range(3) if choices[i][3] <= own[3]]
        energy = lambda i, of=choices: 4 * of[i][0] + 2 * of[i][1]
        best = min(within, key=energy) if within else min(range(3), key=lambda i: choices[i][3])
        contains(text, "%s: strength %d " % (predictor, best))


def test_wrong_groups(tool):
    make_machines(tool, 1)
    run = ("fleet", *WITH_SETTINGS, "--groups", "g.csv", "all")
    for text, error in (("a\n", "line 1: not NAME,GROUP"), ("a,\n", "line 1: not NAME,GROUP"),
                        ("a,b\n,c\n", "line 2: not NAME,GROUP"),
                        ("a,b\nA,c\n", "line 2: A is in b already")):
        tool.write("g.csv", text)
        tool.fails("g.csv: " + error, *run)
    (tool.folder / "g.csv").unlink()
    tool.fails("g.csv: cannot be read: No such file or directory", *run)


# The page

class Page(html.parser.HTMLParser):
    """Which elements are open, which rows each section has, and what loads something."""

    def __init__(self, text):
        super().__init__()
        self.open, self.rows, self.sections, self.texts = [], {}, [], []
        self.feed(text)
        equal(self.open, [])

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        equal(tag in ("script", "img", "iframe"), False)
        if tag == "section":
            self.sections.append(attributes["id"])
        if tag == "tr" and self.sections:
            self.rows[self.sections[-1]] = self.rows.get(self.sections[-1], 0) + 1
        if tag not in ("meta", "link"):
            self.open.append(tag)

    def handle_endtag(self, tag):
        equal(self.open.pop(), tag)

    def handle_data(self, data):
        self.texts.append(data)


def test_the_page(tool):
    make_machines(tool, 5)
    tool.write("all/<b>&.csv" if tool.is_native else "all/b&.csv",
               tool.read(next(iter(sorted(name for name in tool.files() if "office" in name)))))
    document = fleet(tool, "--out", "p.html", "--hibernate-after", "180")
    page = Page(tool.read("p.html").decode("utf-8"))
    equal(page.sections, ["strengths", "choices", "spread", "losers"])
    equal(page.rows["choices"], 1 + len(document["choices"]))
    equal(page.rows["strengths"], 1 + 2)
    equal(page.rows["spread"], 3 + 10 + 11 + 11)
    contains("".join(page.texts), "6 machines with data from 2024-01-01 to ")


def test_the_page_lists_the_hundred_that_lose_most(tool):
    tool.write("s.ini", QUICK)
    (tool.folder / "all").mkdir()
    tool.works("sample", "--kind", "erratic", "--days", "60", "--seed", "1", "--out", "e.csv")
    lines = tool.read("e.csv").decode().splitlines()
    lines = [line for line in lines if not line.startswith("#")]
    for number in range(130):
        # Each loses something else, as its history ends elsewhere.
        tool.write(f"all/{number:03}.csv", "\n".join(lines[:len(lines) - number // 2]) + "\n")
    fleet(tool, "--out", "p.html", "--csv", "r.csv", "--hibernate-after", "600")
    losses = []
    for row in rows_of(tool, "r.csv"):
        def score(name, of=row):
            asleep, off, ready, waits = (int(of[f"{name}: {key}"]) for key in OUTCOMES)
            return 50 * ready / (ready + waits) + 50 * off / (asleep + off)
        losses.append((score("service, strength 1") - score("600 minutes"), row["path"]))
    losing = sorted(loss for loss in losses if loss[0] < 0)
    equal(len(losing) > 100, True, "enough that lose for the test")
    page = Page(tool.read("p.html").decode("utf-8"))
    equal(page.rows["losers"], 101)
    listed = [text for text in page.texts if re.fullmatch(r"all.\d+\.csv", text)]
    equal(listed, [path for _, path in losing[:100]])
    contains("".join(page.texts), f"worse on {len(losing)} machines, of which these 100 lose most")


# What makes no sense

def test_wrong_options(tool):
    make_machines(tool, 1)
    run = ("fleet", *WITH_SETTINGS)
    number = "not a number from 0 to 10000, such as 2.5: "
    for option in ("--watts-asleep", "--watts-hibernated", "--price"):
        for text in ("-1", "10001", "nan", "two", "1,5"):
            tool.fails(f"{option}: {number}{text}", *run, f"{option}={text}", "all")
    for text in ("0/2", "3/2", "1", "/", "1/2/3", "a/b"):
        tool.fails("--part: not K/N with K from 1 to N, such as 2/8: " + text, *run, "--partial",
                   "p", "--part", text, "all")
    tool.fails("--part: needs --partial", *run, "--part", "1/2", "all")
    tool.fails("--threads: not a whole number from 1 to 1024: 0", *run, "--threads", "0", "all")
    tool.fails("--partial: needs a file", *run, "--partial", "-", "all")
    same = "with --merge, it is that of the partial results"
    tool.fails("--settings: " + same, *run, "--merge", "all")
    tool.fails("--hibernate-after: " + same, "fleet", "--merge", "--hibernate-after", "3", "all")


def test_no_output_is_written_over_something_else(tool):
    paths = make_machines(tool, 3)
    before = tool.files()
    for option in ("--out", "--csv", "--partial"):
        tool.fails(f"{paths[0]}: cannot be written: it is also one of the histories or results",
                   "fleet", *WITH_SETTINGS, option, paths[0], "all")
        tool.fails("s.ini: cannot be written: it is also --settings", "fleet", *WITH_SETTINGS,
                   option, "s.ini", "all")
    tool.fails("x: cannot be written: it is also --csv", "fleet", *WITH_SETTINGS, "--out", "x",
               "--csv", "x", "all")
    tool.write("mine.txt", "mine\n")
    tool.fails("mine.txt: no partial result of fleet", "fleet", *WITH_SETTINGS, "--partial",
               "mine.txt", "all")
    equal({name: content for name, content in tool.files().items() if name != "mine.txt"}, before)


def test_a_table_for_standard_output(tool):
    make_machines(tool, 2)
    fleet(tool, "--csv", "r.csv")
    equal(tool.works("fleet", *WITH_SETTINGS, "--csv", "-", "all"), tool.read("r.csv").decode())


if __name__ == "__main__":
    sys.exit(main(globals(), __doc__))
