"""A desktop with the companion on it, and with stand-ins for all that it talks to: bridge, tool, opener."""

import http.server
import json
import os
import pathlib
import re
import shutil
import socket
import subprocess
import threading
import time
import unittest

import desktop
from screen_reader import ScreenReader

BRIDGE_PORT = 43105
PANEL = "vorna"
SETTINGS = "vorna Settings"
PROGRAMS = ("Xvfb", "dbus-daemon", "gdbus", "xfwm4", "xfce4-panel", "dunst", "dunstctl", "busctl", "xdotool", "xprop",
            "xwininfo", "import")
SNAPSHOT = {
    "host": {"hostname": "workstation", "cpu_load_1m": 1.734, "memory_used_pct": 63.6, "disk_used_pct": 71.2,
             "disk_free_gb": 138.0},
    "caddy_sites_up": 3,
    "caddy_sites_total": 4,
    "services": [{"name": "caddy.process", "ok": True, "detail": "running"},
                 {"name": "postgres", "ok": True, "detail": "answers on port 5432"}],
}
RECORDER = """#!/bin/sh
printf '%s\\037' "$@" >> "{log}"
echo >> "{log}"
"""
NOON = 12


def skip_unless_possible(programs=PROGRAMS):
    """Skips the module where a program is missing or a bridge of the user's own holds the port."""
    missing = [program for program in programs if shutil.which(program) is None]
    if missing:
        raise unittest.SkipTest("not installed: " + ", ".join(missing))
    if subprocess.run(["/usr/bin/python3", "-c", "import pyatspi"], capture_output=True).returncode != 0:
        raise unittest.SkipTest("not installed: pyatspi")
    with socket.socket() as client:
        if client.connect_ex(("127.0.0.1", BRIDGE_PORT)) == 0:
            raise unittest.SkipTest(f"a bridge runs on port {BRIDGE_PORT} already")


class Bridge:
    """A healthy bridge that answers with one snapshot, `changes` included, and remembers what it was asked, with the time."""

    def __init__(self, changes={}):
        self.requests = []
        snapshot = {**SNAPSHOT, **changes}
        requests = self.requests

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                requests.append((time.monotonic(), self.path))
                document = snapshot if self.path.startswith("/monitor/desktop") else {"status": "ok"}
                body = json.dumps(document).encode()
                self.send_response(200)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        http.server.ThreadingHTTPServer.allow_reuse_address = True
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", BRIDGE_PORT), Handler)
        self._thread = threading.Thread(target=self._server.serve_forever, args=[0.05], daemon=True)
        self._thread.start()

    def polls(self):
        """When each poll began."""
        return [when for when, path in self.requests if path == "/health"]

    def stop(self):
        self._server.shutdown()
        self._thread.join()
        self._server.server_close()


class StandIn:
    """A program on the search path that records its arguments and then does what a piece of shell says."""

    def __init__(self, folder, name):
        self.path = folder / name
        self._log = folder / f"{name}.log"
        self.does("")

    def does(self, script):
        self.path.write_text(RECORDER.format(log=self._log) + script + "\n")
        self.path.chmod(0o755)

    def calls(self):
        """The argument list of each call so far."""
        if not self._log.exists():
            return []
        return [line.split("\037")[:-1] for line in self._log.read_text().splitlines()]

    def forget(self):
        self._log.unlink(missing_ok=True)


class CompanionTest(unittest.TestCase):
    """One desktop for the tests of a class, and for each test a companion of its own with nothing remembered.

    It is noon on this desktop, so the clock says day.
    """

    has_tray = True
    kind_of_desktop = desktop.Desktop

    @classmethod
    def setUpClass(cls):
        cls.desk = cls.kind_of_desktop()
        cls.desk.__enter__()
        cls.addClassCleanup(cls.desk.__exit__, None, None, None)
        cls.folder = cls.desk.root / "bin"
        cls.folder.mkdir()
        cls.desk.env["PATH"] = f"{cls.folder}:{cls.desk.env['PATH']}"
        cls.desk.env["TZ"] = f"NOON{time.gmtime().tm_hour - NOON}"
        cls.desk.env["LC_ALL"] = "C.UTF-8"
        cls.desk.start_window_manager()
        cls.desk.start_accessibility()
        cls.desk.start_notifications()
        if cls.has_tray:
            cls.desk.start_xfce_panel()
            cls.desk.wait_for(cls.desk.status_notifier_host_is_there, "the panel's host")

    def setUp(self):
        self.tool = StandIn(self.folder, "vorna")
        self.opener = StandIn(self.folder, "xdg-open")
        for stand_in in (self.tool, self.opener):
            stand_in.forget()
        self.configuration = pathlib.Path(self.desk.env["XDG_CONFIG_HOME"]) / "vorna/companion.conf"
        self.configuration.unlink(missing_ok=True)
        self._seen = max((one["number"] for one in self.desk.notifications()), default=0)

    def start_bridge(self):
        bridge = Bridge()
        self.addCleanup(bridge.stop)
        return bridge

    def start_companion(self, *words, env=None):
        """The companion, and `self.reader` to read it with."""
        self.companion = self.desk.start([os.environ["VORNA_COMPANION"], *words], env=env)
        self.addCleanup(self.desk.stop, self.companion)
        self.reader = ScreenReader(self.desk, self.companion.pid)
        self.addCleanup(self.reader.close)

    def start_again(self, *words):
        """A second start; its exit status."""
        second = self.desk.start([os.environ["VORNA_COMPANION"], *words])
        return second.wait(timeout=10)

    def item(self):
        return self.desk.wait_for(self.desk.status_notifier_items, "the item in the tray")[0]

    def open_panel(self):
        """Opens the panel by the item, and waits for what it says first."""
        self.desk.activate_item(self.item())
        self.reader.wait_for_window(PANEL)

    def photograph(self, name):
        folder = pathlib.Path(os.environ["VORNA_PICTURES"])
        folder.mkdir(parents=True, exist_ok=True)
        self.desk.screenshot(folder / f"{name}.png")

    def wait_for(self, condition, what, within=10.0):
        return self.desk.wait_for(condition, what, within)

    def wait_for_calls(self, stand_in, expected):
        """Waits until a stand-in was called that often, and checks how."""
        self.wait_for(lambda: len(stand_in.calls()) >= len(expected), f"{len(expected)} calls of {stand_in.path.name}")
        self.assertEqual(stand_in.calls(), expected)

    def notifications(self):
        """The notifications of this test: (application, title, body)."""
        return [(one["application"], one["title"], one["body"]) for one in self.desk.notifications()
                if one["number"] > self._seen]

    def wait_for_notifications(self, *expected):
        """Waits until that many notifications came, and checks them."""
        self.wait_for(lambda: len(self.notifications()) >= len(expected), f"{len(expected)} notifications")
        self.assertEqual(self.notifications(), list(expected))

    def wait_for_exit(self):
        return self.companion.wait(timeout=10)

    def children(self):
        """The states of the companion's child processes, such as "S" or "Z"."""
        found = []
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                state, parent = (folder / "stat").read_text().rpartition(")")[2].split()[:2]
            except OSError:
                continue
            if int(parent) == self.companion.pid:
                found.append(state)
        return found

    def remembered(self):
        """What stands in the companion's configuration file, line by line without the heading."""
        if not self.configuration.exists():
            return []
        return sorted(re.findall(r"^\S+=.*$", self.configuration.read_text(errors="replace"), re.M))
