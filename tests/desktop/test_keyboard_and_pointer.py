"""The panel under a user's hands: keys, clicks, second starts; and what it says where there is no bridge."""


import desktop
from companion import PANEL, SETTINGS, CompanionTest, skip_unless_possible
from contents import BUTTONS_AFTER_AUTO, BUTTONS_BEFORE_AUTO, offline_rows, well_rows

setUpModule = skip_unless_possible


class Hands(CompanionTest):
    """In a tray, with a bridge."""

    def setUp(self):
        super().setUp()
        self.bridge = self.start_bridge()

    def open(self):
        self.start_companion()
        self.open_panel()
        self.wait_for_rows(PANEL, well_rows())

    # Keyboard

    def focus_after(self, key, times):
        found = []
        for _ in range(times):
            before = self.reader.focused(PANEL)
            self.desk.press(key)
            found.append(self.wait_for(lambda: (now := self.reader.focused(PANEL)) != before and now,
                                       "the focus to move"))
        return found

    def test_tab_goes_through_the_buttons_in_reading_order(self):
        self.open()
        buttons = BUTTONS_BEFORE_AUTO + BUTTONS_AFTER_AUTO
        self.assertEqual(self.focus_after("Tab", len(buttons) + 1), [*buttons, buttons[0]])
        self.assertEqual(self.focus_after("shift+Tab", 1), [buttons[-1]])
        self.photograph("actions-focus")

    def test_tab_stops_at_auto_where_it_is_a_button(self):
        self.open()
        self.reader.press("Dusk", PANEL)
        self.wait_for_daypart("Dusk")
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
        self.check_alive()
        self.assertEqual(len(self.desk.status_notifier_items()), 1)

    def test_quit_key_ends_the_companion(self):
        self.open()
        self.desk.press("ctrl+q")
        self.assertEqual(self.wait_for_exit(), 0)
        self.assertEqual(self.desk.output(self.companion), "")

    # The pointer

    def test_clicks_on_the_item_and_elsewhere_open_and_close(self):
        self.start_companion()
        self.item()
        x, y = self.desk.item_in_bar()
        self.desk.click(x, y)
        self.reader.wait_for_window(PANEL)
        width, height = self.desk.size
        left, top, panel_width, panel_height = self.wait_for_panel()
        self.check_within((left, top, panel_width, panel_height),
                          (0, desktop.BAR_HEIGHT, width, height - desktop.BAR_HEIGHT))
        self.assertGreater(left + panel_width, x)
        self.photograph("actions-under-the-item")
        self.desk.click(x, y)
        self.reader.wait_for_no_window(PANEL)
        self.wait_for(lambda: self.desk.click(x, y) or self.shows_soon(), "the panel again")
        self.desk.click(100, height - 100)
        self.reader.wait_for_no_window(PANEL)

    def shows_soon(self):
        """Whether a click opened the panel: those that come too soon after its closing are one with the click before."""
        try:
            return self.wait_for(self.panels, "the panel", within=1)
        except desktop.Failure:
            return False

    def test_closed_panel_is_given_back_and_comes_again_whole(self):
        self.open()
        self.desk.activate_item(self.item())
        self.wait_for(lambda: not self.panels(hidden=True), "the window to be given back")
        self.open_panel()
        self.wait_for_rows(PANEL, well_rows())
        self.assertEqual(len(self.panels(hidden=True)), 1)

    # A second start

    def test_second_start_opens_a_window_of_the_first(self):
        self.start_companion()
        self.item()
        self.start_again()
        self.reader.wait_for_window(PANEL)
        self.desk.press("Escape")
        self.reader.wait_for_no_window(PANEL)
        self.start_again("--settings")
        self.reader.wait_for_window(SETTINGS)
        self.assertEqual(self.reader.windows(), [SETTINGS])
        self.check_alive()
        self.assertEqual(len(self.desk.status_notifier_items()), 1)


class WithoutATray(CompanionTest):
    """Where nothing shows an item, and no bridge answers."""

    has_tray = False

    def test_second_start_opens_the_panel_all_the_same(self):
        self.start_companion()
        self.wait_for(self.reader.is_there, "the first start")
        self.start_again()
        self.reader.wait_for_text("bridge unreachable", PANEL)
        rows = offline_rows("the error")
        error = self.reader.texts(PANEL)[[name for _, name in rows].index("the error")]
        self.wait_for_rows(PANEL, offline_rows(error))
        self.assertNotIn("Updated", error)
        self.assertEqual(self.names_with(PANEL, "checked"), ["Day"])
        self.check_within(self.wait_for_panel(), (0, 0, *self.desk.size))
        self.photograph("actions-without-a-tray")
