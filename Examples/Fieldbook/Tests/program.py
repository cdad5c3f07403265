#!/usr/bin/env python3
"""Runs the program as people and scripts run it, and looks at what it prints and how it ends.

    program.py PROGRAM
"""

import http.server
import json
import os
import pathlib
import pty
import re
import select
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

PROGRAM = ""
PATIENCE = 30  # seconds
REPORT = {"place": "Quay", "observer": "Nils"}
# What dates look like, wherever the tests run.
os.environ.update(TZ="UTC", LC_ALL="en_US.UTF-8")

FEED = """\
= nobody is signed in: sign in ADDRESS, or guest
> sign in ines.calder@chapel-bank
! sign-in  "ines.calder@chapel-bank", character 24: The domain has no dot.
> sign in ines.calder@chapel-bank.example
@ station  Ines Calder is signed in at Chapel Bank
@ station  2 reports came in
+ medium  #1 Ice on the slate steps, Colder Hill (Jonas Brandt)
+ low     #2 Rescue line repaired, Quarry Road, second bend (Marit Lindqvist)
@ station  Radio check at noon, channel 4.
@ station  The shelter on Colder Hill stays closed until its stove draws again.
! station  settings > isDetailed, line 8, column 23: Expected Bool but found a text
* signed in  ines.calder@chapel-bank.example
+ low     #3 One bar of the cattle grid is bent, Weir Lane (Marit Lindqvist)
+ medium  #4 Upper spring has run dry, Chapel Bank (Sunniva Øye)
+ medium  #5 Stove of the shelter smokes, Colder Hill (Jonas Brandt, February 11, 2026, 6:20\u202fPM)
+ high    #6 Boulder loose above the quarry road, Quarry Road, second bend (Sunniva Øye, March 4, 2026, 7:40\u202fAM)
+ medium  #7 Warning light on the mast is out, Colder Hill (Jonas Brandt)
+ low     #8 Orchids in flower, 214 stems, Harrow Gate (Marit Lindqvist, May 28, 2026, 3:05\u202fPM)
+ low     #9 Five young owls in the north barn, Harrow Gate (Tomé Ferreira)
+ medium  #10 Signpost leans into the road, Three Stones crossing (Tomé Ferreira)
! unreadable  torn-page.json: severity, line 5, column 17: No severity (low, medium or high) has the raw value "quite bad"
+ high    #11 Path washed out below the weir, Weir Lane (Ines Calder)
= 10 report files so far
> write ford.json
+ medium  #12 Footbridge under water, Lower Marrow, ford (Ines Calder)
> replace ford.json
~ high    #12 Footbridge carried away, Lower Marrow, ford (Ines Calder)
> write wasps.json
! unreadable  wasps.json: No valid JSON: Unexpected end of the text at line 4, column 11
> write wasps.json
+ low     #13 Wasps in the information board, Harrow Gate (Jonas Brandt)
> write owl-count.json
! unreadable  owl-count.json: line 1, column 1: No value under the key "observer"
> write signpost.json
~ low     #10 Signpost upright again, Three Stones crossing (Tomé Ferreira)
> move wasps.json to wasps-harrow-gate.json
- low     #13 Wasps in the information board, Harrow Gate (Jonas Brandt)
+ low     #14 Wasps in the information board, Harrow Gate (Jonas Brandt)
> remove mast-light.json
- medium  #7 Warning light on the mast is out, Colder Hill (Jonas Brandt)
> remove torn-page.json
- unreadable  torn-page.json
> sort severity
= by severity
  #6 high    Boulder loose above the quarry road, Quarry Road, second bend
  #11 high    Path washed out below the weir, Weir Lane
  #12 high    Footbridge carried away, Lower Marrow, ford
  #1 medium  Ice on the slate steps, Colder Hill
  #4 medium  Upper spring has run dry, Chapel Bank
  #5 medium  Stove of the shelter smokes, Colder Hill
  #2 low     Rescue line repaired, Quarry Road, second bend
  #3 low     One bar of the cattle grid is bent, Weir Lane
  #8 low     Orchids in flower, 214 stems, Harrow Gate
  #10 low     Signpost upright again, Three Stones crossing
  #14 low     Wasps in the information board, Harrow Gate
> write barn-owls.json
+ low     #15 Four young owls in the north barn, Harrow Gate (Tomé Ferreira)
  row 12 in   #15
> replace ford.json
~ low     #12 Footbridge open again, Lower Marrow, ford (Ines Calder)
  row 3 → 10  #12
> remove washed-out-path.json
- high    #11 Path washed out below the weir, Weir Lane (Ines Calder)
  row 2 out   #11
> samples 2 autumn
= 2 samples of autumn
+ low     #16 Gate left open, Quarry Road, second bend (Tomé Ferreira)
  row 12 in   #16
+ medium  #17 6 trees across the path, Weir Lane (Sunniva Øye)
  row 5 in    #17
> sort place
= by place: 6 rows moved
  row 1 → 9   #6 high    Boulder loose above the quarry road, Quarry Road, second bend
  row 5 → 13  #17 medium  6 trees across the path, Weir Lane
  row 6 → 8   #2 low     Rescue line repaired, Quarry Road, second bend
  row 7 → 12  #3 low     One bar of the cattle grid is bent, Weir Lane
  row 9 → 11  #10 low     Signpost upright again, Three Stones crossing
  row 10 → 7  #12 low     Footbridge open again, Lower Marrow, ford
> fieldbook://report/6
| #6 high    Boulder loose above the quarry road
| Quarry Road, second bend, by Sunniva Øye, March 4, 2026, 7:40\u202fAM
| keep people away until it is cleared
| It moved about a hand's breadth since Tuesday (paint marks A and B).
| No parking below it until the climbers have looked at it.
| Whoever sees it move: (555) 010-9999, or warden@quarry-road.example.
> fieldbook://report/8
| #8 low     Orchids in flower, 214 stems
| Harrow Gate, by Marit Lindqvist, May 28, 2026, 3:05\u202fPM
| counted: 214
| More than twice last year's count. Mowing should wait until July.
> language de
= dates are shown in de
> fieldbook://report/8
| #8 low     Orchids in flower, 214 stems
| Harrow Gate, by Marit Lindqvist, 28. Mai 2026, 15:05
| counted: 214
| More than twice last year's count. Mowing should wait until July.
> details off
= cards are short
> fieldbook://report/1
| #1 medium  Ice on the slate steps
| Colder Hill, by Jonas Brandt
> fieldbook://report/99
! nothing opens fieldbook://report/99
> refresh
@ service  2 reports came in
+ low     #18 Spring runs clear again, Quarry Road, second bend (Marit Lindqvist)
  row 11 in   #18
+ high    #19 Slope sliding below the path, Quarry Road, second bend (Marit Lindqvist)
  row 12 in   #19
> upload
= 13 to upload
^ #4 status 503, "Too busy."; attempt 2 in 2 s
^ #4 attempt 2
^ #4 sent
^ #1 status 503, "Too busy."; attempt 2 in 2 s
^ #1 attempt 2
^ #1 sent
^ #5 status 503, "Too busy."; attempt 2 in 2 s
^ #5 attempt 2
^ #5 status 503, "Too busy."; attempt 3 in 4 s
^ #5 attempt 3
^ #5 sent
^ #8 25 % on its way
^ #8 50 % on its way
^ #8 75 % on its way
^ #8 status 503, "Too busy."; attempt 2 in 2 s
^ #8 attempt 2
^ #8 25 % on its way
^ #8 50 % on its way
^ #8 75 % on its way
^ #8 status 503, "Too busy."; attempt 3 in 4 s
^ #8 attempt 3
^ #8 25 % on its way
^ #8 50 % on its way
^ #8 75 % on its way
^ #8 sent
^ #14 status 503, "Too busy."; attempt 2 in 2 s
^ #14 attempt 2
^ #14 status 503, "Too busy."; attempt 3 in 4 s
^ #14 attempt 3
^ #14 sent
^ #15 sent
^ #12 sent
^ #2 status 503, "Too busy."; attempt 2 in 2 s
^ #2 attempt 2
^ #2 status 503, "Too busy."; attempt 3 in 4 s
^ #2 attempt 3
^ #2 sent
^ #6 25 % on its way
^ #6 50 % on its way
^ #6 75 % on its way
^ #6 sent
^ #16 status 503, "Too busy."; attempt 2 in 2 s
^ #16 attempt 2
^ #16 sent
^ #10 status 503, "Too busy."; attempt 2 in 2 s
^ #10 attempt 2
^ #10 sent
^ #3 status 503, "Too busy."; attempt 2 in 2 s
^ #3 attempt 2
^ #3 status 503, "Too busy."; attempt 3 in 4 s
^ #3 attempt 3
^ #3 status 503, "Too busy."; attempt 4 in 8 s
^ #3 attempt 4
^ #3 given up after 4 attempts: status 503, "Too busy."
^ #17 status 503, "Too busy."; attempt 2 in 2 s
^ #17 attempt 2
^ #17 status 503, "Too busy."; attempt 3 in 4 s
^ #17 attempt 3
^ #17 sent
"""

