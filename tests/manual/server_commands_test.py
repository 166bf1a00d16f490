"""Runs each command of the server's handbook, in order, on machines that are only folders, and compares
what it prints with what the handbook tells.

    server_commands_test.py ROOT PROGRAMS

Servers, PostgreSQL and files are real; what needs root is in handbook_stubs.py.
"""

import os
import pwd
import re
import shutil
import sys
import tempfile
import time
import tomllib
from pathlib import Path

import handbook_faults
from handbook_blocks import Command, HandbookFault, blocks_of
from handbook_machine import LOOKS, Machine
from manual_text import HEADING, slug
from throwaway_postgres import programs

SKIPPED = 77
PLAIN_PYTHON = "/usr/bin/python3"
MACHINES = ["", "studio1", "studio2", "db"]
PROGRAMS = ["lineweir-server", "lineweir-admin"]
FAILS = ("lineweir-admin: ", "lineweir-server: ")
LONGEST_LOOK = 30


def without_root():
    """PostgreSQL doesn't run as root, and nothing here may need it."""
    if os.geteuid() != 0:
        return
    if not os.access(PLAIN_PYTHON, os.X_OK):
        print("skipped: no Python for others than root")
        sys.exit(SKIPPED)
    user = pwd.getpwnam("nobody")
    os.setgroups([])
    os.setgid(user.pw_gid)
    os.setuid(user.pw_uid)
    os.environ |= {"PYTHONDONTWRITEBYTECODE": "1"}
    os.execv(PLAIN_PYTHON, [PLAIN_PYTHON, *sys.argv])


def pattern_of(printed):
    lines = [line.rstrip() for line in printed]
    return "".join("(?:.*\n)*?" if line == "…" else ".*".join(map(re.escape, line.split("…"))) + "\n"
                   for line in lines)


def trimmed(text):
    return "".join(line.rstrip() + "\n" for line in text.splitlines() if line.strip())


class Handbook:
    def __init__(self, root, bin_folder, work):
        self.unit = (root / "packaging/lineweir-server.service").read_text()
        user = pwd.getpwuid(os.geteuid()).pw_name
        self.machines = {name: Machine(name, work, work / "db", sys.executable) for name in MACHINES}
        self.user = user
        for name, machine in self.machines.items():
            for folder in [machine.home, machine.home / "new", machine.home / "old"]:
                folder.mkdir(exist_ok=True)
                for program in PROGRAMS:
                    (folder / program).symlink_to(bin_folder / program)
            (machine.home / "packaging").symlink_to(root / "packaging")
            if not name:
                for program in PROGRAMS:
                    (machine.root / "usr/bin" / program).symlink_to(bin_folder / program)

    def database_port(self):
        database = self.machines["db"].database
        return database.port if database else 0

    def put(self, file):
        for name in file.machines:
            machine = self.machines[name]
            path = machine.home / machine.here(file.path, 0)
            path.parent.mkdir(parents=True, exist_ok=True)
            text = machine.here(file.text, self.database_port())
            if path.suffix == ".toml":
                tomllib.loads(text)
            with path.open("a" if file.appended else "w") as out:
                out.write(text)

    def check_folder(self, command):
        """Under its unit the server may write nowhere else."""
        made = re.search(r"lineweir-admin .*(?:backup|restore) (\S+)", command.words)
        state = "/var/lib/" + re.search(r"^StateDirectory=(.*)$", self.unit, re.MULTILINE)[1] + "/"
        if made and command.machine and not made[1].startswith(state):
            raise HandbookFault(f"the server may not use {made[1]}")

    def run(self, command):
        machine = self.machines[command.machine]
        if command.words == "apt install postgresql":
            machine.set_up_database(self.user)
        self.check_folder(command)
        wanted = pattern_of(command.printed)
        fails = any(line.startswith(FAILS) for line in command.printed)
        limit = time.monotonic() + (LONGEST_LOOK if LOOKS.match(command.words) else 0)
        while True:
            printed, status = machine.run(command.words, self.database_port())
            printed = trimmed(printed)
            if re.fullmatch(wanted, printed) and (status != 0) == fails:
                return
            if time.monotonic() >= limit:
                raise HandbookFault(f"ends with {status} and prints\n{printed}")
            time.sleep(0.1)

    def end(self):
        for machine in self.machines.values():
            machine.end()


def faults_of_text(root):
    """Of links within the page, and of what the programs are told to say."""
    text = (root / "docs/server.md").read_text(encoding="utf-8")
    anchors = {slug(heading) for _, heading in HEADING.findall(text)}
    dead = [anchor for anchor in re.findall(r"\]\(#([^)]+)\)", text) if anchor not in anchors]
    return [f"a link leads nowhere: {anchor}" for anchor in dead] + handbook_faults.unsaid(text, root / "src")


def walk(root, bin_folder, work):
    """The first fault, or nothing."""
    try:
        blocks = blocks_of((root / "docs/server.md").read_text(encoding="utf-8"))
    except HandbookFault as fault:
        return str(fault)
    handbook = Handbook(root, bin_folder, work)
    try:
        for block in blocks:
            try:
                if isinstance(block, Command):
                    handbook.run(block)
                else:
                    handbook.put(block)
            except Exception as fault:  # pylint: disable=broad-except
                what = block.words if isinstance(block, Command) else block.path
                return f"docs/server.md, line {block.line}: {what}\n{fault}"
    finally:
        handbook.end()
    return "" if blocks else "there are no commands"


def main(root, bin_folder):
    faults = faults_of_text(Path(root))
    if faults:
        print("\n".join(faults))
        return 1
    if programs() is None:
        print("skipped: PostgreSQL's programs are not on this machine")
        return SKIPPED
    without_root()
    # A socket's name may be no longer than about 100 letters.
    work = Path(tempfile.mkdtemp(prefix="lwh-", dir="/tmp"))
    try:
        fault = walk(Path(root), Path(bin_folder), work)
    finally:
        shutil.rmtree(work, ignore_errors=True)
    print(fault)
    return 1 if fault else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
