"""The item in the tray on a real desktop: where it shows, what it says, and what it does when trays come and go."""

import os
import signal
import subprocess
import time
import unittest
from pathlib import Path

import desktop
from probe import Probe

PROMPT = 2.0
# Qt closes whatever popup is open 100 ms after one lost the keyboard; no hand clicks sooner than this.
HAND = 0.3
ROUNDS = 5


class OnADesktop(unittest.TestCase):
    """Each test has a desktop of its own, with a window manager."""

    def setUp(self):
        self.desk = desktop.Desktop()
        self.desk.__enter__()
        self.addCleanup(self.desk.__exit__, None, None, None)
        self.desk.start_window_manager()

    def start_fake_watcher(self):
        """A watcher without a host; "host" and "no host" on its standard input change that."""
        script = Path(__file__).with_name("fake_watcher.py")
        watcher = subprocess.Popen(["/usr/bin/python3", script], env=self.desk.env, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, text=True, bufsize=1)
        self.addCleanup(lambda: (watcher.kill(), watcher.communicate()))
        self.assertEqual(watcher.stdout.readline(), "ready\n")
        return watcher

    def check_popup(self, probe, x, y):
        """A popup opened by a click on the item takes the keyboard and goes on Escape, elsewhere and on the item."""
        def closes_popup(action):
            before = len(probe.lines)
            action()
            self.desk.wait_for(lambda: "popup hidden" in probe.lines[before:], "the popup to go")
            time.sleep(HAND)

        def open_popup():
            before = len(probe.lines)
            self.desk.click(x, y)
            self.desk.wait_for(lambda: "popup shown" in probe.lines[before:], "the popup")

        open_popup()
        self.desk.press("a")
        probe.expect("popup key a")
        closes_popup(lambda: self.desk.press("Escape"))
        open_popup()
        closes_popup(lambda: self.desk.click(200, 600))
        open_popup()
        closes_popup(lambda: self.desk.click(x, y))
        self.assertEqual(probe.lines[-1], "popup hidden")


