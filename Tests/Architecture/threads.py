#!/usr/bin/env python3
"""The comment of every public class says what several threads may do with its objects.

The sentences are "Not synchronised.", "Safe to use from several threads." and "Use from the queue it was made on."; they may be
woven into a longer one that names the queue, or "the main thread" in its place. A sentence in the header's first comment serves all
classes of the header.

Looked at is every class outside of `detail` in a header that its floor's umbrella header includes. Left out are

- classes without member functions, as groups of options, tags and traits are: they are as safe as any variable. Constructors,
  comparisons, conversions and default destructors do not count;
- classes that are nested in another one, for which the comment of the outer class speaks, and specialisations, for which that of
  the template does.

    threads.py [ROOT]       prints one line per finding, fails if there is one
    threads.py --self-test  shows on made-up trees that the check can fail
"""

import re

import checker

FLOORS = ("Platform", "Standard", "Utilities", "Foundation", "Testing")
INCLUDE = re.compile(r'^#include "(Orrenby/[^"]+/[^"]+)"\n', re.M)
RULE = re.compile(r"\b(?:not synchronised|none is synchronised|safe to use from several threads"
                  r"|use (?:it )?from (?:the main thread|(?:the|its) queue))\b", re.I)

FIRST_COMMENT = re.compile(r"\s*(?:#pragma once\s+)?((?:^///[^\n]*\n)*)", re.M)
HIDDEN = re.compile(r"^namespace (?:[^\n]*::)?detail \{$.*?^\} // namespace [^\n]*\bdetail$", re.M | re.S)
CLASS = re.compile(r"^(?:class|struct) (?:\[\[[^\]]*\]\] )?(?:ORRENBY_EXPORT )?(\w+)(?: final)?(?:\s*:(?!:)[^;{]*)? ?\{", re.M)
# Between a class and its comment stand at most the lines of its template head.
COMMENT_ABOVE = re.compile(r"((?:^///[^\n]*\n)+)(?:^(?!///|[};])[^\n]+\n)*\Z", re.M)
# A function, once everything in brackets is gone: "$" stands for round ones.
FUNCTION = re.compile(r"(operator *(?:\$|[^\w\s$]+|\b[^$]*)|~?\b\w+) ?\$")
TEXT_OR_REMARK = re.compile(r'"(?:[^"\\\n]|\\.)*"|\'(?:[^\'\\\n]|\\.)\'|//[^\n]*')
BRACKETS = ((re.compile(r"\([^(){}]*\)"), "$"),  # lists of parameters
            (re.compile(r"\{[^(){}]*\}"), ";"),  # bodies end a member
            (re.compile(r"(?<!operator) ?<[^<>(){};]*>"), ""))  # arguments of templates
NO_BEHAVIOUR = re.compile(r"explicit|requires|noexcept|decltype|alignas|static_assert|operator *(?:=|==|!=|<=>|\w.*)")


def words(comment):
    """The text of a comment without its marks: the formatter may break a sentence anywhere."""
    return " ".join(line.lstrip("/ ") for line in comment.splitlines())


def without_brackets(text):
    previous = None
    while previous != text:
        previous = text
        for pattern, instead in BRACKETS:
            text = pattern.sub(instead, text)
    return text


def has_behaviour(name, body):
    for member in without_brackets(TEXT_OR_REMARK.sub("", body)).split(";"):
        declaration, _, definition = member.partition(" = ")
        function = FUNCTION.search(declaration)
        if not function or function[1] == name or NO_BEHAVIOUR.fullmatch(function[1]):
            continue
        if not (function[1] == "~" + name and definition == "default"):
            return True
    return False


def classes(text):
    """Name, comment and body of each public class. Of several forms, one for each build, the first has the comment."""
    text = HIDDEN.sub("", text)
    for found in {found[1]: found for found in reversed(list(CLASS.finditer(text)))}.values():
        above = COMMENT_ABOVE.search(text[:found.start()])
        first, _, rest = text[found.end():].partition("\n")
        body = first if first.endswith("};") else rest.partition("\n};")[0]
        yield found[1], words(above[1]) if above else "", body


def check(root):
    for floor in FLOORS:
        umbrella = (root / "Orrenby" / f"{floor}.hpp").read_text(encoding="utf-8")
        for path in INCLUDE.findall(umbrella):
            text = (root / path).read_text(encoding="utf-8") if path.startswith(f"Orrenby/{floor}/") else ""
            if RULE.search(words(FIRST_COMMENT.match(text)[1])):
                continue
            for name, comment, body in classes(text):
                if has_behaviour(name, body) and not RULE.search(comment):
                    yield f"{path}: the comment of {name} does not say what several threads may do"


