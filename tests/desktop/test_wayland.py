"""The companion on a Wayland desktop: natively, and as a guest of the desktop's X server."""

import pathlib
import re
import subprocess
import time
import unittest

import desktop
import wayland
from companion import COMPANION, PANEL, PANEL_WIDTH, SETTINGS, DesktopTest, StandIn, skip_unless_possible

PROGRAMS = ("Xvfb", "sway", "swaymsg", "swaybg", "Xwayland", "waybar", "xhost", "import", "xdotool", "dbus-daemon")
ELSEWHERE = (1000, 600)
BESIDE_THE_PANEL = (1100, 100)
FOCUS_MAY_STRAY_SECONDS = 1.5
DOUBLE_CLICK_SECONDS = 0.5  # longer than GTK's 0.4, within which the bar reports the second press twice
NATIVE, GUEST = re.compile(r"libqwayland(-generic)?\.so"), re.compile(r"libqxcb\.so")
SERVICES = [{"name": f"service-{number}", "ok": True, "detail": "answers"} for number in range(8)]


def setUpModule():
    skip_unless_possible(PROGRAMS)


def skip_without_qts_wayland():
    probe = subprocess.run([COMPANION], capture_output=True, text=True, timeout=60,
                           env={"QT_QPA_PLATFORM": "wayland", "WAYLAND_DISPLAY": "nowhere", "XDG_RUNTIME_DIR": "/"})
    if "Could not find the Qt platform plugin" in probe.stderr:
        raise unittest.SkipTest("not installed: Qt's platform plugin for Wayland")


class OnWayland(DesktopTest):
    """Each test has a desktop of its own."""

    clicked = 0

    def start_desktop(self, bar=True, **options):
        self.desk = self.enterContext(wayland.WaylandDesktop(**options))
        self.desk.env["LC_ALL"] = "C.UTF-8"
        self.desk.start_accessibility()
        if bar:
            self.start_bar()

    def start_bar(self):
        bar = self.desk.start_waybar()
        self.wait_for(self.desk.status_notifier_host_is_there, "the bar's host")
        return bar

    def start_another_program(self):
        """A window that fills the screen, of another companion that knows nothing of this one."""
        other = self.desk.start([COMPANION, "--settings"], {
            "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere", "XDG_RUNTIME_DIR": self.desk.env["HOME"],
            "WAYLAND_DISPLAY": f"{self.desk.env['XDG_RUNTIME_DIR']}/{self.desk.env['WAYLAND_DISPLAY']}"})
        self.wait_for(lambda: self.desk.windows(other.pid), "the other window")

    def panel(self):
        return self.desk.windows(self.companion.pid).get(PANEL)

    def maps(self):
        """The files that the companion has mapped, among other things."""
        return pathlib.Path(f"/proc/{self.companion.pid}/maps").read_text()

    def panel_has_focus(self):
        return (self.panel() or {}).get("focused")

    def wait_for_no_panel(self, after):
        self.wait_for(lambda: not self.panel(), f"the panel to close after {after}")

    def click_item(self, output=0):
        """A click of its own, and not the second one of a double click."""
        place = self.desk.item_place(output)
        self.wait_for(lambda: time.monotonic() - self.clicked > DOUBLE_CLICK_SECONDS, "the last click to be over")
        self.desk.click(*place)
        self.clicked = time.monotonic()

    def open_panel(self, output=0):
        self.item()
        self.click_until_open(lambda: self.click_item(output), self.panel_has_focus)
        self.let_focus_settle()
        return self.panel()

    def let_focus_settle(self):
        """Qt loses the second of two changes of the focus that reach it at once; who reads the panel gives it time."""
        self.reader.wait_for_window(PANEL)
        self.reader.texts(PANEL)


