"""The item in trays of both kinds: where it shows, what it says, and what it does when trays come and go."""

import os
import signal
import time

import desktop
import psutil
import session_bus
from companion import PANEL_WIDTH, skip_unless_possible
from faults import Story

A_CALL_GIVES_UP_AFTER = 25
# Qt closes whatever popup is open 100 ms after it has heard that one lost the keyboard.
FOCUS_SECONDS = 0.15

setUpModule = skip_unless_possible


class TrayStory(Story):
    def wait_for_no_window(self):
        self.wait_for(lambda: not self.desk.windows(self.companion.pid), "no window")

    def check_panel_under(self, x, y):
        """Clicks on the item open the panel below it; Escape, a click elsewhere and one on the item close it."""
        def click():
            self.desk.click(x, y)

        for close in (lambda: self.desk.press("Escape"), lambda: self.desk.click(200, 700), click):
            (left, top, width, height), = self.click_until_open(click, self.panels)
            self.check_within((left, top, width, height), (0, desktop.BAR_HEIGHT, *self.desk.size))
            self.assertTrue(left < x < left + width, f"{x} above {left} to {left + width}")
            time.sleep(FOCUS_SECONDS)
            close()
            self.wait_for(lambda: not self.panels(), "the panel to close")
        time.sleep(FOCUS_SECONDS)
        self.assertEqual(self.panels(), [])

    def check_hurry(self, start_tray):
        for pause in (0.05, 0.1, 0.15, 0.2, 0.3, 0.45, 0.6):
            tray = start_tray()
            time.sleep(pause)
            self.desk.kill(tray)
            self.check_alive()


class StatusNotifierTray(TrayStory):
    """In a host of status notifier items."""

    def start_in_tray(self):
        self.desk.start_tray()
        self.start_companion()
        return self.item()

    def test_item_has_a_name_pictures_of_every_size_and_a_menu(self):
        item = self.start_in_tray()
        sent = {(wide, high) for wide, high, _ in self.desk.item_property(item, "IconPixmap")}
        self.assertLessEqual({(size, size) for size in (16, 22, 24, 32, 48, 64)}, sent)
        self.assertEqual(self.desk.item_property(item, "Title"), "vorna")
        self.assertEqual(sorted(self.desk.menu_entries(item)), ["Quit vorna", "Settings…", "Show panel"])
        self.desk.choose_menu_entry(item, "Show panel")
        self.wait_for_panel()
        self.desk.choose_menu_entry(item, "Quit vorna")
        self.assertEqual(self.wait_for_exit(), 0)

    def test_panel_opens_and_closes_by_the_item(self):
        self.start_in_tray()
        self.check_panel_under(*self.desk.item_in_bar())

    def test_picture_is_announced_when_it_changes_and_not_at_each_poll(self):
        item = self.start_in_tray()
        announced = []
        self.desk.bus.signal_subscribe(item[0], session_bus.ITEM, "NewIcon", None, None, 0,
                                       lambda *news: announced.append(news))
        self.desk.activate_item(item)
        self.wait_for_meaning(item, "all well")
        self.check_polling_goes_on()
        before = len(announced)
        self.check_polling_goes_on()
        self.check_polling_goes_on()
        self.assertEqual(len(announced), before)
        self.assertGreater(before, 0)
        self.bridge.stop()
        self.wait_for_meaning(item, "bridge offline")

    def test_hosts_that_come_and_go_in_a_hurry_do_no_harm(self):
        self.start_companion()
        self.check_hurry(self.desk.start_xfce_panel)
        self.open_by_second_start()
        self.desk.start_tray()
        self.wait_for_meaning(self.item(), "all well")

    def test_watcher_without_a_host_is_no_tray(self):
        watcher = self.start_watcher()
        self.start_companion()
        self.wait_for_start()
        self.assertEqual(self.desk.status_notifier_items(), [])
        watcher.tell("host")
        item = self.item()
        self.assertTrue(self.answers(item))
        watcher.tell("no host")
        self.wait_for(lambda: not self.answers(item), "the item to withdraw")
        watcher.tell("host")
        self.wait_for(lambda: len(self.desk.status_notifier_items()) == 2, "the item to return")
        self.assertTrue(self.answers(self.desk.status_notifier_items()[1]))
        self.check_alive()

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
        self.start_companion()
        self.wait_for_start()
        self.assertLess(time.monotonic() - began, A_CALL_GIVES_UP_AFTER / 2)
        self.wait_for_no_window()
        os.kill(watcher.pid, signal.SIGCONT)
        self.desk.kill(watcher.process)
        self.embedded_item()
        self.assertEqual(self.desk.status_notifier_items(), [])


