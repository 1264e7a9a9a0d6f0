"""What stories of a failing desktop have in common: each has a desktop of its own, which may be broken."""

import os
import pathlib
import subprocess
import unittest

import desktop
from companion import POLL_SECONDS, DesktopTest
from program import Program

HERE = pathlib.Path(__file__).parent


def in_mounts_of_its_own(script):
    """The beginning of a command that runs with mounts that the script makes and nobody else sees."""
    if os.geteuid() != 0 or subprocess.run(["unshare", "-m", "true"], capture_output=True).returncode != 0:
        raise unittest.SkipTest("only root can mount")
    return ["unshare", "-m", "sh", "-c", f'{script} && exec "$0" "$@"']


class Story(DesktopTest):
    """A companion that is seen without a screen reader, with a window manager and a bridge."""

    kind_of_desktop = desktop.Desktop

    def setUp(self):
        self.desk = self.enterContext(self.kind_of_desktop())
        self.desk.start_window_manager()
        self.bridge = self.start_bridge()

    def start_watcher(self):
        """A watcher of status notifier items without a host."""
        return self.enterContext(Program(self.desk, ["/usr/bin/python3", HERE / "fake_watcher.py"]))

    def start_host(self):
        """A host of status notifier items that takes next to no time to start."""
        host = self.start_watcher()
        host.tell("host")
        return host

    def start_with_item(self, **options):
        self.start_companion(**options)
        host = self.start_host()
        host.expect("registered ")
        return host

    def check_polling_goes_on(self):
        before = len(self.bridge.polls())
        self.wait_for(lambda: len(self.bridge.polls()) > before, "the next poll", within=6 * POLL_SECONDS)
        self.check_alive()

    def open_by_second_start(self):
        self.start_again()
        return self.wait_for_panel()

    def open_embedded(self):
        """Opens the panel by a click on the item in a tray of embedded windows."""
        self.desk.click(*self.embedded_item())
        self.wait_for_panel()