SUMMARY = """\
Summary
  events      added 19; changed 3; removed 4; unreadable 3
  severity    high 2; medium 4; low 9
  observers   Ines Calder 1; Jonas Brandt 3; Marit Lindqvist 5; Sunniva Øye 3; Tomé Ferreira 3
  places      Chapel Bank 1; Colder Hill 2; Harrow Gate 3; Lower Marrow, ford 1; Quarry Road, second bend 5; \
Three Stones crossing 1; Weir Lane 2
  unreadable  owl-count.json
  screens     sign-in 1
  opened      4
  uploads     sent 12; given up 1
  alive       flows 0  contexts 0  workers 0  subscriptions 0
"""

OPENING = ["RootContext is active", "ScriptWorker starts", "SessionWorker starts", "RootFlow has started", "SignInFlow has started",
           "MainContext is active", "UploadWorker starts", "MainFlow has started",
           "FeedContext is active", "RecallWorker starts", "StationWorker starts", "SignInWorker starts", "FolderWorker starts", "FetchWorker starts",
           "SettingsWorker starts", "KeepingWorker starts", "AnalyticsWorker starts", "FeedFlow has started", "SignInFlow goes"]
CLOSING = ["UploadWorker stops", "MainContext resigns",
           "RecallWorker stops", "StationWorker stops", "SignInWorker stops", "FolderWorker stops", "FetchWorker stops", "SettingsWorker stops", "KeepingWorker stops",
           "AnalyticsWorker stops", "FeedContext resigns", "FeedContext goes", "FeedFlow goes", "MainContext goes", "MainFlow goes",
           "ScriptWorker stops", "SessionWorker stops", "RootContext resigns", "RootContext goes", "RootFlow goes"]


def run(*arguments, env=None, **options):
    """Each run has a place of its own for the stores that nobody names, unless its environment names one."""
    with tempfile.TemporaryDirectory() as state:
        return run_in({**os.environ, "XDG_STATE_HOME": state, **(env or {})}, *arguments, **options)


