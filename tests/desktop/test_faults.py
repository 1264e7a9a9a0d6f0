"""The companion while its desktop fails: trays, bus, notifications, screens, settings file, home, clock, session."""

import glob
import os
import pathlib
import re
import shlex
import shutil
import signal
import subprocess
import unittest
from datetime import datetime, timedelta

import desktop
from companion import PANEL, Bridge, CompanionTest, skip_unless_possible
from screen_reader import ScreenReader

COMPANION = os.environ["VORNA_COMPANION"]
HERE = pathlib.Path(__file__).parent
HOST_DEATHS = 100
WARM_UP_DEATHS = 10
MOST_GROWTH_KB = 512
CLIENT_MASK = 0x1fffff
POLL_SECONDS = 5.0
PANEL_WIDTH = 340
WRONG_ENDS = (signal.SIGSEGV, signal.SIGABRT, signal.SIGBUS, signal.SIGFPE, signal.SIGILL)
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

setUpModule = skip_unless_possible


def skip_unless_installed(*programs):
    missing = [program for program in programs if shutil.which(program) is None]
    if missing:
        raise unittest.SkipTest("not installed: " + ", ".join(missing))


def is_root():
    return os.geteuid() == 0


def in_mounts_of_its_own(script):
    """The beginning of a command that runs with mounts that the script makes and nobody else sees."""
    if not is_root() or subprocess.run(["unshare", "-m", "true"], capture_output=True).returncode != 0:
        raise unittest.SkipTest("only root can mount")
    return ["unshare", "-m", "sh", "-c", f'{script} && exec "$0" "$@"']


