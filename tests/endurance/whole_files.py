"""The files of console and server as somebody reads them who knows only how they are laid out."""

import csv
import glob
import hashlib
import io
import os
import re
import shutil
import sqlite3
import struct
import tempfile
import zlib

SETTINGS_SIZE = 553
PLAN_ENTRY, PLAN_ENTRIES = 31, 42


class Broken(Exception):
    """A file is not whole; the text tells which and how."""


def content(path):
    with open(path, 'rb') as file:
        return file.read()


def number_in(text, word, what):
    found = re.fullmatch(word + r'[ -](\d+)', text.decode('ascii', 'replace').strip())
    if not found:
        raise Broken(f'{what} holds {text!r}')
    return int(found.group(1))


def settings_number(path):
    """The number of the settings that the file holds, or None where there are none yet."""
    if not os.path.exists(path):
        return None
    record = content(path)
    if len(record) != SETTINGS_SIZE:
        raise Broken(f'the settings have {len(record)} bytes')
    number = number_in(record[208:238], 'Operator', 'the settings')
    warnings = struct.unpack('<hh', record[260:264])
    host = number_in(record[428:448], 'host', 'the settings')
    if warnings != (number % 3000, number % 3000) or host != number:
        raise Broken(f'the settings are of several saves: {number}, {warnings}, {host}')
    return number


def plan_number(path):
    """The same of the plan; None as well for the blank one of a first start."""
    if not os.path.exists(path):
        return None
    plan = content(path)
    # A first start makes the file before anything is saved.
    if not plan:
        return None
    if len(plan) != PLAN_ENTRY * PLAN_ENTRIES:
        raise Broken(f'the plan has {len(plan)} bytes')
    texts = {plan[entry * PLAN_ENTRY + 11:(entry + 1) * PLAN_ENTRY]
             for entry in range(2, PLAN_ENTRIES)}
    if texts == {b' ' * 20}:
        return None
    if len(texts) != 1:
        raise Broken(f'the plan is of several saves: {texts}')
    return number_in(texts.pop(), 'Plan', 'the plan')


class Copied:
    """A database as it stands, with all that belongs to it, opened apart from whose it is."""

    def __init__(self, path):
        self.path = path

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory(prefix='endurance.')
        for part in glob.glob(glob.escape(self.path) + '*'):
            if not part.endswith('-shm'):
                shutil.copy(part, self.folder.name)
        self.database = sqlite3.connect(os.path.join(self.folder.name, os.path.basename(self.path)))
        told = [row[0] for row in self.database.execute('PRAGMA integrity_check')]
        if told != ['ok']:
            raise Broken(f'{os.path.basename(self.path)}: {told}')
        return self.database

    def __exit__(self, *_):
        self.database.close()
        self.folder.cleanup()


def hot_list(path):
    if not os.path.exists(path):
        return []
    with Copied(path) as database:
        # A file may be there before its table is.
        if not database.execute("SELECT 1 FROM sqlite_master WHERE name = 'Messages'").fetchall():
            return []
        return [row[0] for row in database.execute('SELECT Message FROM Messages ORDER BY rowid')]


def checked_caller(name, number):
    """The caller's name where the record is of one caller."""
    name, number = name.strip(), number.strip()
    if name.split()[-1:] != number.split()[-1:] or not re.fullmatch(r'(Caller|Draft) \d+', name):
        raise Broken(f'a call of {name!r} with the number {number!r}')
    return name


def logged_callers(path):
    """The callers in the log, in its order."""
    if not os.path.exists(path):
        return []
    with Copied(path) as database:
        if not database.execute(
                "SELECT 1 FROM sqlite_master WHERE name = 'Caller Records'").fetchall():
            return []
        rows = database.execute(
            'SELECT "Caller Name", PhoneNumber, "Date" FROM "Caller Records" ORDER BY rowid')
        callers = []
        for name, number, date in rows:
            if not date:
                raise Broken(f'the call of {name!r} has no date')
            callers.append(checked_caller(name, number))
        return callers


