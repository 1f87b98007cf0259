#!/usr/bin/env python3
"""Checks that each relative link of a page leads to a file and, where it names one, to a heading in
it. Pages of docs/ are installed without the rest of the tree, so they link to each other only."""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
INSTALLED = ROOT / "docs"

LINK = re.compile(r"\]\(([^)\s]+)\)")
ELSEWHERE = re.compile(r"[a-z]+:")
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)


def anchors(page):
    """The names by which links reach the headings of a page."""
    headings = HEADING.findall(page.read_text("utf-8"))
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def error_in(page, link):
    """What is wrong with a link of a page, or None."""
    if ELSEWHERE.match(link):
        return None
    path, _, anchor = link.partition("#")
    target = (page.parent / path).resolve() if path else page
    if not target.exists():
        return "leads nowhere"
    if page.parent == INSTALLED and target.parent != INSTALLED:
        return "leads out of the installed pages"
    if anchor and anchor not in anchors(target):
        return "names no heading there"
    return None


def main():
    pages = subprocess.run(["git", "ls-files", "*.md"], cwd=ROOT, capture_output=True, text=True,
                           check=True).stdout.split()
    links = [(page, link) for page in pages
             for link in LINK.findall((ROOT / page).read_text("utf-8"))]
    errors = [f"{page}: {link} {error}" for page, link in links
              if (error := error_in(ROOT / page, link))]
    for error in errors:
        print(error)
    print(f"{len(links)} links checked, {len(errors)} errors")
    return 1 if errors or not links else 0


if __name__ == "__main__":
    sys.exit(main())
