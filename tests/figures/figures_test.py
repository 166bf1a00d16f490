#!/usr/bin/env python3
"""Figures are found in what the benches print, and told as they are: figures_test.py ROOT"""

import sys
import unittest
from pathlib import Path

root = Path(sys.argv.pop(1))
sys.path.insert(0, str(root / "bench"))
import figure_rows  # noqa: E402
from figure_table import (HEAD, NotFound, Row, behind, case, failed_row, growth, most, shown,  # noqa: E402
                          table_row, word)

LOAD = """          seats groups frames/s screens s    p50 ms    p99 ms  processor     memory
relay        10       1      400       0.0      0.05      0.11      0.2 %     3.4 MB
server       10       1      420       0.2      0.10      0.31      0.8 %    12.0 MB
relay      1000      50    40000       0.0      0.30      0.90     12.0 %     3.5 MB
server     1000      50    40000       9.5      0.70      4.20     40.0 %    81.5 MB
"""
CASES = """a million calls stored in one step: 12.1 s, 214 MB
-----------------------------------------------------------------------
sorting/column:0               412 ms          400 ms            2 longest_slice_ms=8.25
small_frames_byte_by_byte     5000 us         4990 us          140 bytes_per_second=200M/s
small_frames               2000000 ns      1990000 ns          350 bytes_per_second=500M/s
of_ten/items:1                 1.5 us          1.5 us       100000
of_ten/items:10                 12 us           12 us        60000 allocations=0
"""


class Reading(unittest.TestCase):
    def test_the_time_of_a_case_whatever_its_unit(self):
        self.assertAlmostEqual(case("small_frames")(CASES), 2e-3)
        self.assertAlmostEqual(case("small_frames_byte_by_byte")(CASES), 5e-3)

    def test_a_case_is_not_taken_for_one_whose_name_begins_so(self):
        self.assertAlmostEqual(case("of_ten/items:1")(CASES), 1.5e-6)
        self.assertAlmostEqual(case("of_ten/items:10", each=10)(CASES), 1.2e-6)

    def test_counters_of_a_case(self):
        self.assertEqual(case("sorting/column:0", "longest_slice_ms")(CASES), 8.25)
        self.assertEqual(case("of_ten/items:10", "allocations")(CASES), 0)
        self.assertAlmostEqual(case("a", "kept")("a 1 ns 1 ns 7 kept=345.2m\n"), 0.3452)

    def test_the_greatest_load_is_the_one_that_counts(self):
        self.assertAlmostEqual(word(r"server\s", 6, 1e-3)(LOAD), 4.2e-3)
        self.assertAlmostEqual(growth(r"server\s", 9, 1, 1e6)(LOAD), 69.5e6 / 990)

    def test_the_greatest_of_several_servers(self):
        self.assertEqual(most(r"server\s", 9)(LOAD), 81.5)

    def test_the_number_behind_a_label(self):
        self.assertAlmostEqual(behind("first paint", "console", 1e-3)(
            "first paint, ms:     bare   23.0  console   61.5  ratio 2.67\n"), 0.0615)

    def test_what_is_not_printed_is_not_found(self):
        for read in [case("large_frames"), case("small_frames", "seconds"), word("client", 1), most("client", 1)]:
            with self.assertRaises(NotFound):
                read(CASES)


class Table(unittest.TestCase):
    row = Row("A change", "time", word(r"server\s", 6, 1e-3), word(r"relay\s", 6, 1e-3), 10e-3)

    def test_figures_stand_with_three_digits_in_the_unit_that_fits(self):
        for kind, value, text in [("time", 0.0123, "12.3 ms"), ("time", 4.2e-7, "420 ns"), ("time", 95, "1.58 min"),
                                  ("time", 0, "0 ns"), ("memory", 25e3, "25 KB"), ("memory", 81.5e6, "81.5 MB"),
                                  ("share", 0.5, "50 % of a core"), ("share", 0.0058, "0.58 % of a core"),
                                  ("count", 0, "0"), ("time", 2.5e-9, "2.50 ns"), ("time", None, "–")]:
            self.assertEqual(shown(kind, value), text)

    def test_a_figure_within_its_goal_holds(self):
        self.assertEqual(table_row(self.row, [LOAD]),
                         "| A change | 4.20 ms | 900 µs | 4.67 | ≤ 10 ms | holds |")

    def test_a_figure_beyond_its_goal_says_so_plainly(self):
        slow = LOAD.replace("4.20", "10.01")
        self.assertIn("| ≤ 10 ms | **missed** |", table_row(self.row, [slow]))

    def test_the_median_of_the_runs_counts(self):
        runs = [LOAD.replace("4.20", text) for text in ["90.0", "4.30", "4.10"]]
        self.assertIn("| 4.30 ms |", table_row(self.row, runs))

    def test_a_figure_without_a_goal_is_not_said_to_hold(self):
        row = Row("A change", "time", word(r"server\s", 6, 1e-3))
        self.assertEqual(table_row(row, [LOAD]), "| A change | 4.20 ms | – | – | – | no goal |")

    def test_a_figure_that_was_not_printed_is_a_row_all_the_same(self):
        self.assertIn("didn't run: it printed no line", table_row(self.row, ["nothing"]))
        self.assertEqual(failed_row(self.row, "a\nb | c"),
                         "| A change | – | – | – | ≤ 10 ms | didn't run: a b \\| c |")

    def test_every_row_has_as_many_columns_as_the_head(self):
        columns = HEAD[0].count("|")
        for line in [HEAD[1], table_row(self.row, [LOAD]), failed_row(self.row, "why")]:
            self.assertEqual(line.count("|"), columns)


class Recorded(unittest.TestCase):
    """What each bench once printed: a bench whose words change needs new ones here, and new rows."""

    def test_every_row_of_every_bench_is_found_in_what_it_prints(self):
        for bench in figure_rows.BENCHES:
            output = (root / "tests/figures/recorded" / f"{bench.name}.txt").read_text()
            for row in bench.rows:
                with self.subTest(bench=bench.name, row=row.what):
                    self.assertGreaterEqual(row.figure(output), 0)
                    if row.limit:
                        self.assertGreaterEqual(row.limit(output), 0)

    def test_no_two_rows_tell_the_same(self):
        names = [row.what for bench in figure_rows.BENCHES for row in bench.rows]
        self.assertEqual(len(names), len(set(names)))


unittest.main()
