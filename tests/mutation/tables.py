"""Tells what became of the mutants: a table a folder, and every survivor by itself."""

import re


def equivalents(path):
    """Mutants that change nothing that can be seen: (file, line's text, mutant)."""
    known, place = set(), None
    for line in path.read_text().splitlines() if path.exists() else []:
        head = re.fullmatch(r'(\w+/\w+\.cpp): (.*)', line)
        if head:
            place = (head[1], ' '.join(head[2].split()))
        elif line.startswith('  - '):
            known.add((*place, line[4:].strip()))
    return known


def tell(chosen, root, work, options):
    known = equivalents(root / 'tests/mutation/equivalent.txt')
    used, rows, survivors = set(), {}, []
    for name, mutant in chosen:
        row = rows.setdefault(name.split('/')[0], [0, 0, 0, 0])
        line = ' '.join((root / 'src' / name).read_text().split('\n')[mutant['line'] - 1].split())
        key = (name, line, mutant['says'])
        row[0] += 1
        if mutant['killed']:
            row[1] += 1
        elif key in known:
            row[2] += 1
            used.add(key)
        else:
            row[3] += 1
            survivors.append(f'{name}: {line}\n  - {mutant["says"]}\n'
                             f'  # line {mutant["line"]}, {mutant["function"]}, passed by {mutant["cases"]}\n')
    (work / 'survivors.txt').write_text('\n'.join(survivors))
    table = ['| Folder | Mutants | Killed | Change nothing | Survive | Killed of those that change something |',
             '|---|---|---|---|---|---|']
    for folder, (all_, killed, same, alive) in rows.items():
        share = 100 * killed / max(1, all_ - same)
        table.append(f'| `{folder}` | {all_} | {killed} | {same} | {alive} | {share:.1f} % |')
    print('\n'.join(table))
    if options.write:
        path = root / 'docs/testing.md'
        kept = {line.split('`')[1]: line for line in between(path, 'mutation') if line.startswith('| `')}
        kept |= {line.split('`')[1]: line for line in table[2:]}
        write_between(path, 'mutation', table[:2] + list(kept.values()))


def between(path, name):
    return path.read_text().split(f'<!-- {name} begin -->\n')[1].split(f'<!-- {name} end -->')[0].splitlines()


def write_between(path, name, lines):
    """Writes lines between the markers of this name."""
    text = path.read_text()
    begin, end = f'<!-- {name} begin -->\n', f'<!-- {name} end -->'
    before, rest = text.split(begin)
    path.write_text(before + begin + '\n'.join(lines) + '\n' + end + rest.split(end)[1])
