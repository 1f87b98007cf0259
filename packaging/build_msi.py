#!/usr/bin/env python3
"""Builds the installer package from the programs of a Windows build. The same programs, documents
and settings give the same bytes.

    build_msi.py --programs build/windows --out build/package

Writes dozewell-VERSION-x64.msi there, dozewell-VERSION-x64.contents.txt, the list of what it
installs, and dozewell-VERSION-x64.deployment.json for tools that deploy it. SOURCE_DATE_EPOCH, in seconds since 1970, is the time that all files get.
"""

import argparse
import hashlib
import json
import os
import shutil
import subprocess
import sys
import tempfile
import uuid
from datetime import datetime, timezone
from pathlib import Path
from xml.sax.saxutils import quoteattr

import default_values
import msi_tables
from deployment import deployment
from msi_file import Table, set_package_code
from policy.template import DEFINITIONS, TEXTS, make_template
from short_names import with_short_names

PACKAGING = Path(__file__).resolve().parent
ROOT = PACKAGING.parent

# Identifies this product for ever. All other identifiers are derived from it.
UPGRADE_CODE = uuid.UUID("5B0C1E5E-2A3C-4C61-9F0A-6A0D1F6D8A37")
ARCHITECTURE = "x64;" + msi_tables.ENGLISH

PROGRAMS = ("DozewellService.exe", "dozewellctl.exe", "dozewell-replay.exe")
SETUP = "dozewell-setup.exe"  # in the package, but not installed

# The licences of what is linked into the programs, as the build machine's packages state them.
LICENCES = {
    "CLI11.txt": Path("/usr/share/doc/libcli11-dev/copyright"),
    "JSON.txt": Path("/usr/share/doc/nlohmann-json3-dev/copyright"),
    "GCC.txt": Path("/usr/share/doc/g++-mingw-w64-x86-64-win32/copyright"),
    "mingw-w64.txt": Path("/usr/share/doc/mingw-w64-x86-64-dev/copyright"),
}

# The administrative template, by folder and name.
TEMPLATE = {("PolicyFolder", "Dozewell.admx"): DEFINITIONS,
            ("PolicyEnglishFolder", "Dozewell.adml"): TEXTS}

# Where the folders are, below that of the programs.
FOLDERS = {"DocsFolder": "docs/", "LicencesFolder": "docs/licences/", "PolicyFolder": "policy/",
           "PolicyEnglishFolder": "policy/en-US/"}


def documents():
    """The documents that are copied: their sources by their folder and name."""
    found = {("DocsFolder", path.name): path for path in sorted((ROOT / "docs").glob("*.md"))}
    found["DocsFolder", "default-settings.ini"] = default_values.FILE
    found["DocsFolder", "LICENSE.txt"] = ROOT / "LICENSE"
    for name, path in LICENCES.items():
        found["LicencesFolder", name] = path
    return found


def documents_wxs(files):
    """A component for each document, and a group of all these components."""
    lines = ['<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi"><Fragment>']
    for folder, name in files:
        component = "Document." + name.replace("-", "_")
        lines.append(
            f'<DirectoryRef Id="{folder}"><Component Id="{component}" '
            f'Guid="{identifier(f"component {folder} {name}")}" Win64="yes">'
            f'<File Id="{component}" Name={quoteattr(name)} Source={quoteattr(name)} '
            f'KeyPath="yes"/></Component></DirectoryRef>')
    lines.append('<ComponentGroup Id="Documents">')
    for _, name in files:
        lines.append(f'<ComponentRef Id="Document.{name.replace("-", "_")}"/>')
    lines.append("</ComponentGroup></Fragment></Wix>")
    return "\n".join(lines)


def identifier(text):
    return str(uuid.uuid5(UPGRADE_CODE, text)).upper()


def product_code(version):
    return identifier(f"product {version}")


def stage(folder, programs, version, date):
    """Puts all files of the package into a folder, with nothing of their own but their content."""
    texts = make_template(version)
    for (_, name), text in TEMPLATE.items():
        (folder / name).write_text(texts[text], "utf-8")
    files = {name: programs / name for name in (*PROGRAMS, SETUP)}
    files |= {name: path for (_, name), path in documents().items()}
    for name, path in files.items():
        shutil.copyfile(path, folder / name)
    for path in folder.iterdir():
        path.chmod(0o644)
        os.utime(path, (date, date))


