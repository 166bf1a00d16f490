"""All that is measured: by which command, how each figure is found, what its limit is and what it is to reach.

A limit is what the machine itself needs for the least of the work: None where nothing less can be named."""

from figure_table import Bench, Row, behind, case, growth, most, word

MB = 1e6
KB = 1e3
BIN = 'build/release/bin'
LOAD = f'ulimit -n 8192; {BIN}/server_load {BIN}/lineweir-server {BIN}/lineweir-admin'
LOAD_PROGRAMS = 'server_load lineweir-server lineweir-admin'
# Of one screen's picture, of which sixty come a second.
FRAME = 16.7e-3
# A screen that is drawn anew by a hand at the window's edge: the pace of its moves.
DRAG = 20e-3
# What three bytes take on a serial line of 1,200 bits a second, a report of one line.
REPORT = 25e-3
# The clocks tick each tenth of a second, and leave ninety-nine parts of it to the rest.
TICK = 0.1 / 100
# A megabyte of what a thousand seats send at most, 32 KB a second each.
SEATS_MEGABYTE = 1 / 32


def server_rows(how):
    server, relay = r'server\s', r'relay\s'
    rows = [
        Row(f'A change from the exchange to the last seat of its group, {how}, 99 of 100', 'time',
            word(server, 6, 1e-3), word(relay, 6, 1e-3), 10e-3),
        Row(f'A change to the last seat, {how}, median', 'time', word(server, 5, 1e-3), word(relay, 5, 1e-3)),
        Row(f'The server\'s processor at that load, {how}', 'share', word(server, 7, 0.01),
            word(relay, 7, 0.01), 0.5),
        Row(f'The server\'s memory, {how}', 'memory', word(server, 9, MB), word(relay, 9, MB), 100 * MB),
        Row(f'All seats log in at once, {how}, until each has a whole screen', 'time', word(server, 4), None, 15)]
    if how == 'TLS':
        rows.append(Row('Memory of a seat, TLS', 'memory', growth(server, 9, 1, MB), None, 80 * KB))
    return rows


def window_work_row(what, name, label, goal):
    return Row(what, 'time', behind(rf'{name}, console', label, 1e-3), behind(rf'{name}, bare', label, 1e-3), goal)


def call_log_row(what, name, counter=None, goal=None, limit=None):
    if counter is None:
        return Row(what, 'time', case(name), limit, goal)
    return Row(what, 'time', lambda text: case(name, counter)(text) * 1e-3, limit, goal)


SERIAL = [Row('A report of the box through buffer and console', 'time',
              case('items_through_console/items:10', each=10), case('ten_items_through_memchr', each=10), REPORT / 100),
          Row('A megabyte of garbage from the box', 'time', case('megabyte_of_garbage'),
              case('megabyte_through_memchr')),
          Row('The clocks of 20 ringing lines, each tenth of a second', 'time',
              case('Timer1_tick/ringing:20'), None, TICK),
          Row('The blink of 20 ringing lines', 'time', case('Timer5_tick/ringing:20'), None, TICK),
          Row('A console\'s start without a window', 'time', case('console_start'))]

