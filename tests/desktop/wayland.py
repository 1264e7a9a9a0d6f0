"""A Wayland desktop without a screen: sway with an X server for guests, a bar with a tray, a pointer and a keyboard.

    with wayland.WaylandDesktop() as desk:
        desk.start_waybar()
        companion = desk.start(["build/vorna-companion"])
        desk.wait_for(desk.status_notifier_items, "the item in the tray")
        desk.click_item()
"""

import json
import os
import subprocess
import unittest

import desktop
from wayland_input import WaylandInput

BAR_HEIGHT = 28
BACKGROUND = (0x40, 0x60, 0x80)
ITEM_FROM_THE_RIGHT = 14
CONFIGURATION = """
xwayland {xwayland}
output * bg #406080 solid_color
{outputs}
{rules}
exec sh -c 'echo "$WAYLAND_DISPLAY $DISPLAY" > displays.part; mv displays.part displays'
"""
BAR = {"layer": "top", "position": "top", "height": BAR_HEIGHT, "modules-right": ["tray"],
       "tray": {"icon-size": 20, "spacing": 4}}

# sway refuses to run as root, so to itself it is somebody else.
UNPRIVILEGED = ["unshare", "--user", "--map-user=1000", "--map-group=1000"] if os.getuid() == 0 else []


def skip_unless_possible():
    """Skips the module where the compositor may not run."""
    if UNPRIVILEGED and subprocess.run([*UNPRIVILEGED, "true"], capture_output=True).returncode != 0:
        raise unittest.SkipTest("sway does not run as root, and there are no user namespaces here")


class WaylandDesktop(desktop.Desktop):
    """`outputs` are the widths and heights of the screens, side by side from the left, in points."""

    def __init__(self, outputs=((1280, 800),), scale=1, xwayland=True, rules=""):
        super().__init__(size=(sum(width for width, _ in outputs), max(height for _, height in outputs)), display=False)
        self.outputs = outputs
        self._scale = scale
        self._xwayland = xwayland
        self._rules = rules

    def begin(self):
        super().begin()
        self._start_sway()

    def __exit__(self, *details):
        if hasattr(self, "input"):
            self.input.close()
        super().__exit__(*details)

    def _start_sway(self):
        lefts = [sum(width for width, _ in self.outputs[:index]) for index in range(len(self.outputs))]
        outputs = "\n".join(
            f"output HEADLESS-{number} resolution {width * self._scale}x{height * self._scale} position {left},0 "
            f"scale {self._scale}" for number, (left, (width, height)) in enumerate(zip(lefts, self.outputs), 1))
        settings = self.root / "sway.conf"
        settings.write_text(CONFIGURATION.format(xwayland="enable" if self._xwayland else "disable", outputs=outputs,
                                                 rules=self._rules))
        self.sway = self.start([*UNPRIVILEGED, "sway", "-c", settings],
                               env={"WLR_BACKENDS": "headless", "WLR_LIBINPUT_NO_DEVICES": "1",
                                    "WLR_RENDERER": "pixman", "WLR_HEADLESS_OUTPUTS": str(len(self.outputs))})
        self.wait_for((self.root / "displays").exists, "the compositor")
        self.env["WAYLAND_DISPLAY"], *guests = (self.root / "displays").read_text().split()
        if guests:
            (self.env["DISPLAY"],) = guests
        self.env["XDG_SESSION_TYPE"] = "wayland"
        self.env["SWAYSOCK"] = str(next((self.root / "run").glob("sway-ipc.*")))
        self.input = WaylandInput(self.root / "run" / self.env["WAYLAND_DISPLAY"], self.size)

    def start_waybar(self):
        """A bar with a tray along the upper edge of each screen."""
        settings, style = self.root / "waybar.json", self.root / "waybar.css"
        settings.write_text(json.dumps(BAR))
        style.write_text("* { font-size: 13px; }")
        return self.start(["waybar", "-c", settings, "-s", style])

    def sway_says(self, *words):
        return json.loads(self.run("swaymsg", "-r", *words))

    def windows(self, pid):
        """The windows of a process: {title: {"x", "y", "width", "height", "focused"}}, in points."""
        found = {}
        waiting = [self.sway_says("-t", "get_tree")]
        while waiting:
            node = waiting.pop()
            waiting += node["nodes"] + node["floating_nodes"]
            if node.get("pid") == pid:
                found[node["name"]] = {**node["rect"], "focused": node["focused"]}
        return found

    def click(self, x, y, button=1):
        self.input.click(x, y, button)

    def press(self, *keys):
        self.input.press(*keys)

    def item_place(self, output=0):
        """Where the only item in the tray of one screen's bar is, once it is drawn."""
        x, y = sum(width for width, _ in self.outputs[:output + 1]) - ITEM_FROM_THE_RIGHT, BAR_HEIGHT // 2
        self.wait_for(lambda: len(self.colours(x - 8, y - 8, 16, 16)) > 1, "the item to be drawn in the bar")
        return x, y

    def click_item(self, output=0):
        self.click(*self.item_place(output))

    def colours(self, x, y, width=1, height=1):
        """The colours that the screen has in a place."""
        picture = subprocess.run(["grim", "-s", "1", "-t", "ppm", "-g", f"{x},{y} {width}x{height}", "-"],
                                 env=self.env, check=True, capture_output=True).stdout
        pixels = picture[-3 * width * height:]
        return {tuple(pixels[start:start + 3]) for start in range(0, len(pixels), 3)}

    def screenshot(self, path):
        self.run("grim", path, timeout=30)
        return path
