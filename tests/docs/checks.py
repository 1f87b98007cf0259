"""What is checked of the pages without running anything. Each check yields the mistakes that it
finds, and is given the pages and the sources of one tree."""

import ast
import configparser
import csv
import json
import re
import shlex

from tests.docs.pages import LANGUAGES
from tests.docs.stated import EXIT_CODE_TABLES, stated

# Programs of ours, which are checked in blocks that are not run, too.
OWN_FILES = re.compile(r"(?:^|\s)((?:\./|scripts/|lab/|tests/)[\w./-]+)")
SOURCE = re.compile(r"(?:bench|cmake|docs|lab|packaging|scripts|src|tests|tools)/[\w./-]+")
DATA_FILE = re.compile(r"(zs7state\.dat|cpredict\.z7|rates\.z7)(\.part|\.new|\.unread)?")
LEARNT = re.compile(r"[\w-]+\.z7(?:\.\w+)?|zs7\w+(?:\.\w+)*")
PACKAGE = re.compile(r"dozewell-([\d.]+\d)-x64\.msi")


def languages(tree):
    """Each block says by its language what it is."""
    for page in tree.pages.values():
        for block in page.blocks:
            if block.language not in LANGUAGES:
                yield (f"{block.place}: the block's language is {block.language or 'not named'}; "
                       f"it can be {', '.join(LANGUAGES)}")
            elif set(block.words) - set(LANGUAGES[block.language]):
                yield f"{block.place}: {block.language} cannot be {' '.join(block.words)}"


def contents(tree):
    """Blocks of data are what they say."""
    for block in blocks_of(tree, *PARSERS):
        try:
            PARSERS[block.language](block.text)
        except (ValueError, SyntaxError, configparser.Error) as error:
            yield f"{block.place}: {error}"


def _ini(text):
    configparser.ConfigParser(interpolation=None, comment_prefixes=("#", ";")).read_string(text)


def _csv(text):
    lines = [line for line in text.splitlines() if not line.startswith("#")]
    rows = list(csv.reader(lines, strict=True))
    if len({len(row) for row in rows}) != 1:
        raise ValueError("the rows differ in length")


PARSERS = {"json": json.loads, "ini": _ini, "csv": _csv, "python": ast.parse}


def blocks_of(tree, *kinds):
    for page in tree.pages.values():
        yield from (block for block in page.blocks if block.language in kinds)


def prose_in_blocks(tree):
    """A block to copy holds commands alone."""
    for block in blocks_of(tree, "cmd", "powershell"):
        for line in block.text.splitlines():
            if "   " in line.strip():
                yield f"{block.place}: it holds more than commands: {line.strip()}"


def own_programs(tree):
    """The programs of the tree that a block names are there."""
    for block in blocks_of(tree, "sh", "console"):
        commands = commands_of(block) if block.language == "console" else [block.text]
        for command in commands:
            for name in OWN_FILES.findall(re.sub("(?m)#.*", "", command)):
                if not (tree.root / name).exists():
                    yield f"{block.place}: there is no {name}"


def commands_of(block):
    """The commands of a console: what follows the prompts."""
    return [line[2:] for line in block.text.splitlines() if line.startswith(("$ ", "> "))]


def package_names(tree):
    """The package has the version of the tree."""
    for page in tree.pages.values():
        texts = [(block.place, block.text) for block in page.blocks]
        texts += [(code.place, code.text) for code in page.codes]
        for place, text in texts:
            for version in PACKAGE.findall(text):
                if version != tree.sources.version:
                    yield f"{place}: version {version}, and the tree's is {tree.sources.version}"


def sentences(tree):
    """Numbers in sentences are those of the sources."""
    for name, text in stated(tree.sources):
        page = tree.pages[name]
        rows = "\n".join(" | ".join(row) for row in page.rows)
        if text not in page.text and text not in rows:
            yield f'{name} does not say: "{text}"'


def exit_codes(tree):
    """The tables of exit codes have all codes that the program can end with, each in its own row,
    and no others."""
    for heading, name, words in EXIT_CODE_TABLES:
        rows = {cells[0]: cells[1] for cells in tree.pages[name].table(heading)}
        expected = {str(tree.sources.ctl_exit_codes[kind]): text for kind, text in words.items()}
        if rows.keys() != expected.keys():
            yield f"{name} has the codes {sorted(rows)}, the program {sorted(expected)}"
        for code in rows.keys() & expected.keys():
            if expected[code] not in rows[code]:
                yield f'{name} does not say of code {code}: "{expected[code]}"'
    listed = EXIT_CODE_TABLES[0][2].keys()
    for kind in sorted(tree.sources.ctl_exit_codes.keys() - listed):
        yield f"tests/docs/stated.py says nothing of the exit code {kind}"


def values_when_absent(tree):
    """The tables of settings say what holds without a value."""
    defaults = tree.sources.when_absent()
    listed = set()
    for row in tree.pages["docs/settings.md"].rows:
        for name in re.findall(r"`(\w+)`", row[0]):
            if name in defaults and len(row) == 6:
                listed.add(name)
                if not re.match(rf"{defaults[name]}\b", row[2]):
                    yield (f"docs/settings.md: {name} is {row[2]} when absent, and the sources say "
                           f"{defaults[name]}")
    for name in sorted(defaults.keys() - listed):
        yield f"docs/settings.md has no row for {name}"