class Story(unittest.TestCase):
    """For each test a desktop of its own that may be broken, and a companion that is seen without a screen reader."""

    kind_of_desktop = desktop.Desktop

    def setUp(self):
        self.desk = self.kind_of_desktop()
        self.desk.__enter__()
        self.addCleanup(self.desk.__exit__, None, None, None)
        self.desk.start_window_manager()
        self.bridge = Bridge()
        self.addCleanup(self.bridge.stop)

    def start_companion(self, env=None):
        self.companion = self.desk.start([COMPANION], env)

    def start_again(self):
        self.assertEqual(self.desk.start([COMPANION]).wait(timeout=10), 0)

    def start_host(self):
        """A host of status notifier items that takes next to no time to start."""
        host = subprocess.Popen(["/usr/bin/python3", HERE / "fake_watcher.py"], env=self.desk.env, text=True, bufsize=1,
                                stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(lambda: (host.kill(), host.communicate()))
        self.assertEqual(host.stdout.readline(), "ready\n")
        host.stdin.write("host\n")
        return host

    def start_with_item(self):
        self.start_companion()
        host = self.start_host()
        self.assertRegex(host.stdout.readline(), "^registered ")
        return host

    def small_windows(self):
        """The companion's windows as the X server lists them, seen quickly."""
        return self.desk.run("xdotool", "search", "--onlyvisible", "--pid", self.companion.pid, check=False).split()

    def panel(self):
        places = [place for place in self.desk.windows(self.companion.pid).values() if place[2] == PANEL_WIDTH]
        return places[0] if places else None

    def wait_for_panel(self):
        return self.desk.wait_for(self.panel, "the panel")

    def check_polling_goes_on(self):
        before = len(self.bridge.polls())
        self.desk.wait_for(lambda: len(self.bridge.polls()) > before, "the next poll", within=3 * POLL_SECONDS)
        self.check_alive()

    def check_alive(self):
        self.assertIsNone(self.companion.poll(), self.desk.output(self.companion))

    def open_by_second_start(self):
        self.start_again()
        return self.wait_for_panel()

    def check_ended(self, *expected):
        """Ended with one of these statuses, and not by a fault of its own."""
        status = self.companion.wait(timeout=10)
        self.assertIn(status, expected, self.desk.output(self.companion))
        self.assertNotIn(-status, WRONG_ENDS)


def client_of(desk):
    """What the X server's numbers of everything that the companion has made there begin with."""
    own = re.search(r"^\s+(0x[0-9a-f]+) .*vorna-companion", desk.run("xwininfo", "-root", "-tree"), re.M).group(1)
    return hex(int(own, 16) & ~CLIENT_MASK)


class Held:
    """What a process holds: memory of its own, and counts of descriptors, threads and things of the X server."""

    def __init__(self, desk, pid):
        memory = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
        self.kilobytes = int(re.search(r"^Anonymous:\s+(\d+)", memory, re.M).group(1))
        clients = re.split(r"^\d+ - ", desk.run("xrestop", "-b", "-m", "1"), flags=re.M)
        base = client_of(desk)
        mine = next(client for client in clients if re.search(rf"res_base\s+: {base}$", client, re.M))
        self.counts = {kind: int(count) for kind, count in re.findall(r"^\s+(\S.*?)\s*: (\d+)$", mine, re.M)}
        self.counts |= {kind: len(os.listdir(f"/proc/{pid}/{kind}")) for kind in ("fd", "task")}


class TrayHosts(Story):
    """A tray that is not there, comes late, and dies again and again."""

    def setUp(self):
        skip_unless_installed("xrestop", "trayer")
        super().setUp()

    def check_hundred_deaths(self, show_item_and_kill):
        self.start_companion()
        for death in range(HOST_DEATHS):
            if death == WARM_UP_DEATHS:
                before = Held(self.desk, self.companion.pid)
            show_item_and_kill()
        self.check_alive()
        # What went with the last tray may still be on its way out.
        after = self.desk.wait_for(lambda: self.held_within(before), "as little to be held as before")
        print(f"{self.id()}: {before.kilobytes} to {after.kilobytes} KB, {after.counts}", flush=True)
        self.assertEqual(self.bridge.polls(), [])

    def held_within(self, before):
        now = Held(self.desk, self.companion.pid)
        fits = (now.kilobytes - before.kilobytes <= MOST_GROWTH_KB
                or desktop.is_sanitized(os.environ["VORNA_COMPANION"]))
        return now if fits and all(count <= before.counts[kind] for kind, count in now.counts.items()) else None

    def test_host_of_items_dies_a_hundred_times(self):
        def show_item_and_kill():
            host = self.start_host()
            self.assertRegex(host.stdout.readline(), "^registered ")
            host.kill()
            host.communicate()

        self.check_hundred_deaths(show_item_and_kill)
        self.start_host()
        item = self.desk.wait_for(self.desk.status_notifier_items, "the item")[0]
        self.desk.activate_item(item)
        self.wait_for_panel()
        self.check_polling_goes_on()

    def test_tray_that_windows_are_embedded_into_dies_a_hundred_times(self):
        def show_item_and_kill():
            tray = self.desk.start_trayer()
            self.desk.wait_for(self.small_windows, "the item")
            self.desk.kill(tray)
            self.desk.wait_for(lambda: not self.small_windows(), "the item to go")

        self.check_hundred_deaths(show_item_and_kill)
        self.desk.start_trayer()
        windows = self.desk.wait_for(lambda: self.desk.windows(self.companion.pid), "the item")
        ((x, y, width, height),) = windows.values()
        self.desk.wait_for(lambda: self.try_click(x + width // 2, y + height // 2), "the panel after a click")
        self.check_polling_goes_on()

    def try_click(self, x, y):
        """Whether a click opened the panel; the tray may still be making room for its item."""
        self.desk.click(x, y)
        try:
            return self.desk.wait_for(self.panel, "the panel", within=1)
        except desktop.Failure:
            return None

    def test_other_kind_of_tray_is_made_up_for_by_a_second_start(self):
        self.start_companion()
        host = self.start_host()
        self.assertRegex(host.stdout.readline(), "^registered ")
        host.kill()
        self.desk.start_trayer()
        self.open_by_second_start()
        self.check_polling_goes_on()


class SessionBus(Story):
    """A session without its bus."""

    def bus(self):
        return next(process for process in self.desk._processes if "dbus-daemon" in process.args)

    def check_goes_on_quietly(self):
        self.check_polling_goes_on()
        before = self.desk.cpu_seconds(self.companion)
        self.check_polling_goes_on()
        self.assertLess(self.desk.cpu_seconds(self.companion) - before, 1)
        # Qt may have been telling the tray of an icon when the bus died, and says so.
        printed = [line for line in self.desk.output(self.companion).splitlines() if "QDBusTrayIcon" not in line]
        self.assertEqual(printed, [])

    def test_bus_that_dies_leaves_the_open_panel_at_work(self):
        self.start_with_item()
        self.open_by_second_start()
        self.desk.kill(self.bus())
        self.check_goes_on_quietly()
        self.assertTrue(self.panel())

    def test_bus_that_dies_leaves_the_panel_to_a_second_start(self):
        self.start_with_item()
        self.desk.kill(self.bus())
        self.open_by_second_start()
        self.check_goes_on_quietly()
        self.desk.press("ctrl+q")
        self.check_ended(0)

    def test_bus_that_never_was_leaves_the_embedded_item(self):
        skip_unless_installed("trayer")
        self.desk.env["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
        self.start_companion()
        self.desk.start_trayer()
        windows = self.desk.wait_for(lambda: self.desk.windows(self.companion.pid), "the item")
        ((x, y, width, height),) = windows.values()
        self.desk.wait_for(lambda: self.desk.click(x + width // 2, y + height // 2) or self.panel(), "the panel",
                           every=0.5)
        self.check_goes_on_quietly()


class Endings(Story):
    """A session that ends under the companion."""

    def check_ending(self, end, *expected):
        for is_open in (False, True):
            with self.subTest(panel="open" if is_open else "never opened"):
                host = self.start_with_item()
                if is_open:
                    self.open_by_second_start()
                end()
                self.check_ended(*expected)
                host.kill()
                self.desk.wait_for(lambda: desktop.STATUS_NOTIFIER_WATCHER not in self.desk.bus_names(), "no host")

    def test_signals_end_it_at_once_and_in_silence(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            self.check_ending(lambda number=number: self.companion.send_signal(number), -number)
            self.assertEqual(self.desk.output(self.companion), "")

    def test_display_that_goes_ends_it_with_a_sentence(self):
        self.start_with_item()
        self.open_by_second_start()
        server = next(process for process in self.desk._processes if process.args[0] == "Xvfb")
        self.desk.kill(server)
        self.check_ended(1)
        self.assertEqual(len(self.desk.output(self.companion).splitlines()), 1)

    def start_session_manager(self):
        manager = subprocess.Popen(["/usr/bin/python3", HERE / "session_manager.py"], env=self.desk.env, text=True,
                                   bufsize=1, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.addCleanup(lambda: (manager.kill(), manager.communicate()))
        return manager, manager.stdout.readline().strip()

    def test_log_out_is_agreed_to_and_ends_it(self):
        for is_open in (False, True):
            with self.subTest(panel="open" if is_open else "never opened"):
                manager, address = self.start_session_manager()
                self.start_companion({"SESSION_MANAGER": address})
                self.assertEqual(manager.stdout.readline(), "joined\n")
                if is_open:
                    self.open_by_second_start()
                manager.stdin.write("log out\n")
                self.assertEqual(manager.stdout.readline(), "saved\n")
                self.check_ended(0)
                self.assertEqual(manager.stdout.readline(), "left\n")
                self.assertEqual(self.desk.output(self.companion), "")


class OnADesktop(CompanionTest):
    """A companion that a screen reader follows, with a bridge."""

    def setUp(self):
        super().setUp()
        self.bridge = self.start_bridge()

    def open(self, command=(), env=None):
        """Starts the companion, by another command if there is one, and opens its panel."""
        self.companion = self.desk.start([*command, COMPANION], env)
        self.addCleanup(self.desk.stop, self.companion)
        self.reader = ScreenReader(self.desk, self.companion.pid)
        self.addCleanup(self.reader.close)
        self.open_panel()
        self.reader.wait_for_text("online · :43105", PANEL)

    def wait_for_daypart(self, title):
        self.wait_for(lambda: self.reader.texts(PANEL)[1].endswith(" · " + title), f"the panel to say {title}")

    def end(self):
        self.desk.stop(self.companion)
        self.wait_for(lambda: not self.desk.status_notifier_items(), "the item to go")


class Notifications(OnADesktop):
    """A notification daemon that is not there, hangs, and comes back."""

    def daemon(self):
        return next(process for process in self.desk._processes
                    if process.args[0] == "dunst" and process.poll() is None)

    def test_action_ends_without_a_daemon_and_the_next_one_is_told_of(self):
        masked = pathlib.Path(self.desk.env["XDG_DATA_HOME"]) / "dbus-1/services/notifications.service"
        masked.parent.mkdir(parents=True, exist_ok=True)
        masked.write_text(f"[D-BUS Service]\nName={desktop.NOTIFICATIONS}\nExec=/bin/false\n")
        self.addCleanup(masked.unlink)
        self.desk.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.ReloadConfig")
        self.desk.kill(self.daemon())
        self.tool.does('[ "$1" = desk ] && echo "backed up"; :')
        self.open()
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text("backed up", PANEL)
        self.wait_for(lambda: self.reader.is_enabled("Desk backup now", PANEL), "the button to be enabled again")
        self.desk.start_notifications()
        self._seen = 0
        self.reader.press("Desk backup now", PANEL)
        self.wait_for_notifications(("vorna", "Desk backup", "backed up"))

    def test_daemon_that_hangs_holds_nothing_up_for_long(self):
        daemon = self.daemon()
        self.tool.does('[ "$1" = desk ] && echo "backed up"; :')
        self.open()
        os.kill(daemon.pid, signal.SIGSTOP)
        self.addCleanup(os.kill, daemon.pid, signal.SIGCONT)
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text("backed up", PANEL)
        self.reader.press("Night", PANEL)
        self.wait_for_daypart("Night")
        self.wait_for(lambda: self.reader.is_enabled("Desk backup now", PANEL), "the button to be enabled again")
        os.kill(daemon.pid, signal.SIGCONT)
        self.wait_for_notifications(("vorna", "Desk backup", "backed up"))


class SettingsFile(OnADesktop):
    """A settings file that cannot be read or written."""

    def check_choice(self, stays, command=()):
        """A chosen daypart is shown all the same; whether it is there after a restart depends."""
        self.open(command)
        self.wait_for_daypart("Day")
        self.reader.press("Night", PANEL)
        self.wait_for_daypart("Night")
        self.assertEqual(self.desk.output(self.companion), "")
        self.wait_for(lambda: not stays or "vorna.macos.daypart=night" in self.remembered(), "the choice on the disk")
        self.end()
        self.open(command)
        self.wait_for_daypart("Night" if stays else "Day")
        self.end()

    def clear_away(self):
        folder = self.configuration.parent
        shutil.rmtree(folder) if folder.is_dir() else folder.unlink(missing_ok=True)

    def test_corrupt_file_is_written_over(self):
        self.configuration.parent.mkdir(exist_ok=True)
        self.configuration.write_bytes(b"[General\n\\garbage" + bytes(range(256)) * 8)
        self.check_choice(stays=True)

    def test_unreadable_file_counts_as_none(self):
        self.addCleanup(self.clear_away)
        if is_root():
            self.configuration.mkdir(parents=True)
        else:
            self.configuration.parent.mkdir(exist_ok=True)
            self.configuration.touch(mode=0)
        self.check_choice(stays=False)

    def test_folder_that_cannot_be_made_costs_the_memory_alone(self):
        self.clear_away()
        self.configuration.parent.touch()
        self.addCleanup(self.clear_away)
        self.check_choice(stays=False)

    def test_read_only_file_costs_the_memory_alone(self):
        folder = shlex.quote(str(self.configuration.parent))
        self.configuration.parent.mkdir(exist_ok=True)
        before = "[General]\nvorna.macos.daypart.manual=false\n"
        self.configuration.write_text(before)
        self.check_choice(False, in_mounts_of_its_own(f"mount --bind {folder} {folder} && "
                                                           f"mount -o remount,bind,ro {folder}"))
        self.assertEqual(self.configuration.read_text(), before)

    def test_full_disk_costs_the_memory_alone(self):
        folder = shlex.quote(str(self.configuration.parent))
        self.configuration.parent.mkdir(exist_ok=True)
        fill = f"{{ cat /dev/zero > {folder}/filling 2>/dev/null; true; }}"
        self.check_choice(False, in_mounts_of_its_own(f"mount -t tmpfs -o size=16k tmpfs {folder} && {fill}"))

    def test_choice_outlives_a_signal(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            self.configuration.unlink(missing_ok=True)
            self.open()
            self.reader.press("Night", PANEL)
            self.wait_for(lambda: "vorna.macos.daypart=night" in self.remembered(), "the choice on the disk")
            self.desk.stop(self.companion, number)
            self.assertEqual(self.companion.returncode, -number)
            self.wait_for(lambda: not self.desk.status_notifier_items(), "the item to go")
            self.open()
            self.wait_for_daypart("Night")
            self.end()


class Home(OnADesktop):
    """A user without a home folder."""

    def check_works(self, *command):
        self.tool.does('[ "$1" = desk ] && echo "backed up"; :')
        self.open(["env", *command])
        self.reader.press("Night", PANEL)
        self.wait_for_daypart("Night")
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text("backed up", PANEL)
        self.assertEqual(self.desk.output(self.companion), "")
        self.end()

    def test_home_that_is_not_there_is_not_needed(self):
        self.check_works("-u", "XDG_CONFIG_HOME", "-u", "XDG_CACHE_HOME", "-u", "XDG_DATA_HOME",
                         "HOME=/proc/self/nowhere")

    def test_home_that_is_not_named_is_not_needed(self):
        self.check_works("-u", "HOME")


class Clocks(OnADesktop):
    """A clock that is set, and a time zone that changes, while the panel is open."""

    def updated(self):
        """The time of day that the panel says it was last updated at."""
        found = [text for text in self.reader.texts(PANEL) if text.startswith("Updated ")]
        return datetime.strptime(found[0], "Updated %H:%M:%S") if found else None

    def open_at_noon(self):
        library = next(iter(glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")), None)
        if library is None:
            self.skipTest("not installed: faketime")
        if desktop.is_sanitized(os.environ["VORNA_COMPANION"]):
            self.skipTest("the address sanitizer does not let another library come before it")
        self.clock = self.desk.root / "clock"
        self.set_clock(timedelta())
        self.open(env={"LD_PRELOAD": library, "FAKETIME_TIMESTAMP_FILE": str(self.clock), "FAKETIME_NO_CACHE": "1",
                       "FAKETIME_DONT_FAKE_MONOTONIC": "1", "TZ": self.desk.env["TZ"]})
        self.wait_for(self.updated, "the first update")

    def set_clock(self, difference):
        ahead = self.clock.with_suffix(".new")
        ahead.write_text(f"{difference.total_seconds():+.0f}")
        ahead.rename(self.clock)

    def check_set(self, difference, daypart):
        """The next poll tells the new time, and polls keep coming as they did."""
        before, polls = self.updated(), len(self.bridge.polls())
        self.set_clock(difference)
        hours = lambda: (self.updated() - before).total_seconds() / 3600
        expected = difference.total_seconds() / 3600 - self.offset
        self.wait_for(lambda: abs((hours() - expected + 12) % 24 - 12) < 0.1, "the new time of day", 3 * POLL_SECONDS)
        self.offset = difference.total_seconds() / 3600
        self.wait_for(lambda: len(self.bridge.polls()) >= polls + 2, "two polls", 4 * POLL_SECONDS)
        polls = self.bridge.polls()[polls:]
        self.assertTrue(all(later - earlier > POLL_SECONDS / 2 for earlier, later in zip(polls, polls[1:])), polls)
        self.reader.press("Night", PANEL)
        self.reader.press("Auto", PANEL)
        self.wait_for_daypart(daypart)
        self.photograph("faults-clock-" + daypart.lower())

    offset = 0.0

    def test_clock_that_is_set_is_followed_and_polls_go_on(self):
        self.open_at_noon()
        self.wait_for_daypart("Day")
        self.check_set(timedelta(hours=-6), "Dawn")
        self.check_set(timedelta(hours=7), "Dusk")

    def test_time_zone_that_changes_is_followed(self):
        zones = pathlib.Path("/usr/share/zoneinfo/Etc")
        if not zones.is_dir():
            self.skipTest("not installed: tzdata")
        zone = self.desk.root / "zone"
        zone.write_bytes((zones / "GMT").read_bytes())
        os.utime(zone, (0, 0))  # a zone that changes within a second is taken for the same one
        self.open([*in_mounts_of_its_own(f"mount --bind {zone} /etc/localtime"), "env", "-u", "TZ"])
        self.wait_for(self.updated, "the first update")
        before = self.updated()
        zone.write_bytes((zones / "GMT-7").read_bytes())
        self.wait_for(lambda: (self.updated() - before).seconds // 3600 == 7, "the other zone's time",
                      3 * POLL_SECONDS)
        self.assertIsNone(self.companion.poll())


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

    def shrink(self):
        self.run("xrandr", "--output", "DUMMY0", "--mode", "800x600")


class Screens(Story):
    """Screens that change under the open panel."""

    kind_of_desktop = TwoScreens

    def setUp(self):
        skip_unless_installed("Xorg", "xrandr", "xsettingsd")
        if not glob.glob("/usr/lib/xorg/modules/drivers/dummy_drv.so"):
            self.skipTest("not installed: the dummy driver of Xorg")
        super().setUp()
        self.desk.plug()

    def open_on_the_right(self):
        self.start_with_item()
        self.desk.run("xdotool", "mousemove", 1900, 300)
        left = self.open_by_second_start()[0]
        self.assertGreater(left, 1024)

    def wait_for_panel_within(self, width, height, scale=1):
        def place():
            places = [place for place in self.desk.windows(self.companion.pid).values()
                      if place[2] == scale * PANEL_WIDTH]
            return [(x, y, w, h) for x, y, w, h in places if x >= 0 and y >= 0 and x + w <= width and y + h <= height]

        return self.desk.wait_for(place, f"the panel within {width} x {height}")[0]

    def photograph(self, name):
        folder = pathlib.Path(os.environ["VORNA_PICTURES"])
        folder.mkdir(parents=True, exist_ok=True)
        self.desk.screenshot(folder / f"faults-{name}.png")

    def test_panel_leaves_an_unplugged_screen(self):
        self.open_on_the_right()
        self.desk.unplug()
        self.wait_for_panel_within(1024, 768)
        self.photograph("unplugged")
        self.check_polling_goes_on()
        self.desk.plug()
        self.check_polling_goes_on()
        self.wait_for_panel_within(2048, 768)

    def test_panel_follows_a_lower_resolution(self):
        self.desk.unplug()
        self.start_with_item()
        self.desk.run("xdotool", "mousemove", 1000, 700)
        self.open_by_second_start()
        self.desk.shrink()
        self.wait_for_panel_within(800, 600)
        self.photograph("lower-resolution")
        self.check_polling_goes_on()

    def test_panel_follows_another_scale(self):
        self.desk.unplug()
        settings = self.desk.root / "xsettings"
        settings.write_text("Xft/DPI 98304\n")
        daemon = self.desk.start(["xsettingsd", "-c", settings])
        self.start_with_item()
        self.desk.run("xdotool", "mousemove", 1000, 700)
        self.open_by_second_start()
        settings.write_text("Xft/DPI 196608\n")
        daemon.send_signal(signal.SIGHUP)
        self.wait_for_panel_within(1024, 768, scale=2)
        self.photograph("other-scale")
        self.check_polling_goes_on()


if __name__ == "__main__":
    unittest.main(verbosity=2)
