"""The whole on a real desktop: the companion in a real tray, a bridge with real figures, and real services to see.

Each test goes through the same story: all is well, then Caddy stops, then the bridge stops.
"""

import json
import os
import pathlib
import shutil
import socket
import sys
import unittest

import desktop
import psutil
import services

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "devtools"))

from stand_in import StandInBridge  # noqa: E402

BRIDGE_PORT = 43105
PANEL_WIDTH = 340
POLL_SECONDS = 5.0
SITES = "http://one.localhost:{port} {\n    respond hello\n}\nhttp://two.localhost:{port} {\n    respond hello\n}\n"
PROGRAMS = ("Xvfb", "dbus-daemon", "gdbus", "xfwm4", "xfce4-panel", "trayer", "xdotool", "xprop", "xwininfo", "import")
FIGURES = {"LOAD": r"^\d+\.\d\d$", "MEMORY": r"^\d+%$", "DISK": r"^\d+% · \d+ GB free$"}
OFFLINE = {"ok": False, "value": "offline"}

READ_SHOWING_TEXTS = """
import json, sys, pyatspi
def walk(node):
    if not node.getState().contains(pyatspi.STATE_SHOWING):
        return
    if node.name and node.childCount == 0:
        found.append(node.name)
    for child in node:
        if child is not None:
            walk(child)
found = []
for program in pyatspi.Registry.getDesktop(0):
    if program is not None and program.get_process_id() == int(sys.argv[1]):
        for window in program:
            if window is not None:
                walk(window)
print(json.dumps(found))
"""


def setUpModule():
    missing = [program for program in PROGRAMS if shutil.which(program) is None]
    if missing:
        raise unittest.SkipTest("not installed: " + ", ".join(missing))
    services.skip_unless_installed()
    with socket.socket() as client:
        if client.connect_ex(("127.0.0.1", BRIDGE_PORT)) == 0:
            raise unittest.SkipTest(f"a bridge runs on port {BRIDGE_PORT} already")


