"""An installed companion on a desktop: from the menu, at login, through an upgrade, and gone."""

import contextlib
import os
import pathlib
import shutil
import tempfile

import psutil
from Xlib import X
from packages import BRIDGE, COMPANION, PROGRAM, companions, files, install, must, older, package, purge

from companion import PANEL, SETTINGS, CompanionTest
from contents import well_rows
from desktop import NOTIFICATIONS, NOTIFICATIONS_PATH
from screen_reader import ScreenReader

DESKTOP_FILE = "/usr/share/applications/vorna-companion.desktop"
AUTOSTART = pathlib.Path("/etc/xdg/autostart/vorna-companion.desktop")
LAST = "[Desktop Entry]\nType=Application\nName=Last\nExec=touch {}\n"


def program_of(process):
    return os.readlink(f"/proc/{process.pid}/exe")


class Installed(CompanionTest):
    def setUp(self):
        super().setUp()
        self.bridge = self.start_bridge()
        self.addCleanup(self.end_companions)
        self.autostart = pathlib.Path(self.desk.env["XDG_CONFIG_HOME"]) / "autostart"
        self.autostart.mkdir(exist_ok=True)
        self.addCleanup(shutil.rmtree, self.autostart)
        install(package(COMPANION))

    def end_companions(self):
        for process in companions():
            with contextlib.suppress(psutil.NoSuchProcess):
                process.terminate()
                process.wait(30)

    def launch(self):
        """As the menu of a desktop does."""
        menu = self.desk.start(["gio", "launch", DESKTOP_FILE])
        self.assertEqual(menu.wait(30), 0, self.desk.output(menu))

    def wait_for_companion(self):
        process, = self.wait_for(companions, "the companion")
        self.reader = ScreenReader(self.desk, process.pid)
        return process

    def check_panel(self):
        self.open_panel()
        self.wait_for_rows(PANEL, well_rows())

    def version(self):
        return must(PROGRAM, "--version").split()[1]

    def test_starts_from_the_menu_and_posts_with_its_icon(self):
        self.tool.does("echo backed up")
        self.launch()
        self.wait_for_companion()
        self.check_panel()
        self.photograph("package-panel")
        self.click("Desk backup now")
        self.wait_for_notifications(("Desk backup", "backed up"))
        entries, = self.desk.call(NOTIFICATIONS, NOTIFICATIONS_PATH, "org.dunstproject.cmd0.NotificationListHistory")
        icon, = {entry["icon_path"] for entry in entries}
        self.assertRegex(icon, r"^/usr/share/icons/hicolor/.*/vorna-companion\.(png|svg)$")

    def test_settings_window_has_its_icon(self):
        self.start_companion("--settings")
        self.reader.wait_for_window(SETTINGS)
        window, = self.desk.windows(self.companion.pid)
        icons = window.get_full_property(self.desk.x.intern_atom("_NET_WM_ICON"), X.AnyPropertyType)
        self.assertIn(icons and icons.value[0], (16, 32, 64, 128))

    def log_in(self):
        """A session of Xfce's, which has started all that a login starts."""
        marker = self.desk.root / "all-started"
        marker.unlink(missing_ok=True)
        (self.autostart / "zz.desktop").write_text(LAST.format(marker))
        (self.desk.root / "session").unlink(missing_ok=True)
        self.desk.env.pop("SESSION_MANAGER", None)
        self.addCleanup(self.desk.stop, self.desk.start_session())
        self.wait_for(marker.exists, "the programs of the login")

    def test_starts_at_login(self):
        self.log_in()
        self.wait_for_companion()
        self.check_panel()

    def test_does_not_start_at_login_when_its_user_has_switched_it_off(self):
        (self.autostart / AUTOSTART.name).write_text(AUTOSTART.read_text() + "Hidden=true\n")
        self.log_in()
        self.assertEqual(companions(), [])

    def test_upgrade_lets_the_running_one_go_on_and_the_next_start_is_the_new_one(self):
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        new = self.version()
        earlier, number = older(folder)
        install(earlier)
        self.assertEqual(self.version(), "v" + number)
        self.launch()
        running = self.wait_for_companion()
        self.check_panel()
        install(package(COMPANION))
        self.assertEqual(self.version(), new)
        self.assertEqual(program_of(running), f"{PROGRAM} (deleted)")
        self.desk.activate_item(self.item())
        self.reader.wait_for_no_window(PANEL)
        polls = len(self.bridge.polls())
        self.wait_for(lambda: len(self.bridge.polls()) > polls, "the next poll of the one that runs")
        self.launch()
        self.reader.wait_for_window(PANEL)
        self.wait_for_equal(companions, [running], "the one that runs, alone")
        running.terminate()
        running.wait(30)
        self.launch()
        self.assertEqual(program_of(self.wait_for_companion()), str(PROGRAM))
        self.check_panel()

    def test_purge_leaves_nothing_but_the_users_own_setting(self):
        install(package(BRIDGE))
        purge(COMPANION, BRIDGE)
        before = files()
        install(package(COMPANION), package(BRIDGE))
        self.assertIn(str(AUTOSTART), files() - before)
        must(f"/usr/bin/{BRIDGE}", "--help")
        self.launch()
        running = self.wait_for_companion()
        self.check_panel()
        self.click("Dusk")
        self.wait_for(self.remembered, "the setting")
        purge(COMPANION, BRIDGE)
        self.assertEqual(companions(), [running])  # ends with its session
        self.assertEqual(sorted(files() ^ before), [])
        self.assertTrue(self.remembered())


