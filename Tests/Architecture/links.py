#!/usr/bin/env python3
"""What a page links to is there, and every program of the ladder of examples is linked from a page.

Pages are README.md and the others beside it, those in Docs/ and Examples/, and the one of each room. What stands in code is no link.

    links.py [ROOT]       prints one line per finding, fails if there is one
    links.py --self-test  shows on made-up trees that the check can fail
"""

import re

import checker

PAGES = ("*.md", "Docs/*.md", "Examples/**/*.md", "Orrenby/**/*.md")
BLOCK = re.compile(r"^```.*?^```$", re.M | re.S)
CODE = re.compile(r"(`+)(?!`).*?(?<!`)\1(?!`)")
LINK = re.compile(r"\]\(([^()\s]+)\)")
ELSEWHERE = re.compile(r"[a-z]+:|#")


def links(page):
    """The words of a link may be code, its target is none."""
    text = BLOCK.sub("", page.read_text(encoding="utf-8"))
    for target in LINK.findall(CODE.sub("code", text)):
        if not ELSEWHERE.match(target):
            yield target.partition("#")[0]


def check(root):
    linked = set()
    for page in sorted({page for pattern in PAGES for page in root.glob(pattern)}):
        for target in links(page):
            if (page.parent / target).exists():
                linked.add((page.parent / target).resolve())
            else:
                yield f"{page.relative_to(root).as_posix()}: links to {target}, which does not exist"
    for program in sorted((root / "Examples").glob("*.cpp")):
        if program.resolve() not in linked:
            yield f"Examples/{program.name}: no page links to it"


class SelfTest(checker.TreeTest):
    def findings(self, page):
        self.put("Examples/00-taste.cpp", "int main() {}\n")
        self.put("Examples/README.md", page)
        return list(check(self.root))

    def test_a_program_that_is_linked_is_in_order(self):
        self.assertEqual([], self.findings("- [`00-taste`](00-taste.cpp): the house\n"))
        self.put("Docs/Page.md", "See [the first](../Examples/00-taste.cpp#L3).\n")
        self.assertEqual([], self.findings("No link.\n"))

    def test_a_program_that_is_only_named_is_found(self):
        self.assertEqual(["Examples/00-taste.cpp: no page links to it"], self.findings("- `00-taste`: the house\n"))

    def test_a_link_that_leads_nowhere_is_found(self):
        findings = self.findings("[`00-taste`](00-taste.cpp), [gone](../Gone.md), [`01-gone`](01-gone.cpp)\n")
        self.assertEqual(["Examples/README.md: links to ../Gone.md, which does not exist",
                          "Examples/README.md: links to 01-gone.cpp, which does not exist"], findings)

    def test_what_leads_elsewhere_and_what_stands_in_code_is_left_alone(self):
        self.assertEqual([], self.findings("[`00-taste`](00-taste.cpp) [there](https://example.com/a) [below](#part)\n"
                                           "`[x](y)` ``[`](z)``\n```cpp\n[this](int value) {}\n[&](value) {}\n```\n"))


if __name__ == "__main__":
    checker.run(check, "Every link leads somewhere, and every example is found.")
