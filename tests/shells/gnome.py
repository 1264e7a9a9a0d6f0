"""GNOME: its shell with the extension for items in the tray."""

import json
import os
import re

import desktop
import shell
from shell import still

TRAY = "ubuntu-appindicators@ubuntu.com"
SETTINGS = {
    "org.gnome.shell": {"enabled-extensions": f"['{TRAY}']",
                        "welcome-dialog-last-shown-version": "'999'"},
    "org.gnome.desktop.session": {"idle-delay": "0"},
    "org.gnome.desktop.screensaver": {"lock-enabled": "false"},
}
# (x, y, width, height) of an actor, or nothing.
PLACE = """function place(actor) {
    if (!actor || !actor.mapped) return null;
    const [x, y] = actor.get_transformed_position();
    return isNaN(x) ? null : [x, y, actor.width, actor.height].map(Math.round);
} """
SHELL = "org.gnome.Shell"


class Gnome(shell.Shell):
    def begin(self):
        self.env.update(XDG_CURRENT_DESKTOP="GNOME", XDG_SESSION_DESKTOP="gnome", DESKTOP_SESSION="gnome",
                        GNOME_SHELL_SESSION_MODE="user", GSETTINGS_BACKEND="dconf",
                        XDG_DATA_DIRS="/usr/share/gnome:/usr/local/share:/usr/share")
        super().begin()
        self.leave_overview()

    def start_shell(self):
        for schema, values in SETTINGS.items():
            for key, value in values.items():
                self.run("gsettings", "set", schema, key, value)
        self.process_of_shell = self.start(["gnome-shell", "--unsafe-mode", *self.mode])
        self.wait_for(lambda: SHELL in self.bus_names(), "the shell", within=60)

    def evaluate(self, script):
        """What a script inside the shell gives."""
        done, value = self.call(SHELL, "/org/gnome/Shell", SHELL + ".Eval", "(s)", script)
        if not done:
            raise desktop.Failure(value)
        return json.loads(value) if value else None

    def leave_overview(self):
        self.wait_for(lambda: self.evaluate("!Main.layoutManager._startingUp"), "the shell to have started", within=60)
        self.evaluate("Main.overview.hide()")
        self.wait_for(lambda: not self.evaluate("Main.overview.visible"), "the overview to go")


    def restart_tray(self):
        for wanted in ("disable", "enable"):
            self.run("gnome-extensions", wanted, TRAY)

    def wish_for(self, tone):
        """Changes between light and dark, as the user does in the menu of the shell."""
        self.run("gsettings", "set", "org.gnome.desktop.interface", "color-scheme",
                 {"dark": "prefer-dark", "light": "prefer-light"}[tone])

    def menu_entry(self, label):
        """Where an entry of an open menu is once it has stopped moving, or nothing."""
        def place():
            return self.evaluate(PLACE + "const find = one => one.text === " + json.dumps(label) + " && one.mapped"
                                 "? one : one.get_children().map(find).find(it => it);"
                                 "place(find(Main.layoutManager.uiGroup))")

        return still(place)

    def close_menu(self):
        self.evaluate("Main.panel.menuManager.activeMenu?.close()")

    def item_place(self, _colours):
        """The middle of the only item of the extension."""
        place = self.evaluate(PLACE + "place(Object.entries(Main.panel.statusArea).filter(([name, item]) => "
                              "name.startsWith('appindicator') && item.visible).map(([_, item]) => item)[0])")
        return place and (place[0] + place[2] // 2, place[1] + place[3] // 2)

    def entries(self):
        """What the dash, the overview and the switcher have."""
        return self.evaluate("[Shell.AppSystem.get_default().get_running().length,"
                             " global.display.get_tab_list(Meta.TabList.NORMAL, null).length]")


class OnX11(Gnome):
    mode = ["--x11"]


class OnWayland(Gnome):
    wayland = True
    mode = ["--nested", "--wayland"]

    def start_shell(self):
        self.env["MUTTER_DEBUG_DUMMY_MODE_SPECS"] = f"{self.size[0]}x{self.size[1]}"
        super().start_shell()
        number, = self.shell_says(r"public X11 display (:\d+)")
        self.env["WAYLAND_DISPLAY"], = self.shell_says(r"Wayland display name '([^']+)'")
        os.environ["XAUTHORITY"] = self.env["XAUTHORITY"] = str(next((self.root / "run").glob(".mutter-Xwaylandauth.*")))
        self.join(number)

    def shell_says(self, pattern):
        """What a line that the shell prints has in it."""
        return self.wait_for(lambda: re.search(pattern, self.output(self.process_of_shell)), pattern).groups()
