"""A lineweir-server in a folder, and an administrator's connection to it."""

import json
import os
import re
import select
import signal
import socket
import subprocess


class Admin:
    """The requests of an administrator's tool, one at a time."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(60)
        # The name of a socket may not be long.
        here = os.open(os.path.dirname(path), os.O_RDONLY)
        try:
            self.socket.connect(f'/proc/self/fd/{here}/{os.path.basename(path)}')
        finally:
            os.close(here)
        self.read = self.socket.makefile('rb')

    def ask(self, command, **fields):
        """The answer; ConnectionError where the server ends before it comes."""
        self.socket.sendall((json.dumps({'command': command, **fields}) + '\n').encode())
        line = self.read.readline()
        if not line.endswith(b'\n'):
            raise ConnectionError('the server has gone')
        return json.loads(line)

    def rows(self, command, **fields):
        answer = self.ask(command, **fields)
        rows = answer.get('rows', [])
        while answer.get('more'):
            answer = self.ask('more')
            rows += answer.get('rows', [])
        return rows

    def close(self):
        self.read.close()
        self.socket.close()


class StudioServer:
    """The process. Its configuration is written anew; its store and its audit stay."""

    def __init__(self, program, folder, groups, words='', seats=1000):
        self.program, self.folder = program, folder
        with open(os.path.join(folder, 'server.toml'), 'w', encoding='utf-8') as file:
            file.write('listen = "127.0.0.1:0"\nstore = "sqlite:server.db"\n'
                       'admin_socket = "admin.sock"\nshutdown_seconds = 0\n'
                       f'seats = {seats}\nseats_of_address = {seats}\n{words}\n[tls]\n')
            for group in range(1, groups + 1):
                file.write(f'[[group]]\nnumber = {group}\nname = "Studio {group}"\n')

    def launch(self):
        """It begins, and nobody waits for it."""
        with open(os.path.join(self.folder, 'server.log'), 'ab') as log:
            self.process = subprocess.Popen(
                [self.program, '--config', os.path.join(self.folder, 'server.toml')],
                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=log, start_new_session=True)

    def start(self):
        """Until it serves; its port. RuntimeError where that doesn't come."""
        self.launch()
        ready = b''
        if select.select([self.process.stdout], [], [], 30)[0]:
            ready = self.process.stdout.readline()
        if not ready.startswith(b'ready'):
            raise RuntimeError('the server does not start: ' + self.log()[-2000:])
        self.port = int(ready.rpartition(b':')[2])
        return self.port

    def admin(self):
        return Admin(os.path.join(self.folder, 'admin.sock'))

    def log(self):
        with open(os.path.join(self.folder, 'server.log'), encoding='utf-8', errors='replace') as log:
            return log.read()

    def fingerprint(self):
        return re.findall(r'by the fingerprint SHA-256 (\S+)', self.log())[-1]

    def kill(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    def end(self):
        """As by its service manager; its status."""
        self.process.send_signal(signal.SIGTERM)
        status = self.process.wait(60)
        self.process.stdout.close()
        return status