class PanelOnADesktop(unittest.TestCase):
    def setUp(self):
        self.caddy = self.enter(services.Caddy(SITES))
        self.postgres = self.enter(services.Postgres())
        self.desk = self.enter(desktop.Desktop())
        self.desk.start_window_manager()
        self.desk.start_accessibility()

    def enter(self, context):
        context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return context

    def start_companion(self):
        self.bridge = StandInBridge(
            port=BRIDGE_PORT,
            caddy_process=self.caddy.process_name,
            caddy_admin=self.caddy.admin,
            postgres_port=self.postgres.port,
        )
        self.addCleanup(self.bridge.stop)
        self.companion = self.desk.start([os.environ["VORNA_COMPANION"]])

    # What the panel says

    def texts(self):
        """Every text that shows, in reading order, as a screen reader gets it."""
        return json.loads(self.desk.run("/usr/bin/python3", "-c", READ_SHOWING_TEXTS, self.companion.pid, timeout=20))

    def row(self, label):
        """What follows a label: its value and whether its dot says ok."""
        texts = self.texts()
        if label not in texts:
            return None
        value, state = texts[texts.index(label) + 1 :][:2]
        return {"value": value, "ok": {"ok": True, "not ok": False}.get(state)}

    def header_state(self):
        """What the dot of the header says; it follows the two texts at the top."""
        return self.texts()[2]

    def figures(self):
        texts = self.texts()
        return {title: texts[texts.index(title) + 1] for title in FIGURES}

    def wait_for_row(self, label, expected):
        try:
            self.desk.wait_for(lambda: self.row(label) == expected, label, within=3 * POLL_SECONDS)
        except desktop.Failure:
            self.fail(f"{label} was to say {expected}; the panel says {self.texts()}")

    def photograph(self, name):
        folder = pathlib.Path(os.environ["VORNA_PICTURES"])
        folder.mkdir(parents=True, exist_ok=True)
        self.desk.screenshot(folder / f"{name}.png")

    def panel_windows(self):
        return [place for place in self.desk.windows(self.companion.pid).values() if place[2] == PANEL_WIDTH]

    # The story

    def check_story(self, click_the_item, name):
        self.start_companion()
        click_the_item()
        self.desk.wait_for(self.panel_windows, "the panel")
        self.check_all_is_well()
        self.photograph(f"{name}-well")

        self.caddy.stop()
        self.wait_for_row("Caddy", {"value": "not running", "ok": False})
        self.assertEqual(self.header_state(), "down")
        self.assertTrue(self.row("Postgres")["ok"])
        self.photograph(f"{name}-caddy-stopped")

        figures = self.figures()
        self.bridge.stop()
        self.wait_for_row("Caddy", {"value": "bridge unreachable", "ok": False})
        self.assertEqual(self.row("Bridge"), OFFLINE)
        self.assertEqual(self.header_state(), "unknown")
        self.check_figures()
        self.assertEqual(self.figures()["DISK"].partition(" ")[2], figures["DISK"].partition(" ")[2])
        self.assertIn("Start bridge: vorna server start", self.texts())
        self.photograph(f"{name}-bridge-stopped")

        click_the_item()
        self.desk.wait_for(lambda: not self.panel_windows(), "the panel to close")
        self.assertIsNone(self.companion.poll(), self.desk.output(self.companion))

    def check_all_is_well(self):
        self.wait_for_row("Bridge", {"value": "online · :43105", "ok": True})
        self.wait_for_row("Caddy", {"value": "running · 2/2 sites", "ok": True})
        self.wait_for_row("Postgres", {"value": f"answers on port {self.postgres.port}", "ok": True})
        self.assertEqual(self.header_state(), "ok")
        self.check_figures()
        texts = self.texts()
        for service in ("caddy.process", "caddy.admin", "postgres"):
            self.assertIn(service, texts)
        self.assertFalse([text for text in texts if text.startswith("site.")])
        self.check_place()

    def check_figures(self):
        for title, value in self.figures().items():
            self.assertRegex(value, FIGURES[title])

    def check_place(self):
        """One panel, inside the screen."""
        (place,) = self.panel_windows()
        x, y, width, height = place
        self.assertGreaterEqual(x, 0)
        self.assertGreaterEqual(y, 0)
        self.assertLessEqual(x + width, self.desk.size[0])
        self.assertLessEqual(y + height, self.desk.size[1])

    def test_story_in_a_status_notifier_host(self):
        self.desk.start_xfce_panel()
        self.desk.wait_for(self.desk.status_notifier_host_is_there, "the panel's host")

        def click_the_item():
            self.desk.activate_item(self.desk.wait_for(self.desk.status_notifier_items, "the item in the tray")[0])

        self.check_story(click_the_item, "status-notifier")

    def test_story_in_an_xembed_tray(self):
        self.desk.start_trayer()

        def embedded():
            windows = self.desk.windows(self.companion.pid)
            return [place for window, place in windows.items() if self.desk.parent_of(window) not in ("root", None)
                    and place[2] < PANEL_WIDTH]

        def click_the_item():
            x, y, width, height = self.desk.wait_for(embedded, "the item in the tray")[0]
            self.desk.click(x + width // 2, y + height // 2)

        self.check_story(click_the_item, "xembed")

    def test_nothing_is_asked_of_the_bridge_before_the_panel_was_opened(self):
        self.desk.start_xfce_panel()
        self.desk.wait_for(self.desk.status_notifier_host_is_there, "the panel's host")
        with socket.create_server(("127.0.0.1", BRIDGE_PORT)) as silent:
            self.companion = self.desk.start([os.environ["VORNA_COMPANION"]])
            item = self.desk.wait_for(self.desk.status_notifier_items, "the item in the tray")[0]
            self.assertIsNone(self.request_of_the_companion(silent))
            self.desk.activate_item(item)
            self.assertRegex(self.request_of_the_companion(silent), rb"^GET /health HTTP/1\.1\r\n")

    def request_of_the_companion(self, listener):
        """The first request from the companion within more than a poll's time; others may knock meanwhile."""
        listener.settimeout(POLL_SECONDS + 1)
        while True:
            try:
                connection, peer = listener.accept()
            except TimeoutError:
                return None
            with connection:
                open_ports = [other.laddr.port for other in psutil.Process(self.companion.pid).connections("tcp")]
                if peer[1] in open_ports:
                    return connection.recv(1024)


if __name__ == "__main__":
    unittest.main()
