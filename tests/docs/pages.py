"""The pages for users and developers, as a reader of Markdown sees them."""

from pathlib import Path
from typing import NamedTuple

from markdown_it import MarkdownIt

# The languages of blocks, and the words that may follow them.
LANGUAGES = {
    "sh": ("not-run",),
    "cmd": ("not-run",),
    "powershell": ("not-run",),
    "console": ("not-run", "lab", "shape", "scenario"),
    "text": (),
    "json": (),
    "ini": (),
    "csv": (),
    "python": (),
}


class Block(NamedTuple):
    page: str      # its path in the tree
    line: int      # of its first line, from 1 on
    language: str  # empty for an indented block
    words: tuple   # that follow the language
    text: str

    @property
    def place(self):
        return f"{self.page}:{self.line}"

    @property
    def is_run(self):
        return "not-run" not in self.words and "scenario" not in self.words


class Code(NamedTuple):
    """Code within a line."""

    page: str
    line: int
    text: str

    @property
    def place(self):
        return f"{self.page}:{self.line}"


class Page:
    def __init__(self, root, path):
        self.name = str(path.relative_to(root))
        self.blocks, self.codes, self.tables, self.links, self.text = [], [], [], set(), ""
        cells = None  # of the row that is being read
        for token in MarkdownIt("commonmark").enable("table").parse(path.read_text("utf-8")):
            line = token.map[0] + 1 if token.map else 0
            if token.type in ("fence", "code_block"):
                language, *words = token.info.split() or [""]
                self.blocks.append(Block(self.name, line, language, tuple(words), token.content))
            elif token.type == "table_open":
                self.tables.append([])
            elif token.type == "tr_open":
                cells = []
                self.tables[-1].append(cells)
            elif token.type == "tr_close":
                cells = None
            elif token.type == "inline":
                self.codes += [Code(self.name, line, code.content) for code in token.children
                               if code.type == "code_inline"]
                self.links |= {child.attrs["href"] for child in token.children
                               if child.type == "link_open"}
                # What is code keeps its marks, and what is emphasized loses them.
                shown = "".join(_shown(child) for child in token.children)
                self.text += shown + "\n"
                if cells is not None:
                    cells.append(shown)

    @property
    def rows(self):
        return [row for table in self.tables for row in table]

    def table(self, heading):
        """The rows below the headings of the table whose first heading is this one."""
        rows, = (rows for head, *rows in self.tables if head[0] == heading)
        return rows


def _shown(token):
    if token.type in ("softbreak", "hardbreak"):
        return " "
    return f"`{token.content}`" if token.type == "code_inline" else token.content


def read_pages(root):
    """All pages by their names: README.md and those of docs/."""
    paths = [root / "README.md", *sorted(Path(root, "docs").glob("*.md"))]
    return {page.name: page for page in (Page(root, path) for path in paths)}
