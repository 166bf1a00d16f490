#!/usr/bin/python3
"""A week of virtual time with 600 calls an hour on every way to the studio.

    week.py PROGRAMS [HOURS [WAY…]]

Two ways at a time. Prints for each a table by day and the slopes; ends with 1 if anything has risen,
or was wrong.
"""

import concurrent.futures
import json
import os
import subprocess
import sys
import time

from figures import Course, mean

WAYS = ('box', 'socket', 'objects', 'server')
HOURS_OF_A_DAY = 24


def play(program, way, hours):
    """What the program has told of each hour, and how long all took."""
    began = time.monotonic()
    # Its log lies in memory, as nothing is learnt from the disk's waits.
    place = {**os.environ, 'TMPDIR': '/dev/shm'} if os.path.isdir('/dev/shm') else None
    ended = subprocess.run([program, way, str(hours)], stdout=subprocess.PIPE, text=True,
                           env=place, check=False)
    told = [json.loads(line) for line in ended.stdout.splitlines()]
    return way, told, ended.returncode, time.monotonic() - began


def print_days(way, told):
    print(f'{way:8} {"day":>4} {"memory MB":>10} {"handles":>8} {"s an hour":>10} {"calls":>7} '
          f'{"logged":>7} {"faults":>7}')
    for first in range(0, len(told), HOURS_OF_A_DAY):
        day = told[first:first + HOURS_OF_A_DAY]
        print(f'{way:8} {first // HOURS_OF_A_DAY + 1:4} {mean([h["memory"] for h in day]):10.2f} '
              f'{mean([h["handles"] for h in day]):8.1f} {mean([h["processor"] for h in day]):10.3f} '
              f'{sum(h["calls"] for h in day):7} {sum(h["logged"] for h in day):7} '
              f'{sum(h["fault_count"] for h in day):7}')


def course_of(way, told):
    course = Course(f'console at the {way}', 's an hour', 0.2)
    for hour in told:
        course.add(hour['hour'], hour['memory'], hour['handles'], hour['processor'])
    return course


def main():
    program = os.path.join(os.path.abspath(sys.argv[1]), 'endurance_week')
    hours = int(sys.argv[2]) if len(sys.argv) > 2 else 7 * HOURS_OF_A_DAY
    ways = sys.argv[3:] or WAYS
    faults = []
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        runs = [pool.submit(play, program, way, hours) for way in ways]
        for run in runs:
            way, told, status, seconds = run.result()
            if status not in (0, 1) or len(told) != hours:
                faults.append(f'{way}: ended with {status} behind {len(told)} hours')
            if not told:
                continue
            print_days(way, told)
            course = course_of(way, told)
            rises = course.slopes()
            print(f'{way:8} {"an h":>4} {rises[0]:+10.4f} {rises[1]:+8.4f} {rises[2]:+10.5f}   '
                  f'{sum(hour["calls"] for hour in told)} calls, {told[-1]["without_line"]} found '
                  f'no free line; {seconds:.0f} s', flush=True)
            faults += course.rising()
            faults += [f'{way}, hour {hour["hour"]}: {what}'
                       for hour in told for what in hour['faults']]
    for what in faults[:20]:
        print('endurance: ' + what)
    print('flat, and all was shown and logged' if not faults else f'{len(faults)} faults')
    sys.exit(1 if faults else 0)


if __name__ == '__main__':
    main()