class Stories:
    """What is true natively and for a guest alike; `environment` makes the companion one or the other."""

    environment = {}
    statuses_without_a_compositor = (1,)

    def start(self, *words, **options):
        self.start_desktop(**options)
        self.start_companion(*words, env=self.environment)

    def check_inside(self, panel, left, top, width, height):
        self.assertEqual(panel["width"], PANEL_WIDTH)
        self.check_within([panel[key] for key in ("x", "y", "width", "height")],
                          (left, top + wayland.BAR_HEIGHT, width, height - wayland.BAR_HEIGHT))

    def test_panel_says_what_the_bridge_says_inside_the_screen_with_round_corners(self):
        self.start_bridge({"services": SERVICES})
        self.start()
        panel = self.open_panel()
        self.reader.wait_for_text("service-7", PANEL)
        self.check_inside(self.panel(), 0, 0, 1280, 800)
        self.assertEqual(self.desk.colours(panel["x"], panel["y"]), {wayland.BACKGROUND})
        self.assertNotEqual(self.desk.colours(panel["x"] + PANEL_WIDTH // 2, panel["y"] + 5), {wayland.BACKGROUND})
        self.photograph("wayland-" + type(self).__name__)

    def test_escape_a_second_click_and_a_click_elsewhere_close_the_panel(self):
        self.start()
        for how, close in (("Escape", lambda _: self.desk.press("Escape")),
                           ("a second click", lambda _: self.click_item()),
                           ("a double click's second", lambda _: self.desk.click(*self.desk.item_place())),
                           ("a click elsewhere", self.click_elsewhere)):
            close(self.open_panel())
            self.wait_for_no_panel(how)
            self.assertRaises(desktop.Failure, self.desk.wait_for, self.panel, "the panel", within=0.5)

    def click_elsewhere(self, panel):
        self.desk.click(panel["x"] + 20, panel["y"] + 20)
        self.desk.click(*ELSEWHERE)

    def test_click_below_the_panel_closes_it(self):
        self.start(outputs=((1280, 1000),))
        panel = self.open_panel()

        def is_closed_by_a_click_below():
            # A guest hears nothing of a press in the moment in which the pointer comes in.
            self.desk.move_pointer(panel["x"] + 40, panel["y"] + panel["height"] - 4)
            self.desk.click(panel["x"] + 20, panel["y"] + panel["height"] - 2)
            return not self.panel()

        self.wait_for(is_closed_by_a_click_below, "the panel to close after a click below it")

    def test_companion_ends_quietly_with_the_compositor(self):
        self.start()
        self.open_panel()
        self.desk.sway.kill()
        self.assertIn(self.wait_for_exit(), self.statuses_without_a_compositor, self.desk.output(self.companion))


class Natively(Stories, OnWayland):
    statuses_without_a_compositor = (1, 255)  # the second under later Qt

    @classmethod
    def setUpClass(cls):
        skip_without_qts_wayland()

    def test_panel_is_drawn_sharp_on_a_scaled_screen_and_stays_inside_it(self):
        self.start_desktop(scale=2)
        self.start_companion(env={"WAYLAND_DEBUG": "1"})
        self.check_inside(self.open_panel(), 0, 0, 640, 400)
        self.assertRegex(self.desk.output(self.companion), rf"create_buffer\(new id [^,]+, 0, {2 * PANEL_WIDTH}, ")
        self.photograph("wayland-scaled")

    def test_panel_is_there_when_the_pointer_comes_over_another_window(self):
        self.start()
        self.start_another_program()
        self.open_panel()

        def stays_until_the_pointer_comes():
            panel = self.panel() or self.open_panel()
            began = time.monotonic()
            self.desk.move_pointer(*BESIDE_THE_PANEL)
            self.wait_for(lambda: not self.panel_has_focus(), "the focus to follow the pointer")
            self.desk.move_pointer(panel["x"] + 20, panel["y"] + 20)
            self.wait_for(lambda: self.panel_has_focus() or not self.panel(), "the panel with the focus, or its end")
            self.assertTrue(self.panel() or time.monotonic() - began > FOCUS_MAY_STRAY_SECONDS)
            return self.panel()

        self.wait_for(stays_until_the_pointer_comes, "the pointer to come in time")
        self.let_focus_settle()
        self.desk.move_pointer(*BESIDE_THE_PANEL)
        self.wait_for_no_panel("the pointer has left it")
        self.open_panel()
        self.desk.click(*BESIDE_THE_PANEL)
        self.wait_for_no_panel("a click into another window")

    def test_item_comes_when_the_bar_starts_later_and_again_after_its_death(self):
        self.start(bar=False)
        for _ in range(3):
            bar = self.start_bar()
            self.open_panel()
            self.desk.press("Escape")
            self.wait_for_no_panel("Escape")
            self.desk.kill(bar)
            self.wait_for(lambda: not self.desk.status_notifier_items(), "the bar to be gone")
            self.check_alive()

    def test_second_start_shows_what_it_was_started_for(self):
        self.start()
        self.item()
        for words, title in (([], PANEL), (["--settings"], SETTINGS)):
            self.start_again(*words)
            self.wait_for(lambda: self.desk.windows(self.companion.pid).get(title, {}).get("focused"), title)
        self.assertEqual(len(self.desk.status_notifier_items()), 1)
        self.reader.wait_for_text("Local bridge", SETTINGS)
        self.photograph(f"wayland-{type(self).__name__}-settings")

    def test_windows_do_without_egl_unless_the_user_wants_it_and_the_tool_hears_nothing_of_that(self):
        for wanted in {}, {"QT_WAYLAND_DISABLE_WINDOWDECORATION": "0"}:
            self.start_desktop()
            tool = StandIn(self.desk.root, "vorna")
            tool.does('cp /proc/$$/environ "$0.part"; mv "$0.part" "$0.environment"')
            self.start_companion(env={**wanted, "PATH": f"{self.desk.root}:{self.desk.env['PATH']}"})
            self.open_panel()
            self.start_again("--settings")
            self.wait_for(lambda: self.desk.windows(self.companion.pid).get(SETTINGS), SETTINGS)
            self.desk.run("swaymsg", f'[title="{SETTINGS}"] floating enable')  # tiled, all windows have frames
            self.wait_for_equal(lambda: self.desk.windows(self.companion.pid)[SETTINGS]["frame"], "normal", "a frame")
            self.wait_for(tool.path.with_suffix(".environment").exists, "the tool")
            self.assertEqual(*(sorted(pathlib.Path(file).read_bytes().split(b"\0")) for file in
                               (f"/proc/{self.companion.pid}/environ", f"{tool.path}.environment")))
            if not wanted:
                self.assertNotRegex(self.maps(), "libEGL_|wayland-egl")
            self.desk.stop(self.companion)

    def test_panel_opens_on_the_screen_whose_item_was_clicked(self):
        self.start(outputs=((1280, 800), (1000, 640)))
        for output, place in ((1, (1280, 0, 1000, 640)), (0, (0, 0, 1280, 800)), (1, (1280, 0, 1000, 640))):
            self.check_inside(self.open_panel(output), *place)
            self.desk.press("Escape")
            self.wait_for_no_panel("Escape")

    def test_screen_that_is_scaled_while_the_panel_is_open_does_no_harm(self):
        self.start()
        self.open_panel()
        for scale in (2, 1.5, 1):
            self.desk.run("swaymsg", "output", "*", "scale", str(scale))
            self.wait_for(lambda: self.desk.sway_says("-t", "get_outputs")[0]["scale"] == scale, f"scale {scale}")
        self.check_alive()
        self.desk.press("Escape")
        self.wait_for_no_panel("Escape")
        self.check_inside(self.open_panel(), 0, 0, 1280, 800)


class AsAGuest(Stories, OnWayland):
    environment = {"QT_QPA_PLATFORM": "xcb"}


class Choice(OnWayland):
    """Which window system it speaks."""

    CASES = (
        ("native where both are offered", [NATIVE], {}),
        ("guest on GNOME", [GUEST], {"env": {"XDG_CURRENT_DESKTOP": "ubuntu:GNOME"}}),
        ("guest on Plasma", [GUEST], {"env": {"XDG_CURRENT_DESKTOP": "KDE"}}),
        ("native on GNOME without an X server", [NATIVE], {"env": {"XDG_CURRENT_DESKTOP": "GNOME", "DISPLAY": ""}}),
        ("native without an X server", [NATIVE], {"xwayland": False}),
        ("native where the X server cannot be reached", [NATIVE, GUEST],
         {"env": {"XDG_CURRENT_DESKTOP": "KDE", "DISPLAY": ":99"}}),
        ("guest where the compositor cannot be reached", [NATIVE, GUEST], {"env": {"WAYLAND_DISPLAY": "nowhere"}}),
        ("what the environment says", [GUEST], {"env": {"QT_QPA_PLATFORM": "xcb"}}),
        ("what the command line says", [GUEST], {"words": ["-platform", "xcb"]}),
    )

    def test_choice_is_made_by_what_can_be_reached_and_by_the_user(self):
        skip_without_qts_wayland()
        for what, plugins, options in self.CASES:
            with self.subTest(what):
                self.check_choice(plugins, **options)
                self.desk.stop(self.companion)  # one companion for each name of a compositor

    def check_choice(self, plugins, words=(), env=None, xwayland=True):
        self.start_desktop(xwayland=xwayland)
        self.start_companion(*words, env=env)
        self.item()
        loaded = {line.rpartition("/")[2] for line in self.maps().splitlines() if "/platforms/" in line}
        self.assertEqual(len(loaded), len(plugins), loaded)
        for plugin in plugins:
            self.assertTrue(any(map(plugin.fullmatch, loaded)), loaded)
