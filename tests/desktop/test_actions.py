"""What can be done from the panel, on a real desktop: the tool, notifications, web pages and dayparts."""

from companion import PANEL, CompanionTest, skip_unless_possible
from contents import (BACKUP, BUTTON, DAYPARTS, HEARTBEAT, LABEL, RUNNING, SYNC, TOOL_BUTTONS, USABLE, well_rows)

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

    def tool_waits(self, what="backed up"):
        """Makes an action of the tool last until the file that is returned is there, and say that."""
        end = self.desk.root / "end"
        end.unlink(missing_ok=True)
        self.tool.does(f'[ "$1" = desk ] && until [ -e {end} ]; do sleep 0.1; done && echo "{what}\nin 2 s"; :')
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

    def test_tool_that_fails_is_told_of_as_it_was_typed(self):
        self.tool.does('[ "$1" = desk ] && echo "no disk <b>of ours</b> &amp; none else" >&2 && exit 3; :')
        self.open()
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text("no disk <b>of ours</b> &amp; none else", PANEL)
        escaped = "Failed: no disk &lt;b&gt;of ours&lt;/b&gt; &amp;amp; none else"
        self.wait_for_notifications(("Desk backup", escaped))

    def test_both_actions_hand_over_their_words_one_by_one_and_leave_no_child_behind(self):
        self.open()
        for count, title in enumerate(TOOL_BUTTONS, 1):
            end = self.tool_waits(f"done {count}")
            self.reader.press(title, PANEL)
            self.wait_for(self.children, "the tool")
            end.touch()
            self.wait_for(lambda: len(self.notifications()) == count, "the tool's end")
        self.assertEqual(self.tool.calls(), [HEARTBEAT, BACKUP, SYNC])
        self.reader.press("Console", PANEL)
        self.wait_for_calls(self.opener, [["https://vorna.localhost/dashboard"]])
        self.wait_for(lambda: not self.children(), "every child to be gone")

    # The web

    def test_web_pages_are_handed_to_the_system(self):
        self.open()
        for title, address in (("Facet", "https://facet.vorna.localhost"),
                               ("Console", "https://vorna.localhost/dashboard"),
                               ("Agents", "https://vorna.localhost/dashboard/agents")):
            self.opener.forget()
            self.reader.press(title, PANEL)
            self.wait_for_calls(self.opener, [[address]])

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

    # Notifications

    def test_each_test_notification_is_one_of_its_own(self):
        self.open()
        self.wait_for_rows(PANEL, well_rows())
        self.click("Test notification", times=2)
        self.wait_for_notifications(*[("vorna", "Desktop notifications are working · Day")] * 2)
