#!/usr/bin/env python3
"""Every example that a header's comment points to exists: `@snippet FILE TITLE` means a block of FILE between two lines
`//! [TITLE]`. The files are tests and examples, so each of these examples is compiled and run. A C++ block of a page (README.md and
those in Docs/) stands word for word in one of the examples, though perhaps further to the right there.

    snippets.py [ROOT]       prints one line per finding, fails if there is one
    snippets.py --self-test  shows on made-up trees that the check can fail
"""

import re
import textwrap

import checker

SNIPPET = re.compile(r"@snippet[ \t]+(\S+)[ \t]+(.+?)[ \t]*$", re.M)
PLACES = ("Tests/", "Examples/")
BLOCK = re.compile(r"^```cpp\n(.*?)^```$", re.M | re.S)


def check(root):
    yield from check_headers(root)
    yield from check_pages(root)


def check_pages(root):
    examples = [example.read_text(encoding="utf-8") for example in sorted((root / "Examples").rglob("*.cpp"))]
    for page in sorted([*root.glob("README.md"), *(root / "Docs").glob("*.md")]):
        for block in BLOCK.findall(page.read_text(encoding="utf-8")):
            if not any(stands_in(block, example) for example in examples):
                yield f"{page.name}: a block that begins with {block.splitlines()[0]} stands in no example"


def stands_in(block, example):
    """At the left margin of the page, it may stand inside a class or a function of the example."""
    return any("\n" + textwrap.indent(block, margin) in "\n" + example for margin in ("", " " * 4, " " * 8))


def check_headers(root):
    for header in sorted((root / "Orrenby").rglob("*.hpp")):
        name = header.relative_to(root).as_posix()
        for file, title in SNIPPET.findall(header.read_text(encoding="utf-8")):
            if not file.startswith(PLACES) or not (root / file).is_file():
                yield f"{name}: points to {file}, which is no file below Tests/ or Examples/"
                continue
            lines = [line.strip() for line in (root / file).read_text(encoding="utf-8").split("\n")]
            if lines.count(f"//! [{title}]") != 2:
                yield f"{name}: {file} has no block between two lines //! [{title}]"


class SelfTest(checker.TreeTest):
    def findings(self, header, test):
        self.put("Orrenby/A.hpp", header)
        self.put("Tests/ATests.cpp", test)
        return list(check(self.root))

    def test_a_block_that_exists_is_in_order(self):
        block = "    //! [Two words]\n    run();\n    //! [Two words]\n"
        self.assertEqual([], self.findings("/// @snippet Tests/ATests.cpp Two words\n", block))

    def test_a_missing_file_is_found(self):
        self.assertEqual(1, len(self.findings("/// @snippet Tests/BTests.cpp Words\n", "")))

    def test_a_file_that_nobody_compiles_is_found(self):
        self.assertEqual(1, len(self.findings("/// @snippet Orrenby/A.hpp Words\n", "")))

    def test_a_missing_or_open_block_is_found(self):
        for test in ("", "//! [Words]\nrun();\n", "//! [Words and more]\nrun();\n//! [Words and more]\n"):
            self.assertEqual(1, len(self.findings("/// @snippet Tests/ATests.cpp Words\n", test)), test)

    def test_code_of_the_readme_that_no_example_has_is_found(self):
        self.put("README.md", "```cpp\nrun();\n```\n")
        self.assertEqual(1, len(self.findings("", "")))
        self.put("Examples/a.cpp", "int main() {\nrun();\n}\n")
        self.assertEqual([], self.findings("", ""))

    def test_code_of_a_page_may_stand_further_to_the_right_in_an_example(self):
        self.put("Docs/Page.md", "```cpp\nif (ready)\n    run();\n```\n")
        self.put("Examples/a.cpp", "int main() {\n    if (ready)\n    run();\n}\n")
        self.assertEqual(1, len(self.findings("", "")))
        self.put("Examples/a.cpp", "int main() {\n    if (ready)\n        run();\n}\n")
        self.assertEqual([], self.findings("", ""))


if __name__ == "__main__":
    checker.run(check, "Every example exists.")
