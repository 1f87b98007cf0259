#!/usr/bin/env python3
"""Checks the rules for includes: a file includes only files of a lower floor or of its own folder,
there are no include circles, and only leaf sources include the system's headers."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

# The floor of each folder.
FLOORS = {
    "src/base/": 0,
    "src/settings/": 1,
    "src/diagnostics/": 1,
    "src/prediction/": 2,
    "src/power/": 2,
    "src/prediction/rates/": 3,
    "src/controller/state_machine/": 3,
    "src/optimizer/simulator/": 4,
    "src/optimizer/grid/": 5,
    "src/optimizer/": 6,
    "src/controller/": 7,
    "src/rpc/": 8,
    "src/service/": 9,
    "tools/common/": 10,
    "tools/event_log/": 11,
    "tools/walk/": 11,
    "tools/report/": 12,
    "tools/import/": 12,
    "tools/fleet/": 13,
    "tools/replay/": 14,
    "tools/ctl/": 13,
    "tools/setup/": 13,
    "tools/powerwatch/": 14,
    "tools/manual/": 15,
    "tools/ctl/check/": 14,
    "tools/ctl/fakes/": 15,
}

# Headers that make a service three times as large, and those that a compiler for Windows lacks.
FORBIDDEN_IN_SERVICE = {"fstream", "iostream", "sstream", "filesystem", "format", "regex", "thread",
                        "condition_variable"}
SYSTEM_HEADER = re.compile(r"(windows|win\w+|io|time|shlobj|unistd|rpc\w*|powrprof|objbase|"
                           r"sys/\w+)\.h")
GENERATED = {"dozewell_rpc.h"}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def floor_of(name):
    prefixes = [prefix for prefix in FLOORS if name.startswith(prefix)]
    return FLOORS[max(prefixes, key=len)] if prefixes else None


def room_of(name):
    return name.rsplit("/", 1)[0]


def resolve(name, includer, files):
    for candidate in (f"src/{name}", f"tools/{name}", f"{room_of(includer)}/{name}"):
        if candidate in files:
            return candidate
    return None


def main():
    files = {str(path.relative_to(ROOT)): path.read_text()
             for folder in ("src", "tools") for path in sorted((ROOT / folder).rglob("*"))
             if path.suffix in (".h", ".cpp")}
    errors = []
    graph = {}
    for name, text in files.items():
        is_test = name.endswith("_test.cpp")
        is_leaf = re.search(r"_(windows|posix)(_test)?\.cpp$", name) is not None
        graph[name] = []
        for kind, included in INCLUDE.findall(text):
            if kind == "<":
                if SYSTEM_HEADER.fullmatch(included) and not is_leaf:
                    errors.append(f"{name}: includes <{included}> and is no leaf source")
                if included in FORBIDDEN_IN_SERVICE and name.startswith("src/") and not is_test:
                    errors.append(f"{name}: includes <{included}>")
                continue
            target = resolve(included, name, files)
            if target is None:
                # Fakes use those of tests/fakes, which has no floor.
                is_of_tests = is_test or "/fakes/" in name
                if not is_of_tests and included not in GENERATED:
                    errors.append(f"{name}: includes \"{included}\", which does not exist")
                continue
            graph[name].append(target)
            if not is_test and room_of(target) != room_of(name) and \
                    floor_of(target) >= floor_of(name):
                errors.append(f"{name}: floor {floor_of(name)} includes {target}, "
                              f"floor {floor_of(target)}")
    errors += circles(graph)
    for error in errors:
        print(error)
    print(f"{len(files)} files checked, {len(errors)} errors")
    return 1 if errors else 0


def circles(graph):
    done, path, errors = set(), [], []

    def visit(name):
        if name in path:
            errors.append("include circle: " + " -> ".join(path[path.index(name):] + [name]))
            return
        if name in done:
            return
        path.append(name)
        for target in graph[name]:
            visit(target)
        path.pop()
        done.add(name)

    for name in graph:
        visit(name)
    return errors


if __name__ == "__main__":
    sys.exit(main())