class EmbeddedTray(TrayStory):
    """In a tray that windows are embedded into."""

    def test_panel_opens_and_closes_by_the_item_and_the_menu_is_heard(self):
        self.desk.start_trayer()
        self.start_companion()
        x, y = self.embedded_item()
        self.check_panel_under(x, y)
        self.desk.click(x, y, button=3)
        left, top, *_ = self.wait_for(self.menu, "the menu")
        self.desk.click(left + 20, top + 12)
        self.wait_for_panel()

    def menu(self):
        """The place of the item's menu, once it is drawn."""
        return next((place for window, place in self.desk.windows(self.companion.pid).items()
                     if not self.desk.is_embedded(window) and place[2] != PANEL_WIDTH
                     and len(self.desk.colours(0, 0, *place[2:], window=window)) > 1), None)

    def test_panel_opens_under_the_item_on_a_scaled_screen(self):
        self.desk.start_trayer(align="center")
        self.start_companion(env={"QT_SCALE_FACTOR": "2"})
        left, _, width, _ = self.click_until_open(lambda: self.desk.click(*self.embedded_item()),
                                                  lambda: self.panels(scale=2))[0]
        x, _ = self.embedded_item()
        self.assertAlmostEqual(left + width / 2, x, delta=desktop.BAR_HEIGHT)

    def test_trays_that_come_and_go_in_a_hurry_do_no_harm(self):
        self.start_companion()
        self.check_hurry(self.desk.start_trayer)
        self.wait_for_no_window()
        self.desk.start_trayer()
        self.embedded_item()

    def test_item_moves_to_another_kind_of_tray_that_takes_windows_too(self):
        tray = self.desk.start_trayer()
        self.start_companion()
        self.embedded_item()
        self.desk.kill(tray)
        self.wait_for_no_window()
        self.desk.start_xfce_panel()
        self.embedded_item()

    def test_item_of_a_status_notifier_host_survives_a_tray_of_the_other_kind(self):
        with self.start_with_item():
            pass
        self.wait_for(lambda: not self.desk.status_notifier_items(), "the host to be gone")
        tray = self.desk.start_trayer()
        self.wait_for(lambda: self.desk.colours(0, 0, *self.desk.size) > {(0, 0, 0)}, "the other tray")
        self.open_by_second_start()
        self.check_polling_goes_on()
        self.desk.kill(tray)
        self.start_host().expect("registered ")
        self.check_alive()


class NoTray(TrayStory):
    """Where nothing shows items."""

    def test_waiting_wakes_nobody_up(self):
        self.start_companion()
        self.wait_for_start()
        counts = []

        def sleeps():
            counts.append(psutil.Process(self.companion.pid).num_ctx_switches().voluntary)
            return counts[-3:] == 3 * counts[-1:]

        self.wait_for(sleeps, "two seconds without a wake-up", every=1)
        self.wait_for_no_window()

    def test_corners_are_round_where_windows_are_blended(self):
        for compositing in (False, True):
            with self.subTest(compositing), desktop.Desktop() as self.desk:
                self.desk.start_window_manager(compositing=compositing)
                self.start_companion()
                self.open_by_second_start()
                self.wait_for(lambda: len(self.at_corner(40)) > 1, "the panel to be drawn")
                self.wait_for_equal(lambda: self.at_corner(1) == {(0, 0, 0)}, compositing, "its corner")
                self.desk.stop(self.companion)

    def at_corner(self, size):
        """The colours of a square where the panel begins; the first answer of the bridge makes it higher."""
        x, y, *_ = self.wait_for_panel()
        return self.desk.colours(x, y, size, size)
