#!/usr/bin/env python3
"""Each floor's umbrella header includes every public header of its floor.

A header stays out if it says so in its first lines: "Not in the umbrella header" and why.

    umbrellas.py [ROOT]          prints one line per finding, fails if there is one
    umbrellas.py --write [ROOT]  writes the missing lines
    umbrellas.py --self-test     shows on made-up trees that the check can fail
"""

import re
import sys

import checker

FLOORS = ("Platform", "Standard", "Utilities", "Foundation", "Testing")
INCLUDE = re.compile(r'^#include "([^"]+)"\n', re.M)
OPTS_OUT = "Not in the umbrella header"
LINES_OF_THE_HEAD = 12


def stays_out(header):
    with header.open(encoding="utf-8") as lines:
        # The formatter may break the sentence anywhere, so what is searched is the text without the comment's marks.
        words = (line.strip().lstrip("/ ") for _, line in zip(range(LINES_OF_THE_HEAD), lines))
        return OPTS_OUT in " ".join(words)


def wanted_includes(root, floor):
    headers = (root / "Orrenby" / floor).rglob("*.hpp")
    # Sorted as texts, like the formatter does; paths would sort folder by folder.
    return sorted(header.relative_to(root).as_posix() for header in headers if not stays_out(header))


def check(root):
    for floor in FLOORS:
        umbrella = root / "Orrenby" / f"{floor}.hpp"
        actual = INCLUDE.findall(umbrella.read_text(encoding="utf-8"))
        wanted = wanted_includes(root, floor)
        for header in wanted:
            if header not in actual:
                yield f"Orrenby/{floor}.hpp: does not include {header}"
        for header in actual:
            if header.startswith(f"Orrenby/{floor}/") and header not in wanted:
                yield f"Orrenby/{floor}.hpp: includes {header}, which does not exist or asks to stay out"
        if len(set(actual)) != len(actual):
            yield f"Orrenby/{floor}.hpp: includes a header twice"


def write(root):
    for floor in FLOORS:
        umbrella = root / "Orrenby" / f"{floor}.hpp"
        head = INCLUDE.sub("", umbrella.read_text(encoding="utf-8")).rstrip() + "\n\n"
        # A floor without headers still names the one that marks the library's edge.
        includes = wanted_includes(root, floor) or ["Orrenby/Platform/Export.hpp"]
        umbrella.write_text(head + "".join(f'#include "{header}"\n' for header in includes), encoding="utf-8")


class SelfTest(checker.TreeTest):
    HEAD = "#pragma once\n\n/// @file\n/// Everything.\n\n"

    def setUp(self):
        super().setUp()
        for floor in FLOORS:
            self.put(f"Orrenby/{floor}.hpp", self.HEAD)

    def test_empty_floors_are_in_order(self):
        self.assertEqual([], list(check(self.root)))

    def test_a_missing_header_is_found_and_written(self):
        self.put("Orrenby/Platform/Room/A.hpp", self.HEAD)
        self.assertEqual(["Orrenby/Platform.hpp: does not include Orrenby/Platform/Room/A.hpp"], list(check(self.root)))

        write(self.root)

        self.assertEqual([], list(check(self.root)))
        self.assertEqual(self.HEAD + '#include "Orrenby/Platform/Room/A.hpp"\n',
                         (self.root / "Orrenby/Platform.hpp").read_text(encoding="utf-8"))

    def test_a_header_may_stay_out(self):
        self.put("Orrenby/Platform/Slow.hpp", self.HEAD + f"/// {OPTS_OUT}: it takes a second to compile.\n")
        self.assertEqual([], list(check(self.root)))

        self.put("Orrenby/Platform.hpp", self.HEAD + '#include "Orrenby/Platform/Slow.hpp"\n')
        self.assertEqual(1, len(list(check(self.root))))

    def test_a_header_may_say_so_over_a_line_break(self):
        first, rest = OPTS_OUT.split(" ", 1)

        self.put("Orrenby/Platform/Slow.hpp", self.HEAD + f"/// {first}\n/// {rest}: it takes a second to compile.\n")

        self.assertEqual([], list(check(self.root)))

    def test_a_header_that_is_gone_is_found(self):
        self.put("Orrenby/Standard.hpp", self.HEAD + '#include "Orrenby/Standard/Gone.hpp"\n')
        self.assertEqual(1, len(list(check(self.root))))

    def test_a_header_included_twice_is_found(self):
        self.put("Orrenby/Standard/A.hpp", self.HEAD)
        self.put("Orrenby/Standard.hpp", self.HEAD + '#include "Orrenby/Standard/A.hpp"\n' * 2)
        self.assertEqual(["Orrenby/Standard.hpp: includes a header twice"], list(check(self.root)))


if __name__ == "__main__":
    if "--write" in sys.argv:
        write(checker.named_root(sys.argv[1:]))
    checker.run(check, "Every umbrella header is whole.")