class Pieces:
    """Numbers and texts from the front of bytes."""

    def __init__(self, data):
        self.data, self.at = data, 0

    def take(self, size):
        if self.at + size > len(self.data):
            raise Broken('a record of the journal ends early')
        self.at += size
        return self.data[self.at - size:self.at]

    def number(self, size):
        return int.from_bytes(self.take(size), 'little')

    def text(self):
        return self.take(self.number(4)).decode('utf-8')

    def columns(self):
        return {self.text(): self.text() for _ in range(self.number(4))}


def callers_in(journal):
    """The callers in a journal's bytes, and how many bytes at its end are no whole record."""
    callers, at = [], 0
    while at < len(journal):
        size, check = struct.unpack('<II', journal[at + 4:at + 12]) \
            if len(journal) >= at + 12 else (0, 0)
        record = journal[at + 12:at + 12 + size]
        if journal[at:at + 4] != b'LWC1' or len(record) < size or zlib.crc32(record) != check:
            return callers, len(journal) - at
        pieces = Pieces(record)
        for _ in range(2):
            pieces.text()
            pieces.number(8)
        pieces.text()
        pieces.text()
        columns = pieces.columns()
        callers.append(checked_caller(columns['Caller Name'], columns['PhoneNumber']))
        at += 12 + size
    return callers, 0


def memory_files(folder):
    """What the journals of consoles in the folder keep in memory that outlives them."""
    status = os.stat(folder)
    return glob.glob(f'/dev/shm/lineweir-{status.st_dev}-{status.st_ino}-*')


def unlogged_callers(folder):
    """Those whose calls the next run of the console is to log."""
    callers = set()
    for drafts in glob.glob(os.path.join(folder, 'Drafts*.csv')):
        for row in csv.DictReader(io.StringIO(content(drafts).decode(), newline='')):
            if row['Logged'] in ('no', 'perhaps'):
                callers.add(row['Call: Caller Name'])
    return callers


def waiting_callers(folder):
    """Those whose calls wait for the log, and how many journals end within a record."""
    callers, cut = set(), 0
    for journal in glob.glob(os.path.join(folder, 'calls-*.journal')):
        found, rest = callers_in(content(journal))
        callers.update(found)
        cut += rest > 0
    for memory in memory_files(folder):
        # Where its records begin is the program's own matter.
        callers.update(text.decode() for text in re.findall(rb'(?:Caller|Draft) \d+', content(memory)))
    return callers, cut


def audit_hash(previous, number, event_id, moment, user, action, detail):
    """As src/platform/audit/audit_hash.h tells it."""
    def of_number(value):
        return struct.pack('>q', value)

    def of_text(text):
        data = text if isinstance(text, bytes) else text.encode()
        return of_number(len(data)) + data

    return hashlib.sha256(of_text('lineweir audit 1') + of_text(previous) + of_number(number) +
                          of_text(event_id) + of_number(moment) + of_text(user) +
                          of_text(action) + of_text(detail)).hexdigest()


def check_audit(database):
    """The number of entries of a chain without a gap."""
    previous, expected = '', 0
    for number, event_id, moment, user, action, detail, kept in database.execute(
            'SELECT number, id, at, user, action, detail, hash FROM audit ORDER BY number'):
        expected += 1
        if number != expected or kept != audit_hash(previous, number, event_id, moment, user,
                                                    action, detail):
            raise Broken(f'the audit is wrong at entry {expected}')
        previous = kept
    end = database.execute('SELECT entries, hash FROM audit_end').fetchall()
    if end != [(expected, previous)]:
        raise Broken(f'the audit has {expected} entries, and beside it stands {end}')
    return expected


def check_change_journal(path):
    """Whether the journal of changes ends with a whole piece."""
    journal = content(path) if os.path.exists(path) else b''
    at = 0
    while at < len(journal):
        head = journal[at:at + 8]
        if len(head) < 8:
            return False
        size, check = struct.unpack('<II', head)
        piece = journal[at + 8:at + 8 + size]
        if len(piece) < size or zlib.crc32(piece) != check:
            return False
        at += 8 + size
    return True
