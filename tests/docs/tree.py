"""The tree that is tested: its pages and its sources, or a copy of both to change something in."""

import contextlib
import os
import shutil
import subprocess
import tempfile
from pathlib import Path

from tests.docs.pages import read_pages
from tests.docs.sources import Sources


class Tree:
    def __init__(self, root):
        self.root = root
        self.pages = read_pages(root)
        self.sources = Sources(root)


@contextlib.contextmanager
def changed(root, file, old, new):
    """A copy of the tree in which a file has one text in the place of another."""
    with tempfile.TemporaryDirectory(prefix="docs_test_") as scratch:
        copy = Path(scratch)
        names = subprocess.run(["git", "ls-files", "-z"], cwd=root, capture_output=True, check=True,
                               text=True).stdout.split("\0")
        for name in sorted(set(filter(None, names))):
            if (root / name).is_file():
                (copy / name).parent.mkdir(parents=True, exist_ok=True)
                _link_or_copy(root / name, copy / name)
        text = (copy / file).read_text("utf-8")
        if old not in text:
            raise ValueError(f"{file} lacks {old!r}")
        (copy / file).unlink()
        (copy / file).write_text(text.replace(old, new), "utf-8")
        yield Tree(copy)


def _link_or_copy(source, target):
    try:
        os.link(source, target)
    except OSError:
        # The scratch folder is on another disk.
        shutil.copy(source, target)
