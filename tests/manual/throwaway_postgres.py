"""A PostgreSQL of a test's own, in a folder of its own."""

import shutil
import socket
import subprocess
from pathlib import Path


def programs():
    """Where its programs are; None where they aren't."""
    for folder in sorted(Path("/usr/lib/postgresql").glob("*/bin"), reverse=True):
        if (folder / "initdb").exists() and (folder / "postgres").exists():
            return folder
    return None


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class ThrowawayPostgres:
    """As a package sets one up: who is known to the machine by the database's name needs no password,
    and whoever comes over the network does. All the database's users are known to this machine by the
    one who runs the test."""

    def __init__(self, folder, user):
        self.folder, self.data, self.port = folder, folder / "data", free_port()
        folder.mkdir(parents=True)
        self.run("initdb", "--pgdata", self.data, "--username=postgres", "--auth-local=peer",
                 "--auth-host=scram-sha-256", "--encoding=UTF8", "--locale=C", "--no-sync")
        self.append("pg_ident.conf", f"all {user} postgres\nall {user} lineweir\n")
        self.append("postgresql.conf", f"port = {self.port}\nunix_socket_directories = '{folder}'\n"
                    "listen_addresses = ''\nfsync = off\nshared_buffers = 16MB\ninclude_dir 'conf.d'\n")
        (self.data / "conf.d").mkdir()
        hba = self.data / "pg_hba.conf"
        hba.write_text(hba.read_text().replace(" peer\n", " peer map=all\n"))
        self.start()

    def run(self, program, *words):
        subprocess.run([programs() / program, *words], check=True, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, timeout=60)

    def append(self, name, text):
        with (self.data / name).open("a") as file:
            file.write(text)

    def start(self):
        self.run("pg_ctl", "start", "-w", "-D", self.data, "-l", self.folder / "log")

    def stop(self):
        if (self.data / "postmaster.pid").exists():
            self.run("pg_ctl", "stop", "-m", "immediate", "-D", self.data)

    def remove(self):
        self.stop()
        shutil.rmtree(self.folder)
