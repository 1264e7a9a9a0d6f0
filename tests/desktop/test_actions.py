"""What can be done from the panel, on a real desktop: tool, notifications, web pages, dayparts, keyboard, starts."""

import time
import unittest

from companion import PANEL, SETTINGS, CompanionTest, skip_unless_possible

HEARTBEAT = ["desktop", "heartbeat", "--json"]
BACKUP = ["desk", "backup"]
SYNC = ["desk", "sync", "push", "--via", "icloud"]
TOOL_BUTTONS = ("Desk backup now", "Sync via iCloud")
RUNNING = "Running vorna…"
SURFACES = {"Dawn": "#F3EBE3", "Day": "#E8EEF3", "Dusk": "#221C17", "Night": "#12121A"}
BUTTONS_BEFORE_AUTO = ["Refresh", "Console", "Agents", "Facet", *TOOL_BUTTONS]
BUTTONS_AFTER_AUTO = ["Dawn", "Day", "Dusk", "Night", "Test notification", "Settings & permissions", "Quit vorna"]
TIMER_SECONDS = 5.0
PANEL_WIDTH = 340
BAR_HEIGHT = 28
SAME_CLICK_SECONDS = 0.3  # what the panel takes for one and the same click, and a little more

setUpModule = skip_unless_possible


