#!/usr/bin/python3
"""A real hour: a server with TLS and a store, many seats, the real window, and calls all the time.

    hour.py PROGRAMS [SECONDS [SEATS]]

Each minute the memory, the handles and the processor time of window, server and seats are read, and
whether all seats and the window show what the server knows. It ends with 1 if anything has risen, or
anybody has seen something else.
"""

import json
import os
import random
import subprocess
import sys
import tempfile
import time

from figures import Course, Reading, print_courses, sum_of
from studio_server import StudioServer

GROUPS = 4
LINES = 10
WARMING_CALLS = 12000
BETWEEN_CALLS = 6.0
LONGEST_REST = 10.0
LONGEST_ENTRY = 900.0
PASSWORD = 'on air'


class Callers:
    """Who rings in all groups, 600 an hour in each, and who loses patience."""

    def __init__(self, admin, seed):
        self.admin, self.random = admin, random.Random(seed)
        self.next = [time.monotonic() + group * BETWEEN_CALLS / GROUPS for group in range(GROUPS)]
        self.made = self.missed = 0

    def pass_time(self, until):
        while time.monotonic() < until:
            for group in range(GROUPS):
                if time.monotonic() >= self.next[group]:
                    self.next[group] += BETWEEN_CALLS
                    self.ring(group + 1)
            time.sleep(0.05)

    def ring(self, group):
        lines = self.admin.rows('lines', group=group)
        free = [row['number'] for row in lines if row['letter'] == 'F']
        waiting = [row for row in lines if row['letter'] in 'RS']
        # Those who wait longest give up, before all lines are taken.
        if len(free) < 4 and waiting:
            longest = min(waiting, key=lambda row: row['since'])
            self.admin.ask('hangup', group=group, line=longest['number'])
        if not free:
            self.missed += 1
            return
        number = f'555 {self.random.randrange(10000):04}'
        if self.admin.ask('call', group=group, line=self.random.choice(free), number=number)['ok']:
            self.made += 1


# Each program is in a session of its own, as on machines of their own: where a busy machine shares its
# processor out by sessions, two hundred in one would get no more than one program beside it.


