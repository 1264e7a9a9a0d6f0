"""The program as a terminal sees it: what it prints, how it ends."""

import hashlib
import os
import socket
import subprocess
import sys
import unittest

COMPANION = os.environ["VORNA_COMPANION"]
WITHOUT_DISPLAY = {key: value for key, value in os.environ.items()
                   if key not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}


def run(*words, env=None):
    return subprocess.run([COMPANION, *words], env={**WITHOUT_DISPLAY, **(env or {})}, stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, timeout=20)


class Companion(unittest.TestCase):
    def test_help_is_printed_without_a_display(self):
        for word in ("--help", "-h"):
            outcome = run(word)
            self.assertEqual((outcome.returncode, outcome.stderr), (0, ""))
            for option in ("--settings", "-h, --help", "-v, --version"):
                self.assertIn(option, outcome.stdout)
            self.assertNotIn("style", outcome.stdout)

    def test_version_is_printed_without_a_display(self):
        for words in (["--version"], ["-v"], ["-style", "fusion", "--version"]):
            outcome = run(*words)
            self.assertEqual((outcome.returncode, outcome.stderr), (0, ""))
            self.assertRegex(outcome.stdout, r"^vorna-companion v\d+\.\d+\.\d+ \(\d+\)\n$")

    def test_unknown_word_is_refused_without_a_display(self):
        for words, named in ((["--setings"], "setings"), (["--bogus", "--version"], "bogus"), (["panel"], "panel")):
            outcome = run(*words)
            self.assertEqual((outcome.returncode, outcome.stdout), (2, ""))
            self.assertRegex(outcome.stderr, f"^vorna-companion: .*'{named}'")

    @unittest.skipIf(sys.platform == "darwin", "a Mac always has a display")
    def test_missing_display_is_said_and_dumps_no_core(self):
        for env in ({}, {"DISPLAY": ":54321"}):
            outcome = run(env=env)
            self.assertEqual(outcome.returncode, 1, outcome.stderr)
            self.assertIn("display", outcome.stderr)

    @unittest.skipUnless(sys.platform == "linux", "a Mac has other means")
    def test_second_start_says_what_it_was_asked_for(self):
        display = f":test-{os.getpid()}"
        name = f"vorna-companion-{os.getuid()}-{hashlib.sha256(display.encode()).hexdigest()[:16]}"
        with socket.socket(socket.AF_UNIX) as running:
            running.bind(f"\0{name}")
            running.listen()
            running.settimeout(20)
            for words, message in ([], b"panel\n"), (["--settings"], b"settings\n"):
                start = subprocess.Popen([COMPANION, *words], stdin=subprocess.DEVNULL,
                                         env={**WITHOUT_DISPLAY, "DISPLAY": display, "QT_QPA_PLATFORM": "offscreen"})
                peer, _ = running.accept()
                with peer:
                    self.assertEqual(peer.recv(100), message)
                    peer.sendall(b"ok\n")
                self.assertEqual(start.wait(20), 0)
