#!/usr/bin/env python3
"""Puts the programs' debug information into an archive: debug_information.py --programs FOLDER
--out ZIP

The build puts it beside the programs. All files get the time SOURCE_DATE_EPOCH, in seconds since
1970.
"""

import argparse
import os
import time
import zipfile
from pathlib import Path

FILES = tuple(f"{program}.debug" for program in
              ("DozewellService", "dozewellctl", "dozewell-replay", "dozewell-setup",
               "dozewell-powerwatch"))


def write_archive(programs, out):
    date = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6]
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as archive:
        for name in FILES:
            entry = zipfile.ZipInfo(name, date)
            entry.external_attr = 0o644 << 16
            archive.writestr(entry, (programs / name).read_bytes(), zipfile.ZIP_DEFLATED)


def main():
    parser = argparse.ArgumentParser(description="Archives the programs' debug information.")
    parser.add_argument("--programs", type=Path, required=True,
                        help="the folder of the programs and their debug information")
    parser.add_argument("--out", type=Path, required=True, help="the archive")
    options = parser.parse_args()
    write_archive(options.programs, options.out)


if __name__ == "__main__":
    main()
