"""The settings window on a real desktop: how it opens, what its tabs say and do, and how it goes."""

import unittest

from companion import PANEL, SETTINGS, CompanionTest, StandIn, skip_unless_possible

HEARTBEAT = ["desktop", "heartbeat", "--json"]
SIGN_IN = ["auth", "login", "--surface", "macos", "--yes"]
TABS = ["Bridge", "Permissions", "Daypart", "About"]
UNKNOWN = "Check in System Settings"
OPEN = "Open System Settings"
DAYPARTS = ["Dawn", "Day", "Dusk", "Night"]
FOLLOWING = "Following local clock · dawn 5–10 · day 10–17 · dusk 17–21 · night else"
SMALLEST = (440, 380)
PERMISSIONS = [
    ("Notifications", "Granted", "WARDEN alerts, vote requests, desk events"),
    ("Accessibility", UNKNOWN, "Optional UI automation (gated features only)"),
    ("Automation (Apple Events)", UNKNOWN, "Control iTerm / Terminal when recovering desk"),
    ("Full Disk Access", UNKNOWN, "Optional deep read of ~/dev/logs and protected paths"),
    ("Developer Tools", UNKNOWN, "Xcode CLT / debugging attach for agent tooling"),
    ("Local Network", UNKNOWN, "Talk to vorna bridge on 127.0.0.1 and .vorna.localhost"),
]

setUpModule = skip_unless_possible


def bridge_texts(state, caddy, postgres, account):
    return ["Local bridge", "URL", "http://127.0.0.1:43105", "Status", state, state, "Caddy", caddy,
            "Postgres", postgres, "Poll now",
            "Account", "Desktop login", account, "Sign in with Google Workspace",
            "After a successful login the web dashboard hides Download for Mac.",
            "Start bridge", "vorna server start", "or", "vorna services start",
            "Bridge is the Python FastAPI process on port 43105 (not the legacy 43003 default)."]


def permission_texts(linked=()):
    texts = ["Apple Silicon only. Grant only what you need for WARDEN, desk recover, and agent tooling."]
    for row in PERMISSIONS:
        texts += [*row, OPEN] if row[0] in linked else row
    return texts


