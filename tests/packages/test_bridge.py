"""The stand-in bridge as a package of its own, and the manual pages of both."""

import pathlib
import re
import subprocess
import unittest
import urllib.request

from packages import BRIDGE, COMPANION, NONE, field, install, must, package, run, status

UNIT = f"{BRIDGE}.service"
OPTION = re.compile(r"--[a-z][a-z-]+")


class Bridge(unittest.TestCase):
    def setUp(self):
        must("dpkg", "--purge", COMPANION)
        install(package(BRIDGE))

    def test_needs_no_companion_nor_the_companion_it(self):
        self.assertEqual(status(COMPANION), NONE)
        self.assertNotIn(BRIDGE, field(package(COMPANION), "Depends") + field(package(COMPANION), "Recommends"))

    def test_does_not_start_by_itself(self):
        self.assertTrue(pathlib.Path("/usr/lib/systemd/user", UNIT).exists())
        enabled = [path for folder in ("/etc/systemd", "/usr/lib/systemd") for path in pathlib.Path(folder).rglob(UNIT)]
        self.assertEqual(enabled, [pathlib.Path("/usr/lib/systemd/user", UNIT)])
        self.assertEqual(run("pgrep", "-f", BRIDGE).stdout, "")

    def test_answers_when_it_is_started(self):
        bridge = subprocess.Popen([BRIDGE, "--port", "0"], stdout=subprocess.PIPE, text=True)
        self.addCleanup(bridge.stdout.close)
        self.addCleanup(bridge.wait, 30)
        self.addCleanup(bridge.terminate)
        address = bridge.stdout.readline().split()[-1]
        with urllib.request.urlopen(address + "/health", timeout=30) as answer:
            self.assertEqual(answer.read(), b'{"status":"ok"}')
        with urllib.request.urlopen(address + "/monitor/desktop", timeout=30) as answer:
            self.assertIn(b"cpu_load_1m", answer.read())


class Manual(unittest.TestCase):
    def test_has_every_option(self):
        install(package(COMPANION), package(BRIDGE))
        for name in (COMPANION, BRIDGE):
            page = must("zcat", f"/usr/share/man/man1/{name}.1.gz").replace("\\-", "-")
            told = {"-" + word for line in re.findall("^[.]It Fl (.*)$", page, re.M) for word in re.split("[ ,]+", line)}
            _, _, options = must(name, "--help").partition("ptions:")
            self.assertLessEqual(set(OPTION.findall(options)), told, name)
