"""What the checks on the tree share: their command line, and made-up trees for their self-tests."""

import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def named_root(arguments):
    """The tree that the command line names; without one, the tree that this file stands in."""
    names = [argument for argument in arguments if not argument.startswith("--")]
    return pathlib.Path(names[0]) if names else ROOT


def run(check, all_well):
    """`check` takes the root and gives one line per finding. With --self-test the unit tests of the calling script run instead."""
    if "--self-test" in sys.argv:
        unittest.main(module="__main__", argv=sys.argv[:1])
    findings = list(check(named_root(sys.argv[1:])))
    print("\n".join(findings) if findings else all_well)
    sys.exit(1 if findings else 0)


class TreeTest(unittest.TestCase):
    """A self-test that fills an empty tree."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def put(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
