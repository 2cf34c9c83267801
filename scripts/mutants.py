#!/usr/bin/python3
"""Measures the tests by mutants: changes to the library, one at a time, that its tests should notice.

Every mutation of the files asked for is compiled into one copy of the tree, under build/mutants, where a number in the
environment selects the one in force (or none). The test programs of that copy are built once. A first run of each test
records which mutants it reaches at all; then the tests that reach a mutant run with it in force, those of its own
subsystem first, until one fails, crashes or takes far longer than it should: the mutant is killed. The survivors are
listed. An exit status of 1 says that too few were killed, or that scripts/mutants.equivalent holds a stale line.
"""
import argparse
import bisect
import collections
import concurrent.futures
import json
import math
import mmap
import os
import re
import resource
import shutil
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path

from clang import cindex
from clang.cindex import CursorKind

ROOT = Path(__file__).resolve().parent.parent
WORK = ROOT / "build/mutants"
TREE = WORK / "tree"
BUILD = WORK / "build"
EQUIVALENTS = ROOT / "scripts/mutants.equivalent"
FOLDERS = ("containers", "string", "stream", "rx", "event", "task", "ga", "graph", "faults")
LEAST_KILLED = 95.0
# The numbers of a file start at a multiple of this, so that a change to one file leaves the others as they were.
NUMBERS_PER_FILE = 2000

SWITCH = """\
// Selects the mutant in force, VEXABASE_MUTANT, and records the mutants reached in the file VEXABASE_REACHED.
#pragma once
#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#pragma GCC visibility push(hidden)
inline int g_nMutant = -1;
inline volatile char* g_pReached = nullptr;
[[gnu::noinline, gnu::cold]] inline void StartMutants() noexcept {
    const char* const pszNumber = ::getenv("VEXABASE_MUTANT");
    g_nMutant = pszNumber != nullptr ? ::atoi(pszNumber) : 0;
    const char* const pszFile = ::getenv("VEXABASE_REACHED");
    const int nFile = pszFile != nullptr ? ::open(pszFile, O_RDWR | O_CLOEXEC) : -1;
    struct ::stat status;
    if (nFile >= 0 && ::fstat(nFile, &status) == 0) {
        void* const p = ::mmap(nullptr, status.st_size, PROT_READ | PROT_WRITE, MAP_SHARED, nFile, 0);
        g_pReached = p != MAP_FAILED ? static_cast<char*>(p) : nullptr;
        ::close(nFile);
    }
}
[[gnu::always_inline]] inline bool Mutant(int n) noexcept {
    if (g_nMutant < 0) {
        StartMutants();
    }
    if (g_pReached != nullptr) {
        g_pReached[n] = 1;
    }
    return g_nMutant == n;
}
#pragma GCC visibility pop
"""

SWAPPED = {
    "<": ("<=", ">="),
    "<=": ("<", ">"),
    ">": (">=", "<="),
    ">=": (">", "<"),
    "==": ("!=",),
    "!=": ("==",),
    "&&": ("||",),
    "||": ("&&",),
    "+": ("-",),
    "-": ("+",),
    "*": ("/",),
    "/": ("*",),
    "%": ("/",),
    "&": ("|",),
    "|": ("&",),
    "^": ("&",),
    "<<": (">>",),
    ">>": ("<<",),
    "+=": ("-=",),
    "-=": ("+=",),
    "*=": ("/=",),
    "/=": ("*=",),
    "&=": ("|=",),
    "|=": ("&=",),
    "^=": ("&=",),
}
COMPARISONS = {"<", "<=", ">", ">=", "==", "!="}
UNARY = {"++": "--", "--": "++"}
# The shifts of a stream are calls.
OF_NUMBERS_ONLY = {"<<", ">>", "&", "|"}
NOT_ENTERED = {
    CursorKind.STATIC_ASSERT,
    CursorKind.ENUM_DECL,
    CursorKind.TYPEDEF_DECL,
    CursorKind.TYPE_ALIAS_DECL,
    CursorKind.TYPE_ALIAS_TEMPLATE_DECL,
    CursorKind.TEMPLATE_TYPE_PARAMETER,
    CursorKind.TEMPLATE_NON_TYPE_PARAMETER,
    CursorKind.TEMPLATE_TEMPLATE_PARAMETER,
    CursorKind.CXX_UNARY_EXPR,
}
LOOPS_AND_BRANCHES = {
    CursorKind.IF_STMT,
    CursorKind.FOR_STMT,
    CursorKind.WHILE_STMT,
    CursorKind.DO_STMT,
    CursorKind.CXX_FOR_RANGE_STMT,
    CursorKind.CASE_STMT,
    CursorKind.DEFAULT_STMT,
}
JUMPS = {CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT}


