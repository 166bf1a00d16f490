"""The sentences that the console can show, as they stand in its sources."""

import re
from pathlib import Path

# Where sentences for the user are made. What the other folders say goes to an engineer, a log or
# another program.
FOLDERS = [
    "base", "boxlink", "callcontrol", "callerdata", "clocks", "core", "desktop", "forms", "link",
    "messages", "screen", "serverlink", "state", "platform/disk", "platform/disk_journal",
    "platform/journal", "platform/qt", "platform/sqlite", "platform/threaded",
]

# The names of elements for screen readers, the places of the manual, what the command line answers,
# what a test of the window writes for itself, and the diagnosis, whose page says itself what to do.
OTHER_FILES = {
    "accessible_names.cpp", "button_picture.cpp", "command_line.cpp", "element_looks.cpp",
    "manual_sections.cpp", "screenshot.cpp",
    "diagnosis.cpp", "diagnosis_window.cpp", "screens_seen.cpp", "server_probe.cpp",
    "surroundings.cpp",
}

# A text in quotes, with others that follow it directly; comments are tried first, so that a quote in
# one begins nothing.
TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|\'(?:\\.|[^\'\\\n])\'|"(?:\\.|[^"\\\n])*"(?:\s*"(?:\\.|[^"\\\n])*")*', re.DOTALL)
PIECE = re.compile(r'"((?:\\.|[^"\\\n])*)"')
ESCAPES = {r"\r\n": " ", r"\n": " ", r"\"": '"', r"\t": " "}

# Behind these a text is for the trace, for the compiler or for the database engine.
NOT_SHOWN = re.compile(r"(WriteTrace|static_assert|execute|Statement \w+|prepare)\s*\([^;]*$")
SQL = re.compile(r"\b(SELECT|INSERT|UPDATE|CREATE|DELETE|WHERE|PRAGMA|ORDER BY|FROM temp)\b")
WORD = re.compile(r"(?<![\w/.])[A-Za-z][a-z']*(?![\w/])")


def plain(text):
    """The text with single blanks, as a reader sees it."""
    return " ".join(text.split())


def of_file(path):
    source = path.read_text(encoding="utf-8")
    for token in TOKEN.finditer(source):
        text = token.group()
        if not text.startswith('"'):
            continue
        begin = max(source.rfind(";", 0, token.start()), source.rfind("{", 0, token.start()),
                    source.rfind("}", 0, token.start()))
        if NOT_SHOWN.search(source[begin + 1:token.start()]):
            continue
        sentence = "".join(PIECE.findall(text))
        for escape, meaning in ESCAPES.items():
            sentence = sentence.replace(escape, meaning)
        sentence = plain(sentence)
        if len(WORD.findall(sentence)) >= 3 and not SQL.search(sentence) and "|" not in sentence:
            yield sentence


def of_console(source_folder):
    """Each sentence, or the piece of one around what is put into it, with the file that has it."""
    found = {}
    for folder in FOLDERS:
        for path in sorted((Path(source_folder) / folder).glob("*")):
            if path.suffix in (".cpp", ".h") and path.name not in OTHER_FILES:
                for sentence in of_file(path):
                    found.setdefault(sentence, path.relative_to(source_folder))
    return found
