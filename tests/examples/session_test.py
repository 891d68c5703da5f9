"""Runs the pair of programs of examples/session: both roads, the wire, and ends of every kind."""
import os
import re
import signal
import subprocess
import sys
import time
import unittest

SESSION = sys.argv.pop(1)
ROADS = ([], ["--two-steps"], ["--raw"])
ANSWERS = ["12.5,41.9: Italy", "-30,40: no country", "2.35,48.85: France"]
PLACES = [answer.split(":")[0] for answer in ANSWERS]


def is_running(process):
    try:
        with open("/proc/%d/stat" % process, encoding="ascii") as file:
            return file.read().rsplit(")", 1)[1].split()[0] != "Z"
    except FileNotFoundError:
        return False


class Session(unittest.TestCase):
    def open(self, *arguments):
        """A session that has answered its first question, and the id of its picker."""
        session = subprocess.Popen([SESSION, *arguments], stdin=subprocess.PIPE, text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, bufsize=1,
                                   start_new_session=True)
        for clean_up in (session.stdout.close, session.stderr.close, session.stdin.close,
                         session.wait, session.kill):  # last first
            self.addCleanup(clean_up)
        session.stdin.write(PLACES[0] + "\n")
        picker = None
        for line in session.stdout:
            picker = re.match(r"picker: process (\d+) loads", line) or picker
            if line.rstrip() == ANSWERS[0]:
                return session, int(picker[1])
        self.fail(session.stderr.read())

    def assert_ends(self, picker):
        deadline = time.monotonic() + 10
        while is_running(picker):
            self.assertLess(time.monotonic(), deadline, "the picker lives on")
            time.sleep(0.02)

    def test_asks_by_every_road_and_shows_the_progress(self):
        for road in ROADS:
            with self.subTest(road=road):
                run = subprocess.run([SESSION, *road, "--", *PLACES], capture_output=True,
                                     text=True, timeout=30)
                self.assertEqual((run.returncode, run.stderr), (0, ""))
                lines = run.stdout.splitlines()
                self.assertEqual([line for line in lines if line in ANSWERS], ANSWERS)
                self.assertIn("picker: loaded 177 of 177", lines)
                if road == ["--raw"]:
                    wire = "".join(lines)
                    for text in ("PICK 12.5 41.9", "Italy", "SessionClosed",
                                 r"loaded 177 of 177\x00", "11 bytes: Acknowledge"):
                        self.assertIn(text, wire)

    def test_ends_cleanly_when_told_and_when_either_end_dies(self):
        for road in ROADS:
            for how in ("end of input", "Ctrl-C", "picker killed", "session killed"):
                with self.subTest(road=road, how=how):
                    session, picker = self.open(*road)
                    # In the same process group, Ctrl-C in a terminal would end the picker as well.
                    self.assertNotEqual(os.getpgid(picker), os.getpgid(session.pid))
                    if how == "end of input":
                        session.stdin.close()
                        status, error = 0, ""
                    elif how == "Ctrl-C":
                        os.killpg(session.pid, signal.SIGINT)  # as a terminal does
                        status, error = 130, ""
                    elif how == "picker killed":
                        os.kill(picker, signal.SIGKILL)
                        status, error = 1, "session: the picker has ended\n"
                    else:
                        session.kill()
                        status, error = -signal.SIGKILL, ""
                    self.assertEqual(session.wait(timeout=10), status)
                    self.assertEqual(session.stderr.read(), error)
                    self.assert_ends(picker)

    def test_says_that_it_waits_for_another_machine_and_ctrl_c_ends_that(self):
        session = subprocess.Popen([SESSION, "--host", "127.0.0.2", "1,2"], text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        for clean_up in (session.stdout.close, session.stderr.close, session.wait, session.kill):
            self.addCleanup(clean_up)
        self.assertRegex(session.stdout.readline(), r"^run on 127.0.0.2: session_picker .* \d+ \d+ ")
        self.assertIn("waiting up to 10 minutes", session.stderr.readline())
        session.send_signal(signal.SIGINT)
        self.assertEqual(session.wait(timeout=10), -signal.SIGINT)

    def test_tells_in_one_line_what_is_wrong(self):
        for arguments, text in ((["--module", "/no/such/program", "1,2"], "/no/such/program"),
                                (["--two-steps", "--module", "/etc/passwd", "1,2"], "/etc/passwd"),
                                (["--host", "no such host", "1,2"], "no such host"),
                                (["--module", "", "1,2"], "--module: the name is empty"),
                                (["--host", "", "1,2"], "--host: the name is empty"),
                                (["12;41"], "'12;41' is no LON,LAT")):
            with self.subTest(arguments=arguments):
                run = subprocess.run([SESSION, *arguments], capture_output=True, text=True,
                                     timeout=30)
                self.assertEqual((run.returncode, run.stdout), (2, ""))
                self.assertRegex(run.stderr, "^session: .*" + re.escape(text) + ".*\n$")


if __name__ == "__main__":
    unittest.main()
