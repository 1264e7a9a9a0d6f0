"""The settings window on a real desktop: how it opens, what its tabs say and do, and how it goes."""

from companion import PANEL, SETTINGS, CompanionTest, StandIn, skip_unless_possible
from contents import FOLLOW, FOLLOWING, OPEN, TAB, TABS

SMALLEST = (440, 380)

setUpModule = skip_unless_possible


class Settings(CompanionTest):
    """In a tray, with the window opened in each of the ways that there are."""

    def open(self, env=None):
        """Opens the settings from the item's menu."""
        self.start_companion(env=env)
        self.open_again()

    def open_again(self):
        self.desk.choose_menu_entry(self.item(), "Settings…")
        self.reader.wait_for_window(SETTINGS)

    def show(self, tab):
        self.reader.press(tab, SETTINGS)
        self.wait_for_tab(tab)

    def wait_for_tab(self, tab):
        self.wait_for_equal(lambda: self.names_with(SETTINGS, "selected", [TAB]), [tab], "the selected tab")

    def wait_for_checked(self, daypart):
        self.wait_for_equal(lambda: self.names_with(SETTINGS, "checked"), [daypart], "the checked daypart")

    # Opening and closing

    def test_panel_opens_the_window(self):
        self.start_companion()
        self.open_panel()
        self.reader.press("Settings & permissions", PANEL)
        self.reader.wait_for_window(SETTINGS)
        self.wait_for_tab("Bridge")
        self.reader.wait_for_no_window(PANEL)

    def test_menu_opens_one_window_on_its_first_tab(self):
        self.open()
        self.wait_for_tab("Bridge")
        self.show("About")
        self.open_again()
        self.start_again("--settings")
        self.assertEqual(self.reader.windows(), [SETTINGS])
        self.wait_for_tab("About")
        ((_, _, *size),) = self.desk.windows(self.companion.pid).values()
        self.check_within((0, 0, *SMALLEST), (0, 0, *size))

    def test_keyboard_chooses_a_daypart_and_lets_it_go(self):
        self.open()
        self.wait_for(lambda: any("active" in one.states for one in self.reader.tree(SETTINGS)), "the keyboard")
        self.show("Daypart")
        self.desk.press("Tab")
        self.wait_for_equal(lambda: self.reader.focused(SETTINGS), "Day", "the focus")
        self.desk.press("Down")
        self.wait_for_checked("Dusk")
        self.photograph("settings-focus")
        self.desk.press("Tab", "space")
        self.wait_for_checked("Day")
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=false"])
        self.desk.press("Escape")
        self.reader.wait_for_no_window(SETTINGS)
        self.check_alive()

    # The tabs

    def test_tabs_can_be_read_and_reached(self):
        self.open()
        for tab, text in zip(TABS, ("Start bridge", "Full Disk Access", FOLLOWING, "vorna for Linux")):
            self.show(tab)
            self.reader.wait_for_text(text, SETTINGS)
            self.assertGreater(len(self.leaves(SETTINGS)), len(TABS))
            self.photograph("settings-" + tab.lower())

    def test_daypart_is_pinned_for_the_panel_beside(self):
        self.open()
        self.show("Daypart")
        self.wait_for_checked("Day")
        self.open_panel()
        self.wait_for_daypart("Day")
        for pressed in ("Day", "Dusk"):
            self.reader.press(pressed, SETTINGS)
            self.wait_for_daypart(pressed)
            self.wait_for_checked(pressed)
            self.reader.wait_for_text(FOLLOW, SETTINGS)
            self.assertEqual(self.remembered(),
                             ["vorna.macos.daypart.manual=true", f"vorna.macos.daypart={pressed.lower()}"])
        self.photograph("settings-daypart-pinned")
        self.reader.press("Night", PANEL)
        self.wait_for_checked("Night")
        self.reader.press(FOLLOW, SETTINGS)
        self.wait_for_daypart("Day")
        self.wait_for_checked("Day")
        self.reader.wait_for_text(FOLLOWING, SETTINGS)
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=false"])

    # The desktop's own settings

    def test_desktop_with_settings_of_its_own_has_two_buttons_to_them(self):
        program = StandIn(self.folder, "gnome-control-center")
        self.addCleanup(program.path.unlink)
        self.check_links({"XDG_CURRENT_DESKTOP": "GNOME"}, 2)
        self.photograph("settings-permissions-linked")
        for number, pane in enumerate(("notifications", "universal-access")):
            program.forget()
            self.reader.press(OPEN, SETTINGS, nth=number)
            self.wait_for_calls(program, [[pane]])
        self.wait_for(lambda: not self.children(), "every child to be gone")
        self.desk.stop(self.companion)
        self.check_links({"XDG_CURRENT_DESKTOP": "another"}, 0)

    def check_links(self, env, count):
        self.open(env)
        self.show("Permissions")
        self.reader.wait_for_text("Full Disk Access", SETTINGS)
        self.assertEqual(self.reader.texts(SETTINGS).count(OPEN), count)