class Settings(CompanionTest):
    """In a tray, with the window opened in each of the ways that there are."""

    def open(self, env=None):
        """Opens the settings from the item's menu."""
        self.start_companion(env=env)
        self.desk.choose_menu_entry(self.item(), "Settings…")
        self.reader.wait_for_window(SETTINGS)

    def texts(self):
        """What stands below the tabs."""
        texts = self.reader.texts(SETTINGS)
        self.assertEqual(texts[:len(TABS)], TABS)
        return texts[len(TABS):]

    def wait_for_texts(self, expected):
        try:
            self.wait_for(lambda: self.texts() == expected, "the texts", within=5)
        except AssertionError:
            self.assertEqual(self.texts(), expected)

    def show(self, tab):
        self.reader.press(tab, SETTINGS)
        self.wait_for(lambda: self.selected() == [tab], f"the tab {tab}")

    def selected(self):
        return [node["name"] for node in self.reader.tree(SETTINGS)
                if node["role"] == "page tab" and "selected" in node["states"]]

    def checked(self):
        return [node["name"] for node in self.reader.tree(SETTINGS) if "checked" in node["states"]]

    # Opening and closing

    def test_panel_opens_the_window(self):
        self.start_companion()
        self.open_panel()
        self.reader.press("Settings & permissions", PANEL)
        self.reader.wait_for_window(SETTINGS)
        self.assertEqual(self.selected(), ["Bridge"])
        self.reader.wait_for_no_window(PANEL)

    def test_menu_opens_one_window_on_its_first_tab(self):
        self.open()
        self.assertEqual(self.selected(), ["Bridge"])
        self.show("About")
        self.desk.choose_menu_entry(self.item(), "Settings…")
        self.assertEqual(self.start_again("--settings"), 0)
        self.assertEqual(self.reader.windows(), [SETTINGS])
        self.assertEqual(self.selected(), ["About"])
        ((_, _, width, height),) = self.desk.windows(self.companion.pid).values()
        self.assertGreaterEqual(width, SMALLEST[0])
        self.assertGreaterEqual(height, SMALLEST[1])

    def test_closing_ends_nothing_and_forgets_the_tab(self):
        self.open()
        for key in ("Escape", "ctrl+w"):
            self.show("Daypart")
            self.wait_for(self.has_keyboard, "the keyboard")
            self.desk.press(key)
            self.reader.wait_for_no_window(SETTINGS)
            self.assertIsNone(self.companion.poll())
            self.desk.choose_menu_entry(self.item(), "Settings…")
            self.reader.wait_for_window(SETTINGS)
            self.assertEqual(self.selected(), ["Bridge"])

    def has_keyboard(self):
        return any("active" in node["states"] for node in self.reader.tree(SETTINGS) if node["depth"] == 0)

    def test_arrow_keys_go_through_the_tabs(self):
        self.open()
        self.wait_for(self.has_keyboard, "the keyboard")
        for tab in TABS[1:]:
            self.desk.press("Right")
            self.wait_for(lambda: self.selected() == [tab], f"the tab {tab}")
        self.assertEqual(self.reader.focused(SETTINGS), "About")

    def test_tab_key_goes_from_the_tabs_to_the_buttons_and_back(self):
        self.open()
        self.wait_for(self.has_keyboard, "the keyboard")
        for expected in ("Poll now", "Sign in with Google Workspace", "Bridge"):
            self.desk.press("Tab")
            self.wait_for(lambda: self.reader.focused(SETTINGS) == expected, f"the focus on {expected}")

    def test_keyboard_chooses_a_daypart_and_lets_it_go(self):
        self.open()
        self.show("Daypart")
        self.wait_for(self.has_keyboard, "the keyboard")
        self.desk.press("Tab")
        self.wait_for(lambda: self.reader.focused(SETTINGS) == "Day", "the focus on the chosen daypart")
        self.desk.press("Down")
        self.wait_for(lambda: self.checked() == ["Dusk"], "dusk")
        self.photograph("settings-focus")
        self.desk.press("Tab", "space")
        self.wait_for(lambda: self.checked() == ["Day"], "day")
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=false"])

    # The tabs

    def test_tabs_say_what_they_have_to(self):
        self.open()
        self.wait_for_texts(bridge_texts("Offline", "—", "—", "Not signed in"))
        self.photograph("settings-bridge")
        self.show("Permissions")
        self.wait_for_texts(permission_texts())
        self.photograph("settings-permissions")
        self.show("Daypart")
        self.wait_for_texts(["Appearance", "Daypart", *DAYPARTS, FOLLOWING])
        self.assertEqual(self.checked(), ["Day"])
        self.photograph("settings-daypart")
        self.show("About")
        texts = self.texts()
        self.assertRegex(texts[3], r"^v\d+\.\d+\.\d+ \(build \w+\)$")
        self.assertEqual(texts, [
            "App", "vorna for Mac", "Version", texts[3], "Architecture", "arm64 · Apple Silicon",
            "Role",
            "Native menu bar companion for developer monitoring, notifications, and deep system permissions. "
            "Orchestration stays in the vorna CLI; agents live in ~/dev/agents.",
            "Links", "Open Console", "Open Agents", "Download page"])
        self.photograph("settings-about")

    def test_polling_by_hand_finds_the_bridge_down_and_then_up(self):
        self.open()
        self.reader.press("Poll now", SETTINGS)
        self.wait_for_texts(bridge_texts("Offline", "bridge unreachable", "—", "Not signed in"))
        bridge = self.start_bridge()
        self.assertEqual(bridge.requests, [])
        self.reader.press("Poll now", SETTINGS)
        self.wait_for_texts(bridge_texts("Online", "running · 3/4 sites", "answers on port 5432", "Not signed in"))
        self.assertEqual([path for _, path in bridge.requests], ["/health", "/monitor/desktop?probe_sites=true"])
        self.photograph("settings-online")
        self.assertEqual(self.tool.calls(), [])

    def test_signing_in_runs_the_tool_and_tells_of_it(self):
        self.tool.does('[ "$1" = auth ] && echo "signed in as you"; '
                       '[ "$1" = desktop ] && echo \'{"remote": {"state": "signed_in"}}\'; :')
        self.open()
        self.reader.press("Sign in with Google Workspace", SETTINGS)
        self.wait_for_notifications(("vorna", "vorna sign in", "signed in as you"))
        self.assertEqual(self.tool.calls(), [SIGN_IN])
        self.open_panel()
        self.reader.wait_for_text("signed in as you", PANEL)
        self.reader.wait_for_text("Signed in · CTA hidden", SETTINGS)
        self.assertEqual(self.tool.calls(), [SIGN_IN, HEARTBEAT])

    def test_daypart_is_pinned_for_the_panel_beside(self):
        self.open()
        self.show("Daypart")
        self.open_panel()
        self.assertTrue(self.reader.texts(PANEL)[1].endswith(" · Day"))
        self.reader.press("Dusk", SETTINGS)
        self.wait_for(lambda: self.reader.texts(PANEL)[1].endswith(" · Dusk"), "dusk in the panel")
        self.assertEqual(self.checked(), ["Dusk"])
        self.wait_for_texts(["Appearance", "Daypart", *DAYPARTS, "Follow clock (auto)"])
        self.photograph("settings-daypart-pinned")
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=true", "vorna.macos.daypart=dusk"])
        self.reader.press("Night", PANEL)
        self.wait_for(lambda: self.checked() == ["Night"], "night in the settings")
        self.reader.press("Follow clock (auto)", SETTINGS)
        self.wait_for(lambda: self.reader.texts(PANEL)[1].endswith(" · Day"), "day in the panel")
        self.assertEqual(self.checked(), ["Day"])
        self.wait_for_texts(["Appearance", "Daypart", *DAYPARTS, FOLLOWING])
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=false"])

    def test_links_are_handed_to_the_system(self):
        self.open()
        self.show("About")
        for title, path in (("Open Console", "/dashboard"), ("Open Agents", "/dashboard/agents"),
                            ("Download page", "/download")):
            self.opener.forget()
            self.reader.press(title, SETTINGS)
            self.wait_for_calls(self.opener, [["https://vorna.localhost" + path]])

    # The desktop's own settings

    def buttons_of_rows(self):
        """The rows of the list that have a button to the desktop's settings."""
        titles = [row[0] for row in PERMISSIONS]
        title, found = None, []
        for text in self.texts():
            title = text if text in titles else title
            found += [title] if text == OPEN else []
        return found

    def test_desktop_with_settings_of_its_own_has_two_buttons_to_them(self):
        program = StandIn(self.folder, "gnome-control-center")
        self.addCleanup(program.path.unlink)
        program.forget()
        self.open(env={"XDG_CURRENT_DESKTOP": "GNOME"})
        self.show("Permissions")
        self.wait_for_texts(permission_texts(linked=("Notifications", "Accessibility")))
        self.assertEqual(self.buttons_of_rows(), ["Notifications", "Accessibility"])
        self.photograph("settings-permissions-linked")
        self.reader.press(OPEN, SETTINGS)
        self.wait_for_calls(program, [["notifications"]])
        self.reader.press(OPEN, SETTINGS, nth=1)
        self.wait_for_calls(program, [["notifications"], ["universal-access"]])
        self.wait_for(lambda: not self.children(), "every child to be gone")

    def test_desktop_without_settings_of_its_own_has_no_button(self):
        program = StandIn(self.folder, "gnome-control-center")
        self.addCleanup(program.path.unlink)
        self.open()
        self.show("Permissions")
        self.wait_for_texts(permission_texts())


if __name__ == "__main__":
    unittest.main()
