#!/usr/bin/env python3
"""Runs the program as people and scripts run it, and looks at what it prints and how it ends.

    program.py PROGRAM
"""

import os
import pathlib
import pty
import re
import select
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = ""
PATIENCE = 30  # seconds
REPORT = "Title: {}\nPlace: Quay\nObserver: Nils\nSeverity: {}\n"

FEED = """\
+ low     #1 One bar of the cattle grid is bent, Weir Lane (Marit Lindqvist)
+ medium  #2 Upper spring has run dry, Chapel Bank (Sunniva Øye)
+ medium  #3 Stove of the shelter smokes, Colder Hill (Jonas Brandt)
+ high    #4 Boulder loose above the quarry road, Quarry Road, second bend (Sunniva Øye)
+ medium  #5 Warning light on the mast is out, Colder Hill (Jonas Brandt)
+ low     #6 Orchids in flower, 214 stems, Harrow Gate (Marit Lindqvist)
+ low     #7 Five young owls in the north barn, Harrow Gate (Tomé Ferreira)
+ medium  #8 Signpost leans into the road, Three Stones crossing (Tomé Ferreira)
! unreadable  torn-page.report: line 4: unknown severity "quite bad": low, medium or high
+ high    #9 Path washed out below the weir, Weir Lane (Ines Calder)
= 10 report files so far
> write ford.report
+ medium  #10 Footbridge under water, Lower Marrow, ford (Ines Calder)
> replace ford.report
~ high    #10 Footbridge carried away, Lower Marrow, ford (Ines Calder)
> write wasps.report
! unreadable  wasps.report: line 3: neither a header nor an empty line
> write wasps.report
+ low     #11 Wasps in the information board, Harrow Gate (Jonas Brandt)
> write owl-count.report
! unreadable  owl-count.report: line 2: unknown severity "enormous": low, medium or high
> write signpost.report
~ low     #8 Signpost upright again, Three Stones crossing (Tomé Ferreira)
> move wasps.report to wasps-harrow-gate.report
- low     #11 Wasps in the information board, Harrow Gate (Jonas Brandt)
+ low     #12 Wasps in the information board, Harrow Gate (Jonas Brandt)
> remove mast-light.report
- medium  #5 Warning light on the mast is out, Colder Hill (Jonas Brandt)
> remove torn-page.report
- unreadable  torn-page.report
> sort severity
= by severity
  #4 high    Boulder loose above the quarry road, Quarry Road, second bend
  #9 high    Path washed out below the weir, Weir Lane
  #10 high    Footbridge carried away, Lower Marrow, ford
  #2 medium  Upper spring has run dry, Chapel Bank
  #3 medium  Stove of the shelter smokes, Colder Hill
  #1 low     One bar of the cattle grid is bent, Weir Lane
  #6 low     Orchids in flower, 214 stems, Harrow Gate
  #8 low     Signpost upright again, Three Stones crossing
  #12 low     Wasps in the information board, Harrow Gate
> fieldbook://report/4
| #4 high    Boulder loose above the quarry road
| Quarry Road, second bend, by Sunniva Øye
| keep people away until it is cleared
| It moved about a hand's breadth since Tuesday (paint marks A and B).
| No parking below it until the climbers have looked at it.
> fieldbook://report/6
| #6 low     Orchids in flower, 214 stems
| Harrow Gate, by Marit Lindqvist
| counted: 214
| More than twice last year's count. Mowing should wait until July.
> details off
= cards are short
> fieldbook://report/1
| #1 low     One bar of the cattle grid is bent
| Weir Lane, by Marit Lindqvist
> fieldbook://report/99
! nothing opens fieldbook://report/99
> upload
= 9 to upload
^ #4 no answer; attempt 2 in 2 s
^ #4 attempt 2
^ #4 sent
^ #9 sent
^ #10 no answer; attempt 2 in 2 s
^ #10 attempt 2
^ #10 sent
^ #2 no answer; attempt 2 in 2 s
^ #2 attempt 2
^ #2 no answer; attempt 3 in 4 s
^ #2 attempt 3
^ #2 sent
^ #3 no answer; attempt 2 in 2 s
^ #3 attempt 2
^ #3 no answer; attempt 3 in 4 s
^ #3 attempt 3
^ #3 no answer; attempt 4 in 8 s
^ #3 attempt 4
^ #3 given up after 4 attempts
^ #1 no answer; attempt 2 in 2 s
^ #1 attempt 2
^ #1 sent
^ #6 sent
^ #8 no answer; attempt 2 in 2 s
^ #8 attempt 2
^ #8 no answer; attempt 3 in 4 s
^ #8 attempt 3
^ #8 sent
^ #12 sent
"""

