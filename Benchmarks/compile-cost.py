#!/usr/bin/env python3
"""What including a header costs the compiler, at -O0.

A header's own cost is the time beyond a file that includes only the standard headers which it includes, directly or through
other headers of the library. An umbrella header is judged as a whole, by time and by memory. Times are processor time, the
best of several runs. Fails if a bar is missed.

    compile-cost.py [--compiler g++] [--runs 3] [HEADER...]
"""

import argparse
import functools
import os
import pathlib
import re
import subprocess
import sys
import tempfile

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


def header_rows(headers, compiler):
    for header in headers:
        foreign = sorted(f"<{name}>" for name in foreign_headers(header))
        (base, _), (total, memory) = compiler.costs(foreign, [f'"{header}"'])
        yield header, total - base, total, memory, total - base <= BAR_OF_A_HEADER


def umbrella_rows(compiler):
    for header in UMBRELLAS:
        (total, memory), = compiler.costs([f'"{header}"'])
        yield header, None, total, memory, total <= BAR_OF_AN_UMBRELLA and memory <= BAR_OF_MEMORY


def print_table(rows):
    missed = 0
    print(f"{'own s':>7} {'all s':>7} {'MiB':>5}  header")
    for header, own, total, memory, holds in rows:
        own = "" if own is None else f"{own:.3f}"
        print(f"{own:>7} {total:7.3f} {memory:5.0f}  {header}{'' if holds else '   <- beyond the bar'}", flush=True)
        missed += not holds
    return missed


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("headers", nargs="*", help="headers as they are included; all public ones if none is named")
    parser.add_argument("--compiler", default="g++")
    parser.add_argument("--runs", type=int, default=3)
    arguments = parser.parse_args()

    compiler = Compiler(arguments.compiler, arguments.runs)
    headers = arguments.headers
    if not headers:
        every = (path.relative_to(ROOT).as_posix() for path in sorted((ROOT / "Orrenby").rglob("*.hpp")))
        headers = [header for header in every if header not in UMBRELLAS]
    missed = print_table(header_rows(headers, compiler))
    if not arguments.headers:
        missed += print_table(umbrella_rows(compiler))
    print(f"Bars: {BAR_OF_A_HEADER} s beyond the standard headers; {BAR_OF_AN_UMBRELLA} s and {BAR_OF_MEMORY} MiB for an umbrella. "
          f"Missed: {missed}.")
    sys.exit(1 if missed else 0)


if __name__ == "__main__":
    main()