class Failure(Exception):
    """What went wrong, for the user."""


class Mutation:
    """One change to a file: what stands in [start, end) becomes `mutant`, or is dropped."""

    def __init__(self, file, start, end, kind, mutant):
        self.file, self.start, self.end, self.kind, self.mutant = file, start, end, kind, mutant
        self.number = self.occurrence = None

    @property
    def line(self):
        return self.file.line_of(self.start)

    @property
    def column(self):
        return self.file.column_of(self.start)

    @property
    def line_text(self):
        """The source line; a short one, such as a mere return, with the line above."""
        line = self.line - 1
        text = self.file.lines[line].strip()
        while len(text) < 12 and line > 0:
            line -= 1
            text = f"{self.file.lines[line].strip()} {text}".strip()
        return text

    @property
    def key(self):
        return (self.file.name, self.kind, self.line_text, self.occurrence)

    def __str__(self):
        return f"{self.file.name}:{self.line}:{self.column} {self.number} {self.kind}: {self.shown()}"

    def shown(self):
        original = one_line(self.file.text[self.start : self.end])
        return original if self.mutant is None else f"{original} -> {one_line(self.mutant)}"


def one_line(text):
    return " ".join(re.sub(r"//[^\n]*", "", text).split())


def blanked(text):
    """The text with comments, strings and characters made blank, each character where it was."""
    pattern = re.compile(
        r'//[^\n]*|/\*.*?\*/|(?:u8|[LuU])?"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])[LuU]?\'(?:\\.|[^\'\\\n])+\'', re.S
    )
    return pattern.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def closing(text, opening):
    """Where the parenthesis at `opening` is closed."""
    depth = 0
    for i in range(opening, len(text)):
        depth += {"(": 1, ")": -1}.get(text[i], 0)
        if depth == 0:
            return i
    raise Failure("a parenthesis is never closed")


class SourceFile:
    """A file of the library and its mutations."""

    def __init__(self, path):
        self.path = path
        self.name = str(path.relative_to(ROOT))
        self.subsystem = path.parent.name
        # One character a byte, as clang counts.
        self.text = path.read_text(encoding="latin-1")
        self.code = blanked(self.text)
        self.lines = self.text.split("\n")
        self.line_starts = [0]
        for line in self.lines[:-1]:
            self.line_starts.append(self.line_starts[-1] + len(line) + 1)
        self.closed = self.unevaluated()
        self.mutations = []

    def line_of(self, offset):
        return bisect.bisect_right(self.line_starts, offset)

    def column_of(self, offset):
        return offset - self.line_starts[self.line_of(offset) - 1] + 1

    def unevaluated(self):
        """Where nothing may be mutated: operands that are only looked at, and directives."""
        ranges = []
        for match in re.finditer(r"\b(decltype|sizeof|noexcept|alignof|alignas|typeid|static_assert)\s*\(", self.code):
            ranges.append((match.start(), closing(self.code, match.end() - 1)))
        for match in re.finditer(r"^\s*#(?:[^\n]*\\\n)*[^\n]*", self.code, re.M):
            ranges.append(match.span())
        return ranges

    def close(self, start, end):
        self.closed.append((start, end))

    def is_open(self, at):
        return not any(begin <= at < to for begin, to in self.closed)

    def add(self, start, end, kind, mutant):
        """A directive inside would be taken apart; a macro's text is its definition's."""
        directive = re.search(r"^\s*#", self.code[start:end], re.M)
        if self.is_open(start) and self.is_open(end - 1) and directive is None:
            self.mutations.append(Mutation(self, start, end, kind, mutant))