class StatusNotifierTray(OnADesktop):
    """In a host of status notifier items."""

    def host(self):
        panel = self.desk.start_xfce_panel()
        self.desk.wait_for(self.desk.status_notifier_host_is_there, "the panel's host")
        return panel

    def item(self, within=10.0):
        return self.desk.wait_for(self.desk.status_notifier_items, "the item in the tray", within)[0]

    def test_item_says_its_name_and_meaning(self):
        self.host()
        with Probe(self.desk) as probe:
            item = self.item()
            self.assertIn("'vorna'", self.desk.item_property(item, "Title"))
            self.assertIn("vorna — bridge offline", self.desk.item_property(item, "ToolTip"))
            probe.tell("symbol checkmark.circle.fill all is well")
            self.assertIn("vorna — all is well", self.desk.item_property(item, "ToolTip"))
            probe.tell("symbol xmark.octagon.fill")
            self.assertIn("'vorna'", self.desk.item_property(item, "ToolTip"))

    def test_item_carries_pictures_of_every_size(self):
        self.host()
        with Probe(self.desk):
            sent = self.desk.item_property(self.item(), "IconPixmap")
            for size in (16, 22, 24, 32, 48, 64):
                self.assertIn(f"({size}, {size}, ", sent)

    def test_activation_and_menu_are_heard(self):
        self.host()
        with Probe(self.desk) as probe:
            item = self.item()
            self.assertEqual(sorted(self.desk.menu_entries(item)), ["Quit vorna", "Settings…", "Show panel"])
            self.desk.activate_item(item)
            probe.expect("clicked")
            self.desk.choose_menu_entry(item, "Show panel")
            probe.expect("show panel")
            self.desk.choose_menu_entry(item, "Settings…")
            probe.expect("settings")
            self.desk.choose_menu_entry(item, "Quit vorna")
            self.assertEqual(probe.process.wait(timeout=5), 0)

    def test_click_in_the_panel_is_heard(self):
        self.host()
        with Probe(self.desk) as probe:
            self.item()
            self.desk.wait_for(lambda: self.try_click(probe), "a click on the item in the panel")

    def try_click(self, probe):
        self.desk.click(self.desk.size[0] - 13, 14)
        time.sleep(0.2)
        return "clicked" in probe.lines

    def test_popup_behaves_as_a_panel_does(self):
        self.host()
        with Probe(self.desk) as probe:
            self.item()
            self.desk.wait_for(lambda: self.try_click(probe), "a click on the item in the panel")
            self.desk.press("Escape")
            probe.expect("popup hidden")
            time.sleep(HAND)
            self.check_popup(probe, self.desk.size[0] - 13, 14)

    def test_host_that_comes_and_goes_in_a_hurry_does_no_harm(self):
        with Probe(self.desk) as probe:
            for pause in (0.05, 0.1, 0.15, 0.2, 0.25, 0.3, 0.4):
                panel = self.desk.start_xfce_panel()
                time.sleep(pause)
                self.desk.kill(panel)
                probe.check_alive()
            self.host()
            self.item(PROMPT)

    def test_equal_symbol_is_not_announced_again(self):
        self.host()
        with Probe(self.desk) as probe:
            self.item()
            monitor = self.desk.start(["dbus-monitor", "--session", "interface='org.kde.StatusNotifierItem'"])
            announced = lambda: self.desk.output(monitor).count("member=NewIcon")
            self.desk.wait_for(lambda: "NameAcquired" in self.desk.output(monitor), "the monitor")
            probe.tell("symbol circle.dashed unknown")
            self.desk.wait_for(lambda: announced() == 1, "the first announcement")
            for _ in range(5):
                probe.tell("symbol circle.dashed unknown")
            probe.tell("symbol xmark.octagon.fill bad")
            self.desk.wait_for(lambda: announced() >= 2, "the second announcement")
            self.assertEqual(announced(), 2)

    def test_item_comes_when_the_host_starts_later_and_again_after_each_death(self):
        with Probe(self.desk) as probe:
            for _ in range(ROUNDS):
                panel = self.host()
                self.item(PROMPT)
                self.desk.kill(panel)
                self.desk.wait_for(lambda: not self.desk.status_notifier_items(), "the host to be gone")
                probe.check_alive()
                self.assertEqual(self.desk.windows(probe.pid), {})
            probe.tell("symbol circle.dashed changed meanwhile")
            self.host()
            self.assertIn("changed meanwhile", self.desk.item_property(self.item(PROMPT), "ToolTip"))
            self.assertEqual(probe.quit(), 0)

    def test_watcher_without_a_host_is_no_tray(self):
        watcher = self.start_fake_watcher()
        with Probe(self.desk) as probe:
            time.sleep(0.5)
            self.assertEqual(self.desk.status_notifier_items(), [])
            watcher.stdin.write("host\n")
            item = self.item(PROMPT)
            self.assertTrue(self.answers(item))
            watcher.stdin.write("no host\n")
            self.desk.wait_for(lambda: not self.answers(item), "the item to withdraw", PROMPT)
            watcher.stdin.write("host\n")
            self.desk.wait_for(lambda: len(self.desk.status_notifier_items()) == 2, "the item to return", PROMPT)
            self.assertTrue(self.answers(self.desk.status_notifier_items()[1]))
            probe.check_alive()

    def answers(self, item):
        return "vorna" in self.desk.call(item[0], item[1], "org.freedesktop.DBus.Properties.Get",
                                         "org.kde.StatusNotifierItem", "Title", check=False)

    def test_watcher_that_does_not_answer_holds_nothing_up(self):
        watcher = self.start_fake_watcher()
        os.kill(watcher.pid, signal.SIGSTOP)
        self.desk.start_trayer()
        with Probe(self.desk) as probe:
            time.sleep(1)
            began = time.monotonic()
            probe.anchor()
            self.assertLess(time.monotonic() - began, 0.5)
            os.kill(watcher.pid, signal.SIGCONT)
            self.desk.wait_for(lambda: self.desk.windows(probe.pid), "the item in the other tray", PROMPT)


