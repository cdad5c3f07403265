#!/usr/bin/env python3
"""Asks the service as other clients do, and sends reports to it from the application.

    daemon.py SERVICE APPLICATION
"""

import collections
import http.client
import json
import os
import pathlib
import select
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest
import urllib.parse

from program import PATIENCE, REPORT, why_unreachable

SERVICE = ""
APPLICATION = ""
PHOTO = bytes(range(256)) * 300 + b"\r\n--\r\n"
TEXT = json.dumps(REPORT | {"title": "Rope frayed", "severity": "low"})

Answer = collections.namedtuple("Answer", "status headers body")


def run(*arguments):
    return subprocess.run([SERVICE, *arguments], capture_output=True, text=True, timeout=PATIENCE, stdin=subprocess.DEVNULL)


class Running(unittest.TestCase):
    """A service that runs."""

    def setUp(self):
        if why_unreachable():
            self.skipTest(why_unreachable())
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.outer = pathlib.Path(holder.name)
        self.kept = self.outer / "kept"
        self.kept.mkdir()

    def start(self, *arguments):
        self.process = subprocess.Popen([SERVICE, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(self.process.stdout.close)
        self.addCleanup(self.process.stderr.close)
        self.addCleanup(self.process.wait)
        self.addCleanup(self.process.kill)
        self.output = ""
        self.await_output("\n")
        self.address = self.output.splitlines()[0]
        self.assertRegex(self.address, r"^http://127\.0\.0\.1:[0-9]+$")

    def await_output(self, text):
        end = time.monotonic() + PATIENCE
        while text not in self.output:
            ready = select.select([self.process.stdout], [], [], max(0, end - time.monotonic()))[0]
            more = os.read(self.process.stdout.fileno(), 4096) if ready else b""
            if not more:
                self.fail(f"no {text!r} in {self.output!r}")
            self.output += more.decode("utf-8")

    def end(self, number=signal.SIGTERM):
        self.process.send_signal(number)
        self.await_output("= ended")
        status = self.process.wait(PATIENCE)
        self.await_output(" taken\n")
        self.assertEqual(b"", self.process.stderr.read())
        return status

    def ask(self, method, path, body=None, headers=None):
        connection = http.client.HTTPConnection(urllib.parse.urlsplit(self.address).netloc, timeout=PATIENCE)
        try:
            connection.request(method, path, body, headers or {})
            answer = connection.getresponse()
            return Answer(answer.status, answer.headers, json.loads(answer.read()))
        finally:
            connection.close()

    def token(self, address="ada@hut.example"):
        return self.ask("POST", "/session", json.dumps({"address": address})).body["token"]

    def signed(self, **more):
        return {"Authorization": f'Token token="{self.token()}"', **more}

    def multipart(self):
        body = b"".join([
            b'--limit\r\nContent-Disposition: form-data; name="report"; filename="a.json"\r\n'
            b"Content-Type: application/json\r\n\r\n", TEXT.encode(), b"\r\n",
            b'--limit\r\nContent-Disposition: form-data; name="photo"; filename="a.png"\r\n'
            b"Content-Type: image/png\r\n\r\n", PHOTO, b"\r\n--limit--\r\n"])
        return body, {"Content-Type": "multipart/form-data; boundary=limit"}


class Service(Running):
    def test_tells_made_up_reports_which_are_those_of_its_seed(self):
        self.start("--port=0", "--reports=3", "--seed=autumn")
        first = self.ask("GET", "/reports")
        self.end()
        self.start("--reports=3", "--seed=autumn")
        self.assertEqual((200, "application/json"), (first.status, first.headers["Content-Type"]))
        self.assertEqual(3, len(first.body))
        self.assertEqual(first.body, self.ask("GET", "/reports").body)
        self.start("--reports=3", "--seed=winter")
        self.assertNotEqual(first.body, self.ask("GET", "/reports").body)

    def test_signs_in_and_says_why_not(self):
        self.start()
        refused = self.ask("POST", "/session", json.dumps({"address": "ada@hut"}))
        self.assertEqual(36, len(self.token()))
        self.assertEqual(400, refused.status)
        self.assertIn("The domain has no dot.", refused.body["problem"])

    def test_takes_json_and_multipart_and_keeps_their_bytes(self):
        self.start(f"--keep={self.kept}")
        plain = self.ask("POST", "/reports", TEXT, self.signed(**{"Content-Type": "application/json"}))
        body, headers = self.multipart()
        whole = self.ask("PUT", "/reports/4", body, self.signed(**headers))
        self.assertEqual((201, {"number": 10001, "photoBytes": 0}), (plain.status, plain.body))
        self.assertEqual((201, {"number": 4, "photoBytes": len(PHOTO)}), (whole.status, whole.body))
        self.assertEqual({"10001.json": TEXT.encode(), "4.json": TEXT.encode(), "4.png": PHOTO},
                         {file.name: file.read_bytes() for file in self.kept.iterdir()})

    def test_takes_what_has_the_same_key_once(self):
        self.start()
        headers = self.signed(**{"Content-Type": "application/json", "Idempotency-Key": "k1"})
        answers = [self.ask("POST", "/reports", TEXT, headers).body["number"] for _ in range(3)]
        self.assertEqual([10001, 10001, 10001], answers)
        self.assertEqual(6, len(self.ask("GET", "/reports").body))
        self.assertEqual(0, self.end())
        self.assertIn("; 1 report taken\n", self.output)

    def test_refuses_what_is_too_large(self):
        self.start()
        answer = None
        try:
            connection = http.client.HTTPConnection(urllib.parse.urlsplit(self.address).netloc, timeout=PATIENCE)
            connection.putrequest("POST", "/reports")
            connection.putheader("Content-Length", str(33 * 1024 * 1024))
            connection.endheaders()
            answer = connection.getresponse().status
        finally:
            connection.close()
        self.assertEqual(413, answer)

    def test_prints_a_line_for_each_request_and_ends_in_order(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(signal=number):
                self.start()
                self.ask("GET", "/reports")
                self.ask("GET", "/nothing")
                self.assertEqual(0, self.end(number))
                self.assertEqual([self.address, "GET /reports 200", "GET /nothing 404",
                                  f"= ended by signal {int(number)}; 0 reports taken"], self.output.splitlines())


class Faults(Running):
    def test_have_a_status_and_a_time_to_come_back(self):
        self.start("--faults=429", "--fault-rate=100")
        answer = self.ask("GET", "/reports")
        self.assertEqual((429, {"problem": "Too many requests."}), (answer.status, answer.body))
        self.assertIn(answer.headers["Retry-After"], ("3", "4", "5", "6"))
        self.start("--faults=500", "--fault-rate=100")
        self.assertEqual(500, self.ask("GET", "/reports").status)

    def test_cut_a_connection_and_keep_the_report(self):
        self.start("--faults=cut", "--fault-rate=100", f"--keep={self.kept}")
        with self.assertRaises((http.client.IncompleteRead, ConnectionError)):
            self.token()
        self.await_output("POST /session 201 cut\n")

    def test_make_one_member_of_the_list_malformed(self):
        self.start("--faults=malformed", "--fault-rate=100", "--reports=4")
        severities = [report["severity"] for report in self.ask("GET", "/reports").body]
        self.assertEqual(4, len(severities))
        self.assertEqual(1, severities.count("quite bad"))

    def test_make_an_answer_late(self):
        self.start("--faults=latency", "--fault-rate=100")
        begin = time.monotonic()
        self.assertEqual(200, self.ask("GET", "/reports").status)
        self.assertGreaterEqual(time.monotonic() - begin, 0.5)
        self.await_output("GET /reports 200 late\n")

    def test_do_not_hold_up_the_end(self):
        self.start("--faults=latency", "--fault-rate=100")
        begin = time.monotonic()
        connection = http.client.HTTPConnection(urllib.parse.urlsplit(self.address).netloc, timeout=PATIENCE)
        connection.request("GET", "/reports")
        self.await_output("late\n")
        self.assertEqual(0, self.end())
        self.assertEqual(200, connection.getresponse().status)
        connection.close()
        self.assertLess(time.monotonic() - begin, PATIENCE)

    def test_are_the_same_in_each_run(self):
        logs = []
        for _ in range(2):
            self.start("--faults=500,429,malformed", "--fault-rate=50", "--seed=autumn")
            statuses = [self.ask("GET", "/reports").status for _ in range(12)]
            self.end()
            logs.append([statuses, self.output.splitlines()[1:]])
        self.assertEqual(logs[0], logs[1])
        self.assertEqual({200, 429, 500}, set(logs[0][0]))


class Application(Running):
    def test_brings_its_reports_through_a_service_with_faults(self):
        self.start("--faults=500,429,cut", "--fault-rate=30", "--seed=spring", f"--keep={self.kept}")
        result = subprocess.run([APPLICATION, "--script", f"--service={self.address}"], capture_output=True, text=True,
                                encoding="utf-8", timeout=PATIENCE, stdin=subprocess.DEVNULL,
                                env={**os.environ, "TMPDIR": str(self.outer), "TZ": "UTC", "LC_ALL": "en_US.UTF-8"})
        self.assertEqual(0, result.returncode, result.stderr)
        feed = result.stdout.split("= 13 to upload\n")[1].split("Closing\n")[0]
        self.assertIn("uploads     sent 13; given up 0\n", result.stdout)
        for sign in ('status 500, "Something broke."; attempt', 'status 429, "Too many requests."; attempt', "broken off: "):
            self.assertIn(sign, feed)
        original = pathlib.Path(__file__).parent.parent / "Bundle" / "Reports" / "orchid-meadow.png"
        self.assertEqual(original.read_bytes(), (self.kept / "8.png").read_bytes())
        self.assertEqual(13, len(list(self.kept.glob("*.json"))))
        self.assertEqual(0, self.end())
        self.assertIn("; 13 reports taken\n", self.output)


    def show(self, *arguments, folder=None):
        return subprocess.run([APPLICATION, f"--service={self.address}", *arguments, str(folder or self.kept)], capture_output=True,
                              text=True, encoding="utf-8", timeout=PATIENCE, stdin=subprocess.DEVNULL,
                              env={**os.environ, "XDG_STATE_HOME": str(self.outer / "state"), "TZ": "UTC", "LC_ALL": "en_US.UTF-8"})

    def test_shows_the_reports_of_its_service_and_what_is_different_the_next_time(self):
        for engine in ([], ["--rx"]):
            with self.subTest(engine=engine):
                store = f"--store={self.outer / 'store'}"
                self.start("--reports=2", "--seed=autumn")
                first = self.show(store, *engine)
                self.assertEqual((0, ""), (first.returncode, first.stderr))
                self.assertRegex(first.stdout, r"= 0 report files so far\n@ service  2 reports came in\n\+ .* #1 .*\n\+ .* #2 .*\nClosing\n")
                self.ask("POST", "/reports", TEXT, self.signed(**{"Content-Type": "application/json"}))

                second = self.show(store, *engine)

                self.assertIn("= 2 reports from last time\n", second.stdout)
                self.assertIn("@ service  3 reports came in\n+ low     #3 Rope frayed, Quay (Nils)\nClosing\n", second.stdout)
                self.end()
                (self.outer / "store").unlink()

    def test_misses_the_malformed_report_of_its_service_and_shows_the_others(self):
        self.start("--faults=malformed", "--fault-rate=100", "--reports=4")
        result = self.show()
        self.assertEqual(0, result.returncode)
        problem = r'Index \d > severity, line \d+, column \d+: No severity \(low, medium or high\) has the raw value "quite bad"\n'
        self.assertRegex(result.stdout, r"@ service  3 of 4 reports came in\n(\+ .*\n){3}! service  " + problem)
        self.assertRegex(result.stderr, r"^[0-9:.]{12} W FetchWorker:[0-9]+ take \[MAIN\] service: " + problem + "$")

    def test_asks_a_service_that_was_killed_later_and_later_until_it_is_back(self):
        self.start("--reports=1")
        port = urllib.parse.urlsplit(self.address).port
        self.process.kill()
        self.process.wait(PATIENCE)
        with subprocess.Popen([APPLICATION, f"--service={self.address}", str(self.kept)], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              env={**os.environ, "XDG_STATE_HOME": str(self.outer / "state")}) as application:
            output = b""
            while b"; attempt 2 in 2 s\n" not in output:
                output += application.stdout.readline()
            self.start(f"--port={port}", "--reports=1")
            output += application.communicate(timeout=PATIENCE)[0]
        self.assertEqual(0, application.returncode)
        self.assertRegex(output, rb"@ service  no connection: .*; attempt 2 in 2 s\n@ service  attempt 2\n@ service  1 report came in\n\+ ")


class Arguments(unittest.TestCase):
    def test_help_goes_to_standard_output(self):
        result = run("--help")
        self.assertEqual((0, ""), (result.returncode, result.stderr))
        self.assertTrue(result.stdout.startswith("fieldbookd [OPTION...]\n"))

    def test_wrong_ones_are_a_message_and_status_2(self):
        for arguments, message in ((["--colour"], 'unknown option "--colour"'), (["a"], "it takes no arguments"),
                                   (["--port=65536"], "--port takes"), (["--faults=404"], "--faults takes all, none, or")):
            with self.subTest(arguments=arguments):
                result = run(*arguments)
                self.assertEqual((2, ""), (result.returncode, result.stdout))
                self.assertTrue(result.stderr.startswith("fieldbookd: " + message), result.stderr)

    def test_a_folder_that_is_none_is_a_message_and_status_1(self):
        result = run("--keep=missing")
        self.assertEqual((1, "", "fieldbookd: no such folder: missing\n"), (result.returncode, result.stdout, result.stderr))

    @unittest.skipIf(why_unreachable(), why_unreachable())
    def test_a_port_that_is_taken_is_a_message_and_status_1(self):
        with socket.socket() as taken:
            taken.bind(("127.0.0.1", 0))
            taken.listen()
            result = run(f"--port={taken.getsockname()[1]}")
        self.assertEqual((1, "", "fieldbookd: cannot listen on 127.0.0.1: Address already in use\n"),
                         (result.returncode, result.stdout, result.stderr))


if __name__ == "__main__":
    SERVICE, APPLICATION = sys.argv[1:3]
    del sys.argv[1:3]
    unittest.main()
