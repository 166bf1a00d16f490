"""Finds in a source file the places at which it can be wrong by a little, and writes the file anew with
all of these mutants in it, each asleep until LINEWEIR_MUTANT names it."""

import re

from clang.cindex import CursorKind as Kind, TypeKind

TURNED = {'<': ['<='], '<=': ['<'], '>': ['>='], '>=': ['>'], '==': [], '!=': []}
OTHER = {'&&': '||', '||': '&&', '+': '-', '-': '+', '*': '/', '/': '*', '+=': '-=', '-=': '+='}
BLOCKS = {Kind.COMPOUND_STMT, Kind.IF_STMT, Kind.CASE_STMT, Kind.DEFAULT_STMT, Kind.FOR_STMT,
          Kind.WHILE_STMT, Kind.CXX_FOR_RANGE_STMT}
FUNCTIONS = {Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR,
             Kind.FUNCTION_TEMPLATE, Kind.CONVERSION_FUNCTION}
NUMBERS = {getattr(TypeKind, name) for name in (
    'CHAR_U UCHAR USHORT UINT ULONG ULONGLONG CHAR_S SCHAR SHORT INT LONG LONGLONG FLOAT DOUBLE').split()}
# What may run while compiling asks by another name, and never has a mutant there.
WAKE, WAKE_LATER = 'lineweir_mutant', 'lineweir_later_mutant'


class Place:
    """A piece of the text, and what may stand there instead: texts, or None for the contrary of a truth."""

    def __init__(self, start, end, function, wake, mutants=()):
        self.start, self.end, self.function, self.wake = start, end, function, wake
        self.mutants = list(mutants)


class Finder:
    def __init__(self, text, file):
        self.text, self.file, self.places, self.constants = text, file, {}, {}
        self.wake = WAKE_LATER

    def source(self, start, end):
        """The text on one line and without its comments."""
        return ' '.join(re.sub(r'//[^\n]*', '', self.text[start:end]).split())

    def add(self, start, end, mutated, told=None):
        place = self.places.setdefault((start, end), Place(start, end, self.function, self.wake))
        if mutated not in [text for text, _ in place.mutants]:
            place.mutants.append((mutated, told or f'{self.source(start, end)} -> {mutated}'))

    def contrary(self, start, end):
        self.add(start, end, None, f'{self.source(start, end)} -> the contrary')

    def without(self, start, end):
        self.add(start, end, '', f'{self.source(start, end)} -> nothing')

    def behind(self, end):
        return self.text[end:].lstrip()[:1]

    def before(self, start):
        return self.text[:start].rstrip()[-1:]

    def walk(self, cursor, parent, function, wake):
        kind = cursor.kind
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if kind in FUNCTIONS:
            function = cursor.spelling
            wake = WAKE_LATER if 'constexpr' in self.text[start:end].split('(')[0] else WAKE
            if cursor.semantic_parent.kind in (Kind.CLASS_DECL, Kind.STRUCT_DECL):
                function = f'{cursor.semantic_parent.spelling}::{function}'
        if kind in (Kind.STATIC_ASSERT, Kind.ENUM_DECL, Kind.TYPE_ALIAS_DECL):
            return
        self.function, self.wake = function, wake
        if kind == Kind.VAR_DECL and re.match(r'(static |inline )*constexpr', self.text[start:end]):
            return self.constant(cursor, start, end)
        if kind == Kind.IF_STMT and re.match(r'if\s+constexpr', self.text[start:end]):
            for branch in list(cursor.get_children())[1:]:
                self.walk(branch, cursor, function, wake)
            return
        # Whatever a macro made isn't in the text as it is in the tree.
        if cursor.location.file and cursor.location.file.name == self.file and start < end:
            self.look(cursor, parent, start, end)
        for i, child in enumerate(cursor.get_children()):
            if not (kind == Kind.CASE_STMT and i == 0):
                self.walk(child, cursor, function, wake)

    def constant(self, cursor, start, end):
        """The number in a constant's value; the constant's uses become what is mutated."""
        number = re.fullmatch(r"(.*=\s*)(\d[\d']*)(\w*)", self.text[start:end], re.S)
        if number:
            value = int(number[2].replace("'", ''))
            texts = [f'{v}{number[3]}' for v in (value + 1, value - 1) if v >= 0]
            self.constants[cursor.get_usr()] = (start, texts)

    def operands(self, cursor, kind):
        """Left side, operator and right side of what has two sides, however the tree names it."""
        children = list(cursor.get_children())
        if kind == Kind.CALL_EXPR and cursor.spelling.startswith('operator') and len(children) == 3:
            children = [children[0], children[2]]
        elif kind not in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR, Kind.UNEXPOSED_EXPR):
            return None
        if len(children) != 2:
            return None
        left, right = sorted((child.extent.start.offset, child.extent.end.offset) for child in children)
        operator = self.source(left[1], right[0])
        return (left, operator, right) if operator in TURNED or operator in OTHER or operator == '=' else None

    def look(self, cursor, parent, start, end):
        kind, text = cursor.kind, self.text[start:end]
        two = self.operands(cursor, kind)
        number = cursor.type.get_canonical().kind in NUMBERS
        if two:
            left, operator, right = two
            put = lambda other: f'{self.source(*left)} {other} {self.source(*right)}'
            if operator in TURNED:
                self.contrary(start, end)
                for other in TURNED[operator]:
                    self.add(start, end, put(other))
            elif operator in ('&&', '||'):
                self.add(start, end, put(OTHER[operator]))
                for side in (left, right):
                    if not re.search(r'[<>=]=?|&&|\|\|', self.text[side[0]:side[1]]):
                        self.contrary(*side)
            elif operator in OTHER and number:
                self.add(start, end, put(OTHER[operator]))
        if kind == Kind.INTEGER_LITERAL and self.text[end:end + 1] != '>' and re.fullmatch(r"[\d']+[uUlL]*", text):
            value, suffix = re.fullmatch(r"([\d']+)(\D*)", text).groups()
            value = int(value.replace("'", ''))
            duration = re.match(r'(h|min|s|ms)\b', self.text[end:])
            if duration:
                end, suffix = end + duration.end(), duration[0]
            for other in (value + 1, value - 1):
                if other >= 0:
                    self.add(start, end, f'{other}{suffix}')
        if kind == Kind.CXX_BOOL_LITERAL_EXPR:
            self.add(start, end, 'false' if text == 'true' else 'true')
        if kind == Kind.UNARY_OPERATOR and number and re.match(r'\+\+|--', text):
            self.add(start, end, ('--' if text[0] == '+' else '++') + self.source(start + 2, end))
        if kind == Kind.DECL_REF_EXPR and cursor.referenced and cursor.referenced.get_usr() in self.constants:
            declared, texts = self.constants[cursor.referenced.get_usr()]
            for other in texts:
                self.add(start, end, f'static_cast<decltype({text})>({other})', f'{text} -> {other}')
        self.statement(cursor, parent, start, end, bool(two and two[1] in TURNED))

    def statement(self, cursor, parent, start, end, compared):
        kind = cursor.kind
        if not kind.is_expression() or parent is None:
            return
        whole = parent.kind in BLOCKS and self.behind(end) == ';' and self.before(start) in ';{}):'
        if whole and (parent.kind != Kind.FOR_STMT or self.before(start) == ')'):
            if kind != Kind.UNARY_OPERATOR or self.text[start] in '+-':
                self.without(start, end)
        asked = (parent.kind in (Kind.IF_STMT, Kind.WHILE_STMT) and self.behind(end) == ')'
                 and self.before(start) in '(;')
        chosen = parent.kind == Kind.CONDITIONAL_OPERATOR and self.behind(end) == '?'
        answered = (parent.kind == Kind.RETURN_STMT and kind != Kind.CXX_BOOL_LITERAL_EXPR
                    and cursor.type.get_canonical().kind == TypeKind.BOOL)
        if (asked or chosen or answered) and not compared and self.text[start:end] not in ('true', 'false'):
            self.contrary(start, end)


