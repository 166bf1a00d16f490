"""The kills of a server, and what must be there behind each."""

import collections
import os
import threading
import time

import whole_files
from studio_server import StudioServer
from whole_files import Broken

GROUPS = 2
LINES = 10
# What is written of a call is gathered for 20 ms, and in a journal after 500 ms where the store is
# slower than that, see src/server/store_outbox.h; the rest is time for the disk.
WRITE_DELAY = 0.6


class ServerKills:
    def __init__(self, programs, folder, dice):
        self.folder, self.dice = folder, dice
        self.server = StudioServer(os.path.join(programs, 'lineweir-server'), folder, GROUPS)
        self.faults, self.number, self.kill = [], 0, 0
        self.counts = collections.Counter()
        # When each call rang, by its number.
        self.rang = {}
        self.users, self.locked, self.flags = set(), {}, {}
        # What was asked and not answered before the kill.
        self.open = None
        self.least_audit = 0
        self.killed_at = 0.0
        self.oldest_lost = 0.0

    def fault(self, what):
        self.faults.append(f'server, kill {self.kill}: {what}')

    def report(self):
        return f'server: {self.kill} kills, {len(self.faults)} faults; ' + ', '.join(
            f'{count} {what}' for what, count in sorted(self.counts.items())) + \
            f'; the oldest lost call rang {self.oldest_lost * 1000:.0f} ms before'

    def live_and_die(self, kill):
        self.kill = kill
        length = self.dice.uniform(0, 0.08) if self.dice.random() < 0.1 else \
            self.dice.uniform(0.1, 1.2)
        if self.dice.random() < 0.1:
            return self.die_at_start()
        if not self.start():
            return
        killer = threading.Timer(length, self.strike)
        killer.start()
        try:
            self.look_by_server()
            while True:
                self.act()
        except OSError:
            # It is gone.
            pass
        killer.join()
        self.admin.close()
        self.server.kill()
        self.look()

    def strike(self):
        self.killed_at = time.monotonic()
        self.server.process.kill()

    def die_at_start(self):
        """While it opens its store and takes over what waits."""
        self.server.launch()
        time.sleep(self.dice.uniform(0, 0.1))
        self.strike()
        self.server.kill()
        self.counts['killed while starting'] += 1
        self.look()

    def start(self):
        try:
            self.server.start()
        except RuntimeError as error:
            self.fault(str(error))
            self.server.kill()
            return False
        self.admin = self.server.admin()
        return True

    def last_life(self):
        self.kill += 1
        if not self.start():
            return
        self.look_by_server()
        self.admin.close()
        if (status := self.server.end()) != 0:
            self.fault(f'the server ended with {status}')
        self.look()

    def ask(self, command, **fields):
        self.open = (command, fields)
        answer = self.admin.ask(command, **fields)
        self.open = None
        self.counts[command] += 1
        return answer

    def act(self):
        choice = self.dice.random()
        if choice < 0.45:
            return self.ring()
        if choice < 0.8:
            group, line = self.dice.randint(1, GROUPS), self.dice.randint(1, LINES)
            self.ask('hangup', group=group, line=line)
        elif choice < 0.85:
            name = f'user{self.next()}'
            if self.ask('user add', name=name, template='host', password='on air')['ok']:
                self.users.add(name)
                self.least_audit += 1
        elif choice < 0.93 and self.users:
            name = self.dice.choice(sorted(self.users))
            locks = self.dice.random() < 0.5
            if self.ask('user lock' if locks else 'user unlock', name=name)['ok']:
                self.locked[name] = locks
        else:
            number, flag = f'555 {self.dice.randint(1, 20):04}', self.dice.choice(
                ('regular', 'careful', 'barred'))
            if self.ask('caller flag', number=number, flag=flag)['ok']:
                self.flags[number] = flag

    def next(self):
        self.number += 1
        return self.number

    def ring(self):
        number = f'777 {self.next():06}'
        moment = time.monotonic()
        answer = self.ask('call', group=self.dice.randint(1, GROUPS),
                          line=self.dice.randint(1, LINES), number=number)
        if answer['ok']:
            self.rang[number] = moment

    def look_by_server(self):
        """What the server itself knows of what stood in its files."""
        verdict = self.ask('audit verify')
        if not verdict['ok'] or verdict['first_wrong'] != 0:
            self.fault(f'the audit: {verdict}')
        users = {row['name']: row for row in self.admin.rows('user list')}
        if missing := self.users - set(users):
            self.fault(f'users are gone: {sorted(missing)[:5]}')
        calls = [row['number'] for row in self.admin.rows('calls')]
        self.look_for_twice(calls)
        # All lines are free when it starts, so that what was there before is over.
        if missing := set(self.rang) - set(calls):
            self.fault(f'the server lacks the calls {sorted(missing)[:5]}')
        self.rang = {number: None for number in self.rang if number not in missing}

    def look(self):
        """What lies in the folder while no server runs."""
        try:
            if not whole_files.check_change_journal(os.path.join(self.folder, 'server.db.waiting')):
                self.counts['journals with a cut end'] += 1
            with whole_files.Copied(os.path.join(self.folder, 'server.db')) as store:
                if store.execute("SELECT 1 FROM sqlite_master WHERE name = 'audit'").fetchall():
                    self.look_at_store(store)
        except Broken as broken:
            self.fault(str(broken))
        self.open = None

    def look_at_store(self, store):
        entries = whole_files.check_audit(store)
        if entries < self.least_audit:
            self.fault(f'the audit has {entries} entries, {self.least_audit} were told')
        if wrong := store.execute('PRAGMA foreign_key_check').fetchall():
            self.fault(f'rows without what they belong to: {wrong[:3]}')
        accounts = dict(store.execute('SELECT name, locked FROM accounts'))
        for name in self.users - set(accounts):
            self.fault(f'the user {name} is not in the store')
        asked = self.open[1] if self.open is not None else {}
        for name, locks in self.locked.items():
            if bool(accounts.get(name)) != locks and asked.get('name') != name:
                self.fault(f'the user {name} is locked: {accounts.get(name)}, told was {locks}')
            self.locked[name] = bool(accounts.get(name))
        self.look_at_flags(store, asked)
        self.compare_calls([row[0] for row in store.execute('SELECT number FROM calls')])

    def look_at_flags(self, store, asked):
        names = {1: 'regular', 2: 'careful', 3: 'barred'}
        flags = {number: names[flag]
                 for number, flag in store.execute('SELECT number, flag FROM flagged_callers')}
        for number, flag in self.flags.items():
            if flags.get(number) != flag and asked.get('number') != number:
                self.fault(f'the flag of {number} is {flags.get(number)}, told was {flag}')
        self.flags = dict(flags)

    def look_for_twice(self, found):
        if twice := [number for number, times in collections.Counter(found).items() if times > 1]:
            self.fault(f'calls are there twice: {twice[:5]}')

    def compare_calls(self, found):
        """A call may be lost, or wait in the journal, that rang just before the kill."""
        self.look_for_twice(found)
        waiting = os.path.join(self.folder, 'server.db.waiting')
        journal = whole_files.content(waiting) if os.path.exists(waiting) else b''
        for number in set(self.rang) - set(found):
            if number.encode() in journal:
                self.counts['calls that waited at a kill'] += 1
                continue
            moment = self.rang.pop(number)
            if moment is not None and self.killed_at - moment <= WRITE_DELAY:
                self.counts['calls of the last moment lost'] += 1
                self.oldest_lost = max(self.oldest_lost, self.killed_at - moment)
            else:
                self.fault(f'the store lacks the call {number}')