class SelfTest(checker.TreeTest):
    FINDING = "Orrenby/Platform/Room/Bell.hpp: the comment of Bell does not say what several threads may do"
    BELL = ("class ORRENBY_EXPORT Bell final : public Thing {", "public:", "    void ring();", "};")

    def findings(self, *lines, of_file=""):
        for floor in FLOORS:
            self.put(f"Orrenby/{floor}.hpp", "#pragma once\n")
        self.put("Orrenby/Platform.hpp", '#pragma once\n\n#include "Orrenby/Platform/Room/Bell.hpp"\n')
        self.put("Orrenby/Platform/Room/Bell.hpp", "\n".join(
            ("#pragma once", "", "/// @file", "/// Bells. " + of_file, "", "#include <string>", "",
             "namespace orrenby::inline ORRENBY_ABI {", "", *lines, "", "} // namespace orrenby", "")))
        return list(check(self.root))

    def test_each_of_the_rules_is_enough(self):
        for rule in ("Not synchronised.", "Safe to use from several threads.", "Use from the queue it was made on.",
                     "Its parts are not synchronised, but", "Use from its queue.", "Use it from the main thread."):
            self.assertEqual([], self.findings("/// Rings.", "///", "/// " + rule, *self.BELL), rule)

    def test_a_rule_may_be_broken_over_two_lines(self):
        self.assertEqual([], self.findings("/// Rings. Safe to use from", "/// several threads.", *self.BELL))

    def test_a_class_without_rule_is_found(self):
        self.assertEqual([self.FINDING], self.findings("/// Rings in several threads, synchronised or not.", *self.BELL))
        self.assertEqual([self.FINDING], self.findings(*self.BELL))

    def test_the_rule_of_another_class_does_not_count(self):
        self.assertEqual([self.FINDING], self.findings(
            "/// Not synchronised.", "class Tower {", "public:", "    int bells() const;", "};", "", "/// Rings.", *self.BELL))

    def test_the_rule_of_a_member_does_not_count(self):
        self.assertEqual([self.FINDING], self.findings(
            "/// Rings.", "struct Bell {", "    /// Safe to use from several threads.", "    void ring() {}", "};"))

    def test_the_rule_of_the_header_serves_all_its_classes(self):
        self.assertEqual([], self.findings("/// Rings.", *self.BELL, of_file="None is synchronised."))

    def test_a_template_has_its_comment_above_its_head(self):
        head = ("template <class Tone>", "    requires(Loud<Tone>)")
        self.assertEqual([], self.findings("/// Not synchronised.", *head, *self.BELL))
        self.assertEqual([self.FINDING], self.findings("/// Rings.", *head, *self.BELL))

    def test_the_comment_of_a_class_with_two_forms_is_the_first(self):
        forms = ("#ifdef ORRENBY_DIAGNOSTICS", *self.BELL, "#else", *self.BELL, "#endif")
        self.assertEqual([], self.findings("/// Not synchronised.", *forms))
        self.assertEqual([self.FINDING], self.findings("/// Rings.", *forms))

    def test_every_kind_of_function_is_behaviour(self):
        for member in ("virtual int size() const noexcept = 0;", "~Bell();", "void operator()() const;", "Bell& operator+=(int count);",
                       "static Bell made(std::string name = {}, int (*tune)(int) = nullptr);", "template <class T> T as() const {}",
                       "bool isLoud() const { return m_volume > loudest(\"({\", '('); }  // :("):
            self.assertEqual([self.FINDING], self.findings("/// Rings.", "class Bell {", "    " + member, "};"), member)
        for head in ("struct Bell { void ring(); };", "class Bell\n    : public Thing<int, Tower::Room> {\n    void ring();\n};"):
            self.assertEqual([self.FINDING], self.findings("/// Rings.", head), head)

    def test_options_and_tags_need_no_rule(self):
        self.assertEqual([], self.findings(
            "/// How to ring.", "struct Bell {", "    int count = int(3);", "    double pause { half(1) };",
            "    UniqueFunction<void(const Ref<Tower>&)> prepare = {};",
            "    explicit Bell(int count);", "    ~Bell() = default;", "    Bell& operator=(const Bell&) = delete;",
            "    friend bool operator==(const Bell&, const Bell&) = default;",
            "    explicit operator bool() const noexcept { return count; }", "};", "", "struct Tag {};"))

    def test_what_is_not_public_needs_no_rule(self):
        self.assertEqual([], self.findings("namespace detail {", "", *self.BELL, "", "} // namespace detail"))
        self.assertEqual([], self.findings("class Bell;", "", "struct std::hash<Bell> {", "    int operator()(Bell) const;", "};",
                                           "", "class Tower::Bell {", "    void ring();", "};"))

    def test_a_header_outside_of_the_umbrella_needs_no_rule(self):
        self.findings("/// Rings.", *self.BELL)
        self.put("Orrenby/Platform.hpp", "#pragma once\n")
        self.assertEqual([], list(check(self.root)))


if __name__ == "__main__":
    checker.run(check, "Every public class says what several threads may do with it.")