def find(unit, text, file):
    """The places of a file that was parsed, in the order of the text."""
    finder = Finder(text, file)
    for cursor in unit.cursor.get_children():
        if cursor.location.file and cursor.location.file.name == file:
            finder.walk(cursor, None, '', WAKE_LATER)
    return sorted(finder.places.values(), key=lambda place: (place.start, -place.end))


def write(text, places, name, left_out=()):
    """The file with all its mutants, and for each of them its number, function, line and what it says."""
    told, number = [], 0

    def piece(start, end, inner):
        nonlocal number
        out, at = [], start
        while inner:
            place = inner[0]
            within = [p for p in inner[1:] if p.end <= place.end]
            out += [text[at:place.start], changed(place, within)]
            at, inner = place.end, inner[1 + len(within):]
        return ''.join(out) + text[at:end]

    def changed(place, within):
        nonlocal number
        mine = []
        for mutated, says in place.mutants:
            number += 1
            line = text.count('\n', 0, place.start) + 1
            if number not in left_out:
                mine.append((number, mutated))
                told.append({'number': number, 'function': place.function, 'line': line, 'says': says,
                             'last': text.count('\n', 0, place.end) + 1})
        out = piece(place.start, place.end, within)
        for n, mutated in mine:
            if mutated is None:
                out = f'({place.wake}({n}) != static_cast<bool>({out}))'
        for n, mutated in mine:
            if mutated:
                out = f'({place.wake}({n}) ? ({mutated}) : ({out}))'
        for n, mutated in mine:
            if mutated == '':
                out = f'if ({place.wake}({n})) {{}} else {out}'
        return out

    body = piece(0, len(text), list(places))
    head = (f'#include "mutation_point.h"\nstatic constinit lineweir::MutationPoints {WAKE}_points{{"{name}"}};\n'
            f'static bool {WAKE}(int n) {{ return {WAKE}_points.is_awake(n); }}\n'
            f'static constexpr bool {WAKE_LATER}(int n) {{\n'
            f'  return !__builtin_is_constant_evaluated() && {WAKE}(n);\n}}\n#line 1\n')
    return head + body, told