class Finder:
    """Finds the mutations of one file in its syntax tree."""

    def __init__(self, file):
        self.file = file
        self.code = file.code

    def visit(self, cursor, parent=None, dropped=False):
        kind = cursor.kind
        if kind in NOT_ENTERED or self.is_constant(cursor):
            return
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if dropped:
            self.drop(cursor, start, end)
        children = list(cursor.get_children())
        self.operators(cursor, children, start, end)
        self.literals(cursor, parent, start, end)
        condition = self.condition(cursor, children, start)

        for i, child in enumerate(children):
            if condition == "constant" and self.is_in(child, self.condition_range):
                continue
            if kind == CursorKind.CASE_STMT and i == 0:
                continue
            is_statement = kind == CursorKind.COMPOUND_STMT
            if kind in LOOPS_AND_BRANCHES:
                # The last child of a loop is its body, except for do; an if has two.
                is_statement = self.is_substatement(cursor, child, start)
            self.visit(child, cursor, is_statement)

    def is_in(self, child, span):
        return span[0] <= child.extent.start.offset and child.extent.end.offset <= span[1]

    def is_substatement(self, cursor, child, start):
        """Whether the child is a statement that the cursor governs, rather than part of its head."""
        if cursor.kind == CursorKind.DO_STMT:
            return child.extent.start.offset == next(iter(cursor.get_children())).extent.start.offset
        if cursor.kind in (CursorKind.CASE_STMT, CursorKind.DEFAULT_STMT):
            return True
        opening = self.code.index("(", start)
        return child.extent.start.offset > closing(self.code, opening)

    def is_constant(self, cursor):
        """Variables and functions that are constexpr: their values are used where a constant is needed."""
        if cursor.kind not in (
            CursorKind.VAR_DECL,
            CursorKind.FUNCTION_DECL,
            CursorKind.CXX_METHOD,
            CursorKind.FUNCTION_TEMPLATE,
            CursorKind.UNEXPOSED_DECL,
        ):
            return False
        head = re.match(r"[^;{=]*", self.code[cursor.extent.start.offset :]).group()
        return re.search(r"\bconstexpr\b", head) is not None

    def operators(self, cursor, children, start, end):
        text = self.file.text
        is_call = cursor.kind == CursorKind.CALL_EXPR
        if is_call or cursor.kind in (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR):
            if len(children) < 2 or (is_call and not cursor.spelling.startswith("operator")):
                return
            left, right = children[0].extent.end.offset, children[-1].extent.start.offset
            operator = self.code[left:right].strip()
            if operator not in SWAPPED or (is_call and operator in OF_NUMBERS_ONLY):
                return
            if self.is_of_pointers(children) and operator in ("+", "-"):
                return
            at = self.code.index(operator, left)
            others = SWAPPED[operator]
            if operator in ("<", "<=", ">", ">=") and self.may_be_objects(children):
                # Their type may have this one operator alone.
                self.file.add(start, end, f"{operator} negated", f"!({text[start:end]})")
                others = others[:1]
            for other in others:
                before, after = text[start:at], text[at + len(operator) : end]
                changed = f"({before.rstrip()}) && {after.lstrip()}" if operator == "||" else before + other + after
                self.file.add(start, end, f"{operator} to {other}", changed)
        elif cursor.kind == CursorKind.UNARY_OPERATOR and len(children) == 1:
            child = children[0]
            before = self.code[start : child.extent.start.offset].strip()
            after = self.code[child.extent.end.offset : end].strip()
            operand = text[child.extent.start.offset : child.extent.end.offset]
            if before in UNARY:
                self.file.add(start, end, f"{before} to {UNARY[before]}", UNARY[before] + operand)
            elif after in UNARY:
                self.file.add(start, end, f"{after} to {UNARY[after]}", operand + UNARY[after])
            elif before == "!":
                self.file.add(start, end, "! dropped", f"static_cast<bool>({operand})")

    def is_of_pointers(self, children):
        pointers = [child.type.get_canonical().kind == cindex.TypeKind.POINTER for child in (children[0], children[-1])]
        return all(pointers)

    def may_be_objects(self, children):
        objects = (cindex.TypeKind.RECORD, cindex.TypeKind.UNEXPOSED, cindex.TypeKind.DEPENDENT)
        return any(child.type.get_canonical().kind in objects for child in (children[0], children[-1]))

    def literals(self, cursor, parent, start, end):
        if cursor.kind == CursorKind.INTEGER_LITERAL:
            match = re.compile(r"\d[\w']*").match(self.code, start)
            is_bound = self.code[:start].rstrip().endswith("[") and parent.kind in (
                CursorKind.VAR_DECL,
                CursorKind.FIELD_DECL,
            )
            if match and not is_bound:
                number = match.group()
                self.file.add(start, match.end(), f"{number} to {number} + 1", f"{number} + 1")
        elif cursor.kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            match = re.compile(r"true|false").match(self.code, start)
            if match:
                other = {"true": "false", "false": "true"}[match.group()]
                self.file.add(start, match.end(), f"{match.group()} to {other}", other)

    def condition(self, cursor, children, start):
        """Negates the condition of a branch or a loop, unless that is among the changes to its operator."""
        kind = cursor.kind
        if kind == CursorKind.CONDITIONAL_OPERATOR:
            span = (children[0].extent.start.offset, children[0].extent.end.offset)
        elif kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.FOR_STMT, CursorKind.DO_STMT):
            head = start
            if kind == CursorKind.DO_STMT:
                head = children[0].extent.end.offset
            opening = self.code.index("(", head)
            span = (opening + 1, closing(self.code, opening))
            self.condition_range = span
            if kind == CursorKind.IF_STMT and re.match(r"if\s+constexpr\b", self.code[start:]):
                return "constant"
            parts = self.code[span[0] : span[1]].split(";")
            if len(parts) > 1:
                begin = span[0] + len(parts[0]) + 1
                span = (begin, begin + len(parts[1]))
        else:
            return None
        condition = [c for c in children if self.is_in(c, span)]
        if len(condition) != 1 or not condition[0].kind.is_expression():
            return None
        span = (condition[0].extent.start.offset, condition[0].extent.end.offset)
        if self.is_comparison(condition[0]):
            return None
        text = self.file.text[span[0] : span[1]]
        self.file.add(*span, "negated", f"!({text})")
        return None

    def is_comparison(self, cursor):
        """Comparisons and negations have that change already."""
        children = list(cursor.get_children())
        if cursor.kind in (CursorKind.UNEXPOSED_EXPR, CursorKind.PAREN_EXPR) and len(children) == 1:
            return self.is_comparison(children[0])
        if cursor.kind == CursorKind.UNARY_OPERATOR:
            return self.code[cursor.extent.start.offset] == "!"
        if len(children) < 2:
            return False
        between = self.code[children[0].extent.end.offset : children[-1].extent.start.offset].strip()
        return between in COMPARISONS or cursor.kind == CursorKind.CXX_BOOL_LITERAL_EXPR

    def drop(self, cursor, start, end):
        kind = cursor.kind
        is_return = kind == CursorKind.RETURN_STMT and re.match(r"return\s*$", self.code[start:end])
        if not (kind.is_expression() or kind in JUMPS or is_return):
            return
        text = self.code[start:end]
        if re.match(r"static_cast<void>", text):
            return
        semicolon = self.code.find(";", end - 1 if text.endswith(";") else end)
        if semicolon < 0 or self.code[end:semicolon].strip():
            return
        self.file.add(start, semicolon + 1, "dropped", None)