class EmbeddedTray(OnADesktop):
    """In a tray that windows are embedded into."""

    def item(self, within=10.0):
        return self.desk.wait_for(lambda: next(iter(self.desk.windows(self.probe.pid).items()), None),
                                  "the item in the tray", within)

    def test_clicks_and_menu_are_heard(self):
        self.desk.start_trayer()
        with Probe(self.desk) as self.probe:
            _, (x, y, width, height) = self.item()
            self.desk.click(x + width // 2, y + height // 2)
            self.probe.expect("popup shown")
            self.desk.press("Escape")
            self.probe.expect("popup hidden")
            time.sleep(HAND)
            self.desk.click(x + width // 2, y + height // 2, button=3)
            self.desk.wait_for(lambda: len(self.desk.windows(self.probe.pid)) == 2, "the menu")
            self.desk.press("Down", "Return")
            self.probe.expect("show panel")

    def test_popup_behaves_as_a_panel_does(self):
        self.desk.start_trayer()
        with Probe(self.desk) as self.probe:
            _, (x, y, width, height) = self.item()
            self.check_popup(self.probe, x + width // 2, y + height // 2)

    def test_tray_that_comes_and_goes_in_a_hurry_does_no_harm(self):
        with Probe(self.desk) as self.probe:
            for pause in (0.05, 0.1, 0.15, 0.2, 0.3, 0.45, 0.5, 0.6, 0.8):
                tray = self.desk.start_trayer()
                time.sleep(pause)
                self.desk.kill(tray)
                self.probe.check_alive()
            self.desk.wait_for(lambda: not self.desk.windows(self.probe.pid), "the item to be gone", PROMPT)
            self.desk.start_trayer()
            self.item(PROMPT)

    def test_anchor_is_in_points_where_the_screen_is_scaled(self):
        self.desk.env["QT_SCALE_FACTOR"] = "2"
        self.desk.start_trayer()
        with Probe(self.desk) as self.probe:
            def rounding():
                """How far the anchor is from half the item's pixels; an odd pixel is rounded either way."""
                return max(abs(points - pixels / 2) for points, pixels in zip(self.probe.anchor(), self.item()[1]))

            self.item()
            self.desk.wait_for(lambda: rounding() <= 0.5, "the anchor on the item")

    def test_anchor_is_where_the_item_is(self):
        self.desk.start_trayer()
        with Probe(self.desk) as self.probe:
            self.item()
            self.desk.wait_for(lambda: self.probe.anchor() == self.item()[1], "the anchor on the item")

    def test_item_comes_when_the_tray_starts_later_and_nothing_floats_after_its_death(self):
        with Probe(self.desk) as self.probe:
            for _ in range(ROUNDS):
                tray = self.desk.start_trayer()
                window, _ = self.item(PROMPT)
                self.desk.wait_for(lambda: self.desk.parent_of(window) != "root", "the item inside the tray")
                self.desk.kill(tray)
                self.desk.wait_for(lambda: not self.desk.windows(self.probe.pid), "the item to be gone", PROMPT)
                self.probe.check_alive()
            time.sleep(0.5)
            self.assertEqual(self.desk.windows(self.probe.pid), {})
            self.assertEqual(self.probe.quit(), 0)

    def test_item_moves_to_another_kind_of_tray_that_takes_windows_too(self):
        tray = self.desk.start_trayer()
        with Probe(self.desk) as self.probe:
            self.item()
            self.desk.kill(tray)
            self.desk.wait_for(lambda: not self.desk.windows(self.probe.pid), "the item to be gone", PROMPT)
            self.desk.start_xfce_panel()
            self.item(PROMPT)
            self.probe.check_alive()

    def test_item_of_a_status_notifier_host_survives_a_tray_of_the_other_kind(self):
        panel = self.desk.start_xfce_panel()
        with Probe(self.desk) as self.probe:
            self.desk.wait_for(self.desk.status_notifier_items, "the item in the panel")
            self.desk.kill(panel)
            self.desk.wait_for(lambda: not self.desk.status_notifier_items(), "the host to be gone")
            tray = self.desk.start_trayer()
            time.sleep(0.5)
            self.probe.check_alive()
            self.desk.kill(tray)
            self.desk.start_xfce_panel()
            self.desk.wait_for(self.desk.status_notifier_items, "the item in the panel", PROMPT)

    def test_item_needs_no_session_bus(self):
        self.desk.env["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
        self.desk.start_trayer()
        with Probe(self.desk) as self.probe:
            self.item()


class NoTray(unittest.TestCase):
    """Where nothing shows items."""

    def test_waiting_wakes_nobody_up(self):
        with desktop.Desktop() as desk, Probe(desk) as probe:
            time.sleep(0.7)
            before = desk.voluntary_switches(probe.process)
            time.sleep(3)
            self.assertLessEqual(desk.voluntary_switches(probe.process) - before, 1)
            self.assertEqual(desk.windows(probe.pid), {})
            self.assertEqual(probe.quit(), 0)

    def test_neither_display_nor_bus_is_needed(self):
        with desktop.Desktop(display=False, bus=False) as desk:
            desk.env["QT_QPA_PLATFORM"] = "offscreen"
            desk.env["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
            with Probe(desk) as probe:
                probe.tell("symbol circle.dashed unknown")
                self.assertTrue(probe.compositing())
                self.assertEqual(probe.quit(), 0)

    def test_compositing_is_what_the_window_manager_does(self):
        for compositing in (False, True):
            with desktop.Desktop() as desk:
                desk.start_window_manager(compositing=compositing)
                with Probe(desk) as probe:
                    desk.wait_for(lambda: probe.compositing() == compositing, f"compositing to be {compositing}")


if __name__ == "__main__":
    desktop.require("Xvfb", "dbus-daemon", "dbus-monitor", "gdbus", "xfwm4", "xfce4-panel", "trayer", "xdotool", "xprop",
                    "xwininfo")
    desktop.require_modules("gi")
    unittest.main(verbosity=2)
