"""The kills of a console, and what must be there behind each."""

import collections
import json
import os
import select
import subprocess
import time

import whole_files
from whole_files import Broken

# Of the lives some end while the program starts.
SHORT_LIVES = 0.25
MOST_NUMBERS_OF_A_LIFE = 1000
DRAFT_MESSAGE = 'Caller data was typed and not saved when Lineweir ended: line 10 ('


class Told:
    """What the console has said that it has done, and that it was about to do."""

    def __init__(self):
        self.done, self.begun = None, None

    def does(self, what):
        self.begun = what

    def did(self, what):
        self.done, self.begun = what, None

    def fits(self, found):
        return found == self.done or (self.begun is not None and found == self.begun)

    def settle(self, found):
        self.done, self.begun = found, None


class ConsoleKills:
    def __init__(self, programs, folder, dice):
        self.program, self.folder, self.dice = os.path.join(programs, 'endurance_console'), folder, dice
        self.faults, self.number, self.kill = [], 0, 0
        self.counts = collections.Counter()
        self.settings, self.plan, self.hot, self.draft = Told(), Told(), Told(), Told()
        self.hot.did([])
        self.saved = set()
        self.found = None

    def path(self, name):
        return os.path.join(self.folder, name)

    def fault(self, what):
        self.faults.append(f'console, kill {self.kill}: {what}')

    def report(self):
        return f'console: {self.kill} kills, {len(self.faults)} faults; ' + ', '.join(
            f'{count} {what}' for what, count in sorted(self.counts.items()))

    def live_and_die(self, kill):
        self.kill = kill
        process = self.start()
        short = self.dice.random() < SHORT_LIVES
        length = self.dice.uniform(0, 0.15) if short else self.dice.uniform(0.1, 1.6)
        self.listen(process, time.monotonic() + length)
        process.kill()
        self.listen(process, None)
        if process.wait() != -9:
            self.fault(f'the console ended by itself with {process.returncode}')
        process.stdout.close()
        self.look()

    def last_life(self):
        """What waits comes into the log, and nothing is left beside it."""
        self.kill += 1
        process = self.start('end')
        self.listen(process, time.monotonic() + 30)
        if process.wait() != 0:
            self.fault(f'the last console ended with {process.returncode}')
        process.stdout.close()
        self.look()
        missing = self.saved - set(whole_files.logged_callers(self.path('calls.mdb')))
        if missing:
            self.fault(f'{len(missing)} calls never came into the log: {sorted(missing)[:5]}')
        if left := [name for name in os.listdir(self.folder) if name.endswith('.journal')]:
            self.fault(f'a journal is left: {left}')

    def start(self, *words):
        self.found = None
        # Some of the last life's numbers may have been used and never told.
        self.number += MOST_NUMBERS_OF_A_LIFE
        with open(self.path('errors.txt'), 'ab') as errors:
            return subprocess.Popen([self.program, str(self.dice.randrange(1 << 30)),
                                     str(self.number), *words], cwd=self.folder,
                                    stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=errors)

    def listen(self, process, until):
        """Takes what is said until then, or until the end of it."""
        rest = b''
        while True:
            wait = None if until is None else max(0.0, until - time.monotonic())
            if not select.select([process.stdout], [], [], wait)[0]:
                break
            data = os.read(process.stdout.fileno(), 65536)
            if not data:
                break
            *lines, rest = (rest + data).split(b'\n')
            for line in lines:
                self.take(json.loads(line))
        if rest:
            self.fault(f'a line was said by half: {rest!r}')

    def take(self, said):
        step, what = ('does', said['does']) if 'does' in said else ('did', said['did'])
        if 'number' in said:
            self.number = max(self.number, said['number'])
        if step == 'did':
            self.counts[what] += 1
        if what == 'start':
            self.found = said
            self.compare_found()
        elif what == 'save':
            self.saved.add(f"Caller {said['number']}")
        elif what == 'saved draft':
            self.saved.add(said['name'])
            self.draft.did(None)
        elif what == 'hot':
            getattr(self.hot, step)(said['list'])
        elif what in ('settings', 'plan', 'draft'):
            getattr(getattr(self, what), step)(said['number'])

    def look(self):
        """What lies in the folder while no console runs."""
        try:
            self.look_at('settings', self.settings,
                         whole_files.settings_number(self.path('Writ.inf')))
            self.look_at('plan', self.plan, whole_files.plan_number(self.path('NoName.txt')))
            self.look_at('hot list', self.hot, whole_files.hot_list(self.path('hot.lwb')))
            self.look_at_log()
        except Broken as broken:
            self.fault(str(broken))
        # As src/platform/disk/replace_file.h says; each is of one kill.
        self.counts['unfinished files beside a whole one'] = sum(
            name.endswith('.new') for name in os.listdir(self.folder))

    def look_at(self, what, told, found):
        if not told.fits(found):
            self.fault(f'the {what}: found {found}, done was {told.done}, begun {told.begun}')
        if told.begun is not None:
            self.counts[f'killed while writing the {what}'] += 1
        told.settle(found)

    def look_at_log(self):
        logged = whole_files.logged_callers(self.path('calls.mdb'))
        twice = [name for name, times in collections.Counter(logged).items() if times > 1]
        # What was killed between the log and the file of drafts is offered to the user again, who
        # here saves it again.
        self.counts['drafts saved again behind a kill'] = sum(name.startswith('Draft') for name in twice)
        if calls := [name for name in twice if name.startswith('Caller')]:
            self.fault(f'logged twice: {calls[:5]}')
        waiting, cut = whole_files.waiting_callers(self.folder)
        on_lines = whole_files.unlogged_callers(self.folder)
        if missing := self.saved - set(logged) - waiting - on_lines:
            self.fault(f'{len(missing)} saved callers are nowhere: {sorted(missing)[:5]}')
        self.counts['calls that waited at a kill'] += len((waiting & self.saved) - set(logged))
        self.counts['callers on their lines at a kill'] += len((on_lines & self.saved) - set(logged) - waiting)
        self.counts['journals with a cut end'] += cut

    def kept_callers(self):
        """Of a console that runs: what waits may come into the log meanwhile, and not go back."""
        waiting, _ = whole_files.waiting_callers(self.folder)
        return waiting | set(whole_files.logged_callers(self.path('calls.mdb')))

    def compare_found(self):
        """The console reads what somebody else has read."""
        found = self.found
        plans = set(found['plan'])
        plan = '' if self.plan.done is None else f'Plan {self.plan.done}'
        if plans != {plan}:
            self.fault(f'the console found the plan {plans}, not {plan!r}')
        if found['hot'] != self.hot.done:
            self.fault(f"the console found the hot list {found['hot']}, not {self.hot.done}")
        if self.settings.done is not None:
            number = self.settings.done
            expected = (f'Operator {number}', number % 3000, f'host-{number}')
            if (found['operator'], found['warning'], found['host']) != expected:
                self.fault(f'the console found the settings {found}, not {expected}')
        self.compare_messages(found['messages'])

    def compare_messages(self, messages):
        drafts = [message for message in messages if message.startswith(DRAFT_MESSAGE)]
        if others := [message for message in messages if message not in drafts]:
            self.fault(f'the console said at its start: {others}')
        names = {message[len(DRAFT_MESSAGE):].partition(')')[0] for message in drafts}
        kept = self.draft.done is not None and f'Draft {self.draft.done}'
        begun = self.draft.begun is not None and f'Draft {self.draft.begun}'
        if kept and kept not in names and not (begun and begun in names) \
                and kept not in self.kept_callers():
            self.fault(f'the draft {kept} is lost: {messages}')
        if names - {kept, begun}:
            self.counts['drafts of a save that was killed'] += 1
