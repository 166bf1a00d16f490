"""How a figure is read out of what a bench has printed, and how it stands in the table."""

import dataclasses
import re
import statistics
import typing

SECONDS = {'ns': 1e-9, 'us': 1e-6, 'ms': 1e-3, 's': 1}
COUNTS = {'': 1, 'm': 1e-3, 'u': 1e-6, 'n': 1e-9, 'k': 1e3, 'M': 1e6}
UNITS = {'time': [(60, 'min'), (1, 's'), (1e-3, 'ms'), (1e-6, 'µs'), (1e-9, 'ns')],
         'memory': [(1e6, 'MB'), (1e3, 'KB')],
         'share': [(0.01, '% of a core')],
         'count': [(1, '')]}

Reader = typing.Callable[[str], float]


@dataclasses.dataclass
class Row:
    """One figure; time in seconds, memory in bytes, a share as a part of one."""
    what: str
    kind: str
    figure: Reader
    limit: Reader | None = None
    goal: float | None = None


@dataclasses.dataclass
class Bench:
    """What prints the figures of some rows: a command of the shell, in the tree's root."""
    name: str
    command: str
    rows: list[Row]
    targets: str = ''
    quick: str = ''  # the command of a quick run; empty where it is the same
    runs: int = 1
    display: bool = False


class NotFound(Exception):
    pass


def _line(pattern, text, place=0):
    found = [line for line in text.splitlines() if re.match(pattern, line)]
    if not found:
        raise NotFound(f'it printed no line "{pattern}"')
    return found[place]


def case(name, counter=None, each=1):
    """The time of one of the cases of a bench, of `each` things that it does, or a counter of it."""
    pattern = rf'{re.escape(name)}(?:/\S*)?\s+(?P<time>[\d.e+-]+) (?P<unit>ns|us|ms|s)\s'

    def read(text):
        line = _line(pattern, text)
        if counter is None:
            found = re.match(pattern, line)
            return float(found['time']) * SECONDS[found['unit']] / each
        found = re.search(rf'\b{counter}=([\d.e+-]+)([munkM]?)', line)
        if not found:
            raise NotFound(f'{name} printed no {counter}')
        return float(found[1]) * COUNTS[found[2]]
    return read


def word(pattern, place, unit=1, which=-1):
    """A word of the last line that begins so, or of another one, counted from 0."""
    return lambda text: float(_line(pattern, text, which).split()[place]) * unit


def behind(pattern, label, unit=1):
    """The number behind a label in the line that begins so."""
    def read(text):
        found = re.search(rf'{label}\s*([\d.]+)', _line(pattern, text))
        if not found:
            raise NotFound(f'{pattern} has no "{label}"')
        return float(found[1]) * unit
    return read


def most(pattern, place, unit=1):
    """The greatest of a word in all lines that begin so."""
    def read(text):
        _line(pattern, text)
        return max(float(line.split()[place]) for line in text.splitlines() if re.match(pattern, line)) * unit
    return read


def growth(pattern, place, by, unit=1):
    """What the word grows by from the first such line to the last, for one of another word."""
    def read(text):
        first, last = _line(pattern, text, 0).split(), _line(pattern, text, -1).split()
        return (float(last[place]) - float(first[place])) / (float(last[by]) - float(first[by])) * unit
    return read


def shown(kind, value):
    """With three digits and the unit that fits: 1.23 ms."""
    if value is None:
        return '–'
    scale, unit = next((entry for entry in UNITS[kind] if abs(value) >= entry[0]), UNITS[kind][-1])
    number = value / scale
    places = 0 if number == int(number) else max(0, 2 - len(str(int(abs(number)))) + 1)
    return f'{number:,.{places}f} {unit}'.strip()


def state(figure, goal):
    if goal is None:
        return 'no goal'
    return 'holds' if figure <= goal else '**missed**'


def table_row(row, outputs):
    """What is measured, as it stands in the table: medians of all runs."""
    try:
        figure = statistics.median(row.figure(output) for output in outputs)
        limit = row.limit and statistics.median(row.limit(output) for output in outputs)
    except NotFound as missing:
        return failed_row(row, str(missing))
    times = f'{figure / limit:.2f}' if limit else '–'
    goal = '–' if row.goal is None else f'≤ {shown(row.kind, row.goal)}'
    return (f'| {row.what} | {shown(row.kind, figure)} | {shown(row.kind, limit)} | {times} | {goal} '
            f'| {state(figure, row.goal)} |')


def failed_row(row, why):
    goal = '–' if row.goal is None else f'≤ {shown(row.kind, row.goal)}'
    clean = ' '.join(why.split()).replace('|', '\\|')
    return f'| {row.what} | – | – | – | {goal} | didn\'t run: {clean} |'


HEAD = ['| Measured | Figure | Its limit | Times the limit | Goal | State |', '|---|---|---|---|---|---|']
