"""The panel on screens that change under it: unplugged, of a lower resolution, of another scale."""

import glob
import signal
import unittest

import desktop
from companion import PANEL_WIDTH, skip_unless_possible
from faults import Story

TWO_SCREENS = """
Section "Device"
    Identifier "device"
    Driver "dummy"
    VideoRam 64000
EndSection
Section "Screen"
    Identifier "screen"
    Device "device"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Virtual 2560 1024
    EndSubSection
EndSection
"""


def setUpModule():
    skip_unless_possible()
    desktop.require("Xorg", "xrandr", "xsettingsd")
    if not glob.glob("/usr/lib/xorg/modules/drivers/dummy_drv.so"):
        raise unittest.SkipTest("not installed: the dummy driver of Xorg")


class TwoScreens(desktop.Desktop):
    """A desktop whose outputs can be plugged and unplugged."""

    def x_server(self):
        settings = self.root / "screens.conf"
        settings.write_text(TWO_SCREENS)
        return ["Xorg", "-config", settings, "-logfile", self.root / "screens.log", "-novtswitch", "-sharevts"]

    def plug(self):
        self.run("xrandr", "--addmode", "DUMMY1", "1024x768")
        self.run("xrandr", "--output", "DUMMY1", "--mode", "1024x768", "--right-of", "DUMMY0")

    def unplug(self):
        self.run("xrandr", "--output", "DUMMY1", "--off")


class Screens(Story):
    kind_of_desktop = TwoScreens

    def setUp(self):
        super().setUp()
        self.desk.plug()

    def open_at(self, x, y):
        """Opens the panel where the pointer is."""
        self.start_with_item()
        self.desk.move_pointer(x, y)
        return self.open_by_second_start()

    def check_moves_within(self, width, height, picture, scale=1):
        def is_there():
            return any(wide == scale * PANEL_WIDTH and min(x, y) >= 0 and x + wide <= width and y + high <= height
                       for x, y, wide, high in self.desk.windows(self.companion.pid).values())

        self.wait_for(is_there, f"the panel within {width} x {height}")
        self.photograph("faults-" + picture)
        self.check_polling_goes_on()

    def test_panel_leaves_an_unplugged_screen(self):
        self.assertGreater(self.open_at(1900, 300)[0], 1024)
        self.desk.unplug()
        self.check_moves_within(1024, 768, "unplugged")
        self.desk.plug()
        self.check_moves_within(2048, 768, "plugged")

    def test_panel_follows_another_scale_and_a_lower_resolution(self):
        self.desk.unplug()
        settings = self.desk.root / "xsettings"
        settings.write_text("Xft/DPI 98304\n")
        daemon = self.desk.start(["xsettingsd", "-c", settings])
        self.open_at(1000, 700)
        settings.write_text("Xft/DPI 196608\n")
        daemon.send_signal(signal.SIGHUP)
        self.check_moves_within(1024, 768, "other-scale", scale=2)
        settings.write_text("Xft/DPI 98304\n")
        daemon.send_signal(signal.SIGHUP)
        self.desk.run("xrandr", "--output", "DUMMY0", "--mode", "800x600")
        self.check_moves_within(800, 600, "lower-resolution")
