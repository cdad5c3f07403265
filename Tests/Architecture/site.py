#!/usr/bin/env python3
"""The documentation site builds without a warning: every public name has a sentence, and what the sentences refer to exists.

    site.py [ROOT]       prints one line per finding, fails if there is one; without Doxygen it ends with 77
    site.py --self-test  shows on made-up trees that the check can fail, and what the site leaves out

Only what Doxygen says counts; the pages go to a folder that is removed.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

import checker

SKIPPED = 77
DOXYGEN = shutil.which("doxygen")
OWN_FILES = ("Doxyfile", "doxygen.awk", "doxygen-examples.awk")


def check(root):
    root = pathlib.Path(root).resolve()
    with tempfile.TemporaryDirectory() as folder:
        settings = (root / "Docs/Doxyfile").read_text(encoding="utf-8")
        settings += f"\nOUTPUT_DIRECTORY = {folder}\nVERBATIM_HEADERS = NO\nSEARCHENGINE = NO\n"
        built = subprocess.run([DOXYGEN, "-"], cwd=root, input=settings, text=True, capture_output=True)
    said = [line.replace(f"{root}/", "") for line in built.stderr.splitlines() if line.strip()]
    yield from said
    if built.returncode != 0 and not said:
        yield f"Doxygen ended with {built.returncode}"


class SelfTest(checker.TreeTest):
    HEAD = "#pragma once\n\n/// @file\n/// What it holds.\n\n"
    OPEN = "namespace orrenby::inline ORRENBY_ABI {\n\n"

    def setUp(self):
        super().setUp()
        for name in OWN_FILES:
            self.put(f"Docs/{name}", (checker.ROOT / "Docs" / name).read_text(encoding="utf-8"))
        for page in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md", "Examples/README.md"):
            self.put(page, f"# {page}\n\nText.\n")

    def findings(self, *lines, head=HEAD):
        self.put("Orrenby/A.hpp", head + self.OPEN + "".join(line + "\n" for line in lines) + "\n} // namespace orrenby\n")
        return list(check(self.root))

    def in_class(self, *lines):
        return self.findings("/// A class.", "class ORRENBY_EXPORT A {", "public:", *(f"    {line}".rstrip() for line in lines), "};")

    def test_a_tree_in_order_has_no_findings(self):
        self.assertEqual([], self.in_class("/// A function.", "int first() const;"))

    def test_a_public_name_without_a_sentence_is_found(self):
        findings = self.in_class("/// A function.", "int first() const;", "", "int second() const;")
        self.assertEqual(["Orrenby/A.hpp:14: error: Member second() const (function) of class orrenby::A is not documented."],
                         [finding.replace("warning:", "error:") for finding in findings])

    def test_a_comment_counts_for_the_functions_below_it_but_not_for_variables(self):
        self.assertEqual([], self.in_class("/// Both bounds.", "int first() const;", "int last() const;"))
        self.assertEqual(1, len(self.in_class("/// The first.", "int first = 0;", "int last = 0;")))

    def test_hidden_parts_need_no_sentence(self):
        self.assertEqual([], self.findings("namespace detail {", "int hidden();", "struct Part {", "    int a;", "};", "}"))
        inside = self.HEAD.replace("What it holds.", "Not in the umbrella header: part of B.cpp.")
        self.assertEqual([], self.findings("int hidden();", head=inside))

    def test_bases_that_hand_on_their_members_need_sentences(self):
        base = ["namespace detail {", "/// A base.", "///", "/// Its public members are those of what derives from it.", "class Base {",
                "public:", "    int handedOn() const;", "};", "int hidden();", "} // namespace detail"]
        findings = self.findings(*base)
        self.assertEqual(1, len(findings), findings)
        self.assertIn("handedOn", findings[0])

    def test_an_example_that_does_not_exist_is_found(self):
        self.put("Tests/ATests.cpp", "")
        self.assertNotEqual([], self.in_class("/// A function.", "///", "/// @snippet Tests/ATests.cpp Words", "int first() const;"))

    def test_a_page_that_leads_nowhere_is_found(self):
        self.put("Docs/Page.md", "# Page\n\nSee [another](Gone.md).\n")
        self.assertEqual(1, len(self.in_class("/// A function.", "int first() const;")))

    def test_a_program_becomes_a_page_that_the_list_leads_to(self):
        self.put("Examples/00-a.cpp", "// Step 0: one.\n\nint main() {}\n")
        self.put("Examples/README.md", "# Examples\n\n- [`00-a`](00-a.cpp): one\n")
        self.assertEqual([], self.in_class("/// A function.", "int first() const;"))
        self.put("Examples/README.md", "# Examples\n\n- [`01-b`](01-b.cpp): none\n")
        self.assertEqual(1, len(self.in_class("/// A function.", "int first() const;")))


if __name__ == "__main__":
    if DOXYGEN is None:
        print("There is no Doxygen here.")
        sys.exit(SKIPPED)
    checker.run(check, "Every public name has its sentence.")
