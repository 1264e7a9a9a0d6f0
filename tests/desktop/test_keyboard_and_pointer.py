"""The panel under a user's hands: keys, clicks, second starts; and what it says where there is no bridge."""

from companion import PANEL, SETTINGS, CompanionTest, skip_unless_possible
from contents import BUTTONS_AFTER_AUTO, BUTTONS_BEFORE_AUTO, HEARTBEAT, well_rows

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

    def test_closed_panel_is_given_back_and_comes_again_whole(self):
        self.open()
        self.desk.activate_item(self.item())
        self.wait_for(lambda: not self.panels(hidden=True), "the window to be given back")
        self.open_panel()
        self.wait_for_rows(PANEL, well_rows())
        self.assertEqual(len(self.panels(hidden=True)), 1)
        self.wait_for_calls(self.tool, [HEARTBEAT, HEARTBEAT])

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
        self.reader.wait_for_text("Start bridge: vorna server start", PANEL)
        self.assertGreater(len(self.leaves(PANEL)), len(BUTTONS_BEFORE_AUTO))
        self.check_within(self.wait_for_panel(), (0, 0, *self.desk.size))
        self.photograph("actions-without-a-tray")
