#!/usr/bin/env python3
"""Every guarantee names what holds it, and that is there.

In Docs/Guarantees.md the guarantees of a section are numbered 1, 2, 3 and so on. Each has the words "Held by" and links behind
them: to tests, by suite and name, or to a fuzz target, a benchmark or a script.

    guarantees.py [ROOT]       prints one line per finding, fails if there is one
    guarantees.py --self-test  shows on made-up trees that the check can fail
"""

import re

import checker

PAGE = "Docs/Guarantees.md"
SECTION = re.compile(r"^## .*\((\w+)\)$")
ITEM = re.compile(r"^(\d+)\. ")
LINK = re.compile(r"\[([^\]]+)\]\(([^()\s]+)\)")
TEST = re.compile(r"^(?:TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P)\(\s*(\w+)\s*,\s*(\w+)\s*\)", re.M)


def guarantees(text):
    """Section, number and text of each."""
    section, items = None, []
    for line in text.splitlines():
        if heading := SECTION.match(line):
            section = heading[1]
        elif line.startswith("#"):
            section = None
        elif section and (begin := ITEM.match(line)):
            items.append([section, int(begin[1]), line])
        elif items and items[-1][0] == section:
            items[-1][2] += "\n" + line
    return items


def tests_in(file):
    return {f"{suite}.{name}" for suite, name in TEST.findall(file.read_text(encoding="utf-8"))}


def wrong_link(page, label, target):
    """What is wrong with a link to something that holds a guarantee; nothing if all is well."""
    file = page.parent / target
    if not file.is_file():
        return f"{target} does not exist"
    if file.suffix == ".cpp" and "Tests" in target.split("/") and label not in tests_in(file):
        return f"{target} has no test {label}"
    return None


def check(root):
    page = root / PAGE
    expected = {}
    for section, number, text in guarantees(page.read_text(encoding="utf-8")):
        name = f"{PAGE}: {section} {number}"
        expected[section] = expected.get(section, 0) + 1
        if number != expected[section]:
            yield f"{name}: comes where {expected[section]} is next"
            expected[section] = number
        links = LINK.findall(text.partition("Held by")[2])
        if not links:
            yield f"{name}: names nothing that holds it"
        for label, target in links:
            if wrong := wrong_link(page, label, target):
                yield f"{name}: {wrong}"
    if not expected:
        yield f"{PAGE}: has no guarantees"


class SelfTest(checker.TreeTest):
    def findings(self, *items, heading="## Queues (Q)"):
        self.put("Tests/QueueTests.cpp", "TEST(Queue, KeepsOrder)\n{\n}\n\nTEST_P(QueueContract,\n    RunsAll)\n{\n}\n")
        self.put("Fuzz/Queue.cpp", "// Any work.\n")
        self.put("Docs/Guarantees.md", "# Guarantees\n\n" + heading + "\n\n" + "\n".join(items) + "\n")
        return list(check(self.root))

    def test_tests_and_programs_that_are_there_are_in_order(self):
        self.assertEqual([], self.findings("1. It keeps order.", "   Held by [Queue.KeepsOrder](../Tests/QueueTests.cpp).",
                                           "2. It runs all. Held by [QueueContract.RunsAll](../Tests/QueueTests.cpp),",
                                           "   [a fuzz target](../Fuzz/Queue.cpp)."))

    def test_a_guarantee_that_nothing_holds_is_found(self):
        self.assertEqual(["Docs/Guarantees.md: Q 1: names nothing that holds it", "Docs/Guarantees.md: Q 2: names nothing that holds it"],
                         self.findings("1. See [this](../Fuzz/Queue.cpp).", "2. It runs all. Held by a test.", "## Other",
                                       "1. Held by [a fuzz target](../Fuzz/Queue.cpp)."))

    def test_a_file_that_does_not_exist_is_found(self):
        self.assertEqual(["Docs/Guarantees.md: Q 1: ../Fuzz/Gone.cpp does not exist"],
                         self.findings("1. It runs. Held by [a fuzz target](../Fuzz/Gone.cpp)."))

    def test_a_test_that_does_not_exist_is_found(self):
        self.assertEqual(["Docs/Guarantees.md: Q 1: ../Tests/QueueTests.cpp has no test Queue.RunsAll",
                          "Docs/Guarantees.md: Q 1: ../Tests/QueueTests.cpp has no test these"],
                         self.findings("1. It runs. Held by [Queue.RunsAll](../Tests/QueueTests.cpp), [these](../Tests/QueueTests.cpp)."))

    def test_a_number_out_of_turn_is_found_once(self):
        held = " Held by [a fuzz target](../Fuzz/Queue.cpp)."
        self.assertEqual(["Docs/Guarantees.md: Q 3: comes where 2 is next"],
                         self.findings("1. A." + held, "3. B." + held, "4. C." + held))
        self.assertEqual(["Docs/Guarantees.md: Q 1: comes where 2 is next"], self.findings("1. A." + held, "1. B." + held))

    def test_a_page_without_guarantees_is_found(self):
        self.assertEqual(["Docs/Guarantees.md: has no guarantees"], self.findings("1. A.", heading="## Queues"))


if __name__ == "__main__":
    checker.run(check, "Every guarantee is held by something that is there.")
