"""The item in the tray on a real desktop: where it shows, what it says, and what it does when trays come and go."""

import contextlib
import ctypes
import os
import signal
import time
import unittest

import desktop
from companion import PROGRAMS, DesktopTest
from faults import HERE
from probe import Probe, Program

ROUNDS = 5
A_CALL_GIVES_UP_AFTER = 25
QT_THAT_ASKS_FOR_A_HOST = (6, 4)


def setUpModule():
    desktop.require(*PROGRAMS, "dbus-monitor")


def qt_version():
    version = ctypes.CDLL("libQt6Core.so.6").qVersion
    version.restype = ctypes.c_char_p
    return tuple(map(int, version().decode().split(".")[:2]))


class OnADesktop(DesktopTest):
    """Each test has a desktop of its own, with a window manager, and mostly one probe."""

    def setUp(self):
        self.desk = self.enterContext(desktop.Desktop())
        self.desk.start_window_manager()

    def start_probe(self):
        self.probe = self.enterContext(Probe(self.desk))

    def windows(self):
        return self.desk.windows(self.probe.pid)

    def wait_for_no_window(self):
        self.wait_for(lambda: not self.windows(), "the item to be gone")

    @contextlib.contextmanager
    def news(self, *lines):
        """Waits at its end for lines that the probe has not said before."""
        before = len(self.probe.lines)
        yield
        for line in lines:
            self.probe.expect(line, after=before)
        self.probe.tell("settle")

    def check_popup(self, x, y):
        """A popup opened by a click on the item takes the keyboard and goes on Escape, elsewhere and on the item."""
        for close in (lambda: self.desk.press("Escape"), lambda: self.desk.click(200, 600),
                      lambda: self.desk.click(x, y)):
            with self.news("popup shown"):
                self.desk.click(x, y)
            with self.news("popup key a"):
                self.desk.press("a")
            with self.news("popup hidden"):
                close()
            self.assertEqual([line for line in self.probe.lines if line.startswith("popup")][-1], "popup hidden")


