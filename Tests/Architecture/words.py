#!/usr/bin/env python3
"""Words that have no place in this tree: notes about where a requirement came from, paths of one machine, marks of unfinished work.

    words.py [ROOT]        checks every file of the tree below ROOT, prints one line per finding, fails if there is one
    words.py --self-test   shows that every pattern can fail

The patterns are put together from halves, so that this file does not find itself.
"""

import re
import subprocess

import checker


def joined(*halves):
    return "".join(halves)


# (what is wrong, pattern, an example that must be found, a neighbour that must not)
RULES = [
    ("names a source of requirements", re.compile(joined(r"\bspeci", r"fications?\b"), re.I),
     joined("as the speci", "fication says"), "a template specialisation is specified here"),
    ("names a source of requirements", re.compile(joined(r"\bspec", r"\.md\b|\bthe ", r"spec\b|\bseed ", r"document\b"), re.I),
     joined("see the ", "spec"), "the special specimen"),
    ("names a source of requirements", re.compile(joined(r"\bpar", r"t [1-8]\.[0-9]\b"), re.I),
     joined("see Par", "t 4.2"), "the fractional part 0.5 of it"),
    ("names a ticket", re.compile(joined(r"\biss", r"ue #?[0-9]+"), re.I),
     joined("fixes iss", "ue #12"), "an issue with 3 causes"),
    ("names a path of one machine", re.compile(joined(r"/(?:wo", r"rk|ro", r"ot|tm", r"p|ho", r"me/[a-z]+)/")),
     joined("in /tm", "p/x"), "in the folder work/main"),
    ("names a package registry", re.compile(joined(r"\b(?:deb|security)\.deb", r"ian\.org\b|\bpypi\.", r"org\b"), re.I),
     joined("from pypi.", "org"), "a Debian package"),
    ("marks unfinished work", re.compile(joined(r"\b(?:TO", r"DO|FIX", r"ME|HA", r"CK)\b")),
     joined("// TO", "DO: more"), "todo lists are data here"),
]


def tree_files(root):
    """Tracked files and new ones that are not ignored; everything, where there is no repository."""
    command = ["git", "-c", "safe.directory=*", "-C", root, "ls-files", "-coz", "--exclude-standard"]
    try:
        listed = subprocess.run(command, check=True, capture_output=True).stdout
        names = [name for name in listed.decode("utf-8").split("\0") if name]
    except (OSError, subprocess.CalledProcessError):
        names = [path.relative_to(root).as_posix() for path in root.rglob("*")]
        names = [name for name in names if not name.startswith(("build/", ".git/"))]
    return sorted(name for name in set(names) if (root / name).is_file())


def check_line(line):
    return [wrong for wrong, pattern, _, _ in RULES if pattern.search(line)]


def check(root):
    for name in tree_files(root):
        for wrong in check_line(name):
            yield f"{name}: the file's name {wrong}"
        try:
            text = (root / name).read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue  # not text
        for number, line in enumerate(text.split("\n"), 1):
            for wrong in check_line(line):
                yield f"{name}:{number}: {wrong}: {line.strip()}"


class SelfTest(checker.TreeTest):
    def test_every_pattern_finds_its_example_and_spares_its_neighbour(self):
        for wrong, pattern, example, neighbour in RULES:
            with self.subTest(example=example):
                self.assertTrue(pattern.search(example))
                self.assertEqual([], check_line(neighbour))

    def test_lines_and_names_of_files_are_searched(self):
        mark = joined("TO", "DO")
        self.put("Good.cpp", "int x;\n")
        self.put("Bad.cpp", f"int x;\n// {mark}\n")
        self.put(f"{mark}.md", "empty\n")
        (self.root / "Picture.png").write_bytes(b"\xff\xfe\x00" + mark.encode())

        self.assertEqual([f"Bad.cpp:2: marks unfinished work: // {mark}", f"{mark}.md: the file's name marks unfinished work"],
                         list(check(self.root)))


if __name__ == "__main__":
    checker.run(check, "No word is out of place.")
