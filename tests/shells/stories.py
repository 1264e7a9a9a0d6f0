"""What the companion does on every desktop shell; each test has a shell of its own."""

from companion import PANEL_WIDTH, SETTINGS, DesktopTest
from shell import MIDDLE, still

# What the item is painted with, and from which answers of the bridge it follows.
GREEN, AMBER, RED, GREY = (0x1a, 0x85, 0x41), (0xa6, 0x68, 0x00), (0xd9, 0x3a, 0x3f), (0x6f, 0x75, 0x7e)
COLOURS = (GREEN, AMBER, RED, GREY)
STATES = {
    GREEN: {},
    AMBER: {"caddy_sites_up": 1},
    RED: {"caddy_ok": False, "services": [{"name": "caddy.process", "ok": False, "detail": "not running"}]},
}
WIDTH_OF_ITEM = 24
CONTRAST, SHARE = 3, 0.07  # how well what share of the item stands out
ALIKE = 30  # a shell that scales the picture mixes its colours
NEXT_TO = 16  # how far the panel's edge may be from the bar
DARK, LIGHT = "dark", "light"
BESIDE_THE_GROUPS = (4, 200)  # in the settings
OTHER_PROGRAM = "another program"


def luminance(colour):
    linear = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
              for part in (value / 255 for value in colour)]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    dark, light = sorted((luminance(one), luminance(other)))
    return (light + 0.05) / (dark + 0.05)