def run_in(env, *arguments, **options):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, encoding="utf-8", timeout=PATIENCE,
                          stdin=subprocess.DEVNULL, env=env, **options)


def steps_in(section):
    return [re.split(r"\s{2,}", line.strip())[0] for line in section.splitlines() if line.startswith("  ")]


def why_unreachable():
    """Nothing where programs of this machine reach one another at its own address."""
    try:
        with socket.socket() as own:
            own.bind(("127.0.0.1", 0))
            own.listen()
            socket.create_connection(own.getsockname(), PATIENCE).close()
    except OSError as error:
        return f"127.0.0.1 cannot be reached: {error}"
    return ""


def sections_of(output):
    """What stands under Opening (the feed apart), in the feed, under Closing, and from Summary on."""
    head, summary = output.split("Summary\n")
    head, closing = head.split("Closing\n")
    opening = [line for line in head.splitlines() if line.startswith("  ") and not line.startswith(("  #", "  row "))]
    feed = [line for line in head.splitlines()[1:] if line[:1] in "+~-!=>|^@*" or line.startswith(("  #", "  row "))]
    return "\n".join(opening), "\n".join(feed) + "\n", closing, "Summary\n" + summary


class Folder(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.outer = pathlib.Path(holder.name)
        self.folder = self.outer / "reports"
        self.folder.mkdir()
        os.environ["XDG_STATE_HOME"] = str(self.outer / "state")

    def put(self, name, title, severity="low"):
        (self.folder / name).write_text(json.dumps(REPORT | {"title": title, "severity": severity}), encoding="utf-8")


class ScriptedRun(Folder):
    def scripted(self, *arguments):
        result = run(*arguments, env={"TMPDIR": str(self.outer)})
        self.assertEqual(0, result.returncode, result.stderr)
        return result

    @unittest.skipIf(why_unreachable(), why_unreachable())
    def test_plays_the_script_in_order_and_leaves_nothing_behind(self):
        result = self.scripted()
        opening, feed, closing, summary = sections_of(result.stdout)
        self.assertEqual(OPENING, steps_in(opening))
        self.assertEqual(FEED, feed)
        self.assertEqual(CLOSING, steps_in(closing))
        self.assertEqual(SUMMARY, summary)
        self.assertNotIn("\x1b", result.stdout + result.stderr)
        self.assertEqual(["reports"], os.listdir(self.outer))

    def test_makes_one_entry_for_each_thing_that_is_malformed_and_no_other(self):
        log = self.scripted().stderr.splitlines()
        expected = [
            'C ServiceDecoder:65 register(_:onLoad:) [MAIN] DecodingError(typeMismatch(Bool, at settings > isDetailed, line 8, '
            'column 23: Expected Bool but found a text)) ["Service Decoder Key": "settings"]',
            'torn-page.json: severity, line 5, column 17: No severity (low, medium or high) has the raw value "quite bad"',
            "wasps.json: No valid JSON: Unexpected end of the text at line 4, column 11",
            'owl-count.json: line 1, column 1: No value under the key "observer"',
        ]
        self.assertEqual(len(expected), len(log), log)
        self.assertEqual(expected[0], log[0][len("00:00:00.000 "):])
        for line, message in zip(log[1:], expected[1:]):
            self.assertRegex(line, r"^[0-9:.]{12} W FolderWorker:[0-9]+ refuse \[MAIN\] " + re.escape(message) + "$")

    @unittest.skipIf(why_unreachable(), why_unreachable())
    def test_is_the_same_on_both_engines(self):
        opening, feed, closing, summary = sections_of(self.scripted().stdout)
        opening_rx, feed_rx, closing_rx, summary_rx = sections_of(self.scripted("--rx").stdout)
        self.assertEqual((opening, feed, summary), (opening_rx, feed_rx, summary_rx))
        # A queue lets go of the last exchange with the service when it comes to it, so the counts on the way down differ.
        self.assertEqual(steps_in(closing), steps_in(closing_rx))
        self.assertEqual(closing.splitlines()[-1], closing_rx.splitlines()[-1])

    def test_says_when_its_output_is_lost(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            result = subprocess.run([PROGRAM, "--script"], stdout=full, stderr=subprocess.PIPE, text=True, timeout=PATIENCE,
                                    check=False)
        self.assertEqual(1, result.returncode)
        self.assertIn("fieldbook: the output could not be written\n", result.stderr)


class GivenFolder(Folder):
    def test_shows_what_is_there_and_ends(self):
        self.put("b.json", "Crane stuck", "high")
        self.put("a.json", "Rope frayed")
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
        self.put("a.json", "Rope frayed")
        result = run(str(self.folder / "a.json"))
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


class Station(Folder):
    def answer(self, members):
        file = self.outer / "answer.json"
        file.write_text(json.dumps(members), encoding="utf-8")
        return run(f"--station={file}", str(self.folder))

    def test_tells_its_members_before_the_folder(self):
        self.put("a.json", "Rope frayed")
        report = REPORT | {"title": "Crane stuck", "severity": "high"}
        result = self.answer({"user": {"name": "Ada", "post": "Quay"}, "reports": [report], "announcements": ["Tea at four."]})
        self.assertEqual((0, ""), (result.returncode, result.stderr))
        self.assertIn("@ station  Ada is signed in at Quay\n@ station  1 report came in\n"
                      "+ high    #1 Crane stuck, Quay (Nils)\n@ station  Tea at four.\n"
                      "+ low     #2 Rope frayed, Quay (Nils)\n= 1 report file so far\n", result.stdout)

    def test_changes_the_settings(self):
        result = self.answer({"settings": {"sortOrder": "place", "isDetailed": False}})
        self.assertEqual(0, result.returncode)
        self.assertIn("= reports will be listed by place\n= cards are short\n", result.stdout)

    def test_has_the_reports_listed_once_they_are_all_known(self):
        self.put("a.json", "Rope frayed")
        self.put("b.json", "Crane stuck", "high")
        result = self.answer({"settings": {"sortOrder": "severity"}})
        self.assertEqual(0, result.returncode)
        self.assertIn("= 2 report files so far\n= by severity\n  #2 high    Crane stuck, Quay\n  #1 low     Rope frayed, Quay\n",
                      result.stdout)

    def test_that_is_not_there_is_said_so_and_the_folder_is_shown(self):
        result = run("--station=missing", str(self.folder))
        self.assertEqual(0, result.returncode)
        self.assertIn("! station  no answer: missing: no such file\n= 0 report files so far\n", result.stdout)
        self.assertRegex(result.stderr, "^[0-9:.]{12} E StationWorker:[0-9]+ receive .MAIN. the station does not answer: ")

    def test_cannot_steer_a_terminal(self):
        result = self.answer({"announcements": ["\x1b[2J"], "user": {"name": "Ada", "post": 3}, "settings": {"sortOrder": "\x1b"}})
        self.assertEqual(0, result.returncode)
        self.assertEqual(3, result.stdout.count("! station  "), result.stdout)
        self.assertNotIn("\x1b", result.stdout + result.stderr)


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


class User(Folder):
    def test_is_told_before_the_folder(self):
        result = run("--user=ada@hut.example", str(self.folder))
        self.assertEqual((0, ""), (result.returncode, result.stderr))
        self.assertIn("* signed in  ada@hut.example\n= 0 report files so far\n", result.stdout)

    def test_that_is_refused_is_one_message_and_status_2(self):
        result = run("--user=ada@hut", str(self.folder))
        self.assertEqual((2, ""), (result.returncode, result.stdout))
        self.assertEqual('fieldbook: --user: "ada@hut", character 8: The domain has no dot.\nTry --help.\n', result.stderr)


class Language(Folder):
    def test_is_that_of_the_dates(self):
        (self.folder / "a.json").write_text(json.dumps(REPORT | {"title": "Rope frayed", "severity": "low",
                                                                 "date": "2026-03-04T15:05:00.000Z"}))
        for arguments, shown in ((["--language", "de"], "4. März 2026, 15:05"), (["--language=fr_FR"], "4 mars 2026, 15:05"),
                                 (["--language=en_GB"], "4 March 2026, 15:05"), ([], "March 4, 2026, 3:05\u202fPM")):
            with self.subTest(arguments=arguments):
                result = run(*arguments, str(self.folder), "fieldbook://report/1")
                self.assertEqual((0, ""), (result.returncode, result.stderr))
                self.assertIn(f"+ low     #1 Rope frayed, Quay (Nils, {shown})\n", result.stdout)
                self.assertIn(f"| Quay, by Nils, {shown}\n", result.stdout)

    def test_that_is_none_is_one_message_and_status_2(self):
        for arguments in (["--language="], ["--language"], ["--language", "../de"], ["--language=deutsch!"]):
            with self.subTest(arguments=arguments):
                result = run(*arguments)
                self.assertEqual((2, ""), (result.returncode, result.stdout))
                self.assertTrue(result.stderr.startswith("fieldbook: --language takes a code such as de or pt_BR\n"), result.stderr)

    def test_has_dates_that_are_none_explained(self):
        (self.folder / "a.json").write_text(json.dumps(REPORT | {"title": "Rope frayed", "severity": "low", "date": "yesterday"}))
        result = run(str(self.folder))
        self.assertEqual(0, result.returncode)
        self.assertIn("! unreadable  a.json: date, line 1, column ", result.stdout)


class Service(Folder):
    @unittest.skipIf(why_unreachable(), why_unreachable())
    def test_that_is_gone_is_said_so_for_each_report(self):
        with socket.socket() as taken:  # a port that nobody listens at
            taken.bind(("127.0.0.1", 0))
            result = run("--script", f"--service=http://127.0.0.1:{taken.getsockname()[1]}",
                         env={"TMPDIR": str(self.outer)})
        self.assertEqual(0, result.returncode, result.stderr)
        self.assertRegex(result.stdout, r"@ service  no connection: .*127\.0\.0\.1.*; attempt 2 in 2 s\n@ service  attempt 2\n")
        self.assertEqual(2, len(re.findall(r"^! service  given up after 4 attempts: no connection: ", result.stdout, re.MULTILINE)))
        feed = result.stdout.split("= 13 to upload\n")[1].split("Closing\n")[0]
        self.assertEqual(13 * 7, len(feed.splitlines()))
        self.assertRegex(feed, r"^\^ #4 no connection: .*127\.0\.0\.1.*; attempt 2 in 2 s\n\^ #4 attempt 2\n")
        self.assertEqual(13, len(re.findall(r"^\^ #\d+ given up after 4 attempts: no connection: ", feed, re.MULTILINE)))
        self.assertIn("uploads     sent 0; given up 13\n", result.stdout)

    def test_that_is_no_address_of_the_web_is_one_message_and_status_2(self):
        for address in ("", "localhost", "ftp://hut.example", "http://", "http://a b"):
            with self.subTest(address=address):
                result = run(f"--service={address}")
                self.assertEqual((2, ""), (result.returncode, result.stdout))
                self.assertTrue(result.stderr.startswith("fieldbook: --service takes a URL that begins with http://"), result.stderr)


class MadeUpReports(Folder):
    def files(self):
        return {file.name: file.read_bytes() for file in self.folder.iterdir()}

    def test_are_the_same_files_for_the_same_seed(self):
        first = run("--generate=3,autumn", str(self.folder))
        files = self.files()
        second = run("--generate=3,autumn", str(self.folder))
        self.assertEqual((0, "", ""), (first.returncode, first.stderr, second.stderr))
        self.assertEqual(["sample-autumn-1.json", "sample-autumn-2.json", "sample-autumn-3.json"], sorted(files))
        self.assertEqual(files, self.files())
        self.assertIn("= 3 report files so far\n", first.stdout)
        self.assertEqual(first.stdout, second.stdout)
        self.assertEqual({"title", "place", "observer", "severity", "body"}, set(json.loads(files["sample-autumn-1.json"])))

    def test_are_others_for_another_seed(self):
        run("--generate=1,autumn", str(self.folder))
        run("--generate=1", str(self.folder))
        self.assertEqual(2, len(set(self.files().values())))

    def test_are_refused_in_numbers_and_seeds_that_do_not_fit(self):
        for request in ("", "0", "1001", "3,", "3,../autumn"):
            with self.subTest(request=request):
                result = run(f"--generate={request}", str(self.folder))
                self.assertEqual((2, ""), (result.returncode, result.stdout))
                self.assertTrue(result.stderr.startswith("fieldbook: --generate takes a number up to 1000"), result.stderr)
        self.assertEqual({}, self.files())

    @unittest.skipIf(os.geteuid() == 0, "root may write everywhere")
    def test_that_cannot_be_written_are_one_message_and_status_1(self):
        self.folder.chmod(0o500)
        result = run("--generate=1", str(self.folder))
        self.folder.chmod(0o700)
        self.assertEqual((1, ""), (result.returncode, result.stdout))
        self.assertEqual(f"fieldbook: no samples: {self.folder / 'sample-demo-1.json'}: Permission denied\n", result.stderr)


class LongRun(Folder):
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


class WatchedFolder(LongRun):
    def test_is_followed_until_a_signal_comes(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.subTest(signal=number):
                self.start("--watch", stdin=subprocess.DEVNULL)
                self.await_output("= 0 report files so far\n")
                self.put("a.json", "Rope frayed")
                self.await_output("+ low     #1 Rope frayed, Quay (Nils)\n")
                (self.folder / "a.json").unlink()
                self.await_output("- low     #1 Rope frayed, Quay (Nils)\n")

                self.process.send_signal(number)

                self.await_output("alive       flows 0  contexts 0  workers 0  subscriptions 0\n")
                self.assertEqual(0, self.process.wait(PATIENCE))
                self.assertEqual([step for step in CLOSING if step != "ScriptWorker stops"],
                                 steps_in(sections_of(self.output)[2]))
                self.assertIn(f"asked to end by signal {int(number)}\n".encode(), self.process.stderr.read())

    def test_that_vanishes_ends_the_run_with_status_1(self):
        self.start("--watch", stdin=subprocess.DEVNULL)
        self.await_output("= 0 report files so far\n")

        self.folder.rmdir()

        self.await_output("! the folder is lost: it was removed or moved\nClosing\n")
        self.await_output("alive       flows 0  contexts 0  workers 0  subscriptions 0\n")
        self.assertEqual(1, self.process.wait(PATIENCE))

    def on_terminal(self, environment, typed=(), act=lambda mine: None, arguments=("--guest",)):
        try:
            mine, programs = pty.openpty()
        except OSError as error:
            self.skipTest(f"no pseudo-terminal on this machine: {error}")
        self.addCleanup(os.close, mine)
        self.put("a.json", "Crane stuck", "high")
        self.process = subprocess.Popen([PROGRAM, *arguments, str(self.folder)], stdin=programs, stdout=programs, stderr=programs,
                                        env=environment, start_new_session=True)
        self.addCleanup(self.process.wait)
        self.addCleanup(self.process.kill)
        os.close(programs)
        self.output = ""
        if "--guest" in arguments:
            self.await_output("Ctrl-C ends", mine)
            self.await_output("upload, end", mine)
        for command, answer in typed:
            os.write(mine, command.encode() + b"\n")
            self.await_output(answer, mine)
        act(mine)
        self.process.send_signal(signal.SIGINT)
        self.await_output("subscriptions 0\r\n", mine)
        while "alive" not in self.output:
            self.await_output("alive", mine)
        self.assertEqual(0, self.process.wait(PATIENCE))

    def test_is_coloured_on_a_terminal(self):
        self.on_terminal({name: value for name, value in os.environ.items() if name != "NO_COLOR"})
        self.assertIn("\x1b[32m+\x1b[0m \x1b[31mhigh    \x1b[0m#1 \x1b[1mCrane stuck\x1b[0m, Quay", self.output)

    def test_has_what_can_be_followed_or_called_underlined_on_a_terminal(self):
        body = "Ask warden@quay.example, or call (555) 010-9999."
        (self.folder / "b.json").write_text(json.dumps(REPORT | {"title": "Rope frayed", "severity": "low", "body": body}))
        environment = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
        self.on_terminal(environment, [("fieldbook://report/2", "9999")])
        self.assertIn("| Ask \x1b[4mwarden@quay.example\x1b[0m, or call \x1b[4m(555) 010-9999\x1b[0m.\r\n", self.output)

    def test_is_not_coloured_against_the_will_of_its_reader(self):
        self.on_terminal({**os.environ, "NO_COLOR": "1"})
        self.assertIn("+ high    #1 Crane stuck, Quay (Nils)\r\n", self.output)
        self.assertNotIn("\x1b", self.output)

    def test_obeys_what_is_typed(self):
        self.put("b.json", "Rope frayed", "low")
        self.on_terminal({**os.environ, "NO_COLOR": "1"}, [
            ("sort severity", "= by severity\r\n  #1 high    Crane stuck, Quay\r\n  #2 low     Rope frayed, Quay\r\n"),
            ("sort place", "= by place: no row moved\r\n"),
            ("upload", "! nobody is signed in: sign in ADDRESS\r\n"),
            ("sign in nobody", '! sign-in  "nobody", character 7: The "@" is missing.\r\n'),
            ("sign in ada@hut.example", "* signed in  ada@hut.example\r\n"),
            ("samples 1 autumn", "= 1 sample of autumn\r\n+ low     #3 Gate left open"),
            ("fieldbook://report/1", "| keep people away until it is cleared\r\n"),
            ("fieldbook://report/4", "! nothing opens fieldbook://report/4\r\n"),
            ("details off", "= cards are short\r\n"),
            ("upload", "= 3 to upload\r\n"),
            ("dance", "= no such command; sort"),
        ])
        self.assertIn("uploads     sent 0; given up 0", self.output)

    def test_asks_who_it_is_first_and_remembers_it(self):
        environment = {**os.environ, "NO_COLOR": "1"}

        def begun(mine):
            self.assertIn("= nobody is signed in: sign in ADDRESS, or guest; for example: sign in ", self.output)
            self.assertLess(self.output.index("for example"), self.output.index("Feed of"))

        self.on_terminal(environment, [
            ("sort place", "! nobody is signed in: sign in ADDRESS, or guest\r\n"),
            ("sign in ada@hut", '! sign-in  "ada@hut", character 8: The domain has no dot.\r\n'),
            ("sign in ada@hut.example", "* signed in  ada@hut.example\r\n"),
            ("sort place", "= by place\r\n"),
        ], begun, arguments=())
        self.assertIn("screens     sign-in 1\r\n", self.output)

        self.on_terminal(environment, [("sort number", "by number\r\n")], arguments=())
        self.assertNotIn("nobody is signed in", self.output)
        self.assertIn("* signed in  ada@hut.example\r\n", self.output)

    def test_is_shown_to_guests(self):
        self.on_terminal({**os.environ, "NO_COLOR": "1"}, [("guest", "upload, end"), ("settings", "| user: nobody\r\n")], arguments=())

    def test_can_be_left_before_anybody_signs_in(self):
        self.on_terminal({**os.environ, "NO_COLOR": "1"}, act=lambda mine: self.await_output("or guest", mine), arguments=())
        self.assertIn("screens     sign-in 1\r\n", self.output)

    def test_tells_what_news_do_to_the_rows_that_were_listed(self):
        self.put("b.json", "Rope frayed")

        def typed_and_done(mine):
            os.write(mine, b"sort severity\n")
            self.await_output("  #2 low     Rope frayed, Quay\r\n", mine)
            self.put("c.json", "Ladder gone", "medium")
            self.await_output("+ medium  #3 Ladder gone, Quay (Nils)\r\n  row 2 in    #3\r\n", mine)
            self.put("a.json", "Crane freed")
            self.await_output("~ low     #1 Crane freed, Quay (Nils)\r\n  row 1 → 2   #1\r\n", mine)
            (self.folder / "c.json").unlink()
            self.await_output("- medium  #3 Ladder gone, Quay (Nils)\r\n  row 1 out   #3\r\n", mine)

        self.on_terminal({**os.environ, "NO_COLOR": "1"}, act=typed_and_done)


class Link(Folder):
    def test_is_followed_as_soon_as_everything_is_told(self):
        self.put("a.json", "Crane stuck", "high")
        result = run(str(self.folder), "fieldbook://report/1")
        self.assertEqual(0, result.returncode)
        self.assertIn("= 1 report file so far\n| #1 high    Crane stuck\n| Quay, by Nils\n", result.stdout)

    def test_to_nowhere_is_said_so(self):
        result = run(str(self.folder), "fieldbook://report/1")
        self.assertEqual(0, result.returncode)
        self.assertIn("! nothing opens fieldbook://report/1\n", result.stdout)


class SlowService:
    """Notes what it gets. While it is slow, it takes reports and gives no answer."""

    def __init__(self, is_slow):
        self.is_slow = is_slow
        self.attempts = []  # number and key of each report that arrived as a whole
        self.taken = {}  # what was taken, by key
        self.arrival = threading.Condition()
        service = self

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def do_GET(self):
                self.answer([], 200)

            def do_POST(self):
                self.rfile.read(int(self.headers["Content-Length"]))
                self.answer({"token": "t"})

            def do_PUT(self):
                body = self.rfile.read(int(self.headers["Content-Length"]))
                number, key = int(self.path.rsplit("/", 1)[1]), self.headers["Idempotency-Key"]
                with service.arrival:
                    service.attempts.append((number, key))
                    if key not in service.taken:
                        service.taken[key] = (number, self.headers["From"], re.search(rb'"title" : "([^"]*)"', body)[1].decode())
                    service.arrival.notify_all()
                    service.arrival.wait_for(lambda: not service.is_slow, PATIENCE)
                self.answer({"number": number, "photoBytes": 0})

            def answer(self, members, status=201):
                body = json.dumps(members).encode()
                try:
                    self.send_response(status)
                    self.send_header("Content-Length", str(len(body)))
                    self.end_headers()
                    self.wfile.write(body)
                except OSError:  # who asked is gone
                    self.close_connection = True

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.server.daemon_threads = True
        self.option = f"--service=http://127.0.0.1:{self.server.server_port}"
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def await_attempts(self, count):
        with self.arrival:
            return self.arrival.wait_for(lambda: len(self.attempts) >= count, PATIENCE)

    def hurry(self):
        with self.arrival:
            self.is_slow = False
            self.arrival.notify_all()

    def end(self):
        self.hurry()
        self.server.shutdown()
        self.server.server_close()


class Store(LongRun):
    def setUp(self):
        super().setUp()
        self.store = self.outer / "kept" / "store"
        self.option = f"--store={self.store}"

    def service(self, is_slow=False):
        service = SlowService(is_slow)
        self.addCleanup(service.end)
        return service

    def test_tells_what_was_there_and_then_what_is_different_now(self):
        for engine in ([], ["--rx"]):
            with self.subTest(engine=engine):
                self.put("a.json", "Rope frayed")
                self.put("b.json", "Crane stuck", "high")
                first = run(self.option, *engine, str(self.folder))
                self.assertEqual((0, ""), (first.returncode, first.stderr))
                self.assertNotIn("from last time", first.stdout)
                self.put("a.json", "Rope mended")
                (self.folder / "b.json").unlink()
                self.put("c.json", "Ladder gone")

                second = run(self.option, *engine, str(self.folder))

                self.assertEqual((0, ""), (second.returncode, second.stderr))
                self.assertIn("= 2 reports from last time\n= low     #1 Rope frayed, Quay (Nils)\n"
                              "= high    #2 Crane stuck, Quay (Nils)\n- high    #2 Crane stuck, Quay (Nils)\n"
                              "~ low     #1 Rope mended, Quay (Nils)\n+ low     #3 Ladder gone, Quay (Nils)\n"
                              "= 2 report files so far\n", second.stdout)
                self.assertIn("events      added 1; changed 1; removed 1; unreadable 0\n", second.stdout)
                self.store.unlink()
                (self.folder / "c.json").unlink()

    def test_tells_what_was_there_in_a_folder_that_is_empty_now(self):
        self.put("a.json", "Rope frayed")
        run(self.option, str(self.folder))
        (self.folder / "a.json").unlink()

        second = run(self.option, str(self.folder))
        third = run(self.option, str(self.folder))

        self.assertIn("= 1 report from last time\n= low     #1 Rope frayed, Quay (Nils)\n- low     #1 Rope frayed, Quay (Nils)\n"
                      "= 0 report files so far\n", second.stdout)
        self.assertNotIn("Rope frayed", third.stdout)

    def test_leaves_numbers_to_the_files_that_had_them(self):
        self.put("b.json", "Rope frayed")
        run(self.option, str(self.folder))
        (self.folder / "b.json").unlink()
        run(self.option, str(self.folder))
        self.put("a.json", "Crane stuck", "high")

        result = run(self.option, str(self.folder))

        self.assertIn("+ high    #2 Crane stuck, Quay (Nils)\n", result.stdout)

    def test_brings_the_settings_back(self):
        (self.folder / "a.json").write_text(json.dumps(REPORT | {"title": "Rope frayed", "severity": "low", "body": "Two strands.",
                                                                 "date": "2026-03-04T15:05:00.000Z"}))
        station = self.outer / "answer.json"
        station.write_text(json.dumps({"settings": {"sortOrder": "place", "isDetailed": False}}))
        for engine in ([], ["--rx"]):
            with self.subTest(engine=engine):
                arguments = [self.option, f"--station={station}", *engine, str(self.folder), "fieldbook://report/1"]
                first = run("--user=ada@hut.example", "--language=de", *arguments)
                self.assertIn("= cards are short\n", first.stdout)
                self.assertIn("by place\n", first.stdout)

                second = run(*arguments)

                self.assertEqual((0, ""), (second.returncode, second.stderr))
                self.assertIn("* signed in  ada@hut.example\n", second.stdout)
                self.assertIn("| Quay, by Nils, 4. März 2026, 15:05\n", second.stdout)
                self.assertNotIn("Two strands.", second.stdout)
                # What the station asks for is so already.
                self.assertNotIn("cards are short", second.stdout)
                self.assertNotIn("by place", second.stdout)
                self.store.unlink()

    def test_of_a_folder_is_where_programs_keep_their_state(self):
        self.put("a.json", "Rope frayed")
        environment = {**os.environ, "XDG_STATE_HOME": str(self.outer / "state")}
        run_in(environment, str(self.folder))
        self.assertRegex(" ".join(os.listdir(self.outer / "state" / "fieldbook")), r"\breports-[0-9a-f]{8}\.store\b")
        self.assertIn("= 1 report from last time\n", run_in(environment, str(self.folder)).stdout)

    def test_that_cannot_be_where_programs_keep_their_state_is_done_without(self):
        self.put("a.json", "Rope frayed")
        (self.outer / "state").write_text("a file")
        result = run_in({**os.environ, "XDG_STATE_HOME": str(self.outer / "state")}, str(self.folder))
        self.assertEqual(0, result.returncode)
        self.assertIn("+ low     #1 Rope frayed, Quay (Nils)\n", result.stdout)
        self.assertRegex(result.stderr, "^fieldbook: cannot use the store .*: Not a directory; nothing of this run is kept\n$")

    def test_that_is_damaged_is_one_message_and_status_1_and_stays_as_it_is(self):
        self.put("a.json", "Rope frayed")
        environment = {**os.environ, "XDG_STATE_HOME": str(self.outer / "state")}
        run_in(environment, str(self.folder))
        (own,) = (self.outer / "state" / "fieldbook").glob("*.store")
        self.store.parent.mkdir()
        whole = own.read_bytes()
        for store, arguments in ((self.store, [self.option]), (own, [])):
            for damaged in (b"Dear diary,\n" * 500, b"x", whole[:len(whole) // 2], whole[:5000] + b"\xff" * (len(whole) - 5000)):
                with self.subTest(store=store, length=len(damaged)):
                    store.write_bytes(damaged)
                    result = run_in(environment, *arguments, str(self.folder))
                    self.assertEqual((1, ""), (result.returncode, result.stdout))
                    self.assertEqual(f'fieldbook: cannot use the store "{store}": it is damaged, or no store\n', result.stderr)
                    self.assertEqual(damaged, store.read_bytes())

    def test_that_another_run_uses_is_refused_if_it_was_named_and_done_without_if_not(self):
        self.start("--watch", self.option, stdin=subprocess.DEVNULL)
        self.await_output("= 0 report files so far\n")
        named = run(self.option, str(self.folder))
        self.assertEqual((1, f'fieldbook: cannot use the store "{self.store}": another fieldbook uses it\n'),
                         (named.returncode, named.stderr))
        self.process.terminate()
        self.process.wait(PATIENCE)
        self.start("--watch", stdin=subprocess.DEVNULL)
        self.await_output("= 0 report files so far\n")
        unnamed = run_in(dict(os.environ), str(self.folder))
        self.assertEqual(0, unnamed.returncode)
        self.assertRegex(unnamed.stderr, "another fieldbook uses it; nothing of this run is kept\n$")

    @unittest.skipIf(why_unreachable(), why_unreachable())
    def test_has_uploads_go_on_that_were_under_way_when_the_run_was_killed(self):
        for engine in ([], ["--rx"]):
            with self.subTest(engine=engine):
                for name, title in (("a.json", "Rope frayed"), ("b.json", "Crane stuck"), ("c.json", "Ladder gone")):
                    self.put(name, title)
                service = self.service(is_slow=True)
                self.start("--watch", "--upload", "--user=ada@hut.example", self.option, service.option, *engine,
                           stdin=subprocess.DEVNULL)
                self.assertTrue(service.await_attempts(2))  # as many as are sent at once
                self.process.kill()
                self.process.wait(PATIENCE)
                service.hurry()

                result = run(self.option, service.option, *engine, str(self.folder))

                self.assertEqual((0, ""), (result.returncode, result.stderr))
                uploads = result.stdout.split("= 3 uploads go on\n")[1].split("Closing\n")[0].splitlines()
                self.assertIn("@ service  0 reports came in", uploads)
                uploads.remove("@ service  0 reports came in")
                self.assertEqual(["^ #1 attempt 2", "^ #1 sent", "^ #2 attempt 2", "^ #2 sent", "^ #3 sent"], sorted(uploads))
                self.assertIn("uploads     sent 3; given up 0\n", result.stdout)
                self.assertEqual([(1, "ada@hut.example", "Rope frayed"), (2, "ada@hut.example", "Crane stuck"),
                                  (3, "ada@hut.example", "Ladder gone")], sorted(service.taken.values()))
                self.assertEqual([1, 1, 2, 2, 3], sorted(number for number, _ in service.attempts))

                again = run(self.option, service.option, "--upload", *engine, str(self.folder))
                self.assertIn("= nothing to upload\n", again.stdout)
                self.assertEqual(5, len(service.attempts))
                self.store.unlink()

    @unittest.skipIf(why_unreachable(), why_unreachable())
    def test_has_uploads_go_on_that_waited_when_the_run_was_killed(self):
        self.put("a.json", "Rope frayed")
        with socket.socket() as taken:  # a port that nobody listens at
            taken.bind(("127.0.0.1", 0))
            self.start("--watch", "--upload", "--user=ada@hut.example", self.option,
                       f"--service=http://127.0.0.1:{taken.getsockname()[1]}", stdin=subprocess.DEVNULL)
            self.await_output("; attempt 2 in 2 s\n")
            self.process.kill()
            self.process.wait(PATIENCE)

            self.start("--watch", self.option, stdin=subprocess.DEVNULL)

            self.await_output("= 1 upload goes on\n")
            self.await_output("^ #1 attempt 2\n")
            self.await_output("; attempt 3 in 2 s\n")
        self.process.terminate()
        self.await_output("uploads     sent 0; given up 0; left for the next start 1\n")
        self.assertEqual(0, self.process.wait(PATIENCE))

    @unittest.skipIf(why_unreachable(), why_unreachable())
    def test_keeps_what_no_service_took_for_the_next_start(self):
        with socket.socket() as taken:
            taken.bind(("127.0.0.1", 0))
            first = run("--script", self.option, f"--service=http://127.0.0.1:{taken.getsockname()[1]}",
                        env={"TMPDIR": str(self.outer)})
            self.assertEqual(0, first.returncode, first.stderr)
            self.assertIn("= 13 reports left in the outbox: sent with the next start, or with upload\n", first.stdout)
            self.assertIn("uploads     sent 0; given up 13; left for the next start 13\n", first.stdout)

            self.start("--watch", self.option, stdin=subprocess.DEVNULL)
            self.await_output("= 13 reports from last time\n")
            self.await_output("= 13 uploads go on\n")
            self.await_output("^ #4 attempt 5\n")


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
