"""The fenced blocks of a handbook, in their order.

A block `console` holds commands, each behind a prompt that tells the machine, and what they print:

    studio1# systemctl start lineweir-server

A line that ends with a backslash goes on in the next one. In what is printed "…" stands for any text
within a line, and alone in a line for any lines.

A block of another language is a file; its first line tells which, on which machines and, if it is to
be put behind what is there, "at its end":

    # /etc/lineweir/server.toml of studio1 and studio2
"""

import re
from dataclasses import dataclass, field

FENCE = re.compile(r"^```(\w*)$")
INDENTED = re.compile(r"^(?: {4}|\t)\S")
PROMPT = re.compile(r"^(\w*)([$#]) (.+)$")
FILE = re.compile(r"^# (\S+)(?: of ([\w ,]+?))?(, at its end)?$")


@dataclass
class Command:
    line: int
    machine: str
    words: str
    printed: list = field(default_factory=list)


@dataclass
class File:
    line: int
    path: str
    machines: list
    text: str
    appended: bool


class HandbookFault(Exception):
    """A block that nobody can run."""


def commands_of(first, lines):
    found = []
    goes_on = False
    for number, line in enumerate(lines, first):
        prompt = PROMPT.match(line)
        if goes_on:
            found[-1].words += line.strip()
        elif prompt:
            found.append(Command(number, prompt[1], prompt[3]))
        elif not found:
            raise HandbookFault(f"line {number}: a block begins without a prompt")
        else:
            found[-1].printed.append(line)
            continue
        goes_on = found[-1].words.endswith("\\")
        found[-1].words = found[-1].words.removesuffix("\\")
    return found


def file_of(first, lines):
    head = FILE.match(lines[0]) if lines else None
    if not head:
        raise HandbookFault(f"line {first}: a block doesn't tell in its first line which file it is")
    machines = re.split(r", | and ", head[2]) if head[2] else [""]
    return File(first, head[1], machines, "\n".join(lines) + "\n", bool(head[3]))


def blocks_of(text):
    """Commands and files in their order."""
    found, block, language, first = [], None, "", 0
    for number, line in enumerate(text.splitlines(), 1):
        fence = FENCE.match(line)
        if block is None and fence:
            block, language, first = [], fence[1], number + 1
        elif block is not None and line == "```":
            found += commands_of(first, block) if language == "console" else [file_of(first, block)]
            block = None
        elif block is not None:
            block.append(line)
        elif INDENTED.match(line):
            raise HandbookFault(f"line {number}: a block without a fence is run by nobody: {line.strip()}")
    if block is not None:
        raise HandbookFault(f"line {first - 1}: this block has no end")
    return found
