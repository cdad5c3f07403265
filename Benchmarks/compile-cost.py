#!/usr/bin/env python3
"""What including a header costs the compiler, at -O0.

A header's own cost is the time beyond a file that includes only the standard headers which it includes, directly or through
other headers of the library. An umbrella header is judged as a whole, by time and by memory. Times are processor time, the
best of several runs. Fails if a bar is missed.

    compile-cost.py [--compiler g++] [--runs 3] [HEADER...]
    compile-cost.py --self-test  shows on made-up costs that a bar can be missed
"""

import argparse
import contextlib
import functools
import io
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[1]
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"\n]+)[>"]', re.M)
BAR_OF_A_HEADER = 0.15  # seconds beyond the standard headers it includes
BAR_OF_AN_UMBRELLA = 1.0  # seconds in all
BAR_OF_MEMORY = 200  # MiB, for an umbrella
NAMES_OF_UMBRELLAS = ("Platform", "Standard", "Utilities", "Foundation", "Testing", "Orrenby")
UMBRELLAS = [f"Orrenby/{name}.hpp" for name in NAMES_OF_UMBRELLAS]


@functools.cache
def foreign_headers(header):
    """The standard headers (and the few third-party ones) that a header of the library includes in the end."""
    found, waiting, seen = set(), [header], {header}
    while waiting:
        text = (ROOT / waiting.pop()).read_text(encoding="utf-8")
        for quote, name in INCLUDE.findall(text):
            if quote == "<":
                found.add(name)
            elif name not in seen:
                seen.add(name)
                waiting.append(name)
    return frozenset(found)


class Compiler:
    """Measures files of include lines. What is compared is compiled in turns, so that a busy machine slows both alike."""

    def __init__(self, name, runs):
        self.name, self.runs = name, runs

    def costs(self, *files):
        """For each file, the best (seconds, MiB)."""
        rounds = [[self.compile(file) for file in files] for _ in range(self.runs)]
        return [tuple(map(min, zip(*column))) for column in zip(*rounds)]

    def compile(self, names):
        text = "".join(f"#include {name}\n" for name in names)
        with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
            source.write(text)
            source.flush()
            command = [self.name, "-std=c++20", "-O0", f"-I{ROOT}", "-c", source.name, "-o", os.devnull]
            process = subprocess.Popen(command)
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            sys.exit(f"{text.strip()} does not compile on its own")
        return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def row(header, compiler):
    """The header, its own seconds (none for an umbrella), its seconds in all, its MiB, and whether that keeps to its bar."""
    if header in UMBRELLAS:
        (total, memory), = compiler.costs([f'"{header}"'])
        return header, None, total, memory, total <= BAR_OF_AN_UMBRELLA and memory <= BAR_OF_MEMORY
    foreign = sorted(f"<{name}>" for name in foreign_headers(header))
    (base, _), (total, memory) = compiler.costs(foreign, [f'"{header}"'])
    return header, total - base, total, memory, total - base <= BAR_OF_A_HEADER


def print_table(rows):
    missed = 0
    print(f"{'own s':>7} {'all s':>7} {'MiB':>5}  header")
    for header, own, total, memory, holds in rows:
        own = "" if own is None else f"{own:.3f}"
        print(f"{own:>7} {total:7.3f} {memory:5.0f}  {header}{'' if holds else '   <- beyond the bar'}", flush=True)
        missed += not holds
    return missed


def every_header():
    """All public headers, the umbrellas last."""
    every = (path.relative_to(ROOT).as_posix() for path in sorted((ROOT / "Orrenby").rglob("*.hpp")))
    return [header for header in every if header not in UMBRELLAS] + UMBRELLAS


class FixedCosts:
    """In place of a compiler: what each file costs is given beforehand."""

    def __init__(self, header, seconds, mebibytes, standard_seconds=0.0):
        self.given = {f'"{header}"': (seconds, mebibytes)}
        self.standard = (standard_seconds, 50)

    def costs(self, *files):
        return [self.given.get(" ".join(names), self.standard) for names in files]


class SelfTest(unittest.TestCase):
    HEADER = "Orrenby/Platform/Export.hpp"
    UMBRELLA = "Orrenby/Platform.hpp"

    def holds(self, header, *costs):
        return row(header, FixedCosts(header, *costs))[-1]

    def test_a_header_is_judged_by_what_it_adds_to_its_standard_headers(self):
        self.assertTrue(self.holds(self.HEADER, 0.9, 500, 0.8))
        self.assertFalse(self.holds(self.HEADER, 0.9, 500, 0.7))

    def test_an_umbrella_is_judged_as_a_whole(self):
        self.assertTrue(self.holds(self.UMBRELLA, 0.9, 150))
        self.assertFalse(self.holds(self.UMBRELLA, 1.1, 150, 1.0))

    def test_an_umbrella_is_judged_by_memory_too(self):
        self.assertTrue(self.holds(self.UMBRELLA, 0.9, 200))
        self.assertFalse(self.holds(self.UMBRELLA, 0.9, 201))

    def test_an_umbrella_has_no_seconds_of_its_own(self):
        self.assertEqual(row(self.UMBRELLA, FixedCosts(self.UMBRELLA, 0.9, 150)), (self.UMBRELLA, None, 0.9, 150, True))

    def test_every_umbrella_is_there(self):
        self.assertEqual([header for header in UMBRELLAS if not (ROOT / header).is_file()], [])

    def test_no_umbrella_counts_twice(self):
        self.assertEqual(sorted(set(every_header())), sorted(every_header()))
        self.assertEqual(every_header()[-len(UMBRELLAS):], UMBRELLAS)

    def test_what_misses_its_bar_is_counted(self):
        with contextlib.redirect_stdout(io.StringIO()) as table:
            missed = print_table([("a", 0.1, 0.2, 50, True), ("b", 0.2, 0.2, 50, False), ("c", None, 2.0, 300, False)])
        self.assertEqual(missed, 2)
        self.assertEqual(table.getvalue().count("<- beyond the bar"), 2)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("headers", nargs="*", help="headers as they are included; all public ones if none is named")
    parser.add_argument("--compiler", default="g++")
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--self-test", action="store_true", help="judge made-up costs only")
    arguments = parser.parse_args()

    if arguments.self_test:
        unittest.main(argv=sys.argv[:1])

    compiler = Compiler(arguments.compiler, arguments.runs)
    missed = print_table(row(header, compiler) for header in arguments.headers or every_header())
    print(f"Bars: {BAR_OF_A_HEADER} s beyond the standard headers; {BAR_OF_AN_UMBRELLA} s and {BAR_OF_MEMORY} MiB for an umbrella. "
          f"Missed: {missed}.")
    sys.exit(1 if missed else 0)


if __name__ == "__main__":
    main()
