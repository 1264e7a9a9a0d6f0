"""The companion on a desktop, and stand-ins for all that it talks to: bridge, tool, opener."""

import contextlib
import json
import os
import pathlib
import re
import socket
import sys
import time
import unittest

import desktop
import psutil
from contents import BUTTON, CHOICE, COPYABLE, LABEL, SEEN, TAB, USABLE, plain
from screen_reader import ScreenReader

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "devtools"))

from fake_peers import http_server, serving  # noqa: E402

BRIDGE_PORT = 43105
PANEL = "vorna"
SETTINGS = "vorna Settings"
COMPANION = os.environ.get("VORNA_COMPANION", "vorna-companion")
PHOTOGRAPHS = os.environ.get("VORNA_PHOTOGRAPHS")
PROGRAMS = ("Xvfb", "dbus-daemon", "xfwm4", "xfce4-panel", "dunst", "import", "xdotool")
PANEL_WIDTH = 340
POLL_SECONDS = 5.0
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
    desktop.require(*programs)
    with socket.socket() as client:
        if client.connect_ex(("127.0.0.1", BRIDGE_PORT)) == 0:
            raise unittest.SkipTest(f"a bridge runs on port {BRIDGE_PORT} already")


class Bridge:
    """A healthy bridge that answers with one snapshot, `changes` included, and remembers what it was asked when."""

    def __init__(self, changes={}):
        self.requests = []
        self._snapshot = {**SNAPSHOT, **changes}
        self._serving = contextlib.ExitStack()
        self._serving.enter_context(serving(http_server(self._answer, BRIDGE_PORT)))

    def _answer(self, handler):
        self.requests.append((time.monotonic(), handler.path))
        document = self._snapshot if handler.path.startswith("/monitor/desktop") else {"status": "ok"}
        return 200, json.dumps(document).encode()

    def polls(self):
        """When each poll began."""
        return [when for when, path in self.requests if path == "/health"]

    def stop(self):
        self._serving.close()


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


class DesktopTest(unittest.TestCase):
    """What stories have in common, whatever desktop is in `self.desk`."""

    def wait_for(self, condition, what, **options):
        return self.desk.wait_for(condition, what, **options)

    def wait_for_equal(self, read, expected, what):
        """Waits until `read()` gives what is expected, and says what it gave instead where it does not come."""
        try:
            self.wait_for(lambda: read() == expected, what)
        except desktop.Failure:
            self.assertEqual(read(), expected, what)

    def start_bridge(self, changes={}):
        bridge = Bridge(changes)
        self.addCleanup(bridge.stop)
        return bridge

    def start_companion(self, *words, env=None, command=()):
        """The companion, by another command if there is one, and `self.reader` where there is an accessibility bus."""
        self.companion = self.desk.start([*command, COMPANION, *words], env)
        self.addCleanup(self.desk.stop, self.companion)
        if "QT_LINUX_ACCESSIBILITY_ALWAYS_ON" in self.desk.env:
            self.reader = ScreenReader(self.desk, self.companion.pid)

    def wait_for_start(self):
        """Waits until a second start would find the companion."""
        process = psutil.Process(self.companion.pid)
        sockets = getattr(process, "net_connections", None) or process.connections  # as older psutil calls it
        self.wait_for(lambda: any("vorna" in str(one.laddr) for one in sockets("unix")), "the companion to listen")

    def start_again(self, *words, env=None):
        """A second start, which ends well."""
        self.wait_for_start()
        second = self.desk.start([COMPANION, *words], env)
        self.assertEqual(second.wait(timeout=30), 0, self.desk.output(second))

    def item(self):
        return self.wait_for(self.desk.status_notifier_items, "the item in the tray")[0]

    def embedded_item(self):
        """The middle of the item in a tray of embedded windows, once it is drawn there."""
        def places():
            return [place for window, place in self.desk.windows(self.companion.pid).items()
                    if self.desk.is_embedded(window) and len(self.desk.colours(*place)) > 1]

        x, y, width, height = self.wait_for(places, "the item in the tray")[0]
        return x + width // 2, y + height // 2

    def wait_for_meaning(self, item, meaning):
        self.wait_for_equal(lambda: self.desk.item_meaning(item), f"vorna — {meaning}", "what the item says")

    def open_panel(self):
        """Opens the panel by the item, and waits for what it says first."""
        self.desk.activate_item(self.item())
        self.reader.wait_for_window(PANEL)

    def click_until_open(self, click, find):
        """Opens the panel; a click too soon after a closing is one with the click before, or closes with it."""
        def opens():
            click()
            with contextlib.suppress(desktop.Failure):
                return self.wait_for(find, "the panel", within=5)

        return self.wait_for(opens, "the panel after clicks on the item")

    def wait_for_daypart(self, title):
        self.wait_for(lambda: self.reader.texts(PANEL)[1:2][0].endswith(" · " + title), f"the panel to say {title}")

    def panels(self, hidden=False, scale=1):
        """The places of the panel's windows; there is one at most."""
        places = self.desk.windows(self.companion.pid, hidden).values()
        return [place for place in places if place[2] == scale * PANEL_WIDTH]

    def wait_for_panel(self):
        return self.wait_for(self.panels, "the panel")[0]

    def check_within(self, place, area):
        """One rectangle (x, y, width, height) lies within the other."""
        x, y, width, height = place
        left, top, wide, high = area
        self.assertTrue(left <= x and top <= y and x + width <= left + wide and y + height <= top + high,
                        f"{place} within {area}")

    def check_alive(self):
        self.assertIsNone(self.companion.poll(), self.desk.output(self.companion))

    def wait_for_exit(self):
        return self.companion.wait(timeout=30)

    def photograph(self, name):
        if PHOTOGRAPHS:
            os.makedirs(PHOTOGRAPHS, exist_ok=True)
            self.desk.screenshot(f"{PHOTOGRAPHS}/{name}.png")

    def wait_for_calls(self, stand_in, expected):
        """Waits until a stand-in was called that often, and checks how."""
        self.wait_for(lambda: len(stand_in.calls()) >= len(expected), f"{len(expected)} calls of {stand_in.path.name}")
        self.assertEqual(stand_in.calls(), expected)

    def children(self):
        return psutil.Process(self.companion.pid).children()


