#!/usr/bin/env python3
"""Manual pages, completion and desktop entry tell what the programs tell: packaging_test.py ROOT BIN"""

import re
import shutil
import subprocess
import sys
from pathlib import Path
from xml.etree import ElementTree

import program_help

WITH_QT = ["lineweir", "lineweir-seat"]
OTHERS = ["lineweir-admin", "lineweir-desk", "lineweir-driver", "lineweir-server", "lineweir-studio"]
TOOLS = ["lineweir-desk", "lineweir-driver", "lineweir-seat", "lineweir-studio"]


def difference(what, told, by_program):
    for name in sorted(by_program - told):
        yield f"{what} lacks {name}"
    for name in sorted(told - by_program):
        yield f"{what} tells of {name}, which the program doesn't have"


def faults_of_page(root, name, told):
    text = program_help.page_of(root, name)
    yield from difference(f"the page of {name}", program_help.options_in_page(text),
                          set().union(*told.values()))
    if len(told) > 1:
        # A family alone, such as "user", is no command.
        leaves = {command for command in told if command and
                  not any(other[:-1] == command for other in told)}
        in_page = program_help.commands_in_page(text)
        yield from difference(f"the page of {name}", {" ".join(command) for command in in_page},
                              {" ".join(command) for command in leaves})


def faults_of_completion(root, name, told):
    script = Path(root, "packaging/completions", "lineweir-tools" if name in TOOLS else name)
    everywhere = told[()] - {"--version"} if len(told) > 1 else set()
    for command, options in told.items():
        offered = program_help.completed(script, name, [*command, "--"])
        where = " ".join([name, *command])
        yield from difference(f"the completion of {where}", offered, options | everywhere)
        under = {other[-1] for other in told if other and other[:-1] == command}
        if under:
            offered = program_help.completed(script, name, [*command, ""])
            yield from difference(f"the completion of {where}",
                                  {word for word in offered if not word.startswith("-")}, under)


def faults_of_version(program, version):
    said = subprocess.run([program, "--version"], capture_output=True, check=False, text=True, timeout=60,
                          stdin=subprocess.DEVNULL)
    if said.returncode != 0 or said.stdout != f"{program.name} {version}\n":
        yield f"{program.name} --version ends with {said.returncode} and says {said.stdout!r}"


def faults_of_releases(root, version):
    """The newest release is told everywhere."""
    metainfo = ElementTree.parse(root / "packaging/desktop/org.lineweir.Console.metainfo.xml")
    newest = metainfo.find("releases/release").get("version")
    if newest != version:
        yield f"the metainfo's newest release is {newest}"
    changes = (root / "packaging/debian/changelog").read_text(encoding="utf-8")
    if not changes.startswith(f"lineweir ({version}-"):
        yield "the package's newest change is of another version"
    if f"\n## {version}\n" not in (root / "CHANGELOG.md").read_text(encoding="utf-8"):
        yield f"CHANGELOG.md has no section {version}"


def faults_of_notices(root):
    """What is compiled in has its licence in the packages' copyright, as THIRD-PARTY.md tells it."""
    notices = (root / "THIRD-PARTY.md").read_text(encoding="utf-8")
    papers = (root / "packaging/debian/copyright").read_text(encoding="utf-8")
    words = " ".join(line.strip() for line in papers.replace("\n .\n", "\n\n").splitlines())
    texts = re.findall(r"^```text\n(.*?)^```", notices, re.MULTILINE | re.DOTALL)
    holders = re.findall(r"^\*\*.*?\*\*: copyright (.*)\.$", notices, re.MULTILINE)
    if len(texts) < 3 or len(holders) < 4:
        yield "THIRD-PARTY.md lacks licences or holders"
    for part in texts + [holder for line in holders for holder in line.split("; ")]:
        if " ".join(part.split()) not in " ".join(words.split()):
            yield f"the packages' copyright lacks {part[:60]!r}"
    listed = re.search(r"^compiled_in=\((.*)\)$", (root / "packaging/libraries").read_text(), re.MULTILINE)[1]
    for package in listed.replace("libboost-dev", "libboost1.74-dev").split():
        if f"`{package}`" not in notices or f"Debian's {package}," not in papers:
            yield f"{package} is compiled in and has no notice"


def faults_of_packages_to_build_with(root):
    """What the scripts install stands in the README's table."""
    page = (root / "README.md").read_text(encoding="utf-8")
    lines = (root / "scripts/packages.txt").read_text(encoding="utf-8").splitlines()
    for package in {line.split()[1] for line in lines if line and not line.startswith("#")}:
        if f"`{package}`" not in page:
            yield f"README.md lacks {package}, which is installed"


def faults_by_tool(command, files):
    """What a tool of Debian's says, where it is on this machine."""
    if shutil.which(command[0]) is None:
        return
    checked = subprocess.run([*command, *files], capture_output=True, check=False, text=True, timeout=120)
    if checked.returncode != 0:
        yield checked.stdout + checked.stderr


def faults(root, bin_folder):
    version = re.search(r"project\(lineweir VERSION ([\d.]+)", (root / "CMakeLists.txt").read_text())[1]
    desktop = (bin_folder / "lineweir").exists()
    for name in OTHERS + (WITH_QT if desktop else []):
        told = program_help.commands_of(bin_folder / name)
        yield from faults_of_page(root, name, told)
        yield from faults_of_completion(root, name, told)
        yield from faults_of_version(bin_folder / name, version)
    yield from faults_of_releases(root, version)
    yield from faults_of_notices(root)
    yield from faults_of_packages_to_build_with(root)
    files = root / "packaging/desktop"
    yield from faults_by_tool(["desktop-file-validate"], files.glob("*.desktop"))
    yield from faults_by_tool(["appstreamcli", "validate", "--no-net"], files.glob("*.metainfo.xml"))
    yield from faults_by_tool(["mandoc", "-T", "lint", "-W", "warning"], (root / "packaging/man").glob("*"))


def main(root, bin_folder):
    found = list(faults(Path(root), Path(bin_folder)))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