SUMMARY = """\
Summary
  events      added 12; changed 2; removed 3; unreadable 3
  severity    high 3; medium 2; low 4
  observers   Ines Calder 2; Jonas Brandt 2; Marit Lindqvist 2; Sunniva Øye 2; Tomé Ferreira 1
  places      Chapel Bank 1; Colder Hill 1; Harrow Gate 2; Lower Marrow, ford 1; Quarry Road, second bend 1; \
Three Stones crossing 1; Weir Lane 2
  unreadable  owl-count.report
  opened      3
  uploads     sent 8; given up 1
  alive       flows 0  contexts 0  workers 0  subscriptions 0
"""

OPENING = ["RootContext is active", "UploadWorker starts", "ScriptWorker starts", "SessionWorker starts", "RootFlow has started",
           "FeedContext is active", "FolderWorker starts", "SettingsWorker starts", "AnalyticsWorker starts",
           "FeedFlow has started"]
CLOSING = ["FolderWorker stops", "SettingsWorker stops", "AnalyticsWorker stops", "FeedContext resigns", "FeedContext goes",
           "FeedFlow goes", "UploadWorker stops", "ScriptWorker stops", "SessionWorker stops", "RootContext resigns", "RootContext goes", "RootFlow goes"]


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, encoding="utf-8", timeout=PATIENCE,
                          stdin=subprocess.DEVNULL, **options)


def steps_in(section):
    return [re.split(r"\s{2,}", line.strip())[0] for line in section.splitlines() if line.startswith("  ")]


def sections_of(output):
    """What stands under Opening (the feed apart), in the feed, under Closing, and from Summary on."""
    head, summary = output.split("Summary\n")
    head, closing = head.split("Closing\n")
    opening = [line for line in head.splitlines() if line.startswith("  ") and not line.startswith("  #")]
    feed = [line for line in head.splitlines()[1:] if line[:1] in "+~-!=>|^" or line.startswith("  #")]
    return "\n".join(opening), "\n".join(feed) + "\n", closing, "Summary\n" + summary