class CompanionTest(DesktopTest):
    """One desktop for the tests of a class, and for each test a companion of its own with nothing remembered.

    It is noon on this desktop, so the clock says day.
    """

    has_tray = True

    @classmethod
    def setUpClass(cls):
        cls.desk = cls.enterClassContext(desktop.Desktop())
        cls.folder = cls.desk.root / "bin"
        cls.folder.mkdir()
        cls.desk.env["PATH"] = f"{cls.folder}:{cls.desk.env['PATH']}"
        cls.desk.env["TZ"] = f"NOON{time.gmtime().tm_hour - NOON}"
        cls.desk.env["LC_ALL"] = "C.UTF-8"
        cls.desk.start_window_manager()
        cls.desk.start_accessibility()
        cls.desk.start_notifications()
        if cls.has_tray:
            cls.desk.start_tray()

    def setUp(self):
        self.tool = StandIn(self.folder, "vorna")
        self.opener = StandIn(self.folder, "xdg-open")
        for stand_in in (self.tool, self.opener):
            stand_in.forget()
        self.configuration = pathlib.Path(self.desk.env["XDG_CONFIG_HOME"]) / "vorna/companion.conf"
        self.configuration.unlink(missing_ok=True)
        self._seen = max((number for number, *_ in self.desk.notifications()), default=0)

    def notifications(self):
        """The notifications of this test: (application, title, body)."""
        return [entry for number, *entry in self.desk.notifications() if number > self._seen]

    def wait_for_notifications(self, *expected):
        """Waits until that many notifications came, and checks them."""
        self.wait_for(lambda: len(self.notifications()) >= len(expected), f"{len(expected)} notifications")
        self.assertEqual(self.notifications(), [["vorna", *one] for one in expected])

    def remembered(self):
        """What stands in the companion's configuration file, line by line without the heading."""
        if not self.configuration.exists():
            return []
        return sorted(re.findall(r"^\S+=.*$", self.configuration.read_text(errors="replace"), re.M))

    # The whole of a window, as a screen reader finds it

    def leaves(self, window):
        """Everything that is not there for the sake of what it contains; the tree must hold together."""
        tree = self.reader.tree(window)
        self.assertEqual((tree[0].name, tree[0].depth), (window, 0))
        for element in tree:
            self.assertLessEqual(SEEN, element.states, element)
        leaves = [element for element in tree if not element.children]
        frame, *places = self.reader.places([tree[0], *leaves])
        for leaf, place, actions in zip(leaves, places, self.reader.actions(leaves)):
            self.assertTrue(leaf.name.strip(), leaf)
            self.assertGreater(min(place[2:]), 0, leaf)
            self.check_within(place, frame)
            is_label = leaf.role == LABEL
            self.assertEqual("focusable" in leaf.states, not is_label or leaf.name in COPYABLE, leaf)
            self.assertEqual(actions[:1] == ["press"], not is_label and USABLE <= leaf.states, leaf)
        return leaves

    def wait_for_rows(self, window, expected):
        """Waits until a window says that, from above to below, and looks at how it does."""
        self.wait_for_equal(lambda: [plain(text) for text in self.reader.texts(window)], [name for _, name in expected],
                            "the texts")
        self.assertEqual([(leaf.role, plain(leaf.name)) for leaf in self.leaves(window)], expected)

    def names_with(self, window, state, roles=(CHOICE, TAB)):
        return [one.name for one in self.reader.tree(window) if state in one.states and one.role in roles]

    def unusable(self, window):
        return [one.name for one in self.reader.tree(window) if one.role == BUTTON and not USABLE <= one.states]

    def click(self, name, times=1):
        """Clicks of the pointer on something in the panel."""
        x, y, width, height = self.reader.place(name, PANEL)
        self.desk.click(x + width // 2, y + height // 2, times=times)
