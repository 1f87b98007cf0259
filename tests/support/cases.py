"""What all test programs in Python have alike: how they are told which cases to run, and how they
say what came of them."""

import argparse
import sys
import traceback
import unittest


ATTEMPTS = 3


class Inconclusive(Exception):
    """The computer, and not what is tested, ended a case: it has to be run again."""


def option_parser(description):
    parser = argparse.ArgumentParser(description=description,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("words", nargs="*", metavar="WORD",
                        help="part of a case's name; without any, all cases are run")
    return parser


def tests_in(names):
    """Names and functions of a program's tests, given as its globals(), in the order in which they
    are written."""
    return [(name, test) for name, test in names.items() if name.startswith("test_")]


def test_methods_in(names):
    """The same for a program whose tests are methods of unittest's test cases."""
    return [(f"{name}.{method}", group(method).debug) for name, group in names.items()
            if isinstance(group, type) and issubclass(group, unittest.TestCase)
            for method in unittest.defaultTestLoader.getTestCaseNames(group)]


def _run_case(case):
    for attempt in range(ATTEMPTS):
        try:
            case()
            return
        except Inconclusive:
            if attempt + 1 == ATTEMPTS:
                raise


def run(cases, words=()):
    """Runs the cases that have one of the words in their names, or all without words. A case is a
    name and a function without arguments that throws when the case fails, and Inconclusive when it
    is to be called again. Prints the failures and, last, the count. Returns the exit code."""
    passed = failed = 0
    for name, case in cases:
        if words and not any(word in name for word in words):
            continue
        try:
            _run_case(case)
            passed += 1
        except Exception:  # pylint: disable=broad-except
            failed += 1
            print(f"FAILED {name}")
            traceback.print_exc(file=sys.stdout)
            sys.stdout.flush()
    if passed + failed == 0:
        print(f"No case has one of these words in its name: {' '.join(words)}")
    print(f"{passed} passed, {failed} failed")
    return 0 if passed and not failed else 1


def main(names, description):
    """Runs the test methods of a program that has no options of its own."""
    options = option_parser(description).parse_args()
    return run(test_methods_in(names), options.words)