def parse(files):
    """Finds the mutations of all the files: the headers in one translation unit, each source in its own."""
    index = cindex.Index.create()
    include = subprocess.run(
        ["clang++", "-print-resource-dir"], capture_output=True, text=True, check=True
    ).stdout.strip()
    arguments = ["-x", "c++", "-std=c++17", f"-I{ROOT}", "-resource-dir", include, '-DVEXABASE_VERSION="0"']
    by_path = {str(f.path): f for f in files}
    headers = sorted(path for path in by_path if path.endswith(".h"))
    units = [("headers.cpp", "".join(f'#include "{path}"\n' for path in headers))] if headers else []
    units += [(path, None) for path in by_path if path.endswith(".cpp")]
    for path, text in units:
        unsaved = None if text is None else [(path, text)]
        options = cindex.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD
        unit = index.parse(path, args=arguments, unsaved_files=unsaved, options=options)
        errors = [d for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
        if errors:
            raise Failure(f"clang does not read {path}: {errors[0]}")
        wanted = set(headers) if text is not None else {path}
        top = [c for c in unit.cursor.get_children() if c.location.file and c.location.file.name in wanted]
        for cursor in top:
            if cursor.kind == CursorKind.MACRO_INSTANTIATION:
                extent = cursor.extent
                by_path[extent.start.file.name].close(extent.start.offset, extent.end.offset)
        for cursor in top:
            if not cursor.kind.is_preprocessing():
                Finder(by_path[cursor.location.file.name]).visit(cursor)


def number_mutations(files):
    """Gives each mutation its number, and its place among those that look the same in its line."""
    for place_of_file, file in enumerate(files, 1):
        unique = {(m.start, m.end, m.kind): m for m in file.mutations}
        file.mutations = sorted(unique.values(), key=lambda m: (m.start, -m.end, m.kind))
        if len(file.mutations) >= NUMBERS_PER_FILE:
            raise Failure(f"{file.name} has more mutations than there are numbers")
        seen = collections.Counter()
        for i, mutation in enumerate(file.mutations):
            mutation.number = NUMBERS_PER_FILE * place_of_file + i
            place = (mutation.kind, mutation.line_text)
            seen[place] += 1
            mutation.occurrence = seen[place]


class Piece:
    """A stretch of a file that mutations replace, and those inside it."""

    def __init__(self, start, end):
        self.start, self.end, self.mutations, self.inner = start, end, [], []


def instrumented(file, left_out):
    """The file's text with every mutation in it, lines where they were, and where each stands in that text."""
    pieces = {}
    for mutation in file.mutations:
        if mutation.number not in left_out:
            piece = pieces.setdefault((mutation.start, mutation.end), Piece(mutation.start, mutation.end))
            piece.mutations.append(mutation)
    whole = Piece(0, len(file.text))
    open_pieces = [whole]
    for piece in sorted(pieces.values(), key=lambda p: (p.start, -p.end)):
        while piece.start >= open_pieces[-1].end:
            open_pieces.pop()
        open_pieces[-1].inner.append(piece)
        open_pieces.append(piece)

    def inside(piece):
        text, at = [], piece.start
        for inner in piece.inner:
            text += [file.text[at : inner.start], rendered(inner)]
            at = inner.end
        return "".join(text) + file.text[at : piece.end]

    def rendered(piece):
        text = inside(piece)
        negation = any(m.kind == "negated" for m in piece.mutations)
        dropping = [m for m in piece.mutations if m.mutant is None]
        if dropping:
            return f"{{ if (!Mutant({dropping[0].number})) {text} }}"
        text = f"static_cast<bool>({text})" if negation else f"({text})"
        for mutation in reversed(piece.mutations):
            text = f"Mutant({mutation.number}) ? ({one_line(mutation.mutant)}) : {text}"
        return f"({text})"

    return f'#include "VexaBase/Mutant.h"\n#line 1\n{inside(whole)}'


def write_if_changed(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text(encoding="latin-1") != text:
        path.write_text(text, encoding="latin-1")


def mirror_tree(files):
    """Copies what the build needs, leaving alone what is there and the same."""
    copied = set()
    names = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT, capture_output=True, text=True, check=True,
    ).stdout.split("\0")
    instrumented_names = {f.name for f in files}
    for name in filter(None, names):
        if not (ROOT / name).is_file():
            continue
        copied.add(name)
        target = TREE / name
        if name in instrumented_names:
            continue
        source = (ROOT / name).read_bytes()
        if not target.exists() or target.read_bytes() != source:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(source)
            shutil.copymode(ROOT / name, target)
    for path in TREE.rglob("*"):
        if path.is_file() and str(path.relative_to(TREE)) not in copied and path.name != "Mutant.h":
            path.unlink()
    write_if_changed(TREE / "VexaBase/Mutant.h", SWITCH)


def configure():
    subprocess.run(
        [
            "cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
            "-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DCMAKE_CXX_FLAGS=-w -Wno-c++11-narrowing",
            "-DVEXABASE_BUILD_EXAMPLES=OFF", "-DVEXABASE_INSTALL=OFF",
        ],
        check=True, stdout=subprocess.DEVNULL,
    )  # fmt: skip


def test_targets(folders):
    """The test programs of these folders, the builds with other options of the same tests aside."""
    listing = subprocess.run(
        ["ninja", "-C", BUILD, "-t", "targets", "all"], capture_output=True, text=True, check=True
    ).stdout
    targets = []
    for target in re.findall(r"^(tests/\S+_test): CXX_EXECUTABLE_LINKER", listing, re.M):
        if target.split("/")[1] in folders and not re.search(r"_(lto|O\d|archive|rx_first|rx_last|symbols)_test$", target):
            targets.append(target)
    return targets


def build(files, targets, jobs):
    """Builds the test programs; mutations that do not compile are left out, more of them in each round."""
    record = WORK / "left_out.json"
    known = json.loads(record.read_text()) if record.exists() else []
    by_key = {json.dumps(m.key): m for f in files for m in f.mutations}
    left_out = {by_key[key].number for key in known if key in by_key}
    while True:
        for file in files:
            write_if_changed(TREE / file.name, instrumented(file, left_out))
        log = WORK / "build.log"
        with log.open("w") as output:
            command = ["ninja", "-C", BUILD, "-j", str(jobs), *targets]
            status = subprocess.run(command, stdout=output, stderr=subprocess.STDOUT, check=False).returncode
        if status == 0:
            return left_out
        more = blamed(files, log.read_text(), left_out)
        if not more:
            raise Failure(f"the mutants do not compile, and which do not is unclear: see {log}")
        print(f"    {len(more)} mutants that do not compile are left out", flush=True)
        left_out |= more
        names = sorted(key for key, m in by_key.items() if m.number in left_out)
        record.write_text(json.dumps(names, indent=0))


def blamed(files, log, left_out):
    """The mutations that the compiler's errors point at."""
    by_name = {f.name: f for f in files}
    result, places = set(), []
    for match in re.finditer(r"^\S*\btree/(VexaBase/[^:\n]+):(\d+):(\d+): (.*)", log, re.M):
        name, line, column, message = match[1], int(match[2]), int(match[3]), match[4]
        if re.match(r"(fatal )?error:", message):
            places = []
        # The first place that says something is taken; a note may know it exactly.
        is_exact = "function 'Mutant' cannot be used" in message
        if name in by_name and (is_exact or not places):
            found = mutations_at(by_name[name], line, column, left_out)
            if is_exact:
                result -= set(places)
            places = found
            result |= found
    return result


def mutations_at(file, line, column, left_out):
    """The innermost mutation around a place of the instrumented text, or else all of its line."""
    text = instrumented(file, left_out).split("\n")[line + 1]
    exact = re.compile(r"\(?Mutant\((\d+)\)").match(text, column - 1)
    if exact:
        return {int(exact[1])}
    depth, around = 0, []
    for match in re.finditer(r"Mutant\((\d+)\)|[()]", text[: column - 1]):
        if match[1]:
            around.append((depth, int(match[1])))
            continue
        depth += 1 if match[0] == "(" else -1
        around = [(d, n) for d, n in around if d <= depth]
    inside = [n for d, n in around if 0 < d < depth]
    return {inside[-1]} if inside else {m.number for m in file.mutations if m.line == line} - left_out


class Program:
    """A test program, its tests, what each reaches and how long it takes."""

    def __init__(self, target, environment):
        self.target = target
        self.name = Path(target).name
        self.folder = target.split("/")[1]
        self.path = BUILD / target
        self.environment = environment
        self.tests = []
        self.reached = {}
        self.seconds = {}

    def list_tests(self):
        listing = subprocess.run(
            [self.path, "--gtest_list_tests"], capture_output=True, text=True, check=True, env=self.with_setting({})
        ).stdout
        suite, tests = None, []
        for line in listing.splitlines():
            name = line.split("#")[0].rstrip()
            if name.startswith("  "):
                tests.append(suite + name.strip())
            elif name.endswith("."):
                suite = name
        return tests

    def with_setting(self, setting):
        return {**os.environ, **self.environment, "RC_PARAMS": "seed=1", "GTEST_BRIEF": "1", **setting}

    def expected(self, tests):
        """Seconds that the tests take together: alone, each has the start of the program in its time."""
        start = min(self.seconds.values())
        return start + sum(self.seconds[test] - start for test in tests)

    def run(self, tests, setting, seconds):
        """The exit status and the processor's time. The clock's time is limited too, for what only waits."""
        limit = math.ceil(seconds)

        def limits():
            os.setsid()
            resource.setrlimit(resource.RLIMIT_CPU, (limit, limit))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 28, 1 << 28))
            resource.setrlimit(resource.RLIMIT_AS, (3 << 30, 3 << 30))

        command = [self.path, "--gtest_fail_fast", "--gtest_filter=" + ":".join(tests)]
        process = subprocess.Popen(
            command, env=self.with_setting(setting), preexec_fn=limits, cwd=self.path.parent,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )  # fmt: skip

        def kill_all():
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass

        timer = threading.Timer(20 * limit, kill_all)
        timer.start()
        _, status, usage = os.wait4(process.pid, 0)
        timer.cancel()
        kill_all()
        process.returncode = os.waitstatus_to_exitcode(status)
        return process.returncode, usage.ru_utime + usage.ru_stime