def values_by_hand(tree):
    """The commands of settings.md write what the installer writes."""
    written = {}
    for block in tree.pages["docs/settings.md"].blocks:
        for line in block.text.splitlines() if block.language == "cmd" else ():
            words = shlex.split(line)
            if words[:2] == ["reg", "add"]:
                options = dict(zip(words[4::2], words[5::2]))
                written[options["/v"]] = ("SECTION" in words[2], options["/t"], options["/d"])
    expected = {value.name: ("Predictors" in value.key,
                             "REG_DWORD" if value.is_number else "REG_SZ", value.text)
                for value in tree.sources.installed.values()}
    for name in sorted(expected.keys() | written.keys()):
        if expected.get(name) != written.get(name):
            yield (f"docs/settings.md writes {name} as {written.get(name)}, the installer as "
                   f"{expected.get(name)}")


def choices(tree):
    """The table of choices says what each may be, and what holds without it."""
    rows = {row[0].strip("`"): row for row in tree.pages["docs/installing.md"].table("choice")}
    for name, (value, choice) in tree.sources.choices.items():
        if name not in rows:
            yield f"docs/installing.md has no row for {name}"
            continue
        words = getattr(choice, "words", None)
        default = words[0] if words else tree.sources.as_installed(value)
        if rows[name][2] != default:
            yield f"docs/installing.md: {name} is {rows[name][2]} when not given, not {default}"
        if not _is_range(rows[name][1], choice):
            yield f"docs/installing.md: {name} can be {choice.rule()}, not {rows[name][1]}"


def _is_range(text, choice):
    words = getattr(choice, "words", None)
    if words:
        return text == ", ".join(words)
    largest = int(choice.rule().rpartition(" ")[2])
    if largest == 2**31 - 1:
        return text.endswith("from 0")
    return text == ("0, 1" if largest == 1 else f"0 to {largest}")


def codes_of(tree):
    """Code within lines, and the lines of blocks that hold commands."""
    for page in tree.pages.values():
        yield from ((code.place, code.text) for code in page.codes)
        for block in page.blocks:
            if block.language in ("sh", "cmd", "powershell", "console"):
                yield from ((block.place, line) for line in block.text.splitlines())


def keys(tree):
    """The keys of the registry are those of the sources."""
    texts = tree.sources.texts
    known = {texts["VendorKey"], texts["ProductKey"], texts["CurrentKey"], texts["BrandingKey"],
             texts["DefaultKey"], texts["ProductKey"] + r"\Installer",
             texts["ProductKey"] + r"\Undo"}
    for place, text in codes_of(tree):
        for key in re.findall(r"SOFTWARE\\(?!Microsoft)[^\s\"`]+", text):
            if re.sub(r"\\Predictors.*", "", key).rstrip("\\.,") not in known:
                yield f"{place}: the sources know no key {key}"


def folders(tree):
    """The folders of data and programs are those of the sources."""
    data = tree.sources.literal_in("src/settings/data_folder_windows.cpp", r"\\\\Brevan[^\"]*")
    data = data.replace("\\\\", "\\").strip("\\")
    outer, inside = data.partition("\\")[0], tree.sources.program_folder.partition("\\")[2]
    known = (data + "\\", tree.sources.watch_folder + "\\", outer + ".")
    for place, text in codes_of(tree):
        for path in re.findall(r"ProgramData%?\\([\w\\.]+)", text):
            if path.rstrip("\\") != outer and not (path + "\\").startswith(known):
                yield f"{place}: the sources know no folder {path} of program data"
        for path in re.findall(r"Program(?: Files|Files%)\\([\w\\]+)", text):
            is_ours = outer in path or "Dozewell" in path
            if is_ours and not path.startswith((inside, "Dozewell")):
                yield f"{place}: the package knows no folder {path} of programs"


def data_files(tree):
    """The files of learnt data have the names that the sources give them."""
    known = tree.sources.data_files
    for page in tree.pages.values():
        for code in page.codes:
            if LEARNT.fullmatch(code.text):
                name = re.sub(r"\.(part|new|unread)$", "", code.text)
                if name not in known:
                    yield f"{code.place}: the sources know no file {code.text}"


def sources_named(tree):
    """Files of the tree that pages name are there."""
    for page in tree.pages.values():
        for code in page.codes:
            if SOURCE.fullmatch(code.text) and not _is_there(tree.root, code.text):
                yield f"{code.place}: there is no {code.text}"


def _is_there(root, name):
    # A name of tests says how others are called: x_test.cpp.
    if re.search(r"/x[_.]", name):
        return True
    return any(root.glob(name.rstrip("/") + "*")) or any(root.glob("build/" + name))


def doubts(tree):
    """A page that marks what we are not sure of says what the mark means."""
    for page in tree.pages.values():
        says = "marked (?)" in page.text or "(?) marks" in page.text
        cells = "\n".join("\n".join(row) for row in page.rows)
        if "(?)" in page.text + cells and not says:
            yield f"{page.name} does not say what (?) means"


def index(tree):
    """The page of questions leads to every page."""
    linked = {link.partition("#")[0] for link in tree.pages["docs/index.md"].links}
    for name in tree.pages:
        page = name.rpartition("/")[2]
        if page not in (*linked, "README.md", "index.md"):
            yield f"docs/index.md does not lead to {page}"


CHECKS = (languages, contents, prose_in_blocks, own_programs, package_names, sentences, exit_codes,
          values_when_absent, values_by_hand, choices, keys, folders, data_files, sources_named,
          doubts, index)
