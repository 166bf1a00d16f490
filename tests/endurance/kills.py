#!/usr/bin/python3
"""Console and server are killed at random moments, and started again on the same files each time.

    kills.py PROGRAMS [KILLS [SEED [console|server]]]

Half of the kills are of a console at work, half of a server. After each all files are read by whoever
knows only their layout, and by the program that is started next. It ends with 1 if anything was lost
or half written.
"""

import os
import random
import sys
import tempfile
import threading
import time

from console_kills import ConsoleKills
from server_kills import ServerKills

SHOWN_FAULTS = 20


def play(kind, kills, seed, results):
    with tempfile.TemporaryDirectory(prefix='endurance.') as folder:
        run = kind(folder, random.Random(seed))
        began = time.monotonic()
        for number in range(1, kills + 1):
            known = len(run.faults)
            run.live_and_die(number)
            # The first ones while there is time to look.
            for what in run.faults[known:SHOWN_FAULTS]:
                print('endurance: ' + what, flush=True)
            if number % 50 == 0 or number == kills:
                print(f'{time.monotonic() - began:6.0f} s {run.report()}', flush=True)
        known = len(run.faults)
        run.last_life()
        for what in run.faults[known:]:
            print('endurance: ' + what, flush=True)
        results.append(run)


def main():
    programs = os.path.abspath(sys.argv[1])
    kills = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
    seed = int(sys.argv[3]) if len(sys.argv) > 3 and sys.argv[3] != '-' else \
        random.SystemRandom().randrange(1 << 30)
    wanted = sys.argv[4] if len(sys.argv) > 4 else 'console server'
    print(f'seed {seed}', flush=True)
    kinds = []
    if 'console' in wanted:
        kinds.append(lambda folder, dice: ConsoleKills(programs, folder, dice))
    if 'server' in wanted:
        kinds.append(lambda folder, dice: ServerKills(programs, folder, dice))
    runs = []
    threads = [threading.Thread(target=play, args=(kind, kills // len(kinds), seed + place, runs))
               for place, kind in enumerate(kinds)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    faults = sum(len(run.faults) for run in runs)
    for run in runs:
        print('at the end: ' + run.report())
    complete = len(runs) == len(kinds)
    print(f'{faults} faults' if complete else 'a run has not come to its end')
    sys.exit(0 if complete and not faults else 1)


if __name__ == '__main__':
    main()
