"""The table in docs/testing.md of what each fuzzer has done: a row a fuzzer, which also keeps the sums."""

import dataclasses
import re

HEAD = ['| Fuzzer | Reads | Processor | Inputs | Edges of its seeds, and now | Found |', '|---|---|---|---|---|---|']

UNTRIED = '–'


@dataclasses.dataclass
class Row:
    name: str
    reads: str
    seconds: float
    inputs: int
    edges_of_seeds: int
    edges: int
    found: str

    def add(self, seconds, good, inputs, edges_at_start, edges):
        """Edges that the program has no longer aren't known here; the last run tells."""
        self.seconds += seconds
        self.inputs += inputs
        self.edges_of_seeds = self.edges_of_seeds or edges_at_start
        self.edges = edges or self.edges
        if self.found == UNTRIED and good:
            self.found = 'nothing'

    def line(self):
        return (f'| `{self.name}` | {self.reads} | {self.seconds:,.0f} s | {self.inputs:,} '
                f'| {self.edges_of_seeds:,}, {self.edges:,} | {self.found} |')


def row_of(line):
    name, reads, seconds, inputs, edges, found = (cell.strip() for cell in line.strip('| \n').split('|'))
    of_seeds, now = (number(part) for part in edges.split(', '))
    return Row(name.strip('`'), reads, number(seconds.removesuffix(' s')), number(inputs), of_seeds, now, found)


def number(text):
    return int(text.replace(',', ''))


def table_lines(rows):
    return HEAD + [row.line() for row in rows]


def told_by(log):
    """Inputs that were tried, edges behind the seeds, edges at the end; 0 where the log has none."""
    tried = re.findall(r'^stat::number_of_executed_units: (\d+)', log, re.MULTILINE)
    steps = re.findall(r'^#(\d+)\s+(\w+)\s+cov: (\d+)', log, re.MULTILINE)
    seeds = [int(edges) for _, step, edges in steps if step == 'INITED']
    return (int(tried[-1]) if tried else int(steps[-1][0]) if steps else 0, seeds[0] if seeds else 0,
            int(steps[-1][2]) if steps else 0)
