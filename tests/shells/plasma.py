"""KDE Plasma: KWin and plasmashell."""

import shutil

import shell

VERSION = "6" if shutil.which("kded6") else "5"
# What KWin starts: it tells how the session is reached.
SESSION = """#!/bin/sh
echo "$WAYLAND_DISPLAY $DISPLAY" > displays.part
mv displays.part displays
exec sleep 100000
"""


class Plasma(shell.Shell):
    def begin(self):
        self.env.update(XDG_CURRENT_DESKTOP="KDE", XDG_SESSION_DESKTOP="KDE", KDE_FULL_SESSION="true",
                        KDE_SESSION_VERSION=VERSION, QT_QUICK_BACKEND="software")
        super().begin()

    def start_shell(self):
        self.start_window_manager()
        self.start(["kded" + VERSION], self._platform())
        self.start_plasmashell()

    def start_plasmashell(self):
        self.start(["plasmashell"], self._platform())

    def _platform(self):
        return {"QT_QPA_PLATFORM": "wayland" if self.wayland else "xcb"}


    def item_place(self, colours):
        """The middle of the only item that is painted in these colours."""
        found = self.places_of(colours)
        return [(min(part) + max(part)) // 2 for part in zip(*found)]

    def close_menu(self):
        """One click opens none here."""

    def restart_tray(self):
        self.kill(self.process("plasmashell"))
        self.wait_for(lambda: self.bar_area()[3] == 0, "the bar to be gone")
        self.start_plasmashell()
        self.wait_for_shell()

    def wish_for(self, tone):
        """Changes between light and dark, as the user does in the settings."""
        self.run("plasma-apply-colorscheme", {"dark": "BreezeDark", "light": "BreezeLight"}[tone])

    def entries(self):
        """What the task bar shows, as it is painted: all of the bar that is left of the tray."""
        x, y, width, height = self.bar_area()
        return self.pixels(x, y, width // 2, height)


class OnX11(Plasma):
    def start_window_manager(self):
        self.start(["kwin_x11", "--replace"])
        self.wait_for(lambda: self.root_windows("_NET_SUPPORTING_WM_CHECK"), "the window manager")


class OnWayland(Plasma):
    wayland = True

    def start_window_manager(self):
        session = self.root / "session"
        session.write_text(SESSION)
        session.chmod(0o755)
        self.start(["/usr/local/bin/kwin_wayland", "--x11-display", self.env["DISPLAY"], "--width", self.size[0],
                    "--height", self.size[1], "--xwayland", "--exit-with-session", session])
        self.wait_for((self.root / "displays").exists, "the compositor")
        wayland, x11 = (self.root / "displays").read_text().split()
        self.env["WAYLAND_DISPLAY"] = wayland
        self.join(x11)