class Folder(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.outer = pathlib.Path(holder.name)
        self.folder = self.outer / "reports"
        self.folder.mkdir()

    def put(self, name, title, severity="low"):
        (self.folder / name).write_text(REPORT.format(title, severity), encoding="utf-8")


class ScriptedRun(Folder):
    def scripted(self, *arguments):
        result = run(*arguments, env={**os.environ, "TMPDIR": str(self.outer)})
        self.assertEqual(0, result.returncode, result.stderr)
        return result

    def test_plays_the_script_in_order_and_leaves_nothing_behind(self):
        result = self.scripted()
        opening, feed, closing, summary = sections_of(result.stdout)
        self.assertEqual(OPENING, steps_in(opening))
        self.assertEqual(FEED, feed)
        self.assertEqual(CLOSING, steps_in(closing))
        self.assertEqual(SUMMARY, summary)
        self.assertNotIn("\x1b", result.stdout + result.stderr)
        self.assertEqual(["reports"], os.listdir(self.outer))

    def test_makes_one_warning_for_each_broken_report_and_no_other_entry(self):
        log = self.scripted().stderr.splitlines()
        expected = ["torn-page.report:4: unknown severity", "wasps.report:3: neither", "owl-count.report:2: unknown severity"]
        self.assertEqual(len(expected), len(log), log)
        for line, message in zip(log, expected):
            self.assertRegex(line, r"^[0-9:.]{12} W FolderWorker:[0-9]+ take \[MAIN\] " + re.escape(message))

    def test_is_the_same_on_both_engines(self):
        self.assertEqual(sections_of(self.scripted().stdout), sections_of(self.scripted("--rx").stdout))

    def test_says_when_its_output_is_lost(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            result = subprocess.run([PROGRAM, "--script"], stdout=full, stderr=subprocess.PIPE, text=True, timeout=PATIENCE,
                                    check=False)
        self.assertEqual(1, result.returncode)
        self.assertIn("fieldbook: the output could not be written\n", result.stderr)


class GivenFolder(Folder):
    def test_shows_what_is_there_and_ends(self):
        self.put("b.report", "Crane stuck", "high")
        self.put("a.report", "Rope frayed")
        result = run(str(self.folder))
        self.assertEqual(0, result.returncode)
        self.assertIn("+ low     #1 Rope frayed, Quay (Nils)\n+ high    #2 Crane stuck, Quay (Nils)\n= 2 report files so far\n"
                      "Closing\n", result.stdout)
        self.assertIn("alive       flows 0  contexts 0  workers 0  subscriptions 0\n", result.stdout)
        self.assertEqual("", result.stderr)

    def test_may_be_empty(self):
        result = run("--", str(self.folder))
        self.assertEqual(0, result.returncode)
        self.assertIn("= 0 report files so far\nClosing\n", result.stdout)

    def test_that_is_missing_is_one_message_and_status_1(self):
        missing = self.folder / "missing"
        result = run(str(missing))
        self.assertEqual(1, result.returncode)
        self.assertEqual("", result.stdout)
        self.assertEqual(f'fieldbook: cannot watch the folder "{missing}": No such file or directory\n', result.stderr)

    def test_that_is_a_file_is_refused(self):
        self.put("a.report", "Rope frayed")
        result = run(str(self.folder / "a.report"))
        self.assertEqual((1, ""), (result.returncode, result.stdout))
        self.assertRegex(result.stderr, "^fieldbook: cannot watch .*: Not a directory\n$")

    @unittest.skipIf(os.geteuid() == 0, "root may read everything")
    def test_that_is_unreadable_is_refused(self):
        for mode in (0o000, 0o300, 0o600):
            with self.subTest(mode=oct(mode)):
                self.folder.chmod(mode)
                result = run(str(self.folder))
                self.folder.chmod(0o700)
                self.assertEqual((1, ""), (result.returncode, result.stdout))
                self.assertRegex(result.stderr, "^fieldbook: cannot watch .*: Permission denied\n$")

    def test_may_have_a_name_that_a_terminal_would_obey(self):
        result = run(str(self.folder / "\x1b[2J"))
        self.assertEqual(1, result.returncode)
        self.assertIn("?[2J", result.stderr)
        self.assertNotIn("\x1b", result.stderr)


class Arguments(unittest.TestCase):
    def test_help_goes_to_standard_output(self):
        for option in ("--help", "-h"):
            result = run(option)
            self.assertEqual((0, ""), (result.returncode, result.stderr))
            self.assertTrue(result.stdout.startswith("fieldbook [OPTION...] [FOLDER] [LINK]\n"))

    def test_wrong_ones_are_a_message_and_status_2(self):
        for arguments, message in ((["--colour"], 'unknown option "--colour"'), (["a", "b"], "more than one folder"),
                                   (["--script", "a"], "--script plays on a copy"), (["--script", "--watch"], "--script ends")):
            with self.subTest(arguments=arguments):
                result = run(*arguments)
                self.assertEqual((2, ""), (result.returncode, result.stdout))
                self.assertTrue(result.stderr.startswith("fieldbook: " + message), result.stderr)
                self.assertTrue(result.stderr.endswith("Try --help.\n"))


class WatchedFolder(Folder):
    """A run that somebody else has to end."""

    def start(self, *arguments, **options):
        self.process = subprocess.Popen([PROGRAM, *arguments, str(self.folder)], stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, **options)
        self.addCleanup(self.process.stdout.close)
        self.addCleanup(self.process.stderr.close)
        self.addCleanup(self.process.wait)
        self.addCleanup(self.process.kill)
        self.output = ""

    def await_output(self, text, descriptor=None):
        descriptor = self.process.stdout.fileno() if descriptor is None else descriptor
        end = time.monotonic() + PATIENCE
        while text not in self.output:
            ready = select.select([descriptor], [], [], max(0, end - time.monotonic()))[0]
            try:
                more = os.read(descriptor, 4096) if ready else b""
            except OSError:  # a terminal whose program has ended
                more = b""
            if not more:
                self.fail(f"no {text!r} in {self.output!r}")
            self.output += more.decode("utf-8", "replace")

    def test_is_followed_until_a_signal_comes(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.subTest(signal=number):
                self.start("--watch", stdin=subprocess.DEVNULL)
                self.await_output("= 0 report files so far\n")
                self.put("a.report", "Rope frayed")
                self.await_output("+ low     #1 Rope frayed, Quay (Nils)\n")
                (self.folder / "a.report").unlink()
                self.await_output("- low     #1 Rope frayed, Quay (Nils)\n")

                self.process.send_signal(number)

                self.await_output("alive       flows 0  contexts 0  workers 0  subscriptions 0\n")
                self.assertEqual(0, self.process.wait(PATIENCE))
                self.assertEqual([step for step in CLOSING if step != "ScriptWorker stops"],
                                 steps_in(sections_of(self.output)[2]))
                self.assertIn(f"asked to end by signal {int(number)}\n".encode(), self.process.stderr.read())

    def test_that_vanishes_ends_the_run_with_status_1(self):
        self.start("--watch")
        self.await_output("= 0 report files so far\n")

        self.folder.rmdir()

        self.await_output("! the folder is lost: it was removed or moved\nClosing\n")
        self.await_output("alive       flows 0  contexts 0  workers 0  subscriptions 0\n")
        self.assertEqual(1, self.process.wait(PATIENCE))

    def on_terminal(self, environment, typed=()):
        mine, programs = pty.openpty()
        self.addCleanup(os.close, mine)
        self.put("a.report", "Crane stuck", "high")
        self.process = subprocess.Popen([PROGRAM, str(self.folder)], stdin=programs, stdout=programs, stderr=programs,
                                        env=environment, start_new_session=True)
        self.addCleanup(self.process.wait)
        self.addCleanup(self.process.kill)
        os.close(programs)
        self.output = ""
        self.await_output("Ctrl-C ends", mine)
        self.await_output("upload, end", mine)
        for command, answer in typed:
            os.write(mine, command.encode() + b"\n")
            self.await_output(answer, mine)
        self.process.send_signal(signal.SIGINT)
        self.await_output("subscriptions 0\r\n", mine)
        while "alive" not in self.output:
            self.await_output("alive", mine)
        self.assertEqual(0, self.process.wait(PATIENCE))

    def test_is_coloured_on_a_terminal(self):
        self.on_terminal({name: value for name, value in os.environ.items() if name != "NO_COLOR"})
        self.assertIn("\x1b[32m+\x1b[0m \x1b[31mhigh    \x1b[0m#1 \x1b[1mCrane stuck\x1b[0m, Quay", self.output)

    def test_is_not_coloured_against_the_will_of_its_reader(self):
        self.on_terminal({**os.environ, "NO_COLOR": "1"})
        self.assertIn("+ high    #1 Crane stuck, Quay (Nils)\r\n", self.output)
        self.assertNotIn("\x1b", self.output)

    def test_obeys_what_is_typed(self):
        self.put("b.report", "Rope frayed", "low")
        self.on_terminal({**os.environ, "NO_COLOR": "1"}, [
            ("sort severity", "= by severity\r\n  #1 high    Crane stuck, Quay\r\n  #2 low     Rope frayed, Quay\r\n"),
            ("fieldbook://report/1", "| keep people away until it is cleared\r\n"),
            ("fieldbook://report/3", "! nothing opens fieldbook://report/3\r\n"),
            ("details off", "= cards are short\r\n"),
            ("upload", "= 2 to upload\r\n"),
            ("dance", "= no such command; sort"),
        ])
        self.assertIn("uploads     sent 0; given up 0", self.output)


class Link(Folder):
    def test_is_followed_as_soon_as_everything_is_told(self):
        self.put("a.report", "Crane stuck", "high")
        result = run(str(self.folder), "fieldbook://report/1")
        self.assertEqual(0, result.returncode)
        self.assertIn("= 1 report file so far\n| #1 high    Crane stuck\n| Quay, by Nils\n", result.stdout)

    def test_to_nowhere_is_said_so(self):
        result = run(str(self.folder), "fieldbook://report/1")
        self.assertEqual(0, result.returncode)
        self.assertIn("! nothing opens fieldbook://report/1\n", result.stdout)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
