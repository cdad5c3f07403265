#!/usr/bin/env python3
"""Counts the instructions of single operations with callgrind and holds them against their bars.

Each operation runs 100 and 1,100 times; the difference is what 1,000 cost, free of start and end of the program.
Usage: instructions.py PROGRAM
"""

import re
import subprocess
import sys

# The highest count that is still right, by operation. A rise beyond it is a regression to look at.
BARS = {
    "send-to-1": 65,
    "send-current-to-1": 65,
    "send-through-3-maps": 95,
    "send-through-3-filters": 95,
    "send-through-3-distincts": 101,
    "send-to-10": 220,
    "create-subscribe-push-dispose": 1000,
    "combine-latest-of-2-push": 160,
    "combine-latest-of-4-push": 160,
    "subscribe-dispose-beside-0": 600,
    "subscribe-dispose-beside-10000": 600,
    "deferred-subscribe-dispose": 900,
    "future-create-fulfil-subscribe-dispose": 2500,
    "send-to-2000": 35000,
    "set-unobserved": 12,
    "set-with-1-observer": 950,
    "set-with-10-observers": 6700,
    "set-with-a-typed-observer": 1200,
    "set-at-the-end-of-a-path": 1250,
    "replace-an-object-of-a-path": 2400,
    "register-and-remove": 2200,
}


def instructions(program, engine, operation, count):
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", program, engine, operation, str(count)]
    report = subprocess.run(command, capture_output=True, text=True, check=True).stderr
    return int(re.search(r"Collected : (\d+)", report).group(1))


def main(program):
    operations = subprocess.run([program], capture_output=True, text=True, check=True).stdout.split()
    print(f"{'instructions per operation':<42}{'Combine':>10}{'Rx':>10}{'bar':>8}")
    within = True
    for operation in operations:
        counts = []
        for engine in ("combine", "rx"):
            counts.append((instructions(program, engine, operation, 1100) - instructions(program, engine, operation, 100)) // 1000)
        bar = BARS.get(operation)
        within = within and (bar is None or max(counts) <= bar)
        print(f"{operation:<42}{counts[0]:>10}{counts[1]:>10}{bar if bar is not None else '-':>8}")
    return 0 if within else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
