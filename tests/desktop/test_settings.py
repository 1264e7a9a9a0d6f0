"""The settings window on a real desktop: how it opens, what its tabs say and do, and how it goes."""

from companion import PANEL, SETTINGS, CompanionTest, StandIn, skip_unless_possible
from contents import (ABOUT_ROWS, COPYABLE, FOLLOW, HEARTBEAT, LINKS, ONLINE, OPEN, SIGN_IN, SIGN_IN_BUTTON, TAB, TABS,
                      bridge_rows, daypart_rows, permission_rows)

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

    def open_with_keyboard(self):
        self.open()
        self.wait_for(self.has_keyboard, "the keyboard")

    def has_keyboard(self):
        return any("active" in one.states for one in self.reader.tree(SETTINGS) if one.depth == 0)

    def show(self, tab):
        self.reader.press(tab, SETTINGS)
        self.wait_for_tab(tab)

    def wait_for_tab(self, tab):
        self.wait_for_equal(lambda: self.names_with(SETTINGS, "selected", [TAB]), [tab], "the selected tab")

    def wait_for_checked(self, daypart):
        self.wait_for_equal(lambda: self.names_with(SETTINGS, "checked"), [daypart], "the checked daypart")

    def wait_for_focus(self, name):
        self.wait_for_equal(lambda: self.reader.focused(SETTINGS), name, "the focus")

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

    def test_closing_ends_nothing_and_forgets_the_tab(self):
        self.open()
        for key in ("Escape", "ctrl+w"):
            self.show("Daypart")
            self.wait_for(self.has_keyboard, "the keyboard")
            self.desk.press(key)
            self.reader.wait_for_no_window(SETTINGS)
            self.check_alive()
            self.open_again()
            self.wait_for_tab("Bridge")

    def test_arrow_keys_go_through_the_tabs(self):
        self.open_with_keyboard()
        for tab in TABS[1:]:
            self.desk.press("Right")
            self.wait_for_tab(tab)
        self.wait_for_focus("About")

    def test_tab_key_goes_from_the_tabs_to_the_buttons_and_back(self):
        self.open_with_keyboard()
        for expected in (COPYABLE[0], "Poll now", SIGN_IN_BUTTON, *COPYABLE[1:3], "Bridge"):
            self.desk.press("Tab")
            self.wait_for_focus(expected)

    def test_keyboard_chooses_a_daypart_and_lets_it_go(self):
        self.open_with_keyboard()
        self.show("Daypart")
        self.desk.press("Tab")
        self.wait_for_focus("Day")
        self.desk.press("Down")
        self.wait_for_checked("Dusk")
        self.photograph("settings-focus")
        self.desk.press("Tab", "space")
        self.wait_for_checked("Day")
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=false"])

    # The tabs

    def test_tabs_say_what_they_have_to(self):
        self.open()
        for tab, expected in zip(TABS, (bridge_rows(), permission_rows(), daypart_rows(), ABOUT_ROWS)):
            self.show(tab)
            self.wait_for_rows(SETTINGS, expected)
            self.photograph("settings-" + tab.lower())

    def test_polling_by_hand_finds_the_bridge_down_and_then_up(self):
        self.open()
        self.reader.press("Poll now", SETTINGS)
        self.wait_for_rows(SETTINGS, bridge_rows(caddy="bridge unreachable"))
        bridge = self.start_bridge()
        self.assertEqual(bridge.requests, [])
        self.reader.press("Poll now", SETTINGS)
        self.wait_for_rows(SETTINGS, bridge_rows(*ONLINE))
        self.assertEqual([path for _, path in bridge.requests], ["/health", "/monitor/desktop?probe_sites=true"])
        self.photograph("settings-online")
        self.assertEqual(self.tool.calls(), [])

    def test_signing_in_runs_the_tool_and_tells_of_it(self):
        self.tool.does('[ "$1" = auth ] && echo "signed in as you"; '
                       '[ "$1" = desktop ] && echo \'{"remote": {"state": "signed_in"}}\'; :')
        self.open()
        self.reader.press(SIGN_IN_BUTTON, SETTINGS)
        self.wait_for_notifications(("vorna sign in", "signed in as you"))
        self.assertEqual(self.tool.calls(), [SIGN_IN])
        self.open_panel()
        self.reader.wait_for_text("signed in as you", PANEL)
        self.reader.wait_for_text("Signed in · CTA hidden", SETTINGS)
        self.assertEqual(self.tool.calls(), [SIGN_IN, HEARTBEAT])

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
            self.wait_for_rows(SETTINGS, daypart_rows(FOLLOW))
            self.assertEqual(self.remembered(),
                             ["vorna.macos.daypart.manual=true", f"vorna.macos.daypart={pressed.lower()}"])
        self.photograph("settings-daypart-pinned")
        self.reader.press("Night", PANEL)
        self.wait_for_checked("Night")
        self.reader.press(FOLLOW, SETTINGS)
        self.wait_for_daypart("Day")
        self.wait_for_checked("Day")
        self.wait_for_rows(SETTINGS, daypart_rows())
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=false"])

    def test_links_are_handed_to_the_system(self):
        self.open()
        self.show("About")
        for title, path in LINKS.items():
            self.opener.forget()
            self.reader.press(title, SETTINGS)
            self.wait_for_calls(self.opener, [["https://vorna.localhost" + path]])

    # The desktop's own settings

    def test_desktop_with_settings_of_its_own_has_two_buttons_to_them(self):
        program = self.put_settings_program()
        self.open(env={"XDG_CURRENT_DESKTOP": "GNOME"})
        self.show("Permissions")
        self.wait_for_rows(SETTINGS, permission_rows(linked=("Notifications", "Accessibility")))
        self.photograph("settings-permissions-linked")
        for number, pane in enumerate(("notifications", "universal-access")):
            program.forget()
            self.reader.press(OPEN, SETTINGS, nth=number)
            self.wait_for_calls(program, [[pane]])
        self.wait_for(lambda: not self.children(), "every child to be gone")

    def test_desktop_without_settings_of_its_own_has_no_button(self):
        self.put_settings_program()
        self.open()
        self.show("Permissions")
        self.wait_for_rows(SETTINGS, permission_rows())

    def put_settings_program(self):
        program = StandIn(self.folder, "gnome-control-center")
        self.addCleanup(program.path.unlink)
        program.forget()
        return program
