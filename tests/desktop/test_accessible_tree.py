"""The whole accessible tree of both windows, read from outside, compared with all that they display."""

import unittest

from companion import PANEL, SETTINGS, CompanionTest, skip_unless_possible
from test_actions import BUTTONS_AFTER_AUTO, BUTTONS_BEFORE_AUTO, RUNNING, TOOL_BUTTONS
from test_settings import DAYPARTS, FOLLOWING, OPEN, TABS, bridge_texts, permission_texts

LABEL, BUTTON, CHOICE, TAB = "label", "push button", "radio button", "page tab"
CAPTION = "version · "
FOLLOW = "Follow clock (auto)"
LINKS = ["Open Console", "Open Agents", "Download page"]
SETTINGS_BUTTONS = ["Poll now", "Sign in with Google Workspace", OPEN, FOLLOW, *LINKS]
USABLE = {"enabled", "sensitive"}
SEEN = {"showing", "visible"}

setUpModule = skip_unless_possible


def rows(names, controls=()):
    """(role, name) of each; what is no control is a label."""
    roles = dict(controls)
    return [(roles.get(name, LABEL), name) for name in names]


def panel_rows(checks, error, services, result=(), auto=LABEL):
    buttons = {name: BUTTON for name in BUTTONS_BEFORE_AUTO + BUTTONS_AFTER_AUTO}
    choices = {name: CHOICE for name in DAYPARTS}
    names = [*checks, *error, "Updated", "SERVICES", *services, *BUTTONS_BEFORE_AUTO[:4], "MAC → MAC", *TOOL_BUTTONS,
             *result, "DAYPART", "Auto", *BUTTONS_AFTER_AUTO]
    return rows(names, {**buttons, **choices, "Auto": auto})


def well(daypart="Day"):
    return ["vorna", CAPTION + daypart, "ok", "Bridge", "online · :43105", "ok", "Caddy", "running · 3/4 sites", "ok",
            "Postgres", "answers on port 5432", "ok", "LOAD", "1.73", "MEMORY", "64%", "DISK", "71% · 138 GB free"]


WELL_SERVICES = ["ok", "caddy.process", "running", "ok", "postgres", "answers on port 5432"]


def shown_name(name):
    """A name without what is different on each machine and at each time."""
    if name.startswith("Updated "):
        return "Updated"
    return CAPTION + name.rpartition(" · ")[2] if name.startswith("v") and name.endswith(tuple(DAYPARTS)) else name