def run_wixl(folder, msi, version, date):
    (folder / "documents.wxs").write_text(documents_wxs([*documents(), *TEMPLATE]), "utf-8")
    shutil.copy(PACKAGING / "dozewell.wxs", folder)
    variables = {"Version": version, "UpgradeCode": str(UPGRADE_CODE).upper(),
                 "ProductCode": product_code(version)}
    # wixl writes the current local time into the package.
    clock = datetime.fromtimestamp(date, timezone.utc).strftime("%Y-%m-%d %H:%M:%S")
    defines = [word for name, value in variables.items() for word in ("-D", f"{name}={value}")]
    subprocess.run(["faketime", "-f", clock, "wixl", "-a", "x64", "-o", msi, *defines,
                    "dozewell.wxs", "documents.wxs"],
                   cwd=folder, env={**os.environ, "TZ": "UTC"}, check=True)


def complete_tables(folder, msi, version):
    added, changed = msi_tables.added_rows(), msi_tables.changed_cells(version)
    for name in sorted({*added, *changed, *msi_tables.DELETED_ROWS}):
        new = msi_tables.NEW_TABLES.get(name)
        table = Table(name, *new) if new else Table.read(msi, name)
        for row in added.get(name, ()):
            table.add(row)
        for first_cell, cells in changed.get(name, {}).items():
            for column, value in cells.items():
                table.set(first_cell, column, value)
        for key in msi_tables.DELETED_ROWS.get(name, ()):
            table.delete([key])
        if name == "File":
            give_short_names(table, Table.read(msi, "Component"))
        table.write(msi, folder)


def give_short_names(files, components):
    folder_of = {row[0]: row[components.columns.index("Directory_")] for row in components.rows}
    component, name = files.columns.index("Component_"), files.columns.index("FileName")
    for folder in set(folder_of.values()):
        rows = [row for row in files.rows if folder_of[row[component]] == folder]
        called = with_short_names([row[name] for row in rows])
        for row in rows:
            row[name] = called[row[name]]


def contents(folder):
    """Installed files with their digests and sizes in bytes."""
    installed = {name: name for name in PROGRAMS}
    for place, name in (*documents(), *TEMPLATE):
        installed[FOLDERS[place] + name] = name
    lines = []
    for path, name in sorted(installed.items()):
        data = (folder / name).read_bytes()
        lines.append(f"{hashlib.sha256(data).hexdigest()} {len(data):8d}  {path}\n")
    return "".join(lines)


def build(programs, out, version):
    date = int(os.environ["SOURCE_DATE_EPOCH"])
    out.mkdir(parents=True, exist_ok=True)
    msi = out / f"dozewell-{version}-x64.msi"
    with tempfile.TemporaryDirectory() as scratch:
        folder = Path(scratch)
        unfinished = folder / "dozewell.msi"
        stage(folder, programs, version, date)
        run_wixl(folder, unfinished, version, date)
        complete_tables(folder, unfinished, version)
        # Each package has its own code, so that Windows never confuses two packages.
        set_package_code(unfinished, uuid.UUID(int=0), ARCHITECTURE)
        code = identifier("package " + hashlib.sha256(unfinished.read_bytes()).hexdigest())
        set_package_code(unfinished, code, ARCHITECTURE)
        msi.with_suffix(".contents.txt").write_text(contents(folder), "utf-8")
        told = deployment(msi.name, version, product_code(version), str(UPGRADE_CODE).upper())
        msi.with_suffix(".deployment.json").write_text(json.dumps(told, indent=2) + "\n", "utf-8")
        shutil.copyfile(unfinished, msi)
    return msi


def main():
    parser = argparse.ArgumentParser(description="Builds the installer package.")
    parser.add_argument("--programs", type=Path, required=True, help="folder of a Windows build")
    parser.add_argument("--out", type=Path, required=True, help="folder for the package")
    parser.add_argument("--version", default=(ROOT / "VERSION").read_text("utf-8").strip(),
                        help="another version than that of the file VERSION")
    options = parser.parse_args()
    try:
        print(build(options.programs.resolve(), options.out.resolve(), options.version))
    except (ValueError, OSError, subprocess.CalledProcessError) as error:
        sys.exit(f"build_msi.py: {error}")


if __name__ == "__main__":
    main()
