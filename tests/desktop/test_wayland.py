"""The companion on a Wayland desktop: natively, and as a guest of the desktop's X server."""

import os
import pathlib
import subprocess
import unittest

import desktop
import wayland
from companion import PANEL, SETTINGS, Bridge, skip_unless_possible
from probe import Probe
from screen_reader import ScreenReader

PROGRAMS = ("sway", "swaymsg", "swaybg", "Xwayland", "waybar", "grim", "dbus-daemon", "gdbus")
COMPANION = os.environ.get("VORNA_COMPANION", "vorna-companion")
WIDTH = 340
ELSEWHERE = (1000, 600)
BESIDE_THE_PANEL = (1100, 100)
NATIVE, GUEST = "libqwayland-generic.so", "libqxcb.so"
SERVICES = [{"name": f"service-{number}", "ok": True, "detail": "answers"} for number in range(8)]


def setUpModule():
    skip_unless_possible(PROGRAMS)
    wayland.skip_unless_possible()


def skip_without_qts_wayland():
    probe = subprocess.run([COMPANION], capture_output=True, text=True, timeout=20,
                           env={"QT_QPA_PLATFORM": "wayland", "WAYLAND_DISPLAY": "nowhere", "XDG_RUNTIME_DIR": "/"})
    if "Could not find the Qt platform plugin" in probe.stderr:
        raise unittest.SkipTest("not installed: Qt's platform plugin for Wayland")


class OnWayland(unittest.TestCase):
    """Each test has a desktop of its own."""

    def start_desktop(self, bar=True, **options):
        self.desk = self.enter(wayland.WaylandDesktop(**options))
        self.desk.env["LC_ALL"] = "C.UTF-8"
        self.desk.start_accessibility()
        if bar:
            self.start_bar()

    def enter(self, context):
        context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return context

    def start_bar(self):
        bar = self.desk.start_waybar()
        self.wait_for(self.desk.status_notifier_host_is_there, "the bar's host")
        return bar

    def start_companion(self, *words, **env):
        self.companion = self.desk.start([COMPANION, *words], env=env)
        self.reader = self.enter(ScreenReader(self.desk, self.companion.pid))

    def start_another_program(self):
        """A window that fills the screen."""
        other = self.enter(Probe(self.desk, {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}))
        other.tell("front")
        self.wait_for(lambda: self.desk.windows(other.pid), "the other window")

    def wait_for(self, condition, what, within=10.0):
        return self.desk.wait_for(condition, what, within)

    def item(self):
        return self.wait_for(self.desk.status_notifier_items, "the item in the tray")[0]

    def panel(self):
        return self.desk.windows(self.companion.pid).get(PANEL)

    def wait_for_panel(self):
        return self.wait_for(lambda: (panel := self.panel()) and panel["focused"] and panel, "the panel with the focus")

    def wait_for_no_panel(self, after):
        self.wait_for(lambda: not self.panel(), f"the panel to close after {after}")

    def open_panel(self, output=0):
        self.item()
        self.desk.click_item(output)
        panel = self.wait_for_panel()
        # Qt loses the second of two changes of the focus that reach it at once; who reads the panel gives it time.
        self.reader.wait_for_window(PANEL)
        self.reader.texts(PANEL)
        return panel

    def check_alive(self):
        self.assertIsNone(self.companion.poll(), self.desk.output(self.companion))

    def photograph(self, name):
        folder = pathlib.Path(os.environ["VORNA_PICTURES"])
        folder.mkdir(parents=True, exist_ok=True)
        self.desk.screenshot(folder / f"wayland-{name}.png")


