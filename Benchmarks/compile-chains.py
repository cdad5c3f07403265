#!/usr/bin/env python3
"""Measures what stream chains cost a compiler: 50 chains of 3 maps, with the type erased at each hop, at -O2.

Prints the user time in seconds and the memory, and fails beyond the bar.
"""

import os
import pathlib
import resource
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
CHAINS = 50
BAR_SECONDS = 5.0

CHAIN = """
Streams::AnyCancellable chain{n}(const Streams::PassthroughSubject<int, Never>& subject, long& sum)
{{
    const Streams::AnyPublisher<int, Never> first = subject.asPublisher().map([](int value) {{ return value + {n}; }});
    const Streams::AnyPublisher<double, Never> second = first.map([](int value) {{ return value * {n}.5; }});
    const Streams::AnyPublisher<long, Never> third = second.map([](double value) {{ return static_cast<long>(value) + {n}; }});
    return third.bind([&sum](long value) {{ sum += value; }});
}}
"""


def main():
    text = '#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"\nusing namespace orrenby;\n'
    text += "".join(CHAIN.format(n=n) for n in range(CHAINS))
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "chains.cpp"
        source.write_text(text, encoding="utf-8")
        compiler = os.environ.get("CXX", "g++")
        subprocess.run([compiler, "-std=c++20", "-O2", f"-I{ROOT}", "-c", source, "-o", os.devnull], check=True)
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    seconds = used.ru_utime
    print(f"{CHAINS} chains of 3 maps at -O2: {seconds:.1f} s, {used.ru_maxrss // 1024} MiB (bar: {BAR_SECONDS} s)")
    return 0 if seconds <= BAR_SECONDS else 1


if __name__ == "__main__":
    sys.exit(main())
