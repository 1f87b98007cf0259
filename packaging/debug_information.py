#!/usr/bin/env python3
"""Puts the programs' debug information into an archive: debug_information.py --programs FOLDER
--symbols FOLDER --out ZIP

The programs that are shipped have none; those in the folder of symbols are the same built once more
with it, which is checked. SOURCE_DATE_EPOCH, in seconds since 1970, is what all times are set to.
"""

import argparse
import os
import subprocess
import sys
import tempfile
import time
import zipfile
from pathlib import Path

PROGRAMS = ("DozewellService", "dozewellctl", "dozewell-replay", "dozewell-setup")
TOOLS = "x86_64-w64-mingw32-"


def stripped(program, scratch):
    # Also brings programs without debug information into the form that stripped ones have.
    subprocess.run([TOOLS + "strip", "-o", scratch, program], check=True)
    return scratch.read_bytes()


def debug_information(program, scratch):
    subprocess.run([TOOLS + "objcopy", "--only-keep-debug", program, scratch], check=True)
    return scratch.read_bytes()


def write_archive(programs, symbols, out):
    date = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6]
    with tempfile.TemporaryDirectory() as folder, \
            zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as archive:
        scratch = Path(folder) / "scratch"
        for name in PROGRAMS:
            shipped, with_symbols = programs / f"{name}.exe", symbols / f"{name}.exe"
            if stripped(shipped, scratch) != stripped(with_symbols, scratch):
                sys.exit(f"{shipped} and {with_symbols} are not the same program")
            entry = zipfile.ZipInfo(f"{name}.debug", date)
            entry.external_attr = 0o644 << 16
            archive.writestr(entry, debug_information(with_symbols, scratch),
                             zipfile.ZIP_DEFLATED)


def main():
    parser = argparse.ArgumentParser(description="Archives the programs' debug information.")
    parser.add_argument("--programs", type=Path, required=True, help="the programs to ship")
    parser.add_argument("--symbols", type=Path, required=True, help="the same with symbols")
    parser.add_argument("--out", type=Path, required=True, help="the archive")
    options = parser.parse_args()
    write_archive(options.programs, options.symbols, options.out)


if __name__ == "__main__":
    main()
