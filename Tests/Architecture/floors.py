#!/usr/bin/env python3
"""Holds the plan of the house: who may include whom, and what every header looks like.

    floors.py [ROOT]        checks the tree below ROOT, prints one line per finding, fails if there is one
    floors.py --self-test   shows on made-up trees that every rule can fail
"""

import collections
import pathlib
import re
import shutil

import checker

FLOORS = {"Platform": 0, "Standard": 1, "Utilities": 2, "Foundation": 3, "Orrenby": 4, "Testing": 5}
OWNER_OF_MACROS = "Orrenby/Platform/Export.hpp"
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"\n]+)[>"]', re.M)
DEFINE = re.compile(r"^[ \t]*#[ \t]*define[ \t]+(\w+)", re.M)
OUTSIDE_NAMESPACE = re.compile(r"^namespace orrenby(?!::inline ORRENBY_ABI\b)", re.M)
HEAD = re.compile(r"#pragma once\n\n/// @file\n/// \S")

# Headers of the system with an ending; those of the standard library have none.
SYSTEM = re.compile(r"(sys|linux|asm|arpa|netinet|net)/\w+\.h|"
                    r"(pthread|unistd|fcntl|time|sched|errno|signal|poll|locale|dlfcn|link|cxxabi|execinfo|semaphore|x86intrin|"
                    r"immintrin)\.h")
STANDARD = re.compile(r"\w+")

# The third-party headers that a public header may include, with the price named.
ALLOWED_IN_HEADERS = re.compile(r"boost/describe(/\w+)?\.hpp")  # 0.05 s, and a described class needs it

# The headers that exist for the sake of a third-party library, and stay out of the umbrella headers.
BRIDGES = {"Orrenby/Platform/Objects/Formatting.hpp": re.compile(r"fmt/\w+\.h")}


def floor_of(path):
    """The floor of Orrenby/<Floor>/… and of Orrenby/<Floor>.hpp."""
    return path.split("/")[1].removesuffix(".hpp")


def library_files(root):
    files = {}
    for path in sorted((root / "Orrenby").rglob("*")):
        if path.suffix in (".hpp", ".cpp"):
            files[path.relative_to(root).as_posix()] = path.read_text(encoding="utf-8")
    return files


def check_own_include(path, included, files):
    if included not in files:
        yield f"{path}: includes {included}, which does not exist (paths start at the root: \"Orrenby/…\")"
        return
    here, there = floor_of(path), floor_of(included)
    if here not in FLOORS or there not in FLOORS:
        yield f"{path}: stands on no floor, or {included} does not"
    elif there == "Testing" and here != "Testing":
        yield f"{path}: includes {included}, but the library never uses its test kit"
    elif FLOORS[there] > FLOORS[here]:
        yield f"{path}: includes {included} of the higher floor {there}"


def check_foreign_include(path, included):
    if STANDARD.fullmatch(included) or SYSTEM.fullmatch(included):
        return
    if floor_of(path) != "Platform":
        yield f"{path}: includes <{included}>, but only Platform may include third-party headers"
    elif path.endswith(".hpp") and not BRIDGES.get(path, ALLOWED_IN_HEADERS).fullmatch(included):
        yield f"{path}: includes <{included}>, but third-party headers belong in .cpp files"


def check_form(path, text):
    if OUTSIDE_NAMESPACE.search(text):
        yield f"{path}: opens namespace orrenby without ::inline ORRENBY_ABI"
    if path.endswith(".cpp"):
        return
    if not HEAD.match(text):
        yield f"{path}: does not open with #pragma once, /// @file and a line on what it holds"
    if path != OWNER_OF_MACROS:
        for name in DEFINE.findall(text):
            yield f"{path}: defines the macro {name}"


def check_rooms(root, files):
    """Each folder that holds code opens with a page on what goes there. Sub-folders of a room share the room's page."""
    folders = {"/".join(path.split("/")[:length]) for path in files for length in (1, 2, 3) if path.count("/") >= length}
    for folder in sorted(folders):
        if not (root / folder / "README.md").is_file():
            yield f"{folder}: has no README.md"


def circles(graph):
    """Each circle once, as the list of its files. Depth-first, with a stack of its own: include chains can be long."""
    found, state = [], {}
    for start in graph:
        if start in state:
            continue
        state[start] = "open"
        trail = [(start, iter(graph[start]))]
        while trail:
            node, rest = trail[-1]
            following = next(rest, None)
            if following is None:
                state[node] = "done"
                trail.pop()
            elif state.get(following) == "open":
                nodes = [entry for entry, _ in trail]
                found.append(nodes[nodes.index(following):] + [following])
            elif following not in state:
                state[following] = "open"
                trail.append((following, iter(graph[following])))
    return found


def check(root):
    files = library_files(root)
    findings, graph = [], collections.defaultdict(list)
    for path in files:
        graph[path] = []
    for path, text in files.items():
        for quote, included in INCLUDE.findall(text):
            if quote == '"' or included.startswith("Orrenby/"):
                findings += check_own_include(path, included, files)
                if included in files:
                    graph[path].append(included)
            else:
                findings += check_foreign_include(path, included)
        findings += check_form(path, text)
    findings += check_rooms(root, files)
    findings += ["circle: " + " -> ".join(circle) for circle in circles(graph)]
    return findings