def programs_of(targets):
    """The programs, each with the environment that ctest gives it."""
    listing = subprocess.run(
        ["ctest", "--test-dir", BUILD, "--show-only=json-v1"], capture_output=True, text=True, check=True
    ).stdout
    environments = {}
    for test in json.loads(listing)["tests"]:
        for wanted in test.get("properties", []):
            if wanted["name"] == "ENVIRONMENT" and test.get("command"):
                environments[test["command"][0]] = dict(entry.split("=", 1) for entry in wanted["value"])
    return [Program(target, environments.get(str(BUILD / target), {})) for target in targets]


class Reached:
    """A file of one byte a mutant, which the programs set."""

    def __init__(self, path, count):
        self.path, self.count = path, count
        path.write_bytes(b"\0" * count)

    def take(self):
        with open(self.path, "r+b") as file, mmap.mmap(file.fileno(), self.count) as view:
            numbers = frozenset(match.start() for match in re.finditer(b"\1", view))
            view[:] = b"\0" * self.count
        return numbers


def record_reach(programs, count, jobs):
    """Runs every test alone; which mutants it reaches, and its time."""
    local = threading.local()

    def one(program, test):
        if not hasattr(local, "reached"):
            local.reached = Reached(WORK / f"reached.{threading.get_ident()}", count)
        status, seconds = program.run([test], {"VEXABASE_REACHED": str(local.reached.path)}, 120)
        return program, test, status, seconds, local.reached.take()

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        futures = [pool.submit(one, p, test) for p in programs for test in p.list_tests()]
        for future in concurrent.futures.as_completed(futures):
            program, test, status, seconds, reached = future.result()
            if status != 0:
                print(f"    {program.name} {test} fails without a mutant, and is left out", flush=True)
                continue
            program.tests.append(test)
            program.reached[test] = reached
            program.seconds[test] = seconds
    for path in WORK.glob("reached.*"):
        path.unlink()


