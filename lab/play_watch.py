#!/usr/bin/env python3
"""Sends what dozewell-powerwatch wrote down on some machine to the service in the lab: a line for
each control, and below it what the service logs."""

import sys
from pathlib import Path

from machine.installation import Installation
from machine.machine import DEFAULT_SETTINGS, LONGEST_INTERVAL, Machine
from machine.options import machine_options
from steps.watch_file import WatchFileError, WatchPlayback, read_watch_file


def play(machine, watched):
    machine.reset()
    # No search changes the parameters.
    machine.provision(file=DEFAULT_SETTINGS, OptimizerInterval=LONGEST_INTERVAL)
    playback = WatchPlayback(machine, watched)
    machine.clock.set(playback.start)
    machine.start_service()
    for line, step in playback.steps():
        print(f"{line.local_time:%a %Y-%m-%d %H:%M:%S} {line.name}, answered {step.result}")
        for event in step.events:
            print(f"    {event.text.strip()}")
        for text in step.of("scheme", "driver", "suspend"):
            print(f"    ({text})")
    print("HA now: %d minutes on mains, %d on battery" % machine.schemes.hibernate_after)


def main():
    parser = machine_options(__doc__, "play")
    parser.add_argument("file", type=Path, help="what dozewell-powerwatch wrote")
    options = parser.parse_args()
    try:
        watched = read_watch_file(options.file)
    except (OSError, WatchFileError) as error:
        print(error, file=sys.stderr)
        return 2
    if not watched:
        print(f"{options.file}: nothing was watched", file=sys.stderr)
        return 2
    with Installation(options.folder, options.build) as installation:
        play(Machine(installation), watched)
    return 0


if __name__ == "__main__":
    sys.exit(main())
