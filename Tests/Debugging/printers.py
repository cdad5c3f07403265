#!/usr/bin/env python3
"""Stops a program in gdb and compares how gdb shows its values with the .expected file. Ends with 77 where gdb may not run
programs, as in some containers: that is no finding."""

import argparse
import difflib
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
PRINTERS = HERE.parents[1] / "Debugging" / "orrenby_printers.py"
MARK = "-- the values --"


def gdb(program, *commands):
    arguments = [word for command in commands for word in ("-ex", command)]
    result = subprocess.run(["gdb", "-nx", "-batch", "-iex", "set debuginfod enabled off", *arguments, str(program)],
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return result.stdout


def may_run_programs():
    return "exited normally" in gdb("/bin/true", "run")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program")
    parser.add_argument("--show", action="store_true", help="print what gdb shows, to be read and kept")
    arguments = parser.parse_args()

    if not may_run_programs():
        print("gdb may not run programs here")
        sys.exit(77)
    printed = gdb(arguments.program, f"source {PRINTERS}", "set pagination off", "set width 0", "break lookAt", "run", "up",
                  f"echo {MARK}\\n", "info locals")
    shown = printed.partition(MARK + "\n")[2]
    if arguments.show:
        print(shown, end="")
        return
    expected = (HERE / "Values.expected").read_text(encoding="utf-8")
    if shown != expected:
        print(printed if not shown else "", *difflib.unified_diff(expected.splitlines(), shown.splitlines(), "expected", "shown"),
              sep="\n")
        sys.exit(1)


if __name__ == "__main__":
    main()
