#!/usr/bin/env python3
"""The recipes for package managers can be read, have the project's version, and name what the build asks for, nothing else.

    recipes.py [ROOT]       prints one line per finding, fails if there is one
    recipes.py --self-test  shows on made-up trees that the check can fail

Neither package manager is run: this tells only that the recipes have not fallen behind.
"""

import ast
import json
import re

import checker

BUILD = "Orrenby/CMakeLists.txt"
PORT = "Packaging/vcpkg/orrenby/vcpkg.json"
RECIPE = "conanfile.py"
FOUND = re.compile(r"^find_package\((\w+)|^find_library\(\w+ (\w+)", re.M)
VERSION = re.compile(r"project\(Orrenby VERSION ([\d.]+)")
NAMES = {"SQLite3": "sqlite3"}  # where the name is not the build's in lower case
TOOLS = ("vcpkg-cmake", "vcpkg-cmake-config")


def needed(root):
    found = FOUND.findall((root / BUILD).read_text(encoding="utf-8"))
    return {NAMES.get(name, name.lower()) for name in (package or library for package, library in found)}


def of_port(port):
    """The port asks for single parts of Boost."""
    names = [entry if isinstance(entry, str) else entry["name"] for entry in port["dependencies"]]
    return {name.split("-")[0] for name in names if name not in TOOLS}


def of_recipe(text):
    """(version, names of what is required) of the class in a recipe."""
    values = {}
    for recipe in (statement for statement in ast.parse(text).body if isinstance(statement, ast.ClassDef)):
        for statement in recipe.body:
            if isinstance(statement, ast.Assign):
                values[statement.targets[0].id] = ast.literal_eval(statement.value)
    return values.get("version"), {required.split("/")[0] for required in values.get("requires", ())}


def check(root):
    version = VERSION.search((root / "CMakeLists.txt").read_text(encoding="utf-8")).group(1)
    wanted = needed(root)
    try:
        port = json.loads((root / PORT).read_text(encoding="utf-8"))
        yield from compare(PORT, version, port.get("version"), wanted, of_port(port))
    except ValueError as error:
        yield f"{PORT}: cannot be read: {error}"
    try:
        actual_version, actual = of_recipe((root / RECIPE).read_text(encoding="utf-8"))
        yield from compare(RECIPE, version, actual_version, wanted, actual)
    except SyntaxError as error:
        yield f"{RECIPE}: cannot be read: {error}"


def compare(file, version, actual_version, wanted, actual):
    if actual_version != version:
        yield f"{file}: has version {actual_version}, the project {version}"
    for name in sorted(wanted - actual):
        yield f"{file}: does not name {name}, which the build asks for"
    for name in sorted(actual - wanted):
        yield f"{file}: names {name}, which the build does not ask for"


class SelfTest(checker.TreeTest):
    PORT_TEXT = '{"version": "1.2.0", "dependencies": ["boost-json", "boost-url", "fmt", {"name": "vcpkg-cmake", "host": true}]}'
    RECIPE_TEXT = 'class A(B):\n    version = "1.2.0"\n    requires = ("boost/1.81.0", "fmt/9.1.0")\n'

    def findings(self, port=PORT_TEXT, recipe=RECIPE_TEXT, build="find_package(fmt 9)\nfind_package(Boost 1.81)\n"):
        self.put("CMakeLists.txt", "project(Orrenby VERSION 1.2.0)\n")
        self.put(BUILD, build)
        self.put(PORT, port)
        self.put(RECIPE, recipe)
        return list(check(self.root))

    def test_recipes_that_agree_with_the_build_are_in_order(self):
        self.assertEqual([], self.findings())

    def test_a_new_dependency_is_missed_in_both(self):
        self.assertEqual(2, len(self.findings(build="find_package(fmt 9)\nfind_package(Boost 1)\nfind_library(X re2 REQUIRED)\n")))

    def test_what_the_build_does_not_ask_for_is_found(self):
        self.assertEqual(2, len(self.findings(build="find_package(Boost 1)\n")))

    def test_another_version_is_found(self):
        self.assertEqual(1, len(self.findings(port=self.PORT_TEXT.replace("1.2.0", "1.1.0"))))
        self.assertEqual(1, len(self.findings(recipe=self.RECIPE_TEXT.replace("1.2.0", "1.1.0"))))

    def test_what_cannot_be_read_is_found(self):
        self.assertEqual(1, len(self.findings(port="{")))
        self.assertEqual(1, len(self.findings(recipe="class A(:\n")))


if __name__ == "__main__":
    checker.run(check, "The recipes keep up with the build.")
