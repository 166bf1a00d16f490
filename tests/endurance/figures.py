"""What a process uses, and whether that stays the same: readings, their means, and their slope."""

import os

TICKS = os.sysconf('SC_CLK_TCK')


class Reading:
    """What a process holds and has used at one moment; the processor's seconds are all so far."""

    def __init__(self, process):
        with open(f'/proc/{process}/status', encoding='ascii', errors='replace') as status:
            fields = dict(line.split(':', 1) for line in status)
        self.memory = int(fields['VmRSS'].split()[0]) / 1024
        self.threads = int(fields['Threads'])
        self.handles = len(os.listdir(f'/proc/{process}/fd'))
        with open(f'/proc/{process}/stat', encoding='ascii', errors='replace') as stat:
            words = stat.read().rpartition(')')[2].split()
        self.processor = (int(words[11]) + int(words[12])) / TICKS


def sum_of(readings):
    """What several processes hold and have used together."""
    whole = readings[0]
    for reading in readings[1:]:
        whole.memory += reading.memory
        whole.threads += reading.threads
        whole.handles += reading.handles
        whole.processor += reading.processor
    return whole


def mean(values):
    return sum(values) / len(values)


def slope(places, values):
    """The rise of the line of least squares, for each step of 1 in places."""
    middle, height = mean(places), mean(values)
    spread = sum((place - middle) ** 2 for place in places)
    if spread == 0:
        return 0.0
    return sum((place - middle) * (value - height) for place, value in zip(places, values)) / spread


class Course:
    """Readings of one process at even moments, as memory, handles, and processor time between them,
    of which a rise below the least one is noise."""

    def __init__(self, name, unit='%', least_rise=1.0):
        self.name, self.unit, self.least_rise = name, unit, least_rise
        self.hours, self.memory, self.handles, self.processor = [], [], [], []

    def add(self, hours, memory, handles, share):
        self.hours.append(hours)
        self.memory.append(memory)
        self.handles.append(handles)
        self.processor.append(share)

    def behind_warming_up(self, values):
        """Without the first sixth, in which caches and heaps fill."""
        return values[len(values) // 6:]

    def slopes(self):
        """A rise an hour: of megabytes, of handles, of the processor's time."""
        hours = self.behind_warming_up(self.hours)
        return tuple(slope(hours, self.behind_warming_up(values))
                     for values in (self.memory, self.handles, self.processor))

    def means(self, parts):
        """Each part's means of memory, handles and share."""
        count = len(self.hours)
        for part in range(parts):
            begin, end = count * part // parts, count * (part + 1) // parts
            if begin < end:
                yield part, *(mean(values[begin:end])
                              for values in (self.memory, self.handles, self.processor))

    def rising(self):
        """What isn't flat, in words; what counts as flat stands in docs/testing.md."""
        length = self.hours[-1] - self.hours[len(self.hours) // 6]
        risen = [rise * length for rise in self.slopes()]
        found = []
        memory = mean(self.behind_warming_up(self.memory))
        if risen[0] > max(1.0, memory / 50):
            found.append(f'memory of the {self.name} rises by {risen[0]:.2f} MB in {length:.2f} h')
        if risen[1] > 0.5:
            found.append(f'handles of the {self.name} rise by {risen[1]:.2f} in {length:.2f} h')
        share = mean(self.behind_warming_up(self.processor))
        if risen[2] > max(self.least_rise, share / 5):
            found.append(f'processor time of the {self.name} rises by {risen[2]:.2f} {self.unit} '
                         f'in {length:.2f} h')
        return found


def print_courses(courses, parts=6):
    print(f'{"":10} {"part":>5} {"memory MB":>10} {"handles":>8} {"processor %":>12}')
    for course in courses:
        for part, memory, handles, share in course.means(parts):
            print(f'{course.name:10} {part + 1:5} {memory:10.2f} {handles:8.1f} {share:12.2f}')
        rises = course.slopes()
        print(f'{course.name:10} {"an h":>5} {rises[0]:+10.3f} {rises[1]:+8.3f} {rises[2]:+12.3f}')