QUICK = 0.3  # seconds of a test that is run early
FIRST = 10  # tests of the first run


class Judge:
    """Finds out which mutants the tests kill."""

    def __init__(self, programs):
        self.by_number = collections.defaultdict(list)
        for program in programs:
            for test in program.tests:
                for number in program.reached[test]:
                    self.by_number[number].append((program, test))

    def runs(self, mutation):
        """The runs that may kill it, each a program and some of its tests: the likely and cheap ones first."""
        groups = collections.defaultdict(list)
        for program, test in self.by_number[mutation.number]:
            foreign = program.folder != mutation.file.subsystem
            groups[(program.seconds[test] > QUICK, foreign, program)].append(test)
        runs = []
        for (slow, foreign, program), tests in groups.items():
            # First those that do little else; they also meet an endless loop at little cost.
            tests.sort(key=lambda test: len(program.reached[test]))
            for first, part in ((True, tests[:FIRST]), (False, tests[FIRST:])):
                if part:
                    runs.append(((slow, not first, foreign, len(part)), program, part))
        return [(program, tests) for _, program, tests in sorted(runs, key=lambda run: run[0])]

    def verdict(self, mutation):
        """'unreached', 'survived' or what killed it."""
        runs = self.runs(mutation)
        if not runs:
            return "unreached"
        for program, tests in runs:
            limit = 0.9 + 4 * program.expected(tests)
            status, _ = program.run(tests, {"VEXABASE_MUTANT": str(mutation.number)}, limit)
            if status != 0:
                return f"killed by {program.name}" + (" (time)" if status in (-signal.SIGKILL, -signal.SIGXCPU) else "")
        return "survived"


