#!/usr/bin/env python3
"""The inputs that fuzzing found are kept in Fuzz/<Target>.corpus: each is one line of Base64, the shortest first.

    corpus.py unpack FILE FOLDER             writes each input into a file of its own
    corpus.py pack FOLDER FILE               keeps the files of the folder, the shortest first, up to the limits below
    corpus.py replay PROGRAM FILE [FOLDER…]  runs the program over the inputs of the file and over those of the folders
    corpus.py --self-test
"""

import base64
import hashlib
import pathlib
import subprocess
import sys
import tempfile
import unittest

# A kept input is to be read again by every test run: many small ones find more in that time than few long ones.
LONGEST = 2048  # bytes of one input
MOST = 1000  # inputs of one target


def unpack(file, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for line in file.read_text(encoding="ascii").splitlines():
        content = base64.b64decode(line, validate=True)
        (folder / hashlib.sha1(content).hexdigest()).write_bytes(content)


def pack(folder, file):
    contents = {entry.read_bytes() for entry in folder.iterdir() if entry.is_file()}
    kept = sorted((content for content in contents if len(content) <= LONGEST), key=lambda content: (len(content), content))[:MOST]
    file.write_text("".join(base64.b64encode(content).decode("ascii") + "\n" for content in kept), encoding="ascii")
    return len(kept)


def replay(program, file, folders):
    """The status of the program; what it said is printed where it failed, of the inputs the last."""
    with tempfile.TemporaryDirectory() as folder:
        unpack(file, pathlib.Path(folder))
        result = subprocess.run([program, folder, *folders], stdin=subprocess.DEVNULL, capture_output=True, text=True, errors="replace", check=False)
    print(result.stdout, end="")
    if result.returncode != 0:
        print(result.stderr[-4000:])
    return result.returncode


class Corpus(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.inputs = self.root / "inputs"
        self.inputs.mkdir()
        self.file = self.root / "Target.corpus"

    def put(self, *contents):
        for number, content in enumerate(contents):
            (self.inputs / str(number)).write_bytes(content)

    def test_what_is_packed_comes_back(self):
        self.put(b"\x00\xff", b"", b"\n", b"a line\nand another")

        pack(self.inputs, self.file)
        unpack(self.file, self.root / "again")

        self.assertEqual({entry.read_bytes() for entry in (self.root / "again").iterdir()}, {b"\x00\xff", b"", b"\n", b"a line\nand another"})

    def test_short_inputs_come_first_and_long_ones_are_left_out(self):
        self.put(b"abc", b"x" * (LONGEST + 1), b"d")

        self.assertEqual(pack(self.inputs, self.file), 2)
        self.assertEqual(self.file.read_text(), "ZA==\nYWJj\n")

    def test_the_status_of_a_program_that_fails_is_told(self):
        self.put(b"abc")
        pack(self.inputs, self.file)

        self.assertNotEqual(replay("false", self.file, []), 0)
        self.assertEqual(replay("true", self.file, []), 0)

    def test_a_file_that_is_no_corpus_is_refused(self):
        self.file.write_text("not Base64!\n", encoding="ascii")

        with self.assertRaises(ValueError):
            unpack(self.file, self.root / "again")


def main(arguments):
    if arguments == ["--self-test"]:
        unittest.main(argv=sys.argv[:1])
    elif len(arguments) == 3 and arguments[0] == "unpack":
        unpack(pathlib.Path(arguments[1]), pathlib.Path(arguments[2]))
    elif len(arguments) == 3 and arguments[0] == "pack":
        print(f"{pack(pathlib.Path(arguments[1]), pathlib.Path(arguments[2]))} inputs kept")
    elif len(arguments) >= 3 and arguments[0] == "replay":
        sys.exit(1 if replay(arguments[1], pathlib.Path(arguments[2]), arguments[3:]) else 0)
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])
