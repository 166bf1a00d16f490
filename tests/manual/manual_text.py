"""The manual as a reader has it: one text, its headings, its links."""

import re
import unicodedata
from pathlib import Path

PAGES = ["manual.md", "keys.md"]
HEADING = re.compile(r"^(#{1,6}) (.+)$", re.MULTILINE)
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")


def slug(heading):
    """The anchor of a heading, as those who show markdown make it."""
    kept = "".join(c for c in heading.lower() if c.isalnum() or c in " -_")
    return unicodedata.normalize("NFC", kept).replace(" ", "-")


def plain(text):
    """The text with single blanks."""
    return " ".join(text.split())


class Manual:
    def __init__(self, folder):
        self.folder = Path(folder)
        self.pages = {name: (self.folder / name).read_text(encoding="utf-8") for name in PAGES}
        self.text = plain(" ".join(self.pages.values()))

    def anchors(self, page):
        """A heading that comes again has its number behind it, from 1."""
        found = []
        for _, heading in HEADING.findall(self.pages[page]):
            name = slug(heading)
            again = sum(1 for other in found if re.fullmatch(re.escape(name) + r"(-\d+)?", other))
            found.append(f"{name}-{again}" if again else name)
        return found

    def sections(self, chapter):
        """The anchors of the sections one step below that chapter of the manual."""
        inside = False
        for marks, heading in HEADING.findall(self.pages["manual.md"]):
            if len(marks) == 2:
                inside = heading == chapter
            elif inside and len(marks) == 3:
                yield slug(heading)

    def dead_links(self):
        for page, text in self.pages.items():
            for target in LINK.findall(text):
                if "://" in target:
                    continue
                file, _, anchor = target.partition("#")
                file = file or page
                if not (self.folder / file).exists():
                    yield target
                elif anchor and file in self.pages and anchor not in self.anchors(file):
                    yield target
