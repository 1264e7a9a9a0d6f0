"""What KDE Plasma and GNOME have in common: a real shell on an X server without a screen, on X11 or on Wayland.

Pointer, keyboard and pictures are those of the outer X server, whose pixels are the shell's. The companion's windows are
found on the X server that programs of the session find: the outer one on X11, and XWayland on Wayland.
"""

import contextlib
import time

import desktop
from x_screen import XScreen

SIZE = (1280, 900)
MIDDLE = (400, 400)
BLACK = (0, 0, 0)
PORTAL, PORTAL_SETTINGS = "org.freedesktop.portal.Desktop", "org.freedesktop.portal.Settings"
STILL_SECONDS = 0.5  # what is where it was that long before has stopped moving


def still(read):
    """What is read where it is the same after a moment, else nothing."""
    before = read()
    time.sleep(STILL_SECONDS)
    return before == read() and before


class Session(XScreen):
    """The X server of a session, to look at its windows."""

    def __init__(self, env):
        self.env = env


class Shell(desktop.Desktop):
    wayland = False

    def __init__(self):
        super().__init__(size=SIZE)

    def begin(self):
        super().begin()
        del self.env["QT_QPA_PLATFORM"]
        self.env.update(XDG_SESSION_TYPE="wayland" if self.wayland else "x11", LIBGL_ALWAYS_SOFTWARE="1",
                        LC_ALL="C.UTF-8")
        self.session = self
        self.start_accessibility()
        self.start_shell()
        self.wait_for_shell()

    def wait_for_shell(self):
        """Until the shell has all its parts, of which the wallpaper is the last."""
        self.wait_for(self.status_notifier_host_is_there, "the tray", within=60)
        self.wait_for(lambda: self.work_area()[3] < self.size[1], "the bar")
        self.wait_for(lambda: still(lambda: self.pixels(*MIDDLE) != [BLACK]), "the wallpaper")

    def wait_for_portal(self):
        """What tells of light and dark; while it starts it misses a change, and is wrong until the next."""
        def answers():
            with contextlib.suppress(desktop.NoAnswer):
                return self.call(PORTAL, "/org/freedesktop/portal/desktop", PORTAL_SETTINGS + ".Read", "(ss)",
                                 "org.freedesktop.appearance", "color-scheme")

        self.wait_for(answers, "the portal")

    def join(self, display):
        """From here on programs find this X server; pointer and pictures stay those of the outer one."""
        self.x.sync()
        self.env["DISPLAY"] = display
        self.session = Session(self.env)

    def __exit__(self, *exception):
        if self.session is not self:
            self.session.let_go_of_x()
        super().__exit__(*exception)

    def work_area(self):
        """(x, y, width, height) of what the bars leave free."""
        return tuple(self.session.root_numbers("_NET_WORKAREA")[:4]) or (0, 0, *self.size)

    def bar_area(self):
        """(x, y, width, height) of the bar along the whole upper or lower edge."""
        _, top, width, height = self.work_area()
        return (0, 0, width, top) if top else (0, height, width, self.size[1] - height)

    def places_of(self, colours):
        """Where in the bar these colours are."""
        x, y, width, height = self.bar_area()
        return [(x + at % width, y + at // width) for at, pixel in enumerate(self.pixels(x, y, width, height))
                if pixel in colours]
