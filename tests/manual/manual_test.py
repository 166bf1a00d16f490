"""What the program offers and says stands in the manual, and the manual's steps are tried.

    manual_test.py ROOT
"""

import re
import sys
from pathlib import Path

import source_sentences
from manual_text import Manual, plain

TASKS = ["For the screener", "For the host", "For both"]
MENU_FILES = ["forms/menu_elements.cpp", "forms/show_data_form.h", "forms/show_data_form.cpp"]
# An item's caption stands behind its name; that of a menu is given by itself.
ITEM = re.compile(r'MenuItem \w+\{\*this, (?:\w+, )?"\w+", "([^"]+)"|\(form, \w+, "\w+",\s*"([^"]+)"\)')
MENU = re.compile(r'^  \w+\.caption = "(&\w[^"]*)"', re.MULTILINE)

LEAST_CAPTIONS = 55
LEAST_SENTENCES = 200


def menu_captions(source):
    captions = set()
    for file in MENU_FILES:
        text = (source / file).read_text(encoding="utf-8")
        captions.update(a or b for a, b in ITEM.findall(text))
        captions.update(MENU.findall(text))
    return {caption.replace("&", "") for caption in captions if caption != "-"}


def told_elsewhere(folder):
    """The sentences that no user of the console is shown, one a line."""
    lines = (folder / "not_shown.txt").read_text(encoding="utf-8").splitlines()
    return [line for line in lines if line and not line.startswith("#")]


def main(root):
    source, here = root / "src", root / "tests/manual"
    manual = Manual(root / "docs")
    faults = [f"a link leads nowhere: {link}" for link in manual.dead_links()]

    captions = menu_captions(source)
    if len(captions) < LEAST_CAPTIONS:
        faults.append(f"only {len(captions)} captions of menus were found")
    headings = [heading for text in manual.pages.values() for heading in re.findall(r"^#+ (.+)$", text, re.M)]
    numbered = re.compile(r"^(.* )\d$")
    for caption in sorted(captions):
        several = numbered.match(caption)
        # "Com 1" to "Com 4".
        first = several and f'"{several[1]}1"' in manual.text
        if f'"{caption}"' not in manual.text and caption not in headings and not first:
            faults.append(f"the menu's entry isn't told: {caption}")

    sentences = source_sentences.of_console(source)
    if len(sentences) < LEAST_SENTENCES:
        faults.append(f"only {len(sentences)} sentences were found")
    not_shown = told_elsewhere(here)
    faults += [f"nothing says this any more: {line}" for line in not_shown if line not in sentences]
    for sentence, file in sentences.items():
        if sentence not in not_shown and plain(sentence.replace("&", "")) not in manual.text:
            faults.append(f"{file} says what the manual doesn't tell: {sentence}")

    tried = {path.stem for path in (here / "steps").glob("*.txt")}
    wanted = {section.replace("-", "_") for task in TASKS for section in manual.sections(task)}
    faults += [f"no steps are tried of: {section}" for section in sorted(wanted - tried)]
    faults += [f"steps of no section: {section}" for section in sorted(tried - wanted)]

    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1])))