class SelfTest(checker.TreeTest):
    HEAD = "#pragma once\n\n/// @file\n/// What it holds.\n\n"

    def findings(self, files, folders_without_page=()):
        shutil.rmtree(self.root / "Orrenby", ignore_errors=True)
        for path, text in files.items():
            self.put(path, text)
            for parent in pathlib.PurePosixPath(path).parents:
                if str(parent) not in folders_without_page:
                    self.put(parent / "README.md", "")
        return check(self.root)

    def header(self, *lines):
        return self.HEAD + "".join(line + "\n" for line in lines)

    def test_a_tree_in_order_has_no_findings(self):
        self.assertEqual([], self.findings({
            "Orrenby/Platform/Export.hpp": self.header("#define ORRENBY_EXPORT"),
            "Orrenby/Platform/Objects/A.hpp": self.header('#include "Orrenby/Platform/Export.hpp"', "#include <vector>",
                                                          "namespace orrenby::inline ORRENBY_ABI {", "}"),
            "Orrenby/Platform/Objects/A.cpp": '#include "Orrenby/Platform/Objects/A.hpp"\n#include <fmt/format.h>\n'
                                              "#include <pthread.h>\n#define LOCAL 1\n",
            "Orrenby/Platform/Objects/Described.hpp": self.header("#include <boost/describe/class.hpp>"),
            "Orrenby/Standard/B.hpp": self.header('#include "Orrenby/Platform/Objects/A.hpp"', "#include <sys/types.h>"),
            "Orrenby/Foundation.hpp": self.header('#include "Orrenby/Standard/B.hpp"'),
            "Orrenby/Testing/C.hpp": self.header('#include "Orrenby/Foundation.hpp"'),
        }))

    def assert_one_finding(self, expected, files):
        findings = self.findings(files)
        self.assertEqual(1, len(findings), findings)
        self.assertIn(expected, findings[0])

    def test_a_higher_floor_is_out_of_reach(self):
        files = {"Orrenby/Utilities/B.hpp": self.header()}
        for included, path in (("Orrenby/Utilities/B.hpp", "Orrenby/Standard/A.hpp"),
                               ("Orrenby/Utilities/B.hpp", "Orrenby/Platform.hpp")):
            self.assert_one_finding("higher floor Utilities", files | {path: self.header(f'#include "{included}"')})

    def test_the_library_never_uses_its_test_kit(self):
        self.assert_one_finding("test kit", {
            "Orrenby/Testing/Kit.hpp": self.header(),
            "Orrenby/Orrenby.hpp": self.header('#include "Orrenby/Testing/Kit.hpp"')})

    def test_an_include_outside_of_the_root_is_found(self):
        self.assert_one_finding("does not exist", {
            "Orrenby/Standard/A.hpp": self.header(), "Orrenby/Standard/A.cpp": '#include "A.hpp"\n'})

    def test_includes_form_no_circle(self):
        self.assert_one_finding("circle: Orrenby/Standard/A.hpp -> Orrenby/Standard/B.hpp -> Orrenby/Standard/A.hpp", {
            "Orrenby/Standard/A.hpp": self.header('#include "Orrenby/Standard/B.hpp"'),
            "Orrenby/Standard/B.hpp": self.header('#include "Orrenby/Standard/A.hpp"')})

    def test_third_party_headers_stay_on_the_ground_floor(self):
        self.assert_one_finding("only Platform", {"Orrenby/Utilities/A.cpp": "#include <fmt/format.h>\n"})

    def test_third_party_headers_stay_out_of_public_headers(self):
        self.assert_one_finding("belong in .cpp", {"Orrenby/Platform/A.hpp": self.header("#  include <unicode/uchar.h>")})

    def test_a_bridge_to_a_library_includes_that_library_alone(self):
        path = "Orrenby/Platform/Objects/Formatting.hpp"
        self.assertEqual([], self.findings({path: self.header("#include <fmt/format.h>")}))
        self.assert_one_finding("belong in .cpp", {path: self.header("#include <unicode/uchar.h>")})

    def test_every_header_opens_alike(self):
        for text in ("", "#pragma once\n", "#pragma once\n\n/// @file\n", "\n" + self.HEAD):
            self.assert_one_finding("does not open with", {"Orrenby/Platform/A.hpp": text})

    def test_macros_are_defined_in_one_header_only(self):
        self.assert_one_finding("defines the macro MAX", {"Orrenby/Platform/A.hpp": self.header("#define MAX(a, b) a")})

    def test_everything_stands_in_the_inline_namespace(self):
        for line in ("namespace orrenby {", "namespace orrenby::detail {"):
            self.assert_one_finding("opens namespace orrenby", {"Orrenby/Platform/A.cpp": line + "\n}\n"})

    def test_every_room_opens_with_a_page(self):
        files = {"Orrenby/Platform/Room/Inner/A.hpp": self.header()}
        self.assertEqual(["Orrenby/Platform/Room: has no README.md"], self.findings(files, ["Orrenby/Platform/Room"]))
        self.assertEqual([], self.findings(files, ["Orrenby/Platform/Room/Inner"]))


if __name__ == "__main__":
    checker.run(check, "Every floor is in order.")
