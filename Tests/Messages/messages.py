#!/usr/bin/env python3
"""A callable that does not fit an operator is refused in a few lines, and the first error is a sentence about the operator.

    messages.py COMPILER ROOT               compiles each wrong use, fails where the message is long or says something else
    messages.py COMPILER ROOT --self-test   shows that a long message and another sentence are found
"""

import concurrent.futures
import os
import subprocess
import sys

LIMIT = 12  # lines

# What is written wrongly, and how the sentence begins.
USES = {
    "stream.map([](const std::string& text) { return text; })": "map() takes",
    "stream.map(5)": "map() takes",
    "stream.tryMap([](const std::string& text) { return text; })": "tryMap() takes",
    "stream.mapError([](int) { return 0; })": "mapError() takes",
    "stream.catch_([](const std::string&) { return 0; })": "catch_() takes",
    "failing.catch_([](const std::string&) { return std::string(); })": "catch_() takes",
    "failing.tryCatch([](int, int) { return 0; })": "tryCatch() takes",
    "stream.sink([](const std::string&) {})": "sink() takes",
    "stream.bind([](int, int) {})": "bind() takes",
    "stream | Streams::filter([](const std::string& text) { return text.empty(); })": "filter() takes",
    "Streams::filter(stream, 5)": "filter() takes",
    "stream | Streams::tryFilter([](const std::string&) { return true; })": "tryFilter() takes",
    "stream | Streams::distinctBy([](int) {})": "distinctBy() takes",
    "Streams::tryDistinctBy(stream, [](const std::string& text) { return text; })": "tryDistinctBy() takes",
}

SOURCE = """
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include "Orrenby/Utilities/Streams/More/Distinct.hpp"
#include "Orrenby/Utilities/Streams/More/Filter.hpp"
#include <string>
using namespace orrenby;
void use(Streams::AnyPublisher<int, Never> stream, Streams::AnyPublisher<int, std::string> failing)
{
    (void)stream, (void)failing;
    [[maybe_unused]] auto result = %s;
}
"""


def message(compiler, root, use):
    told = subprocess.run([*compiler.split(), "-std=c++20", "-fsyntax-only", "-I", root, "-x", "c++", "-"],
                          input=SOURCE % use, capture_output=True, text=True, check=False,
                          env={**os.environ, "LC_ALL": "C"})
    return told.stderr.splitlines()


def finding(lines, sentence, limit=LIMIT):
    errors = [line for line in lines if "error: " in line]
    if not errors:
        return "compiles"
    if "static assertion failed" not in errors[0] or sentence not in errors[0]:
        return f"begins with another error: {errors[0]}"
    if len(errors) > 1:
        return f"has a second error: {errors[1]}"
    return f"has {len(lines)} lines" if len(lines) > limit else None


def check(compiler, root):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        told = pool.map(lambda use: message(compiler, root, use), USES)
    findings = [f"{use}: {found}" for use, lines in zip(USES, told) if (found := finding(lines, USES[use]))]
    print("\n".join(findings) or f"{len(USES)} wrong uses are refused in {LIMIT} lines or less.")
    return 1 if findings else 0


def self_test(compiler, root):
    right = message(compiler, root, "stream.map([](int value) { return value; })")
    assert finding(right, "map() takes") == "compiles", right
    wrong = message(compiler, root, "stream.map(5)")
    assert finding(wrong, "map() takes") is None, wrong
    assert "another error" in finding(wrong, "filter() takes")
    assert "lines" in finding(wrong, "map() takes", limit=3)
    assert "another error" in finding(message(compiler, root, "stream.nothing(5)"), "map() takes")
    print("What compiles, is long, or is about something else, is found.")
    return 0


if __name__ == "__main__":
    arguments = [argument for argument in sys.argv[1:] if argument != "--self-test"]
    sys.exit((self_test if "--self-test" in sys.argv else check)(*arguments))