def read_equivalents():
    """The mutants argued to change nothing that a caller can see, by their keys."""
    result = {}
    if not EQUIVALENTS.exists():
        return result
    for number, line in enumerate(EQUIVALENTS.read_text().splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        parts = [part.strip() for part in line.split(" ~ ")]
        if len(parts) != 5 or not parts[3].isdecimal() or not parts[4]:
            raise Failure(f"{EQUIVALENTS.name}:{number}: not `file ~ kind ~ line ~ occurrence ~ reason`")
        result[(parts[0], parts[1], parts[2], int(parts[3]))] = (number, parts[4])
    return result


def report(files, judged, verdicts, equivalents, stale):
    """Prints the table and the survivors; whether all is well."""
    alive = {"survived", "unreached"}
    rows, survivors = [], []
    for file in files:
        mutations = [m for m in file.mutations if m.number in judged]
        if not mutations:
            continue
        same = [m for m in mutations if m.key in equivalents]
        rest = [m for m in mutations if m.key not in equivalents]
        living = [m for m in rest if verdicts.get(m.number) in alive]
        rows.append((file.name, len(rest), len(rest) - len(living), len(living), len(same)))
        survivors += living
    rows.append(("all", *(sum(row[i] for row in rows) for i in range(1, 5))))
    width = max(len(row[0]) for row in rows)
    print(f"\n{'file':<{width}}  mutants  killed  survivors  equivalent    killed")
    for name, total, killed, living, same in rows:
        share = f"{100 * killed / total:.1f} %" if total else ""
        print(f"{name:<{width}}  {total:7}  {killed:6}  {living:9}  {same:10}  {share:>8}")
    if survivors:
        print("\nSurvivors")
        for mutation in survivors:
            unreached = ", unreached" if verdicts[mutation.number] == "unreached" else ""
            print(f"{mutation}{unreached}")
    folder = WORK / "survivors"
    folder.mkdir(exist_ok=True)
    for subsystem in FOLDERS:
        lines = [f"{m}\n    {' ~ '.join(map(str, m.key))} ~\n" for m in survivors if m.file.subsystem == subsystem]
        (folder / f"{subsystem}.txt").write_text("".join(lines))
    for key, (line, _) in stale:
        print(f"{EQUIVALENTS.name}:{line}: stale: {' ~ '.join(map(str, key))}")
    _, total, killed, _, _ = rows[-1]
    return not stale and (total == 0 or 100 * killed / total >= LEAST_KILLED)


def chosen(all_files, wanted):
    """The files that the arguments name, folders being all of theirs."""
    if not wanted:
        return all_files
    paths = [Path(name).resolve() for name in wanted]
    files = [f for f in all_files if any(f.path == path or path in f.path.parents for path in paths)]
    if not files:
        raise Failure("there is no such file under VexaBase")
    return files


def say(text):
    print(f"==> {text}", flush=True)


def main():
    parser = argparse.ArgumentParser(prog="scripts/mutate", description="Measures the tests by mutants of the library.")
    parser.add_argument("files", nargs="*", help="files and folders under VexaBase (default: all of it)")
    parser.add_argument("--every", type=int, default=1, metavar="K", help="judge every K-th mutant only")
    parser.add_argument("--again", action="store_true", help="judge only what survived last time")
    parser.add_argument("--list", action="store_true", help="list the mutants and do nothing else")
    parser.add_argument("--jobs", type=int, default=2, metavar="N", help="tests at a time (default: 2)")
    options = parser.parse_args()

    all_files = [SourceFile(path) for path in sorted((ROOT / "VexaBase").rglob("*")) if path.suffix in (".h", ".cpp")]
    say("Finding the mutants")
    parse(all_files)
    number_mutations(all_files)
    files = chosen(all_files, options.files)
    mutations = [m for f in files for m in f.mutations][:: options.every]
    if options.list:
        print("\n".join(map(str, mutations)))
        return 0

    equivalents = read_equivalents()
    existing = {m.key for f in all_files for m in f.mutations}
    stale = [item for item in equivalents.items() if item[0] not in existing]

    say("Building the tests with the mutants in them")
    os.nice(max(0, 10 - os.nice(0)))
    mirror_tree(all_files)
    for file in all_files:
        if not (TREE / file.name).exists():
            write_if_changed(TREE / file.name, file.text)
    configure()
    folders = {f.subsystem for f in files} | {"faults"}
    if "containers" in folders:
        folders = set(FOLDERS)
    targets = test_targets(folders)
    left_out = build(all_files, targets, options.jobs)
    mutations = [m for m in mutations if m.number not in left_out]

    say("Recording what each test reaches")
    begin = time.monotonic()
    programs = programs_of(targets)
    record_reach(programs, NUMBERS_PER_FILE * (len(all_files) + 1), options.jobs)
    judge = Judge(programs)
    tests = sum(len(p.tests) for p in programs)
    say(f"{tests} tests of {len(programs)} programs in {time.monotonic() - begin:.0f} s")

    results_file = WORK / "results.json"
    known = json.loads(results_file.read_text()) if results_file.exists() else {}
    to_judge = [m for m in mutations if m.key not in equivalents]
    verdicts = {}
    if options.again:
        before = {m.number: known.get(json.dumps(m.key)) for m in to_judge}
        verdicts = {number: verdict for number, verdict in before.items() if str(verdict).startswith("killed")}
        to_judge = [m for m in to_judge if m.number not in verdicts]
    say(f"Judging {len(to_judge)} mutants, {len(left_out)} that do not compile left out")
    begin = time.monotonic()
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        futures = {pool.submit(judge.verdict, m): m for m in to_judge}
        for done, future in enumerate(concurrent.futures.as_completed(futures), 1):
            mutation = futures[future]
            verdicts[mutation.number] = known[json.dumps(mutation.key)] = future.result()
            if not future.result().startswith("killed"):
                print(f"    {future.result()}: {mutation}", flush=True)
            if done % 50 == 0 or done == len(to_judge):
                say(f"{done} of {len(to_judge)} in {time.monotonic() - begin:.0f} s")
                results_file.write_text(json.dumps(known, indent=0))
    judged = {m.number for m in mutations}
    return 0 if report(files, judged, verdicts, equivalents, stale) else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Failure as failure:
        sys.exit(f"mutate: {failure}")
