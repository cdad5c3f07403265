#!/usr/bin/env python3
"""Plays the scenario and compares what is printed with what is expected, line by line.

    scenario.py PROGRAM SCENARIO EXPECTED [--rx] [SCENE]   all scenes, or one
    scenario.py PROGRAM SCENARIO EXPECTED --progress       what is shown of progress fits what is expected of the scenes
    scenario.py PROGRAM SCENARIO EXPECTED --steps          each step that is explained is played, and the other way round
    scenario.py PROGRAM SCENARIO EXPECTED --write          writes EXPECTED anew
    scenario.py PROGRAM SCENARIO EXPECTED --self-test      shows that the comparison can fail

The second engine prints the same, apart from the one line that says when a future begins.
"""

import difflib
import os
import pathlib
import resource
import subprocess
import sys

PATIENCE = 60  # seconds
FIRST_ENGINE = "= a future begins at once"
SECOND_ENGINE = "= a future begins when somebody subscribes"


def played(program, scenario, *arguments):
    # In memory, where there is such a folder: the stores of the scenes wait for no disk.
    place = {"TMPDIR": "/dev/shm"} if os.access("/dev/shm", os.W_OK) else {}
    result = subprocess.run([program, scenario, *arguments], capture_output=True, text=True, encoding="utf-8", timeout=PATIENCE,
                            env={**os.environ, **place})
    if result.returncode != 0 or result.stderr:
        sys.exit(f"{program} ended with status {result.returncode}:\n{result.stdout}{result.stderr}")
    return result.stdout.splitlines()


def of_scene(lines, scene):
    """The lines of one scene, or all."""
    if not scene:
        return lines
    begin = next((place for place, line in enumerate(lines) if line.startswith(f"== {scene}: ")), None)
    if begin is None:
        sys.exit(f"nothing is expected of the scene {scene}")
    end = next((place for place in range(begin + 1, len(lines)) if lines[place].startswith("== ")), len(lines))
    return lines[begin:end]


def difference(expected, printed, is_second):
    if is_second:
        expected = [SECOND_ENGINE if line == FIRST_ENGINE else line for line in expected]
    return list(difflib.unified_diff(expected, printed, "expected", "printed", lineterm=""))


def check_progress(expected, shown):
    """A line for each scene, a table with the same scenes, all steps counted."""
    titles = [line[3:].split(": ") for line in expected if line.startswith("== ")]
    steps = sum(line.startswith("> ") and " s: " in line for line in expected)
    blank = shown.index("")
    lines, table = shown[:blank], shown[blank + 2:-2]
    for line, row, (name, title) in zip(lines, table, titles, strict=True):
        assert line.split()[1] == name and line.endswith(title), line
        assert row.split()[0] == name, row
    assert shown[-2].split()[:2] == ["together", str(steps)], shown[-2]
    assert shown[-1].startswith("Played in "), shown[-1]


def check_steps(program, expected):
    """What the manual explains, and what the scenes are made of."""
    explained = {line.split()[0] for line in subprocess.check_output([program, "--steps"], text=True, timeout=PATIENCE).splitlines()}
    taken = {line.split(" s: ")[1].split()[0] for line in expected if line.startswith("> ") and " s: " in line}
    assert explained == taken, explained ^ taken


def main():
    program, scenario, golden = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    arguments = sys.argv[4:]
    if "--write" in arguments:
        golden.write_text("\n".join(played(program, scenario)) + "\n", encoding="utf-8")
        return
    expected = golden.read_text(encoding="utf-8").splitlines()
    if "--progress" in arguments:
        check_progress(expected, played(program, scenario, "--progress"))
        return
    if "--steps" in arguments:
        check_steps(program, expected)
        return
    if "--self-test" in arguments:
        assert not difference(expected, expected, False)
        assert difference(expected, expected[:-1], False)
        assert difference(expected, expected, True), "both engines say the same"
        return
    is_second = "--rx" in arguments
    scene = next((argument for argument in arguments if not argument.startswith("--")), "")
    printed = played(program, scenario, *(["--rx"] if is_second else []), *([f"--scene={scene}"] if scene else []))
    differences = difference(of_scene(expected, scene), printed, is_second)
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    print(f"{len(printed)} lines, {used.ru_utime + used.ru_stime:.2f} s of the processor")
    if differences:
        sys.exit("\n".join(differences))


if __name__ == "__main__":
    main()