BENCHES = [
    Bench('window', 'scripts/measure-window', quick='scripts/measure-window 3 5', display=True, rows=[
        Row('Start of the console until its first paint', 'time', behind('first paint', 'console', 1e-3),
            behind('first paint', 'bare', 1e-3), 0.5),
        Row('Memory of the console', 'memory', behind('resident memory', 'console', MB),
            behind('resident memory', 'bare', MB), 100 * MB),
        Row('Processor of the console, 20 lines ringing, both clocks', 'share',
            behind('processor time', r's, ', 0.01), None, 0.05),
        window_work_row('A change until it is painted, median', 'change to paint', 'median', FRAME),
        window_work_row('A change until it is painted, 99 of 100', 'change to paint', '99 of 100', FRAME),
        window_work_row('A resize in a storm, median', 'a resize in a storm', 'median', DRAG),
        window_work_row('A resize in a storm, 99 of 100', 'a resize in a storm', '99 of 100', None)]),
    Bench('links', f'{BIN}/link_ways', quick=f'{BIN}/link_ways 2', display=True, targets='link_ways', rows=[
        Row('A command by the socket there and back, median', 'time', behind('socket.*back', 'median', 1e-6),
            behind('bare socket', 'median', 1e-6), 1e-3),
        Row('A command by remote objects there and back, median', 'time',
            behind('remote objects.*back', 'median', 1e-6), behind('bare socket', 'median', 1e-6), 1e-3),
        Row('1,000 states a second by the socket', 'share', behind(r'socket.*states', 'second:', 0.01), None, 0.5),
        Row('1,000 states a second by remote objects', 'share',
            behind(r'remote objects.*states', 'second:', 0.01), None, 0.5)]),
    Bench('serial', f'{BIN}/serial_stream_bench --benchmark_min_time=0.2', runs=3, targets='serial_stream_bench',
          rows=SERIAL),
    Bench('packets', f'{BIN}/server_packet_bench --benchmark_min_time=0.2', runs=3,
          targets='server_packet_bench', rows=[
        Row('A megabyte of small frames', 'time', case('small_frames'), case('memchr_over_small_frames'),
            SEATS_MEGABYTE),
        Row('A megabyte of small frames, byte by byte', 'time',
            case('small_frames_byte_by_byte'), case('memchr_over_small_frames')),
        Row('A megabyte of frames of 32 KB', 'time', case('frames_of_32_kilobytes'),
            case('memchr_over_frames_of_32_kilobytes'), SEATS_MEGABYTE),
        Row('A megabyte that doesn\'t end, 100 bytes at a time', 'time',
            case('megabyte_without_end_100_bytes_at_a_time'), case('memchr_over_megabyte_without_end'),
            SEATS_MEGABYTE),
        Row('Each megabyte of 16 that don\'t end', 'time',
            case('megabytes_without_end_100_bytes_at_a_time/16', each=16),
            case('memchr_over_megabyte_without_end'), SEATS_MEGABYTE)]),
    Bench('clocks', f'{BIN}/clock_tick_bench --benchmark_filter=timed_show/20', targets='clock_tick_bench', rows=[
        Row('A tick of the clocks of 20 lines, over a week', 'time', case('week_of_a_timed_show/20'), None, TICK),
        Row('Allocations in that week', 'count', case('week_of_a_timed_show/20', 'allocations'), None, 0)]),
    Bench('call-log', f'{BIN}/call_log_bench --benchmark_filter=-importing', targets='call_log_bench',
          quick=f'{BIN}/call_log_bench --benchmark_filter=-importing --benchmark_min_time=0.01', rows=[
        call_log_row('A call into a log of a million', 'logging_a_call', limit=case('bare_insert_of_a_call')),
        call_log_row('Opening the log until the first calls show', 'opening_until_the_first_calls_show',
                     goal=0.1),
        call_log_row('Opening the log as a whole', 'opening_as_a_whole'),
        call_log_row('Opening, the longest slice', 'opening_as_a_whole', 'longest_slice_ms', FRAME),
        call_log_row('Searching for a word until the first calls show', 'search/first_calls', goal=0.1),
        call_log_row('Searching for what nobody said', 'search/none'),
        call_log_row('Searching, the longest slice', 'search/none', 'longest_slice_ms', FRAME),
        call_log_row('A page of 40 calls anywhere', 'scrolling_a_page_of_40_calls', goal=FRAME),
        call_log_row('Sorting by name', 'sorting/column:0'),
        call_log_row('Sorting, the longest slice', 'sorting/column:0', 'longest_slice_ms', FRAME),
        call_log_row('A caller\'s memory', 'callers_memory'),
        call_log_row('A caller\'s memory, the longest', 'callers_memory', 'longest_ms', FRAME),
        call_log_row('Following a new call', 'following_a_new_call', goal=FRAME)]),
    Bench('writes', f'{BIN}/durable_writes_bench', runs=3, targets='durable_writes_bench', rows=[
        Row('A call into the server\'s store', 'time', case('a_call_into_the_store'), case('bare_insert_of_a_call')),
        Row('A call into the journal\'s file', 'time', case('a_call_into_the_journals_file'),
            case('bare_append/and_sync'), 5e-3),
        Row('The window held by putting a call into the journal', 'time', case('putting_a_call_into_the_journal'),
            case('bare_append/alone'), 1e-3)]),
    Bench('server', f'{LOAD} 1000 50 40 10 plain', quick=f'{LOAD} 100 5 40 2 plain', targets=LOAD_PROGRAMS,
          rows=server_rows('plain')),
    Bench('server-tls', f'{LOAD} 1000 50 40 10 tls', quick=f'{LOAD} 100 5 40 2 tls', targets=LOAD_PROGRAMS,
          rows=server_rows('TLS')),
    Bench('spread', f'ulimit -n 8192; bench/spread_load.sh {BIN}', targets=LOAD_PROGRAMS,
          quick=f'ulimit -n 8192; bench/spread_load.sh {BIN} 100 5 4 2', rows=[
        Row('Four servers, one database, a change to the last seat at the slowest, 99 of 100', 'time',
            most(r'server\s', 6, 1e-3)),
        Row('Four servers, until each seat has a whole screen', 'time', most(r'server\s', 4)),
        Row('Four servers, processor of the busiest', 'share', most(r'server\s', 7, 0.01)),
        Row('Four servers, memory of the greatest', 'memory', most(r'server\s', 9, MB))]),
    Bench('takeover', f'{BIN}/takeover 20', quick=f'{BIN}/takeover 2', targets='takeover lineweir-server', rows=[
        Row(f'Nobody serves when the leading server is {fault}, 99 of 100', 'time', word(fault + r'\s', place, 1e-3),
            None, 3)
        for fault, place in [('killed', 4), ('stopped', 4), ('cut off', 5), ('not heard', 5), ('not hearing', 5)]]),
    Bench('second', 'bench/second_time.sh', display=True, rows=[
        Row('`./run` the second time, until its window is painted', 'time', word('run', 1), None, 10),
        Row('`./test` the second time, until the first test begins', 'time', word('test', 1), None, 10)]),
    Bench('build', 'bench/cold_build.sh', quick='bench/cold_build.sh lineweir_wire', rows=[
        Row('Building the programs from nothing, without a cache', 'time', word('took', 1), None, 360)])]
