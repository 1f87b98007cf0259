#!/usr/bin/env python3
"""Checks what Windows programs say of themselves, in their manifests and version resources:
resources.py PROGRAM..."""

import struct
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
VERSION = (ROOT / "VERSION").read_text("utf-8").strip()

MESSAGE_TABLE, VERSION_INFO, MANIFEST = 11, 16, 24
# Which programs have which resources, besides those that all have.
MESSAGES = {"DozewellService.exe"}

ASSEMBLY = "{urn:schemas-microsoft-com:asm.v1}"
SECURITY = "{urn:schemas-microsoft-com:asm.v3}"
COMPATIBILITY = "{urn:schemas-microsoft-com:compatibility.v1}"
SETTINGS_OF_2016 = "{http://schemas.microsoft.com/SMI/2016/WindowsSettings}"
SYSTEMS = {
    "{35138b9a-5d96-4fbd-8e2d-a2440225f93a}",  # Windows 7
    "{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}",  # 8
    "{1f676c76-80e1-4239-95bb-83d0f6d0da78}",  # 8.1
    "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}",  # 10 and 11
}

FIXED_INFO = 0xFEEF04BD


def resources(data):
    """The resources of a program by their type, name and language, all numbers."""
    headers = struct.unpack_from("<I", data, 0x3C)[0]
    count, optional_size = struct.unpack_from("<H12xH", data, headers + 6)
    sections = []
    for number in range(count):
        section = headers + 24 + optional_size + 40 * number
        name, _, address, size, place = struct.unpack_from("<8s4I", data, section)
        sections.append((address, size, place))
        if name.rstrip(b"\0") == b".rsrc":
            root = place

    def place_of(address):
        return next(place + address - start for start, size, place in sections
                    if start <= address < start + size)

    def walk(directory, path):
        named, numbered = struct.unpack_from("<HH", data, directory + 12)
        for entry in range(named + numbered):
            key, offset = struct.unpack_from("<II", data, directory + 16 + 8 * entry)
            if offset >> 31:
                yield from walk(root + (offset & 0x7FFFFFFF), (*path, key))
            else:
                address, size = struct.unpack_from("<II", data, root + offset)
                yield (*path, key), data[place_of(address):][:size]

    return dict(walk(root, ()))


def aligned(place):
    return (place + 3) & ~3


def version_blocks(block):
    """Key, value and inner blocks of a block of a version resource. Texts end with a zero, and
    everything begins at a multiple of four."""
    size, value_size, is_text = struct.unpack_from("<HHH", block)
    end = next(place for place in range(6, size, 2) if block[place:place + 2] == b"\0\0")
    key = block[6:end].decode("utf-16-le")
    start = aligned(end + 2)
    value = block[start:start + value_size * (2 if is_text else 1)]
    inner, place = [], aligned(start + len(value))
    while place < size:
        length = struct.unpack_from("<H", block, place)[0]
        inner.append(version_blocks(block[place:place + length]))
        place = aligned(place + length)
    return key, value, inner


def version_errors(block, program):
    key, fixed, inner = version_blocks(block)
    numbers = [*map(int, VERSION.split(".")), 0]
    expected = struct.pack("<4H", numbers[1], numbers[0], numbers[3], numbers[2])
    if key != "VS_VERSION_INFO" or struct.unpack_from("<I", fixed)[0] != FIXED_INFO:
        yield "its version resource has no fixed part"
    elif (fixed[8:16], fixed[16:24]) != (expected, expected):
        yield f"its version resource is of another version than {VERSION}"
    (_, _, tables), = [block for block in inner if block[0] == "StringFileInfo"]
    (_, _, strings), = tables
    texts = {key: value.decode("utf-16-le").rstrip("\0") for key, value, _ in strings}
    if not texts.pop("FileDescription", ""):
        yield "its version resource has no description"
    for key, text in {"CompanyName": "Brevan", "FileVersion": VERSION, "ProductVersion": VERSION,
                      "InternalName": program.stem, "OriginalFilename": program.name,
                      "ProductName": "Dozewell"}.items():
        if texts.get(key) != text:
            yield f"its version resource says {texts.get(key)!r} as {key}, not {text!r}"


def manifest_errors(manifest):
    root = ElementTree.fromstring(manifest)
    if root.tag != f"{ASSEMBLY}assembly":
        yield "its manifest is none"
    levels = [dict(level.attrib) for level in root.iter(f"{SECURITY}requestedExecutionLevel")]
    if levels != [{"level": "asInvoker", "uiAccess": "false"}]:
        yield f"its manifest asks for {levels}"
    systems = {system.get("Id") for system in root.iter(f"{COMPATIBILITY}supportedOS")}
    if systems != SYSTEMS:
        yield f"its manifest names the systems {sorted(systems)}"
    if [path.text for path in root.iter(f"{SETTINGS_OF_2016}longPathAware")] != ["true"]:
        yield "its manifest does not say that paths may be long"
    if any(element.tag.endswith("}activeCodePage") for element in root.iter()):
        yield "its manifest chooses a code page, and values of the predictor are in the machine's"


def errors_of(program):
    by_type = {}
    for (kind, name, _), data in resources(program.read_bytes()).items():
        by_type.setdefault(kind, []).append((name, data))
    expected = {VERSION_INFO, MANIFEST} | ({MESSAGE_TABLE} if program.name in MESSAGES else set())
    if set(by_type) != expected or any([name for name, _ in found] != [1]
                                       for found in by_type.values()):
        found = {kind: [name for name, _ in named] for kind, named in by_type.items()}
        yield f"has the resources {found}"
        return
    yield from version_errors(by_type[VERSION_INFO][0][1], program)
    yield from manifest_errors(by_type[MANIFEST][0][1])
    if program.name in MESSAGES:
        # What the message compiler made.
        compiled = program.parent / "messages" / "MSG00409.bin"
        if by_type[MESSAGE_TABLE][0][1] != compiled.read_bytes():
            yield f"has other messages than {compiled.name}"


def main():
    programs = [Path(name) for name in sys.argv[1:]]
    errors = [f"{program}: {error}" for program in programs for error in errors_of(program)]
    for error in errors:
        print(error)
    print(f"{len(programs)} programs checked, {len(errors)} errors")
    return 1 if errors or not programs else 0


if __name__ == "__main__":
    sys.exit(main())