class Crowd:
    """Seats without windows, each a process. In each group one screens and one is the host."""

    def __init__(self, program, server, user, seats):
        self.groups = [number % GROUPS + 1 for number in range(seats)]
        self.seats = []
        for number, group in enumerate(self.groups):
            work = ('screener', 'host', 'nobody')[min(number // GROUPS, 2)]
            self.seats.append(subprocess.Popen(
                [program, str(server.port), server.fingerprint(), user, str(group), work,
                 str(number + 1)],
                stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                start_new_session=True))
        self.say(PASSWORD)

    def say(self, word):
        for seat in self.seats:
            seat.stdin.write(word + '\n')
            seat.stdin.flush()

    def told(self):
        """What each seat shows, with its group."""
        self.say('tell')
        return [(group, json.loads(seat.stdout.readline()))
                for group, seat in zip(self.groups, self.seats)]

    def wait_until_in(self):
        latest = time.monotonic() + LONGEST_ENTRY
        while not all(told['in'] for _, told in self.told()):
            if time.monotonic() > latest:
                raise RuntimeError('the seats are not let in')
            time.sleep(1)

    def reading(self):
        return sum_of([Reading(seat.pid) for seat in self.seats])

    def end(self):
        for seat in self.seats:
            seat.stdin.close()
        for seat in self.seats:
            seat.wait(30)
            seat.stdout.close()


class Show:
    """The server, the seats, the window, and what they tell."""

    def __init__(self, programs, folder, seats):
        self.programs, self.folder, self.seats = programs, folder, seats
        self.processes = []
        studio = os.path.join(folder, 'studio')
        os.mkdir(studio)
        self.server = StudioServer(
            os.path.join(programs, 'lineweir-server'), studio, GROUPS,
            '[[fixed_seat]]\naddress = "127.0.0.1"\nuser = "window"\n')
        self.server.start()
        self.admin = self.server.admin()
        for user in ('window', 'seat'):
            answer = self.admin.ask('user add', name=user, template='engineer', password=PASSWORD)
            assert answer['ok'], answer
        self.warm_up()
        self.crowd = Crowd(os.path.join(programs, 'endurance_seat'), self.server, 'seat', seats - 1)
        try:
            self.crowd.wait_until_in()
            self.start_window()
        except BaseException:
            self.end()
            raise

    def warm_up(self):
        """Calls until the store's own cache, of two megabytes, is full."""
        for _ in range(0, WARMING_CALLS, GROUPS * LINES):
            for command in ('call', 'hangup'):
                for place in range(GROUPS * LINES):
                    self.admin.ask(command, group=place // LINES + 1, line=place % LINES + 1)

    def start(self, words, **options):
        process = subprocess.Popen(words, start_new_session=True, **options)
        self.processes.append(process)
        return process

    def start_window(self):
        place = os.path.join(self.folder, 'window')
        os.mkdir(place, 0o700)
        with open(os.path.join(place, 'lineweir.ini'), 'w', encoding='ascii') as file:
            file.write(f'TrustedServer 127.0.0.1:{self.server.port}={self.server.fingerprint()}\n')
        words = ['launch', 'resize 15000 11000', 'click EventClockMenu', 'click TimeClockMenuItem',
                 'answer file "calls.mdb"', 'click DatabasePathMenuItem', 'click StudioMode',
                 'set UserName "window"', 'set Winsock1.RemoteHost "tls:127.0.0.1"',
                 f'set Winsock1.RemotePort {self.server.port}', 'socket open',
                 'click SaveSettingsMenu']
        subprocess.run([os.path.join(self.programs, 'lineweir-driver'), '--dir', place],
                       input='\n'.join(words) + '\n', text=True, check=True,
                       stdout=subprocess.DEVNULL)
        display, given = os.pipe()
        self.start(['Xvfb', '-displayfd', str(given), '-screen', '0', '1280x1024x24',
                    '-nolisten', 'tcp'], pass_fds=[given], stderr=subprocess.DEVNULL)
        os.close(given)
        with open(display, encoding='ascii') as number:
            name = ':' + number.readline().strip()
        self.rows_file = os.path.join(place, 'rows.txt')
        # The memory of a program is read by its own user only where that is wanted.
        surroundings = {**os.environ, 'DISPLAY': name, 'LINEWEIR_LINES': self.rows_file,
                        'LINEWEIR_MEMORY_DUMPS': 'yes', 'XDG_RUNTIME_DIR': place}
        surroundings.pop('QT_QPA_PLATFORM', None)
        self.window = self.start([os.path.join(self.programs, 'lineweir')], cwd=place,
                                 env=surroundings)

    def readings(self):
        return {'window': Reading(self.window.pid), 'server': Reading(self.server.process.pid),
                'seats': self.crowd.reading()}

    def differences(self):
        """What anybody shows that the server doesn't know."""
        truth = {}
        for group in range(1, GROUPS + 1):
            truth[group] = [f"{row['letter']} {row['caller']}".strip()
                            for row in self.admin.rows('lines', group=group)]
        found = []
        for group, told in self.crowd.told():
            if not told['in']:
                found.append(f'a seat of group {group} is not in')
            elif (rows := [row.strip() for row in told['rows']]) != truth[group]:
                found.append(f'a seat of group {group} shows {rows}, the server has {truth[group]}')
        with open(self.rows_file, encoding='utf-8', errors='replace') as file:
            letters = [row.split()[-1] if row.split()[-1] in 'RPOHSNCKLYE' else 'F'
                       for row in file.read().splitlines()[1:]]
        if letters != [row[0] for row in truth[1]]:
            found.append(f'the window shows {letters}, the server has {truth[1]}')
        if len(self.admin.rows('seats')) != self.seats:
            found.append(f"the server knows {len(self.admin.rows('seats'))} seats")
        return found

    def compare(self):
        """All hands rest until nothing is on its way; what differs then."""
        self.crowd.say('rest')
        latest = time.monotonic() + LONGEST_REST
        time.sleep(1)
        while (found := self.differences()) and time.monotonic() < latest:
            time.sleep(0.5)
        self.crowd.say('work')
        return found

    def end_all_calls(self):
        """Whoever is on a line hangs up; how many of the callers' calls the store has then. A line that the host
        took just when its caller had gone is a call too, to which nobody has a number."""
        self.crowd.say('rest')
        for group in range(1, GROUPS + 1):
            for row in self.admin.rows('lines', group=group):
                if row['letter'] != 'F':
                    self.admin.ask('hangup', group=group, line=row['number'])
        time.sleep(3)
        return sum(row['number'].startswith('555 ') for row in self.admin.rows('calls'))

    def end(self):
        self.crowd.end()
        for process in reversed(self.processes):
            process.terminate()
        for process in reversed(self.processes):
            process.wait(30)
        return self.server.end()


def measure(show, seconds):
    """The courses of all three, and what was seen otherwise."""
    courses = {name: Course(name) for name in show.readings()}
    callers = Callers(show.admin, seed=1)
    interval = min(60.0, seconds / 12)
    faults = []
    began = time.monotonic()
    callers.pass_time(began + min(5.0, interval))
    looked, before = time.monotonic(), show.readings()
    while time.monotonic() - began < seconds:
        callers.pass_time(looked + interval)
        now, present = time.monotonic(), show.readings()
        for name, course in courses.items():
            reading = present[name]
            share = (reading.processor - before[name].processor) / (now - looked) * 100
            course.add((now - began) / 3600, reading.memory, reading.handles, share)
        looked, before = now, present
        found = show.compare()
        faults += [f'at {now - began:.0f} s: {what}' for what in found]
        print(f'{now - began:6.0f} s ' + '  '.join(
            f'{name} {course.memory[-1]:.1f} MB {course.handles[-1]} handles '
            f'{course.processor[-1]:.1f} %' for name, course in courses.items()) +
            f'  calls {callers.made}' + (f'  {len(found)} differ' if found else ''), flush=True)
    return courses, faults, callers


def main():
    programs = os.path.abspath(sys.argv[1])
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 3600.0
    seats = int(sys.argv[3]) if len(sys.argv) > 3 else 200
    with tempfile.TemporaryDirectory(prefix='endurance.') as folder:
        show = Show(programs, folder, seats)
        print(f'{seats} seats are in', flush=True)
        try:
            courses, faults, callers = measure(show, seconds)
            kept = show.end_all_calls()
        finally:
            status = show.end()
    print(f'{callers.made} calls in {GROUPS} groups, {callers.missed} found no free line; '
          f'the store has {kept}; the server ended with {status}')
    if kept != callers.made:
        faults.append(f'{callers.made} calls were made, the store has {kept}')
    print_courses(courses.values())
    rising = [what for course in courses.values() for what in course.rising()]
    for what in rising + faults:
        print('endurance: ' + what)
    print('flat' if not rising else 'not flat', '- all see the same' if not faults else '')
    sys.exit(1 if rising or faults else 0)


if __name__ == '__main__':
    main()
