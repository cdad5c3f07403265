#!/usr/bin/env python3
"""Compares the binary interface of the built libraries with the one that is kept beside this script.

    abi.py FOLDER           prints what differs in the shared libraries of FOLDER, fails if anything does
    abi.py FOLDER --write   keeps what is there now
    abi.py --self-test      shows on two made-up libraries that the comparison can fail

The libraries need full debug information (-g). What is kept is what abidw of libabigail writes, compressed. It holds
for the compiler and the standard library of Debian 12 alone, since types of the standard library are a part of it;
elsewhere a difference means little. Symbols that come to be are a difference, too: whoever adds one keeps the new
interface in the same change, so that a later comparison tells what went away.
"""

import lzma
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
LIBRARIES = ("Platform", "Standard", "Utilities", "Foundation", "Testing")
DUMP = ["abidw", "--no-show-locs", "--no-corpus-path", "--no-comp-dir-path", "--no-parameter-names",
        "--exported-interfaces-only", "--drop-private-types", "--drop-undefined-syms", "--no-elf-needed"]


def dumped(library, headers):
    with tempfile.NamedTemporaryFile(suffix=".abi") as out:
        subprocess.run([*DUMP, "--headers-dir", headers, "--out-file", out.name, library], check=True)
        return pathlib.Path(out.name).read_bytes()


def difference(before, after):
    """What abidiff says of two dumps; nothing when they agree."""
    with tempfile.TemporaryDirectory() as folder:
        paths = [pathlib.Path(folder) / name for name in ("kept.abi", "built.abi")]
        for path, dump in zip(paths, (before, after)):
            path.write_bytes(dump)
        told = subprocess.run(["abidiff", "--no-show-locs", *paths], capture_output=True, text=True, check=False)
        if told.returncode & 3:
            raise RuntimeError(f"abidiff failed: {told.stderr}")
        return told.stdout.strip() if told.returncode else ""


def kept(name):
    return HERE / f"libOrrenby{name}.abi.xz"


def write(folder):
    for name in LIBRARIES:
        dump = dumped(folder / f"libOrrenby{name}.so", ROOT / "Orrenby")
        kept(name).write_bytes(lzma.compress(dump, preset=9 | lzma.PRESET_EXTREME))
        print(f"{kept(name).relative_to(ROOT)}: {kept(name).stat().st_size // 1024} KiB")
    return 0


def compare(folder):
    differing = 0
    for name in LIBRARIES:
        if not kept(name).exists():
            told = "no interface is kept"
        else:
            told = difference(lzma.decompress(kept(name).read_bytes()),
                              dumped(folder / f"libOrrenby{name}.so", ROOT / "Orrenby"))
        if told:
            differing += 1
            print(f"libOrrenby{name}: {told}\n")
    print(f"{differing} libraries differ: if that is meant, run ./dev abi --write." if differing
          else "The binary interface is the one that is kept.")
    return 1 if differing else 0


def self_test():
    bodies = {"same": "int answer(Point p) { return p.x; }", "again": "int answer(Point p) { return p.x; }",
              "gone": "int question(Point p) { return p.x; }"}
    structs = {name: "struct Point { int x; };" for name in bodies}
    bodies["wider"], structs["wider"] = bodies["same"], "struct Point { int x; int y; };"
    dumps = {}
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for case, body in bodies.items():
            (folder / "point.hpp").write_text(structs[case])
            (folder / "point.cpp").write_text(f'#include "point.hpp"\n{body}\n')
            subprocess.run(["c++", "-g", "-shared", "-fPIC", "-o", folder / "point.so", folder / "point.cpp"], check=True)
            dumps[case] = dumped(folder / "point.so", folder)
    assert difference(dumps["same"], dumps["again"]) == "", "equal libraries differ"
    assert "question" in difference(dumps["same"], dumps["gone"]), "a lost function is not told"
    assert "Point" in difference(dumps["same"], dumps["wider"]), "a wider struct is not told"
    print("The comparison tells a lost function and a wider struct.")
    return 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    folder = pathlib.Path(arguments[0])
    return write(folder) if "--write" in arguments[1:] else compare(folder)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
