#!/usr/bin/env python3
"""What the fuzzers have done is read and summed as it was meant: fuzz_table_test.py ROOT"""

import sys
import unittest
from pathlib import Path

root = Path(sys.argv.pop(1))
sys.path[:0] = [str(root / 'fuzz'), str(root / 'tests/mutation')]
from fuzz_table import HEAD, row_of, table_lines, told_by  # noqa: E402
from tables import between  # noqa: E402

LOG = """INFO: Loaded 1 modules   (9000 inline 8-bit counters)
#10\tINITED cov: 828 ft: 1500 corp: 9/1032b exec/s: 0 rss: 40Mb
#64\tNEW    cov: 830 ft: 1510 corp: 10/1100b lim: 256 exec/s: 0 rss: 40Mb L: 70/256 MS: 1 ChangeBit-
#70\tREDUCE cov: 830 ft: 1510 corp: 10/1090b lim: 256 exec/s: 0 rss: 40Mb L: 60/256 MS: 1 EraseBytes-
#4096\tpulse  cov: 954 ft: 2264 corp: 400/90Kb lim: 300 exec/s: 512 rss: 60Mb
==12== INFO: libFuzzer: exiting as requested
stat::number_of_executed_units: 68227
stat::average_exec_per_sec:     7580
"""
ROW = '| `csv_fuzz` | CSV files | 3,590 s | 1,068,227 | 828, 954 | nothing |'
NEW = '| `csv_fuzz` | CSV files | 0 s | 0 | 0, 0 | – |'


class Told(unittest.TestCase):
    def test_inputs_and_edges_behind_the_seeds_and_at_the_end(self):
        self.assertEqual(told_by(LOG), (68227, 828, 954))

    def test_of_one_that_found_something_the_inputs_of_its_last_step(self):
        self.assertEqual(told_by(LOG.split('==12==')[0] + '==12==ERROR: AddressSanitizer'), (4096, 828, 954))

    def test_nothing_of_one_that_did_not_begin(self):
        self.assertEqual(told_by('cannot execute'), (0, 0, 0))


class Sums(unittest.TestCase):
    def test_a_row_is_written_as_it_was_read(self):
        for line in (ROW, NEW):
            self.assertEqual(row_of(line).line(), line)

    def test_a_run_is_added_and_the_edges_of_the_first_seeds_stay(self):
        row = row_of(ROW)
        row.add(10.4, True, 1000, 940, 960)
        self.assertEqual(row.line(), '| `csv_fuzz` | CSV files | 3,600 s | 1,069,227 | 828, 960 | nothing |')

    def test_the_first_run_tells_the_edges_of_the_seeds(self):
        row = row_of(NEW)
        row.add(300, True, 1000, 828, 954)
        self.assertEqual(row.line(), '| `csv_fuzz` | CSV files | 300 s | 1,000 | 828, 954 | nothing |')

    def test_what_was_found_is_told_by_people(self):
        row = row_of(NEW)
        row.add(300, False, 1000, 828, 954)
        self.assertEqual(row.found, '–')
        row.found = 'a crash'
        row.add(300, True, 1000, 954, 960)
        self.assertEqual(row.found, 'a crash')

    def test_a_run_that_did_not_begin_leaves_the_edges(self):
        row = row_of(ROW)
        row.add(0, False, 0, 0, 0)
        self.assertEqual(row.line(), ROW)


class Page(unittest.TestCase):
    def test_the_page_has_a_row_for_each_fuzzer(self):
        lines = between(root / 'docs/testing.md', 'fuzz')
        rows = [row_of(line) for line in lines[2:]]
        self.assertEqual(table_lines(rows), lines)
        self.assertEqual(lines[:2], HEAD)
        fuzzers = sorted(path.stem for path in (root / 'fuzz').glob('*_fuzz.cpp'))
        self.assertEqual(sorted(row.name for row in rows), fuzzers)


if __name__ == '__main__':
    unittest.main()
