"""A machine of a handbook: a folder with what the real one has in its root."""

import os
import pty
import re
import select
import signal
import subprocess
import time
from pathlib import Path

import handbook_stubs
from throwaway_postgres import ThrowawayPostgres, free_port, programs

REAL = {"lineweir-server", "lineweir-admin", "openssl", "install", "cp", "mv", "rm", "ls", "mkdir", "chmod"}
ROOTED = re.compile(r"(?<![\w/.])/(?=(?:etc|var|run|usr|backup)(?:/|\s|\"|$))")
ABSOLUTE = re.compile(r"(?<![\w/.])/(?!CN=|/)\w\S*")
ASKS = re.compile(r"user password|user add(?!.*--password-stdin)|--pwprompt")
IN_FOREGROUND = re.compile(r"^lineweir-server (?!.*--check)")
# What only looks may be asked again until it is so: servers tell each other, and the journal, a moment later.
LOOKS = re.compile(r"^(journalctl|sudo -u postgres psql|lineweir-admin (caller|user) list)\b")
# Of the tool, and here another one's.
USUAL_SOCKET = "/run/lineweir/admin.sock"
TYPED = "PASSWORD"
LONGEST = 60


class Machine:
    def __init__(self, name, work, root_of_other, python):
        self.name, self.work, self.root = name, work, work / (name or "desk")
        self.home = self.root / "home"
        self.port = free_port()
        self.database = None
        self.foreground = []
        for folder in ["home", "etc/postgresql/15", "etc/systemd/system", "usr/bin", "usr/lib/sysusers.d", "backup"]:
            (self.root / folder).mkdir(parents=True)
        self.environment = {
            "PATH": f"{self.stubs(python)}:{self.root}/usr/bin:{programs()}:/usr/bin:/bin",
            "HOME": str(self.home), "LANG": "C.UTF-8", "TZ": "UTC", "PYTHONDONTWRITEBYTECODE": "1",
            "HANDBOOK_ROOT": str(self.root), "HANDBOOK_OTHER_ROOT": str(root_of_other), "PGUSER": "lineweir"}

    def stubs(self, python):
        folder = self.root / "stubs"
        folder.mkdir()
        for name in handbook_stubs.STUBS:
            stub = folder / name.replace("_", "-")
            stub.write_text(f"#!/bin/sh\nexec {python} {handbook_stubs.__file__} {name} \"$@\"\n")
            stub.chmod(0o755)
        return folder

    def set_up_database(self, user):
        self.database = ThrowawayPostgres(self.root / "postgres", user)
        (self.root / "etc/postgresql/15/main").symlink_to(self.database.data)
        self.environment |= {"PGHOST": str(self.database.folder), "PGPORT": str(self.database.port),
                             "PGDATA": str(self.database.data)}

    def here(self, text, database_port):
        """The text as it holds for this folder and its ports."""
        if self.name:
            text = re.sub("^lineweir-admin ", f"lineweir-admin --socket {USUAL_SOCKET} ", text)
        text = ROOTED.sub(f"{self.root}/", text)
        text = text.replace("db.example:5432", f"localhost:{database_port}")
        text = text.replace("@db.example/", f"@localhost:{database_port}/").replace("db.example", "localhost")
        text = re.sub(r"192\.168\.1\.2[0-9]/32", "127.0.0.1/32", text)
        text = re.sub(r"listen_addresses = '\*'", "listen_addresses = '127.0.0.1'", text)
        if 'listen = "0.0.0.0' in text:
            text += "\n[tls]\n"
        for address in ("0.0.0.0", "127.0.0.1"):
            text = text.replace(f"{address}:2001", f"127.0.0.1:{self.port}")
        return text

    def told(self, text, database_port):
        """What a program here says, as it is said where the handbook's words hold."""
        address = "127.0.0.1:2001" if not self.name else "0.0.0.0:2001"
        text = text.replace(f"127.0.0.1:{self.port}", address).replace(str(self.home) + "/", "")
        text = text.replace(str(self.root), "").replace(f"localhost:{database_port}", "db.example:5432")
        text = text.replace("on '/postgres'", "on this machine")
        return text.replace("'localhost'", "'db.example'")

    def run(self, words, database_port):
        """What it printed, and its status."""
        program = re.sub(r"^([A-Z_]+=\S+ )*", "", words).split()[0]
        if program not in REAL and program.replace("-", "_") not in handbook_stubs.STUBS:
            raise RuntimeError("no test runs this program")
        own = self.here(words, database_port)
        strange = [path for path in ABSOLUTE.findall(own) if not path.startswith(str(self.work))]
        if strange:
            raise RuntimeError(f"leads out of the test's folder: {strange}")
        if IN_FOREGROUND.match(words):
            printed, status = self.begin(own), 0
        elif ASKS.search(words):
            printed, status = self.run_on_terminal(own)
        else:
            ended = subprocess.run(["/bin/bash", "-c", own], cwd=self.home, env=self.environment, text=True,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                   timeout=LONGEST, check=False)
            printed, status = ended.stdout, ended.returncode
        return self.told(printed, database_port), status

    def begin(self, words):
        """Runs on; what it has printed until it is ready."""
        log = self.home / "foreground"
        with log.open("w") as output:
            self.foreground.append(subprocess.Popen(words.split(), cwd=self.home, env=self.environment,
                                                    stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                                                    executable=f"{self.root}/usr/bin/lineweir-server"))
        limit = time.monotonic() + LONGEST
        while "\nready " not in log.read_text() and time.monotonic() < limit:
            time.sleep(0.02)
        return log.read_text()

    def run_on_terminal(self, words):
        """Types the password as often as it is asked for."""
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(self.home)
            os.execve("/bin/bash", ["bash", "-c", words], self.environment)
        printed, answered = b"", 0
        limit = time.monotonic() + LONGEST
        while time.monotonic() < limit:
            if not select.select([terminal], [], [], 0.1)[0]:
                continue
            try:
                piece = os.read(terminal, 4096)
            except OSError:
                break
            printed += piece
            if printed.count(b": ") > answered and printed.endswith(b": "):
                answered += 1
                os.write(terminal, TYPED.encode() + b"\n")
        os.close(terminal)
        return printed.decode().replace("\r\n", "\n"), os.waitstatus_to_exitcode(os.waitpid(process, 0)[1])

    def end(self):
        for process in self.foreground:
            process.kill()
            process.wait()
        file = self.root / "process"
        if file.exists():
            try:
                os.kill(int(file.read_text()), signal.SIGKILL)
            except ProcessLookupError:
                pass
        if self.database:
            self.database.stop()
