"""The options by which a program is told where the builds are and where to keep its machine."""

import argparse
from pathlib import Path

_BUILDS = Path(__file__).resolve().parents[2] / "build"


def machine_options(description, folder):
    """A parser with the options of every program that has a machine."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--build", type=Path, default=_BUILDS / "windows",
                        help="folder of the Windows build")
    parser.add_argument("--folder", type=Path, default=_BUILDS / folder,
                        help="folder in which the machine is kept")
    return parser


def add_replay_option(parser):
    parser.add_argument("--replay", default=_BUILDS / "native" / "dozewell-replay",
                        help="the dozewell-replay of this computer")
