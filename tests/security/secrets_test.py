"""Passwords go through a server, its tool and a seat, and are afterwards in no file, no output, no
list of processes and no core dump.

secrets_test.py PROGRAMS: the folder that holds lineweir-server, lineweir-admin and lineweir-seat.
"""
import os
import pathlib
import resource
import secrets
import signal
import subprocess
import sys
import tempfile
import time

programs = pathlib.Path(sys.argv[1]).resolve()
config = """listen = "127.0.0.1:0"
store = "sqlite:server.db"
admin_socket = "admin.sock"
[[group]]
number = 1
name = "One"
exchange = "simulated"
"""


def fail(text):
    sys.exit(text)


def wait_for(what, found):
    end = time.monotonic() + 20
    while time.monotonic() < end:
        result = found()
        if result:
            return result
        time.sleep(0.05)
    fail(f"{what} didn't come")


def shown_to_all(pid):
    """What anybody can list of a process, and what its own user can."""
    texts = b""
    for name in ("cmdline", "comm", "environ"):
        try:
            texts += pathlib.Path(f"/proc/{pid}/{name}").read_bytes()
        except (PermissionError, ProcessLookupError, FileNotFoundError):
            pass
    return texts


def main():
    with tempfile.TemporaryDirectory() as place:
        folder = pathlib.Path(place)
        (folder / "server.toml").write_text(config)
        right, changed, wrong = ("Pw-" + secrets.token_hex(6) for _ in range(3))
        resource.setrlimit(resource.RLIMIT_CORE, (resource.getrlimit(resource.RLIMIT_CORE)[1],) * 2)
        outputs = {name: (folder / name).open("wb") for name in ("out.txt", "err.txt", "seat.txt")}
        listed = b""

        def run(*words, given=""):
            nonlocal listed
            process = subprocess.Popen([programs / "lineweir-admin", "--socket", "admin.sock", *words],
                                       cwd=folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                       stderr=subprocess.STDOUT)
            listed += shown_to_all(process.pid)
            told, _ = process.communicate(given.encode())
            with (folder / "admin.txt").open("ab") as kept:
                kept.write(told)
            return told.decode()

        server = subprocess.Popen([programs / "lineweir-server", "--config", "server.toml"], cwd=folder,
                                  stdout=outputs["out.txt"], stderr=outputs["err.txt"])
        seats = []
        try:
            port = wait_for("ready", lambda: [line.split(":")[-1] for line in
                                              (folder / "out.txt").read_text().splitlines()
                                              if line.startswith("ready ")])[0]
            for user in ("anna", "bob"):
                run("user", "add", user, "--template", "host", "--password-stdin", given=right + "\n")
            for user, password in (("bob", wrong), ("anna", right)):
                seat = subprocess.Popen([programs / "lineweir-seat", "--host", "127.0.0.1", "--port", port,
                                         "--user", user, "--as", "host"], cwd=folder,
                                        stdin=subprocess.PIPE, stdout=outputs["seat.txt"],
                                        stderr=subprocess.STDOUT)
                seats.append(seat)
                seat.stdin.write(password.encode() + b"\n")
                seat.stdin.close()
                if password == wrong:
                    wait_for("the refusal", lambda: "login refused" in run("audit", "list"))
                    # Its next tries would lock the user.
                    listed += shown_to_all(seat.pid)
                    seat.kill()
            wait_for("the seat", lambda: "anna" in run("seats"))
            run("user", "password", "anna", "--password-stdin", given=changed + "\n")
            run("backup", str(folder / "backup.db"))
            for process in (server, *seats):
                listed += shown_to_all(process.pid)
            for process in (server, seats[-1]):
                process.send_signal(signal.SIGABRT)
                process.wait(20)
        finally:
            for process in (server, *seats):
                process.kill()
                process.wait()
        if not listed:
            fail("no process was listed")
        cores = [path.name for path in folder.iterdir() if path.name.startswith("core")]
        if cores:
            fail(f"memory was dumped into {cores}")
        places = {path.name: path.read_bytes() for path in folder.iterdir() if path.is_file()}
        for name in ("server.db", "backup.db", "err.txt", "admin.txt"):
            if not places.get(name):
                fail(f"there is nothing in {name}")
        for password in (right, changed, wrong):
            for form in (password, password.encode().hex(), password[::-1]):
                if form.encode() in listed:
                    fail("a password is in the list of processes")
                found = [name for name, text in places.items() if form.encode() in text]
                if found:
                    fail(f"a password is in {found}")
        private = [path.name for path in folder.iterdir()
                   if path.name.startswith(("server.db", "backup.db", "admin.sock"))
                   and path.stat().st_mode & 0o077]
        if private:
            fail(f"others may read {private}")


main()