class StatusNotifierTray(OnADesktop):
    """In a host of status notifier items."""

    def start_watcher(self):
        return self.enterContext(Program(self.desk, ["/usr/bin/python3", HERE / "fake_watcher.py"]))

    def start_in_tray(self):
        self.desk.start_tray()
        self.start_probe()
        return self.item()

    def test_item_says_its_name_and_meaning_with_pictures_of_every_size(self):
        item = self.start_in_tray()
        sent = {(wide, high) for wide, high, _ in self.desk.item_property(item, "IconPixmap")}
        self.assertLessEqual({(size, size) for size in (16, 22, 24, 32, 48, 64)}, sent)
        self.assertEqual(self.desk.item_property(item, "Title"), "vorna")
        self.assertEqual(self.desk.item_meaning(item), "vorna — bridge offline")
        self.probe.tell("symbol checkmark.circle.fill all is well")
        self.assertEqual(self.desk.item_meaning(item), "vorna — all is well")
        self.probe.tell("symbol xmark.octagon.fill")
        self.assertEqual(self.desk.item_meaning(item), "vorna")

    def test_activation_and_menu_are_heard(self):
        item = self.start_in_tray()
        self.assertEqual(sorted(self.desk.menu_entries(item)), ["Quit vorna", "Settings…", "Show panel"])
        self.desk.activate_item(item)
        self.probe.expect("clicked")
        for label, line in (("Show panel", "show panel"), ("Settings…", "settings")):
            self.desk.choose_menu_entry(item, label)
            self.probe.expect(line)
        self.desk.choose_menu_entry(item, "Quit vorna")
        self.assertEqual(self.probe.process.wait(timeout=30), 0)

    def test_popup_behaves_as_a_panel_does(self):
        self.start_in_tray()
        self.check_popup(*self.desk.item_in_bar())

    def test_host_that_comes_and_goes_in_a_hurry_does_no_harm(self):
        self.start_probe()
        for pause in (0.05, 0.1, 0.15, 0.2, 0.25, 0.3, 0.4):
            panel = self.desk.start_xfce_panel()
            time.sleep(pause)
            self.desk.kill(panel)
            self.probe.check_alive()
        self.desk.start_tray()
        self.item()

    def test_equal_symbol_is_not_announced_again(self):
        self.start_in_tray()
        monitor = self.desk.start(["dbus-monitor", "--session", "interface='org.kde.StatusNotifierItem'"])
        announced = lambda: self.desk.output(monitor).count("member=NewIcon")
        self.wait_for(lambda: "NameAcquired" in self.desk.output(monitor), "the monitor")
        self.probe.tell("symbol circle.dashed unknown")
        self.wait_for(lambda: announced() == 1, "the first announcement")
        for _ in range(5):
            self.probe.tell("symbol circle.dashed unknown")
        self.probe.tell("symbol xmark.octagon.fill bad")
        self.wait_for(lambda: announced() >= 2, "the second announcement")
        self.assertEqual(announced(), 2)

    def test_item_comes_when_the_host_starts_later_and_again_after_each_death(self):
        self.start_probe()
        for _ in range(ROUNDS):
            panel = self.desk.start_tray()
            self.item()
            self.desk.kill(panel)
            self.wait_for(lambda: not self.desk.status_notifier_items(), "the host to be gone")
            self.probe.check_alive()
            self.assertEqual(self.windows(), {})
        self.probe.tell("symbol circle.dashed changed meanwhile")
        self.desk.start_tray()
        self.assertIn("changed meanwhile", self.desk.item_meaning(self.item()))
        self.assertEqual(self.probe.end(), 0)

    def test_watcher_without_a_host_is_no_tray(self):
        watcher = self.start_watcher()
        self.start_probe()
        self.probe.tell("settle")
        self.assertEqual(self.desk.status_notifier_items(), [])
        watcher.tell("host")
        item = self.item()
        self.assertTrue(self.answers(item))
        watcher.tell("no host")
        self.wait_for(lambda: not self.answers(item), "the item to withdraw")
        watcher.tell("host")
        self.wait_for(lambda: len(self.desk.status_notifier_items()) == 2, "the item to return")
        self.assertTrue(self.answers(self.desk.status_notifier_items()[1]))
        self.probe.check_alive()

    def answers(self, item):
        """Whether an item is still where the watcher knows it."""
        try:
            return self.desk.item_property(item, "Title") == "vorna"
        except desktop.NoAnswer:
            return False

    def test_watcher_that_does_not_answer_holds_nothing_up(self):
        watcher = self.start_watcher()
        os.kill(watcher.pid, signal.SIGSTOP)
        self.desk.start_trayer()
        began = time.monotonic()
        self.start_probe()
        self.probe.tell("settle")
        self.probe.anchor()
        self.assertLess(time.monotonic() - began, A_CALL_GIVES_UP_AFTER / 2)
        self.assertEqual(self.windows(), {})
        os.kill(watcher.pid, signal.SIGCONT)
        if qt_version() <= QT_THAT_ASKS_FOR_A_HOST:
            self.wait_for(self.windows, "the item in the other tray")
        self.desk.kill(watcher.process)
        self.wait_for(self.windows, "the item in the other tray")
        self.assertEqual(self.desk.status_notifier_items(), [])


