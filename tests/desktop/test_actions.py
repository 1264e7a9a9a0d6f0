"""The panel under a user's hands on a real desktop: the tool, the keyboard, dayparts, and a second start."""

from companion import PANEL, SETTINGS, CompanionTest, skip_unless_possible
from contents import BACKUP, BUTTON, DAYPARTS, HEARTBEAT, LABEL, RUNNING, TOOL_BUTTONS, USABLE, well_rows

SURFACES = {"Dawn": (0xF3, 0xEB, 0xE3), "Day": (0xE8, 0xEE, 0xF3), "Dusk": (0x22, 0x1C, 0x17),
            "Night": (0x12, 0x12, 0x1A)}

setUpModule = skip_unless_possible


class Actions(CompanionTest):
    """In a tray, with the panel opened by its item."""

    def setUp(self):
        super().setUp()
        self.bridge = self.start_bridge()

    def open(self):
        self.start_companion()
        self.open_panel()

    def tool_waits(self):
        """Makes an action of the tool last until the file that is returned is there."""
        end = self.desk.root / "end"
        end.unlink(missing_ok=True)
        self.tool.does(f'[ "$1" = desk ] && until [ -e {end} ]; do sleep 0.1; done && echo "backed up\nin 2 s"; :')
        return end

    # The tool

    def test_backup_says_what_it_does_and_what_came_of_it(self):
        end = self.tool_waits()
        self.open()
        self.wait_for_rows(PANEL, well_rows())
        self.assertEqual(self.unusable(PANEL), [])
        self.click("Desk backup now", times=2)  # which runs it once
        self.wait_for_rows(PANEL, well_rows(result=[RUNNING]))
        self.wait_for_equal(lambda: self.unusable(PANEL), TOOL_BUTTONS, "the buttons that cannot be pressed")
        self.photograph("actions-running")
        end.touch()
        self.wait_for_rows(PANEL, well_rows(result=["backed up · in 2 s"]))
        self.wait_for_equal(lambda: self.unusable(PANEL), [], "the buttons that cannot be pressed")
        self.photograph("actions-done")
        self.wait_for_notifications(("Desk backup", "backed up · in 2 s"))
        self.assertEqual(self.tool.calls(), [HEARTBEAT, BACKUP])

    def test_reader_that_remembers_is_told_of_every_change(self):
        end = self.tool_waits()
        self.open()
        self.wait_for_rows(PANEL, well_rows())
        with self.reader.announcements(PANEL) as heard:
            self.reader.press("Desk backup now", PANEL)
            for is_usable in (False, True):
                expected = {(name, state, is_usable) for name in TOOL_BUTTONS for state in USABLE}
                self.wait_for(lambda: expected <= set(heard), f"the buttons to be announced as {is_usable}")
                end.touch()

    # The keyboard

    def test_space_and_return_press(self):
        self.open()
        pages = []
        for times, key, page in ((2, "space", "/dashboard"), (1, "Return", "/dashboard/agents")):
            for _ in range(times):
                before = self.reader.focused(PANEL)
                self.desk.press("Tab")
                self.wait_for(lambda: self.reader.focused(PANEL) not in (before, None), "the focus to move")
            self.desk.press(key)
            pages.append(["https://vorna.localhost" + page])
            self.wait_for_calls(self.opener, pages)

    # The window

    def test_closed_panel_is_given_back_and_comes_again_whole(self):
        self.open()
        self.wait_for_rows(PANEL, well_rows())
        self.desk.activate_item(self.item())
        self.wait_for(lambda: not self.panels(hidden=True), "the window to be given back")
        self.open_panel()
        self.wait_for_rows(PANEL, well_rows())
        self.assertEqual(len(self.panels(hidden=True)), 1)
        self.wait_for_calls(self.tool, [HEARTBEAT, HEARTBEAT])

    # Dayparts

    def wait_for_daypart_shown(self, title, pinned):
        self.wait_for_rows(PANEL, well_rows(title, auto=BUTTON if pinned else LABEL))
        self.assertEqual(self.names_with(PANEL, "checked"), [title])
        self.wait_for_equal(self.header_colours, {SURFACES[title]}, f"the colours of {title}")

    def header_colours(self):
        x, y, width, _ = self.reader.place(PANEL)
        return self.desk.colours(x + width // 2, y + 4)

    def test_dayparts_are_chosen_remembered_and_let_go(self):
        self.open()
        self.wait_for_daypart_shown("Day", pinned=False)
        self.assertEqual(self.remembered(), [])
        for title in DAYPARTS:
            self.reader.press(title, PANEL)
            self.wait_for_daypart_shown(title, pinned=True)
            self.photograph(f"actions-{title.lower()}")
        self.quit_by_button()
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=true", "vorna.macos.daypart=night"])
        self.open()
        self.wait_for_daypart_shown("Night", pinned=True)
        self.reader.press("Auto", PANEL)
        self.wait_for_daypart_shown("Day", pinned=False)
        self.quit_by_button()
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=false"])

    def quit_by_button(self):
        self.reader.press("Quit vorna", PANEL)
        self.assertEqual(self.wait_for_exit(), 0)
        self.assertEqual(self.desk.output(self.companion), "")

    def test_quit_ends_the_companion_while_the_tool_runs(self):
        self.addCleanup(self.tool_waits().touch)
        self.open()
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text(RUNNING, PANEL)
        self.quit_by_button()


class WithoutATray(CompanionTest):
    """Where nothing shows an item, and no bridge answers."""

    has_tray = False

    def test_second_start_opens_what_it_was_started_for(self):
        self.start_companion()
        self.start_again()
        self.reader.wait_for_text("bridge unreachable", PANEL)
        self.reader.wait_for_text("Start bridge: vorna server start", PANEL)
        self.assertGreater(len(self.leaves(PANEL)), len(TOOL_BUTTONS + DAYPARTS))
        self.check_within(self.wait_for_panel(), (0, 0, *self.desk.size))
        self.photograph("actions-without-a-tray")
        self.start_again("--settings")
        self.reader.wait_for_window(SETTINGS)