class AccessibleTree(CompanionTest):
    maxDiff = None

    def leaves(self, window):
        """Everything that is not there for the sake of what it contains; the tree must hold together."""
        found = []
        nodes = self.reader.details(window)
        frame = nodes[0]
        self.assertEqual((frame["name"], frame["depth"]), (window, 0))
        for node in nodes:
            self.assertLessEqual(SEEN, set(node["states"]), node)
            if node["children"] == 0:
                self.check_leaf(node, frame["place"])
                found.append(node)
        return found

    def check_leaf(self, node, frame):
        self.assertTrue(node["name"].strip(), node)
        x, y, width, height = node["place"]
        self.assertGreater(min(width, height), 0, node)
        self.assertTrue(frame[0] <= x and x + width <= frame[0] + frame[2], node)
        self.assertTrue(frame[1] <= y and y + height <= frame[1] + frame[3], node)
        states = set(node["states"])
        if node["role"] == LABEL:
            self.assertEqual(node["actions"], [], node)
            self.assertNotIn("focusable", states, node)
        else:
            self.assertIn("focusable", states, node)
            self.assertEqual(node["actions"][:1] == ["Press"], USABLE <= states, node)

    def wait_for_rows(self, window, expected):
        names = [name for _, name in expected]
        try:
            self.wait_for(lambda: [shown_name(text) for text in self.reader.texts(window)] == names, "the texts")
        except AssertionError:
            self.assertEqual([shown_name(text) for text in self.reader.texts(window)], names)
        self.assertEqual([(leaf["role"], shown_name(leaf["name"])) for leaf in self.leaves(window)], expected)

    def names_with(self, window, state, roles=(CHOICE, TAB)):
        return [node["name"] for node in self.leaves(window) if state in node["states"] and node["role"] in roles]

    def unusable(self, window):
        return [node["name"] for node in self.leaves(window) if not USABLE <= set(node["states"])]

    # The panel

    def test_panel_without_a_bridge(self):
        self.start_companion()
        self.open_panel()
        checks = ["vorna", CAPTION + "Day", "unknown", "Bridge", "offline", "not ok", "Caddy", "bridge unreachable", "not ok",
                  "Postgres", "—", "not ok", "LOAD", "—", "MEMORY", "—", "DISK", "—"]
        self.reader.wait_for_text("bridge unreachable", PANEL)
        error = self.reader.texts(PANEL)[len(checks)]
        self.assertNotIn("Updated", error)
        self.wait_for_rows(PANEL, panel_rows(checks, [error], ["Start bridge: vorna server start"]))
        self.assertEqual(self.names_with(PANEL, "checked"), ["Day"])

    def test_panel_while_the_tool_runs_and_after_it(self):
        self.start_bridge()
        end = self.desk.root / "end"
        self.tool.does(f'[ "$1" = desk ] && until [ -e {end} ]; do sleep 0.1; done && echo "backed up"; :')
        self.start_companion()
        self.open_panel()
        self.wait_for_rows(PANEL, panel_rows(well(), [], WELL_SERVICES))
        self.assertEqual(self.unusable(PANEL), [])
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text(RUNNING, PANEL)
        self.wait_for_rows(PANEL, panel_rows(well(), [], WELL_SERVICES, [RUNNING]))
        self.assertEqual(self.unusable(PANEL), list(TOOL_BUTTONS))
        end.touch()
        self.wait_for_rows(PANEL, panel_rows(well(), [], WELL_SERVICES, ["backed up"]))
        self.assertEqual(self.unusable(PANEL), [])

    def test_panel_with_each_daypart_pinned(self):
        self.start_bridge()
        self.start_companion()
        self.open_panel()
        for daypart in DAYPARTS:
            self.reader.press(daypart, PANEL)
            self.wait_for_rows(PANEL, panel_rows(well(daypart), [], WELL_SERVICES, auto=BUTTON))
            self.assertEqual(self.names_with(PANEL, "checked"), [daypart])

    # The settings

    def settings_rows(self, texts):
        choices = {name: CHOICE for name in DAYPARTS}
        return [(TAB, tab) for tab in TABS] + rows(texts, {**{name: BUTTON for name in SETTINGS_BUTTONS}, **choices})

    def show(self, tab, texts):
        self.reader.press(tab, SETTINGS)
        self.wait_for_rows(SETTINGS, self.settings_rows(texts))
        self.assertEqual(self.names_with(SETTINGS, "selected", (TAB,)), [tab])

    def open_settings(self):
        self.start_companion()
        self.desk.choose_menu_entry(self.item(), "Settings…")
        self.reader.wait_for_window(SETTINGS)

    def test_settings_tab_by_tab(self):
        self.open_settings()
        self.show("Bridge", bridge_texts("Offline", "—", "—", "Not signed in"))
        self.show("Permissions", permission_texts())
        self.show("About", [
            "App", "vorna for Mac", "Version", self.version(), "Architecture", "arm64 · Apple Silicon", "Role",
            "Native menu bar companion for developer monitoring, notifications, and deep system permissions. "
            "Orchestration stays in the vorna CLI; agents live in ~/dev/agents.", "Links", *LINKS])
        self.start_bridge()
        self.show("Bridge", bridge_texts("Offline", "—", "—", "Not signed in"))
        self.reader.press("Poll now", SETTINGS)
        self.show("Bridge", bridge_texts("Online", "running · 3/4 sites", "answers on port 5432", "Not signed in"))

    def version(self):
        self.reader.press("About", SETTINGS)
        self.reader.wait_for_text("Version", SETTINGS)
        texts = self.reader.texts(SETTINGS)
        return texts[texts.index("Version") + 1]

    def test_settings_pin_the_daypart_that_the_clock_has_chosen(self):
        self.open_settings()
        self.show("Daypart", ["Appearance", "Daypart", *DAYPARTS, FOLLOWING])
        self.assertEqual(self.names_with(SETTINGS, "checked"), ["Day"])
        self.reader.press("Day", SETTINGS)
        self.wait_for_rows(SETTINGS, self.settings_rows(["Appearance", "Daypart", *DAYPARTS, FOLLOW]))
        self.assertEqual(self.names_with(SETTINGS, "checked"), ["Day"])
        self.assertEqual(self.remembered(), ["vorna.macos.daypart.manual=true", "vorna.macos.daypart=day"])


if __name__ == "__main__":
    unittest.main()