class Stories(DesktopTest):
    """What a shell's stories add: `shell` is the class of the desktop."""

    def setUp(self):
        self.desk = self.enterContext(self.shell())
        self.bridge = self.start_bridge()
        self.start_companion()

    # How this desktop is used

    def place_of_item(self):
        """The middle of the item in the bar, once it is painted there."""
        self.desk.move_pointer(*MIDDLE)  # a bar may lighten what is under the pointer
        return self.wait_for(lambda: self.desk.item_place(COLOURS), "the item in the bar")

    def panel_places(self):
        return [place for place in self.desk.session.windows(self.companion.pid).values() if place[2] == PANEL_WIDTH]

    def photograph(self, name):
        super().photograph(f"{self.shell.__module__}-{type(self).__name__}-{name}")

    def click_item_once(self):
        self.desk.click(*self.place_of_item())

    def has_keyboard(self):
        active = self.desk.session.root_numbers("_NET_ACTIVE_WINDOW")
        return any(window.id in active for window in self.desk.session.windows(self.companion.pid))

    def still_panel(self):
        """Where the panel is, once it stays there and hears keys; nothing while there is none."""
        return self.has_keyboard() and still(self.panel_places)

    def panel(self):
        return self.wait_for(self.still_panel, "the panel")[0]

    def open_panel(self):
        """By clicks on the item, whose place in the bar another one may have just left."""
        return self.click_until_open(self.click_item, self.still_panel)[0]

    def close_panel(self):
        self.desk.press("Escape")
        self.wait_for_no_panel("Escape")

    def wait_for_no_panel(self, after):
        self.wait_for(lambda: not self.panel_places(), f"the panel to close after {after}")

    # What is true everywhere

    def test_panel_opens_beside_the_item_inside_the_work_area(self):
        x, _ = self.place_of_item()
        left, top, width, height = self.open_panel()
        self.photograph("panel")
        self.check_within((left, top, width, height), self.desk.work_area())
        self.assertTrue(left <= x <= left + width, f"{x} beside {left}")
        _, bar_top, _, bar_height = self.desk.bar_area()
        distance = top - bar_height if bar_top == 0 else bar_top - (top + height)
        self.assertLessEqual(distance, NEXT_TO)

    def test_escape_a_click_on_the_item_and_a_click_elsewhere_close_it(self):
        other = self.start_another_program()
        for how, close in (("Escape", lambda: self.desk.press("Escape")), ("a click on the item", self.click_item),
                           ("a click into another window", lambda: self.desk.click(*other))):
            with self.subTest(how):
                self.open_panel()
                close()
                self.wait_for_no_panel(how)
                self.desk.close_menu()

    def start_another_program(self):
        """Where a window of another program can be clicked."""
        program = self.desk.start(["xmessage", "-name", OTHER_PROGRAM, "-geometry", "300x300+100+200", OTHER_PROGRAM])
        self.addCleanup(self.desk.stop, program)
        session = self.desk.session
        x, y, *_ = self.wait_for(lambda: still(lambda: session.place_of(OTHER_PROGRAM)), "the other window")
        return x + 150, y + 200

    def test_menu_shows_the_panel_where_a_click_does(self):
        place = self.open_panel()
        self.close_panel()
        self.choose("Show panel")
        for before, now in zip(place, self.panel()):
            self.assertAlmostEqual(before, now, delta=WIDTH_OF_ITEM / 4)
        self.close_panel()

    def test_keyboard_moves_through_the_panel_and_opens_the_settings(self):
        place = self.open_panel()
        self.wait_for(lambda: still(lambda: self.desk.pixels(*place)), "the panel to be drawn")
        for _ in range(3):
            before = self.desk.pixels(*place)
            self.desk.press("Tab")
            self.wait_for(lambda: self.desk.pixels(*place) != before, "the focus to move")
        self.desk.press("ctrl+comma")
        self.settings()
        self.photograph("settings")

    def test_settings_follow_light_and_dark(self):
        self.item()
        self.start_again("--settings")
        self.settings()
        self.desk.wait_for_portal()
        for wish in (DARK, LIGHT, DARK, LIGHT):
            self.desk.wish_for(wish)
            self.wait_for_equal(self.settings_tone, wish, "the settings")

    def settings(self):
        """Where the window of the settings is."""
        return self.wait_for(lambda: self.desk.session.place_of(SETTINGS), "the settings")

    def settings_tone(self):
        """As the window is drawn: GNOME 43 on X11 may not bring it to the screen before the pointer moves."""
        window = self.desk.session.window_of(SETTINGS)
        drawn = window and self.desk.session.pixels(*BESIDE_THE_GROUPS, window=window)
        return drawn and (LIGHT if sum(drawn[0]) > 3 * 128 else DARK)

    def test_item_comes_back_with_the_tray(self):
        self.item()
        self.desk.restart_tray()
        self.open_panel()

    def test_item_stands_out_from_light_and_dark_bars(self):
        self.open_panel()  # from then on it asks the bridge
        self.close_panel()
        for colour, changes in STATES.items():
            self.bridge.stop()
            self.bridge = self.start_bridge(changes)
            self.check_item_stands_out(colour)
        self.bridge.stop()
        self.check_item_stands_out(GREY)

    def check_item_stands_out(self, colour):
        x, y = self.place_of_item()
        place = (x - WIDTH_OF_ITEM // 2, y - WIDTH_OF_ITEM // 2, WIDTH_OF_ITEM, WIDTH_OF_ITEM)

        def is_painted():
            return any(max(map(abs, map(int.__sub__, one, colour))) < ALIKE for one in self.desk.pixels(*place))

        def stands_out():
            bar = self.desk.pixels(x - WIDTH_OF_ITEM, y)[0]
            seen = self.desk.pixels(*place)
            return sum(contrast(one, bar) >= CONTRAST for one in seen) > SHARE * len(seen)

        for tone in (DARK, LIGHT):
            self.desk.wish_for(tone)
            self.wait_for(lambda: still(is_painted), f"the item in {colour}")
            self.wait_for(lambda: still(stands_out), f"the item in {colour} to stand out from a {tone} bar")

    def test_nothing_of_the_panel_is_in_the_task_bar(self):
        self.place_of_item()
        before = self.desk.entries()
        self.open_panel()
        self.photograph("entries")
        now = self.desk.entries()
        self.assertTrue(now == before, f"what the task bar shows: {str(before)[:80]}, then {str(now)[:80]}")
