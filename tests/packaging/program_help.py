"""What the programs say of themselves, their manual pages of them, and the shell when it completes."""

import re
import subprocess
from pathlib import Path

# The first thing on an option's line of a help text; what stands behind it explains.
HELP_LINE = re.compile(r"^  (?:-[a-z],)?(--[a-z][a-z-]*)")
COMMAND_LINE = re.compile(r"^  ([a-z]+)  +\S")


def help_of(program, *command):
    return subprocess.run([program, *command, "--help"], capture_output=True, check=True, timeout=60,
                          text=True, stdin=subprocess.DEVNULL).stdout


def options_in_help(text):
    found = (HELP_LINE.match(line) for line in text.splitlines())
    return {match[1] for match in found if match}


def subcommands_in_help(text):
    _, _, behind = text.partition("\nSubcommands:\n")
    found = (COMMAND_LINE.match(line) for line in behind.split("\n\n")[0].splitlines())
    return [match[1] for match in found if match]


def commands_of(program):
    """Each command of the program with the options that its help tells; () is the program itself."""
    told = {}
    waiting = [()]
    while waiting:
        command = waiting.pop()
        text = help_of(program, *command)
        told[command] = options_in_help(text)
        waiting += [(*command, name) for name in subcommands_in_help(text)]
    return told


def page_of(root, name):
    """The source of the program's manual page."""
    [page] = Path(root, "packaging/man").glob(f"{name}.[1-8]")
    return page.read_text(encoding="utf-8")


def options_in_page(text):
    """In the page's language `Fl -check` is --check."""
    return {f"-{name}" for name in re.findall(r"\bFl (-[a-z][a-z-]*)", text)}


def commands_in_page(text):
    """Those that are described under a heading of their own."""
    found = set()
    for line in re.findall(r"^\.It (Cm .*)$", text, re.MULTILINE):
        for item in line.split(" , "):
            words = re.match(r"Cm ((?:[a-z]+ ?)+)", item)
            found.add(tuple(words[1].split()))
    return found


def completed(script, program, typed):
    """What bash offers behind the words, the last of which is being typed."""
    words = [program, *typed]
    quoted = " ".join("'" + word.replace("'", r"'\''") + "'" for word in words)
    last, before = words[-1], words[-2]
    text = f"""
source '{script}' || exit 1
function=$(complete -p {program} | sed 's/.*-F \\([^ ]*\\) .*/\\1/')
COMP_WORDS=({quoted}) COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1))
$function {program} '{last}' '{before}'
printf '%s\\n' "${{COMPREPLY[@]}}"
"""
    told = subprocess.run(["bash", "--norc", "-c", text], capture_output=True, check=True, timeout=60,
                          text=True)
    return set(told.stdout.split())