class Stories:
    """What is true natively and for a guest alike; `environment` makes the companion one or the other."""

    environment = {}

    def start(self, *words, **options):
        self.start_desktop(**options)
        self.start_companion(*words, **self.environment)

    def check_inside(self, panel, left, top, width, height):
        self.assertEqual(panel["width"], WIDTH)
        self.assertGreaterEqual(panel["x"], left)
        self.assertGreaterEqual(panel["y"], top + wayland.BAR_HEIGHT)
        self.assertLessEqual(panel["x"] + panel["width"], left + width)
        self.assertLessEqual(panel["y"] + panel["height"], top + height)

    def test_panel_says_what_the_bridge_says_inside_the_screen_with_round_corners(self):
        bridge = Bridge({"services": SERVICES})
        self.addCleanup(bridge.stop)
        self.start()
        panel = self.open_panel()
        self.reader.wait_for_text("service-7", PANEL)
        self.check_inside(self.panel(), 0, 0, 1280, 800)
        self.assertEqual(self.desk.colours(panel["x"], panel["y"]), {wayland.BACKGROUND})
        self.assertNotEqual(self.desk.colours(panel["x"] + WIDTH // 2, panel["y"] + 5), {wayland.BACKGROUND})
        self.photograph(type(self).__name__)

    def test_escape_closes_the_panel(self):
        self.start()
        self.open_panel()
        self.desk.press("Escape")
        self.wait_for_no_panel("Escape")

    def test_second_click_on_the_item_closes_the_panel_and_does_not_open_it_again(self):
        self.start()
        for _ in range(2):
            self.open_panel()
            self.desk.click_item()
            self.wait_for_no_panel("a second click")
            self.assertRaises(desktop.Failure, self.desk.wait_for, self.panel, "the panel", within=0.5)

    def test_click_elsewhere_closes_the_panel(self):
        self.start()
        panel = self.open_panel()
        self.desk.click(panel["x"] + 20, panel["y"] + 20)
        self.desk.click(*ELSEWHERE)
        self.wait_for_no_panel("a click on the desktop")

    def test_click_below_the_panel_closes_it(self):
        self.start(outputs=((1280, 1000),))
        panel = self.open_panel()

        def is_closed_by_a_click_below():
            # A guest hears nothing of a press in the moment in which the pointer comes in.
            self.desk.input.move(panel["x"] + 40, panel["y"] + panel["height"] - 4)
            self.desk.click(panel["x"] + 20, panel["y"] + panel["height"] - 2)
            return not self.panel()

        self.wait_for(is_closed_by_a_click_below, "the panel to close after a click below it")

    def test_companion_ends_quietly_with_the_compositor(self):
        self.start()
        self.open_panel()
        self.desk.sway.kill()
        status = self.companion.wait(timeout=10)
        self.assertIn(status, (0, 1), self.desk.output(self.companion))


class Natively(Stories, OnWayland):
    @classmethod
    def setUpClass(cls):
        skip_without_qts_wayland()

    def test_panel_is_drawn_sharp_on_a_scaled_screen_and_stays_inside_it(self):
        self.start_desktop(outputs=((640, 400),), scale=2)
        self.start_companion(WAYLAND_DEBUG="1")
        self.check_inside(self.open_panel(), 0, 0, 640, 400)
        self.assertIn(".set_buffer_scale(2)", self.desk.output(self.companion))
        self.photograph("scaled")

    def test_panel_is_there_when_the_pointer_comes_over_another_window(self):
        self.start()
        self.start_another_program()
        panel = self.open_panel()
        self.desk.input.move(*BESIDE_THE_PANEL)
        self.wait_for(lambda: not self.panel()["focused"], "the focus to follow the pointer")
        self.assertRaises(desktop.Failure, self.desk.wait_for, lambda: not self.panel(), "it to close", within=0.5)
        self.desk.input.move(panel["x"] + 20, panel["y"] + 20)
        self.wait_for_panel()
        # Qt loses the second of two changes of the focus that reach it at once; who reads the panel gives it time.
        self.reader.wait_for_window(PANEL)
        self.reader.texts(PANEL)
        self.desk.input.move(*BESIDE_THE_PANEL)
        self.wait_for_no_panel("the pointer has left it")

    def test_click_into_another_window_closes_the_panel(self):
        self.start()
        self.start_another_program()
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
            second = self.desk.start([COMPANION, *words], env=self.environment)
            self.assertEqual(second.wait(timeout=10), 0)
            self.wait_for(lambda: self.desk.windows(self.companion.pid).get(title, {}).get("focused"), title)
        self.assertEqual(len(self.desk.status_notifier_items()), 1)
        self.reader.wait_for_text("Local bridge", SETTINGS)
        self.photograph(f"{type(self).__name__}-settings")

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
    """Which window system it speaks; the choice is Qt's."""

    @classmethod
    def setUpClass(cls):
        skip_without_qts_wayland()

    def plugins(self):
        """The platform plugins that the companion has loaded."""
        maps = pathlib.Path(f"/proc/{self.companion.pid}/maps").read_text()
        return {line.rpartition("/")[2] for line in maps.splitlines() if "/platforms/" in line}

    def check_choice(self, *plugins, words=(), xwayland=True, **env):
        self.start_desktop(xwayland=xwayland)
        self.start_companion(*words, **env)
        self.item()
        self.assertEqual(self.plugins(), set(plugins))

    def test_native_where_both_are_offered(self):
        self.check_choice(NATIVE)

    def test_native_on_gnome(self):
        self.check_choice(NATIVE, XDG_CURRENT_DESKTOP="GNOME")

    def test_native_without_an_x_server(self):
        self.check_choice(NATIVE, xwayland=False)

    def test_guest_where_the_compositor_cannot_be_reached(self):
        self.check_choice(NATIVE, GUEST, WAYLAND_DISPLAY="nowhere")

    def test_what_the_user_has_chosen_in_the_environment(self):
        self.check_choice(GUEST, QT_QPA_PLATFORM="xcb")

    def test_what_the_user_has_chosen_on_the_command_line(self):
        self.check_choice(GUEST, words=["-platform", "xcb"])


if __name__ == "__main__":
    unittest.main()