class EmbeddedTray(OnADesktop):
    """In a tray that windows are embedded into."""

    def start_in_tray(self):
        tray = self.desk.start_trayer()
        self.start_probe()
        self.wait_for_item()
        return tray

    def wait_for_item(self):
        """The item's place, once it is inside a tray and drawn."""
        def item():
            return [place for window, place in self.windows().items() if self.desk.is_embedded(window)
                    and len(self.desk.colours(*place)) > 1]

        return self.wait_for(item, "the item in the tray")[0]

    def middle(self):
        x, y, width, height = self.wait_for_item()
        return x + width // 2, y + height // 2

    def test_popup_behaves_as_a_panel_does_and_the_menu_is_heard(self):
        self.start_in_tray()
        self.check_popup(*self.middle())
        self.desk.click(*self.middle(), button=3)
        x, y, *_ = self.wait_for(self.menu, "the menu")
        self.desk.click(x + 20, y + 12)
        self.probe.expect("show panel")

    def menu(self):
        """The place of the item's menu, once it is drawn."""
        return next((place for window, place in self.windows().items() if not self.desk.is_embedded(window)
                     and len(self.desk.colours(0, 0, *place[2:], window=window)) > 1), None)

    def test_tray_that_comes_and_goes_in_a_hurry_does_no_harm(self):
        self.start_probe()
        for pause in (0.05, 0.1, 0.15, 0.2, 0.3, 0.45, 0.5, 0.6, 0.8):
            tray = self.desk.start_trayer()
            time.sleep(pause)
            self.desk.kill(tray)
            self.probe.check_alive()
        self.wait_for_no_window()
        self.desk.start_trayer()
        self.wait_for_item()

    def test_anchor_is_where_the_item_is_in_points(self):
        for scale in (1, 2):
            self.desk.env["QT_SCALE_FACTOR"] = str(scale)
            with self.subTest(scale=scale), Probe(self.desk) as self.probe:
                tray = self.desk.start_trayer()
                # An odd pixel is rounded either way.
                self.wait_for(lambda: all(abs(points - pixels / scale) <= 0.5 for points, pixels in
                                          zip(self.probe.anchor(), self.wait_for_item())), "the anchor on the item")
                self.desk.kill(tray)

    def test_item_comes_when_the_tray_starts_later_and_nothing_floats_after_its_death(self):
        self.start_probe()
        for _ in range(ROUNDS):
            tray = self.desk.start_trayer()
            self.wait_for_item()
            self.desk.kill(tray)
            self.wait_for_no_window()
            self.probe.check_alive()
        self.probe.tell("settle")
        self.assertEqual(self.windows(), {})
        self.assertEqual(self.probe.end(), 0)

    def test_item_moves_to_another_kind_of_tray_that_takes_windows_too(self):
        self.desk.kill(self.start_in_tray())
        self.wait_for_no_window()
        self.desk.start_xfce_panel()
        self.wait_for_item()
        self.probe.check_alive()

    def test_item_of_a_status_notifier_host_survives_a_tray_of_the_other_kind(self):
        panel = self.desk.start_xfce_panel()
        self.start_probe()
        self.item()
        self.desk.kill(panel)
        self.wait_for(lambda: not self.desk.status_notifier_items(), "the host to be gone")
        tray = self.desk.start_trayer()
        self.wait_for(lambda: self.desk.colours(0, 0, *self.desk.size) > {(0, 0, 0)}, "the other tray")
        self.probe.tell("settle")
        self.desk.kill(tray)
        self.desk.start_xfce_panel()
        self.item()
        self.probe.check_alive()

    def test_item_needs_no_session_bus(self):
        self.desk.env["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
        self.start_in_tray()


class NoTray(unittest.TestCase):
    """Where nothing shows items."""

    def test_waiting_wakes_nobody_up(self):
        with desktop.Desktop() as desk, Probe(desk) as probe:
            probe.tell("settle")
            counts = []
            desk.wait_for(lambda: counts.append(desk.voluntary_switches(probe.process)) or counts[-3:] == 3 * counts[-1:],
                          "two seconds without a wake-up", every=1)
            self.assertEqual(desk.windows(probe.pid), {})
            self.assertEqual(probe.end(), 0)

    def test_neither_display_nor_bus_is_needed(self):
        with desktop.Desktop(display=False, bus=False) as desk:
            desk.env["QT_QPA_PLATFORM"] = "offscreen"
            desk.env["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
            with Probe(desk) as probe:
                probe.tell("symbol circle.dashed unknown")
                self.assertTrue(probe.compositing())
                self.assertEqual(probe.end(), 0)

    def test_compositing_is_what_the_window_manager_does(self):
        for compositing in (False, True):
            with desktop.Desktop() as desk, Probe(desk) as probe:
                desk.start_window_manager(compositing=compositing)
                desk.wait_for(lambda: probe.compositing() == compositing, f"compositing to be {compositing}")