class Actions(CompanionTest):
    """In a tray, with the panel opened by its item."""

    def setUp(self):
        super().setUp()
        self.bridge = self.start_bridge()

    def open(self):
        self.start_companion()
        self.open_panel()

    def pixel_of_header(self):
        x, y, width, _ = self.reader.place(PANEL)
        answer = self.desk.run("import", "-window", "root", "-crop", f"1x1+{x + width // 2}+{y + 4}", "-depth", "8",
                               "txt:-")
        return answer.split()[-2]

    def click_twice(self, name):
        """Two quick clicks of the pointer."""
        x, y, width, height = self.reader.place(name, PANEL)
        self.desk.run("xdotool", "mousemove", x + width // 2, y + height // 2, "click", "--repeat", "2", "--delay", "5",
                      "1")

    def tool_buttons_are_enabled(self):
        return [self.reader.is_enabled(name, PANEL) for name in TOOL_BUTTONS]

    def result(self):
        """The line below the two buttons of the tool."""
        texts = self.reader.texts(PANEL)
        between = texts[texts.index(TOOL_BUTTONS[-1]) + 1 : texts.index("DAYPART")]
        self.assertLessEqual(len(between), 1)
        return between[0] if between else None

    # The tool

    def test_backup_says_what_it_does_and_what_came_of_it(self):
        end = self.desk.root / "end"
        self.tool.does(f'[ "$1" = desk ] && until [ -e {end} ]; do sleep 0.1; done && '
                       'echo "backed up 3 places" && echo && echo "in 2 s"')
        self.open()
        self.assertEqual(self.tool_buttons_are_enabled(), [True, True])
        self.assertIsNone(self.result())
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text(RUNNING, PANEL, within=1.5)
        self.assertEqual(self.tool_buttons_are_enabled(), [False, False])
        self.assertFalse(self.reader.states("Desk backup now", PANEL) & {"enabled", "sensitive"})
        self.assertTrue(self.reader.is_enabled("Refresh", PANEL))
        self.photograph("actions-running")
        end.touch()
        self.reader.wait_for_text("backed up 3 places · in 2 s", PANEL)
        self.wait_for(lambda: self.tool_buttons_are_enabled() == [True, True], "the buttons to be enabled again")
        self.assertEqual(self.result(), "backed up 3 places · in 2 s")
        self.photograph("actions-done")
        self.wait_for_notifications(("vorna", "Desk backup", "backed up 3 places · in 2 s"))
        self.assertEqual(self.tool.calls(), [HEARTBEAT, BACKUP])

    def test_sync_hands_over_its_words_one_by_one(self):
        self.open()
        self.reader.press("Sync via iCloud", PANEL)
        self.wait_for_notifications(("vorna", "Mac→Mac iCloud sync", "ok"))
        self.assertEqual(self.tool.calls(), [HEARTBEAT, SYNC])

    def test_tool_that_fails_is_told_of(self):
        self.tool.does('[ "$1" = desk ] && echo "no disk <of ours> & none else" >&2 && exit 3; :')
        self.open()
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text("no disk <of ours> & none else", PANEL)
        self.wait_for(self.notifications, "the notification")
        ((application, title, body),) = self.notifications()
        self.assertEqual((application, title), ("vorna", "Desk backup"))
        plain = body.replace("&lt;", "<").replace("&gt;", ">").replace("&amp;", "&")
        self.assertEqual(plain, "Failed: no disk <of ours> & none else")

    def test_missing_tool_is_told_of_in_a_sentence(self):
        self.tool.path.unlink()
        self.open()
        self.reader.press("Desk backup now", PANEL)
        self.wait_for(lambda: self.result() not in (None, RUNNING), "a result")
        self.assertRegex(self.result(), r"^[A-Z“].*vorna.*\.$")
        self.photograph("actions-missing-tool")
        self.wait_for_notifications(("vorna", "Desk backup", "Failed: " + self.result()))

    def test_double_press_runs_the_tool_once(self):
        self.tool.does('[ "$1" = desk ] && sleep 1; :')
        self.open()
        self.reader.wait_for_text("online · :43105", PANEL)
        self.click_twice("Desk backup now")
        self.wait_for_notifications(("vorna", "Desk backup", "ok"))
        self.assertEqual(self.tool.calls(), [HEARTBEAT, BACKUP])

    def test_account_is_asked_for_at_each_opening(self):
        self.open()
        self.wait_for_calls(self.tool, [HEARTBEAT])
        self.desk.press("Escape")
        self.reader.wait_for_no_window(PANEL)
        self.open_panel()
        self.wait_for_calls(self.tool, [HEARTBEAT, HEARTBEAT])

    def test_no_child_is_left_behind(self):
        self.tool.does("sleep 0.3")
        self.open()
        for count, title in enumerate(TOOL_BUTTONS, 1):
            self.reader.press(title, PANEL)
            self.wait_for(self.children, "the tool")
            self.wait_for(lambda: len(self.notifications()) == count, "the tool's end")
        self.reader.press("Console", PANEL)
        self.wait_for_calls(self.opener, [["https://vorna.localhost/dashboard"]])
        self.wait_for(lambda: not self.children(), "every child to be gone")

    # The bridge and the web

    def test_panel_shows_the_bridge(self):
        self.open()
        self.reader.wait_for_text("online · :43105", PANEL)
        texts = self.reader.texts(PANEL)
        updated = next(text for text in texts if text.startswith("Updated "))
        self.assertRegex(updated, r"^Updated 12:\d\d:\d\d$")
        self.assertRegex(texts[1], r"^v\d+\.\d+\.\d+ \(\w+\) · Day$")
        self.assertEqual(texts, ["vorna", texts[1], "ok",
                                 "Bridge", "online · :43105", "ok",
                                 "Caddy", "running · 3/4 sites", "ok",
                                 "Postgres", "answers on port 5432", "ok",
                                 "LOAD", "1.73", "MEMORY", "64%", "DISK", "71% · 138 GB free", updated,
                                 "SERVICES", "ok", "caddy.process", "running",
                                 "ok", "postgres", "answers on port 5432",
                                 *BUTTONS_BEFORE_AUTO[:4], "MAC → MAC", *TOOL_BUTTONS,
                                 "DAYPART", "Auto", *BUTTONS_AFTER_AUTO])
        self.photograph("actions-well")

    def test_item_says_what_the_model_says(self):
        self.start_companion()
        item = self.item()
        self.wait_for_meaning(item, "bridge offline")
        self.open_panel()
        self.wait_for_meaning(item, "all well")
        self.bridge.stop()
        self.wait_for_meaning(item, "bridge offline")

    def wait_for_meaning(self, item, meaning):
        """Waits until hovering the item says that, for as long as a poll may be in coming."""
        self.wait_for(lambda: f"'vorna — {meaning}'" in self.desk.item_property(item, "ToolTip"),
                      f"the item to say {meaning}", within=3 * TIMER_SECONDS)

    def test_refresh_polls_at_once(self):
        self.open()
        self.wait_for(lambda: len(self.bridge.polls()) == 1, "the poll of the opening")
        self.reader.press("Refresh", PANEL)
        self.wait_for(lambda: len(self.bridge.polls()) == 2, "the poll of the press", within=3)
        first, second = self.bridge.polls()
        self.assertLess(second - first, TIMER_SECONDS - 1)

    def test_web_pages_are_handed_to_the_system(self):
        self.open()
        for title, address in (("Facet", "https://facet.vorna.localhost"),
                               ("Console", "https://vorna.localhost/dashboard"),
                               ("Agents", "https://vorna.localhost/dashboard/agents")):
            self.opener.forget()
            self.reader.press(title, PANEL)
            self.wait_for_calls(self.opener, [[address]])

    # Dayparts

    def assert_daypart(self, title, pinned):
        self.wait_for(lambda: self.reader.texts(PANEL)[1].endswith(" · " + title), f"the panel to say {title}")
        self.wait_for(lambda: self.pixel_of_header() == SURFACES[title], f"the colours of {title}")
        self.assertEqual(self.reader.is_enabled("Auto", PANEL), pinned)
        self.assertEqual(self.reader.texts(PANEL).count("Auto"), 1)

    def test_dayparts_are_chosen_and_let_go(self):
        self.open()
        self.assert_daypart("Day", pinned=False)
        self.assertEqual(self.remembered(), [])
        for title in SURFACES:
            self.reader.press(title, PANEL)
            self.assert_daypart(title, pinned=True)
            self.photograph(f"actions-{title.lower()}")
        self.reader.press("Auto", PANEL)
        self.assert_daypart("Day", pinned=False)
        self.reader.press("Day", PANEL)
        self.assert_daypart("Day", pinned=True)

    def test_restart_keeps_the_chosen_daypart(self):
        self.open()
        self.reader.press("Night", PANEL)
        self.assert_daypart("Night", pinned=True)
        self.reader.press("Quit vorna", PANEL)
        self.assertEqual(self.wait_for_exit(), 0)
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=true", "vorna.macos.daypart=night"])
        self.open()
        self.assert_daypart("Night", pinned=True)
        self.reader.press("Auto", PANEL)
        self.assert_daypart("Day", pinned=False)
        self.reader.press("Quit vorna", PANEL)
        self.assertEqual(self.wait_for_exit(), 0)
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=false"])

    # Notifications

    def test_each_test_notification_is_one_of_its_own(self):
        self.open()
        self.reader.wait_for_text("online · :43105", PANEL)
        self.click_twice("Test notification")
        self.wait_for_notifications(*[("vorna", "vorna", "Desktop notifications are working · Day")] * 2)

    # Keyboard

    def focus_after(self, key, times):
        found = []
        for _ in range(times):
            before = self.reader.focused(PANEL)
            self.desk.press(key)
            found.append(self.wait_for(lambda: self.changed(before), "the focus to move"))
        return found

    def changed(self, before):
        now = self.reader.focused(PANEL)
        return now if now != before else None

    def test_tab_goes_through_the_buttons_in_reading_order(self):
        self.open()
        buttons = BUTTONS_BEFORE_AUTO + BUTTONS_AFTER_AUTO
        self.assertEqual(self.focus_after("Tab", len(buttons) + 1), [*buttons, buttons[0]])
        self.assertEqual(self.focus_after("shift+Tab", 1), [buttons[-1]])
        self.photograph("actions-focus")

    def test_tab_stops_at_auto_where_it_is_a_button(self):
        self.open()
        self.reader.press("Dusk", PANEL)
        self.assert_daypart("Dusk", pinned=True)
        buttons = [*BUTTONS_BEFORE_AUTO, "Auto", *BUTTONS_AFTER_AUTO]
        self.wait_for(lambda: self.reader.focused(PANEL) is not None, "the focus")
        reached = self.focus_after("Tab", len(buttons))
        self.assertCountEqual(reached, buttons)
        start = reached.index(buttons[0])
        self.assertEqual(reached[start:] + reached[:start], buttons)

    def test_space_and_return_press(self):
        self.open()
        self.focus_after("Tab", 2)
        self.desk.press("space")
        self.wait_for_calls(self.opener, [["https://vorna.localhost/dashboard"]])
        self.focus_after("Tab", 1)
        self.desk.press("Return")
        self.wait_for_calls(self.opener, [["https://vorna.localhost/dashboard"],
                                          ["https://vorna.localhost/dashboard/agents"]])

    def test_escape_closes_the_panel_and_nothing_else(self):
        self.open()
        self.desk.press("Escape")
        self.reader.wait_for_no_window(PANEL)
        self.assertIsNone(self.companion.poll())
        self.assertEqual(len(self.desk.status_notifier_items()), 1)

    def test_quit_key_ends_the_companion(self):
        self.open()
        self.desk.press("ctrl+q")
        self.assertEqual(self.wait_for_exit(), 0)
        self.assertEqual(self.desk.output(self.companion), "")

    def test_quit_ends_the_companion_while_the_tool_runs(self):
        self.tool.does('[ "$1" = desk ] && exec sleep 3; :')
        self.open()
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text(RUNNING, PANEL)
        self.reader.press("Quit vorna", PANEL)
        self.assertEqual(self.wait_for_exit(), 0)
        self.assertEqual(self.desk.output(self.companion), "")

    # The pointer

    def test_clicks_on_the_item_and_elsewhere_open_and_close(self):
        self.start_companion()
        self.item()
        width, height = self.desk.size
        x, y = width - BAR_HEIGHT // 2, BAR_HEIGHT // 2
        self.wait_for(lambda: self.click_and_see(x, y), "the panel after a click on the item")
        left, top, panel_width, panel_height = self.reader.place(PANEL)
        self.assertGreaterEqual(top, BAR_HEIGHT)
        self.assertLessEqual(top + panel_height, height)
        self.assertEqual(panel_width, PANEL_WIDTH)
        self.assertGreater(left + panel_width, x)
        self.assertLessEqual(left + panel_width, width)
        self.photograph("actions-under-the-item")
        self.desk.click(x, y)
        self.reader.wait_for_no_window(PANEL)
        time.sleep(SAME_CLICK_SECONDS)
        self.desk.click(x, y)
        self.reader.wait_for_window(PANEL)
        self.desk.click(100, height - 100)
        self.reader.wait_for_no_window(PANEL)

    def click_and_see(self, x, y):
        """Whether a click showed the panel; the tray may still be making room for its item."""
        self.desk.click(x, y)
        for _ in range(10):
            if self.reader.windows():
                return True
            time.sleep(0.05)
        return False

    def test_closed_panel_is_given_back_and_comes_again_whole(self):
        self.open()
        self.reader.wait_for_text("online · :43105", PANEL)
        whole = self.texts_but_the_time()
        self.desk.activate_item(self.item())
        self.wait_for(lambda: not self.panel_windows(), "the window to be given back")
        self.open_panel()
        self.assertEqual(self.texts_but_the_time(), whole)
        self.assertEqual(len(self.panel_windows()), 1)

    def panel_windows(self):
        places = self.desk.windows(self.companion.pid, hidden=True).values()
        return [place for place in places if place[2] == PANEL_WIDTH]

    def texts_but_the_time(self):
        return [text for text in self.reader.texts(PANEL) if not text.startswith("Updated ")]

    # A second start

    def test_second_start_opens_the_panel_of_the_first(self):
        self.start_companion()
        self.item()
        self.assertEqual(self.start_again(), 0)
        self.reader.wait_for_window(PANEL)
        self.assertIsNone(self.companion.poll())
        self.assertEqual(len(self.desk.status_notifier_items()), 1)

    def test_second_start_opens_the_settings_of_the_first(self):
        self.start_companion()
        self.item()
        self.assertEqual(self.start_again("--settings"), 0)
        self.reader.wait_for_window(SETTINGS)
        self.assertEqual(self.reader.windows(), [SETTINGS])


class WithoutATray(CompanionTest):
    """Where nothing shows an item."""

    has_tray = False

    def test_second_start_opens_the_panel_all_the_same(self):
        self.start_bridge()
        self.start_companion()
        self.wait_for(self.reader.is_there, "the first start")
        self.assertEqual(self.start_again(), 0)
        self.reader.wait_for_window(PANEL)
        self.reader.wait_for_text("online · :43105", PANEL)
        x, y, width, height = self.reader.place(PANEL)
        self.assertEqual(width, PANEL_WIDTH)
        self.assertGreaterEqual(min(x, y), 0)
        self.assertLessEqual(x + width, self.desk.size[0])
        self.assertLessEqual(y + height, self.desk.size[1])
        self.photograph("actions-without-a-tray")


if __name__ == "__main__":
    unittest.main()
