"""Programs that need root or a service manager, for a machine that is only a folder.

    handbook_stubs.py NAME WORDS…

The machine's folder is in HANDBOOK_ROOT. `systemctl` runs the server as the unit there tells.
"""

import os
import re
import signal
import socket
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(os.environ.get("HANDBOOK_ROOT", "/nowhere"))
SERVICE, DATABASE = "lineweir-server", "postgresql"
LOG, PROCESS = ROOT / "log", ROOT / "process"
LONGEST_START = 10


def fail(why):
    sys.exit(f"stub: {why}")


def unit():
    """The unit's keys, each with its last value."""
    file = ROOT / f"etc/systemd/system/{SERVICE}.service"
    if not file.exists():
        fail(f"{file} was not installed")
    return dict(re.findall(r"^(\w+)=(.*)$", file.read_text(), re.MULTILINE))


def own_path(text):
    return re.sub(r"(^|\s)/(usr|etc)/", rf"\1{ROOT}/\2/", text)


def running():
    try:
        process = int(PROCESS.read_text())
        # One that has ended and whom nobody has waited for has no command line any more.
        return process if Path(f"/proc/{process}/cmdline").read_bytes() else None
    except (OSError, ValueError):
        return None


def start():
    keys = unit()
    if running():
        return
    for key, folder in [("StateDirectory", "var/lib"), ("RuntimeDirectory", "run")]:
        mode = int(keys[f"{key}Mode"], 8)
        (ROOT / folder / keys[key]).mkdir(mode=mode, parents=True, exist_ok=True)
    state = ROOT / "var/lib" / keys["StateDirectory"]
    ready = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
    (ROOT / "notify").unlink(missing_ok=True)
    ready.bind(str(ROOT / "notify"))
    ready.settimeout(LONGEST_START)
    with LOG.open("a") as log:
        found = os.fstat(log.fileno())
        told = {"NOTIFY_SOCKET": str(ROOT / "notify"),
                "STATE_DIRECTORY": str(state),
                "JOURNAL_STREAM": f"{found.st_dev}:{found.st_ino}"}
        process = subprocess.Popen(own_path(keys["ExecStart"]).split(), stdin=subprocess.DEVNULL, stdout=log,
                                   stderr=log, cwd=ROOT, env=os.environ | told, start_new_session=True)
    PROCESS.write_text(str(process.pid))
    try:
        while b"READY=1" not in ready.recv(1000):
            pass
    except TimeoutError:
        fail(f"{SERVICE} doesn't tell that it is ready")


def end(number):
    process = running()
    if not process:
        return
    os.kill(process, number)
    limit = time.monotonic() + LONGEST_START
    while running() and time.monotonic() < limit:
        time.sleep(0.02)
    if running():
        fail(f"{SERVICE} doesn't end")


def reload():
    for line in re.findall(r"^ExecReload=(.*)$", (ROOT / f"etc/systemd/system/{SERVICE}.service").read_text(),
                           re.MULTILINE):
        subprocess.run(own_path(line).replace("$MAINPID", str(running())).split(), check=True,
                       stdout=subprocess.DEVNULL)


def work_service(verb, options):
    if verb in ("enable", "start", "restart"):
        if verb == "restart":
            end(signal.SIGTERM)
        if verb != "enable" or "--now" in options:
            start()
    elif verb == "stop":
        end(signal.SIGTERM)
    elif verb == "reload":
        reload()
    elif verb == "kill" and options == ["--signal=KILL"]:
        end(signal.SIGKILL)
        # As one that has failed it comes back.
        time.sleep(float(unit()["RestartSec"]))
        start()
    else:
        fail(f"systemctl {verb} {options}")


def work_database(verb):
    data, socket_folder = os.environ["PGDATA"], os.environ["PGHOST"]
    if verb not in ("restart", "reload", "stop", "start"):
        fail(f"systemctl {verb}")
    mode = [] if verb in ("reload", "start") else ["-m", "fast"]
    subprocess.run(["pg_ctl", verb, "-s", *mode, "-D", data, "-l", f"{socket_folder}/log"], check=True,
                   stdout=subprocess.DEVNULL)


def systemctl(words):
    options = [word for word in words if word.startswith("-")]
    names = [word for word in words if not word.startswith("-")]
    if names == ["daemon-reload"]:
        unit()
    elif names[1:] == [SERVICE]:
        work_service(names[0], options)
    elif names[1:] == [DATABASE]:
        work_database(names[0])
    else:
        fail(f"systemctl {words}")


def journalctl(words):
    if words[:4] != ["-u", SERVICE, "-o", "cat"]:
        fail(f"journalctl {words}: not of {SERVICE}, or with what differs from one machine to the next")
    lines = re.sub(r"^<\d>", "", LOG.read_text(), flags=re.MULTILINE).splitlines()
    count = int(words[5]) if words[4:5] == ["-n"] else len(lines)
    print("\n".join(lines[-count:]))


def sudo(words):
    if words[:2] != ["-u", "postgres"]:
        fail(f"sudo {words}")
    os.environ["PGUSER"] = "postgres"
    os.execvp(words[2], words[2:])


def scp(words):
    _, path = words[0].split(":", 1)
    source = os.environ["HANDBOOK_OTHER_ROOT"] + path.removeprefix(str(ROOT))
    subprocess.run(["cp", source, words[1]], check=True)


def systemd_sysusers(words):
    file = ROOT / "usr/lib/sysusers.d/lineweir.conf"
    if words or not re.search(r"^u lineweir ", file.read_text(), re.MULTILINE):
        fail(f"{file} names no user lineweir")


def chown(words):
    for file in words[1:]:
        if words[0] not in ("lineweir:", "postgres:") or not Path(file).exists():
            fail(f"chown {words}")


def systemd_run(words):
    """Only with the account and the folder that the unit has."""
    keys = unit()
    wanted = [word for key in ("DynamicUser", "User", "StateDirectory") for word in ("-p", f"{key}={keys[key]}")]
    options = ["--quiet", "--pipe", "--wait", *wanted]
    if words[:len(options)] != options:
        fail(f"systemd-run {words}")
    os.execvp(words[len(options)], words[len(options):])


def apt(words):
    if words != ["install", "postgresql"]:
        fail(f"apt {words}")


STUBS = {"systemctl": systemctl, "journalctl": journalctl, "sudo": sudo, "scp": scp,
         "systemd_sysusers": systemd_sysusers, "systemd_run": systemd_run, "chown": chown, "apt": apt}

if __name__ == "__main__":
    STUBS[sys.argv[1]](sys.argv[2:])
