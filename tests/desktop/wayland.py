"""A Wayland desktop without a screen: sway in windows of the X server, with an X server of its own for guests.

Pointer, keyboard and pictures are those of the outer X server; its pixels are the compositor's.
"""

import json
import os
import shutil

import desktop
from Xlib import X

BAR_HEIGHT = 28
BACKGROUND = (0x40, 0x60, 0x80)
ITEM_FROM_THE_RIGHT = 14
CONFIGURATION = """
xwayland {xwayland}
output * bg #406080 solid_color
{outputs}
exec sh -c 'xhost +local: ; echo "$WAYLAND_DISPLAY $DISPLAY" > displays.part; mv displays.part displays'
"""
BAR = {"layer": "top", "position": "top", "height": BAR_HEIGHT, "modules-right": ["tray"],
       "tray": {"icon-size": 20, "spacing": 4}}

# sway refuses to run as root.
UNPRIVILEGED = ["setpriv", "--reuid", "nobody", "--regid", "nogroup", "--clear-groups"] if os.getuid() == 0 else []


class WaylandDesktop(desktop.Desktop):
    """`outputs` are the widths and heights of the screens in pixels, side by side from the left."""

    def __init__(self, outputs=((1280, 800),), scale=1, xwayland=True):
        super().__init__(size=(sum(width for width, _ in outputs), max(height for _, height in outputs)))
        self._outputs = outputs
        self._lefts = [sum(width for width, _ in outputs[:index]) for index in range(len(outputs))]
        self._scale = scale
        self._xwayland = xwayland

    def begin(self):
        super().begin()
        self._start_sway()
        self._place_outputs()

    def _start_sway(self):
        outputs = [f"output X11-{number} resolution {width}x{height} position {left},0 scale {self._scale}"
                   for number, (left, (width, height)) in enumerate(zip(self._lefts, self._outputs), 1)]
        settings = self.root / "sway.conf"
        settings.write_text(CONFIGURATION.format(xwayland="force" if self._xwayland else "disable",
                                                 outputs="\n".join(outputs)))
        if UNPRIVILEGED:
            for folder in (self.root, self.root / "run", self.root / "home"):
                shutil.chown(folder, "nobody", "nogroup")
        self.sway = self.start([*UNPRIVILEGED, "sway", "-c", settings],
                               env={"WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman",
                                    "WLR_X11_OUTPUTS": str(len(self._outputs))})
        self.wait_for((self.root / "displays").exists, "the compositor")
        self.x.sync()  # from here on DISPLAY is the guests'
        for variable in ("DISPLAY", "QT_QPA_PLATFORM"):
            del self.env[variable]
        self.env.update(zip(("WAYLAND_DISPLAY", "DISPLAY"), (self.root / "displays").read_text().split()))
        self.env["XDG_SESSION_TYPE"] = "wayland"
        self.env["SWAYSOCK"] = str(next((self.root / "run").glob("sway-ipc.*")))

    def _place_outputs(self):
        """Puts the windows of the outputs, which are as many and as wide, where these are in the layout."""
        def windows():
            found = [window for window in self.x.screen().root.query_tree().children
                     if window.get_attributes().map_state == X.IsViewable]
            sizes = {window.get_geometry().width: window for window in found}
            return set(sizes) >= {width for width, _ in self._outputs} and sizes

        found = self.wait_for(windows, "the outputs")
        for left, (width, _) in zip(self._lefts, self._outputs):
            found[width].configure(x=left, y=0)
        self.x.sync()

    def start_waybar(self):
        """A bar with a tray along the upper edge of each screen."""
        settings, style = self.root / "waybar.json", self.root / "waybar.css"
        settings.write_text(json.dumps(BAR))
        style.write_text("* { font-size: 13px; }")
        return self.start(["waybar", "-c", settings, "-s", style])

    def sway_says(self, *words):
        return json.loads(self.run("swaymsg", "-r", *words))

    def windows(self, pid):
        """The windows of a process: {title: {"x", "y", "width", "height", "focused", "frame"}}, in points."""
        found = {}
        waiting = [self.sway_says("-t", "get_tree")]
        while waiting:
            node = waiting.pop()
            waiting += node["nodes"] + node["floating_nodes"]
            if node.get("pid") == pid:
                found[node["name"]] = {**node["rect"], "focused": node["focused"], "frame": node["border"]}
        return found

    def item_place(self, output=0):
        """Where the only item in the tray of one screen's bar is, in pixels, once it is drawn."""
        x = self._lefts[output] + self._outputs[output][0] - ITEM_FROM_THE_RIGHT * self._scale
        y = BAR_HEIGHT // 2 * self._scale
        self.wait_for(lambda: len(self.colours(x - 8, y - 8, 16, 16)) > 1, "the item to be drawn in the bar")
        return x, y
